// The contents of an editor window on a played desktop, with a hand that presses and types. View points.
#pragma once

#include "annotation/Records.h"
#include "base/Shared.h"
#include "editor/AnnotationCanvasView.h"
#include "editor/EditorRootView.h"
#include "platform/fake/FakeDesktop.h"
#include "support/Input.h"

#include <QApplication>
#include <QPainter>
#include <QTest>
#include <gtest/gtest.h>

namespace marrowfin {

using namespace testsupport;

inline QImage page(int width, int height) {
    QImage pixels(width, height, QImage::Format_RGB32);
    pixels.fill(Qt::white);
    QPainter painter(&pixels);
    for (int y = 8; y < height; y += 16)
        painter.fillRect(12, y, width - 24 - (y * 7) % (width / 2), 6, QColor(70, 74, 82));
    painter.fillRect(width / 2, height / 3, width / 4, height / 4, QColor(40, 120, 200));
    return pixels;
}

class RootFixture : public testing::Test {
protected:
    explicit RootFixture(const Image& image = Image::captured(page(640, 320)), QSize size = {760, 520})
        : root(std::make_unique<EditorRootView>(image)) {
        root->resize(size);
        root->show();
        QApplication::setActiveWindow(root.get());
        QCoreApplication::processEvents();
    }
    ~RootFixture() override {
        root.reset();
        SharedObjects::destroyAll();
    }

    AnnotationCanvasView& canvas() { return *root->canvas(); }
    AnnotationDocument& document() { return *root->document(); }
    ToolState& tools() { return *root->toolState(); }
    QPointF view(QPointF imagePoint) {
        return canvas().imageRect().topLeft() + imagePoint * canvas().displayScale();
    }
    void drag(QPointF from, QPointF to) { dragMouse(canvas(), view(from), view(to)); }
    // As a keyboard would: to whatever widget has it.
    void key(Qt::Key key, Qt::KeyboardModifiers modifiers = Qt::NoModifier) {
        QTest::keyClick(root->window()->windowHandle(), key, modifiers);
    }
    void type(const QString& text) {
        for (const QChar character : text)
            QTest::keyClick(root->window()->windowHandle(), character.toLatin1());
    }

    // What is on the screen now, at this density.
    QImage shot(double density = 1) {
        QCoreApplication::processEvents();
        QImage picture((QSizeF(root->size()) * density).toSize(), QImage::Format_RGB32);
        picture.setDevicePixelRatio(density);
        picture.fill(Qt::magenta);
        root->render(&picture);
        picture.setDevicePixelRatio(1);
        return picture;
    }

    fake::FakeDesktop desktop;
    std::unique_ptr<EditorRootView> root;
};

} // namespace marrowfin
