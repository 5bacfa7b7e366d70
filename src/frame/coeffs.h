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

}  // namespace bt601

// ---------------------------------------------------------------------------
// YUV: BT.601 full-swing luma with the scaled colour differences U and V.
// ---------------------------------------------------------------------------
namespace yuv {

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

}  // namespace lum::coef
