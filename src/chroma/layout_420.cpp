// 4:2:0 layout changes: semi-planar and planar 4:2:0 among themselves, 4:2:2 to
// 4:2:0 by keeping the even chroma rows, and 4:2:0 to 4:2:2 by writing every
// chroma row twice. Nothing is averaged.
#include "chroma/layout_drivers.h"
#include "frame/check.h"

using namespace lum;
using namespace lum::chroma;

namespace {

using Pairs = CbCrPairs<false>;

// ---- 4:2:0 semi-planar and planar: chroma interleaved or split ----------------
void ownYCbCr420ToYCbCr420_8u_P2P3R(LumSize roi, const SrcPlanes& s, const DstPlanes& d) {
  copyLuma(roi, s, d);
  copyChromaRows<Pairs, CbCrPlanes, 1, 1>(roi.height / 2, roi.width / 2, s, d);
}
void ownYCbCr420ToYCbCr420_8u_P3P2R(LumSize roi, const SrcPlanes& s, const DstPlanes& d) {
  copyLuma(roi, s, d);
  copyChromaRows<CbCrPlanes, Pairs, 1, 1>(roi.height / 2, roi.width / 2, s, d);
}
// NV12 into three planes, byte 2j to plane 1 and byte 2j + 1 to plane 2.
constexpr auto myNV12ToYV12_8u_P2P3R = ownYCbCr420ToYCbCr420_8u_P2P3R;
// Planes 1 and 2 arrive exchanged, each with the other's step.
constexpr auto myYV12ToNV12_8u_P3P2R = ownYCbCr420ToYCbCr420_8u_P3P2R;

// ---- 4:2:2 to 4:2:0 ---------------------------------------------------------------
constexpr auto ownYCbCr422ToYCbCr420_8u_C2P3R = pairImage<YUY2, PlanarRow, 1, 2>;
constexpr auto ownCbYCr422ToYCbCr420_8u_C2P3R = pairImage<UYVY, PlanarRow, 1, 2>;
constexpr auto myYUY2ToYV12422_8u_C2P3R = pairImage<YUY2, PlanarRow, 1, 2>;  // planes given as Y, Cb, Cr
constexpr auto myUYVYToYV12422_8u_C2P3R = pairImage<UYVY, PlanarRow, 1, 2>;
constexpr auto myYUY2ToNV12_8u_C2P2R = pairImage<YUY2, NV12Row, 1, 2>;
constexpr auto myYUY2ToNV21_8u_C2P2R = pairImage<YUY2, NV21Row, 1, 2>;
constexpr auto myUYVYToNV12_8u_C2P2R = pairImage<UYVY, NV12Row, 1, 2>;

void ownYCbCr422ToYCbCr420_8u_P3R(LumSize roi, const SrcPlanes& s, const DstPlanes& d, bool stream) {
  copyLuma(roi, s, d, stream);
  copyChromaRows<CbCrPlanes, CbCrPlanes, 2, 1>(roi.height / 2, roi.width / 2, s, d);
}
void ownYCbCr422ToYCbCr420_8u_P3P2R(LumSize roi, const SrcPlanes& s, const DstPlanes& d) {
  copyLuma(roi, s, d);
  copyChromaRows<CbCrPlanes, Pairs, 2, 1>(roi.height / 2, roi.width / 2, s, d);
}

// ---- 4:2:0 to 4:2:2 ---------------------------------------------------------------
void ownYCbCr420ToYCbCr422_8u_P3R(LumSize roi, const SrcPlanes& s, const DstPlanes& d) {
  copyLuma(roi, s, d);
  copyChromaRows<CbCrPlanes, CbCrPlanes, 1, 2>(roi.height, roi.width / 2, s, d);
}
void ownYCbCr420ToYCbCr422_8u_P2P3R(LumSize roi, const SrcPlanes& s, const DstPlanes& d) {
  copyLuma(roi, s, d);
  copyChromaRows<Pairs, CbCrPlanes, 1, 2>(roi.height, roi.width / 2, s, d);
}
constexpr auto myNV12ToYUY2_8u_P2C2R = pairImage<NV12Row, YUY2, 2, 1>;
constexpr auto myNV12ToUYVY_8u_P2C2R = pairImage<NV12Row, UYVY, 2, 1>;
constexpr auto myYV12ToYUY2420_8u_P3C2R = pairImage<PlanarRow, YUY2, 2, 1>;  // planes given as Y, Cb, Cr
constexpr auto myYV12ToUYVY420_8u_P3C2R = pairImage<PlanarRow, UYVY, 2, 1>;

}  // namespace

// ---- interleave and de-interleave -----------------------------------------------

LumStatus lumiYCbCr420_8u_P2P3R(const Lum8u* pSrcY, int srcYStep, const Lum8u* pSrcCbCr, int srcCbCrStep,
                                Lum8u* const pDst[3], const int dstStep[3], LumSize roi) {
  if (check::anyNull(pSrcY, pSrcCbCr) || nullPlanes(pDst)) return lumStatusNullPointer;
  if (LumStatus s = sizeRule<SizeClass::A>(roi)) return s;
  ownYCbCr420ToYCbCr420_8u_P2P3R(roi, twoPlanes(pSrcY, srcYStep, pSrcCbCr, srcCbCrStep), threePlanes(pDst, dstStep));
  return lumStatusOk;
}

LumStatus lumiYCbCr420_8u_P3P2R(const Lum8u* const pSrc[3], const int srcStep[3], Lum8u* pDstY, int dstYStep,
                                Lum8u* pDstCbCr, int dstCbCrStep, LumSize roi) {
  if (check::anyNull(pDstY, pDstCbCr) || nullPlanes(pSrc)) return lumStatusNullPointer;
  if (LumStatus s = sizeRule<SizeClass::A>(roi)) return s;
  ownYCbCr420ToYCbCr420_8u_P3P2R(roi, threePlanes(pSrc, srcStep), twoPlanes(pDstY, dstYStep, pDstCbCr, dstCbCrStep));
  return lumStatusOk;
}

// Despite its name the chroma bytes are not exchanged: byte 2j goes to pDst[1]
// and byte 2j + 1 to pDst[2], as in lumiYCbCr420_8u_P2P3R. Checks run in two
// rounds: the outer pointers, a size of at least 1, the planes, then the class
// minimum of 2.
LumStatus lumiYCbCr420ToYCrCb420_8u_P2P3R(const Lum8u* pSrcY, int srcYStep, const Lum8u* pSrcCbCr, int srcCbCrStep,
                                          Lum8u* const pDst[3], const int dstStep[3], LumSize roi) {
  if (check::anyNull(pSrcY, pSrcCbCr, pDst)) return lumStatusNullPointer;
  if (check::badSize(roi)) return lumStatusBadSize;
  if (check::anyPlaneNull(pDst, 3)) return lumStatusNullPointer;
  if (LumStatus s = sizeRule<SizeClass::A>(roi)) return s;
  myNV12ToYV12_8u_P2P3R(roi, twoPlanes(pSrcY, srcYStep, pSrcCbCr, srcCbCrStep), threePlanes(pDst, dstStep));
  return lumStatusOk;
}

// Cb (pSrc[2]) goes to byte 2j and Cr (pSrc[1]) to byte 2j + 1. The rows of
// pSrc[2] advance by srcStep[1] and those of pSrc[1] by srcStep[2]: the steps
// stay crossed, which callers see whenever the two differ.
LumStatus lumiYCrCb420ToYCbCr420_8u_P3P2R(const Lum8u* const pSrc[3], const int srcStep[3], Lum8u* pDstY,
                                          int dstYStep, Lum8u* pDstCbCr, int dstCbCrStep, LumSize roi) {
  if (check::anyNull(pDstY, pDstCbCr) || nullPlanes(pSrc)) return lumStatusNullPointer;
  if (LumStatus s = sizeRule<SizeClass::A>(roi)) return s;
  SrcPlanes s = threePlanes(pSrc, srcStep);
  std::swap(s.p[1], s.p[2]);  // pointers exchanged, steps left where they were
  myYV12ToNV12_8u_P3P2R(roi, s, twoPlanes(pDstY, dstYStep, pDstCbCr, dstCbCrStep));
  return lumStatusOk;
}

// ---- 4:2:2 to 4:2:0, chroma of the even rows -------------------------------------

LumStatus lumiYCbCr422ToYCbCr420_8u_C2P3R(const Lum8u* pSrc, int srcStep, Lum8u* const pDst[3],
                                          const int dstStep[3], LumSize roi) {
  if (check::anyNull(pSrc) || nullPlanes(pDst)) return lumStatusNullPointer;
  if (LumStatus s = sizeRule<SizeClass::A>(roi)) return s;
  ownYCbCr422ToYCbCr420_8u_C2P3R(roi, packedSrc(pSrc, srcStep), threePlanes(pDst, dstStep), false);
  return lumStatusOk;
}

// Read as YUY2 into exchanged chroma planes.
LumStatus lumiYCrCb422ToYCbCr420_8u_C2P3R(const Lum8u* pSrc, int srcStep, Lum8u* const pDst[3],
                                          const int dstStep[3], LumSize roi) {
  if (check::anyNull(pSrc) || nullPlanes(pDst)) return lumStatusNullPointer;
  if (LumStatus s = sizeRule<SizeClass::A>(roi)) return s;
  ownYCbCr422ToYCbCr420_8u_C2P3R(roi, packedSrc(pSrc, srcStep), threePlanes(pDst, dstStep, true), false);
  return lumStatusOk;
}

LumStatus lumiCbYCr422ToYCbCr420_8u_C2P3R(const Lum8u* pSrc, int srcStep, Lum8u* const pDst[3],
                                          const int dstStep[3], LumSize roi) {
  if (check::anyNull(pSrc) || nullPlanes(pDst)) return lumStatusNullPointer;
  if (LumStatus s = sizeRule<SizeClass::A>(roi)) return s;
  ownCbYCr422ToYCbCr420_8u_C2P3R(roi, packedSrc(pSrc, srcStep), threePlanes(pDst, dstStep), false);
  return lumStatusOk;
}

// Destination planes Y, Cr, Cb.
LumStatus lumiYCbCr422ToYCrCb420_8u_C2P3R(const Lum8u* pSrc, int srcStep, Lum8u* const pDst[3],
                                          const int dstStep[3], LumSize roi) {
  if (check::anyNull(pSrc) || nullPlanes(pDst)) return lumStatusNullPointer;
  if (LumStatus s = sizeRule<SizeClass::A>(roi)) return s;
  myYUY2ToYV12422_8u_C2P3R(roi, packedSrc(pSrc, srcStep), threePlanes(pDst, dstStep, true), false);
  return lumStatusOk;
}

LumStatus lumiCbYCr422ToYCrCb420_8u_C2P3R(const Lum8u* pSrc, int srcStep, Lum8u* const pDst[3],
                                          const int dstStep[3], LumSize roi) {
  if (check::anyNull(pSrc) || nullPlanes(pDst)) return lumStatusNullPointer;
  if (LumStatus s = sizeRule<SizeClass::A>(roi)) return s;
  myUYVYToYV12422_8u_C2P3R(roi, packedSrc(pSrc, srcStep), threePlanes(pDst, dstStep, true), false);
  return lumStatusOk;
}

LumStatus lumiYCbCr422ToYCbCr420_8u_C2P2R(const Lum8u* pSrc, int srcStep, Lum8u* pDstY, int dstYStep,
                                          Lum8u* pDstCbCr, int dstCbCrStep, LumSize roi) {
  if (check::anyNull(pSrc, pDstY, pDstCbCr)) return lumStatusNullPointer;
  if (LumStatus s = sizeRule<SizeClass::A>(roi)) return s;
  myYUY2ToNV12_8u_C2P2R(roi, packedSrc(pSrc, srcStep), twoPlanes(pDstY, dstYStep, pDstCbCr, dstCbCrStep), false);
  return lumStatusOk;
}

LumStatus lumiYCbCr422ToYCrCb420_8u_C2P2R(const Lum8u* pSrc, int srcStep, Lum8u* pDstY, int dstYStep,
                                          Lum8u* pDstCrCb, int dstCrCbStep, LumSize roi) {
  if (check::anyNull(pSrc, pDstY, pDstCrCb)) return lumStatusNullPointer;
  if (LumStatus s = sizeRule<SizeClass::A>(roi)) return s;
  myYUY2ToNV21_8u_C2P2R(roi, packedSrc(pSrc, srcStep), twoPlanes(pDstY, dstYStep, pDstCrCb, dstCrCbStep), false);
  return lumStatusOk;
}

LumStatus lumiCbYCr422ToYCbCr420_8u_C2P2R(const Lum8u* pSrc, int srcStep, Lum8u* pDstY, int dstYStep,
                                          Lum8u* pDstCbCr, int dstCbCrStep, LumSize roi) {
  if (check::anyNull(pSrc, pDstY, pDstCbCr)) return lumStatusNullPointer;
  if (LumStatus s = sizeRule<SizeClass::A>(roi)) return s;
  myUYVYToNV12_8u_C2P2R(roi, packedSrc(pSrc, srcStep), twoPlanes(pDstY, dstYStep, pDstCbCr, dstCbCrStep), false);
  return lumStatusOk;
}

LumStatus lumiYCbCr422ToYCbCr420_8u_P3R(const Lum8u* const pSrc[3], const int srcStep[3], Lum8u* const pDst[3],
                                        const int dstStep[3], LumSize roi) {
  if (nullPlanes(pSrc) || nullPlanes(pDst)) return lumStatusNullPointer;
  if (LumStatus s = sizeRule<SizeClass::A>(roi)) return s;
  ownYCbCr422ToYCbCr420_8u_P3R(roi, threePlanes(pSrc, srcStep), threePlanes(pDst, dstStep),
                               mul32(roi.width, roi.height) >= kStreamLuma);
  return lumStatusOk;
}

LumStatus lumiYCbCr422ToYCbCr420_8u_P3P2R(const Lum8u* const pSrc[3], const int srcStep[3], Lum8u* pDstY,
                                          int dstYStep, Lum8u* pDstCbCr, int dstCbCrStep, LumSize roi) {
  if (check::anyNull(pDstY, pDstCbCr) || nullPlanes(pSrc)) return lumStatusNullPointer;
  if (LumStatus s = sizeRule<SizeClass::A>(roi)) return s;
  ownYCbCr422ToYCbCr420_8u_P3P2R(roi, threePlanes(pSrc, srcStep), twoPlanes(pDstY, dstYStep, pDstCbCr, dstCbCrStep));
  return lumStatusOk;
}

// ---- 4:2:0 to 4:2:2, each chroma row twice ----------------------------------------

LumStatus lumiYCbCr420ToYCbCr422_8u_P3R(const Lum8u* const pSrc[3], const int srcStep[3], Lum8u* const pDst[3],
                                        const int dstStep[3], LumSize roi) {
  if (nullPlanes(pSrc) || nullPlanes(pDst)) return lumStatusNullPointer;
  if (LumStatus s = sizeRule<SizeClass::A>(roi)) return s;
  ownYCbCr420ToYCbCr422_8u_P3R(roi, threePlanes(pSrc, srcStep), threePlanes(pDst, dstStep));
  return lumStatusOk;
}

// Source planes Y, Cr, Cb, exchanged with their steps.
LumStatus lumiYCrCb420ToYCbCr422_8u_P3R(const Lum8u* const pSrc[3], const int srcStep[3], Lum8u* const pDst[3],
                                        const int dstStep[3], LumSize roi) {
  if (nullPlanes(pSrc) || nullPlanes(pDst)) return lumStatusNullPointer;
  if (LumStatus s = sizeRule<SizeClass::A>(roi)) return s;
  ownYCbCr420ToYCbCr422_8u_P3R(roi, threePlanes(pSrc, srcStep, true), threePlanes(pDst, dstStep));
  return lumStatusOk;
}

LumStatus lumiYCbCr420ToYCbCr422_8u_P2P3R(const Lum8u* pSrcY, int srcYStep, const Lum8u* pSrcCbCr, int srcCbCrStep,
                                          Lum8u* const pDst[3], const int dstStep[3], LumSize roi) {
  if (check::anyNull(pSrcY, pSrcCbCr) || nullPlanes(pDst)) return lumStatusNullPointer;
  if (LumStatus s = sizeRule<SizeClass::A>(roi)) return s;
  ownYCbCr420ToYCbCr422_8u_P2P3R(roi, twoPlanes(pSrcY, srcYStep, pSrcCbCr, srcCbCrStep), threePlanes(pDst, dstStep));
  return lumStatusOk;
}

LumStatus lumiYCbCr420ToYCbCr422_8u_P2C2R(const Lum8u* pSrcY, int srcYStep, const Lum8u* pSrcCbCr, int srcCbCrStep,
                                          Lum8u* pDst, int dstStep, LumSize roi) {
  if (check::anyNull(pSrcY, pSrcCbCr, pDst)) return lumStatusNullPointer;
  if (LumStatus s = sizeRule<SizeClass::A>(roi)) return s;
  myNV12ToYUY2_8u_P2C2R(roi, twoPlanes(pSrcY, srcYStep, pSrcCbCr, srcCbCrStep), packedDst(pDst, dstStep), false);
  return lumStatusOk;
}

LumStatus lumiYCbCr420ToCbYCr422_8u_P2C2R(const Lum8u* pSrcY, int srcYStep, const Lum8u* pSrcCbCr, int srcCbCrStep,
                                          Lum8u* pDst, int dstStep, LumSize roi) {
  if (check::anyNull(pSrcY, pSrcCbCr, pDst)) return lumStatusNullPointer;
  if (LumStatus s = sizeRule<SizeClass::A>(roi)) return s;
  myNV12ToUYVY_8u_P2C2R(roi, twoPlanes(pSrcY, srcYStep, pSrcCbCr, srcCbCrStep), packedDst(pDst, dstStep), false);
  return lumStatusOk;
}

LumStatus lumiYCrCb420ToYCbCr422_8u_P3C2R(const Lum8u* const pSrc[3], const int srcStep[3], Lum8u* pDst,
                                          int dstStep, LumSize roi) {
  if (check::anyNull(pDst) || nullPlanes(pSrc)) return lumStatusNullPointer;
  if (LumStatus s = sizeRule<SizeClass::A>(roi)) return s;
  myYV12ToYUY2420_8u_P3C2R(roi, threePlanes(pSrc, srcStep, true), packedDst(pDst, dstStep), false);
  return lumStatusOk;
}

LumStatus lumiYCrCb420ToCbYCr422_8u_P3C2R(const Lum8u* const pSrc[3], const int srcStep[3], Lum8u* pDst,
                                          int dstStep, LumSize roi) {
  if (check::anyNull(pDst) || nullPlanes(pSrc)) return lumStatusNullPointer;
  if (LumStatus s = sizeRule<SizeClass::A>(roi)) return s;
  const bool stream = streamRows(add32(srcStep[0], srcStep[1], srcStep[2], dstStep), roi.height, pDst, dstStep);
  myYV12ToUYVY420_8u_P3C2R(roi, threePlanes(pSrc, srcStep, true), packedDst(pDst, dstStep), stream);
  return lumStatusOk;
}
