// Where surfaces stand: exact frames, above everything, in order.
#include "desktop/x11surfaces/SurfacesTest.h"

namespace marrowfin {

using platform::SurfaceKeyboard;
using platform::SurfaceLevel;

using PlaceTest = SurfacesTest;

TEST_F(PlaceTest, StandsExactlyWhereItWasPut) {
    Pane pane(Qt::red);
    const auto surface = show(pane, {}, QRectF(40, 60, 276, 194));
    ASSERT_TRUE(shows(QPoint(45, 65), Qt::red));
    EXPECT_EQ(other.frameOf(idOf(pane)), native(QRect(40, 60, 276, 194)));
    surface->setFrame(desktop(QRectF(7, 9, 276, 194)));
    EXPECT_TRUE(desk::waitFor([&] { return other.frameOf(idOf(pane)) == native(QRect(7, 9, 276, 194)); }));
}

TEST_F(PlaceTest, RemembersAFractionalFrame) {
    Pane pane(Qt::red);
    const DesktopRect frame = desktop(QRectF(40.25, 60.75, 270.4, 190.6));
    const auto surface = show(pane, {}, QRectF());
    surface->setFrame(frame);
    EXPECT_EQ(surface->frame(), frame);
    EXPECT_TRUE(desk::waitFor([&] { return other.frameOf(idOf(pane)) == native(QRect(40, 61, 270, 191)); }));
}

TEST_F(PlaceTest, CoversEveryScreenItIsGiven) {
    for (const QScreen* screen : QGuiApplication::screens()) {
        Pane pane(Qt::red);
        const auto surface = show(pane, {SurfaceLevel::Overlay}, screen->geometry());
        const QRect whole(screen->geometry().topLeft(), screen->size() * screen->devicePixelRatio());
        EXPECT_TRUE(desk::waitFor([&] { return other.pixel(whole.center()) == QColor(Qt::red); }));
        EXPECT_EQ(other.frameOf(idOf(pane)), whole);
    }
}

TEST_F(PlaceTest, StandsAboveAFullScreenWindow) {
    Pane pane(Qt::red);
    const xcb_window_t window = other.open(QRect(100, 100, 300, 200), 0x2040A0);
    const auto surface = show(pane, {}, QRectF(40, 60, 100, 100));
    other.makeFullScreen(window);
    ASSERT_TRUE(shows(QPoint(20, 20), QColor::fromRgb(0x2040A0)));
    EXPECT_TRUE(shows(QPoint(50, 70), Qt::red));
    surface->orderOut();
    surface->orderFront();
    EXPECT_TRUE(shows(QPoint(50, 70), Qt::red));
    other.activate(window);
    EXPECT_TRUE(shows(QPoint(50, 70), Qt::red));
}

TEST_F(PlaceTest, StaysOnEveryWorkspace) {
    Pane pane(Qt::red);
    const auto surface = show(pane, {}, QRectF(40, 60, 100, 100));
    ASSERT_TRUE(shows(QPoint(50, 70), Qt::red));
    other.goToWorkspace(1);
    EXPECT_TRUE(shows(QPoint(50, 70), Qt::red));
    other.goToWorkspace(0);
    EXPECT_TRUE(shows(QPoint(50, 70), Qt::red));
}

TEST_F(PlaceTest, KeepsPinsBelowCardsBelowOverlays) {
    Pane pin(Qt::red);
    Pane card(Qt::green);
    Pane overlay(Qt::blue);
    const QRectF place(40, 60, 100, 100);
    const auto top = show(overlay, {SurfaceLevel::Overlay}, place);
    const auto middle = show(card, {SurfaceLevel::Card}, place);
    const auto bottom = show(pin, {SurfaceLevel::Pin}, place);
    const auto inOrder = [&] {
        return other.isAbove(idOf(overlay), idOf(card)) && other.isAbove(idOf(card), idOf(pin));
    };
    EXPECT_TRUE(desk::waitFor(inOrder));
    bottom->orderFront();
    middle->orderFront();
    bottom->orderFront();
    other.connection().sync();
    EXPECT_TRUE(desk::waitFor(inOrder));
    EXPECT_TRUE(shows(QPoint(50, 70), Qt::blue));
}

TEST_F(PlaceTest, BringsACardBeforeItsEquals) {
    Pane first(Qt::red);
    Pane second(Qt::green);
    const auto a = show(first, {}, QRectF(40, 60, 100, 100));
    const auto b = show(second, {}, QRectF(40, 60, 100, 100));
    ASSERT_TRUE(shows(QPoint(50, 70), Qt::green));
    a->orderFront();
    EXPECT_TRUE(shows(QPoint(50, 70), Qt::red));
}

TEST_F(PlaceTest, ComesBackAfterItWasOrderedOut) {
    Pane pane(Qt::red);
    const QColor beneath = other.pixel(native(QPoint(50, 70)));
    const auto surface = show(pane, {}, QRectF(40, 60, 100, 100));
    ASSERT_TRUE(shows(QPoint(50, 70), Qt::red));
    surface->orderOut();
    EXPECT_FALSE(surface->isVisible());
    EXPECT_TRUE(shows(QPoint(50, 70), beneath));
    surface->orderFront();
    EXPECT_TRUE(surface->isVisible());
    EXPECT_TRUE(shows(QPoint(50, 70), Qt::red));
}

TEST_F(PlaceTest, IsSeenEveryTimeAndKeepsBeingSeen) {
    for (int round = 0; round < 60; ++round) {
        Pane pane(Qt::red);
        const auto surface =
            show(pane, {round % 2 ? SurfaceLevel::Overlay : SurfaceLevel::Card}, QRectF(40, 60, 100, 100));
        ASSERT_TRUE(shows(QPoint(50, 70), Qt::red)) << "round " << round;
        pane.color = Qt::green;
        pane.update();
        ASSERT_TRUE(shows(QPoint(50, 70), Qt::green)) << "round " << round;
    }
}

TEST_F(PlaceTest, ShowsOnlyItsOutlineWhereNothingBlends) {
    Pane pane(Qt::transparent);
    auto surface = host->host(pane, {});
    surface->setFrame(desktop(QRectF(40, 60, 100, 100)));
    surface->setOutline(QRect(20, 20, 60, 60));
    const QColor beneath = other.pixel(native(QPoint(45, 65)));
    pane.color = Qt::red;
    surface->orderFront();
    ASSERT_TRUE(shows(QPoint(90, 110), Qt::red));
    EXPECT_EQ(surface->isComposited(), other.hasCompositor());
    EXPECT_EQ(other.pixel(native(QPoint(45, 65))), other.hasCompositor() ? QColor(Qt::red) : beneath);
}

TEST_F(PlaceTest, SurvivesTheDeathOfItsWidget) {
    auto pane = std::make_unique<Pane>(Qt::red);
    const QColor beneath = other.pixel(native(QPoint(50, 70)));
    const auto surface =
        show(*pane, {SurfaceLevel::Overlay, SurfaceKeyboard::Exclusive}, QRectF(40, 60, 100, 100));
    ASSERT_TRUE(shows(QPoint(50, 70), Qt::red));
    pane.reset();
    EXPECT_FALSE(surface->isVisible());
    EXPECT_TRUE(shows(QPoint(50, 70), beneath));
    surface->orderFront();
    surface->setFrame({});
    EXPECT_TRUE(desk::await(surface->retire()));
}

} // namespace marrowfin
