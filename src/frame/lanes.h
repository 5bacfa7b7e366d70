// Lane sets: the fixed-point vocabulary as static functions over one vector
// type, so that a vector form is written once (over a lane set O) and runs on
// eight 16-bit lanes here (Sse) or on sixteen (Avx2, lanes_avx2.h, only in the
// files built for that processor). Every operation works inside 128-bit halves
// or lane by lane, so both sets compute the lanes of the scalar rule.
#pragma once

#include <cstdint>

#include "frame/simd.h"

namespace lum::lanes {
// The parts of a Q16 coefficient: c == hiQ16(c) * 65536 + loQ16(c), with
// loQ16(c) within -32768..32767, so that floor((c * x + ...) / 65536) splits
// into hiQ16(c) * x and a high product of 16-bit lanes.
constexpr int hiQ16(int c) { return (c + 32768) >> 16; }
constexpr int loQ16(int c) { return c - hiQ16(c) * 65536; }
}  // namespace lum::lanes

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
  static V mullo16(V a, V b) { return _mm_mullo_epi16(a, b); }
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
  // a * ca + b * cb of 16-bit lanes (ca, cb within -32768..32767) as exact
  // 32-bit sums, split into halves as widen() splits.
  static void madd(V a, V b, int ca, int cb, V& lo, V& hi) {
    const V k = _mm_set1_epi32(int(uint32_t(uint16_t(ca)) | (uint32_t(uint16_t(cb)) << 16)));
    lo = _mm_madd_epi16(_mm_unpacklo_epi16(a, b), k);
    hi = _mm_madd_epi16(_mm_unpackhi_epi16(a, b), k);
  }
};

// Returns acc + H * x for a small constant H.
template <int H, class O, class V = typename O::V>
inline V addTimes(V acc, V x) {
  if constexpr (H == 0) return acc;
  else if constexpr (H > 0) return addTimes<H - 1, O>(O::add16(acc, x), x);
  else return addTimes<H + 1, O>(O::sub16(acc, x), x);
}

// Returns floor((x * c + rnd) / 65536), c within int16 and rnd 0 or 32768: the
// high product, plus one where the low half of the product reaches 32768.
template <class O, class V = typename O::V>
inline V mulQ16(V x, int c, int rnd) {
  const V h = O::mulhi16s(x, O::set(c));
  return rnd ? O::add16(h, O::srl(O::mullo16(x, O::set(c)), 15)) : h;
}

// Returns floor((s + rnd) / 65536) of 32-bit sums in the halves lo, hi, as 16-bit lanes.
template <class O, class V = typename O::V>
inline V shrQ16(V lo, V hi, int rnd) {
  if (rnd) {
    lo = O::add32(lo, O::set32(rnd));
    hi = O::add32(hi, O::set32(rnd));
  }
  return O::narrow(O::sra32(lo, 16), O::sra32(hi, 16));
}

// Returns floor((a * ca + b * cb + rnd) / 65536) of 16-bit lanes, ca and cb within int16.
template <class O, class V = typename O::V>
inline V maddQ16(V a, int ca, V b, int cb, int rnd) {
  V lo, hi;
  O::madd(a, b, ca, cb, lo, hi);
  return shrQ16<O>(lo, hi, rnd);
}

// The same with a third term c * cc.
template <class O, class V = typename O::V>
inline V maddQ16(V a, int ca, V b, int cb, V c, int cc, int rnd) {
  V lo, hi, lo2, hi2;
  O::madd(a, b, ca, cb, lo, hi);
  O::madd(c, O::zero(), cc, 0, lo2, hi2);
  return shrQ16<O>(O::add32(lo, lo2), O::add32(hi, hi2), rnd);
}

}  // namespace lum::lanes
#endif

namespace lum::fx {

#if LUM_SIMD_SSE
// A 16-bit constant spread over the lanes of a vector type: the one spelling a
// form's block() uses, so that a block written once serves every vector width
// the library is built for (128-bit here, 256-bit in the AVX2 files).
template <class V>
V splat(int v);
template <>
inline __m128i splat<__m128i>(int v) {
  return _mm_set1_epi16(int16_t(v));
}
#endif

}  // namespace lum::fx
