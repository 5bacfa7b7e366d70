// The sixteen-lane block loop of the generic row kernel (kernel.h), for the
// *_avx2.cpp files. Each such file instantiates wide16::blocks explicitly for the
// forms and layouts of its functions; the kernel calls it only after the
// processor check of the call (RowCtx::wide), and it covers the same pixels
// with the same lanes as the eight-lane blocks and the scalar twins.
#pragma once

#include "frame/kernel.h"
#include "frame/lanes_avx2.h"
#include "frame/layouts_avx2.h"

#if LUM_SIMD_SSE && defined(__AVX2__)
namespace lum::wide16 {

template <class Form, class Src, class Dst, Alpha A>
int blocks(const SrcPlanes& src, const DstPlanes& dst, int x0, int x1, const RowCtx& c) {
  using O = lanes::Avx2;
  using V = O::V;
  // Local copies: the stores may alias anything, and the row pointers and
  // constants should stay in registers through the loop.
  const SrcPlanes s = src;
  const DstPlanes d = dst;
  const V aval = O::set(c.aval);
  int x = x0;
  for (; x + 16 <= x1; x += 16) {
    V in[4], out[4];
    layout16::Of<Src>::template load<A == Alpha::Source>(s, x, in);
    Form::template vblock<O>(in, out);
    if constexpr (A == Alpha::Zero) out[3] = O::zero();
    if constexpr (A == Alpha::Aval) out[3] = aval;
    if constexpr (A == Alpha::Source) out[3] = in[3];
    layout16::Of<Dst>::template store<A != Alpha::Keep>(d, x, out);
  }
  return x;
}

}  // namespace lum::wide16
#endif
