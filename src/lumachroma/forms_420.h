// Arithmetic forms of the RGB <-> 4:2:0 and 4:1:1 conversions, beside the
// full-resolution and 4:2:2 forms they combine with (forms.h, forms_422.h).
//
// A cell chroma form takes the sums sR, sG, sB of a cell's four pixels and gives
// the cell's chroma pair: pixel(s, out) is the lane-exact scalar rule, vblock<O>()
// the same over a lane set (sums reach 1020, so s << 5 fits a signed lane).
// Luma-only forms write out[0]. Inverse forms work on (Y, Cb, Cr) like those of
// forms.h. As there, forms that look alike differ on purpose and stay apart.
//
// The vblock()s here leave the last clamp8 to the store: the cell kernels narrow
// every output lane to a byte with unsigned saturation, which is clamp8 of the
// lane. pixel() applies it.
#pragma once

#include <cstdint>

#include "frame/lanes.h"
#include "lumachroma/forms_422.h"

namespace lum::form {

// ---------------------------------------------------------------------------
// Forward YCbCr: cell chroma
// ---------------------------------------------------------------------------

// FC2: FY1's Q15 chroma on the cell sum: sum << 5 stands at FY1's scale of one
// sample << 7, so a cell of four equal pixels gives FY1's chroma of that pixel.
struct FC2 {
  static void pixel(const int* s, int* out) {
    const int r = s[0] << 5, g = s[1] << 5, b = s[2] << 5;
    out[0] = clamp8(
        fx::s16(mulhrs16s(b, bt601::kCbB14) - mulhrs16s(g, bt601::kCbG14) - mulhrs16s(r, bt601::kCbR14) + 8194) >> 6);
    out[1] = clamp8(
        fx::s16(mulhrs16s(r, bt601::kCrR14) - mulhrs16s(g, bt601::kCrG14) - mulhrs16s(b, bt601::kCrB14) + 8194) >> 6);
  }
  template <class O, class V = typename O::V>
  static void vblock(const V* s, V* out) {
    FY1::vchroma<O>(O::sll(s[0], 5), O::sll(s[1], 5), O::sll(s[2], 5), out[0], out[1]);
  }
};

// TC3: the tail's cell chroma, Q18 on the sum of four, one rounding, low byte.
// 0x2008000 is 128.125 in Q18: a cell of equal pixels can come out one code
// apart from FY3 of that pixel.
struct TC3 {
  static void pixel(const int* s, int* out) {
    out[0] = ((-bt601::kCbR16 * s[0] - bt601::kCbG16 * s[1] + bt601::kCbB16 * s[2] + 0x2008000) >> 18) & 255;
    out[1] = ((bt601::kCrR16 * s[0] - bt601::kCrG16 * s[1] - bt601::kCrB16 * s[2] + 0x2008000) >> 18) & 255;
  }
};

// FY5: luma from unsigned high products at scale 128; 2112 is 16.5 at that scale.
struct FY5 {
  static void pixel(const int* in, int* out) {
    out[0] = clamp8(addus16u(addus16u(addus16u(mulhi16u(in[0] << 8, bt601::kYR15), mulhi16u(in[1] << 8, bt601::kYG15)),
                                      mulhi16u(in[2] << 8, bt601::kYB15)),
                             2112) >> 7);
  }
  template <class O, class V = typename O::V>
  static void vblock(const V* in, V* out) {
    const V y = O::addus16u(O::addus16u(O::addus16u(O::mulhi16u(O::sll(in[0], 8), O::set(bt601::kYR15)),
                                                    O::mulhi16u(O::sll(in[1], 8), O::set(bt601::kYG15))),
                                        O::mulhi16u(O::sll(in[2], 8), O::set(bt601::kYB15))),
                            O::set(2112));
    out[0] = O::srl(y, 7);
  }
};

// FC5: unsigned high products of the cell sums; the positive term less the
// saturated sum of the negative ones wraps in a 16-bit lane that is then read as
// signed; 16400 is 128.125 at scale 128.
struct FC5 {
  static int one(int pos, int neg1, int neg2) {
    return clamp8(adds16s(fx::s16(pos - addus16u(neg1, neg2)), 16400) >> 7);
  }
  static void pixel(const int* s, int* out) {
    const int r = s[0] << 5, g = s[1] << 5, b = s[2] << 5;
    out[0] = one(mulhi16u(b, bt601::kCbB16), mulhi16u(r, bt601::kCbR16), mulhi16u(g, bt601::kCbG16));
    out[1] = one(mulhi16u(r, bt601::kCrR16), mulhi16u(g, bt601::kCrG16), mulhi16u(b, bt601::kCrB16));
  }
  template <class O, class V = typename O::V>
  static V one(V pos, V neg1, V neg2) {
    return O::sra(O::adds16s(O::sub16(pos, O::addus16u(neg1, neg2)), O::set(16400)), 7);
  }
  template <class O, class V = typename O::V>
  static void vblock(const V* s, V* out) {
    const V r = O::sll(s[0], 5), g = O::sll(s[1], 5), b = O::sll(s[2], 5);
    out[0] = one<O>(O::mulhi16u(b, O::set(bt601::kCbB16)), O::mulhi16u(r, O::set(bt601::kCbR16)),
                    O::mulhi16u(g, O::set(bt601::kCbG16)));
    out[1] = one<O>(O::mulhi16u(r, O::set(bt601::kCrR16)), O::mulhi16u(g, O::set(bt601::kCrG16)),
                    O::mulhi16u(b, O::set(bt601::kCrB16)));
  }
};

// ---------------------------------------------------------------------------
// Forward YUV 4:2:0
// ---------------------------------------------------------------------------

// Luma of the RGB -> YUV 4:2:0 block: Q14 coefficients of 0.299, 0.587, 0.114
// by mulhrs16s on samples << 7, a sum at scale 64, truncated like its tail.
struct YuvQ14Luma {
  static void pixel(const int* in, int* out) {
    const int y = fx::s16(mulhrs16s(in[0] << 7, yuv::kYR14) + mulhrs16s(in[1] << 7, yuv::kYG14) +
                          mulhrs16s(in[2] << 7, yuv::kYB14));
    out[0] = clamp8(y >> 6);
  }
  template <class O, class V = typename O::V>
  static void vblock(const V* in, V* out) {
    const V y = O::add16(O::add16(O::mulhrs16s(O::sll(in[0], 7), O::set(yuv::kYR14)),
                                  O::mulhrs16s(O::sll(in[1], 7), O::set(yuv::kYG14))),
                         O::mulhrs16s(O::sll(in[2], 7), O::set(yuv::kYB14)));
    out[0] = O::sra(y, 6);
  }
};

// The scalar luma of the same kernel: Q14, truncated (the +2 is the kernel's own).
struct YuvQ14LumaTail {
  static void pixel(const int* in, int* out) {
    out[0] = (yuv::kYR14 * in[0] + yuv::kYG14 * in[1] + yuv::kYB14 * in[2] + 2) >> 14;
  }
};

// U and V of the block on the cell difference: the mean luma of the cell at scale
// 64 (sum << 5 by the Q14 luma coefficients), B or R less it, twice that by
// 8061 or 14369 (0.492, 0.877 in Q14), rounded at scale 64, plus 128, clamped.
struct YuvQ14Chroma {
  static int one(int d, int k) { return clamp8(((fx::s16(mulhrs16s(d << 1, k) + 32)) >> 6) + 128); }
  static void pixel(const int* s, int* out) {
    const int ym =
        mulhrs16s(s[0] << 5, yuv::kYR14) + mulhrs16s(s[1] << 5, yuv::kYG14) + mulhrs16s(s[2] << 5, yuv::kYB14);
    out[0] = one((s[2] << 4) - ym, yuv::kU14);
    out[1] = one((s[0] << 4) - ym, yuv::kV14);
  }
  template <class O, class V = typename O::V>
  static V one(V d, int k) {
    return O::add16(O::sra(O::add16(O::mulhrs16s(O::sll(d, 1), O::set(k)), O::set(32)), 6), O::set(128));
  }
  template <class O, class V = typename O::V>
  static void vblock(const V* s, V* out) {
    const V ym = O::add16(
        O::add16(O::mulhrs16s(O::sll(s[0], 5), O::set(yuv::kYR14)), O::mulhrs16s(O::sll(s[1], 5), O::set(yuv::kYG14))),
        O::mulhrs16s(O::sll(s[2], 5), O::set(yuv::kYB14)));
    out[0] = one<O>(O::sub16(O::sll(s[2], 4), ym), yuv::kU14);
    out[1] = one<O>(O::sub16(O::sll(s[0], 4), ym), yuv::kV14);
  }
};

// The tail's U and V: the same coefficients in 32 and 64 bits, rounded once.
// (sB << 14) - ys is the mean difference in Q16.
struct YuvQ14ChromaTail {
  static int one(int d, int k) { return clamp8(int((int64_t(d) * k + (int64_t(1) << 29)) >> 30) + 128); }
  static void pixel(const int* s, int* out) {
    const int ys = yuv::kYR14 * s[0] + yuv::kYG14 * s[1] + yuv::kYB14 * s[2];
    out[0] = one((s[2] << 14) - ys, yuv::kU14);
    out[1] = one((s[0] << 14) - ys, yuv::kV14);
  }
};

// FU2's chroma on the cell: the cell sums stand at FU2's own scale of four times
// a sample, so they enter as r, g, b directly; a cell of equal pixels gives FU2's
// chroma of that pixel.
struct FU2Cell {
  static void pixel(const int* s, int* out) {
    const int r = s[0], g = s[1], b = s[2];
    const int y2 =
        adds16s(adds16s(adds16s(mulhi16s(r, yuv::kYR15), mulhi16s(g, yuv::kYG15)), mulhi16s(b, yuv::kYB15)), 1);
    out[0] = clamp8(adds16s(mulhi16s(((b + 1) >> 1) - y2, yuv::kU15), 128));
    out[1] = clamp8(adds16s(mulhi16s(((r + 1) >> 1) - y2, yuv::kV15), 128));
  }
  template <class O, class V = typename O::V>
  static void vblock(const V* s, V* out) {
    const V one = O::set(1);
    const V y2 =
        O::adds16s(O::adds16s(O::adds16s(O::mulhi16s(s[0], O::set(yuv::kYR15)), O::mulhi16s(s[1], O::set(yuv::kYG15))),
                              O::mulhi16s(s[2], O::set(yuv::kYB15))),
                   one);
    out[0] = O::adds16s(O::mulhi16s(O::sub16(O::sra(O::add16(s[2], one), 1), y2), O::set(yuv::kU15)), O::set(128));
    out[1] = O::adds16s(O::mulhi16s(O::sub16(O::sra(O::add16(s[0], one), 1), y2), O::set(yuv::kV15)), O::set(128));
  }
};

// TU1's chroma on the cell: ((s << 16) - ys + 32767) >> 16 is four times the
// difference, so the products shift by 18 where TU1's shift by 16. U is its low
// byte, V goes through the clamp table.
struct TU1Cell {
  static void pixel(const int* s, int* out) {
    const int ys = yuv::kYR16 * s[0] + yuv::kYG16 * s[1] + yuv::kYB16 * s[2];
    const int du = ((s[2] << 16) - ys + 32767) >> 16;
    const int dv = ((s[0] << 16) - ys + 32767) >> 16;
    out[0] = (((du * yuv::kU16) >> 18) + 128) & 255;
    out[1] = CHOP_ARRAY[((dv * yuv::kV16) >> 18) + 128];
  }
};

// ---------------------------------------------------------------------------
// Inverse
// ---------------------------------------------------------------------------

// The offset-folded scheme of forms_422.h with the 4:2:0 set: 4769, 8263, 1605,
// 3330, 6537, and offsets that carry a rounding half (1779, 1089, 2211 against
// 1783, 1085, 2214 of 4:2:2).
using IY4Cell = IYFolded<bt601::kY12, bt601::kCrR12, bt601::kCbG12, bt601::kCrG12, bt601::kCbB12, 1779, 1089, 2211>;

// IU2's coefficients at four times IU2's working scale: Y << 3, chroma << 6, then
// >> 3 with no rounding. R and B equal IU2's; G truncates its two products more
// finely and comes out one code above IU2 on some pixels.
using IU2Fine = IUScaled<3>;

// The 4:1:1 tail: a coefficient set of its own (76294 for Y, -25625 for Cb to G),
// rounded like SY1: the Y offset is -16 * 76294 + 32768 = -1187936.
using SY411 = SYTail<bt601::kY16Sy411, bt601::kCrR16Sy2, bt601::kCbG16Sy411, bt601::kCrG16Sy2, bt601::kCbB16Sy2, 32768>;

}  // namespace lum::form
