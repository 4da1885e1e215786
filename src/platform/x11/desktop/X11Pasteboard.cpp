#include "platform/x11/desktop/X11Pasteboard.h"

#include "imaging/ImageReader.h"
#include "platform/x11/desktop/ClipboardHandOver.h"
#include "platform/x11/desktop/ClipboardReader.h"
#include "platform/x11/desktop/OfferedImage.h"

#include <QClipboard>
#include <QGuiApplication>
#include <QMimeData>

namespace marrowfin::x11 {

using namespace imaging;

struct X11Pasteboard::Write {
    std::unique_ptr<QMimeData> data;
    // Null for other contents.
    Image image;
    OutcomePair<void> result = makeOutcome<void>();

    void refuse(const QString& why) const { result.settler.settle(failure(why)); }

    void offer(const Connection& connection) {
        if (!image.isNull() && image.png().isEmpty()) {
            refuse(QStringLiteral("The image could not be encoded."));
            return;
        }
        QGuiApplication::clipboard()->setMimeData(data.release());
        if (ownsClipboard(connection))
            result.settler.settle({});
        else if (connection.isLost())
            result.settler.settle(failure(QStringLiteral("The X server is gone."), Error::Kind::Dropped));
        else
            refuse(QStringLiteral("Another program holds the clipboard."));
    }
};

namespace {

std::optional<Image> decoded(const QByteArray& bytes) {
    Result<Image> image = marrowfin::imaging::readImage(bytes);
    if (!image || image->isNull())
        return std::nullopt;
    return *image;
}

} // namespace

X11Pasteboard::X11Pasteboard(const Connection& connection)
    : connection(connection), reading(QStringLiteral("io.tessaly.marrowfin.pasteboard"),
                                      SerialQueue::QualityOfService::UserInitiated) {}

X11Pasteboard::~X11Pasteboard() {
    ending->store(true);
    supersedePendingWrite();
}

void X11Pasteboard::supersedePendingWrite() {
    if (const std::shared_ptr<Write> write = std::exchange(pending, nullptr))
        write->refuse(QStringLiteral("Something else was copied since."));
}

// Empty contents of ours rather than no owner: clipboard managers bring the old contents back when an owner
// goes, and they would do it over the image that is written next. Mostly that happens within the same turn of
// the event loop, and then nobody sees the empty contents at all.
void X11Pasteboard::clearContents() {
    supersedePendingWrite();
    pending = std::make_shared<Write>(Write{std::make_unique<QMimeData>(), {}});
    postToMain([this, weak = std::weak_ptr(pending)] { offerIfStillWanted(weak); });
}

Outcome<void> X11Pasteboard::writeText(const QString& text) {
    supersedePendingWrite();
    auto data = std::make_unique<QMimeData>();
    data->setText(text);
    Write write{std::move(data), {}};
    write.offer(connection);
    return write.result.outcome;
}

Outcome<void> X11Pasteboard::writeImage(const Image& image) {
    supersedePendingWrite();
    if (image.isNull())
        return settled<void>(failure(QStringLiteral("There is no image to copy.")));
    auto write = std::make_shared<Write>(Write{std::make_unique<OfferedImage>(image), image});
    if (image.isEncoded()) {
        write->offer(connection);
        return write->result.outcome;
    }
    pending = write;
    image.encoded().then(
        [this, weak = std::weak_ptr(pending)](const Result<QByteArray>&) { offerIfStillWanted(weak); });
    return write->result.outcome;
}

// The pasteboard keeps a write alive exactly as long as nothing has taken its place.
void X11Pasteboard::offerIfStillWanted(const std::weak_ptr<Write>& write) {
    if (!write.expired())
        std::exchange(pending, nullptr)->offer(connection);
}

Outcome<std::optional<Image>> X11Pasteboard::readImage() {
    using Found = std::optional<Image>;
    if (pending)
        return settled<Found>(pending->image.isNull() ? Found() : Found(pending->image));
    if (ownsClipboard(connection)) {
        const auto* ours = qobject_cast<const OfferedImage*>(QGuiApplication::clipboard()->mimeData());
        return settled<Found>(ours ? Found(ours->image()) : Found());
    }
    auto [settler, outcome] = makeOutcome<Found>();
    reading.async([settler = settler, ending = ending, display = Connection::qtDisplayName()] {
        const QByteArray bytes = readClipboardImage(display, [ending] { return ending->load(); });
        settler.settle(bytes.isEmpty() ? Found() : decoded(bytes));
    });
    return outcome;
}

void X11Pasteboard::handOver() {
    const Offered offered = pending ? Offered::JustNow : Offered::Before;
    // Gone by the time that the loop below may run what was waiting for the encoding.
    if (const std::shared_ptr<Write> write = std::exchange(pending, nullptr))
        write->offer(connection);
    handOverClipboard(connection, offered);
}

} // namespace marrowfin::x11
