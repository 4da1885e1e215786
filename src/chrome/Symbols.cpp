#include "chrome/Symbols.h"

#include "base/Invariant.h"

#include <QDir>
#include <QFile>
#include <QIconEngine>
#include <QPainter>
#include <QSvgRenderer>
#include <cmath>

namespace marrowfin::chrome {

namespace {

const QString folder = QStringLiteral(":/marrowfin/symbols/");

// In units of the 24 unit drawing.
double strokeWidth(SymbolWeight weight) {
    switch (weight) {
    case SymbolWeight::Regular:
        break;
    case SymbolWeight::Medium:
        return 1.75;
    case SymbolWeight::Semibold:
        return 2.0;
    }
    return 1.5;
}

QByteArray drawing(const QString& name, const QColor& color, SymbolWeight weight) {
    QFile file(folder + name + QStringLiteral(".svg"));
    const bool opened = file.open(QIODevice::ReadOnly);
    MARROWFIN_INVARIANT(opened);
    QByteArray svg = file.readAll();
    // The renderer knows no currentColor. Alpha goes on when painting: lines that cross must not show
    // through.
    svg.replace("currentColor", color.name(QColor::HexRgb).toLatin1());
    svg.replace("stroke-width=\"1.5\"", "stroke-width=\"" + QByteArray::number(strokeWidth(weight)) + '"');
    return svg;
}

void paintSymbol(QPainter& painter, const QRectF& square, const QString& name, const QColor& color,
                 SymbolWeight weight) {
    QSvgRenderer renderer(drawing(name, color, weight));
    MARROWFIN_INVARIANT(renderer.isValid());
    renderer.render(&painter, square);
}

class SymbolEngine : public QIconEngine {
public:
    SymbolEngine(QString symbol, QColor tint, SymbolWeight strokes)
        : name(std::move(symbol)), color(tint), weight(strokes) {}

    void paint(QPainter* painter, const QRect& rect, QIcon::Mode mode, QIcon::State) override {
        const int side = std::min(rect.width(), rect.height());
        const double ratio = painter->device()->devicePixelRatioF();
        QImage image = symbolImage(name, side, color, ratio, weight);
        constexpr double disabledOpacity = 0.4;
        painter->save();
        if (mode == QIcon::Disabled)
            painter->setOpacity(painter->opacity() * disabledOpacity);
        painter->drawImage(
            QPointF(rect.x() + (rect.width() - side) / 2.0, rect.y() + (rect.height() - side) / 2.0), image);
        painter->restore();
    }
    QPixmap pixmap(const QSize& size, QIcon::Mode mode, QIcon::State state) override {
        QPixmap pixmap(size);
        pixmap.fill(Qt::transparent);
        QPainter painter(&pixmap);
        paint(&painter, QRect(QPoint(), size), mode, state);
        return pixmap;
    }
    QIconEngine* clone() const override { return new SymbolEngine(*this); }
    bool isNull() override { return false; }

private:
    QString name;
    QColor color;
    SymbolWeight weight;
};

} // namespace

QStringList symbolNames() {
    QStringList names;
    for (const QString& file : QDir(folder).entryList({QStringLiteral("*.svg")}, QDir::Files, QDir::Name))
        names << file.chopped(4);
    names.sort();
    return names;
}

QImage symbolImage(const QString& name, double pointSize, const QColor& color, double devicePixelRatio,
                   SymbolWeight weight) {
    const int side = std::max(1, static_cast<int>(std::lround(pointSize * devicePixelRatio)));
    QImage image(side, side, QImage::Format_ARGB32_Premultiplied);
    image.fill(Qt::transparent);
    QPainter painter(&image);
    painter.setRenderHint(QPainter::Antialiasing);
    QColor opaque = color;
    opaque.setAlpha(255);
    paintSymbol(painter, image.rect(), name, opaque, weight);
    if (color.alpha() != 255) {
        painter.setCompositionMode(QPainter::CompositionMode_DestinationIn);
        painter.fillRect(image.rect(), QColor(0, 0, 0, color.alpha()));
    }
    painter.end();
    image.setDevicePixelRatio(devicePixelRatio);
    return image;
}

QIcon symbolIcon(const QString& name, const QColor& color, SymbolWeight weight) {
    MARROWFIN_INVARIANT(QFile::exists(folder + name + QStringLiteral(".svg")));
    return QIcon(new SymbolEngine(name, color, weight));
}

} // namespace marrowfin::chrome
