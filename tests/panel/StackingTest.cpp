// Where cards stand, which leave when there is no room, and how the column closes its gaps.
#include "panel/PanelFixture.h"

#include <gmock/gmock.h>

namespace marrowfin::panel {

using namespace imaging;

using testing::ElementsAre;

class Stacking : public PanelFixture {};

TEST_F(Stacking, TheFirstCardStandsInTheBottomLeftCornerOfTheVisibleFrame) {
    addDisplay(1, {0, 0, 1440, 900}, 40, 24);
    const CapturePanel* panel = present();
    EXPECT_EQ(card(panel), QRectF(24, 64, 240, 160));
    EXPECT_EQ(panel->frame().rect, QRectF(6, 42, 276, 194));
    EXPECT_TRUE(panel->isVisible());
    EXPECT_TRUE(panel->constructedOnMainThread());
}

TEST_F(Stacking, ACardHasTheSameSizeWhateverTheCapture) {
    addDisplay(1, {0, 0, 1440, 900});
    for (const QSize size : {QSize(400, 200), QSize(5000, 60), QSize(180, 800), QSize(1, 1)}) {
        const CapturePanel* panel = present(capture(size.width(), size.height()));
        EXPECT_EQ(card(panel).size(), QSizeF(240, 160)) << size.width() << "x" << size.height();
    }
}

TEST_F(Stacking, ANewCardComesAtTheBottomAndLiftsTheOthersByOneStep) {
    addDisplay(1, {0, 0, 1440, 900});
    present();
    pass(1);
    present();
    EXPECT_THAT(cards(), ElementsAre(QRectF(24, 24, 240, 160), QRectF(24, 24, 240, 160)));
    pass(0.1);
    EXPECT_GT(cards()[0].y(), 24 + 174 / 2.0); // eases out: more than half the way at two fifths of the time
    EXPECT_LT(cards()[0].y(), 24 + 174);
    pass(0.2);
    EXPECT_THAT(cards(), ElementsAre(QRectF(24, 198, 240, 160), QRectF(24, 24, 240, 160)));
}

TEST_F(Stacking, ThreeCardsDontOverlapAndHoveringMovesNone) {
    addDisplay(1, {0, 0, 1440, 900}, 40);
    present();
    CapturePanel* middle = present();
    present();
    pass(1);
    const std::vector<QRectF> standing = cards();
    for (std::size_t i = 0; i < 3; ++i) {
        EXPECT_TRUE(containsRect(QRectF(0, 40, 1440, 860), standing[i]));
        for (std::size_t j = i + 1; j < 3; ++j)
            EXPECT_FALSE(standing[i].intersects(standing[j]));
    }
    pointAtPlace(middle->content(), onCard(120, 80));
    pass(1);
    EXPECT_TRUE(middle->content().isHovered());
    EXPECT_EQ(cards(), standing);
}

TEST_F(Stacking, DismissingTheMiddleCardLetsOnlyTheUpperOneDown) {
    addDisplay(1, {0, 0, 1440, 900});
    const CapturePanel* top = present();
    const CapturePanel* middle = present();
    const CapturePanel* bottom = present();
    pass(1);
    const QRectF freed = card(middle);
    controller().dismiss(middle, Animated::Yes);
    EXPECT_EQ(controller().panels().size(), 2u);
    pass(0.125);
    EXPECT_NEAR(card(top).y(), freed.y() + 174 / 2.0, 15); // half way at half the time, to a frame
    EXPECT_EQ(card(bottom), QRectF(24, 24, 240, 160));
    pass(0.2);
    EXPECT_EQ(card(top), freed);
    EXPECT_EQ(card(bottom), QRectF(24, 24, 240, 160));
}

TEST_F(Stacking, AFifthCardSendsTheOldestOfItsDisplayAway) {
    addDisplay(2, {1440, 0, 1440, 900});
    const CapturePanel* elsewhere = present();
    addDisplay(1, {0, 0, 1440, 900});
    const CapturePanel* oldest = present();
    std::vector<CapturePanel*> younger;
    for (int count = 0; count < 4; ++count)
        younger.push_back(present());
    EXPECT_EQ(controller().entryFor(oldest), nullptr);
    std::vector<CapturePanel*> up = controller().panels();
    EXPECT_EQ(up.size(), 5u);
    EXPECT_EQ(up.front(), elsewhere);
    EXPECT_EQ(std::vector(up.begin() + 1, up.end()), younger);
}

struct ShortScreen {
    double height;
    std::size_t room;
};
class StackingOnAShortScreen : public Stacking, public testing::WithParamInterface<ShortScreen> {};

// Budget = height - 48; n cards need 160 n + 14 (n - 1).
INSTANTIATE_TEST_SUITE_P(Heights, StackingOnAShortScreen,
                         testing::Values(ShortScreen{100, 1}, ShortScreen{208, 1}, ShortScreen{381, 1},
                                         ShortScreen{382, 2}, ShortScreen{555, 2}, ShortScreen{556, 3},
                                         ShortScreen{729, 3}, ShortScreen{730, 4}, ShortScreen{2000, 4}));

TEST_P(StackingOnAShortScreen, KeepsNoMoreCardsThanFit) {
    addDisplay(1, {0, 0, 800, GetParam().height});
    for (std::size_t count = 1; count <= 6; ++count) {
        present();
        EXPECT_EQ(controller().panels().size(), std::min(count, GetParam().room));
    }
}

TEST_F(Stacking, TwoDisplaysKeepTheirOwnColumns) {
    addDisplay(1, {0, 0, 1440, 900});
    addDisplay(2, {1440, 200, 1280, 720}, 30);
    pointAt({700, 400});
    const CapturePanel* left = present();
    pointAt({2000, 400});
    const CapturePanel* right = present();
    EXPECT_EQ(card(left), QRectF(24, 24, 240, 160));
    EXPECT_EQ(card(right), QRectF(1464, 254, 240, 160));
}

TEST_F(Stacking, ThePointerOnTheTopRowOfPixelsIsOnThatScreen) {
    addDisplay(1, {0, 0, 1440, 900});
    addDisplay(2, {0, 900, 1440, 900}); // above the first
    pointAt({100, 900});
    EXPECT_EQ(controller().entryFor(present())->displayID, 1u);
    pointAt({100, 900.5});
    EXPECT_EQ(controller().entryFor(present())->displayID, 2u);
}

TEST_F(Stacking, APointerOutsideEveryScreenMeansTheMainScreen) {
    addDisplay(1, {0, 0, 1440, 900});
    addDisplay(2, {1440, 0, 1440, 900});
    desktop.screens.mainDisplayID = 2;
    pointAt({-500, -500});
    EXPECT_EQ(controller().entryFor(present())->displayID, 2u);
    desktop.screens.pointer.reset();
    EXPECT_EQ(controller().entryFor(present())->displayID, 2u);
}

TEST_F(Stacking, WithoutAScreenNothingHappens) {
    controller().present(capture(), [](const Image&) {});
    EXPECT_TRUE(controller().panels().empty());
    EXPECT_EQ(desktop.surfaceHost.hostedCount, 0);
}

TEST_F(Stacking, TheCardsOfAnUnpluggedMonitorGoAtOnce) {
    addDisplay(2, {1440, 0, 1440, 900});
    const CapturePanel* lost = present();
    const CapturePanel* lostToo = present();
    addDisplay(1, {0, 0, 1440, 900});
    const CapturePanel* kept = present();
    desktop.removeScreen(2);
    EXPECT_EQ(controller().entryFor(lost), nullptr);
    EXPECT_EQ(controller().entryFor(lostToo), nullptr);
    EXPECT_THAT(controller().panels(), ElementsAre(kept));
    EXPECT_EQ(desktop.surfaceHost.order.size(), 1u);
    pass(60); // no timer of theirs strikes
    EXPECT_TRUE(controller().panels().empty());
}

TEST_F(Stacking, CardsFollowAPanelThatComesToTheScreensEdge) {
    addDisplay(1, {0, 0, 1440, 900});
    const CapturePanel* upper = present();
    const CapturePanel* lower = present();
    pass(1);
    desktop.screens.shown[0].visibleFrame = {QRectF(60, 50, 1380, 850)};
    desktop.screens.tellChanged();
    EXPECT_EQ(card(lower), QRectF(84, 74, 240, 160));
    EXPECT_EQ(card(upper), QRectF(84, 248, 240, 160));
}

TEST_F(Stacking, CardsAreSurfacesThatNeverTakeTheKeyboard) {
    addDisplay(1, {0, 0, 1440, 900});
    const CapturePanel* panel = present();
    const fake::FakeSurface* surface = desktop.surfaceHost.surfaceOf(&panel->content());
    ASSERT_NE(surface, nullptr);
    EXPECT_EQ(surface->traits.level, platform::SurfaceLevel::Card);
    EXPECT_EQ(surface->traits.keyboard, platform::SurfaceKeyboard::None);
    EXPECT_FALSE(surface->traits.passesClicks);
    // The halo lets clicks through: only the card's rectangle takes them.
    EXPECT_EQ(surface->inputRegion, QRegion(18, 12, 240, 160));
    // Without a compositor the card's rounded outline is all there is.
    EXPECT_TRUE(surface->outline.contains(QPoint(138, 92)));
    EXPECT_FALSE(surface->outline.contains(QPoint(19, 13)));
    EXPECT_EQ(surface->outline.boundingRect(), QRect(18, 12, 240, 160));
}

} // namespace marrowfin::panel
