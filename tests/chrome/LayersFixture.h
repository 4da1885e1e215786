// A widget that shows a tree of layers, and what it painted. Tests only.
#pragma once

#include "base/Shared.h"
#include "chrome/AnimationClock.h"
#include "chrome/GradientLayer.h"
#include "chrome/LayerHost.h"
#include "chrome/ShapeLayer.h"

#include <QCoreApplication>
#include <QPaintEvent>
#include <QPainter>
#include <QWidget>
#include <gtest/gtest.h>

namespace marrowfin::chrome {

class LayerWidget : public QWidget {
public:
    explicit LayerWidget(QSize size) : host(*this) {
        setAttribute(Qt::WA_TranslucentBackground);
        resize(size);
        host.setSize(size);
    }
    LayerHost host;
    QRegion painted;
    int paints = 0;

protected:
    void paintEvent(QPaintEvent* event) override {
        painted |= event->region();
        ++paints;
        QPainter painter(this);
        host.paint(painter, event->rect());
    }
};

class Layers : public testing::Test {
protected:
    Layers() { AnimationClock::shared().hold(); }
    ~Layers() override { SharedObjects::destroyAll(); }

    QImage picture(double density = 1) {
        QImage image((QSizeF(widget.size()) * density).toSize(), QImage::Format_ARGB32_Premultiplied);
        image.setDevicePixelRatio(density);
        image.fill(Qt::transparent);
        QPainter painter(&image);
        widget.host.paint(painter, widget.rect());
        return image;
    }
    // Shows the widget and forgets what was painted so far.
    void settle() {
        widget.show();
        QCoreApplication::processEvents();
        widget.painted = QRegion();
        widget.paints = 0;
    }
    void pass(double seconds) {
        AnimationClock::shared().advance(seconds);
        QCoreApplication::processEvents();
    }
    static QImage solid(int width, int height, const QColor& color) {
        QImage image(width, height, QImage::Format_ARGB32_Premultiplied);
        image.fill(color);
        return image;
    }
    static Layer& addBox(Layer& to, const QRectF& frame, const QColor& color) {
        Layer& box = to.add();
        box.setFrame(frame);
        box.setValue(Property::BackgroundColor, color);
        return box;
    }
    // From 10 to 90 across, 10 above the bottom.
    ShapeLayer& addLine() {
        ShapeLayer& line = root.add<ShapeLayer>();
        line.setFrame({0, 0, 100, 80});
        QPainterPath path(QPointF(10, 10));
        path.lineTo(90, 10);
        line.setPath(path);
        line.setFillColor(std::nullopt);
        line.setStrokeColor(Qt::red);
        line.setLine(2, Qt::RoundCap);
        return line;
    }
    static void drain(ShapeLayer& line, double seconds) {
        line.setValue(Property::StrokeEnd, 0.0);
        line.addAnimation(QStringLiteral("drain"),
                          Animation::basic(Property::StrokeEnd, 1.0, 0.0, seconds, TimingFunction::linear()));
    }
    // A layer that is nothing but its shadow.
    static Layer& addShadow(Layer& to, const QRectF& frame, double opacity, double radius,
                            const QPointF& offset = {}) {
        Layer& layer = to.add();
        layer.setFrame(frame);
        Shadow shadow;
        shadow.opacity = opacity;
        shadow.radius = radius;
        shadow.offset = offset;
        shadow.path.addRect(layer.bounds());
        layer.setShadow(shadow);
        return layer;
    }

    LayerWidget widget{QSize(100, 80)};
    Layer& root = widget.host.root();
};

} // namespace marrowfin::chrome
