// Chroma layouts of sub-sampled images: where the two chroma samples of cell cx
// of a cell row lie. The first chroma is the form's first (Cb or U), the second
// its second (Cr or V). Vector loads and stores move N cells (2, 4 or 8) as
// 16-bit lanes 0..N-1 and touch exactly the bytes of those cells.
#pragma once

#include <cstdint>
#include <cstring>

#include "frame/simd.h"

namespace lum::layout {

#if LUM_SIMD_SSE
namespace detail {
// Bytes [0, N) of p into the low bytes of a vector (the rest zero).
template <int N>
inline __m128i loadBytes(const uint8_t* p) {
  static_assert(N == 2 || N == 4 || N == 8 || N == 16);
  if constexpr (N == 16) return _mm_loadu_si128(reinterpret_cast<const __m128i*>(p));
  if constexpr (N == 8) return _mm_loadl_epi64(reinterpret_cast<const __m128i*>(p));
  if constexpr (N == 4) {
    int32_t v;
    std::memcpy(&v, p, 4);
    return _mm_cvtsi32_si128(v);
  }
  if constexpr (N == 2) {
    uint16_t v;
    std::memcpy(&v, p, 2);
    return _mm_cvtsi32_si128(v);
  }
}
// The low N bytes of v to p.
template <int N>
inline void storeBytes(uint8_t* p, __m128i v) {
  static_assert(N == 2 || N == 4 || N == 8 || N == 16);
  if constexpr (N == 16) _mm_storeu_si128(reinterpret_cast<__m128i*>(p), v);
  if constexpr (N == 8) _mm_storel_epi64(reinterpret_cast<__m128i*>(p), v);
  if constexpr (N == 4) {
    const int32_t x = _mm_cvtsi128_si32(v);
    std::memcpy(p, &x, 4);
  }
  if constexpr (N == 2) {
    const uint16_t x = uint16_t(_mm_cvtsi128_si32(v));
    std::memcpy(p, &x, 2);
  }
}
}  // namespace detail
#endif

// Chroma in two planes, one byte a cell: c[0] holds the first chroma, c[1] the
// second (P3 chroma; a YCrCb image hands its planes over in the other order).
struct ChromaPlanes {
  static void load(const uint8_t* const c[2], int cx, int& c0, int& c1) {
    c0 = c[0][cx];
    c1 = c[1][cx];
  }
  static void store(uint8_t* const c[2], int cx, int c0, int c1) {
    c[0][cx] = uint8_t(c0);
    c[1][cx] = uint8_t(c1);
  }
#if LUM_SIMD_SSE
  template <int N>
  static void load(const uint8_t* const c[2], int cx, __m128i& c0, __m128i& c1) {
    c0 = _mm_cvtepu8_epi16(detail::loadBytes<N>(c[0] + cx));
    c1 = _mm_cvtepu8_epi16(detail::loadBytes<N>(c[1] + cx));
  }
  // Lanes 0..N-1 (0..255) of c0 and c1 as bytes.
  template <int N>
  static void store(uint8_t* const c[2], int cx, __m128i c0, __m128i c1) {
    detail::storeBytes<N>(c[0] + cx, _mm_packus_epi16(c0, c0));
    detail::storeBytes<N>(c[1] + cx, _mm_packus_epi16(c1, c1));
  }
#endif
};

// Chroma interleaved in one plane, two bytes a cell (P2 chroma). First = 0 puts
// the first chroma first (Cb Cr, NV12); First = 1 the second (Cr Cb, NV21).
template <int First>
struct ChromaPairs {
  static void load(const uint8_t* const c[2], int cx, int& c0, int& c1) {
    const uint8_t* p = c[0] + 2 * cx;
    c0 = p[First];
    c1 = p[1 - First];
  }
  static void store(uint8_t* const c[2], int cx, int c0, int c1) {
    uint8_t* p = c[0] + 2 * cx;
    p[First] = uint8_t(c0);
    p[1 - First] = uint8_t(c1);
  }
#if LUM_SIMD_SSE
  template <int N>
  static void load(const uint8_t* const c[2], int cx, __m128i& c0, __m128i& c1) {
    const __m128i v = detail::loadBytes<2 * N>(c[0] + 2 * cx);
    const __m128i even = _mm_and_si128(v, _mm_set1_epi16(0xFF));
    const __m128i odd = _mm_srli_epi16(v, 8);
    c0 = First ? odd : even;
    c1 = First ? even : odd;
  }
  template <int N>
  static void store(uint8_t* const c[2], int cx, __m128i c0, __m128i c1) {
    const __m128i a = _mm_packus_epi16(c0, c0), b = _mm_packus_epi16(c1, c1);
    detail::storeBytes<2 * N>(c[0] + 2 * cx, First ? _mm_unpacklo_epi8(b, a) : _mm_unpacklo_epi8(a, b));
  }
#endif
};

using ChromaP3 = ChromaPlanes;
using ChromaNV12 = ChromaPairs<0>;
using ChromaNV21 = ChromaPairs<1>;

}  // namespace lum::layout
