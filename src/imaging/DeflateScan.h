// Where a DEFLATE stream's last block begins: only there does it say that it is the last, and blocks tell
// their length by their contents alone. So every symbol is read, but nothing is decompressed: a symbol is no
// more than a number of bits here. Any thread.
#pragma once

#include <cstddef>
#include <cstdint>
#include <span>

namespace marrowfin::imaging {

// How many bytes that may be read, whatever they hold, must follow a stream.
inline constexpr std::size_t deflateScanSlack = 8;

// Takes the mark "last" off the last block and gives the length of the stream in bits. The stream is our own
// compressor's: a broken one is a broken invariant.
std::size_t unmarkLastBlock(std::span<std::uint8_t> stream);

} // namespace marrowfin::imaging
