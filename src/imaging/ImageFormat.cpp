#include "imaging/ImageFormat.h"

#include <QBuffer>
#include <QImageWriter>
#include <algorithm>
#include <cmath>

namespace marrowfin::imaging {

QString rawValue(ImageFormat format) {
    return format == ImageFormat::jpeg ? QStringLiteral("JPEG") : QStringLiteral("PNG");
}

std::optional<ImageFormat> imageFormat(const QString& raw) {
    for (const ImageFormat format : allImageFormats)
        if (rawValue(format) == raw)
            return format;
    return std::nullopt;
}

QString fileExtension(ImageFormat format) {
    return format == ImageFormat::jpeg ? QStringLiteral("jpg") : QStringLiteral("png");
}

std::optional<QByteArray> encodeImage(const Image& image, ImageFormat format, double quality) {
    if (image.isNull())
        return std::nullopt;
    QByteArray bytes;
    if (format == ImageFormat::png) {
        bytes = image.png();
    } else {
        QBuffer buffer(&bytes);
        buffer.open(QIODevice::WriteOnly);
        QImageWriter writer(&buffer, "jpeg");
        writer.setQuality(static_cast<int>(std::lround(std::clamp(quality, 0.0, 1.0) * 100)));
        if (!writer.write(image.pixels()))
            return std::nullopt;
    }
    if (bytes.isEmpty())
        return std::nullopt;
    return bytes;
}

} // namespace marrowfin::imaging
