// Lane sets: the library's one vector vocabulary. A lane set is a struct of
// static functions over the vector types of one register width:
//   V  integer lanes (8 x 16-bit or 4 x 32-bit per 128 bits),
//   F  single-precision lanes (4 per 128 bits),
//   D  double-precision lanes (2 per 128 bits).
// A form's block is written once, as a template over the lane set O, and runs
// on every set the library has:
//   Emu   one 128-bit register emulated in plain C++ (the portable build's
//         twin of every vector kernel, and the tests' reference lanes);
//   Sse   one 128-bit register (SSE4.2, the baseline of the vector build);
//   Avx2  one 256-bit register (lanes_avx2.h, only in *_avx2.cpp files).
// Every operation works lane by lane or inside 128-bit halves, so all sets
// compute the lanes of the scalar rule: a result never shows which set ran.
// Intrinsics appear in the lane sets and in the layout adaptors, nowhere else.
#pragma once

#include <cmath>
#include <cstdint>
#include <cstring>

#include "frame/rcp_estimate.h"

#include "frame/simd.h"

namespace lum::lanes {
// The parts of a Q16 coefficient: c == hiQ16(c) * 65536 + loQ16(c), with
// loQ16(c) within -32768..32767, so that floor((c * x + ...) / 65536) splits
// into hiQ16(c) * x and a high product of 16-bit lanes.
constexpr int hiQ16(int c) { return (c + 32768) >> 16; }
constexpr int loQ16(int c) { return c - hiQ16(c) * 65536; }

namespace emu {
// Value wrapped to a signed 16-bit lane.
constexpr int s16(int a) { return int16_t(uint16_t(unsigned(a))); }
// Value wrapped to an unsigned 16-bit lane.
constexpr int u16(int a) { return int(uint16_t(unsigned(a))); }
constexpr int sat16s(int v) { return v < -32768 ? -32768 : (v > 32767 ? 32767 : v); }
constexpr int sat16u(int v) { return v < 0 ? 0 : (v > 65535 ? 65535 : v); }
// The x86 conversion of a float or double to int32: nearest (under the
// default rounding mode) or truncated; NaN and out-of-range give INT32_MIN.
inline int32_t cvtNearest(double x) {
  const double r = std::nearbyint(x);
  return (r >= -2147483648.0 && r < 2147483648.0) ? int32_t(r) : INT32_MIN;
}
inline int32_t cvtTrunc(double x) {
  return (x > -2147483649.0 && x < 2147483648.0) ? int32_t(x) : INT32_MIN;
}
// The x86 minimum and maximum: the second operand where either is NaN or both are zeros.
template <class T>
constexpr T minX(T a, T b) { return a < b ? a : b; }
template <class T>
constexpr T maxX(T a, T b) { return a > b ? a : b; }
}  // namespace emu

// One 128-bit register in plain C++: the same lanes as Sse, lane for lane.
struct Emu {
  struct V {
    int16_t h[8];
    int32_t w(int i) const { int32_t v; std::memcpy(&v, reinterpret_cast<const char*>(h) + 4 * i, 4); return v; }
    void w(int i, int32_t v) { std::memcpy(reinterpret_cast<char*>(h) + 4 * i, &v, 4); }
  };
  struct F {
    float l[4];
  };
  struct D {
    double l[2];
  };
  static constexpr int kLanes = 8;  // 16-bit lanes per V

 private:
  template <class Fn>
  static V map16(V a, V b, Fn f) {
    V r;
    for (int i = 0; i < 8; ++i) r.h[i] = int16_t(f(int(a.h[i]), int(b.h[i])));
    return r;
  }
  template <class Fn>
  static V map32(V a, V b, Fn f) {
    V r;
    for (int i = 0; i < 4; ++i) r.w(i, f(a.w(i), b.w(i)));
    return r;
  }
  template <class Fn>
  static F mapf(F a, F b, Fn f) {
    F r;
    for (int i = 0; i < 4; ++i) r.l[i] = f(a.l[i], b.l[i]);
    return r;
  }
  template <class Fn>
  static D mapd(D a, D b, Fn f) {
    D r;
    for (int i = 0; i < 2; ++i) r.l[i] = f(a.l[i], b.l[i]);
    return r;
  }

 public:
  // ---- memory
  static V load(const void* p) { V v; std::memcpy(v.h, p, 16); return v; }
  static V loadA(const void* p) { return load(p); }
  static void store(void* p, V v) { std::memcpy(p, v.h, 16); }
  static void storeA(void* p, V v) { store(p, v); }
  // Streaming stores change only speed; the emulation stores plainly.
  static void stream(void* p, V v) { store(p, v); }
  static void fence() {}
  static V splat8(int v) { V r; std::memset(r.h, v & 255, 16); return r; }

  // ---- 16-bit lanes
  static V set(int v) { V r; for (auto& x : r.h) x = int16_t(v); return r; }
  static V zero() { return set(0); }
  static V mulhi16u(V a, V b) { return map16(a, b, [](int x, int y) { return int((unsigned(emu::u16(x)) * unsigned(emu::u16(y))) >> 16); }); }
  static V mulhi16s(V a, V b) { return map16(a, b, [](int x, int y) { return (x * y) >> 16; }); }
  static V mulhrs16s(V a, V b) { return map16(a, b, [](int x, int y) { return (((x * y) >> 14) + 1) >> 1; }); }
  static V mullo16(V a, V b) { return map16(a, b, [](int x, int y) { return int(unsigned(x) * unsigned(y)); }); }
  static V adds16s(V a, V b) { return map16(a, b, [](int x, int y) { return emu::sat16s(x + y); }); }
  static V subs16s(V a, V b) { return map16(a, b, [](int x, int y) { return emu::sat16s(x - y); }); }
  static V addus16u(V a, V b) { return map16(a, b, [](int x, int y) { return emu::sat16u(emu::u16(x) + emu::u16(y)); }); }
  static V subus16u(V a, V b) { return map16(a, b, [](int x, int y) { return emu::sat16u(emu::u16(x) - emu::u16(y)); }); }
  static V add16(V a, V b) { return map16(a, b, [](int x, int y) { return x + y; }); }
  static V sub16(V a, V b) { return map16(a, b, [](int x, int y) { return x - y; }); }
  static V min16(V a, V b) { return map16(a, b, [](int x, int y) { return x < y ? x : y; }); }
  static V max16(V a, V b) { return map16(a, b, [](int x, int y) { return x > y ? x : y; }); }
  // Returns (a + b + 1) >> 1 of unsigned 16-bit lanes.
  static V avg16(V a, V b) { return map16(a, b, [](int x, int y) { return (emu::u16(x) + emu::u16(y) + 1) >> 1; }); }
  static V sll(V a, int n) { return map16(a, a, [n](int x, int) { return n > 15 ? 0 : int(unsigned(x) << n); }); }
  static V srl(V a, int n) { return map16(a, a, [n](int x, int) { return n > 15 ? 0 : emu::u16(x) >> n; }); }
  static V sra(V a, int n) { return map16(a, a, [n](int x, int) { return x >> (n > 15 ? 15 : n); }); }
  // Returns a clamped to 0..255 (lanes stay 16-bit).
  static V clamp8(V a) { return map16(a, a, [](int x, int) { return x < 0 ? 0 : (x > 255 ? 255 : x); }); }
  static V and_(V a, V b) { return map16(a, b, [](int x, int y) { return x & y; }); }
  static V or_(V a, V b) { return map16(a, b, [](int x, int y) { return x | y; }); }
  static V xor_(V a, V b) { return map16(a, b, [](int x, int y) { return x ^ y; }); }
  // Returns ~a & b.
  static V andnot(V a, V b) { return map16(a, b, [](int x, int y) { return ~x & y; }); }

  // ---- 32-bit lanes
  static V set32(int v) { V r; for (int i = 0; i < 4; ++i) r.w(i, v); return r; }
  static V add32(V a, V b) { return map32(a, b, [](int32_t x, int32_t y) { return int32_t(uint32_t(x) + uint32_t(y)); }); }
  static V sub32(V a, V b) { return map32(a, b, [](int32_t x, int32_t y) { return int32_t(uint32_t(x) - uint32_t(y)); }); }
  static V mullo32(V a, V b) { return map32(a, b, [](int32_t x, int32_t y) { return int32_t(uint32_t(x) * uint32_t(y)); }); }
  static V mul32(V a, int c) { return mullo32(a, set32(c)); }
  static V min32(V a, V b) { return map32(a, b, [](int32_t x, int32_t y) { return x < y ? x : y; }); }
  static V max32(V a, V b) { return map32(a, b, [](int32_t x, int32_t y) { return x > y ? x : y; }); }
  static V sll32(V a, int n) { return map32(a, a, [n](int32_t x, int32_t) { return n > 31 ? 0 : int32_t(uint32_t(x) << n); }); }
  static V srl32(V a, int n) { return map32(a, a, [n](int32_t x, int32_t) { return n > 31 ? 0 : int32_t(uint32_t(x) >> n); }); }
  static V sra32(V a, int n) { return map32(a, a, [n](int32_t x, int32_t) { return x >> (n > 31 ? 31 : n); }); }
  // Signed 16-bit lanes widened to 32 bits: lo holds lanes 0..3, hi lanes 4..7
  // of each 128-bit half; narrow() puts them back (saturating to 16 bits).
  static void widen(V a, V& lo, V& hi) {
    for (int i = 0; i < 4; ++i) {
      lo.w(i, a.h[i]);
      hi.w(i, a.h[4 + i]);
    }
  }
  static V narrow(V lo, V hi) {
    V r;
    for (int i = 0; i < 4; ++i) {
      r.h[i] = int16_t(emu::sat16s(lo.w(i)));
      r.h[4 + i] = int16_t(emu::sat16s(hi.w(i)));
    }
    return r;
  }
  // a * ca + b * cb of 16-bit lanes (ca, cb within -32768..32767) as exact
  // 32-bit sums, split into halves as widen() splits.
  static void madd(V a, V b, int ca, int cb, V& lo, V& hi) {
    for (int i = 0; i < 4; ++i) {
      lo.w(i, int32_t(uint32_t(a.h[i] * emu::s16(ca)) + uint32_t(b.h[i] * emu::s16(cb))));
      hi.w(i, int32_t(uint32_t(a.h[4 + i] * emu::s16(ca)) + uint32_t(b.h[4 + i] * emu::s16(cb))));
    }
  }

  // ---- single-precision lanes
  static F setf(float v) { return {{v, v, v, v}}; }
  static F zerof() { return setf(0.0f); }
  static F loadf(const float* p) { F r; std::memcpy(r.l, p, 16); return r; }
  static void storef(float* p, F v) { std::memcpy(p, v.l, 16); }
  static F addf(F a, F b) { return mapf(a, b, [](float x, float y) { return x + y; }); }
  static F subf(F a, F b) { return mapf(a, b, [](float x, float y) { return x - y; }); }
  static F mulf(F a, F b) { return mapf(a, b, [](float x, float y) { return x * y; }); }
  static F divf(F a, F b) { return mapf(a, b, [](float x, float y) { return x / y; }); }
  static F minf(F a, F b) { return mapf(a, b, [](float x, float y) { return emu::minX(x, y); }); }
  static F maxf(F a, F b) { return mapf(a, b, [](float x, float y) { return emu::maxX(x, y); }); }
  // 32-bit integer lanes to floats, and back: nearest under the rounding mode, or truncated.
  static F cvtif(V a) { F r; for (int i = 0; i < 4; ++i) r.l[i] = float(a.w(i)); return r; }
  static V cvtfi(F a) { V r; for (int i = 0; i < 4; ++i) r.w(i, emu::cvtNearest(a.l[i])); return r; }
  static V cvttfi(F a) { V r; for (int i = 0; i < 4; ++i) r.w(i, emu::cvtTrunc(a.l[i])); return r; }
  // The library's 12-bit reciprocal estimate, lane by lane (never the processor's instruction).
  static F rcpf(F a) { F r; for (int i = 0; i < 4; ++i) r.l[i] = rcpEstimate(a.l[i]); return r; }

  // ---- double-precision lanes
  static D setd(double v) { return {{v, v}}; }
  static D zerod() { return setd(0.0); }
  static D loadd(const double* p) { D r; std::memcpy(r.l, p, 16); return r; }
  static void stored(double* p, D v) { std::memcpy(p, v.l, 16); }
  static D addd(D a, D b) { return mapd(a, b, [](double x, double y) { return x + y; }); }
  static D subd(D a, D b) { return mapd(a, b, [](double x, double y) { return x - y; }); }
  static D muld(D a, D b) { return mapd(a, b, [](double x, double y) { return x * y; }); }
  static D divd(D a, D b) { return mapd(a, b, [](double x, double y) { return x / y; }); }

  // ---- shuffles inside 128-bit halves
  // Sums of adjacent 16-bit lanes (wrapping): in each 128-bit half, the four
  // pair sums of a, then the four of b.
  static V hadd16(V a, V b) {
    V r;
    for (int i = 0; i < 4; ++i) {
      r.h[i] = int16_t(a.h[2 * i] + a.h[2 * i + 1]);
      r.h[4 + i] = int16_t(b.h[2 * i] + b.h[2 * i + 1]);
    }
    return r;
  }
  // ---- byte lanes
  // Byte lanes: (a + b + 1) >> 1 of unsigned bytes; a - b wrapping.
  static V avg8(V a, V b) { return mapBytes(a, b, [](int x, int y) { return (x + y + 1) >> 1; }); }
  static V sub8(V a, V b) { return mapBytes(a, b, [](int x, int y) { return x - y; }); }
  // Each 16-bit lane: the two products of its unsigned bytes of a and signed
  // bytes of b, summed and saturated to 16 bits.
  static V maddubs16(V a, V b) {
    uint8_t x[16], y[16];
    std::memcpy(x, a.h, 16);
    std::memcpy(y, b.h, 16);
    V r;
    for (int i = 0; i < 8; ++i) r.h[i] = int16_t(emu::sat16s(x[2 * i] * int8_t(y[2 * i]) + x[2 * i + 1] * int8_t(y[2 * i + 1])));
    return r;
  }
  // Signed 16-bit lanes of lo, then of hi, saturated to unsigned bytes (per 128-bit half).
  static V packus16(V lo, V hi) {
    uint8_t r[16];
    for (int i = 0; i < 8; ++i) {
      r[i] = uint8_t(lo.h[i] < 0 ? 0 : (lo.h[i] > 255 ? 255 : lo.h[i]));
      r[8 + i] = uint8_t(hi.h[i] < 0 ? 0 : (hi.h[i] > 255 ? 255 : hi.h[i]));
    }
    return load(r);
  }
  // Bytes of a and b taken in turn from the low (zipLo8) or high (zipHi8) 8
  // bytes of each 128-bit half.
  static V zipLo8(V a, V b) { return zip8(a, b, 0); }
  static V zipHi8(V a, V b) { return zip8(a, b, 8); }

 private:
  template <class Fn>
  static V mapBytes(V a, V b, Fn f) {
    uint8_t x[16], y[16], r[16];
    std::memcpy(x, a.h, 16);
    std::memcpy(y, b.h, 16);
    for (int i = 0; i < 16; ++i) r[i] = uint8_t(f(int(x[i]), int(y[i])));
    return load(r);
  }
  static V zip8(V a, V b, int from) {
    uint8_t x[16], y[16], r[16];
    std::memcpy(x, a.h, 16);
    std::memcpy(y, b.h, 16);
    for (int i = 0; i < 8; ++i) {
      r[2 * i] = x[from + i];
      r[2 * i + 1] = y[from + i];
    }
    return load(r);
  }

 public:
  // ---- partial loads and reductions of float lanes
  // Lane 0 (loadf1) or lanes 0 and 1 (loadf2) from memory, the other lanes zero.
  static F loadf1(const float* p) { F r = zerof(); std::memcpy(r.l, p, 4); return r; }
  static F loadf2(const float* p) { F r = zerof(); std::memcpy(r.l, p, 8); return r; }
  // maxf of lane 0 (maxf1) or lanes 0 and 1 (maxf2) with samples from memory,
  // acc as the first operand; the other lanes keep acc.
  static F maxf1(F acc, const float* p) { const F x = loadf1(p); acc.l[0] = emu::maxX(acc.l[0], x.l[0]); return acc; }
  static F maxf2(F acc, const float* p) {
    const F x = loadf2(p);
    for (int i = 0; i < 2; ++i) acc.l[i] = emu::maxX(acc.l[i], x.l[i]);
    return acc;
  }
  // The upper lanes folded onto the lower ones: lo = l0 + l2, hi = l1 + l3.
  static void foldAddf(F t, float& lo, float& hi) {
    lo = t.l[0] + t.l[2];
    hi = t.l[1] + t.l[3];
  }
  // maxf(maxf(l0, l2), maxf(l1, l3)), the lower lane as first operand at each step.
  static float foldMaxf(F t) { return emu::maxX(emu::maxX(t.l[0], t.l[2]), emu::maxX(t.l[1], t.l[3])); }
  // The even lanes {a0, a2, b0, b2} and the odd lanes {a1, a3, b1, b3} of two vectors.
  static F evensf(F a, F b) { return {{a.l[0], a.l[2], b.l[0], b.l[2]}}; }
  static F oddsf(F a, F b) { return {{a.l[1], a.l[3], b.l[1], b.l[3]}}; }
  // Float lanes 0 and 1 (cvtfdLo) or 2 and 3 (cvtfdHi) widened to double lanes.
  static D cvtfdLo(F a) { return {{double(a.l[0]), double(a.l[1])}}; }
  static D cvtfdHi(F a) { return {{double(a.l[2]), double(a.l[3])}}; }
  // l0 + l1 of double lanes.
  static double sumd(D a) { return a.l[0] + a.l[1]; }
  // The even 16-bit lanes of a, then those of b, in each 128-bit half.
  static V evens16(V a, V b) {
    V r;
    for (int i = 0; i < 4; ++i) {
      r.h[i] = a.h[2 * i];
      r.h[4 + i] = b.h[2 * i];
    }
    return r;
  }
  // The odd 16-bit lanes of a, then those of b, in each 128-bit half.
  static V odds16(V a, V b) {
    V r;
    for (int i = 0; i < 4; ++i) {
      r.h[i] = a.h[2 * i + 1];
      r.h[4 + i] = b.h[2 * i + 1];
    }
    return r;
  }
  // The 16-bit lanes of a moved up one place in each 128-bit half; the freed
  // lane 0 takes the top lane of c's half.
  static V slideUp16(V a, V c) {
    V r;
    r.h[0] = c.h[7];
    for (int i = 1; i < 8; ++i) r.h[i] = a.h[i - 1];
    return r;
  }
  // ---- added for XYZ and LUV
  // All-ones float lanes where a <= b (or a == b), zero where not or NaN.
  static F cmplef(F a, F b) { return mapf(a, b, [](float x, float y) { return allOnesIf(x <= y); }); }
  static F cmpeqf(F a, F b) { return mapf(a, b, [](float x, float y) { return allOnesIf(x == y); }); }
  // a where the sign bit of m's lane is set, else b.
  static F selectf(F m, F a, F b) {
    F r;
    for (int i = 0; i < 4; ++i) {
      int32_t mb;
      std::memcpy(&mb, &m.l[i], 4);
      r.l[i] = mb < 0 ? a.l[i] : b.l[i];
    }
    return r;
  }
  // a with the sign bit cleared.
  static F absf(F a) { return mapf(a, a, [](float x, float) { return std::fabs(x); }); }

 private:
  static float allOnesIf(bool b) {
    const uint32_t u = b ? 0xFFFFFFFFu : 0u;
    float f;
    std::memcpy(&f, &u, 4);
    return f;
  }

 public:
  // ---- added for Lab
  // x where a <= b, else y (y where either is NaN), lane by lane.
  static F leSelectf(F a, F b, F x, F y) {
    F r;
    for (int i = 0; i < 4; ++i) r.l[i] = a.l[i] <= b.l[i] ? x.l[i] : y.l[i];
    return r;
  }
  static D leSelectd(D a, D b, D x, D y) {
    D r;
    for (int i = 0; i < 2; ++i) r.l[i] = a.l[i] <= b.l[i] ? x.l[i] : y.l[i];
    return r;
  }

  // ---- added for the power kernel
  // Float lanes as their 32-bit patterns, and back.
  static V castfv(F a) { V r; std::memcpy(r.h, a.l, 16); return r; }
  static F castvf(V a) { F r; std::memcpy(r.l, a.h, 16); return r; }
  // All-ones lanes where a < b, zero lanes elsewhere and where either is NaN.
  static F cmpltf(F a, F b) { return maskOf(a, b, [](float x, float y) { return x < y; }); }
  // The lanes' sign bits as bits 0..3.
  static int maskf(F a) {
    int r = 0;
    for (int i = 0; i < 4; ++i) r |= int(uint32_t(castfv(a).w(i)) >> 31) << i;
    return r;
  }
  // Double lanes of lo, then of hi, rounded to floats under the rounding mode.
  static F cvtdf(D lo, D hi) { return {{float(lo.l[0]), float(lo.l[1]), float(hi.l[0]), float(hi.l[1])}}; }
  // The x86 double minimum and maximum (the second operand where either is NaN).
  static D mind(D a, D b) { return mapd(a, b, [](double x, double y) { return emu::minX(x, y); }); }
  static D maxd(D a, D b) { return mapd(a, b, [](double x, double y) { return emu::maxX(x, y); }); }

 private:
  template <class Fn>
  static F maskOf(F a, F b, Fn f) {
    V r;
    for (int i = 0; i < 4; ++i) r.w(i, f(a.l[i], b.l[i]) ? -1 : 0);
    return castvf(r);
  }

 public:
  // ---- added for bit-depth reduction
  // Bitwise and of float lanes.
  static F andf(F a, F b) {
    F r;
    for (int i = 0; i < 4; ++i) {
      uint32_t x, y;
      std::memcpy(&x, &a.l[i], 4);
      std::memcpy(&y, &b.l[i], 4);
      x &= y;
      std::memcpy(&r.l[i], &x, 4);
    }
    return r;
  }
  // ---- added for YCoCg
  // Byte lanes: a + b of unsigned bytes, saturated to 255.
  static V adds8u(V a, V b) { return mapBytes(a, b, [](int x, int y) { return x + y > 255 ? 255 : x + y; }); }
  // ---- added for HLS and HSV
  // Bitwise ~a & b of float lanes.
  static F andnotf(F a, F b) { return castvf(andnot(castfv(a), castfv(b))); }
  // ---- added for Lab
  // Pairs (t[2i], t[2i + 1]) of a table of floats for the 32-bit index lanes i:
  // the first of each pair in a, the second in b.
  static void pairsf(const float* t, V i, F& a, F& b) {
    for (int k = 0; k < 4; ++k) {
      a.l[k] = t[2 * std::ptrdiff_t(i.w(k))];
      b.l[k] = t[2 * std::ptrdiff_t(i.w(k)) + 1];
    }
  }
};

#if LUM_SIMD_SSE
// One 128-bit SSE4.2 register.
struct Sse {
  using V = __m128i;
  using F = __m128;
  using D = __m128d;
  static constexpr int kLanes = 8;

  // ---- memory
  static V load(const void* p) { return _mm_loadu_si128(static_cast<const V*>(p)); }
  static V loadA(const void* p) { return _mm_load_si128(static_cast<const V*>(p)); }
  static void store(void* p, V v) { _mm_storeu_si128(static_cast<V*>(p), v); }
  static void storeA(void* p, V v) { _mm_store_si128(static_cast<V*>(p), v); }
  static void stream(void* p, V v) { _mm_stream_si128(static_cast<V*>(p), v); }
  static void fence() { _mm_sfence(); }
  static V splat8(int v) { return _mm_set1_epi8(char(v)); }

  // ---- 16-bit lanes
  static V set(int v) { return _mm_set1_epi16(int16_t(v)); }
  static V zero() { return _mm_setzero_si128(); }
  static V mulhi16u(V a, V b) { return _mm_mulhi_epu16(a, b); }
  static V mulhi16s(V a, V b) { return _mm_mulhi_epi16(a, b); }
  static V mulhrs16s(V a, V b) { return _mm_mulhrs_epi16(a, b); }
  static V mullo16(V a, V b) { return _mm_mullo_epi16(a, b); }
  static V adds16s(V a, V b) { return _mm_adds_epi16(a, b); }
  static V subs16s(V a, V b) { return _mm_subs_epi16(a, b); }
  static V addus16u(V a, V b) { return _mm_adds_epu16(a, b); }
  static V subus16u(V a, V b) { return _mm_subs_epu16(a, b); }
  static V add16(V a, V b) { return _mm_add_epi16(a, b); }
  static V sub16(V a, V b) { return _mm_sub_epi16(a, b); }
  static V min16(V a, V b) { return _mm_min_epi16(a, b); }
  static V max16(V a, V b) { return _mm_max_epi16(a, b); }
  static V avg16(V a, V b) { return _mm_avg_epu16(a, b); }
  static V sll(V a, int n) { return _mm_slli_epi16(a, n); }
  static V srl(V a, int n) { return _mm_srli_epi16(a, n); }
  static V sra(V a, int n) { return _mm_srai_epi16(a, n); }
  static V clamp8(V a) { return _mm_min_epi16(_mm_max_epi16(a, _mm_setzero_si128()), set(255)); }
  static V and_(V a, V b) { return _mm_and_si128(a, b); }
  static V or_(V a, V b) { return _mm_or_si128(a, b); }
  static V xor_(V a, V b) { return _mm_xor_si128(a, b); }
  static V andnot(V a, V b) { return _mm_andnot_si128(a, b); }

  // ---- 32-bit lanes
  static V set32(int v) { return _mm_set1_epi32(v); }
  static V add32(V a, V b) { return _mm_add_epi32(a, b); }
  static V sub32(V a, V b) { return _mm_sub_epi32(a, b); }
  static V mullo32(V a, V b) { return _mm_mullo_epi32(a, b); }
  static V mul32(V a, int c) { return _mm_mullo_epi32(a, _mm_set1_epi32(c)); }
  static V min32(V a, V b) { return _mm_min_epi32(a, b); }
  static V max32(V a, V b) { return _mm_max_epi32(a, b); }
  static V sll32(V a, int n) { return _mm_slli_epi32(a, n); }
  static V srl32(V a, int n) { return _mm_srli_epi32(a, n); }
  static V sra32(V a, int n) { return _mm_srai_epi32(a, n); }
  static void widen(V a, V& lo, V& hi) {
    lo = _mm_srai_epi32(_mm_unpacklo_epi16(a, a), 16);
    hi = _mm_srai_epi32(_mm_unpackhi_epi16(a, a), 16);
  }
  static V narrow(V lo, V hi) { return _mm_packs_epi32(lo, hi); }
  static void madd(V a, V b, int ca, int cb, V& lo, V& hi) {
    const V k = _mm_set1_epi32(int(uint32_t(uint16_t(ca)) | (uint32_t(uint16_t(cb)) << 16)));
    lo = _mm_madd_epi16(_mm_unpacklo_epi16(a, b), k);
    hi = _mm_madd_epi16(_mm_unpackhi_epi16(a, b), k);
  }

  // ---- single-precision lanes
  static F setf(float v) { return _mm_set1_ps(v); }
  static F zerof() { return _mm_setzero_ps(); }
  static F loadf(const float* p) { return _mm_loadu_ps(p); }
  static void storef(float* p, F v) { _mm_storeu_ps(p, v); }
  static F addf(F a, F b) { return _mm_add_ps(a, b); }
  static F subf(F a, F b) { return _mm_sub_ps(a, b); }
  static F mulf(F a, F b) { return _mm_mul_ps(a, b); }
  static F divf(F a, F b) { return _mm_div_ps(a, b); }
  static F minf(F a, F b) { return _mm_min_ps(a, b); }
  static F maxf(F a, F b) { return _mm_max_ps(a, b); }
  static F cvtif(V a) { return _mm_cvtepi32_ps(a); }
  static V cvtfi(F a) { return _mm_cvtps_epi32(a); }
  static V cvttfi(F a) { return _mm_cvttps_epi32(a); }
  static F rcpf(F a) { return rcpEstimate(a); }

  // ---- double-precision lanes
  static D setd(double v) { return _mm_set1_pd(v); }
  static D zerod() { return _mm_setzero_pd(); }
  static D loadd(const double* p) { return _mm_loadu_pd(p); }
  static void stored(double* p, D v) { _mm_storeu_pd(p, v); }
  static D addd(D a, D b) { return _mm_add_pd(a, b); }
  static D subd(D a, D b) { return _mm_sub_pd(a, b); }
  static D muld(D a, D b) { return _mm_mul_pd(a, b); }
  static D divd(D a, D b) { return _mm_div_pd(a, b); }

  // ---- shuffles inside 128-bit halves
  static V hadd16(V a, V b) { return _mm_hadd_epi16(a, b); }
  // ---- byte lanes
  static V avg8(V a, V b) { return _mm_avg_epu8(a, b); }
  static V sub8(V a, V b) { return _mm_sub_epi8(a, b); }
  static V maddubs16(V a, V b) { return _mm_maddubs_epi16(a, b); }
  static V packus16(V lo, V hi) { return _mm_packus_epi16(lo, hi); }
  static V zipLo8(V a, V b) { return _mm_unpacklo_epi8(a, b); }
  static V zipHi8(V a, V b) { return _mm_unpackhi_epi8(a, b); }
  // ---- partial loads and reductions of float lanes
  static F loadf1(const float* p) { return _mm_castsi128_ps(_mm_loadu_si32(p)); }
  static F loadf2(const float* p) { return _mm_castsi128_ps(_mm_loadl_epi64(reinterpret_cast<const __m128i*>(p))); }
  static F maxf1(F acc, const float* p) { return _mm_max_ss(acc, loadf1(p)); }
  // Lanes 2 and 3 are acc against itself, which gives acc bit for bit.
  static F maxf2(F acc, const float* p) { return _mm_max_ps(acc, _mm_loadl_pi(acc, reinterpret_cast<const __m64*>(p))); }
  static void foldAddf(F t, float& lo, float& hi) {
    const F f = _mm_add_ps(t, _mm_movehl_ps(t, t));
    lo = _mm_cvtss_f32(f);
    hi = _mm_cvtss_f32(_mm_shuffle_ps(f, f, 1));
  }
  static float foldMaxf(F t) {
    const F h = _mm_max_ps(t, _mm_movehl_ps(t, t));
    return _mm_cvtss_f32(_mm_max_ss(h, _mm_shuffle_ps(h, h, 1)));
  }
  static F evensf(F a, F b) { return _mm_shuffle_ps(a, b, _MM_SHUFFLE(2, 0, 2, 0)); }
  static F oddsf(F a, F b) { return _mm_shuffle_ps(a, b, _MM_SHUFFLE(3, 1, 3, 1)); }
  static D cvtfdLo(F a) { return _mm_cvtps_pd(a); }
  static D cvtfdHi(F a) { return _mm_cvtps_pd(_mm_movehl_ps(a, a)); }
  static double sumd(D a) { return _mm_cvtsd_f64(a) + _mm_cvtsd_f64(_mm_unpackhi_pd(a, a)); }
  // ---- shuffles inside 128-bit halves
  static V evens16(V a, V b) {
    return _mm_packs_epi32(_mm_srai_epi32(_mm_slli_epi32(a, 16), 16), _mm_srai_epi32(_mm_slli_epi32(b, 16), 16));
  }
  static V odds16(V a, V b) { return _mm_packs_epi32(_mm_srai_epi32(a, 16), _mm_srai_epi32(b, 16)); }
  static V slideUp16(V a, V c) { return _mm_alignr_epi8(a, c, 14); }
  // ---- added for XYZ and LUV
  static F cmplef(F a, F b) { return _mm_cmple_ps(a, b); }
  static F cmpeqf(F a, F b) { return _mm_cmpeq_ps(a, b); }
  static F selectf(F m, F a, F b) { return _mm_blendv_ps(b, a, m); }
  static F absf(F a) { return _mm_and_ps(a, _mm_castsi128_ps(_mm_set1_epi32(0x7FFFFFFF))); }

  // ---- added for the power kernel
  static V castfv(F a) { return _mm_castps_si128(a); }
  static F castvf(V a) { return _mm_castsi128_ps(a); }
  static F cmpltf(F a, F b) { return _mm_cmplt_ps(a, b); }
  static int maskf(F a) { return _mm_movemask_ps(a); }
  static F cvtdf(D lo, D hi) { return _mm_movelh_ps(_mm_cvtpd_ps(lo), _mm_cvtpd_ps(hi)); }
  static D mind(D a, D b) { return _mm_min_pd(a, b); }
  static D maxd(D a, D b) { return _mm_max_pd(a, b); }

  // ---- added for bit-depth reduction
  static F andf(F a, F b) { return _mm_and_ps(a, b); }
  // ---- added for YCoCg
  static V adds8u(V a, V b) { return _mm_adds_epu8(a, b); }
  // ---- added for HLS and HSV
  static F andnotf(F a, F b) { return _mm_andnot_ps(a, b); }
  // ---- added for Lab
  static F leSelectf(F a, F b, F x, F y) { return _mm_blendv_ps(y, x, _mm_cmple_ps(a, b)); }
  static D leSelectd(D a, D b, D x, D y) { return _mm_blendv_pd(y, x, _mm_cmple_pd(a, b)); }
  static void pairsf(const float* t, V i, F& a, F& b) {
    const auto pair = [t](int k) { return reinterpret_cast<const double*>(t + 2 * std::ptrdiff_t(k)); };
    const __m128 lo = _mm_castpd_ps(_mm_loadh_pd(_mm_load_sd(pair(_mm_cvtsi128_si32(i))), pair(_mm_extract_epi32(i, 1))));
    const __m128 hi = _mm_castpd_ps(_mm_loadh_pd(_mm_load_sd(pair(_mm_extract_epi32(i, 2))), pair(_mm_extract_epi32(i, 3))));
    a = _mm_shuffle_ps(lo, hi, _MM_SHUFFLE(2, 0, 2, 0));
    b = _mm_shuffle_ps(lo, hi, _MM_SHUFFLE(3, 1, 3, 1));
  }
};

// The 128-bit set of this build: the register where there is one.
using Narrow = Sse;
#else
using Narrow = Emu;
#endif

// Calls f(O{}) with the 128-bit lane set this call may use: Sse where the
// vector code is on, else its emulation, which computes the same lanes.
template <class Fn>
inline decltype(auto) with128(Fn&& f) {
#if LUM_SIMD_SSE
  if (useVector()) return f(Sse{});
#endif
  return f(Emu{});
}

// ---- generic helpers over any lane set ------------------------------------

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
