#include "app/CaptureDelivery.h"

#include "app/AutomaticSave.h"
#include "app/CaptureOutput.h"
#include "base/Log.h"
#include "base/Memory.h"
#include "history/CaptureHistory.h"
#include "panel/CapturePanelController.h"
#include "platform/Pasteboard.h"
#include "platform/Services.h"
#include "settings/SettingsStore.h"

#include <QPointer>
#include <algorithm>

namespace marrowfin::app {

using namespace commands;
using namespace history;
using namespace imaging;
using namespace panel;
using namespace platform;
using namespace settings;

void CaptureDelivery::attach(const Image& image, CaptureTicket ticket) {
    tickets.emplace_back(image, std::move(ticket));
}

std::optional<CaptureTicket> CaptureDelivery::takeTicket(const Image& image) {
    const auto found =
        std::find_if(tickets.begin(), tickets.end(), [&](const auto& held) { return held.first == image; });
    if (found == tickets.end())
        return std::nullopt;
    CaptureTicket ticket = std::move(found->second);
    tickets.erase(found);
    return ticket;
}

void CaptureDelivery::receive(const Image& image) {
    waiting.push_back({image, takeTicket(image)});
    if (sink == Sink::Open)
        flows.start(drain());
}

void CaptureDelivery::open() {
    sink = Sink::Open;
    flows.start(drain());
}

Flow<> CaptureDelivery::drain() {
    if (waiting.empty())
        co_return;
    sink = Sink::Draining;
    while (!waiting.empty()) {
        Arrival arrival = std::move(waiting.front());
        waiting.pop_front();
        co_await deliver(std::move(arrival));
        Q_EMIT captureRouted();
    }
    sink = Sink::Open;
    giveFreeMemoryBackWhenCalm();
}

Flow<> CaptureDelivery::deliver(Arrival arrival) {
    // One encoding serves the history file, the clipboard and drag-out; it began when the frame arrived, and
    // the history's own queue waits for it: what keeps the main thread busy doesn't delay the file.
    const Result<std::optional<QString>> saved = co_await CaptureHistory::shared().saveAsync(arrival.image);
    const QString output = arrival.ticket ? arrival.ticket->output : QString();
    Result<CommandResult> went = co_await route(arrival.image, output);
    if (!arrival.ticket)
        co_return;
    if (went && saved)
        went->historyFile = saved->value_or(QString());
    arrival.ticket->settler.settle(std::move(went));
}

Flow<Result<CommandResult>> CaptureDelivery::route(Image image, QString output) {
    CommandResult went;
    went.imageSize = realPixelSize(image).value_or(QSize());
    went.onClipboard = co_await copyToClipboard(image);
    if (output.isEmpty()) {
        went.savedFile = co_await obeySettings(image);
        co_return went;
    }
    const Result<void> written = co_await writeOutput(image, output);
    if (!written)
        co_return tl::unexpected(written.error());
    went.savedFile = output;
    co_return went;
}

Flow<bool> CaptureDelivery::copyToClipboard(Image image) {
    services().pasteboard.clearContents();
    const Result<void> written = co_await services().pasteboard.writeImage(image);
    // A desktop that went away ends the program, and says so itself.
    if (!written && written.error().kind != Error::Kind::Dropped)
        logLine(QStringLiteral("[Marrowfin] clipboard: ") + written.error().message);
    co_return written.has_value();
}

Flow<QString> CaptureDelivery::obeySettings(Image image) {
    const PostCaptureAction action = SettingsStore::shared().postCaptureAction();
    if (action == PostCaptureAction::copyToClipboard)
        co_return QString();
    QString path;
    if (action == PostCaptureAction::saveToFile) {
        const Result<QString> saved = co_await saveCaptureToFile(image);
        path = saved.value_or(QString());
    }
    CapturePanelController::shared().present(image, [self = QPointer(this)](const Image& edited) {
        if (self)
            self->flows.start(saveCaptureToFile(edited));
    });
    co_return path;
}

} // namespace marrowfin::app
