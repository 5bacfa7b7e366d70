// Arithmetic forms of the RGB <-> YCbCr and RGB <-> YUV conversions. Each form
// is one recipe: pixel() is the lane-exact scalar rule; vblock<O>() (where a
// form is used in block loops) computes the same lanes over a lane set O
// (lanes.h: eight 16-bit lanes, or sixteen in the wide blocks), and block() is
// its eight-lane entry for the generic kernels and other families.
// Channel order in and out is the models' own: R, G, B and Y, Cb (U), Cr (V).
// The forms differ on purpose in constants and rounding; each function uses the
// ones its row of the member table names, so none may be merged with another.
//
// vblock<O> leaves the last clamp8 to the store: every vector store narrows its
// 16-bit lanes to bytes with unsigned saturation, which is clamp8 of the lane.
// block() applies it, so that its lanes are the samples themselves. Forms that
// start from the samples << 8 also offer vblockHigh<O>(), which the wide loads
// feed directly. The vector code is written for 8-bit samples: where a sum
// cannot saturate or leave its lane for them, it is taken as the plain sum,
// and each such place says why.
#pragma once

#include "frame/fixed_point.h"
#include "frame/lanes.h"
#include "frame/chop.h"
#include "frame/coeffs.h"

namespace lum::form {

using namespace fx;
namespace bt601 = coef::bt601;
namespace yuv = coef::yuv;

#if LUM_SIMD_SSE
// Eight lanes of Form with clamp8 applied: the block() of every form here.
template <class Form>
inline void clampedBlock(const __m128i* in, __m128i* out) {
  Form::template vblock<lanes::Sse>(in, out);
  for (int k = 0; k < 3; ++k) out[k] = lanes::Sse::clamp8(out[k]);
}
#endif

// ---------------------------------------------------------------------------
// Forward YCbCr (BT.601 studio range)
// ---------------------------------------------------------------------------

// FY1: Q15 products each rounded for itself, plain 16-bit sums, >> 6.
struct FY1 {
  static int y(int r, int g, int b) {
    return clamp8(fx::s16(mulhrs16s(r << 7, bt601::kYR14) + mulhrs16s(g << 7, bt601::kYG14) +
                          mulhrs16s(b << 7, bt601::kYB14) + 1056) >> 6);
  }
  static int cb(int r, int g, int b) {
    return clamp8(fx::s16(mulhrs16s(b << 7, bt601::kCbB14) - mulhrs16s(g << 7, bt601::kCbG14) -
                          mulhrs16s(r << 7, bt601::kCbR14) + 8194) >> 6);
  }
  static int cr(int r, int g, int b) {
    return clamp8(fx::s16(mulhrs16s(r << 7, bt601::kCrR14) - mulhrs16s(g << 7, bt601::kCrG14) -
                          mulhrs16s(b << 7, bt601::kCrB14) + 8194) >> 6);
  }
  static void pixel(const int* in, int* out) {
    out[0] = y(in[0], in[1], in[2]);
    out[1] = cb(in[0], in[1], in[2]);
    out[2] = cr(in[0], in[1], in[2]);
  }
  template <class O, class V = typename O::V>
  static void vblock(const V* in, V* out) {
    const V r = O::sll(in[0], 7), g = O::sll(in[1], 7), b = O::sll(in[2], 7);
    const V y =
        O::add16(O::add16(O::add16(O::mulhrs16s(r, O::set(bt601::kYR14)), O::mulhrs16s(g, O::set(bt601::kYG14))),
                          O::mulhrs16s(b, O::set(bt601::kYB14))),
                 O::set(1056));
    out[0] = O::sra(y, 6);
    vchroma<O>(r, g, b, out[1], out[2]);
  }
  // Cb and Cr lanes (clamp8 left to the store) of lanes r, g, b at the scale of
  // samples << 7.
  template <class O, class V = typename O::V>
  static void vchroma(V r, V g, V b, V& cb, V& cr) {
    cb = O::sra(
        O::add16(O::sub16(O::sub16(O::mulhrs16s(b, O::set(bt601::kCbB14)), O::mulhrs16s(g, O::set(bt601::kCbG14))),
                          O::mulhrs16s(r, O::set(bt601::kCbR14))),
                 O::set(8194)),
        6);
    cr = O::sra(
        O::add16(O::sub16(O::sub16(O::mulhrs16s(r, O::set(bt601::kCrR14)), O::mulhrs16s(g, O::set(bt601::kCrG14))),
                          O::mulhrs16s(b, O::set(bt601::kCrB14))),
                 O::set(8194)),
        6);
  }
#if LUM_SIMD_SSE
  static void block(const __m128i* in, __m128i* out) { clampedBlock<FY1>(in, out); }
#endif
};

// FY2: unsigned high products for luma, signed Q7 high products for chroma,
// saturating sums, rounding adds of 128 and 64.
struct FY2 {
  static int y(int r, int g, int b) {
    const int s = addus16u(addus16u(addus16u(mulhi16u(r << 8, bt601::kYR16), mulhi16u(g << 8, bt601::kYG16)),
                                    mulhi16u(b << 8, bt601::kYB16)), 128);
    return clamp8((s >> 8) + 16);
  }
  static int cb(int r, int g, int b) {
    const int s = adds16s(adds16s(adds16s(mulhi16s(r << 7, -bt601::kCbR16), mulhi16s(g << 7, -bt601::kCbG16)),
                                  mulhi16s(b << 7, bt601::kCbB16)), 64);
    return clamp8((s >> 7) + 128);
  }
  static int cr(int r, int g, int b) {
    const int s = adds16s(adds16s(adds16s(mulhi16s(r << 7, bt601::kCrR16), mulhi16s(g << 7, -bt601::kCrG16)),
                                  mulhi16s(b << 7, -bt601::kCrB16)), 64);
    return clamp8((s >> 7) + 128);
  }
  static void pixel(const int* in, int* out) {
    out[0] = y(in[0], in[1], in[2]);
    out[1] = cb(in[0], in[1], in[2]);
    out[2] = cr(in[0], in[1], in[2]);
  }
  template <class O, class V = typename O::V>
  static void vblock(const V* in, V* out) {
    const V in8[3] = {O::sll(in[0], 8), O::sll(in[1], 8), O::sll(in[2], 8)};
    vblockHigh<O>(in8, out);
  }
  // The same from lanes holding the samples << 8.
  template <class O, class V = typename O::V>
  static void vblockHigh(const V* in8, V* out) {
    const V r8 = in8[0], g8 = in8[1], b8 = in8[2];
    const V r7 = O::srl(r8, 1), g7 = O::srl(g8, 1), b7 = O::srl(b8, 1);
    // For 8-bit samples no sum here saturates (luma stays below 56100, chroma
    // within +-14330), so the offsets after the shifts join the rounding adds
    // before them: + 16 << 8 for luma (still below 65536), + 128 << 7 for
    // chroma (still positive and below 32768).
    const V y =
        O::add16(O::add16(O::add16(O::mulhi16u(r8, O::set(bt601::kYR16)), O::mulhi16u(g8, O::set(bt601::kYG16))),
                          O::mulhi16u(b8, O::set(bt601::kYB16))),
                 O::set(128 + (16 << 8)));
    const V cb =
        O::add16(O::add16(O::add16(O::mulhi16s(r7, O::set(-bt601::kCbR16)), O::mulhi16s(g7, O::set(-bt601::kCbG16))),
                          O::mulhi16s(b7, O::set(bt601::kCbB16))),
                 O::set(64 + (128 << 7)));
    const V cr =
        O::add16(O::add16(O::add16(O::mulhi16s(r7, O::set(bt601::kCrR16)), O::mulhi16s(g7, O::set(-bt601::kCrG16))),
                          O::mulhi16s(b7, O::set(-bt601::kCrB16))),
                 O::set(64 + (128 << 7)));
    out[0] = O::srl(y, 8);
    out[1] = O::sra(cb, 7);
    out[2] = O::sra(cr, 7);
  }
#if LUM_SIMD_SSE
  static void block(const __m128i* in, __m128i* out) { clampedBlock<FY2>(in, out); }
#endif
};

// FY3: the exact tail: 32-bit Q16 sums, one rounding, stored as the low byte.
struct FY3 {
  static int y(int r, int g, int b) {
    return ((bt601::kYR16 * r + bt601::kYG16 * g + bt601::kYB16 * b + 0x108000) >> 16) & 255;
  }
  static int cb(int r, int g, int b) {
    return ((-bt601::kCbR16 * r - bt601::kCbG16 * g + bt601::kCbB16 * b + 0x808000) >> 16) & 255;
  }
  static int cr(int r, int g, int b) {
    return ((bt601::kCrR16 * r - bt601::kCrG16 * g - bt601::kCrB16 * b + 0x808000) >> 16) & 255;
  }
  static void pixel(const int* in, int* out) {
    out[0] = y(in[0], in[1], in[2]);
    out[1] = cb(in[0], in[1], in[2]);
    out[2] = cr(in[0], in[1], in[2]);
  }
};

// ---------------------------------------------------------------------------
// Inverse YCbCr
// ---------------------------------------------------------------------------

// IY1 / IY2: y = mulhi16s((Y-16)<<7, Cy), saturating sums, rounding add then shift.
template <int Cy, int CrR, int CbG, int CrG, int CbB, int Round, int Shift>
struct IYRounded {
  static void pixel(const int* in, int* out) {
    const int y = mulhi16s((in[0] - 16) << 7, Cy);
    const int cb = (in[1] - 128) << 7, cr = (in[2] - 128) << 7;
    const int r = adds16s(y, mulhi16s(cr, CrR));
    const int g = subs16s(y, adds16s(mulhi16s(cb, CbG), mulhi16s(cr, CrG)));
    const int b = adds16s(y, mulhi16s(cb, CbB));
    out[0] = clamp8(adds16s(r, Round) >> Shift);
    out[1] = clamp8(adds16s(g, Round) >> Shift);
    out[2] = clamp8(adds16s(b, Round) >> Shift);
  }
  // For 8-bit samples no sum here saturates (|y| < 4500, each chroma term
  // below 3300), so the saturating adds are plain ones and the rounding add
  // is made once, on y.
  template <class O, class V = typename O::V>
  static void vblock(const V* in, V* out) {
    const V y = O::add16(O::mulhi16s(O::sll(O::sub16(in[0], O::set(16)), 7), O::set(Cy)), O::set(Round));
    const V cb = O::sll(O::sub16(in[1], O::set(128)), 7), cr = O::sll(O::sub16(in[2], O::set(128)), 7);
    out[0] = O::sra(O::add16(y, O::mulhi16s(cr, O::set(CrR))), Shift);
    out[1] = O::sra(O::sub16(y, O::add16(O::mulhi16s(cb, O::set(CbG)), O::mulhi16s(cr, O::set(CrG)))), Shift);
    out[2] = O::sra(O::add16(y, O::mulhi16s(cb, O::set(CbB))), Shift);
  }
#if LUM_SIMD_SSE
  static void block(const __m128i* in, __m128i* out) { clampedBlock<IYRounded>(in, out); }
#endif
};
using IY1 = IYRounded<bt601::kY12, bt601::kCrR12, bt601::kCbG12, bt601::kCrG12, bt601::kCbB12, 4, 3>;
using IY2 = IYRounded<bt601::kY13, bt601::kCrR13, bt601::kCbG13, bt601::kCrG13, bt601::kCbB13, 8, 4>;

// IY3: G adds two negative products, Cb-to-G is -3203, and it truncates (>> 4).
struct IY3 {
  static void pixel(const int* in, int* out) {
    const int y = mulhi16s((in[0] - 16) << 7, bt601::kY13Iy3);
    const int cb = (in[1] - 128) << 7, cr = (in[2] - 128) << 7;
    out[0] = clamp8(adds16s(y, mulhi16s(cr, bt601::kCrR13)) >> 4);
    out[1] = clamp8(adds16s(adds16s(y, mulhi16s(cr, -bt601::kCrG13)), mulhi16s(cb, -bt601::kCbG13Iy3)) >> 4);
    out[2] = clamp8(adds16s(y, mulhi16s(cb, bt601::kCbB13)) >> 4);
  }
  template <class O, class V = typename O::V>
  static void vblock(const V* in, V* out) {
    const V y = O::mulhi16s(O::sll(O::sub16(in[0], O::set(16)), 7), O::set(bt601::kY13Iy3));
    const V cb = O::sll(O::sub16(in[1], O::set(128)), 7), cr = O::sll(O::sub16(in[2], O::set(128)), 7);
    out[0] = O::sra(O::adds16s(y, O::mulhi16s(cr, O::set(bt601::kCrR13))), 4);
    out[1] = O::sra(
        O::adds16s(O::adds16s(y, O::mulhi16s(cr, O::set(-bt601::kCrG13))), O::mulhi16s(cb, O::set(-bt601::kCbG13Iy3))),
        4);
    out[2] = O::sra(O::adds16s(y, O::mulhi16s(cb, O::set(bt601::kCbB13))), 4);
  }
#if LUM_SIMD_SSE
  static void block(const __m128i* in, __m128i* out) { clampedBlock<IY3>(in, out); }
#endif
};

// SY1 / SY2 / SY3: 32-bit tails, Rnd 32768 (rounded) or 0 (truncated), through chop.
template <int Cy, int CrR, int CbG, int CrG, int CbB, int Rnd>
struct SYTail {
  static void pixel(const int* in, int* out) {
    const int y = Cy * (in[0] - 16) + Rnd;
    const int u = in[1] - 128, v = in[2] - 128;
    out[0] = CHOP_ARRAY[(y + CrR * v) >> 16];
    out[1] = CHOP_ARRAY[(y - CbG * u - CrG * v) >> 16];
    out[2] = CHOP_ARRAY[(y + CbB * u) >> 16];
  }
  // The same sums on 16-bit lanes: each coefficient c splits into
  // hiQ16(c) * 65536 + loQ16(c), so a channel is the sum of hiQ16(c) * x, which
  // the shift leaves whole, and floor((sum of loQ16(c) * x + Rnd) / 65536),
  // whose products fit 16 bits and whose sum is exact in 32. The clamp is the
  // store's and equals the table's.
  template <class O, class V = typename O::V>
  static void vblock(const V* in, V* out) {
    using namespace lanes;
    const V y = O::sub16(in[0], O::set(16));
    const V u = O::sub16(in[1], O::set(128)), v = O::sub16(in[2], O::set(128));
    const V yh = addTimes<hiQ16(Cy), O>(O::zero(), y);
    out[0] = addTimes<hiQ16(CrR), O>(O::add16(yh, maddQ16<O>(y, loQ16(Cy), v, loQ16(CrR), Rnd)), v);
    out[1] = addTimes<hiQ16(-CrG), O>(
        addTimes<hiQ16(-CbG), O>(O::add16(yh, maddQ16<O>(y, loQ16(Cy), u, loQ16(-CbG), v, loQ16(-CrG), Rnd)), u),
        v);
    out[2] = addTimes<hiQ16(CbB), O>(O::add16(yh, maddQ16<O>(y, loQ16(Cy), u, loQ16(CbB), Rnd)), u);
  }
#if LUM_SIMD_SSE
  static void block(const __m128i* in, __m128i* out) { clampedBlock<SYTail>(in, out); }
#endif
};
using SY1 = SYTail<bt601::kY16Sy1, bt601::kCrR16Sy1, bt601::kCbG16Sy1, bt601::kCrG16Sy1, bt601::kCbB16Sy1, 32768>;
using SY2 = SYTail<bt601::kY16Sy2, bt601::kCrR16Sy2, bt601::kCbG16Sy2, bt601::kCrG16Sy2, bt601::kCbB16Sy2, 32768>;
using SY3 = SYTail<bt601::kY16Sy2, bt601::kCrR16Sy2, bt601::kCbG16Sy2, bt601::kCrG16Sy2, bt601::kCbB16Sy2, 0>;

// ---------------------------------------------------------------------------
// Forward YUV
// ---------------------------------------------------------------------------

// FU1: truncating luma from unsigned high products; chroma >> 6, saturating.
struct FU1 {
  static int y(int r, int g, int b) {
    return clamp8(addus16u(addus16u(mulhi16u(r << 8, yuv::kYR16), mulhi16u(g << 8, yuv::kYG16Low)),
                           mulhi16u(b << 8, yuv::kYB16)) >> 8);
  }
  static int u(int r, int g, int b) {
    const int s = adds16s(adds16s(mulhi16s(r << 7, -4816), mulhi16s(g << 7, -9469)),
                          mulhi16s(b << 7, 14286)) >> 6;
    return clamp8(adds16s(s, 128));
  }
  static int v(int r, int g, int b) {
    const int s = adds16s(adds16s(mulhi16s(r << 7, 20152), mulhi16s(g << 7, -16875)),
                          mulhi16s(b << 7, -3276)) >> 6;
    return clamp8(adds16s(s, 128));
  }
  static void pixel(const int* in, int* out) {
    out[0] = y(in[0], in[1], in[2]);
    out[1] = u(in[0], in[1], in[2]);
    out[2] = v(in[0], in[1], in[2]);
  }
  template <class O, class V = typename O::V>
  static void vblock(const V* in, V* out) {
    const V in8[3] = {O::sll(in[0], 8), O::sll(in[1], 8), O::sll(in[2], 8)};
    vblockHigh<O>(in8, out);
  }
  // The same from lanes holding the samples << 8.
  template <class O, class V = typename O::V>
  static void vblockHigh(const V* in8, V* out) {
    const V r8 = in8[0], g8 = in8[1], b8 = in8[2];
    const V r7 = O::srl(r8, 1), g7 = O::srl(g8, 1), b7 = O::srl(b8, 1);
    const V y = O::addus16u(O::addus16u(O::mulhi16u(r8, O::set(yuv::kYR16)), O::mulhi16u(g8, O::set(yuv::kYG16Low))),
                            O::mulhi16u(b8, O::set(yuv::kYB16)));
    const V u = O::adds16s(O::adds16s(O::mulhi16s(r7, O::set(-4816)), O::mulhi16s(g7, O::set(-9469))),
                           O::mulhi16s(b7, O::set(14286)));
    const V v = O::adds16s(O::adds16s(O::mulhi16s(r7, O::set(20152)), O::mulhi16s(g7, O::set(-16875))),
                           O::mulhi16s(b7, O::set(-3276)));
    // u and v stay within +-10040 for 8-bit samples, so the offset of 128
    // after the shift goes in before it as 128 << 6, without saturating.
    out[0] = O::srl(y, 8);
    out[1] = O::sra(O::add16(u, O::set(128 << 6)), 6);
    out[2] = O::sra(O::add16(v, O::set(128 << 6)), 6);
  }
#if LUM_SIMD_SSE
  static void block(const __m128i* in, __m128i* out) { clampedBlock<FU1>(in, out); }
#endif
};

// FU2: through twice the luma plus one (y2) and the differences B - Y, R - Y.
struct FU2 {
  static void pixel(const int* in, int* out) {
    const int r = in[0] * 4, g = in[1] * 4, b = in[2] * 4;
    const int y2 =
        adds16s(adds16s(adds16s(mulhi16s(r, yuv::kYR15), mulhi16s(g, yuv::kYG15)), mulhi16s(b, yuv::kYB15)), 1);
    out[0] = clamp8(y2 >> 1);
    out[1] = clamp8(adds16s(mulhi16s(((b + 1) >> 1) - y2, yuv::kU15), 128));
    out[2] = clamp8(adds16s(mulhi16s(((r + 1) >> 1) - y2, yuv::kV15), 128));
  }
  template <class O, class V = typename O::V>
  static void vblock(const V* in, V* out) {
    const V r = O::sll(in[0], 2), g = O::sll(in[1], 2), b = O::sll(in[2], 2);
    const V y2 =
        O::adds16s(O::adds16s(O::adds16s(O::mulhi16s(r, O::set(yuv::kYR15)), O::mulhi16s(g, O::set(yuv::kYG15))),
                              O::mulhi16s(b, O::set(yuv::kYB15))),
                   O::set(1));
    out[0] = O::sra(y2, 1);
    // (4s + 1) >> 1 is 2s.
    out[1] = O::adds16s(O::mulhi16s(O::sub16(O::sll(in[2], 1), y2), O::set(yuv::kU15)), O::set(128));
    out[2] = O::adds16s(O::mulhi16s(O::sub16(O::sll(in[0], 1), y2), O::set(yuv::kV15)), O::set(128));
  }
#if LUM_SIMD_SSE
  static void block(const __m128i* in, __m128i* out) { clampedBlock<FU2>(in, out); }
#endif
};

// TU1: y32 with 38470 for green; chroma rounded by 32767; U as its low byte, V clamped.
struct TU1 {
  static void pixel(const int* in, int* out) {
    const int R = in[0], G = in[1], B = in[2];
    const int y32 = yuv::kYR16 * R + yuv::kYG16 * G + yuv::kYB16 * B;
    out[0] = y32 >> 16;
    out[1] = ((((((B << 16) - y32 + 32767) >> 16) * yuv::kU16) >> 16) + 128) & 255;
    out[2] = CHOP_ARRAY[((((((R << 16) - y32 + 32767) >> 16) * yuv::kV16) >> 16) + 128)];
  }
};

// TU2: the block's own coefficients in 32 bits, chroma >> 15.
struct TU2 {
  static int y(int R, int G, int B) { return (yuv::kYR16 * R + yuv::kYG16Low * G + yuv::kYB16 * B) >> 16; }
  static int u(int R, int G, int B) { return (((-4816 * R - 9469 * G + 14286 * B) >> 15) + 128) & 255; }
  static int v(int R, int G, int B) { return CHOP_ARRAY[((20152 * R - 16875 * G - 3276 * B) >> 15) + 128]; }
  static void pixel(const int* in, int* out) {
    out[0] = y(in[0], in[1], in[2]);
    out[1] = u(in[0], in[1], in[2]);
    out[2] = v(in[0], in[1], in[2]);
  }
};

// TU3: as TU1 but every value rounded by 32768.
struct TU3 {
  static void pixel(const int* in, int* out) {
    const int R = in[0], G = in[1], B = in[2];
    const int y32 = yuv::kYR16 * R + yuv::kYG16 * G + yuv::kYB16 * B;
    out[0] = (y32 + 32768) >> 16;
    out[1] = ((((((B << 16) - y32 + 32768) >> 16) * yuv::kU16) >> 16) + 128) & 255;
    out[2] = clamp8(((((((R << 16) - y32 + 32768) >> 16) * yuv::kV16) >> 16) + 128));
  }
  // The same values on 16-bit lanes. With 38470 = 65536 - 27066,
  // y32 = G << 16 + s where s = 19595 R - 27066 G + 7471 B is exact in 32 bits:
  // Y = G + floor((s + 32768) / 65536), and ((B << 16) - y32 + 32768) >> 16 is
  // B - G - floor((s + 32767) / 65536) (likewise for R). The chroma products
  // are high products, 57475 being 65536 - 8061; U stays within 2..253, so its
  // low byte is itself, and V's clamp is the store's.
  template <class O, class V = typename O::V>
  static void vblock(const V* in, V* out) {
    using namespace lanes;
    V lo, hi, lo2, hi2;
    O::madd(in[0], in[1], yuv::kYR16, loQ16(yuv::kYG16), lo, hi);
    O::madd(in[2], O::zero(), yuv::kYB16, 0, lo2, hi2);
    lo = O::add32(lo, lo2);
    hi = O::add32(hi, hi2);
    const V g = in[1];
    const V y7 = O::add16(g, shrQ16<O>(lo, hi, 32767));  // floor((y32 + 32767) / 65536)
    const V eb = O::sub16(in[2], y7), er = O::sub16(in[0], y7);
    out[0] = O::add16(g, shrQ16<O>(lo, hi, 32768));
    out[1] = O::add16(O::mulhi16s(eb, O::set(yuv::kU16)), O::set(128));
    out[2] = O::add16(O::add16(er, O::mulhi16s(er, O::set(-yuv::kU14))), O::set(128));
  }
#if LUM_SIMD_SSE
  static void block(const __m128i* in, __m128i* out) { clampedBlock<TU3>(in, out); }
#endif
};

// ---------------------------------------------------------------------------
// Inverse YUV
// ---------------------------------------------------------------------------

// IU1: chroma << 3, no rounding: clamp8 of the saturated sums.
struct IU1 {
  static void pixel(const int* in, int* out) {
    const int y = in[0], ua = (in[1] - 128) << 3, va = (in[2] - 128) << 3;
    out[0] = clamp8(adds16s(y, mulhi16s(va, yuv::kVR13Iu1)));
    out[1] = clamp8(adds16s(adds16s(y, mulhi16s(ua, -yuv::kUG13Iu1)), mulhi16s(va, -yuv::kVG13Iu1)));
    out[2] = clamp8(adds16s(y, mulhi16s(ua, yuv::kUB13)));
  }
  template <class O, class V = typename O::V>
  static void vblock(const V* in, V* out) {
    const V y = in[0];
    const V ua = O::sll(O::sub16(in[1], O::set(128)), 3), va = O::sll(O::sub16(in[2], O::set(128)), 3);
    out[0] = O::adds16s(y, O::mulhi16s(va, O::set(yuv::kVR13Iu1)));
    out[1] =
        O::adds16s(O::adds16s(y, O::mulhi16s(ua, O::set(-yuv::kUG13Iu1))), O::mulhi16s(va, O::set(-yuv::kVG13Iu1)));
    out[2] = O::adds16s(y, O::mulhi16s(ua, O::set(yuv::kUB13)));
  }
#if LUM_SIMD_SSE
  static void block(const __m128i* in, __m128i* out) { clampedBlock<IU1>(in, out); }
#endif
};

// IU2 at the scale 1 << S: Y << S, chroma less 128 << (S + 3), each product
// truncated, then >> S without rounding. The finer scale truncates G's two
// products more finely, so the scales differ on some pixels.
template <int S>
struct IUScaled {
  static void pixel(const int* in, int* out) {
    const int y = in[0] << S, ub = (in[1] - 128) << (S + 3), vb = (in[2] - 128) << (S + 3);
    out[0] = clamp8(adds16s(y, mulhi16s(vb, yuv::kVR13)) >> S);
    out[1] = clamp8(adds16s(adds16s(y, mulhi16s(ub, -yuv::kUG13)), mulhi16s(vb, -yuv::kVG13)) >> S);
    out[2] = clamp8(adds16s(y, mulhi16s(ub, yuv::kUB13Low)) >> S);
  }
  template <class O, class V = typename O::V>
  static void vblock(const V* in, V* out) {
    const V y = O::sll(in[0], S);
    const V ub = O::sll(O::sub16(in[1], O::set(128)), S + 3), vb = O::sll(O::sub16(in[2], O::set(128)), S + 3);
    out[0] = O::sra(O::adds16s(y, O::mulhi16s(vb, O::set(yuv::kVR13))), S);
    out[1] = O::sra(
        O::adds16s(O::adds16s(y, O::mulhi16s(ub, O::set(-yuv::kUG13))), O::mulhi16s(vb, O::set(-yuv::kVG13))), S);
    out[2] = O::sra(O::adds16s(y, O::mulhi16s(ub, O::set(yuv::kUB13Low))), S);
  }
#if LUM_SIMD_SSE
  static void block(const __m128i* in, __m128i* out) { clampedBlock<IUScaled>(in, out); }
#endif
};
// IU2: chroma << 4 against 2Y, then >> 1 without rounding.
using IU2 = IUScaled<1>;

// IU3: chroma << 7 against Y << 3, add 4, >> 3.
struct IU3 {
  static void pixel(const int* in, int* out) {
    const int y = in[0] << 3, uc = (in[1] - 128) << 7, vc = (in[2] - 128) << 7;
    out[0] = clamp8(adds16s(adds16s(y, mulhi16s(vc, yuv::kVR12)), 4) >> 3);
    out[1] = clamp8(adds16s(subs16s(subs16s(y, mulhi16s(uc, yuv::kUG12)), mulhi16s(vc, yuv::kVG12)), 4) >> 3);
    out[2] = clamp8(adds16s(adds16s(y, mulhi16s(uc, yuv::kUB12)), 4) >> 3);
  }
  template <class O, class V = typename O::V>
  static void vblock(const V* in, V* out) {
    // For 8-bit samples no sum here saturates (y + 4 < 2050, each chroma term
    // below 2100), so the adds are plain ones and the rounding add is made once.
    const V y = O::add16(O::sll(in[0], 3), O::set(4));
    const V uc = O::sll(O::sub16(in[1], O::set(128)), 7), vc = O::sll(O::sub16(in[2], O::set(128)), 7);
    out[0] = O::sra(O::add16(y, O::mulhi16s(vc, O::set(yuv::kVR12))), 3);
    out[1] = O::sra(O::sub16(O::sub16(y, O::mulhi16s(uc, O::set(yuv::kUG12))), O::mulhi16s(vc, O::set(yuv::kVG12))), 3);
    out[2] = O::sra(O::add16(y, O::mulhi16s(uc, O::set(yuv::kUB12))), 3);
  }
#if LUM_SIMD_SSE
  static void block(const __m128i* in, __m128i* out) { clampedBlock<IU3>(in, out); }
#endif
};

// SU1 / SU2 / SU3: 32-bit tails on Y << 16; each of R, G, B rounded or not by its own flag.
template <int CrR, int CbG, int CrG, int CbB, int RndR, int RndG, int RndB>
struct SUTail {
  static void pixel(const int* in, int* out) {
    const int y = in[0] << 16, u = in[1] - 128, v = in[2] - 128;
    out[0] = CHOP_ARRAY[(y + CrR * v + RndR) >> 16];
    out[1] = CHOP_ARRAY[(y - CbG * u - CrG * v + RndG) >> 16];
    out[2] = CHOP_ARRAY[(y + CbB * u + RndB) >> 16];
  }
  // The same sums on 16-bit lanes: Y << 16 and hiQ16(c) * 65536 of each
  // coefficient pass the shift whole; floor((loQ16(c) * x + Rnd) / 65536) is a
  // high product (with its carry where rounded) or, for two terms, an exact
  // 32-bit sum. The clamp is the store's and equals the table's.
  template <class O, class V = typename O::V>
  static void vblock(const V* in, V* out) {
    using namespace lanes;
    const V y = in[0];
    const V u = O::sub16(in[1], O::set(128)), v = O::sub16(in[2], O::set(128));
    out[0] = addTimes<hiQ16(CrR), O>(O::add16(y, mulQ16<O>(v, loQ16(CrR), RndR)), v);
    out[1] = addTimes<hiQ16(-CrG), O>(
        addTimes<hiQ16(-CbG), O>(O::add16(y, maddQ16<O>(u, loQ16(-CbG), v, loQ16(-CrG), RndG)), u), v);
    out[2] = addTimes<hiQ16(CbB), O>(O::add16(y, mulQ16<O>(u, loQ16(CbB), RndB)), u);
  }
#if LUM_SIMD_SSE
  static void block(const __m128i* in, __m128i* out) { clampedBlock<SUTail>(in, out); }
#endif
};
// SU1 rounds R and B but truncates G.
using SU1 = SUTail<yuv::kVR16, yuv::kUG16, yuv::kVG16, yuv::kUB16, 32768, 0, 32768>;
using SU2 = SUTail<yuv::kVR16Low, yuv::kUG16Low, yuv::kVG16Low, yuv::kUB16Low, 0, 0, 0>;
using SU3 = SUTail<yuv::kVR16, yuv::kUG16, yuv::kVG16, yuv::kUB16, 32768, 32768, 32768>;

}  // namespace lum::form
