/*
 * lumcc.h - public interface of the lumcc colour-conversion library.
 *
 * lumcc converts rectangular regions of images that live in the caller's memory:
 * RGB to and from luma-chroma video forms (4:4:4, 4:2:2, 4:2:0, 4:1:1, BT.709,
 * v210), gray, chroma layouts (NV12, YUY2, UYVY, YV12 ...), the colour models
 * XYZ, LUV, Lab, Photo YCC, HLS, HSV and YCoCg, gamma, colour twist, tone
 * mapping, 12-bit packing, dithered bit-depth reduction and Bayer demosaicing.
 *
 * Conventions shared by every function:
 *  - A function returns a LumStatus: 0 is success, a negative value is a refusal
 *    (the destination is left untouched), a positive value is a warning (the
 *    destination is converted as far as the warning says).
 *  - An image is a pointer to the first pixel of the region of interest, a row
 *    step in bytes (larger than the row for a sub-region; zero or negative steps
 *    are accepted by the families that do not check steps), and a LumSize shared
 *    by all images of the call, passed by value.
 *  - A planar image is an array of plane pointers, first channel first (Y, Cb or
 *    U, Cr or V; R, G, B; ...). The array is never modified. Planes of one
 *    resolution share one step; planes of different resolutions take an array of
 *    three steps.
 *  - Names read lumi<Conversion>[_<Variant>]_<Samples>_<Layouts>[R][_L]: R takes
 *    row steps, no R means a dense image whose steps follow from the width, I is
 *    in place, _L takes long-size (LumLong) sizes, steps and positions.
 *  - The library keeps no state, allocates nothing and starts no threads; calls
 *    on separate destinations and scratch buffers may run concurrently.
 *
 * Plain C: usable from C99 and from C++.
 */
#ifndef LUMCC_H
#define LUMCC_H

#include <stddef.h>
#include <stdint.h>

/* Visibility of the exported functions; define LUMAPI beforehand to override. */
#ifndef LUMAPI
#if defined(__GNUC__)
#define LUMAPI __attribute__((visibility("default")))
#else
#define LUMAPI
#endif
#endif

#ifdef __cplusplus
extern "C" {
#endif

/* ------------------------------------------------------------------------ */
/* Sample types                                                             */
/* ------------------------------------------------------------------------ */

typedef uint8_t  Lum8u;   /**< unsigned 8-bit sample (tag 8u) */
typedef uint16_t Lum16u;  /**< unsigned 16-bit sample (tag 16u) */
typedef int16_t  Lum16s;  /**< signed 16-bit sample (tag 16s) */
typedef uint32_t Lum32u;  /**< 32-bit word, e.g. a v210 word of three 10-bit samples (tag 32u) */
typedef int32_t  Lum32s;  /**< signed 32-bit sample (tag 32s) */
typedef int64_t  Lum64s;  /**< signed 64-bit integer */
typedef float    Lum32f;  /**< IEEE 754 single-precision sample (tag 32f) */
typedef double   Lum64f;  /**< IEEE 754 double-precision sample (tag 64f) */

/* ------------------------------------------------------------------------ */
/* Status                                                                   */
/* ------------------------------------------------------------------------ */

/** Result of every function: 0 success, below 0 refusal, above 0 warning. */
typedef int32_t LumStatus;

/** The status values of the library. */
enum LumStatusValue {
    lumStatusOk               = 0,    /**< done */
    lumStatusNegativeMean     = 1,    /**< warning: the image's maximum or mean is negative, nothing written (tone map) */
    lumStatusOddSize          = 35,   /**< warning: odd width or height, the even part was converted, the rest left unwritten */
    lumStatusBadArgument      = -5,   /**< an enumerated argument is unknown (Bayer grid code) */
    lumStatusBadSize          = -6,   /**< a dimension is below the function's minimum, or a length below 1 */
    lumStatusNullPointer      = -8,   /**< a required pointer, or a plane pointer in an array, is null */
    lumStatusWrongState       = -13,  /**< a state record does not carry its tag */
    lumStatusBadStep          = -16,  /**< a row step is below 1 (gamma, colour twist, planar and AC4 BGR HLS, 12-bit pack) */
    lumStatusBadLayout        = -47,  /**< the layout code is not an accepted one (lumiReduceBitsGetBufferSize) */
    lumStatusBadRange         = -49,  /**< the upper end of a value range does not exceed the lower (32f gamma) */
    lumStatusLevelsOutOfRange = -54,  /**< a level count is outside 2..256, or 2..65536 for 16-bit destinations */
    lumStatusNoiseOutOfRange  = -55,  /**< noise outside 0..100 */
    lumStatusBadDitherKind    = -224  /**< unknown dither kind */
};

/* ------------------------------------------------------------------------ */
/* Sizes and rectangles                                                     */
/* ------------------------------------------------------------------------ */

/** Size of a region in pixels, passed by value. */
typedef struct {
    int32_t width;
    int32_t height;
} LumSize;

/** Rectangle in image coordinates, in pixels, passed by value (demosaicing). */
typedef struct {
    int32_t x, y, width, height;
} LumRect;

/** The platform's natural signed integer: sizes, steps and positions of the _L forms. */
typedef ptrdiff_t LumLong;

/** Long-size region size of the _L forms. */
typedef struct {
    LumLong width;
    LumLong height;
} LumSizeL;

/** Long-size rectangle of the _L forms. */
typedef struct {
    LumLong x, y, width, height;
} LumRectL;

/* ------------------------------------------------------------------------ */
/* Version record                                                           */
/* ------------------------------------------------------------------------ */

/** Version of the library; one constant record, never to be freed or changed. */
typedef struct {
    int32_t     major;        /**< year of the release, e.g. 2020 */
    int32_t     minor;        /**< minor release */
    int32_t     majorBuild;   /**< update number */
    int32_t     build;        /**< build revision */
    char        targetCpu[4]; /**< processor level of the build, zero-padded, e.g. "p8" */
    const char* name;         /**< library name, e.g. "lumCC SSE4.2 (p8)" */
    const char* version;      /**< version text, e.g. "2020.0.3 (r0x3390eac5)" */
    const char* buildDate;    /**< build date, e.g. "Sep 22 2020" */
} LumLibraryVersion;

/* ------------------------------------------------------------------------ */
/* Enumerations                                                             */
/* ------------------------------------------------------------------------ */

/** Bayer cell at the image's first pixel (row 0 / row 1), repeating with period 2. */
typedef enum {
    lumCfaBGGR = 0,  /**< B G / G R */
    lumCfaRGGB = 1,  /**< R G / G B */
    lumCfaGBRG = 2,  /**< G B / R G */
    lumCfaGRBG = 3   /**< G R / B G */
} LumCfaGrid;

/** Dither kind of the ReduceBits family. */
typedef enum {
    lumDitherOff               = 0,  /**< plain quantisation, no scratch buffer */
    lumDitherFloydSteinberg    = 1,  /**< error diffusion, needs a scratch buffer */
    lumDitherJarvisJudiceNinke = 2,  /**< error diffusion, needs a scratch buffer */
    lumDitherStucki            = 3,  /**< error diffusion, needs a scratch buffer */
    lumDitherOrdered           = 4   /**< 4x4 threshold matrix, scratch buffer only with noise */
} LumDitherKind;

/** Channel layout codes of lumiReduceBitsGetBufferSize (the result does not depend on them). */
typedef enum {
    lumReduceLayoutC1  = 1,  /**< one channel */
    lumReduceLayoutC3  = 3,  /**< three interleaved channels */
    lumReduceLayoutC4  = 4,  /**< four interleaved channels */
    lumReduceLayoutAC4 = 9   /**< four interleaved channels, the fourth alpha */
} LumReduceLayout;

/** Slice of a frame worked by the NV12 deinterlacing filters (argument `layout`).
 *  Exactly lumSliceFirst, lumSliceMiddle or lumSliceLast selects that slice; any
 *  value with all three bits set (lumSliceWhole) converts the whole frame in one
 *  call; any other value does nothing and returns lumStatusOk. A middle or last
 *  slice writes the two luma rows and the chroma row above its pointers (the
 *  slice above leaves them to it) and reads three luma rows and one chroma row
 *  above them. */
typedef enum {
    lumSliceFirst  = 1,   /**< the slice holds the frame's top */
    lumSliceMiddle = 4,   /**< a slice with neighbours above and below */
    lumSliceLast   = 16,  /**< the slice holds the frame's bottom */
    lumSliceWhole  = 21   /**< lumSliceFirst | lumSliceMiddle | lumSliceLast: the whole frame */
} LumSliceLayout;

/* -------------------------------------------------------------------------- */
/* Version                                                                    */
/* -------------------------------------------------------------------------- */

/** Returns the library's version record; the same pointer on every call. */
LUMAPI const LumLibraryVersion* lumccGetLibVersion(void);

/* -------------------------------------------------------------------------- */
/* RGB, YCbCr and YUV at 4:4:4                                                */
/* -------------------------------------------------------------------------- */
/* 8-bit samples; one srcStep and one dstStep serve all planes. YCbCr is BT.601
   studio range (Y 16..235, Cb Cr 16..240), YUV full range (U, V offset by 128).
   Checks: null pointers -> lumStatusNullPointer, width or height < 1 -> lumStatusBadSize. */

/** RGB to YCbCr, interleaved. */
LUMAPI LumStatus lumiRGBToYCbCr_8u_C3R(const Lum8u* pSrc, int srcStep, Lum8u* pDst, int dstStep, LumSize roiSize);
/** RGBA to YCbCrA; alpha becomes 0 in the block-processed columns and stays as it was in the tail. */
LUMAPI LumStatus lumiRGBToYCbCr_8u_AC4R(const Lum8u* pSrc, int srcStep, Lum8u* pDst, int dstStep, LumSize roiSize);
/** RGB to Y, Cb, Cr planes. */
LUMAPI LumStatus lumiRGBToYCbCr_8u_C3P3R(const Lum8u* pSrc, int srcStep, Lum8u* const pDst[3], int dstStep,
    LumSize roiSize);
/** RGBA to Y, Cb, Cr planes; source alpha ignored. */
LUMAPI LumStatus lumiRGBToYCbCr_8u_AC4P3R(const Lum8u* pSrc, int srcStep, Lum8u* const pDst[3], int dstStep,
    LumSize roiSize);
/** R, G, B planes to Y, Cb, Cr planes. */
LUMAPI LumStatus lumiRGBToYCbCr_8u_P3R(const Lum8u* const pSrc[3], int srcStep, Lum8u* const pDst[3], int dstStep,
    LumSize roiSize);
/** YCbCr to RGB, interleaved. */
LUMAPI LumStatus lumiYCbCrToRGB_8u_C3R(const Lum8u* pSrc, int srcStep, Lum8u* pDst, int dstStep, LumSize roiSize);
/** YCbCrA to RGBA; destination alpha left unchanged. */
LUMAPI LumStatus lumiYCbCrToRGB_8u_AC4R(const Lum8u* pSrc, int srcStep, Lum8u* pDst, int dstStep, LumSize roiSize);
/** Y, Cb, Cr planes to R, G, B planes. */
LUMAPI LumStatus lumiYCbCrToRGB_8u_P3R(const Lum8u* const pSrc[3], int srcStep, Lum8u* const pDst[3], int dstStep,
    LumSize roiSize);
/** Y, Cb, Cr planes to interleaved RGB. */
LUMAPI LumStatus lumiYCbCrToRGB_8u_P3C3R(const Lum8u* const pSrc[3], int srcStep, Lum8u* pDst, int dstStep,
    LumSize roiSize);
/** Y, Cb, Cr planes to RGBA, alpha set to aval. */
LUMAPI LumStatus lumiYCbCrToRGB_8u_P3C4R(const Lum8u* const pSrc[3], int srcStep, Lum8u* pDst, int dstStep,
    LumSize roiSize, Lum8u aval);
/** Y, Cb, Cr planes to interleaved BGR. */
LUMAPI LumStatus lumiYCbCrToBGR_8u_P3C3R(const Lum8u* const pSrc[3], int srcStep, Lum8u* pDst, int dstStep,
    LumSize roiSize);
/** Y, Cb, Cr planes to BGRA, alpha set to aval. */
LUMAPI LumStatus lumiYCbCrToBGR_8u_P3C4R(const Lum8u* const pSrc[3], int srcStep, Lum8u* pDst, int dstStep,
    LumSize roiSize, Lum8u aval);
/** RGB to YUV, interleaved. */
LUMAPI LumStatus lumiRGBToYUV_8u_C3R(const Lum8u* pSrc, int srcStep, Lum8u* pDst, int dstStep, LumSize roiSize);
/** RGBA to YUVA; destination alpha left unchanged. */
LUMAPI LumStatus lumiRGBToYUV_8u_AC4R(const Lum8u* pSrc, int srcStep, Lum8u* pDst, int dstStep, LumSize roiSize);
/** RGB to Y, U, V planes. */
LUMAPI LumStatus lumiRGBToYUV_8u_C3P3R(const Lum8u* pSrc, int srcStep, Lum8u* const pDst[3], int dstStep,
    LumSize roiSize);
/** R, G, B planes to Y, U, V planes. */
LUMAPI LumStatus lumiRGBToYUV_8u_P3R(const Lum8u* const pSrc[3], int srcStep, Lum8u* const pDst[3], int dstStep,
    LumSize roiSize);
/** RGBA to Y, U, V and alpha planes; alpha copied to pDst[3]. */
LUMAPI LumStatus lumiRGBToYUV_8u_AC4P4R(const Lum8u* pSrc, int srcStep, Lum8u* const pDst[4], int dstStep,
    LumSize roiSize);
/** YUV to RGB, interleaved. */
LUMAPI LumStatus lumiYUVToRGB_8u_C3R(const Lum8u* pSrc, int srcStep, Lum8u* pDst, int dstStep, LumSize roiSize);
/** YUVA to RGBA; destination alpha left unchanged. */
LUMAPI LumStatus lumiYUVToRGB_8u_AC4R(const Lum8u* pSrc, int srcStep, Lum8u* pDst, int dstStep, LumSize roiSize);
/** Y, U, V planes to R, G, B planes. */
LUMAPI LumStatus lumiYUVToRGB_8u_P3R(const Lum8u* const pSrc[3], int srcStep, Lum8u* const pDst[3], int dstStep,
    LumSize roiSize);
/** Y, U, V planes to interleaved RGB. */
LUMAPI LumStatus lumiYUVToRGB_8u_P3C3R(const Lum8u* const pSrc[3], int srcStep, Lum8u* pDst, int dstStep,
    LumSize roiSize);
/** Interleaved YUV to RGBA, alpha set to aval. */
LUMAPI LumStatus lumiYUVToRGB_8u_C3C4R(const Lum8u* pSrc, int srcStep, Lum8u* pDst, int dstStep, LumSize roiSize,
    Lum8u aval);

/* -------------------------------------------------------------------------- */
/* RGB and 4:2:2                                                              */
/* -------------------------------------------------------------------------- */
/* Two horizontally adjacent pixels share one chroma pair. Packed layouts (C2):
   YCbCr422 = Y0 Cb Y1 Cr, YCrCb422 = Y0 Cr Y1 Cb, CbYCr422 = Cb Y0 Cr Y1; planar
   (P3) chroma planes are width/2 wide. On the way in, chroma is taken from the
   pair's mean colour; on the way out it is replicated. An odd last column is not
   written on the way in (status lumStatusOk). The dense forms (no R) take no
   steps: a three-channel row is 3*width bytes, a luma row width, a chroma row
   width/2 + (width & 1). */

/** RGB to packed YCbCr422. */
LUMAPI LumStatus lumiRGBToYCbCr422_8u_C3C2R(const Lum8u* pSrc, int srcStep, Lum8u* pDst, int dstStep,
    LumSize roiSize);
/** RGB to packed YCrCb422. */
LUMAPI LumStatus lumiRGBToYCrCb422_8u_C3C2R(const Lum8u* pSrc, int srcStep, Lum8u* pDst, int dstStep,
    LumSize roiSize);
/** RGB to packed CbYCr422, chroma by a 1/4, 1/2, 1/4 filter across pairs. */
LUMAPI LumStatus lumiRGBToCbYCr422_8u_C3C2R(const Lum8u* pSrc, int srcStep, Lum8u* pDst, int dstStep,
    LumSize roiSize);
/** BGR to packed YCbCr422; width < 2 -> lumStatusBadSize. */
LUMAPI LumStatus lumiBGRToYCbCr422_8u_C3C2R(const Lum8u* pSrc, int srcStep, Lum8u* pDst, int dstStep,
    LumSize roiSize);
/** BGRA to packed YCbCr422; width < 2 -> lumStatusBadSize. */
LUMAPI LumStatus lumiBGRToYCbCr422_8u_AC4C2R(const Lum8u* pSrc, int srcStep, Lum8u* pDst, int dstStep,
    LumSize roiSize);
/** BGRA to packed CbYCr422. */
LUMAPI LumStatus lumiBGRToCbYCr422_8u_AC4C2R(const Lum8u* pSrc, int srcStep, Lum8u* pDst, int dstStep,
    LumSize roiSize);
/** R, G, B planes to packed YCbCr422. */
LUMAPI LumStatus lumiRGBToYCbCr422_8u_P3C2R(const Lum8u* const pSrc[3], int srcStep, Lum8u* pDst, int dstStep,
    LumSize roiSize);
/** R, G, B planes to packed YCrCb422. */
LUMAPI LumStatus lumiRGBToYCrCb422_8u_P3C2R(const Lum8u* const pSrc[3], int srcStep, Lum8u* pDst, int dstStep,
    LumSize roiSize);
/** RGB to YCbCr422 planes; width < 2 -> lumStatusBadSize. */
LUMAPI LumStatus lumiRGBToYCbCr422_8u_C3P3R(const Lum8u* pSrc, int srcStep, Lum8u* const pDst[3],
    const int dstStep[3], LumSize roiSize);
/** BGR to YCbCr422 planes; width < 2 -> lumStatusBadSize. */
LUMAPI LumStatus lumiBGRToYCbCr422_8u_C3P3R(const Lum8u* pSrc, int srcStep, Lum8u* const pDst[3],
    const int dstStep[3], LumSize roiSize);
/** BGRA to YCbCr422 planes; width < 2 -> lumStatusBadSize. */
LUMAPI LumStatus lumiBGRToYCbCr422_8u_AC4P3R(const Lum8u* pSrc, int srcStep, Lum8u* const pDst[3],
    const int dstStep[3], LumSize roiSize);
/** RGB to packed YUV 4:2:2 (Y0 U Y1 V). */
LUMAPI LumStatus lumiRGBToYUV422_8u_C3C2R(const Lum8u* pSrc, int srcStep, Lum8u* pDst, int dstStep, LumSize roiSize);
/** RGB to YUV 4:2:2 planes. */
LUMAPI LumStatus lumiRGBToYUV422_8u_C3P3R(const Lum8u* pSrc, int srcStep, Lum8u* const pDst[3], const int dstStep[3],
    LumSize roiSize);
/** R, G, B planes (one step) to YUV 4:2:2 planes. */
LUMAPI LumStatus lumiRGBToYUV422_8u_P3R(const Lum8u* const pSrc[3], int srcStep, Lum8u* const pDst[3],
    const int dstStep[3], LumSize roiSize);
/** Dense RGB to dense YUV 4:2:2 planes. */
LUMAPI LumStatus lumiRGBToYUV422_8u_C3P3(const Lum8u* pSrc, Lum8u* const pDst[3], LumSize imgSize);
/** Dense R, G, B planes to dense YUV 4:2:2 planes. */
LUMAPI LumStatus lumiRGBToYUV422_8u_P3(const Lum8u* const pSrc[3], Lum8u* const pDst[3], LumSize imgSize);
/** Packed YCbCr422 to RGB; an odd last pixel is converted too. */
LUMAPI LumStatus lumiYCbCr422ToRGB_8u_C2C3R(const Lum8u* pSrc, int srcStep, Lum8u* pDst, int dstStep,
    LumSize roiSize);
/** Packed YCbCr422 to BGR; width < 2 -> lumStatusBadSize. */
LUMAPI LumStatus lumiYCbCr422ToBGR_8u_C2C3R(const Lum8u* pSrc, int srcStep, Lum8u* pDst, int dstStep,
    LumSize roiSize);
/** Packed YCrCb422 to RGB. */
LUMAPI LumStatus lumiYCrCb422ToRGB_8u_C2C3R(const Lum8u* pSrc, int srcStep, Lum8u* pDst, int dstStep,
    LumSize roiSize);
/** Packed YCrCb422 to BGR. */
LUMAPI LumStatus lumiYCrCb422ToBGR_8u_C2C3R(const Lum8u* pSrc, int srcStep, Lum8u* pDst, int dstStep,
    LumSize roiSize);
/** Packed CbYCr422 to RGB; an odd last pixel is converted too. */
LUMAPI LumStatus lumiCbYCr422ToRGB_8u_C2C3R(const Lum8u* pSrc, int srcStep, Lum8u* pDst, int dstStep,
    LumSize roiSize);
/** Packed YCbCr422 to RGBA, alpha set to aval. */
LUMAPI LumStatus lumiYCbCr422ToRGB_8u_C2C4R(const Lum8u* pSrc, int srcStep, Lum8u* pDst, int dstStep, LumSize roiSize,
    Lum8u aval);
/** Packed YCbCr422 to BGRA, alpha set to aval. */
LUMAPI LumStatus lumiYCbCr422ToBGR_8u_C2C4R(const Lum8u* pSrc, int srcStep, Lum8u* pDst, int dstStep, LumSize roiSize,
    Lum8u aval);
/** Packed YCrCb422 to RGBA, alpha set to aval. */
LUMAPI LumStatus lumiYCrCb422ToRGB_8u_C2C4R(const Lum8u* pSrc, int srcStep, Lum8u* pDst, int dstStep, LumSize roiSize,
    Lum8u aval);
/** Packed YCrCb422 to BGRA, alpha set to aval. */
LUMAPI LumStatus lumiYCrCb422ToBGR_8u_C2C4R(const Lum8u* pSrc, int srcStep, Lum8u* pDst, int dstStep, LumSize roiSize,
    Lum8u aval);
/** Packed CbYCr422 to BGRA, alpha set to aval. */
LUMAPI LumStatus lumiCbYCr422ToBGR_8u_C2C4R(const Lum8u* pSrc, int srcStep, Lum8u* pDst, int dstStep, LumSize roiSize,
    Lum8u aval);
/** Packed YCbCr422 to R, G, B planes. */
LUMAPI LumStatus lumiYCbCr422ToRGB_8u_C2P3R(const Lum8u* pSrc, int srcStep, Lum8u* const pDst[3], int dstStep,
    LumSize roiSize);
/** Packed YCrCb422 to R, G, B planes. */
LUMAPI LumStatus lumiYCrCb422ToRGB_8u_C2P3R(const Lum8u* pSrc, int srcStep, Lum8u* const pDst[3], int dstStep,
    LumSize roiSize);
/** YCbCr422 planes to RGB; width < 2 -> lumStatusBadSize. */
LUMAPI LumStatus lumiYCbCr422ToRGB_8u_P3C3R(const Lum8u* const pSrc[3], const int srcStep[3], Lum8u* pDst,
    int dstStep, LumSize roiSize);
/** YCbCr422 planes to BGR; width < 2 -> lumStatusBadSize. */
LUMAPI LumStatus lumiYCbCr422ToBGR_8u_P3C3R(const Lum8u* const pSrc[3], const int srcStep[3], Lum8u* pDst,
    int dstStep, LumSize roiSize);
/** Packed YUV 4:2:2 (Y0 U Y1 V) to RGB. */
LUMAPI LumStatus lumiYUV422ToRGB_8u_C2C3R(const Lum8u* pSrc, int srcStep, Lum8u* pDst, int dstStep, LumSize roiSize);
/** YUV 4:2:2 planes to RGB. */
LUMAPI LumStatus lumiYUV422ToRGB_8u_P3C3R(const Lum8u* const pSrc[3], const int srcStep[3], Lum8u* pDst, int dstStep,
    LumSize roiSize);
/** YUV 4:2:2 planes to RGBA; alpha written as 0. */
LUMAPI LumStatus lumiYUV422ToRGB_8u_P3AC4R(const Lum8u* const pSrc[3], const int srcStep[3], Lum8u* pDst, int dstStep,
    LumSize roiSize);
/** YUV 4:2:2 planes to R, G, B planes (one step). */
LUMAPI LumStatus lumiYUV422ToRGB_8u_P3R(const Lum8u* const pSrc[3], const int srcStep[3], Lum8u* const pDst[3],
    int dstStep, LumSize roiSize);
/** Dense YUV 4:2:2 planes to dense RGB. */
LUMAPI LumStatus lumiYUV422ToRGB_8u_P3C3(const Lum8u* const pSrc[3], Lum8u* pDst, LumSize imgSize);
/** Dense YUV 4:2:2 planes to dense R, G, B planes. */
LUMAPI LumStatus lumiYUV422ToRGB_8u_P3(const Lum8u* const pSrc[3], Lum8u* const pDst[3], LumSize imgSize);

/* -------------------------------------------------------------------------- */
/* RGB and 4:2:0, 4:1:1                                                       */
/* -------------------------------------------------------------------------- */
/* Four pixels share one chroma pair: a 2x2 cell (4:2:0, chroma planes width/2 by
   height/2) or four pixels of a row (4:1:1, width/4 by height). Semi-planar (P2)
   chroma is interleaved Cb Cr (Cr Cb for the YCrCb names). Chroma is the cell's
   mean colour on the way in and replicated on the way out. Functions on 2x2
   cells convert the even part of the region and return lumStatusOddSize when
   width or height is odd; the 4:1:1 forward forms warn when width is not a
   multiple of 4. Dense forms (no R): source row 3*width or width, Y row width,
   chroma row width/2. */

/** RGB to Y, Cb, Cr 4:2:0 planes. */
LUMAPI LumStatus lumiRGBToYCbCr420_8u_C3P3R(const Lum8u* pSrc, int srcStep, Lum8u* const pDst[3],
    const int dstStep[3], LumSize roiSize);
/** BGR to Y, Cb, Cr 4:2:0 planes; width or height < 2 -> lumStatusBadSize. */
LUMAPI LumStatus lumiBGRToYCbCr420_8u_C3P3R(const Lum8u* pSrc, int srcStep, Lum8u* const pDst[3],
    const int dstStep[3], LumSize roiSize);
/** BGRA to Y, Cb, Cr 4:2:0 planes; width or height < 2 -> lumStatusBadSize. */
LUMAPI LumStatus lumiBGRToYCbCr420_8u_AC4P3R(const Lum8u* pSrc, int srcStep, Lum8u* const pDst[3],
    const int dstStep[3], LumSize roiSize);
/** BGR to Y, Cr, Cb 4:2:0 planes; width or height < 2 -> lumStatusBadSize. */
LUMAPI LumStatus lumiBGRToYCrCb420_8u_C3P3R(const Lum8u* pSrc, int srcStep, Lum8u* const pDst[3],
    const int dstStep[3], LumSize roiSize);
/** BGRA to Y, Cr, Cb 4:2:0 planes; width or height < 2 -> lumStatusBadSize. */
LUMAPI LumStatus lumiBGRToYCrCb420_8u_AC4P3R(const Lum8u* pSrc, int srcStep, Lum8u* const pDst[3],
    const int dstStep[3], LumSize roiSize);
/** RGBA to Y, Cr, Cb 4:2:0 planes; width or height < 2 -> lumStatusBadSize. */
LUMAPI LumStatus lumiRGBToYCrCb420_8u_AC4P3R(const Lum8u* pSrc, int srcStep, Lum8u* const pDst[3],
    const int dstStep[3], LumSize roiSize);
/** RGB to NV12 (Y plane, interleaved CbCr plane). */
LUMAPI LumStatus lumiRGBToYCbCr420_8u_C3P2R(const Lum8u* pSrc, int srcStep, Lum8u* pDstY, int dstYStep,
    Lum8u* pDstCbCr, int dstCbCrStep, LumSize roiSize);
/** RGBx to NV12; the fourth channel is ignored. */
LUMAPI LumStatus lumiRGBToYCbCr420_8u_C4P2R(const Lum8u* pSrc, int srcStep, Lum8u* pDstY, int dstYStep,
    Lum8u* pDstCbCr, int dstCbCrStep, LumSize roiSize);
/** BGR to NV12. */
LUMAPI LumStatus lumiBGRToYCbCr420_8u_C3P2R(const Lum8u* pSrc, int srcStep, Lum8u* pDstY, int dstYStep,
    Lum8u* pDstCbCr, int dstCbCrStep, LumSize roiSize);
/** BGRA to NV12. */
LUMAPI LumStatus lumiBGRToYCbCr420_8u_AC4P2R(const Lum8u* pSrc, int srcStep, Lum8u* pDstY, int dstYStep,
    Lum8u* pDstCbCr, int dstCbCrStep, LumSize roiSize);
/** RGB to Y, U, V 4:2:0 planes. */
LUMAPI LumStatus lumiRGBToYUV420_8u_C3P3R(const Lum8u* pSrc, int srcStep, Lum8u* const pDst[3], const int dstStep[3],
    LumSize roiSize);
/** R, G, B planes (one step) to Y, U, V 4:2:0 planes. */
LUMAPI LumStatus lumiRGBToYUV420_8u_P3R(const Lum8u* const pSrc[3], int srcStep, Lum8u* const pDst[3],
    const int dstStep[3], LumSize roiSize);
/** BGRA to Y, U, V 4:2:0 planes. */
LUMAPI LumStatus lumiBGRToYUV420_8u_AC4P3R(const Lum8u* pSrc, int srcStep, Lum8u* const pDst[3], const int dstStep[3],
    LumSize roiSize);
/** Dense RGB to dense Y, U, V 4:2:0 planes. */
LUMAPI LumStatus lumiRGBToYUV420_8u_C3P3(const Lum8u* pSrc, Lum8u* const pDst[3], LumSize imgSize);
/** Dense R, G, B planes to dense Y, U, V 4:2:0 planes. */
LUMAPI LumStatus lumiRGBToYUV420_8u_P3(const Lum8u* const pSrc[3], Lum8u* const pDst[3], LumSize imgSize);
/** BGR to Y, Cb, Cr 4:1:1 planes; width < 4 -> lumStatusBadSize. */
LUMAPI LumStatus lumiBGRToYCbCr411_8u_C3P3R(const Lum8u* pSrc, int srcStep, Lum8u* const pDst[3],
    const int dstStep[3], LumSize roiSize);
/** BGRA to Y, Cb, Cr 4:1:1 planes; width < 4 -> lumStatusBadSize. */
LUMAPI LumStatus lumiBGRToYCbCr411_8u_AC4P3R(const Lum8u* pSrc, int srcStep, Lum8u* const pDst[3],
    const int dstStep[3], LumSize roiSize);
/** Y, Cb, Cr 4:2:0 planes to RGB. */
LUMAPI LumStatus lumiYCbCr420ToRGB_8u_P3C3R(const Lum8u* const pSrc[3], const int srcStep[3], Lum8u* pDst,
    int dstStep, LumSize roiSize);
/** Y, Cb, Cr 4:2:0 planes to BGR. */
LUMAPI LumStatus lumiYCbCr420ToBGR_8u_P3C3R(const Lum8u* const pSrc[3], const int srcStep[3], Lum8u* pDst,
    int dstStep, LumSize roiSize);
/** Y, Cb, Cr 4:2:0 planes to BGRA, alpha set to aval. */
LUMAPI LumStatus lumiYCbCr420ToBGR_8u_P3C4R(const Lum8u* const pSrc[3], const int srcStep[3], Lum8u* pDst,
    int dstStep, LumSize roiSize, Lum8u aval);
/** Y, Cr, Cb 4:2:0 planes to RGBA, alpha set to aval. */
LUMAPI LumStatus lumiYCrCb420ToRGB_8u_P3C4R(const Lum8u* const pSrc[3], const int srcStep[3], Lum8u* pDst,
    int dstStep, LumSize roiSize, Lum8u aval);
/** NV12 to RGB. */
LUMAPI LumStatus lumiYCbCr420ToRGB_8u_P2C3R(const Lum8u* pSrcY, int srcYStep, const Lum8u* pSrcCbCr, int srcCbCrStep,
    Lum8u* pDst, int dstStep, LumSize roiSize);
/** NV12 to RGBA, alpha set to aval. */
LUMAPI LumStatus lumiYCbCr420ToRGB_8u_P2C4R(const Lum8u* pSrcY, int srcYStep, const Lum8u* pSrcCbCr, int srcCbCrStep,
    Lum8u* pDst, int dstStep, LumSize roiSize, Lum8u aval);
/** NV12 to BGR. */
LUMAPI LumStatus lumiYCbCr420ToBGR_8u_P2C3R(const Lum8u* pSrcY, int srcYStep, const Lum8u* pSrcCbCr, int srcCbCrStep,
    Lum8u* pDst, int dstStep, LumSize roiSize);
/** NV12 to BGRA, alpha set to aval. */
LUMAPI LumStatus lumiYCbCr420ToBGR_8u_P2C4R(const Lum8u* pSrcY, int srcYStep, const Lum8u* pSrcCbCr, int srcCbCrStep,
    Lum8u* pDst, int dstStep, LumSize roiSize, Lum8u aval);
/** NV21 (Y plane, interleaved CrCb plane) to RGB. */
LUMAPI LumStatus lumiYCrCb420ToRGB_8u_P2C3R(const Lum8u* pSrcY, int srcYStep, const Lum8u* pSrcCrCb, int srcCrCbStep,
    Lum8u* pDst, int dstStep, LumSize roiSize);
/** NV21 to RGBA, alpha set to aval; checks the size before the pointers. */
LUMAPI LumStatus lumiYCrCb420ToRGB_8u_P2C4R(const Lum8u* pSrcY, int srcYStep, const Lum8u* pSrcCrCb, int srcCrCbStep,
    Lum8u* pDst, int dstStep, LumSize roiSize, Lum8u aval);
/** NV21 to BGR. */
LUMAPI LumStatus lumiYCrCb420ToBGR_8u_P2C3R(const Lum8u* pSrcY, int srcYStep, const Lum8u* pSrcCrCb, int srcCrCbStep,
    Lum8u* pDst, int dstStep, LumSize roiSize);
/** NV21 to BGRA, alpha set to aval; checks the size before the pointers. */
LUMAPI LumStatus lumiYCrCb420ToBGR_8u_P2C4R(const Lum8u* pSrcY, int srcYStep, const Lum8u* pSrcCrCb, int srcCrCbStep,
    Lum8u* pDst, int dstStep, LumSize roiSize, Lum8u aval);
/** Y, U, V 4:2:0 planes to RGB. */
LUMAPI LumStatus lumiYUV420ToRGB_8u_P3C3R(const Lum8u* const pSrc[3], const int srcStep[3], Lum8u* pDst, int dstStep,
    LumSize roiSize);
/** Y, U, V 4:2:0 planes to R, G, B planes (one step). */
LUMAPI LumStatus lumiYUV420ToRGB_8u_P3R(const Lum8u* const pSrc[3], const int srcStep[3], Lum8u* const pDst[3],
    int dstStep, LumSize roiSize);
/** Y, U, V 4:2:0 planes to RGBA; alpha written as 0. */
LUMAPI LumStatus lumiYUV420ToRGB_8u_P3AC4R(const Lum8u* const pSrc[3], const int srcStep[3], Lum8u* pDst, int dstStep,
    LumSize roiSize);
/** Y, U, V 4:2:0 planes to BGR; width or height < 2 -> lumStatusBadSize. */
LUMAPI LumStatus lumiYUV420ToBGR_8u_P3C3R(const Lum8u* const pSrc[3], const int srcStep[3], Lum8u* pDst, int dstStep,
    LumSize roiSize);
/** Dense Y, U, V 4:2:0 planes to dense R, G, B planes. */
LUMAPI LumStatus lumiYUV420ToRGB_8u_P3(const Lum8u* const pSrc[3], Lum8u* const pDst[3], LumSize imgSize);
/** Dense Y, U, V 4:2:0 planes to dense RGB. */
LUMAPI LumStatus lumiYUV420ToRGB_8u_P3C3(const Lum8u* const pSrc[3], Lum8u* pDst, LumSize imgSize);
/** Y, Cb, Cr 4:1:1 planes to BGR; width < 4 -> lumStatusBadSize. */
LUMAPI LumStatus lumiYCbCr411ToBGR_8u_P3C3R(const Lum8u* const pSrc[3], const int srcStep[3], Lum8u* pDst,
    int dstStep, LumSize roiSize);
/** Y, Cb, Cr 4:1:1 planes to BGRA, alpha set to aval; width < 4 -> lumStatusBadSize. */
LUMAPI LumStatus lumiYCbCr411ToBGR_8u_P3C4R(const Lum8u* const pSrc[3], const int srcStep[3], Lum8u* pDst,
    int dstStep, LumSize roiSize, Lum8u aval);

/* -------------------------------------------------------------------------- */
/* BT.709                                                                     */
/* -------------------------------------------------------------------------- */
/* 709CSC: studio range (Y offset 16). 709HDTV: full-scale luma, every forward
   result held in 1..254. Only BGR orders exist; layouts and odd-size rules as
   the 4:2:2 and 4:2:0 groups above. Forward 4:2:0: width or height < 2 ->
   lumStatusBadSize. */

/** Y, Cb, Cr planes (4:4:4) to BGR. */
LUMAPI LumStatus lumiYCbCrToBGR_709CSC_8u_P3C3R(const Lum8u* const pSrc[3], int srcStep, Lum8u* pDst, int dstStep,
    LumSize roiSize);
/** Y, Cb, Cr planes (4:4:4) to BGRA, alpha set to aval. */
LUMAPI LumStatus lumiYCbCrToBGR_709CSC_8u_P3C4R(const Lum8u* const pSrc[3], int srcStep, Lum8u* pDst, int dstStep,
    LumSize roiSize, Lum8u aval);
/** Y, Cb, Cr 4:2:0 planes to BGR. */
LUMAPI LumStatus lumiYCbCr420ToBGR_709CSC_8u_P3C3R(const Lum8u* const pSrc[3], const int srcStep[3], Lum8u* pDst,
    int dstStep, LumSize roiSize);
/** BGR to Y, Cb, Cr 4:2:0 planes. */
LUMAPI LumStatus lumiBGRToYCbCr420_709CSC_8u_C3P3R(const Lum8u* pSrc, int srcStep, Lum8u* const pDst[3],
    const int dstStep[3], LumSize roiSize);
/** BGRA to Y, Cb, Cr 4:2:0 planes. */
LUMAPI LumStatus lumiBGRToYCbCr420_709CSC_8u_AC4P3R(const Lum8u* pSrc, int srcStep, Lum8u* const pDst[3],
    const int dstStep[3], LumSize roiSize);
/** BGR to Y, Cr, Cb 4:2:0 planes. */
LUMAPI LumStatus lumiBGRToYCrCb420_709CSC_8u_C3P3R(const Lum8u* pSrc, int srcStep, Lum8u* const pDst[3],
    const int dstStep[3], LumSize roiSize);
/** BGRA to Y, Cr, Cb 4:2:0 planes. */
LUMAPI LumStatus lumiBGRToYCrCb420_709CSC_8u_AC4P3R(const Lum8u* pSrc, int srcStep, Lum8u* const pDst[3],
    const int dstStep[3], LumSize roiSize);
/** BGR to NV12. */
LUMAPI LumStatus lumiBGRToYCbCr420_709CSC_8u_C3P2R(const Lum8u* pSrc, int srcStep, Lum8u* pDstY, int dstYStep,
    Lum8u* pDstCbCr, int dstCbCrStep, LumSize roiSize);
/** BGRA to NV12. */
LUMAPI LumStatus lumiBGRToYCbCr420_709CSC_8u_AC4P2R(const Lum8u* pSrc, int srcStep, Lum8u* pDstY, int dstYStep,
    Lum8u* pDstCbCr, int dstCbCrStep, LumSize roiSize);
/** Packed CbYCr422 to BGR. */
LUMAPI LumStatus lumiCbYCr422ToBGR_709HDTV_8u_C2C3R(const Lum8u* pSrc, int srcStep, Lum8u* pDst, int dstStep,
    LumSize roiSize);
/** Packed CbYCr422 to BGRA, alpha set to aval. */
LUMAPI LumStatus lumiCbYCr422ToBGR_709HDTV_8u_C2C4R(const Lum8u* pSrc, int srcStep, Lum8u* pDst, int dstStep,
    LumSize roiSize, Lum8u aval);
/** BGR to packed CbYCr422. */
LUMAPI LumStatus lumiBGRToCbYCr422_709HDTV_8u_C3C2R(const Lum8u* pSrc, int srcStep, Lum8u* pDst, int dstStep,
    LumSize roiSize);
/** BGRA to packed CbYCr422. */
LUMAPI LumStatus lumiBGRToCbYCr422_709HDTV_8u_AC4C2R(const Lum8u* pSrc, int srcStep, Lum8u* pDst, int dstStep,
    LumSize roiSize);
/** Y, Cb, Cr 4:2:0 planes to BGRA, alpha set to aval. */
LUMAPI LumStatus lumiYCbCr420ToBGR_709HDTV_8u_P3C4R(const Lum8u* const pSrc[3], const int srcStep[3], Lum8u* pDst,
    int dstStep, LumSize roiSize, Lum8u aval);
/** BGRA to Y, Cb, Cr 4:2:0 planes. */
LUMAPI LumStatus lumiBGRToYCbCr420_709HDTV_8u_AC4P3R(const Lum8u* pSrc, int srcStep, Lum8u* const pDst[3],
    const int dstStep[3], LumSize roiSize);

/* -------------------------------------------------------------------------- */
/* v210                                                                       */
/* -------------------------------------------------------------------------- */
/* Source: rows of little-endian v210 words (three 10-bit samples a word, six
   pixels in four words). Destination: one 16-bit word a pixel. Unlike every
   other function, srcStep counts 32-bit words and dstStep 16-bit words. A step
   below 1 is lumStatusBadSize. */

/** v210 to 5-6-5 words, R in bits 0..4, G in 5..10, B in 11..15. */
LUMAPI LumStatus lumiYUV422v210ToRGB_709HDTV_32u16u_C3(const Lum32u* pSrc, int srcStep, Lum16u* pDst, int dstStep,
    LumSize roiSize);
/** v210 to 5-6-5 words, B in bits 0..4, G in 5..10, R in 11..15. */
LUMAPI LumStatus lumiYUV422v210ToBGR_709HDTV_32u16u_C3(const Lum32u* pSrc, int srcStep, Lum16u* pDst, int dstStep,
    LumSize roiSize);
/** v210 to its 10-bit luma samples, one 16-bit word each. */
LUMAPI LumStatus lumiYUV422v210ToGray_709HDTV_32u16u_C3C1(const Lum32u* pSrc, int srcStep, Lum16u* pDst, int dstStep,
    LumSize roiSize);

/* -------------------------------------------------------------------------- */
/* Gray                                                                       */
/* -------------------------------------------------------------------------- */
/* RGBToGray weighs with 0.299, 0.587, 0.114; ColorToGray with the caller's
   coeffs (a null coeffs in the 8u, 16u, 16s and 32f forms means the default
   weights); GrayToRGB replicates. AC4 sources: the fourth channel is not read. */

/** RGB to gray, fixed weights. */
LUMAPI LumStatus lumiRGBToGray_8u_C3C1R(const Lum8u* pSrc, int srcStep, Lum8u* pDst, int dstStep, LumSize roiSize);
/** RGBA to gray, fixed weights. */
LUMAPI LumStatus lumiRGBToGray_8u_AC4C1R(const Lum8u* pSrc, int srcStep, Lum8u* pDst, int dstStep, LumSize roiSize);
/** RGB to gray, fixed weights. */
LUMAPI LumStatus lumiRGBToGray_16u_C3C1R(const Lum16u* pSrc, int srcStep, Lum16u* pDst, int dstStep, LumSize roiSize);
/** RGBA to gray, fixed weights. */
LUMAPI LumStatus lumiRGBToGray_16u_AC4C1R(const Lum16u* pSrc, int srcStep, Lum16u* pDst, int dstStep,
    LumSize roiSize);
/** RGB to gray, fixed weights. */
LUMAPI LumStatus lumiRGBToGray_16s_C3C1R(const Lum16s* pSrc, int srcStep, Lum16s* pDst, int dstStep, LumSize roiSize);
/** RGBA to gray, fixed weights. */
LUMAPI LumStatus lumiRGBToGray_16s_AC4C1R(const Lum16s* pSrc, int srcStep, Lum16s* pDst, int dstStep,
    LumSize roiSize);
/** RGB to gray, fixed weights. */
LUMAPI LumStatus lumiRGBToGray_32f_C3C1R(const Lum32f* pSrc, int srcStep, Lum32f* pDst, int dstStep, LumSize roiSize);
/** RGBA to gray, fixed weights. */
LUMAPI LumStatus lumiRGBToGray_32f_AC4C1R(const Lum32f* pSrc, int srcStep, Lum32f* pDst, int dstStep,
    LumSize roiSize);
/** Three channels to gray with the weights coeffs[0..2]. */
LUMAPI LumStatus lumiColorToGray_8u_C3C1R(const Lum8u* pSrc, int srcStep, Lum8u* pDst, int dstStep, LumSize roiSize,
    const Lum32f coeffs[3]);
/** Four channels (fourth ignored) to gray with the weights coeffs[0..2]. */
LUMAPI LumStatus lumiColorToGray_8u_AC4C1R(const Lum8u* pSrc, int srcStep, Lum8u* pDst, int dstStep, LumSize roiSize,
    const Lum32f coeffs[3]);
/** Three channels to gray with the weights coeffs[0..2]. */
LUMAPI LumStatus lumiColorToGray_16u_C3C1R(const Lum16u* pSrc, int srcStep, Lum16u* pDst, int dstStep,
    LumSize roiSize, const Lum32f coeffs[3]);
/** Four channels (fourth ignored) to gray with the weights coeffs[0..2]. */
LUMAPI LumStatus lumiColorToGray_16u_AC4C1R(const Lum16u* pSrc, int srcStep, Lum16u* pDst, int dstStep,
    LumSize roiSize, const Lum32f coeffs[3]);
/** Three channels to gray with the weights coeffs[0..2]. */
LUMAPI LumStatus lumiColorToGray_16s_C3C1R(const Lum16s* pSrc, int srcStep, Lum16s* pDst, int dstStep,
    LumSize roiSize, const Lum32f coeffs[3]);
/** Four channels (fourth ignored) to gray with the weights coeffs[0..2]. */
LUMAPI LumStatus lumiColorToGray_16s_AC4C1R(const Lum16s* pSrc, int srcStep, Lum16s* pDst, int dstStep,
    LumSize roiSize, const Lum32f coeffs[3]);
/** Three channels to gray with the weights coeffs[0..2]. */
LUMAPI LumStatus lumiColorToGray_32f_C3C1R(const Lum32f* pSrc, int srcStep, Lum32f* pDst, int dstStep,
    LumSize roiSize, const Lum32f coeffs[3]);
/** Four channels (fourth ignored) to gray with the weights coeffs[0..2]. */
LUMAPI LumStatus lumiColorToGray_32f_AC4C1R(const Lum32f* pSrc, int srcStep, Lum32f* pDst, int dstStep,
    LumSize roiSize, const Lum32f coeffs[3]);
/** Three channels to gray with the weights coeffs[0..2] (required: null is lumStatusNullPointer). */
LUMAPI LumStatus lumiColorToGray_64f_C3C1R(const Lum64f* pSrc, int srcStep, Lum64f* pDst, int dstStep,
    LumSize roiSize, const Lum64f coeffs[3]);
/** Four channels (fourth ignored) to gray with the weights coeffs[0..2] (required: null is
 *  lumStatusNullPointer). */
LUMAPI LumStatus lumiColorToGray_64f_AC4C1R(const Lum64f* pSrc, int srcStep, Lum64f* pDst, int dstStep,
    LumSize roiSize, const Lum64f coeffs[3]);
/** Gray to three equal channels. */
LUMAPI LumStatus lumiGrayToRGB_8u_C1C3R(const Lum8u* pSrc, int srcStep, Lum8u* pDst, int dstStep, LumSize roiSize);
/** Gray to three equal channels, fourth set to aval. */
LUMAPI LumStatus lumiGrayToRGB_8u_C1C4R(const Lum8u* pSrc, int srcStep, Lum8u* pDst, int dstStep, LumSize roiSize,
    Lum8u aval);
/** Gray to three equal channels. */
LUMAPI LumStatus lumiGrayToRGB_16u_C1C3R(const Lum16u* pSrc, int srcStep, Lum16u* pDst, int dstStep, LumSize roiSize);
/** Gray to three equal channels, fourth set to aval. */
LUMAPI LumStatus lumiGrayToRGB_16u_C1C4R(const Lum16u* pSrc, int srcStep, Lum16u* pDst, int dstStep, LumSize roiSize,
    Lum16u aval);
/** Gray to three equal channels. */
LUMAPI LumStatus lumiGrayToRGB_32f_C1C3R(const Lum32f* pSrc, int srcStep, Lum32f* pDst, int dstStep, LumSize roiSize);
/** Gray to three equal channels, fourth set to aval. */
LUMAPI LumStatus lumiGrayToRGB_32f_C1C4R(const Lum32f* pSrc, int srcStep, Lum32f* pDst, int dstStep, LumSize roiSize,
    Lum32f aval);
/** Luma of packed YCbCr422; odd widths converted in full. */
LUMAPI LumStatus lumiYCbCr422ToGray_8u_C2C1R(const Lum8u* pSrc, int srcStep, Lum8u* pDst, int dstStep,
    LumSize roiSize);

/* -------------------------------------------------------------------------- */
/* Chroma layouts                                                             */
/* -------------------------------------------------------------------------- */
/* Moves samples between the 8-bit video layouts with no change of colour model:
   packed C2 (YCbCr422 = YUY2, CbYCr422 = UYVY, YCrCb422), planar P3 (YCbCr422,
   YCbCr420, YCrCb420 = YV12, YCbCr411, YCbCr1620) and semi-planar P2 (YCbCr420 =
   NV12, YCbCr411). Chroma is kept, dropped or repeated; only the To411, To420
   and To1620 forms without YCbCr after To filter. Sizes are masked to whole
   chroma cells; the surplus column or row is left untouched and the status is
   lumStatusOk. Minimum sizes: width >= 2 for 4:2:2 and 4:2:0 forms, width >= 4
   for 4:1:1 forms, height >= 2 where 4:2:0 is involved. */

/** YUY2 to UYVY. */
LUMAPI LumStatus lumiYCbCr422ToCbYCr422_8u_C2R(const Lum8u* pSrc, int srcStep, Lum8u* pDst, int dstStep,
    LumSize roiSize);
/** UYVY to YUY2. */
LUMAPI LumStatus lumiCbYCr422ToYCbCr422_8u_C2R(const Lum8u* pSrc, int srcStep, Lum8u* pDst, int dstStep,
    LumSize roiSize);
/** YUY2 to packed YCrCb422. */
LUMAPI LumStatus lumiYCbCr422ToYCrCb422_8u_C2R(const Lum8u* pSrc, int srcStep, Lum8u* pDst, int dstStep,
    LumSize roiSize);
/** YUY2 to YCbCr422 planes. */
LUMAPI LumStatus lumiYCbCr422_8u_C2P3R(const Lum8u* pSrc, int srcStep, Lum8u* const pDst[3], const int dstStep[3],
    LumSize roiSize);
/** Packed YCrCb422 to YCbCr422 planes. */
LUMAPI LumStatus lumiYCrCb422ToYCbCr422_8u_C2P3R(const Lum8u* pSrc, int srcStep, Lum8u* const pDst[3],
    const int dstStep[3], LumSize roiSize);
/** UYVY to YCbCr422 planes. */
LUMAPI LumStatus lumiCbYCr422ToYCbCr422_8u_C2P3R(const Lum8u* pSrc, int srcStep, Lum8u* const pDst[3],
    const int dstStep[3], LumSize roiSize);
/** YCbCr422 planes to YUY2. */
LUMAPI LumStatus lumiYCbCr422_8u_P3C2R(const Lum8u* const pSrc[3], const int srcStep[3], Lum8u* pDst, int dstStep,
    LumSize roiSize);
/** YCbCr422 planes to UYVY. */
LUMAPI LumStatus lumiYCbCr422ToCbYCr422_8u_P3C2R(const Lum8u* const pSrc[3], const int srcStep[3], Lum8u* pDst,
    int dstStep, LumSize roiSize);
/** YCbCr422 planes to packed YCrCb422. */
LUMAPI LumStatus lumiYCbCr422ToYCrCb422_8u_P3C2R(const Lum8u* const pSrc[3], const int srcStep[3], Lum8u* pDst,
    int dstStep, LumSize roiSize);
/** NV12 to YCbCr420 planes. */
LUMAPI LumStatus lumiYCbCr420_8u_P2P3R(const Lum8u* pSrcY, int srcYStep, const Lum8u* pSrcCbCr, int srcCbCrStep,
    Lum8u* const pDst[3], const int dstStep[3], LumSize roiSize);
/** YCbCr420 planes to NV12. */
LUMAPI LumStatus lumiYCbCr420_8u_P3P2R(const Lum8u* const pSrc[3], const int srcStep[3], Lum8u* pDstY, int dstYStep,
    Lum8u* pDstCbCr, int dstCbCrStep, LumSize roiSize);
/** NV12 to three 4:2:0 planes; chroma byte 2j to pDst[1], 2j+1 to pDst[2]. */
LUMAPI LumStatus lumiYCbCr420ToYCrCb420_8u_P2P3R(const Lum8u* pSrcY, int srcYStep, const Lum8u* pSrcCbCr,
    int srcCbCrStep, Lum8u* const pDst[3], const int dstStep[3], LumSize roiSize);
/** YV12 (Y, Cr, Cb planes) to NV12. */
LUMAPI LumStatus lumiYCrCb420ToYCbCr420_8u_P3P2R(const Lum8u* const pSrc[3], const int srcStep[3], Lum8u* pDstY,
    int dstYStep, Lum8u* pDstCbCr, int dstCbCrStep, LumSize roiSize);
/** Semi-planar 4:1:1 to YCbCr411 planes. */
LUMAPI LumStatus lumiYCbCr411_8u_P2P3R(const Lum8u* pSrcY, int srcYStep, const Lum8u* pSrcCbCr, int srcCbCrStep,
    Lum8u* const pDst[3], const int dstStep[3], LumSize roiSize);
/** YCbCr411 planes to semi-planar 4:1:1. */
LUMAPI LumStatus lumiYCbCr411_8u_P3P2R(const Lum8u* const pSrc[3], const int srcStep[3], Lum8u* pDstY, int dstYStep,
    Lum8u* pDstCbCr, int dstCbCrStep, LumSize roiSize);
/** YUY2 to YCbCr420 planes (even chroma rows kept). */
LUMAPI LumStatus lumiYCbCr422ToYCbCr420_8u_C2P3R(const Lum8u* pSrc, int srcStep, Lum8u* const pDst[3],
    const int dstStep[3], LumSize roiSize);
/** Packed YCrCb422 to YCbCr420 planes. */
LUMAPI LumStatus lumiYCrCb422ToYCbCr420_8u_C2P3R(const Lum8u* pSrc, int srcStep, Lum8u* const pDst[3],
    const int dstStep[3], LumSize roiSize);
/** UYVY to YCbCr420 planes. */
LUMAPI LumStatus lumiCbYCr422ToYCbCr420_8u_C2P3R(const Lum8u* pSrc, int srcStep, Lum8u* const pDst[3],
    const int dstStep[3], LumSize roiSize);
/** YUY2 to YV12 planes. */
LUMAPI LumStatus lumiYCbCr422ToYCrCb420_8u_C2P3R(const Lum8u* pSrc, int srcStep, Lum8u* const pDst[3],
    const int dstStep[3], LumSize roiSize);
/** UYVY to YV12 planes. */
LUMAPI LumStatus lumiCbYCr422ToYCrCb420_8u_C2P3R(const Lum8u* pSrc, int srcStep, Lum8u* const pDst[3],
    const int dstStep[3], LumSize roiSize);
/** YUY2 to NV12. */
LUMAPI LumStatus lumiYCbCr422ToYCbCr420_8u_C2P2R(const Lum8u* pSrc, int srcStep, Lum8u* pDstY, int dstYStep,
    Lum8u* pDstCbCr, int dstCbCrStep, LumSize roiSize);
/** YUY2 to NV21 (chroma pairs Cr Cb). */
LUMAPI LumStatus lumiYCbCr422ToYCrCb420_8u_C2P2R(const Lum8u* pSrc, int srcStep, Lum8u* pDstY, int dstYStep,
    Lum8u* pDstCrCb, int dstCrCbStep, LumSize roiSize);
/** UYVY to NV12. */
LUMAPI LumStatus lumiCbYCr422ToYCbCr420_8u_C2P2R(const Lum8u* pSrc, int srcStep, Lum8u* pDstY, int dstYStep,
    Lum8u* pDstCbCr, int dstCbCrStep, LumSize roiSize);
/** YCbCr422 planes to YCbCr420 planes. */
LUMAPI LumStatus lumiYCbCr422ToYCbCr420_8u_P3R(const Lum8u* const pSrc[3], const int srcStep[3], Lum8u* const pDst[3],
    const int dstStep[3], LumSize roiSize);
/** YCbCr422 planes to NV12. */
LUMAPI LumStatus lumiYCbCr422ToYCbCr420_8u_P3P2R(const Lum8u* const pSrc[3], const int srcStep[3], Lum8u* pDstY,
    int dstYStep, Lum8u* pDstCbCr, int dstCbCrStep, LumSize roiSize);
/** YCbCr420 planes to YCbCr422 planes (chroma rows repeated). */
LUMAPI LumStatus lumiYCbCr420ToYCbCr422_8u_P3R(const Lum8u* const pSrc[3], const int srcStep[3], Lum8u* const pDst[3],
    const int dstStep[3], LumSize roiSize);
/** YV12 planes to YCbCr422 planes. */
LUMAPI LumStatus lumiYCrCb420ToYCbCr422_8u_P3R(const Lum8u* const pSrc[3], const int srcStep[3], Lum8u* const pDst[3],
    const int dstStep[3], LumSize roiSize);
/** NV12 to YCbCr422 planes. */
LUMAPI LumStatus lumiYCbCr420ToYCbCr422_8u_P2P3R(const Lum8u* pSrcY, int srcYStep, const Lum8u* pSrcCbCr,
    int srcCbCrStep, Lum8u* const pDst[3], const int dstStep[3], LumSize roiSize);
/** NV12 to YUY2. */
LUMAPI LumStatus lumiYCbCr420ToYCbCr422_8u_P2C2R(const Lum8u* pSrcY, int srcYStep, const Lum8u* pSrcCbCr,
    int srcCbCrStep, Lum8u* pDst, int dstStep, LumSize roiSize);
/** NV12 to UYVY. */
LUMAPI LumStatus lumiYCbCr420ToCbYCr422_8u_P2C2R(const Lum8u* pSrcY, int srcYStep, const Lum8u* pSrcCbCr,
    int srcCbCrStep, Lum8u* pDst, int dstStep, LumSize roiSize);
/** YV12 planes to YUY2. */
LUMAPI LumStatus lumiYCrCb420ToYCbCr422_8u_P3C2R(const Lum8u* const pSrc[3], const int srcStep[3], Lum8u* pDst,
    int dstStep, LumSize roiSize);
/** YV12 planes to UYVY. */
LUMAPI LumStatus lumiYCrCb420ToCbYCr422_8u_P3C2R(const Lum8u* const pSrc[3], const int srcStep[3], Lum8u* pDst,
    int dstStep, LumSize roiSize);
/** YUY2 to YCbCr411 planes (even chroma samples kept). */
LUMAPI LumStatus lumiYCbCr422ToYCbCr411_8u_C2P3R(const Lum8u* pSrc, int srcStep, Lum8u* const pDst[3],
    const int dstStep[3], LumSize roiSize);
/** Packed YCrCb422 to YCbCr411 planes. */
LUMAPI LumStatus lumiYCrCb422ToYCbCr411_8u_C2P3R(const Lum8u* pSrc, int srcStep, Lum8u* const pDst[3],
    const int dstStep[3], LumSize roiSize);
/** UYVY to YCbCr411 planes. */
LUMAPI LumStatus lumiCbYCr422ToYCbCr411_8u_C2P3R(const Lum8u* pSrc, int srcStep, Lum8u* const pDst[3],
    const int dstStep[3], LumSize roiSize);
/** YUY2 to semi-planar 4:1:1. */
LUMAPI LumStatus lumiYCbCr422ToYCbCr411_8u_C2P2R(const Lum8u* pSrc, int srcStep, Lum8u* pDstY, int dstYStep,
    Lum8u* pDstCbCr, int dstCbCrStep, LumSize roiSize);
/** YCbCr422 planes to YCbCr411 planes. */
LUMAPI LumStatus lumiYCbCr422ToYCbCr411_8u_P3R(const Lum8u* const pSrc[3], const int srcStep[3], Lum8u* const pDst[3],
    const int dstStep[3], LumSize roiSize);
/** YCbCr422 planes to semi-planar 4:1:1. */
LUMAPI LumStatus lumiYCbCr422ToYCbCr411_8u_P3P2R(const Lum8u* const pSrc[3], const int srcStep[3], Lum8u* pDstY,
    int dstYStep, Lum8u* pDstCbCr, int dstCbCrStep, LumSize roiSize);
/** YCbCr411 planes to YCbCr422 planes (chroma samples repeated). */
LUMAPI LumStatus lumiYCbCr411ToYCbCr422_8u_P3R(const Lum8u* const pSrc[3], const int srcStep[3], Lum8u* const pDst[3],
    const int dstStep[3], LumSize roiSize);
/** YCbCr411 planes to Y, Cr, Cb 4:2:2 planes. */
LUMAPI LumStatus lumiYCbCr411ToYCrCb422_8u_P3R(const Lum8u* const pSrc[3], const int srcStep[3], Lum8u* const pDst[3],
    const int dstStep[3], LumSize roiSize);
/** YCbCr411 planes to YUY2. */
LUMAPI LumStatus lumiYCbCr411ToYCbCr422_8u_P3C2R(const Lum8u* const pSrc[3], const int srcStep[3], Lum8u* pDst,
    int dstStep, LumSize roiSize);
/** YCbCr411 planes to packed YCrCb422. */
LUMAPI LumStatus lumiYCbCr411ToYCrCb422_8u_P3C2R(const Lum8u* const pSrc[3], const int srcStep[3], Lum8u* pDst,
    int dstStep, LumSize roiSize);
/** Semi-planar 4:1:1 to YCbCr422 planes. */
LUMAPI LumStatus lumiYCbCr411ToYCbCr422_8u_P2P3R(const Lum8u* pSrcY, int srcYStep, const Lum8u* pSrcCbCr,
    int srcCbCrStep, Lum8u* const pDst[3], const int dstStep[3], LumSize roiSize);
/** Semi-planar 4:1:1 to YUY2. */
LUMAPI LumStatus lumiYCbCr411ToYCbCr422_8u_P2C2R(const Lum8u* pSrcY, int srcYStep, const Lum8u* pSrcCbCr,
    int srcCbCrStep, Lum8u* pDst, int dstStep, LumSize roiSize);
/** NV12 to YCbCr411 planes (lossless reorder). */
LUMAPI LumStatus lumiYCbCr420ToYCbCr411_8u_P2P3R(const Lum8u* pSrcY, int srcYStep, const Lum8u* pSrcCbCr,
    int srcCbCrStep, Lum8u* const pDst[3], const int dstStep[3], LumSize roiSize);
/** YCbCr420 planes to semi-planar 4:1:1. */
LUMAPI LumStatus lumiYCbCr420ToYCbCr411_8u_P3P2R(const Lum8u* const pSrc[3], const int srcStep[3], Lum8u* pDstY,
    int dstYStep, Lum8u* pDstCbCr, int dstCbCrStep, LumSize roiSize);
/** YV12 planes to semi-planar 4:1:1. */
LUMAPI LumStatus lumiYCrCb420ToYCbCr411_8u_P3P2R(const Lum8u* const pSrc[3], const int srcStep[3], Lum8u* pDstY,
    int dstYStep, Lum8u* pDstCbCr, int dstCbCrStep, LumSize roiSize);
/** YCbCr411 planes to YCbCr420 planes (lossless reorder). */
LUMAPI LumStatus lumiYCbCr411ToYCbCr420_8u_P3R(const Lum8u* const pSrc[3], const int srcStep[3], Lum8u* const pDst[3],
    const int dstStep[3], LumSize roiSize);
/** YCbCr411 planes to NV12. */
LUMAPI LumStatus lumiYCbCr411ToYCbCr420_8u_P3P2R(const Lum8u* const pSrc[3], const int srcStep[3], Lum8u* pDstY,
    int dstYStep, Lum8u* pDstCbCr, int dstCbCrStep, LumSize roiSize);
/** Semi-planar 4:1:1 to YCbCr420 planes. */
LUMAPI LumStatus lumiYCbCr411ToYCbCr420_8u_P2P3R(const Lum8u* pSrcY, int srcYStep, const Lum8u* pSrcCbCr,
    int srcCbCrStep, Lum8u* const pDst[3], const int dstStep[3], LumSize roiSize);
/** Semi-planar 4:1:1 to YV12 planes. */
LUMAPI LumStatus lumiYCbCr411ToYCrCb420_8u_P2P3R(const Lum8u* pSrcY, int srcYStep, const Lum8u* pSrcCbCr,
    int srcCbCrStep, Lum8u* const pDst[3], const int dstStep[3], LumSize roiSize);
/** 4:2:0 planes to 4:1:1 planes with vertical averaging; width a multiple of 4, height even.
 *  Height 2 reads two chroma rows of each source plane (one below the region's) and writes
 *  four chroma rows of each destination plane (two below): leave that room, or pass a
 *  height of at least 4. */
LUMAPI LumStatus lumiYCbCr420To411_8u_P3R(const Lum8u* const pSrc[3], const int srcStep[3], Lum8u* const pDst[3],
    const int dstStep[3], LumSize roiSize);
/** 4:1:1 planes to 4:2:0 planes with horizontal interpolation; width and height multiples of 4. */
LUMAPI LumStatus lumiYCbCr411To420_8u_P3R(const Lum8u* const pSrc[3], const int srcStep[3], Lum8u* const pDst[3],
    const int dstStep[3], LumSize roiSize);
/** 4:2:0 planes to 16:2:0 planes by decimation; width and height multiples of 4. */
LUMAPI LumStatus lumiYCbCr420To1620_8u_P3R(const Lum8u* const pSrc[3], const int srcStep[3], Lum8u* const pDst[3],
    const int dstStep[3], LumSize roiSize);
/** 16:2:0 planes to 4:2:0 planes with interpolation; width and height multiples of 4. */
LUMAPI LumStatus lumiYCbCr1620To420_8u_P3R(const Lum8u* const pSrc[3], const int srcStep[3], Lum8u* const pDst[3],
    const int dstStep[3], LumSize roiSize);

/* -------------------------------------------------------------------------- */
/* Filtered chroma and deinterlacing                                          */
/* -------------------------------------------------------------------------- */
/* Real filters in place of dropping or repeating: a -1, 9, 9, -1 vertical
   up-sampler of 4:2:0 chroma (height >= 8, worked in multiples of 8), NV12
   deinterlacing that can run slice by slice (layout: LumSliceLayout values), and
   a 4:2:0 to BGRA conversion with horizontally interpolated chroma. */

/** YCbCr420 planes to YCbCr422 planes, four-tap vertical chroma filter. */
LUMAPI LumStatus lumiYCbCr420ToYCbCr422_Filter_8u_P3R(const Lum8u* const pSrc[3], const int srcStep[3],
    Lum8u* const pDst[3], const int dstStep[3], LumSize roiSize);
/** YV12 planes to YCbCr422 planes, four-tap vertical chroma filter. */
LUMAPI LumStatus lumiYCrCb420ToYCbCr422_Filter_8u_P3R(const Lum8u* const pSrc[3], const int srcStep[3],
    Lum8u* const pDst[3], const int dstStep[3], LumSize roiSize);
/** NV12 to YCbCr422 planes, four-tap vertical chroma filter. */
LUMAPI LumStatus lumiYCbCr420ToYCbCr422_Filter_8u_P2P3R(const Lum8u* pSrcY, int srcYStep, const Lum8u* pSrcCbCr,
    int srcCbCrStep, Lum8u* const pDst[3], const int dstStep[3], LumSize roiSize);
/** NV12 to deinterlaced YUY2, by slice (layout: a LumSliceLayout value). */
LUMAPI LumStatus lumiYCbCr420ToYCbCr422_Filter_8u_P2C2R(const Lum8u* pSrcY, int srcYStep, const Lum8u* pSrcCbCr,
    int srcCbCrStep, Lum8u* pDst, int dstStep, LumSize roiSize, int layout);
/** NV12 to deinterlaced 4:2:0 planes, by slice (layout: a LumSliceLayout value). */
LUMAPI LumStatus lumiYCbCr420ToYCrCb420_Filter_8u_P2P3R(const Lum8u* pSrcY, int srcYStep, const Lum8u* pSrcCbCr,
    int srcCbCrStep, Lum8u* const pDst[3], const int dstStep[3], LumSize roiSize, int layout);
/** YV12 planes to BGRA with interpolated chroma; lumStatusOddSize for odd sizes (the
 *  even part is converted; a region one pixel high is left as it is). A region one pixel
 *  wide converts two pixels a row from chroma sample 0: leave room for the second pixel
 *  in the destination and for two luma samples a row in the source. */
LUMAPI LumStatus lumiYCrCb420ToBGR_Filter_8u_P3C4R(const Lum8u* const pSrc[3], const int srcStep[3], Lum8u* pDst,
    int dstStep, LumSize roiSize, Lum8u alpha);

/* -------------------------------------------------------------------------- */
/* Interlaced                                                                 */
/* -------------------------------------------------------------------------- */
/* 4:2:2 <-> 4:2:0 for interlaced frames: each chroma row is computed from rows
   of its own field. Width >= 2 and height >= 4, else lumStatusBadSize; the work
   runs on width & ~1 by height & ~3 and returns lumStatusOddSize when that cut
   anything. */

/** YCbCr422 planes to YCbCr420 planes, field-aware. */
LUMAPI LumStatus lumiYCbCr422To420_Interlace_8u_P3R(const Lum8u* const pSrc[3], const int srcStep[3],
    Lum8u* const pDst[3], const int dstStep[3], LumSize roiSize);
/** UYVY to YCbCr420 planes, field-aware. */
LUMAPI LumStatus lumiCbYCr422ToYCbCr420_Interlace_8u_C2P3R(const Lum8u* pSrc, int srcStep, Lum8u* const pDst[3],
    const int dstStep[3], LumSize roiSize);
/** YCbCr420 planes to YCbCr422 planes, field-aware. */
LUMAPI LumStatus lumiYCbCr420To422_Interlace_8u_P3R(const Lum8u* const pSrc[3], const int srcStep[3],
    Lum8u* const pDst[3], const int dstStep[3], LumSize roiSize);
/** YCbCr420 planes to UYVY, field-aware. */
LUMAPI LumStatus lumiYCbCr420ToCbYCr422_Interlace_8u_P3C2R(const Lum8u* const pSrc[3], const int srcStep[3],
    Lum8u* pDst, int dstStep, LumSize roiSize);

/* -------------------------------------------------------------------------- */
/* XYZ                                                                        */
/* -------------------------------------------------------------------------- */
/* Linear RGB <-> CIE XYZ, BT.709 primaries, D65 white. 8u and 16u span 0..1,
   16s is the 16u scale less 32768, 32f is nominal 0..1 and not range-checked.
   AC4: alpha neither read nor written. Nothing outside the region is read or
   written. 8u: the first width & ~7 pixels of a C3 row (~3 in AC4) take the
   block set, the rest the tail set, which differ by a code value at places.
   16u, 16s, 32f take their steps in samples (the low bits of a byte step are
   dropped). Returns lumStatusNullPointer for a null pointer, then
   lumStatusBadSize for a width or height below 1; steps are not checked. */

LUMAPI LumStatus lumiRGBToXYZ_8u_C3R(const Lum8u* pSrc, int srcStep, Lum8u* pDst, int dstStep, LumSize roiSize);
LUMAPI LumStatus lumiRGBToXYZ_8u_AC4R(const Lum8u* pSrc, int srcStep, Lum8u* pDst, int dstStep, LumSize roiSize);
LUMAPI LumStatus lumiRGBToXYZ_16u_C3R(const Lum16u* pSrc, int srcStep, Lum16u* pDst, int dstStep, LumSize roiSize);
LUMAPI LumStatus lumiRGBToXYZ_16u_AC4R(const Lum16u* pSrc, int srcStep, Lum16u* pDst, int dstStep, LumSize roiSize);
LUMAPI LumStatus lumiRGBToXYZ_16s_C3R(const Lum16s* pSrc, int srcStep, Lum16s* pDst, int dstStep, LumSize roiSize);
LUMAPI LumStatus lumiRGBToXYZ_16s_AC4R(const Lum16s* pSrc, int srcStep, Lum16s* pDst, int dstStep, LumSize roiSize);
LUMAPI LumStatus lumiRGBToXYZ_32f_C3R(const Lum32f* pSrc, int srcStep, Lum32f* pDst, int dstStep, LumSize roiSize);
LUMAPI LumStatus lumiRGBToXYZ_32f_AC4R(const Lum32f* pSrc, int srcStep, Lum32f* pDst, int dstStep, LumSize roiSize);
LUMAPI LumStatus lumiXYZToRGB_8u_C3R(const Lum8u* pSrc, int srcStep, Lum8u* pDst, int dstStep, LumSize roiSize);
LUMAPI LumStatus lumiXYZToRGB_8u_AC4R(const Lum8u* pSrc, int srcStep, Lum8u* pDst, int dstStep, LumSize roiSize);
LUMAPI LumStatus lumiXYZToRGB_16u_C3R(const Lum16u* pSrc, int srcStep, Lum16u* pDst, int dstStep, LumSize roiSize);
LUMAPI LumStatus lumiXYZToRGB_16u_AC4R(const Lum16u* pSrc, int srcStep, Lum16u* pDst, int dstStep, LumSize roiSize);
LUMAPI LumStatus lumiXYZToRGB_16s_C3R(const Lum16s* pSrc, int srcStep, Lum16s* pDst, int dstStep, LumSize roiSize);
LUMAPI LumStatus lumiXYZToRGB_16s_AC4R(const Lum16s* pSrc, int srcStep, Lum16s* pDst, int dstStep, LumSize roiSize);
LUMAPI LumStatus lumiXYZToRGB_32f_C3R(const Lum32f* pSrc, int srcStep, Lum32f* pDst, int dstStep, LumSize roiSize);
LUMAPI LumStatus lumiXYZToRGB_32f_AC4R(const Lum32f* pSrc, int srcStep, Lum32f* pDst, int dstStep, LumSize roiSize);

/* -------------------------------------------------------------------------- */
/* LUV                                                                        */
/* -------------------------------------------------------------------------- */
/* Linear RGB <-> CIE L*u*v*. 8u: L*2.55, (U+134)*0.720339, (V+140)*0.97328246;
   16u: L*655.35, (U+134)*185.12712, (V+140)*250.13359; 16s: 16u less 32768;
   32f: L, U, V as they are. BGR forms take the RGB side in B, G, R order.
   AC4: alpha neither read nor written. Nothing outside the region is read or
   written. The first width & ~3 pixels of a row take the block path and the
   rest the scalar tail, which compute differently on purpose (the 8u RGBToLUV
   AC4 and the 32f LUVToRGB AC4 forms have no block path). 16u, 16s and the 32f
   LUVToRGB AC4 form take their steps in samples (the low bits of a byte step
   are dropped), the others in bytes. Returns lumStatusNullPointer for a null
   pointer, then lumStatusBadSize for a width or height below 1; steps are not
   checked. */

LUMAPI LumStatus lumiRGBToLUV_8u_C3R(const Lum8u* pSrc, int srcStep, Lum8u* pDst, int dstStep, LumSize roiSize);
LUMAPI LumStatus lumiRGBToLUV_8u_AC4R(const Lum8u* pSrc, int srcStep, Lum8u* pDst, int dstStep, LumSize roiSize);
LUMAPI LumStatus lumiRGBToLUV_16u_C3R(const Lum16u* pSrc, int srcStep, Lum16u* pDst, int dstStep, LumSize roiSize);
LUMAPI LumStatus lumiRGBToLUV_16u_AC4R(const Lum16u* pSrc, int srcStep, Lum16u* pDst, int dstStep, LumSize roiSize);
LUMAPI LumStatus lumiRGBToLUV_16s_C3R(const Lum16s* pSrc, int srcStep, Lum16s* pDst, int dstStep, LumSize roiSize);
LUMAPI LumStatus lumiRGBToLUV_16s_AC4R(const Lum16s* pSrc, int srcStep, Lum16s* pDst, int dstStep, LumSize roiSize);
LUMAPI LumStatus lumiRGBToLUV_32f_C3R(const Lum32f* pSrc, int srcStep, Lum32f* pDst, int dstStep, LumSize roiSize);
LUMAPI LumStatus lumiRGBToLUV_32f_AC4R(const Lum32f* pSrc, int srcStep, Lum32f* pDst, int dstStep, LumSize roiSize);
LUMAPI LumStatus lumiLUVToRGB_8u_C3R(const Lum8u* pSrc, int srcStep, Lum8u* pDst, int dstStep, LumSize roiSize);
LUMAPI LumStatus lumiLUVToRGB_8u_AC4R(const Lum8u* pSrc, int srcStep, Lum8u* pDst, int dstStep, LumSize roiSize);
LUMAPI LumStatus lumiLUVToRGB_16u_C3R(const Lum16u* pSrc, int srcStep, Lum16u* pDst, int dstStep, LumSize roiSize);
LUMAPI LumStatus lumiLUVToRGB_16u_AC4R(const Lum16u* pSrc, int srcStep, Lum16u* pDst, int dstStep, LumSize roiSize);
LUMAPI LumStatus lumiLUVToRGB_16s_C3R(const Lum16s* pSrc, int srcStep, Lum16s* pDst, int dstStep, LumSize roiSize);
LUMAPI LumStatus lumiLUVToRGB_16s_AC4R(const Lum16s* pSrc, int srcStep, Lum16s* pDst, int dstStep, LumSize roiSize);
LUMAPI LumStatus lumiLUVToRGB_32f_C3R(const Lum32f* pSrc, int srcStep, Lum32f* pDst, int dstStep, LumSize roiSize);
LUMAPI LumStatus lumiLUVToRGB_32f_AC4R(const Lum32f* pSrc, int srcStep, Lum32f* pDst, int dstStep, LumSize roiSize);
LUMAPI LumStatus lumiBGRToLUV_8u_C3R(const Lum8u* pSrc, int srcStep, Lum8u* pDst, int dstStep, LumSize roiSize);
LUMAPI LumStatus lumiBGRToLUV_32f_C3R(const Lum32f* pSrc, int srcStep, Lum32f* pDst, int dstStep, LumSize roiSize);
LUMAPI LumStatus lumiLUVToBGR_8u_C3R(const Lum8u* pSrc, int srcStep, Lum8u* pDst, int dstStep, LumSize roiSize);
LUMAPI LumStatus lumiLUVToBGR_32f_C3R(const Lum32f* pSrc, int srcStep, Lum32f* pDst, int dstStep, LumSize roiSize);

/* -------------------------------------------------------------------------- */
/* Lab                                                                        */
/* -------------------------------------------------------------------------- */
/* Linear RGB <-> CIE L*a*b*, D65 white. 8u: L*2.55, a+128, b+128; 16u: L*655.35,
   (a+128)*255, (b+128)*255; 32f, 64f: L, a, b as they are. Planar forms take
   three planes and three steps on each side; the _L forms take long-size steps
   and size, the others forward to them. The reverse direction cubes everywhere
   (no linear segment), so dark colours do not round-trip exactly.
   Statuses: lumStatusNullPointer for a null image pointer, plane pointer or
   step array (a step array is refused before anything else is read), then
   lumStatusBadSize for a width or height below 1. Steps are byte counts and
   not checked; nothing is read or written outside the region. The forward
   forms' 8u and 16u output is saturated in blocks of 4 pixels and stored by its
   low bits in the 0..3 pixels after them (the same for input in range); the
   reverse forms clamp everywhere. */

LUMAPI LumStatus lumiRGBToLab_8u_C3R(const Lum8u* pSrc, int srcStep, Lum8u* pDst, int dstStep, LumSize roiSize);
LUMAPI LumStatus lumiBGRToLab_8u_C3R(const Lum8u* pSrc, int srcStep, Lum8u* pDst, int dstStep, LumSize roiSize);
/** 8-bit BGR to 16-bit Lab. */
LUMAPI LumStatus lumiBGRToLab_8u16u_C3R(const Lum8u* pSrc, int srcStep, Lum16u* pDst, int dstStep, LumSize roiSize);
LUMAPI LumStatus lumiRGBToLab_32f_C3R(const Lum32f* pSrc, int srcStep, Lum32f* pDst, int dstStep, LumSize roiSize);
LUMAPI LumStatus lumiBGRToLab_32f_C3R(const Lum32f* pSrc, int srcStep, Lum32f* pDst, int dstStep, LumSize roiSize);
LUMAPI LumStatus lumiLabToRGB_8u_C3R(const Lum8u* pSrc, int srcStep, Lum8u* pDst, int dstStep, LumSize roiSize);
LUMAPI LumStatus lumiLabToBGR_8u_C3R(const Lum8u* pSrc, int srcStep, Lum8u* pDst, int dstStep, LumSize roiSize);
/** 16-bit Lab to 8-bit BGR. */
LUMAPI LumStatus lumiLabToBGR_16u8u_C3R(const Lum16u* pSrc, int srcStep, Lum8u* pDst, int dstStep, LumSize roiSize);
LUMAPI LumStatus lumiLabToRGB_32f_C3R(const Lum32f* pSrc, int srcStep, Lum32f* pDst, int dstStep, LumSize roiSize);
LUMAPI LumStatus lumiLabToBGR_32f_C3R(const Lum32f* pSrc, int srcStep, Lum32f* pDst, int dstStep, LumSize roiSize);
/** R, G, B planes to L, a, b planes; null step arrays -> lumStatusNullPointer. */
LUMAPI LumStatus lumiRGBToLab_32f_P3R(const Lum32f* const pSrc[3], const int srcStep[3], Lum32f* const pDst[3],
    const int dstStep[3], LumSize roiSize);
/** R, G, B planes to L, a, b planes, long-size steps and size. */
LUMAPI LumStatus lumiRGBToLab_32f_P3R_L(const Lum32f* const pSrc[3], const LumLong srcStep[3], Lum32f* const pDst[3],
    const LumLong dstStep[3], LumSizeL roiSize);
/** R, G, B planes to L, a, b planes; null step arrays -> lumStatusNullPointer. */
LUMAPI LumStatus lumiRGBToLab_64f_P3R(const Lum64f* const pSrc[3], const int srcStep[3], Lum64f* const pDst[3],
    const int dstStep[3], LumSize roiSize);
/** R, G, B planes to L, a, b planes, long-size steps and size. */
LUMAPI LumStatus lumiRGBToLab_64f_P3R_L(const Lum64f* const pSrc[3], const LumLong srcStep[3], Lum64f* const pDst[3],
    const LumLong dstStep[3], LumSizeL roiSize);
/** L, a, b planes to R, G, B planes; null step arrays -> lumStatusNullPointer. */
LUMAPI LumStatus lumiLabToRGB_32f_P3R(const Lum32f* const pSrc[3], const int srcStep[3], Lum32f* const pDst[3],
    const int dstStep[3], LumSize roiSize);
/** L, a, b planes to R, G, B planes, long-size steps and size. */
LUMAPI LumStatus lumiLabToRGB_32f_P3R_L(const Lum32f* const pSrc[3], const LumLong srcStep[3], Lum32f* const pDst[3],
    const LumLong dstStep[3], LumSizeL roiSize);
/** L, a, b planes to R, G, B planes; null step arrays -> lumStatusNullPointer. */
LUMAPI LumStatus lumiLabToRGB_64f_P3R(const Lum64f* const pSrc[3], const int srcStep[3], Lum64f* const pDst[3],
    const int dstStep[3], LumSize roiSize);
/** L, a, b planes to R, G, B planes, long-size steps and size. */
LUMAPI LumStatus lumiLabToRGB_64f_P3R_L(const Lum64f* const pSrc[3], const LumLong srcStep[3], Lum64f* const pDst[3],
    const LumLong dstStep[3], LumSizeL roiSize);

/* -------------------------------------------------------------------------- */
/* YCC                                                                        */
/* -------------------------------------------------------------------------- */
/* RGB <-> Photo YCC, neutral chroma at 156/255 and 137/255. 8u fixed point,
   the other types single precision on the sample scale. 16u and 16s round to
   nearest in blocks of 4 pixels and add 0.49999 and truncate in the 0..3 pixels
   after them; 32f forward does not clamp, 32f reverse clamps to 0..1. AC4: the
   destination's alpha is never written. 16u, 16s and 32f steps count whole
   samples (a byte step's low bits are dropped). Statuses: lumStatusNullPointer,
   then lumStatusBadSize for a width or height below 1; steps are not checked;
   nothing is read or written outside the region. */

LUMAPI LumStatus lumiRGBToYCC_8u_C3R(const Lum8u* pSrc, int srcStep, Lum8u* pDst, int dstStep, LumSize roiSize);
LUMAPI LumStatus lumiRGBToYCC_8u_AC4R(const Lum8u* pSrc, int srcStep, Lum8u* pDst, int dstStep, LumSize roiSize);
LUMAPI LumStatus lumiRGBToYCC_16u_C3R(const Lum16u* pSrc, int srcStep, Lum16u* pDst, int dstStep, LumSize roiSize);
LUMAPI LumStatus lumiRGBToYCC_16u_AC4R(const Lum16u* pSrc, int srcStep, Lum16u* pDst, int dstStep, LumSize roiSize);
LUMAPI LumStatus lumiRGBToYCC_16s_C3R(const Lum16s* pSrc, int srcStep, Lum16s* pDst, int dstStep, LumSize roiSize);
LUMAPI LumStatus lumiRGBToYCC_16s_AC4R(const Lum16s* pSrc, int srcStep, Lum16s* pDst, int dstStep, LumSize roiSize);
LUMAPI LumStatus lumiRGBToYCC_32f_C3R(const Lum32f* pSrc, int srcStep, Lum32f* pDst, int dstStep, LumSize roiSize);
LUMAPI LumStatus lumiRGBToYCC_32f_AC4R(const Lum32f* pSrc, int srcStep, Lum32f* pDst, int dstStep, LumSize roiSize);
LUMAPI LumStatus lumiYCCToRGB_8u_C3R(const Lum8u* pSrc, int srcStep, Lum8u* pDst, int dstStep, LumSize roiSize);
LUMAPI LumStatus lumiYCCToRGB_8u_AC4R(const Lum8u* pSrc, int srcStep, Lum8u* pDst, int dstStep, LumSize roiSize);
LUMAPI LumStatus lumiYCCToRGB_16u_C3R(const Lum16u* pSrc, int srcStep, Lum16u* pDst, int dstStep, LumSize roiSize);
LUMAPI LumStatus lumiYCCToRGB_16u_AC4R(const Lum16u* pSrc, int srcStep, Lum16u* pDst, int dstStep, LumSize roiSize);
LUMAPI LumStatus lumiYCCToRGB_16s_C3R(const Lum16s* pSrc, int srcStep, Lum16s* pDst, int dstStep, LumSize roiSize);
LUMAPI LumStatus lumiYCCToRGB_16s_AC4R(const Lum16s* pSrc, int srcStep, Lum16s* pDst, int dstStep, LumSize roiSize);
LUMAPI LumStatus lumiYCCToRGB_32f_C3R(const Lum32f* pSrc, int srcStep, Lum32f* pDst, int dstStep, LumSize roiSize);
LUMAPI LumStatus lumiYCCToRGB_32f_AC4R(const Lum32f* pSrc, int srcStep, Lum32f* pDst, int dstStep, LumSize roiSize);

/* -------------------------------------------------------------------------- */
/* HLS and HSV                                                                */
/* -------------------------------------------------------------------------- */
/* Hexcone models, single precision inside. Hue: 8u 0..255, 16u 0..65535 (16s
   less 32768), 32f 0..1 for 0..360 degrees. The BGR family (8u) takes the B
   channel first, checks its steps (below 1 -> lumStatusBadStep) and copies alpha
   in the AP4, AC4P4 and AP4C4 forms; its planar forms share one step.
   Statuses: lumStatusNullPointer (any pointer, plane pointers included), then
   lumStatusBadSize (width or height below 1); the planar BGR family tests its
   steps between the two, lumiBGRToHLS_8u_AC4R after the size. The RGB family
   leaves steps unchecked (zero and negative steps allowed); its 16u, 16s and 32f
   forms round each byte step down to whole samples. The AC4 forms of the RGB
   family and lumiBGRToHLS_8u_AC4R leave destination alpha unwritten. No sample
   outside the region is read or written. A refused call writes nothing.
   lumiHLSToRGB_32f_* store results as computed, unclamped. */

LUMAPI LumStatus lumiRGBToHLS_8u_C3R(const Lum8u* pSrc, int srcStep, Lum8u* pDst, int dstStep, LumSize roiSize);
LUMAPI LumStatus lumiRGBToHLS_8u_AC4R(const Lum8u* pSrc, int srcStep, Lum8u* pDst, int dstStep, LumSize roiSize);
LUMAPI LumStatus lumiRGBToHLS_16u_C3R(const Lum16u* pSrc, int srcStep, Lum16u* pDst, int dstStep, LumSize roiSize);
LUMAPI LumStatus lumiRGBToHLS_16u_AC4R(const Lum16u* pSrc, int srcStep, Lum16u* pDst, int dstStep, LumSize roiSize);
LUMAPI LumStatus lumiRGBToHLS_16s_C3R(const Lum16s* pSrc, int srcStep, Lum16s* pDst, int dstStep, LumSize roiSize);
LUMAPI LumStatus lumiRGBToHLS_16s_AC4R(const Lum16s* pSrc, int srcStep, Lum16s* pDst, int dstStep, LumSize roiSize);
LUMAPI LumStatus lumiRGBToHLS_32f_C3R(const Lum32f* pSrc, int srcStep, Lum32f* pDst, int dstStep, LumSize roiSize);
LUMAPI LumStatus lumiRGBToHLS_32f_AC4R(const Lum32f* pSrc, int srcStep, Lum32f* pDst, int dstStep, LumSize roiSize);
LUMAPI LumStatus lumiHLSToRGB_8u_C3R(const Lum8u* pSrc, int srcStep, Lum8u* pDst, int dstStep, LumSize roiSize);
LUMAPI LumStatus lumiHLSToRGB_8u_AC4R(const Lum8u* pSrc, int srcStep, Lum8u* pDst, int dstStep, LumSize roiSize);
LUMAPI LumStatus lumiHLSToRGB_16u_C3R(const Lum16u* pSrc, int srcStep, Lum16u* pDst, int dstStep, LumSize roiSize);
LUMAPI LumStatus lumiHLSToRGB_16u_AC4R(const Lum16u* pSrc, int srcStep, Lum16u* pDst, int dstStep, LumSize roiSize);
LUMAPI LumStatus lumiHLSToRGB_16s_C3R(const Lum16s* pSrc, int srcStep, Lum16s* pDst, int dstStep, LumSize roiSize);
LUMAPI LumStatus lumiHLSToRGB_16s_AC4R(const Lum16s* pSrc, int srcStep, Lum16s* pDst, int dstStep, LumSize roiSize);
LUMAPI LumStatus lumiHLSToRGB_32f_C3R(const Lum32f* pSrc, int srcStep, Lum32f* pDst, int dstStep, LumSize roiSize);
LUMAPI LumStatus lumiHLSToRGB_32f_AC4R(const Lum32f* pSrc, int srcStep, Lum32f* pDst, int dstStep, LumSize roiSize);
LUMAPI LumStatus lumiRGBToHSV_8u_C3R(const Lum8u* pSrc, int srcStep, Lum8u* pDst, int dstStep, LumSize roiSize);
LUMAPI LumStatus lumiRGBToHSV_8u_AC4R(const Lum8u* pSrc, int srcStep, Lum8u* pDst, int dstStep, LumSize roiSize);
LUMAPI LumStatus lumiRGBToHSV_16u_C3R(const Lum16u* pSrc, int srcStep, Lum16u* pDst, int dstStep, LumSize roiSize);
LUMAPI LumStatus lumiRGBToHSV_16u_AC4R(const Lum16u* pSrc, int srcStep, Lum16u* pDst, int dstStep, LumSize roiSize);
LUMAPI LumStatus lumiHSVToRGB_8u_C3R(const Lum8u* pSrc, int srcStep, Lum8u* pDst, int dstStep, LumSize roiSize);
LUMAPI LumStatus lumiHSVToRGB_8u_AC4R(const Lum8u* pSrc, int srcStep, Lum8u* pDst, int dstStep, LumSize roiSize);
LUMAPI LumStatus lumiHSVToRGB_16u_C3R(const Lum16u* pSrc, int srcStep, Lum16u* pDst, int dstStep, LumSize roiSize);
LUMAPI LumStatus lumiHSVToRGB_16u_AC4R(const Lum16u* pSrc, int srcStep, Lum16u* pDst, int dstStep, LumSize roiSize);
/** BGRA to HLSA; destination alpha left unchanged; size checked before steps. */
LUMAPI LumStatus lumiBGRToHLS_8u_AC4R(const Lum8u* pSrc, int srcStep, Lum8u* pDst, int dstStep, LumSize roiSize);
LUMAPI LumStatus lumiBGRToHLS_8u_P3R(const Lum8u* const pSrc[3], int srcStep, Lum8u* const pDst[3], int dstStep,
    LumSize roiSize);
/** Four planes each side; alpha plane copied. */
LUMAPI LumStatus lumiBGRToHLS_8u_AP4R(const Lum8u* const pSrc[4], int srcStep, Lum8u* const pDst[4], int dstStep,
    LumSize roiSize);
LUMAPI LumStatus lumiBGRToHLS_8u_C3P3R(const Lum8u* pSrc, int srcStep, Lum8u* const pDst[3], int dstStep,
    LumSize roiSize);
LUMAPI LumStatus lumiBGRToHLS_8u_P3C3R(const Lum8u* const pSrc[3], int srcStep, Lum8u* pDst, int dstStep,
    LumSize roiSize);
/** Interleaved four channels to four planes; alpha copied. */
LUMAPI LumStatus lumiBGRToHLS_8u_AC4P4R(const Lum8u* pSrc, int srcStep, Lum8u* const pDst[4], int dstStep,
    LumSize roiSize);
/** Four planes to interleaved four channels; alpha copied. */
LUMAPI LumStatus lumiBGRToHLS_8u_AP4C4R(const Lum8u* const pSrc[4], int srcStep, Lum8u* pDst, int dstStep,
    LumSize roiSize);
LUMAPI LumStatus lumiHLSToBGR_8u_P3R(const Lum8u* const pSrc[3], int srcStep, Lum8u* const pDst[3], int dstStep,
    LumSize roiSize);
/** Four planes each side; alpha plane copied. */
LUMAPI LumStatus lumiHLSToBGR_8u_AP4R(const Lum8u* const pSrc[4], int srcStep, Lum8u* const pDst[4], int dstStep,
    LumSize roiSize);
LUMAPI LumStatus lumiHLSToBGR_8u_C3P3R(const Lum8u* pSrc, int srcStep, Lum8u* const pDst[3], int dstStep,
    LumSize roiSize);
LUMAPI LumStatus lumiHLSToBGR_8u_P3C3R(const Lum8u* const pSrc[3], int srcStep, Lum8u* pDst, int dstStep,
    LumSize roiSize);
/** Interleaved four channels to four planes; alpha copied. */
LUMAPI LumStatus lumiHLSToBGR_8u_AC4P4R(const Lum8u* pSrc, int srcStep, Lum8u* const pDst[4], int dstStep,
    LumSize roiSize);
/** Four planes to interleaved four channels; alpha copied. */
LUMAPI LumStatus lumiHLSToBGR_8u_AP4C4R(const Lum8u* const pSrc[4], int srcStep, Lum8u* pDst, int dstStep,
    LumSize roiSize);

/* -------------------------------------------------------------------------- */
/* YCoCg                                                                      */
/* -------------------------------------------------------------------------- */
/* Packed BGR (RGB for the 8u forms) <-> Y, Co, Cg planes; one step in bytes
   for all planes. _Rev is the reversible lifting transform, exact in integers,
   Co and Cg one bit wider. SBGR is signed BGR. C4 forward forms ignore the
   fourth sample; P3C4R forms write aval as alpha. Nothing outside the region is
   read or written, and steps are not checked. Statuses: lumStatusNullPointer
   for a null image, plane array or plane; then, for the functions marked
   "sized", lumStatusBadSize for a width or height below 1. The others write
   nothing at such sizes and return lumStatusOk. */

/** Plain transform, 8u BGR to 16s planes; sized. */
LUMAPI LumStatus lumiBGRToYCoCg_8u16s_C3P3R(const Lum8u* pSrc, int srcStep, Lum16s* const pDst[3], int dstStep,
    LumSize roiSize);
/** Plain transform, 8u BGRA (alpha ignored) to 16s planes; sized. */
LUMAPI LumStatus lumiBGRToYCoCg_8u16s_C4P3R(const Lum8u* pSrc, int srcStep, Lum16s* const pDst[3], int dstStep,
    LumSize roiSize);
/** Reversible transform, 8u BGR to 16s planes; sized. */
LUMAPI LumStatus lumiBGRToYCoCg_Rev_8u16s_C3P3R(const Lum8u* pSrc, int srcStep, Lum16s* const pDst[3], int dstStep,
    LumSize roiSize);
/** Reversible transform, 8u BGRA (alpha ignored) to 16s planes; sized. */
LUMAPI LumStatus lumiBGRToYCoCg_Rev_8u16s_C4P3R(const Lum8u* pSrc, int srcStep, Lum16s* const pDst[3], int dstStep,
    LumSize roiSize);
/** Plain transform in 32 bits, 16s BGR to 16s planes (low 16 bits); sized. */
LUMAPI LumStatus lumiSBGRToYCoCg_16s_C3P3R(const Lum16s* pSrc, int srcStep, Lum16s* const pDst[3], int dstStep,
    LumSize roiSize);
/** Plain transform in 32 bits, 16s BGRA to 16s planes (low 16 bits); sized. */
LUMAPI LumStatus lumiSBGRToYCoCg_16s_C4P3R(const Lum16s* pSrc, int srcStep, Lum16s* const pDst[3], int dstStep,
    LumSize roiSize);
/** Reversible transform modulo 2^16, 16s BGR to 16s planes; unsized. */
LUMAPI LumStatus lumiSBGRToYCoCg_Rev_16s_C3P3R(const Lum16s* pSrc, int srcStep, Lum16s* const pDst[3], int dstStep,
    LumSize roiSize);
/** Reversible transform modulo 2^16, 16s BGRA to 16s planes; unsized. */
LUMAPI LumStatus lumiSBGRToYCoCg_Rev_16s_C4P3R(const Lum16s* pSrc, int srcStep, Lum16s* const pDst[3], int dstStep,
    LumSize roiSize);
/** Plain transform, 16s BGR to 32s planes; sized. */
LUMAPI LumStatus lumiSBGRToYCoCg_16s32s_C3P3R(const Lum16s* pSrc, int srcStep, Lum32s* const pDst[3], int dstStep,
    LumSize roiSize);
/** Plain transform, 16s BGRA to 32s planes; unsized. */
LUMAPI LumStatus lumiSBGRToYCoCg_16s32s_C4P3R(const Lum16s* pSrc, int srcStep, Lum32s* const pDst[3], int dstStep,
    LumSize roiSize);
/** Reversible transform, 16s BGR to 32s planes (lossless); sized. */
LUMAPI LumStatus lumiSBGRToYCoCg_Rev_16s32s_C3P3R(const Lum16s* pSrc, int srcStep, Lum32s* const pDst[3], int dstStep,
    LumSize roiSize);
/** Reversible transform, 16s BGRA to 32s planes (lossless); unsized. */
LUMAPI LumStatus lumiSBGRToYCoCg_Rev_16s32s_C4P3R(const Lum16s* pSrc, int srcStep, Lum32s* const pDst[3], int dstStep,
    LumSize roiSize);
/** RGB to Y, Co, Cg planes, Co and Cg biased by 128 and limited to 255; sized. */
LUMAPI LumStatus lumiRGBToYCoCg_8u_C3P3R(const Lum8u* pSrc, int srcStep, Lum8u* const pDst[3], int dstStep,
    LumSize roiSize);
/** Plain reverse modulo 2^16, clamped to 0..255; unsized. */
LUMAPI LumStatus lumiYCoCgToBGR_16s8u_P3C3R(const Lum16s* const pSrc[3], int srcStep, Lum8u* pDst, int dstStep,
    LumSize roiSize);
/** Plain reverse modulo 2^16, clamped to 0..255, alpha aval; unsized. */
LUMAPI LumStatus lumiYCoCgToBGR_16s8u_P3C4R(const Lum16s* const pSrc[3], int srcStep, Lum8u* pDst, int dstStep,
    LumSize roiSize, Lum8u aval);
/** Reversible reverse modulo 2^16, clamped to 0..255; unsized. */
LUMAPI LumStatus lumiYCoCgToBGR_Rev_16s8u_P3C3R(const Lum16s* const pSrc[3], int srcStep, Lum8u* pDst, int dstStep,
    LumSize roiSize);
/** Reversible reverse modulo 2^16, clamped to 0..255, alpha aval; unsized. */
LUMAPI LumStatus lumiYCoCgToBGR_Rev_16s8u_P3C4R(const Lum16s* const pSrc[3], int srcStep, Lum8u* pDst, int dstStep,
    LumSize roiSize, Lum8u aval);
/** Plain reverse modulo 2^16; unsized. */
LUMAPI LumStatus lumiYCoCgToSBGR_16s_P3C3R(const Lum16s* const pSrc[3], int srcStep, Lum16s* pDst, int dstStep,
    LumSize roiSize);
/** Plain reverse modulo 2^16, alpha aval; sized. */
LUMAPI LumStatus lumiYCoCgToSBGR_16s_P3C4R(const Lum16s* const pSrc[3], int srcStep, Lum16s* pDst, int dstStep,
    LumSize roiSize, Lum16s aval);
/** Reversible reverse modulo 2^16; unsized. */
LUMAPI LumStatus lumiYCoCgToSBGR_Rev_16s_P3C3R(const Lum16s* const pSrc[3], int srcStep, Lum16s* pDst, int dstStep,
    LumSize roiSize);
/** Reversible reverse modulo 2^16, alpha aval; unsized. */
LUMAPI LumStatus lumiYCoCgToSBGR_Rev_16s_P3C4R(const Lum16s* const pSrc[3], int srcStep, Lum16s* pDst, int dstStep,
    LumSize roiSize, Lum16s aval);
/** Plain reverse in 32 bits, low 16 bits stored; sized. */
LUMAPI LumStatus lumiYCoCgToSBGR_32s16s_P3C3R(const Lum32s* const pSrc[3], int srcStep, Lum16s* pDst, int dstStep,
    LumSize roiSize);
/** Plain reverse in 32 bits, low 16 bits stored, alpha aval; sized. */
LUMAPI LumStatus lumiYCoCgToSBGR_32s16s_P3C4R(const Lum32s* const pSrc[3], int srcStep, Lum16s* pDst, int dstStep,
    LumSize roiSize, Lum16s aval);
/** Reversible reverse in 32 bits, low 16 bits stored; unsized. */
LUMAPI LumStatus lumiYCoCgToSBGR_Rev_32s16s_P3C3R(const Lum32s* const pSrc[3], int srcStep, Lum16s* pDst, int dstStep,
    LumSize roiSize);
/** Reversible reverse in 32 bits, low 16 bits stored, alpha aval; unsized. */
LUMAPI LumStatus lumiYCoCgToSBGR_Rev_32s16s_P3C4R(const Lum32s* const pSrc[3], int srcStep, Lum16s* pDst, int dstStep,
    LumSize roiSize, Lum16s aval);
/** Y, Co, Cg planes (Co, Cg biased by 128) to RGB, clamped to 0..255; unsized. */
LUMAPI LumStatus lumiYCoCgToRGB_8u_P3C3R(const Lum8u* const pSrc[3], int srcStep, Lum8u* pDst, int dstStep,
    LumSize roiSize);

/* -------------------------------------------------------------------------- */
/* Gamma                                                                      */
/* -------------------------------------------------------------------------- */
/* BT.709 transfer function (GammaFwd) and its inverse (GammaInv). 8u and 16u by
   table; 32f computed on the range vMin..vMax. Checks: null -> lumStatusNullPointer,
   size -> lumStatusBadSize, step < 1 -> lumStatusBadStep; 32f first refuses
   vMax - vMin <= 0 with lumStatusBadRange. AC4: alpha neither read nor written.
   Nothing is read or written outside the region. 32f: only AC4 scales by the
   range (C3/P3 raise x - vMin itself, test it times the range, and leave the
   inverse power unscaled); samples outside the range are not clamped; a NaN end
   of the range is not refused. The caller's floating-point state is unchanged. */

LUMAPI LumStatus lumiGammaFwd_8u_C3R(const Lum8u* pSrc, int srcStep, Lum8u* pDst, int dstStep, LumSize roiSize);
LUMAPI LumStatus lumiGammaFwd_8u_C3IR(Lum8u* pSrcDst, int srcDstStep, LumSize roiSize);
LUMAPI LumStatus lumiGammaFwd_8u_AC4R(const Lum8u* pSrc, int srcStep, Lum8u* pDst, int dstStep, LumSize roiSize);
LUMAPI LumStatus lumiGammaFwd_8u_AC4IR(Lum8u* pSrcDst, int srcDstStep, LumSize roiSize);
LUMAPI LumStatus lumiGammaFwd_8u_P3R(const Lum8u* const pSrc[3], int srcStep, Lum8u* const pDst[3], int dstStep,
    LumSize roiSize);
LUMAPI LumStatus lumiGammaFwd_8u_IP3R(Lum8u* const pSrcDst[3], int srcDstStep, LumSize roiSize);
LUMAPI LumStatus lumiGammaFwd_16u_C3R(const Lum16u* pSrc, int srcStep, Lum16u* pDst, int dstStep, LumSize roiSize);
LUMAPI LumStatus lumiGammaFwd_16u_C3IR(Lum16u* pSrcDst, int srcDstStep, LumSize roiSize);
LUMAPI LumStatus lumiGammaFwd_16u_AC4R(const Lum16u* pSrc, int srcStep, Lum16u* pDst, int dstStep, LumSize roiSize);
LUMAPI LumStatus lumiGammaFwd_16u_AC4IR(Lum16u* pSrcDst, int srcDstStep, LumSize roiSize);
LUMAPI LumStatus lumiGammaFwd_16u_P3R(const Lum16u* const pSrc[3], int srcStep, Lum16u* const pDst[3], int dstStep,
    LumSize roiSize);
LUMAPI LumStatus lumiGammaFwd_16u_IP3R(Lum16u* const pSrcDst[3], int srcDstStep, LumSize roiSize);
LUMAPI LumStatus lumiGammaFwd_32f_C3R(const Lum32f* pSrc, int srcStep, Lum32f* pDst, int dstStep, LumSize roiSize,
    Lum32f vMin, Lum32f vMax);
LUMAPI LumStatus lumiGammaFwd_32f_C3IR(Lum32f* pSrcDst, int srcDstStep, LumSize roiSize, Lum32f vMin, Lum32f vMax);
LUMAPI LumStatus lumiGammaFwd_32f_AC4R(const Lum32f* pSrc, int srcStep, Lum32f* pDst, int dstStep, LumSize roiSize,
    Lum32f vMin, Lum32f vMax);
LUMAPI LumStatus lumiGammaFwd_32f_AC4IR(Lum32f* pSrcDst, int srcDstStep, LumSize roiSize, Lum32f vMin, Lum32f vMax);
LUMAPI LumStatus lumiGammaFwd_32f_P3R(const Lum32f* const pSrc[3], int srcStep, Lum32f* const pDst[3], int dstStep,
    LumSize roiSize, Lum32f vMin, Lum32f vMax);
LUMAPI LumStatus lumiGammaFwd_32f_IP3R(Lum32f* const pSrcDst[3], int srcDstStep, LumSize roiSize, Lum32f vMin,
    Lum32f vMax);
LUMAPI LumStatus lumiGammaInv_8u_C3R(const Lum8u* pSrc, int srcStep, Lum8u* pDst, int dstStep, LumSize roiSize);
LUMAPI LumStatus lumiGammaInv_8u_C3IR(Lum8u* pSrcDst, int srcDstStep, LumSize roiSize);
LUMAPI LumStatus lumiGammaInv_8u_AC4R(const Lum8u* pSrc, int srcStep, Lum8u* pDst, int dstStep, LumSize roiSize);
LUMAPI LumStatus lumiGammaInv_8u_AC4IR(Lum8u* pSrcDst, int srcDstStep, LumSize roiSize);
LUMAPI LumStatus lumiGammaInv_8u_P3R(const Lum8u* const pSrc[3], int srcStep, Lum8u* const pDst[3], int dstStep,
    LumSize roiSize);
LUMAPI LumStatus lumiGammaInv_8u_IP3R(Lum8u* const pSrcDst[3], int srcDstStep, LumSize roiSize);
LUMAPI LumStatus lumiGammaInv_16u_C3R(const Lum16u* pSrc, int srcStep, Lum16u* pDst, int dstStep, LumSize roiSize);
LUMAPI LumStatus lumiGammaInv_16u_C3IR(Lum16u* pSrcDst, int srcDstStep, LumSize roiSize);
LUMAPI LumStatus lumiGammaInv_16u_AC4R(const Lum16u* pSrc, int srcStep, Lum16u* pDst, int dstStep, LumSize roiSize);
LUMAPI LumStatus lumiGammaInv_16u_AC4IR(Lum16u* pSrcDst, int srcDstStep, LumSize roiSize);
LUMAPI LumStatus lumiGammaInv_16u_P3R(const Lum16u* const pSrc[3], int srcStep, Lum16u* const pDst[3], int dstStep,
    LumSize roiSize);
LUMAPI LumStatus lumiGammaInv_16u_IP3R(Lum16u* const pSrcDst[3], int srcDstStep, LumSize roiSize);
LUMAPI LumStatus lumiGammaInv_32f_C3R(const Lum32f* pSrc, int srcStep, Lum32f* pDst, int dstStep, LumSize roiSize,
    Lum32f vMin, Lum32f vMax);
LUMAPI LumStatus lumiGammaInv_32f_C3IR(Lum32f* pSrcDst, int srcDstStep, LumSize roiSize, Lum32f vMin, Lum32f vMax);
LUMAPI LumStatus lumiGammaInv_32f_AC4R(const Lum32f* pSrc, int srcStep, Lum32f* pDst, int dstStep, LumSize roiSize,
    Lum32f vMin, Lum32f vMax);
LUMAPI LumStatus lumiGammaInv_32f_AC4IR(Lum32f* pSrcDst, int srcDstStep, LumSize roiSize, Lum32f vMin, Lum32f vMax);
LUMAPI LumStatus lumiGammaInv_32f_P3R(const Lum32f* const pSrc[3], int srcStep, Lum32f* const pDst[3], int dstStep,
    LumSize roiSize, Lum32f vMin, Lum32f vMax);
LUMAPI LumStatus lumiGammaInv_32f_IP3R(Lum32f* const pSrcDst[3], int srcDstStep, LumSize roiSize, Lum32f vMin,
    Lum32f vMax);
/** Forward gamma then RGB to packed CbYCr422 (Cb Y0 Cr Y1), in one pass; chroma of a pair from the
 *  pair's mean colour. An odd last pixel writes its Cb and Y bytes. Steps are not checked. */
LUMAPI LumStatus lumiRGBToCbYCr422Gamma_8u_C3C2R(const Lum8u* pSrc, int srcStep, Lum8u* pDst, int dstStep,
    LumSize roiSize);

/* -------------------------------------------------------------------------- */
/* Colour twist                                                               */
/* -------------------------------------------------------------------------- */
/* Affine map of three channels by twist[3][4] (row c gives output channel c,
   column 3 is the offset), or linear map of four channels by twist[4][4]
   (lumiColorTwist_32f_C4R). Single precision; integer results clamped and
   rounded to nearest even (a NaN result stores the upper limit); the integer
   forms set round-to-nearest for the call and give the caller's mode back.
   Planar forms share one step; in-place forms read each pixel whole before
   writing it. Checks: null pointers (plane entries too) and twist ->
   lumStatusNullPointer, size < 1 -> lumStatusBadSize, then step < 1 ->
   lumStatusBadStep. AC4: alpha neither read into the map nor written. */

LUMAPI LumStatus lumiColorTwist_32f_C3R(const Lum32f* pSrc, int srcStep, Lum32f* pDst, int dstStep, LumSize roiSize,
    const Lum32f twist[3][4]);
LUMAPI LumStatus lumiColorTwist_32f_C3IR(Lum32f* pSrcDst, int srcDstStep, LumSize roiSize, const Lum32f twist[3][4]);
LUMAPI LumStatus lumiColorTwist_32f_AC4R(const Lum32f* pSrc, int srcStep, Lum32f* pDst, int dstStep, LumSize roiSize,
    const Lum32f twist[3][4]);
LUMAPI LumStatus lumiColorTwist_32f_AC4IR(Lum32f* pSrcDst, int srcDstStep, LumSize roiSize, const Lum32f twist[3][4]);
/** Four channels by a 4x4 matrix, no offset. When srcStep == dstStep == 4 * width
    (bytes), all width * height pixels run as one contiguous run from pSrc to pDst:
    the caller must then provide 16 * width * height bytes at each pointer. */
LUMAPI LumStatus lumiColorTwist_32f_C4R(const Lum32f* pSrc, int srcStep, Lum32f* pDst, int dstStep, LumSize roiSize,
    const Lum32f twist[4][4]);
LUMAPI LumStatus lumiColorTwist_32f_P3R(const Lum32f* const pSrc[3], int srcStep, Lum32f* const pDst[3], int dstStep,
    LumSize roiSize, const Lum32f twist[3][4]);
LUMAPI LumStatus lumiColorTwist_32f_IP3R(Lum32f* const pSrcDst[3], int srcDstStep, LumSize roiSize,
    const Lum32f twist[3][4]);
LUMAPI LumStatus lumiColorTwist32f_8u_C3R(const Lum8u* pSrc, int srcStep, Lum8u* pDst, int dstStep, LumSize roiSize,
    const Lum32f twist[3][4]);
LUMAPI LumStatus lumiColorTwist32f_8u_C3IR(Lum8u* pSrcDst, int srcDstStep, LumSize roiSize, const Lum32f twist[3][4]);
LUMAPI LumStatus lumiColorTwist32f_8u_AC4R(const Lum8u* pSrc, int srcStep, Lum8u* pDst, int dstStep, LumSize roiSize,
    const Lum32f twist[3][4]);
LUMAPI LumStatus lumiColorTwist32f_8u_AC4IR(Lum8u* pSrcDst, int srcDstStep, LumSize roiSize,
    const Lum32f twist[3][4]);
LUMAPI LumStatus lumiColorTwist32f_8u_P3R(const Lum8u* const pSrc[3], int srcStep, Lum8u* const pDst[3], int dstStep,
    LumSize roiSize, const Lum32f twist[3][4]);
LUMAPI LumStatus lumiColorTwist32f_8u_IP3R(Lum8u* const pSrcDst[3], int srcDstStep, LumSize roiSize,
    const Lum32f twist[3][4]);
LUMAPI LumStatus lumiColorTwist32f_16u_C3R(const Lum16u* pSrc, int srcStep, Lum16u* pDst, int dstStep,
    LumSize roiSize, const Lum32f twist[3][4]);
LUMAPI LumStatus lumiColorTwist32f_16u_C3IR(Lum16u* pSrcDst, int srcDstStep, LumSize roiSize,
    const Lum32f twist[3][4]);
LUMAPI LumStatus lumiColorTwist32f_16u_AC4R(const Lum16u* pSrc, int srcStep, Lum16u* pDst, int dstStep,
    LumSize roiSize, const Lum32f twist[3][4]);
LUMAPI LumStatus lumiColorTwist32f_16u_AC4IR(Lum16u* pSrcDst, int srcDstStep, LumSize roiSize,
    const Lum32f twist[3][4]);
LUMAPI LumStatus lumiColorTwist32f_16u_P3R(const Lum16u* const pSrc[3], int srcStep, Lum16u* const pDst[3],
    int dstStep, LumSize roiSize, const Lum32f twist[3][4]);
LUMAPI LumStatus lumiColorTwist32f_16u_IP3R(Lum16u* const pSrcDst[3], int srcDstStep, LumSize roiSize,
    const Lum32f twist[3][4]);
LUMAPI LumStatus lumiColorTwist32f_16s_C3R(const Lum16s* pSrc, int srcStep, Lum16s* pDst, int dstStep,
    LumSize roiSize, const Lum32f twist[3][4]);
LUMAPI LumStatus lumiColorTwist32f_16s_C3IR(Lum16s* pSrcDst, int srcDstStep, LumSize roiSize,
    const Lum32f twist[3][4]);
LUMAPI LumStatus lumiColorTwist32f_16s_AC4R(const Lum16s* pSrc, int srcStep, Lum16s* pDst, int dstStep,
    LumSize roiSize, const Lum32f twist[3][4]);
LUMAPI LumStatus lumiColorTwist32f_16s_AC4IR(Lum16s* pSrcDst, int srcDstStep, LumSize roiSize,
    const Lum32f twist[3][4]);
LUMAPI LumStatus lumiColorTwist32f_16s_P3R(const Lum16s* const pSrc[3], int srcStep, Lum16s* const pDst[3],
    int dstStep, LumSize roiSize, const Lum32f twist[3][4]);
LUMAPI LumStatus lumiColorTwist32f_16s_IP3R(Lum16s* const pSrcDst[3], int srcDstStep, LumSize roiSize,
    const Lum32f twist[3][4]);

/* -------------------------------------------------------------------------- */
/* Tone mapping                                                               */
/* -------------------------------------------------------------------------- */
/* One-channel float image to 8 bits by one global scale. Checks: null pointers,
   then size < 1; steps are not checked. A maximum or twice-mean not above the
   smallest normal float (or NaN) sets the destination to 0. */

/** Scales by 255 / maximum, keeps the low byte; negative maximum -> lumStatusNegativeMean. */
LUMAPI LumStatus lumiToneMapLinear_32f8u_C1R(const Lum32f* pSrc, int srcStep, Lum8u* pDst, int dstStep,
    LumSize roiSize);
/** Scales by 255 / (2 * mean), saturates; negative mean -> lumStatusNegativeMean. */
LUMAPI LumStatus lumiToneMapMean_32f8u_C1R(const Lum32f* pSrc, int srcStep, Lum8u* pDst, int dstStep,
    LumSize roiSize);

/* -------------------------------------------------------------------------- */
/* 12-bit pack and unpack                                                     */
/* -------------------------------------------------------------------------- */
/* Two 12-bit samples in three bytes, big-endian (A11..A0 B11..B0); an odd last
   sample takes two bytes. Checks: null, size, then step < 1 -> lumStatusBadStep. */

/** 16-bit words holding 12-bit samples to packed 12-bit rows. */
LUMAPI LumStatus lumiPack_16u12u_C1R(const Lum16u* pSrc, int srcStep, Lum8u* pDst, int dstStep, LumSize roiSize);
/** Packed 12-bit rows to 16-bit words. */
LUMAPI LumStatus lumiUnpack_12u16u_C1R(const Lum8u* pSrc, int srcStep, Lum16u* pDst, int dstStep, LumSize roiSize);

/* -------------------------------------------------------------------------- */
/* Bit-depth reduction                                                        */
/* -------------------------------------------------------------------------- */
/* Quantises to `levels` output levels (2..256 for 8-bit destinations, 2..65536
   for 16-bit) with optional noise (0..100) and a LumDitherKind. Checks: null
   pointers, size, noise (lumStatusNoiseOutOfRange), levels
   (lumStatusLevelsOutOfRange), dither kind (lumStatusBadDitherKind); then a
   needed but null pBuffer -> lumStatusNullPointer. pBuffer is a scratch area of
   the size told by lumiReduceBitsGetBufferSize (aligned to 64 bytes inside);
   it may be null when no buffer is needed (lumDitherOff; lumDitherOrdered with
   noise 0). 32f sources are read as 0..1. No sample outside the region is read
   or written; in AC4 the destination's alpha is never written. lumDitherOff
   honours any byte step; the dither kinds round steps down to whole samples. */

/** Writes the scratch size in bytes for these arguments to *pBufferSize; layout is a LumReduceLayout value.
 *  Checks: null, width (the height is not looked at), layout (lumStatusBadLayout), noise, dither kind. */
LUMAPI LumStatus lumiReduceBitsGetBufferSize(int layout, LumSize roiSize, int noise, LumDitherKind ditherKind,
    int* pBufferSize);
LUMAPI LumStatus lumiReduceBits_8u_C1R(const Lum8u* pSrc, int srcStep, Lum8u* pDst, int dstStep, LumSize roiSize,
    int noise, LumDitherKind ditherKind, int levels, Lum8u* pBuffer);
LUMAPI LumStatus lumiReduceBits_8u_C3R(const Lum8u* pSrc, int srcStep, Lum8u* pDst, int dstStep, LumSize roiSize,
    int noise, LumDitherKind ditherKind, int levels, Lum8u* pBuffer);
LUMAPI LumStatus lumiReduceBits_8u_C4R(const Lum8u* pSrc, int srcStep, Lum8u* pDst, int dstStep, LumSize roiSize,
    int noise, LumDitherKind ditherKind, int levels, Lum8u* pBuffer);
LUMAPI LumStatus lumiReduceBits_8u_AC4R(const Lum8u* pSrc, int srcStep, Lum8u* pDst, int dstStep, LumSize roiSize,
    int noise, LumDitherKind ditherKind, int levels, Lum8u* pBuffer);
LUMAPI LumStatus lumiReduceBits_16u_C1R(const Lum16u* pSrc, int srcStep, Lum16u* pDst, int dstStep, LumSize roiSize,
    int noise, LumDitherKind ditherKind, int levels, Lum8u* pBuffer);
LUMAPI LumStatus lumiReduceBits_16u_C3R(const Lum16u* pSrc, int srcStep, Lum16u* pDst, int dstStep, LumSize roiSize,
    int noise, LumDitherKind ditherKind, int levels, Lum8u* pBuffer);
LUMAPI LumStatus lumiReduceBits_16u_C4R(const Lum16u* pSrc, int srcStep, Lum16u* pDst, int dstStep, LumSize roiSize,
    int noise, LumDitherKind ditherKind, int levels, Lum8u* pBuffer);
LUMAPI LumStatus lumiReduceBits_16u_AC4R(const Lum16u* pSrc, int srcStep, Lum16u* pDst, int dstStep, LumSize roiSize,
    int noise, LumDitherKind ditherKind, int levels, Lum8u* pBuffer);
LUMAPI LumStatus lumiReduceBits_16s_C1R(const Lum16s* pSrc, int srcStep, Lum16s* pDst, int dstStep, LumSize roiSize,
    int noise, LumDitherKind ditherKind, int levels, Lum8u* pBuffer);
LUMAPI LumStatus lumiReduceBits_16s_C3R(const Lum16s* pSrc, int srcStep, Lum16s* pDst, int dstStep, LumSize roiSize,
    int noise, LumDitherKind ditherKind, int levels, Lum8u* pBuffer);
LUMAPI LumStatus lumiReduceBits_16s_C4R(const Lum16s* pSrc, int srcStep, Lum16s* pDst, int dstStep, LumSize roiSize,
    int noise, LumDitherKind ditherKind, int levels, Lum8u* pBuffer);
LUMAPI LumStatus lumiReduceBits_16s_AC4R(const Lum16s* pSrc, int srcStep, Lum16s* pDst, int dstStep, LumSize roiSize,
    int noise, LumDitherKind ditherKind, int levels, Lum8u* pBuffer);
LUMAPI LumStatus lumiReduceBits_16u8u_C1R(const Lum16u* pSrc, int srcStep, Lum8u* pDst, int dstStep, LumSize roiSize,
    int noise, LumDitherKind ditherKind, int levels, Lum8u* pBuffer);
LUMAPI LumStatus lumiReduceBits_16u8u_C3R(const Lum16u* pSrc, int srcStep, Lum8u* pDst, int dstStep, LumSize roiSize,
    int noise, LumDitherKind ditherKind, int levels, Lum8u* pBuffer);
LUMAPI LumStatus lumiReduceBits_16u8u_C4R(const Lum16u* pSrc, int srcStep, Lum8u* pDst, int dstStep, LumSize roiSize,
    int noise, LumDitherKind ditherKind, int levels, Lum8u* pBuffer);
LUMAPI LumStatus lumiReduceBits_16u8u_AC4R(const Lum16u* pSrc, int srcStep, Lum8u* pDst, int dstStep, LumSize roiSize,
    int noise, LumDitherKind ditherKind, int levels, Lum8u* pBuffer);
LUMAPI LumStatus lumiReduceBits_16s8u_C1R(const Lum16s* pSrc, int srcStep, Lum8u* pDst, int dstStep, LumSize roiSize,
    int noise, LumDitherKind ditherKind, int levels, Lum8u* pBuffer);
LUMAPI LumStatus lumiReduceBits_16s8u_C3R(const Lum16s* pSrc, int srcStep, Lum8u* pDst, int dstStep, LumSize roiSize,
    int noise, LumDitherKind ditherKind, int levels, Lum8u* pBuffer);
LUMAPI LumStatus lumiReduceBits_16s8u_C4R(const Lum16s* pSrc, int srcStep, Lum8u* pDst, int dstStep, LumSize roiSize,
    int noise, LumDitherKind ditherKind, int levels, Lum8u* pBuffer);
LUMAPI LumStatus lumiReduceBits_16s8u_AC4R(const Lum16s* pSrc, int srcStep, Lum8u* pDst, int dstStep, LumSize roiSize,
    int noise, LumDitherKind ditherKind, int levels, Lum8u* pBuffer);
LUMAPI LumStatus lumiReduceBits_32f8u_C1R(const Lum32f* pSrc, int srcStep, Lum8u* pDst, int dstStep, LumSize roiSize,
    int noise, LumDitherKind ditherKind, int levels, Lum8u* pBuffer);
LUMAPI LumStatus lumiReduceBits_32f8u_C3R(const Lum32f* pSrc, int srcStep, Lum8u* pDst, int dstStep, LumSize roiSize,
    int noise, LumDitherKind ditherKind, int levels, Lum8u* pBuffer);
LUMAPI LumStatus lumiReduceBits_32f8u_C4R(const Lum32f* pSrc, int srcStep, Lum8u* pDst, int dstStep, LumSize roiSize,
    int noise, LumDitherKind ditherKind, int levels, Lum8u* pBuffer);
LUMAPI LumStatus lumiReduceBits_32f8u_AC4R(const Lum32f* pSrc, int srcStep, Lum8u* pDst, int dstStep, LumSize roiSize,
    int noise, LumDitherKind ditherKind, int levels, Lum8u* pBuffer);
LUMAPI LumStatus lumiReduceBits_32f16u_C1R(const Lum32f* pSrc, int srcStep, Lum16u* pDst, int dstStep,
    LumSize roiSize, int noise, LumDitherKind ditherKind, int levels, Lum8u* pBuffer);
LUMAPI LumStatus lumiReduceBits_32f16u_C3R(const Lum32f* pSrc, int srcStep, Lum16u* pDst, int dstStep,
    LumSize roiSize, int noise, LumDitherKind ditherKind, int levels, Lum8u* pBuffer);
LUMAPI LumStatus lumiReduceBits_32f16u_C4R(const Lum32f* pSrc, int srcStep, Lum16u* pDst, int dstStep,
    LumSize roiSize, int noise, LumDitherKind ditherKind, int levels, Lum8u* pBuffer);
LUMAPI LumStatus lumiReduceBits_32f16u_AC4R(const Lum32f* pSrc, int srcStep, Lum16u* pDst, int dstStep,
    LumSize roiSize, int noise, LumDitherKind ditherKind, int levels, Lum8u* pBuffer);
LUMAPI LumStatus lumiReduceBits_32f16s_C1R(const Lum32f* pSrc, int srcStep, Lum16s* pDst, int dstStep,
    LumSize roiSize, int noise, LumDitherKind ditherKind, int levels, Lum8u* pBuffer);
LUMAPI LumStatus lumiReduceBits_32f16s_C3R(const Lum32f* pSrc, int srcStep, Lum16s* pDst, int dstStep,
    LumSize roiSize, int noise, LumDitherKind ditherKind, int levels, Lum8u* pBuffer);
LUMAPI LumStatus lumiReduceBits_32f16s_C4R(const Lum32f* pSrc, int srcStep, Lum16s* pDst, int dstStep,
    LumSize roiSize, int noise, LumDitherKind ditherKind, int levels, Lum8u* pBuffer);
LUMAPI LumStatus lumiReduceBits_32f16s_AC4R(const Lum32f* pSrc, int srcStep, Lum16s* pDst, int dstStep,
    LumSize roiSize, int noise, LumDitherKind ditherKind, int levels, Lum8u* pBuffer);
/** 8-bit gray to a one-bit bitmap (leftmost pixel in the most significant bit); kinds lumDitherOff (on where
 *  s > threshold) and lumDitherStucki only (others: lumStatusBadDitherKind); noise and seed are not used.
 *  Only dstBitOffset & 7 counts. A row writes (dstBitOffset & 7) + width bits from pDst: the first byte keeps
 *  its top (dstBitOffset & 7) bits and its bits past a row that ends in it become 0; a last partial byte
 *  keeps its low bits. lumDitherStucki needs pBuffer of lumiReduceBitsGetBufferSize(1, roi, 0, lumDitherStucki). */
LUMAPI LumStatus lumiReduceBits_8u1u_C1R(const Lum8u* pSrc, int srcStep, Lum8u* pDst, int dstStep, int dstBitOffset,
    LumSize roiSize, int noise, Lum32u seed, LumDitherKind ditherKind, Lum8u threshold, Lum8u* pBuffer);

/* -------------------------------------------------------------------------- */
/* Demosaicing                                                                */
/* -------------------------------------------------------------------------- */
/* Bayer colour-filter-array images. pSrc is the first pixel of the whole image
   of imageSize; srcRect is the region in image coordinates (neighbours are read
   anywhere in the image); pDst is the first pixel of the region's result. cfaGrid
   names the cell at the image's first pixel; a value outside 0..3 ->
   lumStatusBadArgument. */

/** Bilinear demosaic with gradient-directed green to interleaved R, G, B; image below 2x2 -> lumStatusBadSize.
 *  The region is cut at the image's right and bottom edges; x and y are not checked (pixels left of or above
 *  the image are not written). */
LUMAPI LumStatus lumiCFAToRGB_8u_C1C3R(const Lum8u* pSrc, LumRect srcRect, LumSize imageSize, int srcStep,
    Lum8u* pDst, int dstStep, LumCfaGrid cfaGrid);
/** Bilinear demosaic with gradient-directed green to interleaved R, G, B; image below 2x2 -> lumStatusBadSize.
 *  Both steps are used in whole samples (an odd byte count loses its last byte). */
LUMAPI LumStatus lumiCFAToRGB_16u_C1C3R(const Lum16u* pSrc, LumRect srcRect, LumSize imageSize, int srcStep,
    Lum16u* pDst, int dstStep, LumCfaGrid cfaGrid);
/** VNG demosaic to B, G, R and an untouched fourth sample; pScale: 3 gains for B, G, R, or null; image below 5x5
 *  -> lumStatusBadSize. Pixels within two of the image's edges repeat the nearest computed pixel; when the region
 *  ends within two pixels of the image's right (bottom) edge, the border copies reach one column (row) past the
 *  region, toward that edge: the destination must hold that column (row). A region with no pixel at least two from
 *  every edge writes nothing. */
LUMAPI LumStatus lumiCFAToBGRA_VNG_8u_C1C4R(const Lum8u* pSrc, LumRect srcRect, LumSize imageSize, int srcStep,
    const Lum32f* pScale, Lum8u* pDst, int dstStep, LumCfaGrid cfaGrid);
/** VNG demosaic, long-size form of the above (sizes, positions and steps as LumLong). */
LUMAPI LumStatus lumiCFAToBGRA_VNG_8u_C1C4R_L(const Lum8u* pSrc, LumRectL srcRect, LumSizeL imageSize,
    LumLong srcStep, const Lum32f* pScale, Lum8u* pDst, LumLong dstStep, LumCfaGrid cfaGrid);
/** VNG demosaic to B, G, R and an untouched fourth sample; pScale: 3 gains for B, G, R, or null; image below 5x5
 *  -> lumStatusBadSize. Pixels within two of the image's edges repeat the nearest computed pixel; when the region
 *  ends within two pixels of the image's right (bottom) edge, the border copies reach one column (row) past the
 *  region, toward that edge: the destination must hold that column (row). A region with no pixel at least two from
 *  every edge writes nothing. */
LUMAPI LumStatus lumiCFAToBGRA_VNG_16u_C1C4R(const Lum16u* pSrc, LumRect srcRect, LumSize imageSize, int srcStep,
    const Lum32f* pScale, Lum16u* pDst, int dstStep, LumCfaGrid cfaGrid);
/** VNG demosaic, long-size form of the above (sizes, positions and steps as LumLong). */
LUMAPI LumStatus lumiCFAToBGRA_VNG_16u_C1C4R_L(const Lum16u* pSrc, LumRectL srcRect, LumSizeL imageSize,
    LumLong srcStep, const Lum32f* pScale, Lum16u* pDst, LumLong dstStep, LumCfaGrid cfaGrid);
/** AHD demosaic to interleaved R, G, B; image below 5x5 -> lumStatusBadSize. pTmp: caller's work buffer of 30
 *  rows of tmpStep bytes (used rounded down to even), tmpStep at least (w + 6) * (bytes per sample + 1) with w the
 *  region's width cut to the image; its contents do not matter. Negative x, y become 0. */
LUMAPI LumStatus lumiDemosaicAHD_8u_C1C3R(const Lum8u* pSrc, LumRect srcRect, LumSize imageSize, int srcStep,
    Lum8u* pDst, int dstStep, LumCfaGrid cfaGrid, Lum8u* pTmp, int tmpStep);
/** AHD demosaic to interleaved R, G, B; image below 5x5 -> lumStatusBadSize. pTmp: caller's work buffer of 30
 *  rows of tmpStep bytes (used rounded down to even), tmpStep at least (w + 6) * (bytes per sample + 1) with w the
 *  region's width cut to the image; its contents do not matter. Negative x, y become 0. */
LUMAPI LumStatus lumiDemosaicAHD_16u_C1C3R(const Lum16u* pSrc, LumRect srcRect, LumSize imageSize, int srcStep,
    Lum16u* pDst, int dstStep, LumCfaGrid cfaGrid, Lum8u* pTmp, int tmpStep);

#ifdef __cplusplus
}
#endif

#endif /* LUMCC_H */
