// RGB and BGR to 4:2:0: YCbCr and YCrCb planes, NV12 semi-planar, YUV planes.
// Each row kernel converts a pair of rows: luma for every pixel, one chroma pair
// for every 2x2 cell from the sum of its four pixels. An odd last column or row
// is left as it is and the call says lumStatusOddSize.
//
// Argument checks: the YCbCr forms test every pointer (arrays, plane pointers and
// step arrays) before the size; the YUV planar forms test the arrays, then the
// size, then the plane pointers inside the arrays. A null step array is refused
// like any other array pointer rather than read.
#include "frame/cell_kernel.h"
#include "frame/check.h"
#include "lumachroma/forms_420.h"

using namespace lum;
using namespace lum::form;
namespace L = lum::layout;

namespace {

// FY1 and FC2 in steps of 16, then one of 8: the block covers width & ~7; the
// cells left go through FY3 and TC3.
template <class Src, class Chroma>
using YCbCr420Cells = CellsForward<Cell420, UpTo<8>, CellForm<FY1, FC2>, CellForm<FY3, TC3>, Src, Chroma>;

// The four-channel planar forms: FY5 and FC5 in steps of 16, then one step of 4
// by the low bits of the width, the rest through FY3 and TC3.
template <class Src>
using YCbCr420Ladder = CellsForward<Cell420, UpTo16Then4, CellForm<FY5, FC5>, CellForm<FY3, TC3>, Src, L::ChromaP3>;

// The Q14 YUV kernel and its aligned twin (same samples, aligned luma stores).
template <bool Aligned>
using YuvQ14Cells = CellsForward<Cell420, UpTo<8>, CellForm<YuvQ14Luma, YuvQ14Chroma>,
                                 CellForm<YuvQ14LumaTail, YuvQ14ChromaTail>, L::RGB, L::ChromaP3, Aligned>;

// Two pixels a step with no block loop: TU1's luma and TU1's chroma of the cell.
using YuvPlanarCells = CellsForward<Cell420, NoLadder, NoBlock, CellForm<TU1, TU1Cell>, L::P3, L::ChromaP3>;

// FU2 in blocks of 8, TU1's luma and cell chroma in the tail.
using YuvFU2Cells = CellsForward<Cell420, UpTo<8>, CellForm<FU2, FU2Cell>, CellForm<TU1, TU1Cell>, L::BGRA, L::ChromaP3>;

// Y, Cb, Cr planes; the YCrCb forms hand the same kernel their Cr and Cb planes
// exchanged, so that it writes Cb where the caller's second plane is Cr.
DstPlanes ycbcrPlanes(Lum8u* const p[3], const int step[3]) { return planar(p, 3, step); }
DstPlanes ycrcbPlanes(Lum8u* const p[3], const int step[3]) {
  Lum8u* const q[3] = {p[0], p[2], p[1]};
  const int s[3] = {step[0], step[2], step[1]};
  return planar(q, 3, s);
}
DstPlanes semiPlanar(Lum8u* y, int yStep, Lum8u* c, int cStep) {
  DstPlanes d;
  d.p[0] = y;
  d.step[0] = yStep;
  d.p[1] = c;
  d.step[1] = cStep;
  return d;
}

// Every pointer, plane pointers included, then the size: the YCbCr order.
LumStatus planesThenSize(bool anyNull, LumSize roi, int minSize) {
  if (anyNull) return lumStatusNullPointer;
  return check::badSize(roi, minSize, minSize) ? lumStatusBadSize : lumStatusOk;
}

// The YUV C3P3 kernel: the aligned twin when every pointer and step of the call
// is a multiple of 16.
void rgbToYuv420(LumSize roi, const SrcPlanes& s, const DstPlanes& d) {
  if (allAligned16(s, d))
    YuvQ14Cells<true>::image(roi, s, d);
  else
    YuvQ14Cells<false>::image(roi, s, d);
}

}  // namespace

// ---- YCbCr and YCrCb planes ------------------------------------------------

LumStatus lumiRGBToYCbCr420_8u_C3P3R(const Lum8u* pSrc, int srcStep, Lum8u* const pDst[3], const int dstStep[3],
                                     LumSize roi) {
  if (LumStatus s = planesThenSize(check::anyNull(pSrc, pDst, dstStep) || check::anyPlaneNull(pDst, 3), roi, 1))
    return s;
  YCbCr420Cells<L::RGB, L::ChromaP3>::image(roi, packed(pSrc, srcStep), ycbcrPlanes(pDst, dstStep));
  return cellStatus420(roi);
}

LumStatus lumiBGRToYCbCr420_8u_C3P3R(const Lum8u* pSrc, int srcStep, Lum8u* const pDst[3], const int dstStep[3],
                                     LumSize roi) {
  if (LumStatus s = planesThenSize(check::anyNull(pSrc, pDst, dstStep) || check::anyPlaneNull(pDst, 3), roi, 2))
    return s;
  YCbCr420Cells<L::BGR, L::ChromaP3>::image(roi, packed(pSrc, srcStep), ycbcrPlanes(pDst, dstStep));
  return cellStatus420(roi);
}

LumStatus lumiBGRToYCrCb420_8u_C3P3R(const Lum8u* pSrc, int srcStep, Lum8u* const pDst[3], const int dstStep[3],
                                     LumSize roi) {
  if (LumStatus s = planesThenSize(check::anyNull(pSrc, pDst, dstStep) || check::anyPlaneNull(pDst, 3), roi, 2))
    return s;
  YCbCr420Cells<L::BGR, L::ChromaP3>::image(roi, packed(pSrc, srcStep), ycrcbPlanes(pDst, dstStep));
  return cellStatus420(roi);
}

// Source alpha is ignored in the three four-channel forms.
LumStatus lumiBGRToYCbCr420_8u_AC4P3R(const Lum8u* pSrc, int srcStep, Lum8u* const pDst[3], const int dstStep[3],
                                      LumSize roi) {
  if (LumStatus s = planesThenSize(check::anyNull(pSrc, pDst, dstStep) || check::anyPlaneNull(pDst, 3), roi, 2))
    return s;
  YCbCr420Ladder<L::BGRA>::image(roi, packed(pSrc, srcStep), ycbcrPlanes(pDst, dstStep));
  return cellStatus420(roi);
}

LumStatus lumiBGRToYCrCb420_8u_AC4P3R(const Lum8u* pSrc, int srcStep, Lum8u* const pDst[3], const int dstStep[3],
                                      LumSize roi) {
  if (LumStatus s = planesThenSize(check::anyNull(pSrc, pDst, dstStep) || check::anyPlaneNull(pDst, 3), roi, 2))
    return s;
  YCbCr420Ladder<L::BGRA>::image(roi, packed(pSrc, srcStep), ycrcbPlanes(pDst, dstStep));
  return cellStatus420(roi);
}

LumStatus lumiRGBToYCrCb420_8u_AC4P3R(const Lum8u* pSrc, int srcStep, Lum8u* const pDst[3], const int dstStep[3],
                                      LumSize roi) {
  if (LumStatus s = planesThenSize(check::anyNull(pSrc, pDst, dstStep) || check::anyPlaneNull(pDst, 3), roi, 2))
    return s;
  YCbCr420Ladder<L::RGBA>::image(roi, packed(pSrc, srcStep), ycrcbPlanes(pDst, dstStep));
  return cellStatus420(roi);
}

// ---- semi-planar (NV12) ----------------------------------------------------

LumStatus lumiRGBToYCbCr420_8u_C3P2R(const Lum8u* pSrc, int srcStep, Lum8u* pDstY, int dstYStep, Lum8u* pDstCbCr,
                                     int dstCbCrStep, LumSize roi) {
  if (LumStatus s = check::nullThenSize(roi, pSrc, pDstY, pDstCbCr)) return s;
  YCbCr420Cells<L::RGB, L::ChromaNV12>::image(roi, packed(pSrc, srcStep),
                                              semiPlanar(pDstY, dstYStep, pDstCbCr, dstCbCrStep));
  return cellStatus420(roi);
}

// The fourth channel is read with the pixel and ignored.
LumStatus lumiRGBToYCbCr420_8u_C4P2R(const Lum8u* pSrc, int srcStep, Lum8u* pDstY, int dstYStep, Lum8u* pDstCbCr,
                                     int dstCbCrStep, LumSize roi) {
  if (LumStatus s = check::nullThenSize(roi, pSrc, pDstY, pDstCbCr)) return s;
  YCbCr420Cells<L::RGBA, L::ChromaNV12>::image(roi, packed(pSrc, srcStep),
                                               semiPlanar(pDstY, dstYStep, pDstCbCr, dstCbCrStep));
  return cellStatus420(roi);
}

LumStatus lumiBGRToYCbCr420_8u_C3P2R(const Lum8u* pSrc, int srcStep, Lum8u* pDstY, int dstYStep, Lum8u* pDstCbCr,
                                     int dstCbCrStep, LumSize roi) {
  if (LumStatus s = check::nullThenSize(roi, pSrc, pDstY, pDstCbCr)) return s;
  YCbCr420Cells<L::BGR, L::ChromaNV12>::image(roi, packed(pSrc, srcStep),
                                              semiPlanar(pDstY, dstYStep, pDstCbCr, dstCbCrStep));
  return cellStatus420(roi);
}

LumStatus lumiBGRToYCbCr420_8u_AC4P2R(const Lum8u* pSrc, int srcStep, Lum8u* pDstY, int dstYStep, Lum8u* pDstCbCr,
                                      int dstCbCrStep, LumSize roi) {
  if (LumStatus s = check::nullThenSize(roi, pSrc, pDstY, pDstCbCr)) return s;
  YCbCr420Cells<L::BGRA, L::ChromaNV12>::image(roi, packed(pSrc, srcStep),
                                               semiPlanar(pDstY, dstYStep, pDstCbCr, dstCbCrStep));
  return cellStatus420(roi);
}

// ---- YUV planes --------------------------------------------------------------

LumStatus lumiRGBToYUV420_8u_C3P3R(const Lum8u* pSrc, int srcStep, Lum8u* const pDst[3], const int dstStep[3],
                                   LumSize roi) {
  if (LumStatus s = check::nullThenSize(roi, pSrc, pDst, dstStep)) return s;
  if (check::anyPlaneNull(pDst, 3)) return lumStatusNullPointer;
  rgbToYuv420(roi, packed(pSrc, srcStep), planar(pDst, 3, dstStep));
  return cellStatus420(roi);
}

// Dense: rows of 3 * width bytes in, luma rows of width and chroma rows of
// width / 2 out.
LumStatus lumiRGBToYUV420_8u_C3P3(const Lum8u* pSrc, Lum8u* const pDst[3], LumSize roi) {
  if (LumStatus s = check::nullThenSize(roi, pSrc, pDst)) return s;
  if (check::anyPlaneNull(pDst, 3)) return lumStatusNullPointer;
  const int steps[3] = {roi.width, roi.width >> 1, roi.width >> 1};
  // The row size in pointer width; a step beyond int only serves one-row images.
  const std::ptrdiff_t rgbRow = std::ptrdiff_t(3) * roi.width;
  rgbToYuv420(roi, packed(pSrc, int(rgbRow)), planar(pDst, 3, steps));
  return cellStatus420(roi);
}

LumStatus lumiRGBToYUV420_8u_P3R(const Lum8u* const pSrc[3], int srcStep, Lum8u* const pDst[3], const int dstStep[3],
                                 LumSize roi) {
  if (LumStatus s = check::nullThenSize(roi, pSrc, pDst, dstStep)) return s;
  if (check::anyPlaneNull(pSrc, 3) || check::anyPlaneNull(pDst, 3)) return lumStatusNullPointer;
  YuvPlanarCells::image(roi, planar(pSrc, 3, srcStep), planar(pDst, 3, dstStep));
  return cellStatus420(roi);
}

LumStatus lumiRGBToYUV420_8u_P3(const Lum8u* const pSrc[3], Lum8u* const pDst[3], LumSize roi) {
  if (LumStatus s = check::nullThenSize(roi, pSrc, pDst)) return s;
  if (check::anyPlaneNull(pSrc, 3) || check::anyPlaneNull(pDst, 3)) return lumStatusNullPointer;
  const int steps[3] = {roi.width, roi.width >> 1, roi.width >> 1};
  YuvPlanarCells::image(roi, planar(pSrc, 3, roi.width), planar(pDst, 3, steps));
  return cellStatus420(roi);
}

LumStatus lumiBGRToYUV420_8u_AC4P3R(const Lum8u* pSrc, int srcStep, Lum8u* const pDst[3], const int dstStep[3],
                                    LumSize roi) {
  if (LumStatus s = check::nullThenSize(roi, pSrc, pDst, dstStep)) return s;
  if (check::anyPlaneNull(pDst, 3)) return lumStatusNullPointer;
  YuvFU2Cells::image(roi, packed(pSrc, srcStep), planar(pDst, 3, dstStep));
  return cellStatus420(roi);
}
