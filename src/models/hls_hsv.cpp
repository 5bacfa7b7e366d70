// RGB to and from HLS and HSV over 8u, 16u, 16s and 32f, and the BGR-ordered
// 8u HLS family in its planar, packed and alpha layouts.
#include <utility>

#include "frame/check.h"
#include "frame/kernel.h"
#include "models/hue_forms.h"
#include "models/hue_layouts.h"

using namespace lum;
using namespace lum::hue;
namespace L = lum::layout;

namespace {

// A byte step as a whole number of samples of T: the low bits dropped (a step
// that is no multiple of the sample size rounds toward minus infinity).
template <class T>
int sampleStep(int step) {
  constexpr int shift = sizeof(T) == 1 ? 0 : (sizeof(T) == 2 ? 1 : 2);
  return (step >> shift) * int(sizeof(T));
}

// The RGB family: null pointers, then size; steps unchecked.
template <class Run, class T>
LumStatus rgbFamily(const T* pSrc, int srcStep, T* pDst, int dstStep, LumSize roi) {
  if (LumStatus s = check::nullThenSize(roi, pSrc, pDst)) return s;
  Run::image(roi, packed(reinterpret_cast<const uint8_t*>(pSrc), sampleStep<T>(srcStep)),
             packed(reinterpret_cast<uint8_t*>(pDst), sampleStep<T>(dstStep)));
  return lumStatusOk;
}

// Rows of an RGB-family form on T: the block form over width & ~(Cover - 1),
// the tail form on the rest, alpha kept in AC4. The 8u blocks also run sixteen
// lanes at a time where the processor has AVX2.
template <int Cover, class Block, class Tail, class T>
using C3Run = WideBlockThenTail<Cover, Block, Tail, L::RGBOf<T>, L::RGBOf<T>>;
template <int Cover, class Block, class Tail, class T>
using AC4Run = WideBlockThenTail<Cover, Block, Tail, L::RGBAOf<T>, L::RGBAOf<T>>;

// The BGR family: 4 pixels a block.
template <class Src, class Dst, Alpha A>
using BgrFwd = WideBlockThenTail<4, BgrFwdBlock, FwdTail<Lum8u>, Src, Dst, A>;
template <class Src, class Dst, Alpha A>
using BgrInv = WideBlockThenTail<4, BgrInvBlock, InvTail<Lum8u>, Src, Dst, A>;

// Planes of a BGR-ordered planar image as the form's channels R, G, B (and alpha).
template <class P>
Planes<P> bgrPlanes(P* const* p, int n, int step) {
  Planes<P> r = planar(p, n, step);
  std::swap(r.p[0], r.p[2]);
  return r;
}

// The planar BGR family: any pointer null, then steps, then size.
template <class S, class D>
LumStatus planarCheck(S pSrc, int nSrc, int srcStep, D pDst, int nDst, int dstStep, LumSize roi) {
  bool nullSeen = pSrc == nullptr || pDst == nullptr;
  if constexpr (std::is_pointer_v<std::remove_pointer_t<S>>)
    nullSeen = nullSeen || check::anyPlaneNull(pSrc, nSrc);
  if constexpr (std::is_pointer_v<std::remove_pointer_t<D>>)
    nullSeen = nullSeen || check::anyPlaneNull(pDst, nDst);
  return check::nullStepSize(nullSeen, srcStep, dstStep, roi);
}

}  // namespace

// ---- RGB to HLS -------------------------------------------------------------

LumStatus lumiRGBToHLS_8u_C3R(const Lum8u* pSrc, int srcStep, Lum8u* pDst, int dstStep, LumSize roi) {
  return rgbFamily<C3Run<8, FwdBlock<Lum8u>, FwdTail<Lum8u>, Lum8u>>(pSrc, srcStep, pDst, dstStep, roi);
}
LumStatus lumiRGBToHLS_8u_AC4R(const Lum8u* pSrc, int srcStep, Lum8u* pDst, int dstStep, LumSize roi) {
  return rgbFamily<AC4Run<4, FwdBlock<Lum8u>, FwdTail8uAC4, Lum8u>>(pSrc, srcStep, pDst, dstStep, roi);
}
LumStatus lumiRGBToHLS_16u_C3R(const Lum16u* pSrc, int srcStep, Lum16u* pDst, int dstStep, LumSize roi) {
  return rgbFamily<C3Run<4, FwdBlock<Lum16u>, FwdTail<Lum16u>, Lum16u>>(pSrc, srcStep, pDst, dstStep, roi);
}
LumStatus lumiRGBToHLS_16u_AC4R(const Lum16u* pSrc, int srcStep, Lum16u* pDst, int dstStep, LumSize roi) {
  return rgbFamily<AC4Run<4, FwdBlock<Lum16u>, FwdTail<Lum16u>, Lum16u>>(pSrc, srcStep, pDst, dstStep, roi);
}
LumStatus lumiRGBToHLS_16s_C3R(const Lum16s* pSrc, int srcStep, Lum16s* pDst, int dstStep, LumSize roi) {
  return rgbFamily<C3Run<4, FwdBlock<Lum16s>, FwdTail<Lum16s>, Lum16s>>(pSrc, srcStep, pDst, dstStep, roi);
}
LumStatus lumiRGBToHLS_16s_AC4R(const Lum16s* pSrc, int srcStep, Lum16s* pDst, int dstStep, LumSize roi) {
  return rgbFamily<AC4Run<4, FwdBlock<Lum16s>, FwdTail<Lum16s>, Lum16s>>(pSrc, srcStep, pDst, dstStep, roi);
}
// One rule for every pixel, with true divisions (four lanes at a time compute the same).
LumStatus lumiRGBToHLS_32f_C3R(const Lum32f* pSrc, int srcStep, Lum32f* pDst, int dstStep, LumSize roi) {
  return rgbFamily<TailOnly<Fwd32f, Rgb32f, Rgb32f>>(pSrc, srcStep, pDst, dstStep, roi);
}
LumStatus lumiRGBToHLS_32f_AC4R(const Lum32f* pSrc, int srcStep, Lum32f* pDst, int dstStep, LumSize roi) {
  return rgbFamily<AC4Run<1, NoBlock, Fwd32f, Lum32f>>(pSrc, srcStep, pDst, dstStep, roi);
}

// ---- HLS to RGB -------------------------------------------------------------

// The 8u block takes 8 pixels a step in C3 and 4 in AC4, as the forward forms do.
LumStatus lumiHLSToRGB_8u_C3R(const Lum8u* pSrc, int srcStep, Lum8u* pDst, int dstStep, LumSize roi) {
  return rgbFamily<C3Run<8, InvBlock<Lum8u>, InvTail<Lum8u>, Lum8u>>(pSrc, srcStep, pDst, dstStep, roi);
}
LumStatus lumiHLSToRGB_8u_AC4R(const Lum8u* pSrc, int srcStep, Lum8u* pDst, int dstStep, LumSize roi) {
  return rgbFamily<AC4Run<4, InvBlock<Lum8u>, InvTail<Lum8u>, Lum8u>>(pSrc, srcStep, pDst, dstStep, roi);
}
LumStatus lumiHLSToRGB_16u_C3R(const Lum16u* pSrc, int srcStep, Lum16u* pDst, int dstStep, LumSize roi) {
  return rgbFamily<C3Run<4, InvBlock<Lum16u>, InvTail<Lum16u>, Lum16u>>(pSrc, srcStep, pDst, dstStep, roi);
}
LumStatus lumiHLSToRGB_16u_AC4R(const Lum16u* pSrc, int srcStep, Lum16u* pDst, int dstStep, LumSize roi) {
  return rgbFamily<AC4Run<4, InvBlock<Lum16u>, InvTail<Lum16u>, Lum16u>>(pSrc, srcStep, pDst, dstStep, roi);
}
LumStatus lumiHLSToRGB_16s_C3R(const Lum16s* pSrc, int srcStep, Lum16s* pDst, int dstStep, LumSize roi) {
  return rgbFamily<C3Run<4, InvBlock<Lum16s>, InvTail<Lum16s>, Lum16s>>(pSrc, srcStep, pDst, dstStep, roi);
}
LumStatus lumiHLSToRGB_16s_AC4R(const Lum16s* pSrc, int srcStep, Lum16s* pDst, int dstStep, LumSize roi) {
  return rgbFamily<AC4Run<4, InvBlock<Lum16s>, InvTail<Lum16s>, Lum16s>>(pSrc, srcStep, pDst, dstStep, roi);
}
// One set of formulas for the 4-pixel blocks and the tail; no clamp.
LumStatus lumiHLSToRGB_32f_C3R(const Lum32f* pSrc, int srcStep, Lum32f* pDst, int dstStep, LumSize roi) {
  return rgbFamily<TailOnly<Inv32f, Rgb32f, Rgb32f>>(pSrc, srcStep, pDst, dstStep, roi);
}
LumStatus lumiHLSToRGB_32f_AC4R(const Lum32f* pSrc, int srcStep, Lum32f* pDst, int dstStep, LumSize roi) {
  return rgbFamily<AC4Run<1, NoBlock, Inv32f, Lum32f>>(pSrc, srcStep, pDst, dstStep, roi);
}

// ---- HSV --------------------------------------------------------------------

LumStatus lumiRGBToHSV_8u_C3R(const Lum8u* pSrc, int srcStep, Lum8u* pDst, int dstStep, LumSize roi) {
  return rgbFamily<C3Run<1, NoBlock, HsvFwd8u, Lum8u>>(pSrc, srcStep, pDst, dstStep, roi);
}
LumStatus lumiRGBToHSV_8u_AC4R(const Lum8u* pSrc, int srcStep, Lum8u* pDst, int dstStep, LumSize roi) {
  return rgbFamily<AC4Run<1, NoBlock, HsvFwd8u, Lum8u>>(pSrc, srcStep, pDst, dstStep, roi);
}
LumStatus lumiRGBToHSV_16u_C3R(const Lum16u* pSrc, int srcStep, Lum16u* pDst, int dstStep, LumSize roi) {
  return rgbFamily<C3Run<1, NoBlock, HsvFwd16u, Lum16u>>(pSrc, srcStep, pDst, dstStep, roi);
}
LumStatus lumiRGBToHSV_16u_AC4R(const Lum16u* pSrc, int srcStep, Lum16u* pDst, int dstStep, LumSize roi) {
  return rgbFamily<AC4Run<1, NoBlock, HsvFwd16u, Lum16u>>(pSrc, srcStep, pDst, dstStep, roi);
}
LumStatus lumiHSVToRGB_8u_C3R(const Lum8u* pSrc, int srcStep, Lum8u* pDst, int dstStep, LumSize roi) {
  return rgbFamily<C3Run<1, NoBlock, HsvInv<Lum8u>, Lum8u>>(pSrc, srcStep, pDst, dstStep, roi);
}
LumStatus lumiHSVToRGB_8u_AC4R(const Lum8u* pSrc, int srcStep, Lum8u* pDst, int dstStep, LumSize roi) {
  return rgbFamily<AC4Run<1, NoBlock, HsvInv<Lum8u>, Lum8u>>(pSrc, srcStep, pDst, dstStep, roi);
}
LumStatus lumiHSVToRGB_16u_C3R(const Lum16u* pSrc, int srcStep, Lum16u* pDst, int dstStep, LumSize roi) {
  return rgbFamily<C3Run<1, NoBlock, HsvInv<Lum16u>, Lum16u>>(pSrc, srcStep, pDst, dstStep, roi);
}
LumStatus lumiHSVToRGB_16u_AC4R(const Lum16u* pSrc, int srcStep, Lum16u* pDst, int dstStep, LumSize roi) {
  return rgbFamily<AC4Run<1, NoBlock, HsvInv<Lum16u>, Lum16u>>(pSrc, srcStep, pDst, dstStep, roi);
}

// ---- BGR family -------------------------------------------------------------

// Size before steps, unlike the planar siblings; destination alpha kept.
LumStatus lumiBGRToHLS_8u_AC4R(const Lum8u* pSrc, int srcStep, Lum8u* pDst, int dstStep, LumSize roi) {
  if (LumStatus s = check::nullSizeStep(check::anyNull(pSrc, pDst), roi, {srcStep, dstStep})) return s;
  BgrFwd<L::BGRA, L::RGBA, Alpha::Keep>::image(roi, packed(pSrc, srcStep), packed(pDst, dstStep));
  return lumStatusOk;
}
LumStatus lumiBGRToHLS_8u_P3R(const Lum8u* const pSrc[3], int srcStep, Lum8u* const pDst[3], int dstStep,
                              LumSize roi) {
  if (LumStatus s = planarCheck(pSrc, 3, srcStep, pDst, 3, dstStep, roi)) return s;
  BgrFwd<L::P3, L::P3, Alpha::Keep>::image(roi, bgrPlanes(pSrc, 3, srcStep), planar(pDst, 3, dstStep));
  return lumStatusOk;
}
LumStatus lumiBGRToHLS_8u_AP4R(const Lum8u* const pSrc[4], int srcStep, Lum8u* const pDst[4], int dstStep,
                               LumSize roi) {
  if (LumStatus s = planarCheck(pSrc, 4, srcStep, pDst, 4, dstStep, roi)) return s;
  BgrFwd<L::P4, L::P4, Alpha::Source>::image(roi, bgrPlanes(pSrc, 4, srcStep), planar(pDst, 4, dstStep));
  return lumStatusOk;
}
LumStatus lumiBGRToHLS_8u_C3P3R(const Lum8u* pSrc, int srcStep, Lum8u* const pDst[3], int dstStep, LumSize roi) {
  if (LumStatus s = planarCheck(pSrc, 0, srcStep, pDst, 3, dstStep, roi)) return s;
  BgrFwd<L::BGR, L::P3, Alpha::Keep>::image(roi, packed(pSrc, srcStep), planar(pDst, 3, dstStep));
  return lumStatusOk;
}
LumStatus lumiBGRToHLS_8u_P3C3R(const Lum8u* const pSrc[3], int srcStep, Lum8u* pDst, int dstStep, LumSize roi) {
  if (LumStatus s = planarCheck(pSrc, 3, srcStep, pDst, 0, dstStep, roi)) return s;
  BgrFwd<L::P3, L::RGB, Alpha::Keep>::image(roi, bgrPlanes(pSrc, 3, srcStep), packed(pDst, dstStep));
  return lumStatusOk;
}
LumStatus lumiBGRToHLS_8u_AC4P4R(const Lum8u* pSrc, int srcStep, Lum8u* const pDst[4], int dstStep, LumSize roi) {
  if (LumStatus s = planarCheck(pSrc, 0, srcStep, pDst, 4, dstStep, roi)) return s;
  BgrFwd<L::BGRA, L::P4, Alpha::Source>::image(roi, packed(pSrc, srcStep), planar(pDst, 4, dstStep));
  return lumStatusOk;
}
LumStatus lumiBGRToHLS_8u_AP4C4R(const Lum8u* const pSrc[4], int srcStep, Lum8u* pDst, int dstStep, LumSize roi) {
  if (LumStatus s = planarCheck(pSrc, 4, srcStep, pDst, 0, dstStep, roi)) return s;
  BgrFwd<L::P4, L::RGBA, Alpha::Source>::image(roi, bgrPlanes(pSrc, 4, srcStep), packed(pDst, dstStep));
  return lumStatusOk;
}
LumStatus lumiHLSToBGR_8u_P3R(const Lum8u* const pSrc[3], int srcStep, Lum8u* const pDst[3], int dstStep,
                              LumSize roi) {
  if (LumStatus s = planarCheck(pSrc, 3, srcStep, pDst, 3, dstStep, roi)) return s;
  BgrInv<L::P3, L::P3, Alpha::Keep>::image(roi, planar(pSrc, 3, srcStep), bgrPlanes(pDst, 3, dstStep));
  return lumStatusOk;
}
LumStatus lumiHLSToBGR_8u_AP4R(const Lum8u* const pSrc[4], int srcStep, Lum8u* const pDst[4], int dstStep,
                               LumSize roi) {
  if (LumStatus s = planarCheck(pSrc, 4, srcStep, pDst, 4, dstStep, roi)) return s;
  BgrInv<L::P4, L::P4, Alpha::Source>::image(roi, planar(pSrc, 4, srcStep), bgrPlanes(pDst, 4, dstStep));
  return lumStatusOk;
}
LumStatus lumiHLSToBGR_8u_C3P3R(const Lum8u* pSrc, int srcStep, Lum8u* const pDst[3], int dstStep, LumSize roi) {
  if (LumStatus s = planarCheck(pSrc, 0, srcStep, pDst, 3, dstStep, roi)) return s;
  BgrInv<L::RGB, L::P3, Alpha::Keep>::image(roi, packed(pSrc, srcStep), bgrPlanes(pDst, 3, dstStep));
  return lumStatusOk;
}
LumStatus lumiHLSToBGR_8u_P3C3R(const Lum8u* const pSrc[3], int srcStep, Lum8u* pDst, int dstStep, LumSize roi) {
  if (LumStatus s = planarCheck(pSrc, 3, srcStep, pDst, 0, dstStep, roi)) return s;
  BgrInv<L::P3, L::BGR, Alpha::Keep>::image(roi, planar(pSrc, 3, srcStep), packed(pDst, dstStep));
  return lumStatusOk;
}
LumStatus lumiHLSToBGR_8u_AC4P4R(const Lum8u* pSrc, int srcStep, Lum8u* const pDst[4], int dstStep, LumSize roi) {
  if (LumStatus s = planarCheck(pSrc, 0, srcStep, pDst, 4, dstStep, roi)) return s;
  BgrInv<L::RGBA, L::P4, Alpha::Source>::image(roi, packed(pSrc, srcStep), bgrPlanes(pDst, 4, dstStep));
  return lumStatusOk;
}
LumStatus lumiHLSToBGR_8u_AP4C4R(const Lum8u* const pSrc[4], int srcStep, Lum8u* pDst, int dstStep, LumSize roi) {
  if (LumStatus s = planarCheck(pSrc, 4, srcStep, pDst, 0, dstStep, roi)) return s;
  BgrInv<L::P4, L::BGRA, Alpha::Source>::image(roi, planar(pSrc, 4, srcStep), packed(pDst, dstStep));
  return lumStatusOk;
}
