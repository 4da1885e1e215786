// The measure on rendered pages: by the true offset or not at all. The table with the larger sizes is the
// benchmark's.
#include "scrolling/corpus/Corpus.h"
#include "scrolling/ImageRegistration.h"

#include <gtest/gtest.h>

using namespace marrowfin;
using namespace marrowfin::scrolling;
using namespace marrowfin::testsupport;

TEST(ScrollingCorpus, offsetsAreExactOrRefused) {
    int cases = 0;
    int right = 0;
    eachCorpusCase({400, 300}, 1, 0, [&](const CorpusCase& one) {
        const Result<std::optional<Movement>> movement = ImageRegistration::movement(one.older, one.newer);
        ASSERT_TRUE(movement);
        const int offset = *movement ? (*movement)->offset : 0;
        SCOPED_TRACE((one.group + QStringLiteral(": ") + one.name).toStdString());
        if (offset != 0) {
            EXPECT_NE(one.truth, Truth::Nothing) << offset;
            EXPECT_EQ(offset, one.offset);
        }
        ++cases;
        right += offset != 0 || one.truth != Truth::Moved ? 1 : 0;
    });
    EXPECT_GE(right, cases * 97 / 100) << "of " << cases;
}
