// Lane sets: the fixed-point vocabulary as static functions over one vector
// type, so that a vector form is written once (over a lane set O) and runs on
// eight 16-bit lanes here (Sse) or on sixteen (Avx2, lanes_avx2.h, only in the
// files built for that processor). Every operation works inside 128-bit halves
// or lane by lane, so both sets compute the lanes of the scalar rule.
#pragma once

#include "frame/simd.h"

#if LUM_SIMD_SSE
namespace lum::lanes {

struct Sse {
  using V = __m128i;
  static constexpr int kLanes = 8;

  // 16-bit lanes
  static V set(int v) { return _mm_set1_epi16(int16_t(v)); }
  static V zero() { return _mm_setzero_si128(); }
  static V mulhi16u(V a, V b) { return _mm_mulhi_epu16(a, b); }
  static V mulhi16s(V a, V b) { return _mm_mulhi_epi16(a, b); }
  static V mulhrs16s(V a, V b) { return _mm_mulhrs_epi16(a, b); }
  static V adds16s(V a, V b) { return _mm_adds_epi16(a, b); }
  static V subs16s(V a, V b) { return _mm_subs_epi16(a, b); }
  static V addus16u(V a, V b) { return _mm_adds_epu16(a, b); }
  static V add16(V a, V b) { return _mm_add_epi16(a, b); }
  static V sub16(V a, V b) { return _mm_sub_epi16(a, b); }
  static V and_(V a, V b) { return _mm_and_si128(a, b); }
  static V sll(V a, int n) { return _mm_slli_epi16(a, n); }
  static V srl(V a, int n) { return _mm_srli_epi16(a, n); }
  static V sra(V a, int n) { return _mm_srai_epi16(a, n); }
  static V min16(V a, V b) { return _mm_min_epi16(a, b); }
  static V max16(V a, V b) { return _mm_max_epi16(a, b); }
  // Returns a clamped to 0..255 (lanes stay 16-bit).
  static V clamp8(V a) { return _mm_min_epi16(_mm_max_epi16(a, _mm_setzero_si128()), set(255)); }

  // 32-bit lanes, for the forms that keep exact 32-bit sums
  static V set32(int v) { return _mm_set1_epi32(v); }
  static V mul32(V a, int c) { return _mm_mullo_epi32(a, _mm_set1_epi32(c)); }
  static V add32(V a, V b) { return _mm_add_epi32(a, b); }
  static V sub32(V a, V b) { return _mm_sub_epi32(a, b); }
  static V sll32(V a, int n) { return _mm_slli_epi32(a, n); }
  static V sra32(V a, int n) { return _mm_srai_epi32(a, n); }
  // Signed 16-bit lanes widened to 32 bits: lo holds lanes 0..3, hi lanes 4..7
  // of each 128-bit half; narrow() puts them back (saturating to 16 bits).
  static void widen(V a, V& lo, V& hi) {
    lo = _mm_srai_epi32(_mm_unpacklo_epi16(a, a), 16);
    hi = _mm_srai_epi32(_mm_unpackhi_epi16(a, a), 16);
  }
  static V narrow(V lo, V hi) { return _mm_packs_epi32(lo, hi); }
};

// Exact 32-bit arithmetic on three 16-bit channels in any lane set: widens them,
// runs f(in32, out32) on each half and narrows the three results back with
// signed saturation (which keeps clamp8 of every result).
template <class O, class F>
inline void wide32(const typename O::V* in, typename O::V* out, F f) {
  using V = typename O::V;
  V lo[3], hi[3], rlo[3], rhi[3];
  for (int k = 0; k < 3; ++k) O::widen(in[k], lo[k], hi[k]);
  f(lo, rlo);
  f(hi, rhi);
  for (int k = 0; k < 3; ++k) out[k] = O::narrow(rlo[k], rhi[k]);
}

}  // namespace lum::lanes
#endif
