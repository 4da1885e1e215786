#include "platform/x11/desktop/X11Pasteboard.h"

#include "imaging/ImageReader.h"
#include "platform/x11/desktop/ClipboardHandOver.h"
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

// Lossless first; nothing that isn't pixels.
const QStringList readableTypes{QStringLiteral("image/png"),  QStringLiteral("image/bmp"),
                                QStringLiteral("image/tiff"), QStringLiteral("image/webp"),
                                QStringLiteral("image/jpeg"), QStringLiteral("image/gif")};

// The best form that the clipboard's owner gives us; empty when there is none.
QByteArray offeredImageBytes(const QMimeData& data) {
    const QStringList offered = data.formats();
    for (const QString& type : readableTypes)
        if (offered.contains(type))
            if (QByteArray bytes = data.data(type); !bytes.isEmpty())
                return bytes;
    return {};
}

std::optional<Image> decoded(const QByteArray& bytes) {
    Result<Image> image = marrowfin::imaging::readImage(bytes);
    if (!image || image->isNull())
        return std::nullopt;
    return *image;
}

} // namespace

X11Pasteboard::X11Pasteboard(const Connection& connection)
    : connection(connection), decoding(QStringLiteral("io.tessaly.marrowfin.pasteboard"),
                                       SerialQueue::QualityOfService::UserInitiated) {}

X11Pasteboard::~X11Pasteboard() {
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
    const QMimeData* data = QGuiApplication::clipboard()->mimeData();
    if (!data)
        return settled<Found>(std::nullopt);
    if (const auto* ours = qobject_cast<const OfferedImage*>(data))
        return settled<Found>(ours->image());
    const QByteArray bytes = offeredImageBytes(*data);
    if (bytes.isEmpty())
        return settled<Found>(std::nullopt);
    auto [settler, outcome] = makeOutcome<Found>();
    decoding.async([settler = settler, bytes] { settler.settle(decoded(bytes)); });
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
