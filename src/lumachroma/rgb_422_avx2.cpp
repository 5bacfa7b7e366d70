// Sixteen-lane (AVX2) blocks of the RGB <-> 4:2:2 conversions: the forward pair
// steps and the generic wide row driver of kernel_avx2.h, instantiated for the
// form and layouts of each function. Built for AVX2 and entered only after the
// processor check of the call; the lanes are those of the 128-bit blocks and
// of the scalar twins.
#include "lumachroma/rgb_422_layouts_avx2.h"

#if LUM_SIMD_SSE && defined(__AVX2__)
namespace lum {

using namespace lum::form;
namespace L = lum::layout;
namespace K = lum::layout422;

#define LUM_WIDE_PAIRS(Form, Src, Dst)                                                      \
  template int wide422::pairs<Form, Src, Dst>(const SrcPlanes&, const DstPlanes&, int); \
  template void wide422::image<Form, Src, Dst>(LumSize, const SrcPlanes&, const DstPlanes&, int, wide422::RowRest)
#define LUM_WIDE_REPLICATED(Form, Src, Dst, A)                                                            \
  template void wide16::image<Form, Src, Dst, Alpha::A>(LumSize, const SrcPlanes&, const DstPlanes&, int, \
                                                        const RowCtx&, wide16::RowRest)

using FY1FC1 = PairForm<FY1, FC1>;
using K::AlignedCbYCr422;

// RGB -> 4:2:2
LUM_WIDE_PAIRS(FY1FC1, L::RGB, K::YCbCr422);
LUM_WIDE_PAIRS(FY1FC1, L::RGB, K::YCrCb422);
LUM_WIDE_PAIRS(FY1FC1, L::BGR, K::YCbCr422);
LUM_WIDE_PAIRS(FY1FC1, L::BGRA, K::YCbCr422);
LUM_WIDE_PAIRS(FY1FC1, L::P3, K::YCbCr422);
LUM_WIDE_PAIRS(FY1FC1, L::P3, K::YCrCb422);
LUM_WIDE_PAIRS(FY1FC1, L::RGB, K::P3h);
LUM_WIDE_PAIRS(FY1FC1, L::BGR, K::P3h);
LUM_WIDE_PAIRS(FY1FC1, L::BGRA, K::P3h);
LUM_WIDE_PAIRS(PairHighMul, L::BGRA, K::CbYCr422);
LUM_WIDE_PAIRS(PairHighMul, L::BGRA, AlignedCbYCr422);
// 4:2:2 -> RGB
LUM_WIDE_REPLICATED(IY1, K::YCbCr422, L::RGB, Keep);
LUM_WIDE_REPLICATED(IY1, K::YCbCr422, L::BGR, Keep);
LUM_WIDE_REPLICATED(IY1, K::CbYCr422, L::RGB, Keep);
LUM_WIDE_REPLICATED(IY1, K::P3h, L::RGB, Keep);
LUM_WIDE_REPLICATED(IY1, K::P3h, L::BGR, Keep);
LUM_WIDE_REPLICATED(IY2, K::CbYCr422, L::BGRA, Aval);
LUM_WIDE_REPLICATED(IY2, AlignedCbYCr422, L::BGRA, Aval);
LUM_WIDE_REPLICATED(IY1Bgra, K::YCbCr422, L::BGRA, Aval);

#undef LUM_WIDE_PAIRS
#undef LUM_WIDE_REPLICATED

}  // namespace lum
#endif
