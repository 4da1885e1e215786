// How the server stores pixels, and the two ways that they become a QImage of 32 bits. Pure; any thread.
#pragma once

#include <QImage>
#include <QPoint>
#include <QSize>
#include <cstdint>

namespace marrowfin::x11 {

struct PixelLayout {
    int depth = 24;
    int bitsPerPixel = 32;
    int scanlinePad = 32; // bits
    enum class ByteOrder { LeastFirst, MostFirst } byteOrder = ByteOrder::LeastFirst;
    std::uint32_t red = 0xFF0000;
    std::uint32_t green = 0x00FF00;
    std::uint32_t blue = 0x0000FF;

    int bytesPerLine(int width) const;
    // The memory is that of QImage's 32-bit formats; only what depth 24 leaves undefined has to be filled in.
    bool isImageMemory() const;
    // Depth 32 is premultiplied, as compositors read it; everything else is opaque.
    QImage::Format imageFormat() const;
};

// A new image of those pixels, whatever their layout.
QImage convertedPixels(const std::uint8_t* pixels, const QSize& size, const PixelLayout& layout);
// The fourth byte of depth 24 is whatever the last drawing left there; an image needs it full.
void fillUndefinedAlpha(std::uint8_t* pixels, std::size_t bytes);

struct CursorPicture {
    QImage pixels; // premultiplied; null when there is no cursor
    QPoint corner; // top left, root coordinates
    std::uint32_t serial = 0;

    QRect rect() const { return QRect(corner, pixels.size()); }
};
// Draws the cursor over a picture whose top left pixel is at the given root coordinate.
void blendCursor(QImage& picture, const QPoint& origin, const CursorPicture& cursor);

} // namespace marrowfin::x11
