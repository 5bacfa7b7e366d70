// 4:1:1 layout changes: semi-planar and planar 4:1:1 among themselves, 4:2:2
// to 4:1:1 by keeping the even chroma samples, 4:1:1 to 4:2:2 by writing every
// sample twice, and the lossless reorder between 4:2:0 and 4:1:1, which hold
// the same number of chroma samples.
#include "chroma/layout_drivers.h"
#include "frame/check.h"

using namespace lum;
using namespace lum::chroma;

namespace {

using Pairs = CbCrPairs<false>;

// ---- 4:1:1 semi-planar and planar ---------------------------------------------------
void ownYCbCr411ToYCbCr411_8u_P2P3R(LumSize roi, const SrcPlanes& s, const DstPlanes& d) {
  copyLuma(roi, s, d);
  copyChromaRows<Pairs, CbCrPlanes, 1, 1>(roi.height, roi.width / 4, s, d);
}
void ownYCbCr411ToYCbCr411_8u_P3P2R(LumSize roi, const SrcPlanes& s, const DstPlanes& d, bool stream) {
  copyLuma(roi, s, d, stream);
  copyChromaRows<CbCrPlanes, Pairs, 1, 1>(roi.height, roi.width / 4, s, d);
}

// ---- 4:2:2 to 4:1:1 -----------------------------------------------------------------------
constexpr auto ownYCbCr422ToYCbCr411_8u_C2P3R = pairImage<YUY2, Planar411Row, 1, 1>;
constexpr auto ownCbYCr422ToYCbCr411_8u_C2P3R = pairImage<UYVY, Planar411Row, 1, 1>;
constexpr auto ownYCbCr422ToYCbCr411_8u_C2P2R = pairImage<YUY2, Pairs411Row, 1, 1>;
void ownYCbCr422ToYCbCr411_8u_P3R(LumSize roi, const SrcPlanes& s, const DstPlanes& d, bool stream) {
  copyLuma(roi, s, d, stream);
  unzipChroma<CbCrPlanes, CbCrPlanes, 1>(roi.height, roi.width / 4, s, d);
}
void ownYCbCr422ToYCbCr411_8u_P3P2R(LumSize roi, const SrcPlanes& s, const DstPlanes& d) {
  copyLuma(roi, s, d);
  unzipChroma<CbCrPlanes, Pairs, 1>(roi.height, roi.width / 4, s, d);
}

// ---- 4:1:1 to 4:2:2 -----------------------------------------------------------------------
void ownYCbCr411ToYCbCr422_8u_P3R(LumSize roi, const SrcPlanes& s, const DstPlanes& d) {
  copyLuma(roi, s, d);
  zipChroma<CbCrPlanes, CbCrPlanes, 1>(roi.height, roi.width / 4, s, d);
}
void ownYCbCr411ToYCbCr422_8u_P2P3R(LumSize roi, const SrcPlanes& s, const DstPlanes& d, bool stream) {
  copyLuma(roi, s, d, stream);
  zipChroma<Pairs, CbCrPlanes, 1>(roi.height, roi.width / 4, s, d);
}
constexpr auto ownYCbCr411ToYCbCr422_8u_P3C2R = pairImage<Planar411Row, YUY2, 1, 1>;
constexpr auto ownYCbCr411ToYCbCr422_8u_P2C2R = pairImage<Pairs411Row, YUY2, 1, 1>;

// ---- 4:2:0 and 4:1:1 --------------------------------------------------------------------
void ownYCbCr420ToYCbCr411_8u_P2P3R(LumSize roi, const SrcPlanes& s, const DstPlanes& d) {
  copyLuma(roi, s, d);
  unzipChroma<Pairs, CbCrPlanes, 2>(roi.height / 2, roi.width / 4, s, d);
}
// Written for source planes Y, Cr, Cb; the flag exchanges them for a Y, Cb, Cr
// source.
void ownYCrCb420ToYCbCr411_8u_P3P2R(LumSize roi, const Lum8u* const pSrc[3], const int srcStep[3],
                                    const DstPlanes& d, bool swap) {
  const SrcPlanes s = threePlanes(pSrc, srcStep, !swap);
  copyLuma(roi, s, d);
  unzipChroma<CbCrPlanes, Pairs, 2>(roi.height / 2, roi.width / 4, s, d);
}
void ownYCbCr411ToYCbCr420_8u_P3R(LumSize roi, const SrcPlanes& s, const DstPlanes& d) {
  copyLuma(roi, s, d);
  zipChroma<CbCrPlanes, CbCrPlanes, 2>(roi.height / 2, roi.width / 4, s, d);
}
void ownYCbCr411ToYCbCr420_8u_P3P2R(LumSize roi, const SrcPlanes& s, const DstPlanes& d, bool stream) {
  copyLuma(roi, s, d, stream);
  zipChroma<CbCrPlanes, Pairs, 2>(roi.height / 2, roi.width / 4, s, d);
}
void ownYCbCr411ToYCbCr420_8u_P2P3R(LumSize roi, const SrcPlanes& s, const DstPlanes& d) {
  copyLuma(roi, s, d);
  zipChroma<Pairs, CbCrPlanes, 2>(roi.height / 2, roi.width / 4, s, d);
}

}  // namespace

// ---- interleave and de-interleave ----------------------------------------------------

// The entries of pDst are this function's pointers; a null array is refused too
// rather than read.
LumStatus lumiYCbCr411_8u_P2P3R(const Lum8u* pSrcY, int srcYStep, const Lum8u* pSrcCbCr, int srcCbCrStep,
                                Lum8u* const pDst[3], const int dstStep[3], LumSize roi) {
  if (check::anyNull(pSrcY, pSrcCbCr) || nullPlanes(pDst)) return lumStatusNullPointer;
  if (LumStatus s = sizeRule<SizeClass::F>(roi)) return s;
  ownYCbCr411ToYCbCr411_8u_P2P3R(roi, twoPlanes(pSrcY, srcYStep, pSrcCbCr, srcCbCrStep), threePlanes(pDst, dstStep));
  return lumStatusOk;
}

LumStatus lumiYCbCr411_8u_P3P2R(const Lum8u* const pSrc[3], const int srcStep[3], Lum8u* pDstY, int dstYStep,
                                Lum8u* pDstCbCr, int dstCbCrStep, LumSize roi) {
  if (check::anyNull(pDstY, pDstCbCr) || nullPlanes(pSrc)) return lumStatusNullPointer;
  if (LumStatus s = sizeRule<SizeClass::F>(roi)) return s;
  ownYCbCr411ToYCbCr411_8u_P3P2R(roi, threePlanes(pSrc, srcStep), twoPlanes(pDstY, dstYStep, pDstCbCr, dstCbCrStep),
                                 mul32(roi.width, roi.height) >= kStreamLuma);
  return lumStatusOk;
}

// ---- 4:2:2 to 4:1:1, even chroma samples --------------------------------------------

LumStatus lumiYCbCr422ToYCbCr411_8u_C2P3R(const Lum8u* pSrc, int srcStep, Lum8u* const pDst[3],
                                          const int dstStep[3], LumSize roi) {
  if (check::anyNull(pSrc) || nullPlanes(pDst)) return lumStatusNullPointer;
  if (LumStatus s = sizeRule<SizeClass::E>(roi)) return s;
  ownYCbCr422ToYCbCr411_8u_C2P3R(roi, packedSrc(pSrc, srcStep), threePlanes(pDst, dstStep), false);
  return lumStatusOk;
}

// Read as YUY2 into exchanged chroma planes.
LumStatus lumiYCrCb422ToYCbCr411_8u_C2P3R(const Lum8u* pSrc, int srcStep, Lum8u* const pDst[3],
                                          const int dstStep[3], LumSize roi) {
  if (check::anyNull(pSrc) || nullPlanes(pDst)) return lumStatusNullPointer;
  if (LumStatus s = sizeRule<SizeClass::F>(roi)) return s;
  ownYCbCr422ToYCbCr411_8u_C2P3R(roi, packedSrc(pSrc, srcStep), threePlanes(pDst, dstStep, true), false);
  return lumStatusOk;
}

LumStatus lumiCbYCr422ToYCbCr411_8u_C2P3R(const Lum8u* pSrc, int srcStep, Lum8u* const pDst[3],
                                          const int dstStep[3], LumSize roi) {
  if (check::anyNull(pSrc) || nullPlanes(pDst)) return lumStatusNullPointer;
  if (LumStatus s = sizeRule<SizeClass::F>(roi)) return s;
  ownCbYCr422ToYCbCr411_8u_C2P3R(roi, packedSrc(pSrc, srcStep), threePlanes(pDst, dstStep), false);
  return lumStatusOk;
}

// Streams above 1.5 MiB of rows moved when both destinations and their steps
// sit on 16 bytes.
LumStatus lumiYCbCr422ToYCbCr411_8u_C2P2R(const Lum8u* pSrc, int srcStep, Lum8u* pDstY, int dstYStep,
                                          Lum8u* pDstCbCr, int dstCbCrStep, LumSize roi) {
  if (check::anyNull(pSrc, pDstY, pDstCbCr)) return lumStatusNullPointer;
  if (LumStatus s = sizeRule<SizeClass::F>(roi)) return s;
  const bool stream = mul32(add32(mul32(3, roi.width), roi.width / 2), roi.height) > 1572864 && aligned16(pDstY) &&
                      aligned16(pDstCbCr) && aligned16(dstYStep) && aligned16(dstCbCrStep);
  ownYCbCr422ToYCbCr411_8u_C2P2R(roi, packedSrc(pSrc, srcStep), twoPlanes(pDstY, dstYStep, pDstCbCr, dstCbCrStep),
                                 stream);
  return lumStatusOk;
}

LumStatus lumiYCbCr422ToYCbCr411_8u_P3R(const Lum8u* const pSrc[3], const int srcStep[3], Lum8u* const pDst[3],
                                        const int dstStep[3], LumSize roi) {
  if (nullPlanes(pSrc) || nullPlanes(pDst)) return lumStatusNullPointer;
  if (LumStatus s = sizeRule<SizeClass::F>(roi)) return s;
  ownYCbCr422ToYCbCr411_8u_P3R(roi, threePlanes(pSrc, srcStep), threePlanes(pDst, dstStep),
                               mul32(roi.width, roi.height) > 524288);
  return lumStatusOk;
}

LumStatus lumiYCbCr422ToYCbCr411_8u_P3P2R(const Lum8u* const pSrc[3], const int srcStep[3], Lum8u* pDstY,
                                          int dstYStep, Lum8u* pDstCbCr, int dstCbCrStep, LumSize roi) {
  if (check::anyNull(pDstY, pDstCbCr) || nullPlanes(pSrc)) return lumStatusNullPointer;
  if (LumStatus s = sizeRule<SizeClass::F>(roi)) return s;
  ownYCbCr422ToYCbCr411_8u_P3P2R(roi, threePlanes(pSrc, srcStep), twoPlanes(pDstY, dstYStep, pDstCbCr, dstCbCrStep));
  return lumStatusOk;
}

// ---- 4:1:1 to 4:2:2, each chroma sample twice ----------------------------------------

LumStatus lumiYCbCr411ToYCbCr422_8u_P3R(const Lum8u* const pSrc[3], const int srcStep[3], Lum8u* const pDst[3],
                                        const int dstStep[3], LumSize roi) {
  if (nullPlanes(pSrc) || nullPlanes(pDst)) return lumStatusNullPointer;
  if (LumStatus s = sizeRule<SizeClass::F>(roi)) return s;
  ownYCbCr411ToYCbCr422_8u_P3R(roi, threePlanes(pSrc, srcStep), threePlanes(pDst, dstStep));
  return lumStatusOk;
}

// Destination planes Y, Cr, Cb, exchanged with their steps.
LumStatus lumiYCbCr411ToYCrCb422_8u_P3R(const Lum8u* const pSrc[3], const int srcStep[3], Lum8u* const pDst[3],
                                        const int dstStep[3], LumSize roi) {
  if (nullPlanes(pSrc) || nullPlanes(pDst)) return lumStatusNullPointer;
  if (LumStatus s = sizeRule<SizeClass::F>(roi)) return s;
  ownYCbCr411ToYCbCr422_8u_P3R(roi, threePlanes(pSrc, srcStep), threePlanes(pDst, dstStep, true));
  return lumStatusOk;
}

LumStatus lumiYCbCr411ToYCbCr422_8u_P3C2R(const Lum8u* const pSrc[3], const int srcStep[3], Lum8u* pDst,
                                          int dstStep, LumSize roi) {
  if (check::anyNull(pDst) || nullPlanes(pSrc)) return lumStatusNullPointer;
  if (LumStatus s = sizeRule<SizeClass::F>(roi)) return s;
  const bool stream = streamRows(add32(srcStep[0], srcStep[1], srcStep[2], dstStep), roi.height, pDst, dstStep);
  ownYCbCr411ToYCbCr422_8u_P3C2R(roi, threePlanes(pSrc, srcStep), packedDst(pDst, dstStep), stream);
  return lumStatusOk;
}

// Packed Y0 Cr Y1 Cb is YUY2 of the exchanged chroma planes.
LumStatus lumiYCbCr411ToYCrCb422_8u_P3C2R(const Lum8u* const pSrc[3], const int srcStep[3], Lum8u* pDst,
                                          int dstStep, LumSize roi) {
  if (check::anyNull(pDst) || nullPlanes(pSrc)) return lumStatusNullPointer;
  if (LumStatus s = sizeRule<SizeClass::F>(roi)) return s;
  const bool stream = streamRows(add32(srcStep[0], srcStep[1], srcStep[2], dstStep), roi.height, pDst, dstStep);
  ownYCbCr411ToYCbCr422_8u_P3C2R(roi, threePlanes(pSrc, srcStep, true), packedDst(pDst, dstStep), stream);
  return lumStatusOk;
}

// The entries of pDst are this function's pointers; a null array is refused too
// rather than read.
LumStatus lumiYCbCr411ToYCbCr422_8u_P2P3R(const Lum8u* pSrcY, int srcYStep, const Lum8u* pSrcCbCr, int srcCbCrStep,
                                          Lum8u* const pDst[3], const int dstStep[3], LumSize roi) {
  if (check::anyNull(pSrcY, pSrcCbCr) || nullPlanes(pDst)) return lumStatusNullPointer;
  if (LumStatus s = sizeRule<SizeClass::F>(roi)) return s;
  ownYCbCr411ToYCbCr422_8u_P2P3R(roi, twoPlanes(pSrcY, srcYStep, pSrcCbCr, srcCbCrStep), threePlanes(pDst, dstStep),
                                 mul32(roi.width, roi.height) >= kStreamLuma);
  return lumStatusOk;
}

LumStatus lumiYCbCr411ToYCbCr422_8u_P2C2R(const Lum8u* pSrcY, int srcYStep, const Lum8u* pSrcCbCr, int srcCbCrStep,
                                          Lum8u* pDst, int dstStep, LumSize roi) {
  if (check::anyNull(pSrcY, pSrcCbCr, pDst)) return lumStatusNullPointer;
  if (LumStatus s = sizeRule<SizeClass::F>(roi)) return s;
  const bool stream = streamRows(add32(srcYStep, srcCbCrStep, dstStep), roi.height, pDst, dstStep);
  ownYCbCr411ToYCbCr422_8u_P2C2R(roi, twoPlanes(pSrcY, srcYStep, pSrcCbCr, srcCbCrStep), packedDst(pDst, dstStep),
                                 stream);
  return lumStatusOk;
}

// ---- 4:2:0 and 4:1:1, sample for sample ------------------------------------------------

LumStatus lumiYCbCr420ToYCbCr411_8u_P2P3R(const Lum8u* pSrcY, int srcYStep, const Lum8u* pSrcCbCr, int srcCbCrStep,
                                          Lum8u* const pDst[3], const int dstStep[3], LumSize roi) {
  if (check::anyNull(pSrcY, pSrcCbCr) || nullPlanes(pDst)) return lumStatusNullPointer;
  if (LumStatus s = sizeRule<SizeClass::D>(roi)) return s;
  ownYCbCr420ToYCbCr411_8u_P2P3R(roi, twoPlanes(pSrcY, srcYStep, pSrcCbCr, srcCbCrStep), threePlanes(pDst, dstStep));
  return lumStatusOk;
}

LumStatus lumiYCbCr420ToYCbCr411_8u_P3P2R(const Lum8u* const pSrc[3], const int srcStep[3], Lum8u* pDstY,
                                          int dstYStep, Lum8u* pDstCbCr, int dstCbCrStep, LumSize roi) {
  if (check::anyNull(pDstY, pDstCbCr) || nullPlanes(pSrc)) return lumStatusNullPointer;
  if (LumStatus s = sizeRule<SizeClass::D>(roi)) return s;
  ownYCrCb420ToYCbCr411_8u_P3P2R(roi, pSrc, srcStep, twoPlanes(pDstY, dstYStep, pDstCbCr, dstCbCrStep), true);
  return lumStatusOk;
}

LumStatus lumiYCrCb420ToYCbCr411_8u_P3P2R(const Lum8u* const pSrc[3], const int srcStep[3], Lum8u* pDstY,
                                          int dstYStep, Lum8u* pDstCbCr, int dstCbCrStep, LumSize roi) {
  if (check::anyNull(pDstY, pDstCbCr) || nullPlanes(pSrc)) return lumStatusNullPointer;
  if (LumStatus s = sizeRule<SizeClass::D>(roi)) return s;
  ownYCrCb420ToYCbCr411_8u_P3P2R(roi, pSrc, srcStep, twoPlanes(pDstY, dstYStep, pDstCbCr, dstCbCrStep), false);
  return lumStatusOk;
}

LumStatus lumiYCbCr411ToYCbCr420_8u_P3R(const Lum8u* const pSrc[3], const int srcStep[3], Lum8u* const pDst[3],
                                        const int dstStep[3], LumSize roi) {
  if (nullPlanes(pSrc) || nullPlanes(pDst)) return lumStatusNullPointer;
  if (LumStatus s = sizeRule<SizeClass::D>(roi)) return s;
  ownYCbCr411ToYCbCr420_8u_P3R(roi, threePlanes(pSrc, srcStep), threePlanes(pDst, dstStep));
  return lumStatusOk;
}

LumStatus lumiYCbCr411ToYCbCr420_8u_P3P2R(const Lum8u* const pSrc[3], const int srcStep[3], Lum8u* pDstY,
                                          int dstYStep, Lum8u* pDstCbCr, int dstCbCrStep, LumSize roi) {
  if (check::anyNull(pDstY, pDstCbCr) || nullPlanes(pSrc)) return lumStatusNullPointer;
  if (LumStatus s = sizeRule<SizeClass::D>(roi)) return s;
  ownYCbCr411ToYCbCr420_8u_P3P2R(roi, threePlanes(pSrc, srcStep), twoPlanes(pDstY, dstYStep, pDstCbCr, dstCbCrStep),
                                 mul32(roi.width, roi.height) >= kStreamLuma);
  return lumStatusOk;
}

// The entries of pDst are this function's pointers; a null array is refused too
// rather than read.
LumStatus lumiYCbCr411ToYCbCr420_8u_P2P3R(const Lum8u* pSrcY, int srcYStep, const Lum8u* pSrcCbCr, int srcCbCrStep,
                                          Lum8u* const pDst[3], const int dstStep[3], LumSize roi) {
  if (check::anyNull(pSrcY, pSrcCbCr) || nullPlanes(pDst)) return lumStatusNullPointer;
  if (LumStatus s = sizeRule<SizeClass::D>(roi)) return s;
  ownYCbCr411ToYCbCr420_8u_P2P3R(roi, twoPlanes(pSrcY, srcYStep, pSrcCbCr, srcCbCrStep), threePlanes(pDst, dstStep));
  return lumStatusOk;
}

// Destination planes Y, Cr, Cb, exchanged with their steps.
LumStatus lumiYCbCr411ToYCrCb420_8u_P2P3R(const Lum8u* pSrcY, int srcYStep, const Lum8u* pSrcCbCr, int srcCbCrStep,
                                          Lum8u* const pDst[3], const int dstStep[3], LumSize roi) {
  if (check::anyNull(pSrcY, pSrcCbCr) || nullPlanes(pDst)) return lumStatusNullPointer;
  if (LumStatus s = sizeRule<SizeClass::D>(roi)) return s;
  ownYCbCr411ToYCbCr420_8u_P2P3R(roi, twoPlanes(pSrcY, srcYStep, pSrcCbCr, srcCbCrStep),
                                 threePlanes(pDst, dstStep, true));
  return lumStatusOk;
}
