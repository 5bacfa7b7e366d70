// The 256-bit blocks of the RGB -> Lab forms: the block forms of lab_forms.h
// run eight pixels at a time on lanes::Avx2.
#include "frame/lanes_avx2.h"
#include "models/lab_forms.h"
#include "models/lab_wide.h"

#if LUM_SIMD_SSE && defined(__AVX2__)
namespace lum::labycc {

template <class Form, class Src, class Dst>
int wideBlocks(const uint8_t* s, uint8_t* d, int end) {
  return models::runVectors<lanes::Avx2, Form, Src, Dst>(s, d, 0, end);
}

using layout::BGROf;
using layout::RGBOf;
template int wideBlocks<lab::Fwd8u<false, true>, RGBOf<Lum8u>, RGBOf<Lum8u>>(const uint8_t*, uint8_t*, int);
template int wideBlocks<lab::Fwd8u<false, true>, BGROf<Lum8u>, RGBOf<Lum8u>>(const uint8_t*, uint8_t*, int);
template int wideBlocks<lab::Fwd8u<true, true>, BGROf<Lum8u>, RGBOf<Lum16u>>(const uint8_t*, uint8_t*, int);
template int wideBlocks<lab::Fwd32f, RGBOf<Lum32f>, RGBOf<Lum32f>>(const uint8_t*, uint8_t*, int);
template int wideBlocks<lab::Fwd32f, BGROf<Lum32f>, RGBOf<Lum32f>>(const uint8_t*, uint8_t*, int);

}  // namespace lum::labycc
#endif
