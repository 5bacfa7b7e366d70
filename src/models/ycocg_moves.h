// Lane moves of the YCoCg groups on the 128-bit set: eight pixels between
// memory and one vector of 16-bit lanes per channel (two vectors of 32-bit
// lanes for 32s planes). They move samples and do no arithmetic; the 8u
// stores narrow with unsigned saturation, which is the 8u clamp.
#pragma once

#include "frame/layouts.h"
#include "models/ycocg_forms.h"

#if LUM_SIMD_SSE
namespace lum::ycocg {

// pshufb masks that spread three vectors of eight 16-bit lanes over the three
// vectors of eight 3-sample pixels: output j takes channel c's bytes where mask[j][c] is not Z.
struct Merge3w {
  int8_t mask[3][3][16];
  constexpr Merge3w() : mask{} {
    for (int j = 0; j < 3; ++j)
      for (int c = 0; c < 3; ++c)
        for (int i = 0; i < 16; ++i) {
          const int e = 8 * j + i / 2;
          mask[j][c][i] = e % 3 == c ? int8_t(2 * (e / 3) + (i & 1)) : layout::detail::Z;
        }
  }
};
alignas(16) inline constexpr Merge3w kMerge3w{};

struct Moves128 {
  using V = __m128i;
  // Eight N-sample pixels into their first three samples' lanes.
  template <class T, int N>
  static void split(const T* p, V m[3]) {
    if constexpr (sizeof(T) == 1) {
      if constexpr (N == 3) {
        layout::detail::deinterleave3(p, m);
      } else {
        V t[4];
        layout::detail::deinterleave4(p, t);
        for (int k = 0; k < 3; ++k) m[k] = t[k];
      }
    } else {
      layout::channels::words<N>(reinterpret_cast<const uint16_t*>(p), m);
    }
  }
  // Sixteen 3-byte pixels into three vectors of byte lanes.
  static void bytes3(const uint8_t* p, V m[3]) { layout::channels::bytes<3>(p, m); }
  // Lanes m[0..N-1] interleaved into eight N-sample pixels.
  template <class T, int N>
  static void merge(T* p, const V m[4]) {
    if constexpr (sizeof(T) == 1) {
      if constexpr (N == 3) layout::detail::interleave3(p, m);
      else layout::detail::interleave4(p, m);
    } else if constexpr (N == 3) {
      for (int j = 0; j < 3; ++j) {
        V o = _mm_setzero_si128();
        for (int c = 0; c < 3; ++c)
          o = _mm_or_si128(o, _mm_shuffle_epi8(m[c], _mm_load_si128(reinterpret_cast<const V*>(kMerge3w.mask[j][c]))));
        _mm_storeu_si128(reinterpret_cast<V*>(p) + j, o);
      }
    } else {
      const V lo01 = _mm_unpacklo_epi16(m[0], m[1]), lo23 = _mm_unpacklo_epi16(m[2], m[3]);
      const V hi01 = _mm_unpackhi_epi16(m[0], m[1]), hi23 = _mm_unpackhi_epi16(m[2], m[3]);
      V* q = reinterpret_cast<V*>(p);
      _mm_storeu_si128(q, _mm_unpacklo_epi32(lo01, lo23));
      _mm_storeu_si128(q + 1, _mm_unpackhi_epi32(lo01, lo23));
      _mm_storeu_si128(q + 2, _mm_unpacklo_epi32(hi01, hi23));
      _mm_storeu_si128(q + 3, _mm_unpackhi_epi32(hi01, hi23));
    }
  }
  // Eight samples of one plane.
  static void load(const Lum8u* p, V& v) { v = layout::detail::load8x8(p); }
  static void store(Lum8u* p, V v) { layout::detail::store8x8(p, v); }
  static void load(const Lum16s* p, V& v) { v = _mm_loadu_si128(reinterpret_cast<const V*>(p)); }
  static void store(Lum16s* p, V v) { _mm_storeu_si128(reinterpret_cast<V*>(p), v); }
  static void load(const Lum32s* p, W<lanes::Sse>& v) {
    v.lo = _mm_loadu_si128(reinterpret_cast<const V*>(p));
    v.hi = _mm_loadu_si128(reinterpret_cast<const V*>(p + 4));
  }
  static void store(Lum32s* p, W<lanes::Sse> v) {
    _mm_storeu_si128(reinterpret_cast<V*>(p), v.lo);
    _mm_storeu_si128(reinterpret_cast<V*>(p + 4), v.hi);
  }
};

}  // namespace lum::ycocg
#endif
