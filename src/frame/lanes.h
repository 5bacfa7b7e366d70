// A 16-bit constant spread over the lanes of a vector type: the one spelling a
// form's block() uses, so that a block written once serves every vector width
// the library is built for (128-bit here, 256-bit in the AVX2 files).
#pragma once

#include <cstdint>

#include "frame/simd.h"

namespace lum::fx {

#if LUM_SIMD_SSE
template <class V>
V splat(int v);
template <>
inline __m128i splat<__m128i>(int v) {
  return _mm_set1_epi16(int16_t(v));
}
#endif

}  // namespace lum::fx
