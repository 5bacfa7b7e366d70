/* Compile test of the public header in plain C99: the header must parse as C, and
 * the signatures below must match the declarations exactly (each function's address
 * is taken into a pointer of the expected type, so any difference in a parameter's
 * type, const-ness or order is a compile error under -Werror). */
#include "lumcc.h"

/* Version. */
typedef const LumLibraryVersion* (*VersionFn)(void);

/* RGB, YCbCr and YUV at 4:4:4. */
typedef LumStatus (*PackedFn8u)(const Lum8u*, int, Lum8u*, int, LumSize);
typedef LumStatus (*P3ToC4Fn8u)(const Lum8u* const[3], int, Lum8u*, int, LumSize, Lum8u);
typedef LumStatus (*C3ToP4Fn8u)(const Lum8u*, int, Lum8u* const[4], int, LumSize);

/* 4:2:2, 4:2:0 and dense forms. */
typedef LumStatus (*C3ToP3ArrFn)(const Lum8u*, int, Lum8u* const[3], const int[3], LumSize);
typedef LumStatus (*P2ToC4Fn)(const Lum8u*, int, const Lum8u*, int, Lum8u*, int, LumSize, Lum8u);
typedef LumStatus (*DenseP3ToC3Fn)(const Lum8u* const[3], Lum8u*, LumSize);
typedef LumStatus (*P3ArrToP3Fn)(const Lum8u* const[3], const int[3], Lum8u* const[3], int, LumSize);

/* v210 and gray. */
typedef LumStatus (*V210Fn)(const Lum32u*, int, Lum16u*, int, LumSize);
typedef LumStatus (*ColorToGray64fFn)(const Lum64f*, int, Lum64f*, int, LumSize, const Lum64f[3]);

/* Chroma layouts, filters, interlaced. */
typedef LumStatus (*P3ToP2Fn)(const Lum8u* const[3], const int[3], Lum8u*, int, Lum8u*, int, LumSize);
typedef LumStatus (*DeinterlaceFn)(const Lum8u*, int, const Lum8u*, int, Lum8u* const[3], const int[3], LumSize, int);

/* Colour models. */
typedef LumStatus (*Packed16sFn)(const Lum16s*, int, Lum16s*, int, LumSize);
typedef LumStatus (*LabP3LFn)(const Lum64f* const[3], const LumLong[3], Lum64f* const[3], const LumLong[3], LumSizeL);
typedef LumStatus (*HlsAP4Fn)(const Lum8u* const[4], int, Lum8u* const[4], int, LumSize);
typedef LumStatus (*YCoCgInvFn)(const Lum32s* const[3], int, Lum16s*, int, LumSize, Lum16s);

/* Gamma, twist, tone map, pack. */
typedef LumStatus (*Gamma32fIP3Fn)(Lum32f* const[3], int, LumSize, Lum32f, Lum32f);
typedef LumStatus (*Twist16uFn)(const Lum16u* const[3], int, Lum16u* const[3], int, LumSize, const Lum32f[3][4]);
typedef LumStatus (*Twist4x4Fn)(const Lum32f*, int, Lum32f*, int, LumSize, const Lum32f[4][4]);
typedef LumStatus (*ToneMapFn)(const Lum32f*, int, Lum8u*, int, LumSize);
typedef LumStatus (*PackFn)(const Lum16u*, int, Lum8u*, int, LumSize);

/* Bit-depth reduction. */
typedef LumStatus (*ReduceSizeFn)(int, LumSize, int, LumDitherKind, int*);
typedef LumStatus (*Reduce32f16sFn)(const Lum32f*, int, Lum16s*, int, LumSize, int, LumDitherKind, int, Lum8u*);
typedef LumStatus (*Reduce1uFn)(const Lum8u*, int, Lum8u*, int, int, LumSize, int, Lum32u, LumDitherKind, Lum8u,
                                Lum8u*);

/* Demosaicing. */
typedef LumStatus (*CfaFn16u)(const Lum16u*, LumRect, LumSize, int, Lum16u*, int, LumCfaGrid);
typedef LumStatus (*VngLFn8u)(const Lum8u*, LumRectL, LumSizeL, LumLong, const Lum32f*, Lum8u*, LumLong, LumCfaGrid);
typedef LumStatus (*AhdFn8u)(const Lum8u*, LumRect, LumSize, int, Lum8u*, int, LumCfaGrid, Lum8u*, int);

int lumcc_header_c99_check(void);

int lumcc_header_c99_check(void) {
    VersionFn version = &lumccGetLibVersion;
    PackedFn8u packed[3];
    P3ToC4Fn8u p3c4 = &lumiYCbCrToBGR_8u_P3C4R;
    C3ToP4Fn8u c3p4 = &lumiRGBToYUV_8u_AC4P4R;
    C3ToP3ArrFn c3p3 = &lumiBGRToYCbCr420_8u_C3P3R;
    P2ToC4Fn p2c4 = &lumiYCrCb420ToBGR_8u_P2C4R;
    DenseP3ToC3Fn dense = &lumiYUV420ToRGB_8u_P3C3;
    P3ArrToP3Fn yuv422p3 = &lumiYUV422ToRGB_8u_P3R;
    V210Fn v210 = &lumiYUV422v210ToGray_709HDTV_32u16u_C3C1;
    ColorToGray64fFn gray = &lumiColorToGray_64f_AC4C1R;
    P3ToP2Fn p3p2 = &lumiYCrCb420ToYCbCr420_8u_P3P2R;
    DeinterlaceFn deint = &lumiYCbCr420ToYCrCb420_Filter_8u_P2P3R;
    Packed16sFn luv = &lumiRGBToLUV_16s_AC4R;
    LabP3LFn lab = &lumiLabToRGB_64f_P3R_L;
    HlsAP4Fn hls = &lumiHLSToBGR_8u_AP4R;
    YCoCgInvFn ycocg = &lumiYCoCgToSBGR_Rev_32s16s_P3C4R;
    Gamma32fIP3Fn gamma = &lumiGammaInv_32f_IP3R;
    Twist16uFn twist = &lumiColorTwist32f_16u_P3R;
    Twist4x4Fn twist4 = &lumiColorTwist_32f_C4R;
    ToneMapFn tone = &lumiToneMapMean_32f8u_C1R;
    PackFn pack = &lumiPack_16u12u_C1R;
    ReduceSizeFn rsize = &lumiReduceBitsGetBufferSize;
    Reduce32f16sFn reduce = &lumiReduceBits_32f16s_AC4R;
    Reduce1uFn reduce1 = &lumiReduceBits_8u1u_C1R;
    CfaFn16u cfa = &lumiCFAToRGB_16u_C1C3R;
    VngLFn8u vng = &lumiCFAToBGRA_VNG_8u_C1C4R_L;
    AhdFn8u ahd = &lumiDemosaicAHD_8u_C1C3R;
    const LumLibraryVersion* v;
    int sum = 0;

    packed[0] = &lumiRGBToYCbCr_8u_C3R;
    packed[1] = &lumiCbYCr422ToYCbCr422_8u_C2R;
    packed[2] = &lumiRGBToCbYCr422Gamma_8u_C3C2R;

    /* Every pointer is non-null; summing the tests keeps them all used. */
    sum += packed[0] != 0;
    sum += packed[1] != 0;
    sum += packed[2] != 0;
    sum += p3c4 != 0;
    sum += c3p4 != 0;
    sum += c3p3 != 0;
    sum += p2c4 != 0;
    sum += dense != 0;
    sum += yuv422p3 != 0;
    sum += v210 != 0;
    sum += gray != 0;
    sum += p3p2 != 0;
    sum += deint != 0;
    sum += luv != 0;
    sum += lab != 0;
    sum += hls != 0;
    sum += ycocg != 0;
    sum += gamma != 0;
    sum += twist != 0;
    sum += twist4 != 0;
    sum += tone != 0;
    sum += pack != 0;
    sum += rsize != 0;
    sum += reduce != 0;
    sum += reduce1 != 0;
    sum += cfa != 0;
    sum += vng != 0;
    sum += ahd != 0;

    /* The enumerations and status values are usable as constants. */
    sum += lumCfaGRBG + lumDitherOrdered + lumReduceLayoutAC4 + lumSliceWhole;
    sum += lumStatusOk - lumStatusBadDitherKind;

    v = version();
    return (sum > 0 && v != 0) ? v->major : 0;
}
