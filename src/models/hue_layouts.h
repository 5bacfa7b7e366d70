// Layout adaptor of the 32f hexcone conversions: three interleaved float
// channels moved four pixels at a time by shuffles on the SSE set (the same
// samples as the generic C3 adaptor, which every other set keeps).
#pragma once

#include <type_traits>

#include "frame/lanes.h"
#include "frame/layouts.h"

namespace lum::hue {

struct Rgb32f : layout::RGBOf<Lum32f> {
  using Base = layout::RGBOf<Lum32f>;
  using Base::load;
  using Base::store;
  template <class O, class L>
  static void loadLanes(const SrcPlanes& s, int x, L o[4]) {
#if LUM_SIMD_SSE
    if constexpr (std::is_same_v<O, lanes::Sse>) {
      layout::channels::floats<3>(layout::samples<Lum32f>(s.p[0]) + 3 * std::ptrdiff_t(x), o);
      o[3] = _mm_setzero_ps();
      return;
    }
#endif
    Base::template loadLanes<O>(s, x, o);
  }
  template <class O, bool WriteAlpha, class L>
  static void storeLanes(const DstPlanes& d, int x, const L o[4]) {
#if LUM_SIMD_SSE
    if constexpr (std::is_same_v<O, lanes::Sse>) {
      float* p = layout::samples<Lum32f>(d.p[0]) + 3 * std::ptrdiff_t(x);
      const __m128 r = o[0], g = o[1], b = o[2];
      const __m128 rgLo = _mm_unpacklo_ps(r, g), rgHi = _mm_unpackhi_ps(r, g);  // r0 g0 r1 g1, r2 g2 r3 g3
      const __m128 u = _mm_shuffle_ps(b, r, _MM_SHUFFLE(1, 1, 0, 0));          // b0 b0 r1 r1
      const __m128 v = _mm_shuffle_ps(g, b, _MM_SHUFFLE(1, 1, 1, 1));          // g1 g1 b1 b1
      const __m128 w = _mm_shuffle_ps(b, rgHi, _MM_SHUFFLE(3, 2, 3, 2));       // b2 b3 r3 g3
      _mm_storeu_ps(p, _mm_shuffle_ps(rgLo, u, _MM_SHUFFLE(2, 0, 1, 0)));      // r0 g0 b0 r1
      _mm_storeu_ps(p + 4, _mm_shuffle_ps(v, rgHi, _MM_SHUFFLE(1, 0, 2, 0)));  // g1 b1 r2 g2
      _mm_storeu_ps(p + 8, _mm_shuffle_ps(w, w, _MM_SHUFFLE(1, 3, 2, 0)));     // b2 r3 g3 b3
      return;
    }
#endif
    Base::template storeLanes<O, WriteAlpha>(d, x, o);
  }
};

}  // namespace lum::hue
