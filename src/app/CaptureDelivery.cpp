#include "app/CaptureDelivery.h"

#include "app/AutomaticSave.h"
#include "app/CaptureOutput.h"
#include "base/Log.h"
#include "base/Memory.h"
#include "base/Patience.h"
#include "history/CaptureHistory.h"
#include "panel/CapturePanelController.h"
#include "platform/Clipboard.h"
#include "settings/SettingsStore.h"

#include <QCoreApplication>
#include <algorithm>
#include <chrono>
#include <utility>

namespace marrowfin::app {

using namespace commands;
using namespace history;
using namespace imaging;
using namespace panel;
using namespace platform;
using namespace settings;

namespace {
// A disk that hangs must keep no capture from the clipboard, and no card from the screen.
constexpr std::chrono::seconds patienceWithTheDisk{1};
} // namespace

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
    // One encoding serves the history file, the clipboard and drag-out; it began when the frame arrived, and
    // the history's own queue waits for it: what keeps the main thread busy doesn't delay the file.
    waiting.push_back({image, takeTicket(image), CaptureHistory::shared().saveAsync(image)});
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
    const QString output = arrival.ticket ? arrival.ticket->output : QString();
    underWay = Unrouted{arrival.image, output};
    const Outcome<std::optional<QString>> inTime = within(patienceWithTheDisk, arrival.saved);
    const Result<std::optional<QString>> saved = co_await inTime;
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
    went.onClipboard = co_await offer(image);
    if (finished)
        co_return failure(QStringLiteral("The program ends."), Error::Kind::Dropped);
    underWay.reset();
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

Flow<bool> CaptureDelivery::offer(Image image) {
    const Result<void> written = co_await copyToClipboard(image);
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
        const Outcome<QString> inTime = within(patienceWithTheDisk, saveAutomatically(image));
        const Result<QString> saved = co_await inTime;
        path = saved.value_or(QString());
    }
    CapturePanelController::shared().present(image, saveCaptureToFile);
    co_return path;
}

void CaptureDelivery::finish(Clipboard clipboard) {
    // What was published and not yet received.
    QCoreApplication::sendPostedEvents(this, QEvent::MetaCall);
    finished = true;
    std::vector<Unrouted> left;
    if (underWay)
        left.push_back(*std::exchange(underWay, std::nullopt));
    for (const Arrival& arrival : std::exchange(waiting, {}))
        left.push_back({arrival.image, arrival.ticket ? arrival.ticket->output : QString()});
    if (!left.empty() && clipboard == Clipboard::Works)
        copyToClipboard(left.back().image);
    const bool savesAll = SettingsStore::shared().postCaptureAction() == PostCaptureAction::saveToFile;
    for (const Unrouted& capture : left)
        if (!capture.output.isEmpty())
            writeOutput(capture.image, capture.output);
        else if (savesAll)
            saveCaptureToFile(capture.image);
}

} // namespace marrowfin::app
