#include "base/PngWriter.h"

#include <QBuffer>

namespace marrowfin {

QByteArray encodePng(const QImage& pixels) {
    if (pixels.isNull())
        return {};
    QByteArray bytes;
    QBuffer buffer(&bytes);
    buffer.open(QIODevice::WriteOnly);
    if (!pixels.save(&buffer, "PNG"))
        return {};
    return bytes;
}

} // namespace marrowfin
