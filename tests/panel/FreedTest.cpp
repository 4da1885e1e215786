// What a card held is free when it has gone, whichever way it went: its window, its views, its two renders,
// and the capture when nobody else holds it. Counted by owners, not by memory.
#include "editor/EditorWindowController.h"
#include "panel/CardDrag.h"
#include "panel/PanelFixture.h"
#include "pin/PinManager.h"

#include <QDrag>
#include <QPointer>
#include <functional>

namespace marrowfin::panel {

using namespace editor;
using namespace imaging;
using namespace pin;

namespace {
// A capture whose pixels say when the last owner has let go.
class WatchedCapture {
public:
    WatchedCapture() : pixels(400 * 300 * 4, 90) {
        image = Image::captured(QImage(
            pixels.data(), 400, 300, QImage::Format_RGB32,
            [](void* flag) { *static_cast<bool*>(flag) = true; }, &freed));
    }
    void letGo() { image = Image(); }

    std::vector<uchar> pixels;
    Image image;
    bool freed = false;
};

class RefusedDrags : public DragRunner {
public:
    Qt::DropAction answer = Qt::IgnoreAction;
    Qt::DropAction run(QDrag& drag, QWidget&) override {
        drag.deleteLater(); // as a window system does
        return answer;
    }
};
} // namespace

class Freed : public PanelFixture {
protected:
    Freed() {
        addDisplay(1, {0, 0, 1440, 900});
        auto refused = std::make_unique<RefusedDrags>();
        drags = refused.get();
        Shared<DragRunner>::replace(std::move(refused));
    }
    void drag(CapturePanel* panel) {
        testsupport::pressMouse(panel->content(), onCard(120, 80));
        testsupport::moveMouse(panel->content(), onCard(140, 80));
    }
    // Puts a card up, lets it go that way, and looks at what is left of it.
    void expectFreed(const char* way, const std::function<void(CapturePanel*)>& leave) {
        SCOPED_TRACE(way);
        WatchedCapture capture;
        const auto widgets = QApplication::allWidgets().size();
        const auto hosted = desktop.surfaceHost.surfaces.size();
        CapturePanel* panel = presentSettled(capture.image);
        const QPointer<CapturePanelContentView> view(&panel->content());
        const Thumbnail renders = view->renders();
        EXPECT_FALSE(renders.sharp.isDetached()); // the card holds them too
        EXPECT_FALSE(renders.backdrop.isDetached());
        leave(panel);
        pass(2);
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
        EXPECT_TRUE(view.isNull());
        EXPECT_EQ(QApplication::allWidgets().size(), widgets);
        EXPECT_EQ(desktop.surfaceHost.surfaces.size(), hosted);
        EXPECT_TRUE(renders.sharp.isDetached()); // nobody but this test
        EXPECT_TRUE(renders.backdrop.isDetached());
        EXPECT_EQ(desktop.scrollGestures.watchCount(), 0);
        EXPECT_FALSE(capture.freed); // the test still has it
        capture.letGo();
        EXPECT_TRUE(fake::waitUntil([&] { return capture.freed; }));
        controller().dismissAll(Animated::No);
        pass(0);
    }

    RefusedDrags* drags;
};

TEST_F(Freed, WhicheverWayACardLeaves) {
    expectFreed("at once", [&](CapturePanel* panel) { controller().dismiss(panel, Animated::No); });
    expectFreed("faded", [&](CapturePanel* panel) { controller().dismiss(panel, Animated::Yes); });
    expectFreed("thrown", [&](CapturePanel* panel) { controller().dismiss(panel, Animated::Yes, 338); });
    expectFreed("by its timer", [&](CapturePanel*) { pass(15); });
    expectFreed("by its button", [](CapturePanel* panel) {
        panel->content().setHovered(true, HoverSource::Program);
        button(panel->content(), QStringLiteral("Close"))->click();
    });
    expectFreed("after a copy", [&](CapturePanel* panel) {
        button(panel->content(), QStringLiteral("Copy"))->click();
        desktop.pasteboard.image.reset(); // another program's, by then
        controller().dismiss(panel, Animated::Yes);
    });
    expectFreed("opened", [&](CapturePanel* panel) {
        clickAt(panel->content(), onCard(120, 80));
        ASSERT_EQ(controller().editors().size(), 1u);
        const std::weak_ptr<EditorWindowController> editor = editorAt(0);
        editor.lock()->window()->close();
        EXPECT_TRUE(fake::waitUntil([&] { return editor.expired(); }));
    });
    expectFreed("pinned", [&](CapturePanel* panel) {
        button(panel->content(), QStringLiteral("Pin"))->click();
        ASSERT_EQ(PinManager::shared().pinnedWindows().size(), 1u);
        PinManager::shared().close(PinManager::shared().pinnedWindows()[0].get());
    });
    expectFreed("taken by the window system",
                [&](CapturePanel* panel) { desktop.surfaceHost.surfaceOf(&panel->content())->takeAway(); });
}

TEST_F(Freed, AlsoAfterDrags) {
    drags->answer = Qt::CopyAction;
    expectFreed("dropped", [&](CapturePanel* panel) { drag(panel); });
    drags->answer = Qt::IgnoreAction;
    expectFreed("refused and then closed", [&](CapturePanel* panel) {
        drag(panel);
        pass(1); // it has slid back
        controller().dismiss(panel, Animated::Yes);
    });
    expectFreed("closed while it slides back", [&](CapturePanel* panel) {
        drag(panel);
        pass(0.1);
        controller().dismiss(panel, Animated::Yes);
    });
}

TEST_F(Freed, AlsoWhenItsMonitorIsUnplugged) {
    addDisplay(2, {1440, 0, 1440, 900});
    expectFreed("unplugged", [&](CapturePanel*) { desktop.removeScreen(2); });
    addDisplay(2, {1440, 0, 1440, 900});
    expectFreed("unplugged while it fades", [&](CapturePanel* panel) {
        controller().dismiss(panel, Animated::Yes);
        pass(0.1);
        desktop.removeScreen(2);
    });
}

TEST_F(Freed, FourThatAFifthPushesOutOneByOne) {
    std::vector<std::unique_ptr<WatchedCapture>> captures;
    for (int count = 0; count < 12; ++count) {
        captures.push_back(std::make_unique<WatchedCapture>());
        presentSettled(captures.back()->image);
        captures.back()->letGo();
    }
    const auto isFreed = [](const auto& capture) { return capture->freed; };
    EXPECT_TRUE(fake::waitUntil([&] { return std::all_of(captures.begin(), captures.end() - 4, isFreed); }));
    EXPECT_TRUE(std::none_of(captures.end() - 4, captures.end(), isFreed));
    EXPECT_EQ(desktop.surfaceHost.surfaces.size(), 4u);
    controller().dismissAll(Animated::No);
    pass(0);
    EXPECT_TRUE(fake::waitUntil([&] { return std::all_of(captures.begin(), captures.end(), isFreed); }));
}

TEST_F(Freed, ACaptureWhoseMakerHasGoneLivesAsLongAsItsCard) {
    WatchedCapture capture;
    CapturePanel* panel = presentSettled(capture.image);
    const uchar* bits = capture.image.pixels().constBits();
    capture.letGo();
    EXPECT_FALSE(capture.freed);
    button(panel->content(), QStringLiteral("Copy"))->click();
    ASSERT_TRUE(desktop.pasteboard.image);
    EXPECT_EQ(desktop.pasteboard.image->pixels().constBits(), bits); // shared, not copied
    button(panel->content(), QStringLiteral("Save"))->click();
    ASSERT_EQ(savedImages.size(), 1u);
    savedImages.clear();
    desktop.pasteboard.image.reset();
    drag(panel);
    EXPECT_EQ(controller().panels().size(), 1u);
    controller().dismiss(panel, Animated::No);
    pass(0);
    EXPECT_TRUE(fake::waitUntil([&] { return capture.freed; }));
}

} // namespace marrowfin::panel
