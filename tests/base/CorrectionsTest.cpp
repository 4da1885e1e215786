#include "base/Corrections.h"

#include <gtest/gtest.h>
#include <set>
#include <string>

using namespace marrowfin;

namespace {

constexpr auto all = {Correction::WindowRectangles, Correction::ScrollPoint, Correction::RecordingArea,
                      Correction::RecordingTake};

std::set<Correction> activeFor(const QString& value) {
    Corrections::override(value);
    std::set<Correction> active;
    for (const Correction correction : all)
        if (Corrections::isActive(correction))
            active.insert(correction);
    return active;
}

class CorrectionsVariable : public testing::Test {
protected:
    void TearDown() override {
        qunsetenv("MARROWFIN_CORRECTIONS");
        Corrections::reset();
    }
};

} // namespace

TEST_F(CorrectionsVariable, noneWithoutIt) {
    qunsetenv("MARROWFIN_CORRECTIONS");
    Corrections::reset();
    for (const Correction correction : all)
        EXPECT_FALSE(Corrections::isActive(correction));
    EXPECT_EQ(Corrections::activeNames(), QStringList());
    EXPECT_EQ(activeFor(""), std::set<Correction>());
}

TEST_F(CorrectionsVariable, allOfThem) {
    EXPECT_EQ(activeFor("all"), std::set<Correction>(all));
    EXPECT_EQ(Corrections::activeNames(),
              QStringList({"window-rectangles", "scroll-point", "recording-area", "recording-take"}));
}

TEST_F(CorrectionsVariable, eachByItsName) {
    EXPECT_EQ(activeFor("window-rectangles"), std::set{Correction::WindowRectangles});
    EXPECT_EQ(activeFor("scroll-point"), std::set{Correction::ScrollPoint});
    EXPECT_EQ(activeFor("recording-area"), std::set{Correction::RecordingArea});
    EXPECT_EQ(activeFor("recording-take"), std::set{Correction::RecordingTake});
}

TEST_F(CorrectionsVariable, aListInAnyOrderWithBlanksAndGaps) {
    EXPECT_EQ(activeFor(" recording-take , ,window-rectangles,"),
              (std::set{Correction::WindowRectangles, Correction::RecordingTake}));
    EXPECT_EQ(Corrections::activeNames(), QStringList({"window-rectangles", "recording-take"}));
}

TEST_F(CorrectionsVariable, unknownNamesAreNothing) {
    EXPECT_EQ(activeFor("ALL"), std::set<Correction>());
    EXPECT_EQ(activeFor("windows,scroll-points,1"), std::set<Correction>());
    EXPECT_EQ(Corrections::activeNames(), QStringList());
}

TEST_F(CorrectionsVariable, isReadOnce) {
    qputenv("MARROWFIN_CORRECTIONS", "scroll-point");
    Corrections::reset();
    EXPECT_TRUE(Corrections::isActive(Correction::ScrollPoint));
    qputenv("MARROWFIN_CORRECTIONS", "all");
    EXPECT_FALSE(Corrections::isActive(Correction::RecordingTake));
    Corrections::reset();
    EXPECT_TRUE(Corrections::isActive(Correction::RecordingTake));
}
