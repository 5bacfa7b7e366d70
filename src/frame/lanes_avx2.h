// The sixteen-lane set (AVX2) of the lane vocabulary in lanes.h. Include it only
// from the *_avx2.cpp files, which the build compiles for AVX2 and the library
// enters only after asking the processor. It lives in an unnamed namespace so
// that everything instantiated with it stays inside those files and no AVX2
// code can stand in for a function that the baseline files share.
#pragma once

#include "frame/lanes.h"

#if LUM_SIMD_SSE && defined(__AVX2__)
namespace lum::lanes {
namespace {

struct Avx2 {
  using V = __m256i;
  static constexpr int kLanes = 16;

  // 16-bit lanes
  static V set(int v) { return _mm256_set1_epi16(int16_t(v)); }
  static V zero() { return _mm256_setzero_si256(); }
  static V mulhi16u(V a, V b) { return _mm256_mulhi_epu16(a, b); }
  static V mulhi16s(V a, V b) { return _mm256_mulhi_epi16(a, b); }
  static V mulhrs16s(V a, V b) { return _mm256_mulhrs_epi16(a, b); }
  static V adds16s(V a, V b) { return _mm256_adds_epi16(a, b); }
  static V subs16s(V a, V b) { return _mm256_subs_epi16(a, b); }
  static V addus16u(V a, V b) { return _mm256_adds_epu16(a, b); }
  static V add16(V a, V b) { return _mm256_add_epi16(a, b); }
  static V sub16(V a, V b) { return _mm256_sub_epi16(a, b); }
  static V and_(V a, V b) { return _mm256_and_si256(a, b); }
  static V mullo16(V a, V b) { return _mm256_mullo_epi16(a, b); }
  static V sll(V a, int n) { return _mm256_slli_epi16(a, n); }
  static V srl(V a, int n) { return _mm256_srli_epi16(a, n); }
  static V sra(V a, int n) { return _mm256_srai_epi16(a, n); }
  static V min16(V a, V b) { return _mm256_min_epi16(a, b); }
  static V max16(V a, V b) { return _mm256_max_epi16(a, b); }
  static V clamp8(V a) { return _mm256_min_epi16(_mm256_max_epi16(a, _mm256_setzero_si256()), set(255)); }

  // 32-bit lanes
  static V set32(int v) { return _mm256_set1_epi32(v); }
  static V mul32(V a, int c) { return _mm256_mullo_epi32(a, _mm256_set1_epi32(c)); }
  static V add32(V a, V b) { return _mm256_add_epi32(a, b); }
  static V sub32(V a, V b) { return _mm256_sub_epi32(a, b); }
  static V sll32(V a, int n) { return _mm256_slli_epi32(a, n); }
  static V sra32(V a, int n) { return _mm256_srai_epi32(a, n); }
  static void widen(V a, V& lo, V& hi) {
    lo = _mm256_srai_epi32(_mm256_unpacklo_epi16(a, a), 16);
    hi = _mm256_srai_epi32(_mm256_unpackhi_epi16(a, a), 16);
  }
  static V narrow(V lo, V hi) { return _mm256_packs_epi32(lo, hi); }
  // a * ca + b * cb of 16-bit lanes (ca, cb within -32768..32767) as exact
  // 32-bit sums, split into halves as widen() splits.
  static void madd(V a, V b, int ca, int cb, V& lo, V& hi) {
    const V k = _mm256_set1_epi32(int(uint32_t(uint16_t(ca)) | (uint32_t(uint16_t(cb)) << 16)));
    lo = _mm256_madd_epi16(_mm256_unpacklo_epi16(a, b), k);
    hi = _mm256_madd_epi16(_mm256_unpackhi_epi16(a, b), k);
  }
};

}  // namespace
}  // namespace lum::lanes
#endif
