// The bytes of a PNG's rows, as they are before compression: channels in file order, a filter byte in front.
// Any thread; one object serves one thread at a time, and the picture is only read.
#pragma once

#include <QImage>
#include <array>
#include <cstddef>
#include <cstdint>
#include <span>
#include <vector>

namespace marrowfin::imaging {

// The number of bytes of a pixel, and the file's colour type.
enum class PngChannels { Gray = 1, Rgb = 3, Rgba = 4 };

// The picture in one of the formats that rows() reads: RGB32, ARGB32, ARGB32_Premultiplied, Grayscale8. The
// same pixels, shared where it is one already. Null when memory runs out.
QImage readableForPng(const QImage& pixels);
// Without alpha when every pixel is opaque; looks no further than the first that isn't.
PngChannels channelsFor(const QImage& readable);

class PngRows {
public:
    PngRows(const QImage& readable, PngChannels channels);

    std::size_t bytesPerRow() const { return rowBytes + 1; }
    // Rows from `first` up to, not including, `last`. Valid until the next call. Throws std::bad_alloc.
    std::span<const std::uint8_t> rows(int first, int last);

private:
    void convert(int y, std::uint8_t* into) const;
    std::uint8_t* filter(std::uint8_t* at, const std::uint8_t* above);

    const QImage& picture;
    PngChannels channels;
    std::size_t rowBytes;
    std::array<std::vector<std::uint8_t>, 2> unfiltered;
    std::vector<std::uint8_t> filtered;
};

} // namespace marrowfin::imaging
