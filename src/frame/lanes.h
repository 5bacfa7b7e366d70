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

  // ---- double-precision lanes
  static D setd(double v) { return {{v, v}}; }
  static D zerod() { return setd(0.0); }
  static D loadd(const double* p) { D r; std::memcpy(r.l, p, 16); return r; }
  static void stored(double* p, D v) { std::memcpy(p, v.l, 16); }
  static D addd(D a, D b) { return mapd(a, b, [](double x, double y) { return x + y; }); }
  static D subd(D a, D b) { return mapd(a, b, [](double x, double y) { return x - y; }); }
  static D muld(D a, D b) { return mapd(a, b, [](double x, double y) { return x * y; }); }
  static D divd(D a, D b) { return mapd(a, b, [](double x, double y) { return x / y; }); }
  // ---- added for the 4:2:x forms
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

  // ---- double-precision lanes
  static D setd(double v) { return _mm_set1_pd(v); }
  static D zerod() { return _mm_setzero_pd(); }
  static D loadd(const double* p) { return _mm_loadu_pd(p); }
  static void stored(double* p, D v) { _mm_storeu_pd(p, v); }
  static D addd(D a, D b) { return _mm_add_pd(a, b); }
  static D subd(D a, D b) { return _mm_sub_pd(a, b); }
  static D muld(D a, D b) { return _mm_mul_pd(a, b); }
  static D divd(D a, D b) { return _mm_div_pd(a, b); }
  // ---- added for the 4:2:x forms
  static V hadd16(V a, V b) { return _mm_hadd_epi16(a, b); }
  static V evens16(V a, V b) {
    return _mm_packs_epi32(_mm_srai_epi32(_mm_slli_epi32(a, 16), 16), _mm_srai_epi32(_mm_slli_epi32(b, 16), 16));
  }
  static V odds16(V a, V b) { return _mm_packs_epi32(_mm_srai_epi32(a, 16), _mm_srai_epi32(b, 16)); }
  static V slideUp16(V a, V c) { return _mm_alignr_epi8(a, c, 14); }
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
