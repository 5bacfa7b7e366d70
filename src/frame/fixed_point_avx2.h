// The fixed-point vocabulary on sixteen 16-bit lanes (AVX2), with the same names
// as the scalar and 128-bit operations of fixed_point.h. Include only in files
// built with AVX2, and before the forms whose blocks it serves.
#pragma once

#if !defined(__AVX2__)
#error "fixed_point_avx2.h belongs to files built with AVX2"
#endif

#include "frame/fixed_point.h"
#include "frame/lanes.h"

namespace lum::fx {

using W = __m256i;

template <>
inline W splat<W>(int v) {
  return _mm256_set1_epi16(int16_t(v));
}
inline W mulhi16s(W a, W b) { return _mm256_mulhi_epi16(a, b); }
inline W mulhi16u(W a, W b) { return _mm256_mulhi_epu16(a, b); }
inline W mulhrs16s(W a, W b) { return _mm256_mulhrs_epi16(a, b); }
inline W adds16s(W a, W b) { return _mm256_adds_epi16(a, b); }
inline W subs16s(W a, W b) { return _mm256_subs_epi16(a, b); }
inline W addus16u(W a, W b) { return _mm256_adds_epu16(a, b); }
inline W subus16u(W a, W b) { return _mm256_subs_epu16(a, b); }
inline W add16(W a, W b) { return _mm256_add_epi16(a, b); }
inline W sub16(W a, W b) { return _mm256_sub_epi16(a, b); }
// 16-bit lanes clamped to 0..255 (the lanes stay 16-bit wide).
inline W clamp8(W a) { return _mm256_min_epi16(_mm256_max_epi16(a, _mm256_setzero_si256()), splat<W>(255)); }
inline W avg8(W a, W b) { return _mm256_avg_epu16(a, b); }
template <int N>
inline W sra16(W a) {
  return _mm256_srai_epi16(a, N);
}
template <int N>
inline W srl16(W a) {
  return _mm256_srli_epi16(a, N);
}
template <int N>
inline W sll16(W a) {
  return _mm256_slli_epi16(a, N);
}

}  // namespace lum::fx
