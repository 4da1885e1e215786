// main() of the tests that paint or show widgets: the offscreen plugin, our own fonts, 96 dpi, the Fusion style with
// a fixed palette, so that a pixel is the same on every machine.
#include <QApplication>
#include <QStyleFactory>
#include <gtest/gtest.h>

int main(int argc, char** argv) {
    testing::InitGoogleTest(&argc, argv);
    qputenv("QT_QPA_PLATFORM", "offscreen");
    qputenv("QT_FONT_DPI", "96");
    qputenv("QT_SCALE_FACTOR_ROUNDING_POLICY", "PassThrough");
    qunsetenv("QT_SCALE_FACTOR");
    qputenv("FONTCONFIG_FILE", MARROWFIN_TESTS_DIR "/fonts/fonts.conf");
    QApplication application(argc, argv);
    QApplication::setQuitOnLastWindowClosed(false);
    QApplication::setStyle(QStyleFactory::create(QStringLiteral("Fusion")));
    return RUN_ALL_TESTS();
}
