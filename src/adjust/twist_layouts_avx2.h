// Colour twist: 256-bit moves of eight pixels between memory and float lanes for
// the three-channel and the integer planar images, for twist_avx2.cpp alone. Each
// 128-bit half moves four pixels as the 128-bit moves of twist_layouts.h do.
#pragma once

#include "adjust/twist_layouts.h"
#include "frame/lanes_avx2.h"

#if LUM_SIMD_SSE && defined(__AVX2__)
namespace lum::twist {

namespace avx2 {
// Two 128-bit halves as one register, and back.
inline __m256i join(__m128i lo, __m128i hi) { return _mm256_set_m128i(hi, lo); }
inline __m128i lowHalf(__m256i v) { return _mm256_castsi256_si128(v); }
inline __m128i highHalf(__m256i v) { return _mm256_extracti128_si256(v, 1); }
// A 128-bit shuffle mask in both halves.
inline __m256i both(const sse::Mask& m) {
  return _mm256_broadcastsi128_si256(_mm_loadu_si128(reinterpret_cast<const __m128i*>(m.b)));
}
}  // namespace avx2

// Three interleaved samples: the halves are pixels 0..3 and 4..7.
template <class T>
struct Io<lanes::Avx2, T, Shape::C3> {
  using Half = Io<lanes::Sse, T, Shape::C3>;
  static constexpr int kLanes = 8;
  static void load(const T* const* p, std::ptrdiff_t x, __m256 s[4]) {
    if constexpr (std::is_same_v<T, Lum8u>) {
      // Twelve bytes in each half, split there by the 128-bit masks.
      const __m256i v = avx2::join(sse::loadBytes(p[0] + 3 * x, 12), sse::loadBytes(p[0] + 3 * x + 12, 12));
      for (int k = 0; k < 3; ++k)
        s[k] = _mm256_cvtepi32_ps(_mm256_shuffle_epi8(v, avx2::both(sse::kSplit3x4[k])));
      return;
    }
    __m128 lo[4], hi[4];
    Half::load(p, x, lo);
    Half::load(p, x + 4, hi);
    for (int k = 0; k < 3; ++k) s[k] = _mm256_set_m128(hi[k], lo[k]);
  }
  template <bool Stream>
  static void store(T* const* p, std::ptrdiff_t x, const OutLanes<lanes::Avx2, T>* r) {
    if constexpr (std::is_same_v<T, Lum8u>) {
      // Both halves made channel-major and interleaved at once.
      const __m256i v = _mm256_shuffle_epi8(sse::channelMajor8(r[0], r[1], r[2]), avx2::both(sse::kInterleave3x4));
      sse::storeBytes(p[0] + 3 * x, avx2::lowHalf(v), 12);
      sse::storeBytes(p[0] + 3 * x + 12, avx2::highHalf(v), 12);
      return;
    }
    OutLanes<lanes::Sse, T> lo[3], hi[3];
    for (int k = 0; k < 3; ++k) {
      if constexpr (kFloat<T>) lo[k] = _mm256_castps256_ps128(r[k]), hi[k] = _mm256_extractf128_ps(r[k], 1);
      else lo[k] = avx2::lowHalf(r[k]), hi[k] = avx2::highHalf(r[k]);
    }
    Half::template store<Stream>(p, x, lo);
    Half::template store<Stream>(p, x + 4, hi);
  }
};

// Three integer planes: eight samples of each.
template <class T>
  requires(!std::is_same_v<T, Lum32f>)
struct Io<lanes::Avx2, T, Shape::P3> {
  static constexpr int kLanes = 8;
  static void load(const T* const* p, std::ptrdiff_t x, __m256 s[4]) {
    for (int k = 0; k < 3; ++k) {
      const __m128i v = sse::loadBytes(p[k] + x, 8 * sizeof(T));
      if constexpr (std::is_same_v<T, Lum8u>) s[k] = _mm256_cvtepi32_ps(_mm256_cvtepu8_epi32(v));
      else if constexpr (std::is_same_v<T, Lum16u>) s[k] = _mm256_cvtepi32_ps(_mm256_cvtepu16_epi32(v));
      else s[k] = _mm256_cvtepi32_ps(_mm256_cvtepi16_epi32(v));
    }
  }
  template <bool Stream>
  static void store(T* const* p, std::ptrdiff_t x, const __m256i* r) {
    for (int k = 0; k < 3; ++k) {
      // Both halves narrowed by the 128-bit rule, then side by side.
      const __m128i lo = sse::narrow<T>(avx2::lowHalf(r[k])), hi = sse::narrow<T>(avx2::highHalf(r[k]));
      const int half = 4 * int(sizeof(T));
      sse::storeBytes(p[k] + x, lo, half);
      sse::storeBytes(reinterpret_cast<uint8_t*>(p[k] + x) + half, hi, half);
    }
  }
};

}  // namespace lum::twist
#endif
