// RGB <-> YCbCr at full resolution (BT.601 studio range).
#include "frame/check.h"
#include "frame/kernel.h"
#include "lumachroma/forms.h"

using namespace lum;
using namespace lum::form;
namespace L = lum::layout;

LumStatus lumiRGBToYCbCr_8u_C3R(const Lum8u* pSrc, int srcStep, Lum8u* pDst, int dstStep, LumSize roi) {
  if (LumStatus s = check::nullThenSize(roi, pSrc, pDst)) return s;
  WideBlockThenTail<16, FY1, FY3, L::RGB, L::RGB>::image(roi, packed(pSrc, srcStep), packed(pDst, dstStep));
  return lumStatusOk;
}

// The block loop stores whole pixels with alpha 0; the tail never touches alpha.
LumStatus lumiRGBToYCbCr_8u_AC4R(const Lum8u* pSrc, int srcStep, Lum8u* pDst, int dstStep, LumSize roi) {
  if (LumStatus s = check::nullThenSize(roi, pSrc, pDst)) return s;
  WideBlockThenTail<16, FY1, FY3, L::RGBA, L::RGBA, Alpha::Zero, Alpha::Keep>::image(
      roi, packed(pSrc, srcStep), packed(pDst, dstStep));
  return lumStatusOk;
}

LumStatus lumiRGBToYCbCr_8u_C3P3R(const Lum8u* pSrc, int srcStep, Lum8u* const pDst[3], int dstStep, LumSize roi) {
  if (check::anyNull(pSrc, pDst) || check::anyPlaneNull(pDst, 3)) return lumStatusNullPointer;
  if (check::badSize(roi)) return lumStatusBadSize;
  WideBlockThenTail<8, FY2, FY3, L::RGB, L::P3>::image(roi, packed(pSrc, srcStep), planar(pDst, 3, dstStep));
  return lumStatusOk;
}

// Source alpha is ignored. A null pDst array is refused too, before its planes are read.
LumStatus lumiRGBToYCbCr_8u_AC4P3R(const Lum8u* pSrc, int srcStep, Lum8u* const pDst[3], int dstStep, LumSize roi) {
  if (check::anyNull(pSrc, pDst) || check::anyPlaneNull(pDst, 3)) return lumStatusNullPointer;
  if (check::badSize(roi)) return lumStatusBadSize;
  WideBlockThenTail<8, FY2, FY3, L::RGBA, L::P3>::image(roi, packed(pSrc, srcStep), planar(pDst, 3, dstStep));
  return lumStatusOk;
}

// All-aligned calls with a width of whole 16-pixel blocks run 16 a step and no
// tail; the rest run 8 a step and the tail. Both blocks compute FY2.
LumStatus lumiRGBToYCbCr_8u_P3R(const Lum8u* const pSrc[3], int srcStep, Lum8u* const pDst[3], int dstStep,
                                LumSize roi) {
  if (LumStatus s = check::nullThenSize(roi, pSrc, pDst)) return s;
  if (check::anyPlaneNull(pSrc, 3) || check::anyPlaneNull(pDst, 3)) return lumStatusNullPointer;
  const SrcPlanes s = planar(pSrc, 3, srcStep);
  const DstPlanes d = planar(pDst, 3, dstStep);
  if (allAligned16(s, d) && (roi.width & 15) == 0)
    WideBlockThenTail<16, FY2, FY3, L::P3, L::P3>::image(roi, s, d);
  else
    WideBlockThenTail<8, FY2, FY3, L::P3, L::P3>::image(roi, s, d);
  return lumStatusOk;
}

// Blocks of 16, then one of 8: the block form covers width & ~7.
LumStatus lumiYCbCrToRGB_8u_C3R(const Lum8u* pSrc, int srcStep, Lum8u* pDst, int dstStep, LumSize roi) {
  if (LumStatus s = check::nullThenSize(roi, pSrc, pDst)) return s;
  WideBlockThenTail<8, IY1, SY1, L::RGB, L::RGB>::image(roi, packed(pSrc, srcStep), packed(pDst, dstStep));
  return lumStatusOk;
}

// Tail form on every pixel; destination alpha is left as it is.
LumStatus lumiYCbCrToRGB_8u_AC4R(const Lum8u* pSrc, int srcStep, Lum8u* pDst, int dstStep, LumSize roi) {
  if (LumStatus s = check::nullThenSize(roi, pSrc, pDst)) return s;
  WideTailOnly<SY3, L::RGBA, L::RGBA>::image(roi, packed(pSrc, srcStep), packed(pDst, dstStep));
  return lumStatusOk;
}

// Ladder of 16 (aligned), 8 and 4 pixels by IY3, the last 0..3 pixels by SY2.
LumStatus lumiYCbCrToRGB_8u_P3R(const Lum8u* const pSrc[3], int srcStep, Lum8u* const pDst[3], int dstStep,
                                LumSize roi) {
  if (LumStatus s = check::nullThenSize(roi, pSrc, pDst)) return s;
  if (check::anyPlaneNull(pSrc, 3) || check::anyPlaneNull(pDst, 3)) return lumStatusNullPointer;
  WideBlockThenTail<4, IY3, SY2, L::P3, L::P3>::image(roi, planar(pSrc, 3, srcStep), planar(pDst, 3, dstStep));
  return lumStatusOk;
}

LumStatus lumiYCbCrToRGB_8u_P3C3R(const Lum8u* const pSrc[3], int srcStep, Lum8u* pDst, int dstStep, LumSize roi) {
  if (check::anyNull(pSrc, pDst) || check::anyPlaneNull(pSrc, 3)) return lumStatusNullPointer;
  if (check::badSize(roi)) return lumStatusBadSize;
  WideBlockThenTail<8, IY1, SY1, L::P3, L::RGB>::image(roi, planar(pSrc, 3, srcStep), packed(pDst, dstStep));
  return lumStatusOk;
}

LumStatus lumiYCbCrToRGB_8u_P3C4R(const Lum8u* const pSrc[3], int srcStep, Lum8u* pDst, int dstStep, LumSize roi,
                                  Lum8u aval) {
  if (LumStatus s = check::nullThenSize(roi, pSrc, pDst)) return s;
  if (check::anyPlaneNull(pSrc, 3)) return lumStatusNullPointer;
  WideBlockThenTail<8, IY2, SY1, L::P3, L::RGBA, Alpha::Aval>::image(roi, planar(pSrc, 3, srcStep),
                                                                 packed(pDst, dstStep), RowCtx{aval});
  return lumStatusOk;
}

LumStatus lumiYCbCrToBGR_8u_P3C3R(const Lum8u* const pSrc[3], int srcStep, Lum8u* pDst, int dstStep, LumSize roi) {
  if (check::anyNull(pSrc, pDst) || check::anyPlaneNull(pSrc, 3)) return lumStatusNullPointer;
  if (check::badSize(roi)) return lumStatusBadSize;
  WideBlockThenTail<8, IY1, SY1, L::P3, L::BGR>::image(roi, planar(pSrc, 3, srcStep), packed(pDst, dstStep));
  return lumStatusOk;
}

// Blocks of 16, one of 8, then single pixels, all by the block form IY2.
LumStatus lumiYCbCrToBGR_8u_P3C4R(const Lum8u* const pSrc[3], int srcStep, Lum8u* pDst, int dstStep, LumSize roi,
                                  Lum8u aval) {
  if (check::anyNull(pSrc, pDst) || check::anyPlaneNull(pSrc, 3)) return lumStatusNullPointer;
  if (check::badSize(roi)) return lumStatusBadSize;
  WideBlockThenTail<1, IY2, NoBlock, L::P3, L::BGRA, Alpha::Aval>::image(roi, planar(pSrc, 3, srcStep),
                                                                     packed(pDst, dstStep), RowCtx{aval});
  return lumStatusOk;
}
