// Packed BGR (RGB for the 8u forms) to and from Y, Co, Cg planes: the plain and
// the reversible transform in their 8-bit, 16-bit and 16-to-32-bit flavours.
#include "frame/check.h"
#include "models/ycocg_forms.h"
#include "models/ycocg_moves.h"
#include "models/ycocg_wide.h"

using namespace lum;
using namespace lum::ycocg;

namespace {

// Row driver: groups of sixteen pixels where the wide blocks run, then of
// eight, then single pixels by the same arithmetic.
template <class C>
void image(LumSize roi, const SrcPlanes& s, const DstPlanes& d, int aval) {
#if LUM_SIMD_SSE
  const bool vec = useVector();
  const wide::Groups wideGroups = useWide() ? wide::groupsOf<C>() : nullptr;
#endif
  for (int y = 0; y < roi.height; ++y) {
    const SrcPlanes sr = s.row(y);
    const DstPlanes dr = d.row(y);
    int x = 0;
#if LUM_SIMD_SSE
    if (wideGroups) x = wideGroups(sr, dr, roi.width, aval);
    if (vec) x = C::template groups<lanes::Sse, Moves128>(sr, dr, x, roi.width, aval);
#endif
    for (; x < roi.width; ++x) C::pixel(sr, dr, x, aval);
  }
}

template <class T>
Planes<T> planes3(T* const* p, int step) {
  Planes<T> r;
  for (int k = 0; k < 3; ++k) {
    r.p[k] = p[k];
    r.step[k] = step;
  }
  return r;
}

// Refusals: a null pointer (the packed image, the plane array or a plane),
// then, where Sized, a size below 1. Unsized functions write nothing at such
// sizes and return lumStatusOk (the reading that keeps every caller safe).
template <bool Sized, class P, class Q>
LumStatus checks(const P* packedImage, const Q* const* planeArray, LumSize roi, bool& run) {
  run = false;
  if (LumStatus st = check::packedAndPlanes(packedImage, planeArray, 3)) return st;
  if (check::badSize(roi)) return Sized ? lumStatusBadSize : lumStatusOk;
  run = true;
  return lumStatusOk;
}

template <class C, bool Sized, class TS, class TD>
LumStatus forward(const TS* pSrc, int srcStep, TD* const pDst[3], int dstStep, LumSize roi) {
  bool run;
  const LumStatus st = checks<Sized>(pSrc, pDst, roi, run);
  if (!run) return st;
  uint8_t* const dp[3] = {reinterpret_cast<uint8_t*>(pDst[0]), reinterpret_cast<uint8_t*>(pDst[1]),
                          reinterpret_cast<uint8_t*>(pDst[2])};
  image<C>(roi, packed(reinterpret_cast<const uint8_t*>(pSrc), srcStep), planes3(dp, dstStep), 0);
  return lumStatusOk;
}

template <class C, bool Sized, class TS, class TD>
LumStatus reverse(const TS* const pSrc[3], int srcStep, TD* pDst, int dstStep, LumSize roi, int aval = 0) {
  bool run;
  const LumStatus st = checks<Sized>(pDst, pSrc, roi, run);
  if (!run) return st;
  const uint8_t* const sp[3] = {reinterpret_cast<const uint8_t*>(pSrc[0]), reinterpret_cast<const uint8_t*>(pSrc[1]),
                                reinterpret_cast<const uint8_t*>(pSrc[2])};
  image<C>(roi, planes3(sp, srcStep), packed(reinterpret_cast<uint8_t*>(pDst), dstStep), aval);
  return lumStatusOk;
}

constexpr bool kSized = true, kUnsized = false;

}  // namespace

// ---- forward ----------------------------------------------------------------

LumStatus lumiBGRToYCoCg_8u16s_C3P3R(const Lum8u* pSrc, int srcStep, Lum16s* const pDst[3], int dstStep, LumSize roi) {
  return forward<FwdBgr8u16s<3>, kSized>(pSrc, srcStep, pDst, dstStep, roi);
}
LumStatus lumiBGRToYCoCg_8u16s_C4P3R(const Lum8u* pSrc, int srcStep, Lum16s* const pDst[3], int dstStep, LumSize roi) {
  return forward<FwdBgr8u16s<4>, kSized>(pSrc, srcStep, pDst, dstStep, roi);
}
LumStatus lumiBGRToYCoCg_Rev_8u16s_C3P3R(const Lum8u* pSrc, int srcStep, Lum16s* const pDst[3], int dstStep,
                                         LumSize roi) {
  return forward<RevFwdBgr8u16s<3>, kSized>(pSrc, srcStep, pDst, dstStep, roi);
}
LumStatus lumiBGRToYCoCg_Rev_8u16s_C4P3R(const Lum8u* pSrc, int srcStep, Lum16s* const pDst[3], int dstStep,
                                         LumSize roi) {
  return forward<RevFwdBgr8u16s<4>, kSized>(pSrc, srcStep, pDst, dstStep, roi);
}
LumStatus lumiSBGRToYCoCg_16s_C3P3R(const Lum16s* pSrc, int srcStep, Lum16s* const pDst[3], int dstStep, LumSize roi) {
  return forward<FwdSbgr16s<3>, kSized>(pSrc, srcStep, pDst, dstStep, roi);
}
LumStatus lumiSBGRToYCoCg_16s_C4P3R(const Lum16s* pSrc, int srcStep, Lum16s* const pDst[3], int dstStep, LumSize roi) {
  return forward<FwdSbgr16s<4>, kSized>(pSrc, srcStep, pDst, dstStep, roi);
}
LumStatus lumiSBGRToYCoCg_Rev_16s_C3P3R(const Lum16s* pSrc, int srcStep, Lum16s* const pDst[3], int dstStep,
                                        LumSize roi) {
  return forward<RevFwdSbgr16s<3>, kUnsized>(pSrc, srcStep, pDst, dstStep, roi);
}
LumStatus lumiSBGRToYCoCg_Rev_16s_C4P3R(const Lum16s* pSrc, int srcStep, Lum16s* const pDst[3], int dstStep,
                                        LumSize roi) {
  return forward<RevFwdSbgr16s<4>, kUnsized>(pSrc, srcStep, pDst, dstStep, roi);
}
LumStatus lumiSBGRToYCoCg_16s32s_C3P3R(const Lum16s* pSrc, int srcStep, Lum32s* const pDst[3], int dstStep,
                                       LumSize roi) {
  return forward<FwdSbgr16s32s<3>, kSized>(pSrc, srcStep, pDst, dstStep, roi);
}
LumStatus lumiSBGRToYCoCg_16s32s_C4P3R(const Lum16s* pSrc, int srcStep, Lum32s* const pDst[3], int dstStep,
                                       LumSize roi) {
  return forward<FwdSbgr16s32s<4>, kUnsized>(pSrc, srcStep, pDst, dstStep, roi);
}
LumStatus lumiSBGRToYCoCg_Rev_16s32s_C3P3R(const Lum16s* pSrc, int srcStep, Lum32s* const pDst[3], int dstStep,
                                           LumSize roi) {
  return forward<RevFwdSbgr16s32s<3>, kSized>(pSrc, srcStep, pDst, dstStep, roi);
}
LumStatus lumiSBGRToYCoCg_Rev_16s32s_C4P3R(const Lum16s* pSrc, int srcStep, Lum32s* const pDst[3], int dstStep,
                                           LumSize roi) {
  return forward<RevFwdSbgr16s32s<4>, kUnsized>(pSrc, srcStep, pDst, dstStep, roi);
}
LumStatus lumiRGBToYCoCg_8u_C3P3R(const Lum8u* pSrc, int srcStep, Lum8u* const pDst[3], int dstStep, LumSize roi) {
  return forward<FwdRgb8u, kSized>(pSrc, srcStep, pDst, dstStep, roi);
}

// ---- reverse ----------------------------------------------------------------

LumStatus lumiYCoCgToBGR_16s8u_P3C3R(const Lum16s* const pSrc[3], int srcStep, Lum8u* pDst, int dstStep, LumSize roi) {
  return reverse<InvBgr16s8u<3>, kUnsized>(pSrc, srcStep, pDst, dstStep, roi);
}
LumStatus lumiYCoCgToBGR_16s8u_P3C4R(const Lum16s* const pSrc[3], int srcStep, Lum8u* pDst, int dstStep, LumSize roi,
                                     Lum8u aval) {
  return reverse<InvBgr16s8u<4>, kUnsized>(pSrc, srcStep, pDst, dstStep, roi, aval);
}
LumStatus lumiYCoCgToBGR_Rev_16s8u_P3C3R(const Lum16s* const pSrc[3], int srcStep, Lum8u* pDst, int dstStep,
                                         LumSize roi) {
  return reverse<RevInvBgr16s8u<3>, kUnsized>(pSrc, srcStep, pDst, dstStep, roi);
}
LumStatus lumiYCoCgToBGR_Rev_16s8u_P3C4R(const Lum16s* const pSrc[3], int srcStep, Lum8u* pDst, int dstStep,
                                         LumSize roi, Lum8u aval) {
  return reverse<RevInvBgr16s8u<4>, kUnsized>(pSrc, srcStep, pDst, dstStep, roi, aval);
}
LumStatus lumiYCoCgToSBGR_16s_P3C3R(const Lum16s* const pSrc[3], int srcStep, Lum16s* pDst, int dstStep, LumSize roi) {
  return reverse<InvSbgr16s<3>, kUnsized>(pSrc, srcStep, pDst, dstStep, roi);
}
LumStatus lumiYCoCgToSBGR_16s_P3C4R(const Lum16s* const pSrc[3], int srcStep, Lum16s* pDst, int dstStep, LumSize roi,
                                    Lum16s aval) {
  return reverse<InvSbgr16s<4>, kSized>(pSrc, srcStep, pDst, dstStep, roi, aval);
}
LumStatus lumiYCoCgToSBGR_Rev_16s_P3C3R(const Lum16s* const pSrc[3], int srcStep, Lum16s* pDst, int dstStep,
                                        LumSize roi) {
  return reverse<RevInvSbgr16s<3>, kUnsized>(pSrc, srcStep, pDst, dstStep, roi);
}
LumStatus lumiYCoCgToSBGR_Rev_16s_P3C4R(const Lum16s* const pSrc[3], int srcStep, Lum16s* pDst, int dstStep,
                                        LumSize roi, Lum16s aval) {
  return reverse<RevInvSbgr16s<4>, kUnsized>(pSrc, srcStep, pDst, dstStep, roi, aval);
}
LumStatus lumiYCoCgToSBGR_32s16s_P3C3R(const Lum32s* const pSrc[3], int srcStep, Lum16s* pDst, int dstStep,
                                       LumSize roi) {
  return reverse<InvSbgr32s16s<3>, kSized>(pSrc, srcStep, pDst, dstStep, roi);
}
LumStatus lumiYCoCgToSBGR_32s16s_P3C4R(const Lum32s* const pSrc[3], int srcStep, Lum16s* pDst, int dstStep,
                                       LumSize roi, Lum16s aval) {
  return reverse<InvSbgr32s16s<4>, kSized>(pSrc, srcStep, pDst, dstStep, roi, aval);
}
LumStatus lumiYCoCgToSBGR_Rev_32s16s_P3C3R(const Lum32s* const pSrc[3], int srcStep, Lum16s* pDst, int dstStep,
                                           LumSize roi) {
  return reverse<RevInvSbgr32s16s<3>, kUnsized>(pSrc, srcStep, pDst, dstStep, roi);
}
LumStatus lumiYCoCgToSBGR_Rev_32s16s_P3C4R(const Lum32s* const pSrc[3], int srcStep, Lum16s* pDst, int dstStep,
                                           LumSize roi, Lum16s aval) {
  return reverse<RevInvSbgr32s16s<4>, kUnsized>(pSrc, srcStep, pDst, dstStep, roi, aval);
}
LumStatus lumiYCoCgToRGB_8u_P3C3R(const Lum8u* const pSrc[3], int srcStep, Lum8u* pDst, int dstStep, LumSize roi) {
  return reverse<InvRgb8u, kUnsized>(pSrc, srcStep, pDst, dstStep, roi);
}
