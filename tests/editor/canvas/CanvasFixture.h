// A canvas in a window of its own on a played desktop, and a hand that presses, drags and types on it. Points
// are image points unless a name says view.
#pragma once

#include "annotation/Records.h"
#include "base/Shared.h"
#include "editor/AnnotationCanvasView.h"
#include "platform/fake/FakeDesktop.h"
#include "support/Input.h"
#include "support/LinedPage.h"

#include <QApplication>
#include <QPainter>
#include <QVBoxLayout>
#include <gtest/gtest.h>
#include <sstream>

namespace marrowfin::editor {

using namespace test;
using namespace testsupport;

// The page, and one patch more for the selection to lie on.
inline QImage page(int width, int height) {
    QImage pixels = linedPage(width, height);
    QPainter(&pixels).fillRect(width / 8, height / 2, width / 6, height / 5, QColor(220, 140, 60));
    return pixels;
}

// Where and how much two pictures differ; empty when they don't.
inline std::string differences(const QImage& a, const QImage& b) {
    if (a == b)
        return {};
    if (a.size() != b.size())
        return "sizes";
    QRect where;
    int most = 0;
    int pixels = 0;
    for (int y = 0; y < a.height(); ++y)
        for (int x = 0; x < a.width(); ++x) {
            const QRgb p = a.pixel(x, y);
            const QRgb q = b.pixel(x, y);
            const int off = std::max({std::abs(qRed(p) - qRed(q)), std::abs(qGreen(p) - qGreen(q)),
                                      std::abs(qBlue(p) - qBlue(q))});
            most = std::max(most, off);
            if (off > 0) {
                where |= QRect(x, y, 1, 1);
                ++pixels;
            }
        }
    if (pixels == 0)
        return {};
    std::ostringstream text;
    text << pixels << " pixels by up to " << most << " within " << where.x() << "," << where.y() << " "
         << where.width() << "x" << where.height();
    return text.str();
}

class CanvasFixture : public testing::Test {
protected:
    // One view point to an image point, the image in the view's corner, so that points read the same.
    CanvasFixture() : CanvasFixture(page(640, 400), {640, 400}) {}
    CanvasFixture(const QImage& pixels, QSize view)
        : document(imaging::Image::captured(pixels)), window(), canvas(new AnnotationCanvasView(&window)) {
        window.resize(view);
        canvas->resize(view);
        canvas->setDocument(&document);
        canvas->setToolState(&tools);
        window.show();
        QApplication::setActiveWindow(&window);
        QCoreApplication::processEvents();
    }
    ~CanvasFixture() override { SharedObjects::destroyAll(); }

    QPointF view(QPointF point) const {
        return canvas->imageRect().topLeft() + point * canvas->displayScale();
    }
    // What a real mouse would hit there: the canvas, or a text being typed.
    void send(QEvent::Type type, QPointF point, Qt::MouseButtons held) {
        const QPointF at = view(point);
        QWidget* child = canvas->childAt(at.toPoint());
        QWidget& target =
            child && type != QEvent::MouseMove && type != QEvent::MouseButtonRelease ? *child : *canvas;
        const QPointF local = at - target.mapTo(canvas, QPointF(0, 0));
        sendMouse(target, type, local, type == QEvent::MouseMove ? Qt::NoButton : Qt::LeftButton, held);
    }
    void press(QPointF point) { send(QEvent::MouseButtonPress, point, Qt::LeftButton); }
    void dragTo(QPointF point) { send(QEvent::MouseMove, point, Qt::LeftButton); }
    void release(QPointF point) { send(QEvent::MouseButtonRelease, point, Qt::NoButton); }
    void click(QPointF point) {
        press(point);
        release(point);
    }
    void doubleClick(QPointF point) {
        click(point);
        send(QEvent::MouseButtonDblClick, point, Qt::LeftButton);
        release(point);
    }
    void drag(QPointF from, QPointF to) {
        press(from);
        dragTo((from + to) / 2);
        dragTo(to);
        release(to);
    }

    void key(int key, Qt::KeyboardModifiers modifiers = Qt::NoModifier, const QString& text = {}) {
        QWidget* target = window.focusWidget();
        ASSERT_NE(target, nullptr);
        pressKey(*target, key, modifiers, text);
    }
    void type(const QString& text) {
        for (const QChar character : text)
            key(character == u'\n' ? static_cast<int>(Qt::Key_Return)
                                   : static_cast<int>(character.toUpper().unicode()),
                Qt::NoModifier, character == u'\n' ? QStringLiteral("\r") : QString(character));
    }
    void choose(annotation::ToolType tool) { tools.choose(tool); }
    void undo() { key(Qt::Key_Z, Qt::ControlModifier); }
    void redo() { key(Qt::Key_Z, Qt::ControlModifier | Qt::ShiftModifier); }

    // What is on the screen now, at this density.
    QImage shot(double density = 1) {
        QImage picture((QSizeF(canvas->size()) * density).toSize(), QImage::Format_RGB32);
        picture.setDevicePixelRatio(density);
        picture.fill(Qt::magenta);
        canvas->render(&picture);
        picture.setDevicePixelRatio(1);
        return picture;
    }
    template <class Record>
    const Record* last() const {
        return document.annotations().isEmpty() ? nullptr : document.annotations().last().as<Record>();
    }
    qsizetype count() const { return document.annotations().size(); }

    fake::FakeDesktop desktop;
    annotation::AnnotationDocument document;
    annotation::ToolState tools;
    QWidget window;
    AnnotationCanvasView* canvas;
};

} // namespace marrowfin::editor
