// YCoCg: the plain and the reversible (lifting) transform, each written once
// over an arithmetic A, and the flavours that bind a transform to its sample
// types, its arithmetic and its layouts. Form channels are R, G, B on the
// packed side and Y, Co, Cg on the plane side. Block and tail compute the same
// thing: the scalar twin is the same form over integers.
//
// An arithmetic A gives a value type T and add, sub, shr (arithmetic shift,
// a floor), con (a constant), min. The scalar ones wrap every result to 16 or
// 32 bits; the lane ones run 16-bit lanes (V) or 32-bit lanes in two halves (W).
#pragma once

#include <cstdint>
#include <type_traits>

#include "frame/coeffs.h"
#include "frame/lanes.h"
#include "frame/rows.h"
#include "lumcc.h"

namespace lum::ycocg {

// ---- arithmetics ------------------------------------------------------------

// Integers wrapped to Bits (16 or 32) after every operation, read as signed.
template <int Bits>
struct ScalarAr {
  using T = int;
  static T wrap(unsigned v) {
    if constexpr (Bits == 16) return int16_t(uint16_t(v));
    else return int32_t(v);
  }
  static T add(T a, T b) { return wrap(unsigned(a) + unsigned(b)); }
  static T sub(T a, T b) { return wrap(unsigned(a) - unsigned(b)); }
  static T shr(T a, int n) { return a >> n; }
  static T con(int c) { return c; }
  static T min(T a, T b) { return a < b ? a : b; }
};

// 16-bit lanes of lane set O, wrapping.
template <class O>
struct Lanes16 {
  using T = typename O::V;
  static T add(T a, T b) { return O::add16(a, b); }
  static T sub(T a, T b) { return O::sub16(a, b); }
  static T shr(T a, int n) { return O::sra(a, n); }
  static T con(int c) { return O::set(c); }
  static T min(T a, T b) { return O::min16(a, b); }
};

// 32-bit lanes of O: the lanes of one 16-bit vector widened into two halves.
template <class O>
struct W {
  typename O::V lo, hi;
};
template <class O>
struct Lanes32 {
  using T = W<O>;
  static T add(T a, T b) { return {O::add32(a.lo, b.lo), O::add32(a.hi, b.hi)}; }
  static T sub(T a, T b) { return {O::sub32(a.lo, b.lo), O::sub32(a.hi, b.hi)}; }
  static T shr(T a, int n) { return {O::sra32(a.lo, n), O::sra32(a.hi, n)}; }
  static T con(int c) { return {O::set32(c), O::set32(c)}; }
  static T min(T a, T b) { return {O::min32(a.lo, b.lo), O::min32(a.hi, b.hi)}; }
};

// Lanes moved between the layouts' lane widths and an arithmetic's: sign
// extension into 32 bits, and the low 16 bits of 32 (no saturation).
template <class A, class O>
inline typename A::T fromLanes(typename O::V v) {
  if constexpr (std::is_same_v<A, Lanes16<O>>) {
    return v;
  } else {
    W<O> w;
    O::widen(v, w.lo, w.hi);
    return w;
  }
}
template <class A, class O>
inline typename A::T fromLanes(W<O> w) {
  if constexpr (std::is_same_v<A, Lanes32<O>>) return w;
  else return O::evens16(w.lo, w.hi);
}
template <class O>
inline typename O::V low16(typename O::V v) { return v; }
template <class O>
inline typename O::V low16(W<O> w) { return O::evens16(w.lo, w.hi); }
template <class O>
inline W<O> wide32(typename O::V v) {
  W<O> w;
  O::widen(v, w.lo, w.hi);
  return w;
}
template <class O>
inline W<O> wide32(W<O> w) { return w; }

// ---- the transforms ---------------------------------------------------------

// Plain forward: three averages.
struct PlainFwd {
  template <class A, class T = typename A::T>
  static void run(const T rgb[3], T ycc[3]) {
    const T r = rgb[0], g = rgb[1], b = rgb[2];
    const T g2 = A::add(g, g);
    ycc[0] = A::shr(A::add(A::add(A::add(r, g2), b), A::con(2)), 2);
    ycc[1] = A::shr(A::add(A::sub(r, b), A::con(1)), 1);
    ycc[2] = A::shr(A::add(A::sub(A::sub(g2, r), b), A::con(2)), 2);
  }
};

// Reversible forward: the lifting steps, Co and Cg one bit wider.
struct RevFwd {
  template <class A, class T = typename A::T>
  static void run(const T rgb[3], T ycc[3]) {
    const T co = A::sub(rgb[0], rgb[2]);
    const T t = A::add(rgb[2], A::shr(co, 1));
    const T cg = A::sub(rgb[1], t);
    ycc[0] = A::add(t, A::shr(cg, 1));
    ycc[1] = co;
    ycc[2] = cg;
  }
};

// Plain reverse, without a shift.
struct PlainInv {
  template <class A, class T = typename A::T>
  static void run(const T ycc[3], T rgb[3]) {
    const T y = ycc[0], co = ycc[1], cg = ycc[2];
    rgb[0] = A::sub(A::add(y, co), cg);
    rgb[1] = A::add(y, cg);
    rgb[2] = A::sub(A::sub(y, co), cg);
  }
};

// Reversible reverse: the lifting steps undone in the opposite order.
struct RevInv {
  template <class A, class T = typename A::T>
  static void run(const T ycc[3], T rgb[3]) {
    const T t = A::sub(ycc[0], A::shr(ycc[2], 1));
    rgb[1] = A::add(ycc[2], t);
    rgb[2] = A::sub(t, A::shr(ycc[1], 1));
    rgb[0] = A::add(rgb[2], ycc[1]);
  }
};

// Plain forward on 8u planes: Co and Cg biased and limited at the top (they
// cannot fall below 1, so no lower limit is taken).
struct PlainFwd8u {
  template <class A, class T = typename A::T>
  static void run(const T rgb[3], T ycc[3]) {
    PlainFwd::run<A>(rgb, ycc);
    for (int k = 1; k < 3; ++k)
      ycc[k] = A::min(A::add(ycc[k], A::con(coef::ycocg::kChromaBias8u)), A::con(coef::ycocg::kMax8u));
  }
};

// PlainFwd8u on byte lanes, the same samples: with h = floor((R + B) / 2),
// Y = (h + G + 1) >> 1; Co + 128 = floor((R + (255 - B) + 2) / 2) and, with
// h' = floor(((255 - R) + (255 - B)) / 2), Cg + 128 = floor((h' + G + 2) / 2),
// each an average plus the bit it rounded away; the saturating adds are the limit 255.
struct PlainFwd8uBytes {
  template <class O, class V = typename O::V>
  static void run(const V rgb[3], V ycc[3]) {
    const V one = O::splat8(1), ff = O::splat8(255);
    const V r = rgb[0], g = rgb[1], b = rgb[2];
    const V odd = O::and_(O::xor_(r, b), one);  // R - B odd
    ycc[0] = O::avg8(O::sub8(O::avg8(r, b), odd), g);
    const V nb = O::xor_(b, ff);
    ycc[1] = O::adds8u(O::avg8(r, nb), odd);
    const V h = O::sub8(O::avg8(O::xor_(r, ff), nb), odd);
    ycc[2] = O::adds8u(O::avg8(h, g), O::andnot(O::xor_(h, g), one));
  }
};

// Plain reverse of biased 8u Co and Cg: R = Y + Co - Cg, G = Y + Cg - 128,
// B = Y - Co - Cg + 256 are the plain reverse of the unbiased values (the
// 8u store clamps).
struct PlainInv8u {
  template <class A, class T = typename A::T>
  static void run(const T ycc[3], T rgb[3]) {
    const T bias = A::con(coef::ycocg::kChromaBias8u);
    const T u[3] = {ycc[0], A::sub(ycc[1], bias), A::sub(ycc[2], bias)};
    PlainInv::run<A>(u, rgb);
  }
};

// ---- layouts ----------------------------------------------------------------
// Scalar moves of one pixel as ints (samples sign- or zero-extended; stores
// take the low bits of the sample type, clamped to 0..255 for 8u), and group
// moves through the lane moves M of a lane set (ycocg_moves.h): lanes of
// 16 bits, or W for 32-bit planes.

template <class T>
inline void storeSample(T* p, int v) {
  if constexpr (std::is_same_v<T, Lum8u>) storeAt(p, Lum8u(v < 0 ? 0 : (v > 255 ? 255 : v)));
  else storeAt(p, T(v));
}

// Packed pixels of N samples of T (8u or 16s); form channel Ik is memory
// sample k; the fourth sample is never read and is written as aval.
template <class T, int N, int I0, int I1, int I2>
struct Packed {
  static constexpr int kIdx[3] = {I0, I1, I2};
  static void load(const SrcPlanes& s, int x, int v[3]) {
    const T* p = reinterpret_cast<const T*>(s.p[0]) + N * std::ptrdiff_t(x);
    for (int k = 0; k < 3; ++k) v[kIdx[k]] = loadAt(p + k);
  }
  static void store(const DstPlanes& d, int x, const int v[3], int aval) {
    T* p = reinterpret_cast<T*>(d.p[0]) + N * std::ptrdiff_t(x);
    for (int k = 0; k < 3; ++k) storeSample(p + k, v[kIdx[k]]);
    if constexpr (N == 4) storeAt(p + 3, T(aval));
  }
  template <class O, class M>
  static void loadGroup(const SrcPlanes& s, int x, typename O::V v[3]) {
    typename O::V m[3];
    M::template split<T, N>(reinterpret_cast<const T*>(s.p[0]) + N * std::ptrdiff_t(x), m);
    for (int k = 0; k < 3; ++k) v[kIdx[k]] = m[k];
  }
  template <class O, class M, class L>
  static void storeGroup(const DstPlanes& d, int x, const L v[3], typename O::V aval) {
    const typename O::V m[4] = {low16<O>(v[I0]), low16<O>(v[I1]), low16<O>(v[I2]), aval};
    M::template merge<T, N>(reinterpret_cast<T*>(d.p[0]) + N * std::ptrdiff_t(x), m);
  }
  // Lanes as the group moves give them: 16 bits.
  template <class O>
  using Lanes = typename O::V;
};

// Lanes of a plane group: W for 32-bit samples, else 16-bit lanes.
template <bool Wide32, class O>
struct LanesOfPlane {
  using type = typename O::V;
};
template <class O>
struct LanesOfPlane<true, O> {
  using type = W<O>;
};

// Three planes of T (8u, 16s or 32s): Y, Co, Cg.
template <class T>
struct Planes3 {
  static void load(const SrcPlanes& s, int x, int v[3]) {
    for (int k = 0; k < 3; ++k) v[k] = loadAt(reinterpret_cast<const T*>(s.p[k]) + x);
  }
  static void store(const DstPlanes& d, int x, const int v[3], int) {
    for (int k = 0; k < 3; ++k) storeSample(reinterpret_cast<T*>(d.p[k]) + x, v[k]);
  }
  template <class O>
  using Lanes = typename LanesOfPlane<sizeof(T) == 4, O>::type;
  template <class O, class M>
  static void loadGroup(const SrcPlanes& s, int x, Lanes<O> v[3]) {
    for (int k = 0; k < 3; ++k) M::load(reinterpret_cast<const T*>(s.p[k]) + x, v[k]);
  }
  template <class O, class M, class L>
  static void storeGroup(const DstPlanes& d, int x, const L v[3], typename O::V) {
    for (int k = 0; k < 3; ++k) {
      if constexpr (sizeof(T) == 4) M::store(reinterpret_cast<T*>(d.p[k]) + x, wide32<O>(v[k]));
      else M::store(reinterpret_cast<T*>(d.p[k]) + x, low16<O>(v[k]));
    }
  }
};

template <class T, int N>
using BGRPacked = Packed<T, N, 2, 1, 0>;
template <class T>
using RGBPacked = Packed<T, 3, 0, 1, 2>;

// ---- flavours ---------------------------------------------------------------

// A transform over its layouts: scalar arithmetic of Bits, lanes of 16 bits
// (Lane32 false) or 32 bits.
template <class Form, class Src, class Dst, int Bits, bool Lane32>
struct Conv {
  static void pixel(const SrcPlanes& s, const DstPlanes& d, int x, int aval) {
    int in[3], out[3];
    Src::load(s, x, in);
    Form::template run<ScalarAr<Bits>>(in, out);
    Dst::store(d, x, out, aval);
  }
  // Groups of O::kLanes pixels from x while they fit in [x, end); returns where they stop.
  template <class O, class M>
  static int groups(const SrcPlanes& s, const DstPlanes& d, int x, int end, int aval) {
    using A = std::conditional_t<Lane32, Lanes32<O>, Lanes16<O>>;
    constexpr int n = O::kLanes;
    const typename O::V av = O::set(aval);
    for (; x + n <= end; x += n) {
      typename Src::template Lanes<O> raw[3];
      Src::template loadGroup<O, M>(s, x, raw);
      typename A::T in[3], out[3];
      for (int k = 0; k < 3; ++k) in[k] = fromLanes<A, O>(raw[k]);
      Form::template run<A>(in, out);
      Dst::template storeGroup<O, M>(d, x, out, av);
    }
    return x;
  }
};

// The flavours of the public functions. 8u sums fit 16-bit lanes exactly; the
// 16s and 32s flavours whose rule is 32-bit run 32-bit lanes, the modulo 2^16
// ones 16-bit lanes. The plain 32s16s reverse keeps the low 16 bits of its
// sums, which depend on the low 16 bits of the terms alone: 16-bit lanes.
template <int N>
using FwdBgr8u16s = Conv<PlainFwd, BGRPacked<Lum8u, N>, Planes3<Lum16s>, 32, false>;
template <int N>
using RevFwdBgr8u16s = Conv<RevFwd, BGRPacked<Lum8u, N>, Planes3<Lum16s>, 32, false>;
// Co or Cg of 32768 (R = 32767 with B = -32768; G = 32767 with R = B = -32768)
// does not fit its 16-bit plane: the low 16 bits are stored, as every 16s store here.
template <int N>
using FwdSbgr16s = Conv<PlainFwd, BGRPacked<Lum16s, N>, Planes3<Lum16s>, 32, true>;
template <int N>
using RevFwdSbgr16s = Conv<RevFwd, BGRPacked<Lum16s, N>, Planes3<Lum16s>, 16, false>;
template <int N>
using FwdSbgr16s32s = Conv<PlainFwd, BGRPacked<Lum16s, N>, Planes3<Lum32s>, 32, true>;
template <int N>
using RevFwdSbgr16s32s = Conv<RevFwd, BGRPacked<Lum16s, N>, Planes3<Lum32s>, 32, true>;
// RGB to 8u planes runs its groups on byte lanes, 2 * O::kLanes pixels a step.
struct FwdRgb8u : Conv<PlainFwd8u, RGBPacked<Lum8u>, Planes3<Lum8u>, 32, false> {
  template <class O, class M>
  static int groups(const SrcPlanes& s, const DstPlanes& d, int x, int end, int) {
    constexpr int n = 2 * O::kLanes;
    for (; x + n <= end; x += n) {
      typename O::V in[3], out[3];
      M::bytes3(s.p[0] + 3 * std::ptrdiff_t(x), in);
      PlainFwd8uBytes::run<O>(in, out);
      for (int k = 0; k < 3; ++k) O::store(d.p[k] + x, out[k]);
    }
    return x;
  }
};

template <int N>
using InvBgr16s8u = Conv<PlainInv, Planes3<Lum16s>, BGRPacked<Lum8u, N>, 16, false>;
template <int N>
using RevInvBgr16s8u = Conv<RevInv, Planes3<Lum16s>, BGRPacked<Lum8u, N>, 16, false>;
template <int N>
using InvSbgr16s = Conv<PlainInv, Planes3<Lum16s>, BGRPacked<Lum16s, N>, 16, false>;
template <int N>
using RevInvSbgr16s = Conv<RevInv, Planes3<Lum16s>, BGRPacked<Lum16s, N>, 16, false>;
template <int N>
using InvSbgr32s16s = Conv<PlainInv, Planes3<Lum32s>, BGRPacked<Lum16s, N>, 32, false>;
template <int N>
using RevInvSbgr32s16s = Conv<RevInv, Planes3<Lum32s>, BGRPacked<Lum16s, N>, 32, true>;
using InvRgb8u = Conv<PlainInv8u, Planes3<Lum8u>, RGBPacked<Lum8u>, 32, false>;

}  // namespace lum::ycocg
