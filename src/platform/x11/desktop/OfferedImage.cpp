#include "platform/x11/desktop/OfferedImage.h"

namespace marrowfin::x11 {

using namespace imaging;

namespace {
const QString pngType = QStringLiteral("image/png");
// Answered by the toolkit itself on X11.
const QString timestampType = QStringLiteral("TIMESTAMP");
// The toolkit's own name for pixels.
const QString pixelsType = QStringLiteral("application/x-qt-image");
} // namespace

OfferedImage::OfferedImage(Image image) : offered(std::move(image)) {}

// PNG alone: clipboard managers fetch every form on every copy, and the toolkit, had its own type been
// listed, would offer all that it can write and encode each anew. Something else has to come first, because
// Xfce's clipboard manager drops the first form of those that it keeps.
QStringList OfferedImage::formats() const {
    return {timestampType, pngType};
}

bool OfferedImage::hasFormat(const QString& mimeType) const {
    return mimeType == pixelsType || formats().contains(mimeType);
}

QVariant OfferedImage::retrieveData(const QString& mimeType, QMetaType type) const {
    if (mimeType == pngType)
        return offered.png();
    if (mimeType == pixelsType)
        return offered.pixels();
    return QMimeData::retrieveData(mimeType, type);
}

} // namespace marrowfin::x11
