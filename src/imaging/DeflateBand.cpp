#include "imaging/DeflateBand.h"

#include "base/Invariant.h"
#include "imaging/DeflateScan.h"

#include <algorithm>
#include <array>
#include <libdeflate.h>
#include <new>

namespace marrowfin::imaging {

namespace {
// An empty stored block, behind the three bits of its header: the shortest way to a byte boundary.
constexpr std::array<std::uint8_t, 4> emptyStored{0x00, 0x00, 0xff, 0xff};
constexpr std::size_t slack = std::max(deflateScanSlack, emptyStored.size() + 1);
} // namespace

DeflateBand::DeflateBand(int level) : compressor(libdeflate_alloc_compressor(level)) {
    if (compressor == nullptr)
        throw std::bad_alloc();
}

DeflateBand::~DeflateBand() {
    libdeflate_free_compressor(compressor);
}

std::span<const std::uint8_t> DeflateBand::compress(std::span<const std::uint8_t> bytes, BandPlace place) {
    const std::size_t bound = libdeflate_deflate_compress_bound(compressor, bytes.size());
    if (output.size() < bound + slack)
        output.resize(bound + slack);
    const std::size_t length =
        libdeflate_deflate_compress(compressor, bytes.data(), bytes.size(), output.data(), bound);
    MARROWFIN_INVARIANT(length > 0);
    if (place == BandPlace::Last)
        return {output.data(), length};
    const std::size_t bits = unmarkLastBlock({output.data(), length});
    // The bits between the end and the next byte are zero already, where they share the stream's last byte.
    const std::size_t end = (bits + 3 + 7) / 8;
    if (end > length)
        output[end - 1] = 0;
    std::copy(emptyStored.begin(), emptyStored.end(), output.begin() + static_cast<std::ptrdiff_t>(end));
    return {output.data(), end + emptyStored.size()};
}

} // namespace marrowfin::imaging
