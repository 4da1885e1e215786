// The tray as a person sees and uses it: pixels of the screen, and a real pointer. Points. Tests only.
#pragma once

#include "desktop/freedesktop/support/Xclip.h"
#include "platform/StatusItem.h"

#include <QApplication>
#include <QGuiApplication>
#include <QPixmap>
#include <QScreen>
#include <QWidget>

namespace marrowfin::testsupport {

// Nothing else on the desktop has this colour.
inline const QColor iconColor(255, 0, 200);

// Fills the square, and remembers at which sizes it was asked to.
class DrawerLog {
public:
    platform::StatusItem::IconDrawer drawer() {
        return [sides = sides](int pixels, bool) {
            sides->push_back(pixels);
            QImage image(pixels, pixels, QImage::Format_ARGB32_Premultiplied);
            image.fill(iconColor);
            return image;
        };
    }
    const std::vector<int>& drawn() const { return *sides; }

private:
    std::shared_ptr<std::vector<int>> sides = std::make_shared<std::vector<int>>();
};

// Native pixels of the screen that have the icon's colour; null when there are none.
inline QRect iconOnScreen() {
    const QImage shot = QGuiApplication::primaryScreen()->grabWindow(0).toImage();
    QRect found;
    for (int y = 0; y < shot.height(); ++y)
        for (int x = 0; x < shot.width(); ++x)
            if (shot.pixel(x, y) == iconColor.rgb())
                found |= QRect(x, y, 1, 1);
    return found;
}

inline bool iconShows() {
    return waitUntil([] { return !iconOnScreen().isNull(); });
}
inline bool iconIsGone() {
    return waitUntil([] { return iconOnScreen().isNull(); });
}

inline void xdotool(const QStringList& arguments) {
    EXPECT_EQ(runProgram(QStringLiteral("xdotool"), arguments).exitCode, 0);
}
inline void movePointer(const QPoint& native) {
    xdotool({QStringLiteral("mousemove"), QString::number(native.x()), QString::number(native.y())});
}
inline void pressButton(int number) {
    xdotool({QStringLiteral("mousedown"), QString::number(number)});
}
inline void releaseButton(int number) {
    xdotool({QStringLiteral("mouseup"), QString::number(number)});
}

} // namespace marrowfin::testsupport
