// Layout adaptors of the model forms on SSE: four interleaved three-channel
// pixels (8u or 32f) between memory and one register of 32-bit lanes per
// channel, reading and writing exactly the pixels' bytes. Memory sample j holds
// form channel Idx[j] (the C3 layout's own order).
#pragma once

#include <cstdint>
#include <cstring>

#include "frame/layouts.h"
#include "frame/simd.h"

#if LUM_SIMD_SSE
namespace lum::models::sse {

// Four 3-byte pixels (12 bytes) into three registers of 32-bit lanes, memory order.
inline void load8uC3(const uint8_t* p, __m128i out[3]) {
  int32_t w;
  std::memcpy(&w, p + 8, 4);
  const __m128i v = _mm_insert_epi32(_mm_loadl_epi64(reinterpret_cast<const __m128i*>(p)), w, 2);
  using layout::detail::Z;
  out[0] = _mm_shuffle_epi8(v, _mm_setr_epi8(0, Z, Z, Z, 3, Z, Z, Z, 6, Z, Z, Z, 9, Z, Z, Z));
  out[1] = _mm_shuffle_epi8(v, _mm_setr_epi8(1, Z, Z, Z, 4, Z, Z, Z, 7, Z, Z, Z, 10, Z, Z, Z));
  out[2] = _mm_shuffle_epi8(v, _mm_setr_epi8(2, Z, Z, Z, 5, Z, Z, Z, 8, Z, Z, Z, 11, Z, Z, Z));
}
// Three registers of 32-bit lanes (low bytes taken) into four 3-byte pixels.
inline void store8uC3(uint8_t* p, const __m128i in[3]) {
  using layout::detail::Z;
  const __m128i m = _mm_setr_epi8(0, 4, 8, 12, Z, Z, Z, Z, Z, Z, Z, Z, Z, Z, Z, Z);
  const __m128i b0 = _mm_shuffle_epi8(in[0], m), b1 = _mm_shuffle_epi8(in[1], m), b2 = _mm_shuffle_epi8(in[2], m);
  // c0 c1 interleaved, then c2 spread in.
  const __m128i t = _mm_unpacklo_epi8(b0, b1);  // r0 g0 r1 g1 r2 g2 r3 g3
  const __m128i v = _mm_or_si128(
      _mm_shuffle_epi8(t, _mm_setr_epi8(0, 1, Z, 2, 3, Z, 4, 5, Z, 6, 7, Z, Z, Z, Z, Z)),
      _mm_shuffle_epi8(b2, _mm_setr_epi8(Z, Z, 0, Z, Z, 1, Z, Z, 2, Z, Z, 3, Z, Z, Z, Z)));
  _mm_storel_epi64(reinterpret_cast<__m128i*>(p), v);
  const int32_t w = _mm_extract_epi32(v, 2);
  std::memcpy(p + 8, &w, 4);
}
// Four 3-float pixels into three registers, memory order.
inline void load32fC3(const float* p, __m128 out[3]) { layout::channels::floats<3>(p, out); }
// Three registers into four 3-float pixels.
inline void store32fC3(float* p, const __m128 in[3]) {
  const __m128 a = in[0], b = in[1], c = in[2];
  // o0 = a0 b0 c0 a1, o1 = b1 c1 a2 b2, o2 = c2 a3 b3 c3.
  const __m128 o0 = _mm_shuffle_ps(_mm_unpacklo_ps(a, b), _mm_unpacklo_ps(c, a), _MM_SHUFFLE(3, 0, 1, 0));
  const __m128 o1 = _mm_shuffle_ps(_mm_unpacklo_ps(b, c), _mm_unpackhi_ps(a, b), _MM_SHUFFLE(1, 0, 3, 2));
  const __m128 o2 = _mm_shuffle_ps(_mm_unpackhi_ps(c, a), _mm_unpackhi_ps(b, c), _MM_SHUFFLE(3, 2, 3, 0));
  _mm_storeu_ps(p, o0);
  _mm_storeu_ps(p + 4, o1);
  _mm_storeu_ps(p + 8, o2);
}

}  // namespace lum::models::sse
#endif
