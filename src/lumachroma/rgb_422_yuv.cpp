// RGB to and from YUV 4:2:2: packed Y0 U Y1 V and planar Y, U, V with half-width
// chroma, with the dense (no-step) forms that fold their rows into one.
#include "frame/check.h"
#include "lumachroma/rgb_422_kernel.h"

using namespace lum;
using namespace lum::form;
namespace L = lum::layout;
namespace K = lum::layout422;

namespace {

// Forward kernels: an odd last column is left as it was.
using innerRGBToYUV422_8u_C3C2R = PairsThenTail<16, YUV422BlockC2, YUV422TailC2, L::RGB, K::YCbCr422>;
// The planar kernels step as the packed one, 16 pixels a block: the block covers
// width & ~15 and the tail takes the rest.
using innerRGBToYUV422_8u_C3P3R = PairsThenTail<16, YUV422BlockP3, YUV422TailP3, L::RGB, K::P3h>;
using innerRGBToYUV422_8u_P3R = PairsThenTail<16, YUV422BlockP3, YUV422TailP3, L::P3, K::P3h>;
// The aligned kernel runs 16 pixels (48 source bytes, three aligned loads) a step.
using inner_V8_RGBToYUV422_8u_C3P3R = PairsThenTail<16, V8Block, V8Tail, L::RGB, K::P3h>;

// Every pointer and step of the call a multiple of 16: the V8 kernel on all rows.
void myRGBToYUV422_8u_C3P3R(LumSize roi, const SrcPlanes& s, const DstPlanes& d) {
  if (allAligned16(s, d)) inner_V8_RGBToYUV422_8u_C3P3R::image(roi, s, d);
  else innerRGBToYUV422_8u_C3P3R::image(roi, s, d);
}

// Inverse kernels. IU2 on replicated chroma in blocks of 16.
using innerYUV422ToRGB_8u_C2C3R =
    ReplicatedRow<16, IU2, SU3, K::YCbCr422, L::RGB, Alpha::Keep, OddHalfPair<Guard::Exact>>;
using innerYUV422ToRGB_8u_P3C3R = ReplicatedRow<16, IU2, SU2, K::P3h, L::RGB, Alpha::Keep, OddOwnChroma>;
using innerYUV422ToRGB_8u_P3R = ReplicatedRow<16, IU2, SU2, K::P3h, L::P3, Alpha::Keep, OddOwnChroma>;
// Blocks of 8, then one of 4: the block covers width & ~3. Alpha is written as 0.
using innerYUV422ToRGB_8u_P3AC4R = ReplicatedRow<4, IU5, SU4, K::P3h, L::RGBA, Alpha::Zero, OddOwnChroma>;

// A row one pixel wide holds a luma and one chroma sample, which serves as U and
// V at once, by SU4's arithmetic (no rounding add): G takes -63897 = -25821 - 38076.
void myYUV422ToRGB_8u_C2C3R(LumSize roi, const SrcPlanes& s, const DstPlanes& d) {
  if (roi.width != 1) {
    innerYUV422ToRGB_8u_C2C3R::image(roi, s, d);
    return;
  }
  for (int y = 0; y < roi.height; ++y) {
    const uint8_t* p = s.row(y).p[0];
    layout::Px in{{p[0], p[1], p[1], 0}}, out;
    SU4::pixel(in.v, out.v);
    L::RGB::store<false>(d.row(y), 0, out);
  }
}

// Steps of a dense image: three-channel rows 3 * width, luma rows width, chroma
// rows width / 2 + (width & 1).
struct DenseSteps {
  int c3, luma, chroma;
  // 3 * w in pointer width; a step beyond int only serves one-row images.
  explicit DenseSteps(int w) : c3(int(std::ptrdiff_t(3) * w)), luma(w), chroma(w / 2 + (w & 1)) {}
};

// Null arrays, then size, then the planes inside them. Step arrays are required
// pointers like the plane arrays.
LumStatus nullSizePlanes(LumSize roi, bool nullArray, const Lum8u* const* planesA, const Lum8u* const* planesB) {
  if (nullArray) return lumStatusNullPointer;
  if (check::badSize(roi)) return lumStatusBadSize;
  if ((planesA && check::anyPlaneNull(planesA, 3)) || (planesB && check::anyPlaneNull(planesB, 3)))
    return lumStatusNullPointer;
  return lumStatusOk;
}
const Lum8u* const* cplanes(Lum8u* const* p) { return const_cast<const Lum8u* const*>(p); }

}  // namespace

LumStatus lumiRGBToYUV422_8u_C3C2R(const Lum8u* pSrc, int srcStep, Lum8u* pDst, int dstStep, LumSize roi) {
  if (LumStatus s = check::nullThenSize(roi, pSrc, pDst)) return s;
  innerRGBToYUV422_8u_C3C2R::image(roi, packed(pSrc, srcStep), packed(pDst, dstStep));
  return lumStatusOk;
}

// The aligned kernel computes by its own arithmetic: alignment shows in the
// result, by one code value on some pixels.
LumStatus lumiRGBToYUV422_8u_C3P3R(const Lum8u* pSrc, int srcStep, Lum8u* const pDst[3], const int dstStep[3],
                                   LumSize roi) {
  if (LumStatus s = nullSizePlanes(roi, check::anyNull(pSrc, pDst, dstStep), nullptr, cplanes(pDst))) return s;
  myRGBToYUV422_8u_C3P3R(roi, packed(pSrc, srcStep), planar(pDst, 3, dstStep));
  return lumStatusOk;
}

LumStatus lumiRGBToYUV422_8u_P3R(const Lum8u* const pSrc[3], int srcStep, Lum8u* const pDst[3],
                                 const int dstStep[3], LumSize roi) {
  if (LumStatus s = nullSizePlanes(roi, check::anyNull(pSrc, pDst, dstStep), pSrc, cplanes(pDst))) return s;
  innerRGBToYUV422_8u_P3R::image(roi, planar(pSrc, 3, srcStep), planar(pDst, 3, dstStep));
  return lumStatusOk;
}

LumStatus lumiRGBToYUV422_8u_C3P3(const Lum8u* pSrc, Lum8u* const pDst[3], LumSize roi) {
  if (LumStatus s = nullSizePlanes(roi, check::anyNull(pSrc, pDst), nullptr, cplanes(pDst))) return s;
  const DenseSteps st(roi.width);
  const int dstSteps[3] = {st.luma, st.chroma, st.chroma};
  const SrcPlanes s = packed(pSrc, st.c3);
  const DstPlanes d = planar(pDst, 3, dstSteps);
  if (!foldDense<innerRGBToYUV422_8u_C3P3R, L::RGB, K::P3h>(roi, s, d)) myRGBToYUV422_8u_C3P3R(roi, s, d);
  return lumStatusOk;
}

LumStatus lumiRGBToYUV422_8u_P3(const Lum8u* const pSrc[3], Lum8u* const pDst[3], LumSize roi) {
  if (LumStatus s = nullSizePlanes(roi, check::anyNull(pSrc, pDst), pSrc, cplanes(pDst))) return s;
  const DenseSteps st(roi.width);
  const int dstSteps[3] = {st.luma, st.chroma, st.chroma};
  const SrcPlanes s = planar(pSrc, 3, st.luma);
  const DstPlanes d = planar(pDst, 3, dstSteps);
  if (!foldDense<innerRGBToYUV422_8u_P3R, L::P3, K::P3h>(roi, s, d)) innerRGBToYUV422_8u_P3R::image(roi, s, d);
  return lumStatusOk;
}

LumStatus lumiYUV422ToRGB_8u_C2C3R(const Lum8u* pSrc, int srcStep, Lum8u* pDst, int dstStep, LumSize roi) {
  if (LumStatus s = check::nullThenSize(roi, pSrc, pDst)) return s;
  myYUV422ToRGB_8u_C2C3R(roi, packed(pSrc, srcStep), packed(pDst, dstStep));
  return lumStatusOk;
}

LumStatus lumiYUV422ToRGB_8u_P3C3R(const Lum8u* const pSrc[3], const int srcStep[3], Lum8u* pDst, int dstStep,
                                   LumSize roi) {
  if (LumStatus s = nullSizePlanes(roi, check::anyNull(pSrc, srcStep, pDst), pSrc, nullptr)) return s;
  innerYUV422ToRGB_8u_P3C3R::image(roi, planar(pSrc, 3, srcStep), packed(pDst, dstStep));
  return lumStatusOk;
}

LumStatus lumiYUV422ToRGB_8u_P3AC4R(const Lum8u* const pSrc[3], const int srcStep[3], Lum8u* pDst, int dstStep,
                                    LumSize roi) {
  if (LumStatus s = nullSizePlanes(roi, check::anyNull(pSrc, srcStep, pDst), pSrc, nullptr)) return s;
  innerYUV422ToRGB_8u_P3AC4R::image(roi, planar(pSrc, 3, srcStep), packed(pDst, dstStep));
  return lumStatusOk;
}

LumStatus lumiYUV422ToRGB_8u_P3R(const Lum8u* const pSrc[3], const int srcStep[3], Lum8u* const pDst[3],
                                 int dstStep, LumSize roi) {
  if (LumStatus s = nullSizePlanes(roi, check::anyNull(pSrc, srcStep, pDst), pSrc, cplanes(pDst))) return s;
  innerYUV422ToRGB_8u_P3R::image(roi, planar(pSrc, 3, srcStep), planar(pDst, 3, dstStep));
  return lumStatusOk;
}

LumStatus lumiYUV422ToRGB_8u_P3C3(const Lum8u* const pSrc[3], Lum8u* pDst, LumSize roi) {
  if (LumStatus s = nullSizePlanes(roi, check::anyNull(pSrc, pDst), pSrc, nullptr)) return s;
  const DenseSteps st(roi.width);
  const int srcSteps[3] = {st.luma, st.chroma, st.chroma};
  const SrcPlanes s = planar(pSrc, 3, srcSteps);
  const DstPlanes d = packed(pDst, st.c3);
  if (!foldDense<innerYUV422ToRGB_8u_P3C3R, K::P3h, L::RGB>(roi, s, d)) innerYUV422ToRGB_8u_P3C3R::image(roi, s, d);
  return lumStatusOk;
}

LumStatus lumiYUV422ToRGB_8u_P3(const Lum8u* const pSrc[3], Lum8u* const pDst[3], LumSize roi) {
  if (LumStatus s = nullSizePlanes(roi, check::anyNull(pSrc, pDst), pSrc, cplanes(pDst))) return s;
  const DenseSteps st(roi.width);
  const int srcSteps[3] = {st.luma, st.chroma, st.chroma};
  const SrcPlanes s = planar(pSrc, 3, srcSteps);
  const DstPlanes d = planar(pDst, 3, st.luma);
  if (!foldDense<innerYUV422ToRGB_8u_P3R, K::P3h, L::P3>(roi, s, d)) innerYUV422ToRGB_8u_P3R::image(roi, s, d);
  return lumStatusOk;
}
