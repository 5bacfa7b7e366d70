// Linear RGB <-> CIE 1976 L*u*v* (BT.709 primaries, D65 white) on 8u, 16u, 16s
// and 32f. Block paths take four pixels a step; the scalar tails compute their
// own rules, which differ from the blocks' on purpose.

#include "models/luv_forms.h"

using namespace lum;
using namespace lum::models;
using namespace lum::models::luv;
namespace L = lum::layout;

namespace {

template <class T>
using C3 = L::RGBOf<T>;
template <class T>
using BGR3 = L::BGROf<T>;
template <class T>
using AC4 = L::RGBAOf<T>;

// Four-pixel blocks, then the tail.
template <class Block, class Tail, class Src, class Dst>
using Rows = ModelRows<4, Block, Tail, Src, Dst>;
// The same, the blocks also eight pixels a step on AVX2 (three-channel 8u and 32f).
template <class Block, class Tail, class Src, class Dst>
using WideRows = ModelRows<4, Block, Tail, Src, Dst, true>;

}  // namespace

// RGB -> LUV. 8u: body in the public function, bytes as steps; AC4 has no block.
LUM_MODEL_FN(lumiRGBToLUV_8u_C3R, Lum8u, 1, WideRows<FwdBlock<Lum8u>, FwdTailZ<Lum8u>, C3<Lum8u>, C3<Lum8u>>)
LUM_MODEL_FN(lumiBGRToLUV_8u_C3R, Lum8u, 1, WideRows<FwdBlock<Lum8u>, FwdTailZ<Lum8u>, BGR3<Lum8u>, C3<Lum8u>>)
LUM_MODEL_FN(lumiRGBToLUV_8u_AC4R, Lum8u, 1, Rows<NoBlockForm, FwdTailZ<Lum8u>, AC4<Lum8u>, AC4<Lum8u>>)
// 16u and 16s: steps in samples; the 16u AC4 tail truncates where the others round.
LUM_MODEL_FN(lumiRGBToLUV_16u_C3R, Lum16u, 2, Rows<FwdBlock<Lum16u>, FwdTail16<Lum16u, true>, C3<Lum16u>, C3<Lum16u>>)
LUM_MODEL_FN(lumiRGBToLUV_16u_AC4R, Lum16u, 2, Rows<FwdBlock<Lum16u>, FwdTail16<Lum16u, false>, AC4<Lum16u>, AC4<Lum16u>>)
LUM_MODEL_FN(lumiRGBToLUV_16s_C3R, Lum16s, 2, Rows<FwdBlock<Lum16s>, FwdTail16<Lum16s, true>, C3<Lum16s>, C3<Lum16s>>)
LUM_MODEL_FN(lumiRGBToLUV_16s_AC4R, Lum16s, 2, Rows<FwdBlock<Lum16s>, FwdTail16<Lum16s, true>, AC4<Lum16s>, AC4<Lum16s>>)
// 32f: byte steps as they are.
LUM_MODEL_FN(lumiRGBToLUV_32f_C3R, Lum32f, 1, WideRows<FwdBlock<Lum32f>, FwdTailZ<Lum32f>, C3<Lum32f>, C3<Lum32f>>)
LUM_MODEL_FN(lumiRGBToLUV_32f_AC4R, Lum32f, 1, Rows<FwdBlock<Lum32f>, FwdTailZ<Lum32f>, AC4<Lum32f>, AC4<Lum32f>>)
LUM_MODEL_FN(lumiBGRToLUV_32f_C3R, Lum32f, 1, WideRows<FwdBlock<Lum32f>, FwdTailZ<Lum32f>, BGR3<Lum32f>, C3<Lum32f>>)

// LUV -> RGB. 8u: C3 and BGR run the C3 block, AC4 its own; one integer tail.
LUM_MODEL_FN(lumiLUVToRGB_8u_C3R, Lum8u, 1, WideRows<Inv8uBlock<false>, InvIntTail<Lum8u>, C3<Lum8u>, C3<Lum8u>>)
LUM_MODEL_FN(lumiLUVToBGR_8u_C3R, Lum8u, 1, WideRows<Inv8uBlock<false>, InvIntTail<Lum8u>, C3<Lum8u>, BGR3<Lum8u>>)
LUM_MODEL_FN(lumiLUVToRGB_8u_AC4R, Lum8u, 1, Rows<Inv8uBlock<true>, InvIntTail<Lum8u>, AC4<Lum8u>, AC4<Lum8u>>)
// 16u and 16s: steps in samples.
LUM_MODEL_FN(lumiLUVToRGB_16u_C3R, Lum16u, 2, Rows<Inv16Block<Lum16u>, InvIntTail<Lum16u>, C3<Lum16u>, C3<Lum16u>>)
LUM_MODEL_FN(lumiLUVToRGB_16u_AC4R, Lum16u, 2, Rows<Inv16Block<Lum16u>, InvIntTail<Lum16u>, AC4<Lum16u>, AC4<Lum16u>>)
LUM_MODEL_FN(lumiLUVToRGB_16s_C3R, Lum16s, 2, Rows<Inv16Block<Lum16s>, InvIntTail<Lum16s>, C3<Lum16s>, C3<Lum16s>>)
LUM_MODEL_FN(lumiLUVToRGB_16s_AC4R, Lum16s, 2, Rows<Inv16Block<Lum16s>, InvIntTail<Lum16s>, AC4<Lum16s>, AC4<Lum16s>>)
// 32f: C3 and BGR blocks without clamp and a clamping tail, byte steps as they are
// (as the forward 32f forms take them); AC4 the clamping rule on every pixel, steps in samples.
LUM_MODEL_FN(lumiLUVToRGB_32f_C3R, Lum32f, 1, WideRows<Inv32fBlock, Inv32fTail, C3<Lum32f>, C3<Lum32f>>)
LUM_MODEL_FN(lumiLUVToBGR_32f_C3R, Lum32f, 1, WideRows<Inv32fBlock, Inv32fTail, C3<Lum32f>, BGR3<Lum32f>>)
LUM_MODEL_FN(lumiLUVToRGB_32f_AC4R, Lum32f, 4, Rows<NoBlockForm, Inv32fTail, AC4<Lum32f>, AC4<Lum32f>>)
