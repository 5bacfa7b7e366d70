// Colour to gray: RGBToGray and ColorToGray are one code per sample type, the
// first with the default weights, the second with the caller's (a null coeffs
// meaning the defaults), over three-channel rows or four-channel rows whose
// fourth channel is not read.
#include "frame/check.h"
#include "lumachroma/forms_gray.h"

using namespace lum;
using namespace lum::gray;

namespace {

// The Q15 weights of the 8u default path, as the driver computes them from the
// default single-precision weights.
constexpr int q15Const(float w) { return int(double(w) * 32768.0 + 0.5); }
constexpr const int (&kDefaultQ15)[3] = coef::gray::kWeightsQ15;
static_assert(q15Const(kDefaultWeights[0]) == kDefaultQ15[0] && q15Const(kDefaultWeights[1]) == kDefaultQ15[1] &&
              q15Const(kDefaultWeights[2]) == kDefaultQ15[2]);

// Runs a row kernel over the rows of an image whose steps count elements.
template <class T, class Row>
void forEachGrayRow(const T* s, int sStep, T* d, int dStep, int width, int height, Row&& row) {
  for (int y = 0; y < height; ++y) row(rowOfElems(s, y, sStep), rowOfElems(d, y, dStep), width);
}

// Row driver of colour to gray for T samples, N channels a pixel. 8u turns the
// weights into Q15 integers once, before the rows, and runs 8- and 4-pixel
// blocks (covering width & ~3) and a 0..3 pixel tail of another rounding; the
// float forms compute the same in block and tail.
template <class T, int N>
void myRGBToGray(const T* s, int sStep, T* d, int dStep, int width, int height, const Lum32f* coeffs) {
  if (height <= 0) return;
  const float* w = coeffs ? coeffs : kDefaultWeights;
  const Reach r = reach();
  if constexpr (std::is_same_v<T, Lum8u>) {
    GrayQ15Block block{{kDefaultQ15[0], kDefaultQ15[1], kDefaultQ15[2]}};
    if (coeffs) block = GrayQ15Block{{q15(w[0]), q15(w[1]), q15(w[2])}};
    const GrayQ15Tail tail{{block.k[0], block.k[1], block.k[2]}};
    forEachGrayRow(s, sStep, d, dStep, width, height,
                   [&](const T* sr, T* dr, int wd) { toGrayRow<4, T, N>(sr, dr, wd, block, tail, r); });
  } else if constexpr (std::is_same_v<T, Lum32f>) {
    const GrayF32 f{{w[0], w[1], w[2]}};
    forEachGrayRow(s, sStep, d, dStep, width, height,
                   [&](const T* sr, T* dr, int wd) { toGrayRow<1, T, N>(sr, dr, wd, f, f, r); });
  } else {
    // Sums associate as (p0 + p1) + p2 in the four-channel forms too.
    const GrayRoundF32<T> f{{w[0], w[1], w[2]}};
    forEachGrayRow(s, sStep, d, dStep, width, height,
                   [&](const T* sr, T* dr, int wd) { toGrayRow<1, T, N>(sr, dr, wd, f, f, r); });
  }
}

// Whole-region routine of the double forms, the caller's weights read as given.
template <int N>
void ownColorToGray_64f(const Lum64f* s, int sStep, Lum64f* d, int dStep, int width, int height,
                        const Lum64f* coeffs) {
  const GrayF64 f{{coeffs[0], coeffs[1], coeffs[2]}};
  forEachGrayRow(s, sStep, d, dStep, width, height, [&](const Lum64f* sr, Lum64f* dr, int wd) {
    toGrayRow<1, Lum64f, N>(sr, dr, wd, f, f, Reach::Scalar);
  });
}

// Public layer: pointers, then size; byte steps become element steps, rounded
// down where a step is no multiple of the sample size.
template <class T, int N>
LumStatus toGray(const T* pSrc, int srcStep, T* pDst, int dstStep, LumSize roi, const Lum32f* coeffs) {
  if (LumStatus st = check::nullThenSize(roi, pSrc, pDst)) return st;
  myRGBToGray<T, N>(pSrc, elemStep<T>(srcStep), pDst, elemStep<T>(dstStep), roi.width, roi.height, coeffs);
  return lumStatusOk;
}

// The double forms take element steps of 8 bytes, like their 16- and 32-bit siblings.
// They have no default weights, so a null coeffs is refused with the other
// pointers rather than read.
template <int N>
LumStatus toGray64f(const Lum64f* pSrc, int srcStep, Lum64f* pDst, int dstStep, LumSize roi, const Lum64f* coeffs) {
  if (LumStatus st = check::nullThenSize(roi, pSrc, pDst, coeffs)) return st;
  ownColorToGray_64f<N>(pSrc, elemStep<Lum64f>(srcStep), pDst, elemStep<Lum64f>(dstStep), roi.width, roi.height,
                        coeffs);
  return lumStatusOk;
}

}  // namespace

LumStatus lumiRGBToGray_8u_C3C1R(const Lum8u* pSrc, int srcStep, Lum8u* pDst, int dstStep, LumSize roi) {
  return toGray<Lum8u, 3>(pSrc, srcStep, pDst, dstStep, roi, nullptr);
}
LumStatus lumiRGBToGray_8u_AC4C1R(const Lum8u* pSrc, int srcStep, Lum8u* pDst, int dstStep, LumSize roi) {
  return toGray<Lum8u, 4>(pSrc, srcStep, pDst, dstStep, roi, nullptr);
}
LumStatus lumiRGBToGray_16u_C3C1R(const Lum16u* pSrc, int srcStep, Lum16u* pDst, int dstStep, LumSize roi) {
  return toGray<Lum16u, 3>(pSrc, srcStep, pDst, dstStep, roi, nullptr);
}
LumStatus lumiRGBToGray_16u_AC4C1R(const Lum16u* pSrc, int srcStep, Lum16u* pDst, int dstStep, LumSize roi) {
  return toGray<Lum16u, 4>(pSrc, srcStep, pDst, dstStep, roi, nullptr);
}
LumStatus lumiRGBToGray_16s_C3C1R(const Lum16s* pSrc, int srcStep, Lum16s* pDst, int dstStep, LumSize roi) {
  return toGray<Lum16s, 3>(pSrc, srcStep, pDst, dstStep, roi, nullptr);
}
LumStatus lumiRGBToGray_16s_AC4C1R(const Lum16s* pSrc, int srcStep, Lum16s* pDst, int dstStep, LumSize roi) {
  return toGray<Lum16s, 4>(pSrc, srcStep, pDst, dstStep, roi, nullptr);
}
LumStatus lumiRGBToGray_32f_C3C1R(const Lum32f* pSrc, int srcStep, Lum32f* pDst, int dstStep, LumSize roi) {
  return toGray<Lum32f, 3>(pSrc, srcStep, pDst, dstStep, roi, nullptr);
}
LumStatus lumiRGBToGray_32f_AC4C1R(const Lum32f* pSrc, int srcStep, Lum32f* pDst, int dstStep, LumSize roi) {
  return toGray<Lum32f, 4>(pSrc, srcStep, pDst, dstStep, roi, nullptr);
}

LumStatus lumiColorToGray_8u_C3C1R(const Lum8u* pSrc, int srcStep, Lum8u* pDst, int dstStep, LumSize roi,
                                   const Lum32f coeffs[3]) {
  return toGray<Lum8u, 3>(pSrc, srcStep, pDst, dstStep, roi, coeffs);
}
LumStatus lumiColorToGray_8u_AC4C1R(const Lum8u* pSrc, int srcStep, Lum8u* pDst, int dstStep, LumSize roi,
                                    const Lum32f coeffs[3]) {
  return toGray<Lum8u, 4>(pSrc, srcStep, pDst, dstStep, roi, coeffs);
}
LumStatus lumiColorToGray_16u_C3C1R(const Lum16u* pSrc, int srcStep, Lum16u* pDst, int dstStep, LumSize roi,
                                    const Lum32f coeffs[3]) {
  return toGray<Lum16u, 3>(pSrc, srcStep, pDst, dstStep, roi, coeffs);
}
LumStatus lumiColorToGray_16u_AC4C1R(const Lum16u* pSrc, int srcStep, Lum16u* pDst, int dstStep, LumSize roi,
                                     const Lum32f coeffs[3]) {
  return toGray<Lum16u, 4>(pSrc, srcStep, pDst, dstStep, roi, coeffs);
}
LumStatus lumiColorToGray_16s_C3C1R(const Lum16s* pSrc, int srcStep, Lum16s* pDst, int dstStep, LumSize roi,
                                    const Lum32f coeffs[3]) {
  return toGray<Lum16s, 3>(pSrc, srcStep, pDst, dstStep, roi, coeffs);
}
LumStatus lumiColorToGray_16s_AC4C1R(const Lum16s* pSrc, int srcStep, Lum16s* pDst, int dstStep, LumSize roi,
                                     const Lum32f coeffs[3]) {
  return toGray<Lum16s, 4>(pSrc, srcStep, pDst, dstStep, roi, coeffs);
}
LumStatus lumiColorToGray_32f_C3C1R(const Lum32f* pSrc, int srcStep, Lum32f* pDst, int dstStep, LumSize roi,
                                    const Lum32f coeffs[3]) {
  return toGray<Lum32f, 3>(pSrc, srcStep, pDst, dstStep, roi, coeffs);
}
LumStatus lumiColorToGray_32f_AC4C1R(const Lum32f* pSrc, int srcStep, Lum32f* pDst, int dstStep, LumSize roi,
                                     const Lum32f coeffs[3]) {
  return toGray<Lum32f, 4>(pSrc, srcStep, pDst, dstStep, roi, coeffs);
}
// A null coeffs is lumStatusNullPointer here: the double forms have no default weights.
LumStatus lumiColorToGray_64f_C3C1R(const Lum64f* pSrc, int srcStep, Lum64f* pDst, int dstStep, LumSize roi,
                                    const Lum64f coeffs[3]) {
  return toGray64f<3>(pSrc, srcStep, pDst, dstStep, roi, coeffs);
}
LumStatus lumiColorToGray_64f_AC4C1R(const Lum64f* pSrc, int srcStep, Lum64f* pDst, int dstStep, LumSize roi,
                                     const Lum64f coeffs[3]) {
  return toGray64f<4>(pSrc, srcStep, pDst, dstStep, roi, coeffs);
}
