// YCbCr 4:2:2 (packed YCbCr422, YCrCb422, CbYCr422 and planar) to RGB and BGR:
// both pixels of a pair take the pair's chroma, then each is converted by the
// function's inverse forms. An odd last pixel is converted from what its row
// holds for it (see the Odd* rules).
#include "frame/check.h"
#include "lumachroma/rgb_422_kernel.h"

using namespace lum;
using namespace lum::form;
namespace L = lum::layout;
namespace K = lum::layout422;

namespace {

// Packed rows whose odd last pixel takes the one-off guard; Store is the layout
// that pixel is written in.
template <class Src, class Dst, class Store = Dst>
using C2C3ByIY1 = ReplicatedRow<16, IY1, SY1, Src, Dst, Alpha::Keep, OddHalfPair<Guard::OneOff, Store>>;

// Blocks of 16 then 8 by IY4; the tail form is the member's own.
template <class Tail, class Src, class Dst, Alpha A = Alpha::Keep>
using ByIY4 = ReplicatedRow<8, IY4, Tail, Src, Dst, A, OddHalfPair<Guard::Exact>>;

// myCbYCr422ToBGR_8u_C2AC4R: IY2 on every pixel, eight a step, then pair by pair.
template <class Src>
using CbYCr422ToBGRA = ReplicatedRow<8, IY2, IY2, Src, L::BGRA, Alpha::Aval, OddHalfPair<Guard::Exact>>;
using myAlCbYCr422ToBGR_8u_C2AC4R = CbYCr422ToBGRA<K::AlignedCbYCr422>;
using myCbYCr422ToBGR_8u_C2AC4R = CbYCr422ToBGRA<K::CbYCr422>;

}  // namespace

// The last pixel of an odd row is stored as B, G, R, unlike the rest of its row.
LumStatus lumiYCbCr422ToRGB_8u_C2C3R(const Lum8u* pSrc, int srcStep, Lum8u* pDst, int dstStep, LumSize roi) {
  if (LumStatus s = check::nullThenSize(roi, pSrc, pDst)) return s;
  C2C3ByIY1<K::YCbCr422, L::RGB, L::BGR>::image(roi, packed(pSrc, srcStep), packed(pDst, dstStep));
  return lumStatusOk;
}

LumStatus lumiYCbCr422ToBGR_8u_C2C3R(const Lum8u* pSrc, int srcStep, Lum8u* pDst, int dstStep, LumSize roi) {
  if (LumStatus s = check::nullThenWidth2(roi, pSrc, pDst)) return s;
  C2C3ByIY1<K::YCbCr422, L::BGR>::image(roi, packed(pSrc, srcStep), packed(pDst, dstStep));
  return lumStatusOk;
}

LumStatus lumiCbYCr422ToRGB_8u_C2C3R(const Lum8u* pSrc, int srcStep, Lum8u* pDst, int dstStep, LumSize roi) {
  if (LumStatus s = check::nullThenSize(roi, pSrc, pDst)) return s;
  C2C3ByIY1<K::CbYCr422, L::RGB>::image(roi, packed(pSrc, srcStep), packed(pDst, dstStep));
  return lumStatusOk;
}

// The YCrCb422 kernels end their rows with SY1.
LumStatus lumiYCrCb422ToRGB_8u_C2C3R(const Lum8u* pSrc, int srcStep, Lum8u* pDst, int dstStep, LumSize roi) {
  if (LumStatus s = check::nullThenSize(roi, pSrc, pDst)) return s;
  ByIY4<SY1, K::YCrCb422, L::RGB>::image(roi, packed(pSrc, srcStep), packed(pDst, dstStep));
  return lumStatusOk;
}

LumStatus lumiYCrCb422ToBGR_8u_C2C3R(const Lum8u* pSrc, int srcStep, Lum8u* pDst, int dstStep, LumSize roi) {
  if (LumStatus s = check::nullThenSize(roi, pSrc, pDst)) return s;
  ByIY4<SY1, K::YCrCb422, L::BGR>::image(roi, packed(pSrc, srcStep), packed(pDst, dstStep));
  return lumStatusOk;
}

LumStatus lumiYCrCb422ToRGB_8u_C2C4R(const Lum8u* pSrc, int srcStep, Lum8u* pDst, int dstStep, LumSize roi,
                                     Lum8u aval) {
  if (LumStatus s = check::nullThenSize(roi, pSrc, pDst)) return s;
  ByIY4<SY1, K::YCrCb422, L::RGBA, Alpha::Aval>::image(roi, packed(pSrc, srcStep), packed(pDst, dstStep),
                                                      RowCtx{aval});
  return lumStatusOk;
}

LumStatus lumiYCrCb422ToBGR_8u_C2C4R(const Lum8u* pSrc, int srcStep, Lum8u* pDst, int dstStep, LumSize roi,
                                     Lum8u aval) {
  if (LumStatus s = check::nullThenSize(roi, pSrc, pDst)) return s;
  ByIY4<SY1, K::YCrCb422, L::BGRA, Alpha::Aval>::image(roi, packed(pSrc, srcStep), packed(pDst, dstStep),
                                                      RowCtx{aval});
  return lumStatusOk;
}

// The YCbCr422 -> RGBA kernel ends its rows with SY2, the coefficient set of its
// BGRA sibling's SY3.
LumStatus lumiYCbCr422ToRGB_8u_C2C4R(const Lum8u* pSrc, int srcStep, Lum8u* pDst, int dstStep, LumSize roi,
                                     Lum8u aval) {
  if (LumStatus s = check::nullThenSize(roi, pSrc, pDst)) return s;
  ByIY4<SY2, K::YCbCr422, L::RGBA, Alpha::Aval>::image(roi, packed(pSrc, srcStep), packed(pDst, dstStep),
                                                      RowCtx{aval});
  return lumStatusOk;
}

// ownYCbCr422ToBGR_8u_C2C4R: blocks of 32, 16, 8 (the block covers width & ~7),
// the IY1 scheme with its own constants; SY3 after.
LumStatus lumiYCbCr422ToBGR_8u_C2C4R(const Lum8u* pSrc, int srcStep, Lum8u* pDst, int dstStep, LumSize roi,
                                     Lum8u aval) {
  if (LumStatus s = check::nullThenSize(roi, pSrc, pDst)) return s;
  ReplicatedRow<8, IY1Bgra, SY3, K::YCbCr422, L::BGRA, Alpha::Aval, OddHalfPair<Guard::Exact>>::image(
      roi, packed(pSrc, srcStep), packed(pDst, dstStep), RowCtx{aval});
  return lumStatusOk;
}

// All pointers and steps multiples of 16: the aligned driver; both give the same samples.
LumStatus lumiCbYCr422ToBGR_8u_C2C4R(const Lum8u* pSrc, int srcStep, Lum8u* pDst, int dstStep, LumSize roi,
                                     Lum8u aval) {
  if (LumStatus s = check::nullThenSize(roi, pSrc, pDst)) return s;
  const SrcPlanes s = packed(pSrc, srcStep);
  const DstPlanes d = packed(pDst, dstStep);
  if (allAligned16(s, d)) myAlCbYCr422ToBGR_8u_C2AC4R::image(roi, s, d, RowCtx{aval});
  else myCbYCr422ToBGR_8u_C2AC4R::image(roi, s, d, RowCtx{aval});
  return lumStatusOk;
}

// Planar RGB destinations, one step for the three planes; blocks of 8 by IY3.
LumStatus lumiYCbCr422ToRGB_8u_C2P3R(const Lum8u* pSrc, int srcStep, Lum8u* const pDst[3], int dstStep,
                                     LumSize roi) {
  if (check::anyNull(pSrc, pDst) || check::anyPlaneNull(pDst, 3)) return lumStatusNullPointer;
  if (check::badSize(roi)) return lumStatusBadSize;
  ReplicatedRow<8, IY3, SY2, K::YCbCr422, L::P3, Alpha::Keep, OddHalfPair<Guard::Exact>>::image(
      roi, packed(pSrc, srcStep), planar(pDst, 3, dstStep));
  return lumStatusOk;
}

LumStatus lumiYCrCb422ToRGB_8u_C2P3R(const Lum8u* pSrc, int srcStep, Lum8u* const pDst[3], int dstStep,
                                     LumSize roi) {
  if (check::anyNull(pSrc, pDst) || check::anyPlaneNull(pDst, 3)) return lumStatusNullPointer;
  if (check::badSize(roi)) return lumStatusBadSize;
  ReplicatedRow<8, IY3, SY2, K::YCrCb422, L::P3, Alpha::Keep, OddHalfPair<Guard::Exact>>::image(
      roi, packed(pSrc, srcStep), planar(pDst, 3, dstStep));
  return lumStatusOk;
}

// Planar sources (chroma rows of width / 2 + (width & 1) samples): blocks of 16
// then 8 by IY1, SY1 after, the odd last pixel on its own chroma sample.
LumStatus lumiYCbCr422ToRGB_8u_P3C3R(const Lum8u* const pSrc[3], const int srcStep[3], Lum8u* pDst, int dstStep,
                                     LumSize roi) {
  if (check::anyNull(pSrc, srcStep, pDst) || check::anyPlaneNull(pSrc, 3)) return lumStatusNullPointer;
  if (check::badSize(roi, 2)) return lumStatusBadSize;
  ReplicatedRow<8, IY1, SY1, K::P3h, L::RGB, Alpha::Keep, OddOwnChroma>::image(roi, planar(pSrc, 3, srcStep),
                                                                             packed(pDst, dstStep));
  return lumStatusOk;
}

LumStatus lumiYCbCr422ToBGR_8u_P3C3R(const Lum8u* const pSrc[3], const int srcStep[3], Lum8u* pDst, int dstStep,
                                     LumSize roi) {
  if (check::anyNull(pSrc, srcStep, pDst) || check::anyPlaneNull(pSrc, 3)) return lumStatusNullPointer;
  if (check::badSize(roi, 2)) return lumStatusBadSize;
  ReplicatedRow<8, IY1, SY1, K::P3h, L::BGR, Alpha::Keep, OddOwnChroma>::image(roi, planar(pSrc, 3, srcStep),
                                                                             packed(pDst, dstStep));
  return lumStatusOk;
}
