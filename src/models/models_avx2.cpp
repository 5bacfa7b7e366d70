// The eight-pixel AVX2 blocks of the three-channel 8u and 32f XYZ and LUV forms.
#include "models/luv_forms.h"
#include "models/model_frame_avx2.h"
#include "models/xyz_forms.h"

#if LUM_SIMD_SSE && defined(__AVX2__)
namespace lum::models::wide {

template <class T>
using RGB = layout::RGBOf<T>;
template <class T>
using BGR = layout::BGROf<T>;

template int blocks<xyz::Fwd8uBlock, RGB<Lum8u>, RGB<Lum8u>>(const uint8_t*, uint8_t*, int);
template int blocks<xyz::Inv8uBlock, RGB<Lum8u>, RGB<Lum8u>>(const uint8_t*, uint8_t*, int);
template int blocks<xyz::ToXYZ32f, RGB<Lum32f>, RGB<Lum32f>>(const uint8_t*, uint8_t*, int);
template int blocks<xyz::ToRGB32f, RGB<Lum32f>, RGB<Lum32f>>(const uint8_t*, uint8_t*, int);
template int blocks<luv::FwdBlock<Lum8u>, RGB<Lum8u>, RGB<Lum8u>>(const uint8_t*, uint8_t*, int);
template int blocks<luv::FwdBlock<Lum8u>, BGR<Lum8u>, RGB<Lum8u>>(const uint8_t*, uint8_t*, int);
template int blocks<luv::FwdBlock<Lum32f>, RGB<Lum32f>, RGB<Lum32f>>(const uint8_t*, uint8_t*, int);
template int blocks<luv::FwdBlock<Lum32f>, BGR<Lum32f>, RGB<Lum32f>>(const uint8_t*, uint8_t*, int);
template int blocks<luv::Inv8uBlock<false>, RGB<Lum8u>, RGB<Lum8u>>(const uint8_t*, uint8_t*, int);
template int blocks<luv::Inv8uBlock<false>, RGB<Lum8u>, BGR<Lum8u>>(const uint8_t*, uint8_t*, int);
template int blocks<luv::Inv32fBlock, RGB<Lum32f>, RGB<Lum32f>>(const uint8_t*, uint8_t*, int);
template int blocks<luv::Inv32fBlock, RGB<Lum32f>, BGR<Lum32f>>(const uint8_t*, uint8_t*, int);

}  // namespace lum::models::wide
#endif
