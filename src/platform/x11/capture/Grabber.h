// Reads pixels from the server: a rectangle of the root or of a pixmap, through shared memory where the
// server has it. Native pixels. Thread: the connection's.
#pragma once

#include "platform/x11/capture/Pixels.h"
#include "platform/x11/capture/SharedSegment.h"
#include "platform/x11/capture/StripReader.h"
#include "platform/x11/server/Connection.h"

#include <QImage>
#include <QRect>
#include <memory>

namespace marrowfin::x11 {

enum class WithCursor { No, Yes };

class Grabber {
public:
    Grabber(Connection& connection, SegmentPool::Reuse reuse);
    ~Grabber();
    Grabber(const Grabber&) = delete;
    Grabber& operator=(const Grabber&) = delete;

    // Makes ready what the first still picture would otherwise wait for.
    void warmUp();
    // A rectangle of the screen, in root coordinates. What lies outside the root comes out black.
    Result<QImage> grabScreen(const QRect& rect, WithCursor cursor);
    // A rectangle that lies wholly inside the drawable, in its coordinates.
    Result<QImage> grabDrawable(xcb_drawable_t drawable, const QRect& rect, const PixelLayout& layout);
    // Null pixels when the cursor is hidden or the server can't tell.
    CursorPicture cursor();
    // Where grabScreen() drew the cursor last, in root coordinates; empty when it drew none.
    QRect drawnCursor() const { return cursorDrawn; }

    // Of windows and pixmaps with this visual.
    PixelLayout layoutOf(xcb_visualid_t visual) const;
    Connection& server() const { return connection; }

private:
    QImage grabShared(xcb_drawable_t drawable, const QRect& rect, const PixelLayout& layout);
    QImage grabPlain(xcb_drawable_t drawable, const QRect& rect, const PixelLayout& layout);
    std::unique_ptr<SharedSegment> segmentFor(std::size_t bytes, xcb_void_cookie_t* attached);
    void letGo(const SharedSegment& segment);
    QImage assembled(const QRect& rect);
    Error whyNot() const;

    QImage grabStill(xcb_drawable_t drawable, const QRect& rect, const PixelLayout& layout);
    void sharingRefused();

    Connection& connection;
    std::shared_ptr<SegmentPool> pool;
    StripReader strips; // for stills; streams have whole pictures in the pool
    PixelLayout rootLayout;
    bool toldOfRefusal = false;
    QRect cursorDrawn;
};

} // namespace marrowfin::x11
