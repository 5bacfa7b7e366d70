// The 256-bit groups of the gray forms: their lane-set blocks instantiated with
// lanes::Avx2 and the 256-bit layout adaptors. Entered only where useWide()
// holds, asked once per call.
#include "lumachroma/gray_layouts_avx2.h"

#if LUM_SIMD_SSE && defined(__AVX2__)
namespace lum::gray::avx2 {

template <int N, class Form, class T>
int groups(const Form& f, const T* s, T* d, int n) {
  return f.template groups<lanes::Avx2, Io256, N>(s, d, 0, n);
}
template int groups<3>(const GrayQ15Block&, const Lum8u*, Lum8u*, int);
template int groups<4>(const GrayQ15Block&, const Lum8u*, Lum8u*, int);
template int groups<3>(const GrayRoundF32<Lum16u>&, const Lum16u*, Lum16u*, int);
template int groups<4>(const GrayRoundF32<Lum16u>&, const Lum16u*, Lum16u*, int);
template int groups<3>(const GrayRoundF32<Lum16s>&, const Lum16s*, Lum16s*, int);
template int groups<4>(const GrayRoundF32<Lum16s>&, const Lum16s*, Lum16s*, int);
template int groups<3>(const GrayF32&, const Lum32f*, Lum32f*, int);
template int groups<4>(const GrayF32&, const Lum32f*, Lum32f*, int);

template <class T, int N>
int spread(const T* s, T* d, int n, const GrayToColor<T, N>& f) {
  return f.template groups<Io256>(s, d, 0, n);
}
template int spread<Lum8u, 3>(const Lum8u*, Lum8u*, int, const GrayToColor<Lum8u, 3>&);
template int spread<Lum8u, 4>(const Lum8u*, Lum8u*, int, const GrayToColor<Lum8u, 4>&);
template int spread<Lum16u, 3>(const Lum16u*, Lum16u*, int, const GrayToColor<Lum16u, 3>&);
template int spread<Lum16u, 4>(const Lum16u*, Lum16u*, int, const GrayToColor<Lum16u, 4>&);
template int spread<Lum32f, 3>(const Lum32f*, Lum32f*, int, const GrayToColor<Lum32f, 3>&);
template int spread<Lum32f, 4>(const Lum32f*, Lum32f*, int, const GrayToColor<Lum32f, 4>&);

int luma422(const uint8_t* s, uint8_t* d, int n) { return LumaOf422::groups<Io256>(s, d, 0, n); }

}  // namespace lum::gray::avx2
#endif
