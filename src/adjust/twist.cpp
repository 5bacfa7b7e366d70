// Colour twist, the public layer: checks (null pointers and the matrix, size,
// then steps), the rounding mode around the integer forms, and the paths.
#include "adjust/twist_kernel.h"
#include "adjust/twist_layouts.h"
#include "frame/check.h"
#include "frame/fp_control.h"
#include "frame/simd.h"
#include "lumcc.h"

using namespace lum;
using namespace lum::twist;

namespace {

// Runs a region on the lane set of this call. Integer forms run under round to
// nearest, ties to even; the caller's rounding bits come back after the last row
// (a word whose bits were already zero needs nothing back).
template <class T, Shape S, bool Linear = false, bool Stream = false>
void run(const Region<T>& g, const Matrix& m) {
  const auto go = [&] { lanes::with128([&](auto o) { regionOn<decltype(o), T, S, Linear, Stream>(g, m); }); };
  if constexpr (kFloat<T>) {
    go();
  } else {
    const uint32_t prev = lum_set_rc_ssx(0);
    go();
    if (prev & kRoundingMask) lum_set_cw_ssx(prev);
  }
}

template <class T>
Region<T> packedRegion(const T* src, int srcStep, T* dst, int dstStep, LumSize roi) {
  return Region<T>{{src, nullptr, nullptr}, srcStep, {dst, nullptr, nullptr}, dstStep, roi.width, roi.height};
}

// C3, AC4 and their in-place forms (source and destination the same image).
template <class T, Shape S>
LumStatus packedForm(const T* src, int srcStep, T* dst, int dstStep, LumSize roi, const Lum32f t[3][4]) {
  if (LumStatus st = check::nullSizeStep(roi, {srcStep, dstStep}, src, dst, t)) return st;
  run<T, S>(packedRegion(src, srcStep, dst, dstStep, roi), affine(t));
  return lumStatusOk;
}

// Three planes sharing one step per image; every plane pointer is tested with the others.
template <class T>
LumStatus planarForm(const T* const* src, int srcStep, T* const* dst, int dstStep, LumSize roi,
                     const Lum32f t[3][4]) {
  if (check::anyNull(src, dst, t) || check::anyPlaneNull(src, 3) || check::anyPlaneNull(dst, 3))
    return lumStatusNullPointer;
  if (LumStatus st = check::nullSizeStep(roi, {srcStep, dstStep})) return st;
  run<T, Shape::P3>(Region<T>{{src[0], src[1], src[2]}, srcStep, {dst[0], dst[1], dst[2]}, dstStep, roi.width,
                              roi.height},
                    affine(t));
  return lumStatusOk;
}

// The in-place planar form: one array is both images.
template <class T>
LumStatus planarInPlace(T* const* img, int step, LumSize roi, const Lum32f t[3][4]) {
  return planarForm<T>(reinterpret_cast<const T* const*>(img), step, img, step, roi, t);
}

// Streaming stores pay from this many floats of a three-channel region on.
constexpr std::ptrdiff_t kStreamFloats = 34993;

}  // namespace

extern "C" {

LumStatus lumiColorTwist_32f_C3R(const Lum32f* pSrc, int srcStep, Lum32f* pDst, int dstStep, LumSize roi,
                                 const Lum32f twist[3][4]) {
  if (LumStatus st = check::nullSizeStep(roi, {srcStep, dstStep}, pSrc, pDst, twist)) return st;
  Region<Lum32f> g = packedRegion(pSrc, srcStep, pDst, dstStep, roi);
  // Contiguous rows run as one.
  if (srcStep == dstStep && std::ptrdiff_t(srcStep) == 12 * std::ptrdiff_t(roi.width)) {
    g.width = std::ptrdiff_t(roi.width) * roi.height;
    g.height = 1;
  }
  if (3 * std::ptrdiff_t(roi.width) * roi.height >= kStreamFloats)
    run<Lum32f, Shape::C3, false, true>(g, affine(twist));
  else
    run<Lum32f, Shape::C3>(g, affine(twist));
  return lumStatusOk;
}
LumStatus lumiColorTwist_32f_C3IR(Lum32f* p, int step, LumSize roi, const Lum32f twist[3][4]) {
  return packedForm<Lum32f, Shape::C3>(p, step, p, step, roi, twist);
}
LumStatus lumiColorTwist_32f_AC4R(const Lum32f* pSrc, int srcStep, Lum32f* pDst, int dstStep, LumSize roi,
                                  const Lum32f twist[3][4]) {
  return packedForm<Lum32f, Shape::AC4>(pSrc, srcStep, pDst, dstStep, roi, twist);
}
LumStatus lumiColorTwist_32f_AC4IR(Lum32f* p, int step, LumSize roi, const Lum32f twist[3][4]) {
  return packedForm<Lum32f, Shape::AC4>(p, step, p, step, roi, twist);
}
LumStatus lumiColorTwist_32f_C4R(const Lum32f* pSrc, int srcStep, Lum32f* pDst, int dstStep, LumSize roi,
                                 const Lum32f twist[4][4]) {
  if (LumStatus st = check::nullSizeStep(roi, {srcStep, dstStep}, pSrc, pDst, twist)) return st;
  Region<Lum32f> g = packedRegion(pSrc, srcStep, pDst, dstStep, roi);
  // Steps equal to 4 W bytes (a quarter of a contiguous row) run all W x H
  // pixels as one run from pSrc: 16 W H bytes on each side, past the region.
  if (srcStep == dstStep && std::ptrdiff_t(srcStep) == 4 * std::ptrdiff_t(roi.width)) {
    g.width = std::ptrdiff_t(roi.width) * roi.height;
    g.height = 1;
  }
  // Rows whose pointers all lie on 16 bytes take streaming stores.
  const bool aligned = aligned16(pSrc) && aligned16(pDst) && (g.height == 1 || ((srcStep | dstStep) & 15) == 0);
  if (aligned)
    run<Lum32f, Shape::C4, true, true>(g, linear(twist));
  else
    run<Lum32f, Shape::C4, true>(g, linear(twist));
  return lumStatusOk;
}
LumStatus lumiColorTwist_32f_P3R(const Lum32f* const pSrc[3], int srcStep, Lum32f* const pDst[3], int dstStep,
                                 LumSize roi, const Lum32f twist[3][4]) {
  return planarForm<Lum32f>(pSrc, srcStep, pDst, dstStep, roi, twist);
}
LumStatus lumiColorTwist_32f_IP3R(Lum32f* const p[3], int step, LumSize roi, const Lum32f twist[3][4]) {
  return planarInPlace<Lum32f>(p, step, roi, twist);
}

LumStatus lumiColorTwist32f_8u_C3R(const Lum8u* pSrc, int srcStep, Lum8u* pDst, int dstStep, LumSize roi,
                                   const Lum32f twist[3][4]) {
  return packedForm<Lum8u, Shape::C3>(pSrc, srcStep, pDst, dstStep, roi, twist);
}
LumStatus lumiColorTwist32f_8u_C3IR(Lum8u* p, int step, LumSize roi, const Lum32f twist[3][4]) {
  return packedForm<Lum8u, Shape::C3>(p, step, p, step, roi, twist);
}
LumStatus lumiColorTwist32f_8u_AC4R(const Lum8u* pSrc, int srcStep, Lum8u* pDst, int dstStep, LumSize roi,
                                    const Lum32f twist[3][4]) {
  return packedForm<Lum8u, Shape::AC4>(pSrc, srcStep, pDst, dstStep, roi, twist);
}
LumStatus lumiColorTwist32f_8u_AC4IR(Lum8u* p, int step, LumSize roi, const Lum32f twist[3][4]) {
  return packedForm<Lum8u, Shape::AC4>(p, step, p, step, roi, twist);
}
LumStatus lumiColorTwist32f_8u_P3R(const Lum8u* const pSrc[3], int srcStep, Lum8u* const pDst[3], int dstStep,
                                   LumSize roi, const Lum32f twist[3][4]) {
  return planarForm<Lum8u>(pSrc, srcStep, pDst, dstStep, roi, twist);
}
LumStatus lumiColorTwist32f_8u_IP3R(Lum8u* const p[3], int step, LumSize roi, const Lum32f twist[3][4]) {
  return planarInPlace<Lum8u>(p, step, roi, twist);
}

LumStatus lumiColorTwist32f_16u_C3R(const Lum16u* pSrc, int srcStep, Lum16u* pDst, int dstStep, LumSize roi,
                                    const Lum32f twist[3][4]) {
  return packedForm<Lum16u, Shape::C3>(pSrc, srcStep, pDst, dstStep, roi, twist);
}
LumStatus lumiColorTwist32f_16u_C3IR(Lum16u* p, int step, LumSize roi, const Lum32f twist[3][4]) {
  return packedForm<Lum16u, Shape::C3>(p, step, p, step, roi, twist);
}
LumStatus lumiColorTwist32f_16u_AC4R(const Lum16u* pSrc, int srcStep, Lum16u* pDst, int dstStep, LumSize roi,
                                     const Lum32f twist[3][4]) {
  return packedForm<Lum16u, Shape::AC4>(pSrc, srcStep, pDst, dstStep, roi, twist);
}
LumStatus lumiColorTwist32f_16u_AC4IR(Lum16u* p, int step, LumSize roi, const Lum32f twist[3][4]) {
  return packedForm<Lum16u, Shape::AC4>(p, step, p, step, roi, twist);
}
LumStatus lumiColorTwist32f_16u_P3R(const Lum16u* const pSrc[3], int srcStep, Lum16u* const pDst[3], int dstStep,
                                    LumSize roi, const Lum32f twist[3][4]) {
  return planarForm<Lum16u>(pSrc, srcStep, pDst, dstStep, roi, twist);
}
LumStatus lumiColorTwist32f_16u_IP3R(Lum16u* const p[3], int step, LumSize roi, const Lum32f twist[3][4]) {
  return planarInPlace<Lum16u>(p, step, roi, twist);
}

LumStatus lumiColorTwist32f_16s_C3R(const Lum16s* pSrc, int srcStep, Lum16s* pDst, int dstStep, LumSize roi,
                                    const Lum32f twist[3][4]) {
  return packedForm<Lum16s, Shape::C3>(pSrc, srcStep, pDst, dstStep, roi, twist);
}
LumStatus lumiColorTwist32f_16s_C3IR(Lum16s* p, int step, LumSize roi, const Lum32f twist[3][4]) {
  return packedForm<Lum16s, Shape::C3>(p, step, p, step, roi, twist);
}
LumStatus lumiColorTwist32f_16s_AC4R(const Lum16s* pSrc, int srcStep, Lum16s* pDst, int dstStep, LumSize roi,
                                     const Lum32f twist[3][4]) {
  return packedForm<Lum16s, Shape::AC4>(pSrc, srcStep, pDst, dstStep, roi, twist);
}
LumStatus lumiColorTwist32f_16s_AC4IR(Lum16s* p, int step, LumSize roi, const Lum32f twist[3][4]) {
  return packedForm<Lum16s, Shape::AC4>(p, step, p, step, roi, twist);
}
LumStatus lumiColorTwist32f_16s_P3R(const Lum16s* const pSrc[3], int srcStep, Lum16s* const pDst[3], int dstStep,
                                    LumSize roi, const Lum32f twist[3][4]) {
  return planarForm<Lum16s>(pSrc, srcStep, pDst, dstStep, roi, twist);
}
LumStatus lumiColorTwist32f_16s_IP3R(Lum16s* const p[3], int step, LumSize roi, const Lum32f twist[3][4]) {
  return planarInPlace<Lum16s>(p, step, roi, twist);
}

}  // extern "C"
