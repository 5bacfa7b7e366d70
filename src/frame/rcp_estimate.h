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
    const uint64_t den = 4097 + 2 * i;  // odd, so the rounding never ties
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
// Four lanes of the estimate.
inline __m128 rcpEstimate(__m128 x) {
  alignas(16) float v[4];
  _mm_store_ps(v, x);
  for (float& f : v) f = rcpEstimate(f);
  return _mm_load_ps(v);
}
#endif

}  // namespace lum
