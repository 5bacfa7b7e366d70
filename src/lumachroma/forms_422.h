// Arithmetic forms of the RGB <-> 4:2:2 conversions, beside the full-resolution
// forms they build on (forms.h).
//
// Forward forms work on a pixel pair: pair(prev, a, b, out) takes the pair's two
// pixels a and b (R, G, B) and, for the one form that filters across pairs, the
// pixel before the pair (prev, null at a row's start); it writes Y0, Y1, Cb (U),
// Cr (V). Chroma comes from the pair's sums sR = Ra + Rb and so on: the mean
// colour of the pair. Block forms also have vblock<O>() over a lane set: two
// groups of pixels (sixteen on 128 bits) to their lumas and the chroma of their
// pairs, computing the lanes of pair() but for the last clamp8, which they leave
// to the store: every 4:2:2 store narrows its lanes to bytes with unsigned
// saturation, which is clamp8 of the lane.
//
// Inverse forms are full-resolution forms (pixel() and vblock<O>() on Y, Cb, Cr):
// both pixels of a pair see the same chroma, which the 4:2:2 layouts replicate.
#pragma once

#include "frame/lanes.h"
#include "lumachroma/forms.h"

namespace lum::form {

// A forward block's output over two groups of pixels a and b (eight lanes each
// per 128 bits): their lumas, and the chroma of their pairs as the lane set's
// hadd16(a, b) orders them (on 128 bits, lane k is the pair of pixels 2k, 2k+1).
template <class O>
struct Pairs {
  typename O::V y[2];
  typename O::V cb, cr;
};

// ---------------------------------------------------------------------------
// Forward YCbCr: pair mean
// ---------------------------------------------------------------------------

// FC1: block chroma of a pair's sums. The sum shifted left by 6 stands at the
// scale of one sample shifted by 7; 8224 is 128.5 at the working scale of 64.
struct FC1 {
  static int cb(int sR, int sG, int sB) {
    return clamp8(s16(mulhrs16s(sB << 6, bt601::kCbB14) - mulhrs16s(sG << 6, bt601::kCbG14) -
                      mulhrs16s(sR << 6, bt601::kCbR14) + 8224) >>
                  6);
  }
  static int cr(int sR, int sG, int sB) {
    return clamp8(s16(mulhrs16s(sR << 6, bt601::kCrR14) - mulhrs16s(sG << 6, bt601::kCrG14) -
                      mulhrs16s(sB << 6, bt601::kCrB14) + 8224) >>
                  6);
  }
  template <class O, class V = typename O::V>
  static void vblock(V sR, V sG, V sB, V& cb, V& cr) {
    const V r = O::sll(sR, 6), g = O::sll(sG, 6), b = O::sll(sB, 6), half = O::set(8224);
    cb = O::sra(
        O::add16(O::sub16(O::sub16(O::mulhrs16s(b, O::set(bt601::kCbB14)), O::mulhrs16s(g, O::set(bt601::kCbG14))),
                          O::mulhrs16s(r, O::set(bt601::kCbR14))),
                 half),
        6);
    cr = O::sra(
        O::add16(O::sub16(O::sub16(O::mulhrs16s(r, O::set(bt601::kCrR14)), O::mulhrs16s(g, O::set(bt601::kCrG14))),
                          O::mulhrs16s(b, O::set(bt601::kCrB14))),
                 half),
        6);
  }
};

// A block form that takes each pixel's luma from a full-resolution form and the
// pair's chroma from a form on the pair sums ("FY1 + FC1").
template <class Luma, class Chroma>
struct PairForm {
  static constexpr bool kUsesPrev = false;
  static void pair(const int*, const int* a, const int* b, int* out) {
    out[0] = Luma::y(a[0], a[1], a[2]);
    out[1] = Luma::y(b[0], b[1], b[2]);
    out[2] = Chroma::cb(a[0] + b[0], a[1] + b[1], a[2] + b[2]);
    out[3] = Chroma::cr(a[0] + b[0], a[1] + b[1], a[2] + b[2]);
  }
  template <class O, class V = typename O::V>
  static void vblock(const V* a, const V* b, const int*, Pairs<O>& o) {
    V la[3], lb[3];  // the luma form's chroma lanes are unused and drop out when inlined
    Luma::template vblock<O>(a, la);
    Luma::template vblock<O>(b, lb);
    o.y[0] = la[0];
    o.y[1] = lb[0];
    Chroma::template vblock<O>(O::hadd16(a[0], b[0]), O::hadd16(a[1], b[1]), O::hadd16(a[2], b[2]), o.cb, o.cr);
  }
};

// FY3 with a truncating constant: the odd pixel's luma in TC1, which can come
// out one lower than the even pixel's for the same colour.
struct FY3Trunc {
  static int y(int r, int g, int b) {
    return ((bt601::kYR16 * r + bt601::kYG16 * g + bt601::kYB16 * b + 0x100000) >> 16) & 255;
  }
};

// Q17 chroma of a pair's sums with the offsets OffCb and OffCr, stored as the
// low byte, or through CHOP_ARRAY (the same byte for 8-bit input).
template <int OffCb, int OffCr, bool Chop = false>
struct TCChroma {
  static int put(int v) { return Chop ? CHOP_ARRAY[v] : (v & 255); }
  static int cb(int sR, int sG, int sB) {
    return put((-bt601::kCbR16 * sR - bt601::kCbG16 * sG + bt601::kCbB16 * sB + OffCb) >> 17);
  }
  static int cr(int sR, int sG, int sB) {
    return put((bt601::kCrR16 * sR - bt601::kCrG16 * sG - bt601::kCrB16 * sB + OffCr) >> 17);
  }
};

// A tail form: even and odd luma by their own rules, chroma of the pair sums.
template <class YEven, class YOdd, class Chroma>
struct TailPair {
  static constexpr bool kUsesPrev = false;
  static void pair(const int*, const int* a, const int* b, int* out) {
    out[0] = YEven::y(a[0], a[1], a[2]);
    out[1] = YOdd::y(b[0], b[1], b[2]);
    out[2] = Chroma::cb(a[0] + b[0], a[1] + b[1], a[2] + b[2]);
    out[3] = Chroma::cr(a[0] + b[0], a[1] + b[1], a[2] + b[2]);
  }
};

// TC1: chroma rounded at 128.5 (0x1010000 in Q17); the odd luma truncates.
using TC1 = TailPair<FY3, FY3Trunc, TCChroma<0x1010000, 0x1010000>>;
// TC1 with its chroma through CHOP_ARRAY (planar-source kernels).
using TC1Chop = TailPair<FY3, FY3Trunc, TCChroma<0x1010000, 0x1010000, true>>;
// TC2: both lumas FY3; chroma at 128.125 (0x1004000), a quarter of TC1's rounding.
using TC2 = TailPair<FY3, FY3, TCChroma<0x1004000, 0x1004000>>;
// The tail of the BGRA -> CbYCr422 kernel: TC1 with FY3 on both pixels and Cr's
// constant two lower (0xFF0002 where TC1 subtracts 0xFF0000).
using TC1Y3 = TailPair<FY3, FY3, TCChroma<0x1010000, 0x1010000 - 2>>;

// ---------------------------------------------------------------------------
// Forward YCbCr: three-tap chroma across pairs (RGB -> CbYCr422)
// ---------------------------------------------------------------------------

// Chroma of pair (x, x+1) weighs pixels x-1, x, x+1 by 1/4, 1/2, 1/4. The pixel
// before the first pair of a row counts as zero chroma, so that pair falls short
// of the others towards 128: kept as the kernel has always done.

// Block: each pixel's term is a sum of Q15 products each rounded for itself
// (samples << 7), with the full coefficients for the pair's even pixel and the
// half coefficients for its two neighbours; 16448 is 128.5 at the scale of 128.
// Main, G and other channel coefficients: full and half.
template <int MainF, int GF, int OtherF, int MainH, int GH, int OtherH>
struct ThreeTapTerms {
  // Term of a pixel by the full or the half coefficients; main is the channel with
  // the positive coefficient (B for Cb, R for Cr).
  static int full(int main, int g, int other) {
    return mulhrs16s(main << 7, MainF) - mulhrs16s(g << 7, GF) - mulhrs16s(other << 7, OtherF);
  }
  static int half(int main, int g, int other) {
    return mulhrs16s(main << 7, MainH) - mulhrs16s(g << 7, GH) - mulhrs16s(other << 7, OtherH);
  }
  template <class O, class V = typename O::V>
  static V full(V main, V g, V other) {
    return O::sub16(O::sub16(O::mulhrs16s(O::sll(main, 7), O::set(MainF)), O::mulhrs16s(O::sll(g, 7), O::set(GF))),
                    O::mulhrs16s(O::sll(other, 7), O::set(OtherF)));
  }
  template <class O, class V = typename O::V>
  static V half(V main, V g, V other) {
    return O::sub16(O::sub16(O::mulhrs16s(O::sll(main, 7), O::set(MainH)), O::mulhrs16s(O::sll(g, 7), O::set(GH))),
                    O::mulhrs16s(O::sll(other, 7), O::set(OtherH)));
  }
};
// The half of 2425 is taken as 1213: like 3015 and 582, the halves of the
// subtracted coefficients round up.
using ThreeTapCb =
    ThreeTapTerms<bt601::kCbB14, bt601::kCbG14, bt601::kCbR14, bt601::kCbB14Half, bt601::kCbG14Half, bt601::kCbR14Half>;
using ThreeTapCr =
    ThreeTapTerms<bt601::kCrR14, bt601::kCrG14, bt601::kCrB14, bt601::kCrR14Half, bt601::kCrG14Half, bt601::kCrB14Half>;

struct ThreeTapBlock {
  static constexpr bool kUsesPrev = true;
  static void pair(const int* prev, const int* a, const int* b, int* out) {
    out[0] = FY1::y(a[0], a[1], a[2]);
    out[1] = FY1::y(b[0], b[1], b[2]);
    const int pCb = prev ? ThreeTapCb::half(prev[2], prev[1], prev[0]) : 0;
    const int pCr = prev ? ThreeTapCr::half(prev[0], prev[1], prev[2]) : 0;
    out[2] = clamp8(s16(ThreeTapCb::full(a[2], a[1], a[0]) + ThreeTapCb::half(b[2], b[1], b[0]) + pCb + 16448) >> 7);
    out[3] = clamp8(s16(ThreeTapCr::full(a[0], a[1], a[2]) + ThreeTapCr::half(b[0], b[1], b[2]) + pCr + 16448) >> 7);
  }
  // On 128 bits: the lane before the first pair takes the term of the pixel
  // before the block.
  template <class O, class V = typename O::V>
  static void vblock(const V* a, const V* b, const int* prev, Pairs<O>& o) {
    V la[3], lb[3];
    FY1::vblock<O>(a, la);
    FY1::vblock<O>(b, lb);
    o.y[0] = la[0];
    o.y[1] = lb[0];
    const V re = O::evens16(a[0], b[0]), ge = O::evens16(a[1], b[1]), be = O::evens16(a[2], b[2]);
    const V ro = O::odds16(a[0], b[0]), go = O::odds16(a[1], b[1]), bo = O::odds16(a[2], b[2]);
    // The odd pixels' half terms serve their own pair and, one lane on, the next.
    const V hCb = ThreeTapCb::half<O>(bo, go, ro), hCr = ThreeTapCr::half<O>(ro, go, bo);
    const int pCb = prev ? ThreeTapCb::half(prev[2], prev[1], prev[0]) : 0;
    const int pCr = prev ? ThreeTapCr::half(prev[0], prev[1], prev[2]) : 0;
    const V prevCb = O::slideUp16(hCb, O::set(pCb)), prevCr = O::slideUp16(hCr, O::set(pCr));
    const V off = O::set(16448);
    o.cb = O::sra(O::add16(O::add16(O::add16(ThreeTapCb::full<O>(be, ge, re), hCb), prevCb), off), 7);
    o.cr = O::sra(O::add16(O::add16(O::add16(ThreeTapCr::full<O>(re, ge, be), hCr), prevCr), off), 7);
  }
};

// Tail: c(p) is the Q16 chroma sum of pixel p before its offset; each weight is a
// truncating shift, and -0x7F8001 leaves 128.5 (less 1/65536) in the low byte.
struct ThreeTapTail {
  static constexpr bool kUsesPrev = true;
  static int cCb(const int* p) { return -bt601::kCbR16 * p[0] - bt601::kCbG16 * p[1] + bt601::kCbB16 * p[2]; }
  static int cCr(const int* p) { return bt601::kCrR16 * p[0] - bt601::kCrG16 * p[1] - bt601::kCrB16 * p[2]; }
  static void pair(const int* prev, const int* a, const int* b, int* out) {
    out[0] = FY3::y(a[0], a[1], a[2]);
    out[1] = FY3::y(b[0], b[1], b[2]);
    const int pCb = prev ? cCb(prev) >> 2 : 0, pCr = prev ? cCr(prev) >> 2 : 0;
    out[2] = (((cCb(a) >> 1) + pCb + (cCb(b) >> 2) - 0x7F8001) >> 16) & 255;
    out[3] = (((cCr(a) >> 1) + pCr + (cCr(b) >> 2) - 0x7F8001) >> 16) & 255;
  }
};

// ---------------------------------------------------------------------------
// Forward YCbCr: the high-multiply block of BGRA -> CbYCr422
// ---------------------------------------------------------------------------

// Eight pixels a step. Luma: unsigned high products of the sample in the high
// byte with Q15 0.257, 0.504, 0.098, plus 16.5 at the scale of 128 (2112), >> 7.
// Chroma: the pair sums << 7 against Q15 halves of the tail's coefficients,
// offset 16447 (128.5 at the scale of 128, one less so that the truncated
// products round with the tail as often as they can), >> 7.
struct PairHighMul {
  static constexpr bool kUsesPrev = false;
  static int y(int r, int g, int b) {
    return clamp8(
        (mulhi16u(r << 8, bt601::kYR15) + mulhi16u(g << 8, bt601::kYG15) + mulhi16u(b << 8, bt601::kYB15) + 2112) >> 7);
  }
  static int cb(int sR, int sG, int sB) {
    return clamp8((16447 + mulhi16u(sB << 7, bt601::kCbB15) - mulhi16u(sG << 7, bt601::kCbG15) -
                   mulhi16u(sR << 7, bt601::kCbR15)) >>
                  7);
  }
  static int cr(int sR, int sG, int sB) {
    return clamp8((16447 + mulhi16u(sR << 7, bt601::kCrR15) - mulhi16u(sG << 7, bt601::kCrG15) -
                   mulhi16u(sB << 7, bt601::kCrB15)) >>
                  7);
  }
  static void pair(const int*, const int* a, const int* b, int* out) {
    out[0] = y(a[0], a[1], a[2]);
    out[1] = y(b[0], b[1], b[2]);
    out[2] = cb(a[0] + b[0], a[1] + b[1], a[2] + b[2]);
    out[3] = cr(a[0] + b[0], a[1] + b[1], a[2] + b[2]);
  }
  template <class O, class V = typename O::V>
  static V y(V r, V g, V b) {
    return O::srl(O::add16(O::add16(O::add16(O::mulhi16u(O::sll(r, 8), O::set(bt601::kYR15)),
                                                       O::mulhi16u(O::sll(g, 8), O::set(bt601::kYG15))),
                                              O::mulhi16u(O::sll(b, 8), O::set(bt601::kYB15))), O::set(2112)), 7);
  }
  template <class O, class V = typename O::V>
  static void vblock(const V* a, const V* b, const int*, Pairs<O>& o) {
    o.y[0] = y<O>(a[0], a[1], a[2]);
    o.y[1] = y<O>(b[0], b[1], b[2]);
    const V sR = O::sll(O::hadd16(a[0], b[0]), 7), sG = O::sll(O::hadd16(a[1], b[1]), 7);
    const V sB = O::sll(O::hadd16(a[2], b[2]), 7), off = O::set(16447);
    o.cb = O::srl(O::sub16(O::sub16(O::add16(off, O::mulhi16u(sB, O::set(bt601::kCbB15))),
                                    O::mulhi16u(sG, O::set(bt601::kCbG15))),
                           O::mulhi16u(sR, O::set(bt601::kCbR15))),
                  7);
    o.cr = O::srl(O::sub16(O::sub16(O::add16(off, O::mulhi16u(sR, O::set(bt601::kCrR15))),
                                    O::mulhi16u(sG, O::set(bt601::kCrG15))),
                           O::mulhi16u(sB, O::set(bt601::kCrB15))),
                  7);
  }
};

// ---------------------------------------------------------------------------
// Forward YUV 4:2:2
// ---------------------------------------------------------------------------

// Luma at 64 times its value from high products of the samples << 7 with the
// twice-luma coefficients 9798, 19235, 3736 (as FU2 has them).
inline int yuvLuma64(int r, int g, int b) {
  return mulhi16s(r << 7, yuv::kYR15) + mulhi16s(g << 7, yuv::kYG15) + mulhi16s(b << 7, yuv::kYB15);
}
template <class O, class V = typename O::V>
inline V yuvLuma64(V r, V g, V b) {
  return O::add16(
      O::add16(O::mulhi16s(O::sll(r, 7), O::set(yuv::kYR15)), O::mulhi16s(O::sll(g, 7), O::set(yuv::kYG15))),
      O::mulhi16s(O::sll(b, 7), O::set(yuv::kYB15)));
}

// Block of the YUV 4:2:2 kernels. Luma is (l64 + KY) >> 6 per pixel. The chroma
// difference d = (64 s - (l64a + l64b) + KD) >> 6 is the pair sum less the two
// lumas, as the tail rounds it; U = d * 16121 and V = d * 28737 as high products.
// KY and KD are the offsets at which these agree with the tail most often (the
// three truncated products pull the luma down by about 1/64): KY 33 and KD 29
// where the tail rounds by 32768, KY 1 and KD 61 where it truncates luma and
// adds 65535 to the differences.
template <int KY, int KD>
struct YUV422Block {
  static constexpr bool kUsesPrev = false;
  static int diff(int s, int lsum) { return s16((s << 6) - lsum + KD) >> 6; }
  static void pair(const int*, const int* a, const int* b, int* out) {
    const int la = yuvLuma64(a[0], a[1], a[2]), lb = yuvLuma64(b[0], b[1], b[2]);
    out[0] = clamp8((la + KY) >> 6);
    out[1] = clamp8((lb + KY) >> 6);
    out[2] = clamp8(mulhi16s(diff(a[2] + b[2], la + lb), yuv::kU15) + 128);
    out[3] = clamp8(mulhi16s(diff(a[0] + b[0], la + lb), yuv::kV15) + 128);
  }
  template <class O, class V = typename O::V>
  static V diff(V s, V lsum) { return O::sra(O::add16(O::sub16(O::sll(s, 6), lsum), O::set(KD)), 6); }
  template <class O, class V = typename O::V>
  static void vblock(const V* a, const V* b, const int*, Pairs<O>& o) {
    const V la = yuvLuma64<O>(a[0], a[1], a[2]), lb = yuvLuma64<O>(b[0], b[1], b[2]);
    o.y[0] = O::sra(O::add16(la, O::set(KY)), 6);
    o.y[1] = O::sra(O::add16(lb, O::set(KY)), 6);
    const V lsum = O::hadd16(la, lb), c128 = O::set(128);
    o.cb = O::add16(O::mulhi16s(diff<O>(O::hadd16(a[2], b[2]), lsum), O::set(yuv::kU15)), c128);
    o.cr = O::add16(O::mulhi16s(diff<O>(O::hadd16(a[0], b[0]), lsum), O::set(yuv::kV15)), c128);
  }
};

// Tail of the YUV 4:2:2 kernels: y32 per pixel (38470 for green), Y = (y32 +
// RoundY) >> 16; the differences of the pair sums from ys = y32a + y32b are
// rounded by RoundC in Q16, then scaled by 0.492 and 0.877 in Q17 (truncating).
// U is stored as its low byte, V through CHOP_ARRAY.
template <int RoundY, int RoundC>
struct YUV422Tail {
  static constexpr bool kUsesPrev = false;
  static int y32(const int* p) { return yuv::kYR16 * p[0] + yuv::kYG16 * p[1] + yuv::kYB16 * p[2]; }
  static void pair(const int*, const int* a, const int* b, int* out) {
    const int ya = y32(a), yb = y32(b), ys = ya + yb;
    out[0] = (ya + RoundY) >> 16;
    out[1] = (yb + RoundY) >> 16;
    const int dB = (((a[2] + b[2]) << 16) - ys + RoundC) >> 16;
    const int dR = (((a[0] + b[0]) << 16) - ys + RoundC) >> 16;
    out[2] = (((dB * yuv::kU16) >> 17) + 128) & 255;
    out[3] = CHOP_ARRAY[((dR * yuv::kV16) >> 17) + 128];
  }
};

// innerRGBToYUV422_8u_C3C2R: rounded luma, differences rounded by 32768.
using YUV422BlockC2 = YUV422Block<33, 29>;
using YUV422TailC2 = YUV422Tail<32768, 32768>;
// innerRGBToYUV422_8u_C3P3R and innerRGBToYUV422_8u_P3R: truncated luma, 65535.
using YUV422BlockP3 = YUV422Block<1, 61>;
using YUV422TailP3 = YUV422Tail<0, 65535>;

// inner_V8_RGBToYUV422_8u_C3P3R, the aligned kernel: a Q15 form of its own, whose
// values may differ from the general kernel's by one on some pixels.
//
// Tail: y = 9798 R + 19235 G + 3736 B in Q15, Y = y >> 15 per pixel (truncated,
// as the general planar kernel). Chroma is the per-pixel rule
//   U = (((32768 B - y + 16383) >> 15) * 16121 >> 15) - 128
//   V = min(255, (((32768 R - y + 32767) >> 15) * 28737 >> 15) + 128)
// taken at the pair's mean colour exactly (sums and doubled offsets, one more bit
// of shift). V is limited at the top only and stored as its low byte, so a V
// below zero wraps: a quirk of this tail alone. The block below clamps at both
// ends, as every other YUV block does.
struct V8Tail {
  static constexpr bool kUsesPrev = false;
  static int y15(const int* p) { return yuv::kYR15 * p[0] + yuv::kYG15 * p[1] + yuv::kYB15 * p[2]; }
  static void pair(const int*, const int* a, const int* b, int* out) {
    const int ya = y15(a), yb = y15(b), ys = ya + yb;
    out[0] = ya >> 15;
    out[1] = yb >> 15;
    const int dB = (32768 * (a[2] + b[2]) - ys + 2 * 16383) >> 16;
    const int dR = (32768 * (a[0] + b[0]) - ys + 2 * 32767) >> 16;
    out[2] = (((dB * yuv::kU15) >> 15) - 128) & 255;
    const int v = ((dR * yuv::kV15) >> 15) + 128;
    out[3] = (v > 255 ? 255 : v) & 255;
  }
};

// Block: luma at the scale of 64 from mulhrs16s of the samples << 7 with the
// half coefficients 4899, 9617, 1868, truncated (>> 6). The pair's difference
// D = 64 s - (l64a + l64b) is 128 times the mean colour's difference; it is
// rounded to a whole code as the tail does (+63 for U, +127 for V, >> 7), then
// mulhrs16s with 8061 and 14369 (0.492 and 0.877 halved) at the scale of 64;
// 128 added and clamped to 0..255.
struct V8Block {
  static constexpr bool kUsesPrev = false;
  static int luma64(int r, int g, int b) {
    return mulhrs16s(r << 7, yuv::kYR14) + mulhrs16s(g << 7, yuv::kYG14) + mulhrs16s(b << 7, yuv::kYB14);
  }
  static int chroma(int s, int lsum, int round, int coef) {
    const int d = s16((s << 6) - lsum + round) >> 7;
    return (mulhrs16s(d << 7, coef) >> 6) + 128;
  }
  static void pair(const int*, const int* a, const int* b, int* out) {
    const int la = luma64(a[0], a[1], a[2]), lb = luma64(b[0], b[1], b[2]);
    out[0] = clamp8(la >> 6);
    out[1] = clamp8(lb >> 6);
    out[2] = clamp8(chroma(a[2] + b[2], la + lb, 63, yuv::kU14));
    out[3] = clamp8(chroma(a[0] + b[0], la + lb, 127, yuv::kV14));
  }
  template <class O, class V = typename O::V>
  static V luma64(V r, V g, V b) {
    return O::add16(
        O::add16(O::mulhrs16s(O::sll(r, 7), O::set(yuv::kYR14)), O::mulhrs16s(O::sll(g, 7), O::set(yuv::kYG14))),
        O::mulhrs16s(O::sll(b, 7), O::set(yuv::kYB14)));
  }
  template <class O, class V = typename O::V>
  static V chroma(V s, V lsum, int round, int coef) {
    const V d = O::sra(O::add16(O::sub16(O::sll(s, 6), lsum), O::set(round)), 7);
    return O::add16(O::sra(O::mulhrs16s(O::sll(d, 7), O::set(coef)), 6), O::set(128));
  }
  template <class O, class V = typename O::V>
  static void vblock(const V* a, const V* b, const int*, Pairs<O>& o) {
    const V la = luma64<O>(a[0], a[1], a[2]), lb = luma64<O>(b[0], b[1], b[2]);
    o.y[0] = O::sra(la, 6);
    o.y[1] = O::sra(lb, 6);
    const V lsum = O::hadd16(la, lb);
    o.cb = chroma<O>(O::hadd16(a[2], b[2]), lsum, 63, yuv::kU14);
    o.cr = chroma<O>(O::hadd16(a[0], b[0]), lsum, 127, yuv::kV14);
  }
};

// ---------------------------------------------------------------------------
// Inverse YCbCr
// ---------------------------------------------------------------------------

// The offset-folded scheme: samples enter unsigned at the scale of 128 and the
// offsets of 16 and 128 are subtracted after the products, at the scale of 8. No
// rounding add of its own: the final shift truncates (a set may carry a rounding
// half in its offsets).
template <int Cy, int CrR, int CbG, int CrG, int CbB, int OffR, int OffG, int OffB>
struct IYFolded {
  static void pixel(const int* in, int* out) {
    const int y = mulhi16s(in[0] << 7, Cy), cb = in[1] << 7, cr = in[2] << 7;
    out[0] = clamp8(adds16s(y, s16(mulhi16s(cr, CrR) - OffR)) >> 3);
    out[1] = clamp8(subs16s(y, s16(adds16s(mulhi16s(cb, CbG), mulhi16s(cr, CrG)) - OffG)) >> 3);
    out[2] = clamp8(adds16s(y, s16(mulhi16s(cb, CbB) - OffB)) >> 3);
  }
  template <class O, class V = typename O::V>
  static void vblock(const V* in, V* out) {
    const V y = O::mulhi16s(O::sll(in[0], 7), O::set(Cy)), cb = O::sll(in[1], 7), cr = O::sll(in[2], 7);
    out[0] = O::sra(O::adds16s(y, O::sub16(O::mulhi16s(cr, O::set(CrR)), O::set(OffR))), 3);
    out[1] = O::sra(O::subs16s(y, O::sub16(O::adds16s(O::mulhi16s(cb, O::set(CbG)), O::mulhi16s(cr, O::set(CrG))),
                                           O::set(OffG))), 3);
    out[2] = O::sra(O::adds16s(y, O::sub16(O::mulhi16s(cb, O::set(CbB)), O::set(OffB))), 3);
  }
#if LUM_SIMD_SSE
  static void block(const __m128i* in, __m128i* out) { clampedBlock<IYFolded>(in, out); }
#endif
};

// IY4: the folded scheme with the 4:2:2 set, 4768, 6537, 1606, 3330, 8262 and
// the offsets 1783, 1085, 2214.
using IY4 = IYFolded<bt601::kY12Folded422, bt601::kCrR12, bt601::kCbG12Folded422, bt601::kCrG12,
                     bt601::kCbB12Folded422, 1783, 1085, 2214>;

// The IY1 scheme with the constants of the YCbCr422 -> BGRA kernel.
using IY1Bgra = IYRounded<bt601::kY12Bgra, bt601::kCrR12, bt601::kCbG12, bt601::kCrG12, bt601::kCbB12Bgra, 4, 3>;

// ---------------------------------------------------------------------------
// Inverse YUV
// ---------------------------------------------------------------------------

// IU5: chroma less 128 at the scale of 128 against Y << 4; each channel gets a
// rounding add of 8 before >> 4.
struct IU5 {
  static void pixel(const int* in, int* out) {
    const int y = in[0] << 4, ud = (in[1] - 128) << 7, vd = (in[2] - 128) << 7;
    out[0] = clamp8(adds16s(adds16s(y, mulhi16s(vd, yuv::kVR13)), 8) >> 4);
    out[1] = clamp8(adds16s(subs16s(y, adds16s(mulhi16s(ud, yuv::kUG13), mulhi16s(vd, yuv::kVG13))), 8) >> 4);
    out[2] = clamp8(adds16s(adds16s(y, mulhi16s(ud, yuv::kUB13)), 8) >> 4);
  }
  template <class O, class V = typename O::V>
  static void vblock(const V* in, V* out) {
    const V y = O::sll(in[0], 4), eight = O::set(8);
    const V ud = O::sll(O::sub16(in[1], O::set(128)), 7), vd = O::sll(O::sub16(in[2], O::set(128)), 7);
    out[0] = O::sra(O::adds16s(O::adds16s(y, O::mulhi16s(vd, O::set(yuv::kVR13))), eight), 4);
    out[1] = O::sra(
        O::adds16s(O::subs16s(y, O::adds16s(O::mulhi16s(ud, O::set(yuv::kUG13)), O::mulhi16s(vd, O::set(yuv::kVG13)))),
                   eight),
        4);
    out[2] = O::sra(O::adds16s(O::adds16s(y, O::mulhi16s(ud, O::set(yuv::kUB13))), eight), 4);
  }
#if LUM_SIMD_SSE
  static void block(const __m128i* in, __m128i* out) { clampedBlock<IU5>(in, out); }
#endif
};

// SU4: SU3's coefficients with no rounding add at all. With u = v = c it is also
// the rule of a lone YUV 4:2:2 pixel whose one chroma sample serves as both
// (-25821 - 38076 = -63897 for green).
using SU4 = SUTail<yuv::kVR16, yuv::kUG16, yuv::kVG16, yuv::kUB16, 0, 0, 0>;

}  // namespace lum::form
