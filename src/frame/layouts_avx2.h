// Sixteen-pixel loads and stores of the 8-bit layouts of layouts.h, on sixteen
// 16-bit lanes (AVX2). Include only from *_avx2.cpp files; like the lane set,
// everything here has internal linkage so that no AVX2 code can stand in for
// a function the baseline files share.
//
// Two lane orders serve the layouts, and a row kernel picks the one its pair
// of layouts moves most cheaply (bestOrder): Natural puts pixels 0..7 of the
// group in the low 128-bit half and 8..15 in the high half; Quads puts pixels
// 0..3, 8..11 low and 4..7, 12..15 high, which is how 4-byte pixels split and
// merge inside 128-bit halves without crossing them. The forms work lane by
// lane, so the order never changes a sample. Stores narrow with unsigned
// saturation (clamp8).
//
// Loads give each sample in the low byte of its lane, or, for the forms that
// start from samples << 8, in the high byte (High): the same byte shuffles
// with the other half of each lane zero, so the shift costs nothing.
#pragma once

#include <cstring>

#include "frame/layouts.h"

#if LUM_SIMD_SSE && defined(__AVX2__)
namespace lum::layout16 {
namespace {

using V = __m256i;
using H = __m128i;

constexpr int8_t Z = -128;  // pshufb: write zero

inline H loadu(const uint8_t* p) { return _mm_loadu_si128(reinterpret_cast<const H*>(p)); }
inline H load8(const uint8_t* p) { return _mm_loadl_epi64(reinterpret_cast<const H*>(p)); }
// The 16 bytes at lo and the 16 at hi as one vector.
inline V join(const uint8_t* lo, const uint8_t* hi) {
  return _mm256_inserti128_si256(_mm256_castsi128_si256(loadu(lo)), loadu(hi), 1);
}

// pshufb pattern of one 128-bit half: 16-bit lane k takes byte bk (Z: none)
// as its value, or as value << 8 when High.
template <bool High>
inline H pick(int8_t b0, int8_t b1, int8_t b2, int8_t b3, int8_t b4, int8_t b5, int8_t b6, int8_t b7) {
  if constexpr (High) return _mm_setr_epi8(Z, b0, Z, b1, Z, b2, Z, b3, Z, b4, Z, b5, Z, b6, Z, b7);
  else return _mm_setr_epi8(b0, Z, b1, Z, b2, Z, b3, Z, b4, Z, b5, Z, b6, Z, b7, Z);
}
// A half pattern in both halves.
inline V both(H m) { return _mm256_broadcastsi128_si256(m); }
// Two half patterns, low and high.
inline V halves(H lo, H hi) { return _mm256_inserti128_si256(_mm256_castsi128_si256(lo), hi, 1); }

enum class Order { Natural, Quads };

// Sixteen bytes at p as sixteen 16-bit lanes.
template <Order Ord, bool High>
inline V widen(const uint8_t* p) {
  if constexpr (Ord == Order::Natural && !High) {
    return _mm256_cvtepu8_epi16(loadu(p));
  } else {
    const V m = Ord == Order::Natural
                    ? halves(pick<High>(0, 1, 2, 3, 4, 5, 6, 7), pick<High>(8, 9, 10, 11, 12, 13, 14, 15))
                    : halves(pick<High>(0, 1, 2, 3, 8, 9, 10, 11), pick<High>(4, 5, 6, 7, 12, 13, 14, 15));
    return _mm256_shuffle_epi8(_mm256_broadcastsi128_si256(loadu(p)), m);
  }
}
// Two vectors of sixteen 16-bit lanes narrowed (clamp8) to 32 bytes: the low 16
// hold a, the high 16 b, each in pixel order.
template <Order Ord>
inline V narrow2(V a, V b) {
  // packus leaves 4-byte runs of a and b in each half; put them in pixel order.
  const V idx = Ord == Order::Natural ? _mm256_setr_epi32(0, 1, 4, 5, 2, 3, 6, 7)
                                      : _mm256_setr_epi32(0, 4, 1, 5, 2, 6, 3, 7);
  return _mm256_permutevar8x32_epi32(_mm256_packus_epi16(a, b), idx);
}
inline void store16(uint8_t* p, H v) { _mm_storeu_si128(reinterpret_cast<H*>(p), v); }
inline H lo(V v) { return _mm256_castsi256_si128(v); }
inline H hi(V v) { return _mm256_extracti128_si256(v, 1); }

// 48 bytes of sixteen 3-byte pixels into the three byte positions.
template <Order Ord, bool High>
inline void split3(const uint8_t* p, V out[3]) {
  V a, b;
  if constexpr (Ord == Order::Natural) {
    // Each half takes 24 bytes, pixels 0..7 from p and 8..15 from p + 24:
    // bytes 0..15 of each 24 in a, bytes 16..23 in b.
    a = join(p, p + 24);
    b = _mm256_inserti128_si256(_mm256_castsi128_si256(load8(p + 16)), load8(p + 40), 1);
  } else {
    // Pixels 0..3 | 4..7 from bytes 0.. | 12.. in a, pixels 8..11 | 12..15
    // from bytes 20.. | 32.. (four bytes in) in b: no load leaves the 48 bytes.
    a = join(p, p + 12);
    b = join(p + 20, p + 32);
  }
  for (int k = 0; k < 3; ++k) {
    const int8_t c = int8_t(k);
    H ma, mb;
    if constexpr (Ord == Order::Natural) {
      // The sixth pixel's byte is in a for the first channel, in b for the others.
      ma = pick<High>(c, int8_t(c + 3), int8_t(c + 6), int8_t(c + 9), int8_t(c + 12), k == 0 ? int8_t(15) : Z, Z, Z);
      mb = pick<High>(Z, Z, Z, Z, Z, k == 0 ? Z : int8_t(k - 1), int8_t(c + 2), int8_t(c + 5));
    } else {
      const int8_t d = int8_t(4 + k);
      ma = pick<High>(c, int8_t(c + 3), int8_t(c + 6), int8_t(c + 9), Z, Z, Z, Z);
      mb = pick<High>(Z, Z, Z, Z, d, int8_t(d + 3), int8_t(d + 6), int8_t(d + 9));
    }
    out[k] = _mm256_or_si256(_mm256_shuffle_epi8(a, both(ma)), _mm256_shuffle_epi8(b, both(mb)));
  }
}

// Three channels in Natural order narrowed and merged into 48 bytes of 3-byte pixels.
inline void merge3(uint8_t* p, V c0, V c1, V c2) {
  const V t = _mm256_packus_epi16(c0, c1);  // c0 0-7, c1 0-7 | c0 8-15, c1 8-15
  const V c = _mm256_packus_epi16(c2, c2);  // c2 0-7 twice | c2 8-15 twice
  const V first = _mm256_or_si256(_mm256_shuffle_epi8(t, both(_mm_setr_epi8(0, 8, Z, 1, 9, Z, 2, 10, Z, 3, 11, Z, 4, 12, Z, 5))),
                                  _mm256_shuffle_epi8(c, both(_mm_setr_epi8(Z, Z, 0, Z, Z, 1, Z, Z, 2, Z, Z, 3, Z, Z, 4, Z))));
  const V rest = _mm256_or_si256(_mm256_shuffle_epi8(t, both(_mm_setr_epi8(13, Z, 6, 14, Z, 7, 15, Z, Z, Z, Z, Z, Z, Z, Z, Z))),
                                 _mm256_shuffle_epi8(c, both(_mm_setr_epi8(Z, 5, Z, Z, 6, Z, Z, 7, Z, Z, Z, Z, Z, Z, Z, Z))));
  store16(p, lo(first));
  _mm_storel_epi64(reinterpret_cast<H*>(p + 16), lo(rest));
  store16(p + 24, hi(first));
  _mm_storel_epi64(reinterpret_cast<H*>(p + 40), hi(rest));
}

// 64 bytes of sixteen 4-byte pixels into byte positions 0..2 (and 3 if Alpha).
template <Order Ord, bool Alpha, bool High>
inline void split4(const uint8_t* p, V out[4]) {
  // Per half and group of four pixels, two byte positions become two runs of
  // four 16-bit lanes; unpacking the runs of two groups gives eight lanes.
  V a, b;
  if constexpr (Ord == Order::Quads) {
    a = _mm256_loadu_si256(reinterpret_cast<const V*>(p));       // pixels 0-3 | 4-7
    b = _mm256_loadu_si256(reinterpret_cast<const V*>(p + 32));  // pixels 8-11 | 12-15
  } else {
    a = join(p, p + 32);       // pixels 0-3 | 8-11
    b = join(p + 16, p + 48);  // pixels 4-7 | 12-15
  }
  const V m01 = both(pick<High>(0, 4, 8, 12, 1, 5, 9, 13));
  const V m23 = both(pick<High>(2, 6, 10, 14, 3, 7, 11, 15));
  const V a01 = _mm256_shuffle_epi8(a, m01), b01 = _mm256_shuffle_epi8(b, m01);
  const V a23 = _mm256_shuffle_epi8(a, m23), b23 = _mm256_shuffle_epi8(b, m23);
  out[0] = _mm256_unpacklo_epi64(a01, b01);
  out[1] = _mm256_unpackhi_epi64(a01, b01);
  out[2] = _mm256_unpacklo_epi64(a23, b23);
  if constexpr (Alpha) out[3] = _mm256_unpackhi_epi64(a23, b23);
}

// Four channels narrowed and merged into the 64 bytes of sixteen 4-byte pixels,
// returned as two vectors in memory order (pixels 0..7, 8..15).
template <Order Ord>
inline void merge4(V c0, V c1, V c2, V c3, V& m0, V& m1) {
  const V c01 = _mm256_packus_epi16(c0, c1);
  const V c23 = _mm256_packus_epi16(c2, c3);
  const V t0 = _mm256_unpacklo_epi8(c01, c23);  // c0 c2 byte pairs of lanes 0-7 | 8-15
  const V t1 = _mm256_unpackhi_epi8(c01, c23);  // c1 c3 byte pairs
  const V q0 = _mm256_unpacklo_epi8(t0, t1);    // whole pixels of lanes 0-3 | 8-11
  const V q1 = _mm256_unpackhi_epi8(t0, t1);    // lanes 4-7 | 12-15
  if constexpr (Ord == Order::Quads) {
    m0 = q0;
    m1 = q1;
  } else {
    m0 = _mm256_permute2x128_si256(q0, q1, 0x20);
    m1 = _mm256_permute2x128_si256(q0, q1, 0x31);
  }
}

// The channel splits of layouts.h (layout::channels) on two groups side by
// side: half h of each register holds the 128-bit split of the group 16 N * h
// bytes after p, so byte lanes hold pixels 0..15 | 16..31, 16-bit lanes 0..7 |
// 8..15 and float lanes 0..3 | 4..7.
namespace channels {
using layout::channels::byChannel16;
using layout::channels::byChannel8;
using layout::channels::kSplit3;
using layout::channels::kSplit3w;

// Half 0 from p, half 1 from p + off bytes.
inline V load2(const void* p, std::ptrdiff_t off) {
  const auto* b = static_cast<const uint8_t*>(p);
  return _mm256_inserti128_si256(_mm256_castsi128_si256(loadu(b)), loadu(b + off), 1);
}
inline V shuf(V v, H m) { return _mm256_shuffle_epi8(v, both(m)); }

// Two 48-byte groups of three-channel pixels into three vectors, with the
// 128-bit split's mask table.
inline void gather3(const uint8_t* p, const int8_t (&t)[3][3][16], V out[3]) {
  const V a = load2(p, 48), b = load2(p + 16, 48), c = load2(p + 32, 48);
  for (int k = 0; k < 3; ++k) {
    const H m0 = _mm_load_si128(reinterpret_cast<const H*>(t[k][0]));
    const H m1 = _mm_load_si128(reinterpret_cast<const H*>(t[k][1]));
    const H m2 = _mm_load_si128(reinterpret_cast<const H*>(t[k][2]));
    out[k] = _mm256_or_si256(_mm256_or_si256(shuf(a, m0), shuf(b, m1)), shuf(c, m2));
  }
}
// Two 64-byte groups of four-channel pixels into the first three channels'
// vectors, as the 128-bit gather4.
inline void gather4(const uint8_t* p, H m, V out[3]) {
  V v[4];
  for (int i = 0; i < 4; ++i) v[i] = shuf(load2(p + 16 * i, 64), m);
  const V lo01 = _mm256_unpacklo_epi32(v[0], v[1]), lo23 = _mm256_unpacklo_epi32(v[2], v[3]);
  const V hi01 = _mm256_unpackhi_epi32(v[0], v[1]), hi23 = _mm256_unpackhi_epi32(v[2], v[3]);
  out[0] = _mm256_unpacklo_epi64(lo01, lo23);
  out[1] = _mm256_unpackhi_epi64(lo01, lo23);
  out[2] = _mm256_unpacklo_epi64(hi01, hi23);
}

// Thirty-two N-byte pixels into three vectors of byte lanes.
template <int N>
inline void bytes(const uint8_t* p, V out[3]) {
  if constexpr (N == 3) gather3(p, kSplit3, out);
  else gather4(p, byChannel8(), out);
}
// Sixteen N-sample 16-bit pixels into three vectors of 16-bit lanes.
template <int N>
inline void words(const uint16_t* p, V out[3]) {
  if constexpr (N == 3) gather3(reinterpret_cast<const uint8_t*>(p), kSplit3w, out);
  else gather4(reinterpret_cast<const uint8_t*>(p), byChannel16(), out);
}
// Eight N-sample float pixels into three vectors of float lanes.
template <int N>
inline void floats(const float* p, __m256 out[3]) {
  if constexpr (N == 3) {
    const __m256 a = _mm256_castsi256_ps(load2(p, 48)), b = _mm256_castsi256_ps(load2(p + 4, 48)),
                 c = _mm256_castsi256_ps(load2(p + 8, 48));
    const __m256 t1 = _mm256_shuffle_ps(b, c, _MM_SHUFFLE(1, 1, 2, 2));
    const __m256 t2 = _mm256_shuffle_ps(b, c, _MM_SHUFFLE(2, 2, 3, 3));
    const __m256 t3 = _mm256_shuffle_ps(a, b, _MM_SHUFFLE(0, 0, 1, 1));
    const __m256 t4 = _mm256_shuffle_ps(a, b, _MM_SHUFFLE(1, 1, 2, 2));
    const __m256 t5 = _mm256_shuffle_ps(c, c, _MM_SHUFFLE(3, 3, 0, 0));
    out[0] = _mm256_shuffle_ps(a, t1, _MM_SHUFFLE(2, 0, 3, 0));
    out[1] = _mm256_shuffle_ps(t3, t2, _MM_SHUFFLE(2, 0, 2, 0));
    out[2] = _mm256_shuffle_ps(t4, t5, _MM_SHUFFLE(2, 0, 2, 0));
  } else {
    __m256 v[4];
    for (int i = 0; i < 4; ++i) v[i] = _mm256_castsi256_ps(load2(p + 4 * i, 64));
    const __m256 t0 = _mm256_unpacklo_ps(v[0], v[1]), t1 = _mm256_unpacklo_ps(v[2], v[3]);
    const __m256 t2 = _mm256_unpackhi_ps(v[0], v[1]), t3 = _mm256_unpackhi_ps(v[2], v[3]);
    out[0] = _mm256_castpd_ps(_mm256_unpacklo_pd(_mm256_castps_pd(t0), _mm256_castps_pd(t1)));
    out[1] = _mm256_castpd_ps(_mm256_unpackhi_pd(_mm256_castps_pd(t0), _mm256_castps_pd(t1)));
    out[2] = _mm256_castpd_ps(_mm256_unpacklo_pd(_mm256_castps_pd(t2), _mm256_castps_pd(t3)));
  }
}
}  // namespace channels

// Sixteen pixels of a layout: load() fills lanes v[0..2] in the form's channel
// order and, when asked, v[3] with alpha (never with High); store<WriteAlpha>()
// writes them.
template <class L>
struct Of;

template <int I0, int I1, int I2>
struct Of<layout::C3<I0, I1, I2>> {
  static constexpr bool kStoresQuads = false;  // 3-byte pixels are stored from Natural lanes only
  template <Order Ord, bool Alpha, bool High>
  static void load(const SrcPlanes& s, int x, V o[4]) {
    V m[3];
    split3<Ord, High>(s.p[0] + 3 * x, m);
    o[I0] = m[0];
    o[I1] = m[1];
    o[I2] = m[2];
    if constexpr (Alpha) o[3] = _mm256_setzero_si256();
  }
  template <Order Ord, bool WriteAlpha>
  static void store(const DstPlanes& d, int x, const V o[4]) {
    static_assert(Ord == Order::Natural);
    merge3(d.p[0] + 3 * x, o[I0], o[I1], o[I2]);
  }
};

template <int I0, int I1, int I2>
struct Of<layout::C4<I0, I1, I2>> {
  static constexpr bool kStoresQuads = true;
  template <Order Ord, bool Alpha, bool High>
  static void load(const SrcPlanes& s, int x, V o[4]) {
    static_assert(!(Alpha && High));
    V m[4];
    split4<Ord, Alpha, High>(s.p[0] + 4 * x, m);
    o[I0] = m[0];
    o[I1] = m[1];
    o[I2] = m[2];
    if constexpr (Alpha) o[3] = m[3];
  }
  // Without WriteAlpha the alpha bytes are never written, not even with their own
  // values: the three colour bytes of each pixel are stored by themselves.
  template <Order Ord, bool WriteAlpha>
  static void store(const DstPlanes& d, int x, const V o[4]) {
    uint8_t* p = d.p[0] + 4 * x;
    V m0, m1;
    merge4<Ord>(o[I0], o[I1], o[I2], WriteAlpha ? o[3] : _mm256_setzero_si256(), m0, m1);
    if constexpr (WriteAlpha) {
      _mm256_storeu_si256(reinterpret_cast<V*>(p), m0);
      _mm256_storeu_si256(reinterpret_cast<V*>(p + 32), m1);
    } else {
      alignas(32) uint8_t bytes[64];
      _mm256_store_si256(reinterpret_cast<V*>(bytes), m0);
      _mm256_store_si256(reinterpret_cast<V*>(bytes + 32), m1);
      for (int i = 0; i < 16; ++i) std::memcpy(p + 4 * i, bytes + 4 * i, 3);
    }
  }
};

template <int N>
struct Of<layout::P<N>> {
  static constexpr bool kStoresQuads = true;
  template <Order Ord, bool Alpha, bool High>
  static void load(const SrcPlanes& s, int x, V o[4]) {
    static_assert(!(Alpha && High));
    for (int k = 0; k < 3; ++k) o[k] = widen<Ord, High>(s.p[k] + x);
    if constexpr (Alpha) o[3] = N > 3 ? widen<Ord, false>(s.p[3] + x) : _mm256_setzero_si256();
  }
  template <Order Ord, bool WriteAlpha>
  static void store(const DstPlanes& d, int x, const V o[4]) {
    const V c01 = narrow2<Ord>(o[0], o[1]);
    store16(d.p[0] + x, lo(c01));
    store16(d.p[1] + x, hi(c01));
    if constexpr (N > 3 && WriteAlpha) {
      const V c23 = narrow2<Ord>(o[2], o[3]);
      store16(d.p[2] + x, lo(c23));
      store16(d.p[3] + x, hi(c23));
    } else {
      store16(d.p[2] + x, lo(narrow2<Ord>(o[2], o[2])));
    }
  }
};

// Half-width chroma planes: sixteen lumas and eight samples of each chroma
// plane, each serving two pixels. Natural order, loads only.
template <>
struct Of<layout::HalfChromaP3> {
  // Eight chroma samples at p, each twice.
  static V twice(const uint8_t* p) {
    const H c = _mm_cvtepu8_epi16(load8(p));
    return _mm256_inserti128_si256(_mm256_castsi128_si256(_mm_unpacklo_epi16(c, c)), _mm_unpackhi_epi16(c, c), 1);
  }
  template <Order Ord, bool Alpha, bool High>
  static void load(const SrcPlanes& s, int x, V o[4]) {
    static_assert(Ord == Order::Natural && !High);
    o[0] = _mm256_cvtepu8_epi16(loadu(s.p[0] + x));
    o[1] = twice(s.p[1] + (x >> 1));
    o[2] = twice(s.p[2] + (x >> 1));
    if constexpr (Alpha) o[3] = _mm256_setzero_si256();
  }
};

// Packed CbYCr422: sixteen pixels from 32 bytes, both pixels of a pair taking
// its Cb and Cr. Natural order, loads only; Al as layout::CbYCrC2.
template <bool Al>
struct Of<layout::CbYCrC2<Al>> {
  template <Order Ord, bool Alpha, bool High>
  static void load(const SrcPlanes& s, int x, V o[4]) {
    static_assert(Ord == Order::Natural && !High);
    const uint8_t* p = s.p[0] + 2 * x;
    const V m = _mm256_inserti128_si256(_mm256_castsi128_si256(layout::detail::load16<Al>(p)),
                                        layout::detail::load16<Al>(p + 16), 1);
    o[0] = _mm256_shuffle_epi8(m, both(_mm_setr_epi8(1, Z, 3, Z, 5, Z, 7, Z, 9, Z, 11, Z, 13, Z, 15, Z)));
    o[1] = _mm256_shuffle_epi8(m, both(_mm_setr_epi8(0, Z, 0, Z, 4, Z, 4, Z, 8, Z, 8, Z, 12, Z, 12, Z)));
    o[2] = _mm256_shuffle_epi8(m, both(_mm_setr_epi8(2, Z, 2, Z, 6, Z, 6, Z, 10, Z, 10, Z, 14, Z, 14, Z)));
    if constexpr (Alpha) o[3] = _mm256_setzero_si256();
  }
};

template <class L>
constexpr bool isPacked4 = false;
template <int I0, int I1, int I2>
constexpr bool isPacked4<layout::C4<I0, I1, I2>> = true;

// The cheaper lane order for a pair of layouts: Quads wherever 4-byte pixels
// are moved and the destination can take it, else Natural.
template <class Src, class Dst>
constexpr Order bestOrder() {
  return Of<Dst>::kStoresQuads && (isPacked4<Src> || isPacked4<Dst>) ? Order::Quads : Order::Natural;
}

}  // namespace
}  // namespace lum::layout16
#endif
