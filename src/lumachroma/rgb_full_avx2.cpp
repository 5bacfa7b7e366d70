// Sixteen-lane (AVX2) blocks of the RGB <-> YCbCr and RGB <-> YUV conversions
// at full resolution: the generic wide row driver of kernel_avx2.h, instantiated for
// the form and layouts of each function. Built for AVX2 and entered only after
// the processor check of the call; the lanes are those of the eight-lane
// blocks and of the scalar twins.
#include "frame/kernel_avx2.h"
#include "lumachroma/forms.h"

#if LUM_SIMD_SSE && defined(__AVX2__)
namespace lum::wide16 {

using namespace lum::form;
namespace L = lum::layout;

#define LUM_WIDE_BLOCKS(Form, Src, Dst, A)                                                                   \
  template void image<Wide<Form>, Src, Dst, Alpha::A>(LumSize, const SrcPlanes&, const DstPlanes&, int, const RowCtx&, \
                                                      RowRest)

// RGB -> YCbCr
LUM_WIDE_BLOCKS(FY1, L::RGB, L::RGB, Keep);
LUM_WIDE_BLOCKS(FY1, L::RGBA, L::RGBA, Zero);
LUM_WIDE_BLOCKS(FY2, L::RGB, L::P3, Keep);
LUM_WIDE_BLOCKS(FY2, L::RGBA, L::P3, Keep);
LUM_WIDE_BLOCKS(FY2, L::P3, L::P3, Keep);
// YCbCr -> RGB
LUM_WIDE_BLOCKS(IY1, L::RGB, L::RGB, Keep);
LUM_WIDE_BLOCKS(SY3, L::RGBA, L::RGBA, Keep);
LUM_WIDE_BLOCKS(IY3, L::P3, L::P3, Keep);
LUM_WIDE_BLOCKS(IY1, L::P3, L::RGB, Keep);
LUM_WIDE_BLOCKS(IY2, L::P3, L::RGBA, Aval);
LUM_WIDE_BLOCKS(IY1, L::P3, L::BGR, Keep);
LUM_WIDE_BLOCKS(IY2, L::P3, L::BGRA, Aval);
// RGB -> YUV
LUM_WIDE_BLOCKS(FU1, L::RGB, L::RGB, Keep);
LUM_WIDE_BLOCKS(TU3, L::RGBA, L::RGBA, Keep);
LUM_WIDE_BLOCKS(FU1, L::RGB, L::P3, Keep);
LUM_WIDE_BLOCKS(FU1, L::P3, L::P3, Keep);
LUM_WIDE_BLOCKS(FU2, L::RGBA, L::P4, Source);
// YUV -> RGB
LUM_WIDE_BLOCKS(IU1, L::RGB, L::RGB, Keep);
LUM_WIDE_BLOCKS(SU1, L::RGBA, L::RGBA, Keep);
LUM_WIDE_BLOCKS(SU2, L::P3, L::P3, Keep);
LUM_WIDE_BLOCKS(IU2, L::P3, L::RGB, Keep);
LUM_WIDE_BLOCKS(IU3, L::RGB, L::RGBA, Aval);

#undef LUM_WIDE_BLOCKS

}  // namespace lum::wide16
#endif
