// Arithmetic forms of the BT.709 conversions, in two coefficient sets: 709CSC
// (studio range, Y offset 16) and 709HDTV (full-scale luma, every forward code
// held in 1..254). Each form is one recipe: the scalar functions are lane-exact,
// and the lane-set templates (v...<O>) compute the same lanes on any lane set.
// The constants are those of coef::bt709 (frame/coeffs.h).
//
// Forward forms come in two parts, because chroma is made from sums over the
// pixels that share it (a 2-by-2 cell or a 4:2:2 pair) while luma is per pixel:
//   y(r, g, b)            the luma of one pixel
//   chroma(s, c)          s = {sR, sG, sB} sums -> c = {Cb, Cr}
// Inverse forms have the full-resolution shape (pixel(in = Y Cb Cr, out = R G B)
// and block()), so that they plug into the generic row kernels; the sub-sampled
// layouts hand them replicated chroma.
//
// Block and tail forms of one function may differ by a code value; which form
// covers a column is part of each function's result, so none may be merged.
#pragma once

#include "frame/coeffs.h"
#include "frame/fixed_point.h"
#include "frame/lanes.h"
#include "frame/chop.h"

namespace lum::form {

using namespace fx;
namespace k709 = coef::bt709;

// Holds a value inside 1..254: the forward 709HDTV codes never reach 0 or 255.
constexpr int lim(int x) { return x < 1 ? 1 : (x > 254 ? 254 : x); }

#if LUM_SIMD_SSE
// The vector code of the forms is written once over a lane set O (lanes.h):
// Sse here, the sixteen-lane set in the wide blocks; both compute the lanes of
// the scalar rule.
using lanes::Sse;
#endif

// clamp8 of vector lanes is done by the store: every vector store narrows its
// 16-bit lanes to bytes with signed-to-unsigned saturation (packus), which is
// clamp8. The vector forms hand their last lanes to it unclamped; the bytes in
// memory are those of the scalar rule.
template <class O>
inline typename O::V clampedByStore(typename O::V a) { return a; }
// lim of lanes in any lane set. lim(clamp8(x)) == lim(x), so the vector forms fold the two.
template <class O>
inline typename O::V vlim(typename O::V a) { return O::min16(O::max16(a, O::set(1)), O::set(254)); }

// ---------------------------------------------------------------------------
// Forward block forms
// ---------------------------------------------------------------------------

// Luma from unsigned high products of the samples in the high byte, saturating
// sums, a rounding add at scale 128, >> 7 and clamp8 (then lim for 709HDTV).
template <const int (&K)[3], int Add, bool Lim>
struct LumaHiU {
  static constexpr int KR = K[0], KG = K[1], KB = K[2];
  static int y(int r, int g, int b) {
    const int s = addus16u(addus16u(addus16u(mulhi16u(r << 8, KR), mulhi16u(g << 8, KG)), mulhi16u(b << 8, KB)), Add);
    const int v = clamp8(s >> 7);
    return Lim ? lim(v) : v;
  }
  template <class O, class V = typename O::V>
  static V vy(V r, V g, V b) {
    const V s = O::addus16u(O::addus16u(O::addus16u(O::mulhi16u(O::sll(r, 8), O::set(KR)),
                                                    O::mulhi16u(O::sll(g, 8), O::set(KG))),
                                        O::mulhi16u(O::sll(b, 8), O::set(KB))),
                            O::set(Add));
    const V v = O::srl(s, 7);  // 0..511
    return Lim ? vlim<O>(v) : clampedByStore<O>(v);
  }
};

// One chroma sample from sums shifted left by K: the unsigned product of the
// main channel minus the saturated sum of the other two. The subtraction wraps
// in a 16-bit lane that is then read as signed; a saturating add of Add, an
// arithmetic shift and clamp8 (then lim) finish it.
template <int K, int Main, int O1, int O2, int Add, int Shift, bool Lim>
struct ChromaHiU {
  static int c(int sMain, int s1, int s2) {
    const int d = s16(mulhi16u(sMain << K, Main) - addus16u(mulhi16u(s1 << K, O1), mulhi16u(s2 << K, O2)));
    const int v = clamp8(adds16s(d, Add) >> Shift);
    return Lim ? lim(v) : v;
  }
  template <class O, class V = typename O::V>
  static V vc(V sMain, V s1, V s2) {
    const V d = O::sub16(O::mulhi16u(O::sll(sMain, K), O::set(Main)),
                         O::addus16u(O::mulhi16u(O::sll(s1, K), O::set(O1)), O::mulhi16u(O::sll(s2, K), O::set(O2))));
    const V v = O::sra(O::adds16s(d, O::set(Add)), Shift);
    return Lim ? vlim<O>(v) : clampedByStore<O>(v);
  }
};

// One chroma sample from signed products of sums << 6 with the negative
// constants N1, N2, in plain (wrapping) 16-bit sums, + 8224, >> 6, lim(clamp8).
template <int Main, int N1, int N2>
struct ChromaHiS {
  static int c(int sMain, int s1, int s2) {
    const int d = s16(mulhi16s(sMain << 6, Main) + mulhi16s(s1 << 6, N1) + mulhi16s(s2 << 6, N2) + k709::kHdtvChromaAddX64);
    return lim(clamp8(d >> 6));
  }
  template <class O, class V = typename O::V>
  static V vc(V sMain, V s1, V s2) {
    const V d = O::add16(O::add16(O::add16(O::mulhi16s(O::sll(sMain, 6), O::set(Main)),
                                           O::mulhi16s(O::sll(s1, 6), O::set(N1))),
                                  O::mulhi16s(O::sll(s2, 6), O::set(N2))),
                         O::set(k709::kHdtvChromaAddX64));
    return vlim<O>(O::sra(d, 6));
  }
};

// A forward block set: luma form, Cb from (sB; sR, sG), Cr from (sR; sG, sB).
template <class Luma, class Cb, class Cr>
struct FwdBlock {
  static int y(int r, int g, int b) { return Luma::y(r, g, b); }
  // s = {sR, sG, sB} -> c = {Cb, Cr}
  static void chroma(const int* s, int* c) {
    c[0] = Cb::c(s[2], s[0], s[1]);
    c[1] = Cr::c(s[0], s[1], s[2]);
  }
  template <class O, class V = typename O::V>
  static V vy(const V* rgb) {
    return Luma::template vy<O>(rgb[0], rgb[1], rgb[2]);
  }
  template <class O, class V = typename O::V>
  static void vchroma(const V* s, V* c) {
    c[0] = Cb::template vc<O>(s[2], s[0], s[1]);
    c[1] = Cr::template vc<O>(s[0], s[1], s[2]);
  }
};

// FY7: studio-range luma, plus 16.5.
using FY7 = LumaHiU<k709::kCscLumaQ15, k709::kCscLumaAddX128, false>;
// FC7 on 2-by-2 cell sums (<< 5), plus 128.125.
using FC7Cb = ChromaHiU<5, k709::kCscChromaMainQ16, k709::kCscCbQ16[0], k709::kCscCbQ16[1], k709::kCscChromaAddX128, 7,
                        false>;
using FC7Cr = ChromaHiU<5, k709::kCscChromaMainQ16, k709::kCscCrQ16[0], k709::kCscCrQ16[1], k709::kCscChromaAddX128, 7,
                        false>;
// FYH: full-scale luma, held in 1..254.
using FYH = LumaHiU<k709::kHdtvLumaQ15, k709::kHdtvLumaAddX128, true>;
// FCH on sums << K (5 on a cell, 6 on a pair), plus 128.5.
template <int K>
using FCHCb = ChromaHiU<K, k709::kHdtvChromaMainQ15, k709::kHdtvCbQ15[0], k709::kHdtvCbQ15[1], k709::kHdtvChromaAddX64,
                        6, true>;
template <int K>
using FCHCr = ChromaHiU<K, k709::kHdtvChromaMainQ15, k709::kHdtvCrQ15[0], k709::kHdtvCrQ15[1], k709::kHdtvChromaAddX64,
                        6, true>;
// FCS: the signed-product variant on pair sums of one function (BGRA to CbYCr422).
using FCSCb = ChromaHiS<k709::kHdtvChromaMainQ15, -k709::kHdtvCbQ15[0], -k709::kHdtvCbQ15[1]>;
using FCSCr = ChromaHiS<k709::kHdtvChromaMainQ15, -k709::kHdtvCrQ15[0], -k709::kHdtvCrQ15[1]>;

// The block sets the functions name.
using Blk7Cell = FwdBlock<FY7, FC7Cb, FC7Cr>;              // FY7 + FC7
using BlkHCell = FwdBlock<FYH, FCHCb<5>, FCHCr<5>>;        // FYH + FCH, k = 5
using BlkHPair = FwdBlock<FYH, FCHCb<6>, FCHCr<6>>;        // FYH + FCH, k = 6
using BlkHPairSigned = FwdBlock<FYH, FCSCb, FCSCr>;        // FYH + FCS

// ---------------------------------------------------------------------------
// Forward tail forms: 32-bit sums, one rounding
// ---------------------------------------------------------------------------

// T7 on a cell: stored as the low byte (in range for 8-bit input).
struct T7Cell {
  static constexpr const int (&kY)[3] = k709::kCscLumaQ16;
  static constexpr int kMain = k709::kCscChromaMainQ16, kAdd = k709::kCellChromaAddQ18;
  static int y(int r, int g, int b) { return ((kY[0] * r + kY[1] * g + kY[2] * b + k709::kCscLumaAddQ16) >> 16) & 255; }
  static void chroma(const int* s, int* c) {
    c[0] = ((kMain * s[2] - k709::kCscCbQ16[1] * s[1] - k709::kCscCbQ16[0] * s[0] + kAdd) >> 18) & 255;
    c[1] = ((kMain * s[0] - k709::kCscCrQ16[0] * s[1] - k709::kCscCrQ16[1] * s[2] + kAdd) >> 18) & 255;
  }
};

// TYH: full-scale luma of one pixel, held in 1..254.
inline int tyh(int r, int g, int b) {
  constexpr const int(&k)[3] = k709::kHdtvLumaQ16;
  return lim((k[0] * r + k[1] * g + k[2] * b + 32768) >> 16);
}
// The Cb and Cr sums of the 709HDTV tails, before their add and shift.
inline int sumCbH(int r, int g, int b) {
  return k709::kHdtvChromaMainQ16 * b - k709::kHdtvCbQ16[0] * r - k709::kHdtvCbQ16[1] * g;
}
inline int sumCrH(int r, int g, int b) {
  return k709::kHdtvChromaMainQ16 * r - k709::kHdtvCrQ16[0] * g - k709::kHdtvCrQ16[1] * b;
}

// TYH + TC2H on a pair. The Cb and Cr offsets differ by 2 on purpose.
struct THPair {
  static int y(int r, int g, int b) { return tyh(r, g, b); }
  static void chroma(const int* s, int* c) {
    c[0] = lim((sumCbH(s[0], s[1], s[2]) + k709::kPairCbAddQ17) >> 17);
    c[1] = lim((sumCrH(s[0], s[1], s[2]) + k709::kPairCrAddQ17) >> 17);
  }
};

// TYH + TC4H on a cell.
struct THCell {
  static int y(int r, int g, int b) { return tyh(r, g, b); }
  static void chroma(const int* s, int* c) {
    c[0] = lim((sumCbH(s[0], s[1], s[2]) + k709::kCellChromaAddQ18) >> 18);
    c[1] = lim((sumCrH(s[0], s[1], s[2]) + k709::kCellChromaAddQ18) >> 18);
  }
};

// The lone last pixel of an odd 4:2:2 row: its Cb from the pixel alone.
inline int loneCbH(int r, int g, int b) { return lim((sumCbH(r, g, b) + k709::kLoneCbAddQ16) >> 16); }

// ---------------------------------------------------------------------------
// Inverse block forms: I7 (studio range) and IH (full-scale luma)
// ---------------------------------------------------------------------------

// With u = (Cb-128)<<7, v = (Cr-128)<<7 and the form's luma term y:
//   R = adds16s(y, mulhi16s(v, VR)),  B = adds16s(y, mulhi16s(u, UB)),
//   G negative form: adds16s(adds16s(y, mulhi16s(v, -VG)), mulhi16s(u, -UG))
//   G positive form: subs16s(subs16s(y, mulhi16s(v, VG)), mulhi16s(u, UG))
// and each channel clamp8(adds16s(x, 8) >> 4). The two green forms round
// differently (mulhi16s floors), so each function names its own.
template <bool Studio, const int (&K)[4], bool PositiveG>
struct Inv709 {
  static constexpr int VR = K[0], UB = K[1], VG = K[2], UG = K[3];
  static int luma(int Y) { return Studio ? mulhi16s((Y - 16) << 7, k709::kCscLumaGainQ13) : Y << 4; }
  static int fin(int x) { return clamp8(adds16s(x, 8) >> 4); }
  static void pixel(const int* in, int* out) {
    const int y = luma(in[0]);
    const int u = (in[1] - 128) << 7, v = (in[2] - 128) << 7;
    const int g = PositiveG ? subs16s(subs16s(y, mulhi16s(v, VG)), mulhi16s(u, UG))
                            : adds16s(adds16s(y, mulhi16s(v, -VG)), mulhi16s(u, -UG));
    out[0] = fin(adds16s(y, mulhi16s(v, VR)));
    out[1] = fin(g);
    out[2] = fin(adds16s(y, mulhi16s(u, UB)));
  }
  template <class O, class V = typename O::V>
  static V vfin(V x) {
    return clampedByStore<O>(O::sra(O::adds16s(x, O::set(8)), 4));
  }
  // The chroma products of the form, which the lanes sharing one chroma sample
  // share: t = {mulhi(v, VR), mulhi(v, -+VG), mulhi(u, -+UG), mulhi(u, UB)}.
  template <class O, class V = typename O::V>
  static void vterms(V cb, V cr, V* t) {
    const V u = O::sll(O::sub16(cb, O::set(128)), 7), v = O::sll(O::sub16(cr, O::set(128)), 7);
    t[0] = O::mulhi16s(v, O::set(VR));
    t[1] = O::mulhi16s(v, O::set(PositiveG ? VG : -VG));
    t[2] = O::mulhi16s(u, O::set(PositiveG ? UG : -UG));
    t[3] = O::mulhi16s(u, O::set(UB));
  }
  // R, G, B of luma Y with the chroma products t, in the order of the scalar rule.
  template <class O, class V = typename O::V>
  static void vfinish(V Y, const V* t, V* out) {
    const V y = Studio ? O::mulhi16s(O::sll(O::sub16(Y, O::set(16)), 7), O::set(k709::kCscLumaGainQ13)) : O::sll(Y, 4);
    const V g = PositiveG ? O::subs16s(O::subs16s(y, t[1]), t[2]) : O::adds16s(O::adds16s(y, t[1]), t[2]);
    out[0] = vfin<O>(O::adds16s(y, t[0]));
    out[1] = vfin<O>(g);
    out[2] = vfin<O>(O::adds16s(y, t[3]));
  }
  template <class O, class V = typename O::V>
  static void vblock(const V* in, V* out) {
    V t[4];
    vterms<O>(in[1], in[2], t);
    vfinish<O>(in[0], t, out);
  }
#if LUM_SIMD_SSE
  // Eight lanes, for the generic row kernels.
  static void block(const __m128i* in, __m128i* out) { vblock<Sse>(in, out); }
#endif
};
// I7: studio range; IH: full-scale luma.
using I7Neg = Inv709<true, k709::kCscInvQ13, false>;
using I7Pos = Inv709<true, k709::kCscInvQ13, true>;
using IHNeg = Inv709<false, k709::kHdtvInvQ13, false>;
using IHPos = Inv709<false, k709::kHdtvInvQ13, true>;

// ---------------------------------------------------------------------------
// Inverse tail forms: 32-bit sums rounded by 32768, through CHOP_ARRAY
// ---------------------------------------------------------------------------

// With u = Cb - 128, v = Cr - 128, the form's luma term y (rounding 32768
// included) and Q16 factors K = {R of v, B of u, G of v, G of u}:
//   R = y + K0 v, G = y - K3 u - K2 v, B = y + K1 u, each >> 16 through CHOP_ARRAY.
template <const int (&K)[4]>
inline void invTail(int y, int u, int v, int* out) {
  out[0] = CHOP_ARRAY[(y + K[0] * v) >> 16];
  out[1] = CHOP_ARRAY[(y - K[3] * u - K[2] * v) >> 16];
  out[2] = CHOP_ARRAY[(y + K[1] * u) >> 16];
}

// S7: studio range, luma (Y-16) scaled by the studio gain.
struct S7 {
  static void pixel(const int* in, int* out) {
    invTail<k709::kCscInvQ16>(k709::kCscLumaGainQ16 * (in[0] - 16) + 32768, in[1] - 128, in[2] - 128, out);
  }
};

// SH: full-scale luma Y << 16.
struct SH {
  static void pixel(const int* in, int* out) {
    invTail<k709::kHdtvInvQ16>((in[0] << 16) + 32768, in[1] - 128, in[2] - 128, out);
  }
};

}  // namespace lum::form
