// A plate in a window, over a view that shows a picture; time stands still until a test moves it. Main
// thread.
#pragma once

#include "base/Shared.h"
#include "chrome/AnimationClock.h"
#include "chrome/EditorSlabView.h"
#include "chrome/Place.h"
#include "platform/fake/FakeDesktop.h"
#include "support/Input.h"

#include <QEnterEvent>
#include <QPainter>
#include <gtest/gtest.h>

namespace marrowfin::chrome {

// What lies beneath the plates.
class PictureView : public QWidget {
public:
    using QWidget::QWidget;
    void setPicture(const QImage& image) {
        picture = image;
        update();
    }
    void paintPart(QPainter& painter, const QRect& part) {
        paintedParts += part;
        painter.drawImage(rect(), picture);
    }

    QRegion paintedParts; // for others

protected:
    void paintEvent(QPaintEvent*) override {
        QPainter painter(this);
        painter.drawImage(rect(), picture);
    }

private:
    QImage picture;
};

class SlabFixture : public testing::Test {
protected:
    SlabFixture() {
        AnimationClock::shared().hold();
        window.resize(400, 300);
        below.setGeometry(window.rect());
        below.setPicture(plain(Qt::white));
    }
    ~SlabFixture() override { SharedObjects::destroyAll(); }

    QImage plain(const QColor& color) const {
        QImage image(window.size(), QImage::Format_RGB32);
        image.fill(color);
        return image;
    }
    void floatOver(EditorSlabView& slab) {
        slab.setBackdrop(below,
                         [this](QPainter& painter, const QRect& part) { below.paintPart(painter, part); });
    }
    void useScheme(ColorScheme scheme) { desktop.appearance.setColorScheme(scheme); }
    static void pass(double seconds) { AnimationClock::shared().advance(seconds); }
    QImage picture(double density = 1) {
        QImage image((QSizeF(window.size()) * density).toSize(), QImage::Format_RGB32);
        image.setDevicePixelRatio(density);
        image.fill(Qt::black);
        window.render(&image);
        image.setDevicePixelRatio(1);
        return image;
    }
    static void pointAt(QWidget& widget) {
        const QPointF center = QRectF(widget.rect()).center();
        QEnterEvent event(center, center, center);
        QApplication::sendEvent(&widget, &event);
    }
    static void pointAway(QWidget& widget) {
        QEvent event(QEvent::Leave);
        QApplication::sendEvent(&widget, &event);
    }

    fake::FakeDesktop desktop;
    QWidget window;
    PictureView below{&window};
};

} // namespace marrowfin::chrome
