// BT.709 studio range (709CSC): Y, Cb, Cr planes at 4:4:4 and 4:2:0 to BGR,
// and BGR or BGRA to 4:2:0 planes (YCbCr, YCrCb) and NV12.
#include "frame/check.h"
#include "lumachroma/bt709_kernels.h"

using namespace lum;
using namespace lum::form;
using namespace lum::bt709;
namespace L = lum::layout;

namespace {

// The YCrCb forms: the same routine with the Cb and Cr planes exchanged.
template <class Kernel>
LumStatus toPlanes420Swapped(const Lum8u* pSrc, int srcStep, Lum8u* const pDst[3], const int dstStep[3],
                             LumSize roi) {
  if (check::anyNull(pSrc, pDst, dstStep)) return lumStatusNullPointer;
  Lum8u* const d[3] = {pDst[0], pDst[2], pDst[1]};
  const int st[3] = {dstStep[0], dstStep[2], dstStep[1]};
  return toPlanes420<Kernel>(pSrc, srcStep, d, st, roi);
}

// Forward 4:2:0 to NV12: luma plane and one plane of Cb Cr pairs.
template <class Kernel>
LumStatus toNV12(const Lum8u* pSrc, int srcStep, Lum8u* pDstY, int dstYStep, Lum8u* pDstCbCr, int dstCbCrStep,
                 LumSize roi) {
  if (check::anyNull(pSrc, pDstY, pDstCbCr)) return lumStatusNullPointer;
  if (check::badSize(roi, 2, 2)) return lumStatusBadSize;
  DstPlanes d;
  d.p[0] = pDstY;
  d.step[0] = dstYStep;
  d.p[1] = pDstCbCr;
  d.step[1] = dstCbCrStep;
  Kernel::image(roi, pSrc, srcStep, d);
  return oddSizeStatus(roi);
}

// FY7 + FC7 in blocks, T7 on the cells after them, by ladder and source layout.
template <class Src, class Ladder, class Sink = PlanarCbCr>
using Cells7 = ForwardCells<Blk7Cell, T7Cell, Src, Sink, Ladder>;

}  // namespace

// 16 a step, then single pixels, all by the block form I7 (negative green).
LumStatus lumiYCbCrToBGR_709CSC_8u_P3C3R(const Lum8u* const pSrc[3], int srcStep, Lum8u* pDst, int dstStep,
                                         LumSize roi) {
  if (check::anyNull(pSrc, pDst) || check::anyPlaneNull(pSrc, 3)) return lumStatusNullPointer;
  if (check::badSize(roi)) return lumStatusBadSize;
  WideBlockThenTail<1, I7Neg, NoBlock, L::P3, L::BGR>::image(roi, planar(pSrc, 3, srcStep), packed(pDst, dstStep));
  return lumStatusOk;
}

// 16 a step, then single pixels, all by the block form I7 (positive green); aval as alpha.
LumStatus lumiYCbCrToBGR_709CSC_8u_P3C4R(const Lum8u* const pSrc[3], int srcStep, Lum8u* pDst, int dstStep,
                                         LumSize roi, Lum8u aval) {
  if (check::anyNull(pSrc, pDst) || check::anyPlaneNull(pSrc, 3)) return lumStatusNullPointer;
  if (check::badSize(roi)) return lumStatusBadSize;
  WideBlockThenTail<1, I7Pos, NoBlock, L::P3, L::BGRA, Alpha::Aval>::image(roi, planar(pSrc, 3, srcStep),
                                                                              packed(pDst, dstStep), RowCtx{aval});
  return lumStatusOk;
}

// 4 cells a step by I7 (negative green), the cells after them by S7; the plane
// pointers are tested after the size. A null step array is refused with the
// array pointers.
LumStatus lumiYCbCr420ToBGR_709CSC_8u_P3C3R(const Lum8u* const pSrc[3], const int srcStep[3], Lum8u* pDst,
                                            int dstStep, LumSize roi) {
  if (check::anyNull(pSrc, srcStep, pDst)) return lumStatusNullPointer;
  if (check::badSize(roi)) return lumStatusBadSize;
  if (check::anyPlaneNull(pSrc, 3)) return lumStatusNullPointer;
  cells420ToPacked<I7Neg, S7, L::BGR, Alpha::Keep>(roi, pSrc, srcStep, pDst, dstStep, RowCtx{});
  return oddSizeStatus(roi);
}

LumStatus lumiBGRToYCbCr420_709CSC_8u_C3P3R(const Lum8u* pSrc, int srcStep, Lum8u* const pDst[3],
                                            const int dstStep[3], LumSize roi) {
  return toPlanes420<Cells7<L::BGR, Ladder16Then4>>(pSrc, srcStep, pDst, dstStep, roi);
}

// Source alpha is ignored.
LumStatus lumiBGRToYCbCr420_709CSC_8u_AC4P3R(const Lum8u* pSrc, int srcStep, Lum8u* const pDst[3],
                                             const int dstStep[3], LumSize roi) {
  return toPlanes420<Cells7<L::BGRA, Ladder16Then4>>(pSrc, srcStep, pDst, dstStep, roi);
}

LumStatus lumiBGRToYCrCb420_709CSC_8u_C3P3R(const Lum8u* pSrc, int srcStep, Lum8u* const pDst[3],
                                            const int dstStep[3], LumSize roi) {
  return toPlanes420Swapped<Cells7<L::BGR, Ladder16Then4>>(pSrc, srcStep, pDst, dstStep, roi);
}

LumStatus lumiBGRToYCrCb420_709CSC_8u_AC4P3R(const Lum8u* pSrc, int srcStep, Lum8u* const pDst[3],
                                             const int dstStep[3], LumSize roi) {
  return toPlanes420Swapped<Cells7<L::BGRA, Ladder16Then4>>(pSrc, srcStep, pDst, dstStep, roi);
}

// 16 a step over (width >> 1) & ~7 cells, then cells by T7.
LumStatus lumiBGRToYCbCr420_709CSC_8u_C3P2R(const Lum8u* pSrc, int srcStep, Lum8u* pDstY, int dstYStep,
                                            Lum8u* pDstCbCr, int dstCbCrStep, LumSize roi) {
  return toNV12<Cells7<L::BGR, Ladder16, InterleavedCbCr>>(pSrc, srcStep, pDstY, dstYStep, pDstCbCr, dstCbCrStep,
                                                           roi);
}

// 16 a step, then 8 a step up to (width >> 1) & ~3 cells, then cells by T7.
LumStatus lumiBGRToYCbCr420_709CSC_8u_AC4P2R(const Lum8u* pSrc, int srcStep, Lum8u* pDstY, int dstYStep,
                                             Lum8u* pDstCbCr, int dstCbCrStep, LumSize roi) {
  return toNV12<Cells7<L::BGRA, Ladder16Then8, InterleavedCbCr>>(pSrc, srcStep, pDstY, dstYStep, pDstCbCr,
                                                                 dstCbCrStep, roi);
}
