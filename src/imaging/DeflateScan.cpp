#include "imaging/DeflateScan.h"

#include "base/Invariant.h"

#include <algorithm>
#include <array>
#include <cstring>

namespace marrowfin::imaging {

namespace {

constexpr unsigned longestCode = 15;

class BitReader {
public:
    explicit BitReader(std::span<const std::uint8_t> bytes) : bytes(bytes) {}

    // At least 56 bits are there afterwards; those beyond the end mean nothing.
    void refill() {
        std::uint64_t next = 0;
        std::memcpy(&next, bytes.data() + std::min(at, bytes.size()), sizeof next);
        buffer |= next << held;
        at += (63 - held) >> 3;
        held |= 56;
    }
    std::uint64_t peek() const { return buffer; }
    void skip(unsigned count) {
        buffer >>= count;
        held -= count;
    }
    unsigned take(unsigned count) {
        const auto value = static_cast<unsigned>(buffer & ((1U << count) - 1));
        skip(count);
        return value;
    }
    std::size_t position() const { return at * 8 - held; }
    void moveToByte(std::size_t index) {
        at = index;
        buffer = 0;
        held = 0;
    }

private:
    std::span<const std::uint8_t> bytes;
    std::uint64_t buffer = 0;
    std::size_t at = 0;
    unsigned held = 0;
};

// A symbol: how many bits it takes, and what it means to whoever built the table.
struct Entry {
    std::uint8_t bits = 0;
    std::uint8_t meaning = 0;
};

unsigned reversed(unsigned code, unsigned length) {
    unsigned result = 0;
    for (unsigned bit = 0; bit < length; ++bit)
        result |= ((code >> bit) & 1U) << (length - 1 - bit);
    return result;
}

// All codes of one alphabet, looked up by the next bits of the stream. Blocks are many and most codes are
// short: those are in a small table that is cheap to make for each block; the few long ones are in a large
// one that isn't cleared, because whatever isn't a short code finds its own entry there.
class CodeTable {
public:
    // `describe` gives a symbol's meaning, and the bits that follow its code.
    template <class Describe>
    void build(std::span<const std::uint8_t> lengths, Describe describe) {
        std::array<unsigned, longestCode + 1> count{};
        for (const std::uint8_t length : lengths)
            ++count[length];
        count[0] = 0;
        std::array<unsigned, longestCode + 1> next{};
        for (unsigned length = 1, code = 0; length <= longestCode; ++length) {
            code = (code + count[length - 1]) << 1;
            next[length] = code;
        }
        shortCodes.fill({});
        for (unsigned symbol = 0; symbol < lengths.size(); ++symbol)
            if (const unsigned length = lengths[symbol]; length != 0)
                enter(reversed(next[length]++, length), length, describe(symbol));
    }
    Entry find(std::uint64_t bits) const {
        const Entry entry = shortCodes[bits % shortCodes.size()];
        return entry.bits != 0 ? entry : longCodes[bits % longCodes.size()];
    }

private:
    void enter(unsigned code, unsigned length, Entry entry) {
        entry.bits = static_cast<std::uint8_t>(entry.bits + length);
        const std::span<Entry> table = length <= shortCode ? std::span<Entry>(shortCodes) : longCodes;
        for (unsigned index = code; index < table.size(); index += 1U << length)
            table[index] = entry;
    }

    static constexpr unsigned shortCode = 10;
    std::array<Entry, 1U << shortCode> shortCodes{};
    std::array<Entry, 1U << longestCode> longCodes{};
};

// Meanings of the alphabet of literals and lengths. A code that nobody was given is a literal of no bits.
enum Meaning : std::uint8_t { Literal, Match, EndOfBlock };

Entry literalOrLength(unsigned symbol) {
    static constexpr std::array<std::uint8_t, 31> extra{0, 0, 0, 0, 0, 0, 0, 0, 1, 1, 1, 1, 2, 2, 2, 2,
                                                        3, 3, 3, 3, 4, 4, 4, 4, 5, 5, 5, 5, 0, 0, 0};
    if (symbol < 256)
        return {0, Literal};
    return symbol == 256 ? Entry{0, EndOfBlock} : Entry{extra[symbol - 257], Match};
}

Entry distance(unsigned symbol) {
    return {static_cast<std::uint8_t>(symbol < 4 ? 0 : std::min(symbol / 2 - 1, 13U)), 0};
}

class Scanner {
public:
    explicit Scanner(std::span<std::uint8_t> stream) : stream(stream), bits(stream) {}

    std::size_t run() {
        for (;;) {
            MARROWFIN_INVARIANT(bits.position() < stream.size() * 8);
            const std::size_t header = bits.position();
            bits.refill();
            const bool isLast = bits.take(1) == 1;
            skipBlock(bits.take(2));
            if (isLast) {
                MARROWFIN_INVARIANT(bits.position() <= stream.size() * 8);
                stream[header / 8] &= static_cast<std::uint8_t>(~(1U << (header % 8)));
                return bits.position();
            }
        }
    }

private:
    void skipBlock(unsigned type) {
        MARROWFIN_INVARIANT(type != 3);
        if (type == 0)
            return skipStored();
        if (type == 1)
            takeFixedCodes();
        else
            readCodes();
        skipSymbols();
    }

    void skipStored() {
        const std::size_t start = (bits.position() + 7) / 8;
        MARROWFIN_INVARIANT(start + 4 <= stream.size());
        bits.moveToByte(start + 4 + (stream[start] | static_cast<std::size_t>(stream[start + 1]) << 8));
    }

    void takeFixedCodes() {
        std::array<std::uint8_t, 288> lengths{};
        for (unsigned symbol = 0; symbol < lengths.size(); ++symbol)
            lengths[symbol] = symbol < 144 ? 8 : symbol < 256 ? 9 : symbol < 280 ? 7 : 8;
        std::array<std::uint8_t, 30> distanceLengths{};
        distanceLengths.fill(5);
        symbols.build(lengths, literalOrLength);
        distances.build(distanceLengths, distance);
    }

    void readCodes() {
        const unsigned literalCount = bits.take(5) + 257;
        const unsigned distanceCount = bits.take(5) + 1;
        const unsigned lengthCount = bits.take(4) + 4;
        static constexpr std::array<std::uint8_t, 19> order{16, 17, 18, 0, 8,  7, 9,  6, 10, 5,
                                                            11, 4,  12, 3, 13, 2, 14, 1, 15};
        std::array<std::uint8_t, 19> lengthCodes{};
        for (unsigned index = 0; index < lengthCount; ++index) {
            bits.refill();
            lengthCodes[order[index]] = static_cast<std::uint8_t>(bits.take(3));
        }
        symbols.build(lengthCodes, [](unsigned symbol) {
            return Entry{0, static_cast<std::uint8_t>(symbol)};
        });
        std::array<std::uint8_t, 288 + 32> lengths{};
        readCodeLengths({lengths.data(), literalCount + distanceCount});
        symbols.build({lengths.data(), literalCount}, literalOrLength);
        distances.build({lengths.data() + literalCount, distanceCount}, distance);
    }

    // The lengths are coded themselves, with runs: 16 repeats the one before, 17 and 18 are zeros.
    void readCodeLengths(std::span<std::uint8_t> into) {
        for (std::size_t done = 0; done < into.size();) {
            bits.refill();
            const Entry entry = symbols.find(bits.peek());
            MARROWFIN_INVARIANT(entry.bits != 0);
            bits.skip(entry.bits);
            std::uint8_t value = entry.meaning;
            unsigned run = 1;
            if (value == 16) {
                MARROWFIN_INVARIANT(done > 0);
                value = into[done - 1];
                run = 3 + bits.take(2);
            } else if (value > 16) {
                run = value == 17 ? 3 + bits.take(3) : 11 + bits.take(7);
                value = 0;
            }
            MARROWFIN_INVARIANT(run <= into.size() - done);
            for (; run > 0; --run)
                into[done++] = value;
        }
    }

    void skipSymbols() {
        const std::size_t end = stream.size() * 8;
        for (;;) {
            bits.refill();
            // Two literals (30 bits) or a match (48 bits) fit into what a refill gives.
            Entry entry = symbols.find(bits.peek());
            bits.skip(entry.bits);
            if (entry.meaning == Literal) {
                MARROWFIN_INVARIANT(entry.bits != 0 && bits.position() <= end);
                entry = symbols.find(bits.peek());
                if (entry.meaning != Literal)
                    continue;
                bits.skip(entry.bits);
            } else if (entry.meaning == Match) {
                const Entry far = distances.find(bits.peek());
                MARROWFIN_INVARIANT(far.bits != 0);
                bits.skip(far.bits);
            } else {
                return;
            }
        }
    }

    std::span<std::uint8_t> stream;
    BitReader bits;
    CodeTable symbols;
    CodeTable distances;
};

} // namespace

std::size_t unmarkLastBlock(std::span<std::uint8_t> stream) {
    return Scanner(stream).run();
}

} // namespace marrowfin::imaging
