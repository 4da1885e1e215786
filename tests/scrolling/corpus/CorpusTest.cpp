// The measure on rendered pages: by the true offset or not at all. The table with the larger sizes is the
// benchmark's.
#include "scrolling/corpus/Corpus.h"
#include "scrolling/ImageRegistration.h"

#include <gtest/gtest.h>

using namespace marrowfin;
using namespace marrowfin::scrolling;
using namespace marrowfin::testsupport;

namespace {

// 0 where there is none.
int offsetOf(const CorpusCase& one) {
    const Result<std::optional<Movement>> movement = ImageRegistration::movement(one.older, one.newer);
    EXPECT_TRUE(movement);
    return movement && *movement ? (*movement)->offset : 0;
}

std::string nameOf(const CorpusCase& one) {
    return (one.group + QStringLiteral(": ") + one.name).toStdString();
}

} // namespace

TEST(ScrollingCorpus, offsetsAreExactOrRefused) {
    int cases = 0;
    int right = 0;
    eachCorpusCase({400, 300}, 1, 0, [&](const CorpusCase& one) {
        const int offset = offsetOf(one);
        if (offset != 0) {
            EXPECT_NE(one.truth, Truth::Nothing) << nameOf(one) << ": " << offset;
            EXPECT_EQ(offset, one.offset) << nameOf(one);
        }
        ++cases;
        right += offset != 0 || one.truth != Truth::Moved ? 1 : 0;
    });
    EXPECT_GE(right, cases * 97 / 100) << "of " << cases;
}

// Lines and bands agree by chance now and then; these pages have many.
TEST(ScrollingCorpus, unrelatedPagesAreNeverJoined) {
    for (unsigned seed = 0; seed < 45; ++seed)
        eachUnrelatedPair({400, 300}, 1, 1000 * seed, [&](const CorpusCase& one) {
            EXPECT_EQ(offsetOf(one), 0) << nameOf(one) << ", seed " << seed;
        });
}
