// Every operation of a lane set as a function of raw bytes, one line each, so
// that two sets can be run on the same registers and their bytes compared.
#pragma once

#include <cstdint>
#include <cstring>
#include <string>
#include <utility>
#include <vector>

namespace lumtest {

// Operands in[0..2] hold one register each; out takes up to four registers.
using LaneFn = void (*)(const uint8_t* const* in, uint8_t* out);
// How a 256-bit set's result compares with the 128-bit set's.
enum class Halves {
  Each,       // each 128-bit half as the 128-bit set computes it from that half
  Broadcast,  // both halves as the 128-bit set's from the low half
  None,       // across the halves: not compared
};
struct LaneOp {
  const char* name;
  LaneFn fn;
  Halves halves;
  char kind;  // lanes of the result: 'i' integers, 'f' float, 'd' double (NaNs compare equal)
};

// True when two results of kind k agree: bytes, or lanes where both are NaN.
inline bool sameLanes(char k, const uint8_t* a, const uint8_t* b, int bytes) {
  const int w = k == 'f' ? 4 : (k == 'd' ? 8 : bytes);
  for (int i = 0; i < bytes; i += w) {
    if (std::memcmp(a + i, b + i, size_t(w)) == 0) continue;
    if (k == 'f') {
      float x, y;
      std::memcpy(&x, a + i, 4);
      std::memcpy(&y, b + i, 4);
      if (x != x && y != y) continue;
    } else if (k == 'd') {
      double x, y;
      std::memcpy(&x, a + i, 8);
      std::memcpy(&y, b + i, 8);
      if (x != x && y != y) continue;
    }
    return false;
  }
  return true;
}

template <class O>
struct LaneIo {
  using V = typename O::V;
  using F = typename O::F;
  using D = typename O::D;
  static constexpr int kBytes = int(sizeof(V));
  static V v(const uint8_t* p) { return O::load(p); }
  static F f(const uint8_t* p) { return O::loadf(reinterpret_cast<const float*>(p)); }
  static D d(const uint8_t* p) { return O::loadd(reinterpret_cast<const double*>(p)); }
  static int i16(const uint8_t* p) { int16_t x; std::memcpy(&x, p, 2); return x; }
  static int i32(const uint8_t* p) { int32_t x; std::memcpy(&x, p, 4); return x; }
  static float f32(const uint8_t* p) { float x; std::memcpy(&x, p, 4); return x; }
  static double f64(const uint8_t* p) { double x; std::memcpy(&x, p, 8); return x; }
  static void put(uint8_t* o, V x) { O::store(o, x); }
  static void put(uint8_t* o, F x) { O::storef(reinterpret_cast<float*>(o), x); }
  static void put(uint8_t* o, D x) { O::stored(reinterpret_cast<double*>(o), x); }
  template <class T>
  static void scalar(uint8_t* o, T x) { std::memcpy(o, &x, sizeof x); }
};

// The operations of lane set O.
template <class O>
std::vector<LaneOp> laneOps() {
  using X = LaneIo<O>;
  constexpr int N = X::kBytes;
  using In = const uint8_t* const*;
  using Out = uint8_t*;
#define LANE_OP(name, kind, half, ...) {#name, [](In a, Out o) { (void)a; (void)o; __VA_ARGS__; }, Halves::half, kind}
#define LANE_V2(name) LANE_OP(name, 'i', Each, X::put(o, O::name(X::v(a[0]), X::v(a[1]))))
#define LANE_F2(name) LANE_OP(name, 'f', Each, X::put(o, O::name(X::f(a[0]), X::f(a[1]))))
#define LANE_D2(name) LANE_OP(name, 'd', Each, X::put(o, O::name(X::d(a[0]), X::d(a[1]))))
#define LANE_SHIFT(name, ...) LANE_OP(name, 'i', Each, int k = 0; for (int n : {__VA_ARGS__}) X::put(o + N * k++, O::name(X::v(a[0]), n)))
  return {
      LANE_OP(load / store, 'i', Each, X::put(o, X::v(a[0]))),
      LANE_OP(loadA / storeA, 'i', Each, alignas(32) uint8_t b[2][N]; std::memcpy(b[0], a[0], N); O::storeA(b[1], O::loadA(b[0])); std::memcpy(o, b[1], N)),
      LANE_OP(stream, 'i', Each, alignas(32) uint8_t b[N]; O::stream(b, X::v(a[0])); O::fence(); std::memcpy(o, b, N)),
      LANE_OP(splat8, 'i', Broadcast, X::put(o, O::splat8(a[0][0]))),
      LANE_OP(set, 'i', Broadcast, X::put(o, O::set(X::i16(a[0])))),
      LANE_OP(zero, 'i', Broadcast, X::put(o, O::zero())),
      LANE_V2(mulhi16u), LANE_V2(mulhi16s), LANE_V2(mulhrs16s), LANE_V2(mullo16),
      LANE_V2(adds16s), LANE_V2(subs16s), LANE_V2(addus16u), LANE_V2(subus16u),
      LANE_V2(add16), LANE_V2(sub16), LANE_V2(min16), LANE_V2(max16), LANE_V2(avg16),
      LANE_SHIFT(sll, 0, 1, 7, 15), LANE_SHIFT(srl, 0, 1, 7, 15), LANE_SHIFT(sra, 0, 1, 7, 15),
      LANE_OP(clamp8, 'i', Each, X::put(o, O::clamp8(X::v(a[0])))),
      LANE_V2(and_), LANE_V2(or_), LANE_V2(xor_), LANE_V2(andnot),
      LANE_OP(set32, 'i', Broadcast, X::put(o, O::set32(X::i32(a[0])))),
      LANE_V2(add32), LANE_V2(sub32), LANE_V2(mullo32), LANE_V2(min32), LANE_V2(max32),
      LANE_OP(mul32, 'i', Each, X::put(o, O::mul32(X::v(a[0]), -7)); X::put(o + N, O::mul32(X::v(a[0]), 65537))),
      LANE_SHIFT(sll32, 0, 1, 16, 31), LANE_SHIFT(srl32, 0, 1, 16, 31), LANE_SHIFT(sra32, 0, 1, 16, 31),
      LANE_OP(widen, 'i', Each, typename O::V lo, hi; O::widen(X::v(a[0]), lo, hi); X::put(o, lo); X::put(o + N, hi)),
      LANE_V2(narrow),
      LANE_OP(madd, 'i', Each, int k = 0; for (auto [ca, cb] : {std::pair{1, 1}, {-32768, 32767}, {4769, -3330}, {32767, -32768}}) {
        typename O::V lo, hi;
        O::madd(X::v(a[0]), X::v(a[1]), ca, cb, lo, hi);
        X::put(o + N * k++, lo);
        X::put(o + N * k++, hi);
      }),
      LANE_OP(setf, 'f', Broadcast, X::put(o, O::setf(X::f32(a[0])))),
      LANE_OP(zerof, 'f', Broadcast, X::put(o, O::zerof())),
      LANE_F2(addf), LANE_F2(subf), LANE_F2(mulf), LANE_F2(divf), LANE_F2(minf), LANE_F2(maxf),
      LANE_OP(cvtif, 'f', Each, X::put(o, O::cvtif(X::v(a[0])))),
      LANE_OP(cvtfi, 'i', Each, X::put(o, O::cvtfi(X::f(a[0])))),
      LANE_OP(cvttfi, 'i', Each, X::put(o, O::cvttfi(X::f(a[0])))),
      LANE_OP(rcpf, 'i', Each, X::put(o, O::rcpf(X::f(a[0])))),
      LANE_OP(setd, 'd', Broadcast, X::put(o, O::setd(X::f64(a[0])))),
      LANE_OP(zerod, 'd', Broadcast, X::put(o, O::zerod())),
      LANE_D2(addd), LANE_D2(subd), LANE_D2(muld), LANE_D2(divd),
      LANE_V2(hadd16), LANE_V2(avg8), LANE_V2(sub8), LANE_V2(maddubs16), LANE_V2(packus16),
      LANE_V2(zipLo8), LANE_V2(zipHi8),
      LANE_OP(loadf1, 'f', None, X::put(o, O::loadf1(reinterpret_cast<const float*>(a[0])))),
      LANE_OP(loadf2, 'f', None, X::put(o, O::loadf2(reinterpret_cast<const float*>(a[0])))),
      LANE_OP(maxf1, 'f', None, X::put(o, O::maxf1(X::f(a[0]), reinterpret_cast<const float*>(a[1])))),
      LANE_OP(maxf2, 'f', None, X::put(o, O::maxf2(X::f(a[0]), reinterpret_cast<const float*>(a[1])))),
      LANE_OP(foldAddf, 'f', None, float lo, hi; O::foldAddf(X::f(a[0]), lo, hi); X::scalar(o, lo); X::scalar(o + 4, hi)),
      LANE_OP(foldMaxf, 'f', None, X::scalar(o, O::foldMaxf(X::f(a[0])))),
      LANE_F2(evensf), LANE_F2(oddsf),
      LANE_OP(cvtfdLo, 'd', None, X::put(o, O::cvtfdLo(X::f(a[0])))),
      LANE_OP(cvtfdHi, 'd', None, X::put(o, O::cvtfdHi(X::f(a[0])))),
      LANE_OP(sumd, 'd', None, X::scalar(o, O::sumd(X::d(a[0])))),
      LANE_V2(evens16), LANE_V2(odds16), LANE_V2(slideUp16),
      LANE_F2(cmplef), LANE_F2(cmpeqf), LANE_OP(selectf, 'f', Each, X::put(o, O::selectf(X::f(a[0]), X::f(a[1]), X::f(a[2])))), LANE_OP(absf, 'f', Each, X::put(o, O::absf(X::f(a[0])))),
      // ---- added for the power kernel
      LANE_OP(castfv / castvf, 'i', Each, X::put(o, O::castfv(O::castvf(X::v(a[0]))))),
      LANE_OP(cmpltf, 'i', Each, X::put(o, O::castfv(O::cmpltf(X::f(a[0]), X::f(a[1]))))),
      LANE_OP(maskf, 'i', None, X::scalar(o, O::maskf(X::f(a[0])))),
      LANE_OP(cvtdf, 'f', Each, X::put(o, O::cvtdf(X::d(a[0]), X::d(a[1])))), LANE_D2(mind), LANE_D2(maxd),
      LANE_F2(andf),  // added for bit-depth reduction
      LANE_V2(adds8u),  // added for YCoCg
      LANE_F2(andnotf),  // added for HLS and HSV
      LANE_OP(leSelectf, 'f', Each, X::put(o, O::leSelectf(X::f(a[0]), X::f(a[1]), X::f(a[2]), X::f(a[1])))), LANE_OP(leSelectd, 'd', Each, X::put(o, O::leSelectd(X::d(a[0]), X::d(a[1]), X::d(a[2]), X::d(a[0])))),
      LANE_OP(pairsf, 'f', Each, static const auto t = [] { std::vector<float> v(64); for (int i = 0; i < 64; ++i) v[size_t(i)] = 1.5f * float(i) - 7.0f; return v; }(); typename O::F x, y; O::pairsf(t.data(), O::and_(X::v(a[0]), O::set32(31)), x, y); X::put(o, x); X::put(o + N, y)),
  };
#undef LANE_SHIFT
#undef LANE_D2
#undef LANE_F2
#undef LANE_V2
#undef LANE_OP
}

// Three operand registers of `bytes` for round r, one after the other: over the
// rounds, every pair of edge values of each lane type (16-bit, 32-bit, float,
// double, byte) meets in some lane; the later rounds are random bytes.
std::vector<uint8_t> laneOperands(int round, int bytes);
constexpr int kLaneRounds = 600;
// Bytes of the out buffer a lane op may write for a register of `bytes`.
constexpr int laneOutBytes(int bytes) { return 8 * bytes; }

// Each operation of the 256-bit set against the same of the 128-bit set (sse,
// built for the baseline) on each half, from the file built for AVX2; call
// only where the processor has AVX2. Returns the failures, one per line.
std::string checkLanesWide(const std::vector<LaneOp>& sse);

}  // namespace lumtest
