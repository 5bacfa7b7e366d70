// Sixteen-lane (AVX2) blocks of the 8u HLS and HSV conversions: the generic
// wide row driver of kernel_avx2.h, instantiated for the form and layouts of
// each function. Built for AVX2 and entered only after the processor check of
// the call; the lanes are those of the eight-lane blocks and of the scalar twins.
#include "frame/kernel_avx2.h"
#include "models/hue_forms.h"

#if LUM_SIMD_SSE && defined(__AVX2__)
namespace lum::wide16 {

namespace L = lum::layout;
using namespace lum::hue;

#define LUM_HUE_WIDE(Form, Src, Dst, A)                                                                       \
  template void image<Wide<Form>, Src, Dst, Alpha::A>(LumSize, const SrcPlanes&, const DstPlanes&, int, const RowCtx&, \
                                                      RowRest)

LUM_HUE_WIDE(FwdBlock<Lum8u>, L::RGB, L::RGB, Keep);
LUM_HUE_WIDE(FwdBlock<Lum8u>, L::RGBA, L::RGBA, Keep);
LUM_HUE_WIDE(InvBlock<Lum8u>, L::RGB, L::RGB, Keep);
LUM_HUE_WIDE(InvBlock<Lum8u>, L::RGBA, L::RGBA, Keep);
LUM_HUE_WIDE(HsvFwd8u, L::RGB, L::RGB, Keep);
LUM_HUE_WIDE(HsvFwd8u, L::RGBA, L::RGBA, Keep);
LUM_HUE_WIDE(HsvInv<Lum8u>, L::RGB, L::RGB, Keep);
LUM_HUE_WIDE(HsvInv<Lum8u>, L::RGBA, L::RGBA, Keep);
// BGR family
LUM_HUE_WIDE(BgrFwdBlock, L::BGRA, L::RGBA, Keep);
LUM_HUE_WIDE(BgrFwdBlock, L::P3, L::P3, Keep);
LUM_HUE_WIDE(BgrFwdBlock, L::P4, L::P4, Source);
LUM_HUE_WIDE(BgrFwdBlock, L::BGR, L::P3, Keep);
LUM_HUE_WIDE(BgrFwdBlock, L::P3, L::RGB, Keep);
LUM_HUE_WIDE(BgrFwdBlock, L::BGRA, L::P4, Source);
LUM_HUE_WIDE(BgrFwdBlock, L::P4, L::RGBA, Source);
LUM_HUE_WIDE(BgrInvBlock, L::P3, L::P3, Keep);
LUM_HUE_WIDE(BgrInvBlock, L::P4, L::P4, Source);
LUM_HUE_WIDE(BgrInvBlock, L::RGB, L::P3, Keep);
LUM_HUE_WIDE(BgrInvBlock, L::P3, L::BGR, Keep);
LUM_HUE_WIDE(BgrInvBlock, L::RGBA, L::P4, Source);
LUM_HUE_WIDE(BgrInvBlock, L::P4, L::BGRA, Source);

#undef LUM_HUE_WIDE

}  // namespace lum::wide16
#endif
