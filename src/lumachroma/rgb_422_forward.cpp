// RGB and BGR to YCbCr 4:2:2 (packed YCbCr422, YCrCb422, CbYCr422 and planar):
// per-pixel luma, chroma of each pixel pair's mean colour. An odd last column
// has no partner and is left as it was; the status stays lumStatusOk.
#include "frame/check.h"
#include "lumachroma/rgb_422_kernel.h"

using namespace lum;
using namespace lum::form;
namespace L = lum::layout;
namespace K = lum::layout422;

namespace {

// The pair-mean block "FY1 + FC1" over width & ~(Cover - 1), a tail form after it.
template <int Cover, class Tail, class Src, class Dst>
using PairMean = PairsThenTail<Cover, PairForm<FY1, FC1>, Tail, Src, Dst>;

// The BGRA -> CbYCr422 kernel: eight pixels a step by its own high-multiply
// block, the tail TC1 with FY3 on both pixels.
template <class Dst>
using BGRToCbYCr422AC4 = PairsThenTail<8, PairHighMul, TC1Y3, L::BGRA, Dst>;
// myAlBGRToCbYCr422_8u_AC4C2R: the same kernel with aligned packed stores.
using myAlBGRToCbYCr422_8u_AC4C2R = BGRToCbYCr422AC4<K::AlignedCbYCr422>;
using myBGRToCbYCr422_8u_AC4C2R = BGRToCbYCr422AC4<K::CbYCr422>;

}  // namespace

LumStatus lumiRGBToYCbCr422_8u_C3C2R(const Lum8u* pSrc, int srcStep, Lum8u* pDst, int dstStep, LumSize roi) {
  if (LumStatus s = check::nullThenSize(roi, pSrc, pDst)) return s;
  PairMean<16, TC1, L::RGB, K::YCbCr422>::image(roi, packed(pSrc, srcStep), packed(pDst, dstStep));
  return lumStatusOk;
}

LumStatus lumiRGBToYCrCb422_8u_C3C2R(const Lum8u* pSrc, int srcStep, Lum8u* pDst, int dstStep, LumSize roi) {
  if (LumStatus s = check::nullThenSize(roi, pSrc, pDst)) return s;
  PairMean<16, TC1, L::RGB, K::YCrCb422>::image(roi, packed(pSrc, srcStep), packed(pDst, dstStep));
  return lumStatusOk;
}

// Chroma by the 1/4, 1/2, 1/4 filter across pairs; FY1 luma in the block, FY3 in the tail.
LumStatus lumiRGBToCbYCr422_8u_C3C2R(const Lum8u* pSrc, int srcStep, Lum8u* pDst, int dstStep, LumSize roi) {
  if (LumStatus s = check::nullThenSize(roi, pSrc, pDst)) return s;
  PairsThenTail<16, ThreeTapBlock, ThreeTapTail, L::RGB, K::CbYCr422>::image(roi, packed(pSrc, srcStep),
                                                                             packed(pDst, dstStep));
  return lumStatusOk;
}

LumStatus lumiBGRToYCbCr422_8u_C3C2R(const Lum8u* pSrc, int srcStep, Lum8u* pDst, int dstStep, LumSize roi) {
  if (LumStatus s = check::nullThenWidth2(roi, pSrc, pDst)) return s;
  PairMean<16, TC2, L::BGR, K::YCbCr422>::image(roi, packed(pSrc, srcStep), packed(pDst, dstStep));
  return lumStatusOk;
}

// Source alpha is not read into any value.
LumStatus lumiBGRToYCbCr422_8u_AC4C2R(const Lum8u* pSrc, int srcStep, Lum8u* pDst, int dstStep, LumSize roi) {
  if (LumStatus s = check::nullThenWidth2(roi, pSrc, pDst)) return s;
  PairMean<16, TC2, L::BGRA, K::YCbCr422>::image(roi, packed(pSrc, srcStep), packed(pDst, dstStep));
  return lumStatusOk;
}

// All pointers and steps multiples of 16: the aligned driver; both give the same samples.
LumStatus lumiBGRToCbYCr422_8u_AC4C2R(const Lum8u* pSrc, int srcStep, Lum8u* pDst, int dstStep, LumSize roi) {
  if (LumStatus s = check::nullThenSize(roi, pSrc, pDst)) return s;
  const SrcPlanes s = packed(pSrc, srcStep);
  const DstPlanes d = packed(pDst, dstStep);
  if (allAligned16(s, d)) myAlBGRToCbYCr422_8u_AC4C2R::image(roi, s, d);
  else myBGRToCbYCr422_8u_AC4C2R::image(roi, s, d);
  return lumStatusOk;
}

// Null arrays, then size, then the source planes.
LumStatus lumiRGBToYCbCr422_8u_P3C2R(const Lum8u* const pSrc[3], int srcStep, Lum8u* pDst, int dstStep, LumSize roi) {
  if (LumStatus s = check::nullThenSize(roi, pSrc, pDst)) return s;
  if (check::anyPlaneNull(pSrc, 3)) return lumStatusNullPointer;
  PairMean<16, TC1Chop, L::P3, K::YCbCr422>::image(roi, planar(pSrc, 3, srcStep), packed(pDst, dstStep));
  return lumStatusOk;
}

LumStatus lumiRGBToYCrCb422_8u_P3C2R(const Lum8u* const pSrc[3], int srcStep, Lum8u* pDst, int dstStep, LumSize roi) {
  if (LumStatus s = check::nullThenSize(roi, pSrc, pDst)) return s;
  if (check::anyPlaneNull(pSrc, 3)) return lumStatusNullPointer;
  PairMean<16, TC1Chop, L::P3, K::YCrCb422>::image(roi, planar(pSrc, 3, srcStep), packed(pDst, dstStep));
  return lumStatusOk;
}

// Planar destinations: blocks of 16 then one of 8, so the block covers width & ~7.
// The step array is a required pointer like the plane array.
LumStatus lumiRGBToYCbCr422_8u_C3P3R(const Lum8u* pSrc, int srcStep, Lum8u* const pDst[3], const int dstStep[3],
                                     LumSize roi) {
  if (check::anyNull(pSrc, pDst, dstStep) || check::anyPlaneNull(pDst, 3)) return lumStatusNullPointer;
  if (check::badSize(roi, 2)) return lumStatusBadSize;
  PairMean<8, TC2, L::RGB, K::P3h>::image(roi, packed(pSrc, srcStep), planar(pDst, 3, dstStep));
  return lumStatusOk;
}

LumStatus lumiBGRToYCbCr422_8u_C3P3R(const Lum8u* pSrc, int srcStep, Lum8u* const pDst[3], const int dstStep[3],
                                     LumSize roi) {
  if (check::anyNull(pSrc, pDst, dstStep) || check::anyPlaneNull(pDst, 3)) return lumStatusNullPointer;
  if (check::badSize(roi, 2)) return lumStatusBadSize;
  PairMean<8, TC2, L::BGR, K::P3h>::image(roi, packed(pSrc, srcStep), planar(pDst, 3, dstStep));
  return lumStatusOk;
}

LumStatus lumiBGRToYCbCr422_8u_AC4P3R(const Lum8u* pSrc, int srcStep, Lum8u* const pDst[3], const int dstStep[3],
                                      LumSize roi) {
  if (check::anyNull(pSrc, pDst, dstStep) || check::anyPlaneNull(pDst, 3)) return lumStatusNullPointer;
  if (check::badSize(roi, 2)) return lumStatusBadSize;
  PairMean<8, TC2, L::BGRA, K::P3h>::image(roi, packed(pSrc, srcStep), planar(pDst, 3, dstStep));
  return lumStatusOk;
}
