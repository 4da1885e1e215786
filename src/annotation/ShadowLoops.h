// The innermost loops of the shadow, plainly and for processors with wide registers: the numbers are the
// same.
#pragma once

#include <QtGlobal>
#include <cstddef>

namespace marrowfin::annotation {

// Counts are multiples of 8; buffers that are read or written may be touched for this much more.
constexpr int shadowLoopSlack = 16;

struct ShadowLoops {
    // alpha[i] = the alpha of pixels[i]
    void (*takeAlpha)(quint8* alpha, const quint32* pixels, int count);
    // out[i] = sum of weights[k] * in[i + k * step], over 256: along a row or, with a row's length as step,
    // down the columns. The weights add up to 256.
    void (*convolve)(quint8* out, const quint8* in, std::ptrdiff_t step, int count, const quint16* weights,
                     int taps);
    // Black of this strength, of 256, under premultiplied pixels: it shows by as much as they let through.
    void (*putUnder)(quint32* pixels, const quint8* shadow, int count, quint32 strength);
};

// The fastest that this processor has.
const ShadowLoops& shadowLoops();
extern const ShadowLoops plainShadowLoops;

} // namespace marrowfin::annotation
