// The contents of an editor window on a played desktop, with a hand that presses and types as a person does:
// through the window, so that what lies on top gets it. Points are the view's unless a name says image.
#pragma once

#include "annotation/Records.h"
#include "base/Shared.h"
#include "chrome/AnimationClock.h"
#include "chrome/EditorChipButton.h"
#include "chrome/EditorGlyphButton.h"
#include "chrome/EditorLabelButton.h"
#include "chrome/EditorSlabView.h"
#include "chrome/EditorSwatchButton.h"
#include "chrome/EditorWidthButton.h"
#include "chrome/Place.h"
#include "chrome/SlabVisibility.h"
#include "editor/AnnotationCanvasView.h"
#include "editor/EditorRootView.h"
#include "editor/SecondaryLabel.h"
#include "editor/StatusChipView.h"
#include "platform/fake/FakeDesktop.h"
#include "support/LinedPage.h"

#include <QApplication>
#include <QTest>
#include <gtest/gtest.h>

namespace marrowfin::editor {

using namespace test;

inline QImage page(int width, int height) {
    return testsupport::linedPage(width, height);
}

class RootFixture : public testing::Test {
protected:
    // In the smallest window this image stands at its own size.
    explicit RootFixture(const imaging::Image& image = imaging::Image::captured(page(640, 320)),
                         QSize size = {760, 520}) {
        chrome::AnimationClock::shared().hold();
        root = std::make_unique<EditorRootView>(image);
        root->resize(size);
        root->show();
        QApplication::setActiveWindow(root.get());
        settle();
    }
    ~RootFixture() override {
        root.reset();
        SharedObjects::destroyAll();
    }

    AnnotationCanvasView& canvas() { return *root->canvas(); }
    annotation::AnnotationDocument& document() { return *root->document(); }
    annotation::ToolState& tools() { return *root->toolState(); }
    const EditorChrome& controls() { return root->chrome(); }
    qsizetype count() { return document().annotations().size(); }
    template <class Record>
    const Record* last() {
        return count() == 0 ? nullptr : document().annotations().last().as<Record>();
    }

    // Everything that waits has happened, and nothing moves any more.
    void settle() {
        QCoreApplication::processEvents();
        chrome::AnimationClock::shared().advance(2);
        QCoreApplication::processEvents();
    }

    QPoint view(QPointF image) {
        return (canvas().imageRect().topLeft() + image * canvas().displayScale()).toPoint();
    }
    QPoint middleOf(const QWidget* control) { return control->mapTo(root.get(), control->rect().center()); }
    void click(QPoint point) { QTest::mouseClick(root->windowHandle(), Qt::LeftButton, {}, point); }
    void press(const QWidget* control) {
        ASSERT_EQ(root->childAt(middleOf(control)), control) << "something lies on it";
        click(middleOf(control));
        settle();
    }
    void press(annotation::ToolType tool) { press(controls().toolButtons.at(tool)); }
    void press(annotation::CropAspect aspect) { press(controls().aspectButtons.at(aspect)); }
    void clickImage(QPointF point) { click(view(point)); }
    void dragImage(QPointF from, QPointF to) {
        QTest::mousePress(root->windowHandle(), Qt::LeftButton, {}, view(from));
        QTest::mouseMove(root->windowHandle(), view((from + to) / 2));
        QTest::mouseMove(root->windowHandle(), view(to));
        QTest::mouseRelease(root->windowHandle(), Qt::LeftButton, {}, view(to));
        settle();
    }
    void key(Qt::Key key, Qt::KeyboardModifiers modifiers = Qt::NoModifier) {
        QTest::keyClick(root->windowHandle(), key, modifiers);
        settle();
    }
    void type(const char* text) {
        for (const char* character = text; *character; ++character)
            QTest::keyClick(root->windowHandle(), *character);
        settle();
    }

    // What is on the screen now, at this density.
    QImage shot(double density = 1) {
        settle();
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

} // namespace marrowfin::editor
