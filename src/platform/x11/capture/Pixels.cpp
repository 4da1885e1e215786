#include "platform/x11/capture/Pixels.h"

#include <bit>
#include <cstring>

namespace marrowfin::x11 {

namespace {

std::uint32_t readPixel(const std::uint8_t* at, int bytes, PixelLayout::ByteOrder order) {
    std::uint32_t value = 0;
    for (int i = 0; i < bytes; ++i) {
        const int shift = 8 * (order == PixelLayout::ByteOrder::LeastFirst ? i : bytes - 1 - i);
        value |= static_cast<std::uint32_t>(at[i]) << shift;
    }
    return value;
}

// The bits under the mask, stretched to 0..255.
std::uint32_t channel(std::uint32_t pixel, std::uint32_t mask) {
    if (mask == 0)
        return 0;
    const int shift = std::countr_zero(mask);
    const std::uint64_t highest = mask >> shift;
    const std::uint64_t value = (pixel & mask) >> shift;
    return static_cast<std::uint32_t>((value * 255 + highest / 2) / highest);
}

// source + backdrop * (1 - alpha), each channel rounded to the nearest.
std::uint32_t over(std::uint32_t source, std::uint32_t backdrop) {
    const std::uint32_t rest = 255 - (source >> 24);
    std::uint32_t result = 0;
    for (int shift = 0; shift < 32; shift += 8) {
        const std::uint32_t behind = (((backdrop >> shift) & 0xFF) * rest + 127) / 255;
        const std::uint32_t sum = ((source >> shift) & 0xFF) + behind;
        result |= (sum > 255 ? 255 : sum) << shift;
    }
    return result;
}

} // namespace

int PixelLayout::bytesPerLine(int width) const {
    const std::int64_t bits = static_cast<std::int64_t>(width) * bitsPerPixel;
    return static_cast<int>((bits + scanlinePad - 1) / scanlinePad * scanlinePad / 8);
}

bool PixelLayout::isImageMemory() const {
    const bool hostOrder =
        (byteOrder == ByteOrder::LeastFirst) == (std::endian::native == std::endian::little);
    return hostOrder && bitsPerPixel == 32 && (depth == 24 || depth == 32) && red == 0xFF0000 &&
           green == 0x00FF00 && blue == 0x0000FF;
}

QImage::Format PixelLayout::imageFormat() const {
    return depth == 32 ? QImage::Format_ARGB32_Premultiplied : QImage::Format_RGB32;
}

QImage convertedPixels(const std::uint8_t* pixels, const QSize& size, const PixelLayout& layout) {
    QImage image(size, layout.imageFormat());
    if (image.isNull())
        return image;
    const int bytes = layout.bitsPerPixel / 8;
    const int stride = layout.bytesPerLine(size.width());
    for (int y = 0; y < size.height(); ++y) {
        const std::uint8_t* from = pixels + static_cast<std::ptrdiff_t>(y) * stride;
        auto* to = reinterpret_cast<std::uint32_t*>(image.scanLine(y));
        for (int x = 0; x < size.width(); ++x, from += bytes) {
            const std::uint32_t pixel = readPixel(from, bytes, layout.byteOrder);
            const std::uint32_t alpha = layout.depth == 32 ? pixel >> 24 : 0xFF;
            to[x] = alpha << 24 | channel(pixel, layout.red) << 16 | channel(pixel, layout.green) << 8 |
                    channel(pixel, layout.blue);
        }
    }
    return image;
}

void fillUndefinedAlpha(std::uint8_t* pixels, std::size_t bytes) {
    constexpr std::uint32_t opaque = 0xFF000000;
    constexpr std::uint64_t opaqueTwice = static_cast<std::uint64_t>(opaque) << 32 | opaque;
    std::size_t i = 0;
    for (; i + 8 <= bytes; i += 8) {
        std::uint64_t two = 0;
        std::memcpy(&two, pixels + i, 8);
        two |= opaqueTwice;
        std::memcpy(pixels + i, &two, 8);
    }
    for (; i + 4 <= bytes; i += 4) {
        std::uint32_t one = 0;
        std::memcpy(&one, pixels + i, 4);
        one |= opaque;
        std::memcpy(pixels + i, &one, 4);
    }
}

void blendCursor(QImage& picture, const QPoint& origin, const CursorPicture& cursor) {
    const QRect area = cursor.rect().intersected(QRect(origin, picture.size()));
    if (cursor.pixels.isNull() || area.isEmpty())
        return;
    for (int y = area.top(); y <= area.bottom(); ++y) {
        const auto* from =
            reinterpret_cast<const std::uint32_t*>(cursor.pixels.constScanLine(y - cursor.corner.y()));
        auto* to = reinterpret_cast<std::uint32_t*>(picture.scanLine(y - origin.y()));
        for (int x = area.left(); x <= area.right(); ++x)
            to[x - origin.x()] = over(from[x - cursor.corner.x()], to[x - origin.x()]);
    }
}

} // namespace marrowfin::x11
