#include "platform/freedesktop/FreedesktopPasteboard.h"

#include "base/ImageReader.h"
#include "platform/freedesktop/OfferedImage.h"

#include <QClipboard>
#include <QGuiApplication>
#include <QMimeData>

namespace marrowfin::freedesktop {

namespace {

// Lossless first; nothing that isn't pixels.
const QStringList readableTypes{QStringLiteral("image/png"),  QStringLiteral("image/bmp"),
                                QStringLiteral("image/tiff"), QStringLiteral("image/webp"),
                                QStringLiteral("image/jpeg"), QStringLiteral("image/gif")};

QClipboard& clipboard() {
    return *QGuiApplication::clipboard();
}

Result<void> offerOnClipboard(std::unique_ptr<QMimeData> data) {
    clipboard().setMimeData(data.release());
    // The window system refuses an owner whose last input is older than that of the present one.
    if (!clipboard().ownsClipboard())
        return failure(QStringLiteral("Another program holds the clipboard."));
    return {};
}

// The first encoded form that can be decoded, on the queue on which it is called.
std::optional<Image> firstReadable(const QList<QByteArray>& candidates) {
    for (const QByteArray& bytes : candidates)
        if (Result<Image> image = marrowfin::readImage(bytes); image && !image->isNull())
            return *image;
    return std::nullopt;
}

} // namespace

FreedesktopPasteboard::FreedesktopPasteboard()
    : decoding(QStringLiteral("io.tessaly.marrowfin.pasteboard"),
               SerialQueue::QualityOfService::UserInitiated) {}

FreedesktopPasteboard::~FreedesktopPasteboard() {
    supersedePendingWrite();
}

void FreedesktopPasteboard::supersedePendingWrite() {
    if (!pending)
        return;
    pending->settler.settle(failure(QStringLiteral("Something else was copied since.")));
    pending.reset();
}

// Empty contents of ours rather than no owner: clipboard managers bring the old contents back when an owner
// goes, and they would do it over the image that is written next.
void FreedesktopPasteboard::clearContents() {
    supersedePendingWrite();
    (void)offerOnClipboard(std::make_unique<QMimeData>());
}

Outcome<void> FreedesktopPasteboard::writeImage(const Image& image) {
    supersedePendingWrite();
    auto [settler, outcome] = makeOutcome<void>();
    if (image.isEncoded()) {
        offer(image, settler);
        return outcome;
    }
    pending = std::make_shared<PendingWrite>(PendingWrite{image, settler});
    image.encoded().then([this, weak = std::weak_ptr(pending)](const Result<QByteArray>&) {
        const std::shared_ptr<PendingWrite> write = weak.lock();
        if (!write || write != pending)
            return;
        pending.reset();
        offer(write->image, write->settler);
    });
    return outcome;
}

void FreedesktopPasteboard::offer(const Image& image, const Settler<void>& settler) {
    if (image.png().isEmpty())
        settler.settle(failure(QStringLiteral("The image could not be encoded.")));
    else
        settler.settle(offerOnClipboard(std::make_unique<OfferedImage>(image)));
}

Outcome<void> FreedesktopPasteboard::writeText(const QString& text) {
    supersedePendingWrite();
    auto data = std::make_unique<QMimeData>();
    data->setText(text);
    return settled(offerOnClipboard(std::move(data)));
}

Outcome<std::optional<Image>> FreedesktopPasteboard::readImage() {
    using Found = std::optional<Image>;
    if (pending)
        return settled<Found>(pending->image);
    const QMimeData* data = clipboard().mimeData();
    if (!data)
        return settled<Found>(std::nullopt);
    if (const auto* ours = qobject_cast<const OfferedImage*>(data))
        return settled<Found>(ours->image());

    QList<QByteArray> candidates;
    const QStringList offered = data->formats();
    for (const QString& type : readableTypes)
        if (offered.contains(type))
            if (QByteArray bytes = data->data(type); !bytes.isEmpty()) {
                candidates << bytes;
                break;
            }
    if (candidates.isEmpty())
        return settled<Found>(std::nullopt);
    auto [settler, outcome] = makeOutcome<Found>();
    decoding.async([settler = settler, candidates] { settler.settle(firstReadable(candidates)); });
    return outcome;
}

void FreedesktopPasteboard::handOver() {
    if (const std::shared_ptr<PendingWrite> write = std::exchange(pending, nullptr))
        offer(write->image, write->settler);
}

} // namespace marrowfin::freedesktop
