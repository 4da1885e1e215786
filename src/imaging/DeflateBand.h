// One piece of a DEFLATE stream that others may follow. The compressor only makes whole streams; here the
// mark of the last block is taken off and the end brought to a byte boundary, so that pieces made apart, on
// several threads, are one stream when they stand one after the other. One object serves one thread at a
// time.
#pragma once

#include <cstddef>
#include <cstdint>
#include <span>
#include <vector>

struct libdeflate_compressor;

namespace marrowfin::imaging {

enum class BandPlace { Inner, Last };

class DeflateBand {
public:
    // 1 (fastest) to 12. Throws std::bad_alloc when memory runs out, as compress() does.
    explicit DeflateBand(int level);
    ~DeflateBand();
    DeflateBand(const DeflateBand&) = delete;
    DeflateBand& operator=(const DeflateBand&) = delete;

    // What it gives is valid until the next call.
    std::span<const std::uint8_t> compress(std::span<const std::uint8_t> bytes, BandPlace place);

private:
    libdeflate_compressor* compressor;
    std::vector<std::uint8_t> output;
};

} // namespace marrowfin::imaging
