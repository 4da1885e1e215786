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
    PinnedWindow& pin(const QColor& color, const QSize& size = {300, 200}) {
        QImage pixels(size, QImage::Format_RGB32);
        pixels.fill(color);
        PinManager::shared().pin(Image::captured(pixels));
        PinnedWindow& pinned = *PinManager::shared().pinnedWindows().back();
        EXPECT_TRUE(desk::waitFor([&] { return other.pixel(middle(pinned)) == color; }));
        EXPECT_TRUE(desk::waitFor([&] { return other.focus() == idOf(pinned); }));
        return pinned;
    }
    static std::size_t count() { return PinManager::shared().pinnedWindows().size(); }
    static xcb_window_t idOf(PinnedWindow& pinned) {
        return static_cast<xcb_window_t>(pinned.content().internalWinId());
    }
    // The image as it lies on the screen; one pixel a point.
    static QRect onScreen(PinnedWindow& pinned) {
        return toScreen(pinned.frame(), platform::services().screens.primaryHeight()).rect.toRect();
    }
    static QPoint middle(PinnedWindow& pinned) { return onScreen(pinned).center(); }
    // Where the server has the image: the window without its shadow.
    QRect served(PinnedWindow& pinned) {
        const int halo = static_cast<int>(PinnedContentView::halo);
        return other.frameOf(idOf(pinned)).adjusted(halo, halo, -halo, -halo);
    }
};

} // namespace marrowfin
