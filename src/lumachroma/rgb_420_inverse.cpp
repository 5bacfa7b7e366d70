// 4:2:0 to RGB and BGR: YCbCr and YCrCb planes, NV12 and NV21 semi-planar, YUV
// planes. All four pixels of a cell take the cell's chroma pair unchanged. An odd
// last column or row is left as it is and the call says lumStatusOddSize.
//
// Argument checks: the YCbCr and semi-planar forms test every pointer (arrays,
// plane pointers and step arrays) before the size, except the two NV21 forms with
// a four-channel destination, which test the size first; the YUV planar forms
// test the arrays, then the size, then the plane pointers.
#include "frame/cell_kernel.h"
#include "frame/check.h"
#include "lumachroma/forms_420.h"

using namespace lum;
using namespace lum::form;
namespace L = lum::layout;

namespace {

// The semi-planar kernels and the YCrCb planar one: the 4:2:0 set of the folded
// scheme in steps of 16 and 8, the rest by SY1 (the tail of this family's other
// inverse YCbCr kernels).
template <class Chroma, class Dst, Alpha A = Alpha::Keep>
using FoldedCells = CellsInverse<Cell420, UpTo<8>, IY4Cell, SY1, Chroma, Dst, A>;

// IU2 on every pixel, and its aligned twin (same samples, aligned luma loads).
template <bool Aligned>
using YuvIU2Cells = CellsInverse<Cell420, UpTo<1>, IU2, NoBlock, L::ChromaP3, L::RGB, Alpha::Keep, Alpha::Keep, Aligned>;

SrcPlanes ycbcrPlanes(const Lum8u* const p[3], const int step[3]) { return planar(p, 3, step); }
// A YCrCb image seen as YCbCr: its second and third planes exchanged.
SrcPlanes ycrcbPlanes(const Lum8u* const p[3], const int step[3]) {
  const Lum8u* const q[3] = {p[0], p[2], p[1]};
  const int s[3] = {step[0], step[2], step[1]};
  return planar(q, 3, s);
}
SrcPlanes semiPlanar(const Lum8u* y, int yStep, const Lum8u* c, int cStep) {
  SrcPlanes s;
  s.p[0] = y;
  s.step[0] = yStep;
  s.p[1] = c;
  s.step[1] = cStep;
  return s;
}

// Every pointer, plane pointers included, then the size.
LumStatus planesThenSize(bool anyNull, LumSize roi, int minSize) {
  if (anyNull) return lumStatusNullPointer;
  return check::badSize(roi, minSize, minSize) ? lumStatusBadSize : lumStatusOk;
}

void yuvToRgb420(LumSize roi, const SrcPlanes& s, const DstPlanes& d) {
  if (allAligned16(s, d))
    YuvIU2Cells<true>::image(roi, s, d);
  else
    YuvIU2Cells<false>::image(roi, s, d);
}

}  // namespace

// ---- YCbCr and YCrCb planes ------------------------------------------------

LumStatus lumiYCbCr420ToRGB_8u_P3C3R(const Lum8u* const pSrc[3], const int srcStep[3], Lum8u* pDst, int dstStep,
                                     LumSize roi) {
  if (LumStatus s = planesThenSize(check::anyNull(pSrc, srcStep, pDst) || check::anyPlaneNull(pSrc, 3), roi, 1))
    return s;
  CellsInverse<Cell420, UpTo<8>, IY1, SY1, L::ChromaP3, L::RGB>::image(roi, ycbcrPlanes(pSrc, srcStep),
                                                                      packed(pDst, dstStep));
  return cellStatus420(roi);
}

LumStatus lumiYCbCr420ToBGR_8u_P3C3R(const Lum8u* const pSrc[3], const int srcStep[3], Lum8u* pDst, int dstStep,
                                     LumSize roi) {
  if (LumStatus s = planesThenSize(check::anyNull(pSrc, srcStep, pDst) || check::anyPlaneNull(pSrc, 3), roi, 1))
    return s;
  CellsInverse<Cell420, UpTo<8>, IY1, SY1, L::ChromaP3, L::BGR>::image(roi, ycbcrPlanes(pSrc, srcStep),
                                                                      packed(pDst, dstStep));
  return cellStatus420(roi);
}

// IY2 on every pixel, as the full-resolution BGRA form: steps of 16, one of 8,
// then single pixels by the same arithmetic.
LumStatus lumiYCbCr420ToBGR_8u_P3C4R(const Lum8u* const pSrc[3], const int srcStep[3], Lum8u* pDst, int dstStep,
                                     LumSize roi, Lum8u aval) {
  if (LumStatus s = planesThenSize(check::anyNull(pSrc, srcStep, pDst) || check::anyPlaneNull(pSrc, 3), roi, 1))
    return s;
  CellsInverse<Cell420, UpTo<1>, IY2, NoBlock, L::ChromaP3, L::BGRA, Alpha::Aval>::image(
      roi, ycbcrPlanes(pSrc, srcStep), packed(pDst, dstStep), RowCtx{aval});
  return cellStatus420(roi);
}

LumStatus lumiYCrCb420ToRGB_8u_P3C4R(const Lum8u* const pSrc[3], const int srcStep[3], Lum8u* pDst, int dstStep,
                                     LumSize roi, Lum8u aval) {
  if (LumStatus s = planesThenSize(check::anyNull(pSrc, srcStep, pDst) || check::anyPlaneNull(pSrc, 3), roi, 1))
    return s;
  FoldedCells<L::ChromaP3, L::RGBA, Alpha::Aval>::image(roi, ycrcbPlanes(pSrc, srcStep), packed(pDst, dstStep),
                                                        RowCtx{aval});
  return cellStatus420(roi);
}

// ---- semi-planar: NV12 (Cb Cr pairs) and NV21 (Cr Cb pairs) -----------------

LumStatus lumiYCbCr420ToRGB_8u_P2C3R(const Lum8u* pSrcY, int srcYStep, const Lum8u* pSrcCbCr, int srcCbCrStep,
                                     Lum8u* pDst, int dstStep, LumSize roi) {
  if (LumStatus s = check::nullThenSize(roi, pSrcY, pSrcCbCr, pDst)) return s;
  FoldedCells<L::ChromaNV12, L::RGB>::image(roi, semiPlanar(pSrcY, srcYStep, pSrcCbCr, srcCbCrStep),
                                            packed(pDst, dstStep));
  return cellStatus420(roi);
}

LumStatus lumiYCbCr420ToRGB_8u_P2C4R(const Lum8u* pSrcY, int srcYStep, const Lum8u* pSrcCbCr, int srcCbCrStep,
                                     Lum8u* pDst, int dstStep, LumSize roi, Lum8u aval) {
  if (LumStatus s = check::nullThenSize(roi, pSrcY, pSrcCbCr, pDst)) return s;
  FoldedCells<L::ChromaNV12, L::RGBA, Alpha::Aval>::image(roi, semiPlanar(pSrcY, srcYStep, pSrcCbCr, srcCbCrStep),
                                                          packed(pDst, dstStep), RowCtx{aval});
  return cellStatus420(roi);
}

LumStatus lumiYCbCr420ToBGR_8u_P2C3R(const Lum8u* pSrcY, int srcYStep, const Lum8u* pSrcCbCr, int srcCbCrStep,
                                     Lum8u* pDst, int dstStep, LumSize roi) {
  if (LumStatus s = check::nullThenSize(roi, pSrcY, pSrcCbCr, pDst)) return s;
  FoldedCells<L::ChromaNV12, L::BGR>::image(roi, semiPlanar(pSrcY, srcYStep, pSrcCbCr, srcCbCrStep),
                                            packed(pDst, dstStep));
  return cellStatus420(roi);
}

LumStatus lumiYCbCr420ToBGR_8u_P2C4R(const Lum8u* pSrcY, int srcYStep, const Lum8u* pSrcCbCr, int srcCbCrStep,
                                     Lum8u* pDst, int dstStep, LumSize roi, Lum8u aval) {
  if (LumStatus s = check::nullThenSize(roi, pSrcY, pSrcCbCr, pDst)) return s;
  FoldedCells<L::ChromaNV12, L::BGRA, Alpha::Aval>::image(roi, semiPlanar(pSrcY, srcYStep, pSrcCbCr, srcCbCrStep),
                                                          packed(pDst, dstStep), RowCtx{aval});
  return cellStatus420(roi);
}

LumStatus lumiYCrCb420ToRGB_8u_P2C3R(const Lum8u* pSrcY, int srcYStep, const Lum8u* pSrcCrCb, int srcCrCbStep,
                                     Lum8u* pDst, int dstStep, LumSize roi) {
  if (LumStatus s = check::nullThenSize(roi, pSrcY, pSrcCrCb, pDst)) return s;
  FoldedCells<L::ChromaNV21, L::RGB>::image(roi, semiPlanar(pSrcY, srcYStep, pSrcCrCb, srcCrCbStep),
                                            packed(pDst, dstStep));
  return cellStatus420(roi);
}

// Size first, then the pointers: the reverse of the NV12 twin, and it stays so.
LumStatus lumiYCrCb420ToRGB_8u_P2C4R(const Lum8u* pSrcY, int srcYStep, const Lum8u* pSrcCrCb, int srcCrCbStep,
                                     Lum8u* pDst, int dstStep, LumSize roi, Lum8u aval) {
  if (LumStatus s = check::sizeThenNull(roi, pSrcY, pSrcCrCb, pDst)) return s;
  FoldedCells<L::ChromaNV21, L::RGBA, Alpha::Aval>::image(roi, semiPlanar(pSrcY, srcYStep, pSrcCrCb, srcCrCbStep),
                                                          packed(pDst, dstStep), RowCtx{aval});
  return cellStatus420(roi);
}

LumStatus lumiYCrCb420ToBGR_8u_P2C3R(const Lum8u* pSrcY, int srcYStep, const Lum8u* pSrcCrCb, int srcCrCbStep,
                                     Lum8u* pDst, int dstStep, LumSize roi) {
  if (LumStatus s = check::nullThenSize(roi, pSrcY, pSrcCrCb, pDst)) return s;
  FoldedCells<L::ChromaNV21, L::BGR>::image(roi, semiPlanar(pSrcY, srcYStep, pSrcCrCb, srcCrCbStep),
                                            packed(pDst, dstStep));
  return cellStatus420(roi);
}

// Size first, then the pointers, like its RGB twin.
LumStatus lumiYCrCb420ToBGR_8u_P2C4R(const Lum8u* pSrcY, int srcYStep, const Lum8u* pSrcCrCb, int srcCrCbStep,
                                     Lum8u* pDst, int dstStep, LumSize roi, Lum8u aval) {
  if (LumStatus s = check::sizeThenNull(roi, pSrcY, pSrcCrCb, pDst)) return s;
  FoldedCells<L::ChromaNV21, L::BGRA, Alpha::Aval>::image(roi, semiPlanar(pSrcY, srcYStep, pSrcCrCb, srcCrCbStep),
                                                          packed(pDst, dstStep), RowCtx{aval});
  return cellStatus420(roi);
}

// ---- YUV planes --------------------------------------------------------------

LumStatus lumiYUV420ToRGB_8u_P3C3R(const Lum8u* const pSrc[3], const int srcStep[3], Lum8u* pDst, int dstStep,
                                   LumSize roi) {
  if (LumStatus s = check::nullThenSize(roi, pSrc, srcStep, pDst)) return s;
  if (check::anyPlaneNull(pSrc, 3)) return lumStatusNullPointer;
  yuvToRgb420(roi, planar(pSrc, 3, srcStep), packed(pDst, dstStep));
  return cellStatus420(roi);
}

// Dense: luma rows of width, chroma rows of width / 2, RGB rows of 3 * width.
LumStatus lumiYUV420ToRGB_8u_P3C3(const Lum8u* const pSrc[3], Lum8u* pDst, LumSize roi) {
  if (LumStatus s = check::nullThenSize(roi, pSrc, pDst)) return s;
  if (check::anyPlaneNull(pSrc, 3)) return lumStatusNullPointer;
  const int steps[3] = {roi.width, roi.width >> 1, roi.width >> 1};
  // The row size in pointer width; a step beyond int only serves one-row images.
  const std::ptrdiff_t rgbRow = std::ptrdiff_t(3) * roi.width;
  yuvToRgb420(roi, planar(pSrc, 3, steps), packed(pDst, int(rgbRow)));
  return cellStatus420(roi);
}

// Scalar on every pixel: SU4, no rounding add.
LumStatus lumiYUV420ToRGB_8u_P3R(const Lum8u* const pSrc[3], const int srcStep[3], Lum8u* const pDst[3], int dstStep,
                                 LumSize roi) {
  if (LumStatus s = check::nullThenSize(roi, pSrc, srcStep, pDst)) return s;
  if (check::anyPlaneNull(pSrc, 3) || check::anyPlaneNull(pDst, 3)) return lumStatusNullPointer;
  CellsInverse<Cell420, NoLadder, NoBlock, SU4, L::ChromaP3, L::P3>::image(roi, planar(pSrc, 3, srcStep),
                                                                          planar(pDst, 3, dstStep));
  return cellStatus420(roi);
}

LumStatus lumiYUV420ToRGB_8u_P3(const Lum8u* const pSrc[3], Lum8u* const pDst[3], LumSize roi) {
  if (LumStatus s = check::nullThenSize(roi, pSrc, pDst)) return s;
  if (check::anyPlaneNull(pSrc, 3) || check::anyPlaneNull(pDst, 3)) return lumStatusNullPointer;
  const int steps[3] = {roi.width, roi.width >> 1, roi.width >> 1};
  CellsInverse<Cell420, NoLadder, NoBlock, SU4, L::ChromaP3, L::P3>::image(roi, planar(pSrc, 3, steps),
                                                                          planar(pDst, 3, roi.width));
  return cellStatus420(roi);
}

// IU5 over four cells a step, SU3 on the cells left; alpha 0 in every pixel.
LumStatus lumiYUV420ToRGB_8u_P3AC4R(const Lum8u* const pSrc[3], const int srcStep[3], Lum8u* pDst, int dstStep,
                                    LumSize roi) {
  if (LumStatus s = check::nullThenSize(roi, pSrc, srcStep, pDst)) return s;
  if (check::anyPlaneNull(pSrc, 3)) return lumStatusNullPointer;
  CellsInverse<Cell420, UpTo<8>, IU5, SU3, L::ChromaP3, L::RGBA, Alpha::Zero>::image(roi, planar(pSrc, 3, srcStep),
                                                                                    packed(pDst, dstStep));
  return cellStatus420(roi);
}

// IU2's coefficients at a finer scale, on every pixel.
LumStatus lumiYUV420ToBGR_8u_P3C3R(const Lum8u* const pSrc[3], const int srcStep[3], Lum8u* pDst, int dstStep,
                                   LumSize roi) {
  if (check::anyNull(pSrc, srcStep, pDst)) return lumStatusNullPointer;
  if (check::badSize(roi, 2, 2)) return lumStatusBadSize;
  if (check::anyPlaneNull(pSrc, 3)) return lumStatusNullPointer;
  CellsInverse<Cell420, UpTo<1>, IU2Fine, NoBlock, L::ChromaP3, L::BGR>::image(roi, planar(pSrc, 3, srcStep),
                                                                              packed(pDst, dstStep));
  return cellStatus420(roi);
}
