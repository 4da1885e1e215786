#include "platform/x11/layout/WindowList.h"

#include <gmock/gmock.h>

using namespace marrowfin;
using namespace marrowfin::x11;
using testing::ElementsAre;

namespace {

WindowFacts window(std::uint32_t id) {
    WindowFacts facts;
    facts.id = id;
    facts.viewable = true;
    facts.client = QRect(100, 100, 300, 200);
    facts.pid = 42;
    return facts;
}

std::vector<std::uint32_t> idsOf(const std::vector<platform::Window>& windows) {
    std::vector<std::uint32_t> ids;
    for (const platform::Window& each : windows)
        ids.push_back(each.windowID);
    return ids;
}

const DisplayLayout layout({{1, QStringLiteral("one"), {0, 0, 1000, 800}, {1000, 800}, {0, 0, 1000, 800}}});

} // namespace

TEST(VisibleFrame, HasTheDecorationsAndNotTheShadow) {
    WindowFacts decorated = window(1);
    decorated.frameExtents = QMargins(2, 24, 3, 4);
    EXPECT_EQ(visibleFrame(decorated), QRect(98, 76, 305, 228));
    WindowFacts shadowed = window(2);
    shadowed.invisibleExtents = QMargins(26, 23, 26, 29);
    EXPECT_EQ(visibleFrame(shadowed), QRect(126, 123, 248, 148));
}

TEST(VisibleFrame, HasTheBorderThatSomeWindowManagersDraw) {
    WindowFacts bordered = window(1);
    bordered.border = 2;
    EXPECT_EQ(visibleFrame(bordered), QRect(98, 98, 304, 204));
}

TEST(PickableWindows, ComeFrontToBack) {
    EXPECT_THAT(idsOf(pickableWindows({window(1), window(2), window(3)}, std::nullopt, layout)),
                ElementsAre(3, 2, 1));
}

TEST(PickableWindows, LeaveOutWhatIsNotAWindowOnTheScreen) {
    WindowFacts hidden = window(1);
    hidden.hidden = true;
    WindowFacts unmapped = window(2);
    unmapped.viewable = false;
    WindowFacts dock = window(3);
    dock.kind = WindowKind::Dock;
    WindowFacts desktop = window(4);
    desktop.kind = WindowKind::Desktop;
    WindowFacts empty = window(5);
    empty.client = QRect(10, 10, 0, 0);
    EXPECT_THAT(idsOf(pickableWindows({hidden, unmapped, dock, desktop, empty, window(6)}, 0, layout)),
                ElementsAre(6));
}

TEST(PickableWindows, AreThoseOfThisWorkspaceAndOfAll) {
    WindowFacts here = window(1);
    here.workspace = 2;
    WindowFacts elsewhere = window(2);
    elsewhere.workspace = 1;
    WindowFacts everywhere = window(3);
    everywhere.workspace = 0xFFFFFFFF;
    const std::vector<WindowFacts> all = {here, elsewhere, everywhere, window(4)};
    EXPECT_THAT(idsOf(pickableWindows(all, 2, layout)), ElementsAre(4, 3, 1));
    EXPECT_THAT(idsOf(pickableWindows(all, std::nullopt, layout)), ElementsAre(4, 3, 2, 1));
}

TEST(PickableWindows, HaveTheirFrameInPoints) {
    const DisplayLayout doubled(
        {{1, QStringLiteral("one"), {0, 0, 2000, 1600}, {1000, 800}, {0, 0, 2000, 1600}}});
    WindowFacts facts = window(1);
    facts.title = QStringLiteral("A title");
    facts.pid.reset();
    const auto list = pickableWindows({facts}, 0, doubled);
    ASSERT_EQ(list.size(), 1U);
    EXPECT_EQ(list.front().frame.rect, QRectF(50, 50, 150, 100));
    EXPECT_EQ(list.front().title, QStringLiteral("A title"));
    EXPECT_FALSE(list.front().ownerPID);
}
