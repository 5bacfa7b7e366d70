#include "reduce/rand_uniform.h"

#include "frame/lanes.h"

namespace lum {
namespace {

constexpr uint32_t kTag16s = 36, kTag32f = 37;
constexpr uint32_t kLcgStart = 1131199209u;  // 0x436CBAE9, whatever the seed
constexpr uint32_t kMul = 69069u, kAdd = 1013904243u;
constexpr double kTwoToMinus32 = 2.3283064365386963e-10;

// The common init of both records: the three lags from the seed, the borrow set.
template <class State>
void seedLags(State& s, uint32_t seed) {
  s.seed = seed;
  s.lcg = kLcgStart;
  s.x1 = seed;
  s.x2 = s.x1 * kMul + kAdd;
  s.x3 = s.x2 * kMul + kAdd;
  s.carry = -1;
}

// Fills a record: tag, bounds, the lags from the seed, mean and scale. The
// bounds' sum and difference are taken in their arithmetic type (32-bit
// integers for 16s, single precision for 32f) and then widened.
template <class State, class B>
LumStatus init(State* p, uint32_t tag, B low, B high, uint32_t seed) {
  if (p == nullptr) return lumStatusNullPointer;
  p->tag = tag;
  p->low = low;
  p->high = high;
  seedLags(*p, seed);
  const auto sum = high + low, diff = high - low;
  static_assert(sizeof(sum) == 4);
  p->mean = double(sum) * 0.5;
  p->scale = double(diff) * kTwoToMinus32;
  return lumStatusOk;
}

// One step of the generator: the signed 32-bit sum of both generators' outputs.
template <class State>
int32_t next(State& s) {
  s.lcg = s.lcg * kMul + kAdd;
  const uint32_t t = s.x2 - s.x3 + uint32_t(s.carry);
  const bool borrow = (t & 0x80000000u) != 0;
  s.carry = borrow ? -1 : 0;
  const uint32_t y = borrow ? t - 18u : t;
  s.x3 = s.x2;
  s.x2 = s.x1;
  s.x1 = y;
  return int32_t(y + s.lcg);
}

// Count values of the record's generator through emit(double); the state is
// worked on in a local copy and written back at the end.
template <class State, class Emit>
LumStatus run(const void* pDst, int count, State* p, uint32_t tag, Emit emit) {
  if (pDst == nullptr || p == nullptr) return lumStatusNullPointer;
  if (count < 1) return lumStatusBadSize;
  if (p->tag != tag) return lumStatusWrongState;
  State s = *p;
  for (int i = 0; i < count; ++i) emit(i, double(next(s)) * s.scale + s.mean);
  *p = s;
  return lumStatusOk;
}

}  // namespace

LumStatus lumsRandUniformGetSize_16s(int* pSize) {
  if (pSize == nullptr) return lumStatusNullPointer;
  *pSize = int(sizeof(LumRandState16s));
  return lumStatusOk;
}
LumStatus lumsRandUniformGetSize_32f(int* pSize) {
  if (pSize == nullptr) return lumStatusNullPointer;
  *pSize = int(sizeof(LumRandState32f));
  return lumStatusOk;
}

LumStatus lumsRandUniformInit_16s(LumRandState16s* p, Lum16s low, Lum16s high, uint32_t seed) {
  return init(p, kTag16s, low, high, seed);
}
LumStatus lumsRandUniformInit_32f(LumRandState32f* p, Lum32f low, Lum32f high, uint32_t seed) {
  return init(p, kTag32f, low, high, seed);
}

LumStatus lumsRandUniform_16s(Lum16s* pDst, int count, LumRandState16s* p) {
  // Nearest integer under the rounding mode (ties to even by default), low 16 bits kept.
  return run(pDst, count, p, kTag16s,
             [pDst](int i, double v) { pDst[i] = Lum16s(uint16_t(uint32_t(lanes::emu::cvtNearest(v)))); });
}

LumStatus lumsRandUniform_32f(Lum32f* pDst, int count, LumRandState32f* p) {
  return run(pDst, count, p, kTag32f, [pDst](int i, double v) { pDst[i] = float(v); });
}

}  // namespace lum
