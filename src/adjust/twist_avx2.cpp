// Colour twist: the 256-bit runs of the three-channel and the integer planar forms,
// the region kernel instantiated with lanes::Avx2 and its eight-pixel moves.
// Entered only where useWide() holds, asked once per call.
#include "adjust/twist_layouts_avx2.h"

#if LUM_SIMD_SSE && defined(__AVX2__)
namespace lum::twist {

template <class T, Shape S, bool Linear, bool Stream>
void regionWide(const Region<T>& g, const Matrix& m) {
  regionOn<lanes::Avx2, T, S, Linear, Stream>(g, m);
}
template void regionWide<Lum32f, Shape::C3, false, false>(const Region<Lum32f>&, const Matrix&);
template void regionWide<Lum32f, Shape::C3, false, true>(const Region<Lum32f>&, const Matrix&);
template void regionWide<Lum8u, Shape::C3, false, false>(const Region<Lum8u>&, const Matrix&);
template void regionWide<Lum16u, Shape::C3, false, false>(const Region<Lum16u>&, const Matrix&);
template void regionWide<Lum16s, Shape::C3, false, false>(const Region<Lum16s>&, const Matrix&);
template void regionWide<Lum8u, Shape::P3, false, false>(const Region<Lum8u>&, const Matrix&);
template void regionWide<Lum16u, Shape::P3, false, false>(const Region<Lum16u>&, const Matrix&);
template void regionWide<Lum16s, Shape::P3, false, false>(const Region<Lum16s>&, const Matrix&);

}  // namespace lum::twist
#endif
