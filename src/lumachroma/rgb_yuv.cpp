// RGB <-> YUV at full resolution (analogue-style, full range).
#include "frame/check.h"
#include "frame/kernel.h"
#include "lumachroma/forms.h"

using namespace lum;
using namespace lum::form;
namespace L = lum::layout;

LumStatus lumiRGBToYUV_8u_C3R(const Lum8u* pSrc, int srcStep, Lum8u* pDst, int dstStep, LumSize roi) {
  if (LumStatus s = check::nullThenSize(roi, pSrc, pDst)) return s;
  WideBlockThenTail<16, FU1, TU1, L::RGB, L::RGB>::image(roi, packed(pSrc, srcStep), packed(pDst, dstStep));
  return lumStatusOk;
}

// Tail form on every pixel; destination alpha is left as it is.
LumStatus lumiRGBToYUV_8u_AC4R(const Lum8u* pSrc, int srcStep, Lum8u* pDst, int dstStep, LumSize roi) {
  if (LumStatus s = check::nullThenSize(roi, pSrc, pDst)) return s;
  WideTailOnly<TU3, L::RGBA, L::RGBA>::image(roi, packed(pSrc, srcStep), packed(pDst, dstStep));
  return lumStatusOk;
}

LumStatus lumiRGBToYUV_8u_C3P3R(const Lum8u* pSrc, int srcStep, Lum8u* const pDst[3], int dstStep, LumSize roi) {
  if (LumStatus s = check::nullThenSize(roi, pSrc, pDst)) return s;
  if (check::anyPlaneNull(pDst, 3)) return lumStatusNullPointer;
  WideBlockThenTail<8, FU1, TU1, L::RGB, L::P3>::image(roi, packed(pSrc, srcStep), planar(pDst, 3, dstStep));
  return lumStatusOk;
}

// Every plane's value depends only on its own pixel, so one pass over the row
// gives what a pass per plane gives.
LumStatus lumiRGBToYUV_8u_P3R(const Lum8u* const pSrc[3], int srcStep, Lum8u* const pDst[3], int dstStep,
                              LumSize roi) {
  if (LumStatus s = check::nullThenSize(roi, pSrc, pDst)) return s;
  if (check::anyPlaneNull(pSrc, 3) || check::anyPlaneNull(pDst, 3)) return lumStatusNullPointer;
  WideBlockThenTail<16, FU1, TU2, L::P3, L::P3>::image(roi, planar(pSrc, 3, srcStep), planar(pDst, 3, dstStep));
  return lumStatusOk;
}

// Source alpha goes to the fourth plane in blocks and tail alike. Only the first
// three plane pointers are tested: a null alpha plane is the caller's to avoid.
LumStatus lumiRGBToYUV_8u_AC4P4R(const Lum8u* pSrc, int srcStep, Lum8u* const pDst[4], int dstStep, LumSize roi) {
  if (LumStatus s = check::nullThenSize(roi, pSrc, pDst)) return s;
  if (check::anyPlaneNull(pDst, 3)) return lumStatusNullPointer;
  WideBlockThenTail<8, FU2, TU3, L::RGBA, L::P4, Alpha::Source>::image(roi, packed(pSrc, srcStep),
                                                                  planar(pDst, 4, dstStep));
  return lumStatusOk;
}

LumStatus lumiYUVToRGB_8u_C3R(const Lum8u* pSrc, int srcStep, Lum8u* pDst, int dstStep, LumSize roi) {
  if (LumStatus s = check::nullThenSize(roi, pSrc, pDst)) return s;
  WideBlockThenTail<8, IU1, SU1, L::RGB, L::RGB>::image(roi, packed(pSrc, srcStep), packed(pDst, dstStep));
  return lumStatusOk;
}

// Tail form on every pixel; destination alpha is left as it is.
LumStatus lumiYUVToRGB_8u_AC4R(const Lum8u* pSrc, int srcStep, Lum8u* pDst, int dstStep, LumSize roi) {
  if (LumStatus s = check::nullThenSize(roi, pSrc, pDst)) return s;
  WideTailOnly<SU1, L::RGBA, L::RGBA>::image(roi, packed(pSrc, srcStep), packed(pDst, dstStep));
  return lumStatusOk;
}

LumStatus lumiYUVToRGB_8u_P3R(const Lum8u* const pSrc[3], int srcStep, Lum8u* const pDst[3], int dstStep,
                              LumSize roi) {
  if (LumStatus s = check::nullThenSize(roi, pSrc, pDst)) return s;
  if (check::anyPlaneNull(pSrc, 3) || check::anyPlaneNull(pDst, 3)) return lumStatusNullPointer;
  WideTailOnly<SU2, L::P3, L::P3>::image(roi, planar(pSrc, 3, srcStep), planar(pDst, 3, dstStep));
  return lumStatusOk;
}

LumStatus lumiYUVToRGB_8u_P3C3R(const Lum8u* const pSrc[3], int srcStep, Lum8u* pDst, int dstStep, LumSize roi) {
  if (LumStatus s = check::nullThenSize(roi, pSrc, pDst)) return s;
  if (check::anyPlaneNull(pSrc, 3)) return lumStatusNullPointer;
  WideBlockThenTail<16, IU2, SU2, L::P3, L::RGB>::image(roi, planar(pSrc, 3, srcStep), packed(pDst, dstStep));
  return lumStatusOk;
}

// Blocks of 16 on rows whose pointers allow, then of 8: the block form covers width & ~7.
LumStatus lumiYUVToRGB_8u_C3C4R(const Lum8u* pSrc, int srcStep, Lum8u* pDst, int dstStep, LumSize roi, Lum8u aval) {
  if (LumStatus s = check::nullThenSize(roi, pSrc, pDst)) return s;
  WideBlockThenTail<8, IU3, SU3, L::RGB, L::RGBA, Alpha::Aval>::image(roi, packed(pSrc, srcStep), packed(pDst, dstStep),
                                                                 RowCtx{aval});
  return lumStatusOk;
}
