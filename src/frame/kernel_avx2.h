// The sixteen-lane row driver of the generic row kernel (kernel.h), for the
// *_avx2.cpp files. Each such file instantiates wide16::image explicitly for
// the forms and layouts of its functions; BlockThenTail::image calls it only
// after the processor check of the call, and it covers the same pixels with
// the same lanes as the eight-lane blocks and the scalar twins.
#pragma once

#include "frame/kernel.h"
#include "frame/lanes_avx2.h"
#include "frame/layouts_avx2.h"

#if LUM_SIMD_SSE && defined(__AVX2__)
namespace lum::wide16 {
namespace {
// Form over pixels [0, n) of one row, n a multiple of 16. The planes come by
// value, so their pointers stay in registers whatever the stores may alias.
template <class Form, class Src, class Dst, Alpha A>
inline void row(const SrcPlanes s, const DstPlanes d, int n, typename lanes::Avx2::V aval) {
  using O = lanes::Avx2;
  using V = O::V;
  constexpr layout16::Order Ord = layout16::bestOrder<Src, Dst>();
  // Forms that start from samples << 8 take them so from the loads.
  constexpr bool kHigh = requires(const V* i, V* o) { Form::template vblockHigh<O>(i, o); };
  for (int x = 0; x < n; x += 16) {
    V in[4], out[4];
    layout16::Of<Src>::template load<Ord, A == Alpha::Source, kHigh>(s, x, in);
    if constexpr (kHigh) Form::template vblockHigh<O>(in, out);
    else Form::template vblock<O>(in, out);
    if constexpr (A == Alpha::Zero) out[3] = O::zero();
    if constexpr (A == Alpha::Aval) out[3] = aval;
    if constexpr (A == Alpha::Source) out[3] = in[3];
    layout16::Of<Dst>::template store<Ord, A != Alpha::Keep>(d, x, out);
  }
}
}  // namespace

template <class Form, class Src, class Dst, Alpha A>
void image(LumSize roi, const SrcPlanes& src, const DstPlanes& dst, int leadEnd, const RowCtx& c, RowRest rest) {
  const int n = leadEnd & ~15;
  const typename lanes::Avx2::V aval = lanes::Avx2::set(c.aval);
  for (int y = 0; y < roi.height; ++y) {
    // Row y of every plane in use, as rowAt() makes it.
    SrcPlanes s = src;
    DstPlanes d = dst;
    for (int i = 0; i < 4; ++i) {
      if (s.p[i]) s.p[i] += std::ptrdiff_t(y) * s.step[i];
      if (d.p[i]) d.p[i] += std::ptrdiff_t(y) * d.step[i];
    }
    row<Form, Src, Dst, A>(s, d, n, aval);
    if (n < roi.width) rest(s, d, n, roi.width, c);
  }
}

}  // namespace lum::wide16
#endif
