// Reads a still picture through a small piece of shared memory that is kept, strip by strip: while one strip
// is copied out the server fills the other. Fresh shared memory of a whole screen costs several times the
// picture itself, in page faults on both sides, and keeping that much for the next capture is too much to
// hold while idle. Thread: the connection's.
#pragma once

#include "platform/x11/capture/Pixels.h"
#include "platform/x11/capture/SharedSegment.h"
#include "platform/x11/server/Connection.h"

#include <QImage>
#include <QRect>
#include <memory>

namespace marrowfin::x11 {

class StripReader {
public:
    // Bytes that are kept.
    static constexpr std::size_t capacity = 4 << 20;

    explicit StripReader(Connection& connection) : connection(connection) {}
    ~StripReader();
    StripReader(const StripReader&) = delete;
    StripReader& operator=(const StripReader&) = delete;

    // Attaches the memory. False when the server or the system has none for us.
    bool prepare();
    // Null when the server refused. Only for layouts that are image memory. No other client draws meanwhile.
    QImage read(xcb_drawable_t drawable, const QRect& rect, const PixelLayout& layout);

private:
    bool readStrips(xcb_drawable_t drawable, const QRect& rect, const PixelLayout& layout, QImage& picture);

    Connection& connection;
    std::unique_ptr<SharedSegment> segment;
};

// An image whose memory the kernel gives in large pages where it can; it gives them back with the image.
QImage largeImage(const QSize& size, QImage::Format format);

} // namespace marrowfin::x11
