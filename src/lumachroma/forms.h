// Arithmetic forms of the RGB <-> YCbCr and RGB <-> YUV conversions. Each form
// is one recipe: pixel() is the lane-exact scalar rule; block() (where a form is
// used in block loops) computes the same lanes on eight 16-bit lanes at once.
// Channel order in and out is the models' own: R, G, B and Y, Cb (U), Cr (V).
// The forms differ on purpose in constants and rounding; each function uses the
// ones its row of the member table names, so none may be merged with another.
#pragma once

#include "frame/fixed_point.h"
#include "lumachroma/chop.h"

namespace lum::form {

using namespace fx;

// ---------------------------------------------------------------------------
// Forward YCbCr (BT.601 studio range)
// ---------------------------------------------------------------------------

// FY1: Q15 products each rounded for itself, plain 16-bit sums, >> 6.
struct FY1 {
  static int y(int r, int g, int b) {
    return clamp8(fx::s16(mulhrs16s(r << 7, 4211) + mulhrs16s(g << 7, 8258) +
                          mulhrs16s(b << 7, 1606) + 1056) >> 6);
  }
  static int cb(int r, int g, int b) {
    return clamp8(fx::s16(mulhrs16s(b << 7, 7193) - mulhrs16s(g << 7, 4768) -
                          mulhrs16s(r << 7, 2425) + 8194) >> 6);
  }
  static int cr(int r, int g, int b) {
    return clamp8(fx::s16(mulhrs16s(r << 7, 7193) - mulhrs16s(g << 7, 6029) -
                          mulhrs16s(b << 7, 1163) + 8194) >> 6);
  }
  static void pixel(const int* in, int* out) {
    out[0] = y(in[0], in[1], in[2]);
    out[1] = cb(in[0], in[1], in[2]);
    out[2] = cr(in[0], in[1], in[2]);
  }
#if LUM_SIMD_SSE
  static void block(const __m128i* in, __m128i* out) {
    const V r = sll16<7>(in[0]), g = sll16<7>(in[1]), b = sll16<7>(in[2]);
    const V y = add16(add16(add16(mulhrs16s(r, set16(4211)), mulhrs16s(g, set16(8258))),
                            mulhrs16s(b, set16(1606))), set16(1056));
    const V cb = add16(sub16(sub16(mulhrs16s(b, set16(7193)), mulhrs16s(g, set16(4768))),
                             mulhrs16s(r, set16(2425))), set16(8194));
    const V cr = add16(sub16(sub16(mulhrs16s(r, set16(7193)), mulhrs16s(g, set16(6029))),
                             mulhrs16s(b, set16(1163))), set16(8194));
    out[0] = clamp8(sra16<6>(y));
    out[1] = clamp8(sra16<6>(cb));
    out[2] = clamp8(sra16<6>(cr));
  }
#endif
};

// FY2: unsigned high products for luma, signed Q7 high products for chroma,
// saturating sums, rounding adds of 128 and 64.
struct FY2 {
  static int y(int r, int g, int b) {
    const int s = addus16u(addus16u(addus16u(mulhi16u(r << 8, 16843), mulhi16u(g << 8, 33030)),
                                    mulhi16u(b << 8, 6423)), 128);
    return clamp8((s >> 8) + 16);
  }
  static int cb(int r, int g, int b) {
    const int s = adds16s(adds16s(adds16s(mulhi16s(r << 7, -9699), mulhi16s(g << 7, -19071)),
                                  mulhi16s(b << 7, 28770)), 64);
    return clamp8((s >> 7) + 128);
  }
  static int cr(int r, int g, int b) {
    const int s = adds16s(adds16s(adds16s(mulhi16s(r << 7, 28770), mulhi16s(g << 7, -24117)),
                                  mulhi16s(b << 7, -4653)), 64);
    return clamp8((s >> 7) + 128);
  }
  static void pixel(const int* in, int* out) {
    out[0] = y(in[0], in[1], in[2]);
    out[1] = cb(in[0], in[1], in[2]);
    out[2] = cr(in[0], in[1], in[2]);
  }
#if LUM_SIMD_SSE
  static void block(const __m128i* in, __m128i* out) {
    const V r8 = sll16<8>(in[0]), g8 = sll16<8>(in[1]), b8 = sll16<8>(in[2]);
    const V r7 = sll16<7>(in[0]), g7 = sll16<7>(in[1]), b7 = sll16<7>(in[2]);
    const V y = addus16u(addus16u(addus16u(mulhi16u(r8, set16(16843)), mulhi16u(g8, set16(33030))),
                                  mulhi16u(b8, set16(6423))), set16(128));
    const V cb = adds16s(adds16s(adds16s(mulhi16s(r7, set16(-9699)), mulhi16s(g7, set16(-19071))),
                                 mulhi16s(b7, set16(28770))), set16(64));
    const V cr = adds16s(adds16s(adds16s(mulhi16s(r7, set16(28770)), mulhi16s(g7, set16(-24117))),
                                 mulhi16s(b7, set16(-4653))), set16(64));
    out[0] = clamp8(add16(srl16<8>(y), set16(16)));
    out[1] = clamp8(add16(sra16<7>(cb), set16(128)));
    out[2] = clamp8(add16(sra16<7>(cr), set16(128)));
  }
#endif
};

// FY3: the exact tail: 32-bit Q16 sums, one rounding, stored as the low byte.
struct FY3 {
  static int y(int r, int g, int b) { return ((16843 * r + 33030 * g + 6423 * b + 0x108000) >> 16) & 255; }
  static int cb(int r, int g, int b) { return ((-9699 * r - 19071 * g + 28770 * b + 0x808000) >> 16) & 255; }
  static int cr(int r, int g, int b) { return ((28770 * r - 24117 * g - 4653 * b + 0x808000) >> 16) & 255; }
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
#if LUM_SIMD_SSE
  static void block(const __m128i* in, __m128i* out) {
    const V y = mulhi16s(sll16<7>(sub16(in[0], set16(16))), set16(Cy));
    const V cb = sll16<7>(sub16(in[1], set16(128))), cr = sll16<7>(sub16(in[2], set16(128)));
    const V r = adds16s(y, mulhi16s(cr, set16(CrR)));
    const V g = subs16s(y, adds16s(mulhi16s(cb, set16(CbG)), mulhi16s(cr, set16(CrG))));
    const V b = adds16s(y, mulhi16s(cb, set16(CbB)));
    out[0] = clamp8(_mm_srai_epi16(adds16s(r, set16(Round)), Shift));
    out[1] = clamp8(_mm_srai_epi16(adds16s(g, set16(Round)), Shift));
    out[2] = clamp8(_mm_srai_epi16(adds16s(b, set16(Round)), Shift));
  }
#endif
};
using IY1 = IYRounded<4769, 6537, 1605, 3330, 8263, 4, 3>;
using IY2 = IYRounded<9535, 13074, 3211, 6660, 16523, 8, 4>;

// IY3: G adds two negative products, Cb-to-G is -3203, and it truncates (>> 4).
struct IY3 {
  static void pixel(const int* in, int* out) {
    const int y = mulhi16s((in[0] - 16) << 7, 9536);
    const int cb = (in[1] - 128) << 7, cr = (in[2] - 128) << 7;
    out[0] = clamp8(adds16s(y, mulhi16s(cr, 13074)) >> 4);
    out[1] = clamp8(adds16s(adds16s(y, mulhi16s(cr, -6660)), mulhi16s(cb, -3203)) >> 4);
    out[2] = clamp8(adds16s(y, mulhi16s(cb, 16523)) >> 4);
  }
#if LUM_SIMD_SSE
  static void block(const __m128i* in, __m128i* out) {
    const V y = mulhi16s(sll16<7>(sub16(in[0], set16(16))), set16(9536));
    const V cb = sll16<7>(sub16(in[1], set16(128))), cr = sll16<7>(sub16(in[2], set16(128)));
    out[0] = clamp8(sra16<4>(adds16s(y, mulhi16s(cr, set16(13074)))));
    out[1] = clamp8(sra16<4>(adds16s(adds16s(y, mulhi16s(cr, set16(-6660))), mulhi16s(cb, set16(-3203)))));
    out[2] = clamp8(sra16<4>(adds16s(y, mulhi16s(cb, set16(16523)))));
  }
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
#if LUM_SIMD_SSE
  // The same 32-bit sums four lanes at a time; the clamp equals the table's.
  static void block(const __m128i* in, __m128i* out) {
    wide32(in, out, [](const V* w, V* o) {
      const V y = add32(mul32(sub32(w[0], set32(16)), Cy), set32(Rnd));
      const V u = sub32(w[1], set32(128)), v = sub32(w[2], set32(128));
      o[0] = sra32<16>(add32(y, mul32(v, CrR)));
      o[1] = sra32<16>(sub32(sub32(y, mul32(u, CbG)), mul32(v, CrG)));
      o[2] = sra32<16>(add32(y, mul32(u, CbB)));
    });
    for (int k = 0; k < 3; ++k) out[k] = clamp8(out[k]);
  }
#endif
};
using SY1 = SYTail<76282, 104593, 25689, 53279, 132184, 32768>;
using SY2 = SYTail<76284, 104595, 25690, 53281, 132186, 32768>;
using SY3 = SYTail<76284, 104595, 25690, 53281, 132186, 0>;

// ---------------------------------------------------------------------------
// Forward YUV
// ---------------------------------------------------------------------------

// FU1: truncating luma from unsigned high products; chroma >> 6, saturating.
struct FU1 {
  static int y(int r, int g, int b) {
    return clamp8(addus16u(addus16u(mulhi16u(r << 8, 19595), mulhi16u(g << 8, 38469)),
                           mulhi16u(b << 8, 7471)) >> 8);
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
#if LUM_SIMD_SSE
  static void block(const __m128i* in, __m128i* out) {
    const V r8 = sll16<8>(in[0]), g8 = sll16<8>(in[1]), b8 = sll16<8>(in[2]);
    const V r7 = sll16<7>(in[0]), g7 = sll16<7>(in[1]), b7 = sll16<7>(in[2]);
    const V y = addus16u(addus16u(mulhi16u(r8, set16(19595)), mulhi16u(g8, set16(38469))),
                         mulhi16u(b8, set16(7471)));
    const V u = adds16s(adds16s(mulhi16s(r7, set16(-4816)), mulhi16s(g7, set16(-9469))),
                        mulhi16s(b7, set16(14286)));
    const V v = adds16s(adds16s(mulhi16s(r7, set16(20152)), mulhi16s(g7, set16(-16875))),
                        mulhi16s(b7, set16(-3276)));
    out[0] = clamp8(srl16<8>(y));
    out[1] = clamp8(adds16s(sra16<6>(u), set16(128)));
    out[2] = clamp8(adds16s(sra16<6>(v), set16(128)));
  }
#endif
};

// FU2: through twice the luma plus one (y2) and the differences B - Y, R - Y.
struct FU2 {
  static void pixel(const int* in, int* out) {
    const int r = in[0] * 4, g = in[1] * 4, b = in[2] * 4;
    const int y2 = adds16s(adds16s(adds16s(mulhi16s(r, 9798), mulhi16s(g, 19235)), mulhi16s(b, 3736)), 1);
    out[0] = clamp8(y2 >> 1);
    out[1] = clamp8(adds16s(mulhi16s(((b + 1) >> 1) - y2, 16121), 128));
    out[2] = clamp8(adds16s(mulhi16s(((r + 1) >> 1) - y2, 28737), 128));
  }
#if LUM_SIMD_SSE
  static void block(const __m128i* in, __m128i* out) {
    const V r = sll16<2>(in[0]), g = sll16<2>(in[1]), b = sll16<2>(in[2]);
    const V one = set16(1);
    const V y2 = adds16s(adds16s(adds16s(mulhi16s(r, set16(9798)), mulhi16s(g, set16(19235))),
                                 mulhi16s(b, set16(3736))), one);
    out[0] = clamp8(sra16<1>(y2));
    out[1] = clamp8(adds16s(mulhi16s(sub16(sra16<1>(add16(b, one)), y2), set16(16121)), set16(128)));
    out[2] = clamp8(adds16s(mulhi16s(sub16(sra16<1>(add16(r, one)), y2), set16(28737)), set16(128)));
  }
#endif
};

// TU1: y32 with 38470 for green; chroma rounded by 32767; U as its low byte, V clamped.
struct TU1 {
  static void pixel(const int* in, int* out) {
    const int R = in[0], G = in[1], B = in[2];
    const int y32 = 19595 * R + 38470 * G + 7471 * B;
    out[0] = y32 >> 16;
    out[1] = ((((((B << 16) - y32 + 32767) >> 16) * 32244) >> 16) + 128) & 255;
    out[2] = CHOP_ARRAY[((((((R << 16) - y32 + 32767) >> 16) * 57475) >> 16) + 128)];
  }
};

// TU2: the block's own coefficients in 32 bits, chroma >> 15.
struct TU2 {
  static int y(int R, int G, int B) { return (19595 * R + 38469 * G + 7471 * B) >> 16; }
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
    const int y32 = 19595 * R + 38470 * G + 7471 * B;
    out[0] = (y32 + 32768) >> 16;
    out[1] = ((((((B << 16) - y32 + 32768) >> 16) * 32244) >> 16) + 128) & 255;
    out[2] = clamp8(((((((R << 16) - y32 + 32768) >> 16) * 57475) >> 16) + 128));
  }
#if LUM_SIMD_SSE
  // The same 32-bit sums four lanes at a time.
  static void block(const __m128i* in, __m128i* out) {
    wide32(in, out, [](const V* w, V* o) {
      const V y32 = add32(add32(mul32(w[0], 19595), mul32(w[1], 38470)), mul32(w[2], 7471));
      const V half = set32(32768);
      o[0] = sra32<16>(add32(y32, half));
      o[1] = add32(sra32<16>(mul32(sra32<16>(add32(sub32(sll32<16>(w[2]), y32), half)), 32244)), set32(128));
      o[2] = add32(sra32<16>(mul32(sra32<16>(add32(sub32(sll32<16>(w[0]), y32), half)), 57475)), set32(128));
    });
    out[1] = _mm_and_si128(out[1], set16(255));  // U is stored as its low byte
    out[2] = clamp8(out[2]);
  }
#endif
};

// ---------------------------------------------------------------------------
// Inverse YUV
// ---------------------------------------------------------------------------

// IU1: chroma << 3, no rounding: clamp8 of the saturated sums.
struct IU1 {
  static void pixel(const int* in, int* out) {
    const int y = in[0], ua = (in[1] - 128) << 3, va = (in[2] - 128) << 3;
    out[0] = clamp8(adds16s(y, mulhi16s(va, 9339)));
    out[1] = clamp8(adds16s(adds16s(y, mulhi16s(ua, -3228)), mulhi16s(va, -4760)));
    out[2] = clamp8(adds16s(y, mulhi16s(ua, 16646)));
  }
#if LUM_SIMD_SSE
  static void block(const __m128i* in, __m128i* out) {
    const V y = in[0];
    const V ua = sll16<3>(sub16(in[1], set16(128))), va = sll16<3>(sub16(in[2], set16(128)));
    out[0] = clamp8(adds16s(y, mulhi16s(va, set16(9339))));
    out[1] = clamp8(adds16s(adds16s(y, mulhi16s(ua, set16(-3228))), mulhi16s(va, set16(-4760))));
    out[2] = clamp8(adds16s(y, mulhi16s(ua, set16(16646))));
  }
#endif
};

// IU2: chroma << 4 against 2Y, then >> 1 without rounding.
struct IU2 {
  static void pixel(const int* in, int* out) {
    const int y = 2 * in[0], ub = (in[1] - 128) << 4, vb = (in[2] - 128) << 4;
    out[0] = clamp8(adds16s(y, mulhi16s(vb, 9338)) >> 1);
    out[1] = clamp8(adds16s(adds16s(y, mulhi16s(ub, -3227)), mulhi16s(vb, -4759)) >> 1);
    out[2] = clamp8(adds16s(y, mulhi16s(ub, 16645)) >> 1);
  }
#if LUM_SIMD_SSE
  static void block(const __m128i* in, __m128i* out) {
    const V y = sll16<1>(in[0]);
    const V ub = sll16<4>(sub16(in[1], set16(128))), vb = sll16<4>(sub16(in[2], set16(128)));
    out[0] = clamp8(sra16<1>(adds16s(y, mulhi16s(vb, set16(9338)))));
    out[1] = clamp8(sra16<1>(adds16s(adds16s(y, mulhi16s(ub, set16(-3227))), mulhi16s(vb, set16(-4759)))));
    out[2] = clamp8(sra16<1>(adds16s(y, mulhi16s(ub, set16(16645)))));
  }
#endif
};

// IU3: chroma << 7 against Y << 3, add 4, >> 3.
struct IU3 {
  static void pixel(const int* in, int* out) {
    const int y = in[0] << 3, uc = (in[1] - 128) << 7, vc = (in[2] - 128) << 7;
    out[0] = clamp8(adds16s(adds16s(y, mulhi16s(vc, 4669)), 4) >> 3);
    out[1] = clamp8(adds16s(subs16s(subs16s(y, mulhi16s(uc, 1614)), mulhi16s(vc, 2380)), 4) >> 3);
    out[2] = clamp8(adds16s(adds16s(y, mulhi16s(uc, 8323)), 4) >> 3);
  }
#if LUM_SIMD_SSE
  static void block(const __m128i* in, __m128i* out) {
    const V y = sll16<3>(in[0]), four = set16(4);
    const V uc = sll16<7>(sub16(in[1], set16(128))), vc = sll16<7>(sub16(in[2], set16(128)));
    out[0] = clamp8(sra16<3>(adds16s(adds16s(y, mulhi16s(vc, set16(4669))), four)));
    out[1] = clamp8(sra16<3>(adds16s(subs16s(subs16s(y, mulhi16s(uc, set16(1614))), mulhi16s(vc, set16(2380))), four)));
    out[2] = clamp8(sra16<3>(adds16s(adds16s(y, mulhi16s(uc, set16(8323))), four)));
  }
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
#if LUM_SIMD_SSE
  // The same 32-bit sums four lanes at a time; the clamp equals the table's.
  static void block(const __m128i* in, __m128i* out) {
    wide32(in, out, [](const V* w, V* o) {
      const V y = sll32<16>(w[0]);
      const V u = sub32(w[1], set32(128)), v = sub32(w[2], set32(128));
      o[0] = sra32<16>(add32(add32(y, mul32(v, CrR)), set32(RndR)));
      o[1] = sra32<16>(add32(sub32(sub32(y, mul32(u, CbG)), mul32(v, CrG)), set32(RndG)));
      o[2] = sra32<16>(add32(add32(y, mul32(u, CbB)), set32(RndB)));
    });
    for (int k = 0; k < 3; ++k) out[k] = clamp8(out[k]);
  }
#endif
};
// SU1 rounds R and B but truncates G.
using SU1 = SUTail<74711, 25821, 38076, 133169, 32768, 0, 32768>;
using SU2 = SUTail<74710, 25820, 38075, 133168, 0, 0, 0>;
using SU3 = SUTail<74711, 25821, 38076, 133169, 32768, 32768, 32768>;

}  // namespace lum::form
