// Gray to three or four channels, and the luma plane of packed YCbCr422.
#include "frame/check.h"
#include "frame/rows.h"
#include "lumachroma/forms_gray.h"

using namespace lum;
using namespace lum::gray;

namespace {

// Public layer and row loop of gray to colour: pointers, then size; steps in
// elements of T like the colour-to-gray forms of the same sample type.
template <class T, int N>
LumStatus grayToColor(const T* pSrc, int srcStep, T* pDst, int dstStep, LumSize roi, T aval = T()) {
  if (LumStatus st = check::nullThenSize(roi, pSrc, pDst)) return st;
  const int ss = elemStep<T>(srcStep), ds = elemStep<T>(dstStep);
  const GrayToColor<T, N> f{aval};
  const Reach r = reach();
  for (int y = 0; y < roi.height; ++y)
    grayToColorRow(rowOfElems(pSrc, y, ss), rowOfElems(pDst, y, ds), roi.width, f, r);
  return lumStatusOk;
}

}  // namespace

LumStatus lumiGrayToRGB_8u_C1C3R(const Lum8u* pSrc, int srcStep, Lum8u* pDst, int dstStep, LumSize roi) {
  return grayToColor<Lum8u, 3>(pSrc, srcStep, pDst, dstStep, roi);
}
LumStatus lumiGrayToRGB_8u_C1C4R(const Lum8u* pSrc, int srcStep, Lum8u* pDst, int dstStep, LumSize roi, Lum8u aval) {
  return grayToColor<Lum8u, 4>(pSrc, srcStep, pDst, dstStep, roi, aval);
}
LumStatus lumiGrayToRGB_16u_C1C3R(const Lum16u* pSrc, int srcStep, Lum16u* pDst, int dstStep, LumSize roi) {
  return grayToColor<Lum16u, 3>(pSrc, srcStep, pDst, dstStep, roi);
}
LumStatus lumiGrayToRGB_16u_C1C4R(const Lum16u* pSrc, int srcStep, Lum16u* pDst, int dstStep, LumSize roi,
                                  Lum16u aval) {
  return grayToColor<Lum16u, 4>(pSrc, srcStep, pDst, dstStep, roi, aval);
}
LumStatus lumiGrayToRGB_32f_C1C3R(const Lum32f* pSrc, int srcStep, Lum32f* pDst, int dstStep, LumSize roi) {
  return grayToColor<Lum32f, 3>(pSrc, srcStep, pDst, dstStep, roi);
}
LumStatus lumiGrayToRGB_32f_C1C4R(const Lum32f* pSrc, int srcStep, Lum32f* pDst, int dstStep, LumSize roi,
                                  Lum32f aval) {
  return grayToColor<Lum32f, 4>(pSrc, srcStep, pDst, dstStep, roi, aval);
}

LumStatus lumiYCbCr422ToGray_8u_C2C1R(const Lum8u* pSrc, int srcStep, Lum8u* pDst, int dstStep, LumSize roi) {
  if (LumStatus st = check::nullThenSize(roi, pSrc, pDst)) return st;
  const Reach r = reach();
  for (int y = 0; y < roi.height; ++y) LumaOf422::row(rowAt(pSrc, y, srcStep), rowAt(pDst, y, dstStep), roi.width, r);
  return lumStatusOk;
}
