#include "platform/freedesktop/DrawnIcon.h"

#include <QIconEngine>
#include <QPainter>
#include <cmath>

namespace marrowfin::freedesktop {

namespace {

class DrawnIconEngine : public QIconEngine {
public:
    DrawnIconEngine(platform::StatusItem::IconDrawer drawer, bool darkTray)
        : drawer(std::move(drawer)), darkTray(darkTray) {}

    void paint(QPainter* painter, const QRect& rect, QIcon::Mode, QIcon::State) override {
        const double ratio = painter->device()->devicePixelRatioF();
        const int side = std::min(rect.width(), rect.height());
        QImage image = drawer(static_cast<int>(std::lround(side * ratio)), darkTray);
        image.setDevicePixelRatio(ratio);
        painter->drawImage(rect.topLeft() + QPoint((rect.width() - side) / 2, (rect.height() - side) / 2),
                           image);
    }
    QPixmap pixmap(const QSize& size, QIcon::Mode, QIcon::State) override {
        return QPixmap::fromImage(drawer(std::min(size.width(), size.height()), darkTray));
    }
    QIconEngine* clone() const override { return new DrawnIconEngine(*this); }
    bool isNull() override { return false; }

private:
    platform::StatusItem::IconDrawer drawer;
    bool darkTray;
};

} // namespace

QIcon drawnIcon(platform::StatusItem::IconDrawer drawer, bool darkTray) {
    return QIcon(new DrawnIconEngine(std::move(drawer), darkTray));
}

} // namespace marrowfin::freedesktop
