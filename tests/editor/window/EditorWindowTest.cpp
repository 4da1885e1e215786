#include "editor/EditorWindowController.h"

#include "annotation/Records.h"
#include "base/Shared.h"
#include "editor/AnnotationCanvasView.h"
#include "editor/EditorRootView.h"
#include "platform/fake/FakeDesktop.h"
#include "support/CapturedOutput.h"
#include "support/Input.h"

#include <QApplication>
#include <QColorDialog>
#include <QFileDialog>
#include <QPointer>
#include <gtest/gtest.h>

namespace marrowfin::editor {

using namespace annotation;
using namespace imaging;

namespace {

Image picture(int width, int height) {
    QImage pixels(width, height, QImage::Format_RGB32);
    pixels.fill(QColor(40, 120, 200));
    return Image::captured(pixels);
}

class EditorWindow : public testing::Test {
protected:
    EditorWindow() { desktop.addScreen(1, {0, 0, 1600, 1000}, 1, 30); }

    using Editor = std::shared_ptr<EditorWindowController>;
    Editor opened(const Image& image = picture(300, 200)) {
        Editor editor = EditorWindowController::make(
            image, {[this](const Image& flattened) { pinned.push_back(flattened); }});
        editor->showWindow();
        QCoreApplication::processEvents();
        return editor;
    }
    static const std::vector<Editor>& open() { return EditorWindowController::openEditors(); }
    static AnnotationCanvasView& canvas(const Editor& editor) { return *editor->rootView()->canvas(); }

    fake::FakeDesktop desktop;
    std::vector<Image> pinned;
};

struct Sized {
    QSizeF image;
    QSize window;
};
class EditorWindowSize : public EditorWindow, public testing::WithParamInterface<Sized> {};

AnyAnnotation box() {
    return test::box<RectangleAnnotation>(20, 20, 60, 40);
}

} // namespace

TEST_P(EditorWindowSize, ComesFromTheImageWithinItsLimits) {
    const auto [image, window] = GetParam();
    EXPECT_EQ(editorWindowSize(image), window);
    if (image.isEmpty())
        return;
    const Editor editor = opened(picture(static_cast<int>(image.width()), static_cast<int>(image.height())));
    EXPECT_EQ(editor->window()->size(), window);
}

INSTANTIATE_TEST_SUITE_P(Of, EditorWindowSize,
                         testing::Values(Sized{{300, 200}, {760, 520}}, Sized{{1000, 600}, {1096, 728}},
                                         Sized{{3000, 2000}, {1280, 900}}, Sized{{800, 100}, {896, 520}},
                                         Sized{{100, 800}, {760, 900}}, Sized{{1184, 772}, {1280, 900}},
                                         Sized{{1185, 773}, {1280, 900}}, Sized{{664, 392}, {760, 520}},
                                         Sized{{665, 393}, {761, 521}}, Sized{{0, 0}, {760, 520}},
                                         Sized{{100000, 1}, {1280, 520}}));

TEST_F(EditorWindow, ADensePictureGetsItsSizeFromItsPoints) {
    QImage pixels(2000, 1200, QImage::Format_RGB32);
    pixels.fill(Qt::white);
    EXPECT_EQ(opened(Image::withSize(pixels, {1000, 600}))->window()->size(), QSize(1096, 728));
}

TEST_F(EditorWindow, UpToTheMaximumTheImageStandsAtItsOwnScaleAndAboveItIsScaledDown) {
    for (const QSize size : {QSize(300, 200), QSize(1000, 600), QSize(800, 100), QSize(1184, 772)})
        EXPECT_EQ(canvas(opened(picture(size.width(), size.height()))).displayScale(), 1.0) << size.width();
    EXPECT_DOUBLE_EQ(canvas(opened(picture(3000, 2000))).displayScale(), 772.0 / 2000);
}

TEST_F(EditorWindow, AnImageWithoutPixelsGetsTheLeastWindowAndIsHarmless) {
    const Editor editor = opened(Image());
    EXPECT_EQ(editor->window()->size(), QSize(760, 520));
    editor->rootView()->copyPressed();
    editor->rootView()->pinPressed();
    editor->rootView()->savePressed();
    EXPECT_TRUE(desktop.pasteboard.calls.empty());
    EXPECT_TRUE(pinned.empty());
}

TEST_F(EditorWindow, CannotBeMadeSmallerThanItsMinimumAndCanGrowBeyondItsFirstMaximum) {
    const Editor editor = opened(picture(3000, 2000));
    QWidget& window = *editor->window();
    window.resize(100, 100);
    EXPECT_EQ(window.size(), QSize(760, 520));
    window.resize(1590, 990);
    EXPECT_EQ(window.size(), QSize(1590, 990));
    QCoreApplication::processEvents();
    EXPECT_EQ(editor->rootView()->geometry(), QRect(0, 0, 1590, 990));
}

TEST_F(EditorWindow, IsAnOrdinaryWindowWithItsTitleInFrontWithTheKeyboardOnTheCanvas) {
    const Editor editor = opened();
    const QWidget& window = *editor->window();
    EXPECT_EQ(window.windowTitle(), QStringLiteral("Marrowfin Editor"));
    EXPECT_EQ(window.windowFlags() & Qt::WindowType_Mask, Qt::Window);
    EXPECT_FALSE(window.windowFlags() & (Qt::FramelessWindowHint | Qt::WindowStaysOnTopHint));
    EXPECT_EQ(window.windowModality(), Qt::NonModal);
    EXPECT_TRUE(fake::waitUntil([&] { return window.isActiveWindow(); }));
    EXPECT_EQ(window.focusWidget(), &canvas(editor));
}

TEST_F(EditorWindow, StandsInTheMiddleOfTheScreenInUse) {
    // The fake's display 30 points shorter for a panel at its bottom; the toolkit's screen begins at (0, 0).
    const Editor editor = opened(picture(1000, 600));
    EXPECT_EQ(editor->window()->pos(), QPoint((1600 - 1096) / 2, (970 - 728) / 2));
}

TEST_F(EditorWindow, OnAScreenThatIsTooSmallItsTitleBarStaysInReach) {
    desktop.removeScreen(1);
    desktop.addScreen(2, {0, 0, 800, 600}, 1, 0, 24);
    EXPECT_EQ(opened(picture(3000, 2000))->window()->pos(), QPoint(0, 24));
}

TEST_F(EditorWindow, WithoutAScreenItOpensAllTheSame) {
    desktop.removeScreen(1);
    EXPECT_TRUE(opened()->window()->isVisible());
}

TEST_F(EditorWindow, IsInTheListFromItsMakingUntilItsWindowHasClosed) {
    EXPECT_TRUE(open().empty());
    std::weak_ptr<EditorWindowController> editor = EditorWindowController::make(picture(300, 200));
    ASSERT_EQ(open().size(), 1u);
    EXPECT_EQ(open().front(), editor.lock());
    EXPECT_FALSE(editor.lock()->window()->isVisible());
    editor.lock()->showWindow();
    QCoreApplication::processEvents();
    editor.lock()->window()->close();
    EXPECT_EQ(open().size(), 1u) << "the close finishes first";
    EXPECT_TRUE(fake::waitUntil([&] { return editor.expired(); }));
    EXPECT_TRUE(open().empty());
}

TEST_F(EditorWindow, ClosingWithInkThatWasSavedNowhereAsksNothing) {
    const std::weak_ptr<EditorWindowController> editor = opened();
    const QPointer<QWidget> window = editor.lock()->window();
    editor.lock()->rootView()->document()->add(box());
    const qsizetype windows = QApplication::topLevelWidgets().size();
    EXPECT_TRUE(window->close());
    EXPECT_FALSE(window->isVisible());
    EXPECT_EQ(QApplication::topLevelWidgets().size(), windows);
    EXPECT_EQ(QApplication::activeModalWidget(), nullptr);
    EXPECT_TRUE(fake::waitUntil([&] { return editor.expired(); }));
    EXPECT_TRUE(window.isNull());
}

TEST_F(EditorWindow, WhoHoldsAClosedEditorHasItsImageButNoWindowAndCannotBringItBack) {
    const Image image = picture(300, 200);
    const Editor held = opened(image);
    int told = 0;
    QObject::connect(held.get(), &EditorWindowController::windowWillClose, held.get(), [&] { ++told; });
    held->window()->close();
    held->showWindow();
    EXPECT_FALSE(held->window()->isVisible()) << "neither while it closes";
    ASSERT_TRUE(fake::waitUntil([] { return open().empty(); }));
    held->showWindow();
    EXPECT_EQ(held->window(), nullptr);
    EXPECT_EQ(held->rootView(), nullptr);
    EXPECT_EQ(held->image(), image);
    EXPECT_EQ(told, 1);
}

TEST_F(EditorWindow, AnOpenEditOfTextGoesWithTheWindow) {
    const std::weak_ptr<EditorWindowController> editor = opened();
    editor.lock()->rootView()->toolState()->setCurrentTool(ToolType::text);
    AnnotationCanvasView& view = canvas(editor.lock());
    testsupport::clickMouse(view, view.imageRect().center());
    ASSERT_NE(view.textEditor(), nullptr);
    editor.lock()->window()->close();
    EXPECT_TRUE(fake::waitUntil([&] { return editor.expired(); }));
}

TEST_F(EditorWindow, ASaveDialogThatIsUpGoesWithTheWindow) {
    const std::weak_ptr<EditorWindowController> editor = opened();
    editor.lock()->rootView()->savePressed();
    const QPointer<QFileDialog> dialog = testsupport::onlyTopLevel<QFileDialog>();
    ASSERT_NE(dialog, nullptr);
    editor.lock()->window()->close();
    EXPECT_TRUE(fake::waitUntil([&] { return editor.expired(); }));
    EXPECT_TRUE(dialog.isNull());
}

TEST_F(EditorWindow, TheColourPickerOfAnEditorThatClosesLeavesAndColoursNothing) {
    const std::weak_ptr<EditorWindowController> editor = opened();
    const Editor other = opened();
    const QColor before = other->rootView()->toolState()->strokeColor();
    editor.lock()->rootView()->customColorRequested();
    auto* picker = testsupport::onlyTopLevel<QColorDialog>();
    ASSERT_NE(picker, nullptr);
    ASSERT_TRUE(picker->isVisible());
    editor.lock()->window()->close();
    EXPECT_FALSE(picker->isVisible());
    picker->setCurrentColor(Qt::cyan); // while the window is on its way out, and after
    EXPECT_TRUE(fake::waitUntil([&] { return editor.expired(); }));
    picker->setCurrentColor(Qt::magenta);
    EXPECT_EQ(other->rootView()->toolState()->strokeColor(), before);
    EXPECT_TRUE(other->window()->isVisible());
}

TEST_F(EditorWindow, TwoEditorsOfOneImageAreIndependent) {
    const Image image = picture(300, 200);
    const Editor first = opened(image);
    const Editor second = opened(image);
    first->rootView()->toolState()->setCurrentTool(ToolType::pen);
    first->rootView()->document()->add(box());
    first->rootView()->document()->crop({0, 0, 100, 100});
    EXPECT_EQ(second->rootView()->document()->annotations().size(), 0);
    EXPECT_EQ(second->rootView()->document()->baseImage(), image);
    EXPECT_NE(second->rootView()->toolState()->currentTool(), ToolType::pen);
    first->window()->close();
    ASSERT_TRUE(fake::waitUntil([&] { return open().size() == 1; }));
    EXPECT_EQ(open().front(), second);
    EXPECT_TRUE(second->window()->isVisible());
    second->rootView()->document()->add(box());
    EXPECT_EQ(second->rootView()->document()->annotations().size(), 1);
}

TEST_F(EditorWindow, CopyAndSaveSaySoOnStandardOutput) {
    const Editor editor = opened();
    testsupport::CapturedOutput output;
    editor->rootView()->copyPressed();
    editor->rootView()->onSave(QStringLiteral("/home/me/a picture.png"));
    EXPECT_EQ(output.text(), QStringLiteral("Copied to clipboard\nSaved to /home/me/a picture.png\n"));
}

TEST_F(EditorWindow, PinPutsUpThePictureWithItsInk) {
    const Editor editor = opened();
    editor->rootView()->document()->add(box());
    editor->rootView()->pinPressed();
    ASSERT_EQ(pinned.size(), 1u);
    EXPECT_EQ(pinned.front().size(), QSizeF(300, 200));
    EXPECT_NE(pinned.front(), editor->image());
    EXPECT_TRUE(editor->window()->isVisible());
}

TEST_F(EditorWindow, TheEndOfTheProcessTakesOpenWindowsAlong) {
    const QPointer<QWidget> window = opened()->window();
    SharedObjects::destroyAll();
    EXPECT_TRUE(window.isNull());
}

} // namespace marrowfin::editor
