#include "imaging/ImageReader.h"

#include <QBuffer>
#include <QFile>
#include <QFileInfo>
#include <QImageReader>
#include <algorithm>
#include <array>
#include <mutex>

namespace marrowfin::imaging {

namespace {

// Pictures made of pixels. What else the toolkit has plug-ins for (drawings that are programs, documents) is
// not read from files of unknown origin.
constexpr std::array readableFormats{"png", "jpeg", "webp", "gif", "bmp", "tiff", "ppm", "pgm", "pbm"};

std::once_flag limitLifted;

bool isReadableFormat(const QByteArray& format) {
    for (const char* name : readableFormats)
        if (format == name)
            return true;
    return false;
}

// What decoding takes, which the file's head tells. Whatever shows a picture makes 32 bits of each pixel of
// it, so that is the least that one counts.
qint64 decodedBytes(const QImageReader& reader, const QSize& size) {
    const QPixelFormat pixel =
        QImage::toPixelFormat(reader.imageFormat()); // no bits where the decoder can't say
    const qint64 bytesPerPixel = std::max(pixel.bitsPerPixel() / 8, 4);
    return static_cast<qint64>(size.width()) * size.height() * bytesPerPixel;
}

// Every other part of the program has 8 bits a channel: the rest isn't kept.
QImage atEightBits(QImage pixels) {
    switch (pixels.format()) {
    case QImage::Format_Grayscale16:
        return std::move(pixels).convertToFormat(QImage::Format_Grayscale8);
    default:
        if (pixels.depth() <= 32)
            return pixels;
        return pixels.hasAlphaChannel() ? std::move(pixels).convertToFormat(QImage::Format_ARGB32)
                                        : std::move(pixels).convertToFormat(QImage::Format_RGB32);
    }
}

Result<Image> readFrom(QIODevice& device) {
    // The toolkit's limit of 128 MB is below an ordinary 6K capture; ours is checked before decoding.
    std::call_once(limitLifted, [] { QImageReader::setAllocationLimit(0); });
    QImageReader reader(&device);
    reader.setDecideFormatFromContent(true);
    reader.setAutoTransform(true); // a photograph stands upright
    if (!isReadableFormat(reader.format()))
        return failure(QStringLiteral("This is not a picture that can be opened."));
    const QSize size = reader.size();
    if (size.isEmpty())
        return failure(QStringLiteral("The picture is damaged."));
    if (decodedBytes(reader, size) > largestDecodedImage)
        return failure(QStringLiteral("The picture is too large to be opened."));
    QImage pixels = atEightBits(reader.read());
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
    // A named pipe or a device in a picture's place would never end.
    if (const QFileInfo info(path); info.exists() && !info.isFile())
        return failure(QStringLiteral("This is not a file."));
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly))
        return failure(file.errorString());
    return readFrom(file);
}

} // namespace marrowfin::imaging
