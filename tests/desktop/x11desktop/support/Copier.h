// Runs the program that copies a picture and quits. Tests only.
#pragma once

#include "desktop/x11desktop/support/Xclip.h"

#include <QImage>
#include <QTemporaryDir>

namespace marrowfin::testsupport {

inline QImage gradient() {
    QImage pixels(900, 500, QImage::Format_RGB32);
    for (int y = 0; y < pixels.height(); ++y)
        for (int x = 0; x < pixels.width(); ++x)
            pixels.setPixel(x, y, qRgb(x % 256, y % 256, (x * y) % 256));
    return pixels;
}

inline int copyAndQuit(const QImage& pixels, const QStringList& options = {}) {
    const QTemporaryDir folder;
    const QString path = folder.filePath(QStringLiteral("picture.png"));
    pixels.save(path);
    return runProgram(QStringLiteral(CLIPBOARD_COPIER), QStringList{path} + options).exitCode;
}

} // namespace marrowfin::testsupport
