#include "editor/EditorTexts.h"

#include <cmath>

namespace marrowfin::editor {

using namespace imaging;

namespace {
QString pixelsText(qint64 width, qint64 height) {
    return QStringLiteral("%1 × %2 px").arg(width).arg(height);
}
} // namespace

QString statusText(const Image& image, qsizetype annotations) {
    if (image.pixels().isNull())
        return {};
    const QString size = pixelsText(image.pixels().width(), image.pixels().height());
    return annotations > 0 ? QStringLiteral("%1 · %2").arg(size).arg(annotations) : size;
}

QString cropSizeText(const Image& image, const QRectF& crop) {
    const QSizeF points = image.size();
    if (image.pixels().isNull() || points.width() <= 0 || points.height() <= 0)
        return {};
    return pixelsText(std::llround(image.pixels().width() / points.width() * crop.width()),
                      std::llround(image.pixels().height() / points.height() * crop.height()));
}

} // namespace marrowfin::editor
