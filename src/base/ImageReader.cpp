#include "base/ImageReader.h"

#include <QBuffer>
#include <QFile>
#include <QImageReader>

namespace marrowfin {

namespace {
Result<Image> readFrom(QIODevice& device) {
    // The toolkit's limit of 128 MB is below an ordinary 6K capture; ours is by side, checked before
    // decoding.
    QImageReader::setAllocationLimit(0);
    QImageReader reader(&device);
    reader.setDecideFormatFromContent(true);
    const QSize size = reader.size();
    if (size.width() > largestImageSide || size.height() > largestImageSide)
        return failure(QStringLiteral("The image is larger than %1 pixels on a side.").arg(largestImageSide));
    QImage pixels = reader.read();
    if (pixels.isNull())
        return failure(reader.errorString());
    return Image::captured(std::move(pixels));
}
} // namespace

Result<Image> readImage(const QByteArray& bytes) {
    QBuffer buffer;
    buffer.setData(bytes);
    buffer.open(QIODevice::ReadOnly);
    return readFrom(buffer);
}

Result<Image> readImageFile(const QString& path) {
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly))
        return failure(file.errorString());
    return readFrom(file);
}

} // namespace marrowfin
