// BT.709 full-scale luma (709HDTV): packed CbYCr422 and 4:2:0 planes to BGR or
// BGRA, BGR and BGRA to CbYCr422, BGRA to 4:2:0 planes. Forward codes are held
// in 1..254.
#include "frame/check.h"
#include "lumachroma/bt709_kernels.h"

using namespace lum;
using namespace lum::form;
using namespace lum::bt709;
namespace L = lum::layout;

namespace {

// CbYCr422 to a packed destination: 8 a step over width & ~7 by IH (negative
// green), the pairs after them by SH, the lone last pixel by SH.
template <class Dst, Alpha A, bool Al>
void cbycrToPacked(LumSize roi, const Lum8u* pSrc, int srcStep, Lum8u* pDst, int dstStep, const RowCtx& c) {
  pairs422ToPacked<IHNeg, SH, Al, Dst, A>(roi, pSrc, srcStep, pDst, dstStep, c);
}

// BGRA to CbYCr422: 8 a step over width & ~7 by FYH + FCS, the pairs after
// them by TYH + TC2H. The lone last pixel of an odd row reads its first memory
// byte as R and its third as B, the opposite of every other pixel of the row.
template <class Src>
using BgraToCbYCr = ForwardPairs<BlkHPairSigned, THPair, Src, L::RGBA, Ladder8, std::is_same_v<Src, BGRAAligned>>;

}  // namespace

LumStatus lumiCbYCr422ToBGR_709HDTV_8u_C2C3R(const Lum8u* pSrc, int srcStep, Lum8u* pDst, int dstStep, LumSize roi) {
  if (LumStatus s = check::nullThenSize(roi, pSrc, pDst)) return s;
  cbycrToPacked<L::BGR, Alpha::Keep, false>(roi, pSrc, srcStep, pDst, dstStep, RowCtx{});
  return lumStatusOk;
}

// aval is written as the alpha of every pixel, the lone last one included.
LumStatus lumiCbYCr422ToBGR_709HDTV_8u_C2C4R(const Lum8u* pSrc, int srcStep, Lum8u* pDst, int dstStep, LumSize roi,
                                             Lum8u aval) {
  if (LumStatus s = check::nullThenSize(roi, pSrc, pDst)) return s;
  if (allAligned16(packed(pSrc, srcStep), packed(pDst, dstStep)))
    cbycrToPacked<L::BGRA, Alpha::Aval, true>(roi, pSrc, srcStep, pDst, dstStep, RowCtx{aval});
  else
    cbycrToPacked<L::BGRA, Alpha::Aval, false>(roi, pSrc, srcStep, pDst, dstStep, RowCtx{aval});
  return lumStatusOk;
}

// 32 a step over width & ~31 by FYH + FCH (k = 6), the pairs after them by
// TYH + TC2H; the lone last pixel keeps B first.
LumStatus lumiBGRToCbYCr422_709HDTV_8u_C3C2R(const Lum8u* pSrc, int srcStep, Lum8u* pDst, int dstStep, LumSize roi) {
  if (LumStatus s = check::nullThenSize(roi, pSrc, pDst)) return s;
  ForwardPairs<BlkHPair, THPair, L::BGR, L::BGR, Ladder32, false>::image(roi, pSrc, srcStep, pDst, dstStep);
  return lumStatusOk;
}

// Source alpha is ignored.
LumStatus lumiBGRToCbYCr422_709HDTV_8u_AC4C2R(const Lum8u* pSrc, int srcStep, Lum8u* pDst, int dstStep,
                                              LumSize roi) {
  if (LumStatus s = check::nullThenSize(roi, pSrc, pDst)) return s;
  if (allAligned16(packed(pSrc, srcStep), packed(pDst, dstStep)))
    BgraToCbYCr<BGRAAligned>::image(roi, pSrc, srcStep, pDst, dstStep);
  else
    BgraToCbYCr<L::BGRA>::image(roi, pSrc, srcStep, pDst, dstStep);
  return lumStatusOk;
}

// 4 cells a step by IH (positive green), the cells after them by SH; aval as
// alpha. The plane pointers are tested after the size; a null step array is
// refused with the array pointers.
LumStatus lumiYCbCr420ToBGR_709HDTV_8u_P3C4R(const Lum8u* const pSrc[3], const int srcStep[3], Lum8u* pDst,
                                             int dstStep, LumSize roi, Lum8u aval) {
  if (check::anyNull(pSrc, srcStep, pDst)) return lumStatusNullPointer;
  if (check::badSize(roi)) return lumStatusBadSize;
  if (check::anyPlaneNull(pSrc, 3)) return lumStatusNullPointer;
  cells420ToPacked<IHPos, SH, L::BGRA, Alpha::Aval>(roi, pSrc, srcStep, pDst, dstStep, RowCtx{aval});
  return oddSizeStatus(roi);
}

// 16 a step, one step of 4 if (width & 7) >= 4, by FYH + FCH (k = 5); the
// cells after them by TYH + TC4H. Source alpha is ignored.
LumStatus lumiBGRToYCbCr420_709HDTV_8u_AC4P3R(const Lum8u* pSrc, int srcStep, Lum8u* const pDst[3],
                                              const int dstStep[3], LumSize roi) {
  return toPlanes420<ForwardCells<BlkHCell, THCell, L::BGRA, PlanarCbCr, Ladder16Then4>>(pSrc, srcStep, pDst, dstStep,
                                                                                         roi);
}
