// One card under the pointer: what moves, what it covers, and what its buttons do.
#include "editor/EditorWindowController.h"
#include "panel/PanelFixture.h"
#include "pin/PinManager.h"

#include <QHelpEvent>
#include <QWidget>

namespace marrowfin::panel {

using namespace editor;
using namespace imaging;
using namespace pin;

class Card : public PanelFixture {
protected:
    Card() { addDisplay(1, {0, 0, 1440, 900}); }

    // In the card's own points.
    static QRectF inCard(const QRectF& inWindow) { return inWindow.translated(-haloLeft, -haloBottom); }
    std::size_t opened() { return controller().editors().size(); }
};

TEST_F(Card, HoverNeverCoversTheCaptureAndMovesNoWindow) {
    for (const QSize size : {QSize(1600, 1000), QSize(3000, 200), QSize(180, 800), QSize(40, 30)}) {
        CapturePanel* panel = presentSettled(capture(size.width(), size.height()));
        const DesktopRect before = panel->frame();
        panel->content().setHovered(true, HoverSource::Program);
        pass(2);
        EXPECT_EQ(panel->frame(), before);
        const QRectF card(QPointF(0, 0), cardSize);
        const QRectF capsule = inCard(panel->content().capsuleFrame());
        const QRectF caption = inCard(panel->content().captionFrame());
        const QRectF shown = inCard(panel->content().captureFrame());
        EXPECT_EQ(capsule, QRectF(27, 10, 186, 34));
        EXPECT_EQ(caption, QRectF(12, 47, 216, 13));
        EXPECT_TRUE(containsRect(card, capsule));
        EXPECT_TRUE(containsRect(card, caption));
        EXPECT_TRUE(containsRect(card, shown));
        EXPECT_GE(shown.top(), 66 - 1e-9);
        EXPECT_GE(caption.top(), capsule.bottom());
        EXPECT_GE(shown.top(), caption.bottom());
        controller().dismissAll(Animated::No);
    }
}

TEST_F(Card, TheRecededCaptureKeepsItsTopAndSpansTheUpperPart) {
    CapturePanel* panel = presentSettled(capture(440, 280)); // fills the mount
    EXPECT_EQ(inCard(panel->content().captureFrame()), QRectF(10, 10, 220, 140));
    panel->content().setHovered(true, HoverSource::Program);
    pass(2);
    const QRectF shown = inCard(panel->content().captureFrame());
    EXPECT_NEAR(shown.top(), 66, 1e-9);
    EXPECT_NEAR(shown.bottom(), 150, 1e-9);
    EXPECT_NEAR(shown.width(), 132, 1e-9);
    EXPECT_NEAR(shown.center().x(), 120, 1e-9);
}

TEST_F(Card, ASmallCaptureIsShownAtItsOwnSize) {
    CapturePanel* panel = presentSettled(capture(40, 30));
    EXPECT_EQ(inCard(panel->content().captureFrame()), QRectF(100, 65, 40, 30));
}

TEST_F(Card, TheButtonsStandInTheirBarAndSayWhatTheyAre) {
    CapturePanel* panel = presentSettled();
    const auto& buttons = panel->content().capsuleBar().buttons();
    const QStringList titles{QStringLiteral("Copy"), QStringLiteral("Save"), QStringLiteral("Annotate"),
                             QStringLiteral("Pin"), QStringLiteral("Close")};
    const QStringList symbols{QStringLiteral("doc.on.doc"), QStringLiteral("square.and.arrow.down"),
                              QStringLiteral("pencil.tip"), QStringLiteral("pin"), QStringLiteral("xmark")};
    ASSERT_EQ(buttons.size(), 5u);
    for (int index = 0; index < 5; ++index) {
        EXPECT_EQ(buttons[index]->geometry(), QRect(12 + 34 * index, 4, 26, 26));
        EXPECT_EQ(buttons[index]->toolTip(), titles[index]);
        EXPECT_EQ(buttons[index]->accessibleName(), titles[index]);
        EXPECT_EQ(buttons[index]->shownSymbol(), symbols[index]);
    }
}

TEST_F(Card, OnlyTheCardCountsAsHoverNotItsHalo) {
    CapturePanel* panel = presentSettled();
    pointAtPlace(panel->content(), {5, 5});
    EXPECT_FALSE(panel->content().isHovered());
    pointAtPlace(panel->content(), onCard(120, 80));
    EXPECT_TRUE(panel->content().isHovered());
    EXPECT_FALSE(controller().entryFor(panel)->dismissTimer.isRunning());
    pointAway(panel->content());
    EXPECT_FALSE(panel->content().isHovered());
    EXPECT_TRUE(controller().entryFor(panel)->dismissTimer.isRunning());
}

TEST_F(Card, WhileTheBarIsHiddenAClickOnAButtonsPlaceOpensTheEditor) {
    const Image image = capture();
    CapturePanel* panel = presentSettled(image);
    clickAt(panel->content(), onCard(27 + 12 + 13, 27)); // where Copy will be
    ASSERT_EQ(opened(), 1u);
    EXPECT_EQ(editorAt(0)->image(), image);
    EXPECT_TRUE(desktop.pasteboard.calls.empty());
    EXPECT_TRUE(controller().panels().empty());
}

TEST_F(Card, BesideTheButtonsAClickOnTheBarGoesToTheCard) {
    CapturePanel* panel = presentSettled();
    panel->content().setHovered(true, HoverSource::Program);
    clickAt(panel->content(), onCard(27 + 5, 27));
    EXPECT_EQ(opened(), 1u);
}

TEST_F(Card, AClickInTheHaloIsNoClick) {
    CapturePanel* panel = presentSettled();
    clickAt(panel->content(), {5, 100});
    clickAt(panel->content(), {140, 5});
    EXPECT_EQ(opened(), 0u);
    EXPECT_EQ(controller().panels().size(), 1u);
}

TEST_F(Card, OnlyTheLeftButtonClicks) {
    CapturePanel* panel = presentSettled();
    testsupport::clickMouse(panel->content(), onCard(120, 80), Qt::RightButton);
    testsupport::clickMouse(panel->content(), onCard(120, 80), Qt::MiddleButton);
    EXPECT_EQ(opened(), 0u);
}

TEST_F(Card, CopyPutsTheImageOnTheClipboardAndConfirms) {
    const Image image = capture();
    CapturePanel* panel = presentSettled(image);
    panel->content().setHovered(true, HoverSource::Program);
    GlassActionButton* copy = button(panel->content(), QStringLiteral("Copy"));
    clickAt(panel->content(), onCard(27 + 12 + 13, 27));
    EXPECT_EQ(desktop.pasteboard.calls,
              (std::vector<QString>{QStringLiteral("clearContents"), QStringLiteral("writeImage")}));
    EXPECT_EQ(desktop.pasteboard.image, image);
    EXPECT_EQ(copy->shownSymbol(), QStringLiteral("checkmark"));
    EXPECT_EQ(copy->accessibleName(), QStringLiteral("Done"));
    pass(0.85);
    EXPECT_EQ(copy->shownSymbol(), QStringLiteral("checkmark"));
    pass(0.1);
    EXPECT_EQ(copy->shownSymbol(), QStringLiteral("doc.on.doc"));
    EXPECT_EQ(copy->accessibleName(), QStringLiteral("Copy"));
    EXPECT_EQ(controller().panels().size(), 1u); // the card stays
}

TEST_F(Card, SaveRunsThePresentersRoutineAndConfirms) {
    const Image image = capture();
    CapturePanel* panel = presentSettled(image);
    button(panel->content(), QStringLiteral("Save"))->click();
    EXPECT_EQ(savedImages, std::vector<Image>{image});
    EXPECT_EQ(button(panel->content(), QStringLiteral("Save"))->shownSymbol(), QStringLiteral("checkmark"));
    EXPECT_EQ(controller().panels().size(), 1u);
}

TEST_F(Card, ACardThatLeavesWhileItConfirmsCostsNothing) {
    CapturePanel* panel = presentSettled();
    button(panel->content(), QStringLiteral("Copy"))->click();
    controller().dismiss(panel, Animated::No);
    pass(2);
    EXPECT_TRUE(desktop.surfaceHost.surfaces.empty());
    EXPECT_FALSE(chrome::AnimationClock::shared().isRunning());
}

TEST_F(Card, AnnotateOpensTheEditorAndLeaves) {
    CapturePanel* panel = presentSettled();
    button(panel->content(), QStringLiteral("Annotate"))->click();
    EXPECT_EQ(opened(), 1u);
    EXPECT_TRUE(controller().panels().empty());
    EXPECT_TRUE(panel->isVisible()); // it fades
    pass(0.3);
    EXPECT_TRUE(desktop.surfaceHost.surfaces.empty());
}

TEST_F(Card, TheEditorsWindowIsThereBeforeTheCardHasFaded) {
    CapturePanel* panel = presentSettled();
    clickAt(panel->content(), onCard(120, 80));
    ASSERT_EQ(opened(), 1u);
    EXPECT_TRUE(editorAt(0)->window()->isVisible());
    EXPECT_TRUE(panel->isVisible());
}

TEST_F(Card, AnEditorIsHeldUntilItsWindowCloses) {
    for (int count = 0; count < 2; ++count)
        button(presentSettled()->content(), QStringLiteral("Annotate"))->click();
    ASSERT_EQ(opened(), 2u);
    const std::weak_ptr<EditorWindowController> first = editorAt(0);
    const std::weak_ptr<EditorWindowController> second = editorAt(1);
    first.lock()->window()->close();
    ASSERT_EQ(opened(), 1u);
    EXPECT_EQ(editorAt(0), second.lock());
    EXPECT_TRUE(fake::waitUntil([&] { return first.expired(); }));
    EXPECT_FALSE(second.expired());
}

TEST_F(Card, PinPutsUpAPinAndLeaves) {
    CapturePanel* panel = presentSettled(capture(300, 200));
    button(panel->content(), QStringLiteral("Pin"))->click();
    ASSERT_EQ(PinManager::shared().pinnedWindows().size(), 1u);
    EXPECT_EQ(PinManager::shared().pinnedWindows()[0]->frame().rect, QRectF(100, 100, 300, 200));
    EXPECT_TRUE(controller().panels().empty());
}

TEST_F(Card, CloseJustLeaves) {
    CapturePanel* panel = presentSettled();
    panel->content().setHovered(true, HoverSource::Program);
    clickAt(panel->content(), onCard(27 + 12 + 13 + 4 * 34, 27));
    EXPECT_TRUE(controller().panels().empty());
    EXPECT_EQ(opened(), 0u);
}

TEST_F(Card, WhatAFadingCardConfirmsIsDone) {
    const Image image = capture();
    CapturePanel* panel = presentSettled(image);
    controller().dismiss(panel, Animated::Yes);
    for (const QString& title : {QStringLiteral("Copy"), QStringLiteral("Save")}) {
        button(panel->content(), title)->click();
        EXPECT_EQ(button(panel->content(), title)->shownSymbol(), QStringLiteral("checkmark"));
    }
    EXPECT_EQ(desktop.pasteboard.image, image);
    EXPECT_EQ(savedImages, std::vector<Image>{image});
}

TEST_F(Card, AFadingCardOpensNoEditorAndPinsNothing) {
    CapturePanel* panel = presentSettled();
    controller().dismiss(panel, Animated::Yes);
    button(panel->content(), QStringLiteral("Annotate"))->click();
    button(panel->content(), QStringLiteral("Pin"))->click();
    button(panel->content(), QStringLiteral("Close"))->click();
    clickAt(panel->content(), onCard(120, 80));
    EXPECT_EQ(opened(), 0u);
    EXPECT_TRUE(PinManager::shared().pinnedWindows().empty());
}

} // namespace marrowfin::panel
