// The offscreen plugin, our own fonts and 96 dpi, so that a pixel is the same on every machine. Before
// QApplication is made.
#pragma once

#include <QByteArray>
#include <QtGlobal>

namespace marrowfin::test {

inline void chooseOffscreenWorld() {
    qputenv("QT_QPA_PLATFORM", "offscreen");
    qputenv("QT_FONT_DPI", "96");
    qputenv("QT_SCALE_FACTOR_ROUNDING_POLICY", "PassThrough");
    qunsetenv("QT_SCALE_FACTOR");
    qputenv("FONTCONFIG_FILE", MARROWFIN_TESTS_DIR "/fonts/fonts.conf");
}

} // namespace marrowfin::test
