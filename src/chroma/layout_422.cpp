// 4:2:2 layout changes: the packed byte orders among themselves, and packed to
// and from three planes.
#include "chroma/layout_drivers.h"
#include "frame/check.h"

using namespace lum;
using namespace lum::chroma;

namespace {

// Row drivers, one per member. The flag variants of the tables are the same
// driver with the chroma planes of the Y, Cr, Cb side exchanged by the caller.
constexpr auto myYUY2ToUYVY422_8u_C2R = repackImage<YUY2, UYVY>;
constexpr auto myUYVYToYUY2422_8u_C2R = repackImage<UYVY, YUY2>;
constexpr auto ownYCbCr422ToYCrCb422_8u_C2R = repackImage<YUY2, YVYU>;
constexpr auto ownYCbCr422ToYCbCr422_8u_C2P3R = pairImage<YUY2, PlanarRow, 1, 1>;
constexpr auto alYCbCr422ToYCbCr422_8u_C2P3R = pairImage<YUY2, PlanarRow, 1, 1, true>;
constexpr auto ownCbYCr422ToYCbCr422_8u_C2P3R = pairImage<UYVY, PlanarRow, 1, 1>;
constexpr auto Join422_8u_W7 = pairImage<PlanarRow, YUY2, 1, 1>;
constexpr auto ownYCbCr422ToCbYCr422_8u_P3C2R = pairImage<PlanarRow, UYVY, 1, 1>;
constexpr auto ownYCbCr422ToYCrCb422_8u_P3C2R = pairImage<PlanarRow, YVYU, 1, 1>;

// The aligned split needs the packed rows and the luma rows on 16 bytes and a
// width of whole 16-pixel blocks; the half-width chroma stores need nothing.
bool splitAligned(const Lum8u* pSrc, int srcStep, const Lum8u* pY, int yStep, int width) {
  return aligned16(pSrc) && aligned16(pY) && aligned16(srcStep) && aligned16(yStep) && (width & 15) == 0;
}

// YUY2 (or YVYU with the chroma planes exchanged) to three planes.
void splitYUY2(LumSize roi, const Lum8u* pSrc, int srcStep, const DstPlanes& d) {
  const SrcPlanes s = packedSrc(pSrc, srcStep);
  if (splitAligned(pSrc, srcStep, d.p[0], d.step[0], roi.width)) alYCbCr422ToYCbCr422_8u_C2P3R(roi, s, d, false);
  else ownYCbCr422ToYCbCr422_8u_C2P3R(roi, s, d, false);
}

}  // namespace

LumStatus lumiYCbCr422ToCbYCr422_8u_C2R(const Lum8u* pSrc, int srcStep, Lum8u* pDst, int dstStep, LumSize roi) {
  if (check::anyNull(pSrc, pDst)) return lumStatusNullPointer;
  if (LumStatus s = sizeRule<SizeClass::B>(roi)) return s;
  myYUY2ToUYVY422_8u_C2R(roi, pSrc, srcStep, pDst, dstStep, streamRows(add32(srcStep, dstStep), roi.height, pDst, dstStep));
  return lumStatusOk;
}

LumStatus lumiCbYCr422ToYCbCr422_8u_C2R(const Lum8u* pSrc, int srcStep, Lum8u* pDst, int dstStep, LumSize roi) {
  if (check::anyNull(pSrc, pDst)) return lumStatusNullPointer;
  if (LumStatus s = sizeRule<SizeClass::B>(roi)) return s;
  myUYVYToYUY2422_8u_C2R(roi, pSrc, srcStep, pDst, dstStep, false);
  return lumStatusOk;
}

// Bytes 0 1 2 3 of a group go to 0 3 2 1: the two chroma samples trade places.
LumStatus lumiYCbCr422ToYCrCb422_8u_C2R(const Lum8u* pSrc, int srcStep, Lum8u* pDst, int dstStep, LumSize roi) {
  if (check::anyNull(pSrc, pDst)) return lumStatusNullPointer;
  if (LumStatus s = sizeRule<SizeClass::C>(roi)) return s;
  ownYCbCr422ToYCrCb422_8u_C2R(roi, pSrc, srcStep, pDst, dstStep,
                               streamRows(add32(srcStep, dstStep), roi.height, pDst, dstStep));
  return lumStatusOk;
}

// The one function of the family that also refuses a null step array.
LumStatus lumiYCbCr422_8u_C2P3R(const Lum8u* pSrc, int srcStep, Lum8u* const pDst[3], const int dstStep[3],
                                LumSize roi) {
  if (check::anyNull(pSrc, pDst, dstStep) || nullPlanes(pDst)) return lumStatusNullPointer;
  if (LumStatus s = sizeRule<SizeClass::B>(roi)) return s;
  splitYUY2(roi, pSrc, srcStep, threePlanes(pDst, dstStep));
  return lumStatusOk;
}

// Read as YUY2 into exchanged chroma planes, so Cb still lands in plane 1.
LumStatus lumiYCrCb422ToYCbCr422_8u_C2P3R(const Lum8u* pSrc, int srcStep, Lum8u* const pDst[3],
                                          const int dstStep[3], LumSize roi) {
  if (check::anyNull(pSrc, pDst) || nullPlanes(pDst)) return lumStatusNullPointer;
  if (LumStatus s = sizeRule<SizeClass::B>(roi)) return s;
  splitYUY2(roi, pSrc, srcStep, threePlanes(pDst, dstStep, true));
  return lumStatusOk;
}

LumStatus lumiCbYCr422ToYCbCr422_8u_C2P3R(const Lum8u* pSrc, int srcStep, Lum8u* const pDst[3],
                                          const int dstStep[3], LumSize roi) {
  if (check::anyNull(pSrc, pDst) || nullPlanes(pDst)) return lumStatusNullPointer;
  if (LumStatus s = sizeRule<SizeClass::B>(roi)) return s;
  ownCbYCr422ToYCbCr422_8u_C2P3R(roi, packedSrc(pSrc, srcStep), threePlanes(pDst, dstStep), false);
  return lumStatusOk;
}

LumStatus lumiYCbCr422_8u_P3C2R(const Lum8u* const pSrc[3], const int srcStep[3], Lum8u* pDst, int dstStep,
                                LumSize roi) {
  if (check::anyNull(pSrc, pDst) || nullPlanes(pSrc)) return lumStatusNullPointer;
  if (LumStatus s = sizeRule<SizeClass::B>(roi)) return s;
  Join422_8u_W7(roi, threePlanes(pSrc, srcStep), packedDst(pDst, dstStep), false);
  return lumStatusOk;
}

LumStatus lumiYCbCr422ToCbYCr422_8u_P3C2R(const Lum8u* const pSrc[3], const int srcStep[3], Lum8u* pDst,
                                          int dstStep, LumSize roi) {
  if (check::anyNull(pSrc, pDst) || nullPlanes(pSrc)) return lumStatusNullPointer;
  if (LumStatus s = sizeRule<SizeClass::B>(roi)) return s;
  ownYCbCr422ToCbYCr422_8u_P3C2R(roi, threePlanes(pSrc, srcStep), packedDst(pDst, dstStep), false);
  return lumStatusOk;
}

LumStatus lumiYCbCr422ToYCrCb422_8u_P3C2R(const Lum8u* const pSrc[3], const int srcStep[3], Lum8u* pDst,
                                          int dstStep, LumSize roi) {
  if (check::anyNull(pSrc, pDst) || nullPlanes(pSrc)) return lumStatusNullPointer;
  if (LumStatus s = sizeRule<SizeClass::C>(roi)) return s;
  const bool stream = streamRows(add32(srcStep[0], srcStep[1], srcStep[2], dstStep), roi.height, pDst, dstStep);
  ownYCbCr422ToYCrCb422_8u_P3C2R(roi, threePlanes(pSrc, srcStep), packedDst(pDst, dstStep), stream);
  return lumStatusOk;
}
