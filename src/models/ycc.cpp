// RGB <-> Photo YCC over 8u (fixed point), 16u, 16s and 32f (single precision
// on the sample scale), in C3 and AC4 (destination alpha never written). Each
// function checks pointers, then size; row steps are not checked. Blocks cover
// width & ~3 of each row, the tail the rest.
#include "models/lab_ycc_public.h"
#include "models/ycc_forms.h"

using namespace lum;
using namespace lum::ycc;

namespace {

// The pixel layout of a function: three channels, or four with alpha kept.
template <class T, int N>
using Layout = std::conditional_t<N == 3, layout::RGBOf<T>, layout::RGBAOf<T>>;

// Public layer of every function: pointers, then size, then the rows; the
// 16- and 32-bit forms take their steps in whole samples.
template <class Block, class Tail, class T, int N>
LumStatus convert(const T* pSrc, int srcStep, T* pDst, int dstStep, LumSize roi) {
  using L = Layout<T, N>;
  return labycc::packedCall<models::ModelRows<4, Block, Tail, L, L>, int(sizeof(T))>(pSrc, srcStep, pDst, dstStep, roi);
}

}  // namespace

extern "C" {

LumStatus lumiRGBToYCC_8u_C3R(const Lum8u* s, int ss, Lum8u* d, int ds, LumSize r) {
  return convert<Fwd8u, Fwd8u, Lum8u, 3>(s, ss, d, ds, r);
}
LumStatus lumiRGBToYCC_8u_AC4R(const Lum8u* s, int ss, Lum8u* d, int ds, LumSize r) {
  return convert<Fwd8u, Fwd8u, Lum8u, 4>(s, ss, d, ds, r);
}
LumStatus lumiRGBToYCC_16u_C3R(const Lum16u* s, int ss, Lum16u* d, int ds, LumSize r) {
  return convert<Fwd16Block<Lum16u>, Fwd16Tail<Lum16u>, Lum16u, 3>(s, ss, d, ds, r);
}
LumStatus lumiRGBToYCC_16u_AC4R(const Lum16u* s, int ss, Lum16u* d, int ds, LumSize r) {
  return convert<Fwd16Block<Lum16u>, Fwd16Tail<Lum16u>, Lum16u, 4>(s, ss, d, ds, r);
}
LumStatus lumiRGBToYCC_16s_C3R(const Lum16s* s, int ss, Lum16s* d, int ds, LumSize r) {
  return convert<Fwd16Block<Lum16s>, Fwd16Tail<Lum16s>, Lum16s, 3>(s, ss, d, ds, r);
}
LumStatus lumiRGBToYCC_16s_AC4R(const Lum16s* s, int ss, Lum16s* d, int ds, LumSize r) {
  return convert<Fwd16Block<Lum16s>, Fwd16Tail<Lum16s>, Lum16s, 4>(s, ss, d, ds, r);
}
LumStatus lumiRGBToYCC_32f_C3R(const Lum32f* s, int ss, Lum32f* d, int ds, LumSize r) {
  return convert<Fwd32f, Fwd32f, Lum32f, 3>(s, ss, d, ds, r);
}
LumStatus lumiRGBToYCC_32f_AC4R(const Lum32f* s, int ss, Lum32f* d, int ds, LumSize r) {
  return convert<Fwd32f, Fwd32f, Lum32f, 4>(s, ss, d, ds, r);
}

LumStatus lumiYCCToRGB_8u_C3R(const Lum8u* s, int ss, Lum8u* d, int ds, LumSize r) {
  return convert<Inv8u, Inv8u, Lum8u, 3>(s, ss, d, ds, r);
}
LumStatus lumiYCCToRGB_8u_AC4R(const Lum8u* s, int ss, Lum8u* d, int ds, LumSize r) {
  return convert<Inv8u, Inv8u, Lum8u, 4>(s, ss, d, ds, r);
}
LumStatus lumiYCCToRGB_16u_C3R(const Lum16u* s, int ss, Lum16u* d, int ds, LumSize r) {
  return convert<Inv16Block<Lum16u>, Inv16Tail<Lum16u>, Lum16u, 3>(s, ss, d, ds, r);
}
LumStatus lumiYCCToRGB_16u_AC4R(const Lum16u* s, int ss, Lum16u* d, int ds, LumSize r) {
  return convert<Inv16Block<Lum16u>, Inv16Tail<Lum16u>, Lum16u, 4>(s, ss, d, ds, r);
}
LumStatus lumiYCCToRGB_16s_C3R(const Lum16s* s, int ss, Lum16s* d, int ds, LumSize r) {
  return convert<Inv16Block<Lum16s>, Inv16Tail<Lum16s>, Lum16s, 3>(s, ss, d, ds, r);
}
LumStatus lumiYCCToRGB_16s_AC4R(const Lum16s* s, int ss, Lum16s* d, int ds, LumSize r) {
  return convert<Inv16Block<Lum16s>, Inv16Tail<Lum16s>, Lum16s, 4>(s, ss, d, ds, r);
}
LumStatus lumiYCCToRGB_32f_C3R(const Lum32f* s, int ss, Lum32f* d, int ds, LumSize r) {
  return convert<Inv32f, Inv32f, Lum32f, 3>(s, ss, d, ds, r);
}
LumStatus lumiYCCToRGB_32f_AC4R(const Lum32f* s, int ss, Lum32f* d, int ds, LumSize r) {
  return convert<Inv32f, Inv32f, Lum32f, 4>(s, ss, d, ds, r);
}

}  // extern "C"
