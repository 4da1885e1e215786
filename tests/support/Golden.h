// Pictures that tests compare with. A golden PNG lies beside its test in golden/; a difference writes what
// was painted and where it differs to out/golden/, and `./dev golden` shows and accepts it. With
// MARROWFIN_ACCEPT_GOLDEN=1 in the environment the goldens are written instead of compared.
#pragma once

#include <QImage>
#include <QString>
#include <gtest/gtest.h>

namespace marrowfin::test {

struct GoldenTolerance {
    int perChannel = 0;       // of 255
    double shareOfPixels = 0; // that may differ by that much
};
constexpr GoldenTolerance exactly{};
// For gradients, scaling and blur, which may round differently from one processor to another.
constexpr GoldenTolerance rounding{1, 0.005};

// EXPECT_TRUE(matchesGolden(MARROWFIN_TEST_SOURCE_DIR, "arrow-2x", picture));
testing::AssertionResult matchesGolden(const char* sourceDir, const QString& name, const QImage& actual,
                                       GoldenTolerance tolerance = exactly);

} // namespace marrowfin::test
