// The wide blocks of the BT.709 conversions: the vector groups of
// bt709_kernels.h and the generic row kernel instantiated with lanes::Avx2 and
// the 256-bit layout adaptors, for the forms and layouts the functions use.
#include "frame/kernel_avx2.h"
#include "lumachroma/bt709_layouts_avx2.h"

#if LUM_SIMD_SSE && defined(__AVX2__)

namespace lum::bt709::wide {

using O = lanes::Avx2;

template <class Form, class Src, class Dst, Alpha A>
int inverse(const SrcPlanes& s, const DstPlanes& d, int n, int aval) {
  return inverseGroups<O, Io256, Form, Src, Dst, A>(s, d, 0, n, aval);
}
template <class Form, class Dst, Alpha A>
int inverseCells(const SrcPlanes& s0, const SrcPlanes& s1, const DstPlanes& d0, const DstPlanes& d1, int n,
                 int aval) {
  return inverseCellGroups<O, Io256, Form, Dst, A>(s0, s1, d0, d1, 0, n, aval);
}
template <class Block, class Src, class Sink>
int cells(const SrcPlanes& s0, const SrcPlanes& s1, uint8_t* y0, uint8_t* y1, const DstPlanes& c, int n) {
  return cellGroups<O, Io256, Block, Src, Sink>(s0, s1, y0, y1, c, 0, n);
}
template <class Block, class Src, bool Al>
int pairs(const SrcPlanes& s, uint8_t* d, int n) {
  return pairGroups<O, Io256, Block, Src, Al>(s, d, 0, n);
}

// The combinations the functions use.
using namespace lum::form;
namespace L = lum::layout;
template int inverseCells<I7Neg, L::BGR, Alpha::Keep>(const SrcPlanes&, const SrcPlanes&, const DstPlanes&,
                                                     const DstPlanes&, int, int);
template int inverseCells<IHPos, L::BGRA, Alpha::Aval>(const SrcPlanes&, const SrcPlanes&, const DstPlanes&,
                                                      const DstPlanes&, int, int);
template int inverse<IHNeg, CbYCrC2<false>, L::BGR, Alpha::Keep>(const SrcPlanes&, const DstPlanes&, int, int);
template int inverse<IHNeg, CbYCrC2<false>, L::BGRA, Alpha::Aval>(const SrcPlanes&, const DstPlanes&, int, int);
template int inverse<IHNeg, CbYCrC2<true>, L::BGRA, Alpha::Aval>(const SrcPlanes&, const DstPlanes&, int, int);
template int cells<Blk7Cell, L::BGR, PlanarCbCr>(const SrcPlanes&, const SrcPlanes&, uint8_t*, uint8_t*,
                                                 const DstPlanes&, int);
template int cells<Blk7Cell, L::BGRA, PlanarCbCr>(const SrcPlanes&, const SrcPlanes&, uint8_t*, uint8_t*,
                                                  const DstPlanes&, int);
template int cells<Blk7Cell, L::BGR, InterleavedCbCr>(const SrcPlanes&, const SrcPlanes&, uint8_t*, uint8_t*,
                                                      const DstPlanes&, int);
template int cells<Blk7Cell, L::BGRA, InterleavedCbCr>(const SrcPlanes&, const SrcPlanes&, uint8_t*, uint8_t*,
                                                       const DstPlanes&, int);
template int cells<BlkHCell, L::BGRA, PlanarCbCr>(const SrcPlanes&, const SrcPlanes&, uint8_t*, uint8_t*,
                                                  const DstPlanes&, int);
template int pairs<BlkHPair, L::BGR, false>(const SrcPlanes&, uint8_t*, int);
template int pairs<BlkHPairSigned, L::BGRA, false>(const SrcPlanes&, uint8_t*, int);
template int pairs<BlkHPairSigned, BGRAAligned, true>(const SrcPlanes&, uint8_t*, int);

}  // namespace lum::bt709::wide

namespace lum::wide16 {
using namespace lum::form;
namespace L = lum::layout;
template void image<Wide<I7Neg>, L::P3, L::BGR, Alpha::Keep>(LumSize, const SrcPlanes&, const DstPlanes&, int,
                                                            const RowCtx&, RowRest);
template void image<Wide<I7Pos>, L::P3, L::BGRA, Alpha::Aval>(LumSize, const SrcPlanes&, const DstPlanes&, int,
                                                             const RowCtx&, RowRest);
}  // namespace lum::wide16

#endif
