// The library's uniform pseudo-random generator: a subtract-with-borrow
// generator (modulus 2^32 - 18, lags 2 and 3) added to a linear congruential
// one. Internal: the noise tables of the bit-depth reduction are its one user.
// The sequence is fixed to the bit; the state lives in a caller-sized record.
#pragma once

#include <cstddef>
#include <cstdint>

#include "lumcc.h"

namespace lum {

#pragma pack(push, 4)
// 48 bytes, offsets fixed: callers size the record by lumsRandUniformGetSize_16s.
struct LumRandState16s {
  uint32_t tag;  // 36
  uint32_t seed;
  int16_t low, high;
  double mean, scale;
  uint32_t lcg, x1, x2, x3;
  int32_t carry;
};
// 52 bytes, offsets fixed.
struct LumRandState32f {
  uint32_t tag;  // 37
  uint32_t seed;
  float low, high;
  double mean, scale;
  uint32_t lcg, x1, x2, x3;
  int32_t carry;
};
#pragma pack(pop)
static_assert(sizeof(LumRandState16s) == 48 && offsetof(LumRandState16s, mean) == 12 &&
              offsetof(LumRandState16s, carry) == 44);
static_assert(sizeof(LumRandState32f) == 52 && offsetof(LumRandState32f, mean) == 16 &&
              offsetof(LumRandState32f, carry) == 48);

LumStatus lumsRandUniformGetSize_16s(int* pSize);
LumStatus lumsRandUniformGetSize_32f(int* pSize);
LumStatus lumsRandUniformInit_16s(LumRandState16s* pRandState, Lum16s low, Lum16s high, uint32_t seed);
LumStatus lumsRandUniformInit_32f(LumRandState32f* pRandState, Lum32f low, Lum32f high, uint32_t seed);
// count values in [low, high), rounded to nearest (ties to even) for 16s.
LumStatus lumsRandUniform_16s(Lum16s* pDst, int count, LumRandState16s* pRandState);
LumStatus lumsRandUniform_32f(Lum32f* pDst, int count, LumRandState32f* pRandState);

}  // namespace lum
