// The loops for wide registers give the numbers of the plain ones.
#include "annotation/ShadowLoops.h"

#include <gtest/gtest.h>
#include <random>
#include <vector>

using namespace marrowfin;
using namespace annotation;

TEST(ShadowLoops, areTheSameOnEveryProcessor) {
    std::mt19937 random(6);
    const ShadowLoops& fast = shadowLoops();
    const std::vector<quint16> weights{10, 60, 116, 60, 10};
    for (const int count : {8, 16, 24, 104}) {
        std::vector<quint32> pixels(static_cast<size_t>(count));
        for (quint32& pixel : pixels)
            pixel = random() % 4 == 0 ? 0xff102030u : random();
        std::vector<quint8> in(static_cast<size_t>(count) + 2 * shadowLoopSlack);
        for (quint8& value : in)
            value = random() % 3 == 0 ? 255 : static_cast<quint8>(random());
        std::vector<quint8> a(in.size());
        std::vector<quint8> b(in.size());

        fast.takeAlpha(a.data(), pixels.data(), count);
        plainShadowLoops.takeAlpha(b.data(), pixels.data(), count);
        EXPECT_EQ(a, b);

        fast.convolve(a.data(), in.data() + 4, -1, count, weights.data(), 5);
        plainShadowLoops.convolve(b.data(), in.data() + 4, -1, count, weights.data(), 5);
        a.resize(static_cast<size_t>(count));
        b.resize(static_cast<size_t>(count));
        EXPECT_EQ(a, b);

        std::vector<quint32> others = pixels;
        fast.putUnder(pixels.data(), in.data(), count, 82);
        plainShadowLoops.putUnder(others.data(), in.data(), count, 82);
        EXPECT_EQ(pixels, others);
    }
}
