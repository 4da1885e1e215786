#include "chrome/Strips.h"

#include "chrome/PremultipliedPixel.h"

#include <QPainter>
#include <algorithm>
#include <cmath>

namespace marrowfin::chrome {

namespace {
// The toolkit divides fills from 96 spans on.
constexpr int mostSpans = 95;
constexpr int blendedSpans = 3;

void addStrips(std::vector<QRect>& to, const QRect& rect, int mostRows) {
    if (rect.isEmpty())
        return;
    for (int y = rect.top(); y <= rect.bottom(); y += mostRows)
        to.emplace_back(rect.left(), y, rect.width(), std::min(mostRows, rect.bottom() + 1 - y));
}

QTransform worldOfDevice(const QPainter& painter) {
    return (painter.worldTransform().inverted() * painter.deviceTransform()).inverted();
}

// A translucent colour goes onto a picture of its own first, where it replaces what is there: the toolkit
// takes no other thread for that, and on nothing it leaves what blending would.
void paintOneColor(QPainter& painter, const QColor& color, const QRect& device,
                   const std::function<void(QPainter&)>& draw) {
    const bool replaces = color.alphaF() >= 1 && painter.opacity() >= 1;
    if (replaces) {
        draw(painter);
        return;
    }
    if (device.isEmpty())
        return;
    const QImage ink = paintedAside(painter, device, [&](QPainter& aside) {
        aside.setCompositionMode(QPainter::CompositionMode_Source);
        aside.setOpacity(painter.opacity());
        draw(aside);
    });
    painter.save();
    painter.setOpacity(1);
    drawOnDevice(painter, device.topLeft(), ink);
    painter.restore();
}
} // namespace

QRect onDevice(const QPainter& painter, const QRectF& rect, const QRectF& deviceClip) {
    return painter.deviceTransform().mapRect(rect).intersected(deviceClip).toAlignedRect();
}

QRect insideOnDevice(const QPainter& painter, const QRectF& rect) {
    if (rect.isEmpty())
        return {};
    const QRectF device = painter.deviceTransform().mapRect(rect);
    const QPoint topLeft(static_cast<int>(std::ceil(device.left())),
                         static_cast<int>(std::ceil(device.top())));
    const QPoint end(static_cast<int>(std::floor(device.right())),
                     static_cast<int>(std::floor(device.bottom())));
    const QRect inside(topLeft, end - QPoint(1, 1));
    return inside.isEmpty() ? QRect() : inside;
}

std::vector<QRect> strips(const QRect& device, const QRect& hole, Edges edges) {
    const int mostRows = edges == Edges::Whole ? mostSpans : mostSpans / blendedSpans;
    std::vector<QRect> result;
    const QRect out = hole.intersected(device);
    if (out.isEmpty()) {
        addStrips(result, device, mostRows);
        return result;
    }
    const int right = device.right() + 1;
    addStrips(result, {device.topLeft(), QPoint(device.right(), out.top() - 1)}, mostRows);
    addStrips(result, {device.left(), out.top(), out.left() - device.left(), out.height()}, mostRows);
    addStrips(result, {out.right() + 1, out.top(), right - out.right() - 1, out.height()}, mostRows);
    addStrips(result, {QPoint(device.left(), out.bottom() + 1), device.bottomRight()}, mostRows);
    return result;
}

void paintInStrips(QPainter& painter, const QRect& device, const QRect& hole, Edges edges,
                   const std::function<void()>& draw) {
    const std::vector<QRect> parts = strips(device, hole, edges);
    if (parts.size() == 1 && parts.front() == device) {
        draw();
        return;
    }
    const QTransform world = painter.worldTransform();
    const QTransform whole = worldOfDevice(painter);
    for (const QRect& part : parts) {
        painter.save();
        painter.setWorldTransform(whole);
        painter.setClipRect(part, Qt::IntersectClip);
        painter.setWorldTransform(world);
        draw();
        painter.restore();
    }
}

QImage paintedAside(const QPainter& like, const QRect& device, const std::function<void(QPainter&)>& draw) {
    QImage image(device.size(), QImage::Format_ARGB32_Premultiplied);
    image.fill(Qt::transparent);
    QPainter painter(&image);
    painter.setRenderHints(like.renderHints());
    painter.setWorldTransform(like.deviceTransform() * QTransform::fromTranslate(-device.x(), -device.y()));
    draw(painter);
    return image;
}

void drawOnDevice(QPainter& painter, const QPoint& at, const QImage& image) {
    painter.save();
    painter.setWorldTransform(worldOfDevice(painter));
    painter.setRenderHint(QPainter::SmoothPixmapTransform, false);
    painter.drawImage(at, image);
    painter.restore();
}

void fillPath(QPainter& painter, const QPainterPath& path, const QColor& color, const QRect& device) {
    paintOneColor(painter, color, device, [&](QPainter& to) { to.fillPath(path, color); });
}

void strokePath(QPainter& painter, const QPainterPath& path, const QPen& pen, const QRect& device) {
    const QTransform axes = painter.deviceTransform();
    // Hairlines the toolkit draws point by point, some points twice: those must blend with what is there.
    if (pen.widthF() * std::hypot(axes.m11(), axes.m12()) <= 1 + 1e-6)
        painter.strokePath(path, pen);
    else
        paintOneColor(painter, pen.color(), device, [&](QPainter& to) { to.strokePath(path, pen); });
}

void keepOnly(QImage& image, const QPainter& like, const QRect& device,
              const std::function<void(QPainter&)>& draw) {
    for (const QRect& part : strips(device, {}, Edges::Whole)) {
        const QImage mask = paintedAside(like, part, draw);
        for (int row = 0; row < part.height(); ++row) {
            auto* pixels = reinterpret_cast<QRgb*>(image.scanLine(part.y() - device.y() + row));
            const auto* kept = reinterpret_cast<const QRgb*>(mask.constScanLine(row));
            for (int x = 0; x < part.width(); ++x)
                if (qAlpha(kept[x]) < 255)
                    pixels[x] = timesAlpha(pixels[x], qAlpha(kept[x]));
        }
    }
}

} // namespace marrowfin::chrome
