#include "base/SystemFonts.h"

#include <QFontInfo>
#include <QFontMetricsF>
#include <QImage>
#include <QPainter>
#include <gtest/gtest.h>

using namespace marrowfin;

TEST(SystemFonts, areTheProgramsOwn) {
    EXPECT_EQ(QFontInfo(systemFont(13)).family(), "Inter");
    EXPECT_EQ(QFontInfo(monospacedSystemFont(13)).family(), "JetBrains Mono");
}

TEST(SystemFonts, sizesAreLogicalPixels) {
    for (const double size : {11.0, 13.0, 24.0, 120.0})
        EXPECT_EQ(QFontInfo(systemFont(size)).pixelSize(), size);
}

TEST(SystemFonts, exactFontsHaveTheirSizeToTheFraction) {
    const auto widthPerPixel = [](const ExactFont& exact, double size) {
        return QFontMetricsF(exact.font).horizontalAdvance("Capture Area") * exact.scale / size;
    };
    for (const double size : {1.0, 11.0, 11.5, 13.0, 19.2, 24.0, 333.3}) {
        EXPECT_NEAR(widthPerPixel(exactSystemFont(size), size), widthPerPixel(exactSystemFont(100), 100),
                    0.001)
            << size;
        EXPECT_NEAR(widthPerPixel(exactMonospacedSystemFont(size), size),
                    widthPerPixel(exactMonospacedSystemFont(100), 100), 0.001)
            << size;
    }
}

TEST(SystemFonts, doNotDependOnAnImagesDensity) {
    QImage dense(10, 10, QImage::Format_RGB32);
    dense.setDotsPerMeterX(20000);
    dense.setDotsPerMeterY(20000);
    QImage usual(10, 10, QImage::Format_RGB32);
    for (const double size : {13.0, 24.0})
        EXPECT_EQ(QFontMetricsF(systemFont(size), &dense).horizontalAdvance("Width"),
                  QFontMetricsF(systemFont(size), &usual).horizontalAdvance("Width"))
            << size;
}

TEST(SystemFonts, weightsDiffer) {
    EXPECT_LT(QFontMetricsF(systemFont(20, QFont::Normal)).horizontalAdvance("Capture"),
              QFontMetricsF(systemFont(20, QFont::Bold)).horizontalAdvance("Capture"));
    EXPECT_EQ(systemFont(20, QFont::DemiBold).weight(), QFont::DemiBold);
}

TEST(SystemFonts, digitsOfACounterAreEquallyWide) {
    const QFontMetricsF metrics(monospacedDigitSystemFont(12));
    for (const char digit : std::string_view("023456789"))
        EXPECT_EQ(metrics.horizontalAdvance(QChar(digit)), metrics.horizontalAdvance('1')) << digit;
}

TEST(SystemFonts, areNotHinted) {
    EXPECT_EQ(systemFont(13).hintingPreference(), QFont::PreferNoHinting);
    EXPECT_EQ(monospacedSystemFont(13).hintingPreference(), QFont::PreferNoHinting);
}
