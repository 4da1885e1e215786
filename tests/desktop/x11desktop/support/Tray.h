// The tray as a person sees and uses it: pixels of the screen, and a real pointer. Points. Tests only.
#pragma once

#include "desktop/x11desktop/support/Xclip.h"
#include "platform/freedesktop/FreedesktopStatusBar.h"
#include "platform/x11/desktop/X11TrayIcon.h"

#include <QApplication>
#include <QGuiApplication>
#include <QPixmap>
#include <QScreen>
#include <QWidget>

namespace marrowfin::testsupport {

// Nothing else on the desktop has this colour.
inline const QColor iconColor(255, 0, 200);

// Fills the square but for its corners, and remembers what it was asked.
class DrawerLog {
public:
    struct Request {
        int pixels;
        bool darkTray;
    };
    platform::StatusItem::IconDrawer drawer() {
        return [requests = requests](int pixels, bool darkTray) {
            requests->push_back({pixels, darkTray});
            QImage image(pixels, pixels, QImage::Format_ARGB32_Premultiplied);
            image.fill(iconColor);
            for (const QPoint corner :
                 {QPoint(0, 0), QPoint(pixels - 1, 0), QPoint(0, pixels - 1), QPoint(pixels - 1, pixels - 1)})
                image.setPixelColor(corner, Qt::transparent);
            return image;
        };
    }
    const Request& last() const { return requests->back(); }

private:
    std::shared_ptr<std::vector<Request>> requests = std::make_shared<std::vector<Request>>();
};

// Base of the fixtures with such tests: the status area as the program makes it.
class TrayTest : public testing::Test {
protected:
    std::unique_ptr<x11::Connection> connection = *x11::Connection::adoptQt();
    freedesktop::FreedesktopStatusBar statusBar{[this](platform::TrayIcon::Click click) {
        return std::make_unique<x11::X11TrayIcon>(*connection, std::move(click));
    }};
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
