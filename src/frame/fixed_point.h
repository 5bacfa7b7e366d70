// The fixed-point vocabulary of the scalar rules: a definition per operation,
// lane-exact to the vector instruction of the same name in the lane sets.
#pragma once

#include <cstdint>

#include "frame/simd.h"

namespace lum::fx {

// Value wrapped to a signed 16-bit lane.
constexpr int s16(int a) { return int16_t(uint16_t(unsigned(a))); }
// Value wrapped to an unsigned 16-bit lane.
constexpr int u16(int a) { return int(uint16_t(unsigned(a))); }

// Returns (a * b) >> 16 of signed 16-bit lanes: rounds towards minus infinity.
constexpr int mulhi16s(int a, int b) { return (s16(a) * s16(b)) >> 16; }
// Returns (a * b) >> 16 of unsigned 16-bit lanes.
constexpr int mulhi16u(int a, int b) { return int((unsigned(u16(a)) * unsigned(u16(b))) >> 16); }
// Returns the Q15 product rounded to nearest: (((a * b) >> 14) + 1) >> 1.
constexpr int mulhrs16s(int a, int b) { return s16((((s16(a) * s16(b)) >> 14) + 1) >> 1); }
// Returns a + b clamped to -32768..32767.
constexpr int adds16s(int a, int b) {
  const int v = s16(a) + s16(b);
  return v < -32768 ? -32768 : (v > 32767 ? 32767 : v);
}
// Returns a - b clamped to -32768..32767.
constexpr int subs16s(int a, int b) {
  const int v = s16(a) - s16(b);
  return v < -32768 ? -32768 : (v > 32767 ? 32767 : v);
}
// Returns a + b clamped to 0..65535.
constexpr int addus16u(int a, int b) {
  const int v = u16(a) + u16(b);
  return v > 65535 ? 65535 : v;
}
// Returns a - b clamped to 0..65535.
constexpr int subus16u(int a, int b) {
  const int v = u16(a) - u16(b);
  return v < 0 ? 0 : v;
}
// Returns a clamped to 0..255.
constexpr int clamp8(int a) { return a < 0 ? 0 : (a > 255 ? 255 : a); }
// Returns (a + b + 1) >> 1 of unsigned values.
constexpr int avg8(int a, int b) { return (a + b + 1) >> 1; }
// Arithmetic shift right of a signed 16-bit lane.
constexpr int sra16(int a, int n) { return s16(a) >> n; }
// Logical shift right of a 16-bit lane.
constexpr int srl16(int a, int n) { return u16(a) >> n; }

}  // namespace lum::fx

#if LUM_SIMD_SSE
// Vector overloads of the same operations on eight 16-bit lanes, in the same
// namespace so that one spelling serves scalar and vector code.
// kept for the chroma/gray blocks until they move to the lane sets
namespace lum::fx {

using V = __m128i;

inline V set16(int v) { return _mm_set1_epi16(int16_t(v)); }
inline V mulhi16s(V a, V b) { return _mm_mulhi_epi16(a, b); }
inline V mulhi16u(V a, V b) { return _mm_mulhi_epu16(a, b); }
inline V mulhrs16s(V a, V b) { return _mm_mulhrs_epi16(a, b); }
inline V adds16s(V a, V b) { return _mm_adds_epi16(a, b); }
inline V subs16s(V a, V b) { return _mm_subs_epi16(a, b); }
inline V addus16u(V a, V b) { return _mm_adds_epu16(a, b); }
inline V subus16u(V a, V b) { return _mm_subs_epu16(a, b); }
inline V add16(V a, V b) { return _mm_add_epi16(a, b); }
inline V sub16(V a, V b) { return _mm_sub_epi16(a, b); }
// 16-bit lanes clamped to 0..255 (the lanes stay 16-bit wide).
inline V clamp8(V a) {
  return _mm_min_epi16(_mm_max_epi16(a, _mm_setzero_si128()), set16(255));
}
inline V avg8(V a, V b) { return _mm_avg_epu16(a, b); }
template <int N> inline V sra16(V a) { return _mm_srai_epi16(a, N); }
template <int N> inline V srl16(V a) { return _mm_srli_epi16(a, N); }
template <int N> inline V sll16(V a) { return _mm_slli_epi16(a, N); }

// Exact 32-bit arithmetic on eight 16-bit lanes: widens the three channels to two
// halves of four 32-bit lanes, runs f(in32, out32) on each half and packs the
// three results back to 16-bit lanes (they must fit in -32768..32767).
template <class F>
inline void wide32(const V* in, V* out, F f) {
  V lo[3], hi[3], rlo[3], rhi[3];
  for (int k = 0; k < 3; ++k) {
    lo[k] = _mm_cvtepi16_epi32(in[k]);
    hi[k] = _mm_cvtepi16_epi32(_mm_srli_si128(in[k], 8));
  }
  f(lo, rlo);
  f(hi, rhi);
  for (int k = 0; k < 3; ++k) out[k] = _mm_packs_epi32(rlo[k], rhi[k]);
}
inline V set32(int v) { return _mm_set1_epi32(v); }
inline V mul32(V a, int c) { return _mm_mullo_epi32(a, _mm_set1_epi32(c)); }
inline V add32(V a, V b) { return _mm_add_epi32(a, b); }
inline V sub32(V a, V b) { return _mm_sub_epi32(a, b); }
template <int N> inline V sra32(V a) { return _mm_srai_epi32(a, N); }
template <int N> inline V sll32(V a) { return _mm_slli_epi32(a, N); }

}  // namespace lum::fx

#endif
