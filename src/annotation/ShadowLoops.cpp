#include "annotation/ShadowLoops.h"

#if defined(__x86_64__)
#include <immintrin.h>
#endif

namespace marrowfin::annotation {

namespace {

void takeAlphaPlain(quint8* alpha, const quint32* pixels, int count) {
    for (int i = 0; i < count; ++i)
        alpha[i] = static_cast<quint8>(pixels[i] >> 24);
}

void convolvePlain(quint8* out, const quint8* in, std::ptrdiff_t step, int count, const quint16* weights,
                   int taps) {
    for (int i = 0; i < count; ++i) {
        int sum = 128;
        for (int k = 0; k < taps; ++k)
            sum += in[i + k * step] * weights[k];
        out[i] = static_cast<quint8>(sum >> 8);
    }
}

void putUnderPlain(quint32* pixels, const quint8* shadow, int count, quint32 strength) {
    for (int i = 0; i < count; ++i) {
        const quint32 alpha = pixels[i] >> 24;
        const quint32 under = (shadow[i] * strength + 128) >> 8;
        const quint32 product = (255 - alpha) * under + 128;
        const quint32 added = (product + (product >> 8)) >> 8; // over 255, rounded
        pixels[i] = (pixels[i] & 0xffffffu) | (alpha + added) << 24;
    }
}

#if defined(__x86_64__)

__attribute__((target("avx2"))) void takeAlphaWide(quint8* alpha, const quint32* pixels, int count) {
    for (int i = 0; i < count; i += 8) {
        const __m256i values =
            _mm256_srli_epi32(_mm256_loadu_si256(reinterpret_cast<const __m256i*>(pixels + i)), 24);
        const __m128i words =
            _mm_packus_epi32(_mm256_castsi256_si128(values), _mm256_extracti128_si256(values, 1));
        _mm_storel_epi64(reinterpret_cast<__m128i*>(alpha + i), _mm_packus_epi16(words, words));
    }
}

__attribute__((target("avx2"))) void convolveWide(quint8* out, const quint8* in, std::ptrdiff_t step,
                                                  int count, const quint16* weights, int taps) {
    for (int i = 0; i < count; i += 16) {
        __m256i sum = _mm256_set1_epi16(128);
        for (int k = 0; k < taps; ++k) {
            const __m128i bytes = _mm_loadu_si128(reinterpret_cast<const __m128i*>(in + i + k * step));
            const __m256i weight = _mm256_set1_epi16(static_cast<short>(weights[k]));
            sum = _mm256_add_epi16(sum, _mm256_mullo_epi16(_mm256_cvtepu8_epi16(bytes), weight));
        }
        sum = _mm256_srli_epi16(sum, 8);
        _mm_storeu_si128(reinterpret_cast<__m128i*>(out + i),
                         _mm_packus_epi16(_mm256_castsi256_si128(sum), _mm256_extracti128_si256(sum, 1)));
    }
}

// All products fit 16 bits, and the upper halves of the 32-bit lanes are zero.
__attribute__((target("avx2"))) void putUnderWide(quint32* pixels, const quint8* shadow, int count,
                                                  quint32 strength) {
    const __m256i strengths = _mm256_set1_epi32(static_cast<int>(strength));
    const __m256i half = _mm256_set1_epi32(128);
    for (int i = 0; i < count; i += 8) {
        auto* const at = reinterpret_cast<__m256i*>(pixels + i);
        const __m256i from = _mm256_loadu_si256(at);
        const __m256i values =
            _mm256_cvtepu8_epi32(_mm_loadl_epi64(reinterpret_cast<const __m128i*>(shadow + i)));
        const __m256i under =
            _mm256_srli_epi32(_mm256_add_epi32(_mm256_mullo_epi16(values, strengths), half), 8);
        const __m256i through = _mm256_sub_epi32(_mm256_set1_epi32(255), _mm256_srli_epi32(from, 24));
        const __m256i product = _mm256_add_epi32(_mm256_mullo_epi16(through, under), half);
        const __m256i added = _mm256_srli_epi32(_mm256_add_epi32(product, _mm256_srli_epi32(product, 8)), 8);
        _mm256_storeu_si256(at, _mm256_add_epi32(from, _mm256_slli_epi32(added, 24)));
    }
}

constexpr ShadowLoops wideShadowLoops{takeAlphaWide, convolveWide, putUnderWide};

#endif

} // namespace

constexpr ShadowLoops plainShadowLoops{takeAlphaPlain, convolvePlain, putUnderPlain};

const ShadowLoops& shadowLoops() {
#if defined(__x86_64__)
    if (__builtin_cpu_supports("avx2"))
        return wideShadowLoops;
#endif
    return plainShadowLoops;
}

} // namespace marrowfin::annotation
