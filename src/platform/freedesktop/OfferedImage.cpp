#include "platform/freedesktop/OfferedImage.h"

#include <QBuffer>

namespace marrowfin::freedesktop {

namespace {
const QString pngType = QStringLiteral("image/png");
const QString bmpType = QStringLiteral("image/bmp");
// The toolkit's own name for pixels.
const QString pixelsType = QStringLiteral("application/x-qt-image");
} // namespace

OfferedImage::OfferedImage(Image image) : offered(std::move(image)) {}

// The toolkit's type is not listed: for it the toolkit would offer every format that it can write, and encode
// a PNG of its own on each request.
QStringList OfferedImage::formats() const {
    return {pngType, bmpType};
}

bool OfferedImage::hasFormat(const QString& mimeType) const {
    return mimeType == pixelsType || formats().contains(mimeType);
}

QVariant OfferedImage::retrieveData(const QString& mimeType, QMetaType type) const {
    if (mimeType == pngType)
        return offered.png();
    if (mimeType == pixelsType)
        return offered.pixels();
    if (mimeType == bmpType) {
        QByteArray bytes;
        QBuffer buffer(&bytes);
        buffer.open(QIODevice::WriteOnly);
        offered.pixels().save(&buffer, "BMP");
        return bytes;
    }
    return QMimeData::retrieveData(mimeType, type);
}

} // namespace marrowfin::freedesktop
