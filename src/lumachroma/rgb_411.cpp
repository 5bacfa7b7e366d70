// BGR to and from 4:1:1 planes: four pixels of a row share one chroma pair. Both
// directions work on width & ~3 columns and need a width of at least 4. The way
// in warns with lumStatusOddSize when columns are left over; the way out does
// not. Every pointer (plane pointers and step arrays included) is tested before
// the size.
#include "frame/cell_kernel.h"
#include "frame/check.h"
#include "lumachroma/forms_420.h"

using namespace lum;
using namespace lum::form;
namespace L = lum::layout;

namespace {

// FY1, and FC2 on the four pixels of a row, in steps of 16 and 8; the rest by
// FY3 and TC3.
template <class Src>
using To411 = CellsForward<Cell411, UpTo<8>, CellForm<FY1, FC2>, CellForm<FY3, TC3>, Src, L::ChromaP3>;

// IY1 in steps of 16 and 8, then the 4:1:1 tail set of its own.
template <class Dst, Alpha A = Alpha::Keep>
using From411 = CellsInverse<Cell411, UpTo<8>, IY1, SY411, L::ChromaP3, Dst, A>;

LumStatus planesThenSize(bool anyNull, LumSize roi) {
  if (anyNull) return lumStatusNullPointer;
  return check::badSize(roi, 4, 1) ? lumStatusBadSize : lumStatusOk;
}

}  // namespace

LumStatus lumiBGRToYCbCr411_8u_C3P3R(const Lum8u* pSrc, int srcStep, Lum8u* const pDst[3], const int dstStep[3],
                                     LumSize roi) {
  if (LumStatus s = planesThenSize(check::anyNull(pSrc, pDst, dstStep) || check::anyPlaneNull(pDst, 3), roi)) return s;
  To411<L::BGR>::image(roi, packed(pSrc, srcStep), planar(pDst, 3, dstStep));
  return cellStatus411(roi);
}

LumStatus lumiBGRToYCbCr411_8u_AC4P3R(const Lum8u* pSrc, int srcStep, Lum8u* const pDst[3], const int dstStep[3],
                                      LumSize roi) {
  if (LumStatus s = planesThenSize(check::anyNull(pSrc, pDst, dstStep) || check::anyPlaneNull(pDst, 3), roi)) return s;
  To411<L::BGRA>::image(roi, packed(pSrc, srcStep), planar(pDst, 3, dstStep));
  return cellStatus411(roi);
}

// Columns beyond width & ~3 have no chroma sample in the planes and stay as
// they are; the call still says lumStatusOk.
LumStatus lumiYCbCr411ToBGR_8u_P3C3R(const Lum8u* const pSrc[3], const int srcStep[3], Lum8u* pDst, int dstStep,
                                     LumSize roi) {
  if (LumStatus s = planesThenSize(check::anyNull(pSrc, srcStep, pDst) || check::anyPlaneNull(pSrc, 3), roi)) return s;
  From411<L::BGR>::image(roi, planar(pSrc, 3, srcStep), packed(pDst, dstStep));
  return lumStatusOk;
}

LumStatus lumiYCbCr411ToBGR_8u_P3C4R(const Lum8u* const pSrc[3], const int srcStep[3], Lum8u* pDst, int dstStep,
                                     LumSize roi, Lum8u aval) {
  if (LumStatus s = planesThenSize(check::anyNull(pSrc, srcStep, pDst) || check::anyPlaneNull(pSrc, 3), roi)) return s;
  From411<L::BGRA, Alpha::Aval>::image(roi, planar(pSrc, 3, srcStep), packed(pDst, dstStep), RowCtx{aval});
  return lumStatusOk;
}
