// Sixteen-pixel groups of the YCoCg flavours: the transforms of
// ycocg_forms.h on lanes::Avx2, with the 256-bit lane moves below. Built for
// AVX2 and entered only after the processor check of the call.
#include "frame/lanes_avx2.h"
#include "frame/layouts_avx2.h"
#include "models/ycocg_forms.h"
#include "models/ycocg_moves.h"
#include "models/ycocg_wide.h"

#if LUM_SIMD_SSE && defined(__AVX2__)
namespace lum::ycocg {
namespace {

using V = __m256i;

inline V loadu(const void* p) { return _mm256_loadu_si256(static_cast<const V*>(p)); }
inline void storeu(void* p, V v) { _mm256_storeu_si256(static_cast<V*>(p), v); }

// Lane moves of sixteen pixels, in pixel order (pixels 0..7 in the low half).
struct Moves256 {
  template <class T, int N>
  static void split(const T* p, V m[3]) {
    if constexpr (sizeof(T) == 1) {
      if constexpr (N == 3) {
        layout16::split3<layout16::Order::Natural, false>(p, m);
      } else {
        V t[4];
        layout16::split4<layout16::Order::Natural, false, false>(p, t);
        for (int k = 0; k < 3; ++k) m[k] = t[k];
      }
    } else {
      layout16::channels::words<N>(reinterpret_cast<const uint16_t*>(p), m);
    }
  }
  // Thirty-two 3-byte pixels into three vectors of byte lanes.
  static void bytes3(const uint8_t* p, V m[3]) { layout16::channels::bytes<3>(p, m); }
  template <class T, int N>
  static void merge(T* p, const V m[4]) {
    if constexpr (sizeof(T) == 1) {
      if constexpr (N == 3) {
        layout16::merge3(p, m[0], m[1], m[2]);
      } else {
        V m0, m1;
        layout16::merge4<layout16::Order::Natural>(m[0], m[1], m[2], m[3], m0, m1);
        storeu(p, m0);
        storeu(p + 32, m1);
      }
    } else if constexpr (N == 3) {
      // Each half spreads its eight pixels into 48 bytes; the halves' thirds meet in memory order.
      V o[3];
      for (int j = 0; j < 3; ++j) {
        o[j] = _mm256_setzero_si256();
        for (int c = 0; c < 3; ++c)
          o[j] = _mm256_or_si256(o[j], _mm256_shuffle_epi8(m[c], _mm256_broadcastsi128_si256(_mm_load_si128(
                                                                     reinterpret_cast<const __m128i*>(kMerge3w.mask[j][c])))));
      }
      storeu(p, _mm256_permute2x128_si256(o[0], o[1], 0x20));
      storeu(p + 16, _mm256_permute2x128_si256(o[2], o[0], 0x30));
      storeu(p + 32, _mm256_permute2x128_si256(o[1], o[2], 0x31));
    } else {
      const V lo01 = _mm256_unpacklo_epi16(m[0], m[1]), lo23 = _mm256_unpacklo_epi16(m[2], m[3]);
      const V hi01 = _mm256_unpackhi_epi16(m[0], m[1]), hi23 = _mm256_unpackhi_epi16(m[2], m[3]);
      const V a = _mm256_unpacklo_epi32(lo01, lo23), b = _mm256_unpackhi_epi32(lo01, lo23);
      const V c = _mm256_unpacklo_epi32(hi01, hi23), d = _mm256_unpackhi_epi32(hi01, hi23);
      storeu(p, _mm256_permute2x128_si256(a, b, 0x20));
      storeu(p + 16, _mm256_permute2x128_si256(c, d, 0x20));
      storeu(p + 32, _mm256_permute2x128_si256(a, b, 0x31));
      storeu(p + 48, _mm256_permute2x128_si256(c, d, 0x31));
    }
  }
  static void load(const Lum8u* p, V& v) { v = _mm256_cvtepu8_epi16(_mm_loadu_si128(reinterpret_cast<const __m128i*>(p))); }
  static void store(Lum8u* p, V v) { layout16::store16(p, layout16::lo(layout16::narrow2<layout16::Order::Natural>(v, v))); }
  static void load(const Lum16s* p, V& v) { v = loadu(p); }
  static void store(Lum16s* p, V v) { storeu(p, v); }
  // 32-bit planes: W holds pixels 0..3 | 8..11 in lo and 4..7 | 12..15 in hi, as widen() splits.
  static void load(const Lum32s* p, W<lanes::Avx2>& v) {
    const V a = loadu(p), b = loadu(p + 8);
    v.lo = _mm256_permute2x128_si256(a, b, 0x20);
    v.hi = _mm256_permute2x128_si256(a, b, 0x31);
  }
  static void store(Lum32s* p, W<lanes::Avx2> v) {
    storeu(p, _mm256_permute2x128_si256(v.lo, v.hi, 0x20));
    storeu(p + 8, _mm256_permute2x128_si256(v.lo, v.hi, 0x31));
  }
};

}  // namespace

namespace wide {
template <class C>
int groups256(const SrcPlanes& s, const DstPlanes& d, int width, int aval) {
  return C::template groups<lanes::Avx2, Moves256>(s, d, 0, width, aval);
}

#define LUM_YCOCG_WIDE(...) template int groups256<__VA_ARGS__>(const SrcPlanes&, const DstPlanes&, int, int)
LUM_YCOCG_WIDE(FwdBgr8u16s<3>);
LUM_YCOCG_WIDE(FwdBgr8u16s<4>);
LUM_YCOCG_WIDE(RevFwdBgr8u16s<3>);
LUM_YCOCG_WIDE(RevFwdBgr8u16s<4>);
LUM_YCOCG_WIDE(FwdSbgr16s<3>);
LUM_YCOCG_WIDE(FwdSbgr16s<4>);
LUM_YCOCG_WIDE(RevFwdSbgr16s<3>);
LUM_YCOCG_WIDE(RevFwdSbgr16s<4>);
LUM_YCOCG_WIDE(FwdSbgr16s32s<3>);
LUM_YCOCG_WIDE(FwdSbgr16s32s<4>);
LUM_YCOCG_WIDE(RevFwdSbgr16s32s<3>);
LUM_YCOCG_WIDE(RevFwdSbgr16s32s<4>);
LUM_YCOCG_WIDE(FwdRgb8u);
LUM_YCOCG_WIDE(InvBgr16s8u<3>);
LUM_YCOCG_WIDE(InvBgr16s8u<4>);
LUM_YCOCG_WIDE(RevInvBgr16s8u<3>);
LUM_YCOCG_WIDE(RevInvBgr16s8u<4>);
LUM_YCOCG_WIDE(InvSbgr16s<3>);
LUM_YCOCG_WIDE(InvSbgr16s<4>);
LUM_YCOCG_WIDE(RevInvSbgr16s<3>);
LUM_YCOCG_WIDE(RevInvSbgr16s<4>);
LUM_YCOCG_WIDE(InvSbgr32s16s<3>);
LUM_YCOCG_WIDE(InvSbgr32s16s<4>);
LUM_YCOCG_WIDE(RevInvSbgr32s16s<3>);
LUM_YCOCG_WIDE(RevInvSbgr32s16s<4>);
LUM_YCOCG_WIDE(InvRgb8u);
#undef LUM_YCOCG_WIDE
}  // namespace wide

}  // namespace lum::ycocg
#endif
