#include "imaging/DeflateBand.h"

#include "imaging/DeflateScan.h"

#include <gtest/gtest.h>
#include <libdeflate.h>
#include <random>
#include <vector>

using namespace marrowfin;
using namespace imaging;

namespace {

using Bytes = std::vector<std::uint8_t>;

// From flat to random: few symbols, so long matches; then ever more of them.
Bytes sample(std::size_t size, unsigned symbols, unsigned seed) {
    std::mt19937 random(seed);
    Bytes bytes(size);
    for (std::size_t i = 0; i < size; ++i)
        bytes[i] = i > 300 && random() % 4 != 0 ? bytes[i - 1 - random() % 300]
                                                : static_cast<std::uint8_t>(random() % symbols);
    return bytes;
}

Bytes inflated(const Bytes& stream, std::size_t size) {
    Bytes bytes(size);
    libdeflate_decompressor* inflater = libdeflate_alloc_decompressor();
    size_t used = 0;
    const libdeflate_result result = libdeflate_deflate_decompress_ex(
        inflater, stream.data(), stream.size(), bytes.data(), bytes.size(), &used, nullptr);
    libdeflate_free_decompressor(inflater);
    EXPECT_EQ(result, LIBDEFLATE_SUCCESS);
    EXPECT_EQ(used, stream.size());
    return bytes;
}

void append(Bytes& to, std::span<const std::uint8_t> more) {
    to.insert(to.end(), more.begin(), more.end());
}

} // namespace

TEST(DeflateBand, piecesAreOneStream) {
    for (int level = 1; level <= 12; ++level)
        for (const unsigned symbols : {1U, 2U, 7U, 60U, 256U}) {
            SCOPED_TRACE(level * 1000 + static_cast<int>(symbols));
            DeflateBand band(level);
            Bytes all;
            Bytes stream;
            const std::vector<std::size_t> sizes{1, 5, 100, 4000, 70000, 300};
            for (std::size_t i = 0; i < sizes.size(); ++i) {
                const Bytes piece = sample(sizes[i], symbols, static_cast<unsigned>(i));
                append(all, piece);
                append(stream,
                       band.compress(piece, i + 1 == sizes.size() ? BandPlace::Last : BandPlace::Inner));
            }
            EXPECT_EQ(inflated(stream, all.size()), all);
        }
}

TEST(DeflateBand, shortPiecesOfEveryByteAndLength) {
    DeflateBand band(1);
    Bytes all;
    Bytes stream;
    for (unsigned byte = 0; byte < 256; ++byte) {
        const Bytes one{static_cast<std::uint8_t>(byte)};
        append(all, one);
        append(stream, band.compress(one, BandPlace::Inner));
    }
    for (std::size_t length = 2; length < 600; ++length) {
        const Bytes run(length, static_cast<std::uint8_t>(length));
        append(all, run);
        append(stream, band.compress(run, length == 599 ? BandPlace::Last : BandPlace::Inner));
    }
    EXPECT_EQ(inflated(stream, all.size()), all);
}

TEST(DeflateBand, piecesThatCantBeCompressed) {
    std::mt19937 random(1);
    Bytes piece(200000);
    for (std::uint8_t& byte : piece)
        byte = static_cast<std::uint8_t>(random());
    DeflateBand band(1);
    Bytes stream;
    append(stream, band.compress(piece, BandPlace::Inner));
    append(stream, band.compress(piece, BandPlace::Last));
    Bytes twice = piece;
    append(twice, piece);
    EXPECT_EQ(inflated(stream, twice.size()), twice);
}

TEST(DeflateBand, aStreamThatNeverEndsIsABrokenInvariant) {
    Bytes stream(4 + deflateScanSlack, 0);
    stream[0] = 0x03; // fixed codes, last block, and then nothing but zeros without its end
    EXPECT_DEATH(unmarkLastBlock({stream.data(), 1}), "invariant");
    stream[0] = 0x07; // a kind of block that doesn't exist
    EXPECT_DEATH(unmarkLastBlock({stream.data(), 4}), "invariant");
}
