// The 12-bit reciprocal estimate, bit-exact and the same on every processor.
// For a normal x = +-2^e * 1.m, with i the top 11 bits of the 23-bit mantissa,
// rcp(x) = +-n * 2^-13 * 2^-e where n = round(2^25 / (4097 + 2i)); zero and
// denormals give +-inf, |x| >= 2^126 and +-inf give +-0, NaN comes back quieted.
#pragma once

#include <array>
#include <cstdint>
#include <cstring>

#include "frame/simd.h"

namespace lum {

namespace detail {
constexpr std::array<uint32_t, 2048> makeRcpTable() {
  std::array<uint32_t, 2048> t{};
  for (uint32_t i = 0; i < 2048; ++i) {
    const uint64_t den = 4097 + 2 * i;                           // odd, so the rounding never ties
    const uint64_t n = ((uint64_t(1) << 26) + den) / (2 * den);  // round(2^25 / den)
    t[i] = uint32_t(n - 4096) << 11;
  }
  return t;
}
}  // namespace detail

// n - 4096 shifted into the result's mantissa, for each of the 2048 values of i.
alignas(64) inline constexpr std::array<uint32_t, 2048> kRcpMantissa = detail::makeRcpTable();

// Scalar estimate of 1/x.
inline float rcpEstimate(float x) {
  uint32_t b;
  std::memcpy(&b, &x, 4);
  const uint32_t sign = b & 0x80000000u;
  const uint32_t ex = (b >> 23) & 0xFF;
  uint32_t r;
  if (ex == 0xFF) {
    r = (b & 0x7FFFFF) ? (b | 0x400000u) : sign;  // NaN quieted; inf -> 0
  } else if (ex == 0) {
    r = sign | 0x7F800000u;  // zero and denormals -> inf
  } else if (ex >= 127 + 126) {
    r = sign;  // too large: the reciprocal underflows to zero
  } else {
    const uint32_t i = (b >> 12) & 0x7FF;
    // e = ex - 127; result exponent field = 127 - 1 - e = 253 - ex.
    r = sign | ((253u - ex) << 23) | kRcpMantissa[i];
  }
  float out;
  std::memcpy(&out, &r, 4);
  return out;
}

#if LUM_SIMD_SSE
// Four lanes of the estimate, lane for lane equal to the scalar rule. Integer
// SSE2 only (so any translation unit may use it): the special cases are masks,
// the table is read by four scalar loads.
inline __m128 rcpEstimate(__m128 x) {
  const __m128i b = _mm_castps_si128(x);
  const __m128i sign = _mm_and_si128(b, _mm_set1_epi32(int(0x80000000u)));
  const __m128i ex = _mm_and_si128(_mm_srli_epi32(b, 23), _mm_set1_epi32(0xFF));
  const __m128i idx = _mm_and_si128(_mm_srli_epi32(b, 12), _mm_set1_epi32(0x7FF));
  alignas(16) uint32_t i[4];
  _mm_store_si128(reinterpret_cast<__m128i*>(i), idx);
  const __m128i mant = _mm_setr_epi32(int(kRcpMantissa[i[0]]), int(kRcpMantissa[i[1]]), int(kRcpMantissa[i[2]]),
                                      int(kRcpMantissa[i[3]]));
  // Normal: sign | (253 - ex) << 23 | mantissa.
  __m128i r = _mm_or_si128(_mm_or_si128(sign, _mm_slli_epi32(_mm_sub_epi32(_mm_set1_epi32(253), ex), 23)), mant);
  const auto pick = [](__m128i m, __m128i a, __m128i other) {
    return _mm_or_si128(_mm_and_si128(m, a), _mm_andnot_si128(m, other));
  };
  // ex >= 253 (huge, infinity, NaN): signed zero for now.
  r = pick(_mm_cmpgt_epi32(ex, _mm_set1_epi32(252)), sign, r);
  // ex == 0 (zero, denormal): signed infinity.
  r = pick(_mm_cmpeq_epi32(ex, _mm_setzero_si128()), _mm_or_si128(sign, _mm_set1_epi32(0x7F800000)), r);
  // NaN: the input quieted.
  const __m128i absb = _mm_and_si128(b, _mm_set1_epi32(0x7FFFFFFF));
  const __m128i nan = _mm_cmpgt_epi32(absb, _mm_set1_epi32(0x7F800000));
  r = pick(nan, _mm_or_si128(b, _mm_set1_epi32(0x400000)), r);
  return _mm_castsi128_ps(r);
}
#endif

}  // namespace lum
