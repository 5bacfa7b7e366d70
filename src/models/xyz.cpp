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
LUM_MODEL_FN(lumiRGBToXYZ_8u_C3R, Lum8u, 1, ModelRows<8, Fwd8uBlock, Fwd8uTail, C3<Lum8u>, C3<Lum8u>, true>)
LUM_MODEL_FN(lumiRGBToXYZ_8u_AC4R, Lum8u, 1, ModelRows<4, Fwd8uBlock, Fwd8uTail, AC4<Lum8u>, AC4<Lum8u>>)
LUM_MODEL_FN(lumiXYZToRGB_8u_C3R, Lum8u, 1, ModelRows<8, Inv8uBlock, Inv8uTail, C3<Lum8u>, C3<Lum8u>, true>)
LUM_MODEL_FN(lumiXYZToRGB_8u_AC4R, Lum8u, 1, ModelRows<4, Inv8uBlock, Inv8uTail, AC4<Lum8u>, AC4<Lum8u>>)

// 16u, 16s, 32f: steps in samples.
LUM_MODEL_FN(lumiRGBToXYZ_16u_C3R, Lum16u, 2, Same<Float16<cie::kRGBToXYZ, false>, Lum16u, C3<Lum16u>, C3<Lum16u>>)
LUM_MODEL_FN(lumiRGBToXYZ_16u_AC4R, Lum16u, 2, Same<Float16<cie::kRGBToXYZ, false>, Lum16u, AC4<Lum16u>, AC4<Lum16u>>)
LUM_MODEL_FN(lumiRGBToXYZ_16s_C3R, Lum16s, 2, Same<Float16<cie::kRGBToXYZ, true>, Lum16s, C3<Lum16s>, C3<Lum16s>>)
LUM_MODEL_FN(lumiRGBToXYZ_16s_AC4R, Lum16s, 2, Same<Float16<cie::kRGBToXYZ, true>, Lum16s, AC4<Lum16s>, AC4<Lum16s>>)
LUM_MODEL_FN(lumiXYZToRGB_16u_C3R, Lum16u, 2, Same<Float16<cie::kXYZToRGB, false>, Lum16u, C3<Lum16u>, C3<Lum16u>>)
LUM_MODEL_FN(lumiXYZToRGB_16u_AC4R, Lum16u, 2, Same<Float16<cie::kXYZToRGB, false>, Lum16u, AC4<Lum16u>, AC4<Lum16u>>)
LUM_MODEL_FN(lumiXYZToRGB_16s_C3R, Lum16s, 2, Same<Float16<cie::kXYZToRGB, true>, Lum16s, C3<Lum16s>, C3<Lum16s>>)
LUM_MODEL_FN(lumiXYZToRGB_16s_AC4R, Lum16s, 2, Same<Float16<cie::kXYZToRGB, true>, Lum16s, AC4<Lum16s>, AC4<Lum16s>>)
LUM_MODEL_FN(lumiRGBToXYZ_32f_C3R, Lum32f, 4, Same<ToXYZ32f, Lum32f, C3<Lum32f>, C3<Lum32f>, true>)
LUM_MODEL_FN(lumiRGBToXYZ_32f_AC4R, Lum32f, 4, Same<ToXYZ32f, Lum32f, AC4<Lum32f>, AC4<Lum32f>>)
// The per-pixel rule of this direction is lane-exact, so whole vectors of pixels
// run it too: every pixel's result is the scalar loop's.
LUM_MODEL_FN(lumiXYZToRGB_32f_C3R, Lum32f, 4, Same<ToRGB32f, Lum32f, C3<Lum32f>, C3<Lum32f>, true>)
LUM_MODEL_FN(lumiXYZToRGB_32f_AC4R, Lum32f, 4, Same<ToRGB32f, Lum32f, AC4<Lum32f>, AC4<Lum32f>>)
