// Linear RGB <-> CIE XYZ (BT.709 primaries, D65 white) on 8u, 16u, 16s and 32f.
#include "models/xyz_forms.h"

using namespace lum;
using namespace lum::models;
using namespace lum::models::xyz;
namespace L = lum::layout;

namespace {

// Rows of a form whose tail computes as its blocks, four pixels a block.
template <class Form, class T, class Src, class Dst, bool Wide = false>
using Same = ModelRows<4, Form, Lanewise<Form, T, T>, Src, Dst, Wide>;

template <class T>
using C3 = L::RGBOf<T>;
template <class T>
using AC4 = L::RGBAOf<T>;

}  // namespace

// 8u: blocks of 8 pixels in C3 and 4 in AC4, then the tail set.
LumStatus lumiRGBToXYZ_8u_C3R(const Lum8u* pSrc, int srcStep, Lum8u* pDst, int dstStep, LumSize roi) {
  return runPacked<ModelRows<8, Fwd8uBlock, Fwd8uTail, C3<Lum8u>, C3<Lum8u>, true>, 1>(pSrc, srcStep, pDst, dstStep, roi);
}
LumStatus lumiRGBToXYZ_8u_AC4R(const Lum8u* pSrc, int srcStep, Lum8u* pDst, int dstStep, LumSize roi) {
  return runPacked<ModelRows<4, Fwd8uBlock, Fwd8uTail, AC4<Lum8u>, AC4<Lum8u>>, 1>(pSrc, srcStep, pDst, dstStep, roi);
}
LumStatus lumiXYZToRGB_8u_C3R(const Lum8u* pSrc, int srcStep, Lum8u* pDst, int dstStep, LumSize roi) {
  return runPacked<ModelRows<8, Inv8uBlock, Inv8uTail, C3<Lum8u>, C3<Lum8u>, true>, 1>(pSrc, srcStep, pDst, dstStep, roi);
}
LumStatus lumiXYZToRGB_8u_AC4R(const Lum8u* pSrc, int srcStep, Lum8u* pDst, int dstStep, LumSize roi) {
  return runPacked<ModelRows<4, Inv8uBlock, Inv8uTail, AC4<Lum8u>, AC4<Lum8u>>, 1>(pSrc, srcStep, pDst, dstStep, roi);
}

// 16u, 16s, 32f: steps in samples.
LumStatus lumiRGBToXYZ_16u_C3R(const Lum16u* pSrc, int srcStep, Lum16u* pDst, int dstStep, LumSize roi) {
  using F = Float16<cie::kRGBToXYZ, false>;
  return runPacked<Same<F, Lum16u, C3<Lum16u>, C3<Lum16u>>, 2>(pSrc, srcStep, pDst, dstStep, roi);
}
LumStatus lumiRGBToXYZ_16u_AC4R(const Lum16u* pSrc, int srcStep, Lum16u* pDst, int dstStep, LumSize roi) {
  using F = Float16<cie::kRGBToXYZ, false>;
  return runPacked<Same<F, Lum16u, AC4<Lum16u>, AC4<Lum16u>>, 2>(pSrc, srcStep, pDst, dstStep, roi);
}
LumStatus lumiRGBToXYZ_16s_C3R(const Lum16s* pSrc, int srcStep, Lum16s* pDst, int dstStep, LumSize roi) {
  using F = Float16<cie::kRGBToXYZ, true>;
  return runPacked<Same<F, Lum16s, C3<Lum16s>, C3<Lum16s>>, 2>(pSrc, srcStep, pDst, dstStep, roi);
}
LumStatus lumiRGBToXYZ_16s_AC4R(const Lum16s* pSrc, int srcStep, Lum16s* pDst, int dstStep, LumSize roi) {
  using F = Float16<cie::kRGBToXYZ, true>;
  return runPacked<Same<F, Lum16s, AC4<Lum16s>, AC4<Lum16s>>, 2>(pSrc, srcStep, pDst, dstStep, roi);
}
LumStatus lumiXYZToRGB_16u_C3R(const Lum16u* pSrc, int srcStep, Lum16u* pDst, int dstStep, LumSize roi) {
  using F = Float16<cie::kXYZToRGB, false>;
  return runPacked<Same<F, Lum16u, C3<Lum16u>, C3<Lum16u>>, 2>(pSrc, srcStep, pDst, dstStep, roi);
}
LumStatus lumiXYZToRGB_16u_AC4R(const Lum16u* pSrc, int srcStep, Lum16u* pDst, int dstStep, LumSize roi) {
  using F = Float16<cie::kXYZToRGB, false>;
  return runPacked<Same<F, Lum16u, AC4<Lum16u>, AC4<Lum16u>>, 2>(pSrc, srcStep, pDst, dstStep, roi);
}
LumStatus lumiXYZToRGB_16s_C3R(const Lum16s* pSrc, int srcStep, Lum16s* pDst, int dstStep, LumSize roi) {
  using F = Float16<cie::kXYZToRGB, true>;
  return runPacked<Same<F, Lum16s, C3<Lum16s>, C3<Lum16s>>, 2>(pSrc, srcStep, pDst, dstStep, roi);
}
LumStatus lumiXYZToRGB_16s_AC4R(const Lum16s* pSrc, int srcStep, Lum16s* pDst, int dstStep, LumSize roi) {
  using F = Float16<cie::kXYZToRGB, true>;
  return runPacked<Same<F, Lum16s, AC4<Lum16s>, AC4<Lum16s>>, 2>(pSrc, srcStep, pDst, dstStep, roi);
}
LumStatus lumiRGBToXYZ_32f_C3R(const Lum32f* pSrc, int srcStep, Lum32f* pDst, int dstStep, LumSize roi) {
  return runPacked<Same<ToXYZ32f, Lum32f, C3<Lum32f>, C3<Lum32f>, true>, 4>(pSrc, srcStep, pDst, dstStep, roi);
}
LumStatus lumiRGBToXYZ_32f_AC4R(const Lum32f* pSrc, int srcStep, Lum32f* pDst, int dstStep, LumSize roi) {
  return runPacked<Same<ToXYZ32f, Lum32f, AC4<Lum32f>, AC4<Lum32f>>, 4>(pSrc, srcStep, pDst, dstStep, roi);
}
// The per-pixel rule of this direction is lane-exact, so whole vectors of pixels
// run it too: every pixel's result is the scalar loop's.
LumStatus lumiXYZToRGB_32f_C3R(const Lum32f* pSrc, int srcStep, Lum32f* pDst, int dstStep, LumSize roi) {
  return runPacked<Same<ToRGB32f, Lum32f, C3<Lum32f>, C3<Lum32f>, true>, 4>(pSrc, srcStep, pDst, dstStep, roi);
}
LumStatus lumiXYZToRGB_32f_AC4R(const Lum32f* pSrc, int srcStep, Lum32f* pDst, int dstStep, LumSize roi) {
  return runPacked<Same<ToRGB32f, Lum32f, AC4<Lum32f>, AC4<Lum32f>>, 4>(pSrc, srcStep, pDst, dstStep, roi);
}
