#include "platform/x11/layout/DisplayLayout.h"

#include <gmock/gmock.h>

using namespace marrowfin;
using namespace marrowfin::x11;
using testing::ElementsAre;
using testing::IsEmpty;

namespace {

NativeDisplay display(std::uint32_t id, const QRect& native, const QSize& points) {
    return {id, QString::number(id), native, points, native};
}
NativeDisplay plain(std::uint32_t id, const QRect& native) {
    return display(id, native, native.size());
}

// A laptop at scale 2 left of an ordinary monitor, which is the primary.
DisplayLayout mixed() {
    return DisplayLayout({plain(1, {2880, 0, 1920, 1080}), display(2, {0, 200, 2880, 1800}, {1440, 900})});
}

} // namespace

TEST(DisplayLayout, PutsThePrimaryAtTheOrigin) {
    const DisplayLayout layout = mixed();
    EXPECT_EQ(layout.frame(layout.displays()[0]).rect, QRectF(0, 0, 1920, 1080));
    EXPECT_EQ(layout.primaryHeight(), 1080);
    EXPECT_EQ(layout.qtOrigin(), QPoint(2880, 0));
}

TEST(DisplayLayout, KeepsOriginsNativeAndDividesSizes) {
    const DisplayLayout layout = mixed();
    EXPECT_EQ(layout.frame(layout.displays()[1]).rect, QRectF(-2880, 200, 1440, 900));
    EXPECT_EQ(layout.displays()[1].scale(), 2);
}

TEST(DisplayLayout, ConvertsPointsOnTheirDisplay) {
    const DisplayLayout layout = mixed();
    EXPECT_EQ(layout.toPoints(QPoint(2880 + 100, 50)).point, QPointF(100, 50));
    EXPECT_EQ(layout.toPoints(QPoint(100, 200 + 31)).point, QPointF(-2880 + 50, 200 + 15.5));
}

TEST(DisplayLayout, ConvertsAWindowByTheDisplayThatShowsMostOfIt) {
    const DisplayLayout layout = mixed();
    // 800 of 1000 pixels on the laptop.
    EXPECT_EQ(layout.toPoints(QRect(2080, 400, 1000, 600)).rect, QRectF(-2880 + 1040, 300, 500, 300));
    EXPECT_EQ(layout.toPoints(QRect(2780, 400, 1000, 600)).rect, QRectF(-100, 400, 1000, 600));
}

TEST(DisplayLayout, ConvertsBack) {
    const DisplayLayout layout = mixed();
    for (const QRect& native :
         {QRect(2080, 400, 700, 600), QRect(3000, 10, 11, 13), QRect(0, 200, 2880, 1800)})
        EXPECT_EQ(layout.toNative(layout.toPoints(native)), native);
}

TEST(DisplayLayout, RoundsPointsLikeSizes) {
    const DisplayLayout layout({display(1, {0, 0, 2880, 1800}, {1440, 900})});
    EXPECT_EQ(layout.toNative({QRectF(10.25, 10.2, 5.5, 5.5)}), QRect(21, 20, 11, 11));
}

TEST(DisplayLayout, CountsAFractionalScaleByQtsRoundedSize) {
    const NativeDisplay odd = display(1, {0, 0, 1366, 768}, {911, 512});
    EXPECT_DOUBLE_EQ(odd.scale(), 1366.0 / 911);
    EXPECT_EQ(DisplayLayout({odd}).frame(odd).rect, QRectF(0, 0, 911, 512));
}

TEST(DisplayLayout, KnowsWhichDisplayShowsARectangle) {
    const DisplayLayout layout({plain(1, {0, 0, 100, 100}), plain(2, {100, 0, 100, 100})});
    EXPECT_EQ(layout.showing({90, 10, 40, 10})->id, 2U);
    EXPECT_EQ(layout.showing({90, 10, 20, 10})->id, 1U) << "the earlier one at a tie";
    EXPECT_EQ(layout.showing({500, 500, 10, 10}), nullptr);
    EXPECT_EQ(layout.containing({99, 99})->id, 1U);
    EXPECT_EQ(layout.containing({100, 99})->id, 2U);
    EXPECT_EQ(layout.find(2)->native, QRect(100, 0, 100, 100));
    EXPECT_EQ(layout.find(7), nullptr);
}

TEST(DisplayLayout, WithoutDisplaysIsEmptyAndHarmless) {
    const DisplayLayout layout;
    EXPECT_EQ(layout.primaryHeight(), 0);
    EXPECT_EQ(layout.qtOrigin(), QPoint());
    EXPECT_EQ(layout.toPoints(QRect(1, 2, 3, 4)).rect, QRectF(1, 2, 3, 4));
    EXPECT_TRUE(layout.toNative({QRectF(1, 2, 3, 4)}).isNull());
}

TEST(DisplayLayout, GivesTheVisibleFrameInPoints) {
    NativeDisplay scaled = display(1, {0, 0, 2880, 1800}, {1440, 900});
    scaled.visible = QRect(0, 60, 2880, 1700);
    const DisplayLayout layout({scaled});
    EXPECT_EQ(layout.visibleFrame(scaled).rect, QRectF(0, 30, 1440, 850));
}

TEST(Struts, AreReadFromBothProperties) {
    const QSize root(1000, 800);
    EXPECT_THAT(strutsFrom({0, 0, 30, 0}, root), ElementsAre(Strut{Strut::Edge::Top, 30, 0, 999}));
    EXPECT_THAT(strutsFrom({0, 40, 0, 0, 0, 0, 100, 299, 0, 0, 0, 0}, root),
                ElementsAre(Strut{Strut::Edge::Right, 40, 100, 299}));
    EXPECT_THAT(strutsFrom({0, 0, 0, 0}, root), IsEmpty());
    EXPECT_THAT(strutsFrom({1, 2, 3}, root), IsEmpty());
}

TEST(Struts, OfNonsenseStayWithinTheRoot) {
    const std::vector<Strut> struts =
        strutsFrom({0xFFFFFFFF, 0, 0, 0, 5, 0xFFFFFFFF, 0, 0, 0, 0, 0, 0}, {100, 80});
    EXPECT_THAT(struts, ElementsAre(Strut{Strut::Edge::Left, 100, 5, 79}));
    EXPECT_THAT(strutsFrom({10, 0, 0, 0, 50, 20, 0, 0, 0, 0, 0, 0}, {100, 80}), IsEmpty())
        << "ends before it starts";
}

TEST(Struts, NarrowTheDisplayThatTheyLieOn) {
    const QSize root(2000, 1000);
    const QRect left(0, 0, 1000, 1000);
    const QRect right(1000, 0, 1000, 1000);
    const std::vector<Strut> panel = {{Strut::Edge::Top, 30, 0, 999}, {Strut::Edge::Bottom, 48, 1000, 1999}};
    EXPECT_EQ(withoutStruts(left, root, panel), QRect(0, 30, 1000, 970));
    EXPECT_EQ(withoutStruts(right, root, panel), QRect(1000, 0, 1000, 952));
}

TEST(Struts, OfADisplayFurtherInDontSwallowTheOneBeforeIt) {
    const QSize root(2000, 1000);
    // A dock at the left edge of the right display counts from the root's left edge.
    const std::vector<Strut> dock = {{Strut::Edge::Left, 1060, 0, 999}};
    EXPECT_EQ(withoutStruts({0, 0, 1000, 1000}, root, dock), QRect(0, 0, 1000, 1000));
    EXPECT_EQ(withoutStruts({1000, 0, 1000, 1000}, root, dock), QRect(1060, 0, 940, 1000));
}

TEST(Struts, CountFromTheRootsEdgeAlsoForASmallerDisplay) {
    // The right display ends 200 pixels above the root's lower edge.
    const QSize root(2000, 1000);
    const std::vector<Strut> panel = {{Strut::Edge::Bottom, 240, 1000, 1999}};
    EXPECT_EQ(withoutStruts({1000, 0, 1000, 800}, root, panel), QRect(1000, 0, 1000, 760));
}

TEST(Struts, ThatLeaveNothingAreIgnored) {
    const QSize root(100, 100);
    const std::vector<Strut> both = {{Strut::Edge::Left, 60, 0, 99}, {Strut::Edge::Right, 60, 0, 99}};
    EXPECT_EQ(withoutStruts({0, 0, 100, 100}, root, both), QRect(0, 0, 100, 100));
}
