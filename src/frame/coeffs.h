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
// CIE XYZ: linear RGB with BT.709 primaries and the D65 white point.
// ---------------------------------------------------------------------------
namespace cie {

// CIE XYZ
// Forward and inverse matrices in single precision, rows by output channel
// (X, Y, Z from R, G, B; R, G, B from X, Y, Z).
inline constexpr float kRGBToXYZ[3][3] = {
    {0.412453f, 0.357580f, 0.180423f},
    {0.212671f, 0.715160f, 0.072169f},
    {0.019334f, 0.119193f, 0.950227f},
};
inline constexpr float kXYZToRGB[3][3] = {
    {3.240479f, -1.537150f, -0.498535f},
    {-0.969256f, 1.875991f, 0.041556f},
    {0.055648f, -0.204043f, 1.057311f},
};
// Integer matrices of the 8u forms: block rows at 2^-15 and 2^-13, tail rows at
// 2^-16. The two sets of one direction are not the same numbers at one scale.
inline constexpr int kRGBToXYZBlockQ15[3][3] = {{13515, 11717, 5912}, {6969, 23434, 2365}, {634, 3906, 31137}};
inline constexpr int kRGBToXYZTailQ16[3][3] = {{27030, 23434, 11824}, {13937, 46868, 4729}, {1267, 7811, 62274}};
inline constexpr int kXYZToRGBBlockQ13[3][3] = {{26546, -12591, -4083}, {-7939, 15368, 340}, {456, -1671, 8661}};
inline constexpr int kXYZToRGBTailQ16[3][3] = {
    {212368, -100738, -32671}, {-63521, 122944, 2723}, {3646, -13372, 69291}};

// CIE LUV
// White point in u', v': forward direction and block paths, and the 8u/16u/16s
// reverse tails' own (longer) values.
inline constexpr float kWhiteU = 0.197839f, kWhiteV = 0.468342f;
inline constexpr float kWhiteUTail = 0.19783941f, kWhiteVTail = 0.46834221f;
// Linear segment: Y at or below kYBreak gives L = kLinearL * Y; reverse break on
// L and the reverse slope 1/903.3 of the block paths.
inline constexpr float kYBreak = 0.008856f, kLinearL = 903.3f;
inline constexpr float kYBreak16 = 580.378f;  // kYBreak on the 0..65535 sample scale
inline constexpr float kLBreak = 7.9996247f, kLinearY = 0.001107052f;
// Cube segment: L = 116 Y^(1/3) - 16; reverse factor 1/116 of the block paths.
inline constexpr float kCubeL = 116.0f, kCubeOff = 16.0f, kInv116 = 0.00862069f;
// Row index of the cube-root table from Y on 0..1, and Y on 0..65535 to 0..1.
inline constexpr float kRowScale = 127.99805f, kInv65535 = 1.5259022e-5f;
// Coefficients of the binomial series of (1 + t)^(1/3) by power, as magnitudes
// (signs alternate from +t); kSeries8uT4 is the 8u series' fourth-power coefficient.
inline constexpr float kSeries[8] = {0.33333334f, 0.11111111f, 0.061728396f, 0.041152265f,
                                     0.030178327f, 0.023472032f, 0.01900117f, 0.015834307f};
inline constexpr float kSeries8uT4 = 0.030178327f;
// 8u samples to 0..1.
inline constexpr float kInv255 = 0.003921569f;
// Scales of the L, U, V samples (U + 134, V + 140 on 8u and 16u).
inline constexpr float kLTo8u = 2.55f, kUTo8u = 0.720339f, kVTo8u = 0.97328246f;
inline constexpr float kLTo16u = 655.35f, kUTo16u = 185.12712f, kVTo16u = 250.13359f;
inline constexpr float kUOff = 134.0f, kVOff = 140.0f;
// Reverse scales of the block paths: 8u samples to L, U, V, and 16u ones.
inline constexpr float kL8uTo = 0.39215687f, kU8uTo = 1.3882353f, kV8uTo = 1.027451f;
inline constexpr float kL16uTo = 0.0015259f, kU16uTo = 0.00540169f, kV16uTo = 0.00399786f;
// Guards of the reverse direction: the L floor, the v' floor of the block paths
// and the integer tails, and the v' floor of the 32f tail.
inline constexpr float kLFloor = 9e-5f, kVFloor = 1.1920929e-5f, kVFloor32fTail = 1.1920929e-7f;
// Reverse matrix's blue row in the integer tails: Z's coefficient widened to double.
inline constexpr double kZToB64 = 1.057311;

}  // namespace cie

// ---------------------------------------------------------------------------
// Photo YCC: luma and two chroma channels with head-room above white; neutral
// chroma at 156/255 (C1) and 137/255 (C2).
// ---------------------------------------------------------------------------
namespace ycc {

// Photo YCC forms
// Luma weights of R, G, B, single precision (16u, 16s, 32f forms).
inline constexpr float kLumaF[3] = {0.299f, 0.587f, 0.114f};
// Forward factors on the luma and the two colour differences: Y = 0.7132668 L
// (1/1.402), C1 = 0.4368627 (B - L), C2 = 0.53192 (R - L) in 32f and
// 0.5319216 in 16u and 16s.
inline constexpr float kFwdY = 0.7132668f, kFwdC1 = 0.4368627f;
inline constexpr float kFwdC2F32 = 0.53192f, kFwdC2U16 = 0.5319216f;
// Neutral chroma on the 0..1 scale and on the 16-bit sample scale (x 257).
inline constexpr float kC1F32 = 0.6117647f, kC2F32 = 0.5372549f;
inline constexpr int kC1U16 = 40092, kC2U16 = 35209;
// Bias between a 16s sample and its 16u value.
inline constexpr int kBias16s = 32768;
// Reverse factors: s = 1.3584 Y, b = 2.2179 (C1 - c1), r = 1.8215 (C2 - c2);
// G takes 0.194 b and 0.509 r off s.
inline constexpr float kInvY = 1.3584f, kInvB = 2.2179f, kInvR = 1.8215f;
inline constexpr float kInvGb = 0.194f, kInvGr = 0.509f;
// The green factors of the 16-bit tail folded with the chroma factors
// (0.194 x 2.2179, 0.509 x 1.8215), and its rounding add.
inline constexpr float kInvGc1 = 0.4302726f, kInvGc2 = 0.92714345f;
inline constexpr float kHalfDown = 0.49999f;
// 8u forward, Q14 luma weights; Y, C1 and C2 factors Q16 of (sum >> 10).
inline constexpr int kLumaQ14[3] = {4898, 9617, 1867};
inline constexpr int kFwdYQ16 = 2921, kFwdC1Q16 = 1789, kFwdC2Q16 = 2178;
inline constexpr int kC1U8 = 156, kC2U8 = 137;
// 8u reverse, Q12: luma 5564, C1 9084, C2 7460, each chroma product offset by
// its neutral value (9084 x 156, 7460 x 137); the green terms take 794 and
// 2084 of the chroma products >> 8, at Q16.
inline constexpr int kInvYQ12 = 5564, kInvC1Q12 = 9084, kInvC2Q12 = 7460;
inline constexpr int kInvC1Off = 1417104, kInvC2Off = 1022020;
inline constexpr int kInvGc1Q16 = 794, kInvGc2Q16 = 2084;

}  // namespace ycc


// ---------------------------------------------------------------------------
// CIE Lab over the matrices of CIE XYZ, D65 white.
// ---------------------------------------------------------------------------
namespace lab {

// Lab forms
// Forward white factors of X and Z (Y's is 1), and the same folded with the 8u
// sample scale 1/255 (X, Y, Z).
inline constexpr float kWhiteX = 1.0521265f, kWhiteZ = 0.9184812f;
inline constexpr float kWhite8u[3] = {0.0041259914f, 0.003921569f, 0.0036018905f};
// f(t) below the break (cie::kYBreak): 7.787 t + 0.13793103.
inline constexpr float kSlope = 7.787f, kOffset = 0.13793103f;
// a = 500 (f(X) - f(Y)), b = 200 (f(Y) - f(Z)); a and b samples centred at 128,
// 16-bit ones at 128 x 255.
inline constexpr float kA = 500.0f, kB = 200.0f, kAbOff = 128.0f, kAbTo16u = 255.0f;
// Series of the 8u16u form: the last two coefficients as it stores them.
inline constexpr float kSeries16[8] = {0.33333334f, 0.11111111f, 0.061728396f, 0.041152265f,
                                       0.030178327f, 0.023472032f, 0.0190012f, 0.0158343f};
// Reverse: P = (L + 16) / 116, Q = P + a / 500, R = P - b / 200; X and Z
// factors of the white point, and the same folded with 255 for 8u output.
inline constexpr float kInvA = 0.002f, kInvB = 0.005f;
inline constexpr float kInvWhite[3] = {0.950456f, 1.0f, 1.0887539f};
inline constexpr float kInvWhite8u[3] = {242.366f, 255.0f, 277.632f};
// 16u Lab samples read back: L = sample x 0.0015259022, a, b = sample / 255 - 128.
inline constexpr float kL16uTo = 0.0015259022f;

// Double forms: the single constants widened, except those exact to double.
inline constexpr double kWhiteX64 = 1.0521265327391165, kWhiteZ64 = 0.9184811767477967;
inline constexpr double kBreak64 = 0.008856000378727913, kSlope64 = 7.7870001792907715;
inline constexpr double kOffset64 = 0.13793103448275862, kLinearL64 = 903.2999877929688;
inline constexpr double kInv116_64 = 0.008620689655172414, kInvA64 = 0.002, kInvB64 = 0.005;
// Series of the 53-bit cube root, (1 + t)^(1/3) = 1 + t Q(t), Q's coefficients
// from the constant term up.
inline constexpr double kCbrtQ[8] = {0.3333333333333333,   -0.1111111111111111,  0.06172839506172839,
                                     -0.0411522633744856,  0.03017832647462277,  -0.023472031702484377,
                                     0.019001168521058782, -0.01583430710088232};

}  // namespace lab
// YCoCg forms
// ---------------------------------------------------------------------------
namespace ycocg {

// Bias of Co and Cg on 8u planes, and the upper limit of 8u samples.
inline constexpr int kChromaBias8u = 128;
inline constexpr int kMax8u = 255;

}  // namespace ycocg

// ---------------------------------------------------------------------------
// BT.709 transfer function of the 32f gamma forms, in the precision each form computes.
// ---------------------------------------------------------------------------
namespace gamma709 {

// Gamma forms
// Forward: 4.5 x below 0.018, else 1.099 x^0.45 - 0.099.
inline constexpr float kFwdSlope = 4.5f, kFwdBreak = 0.018f, kFwdGain = 1.099f, kFwdOffset = 0.099f;
inline constexpr float kFwdPower = 0.45f;  // bits 0x3EE66666
// Inverse: x / 4.5 below 0.0812, else ((x + 0.099) / 1.099)^(1 / 0.45).
inline constexpr float kInvSlope = 0.22222222f, kInvBreak = 0.0812f, kInvOffset = 0.099f, kInvGain = 0.9099181f;
inline constexpr float kInvPower = 2.2222223f;  // bits 0x400E38E4
// The same constants in double precision, where n and the base are doubles.
inline constexpr double kInvBreakD = 0.0812, kInvOffsetD = 0.099, kInvGainD = 0.9099181;

}  // namespace gamma709

// ---------------------------------------------------------------------------
// AHD homogeneity measure: BT.601 YCbCr in Q8, no offset, no clamp.
// ---------------------------------------------------------------------------
namespace ahd {

// Demosaic homogeneity forms
inline constexpr int kYr = 66, kYg = 129, kYb = 25;
inline constexpr int kCbr = -38, kCbg = -74, kCbb = 112;
inline constexpr int kCrr = 112, kCrg = -94, kCrb = -18;

}  // namespace ahd

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
