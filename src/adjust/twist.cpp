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
  const auto go = [&] {
#if LUM_SIMD_SSE
    if constexpr (kHasWide<T, S>) {
      if (useWide()) return regionWide<T, S, Linear, Stream>(g, m);
    }
#endif
    lanes::with128([&](auto o) { regionOn<decltype(o), T, S, Linear, Stream>(g, m); });
  };
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

// The float C3R and C4R forms. Rows run as one when both steps equal R W bytes:
// R = 12 for C3R (contiguous rows); R = 4 for C4R, a quarter of a contiguous row,
// which then runs all W x H pixels from pSrc, 16 W H bytes on each side, past the
// region. Streaming stores: C3R from kStreamFloats on, C4R where every row's
// pointers lie on 16 bytes.
template <Shape S>
LumStatus floatRuns(const Lum32f* pSrc, int srcStep, Lum32f* pDst, int dstStep, LumSize roi,
                    const Lum32f (*twist)[4]) {
  constexpr bool kLinear = S == Shape::C4;
  if (LumStatus st = check::nullSizeStep(roi, {srcStep, dstStep}, pSrc, pDst, twist)) return st;
  Region<Lum32f> g = packedRegion(pSrc, srcStep, pDst, dstStep, roi);
  if (srcStep == dstStep && std::ptrdiff_t(srcStep) == (kLinear ? 4 : 12) * std::ptrdiff_t(roi.width)) {
    g.width = std::ptrdiff_t(roi.width) * roi.height;
    g.height = 1;
  }
  const bool stream = kLinear ? aligned16(pSrc) && aligned16(pDst) && (g.height == 1 || ((srcStep | dstStep) & 15) == 0)
                              : 3 * std::ptrdiff_t(roi.width) * roi.height >= kStreamFloats;
  const Matrix m = kLinear ? linear(twist) : affine(twist);
  if (stream) run<Lum32f, S, kLinear, true>(g, m);
  else run<Lum32f, S, kLinear>(g, m);
  return lumStatusOk;
}

}  // namespace

// The in-place, AC4 and planar forms of one sample type: they differ in the type alone.
#define LUM_TWIST_FORMS(NAME, T)                                                                         \
  LumStatus NAME##_C3IR(T* p, int step, LumSize roi, const Lum32f twist[3][4]) {                         \
    return packedForm<T, Shape::C3>(p, step, p, step, roi, twist);                                       \
  }                                                                                                      \
  LumStatus NAME##_AC4R(const T* pSrc, int srcStep, T* pDst, int dstStep, LumSize roi,                   \
                        const Lum32f twist[3][4]) {                                                      \
    return packedForm<T, Shape::AC4>(pSrc, srcStep, pDst, dstStep, roi, twist);                          \
  }                                                                                                      \
  LumStatus NAME##_AC4IR(T* p, int step, LumSize roi, const Lum32f twist[3][4]) {                        \
    return packedForm<T, Shape::AC4>(p, step, p, step, roi, twist);                                      \
  }                                                                                                      \
  LumStatus NAME##_P3R(const T* const pSrc[3], int srcStep, T* const pDst[3], int dstStep, LumSize roi,  \
                       const Lum32f twist[3][4]) {                                                       \
    return planarForm<T>(pSrc, srcStep, pDst, dstStep, roi, twist);                                      \
  }                                                                                                      \
  LumStatus NAME##_IP3R(T* const p[3], int step, LumSize roi, const Lum32f twist[3][4]) {                \
    return planarInPlace<T>(p, step, roi, twist);                                                        \
  }
// The same with the plain three-channel form, which the integer types share.
#define LUM_TWIST_INTEGER_FORMS(NAME, T)                                                                 \
  LumStatus NAME##_C3R(const T* pSrc, int srcStep, T* pDst, int dstStep, LumSize roi,                    \
                       const Lum32f twist[3][4]) {                                                       \
    return packedForm<T, Shape::C3>(pSrc, srcStep, pDst, dstStep, roi, twist);                          \
  }                                                                                                      \
  LUM_TWIST_FORMS(NAME, T)

extern "C" {

LumStatus lumiColorTwist_32f_C3R(const Lum32f* pSrc, int srcStep, Lum32f* pDst, int dstStep, LumSize roi,
                                 const Lum32f twist[3][4]) {
  return floatRuns<Shape::C3>(pSrc, srcStep, pDst, dstStep, roi, twist);
}
LUM_TWIST_FORMS(lumiColorTwist_32f, Lum32f)

LumStatus lumiColorTwist_32f_C4R(const Lum32f* pSrc, int srcStep, Lum32f* pDst, int dstStep, LumSize roi,
                                 const Lum32f twist[4][4]) {
  return floatRuns<Shape::C4>(pSrc, srcStep, pDst, dstStep, roi, twist);
}

LUM_TWIST_INTEGER_FORMS(lumiColorTwist32f_8u, Lum8u)
LUM_TWIST_INTEGER_FORMS(lumiColorTwist32f_16u, Lum16u)
LUM_TWIST_INTEGER_FORMS(lumiColorTwist32f_16s, Lum16s)

}  // extern "C"
