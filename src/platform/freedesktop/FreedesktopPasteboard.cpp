#include "platform/freedesktop/FreedesktopPasteboard.h"

#include "base/ImageReader.h"
#include "platform/freedesktop/ClipboardHandOver.h"
#include "platform/freedesktop/OfferedImage.h"

#include <QClipboard>
#include <QGuiApplication>
#include <QMimeData>

namespace marrowfin::freedesktop {

struct FreedesktopPasteboard::Write {
    std::unique_ptr<QMimeData> data;
    // Null for other contents.
    Image image;
    Settler<void> settler;

    void offer() {
        if (!image.isNull() && image.png().isEmpty()) {
            settler.settle(failure(QStringLiteral("The image could not be encoded.")));
            return;
        }
        QGuiApplication::clipboard()->setMimeData(data.release());
        if (ownsClipboard())
            settler.settle({});
        else
            settler.settle(failure(QStringLiteral("Another program holds the clipboard.")));
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
    Result<Image> image = marrowfin::readImage(bytes);
    if (!image || image->isNull())
        return std::nullopt;
    return *image;
}

} // namespace

FreedesktopPasteboard::FreedesktopPasteboard()
    : decoding(QStringLiteral("io.tessaly.marrowfin.pasteboard"),
               SerialQueue::QualityOfService::UserInitiated) {}

FreedesktopPasteboard::~FreedesktopPasteboard() {
    supersedePendingWrite();
}

void FreedesktopPasteboard::supersedePendingWrite() {
    if (const std::shared_ptr<Write> write = std::exchange(pending, nullptr))
        write->settler.settle(failure(QStringLiteral("Something else was copied since.")));
}

// Empty contents of ours rather than no owner: clipboard managers bring the old contents back when an owner
// goes, and they would do it over the image that is written next.
void FreedesktopPasteboard::clearContents() {
    begin(std::make_unique<QMimeData>());
}

Outcome<void> FreedesktopPasteboard::writeText(const QString& text) {
    auto data = std::make_unique<QMimeData>();
    data->setText(text);
    return begin(std::move(data));
}

Outcome<void> FreedesktopPasteboard::writeImage(const Image& image) {
    if (image.isNull())
        return settled<void>(failure(QStringLiteral("There is no image to copy.")));
    return begin(std::make_unique<OfferedImage>(image), image);
}

Outcome<void> FreedesktopPasteboard::begin(std::unique_ptr<QMimeData> data, const Image& image) {
    supersedePendingWrite();
    auto [settler, outcome] = makeOutcome<void>();
    pending = std::make_shared<Write>(std::move(data), image, settler);
    if (image.isNull() || image.isEncoded()) {
        offerWhenTimely(pending);
        return outcome;
    }
    image.encoded().then([this, weak = std::weak_ptr(pending)](const Result<QByteArray>&) {
        if (const std::shared_ptr<Write> write = weak.lock())
            offerWhenTimely(write);
    });
    return outcome;
}

// The pasteboard keeps a write alive exactly as long as nothing has taken its place.
void FreedesktopPasteboard::offerWhenTimely(const std::shared_ptr<Write>& write) {
    clock.whenCurrent([this, weak = std::weak_ptr(write)] {
        if (weak.expired())
            return;
        std::exchange(pending, nullptr)->offer();
    });
}

Outcome<std::optional<Image>> FreedesktopPasteboard::readImage() {
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

void FreedesktopPasteboard::handOver() {
    if (const std::shared_ptr<Write> write = std::exchange(pending, nullptr))
        write->offer();
    handOverClipboard();
}

} // namespace marrowfin::freedesktop
