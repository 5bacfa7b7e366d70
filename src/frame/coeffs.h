// Constants of the colour standards, in one place that scalar rules and vector
// blocks both read, so that the two can never drift apart. Each standard keeps
// its coefficients at the scales the forms use them (Q15 of samples << 7, Q16
// of samples, ...); the scale is in the name. Where two forms of a standard
// differ by a unit in the last place on purpose, both values stand here, each
// named after the form that uses it.
#pragma once

namespace lum::coef {

// ---------------------------------------------------------------------------
// BT.601, studio range: Y in 16..235, Cb and Cr in 16..240.
// ---------------------------------------------------------------------------
namespace bt601 {

// RGB -> YCbCr forms (full resolution, 4:2:2, 4:2:0, 4:1:1). Luma weights
// 0.257, 0.504, 0.098; Cb = 0.439 B - 0.291 G - 0.148 R; Cr = 0.439 R - 0.368 G
// - 0.071 B.
// Q14, taken as Q15 products of samples << 7 (a result at the scale of 64).
inline constexpr int kYR14 = 4211, kYG14 = 8258, kYB14 = 1606;
inline constexpr int kCbB14 = 7193, kCbG14 = 4768, kCbR14 = 2425;
inline constexpr int kCrR14 = 7193, kCrG14 = 6029, kCrB14 = 1163;
// Halves of the Q14 chroma weights, for the neighbours of the three-tap filter:
// the subtracted ones round up (1213, 3015, 582).
inline constexpr int kCbB14Half = 3596, kCbG14Half = 2384, kCbR14Half = 1213;
inline constexpr int kCrR14Half = 3596, kCrG14Half = 3015, kCrB14Half = 582;
// Q16.
inline constexpr int kYR16 = 16843, kYG16 = 33030, kYB16 = 6423;
inline constexpr int kCbR16 = 9699, kCbG16 = 19071, kCbB16 = 28770;
inline constexpr int kCrR16 = 28770, kCrG16 = 24117, kCrB16 = 4653;
// Q15, for unsigned high products of samples << 8 (luma) or sums << 7 (chroma
// of the high-multiply pair block). The chroma halves of the Q16 weights round
// each its own way: 9535 and 12058 down, 4850 and 2327 up.
inline constexpr int kYR15 = 8422, kYG15 = 16515, kYB15 = 3212;
inline constexpr int kCbB15 = 14385, kCbG15 = 9535, kCbR15 = 4850;
inline constexpr int kCrR15 = 14385, kCrG15 = 12058, kCrB15 = 2327;

// YCbCr -> RGB forms: Y' = 1.164 (Y - 16); R = Y' + 1.596 Cr', G = Y' - 0.392
// Cb' - 0.813 Cr', B = Y' + 2.017 Cb' (Cb', Cr' = chroma - 128).
// Q12 (IY1, the 4:2:0 folded set).
inline constexpr int kY12 = 4769, kCrR12 = 6537, kCbG12 = 1605, kCrG12 = 3330, kCbB12 = 8263;
// Q12 of the 4:2:2 folded set (IY4): luma and blue one lower, green from Cb one higher.
inline constexpr int kY12Folded422 = 4768, kCbG12Folded422 = 1606, kCbB12Folded422 = 8262;
// Q12 of the YCbCr422 -> BGRA kernel: luma and blue two lower than IY1's.
inline constexpr int kY12Bgra = 4767, kCbB12Bgra = 8261;
// Q13 (IY2).
inline constexpr int kY13 = 9535, kCrR13 = 13074, kCbG13 = 3211, kCrG13 = 6660, kCbB13 = 16523;
// IY3's own luma and Cb-to-G weights.
inline constexpr int kY13Iy3 = 9536, kCbG13Iy3 = 3203;
// Q16 of the tails: SY1, then SY2 and SY3, then the 4:1:1 tail.
inline constexpr int kY16Sy1 = 76282, kCrR16Sy1 = 104593, kCbG16Sy1 = 25689, kCrG16Sy1 = 53279, kCbB16Sy1 = 132184;
inline constexpr int kY16Sy2 = 76284, kCrR16Sy2 = 104595, kCbG16Sy2 = 25690, kCrG16Sy2 = 53281, kCbB16Sy2 = 132186;
inline constexpr int kY16Sy411 = 76294, kCbG16Sy411 = 25625;

}  // namespace bt601

// ---------------------------------------------------------------------------
// YUV: BT.601 full-swing luma with the scaled colour differences U and V.
// ---------------------------------------------------------------------------
namespace yuv {

// RGB -> YUV forms (full resolution, 4:2:2, 4:2:0). Luma weights 0.299, 0.587,
// 0.114; U = 0.492 (B - Y), V = 0.877 (R - Y).
inline constexpr int kYR14 = 4899, kYG14 = 9617, kYB14 = 1868;
inline constexpr int kYR15 = 9798, kYG15 = 19235, kYB15 = 3736;
// Q16 luma: green is 38470 (weights summing to 65536) or, in the forms that
// use it, 38469 (summing to 65535).
inline constexpr int kYR16 = 19595, kYG16 = 38470, kYG16Low = 38469, kYB16 = 7471;
inline constexpr int kU14 = 8061, kV14 = 14369;
inline constexpr int kU15 = 16121, kV15 = 28737;
inline constexpr int kU16 = 32244, kV16 = 57475;

// YUV -> RGB forms: R = Y + 1.140 V, G = Y - 0.394 U - 0.581 V, B = Y + 2.032 U.
// Q13; blue is 16646 or, in the forms that use it, 16645.
inline constexpr int kVR13 = 9338, kUG13 = 3227, kVG13 = 4759, kUB13 = 16646, kUB13Low = 16645;
// IU1's red and green weights, one higher.
inline constexpr int kVR13Iu1 = 9339, kUG13Iu1 = 3228, kVG13Iu1 = 4760;
// Q12 (IU3).
inline constexpr int kVR12 = 4669, kUG12 = 1614, kVG12 = 2380, kUB12 = 8323;
// Q16 of the tails: SU1, SU3 and SU4, then SU2 (one lower throughout).
inline constexpr int kVR16 = 74711, kUG16 = 25821, kVG16 = 38076, kUB16 = 133169;
inline constexpr int kVR16Low = 74710, kUG16Low = 25820, kVG16Low = 38075, kUB16Low = 133168;

}  // namespace yuv

// ---------------------------------------------------------------------------
// BT.709, studio range.
// ---------------------------------------------------------------------------
namespace bt709 {

// BT.709 conversions: 709CSC (studio range) and 709HDTV (full-scale luma)
// Forward block luma: Q15 weights of R, G, B taken by high products of
// samples << 8, so the sum is at scale 128; the add is offset plus rounding there.
inline constexpr int kCscLumaQ15[3] = {5997, 20120, 2032};  // 0.183 0.614 0.062
inline constexpr int kCscLumaAddX128 = 2112;                // 16.5
inline constexpr int kHdtvLumaQ15[3] = {6980, 23429, 2359};  // 0.213 0.715 0.072
inline constexpr int kHdtvLumaAddX128 = 64;                  // 0.5
// Forward block chroma of 709CSC on cell sums << 5, Q16: the main channel's
// weight and the two others' (Cb: R, G; Cr: G, B); the add is 128.125 at scale 128.
inline constexpr int kCscChromaMainQ16 = 28770;              // 0.439
inline constexpr int kCscCbQ16[2] = {6619, 22151};           // 0.101 0.338
inline constexpr int kCscCrQ16[2] = {26149, 2621};           // 0.399 0.040
inline constexpr int kCscChromaAddX128 = 16400;
// Forward block chroma of 709HDTV on sums << 5 (cells) or << 6 (pairs), Q15;
// the add is 128.5 at scale 64.
inline constexpr int kHdtvChromaMainQ15 = 16744;             // 0.511
inline constexpr int kHdtvCbQ15[2] = {3834, 12911};          // 0.117 0.394
inline constexpr int kHdtvCrQ15[2] = {15204, 1540};          // 0.464 0.047
inline constexpr int kHdtvChromaAddX64 = 8224;
// Forward tails: 32-bit sums of Q16 weights, one rounding.
inline constexpr int kCscLumaQ16[3] = {11993, 40239, 4063};
inline constexpr int kCscLumaAddQ16 = 0x108000;               // 16.5
inline constexpr int kHdtvLumaQ16[3] = {13959, 46858, 4719};
inline constexpr int kHdtvChromaMainQ16 = 33489;
inline constexpr int kHdtvCbQ16[2] = {7668, 25821};           // R, G
inline constexpr int kHdtvCrQ16[2] = {30409, 3080};           // G, B
// Chroma adds of the tails, at the scale of their sums: 128.125 on cells (Q18),
// 128.5 on a lone pixel (Q16) and on pairs (Q17); the Cr add of pairs is 2
// below the Cb add on purpose.
inline constexpr int kCellChromaAddQ18 = 0x2008000;
inline constexpr int kLoneCbAddQ16 = 0x808000;
inline constexpr int kPairCbAddQ17 = 0x1010000;
inline constexpr int kPairCrAddQ17 = 0x100FFFE;
// Inverse blocks, Q13 (high products of (c - 128) << 7 at luma scale 16):
// R from Cr, B from Cb, and the green terms of Cr and Cb.
inline constexpr int kCscLumaGainQ13 = 9535;                  // 1.164
inline constexpr int kCscInvQ13[4] = {14688, 17326, 4375, 1745};  // 1.793 2.115 0.534 0.213
inline constexpr int kHdtvInvQ13[4] = {12616, 14877, 3760, 1499};  // 1.540 1.816 0.459 0.183
// Inverse tails, Q16, in the same order, and the studio luma gain.
inline constexpr int kCscLumaGainQ16 = 76284;
inline constexpr int kCscInvQ16[4] = {117506, 138609, 34996, 13959};
inline constexpr int kHdtvInvQ16[4] = {100925, 119013, 30081, 11993};
// v210 to 5-6-5: single-precision factors of Cr for R and G, of Cb for G and B.
inline constexpr float kV210Rv = 1.54f, kV210Gv = -0.459f, kV210Gu = -0.183f, kV210Bu = 1.816f;

}  // namespace bt709

// ---------------------------------------------------------------------------
// Gray: luma weights of the gray conversions.
// ---------------------------------------------------------------------------
namespace gray {

// Gray conversions
// Luma weights of R, G, B in single precision (the float forms, and the default of the 8u ones).
inline constexpr float kWeightsF32[3] = {0.299f, 0.587f, 0.114f};
// The same as Q15 integers, int(double(w) * 32768 + 0.5): the 8u default.
inline constexpr int kWeightsQ15[3] = {9798, 19235, 3736};
// Rounding of the 8u block sum (scale 128) and of the 8u tail sum (Q15).
inline constexpr int kRoundX128 = 64;
inline constexpr int kRoundQ15 = 16384;

}  // namespace gray

// ---------------------------------------------------------------------------
// HLS and HSV: single-precision constants of the hexcone models.
// ---------------------------------------------------------------------------
namespace hue {

// HLS and HSV forms
// Hue sectors in degrees.
inline constexpr float kDeg60 = 60.0f, kDeg120 = 120.0f, kDeg240 = 240.0f, kDeg360 = 360.0f;
// 1/60: the sector width's reciprocal of the block paths (and of every path but the 8u HLS tails).
inline constexpr float kPer60 = 0.016666667f;
// Degrees to hue codes: 255/360 for 8u, 65535/360 for 16u and 16s.
inline constexpr float kHue8uPerDeg = 0.7083333f, kHue16uPerDeg = 182.04167f;
// Hue codes to degrees: 360/255 for 8u, 360/65535 for 16u and 16s, 360 for 32f.
inline constexpr float kDegPer8u = 1.4117647f, kDegPer16u = 0.00549325f;
// Code to 0..1: 1/255 and 1/65535.
inline constexpr float kUnitPer8u = 0.003921569f, kUnitPer16u = 1.5259022e-5f;
// Largest 32f spread max - min still taken as gray (FLT_EPSILON).
inline constexpr float kGray32f = 1.1920929e-7f;
// 8u HSV hue: one sector of the 0..255 circle (255 / 6).
inline constexpr float kHsv8uSector = 42.5f;

}  // namespace hue

}  // namespace lum::coef
