// Pins on the session's own desktop, seen by another program. Frames are native pixels, one a point.
#pragma once

#include "desktop/x11surfaces/SessionTest.h"
#include "pin/PinManager.h"
#include "pin/PinnedContentView.h"
#include "platform/Screens.h"

namespace marrowfin {

class PinsTest : public SessionTest {
protected:
    // On the screen, with the keyboard.
    pin::PinnedWindow& pin(const QColor& color, const QSize& size = {300, 200}) {
        QImage pixels(size, QImage::Format_RGB32);
        pixels.fill(color);
        pin::PinManager::shared().pin(imaging::Image::captured(pixels));
        pin::PinnedWindow& pinned = *pin::PinManager::shared().pinnedWindows().back();
        EXPECT_TRUE(desk::waitFor([&] { return other.pixel(middle(pinned)) == color; }));
        EXPECT_TRUE(desk::waitFor([&] { return other.focus() == idOf(pinned); }));
        return pinned;
    }
    static std::size_t count() { return pin::PinManager::shared().pinnedWindows().size(); }
    static xcb_window_t idOf(pin::PinnedWindow& pinned) {
        return static_cast<xcb_window_t>(pinned.content().internalWinId());
    }
    // The image as it lies on the screen; one pixel a point.
    static QRect onScreen(pin::PinnedWindow& pinned) {
        return toScreen(pinned.frame(), platform::services().screens.primaryHeight()).rect.toRect();
    }
    static QPoint middle(pin::PinnedWindow& pinned) { return onScreen(pinned).center(); }
    // Where the server has the image: the window without its shadow.
    QRect served(pin::PinnedWindow& pinned) {
        const int halo = static_cast<int>(pin::PinnedContentView::halo);
        return other.frameOf(idOf(pinned)).adjusted(halo, halo, -halo, -halo);
    }
};

} // namespace marrowfin
