// Sixteen-pixel loads and stores of the 8-bit layouts of layouts.h, on sixteen
// 16-bit lanes (AVX2). Include only from *_avx2.cpp files; like the lane set,
// everything here has internal linkage so that no AVX2 code can stand in for
// a function the baseline files share.
//
// Lane order is the pixels' own: pixels 0..7 of the group in the low 128-bit
// half, 8..15 in the high half, for every layout, so any source layout meets
// any destination layout. Stores narrow with unsigned saturation (clamp8).
#pragma once

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
// A 128-bit byte pattern in both halves.
inline V both(int8_t a0, int8_t a1, int8_t a2, int8_t a3, int8_t a4, int8_t a5, int8_t a6, int8_t a7, int8_t a8,
              int8_t a9, int8_t a10, int8_t a11, int8_t a12, int8_t a13, int8_t a14, int8_t a15) {
  return _mm256_broadcastsi128_si256(
      _mm_setr_epi8(a0, a1, a2, a3, a4, a5, a6, a7, a8, a9, a10, a11, a12, a13, a14, a15));
}

// Sixteen bytes widened to sixteen 16-bit lanes.
inline V widen(const uint8_t* p) { return _mm256_cvtepu8_epi16(loadu(p)); }
// Sixteen 16-bit lanes narrowed (clamp8) to sixteen bytes at p.
inline void narrow(uint8_t* p, V v) {
  _mm_storeu_si128(reinterpret_cast<H*>(p),
                   _mm_packus_epi16(_mm256_castsi256_si128(v), _mm256_extracti128_si256(v, 1)));
}

// 48 bytes of sixteen 3-byte pixels into the three byte positions.
inline void split3(const uint8_t* p, V out[3]) {
  // Each half takes 24 bytes: pixels 0..7 from p, 8..15 from p + 24.
  const V a = join(p, p + 24);  // bytes 0..15 of each half
  const V b = _mm256_inserti128_si256(_mm256_castsi128_si256(load8(p + 16)), load8(p + 40), 1);  // 16..23
  out[0] = _mm256_or_si256(_mm256_shuffle_epi8(a, both(0, Z, 3, Z, 6, Z, 9, Z, 12, Z, 15, Z, Z, Z, Z, Z)),
                           _mm256_shuffle_epi8(b, both(Z, Z, Z, Z, Z, Z, Z, Z, Z, Z, Z, Z, 2, Z, 5, Z)));
  out[1] = _mm256_or_si256(_mm256_shuffle_epi8(a, both(1, Z, 4, Z, 7, Z, 10, Z, 13, Z, Z, Z, Z, Z, Z, Z)),
                           _mm256_shuffle_epi8(b, both(Z, Z, Z, Z, Z, Z, Z, Z, Z, Z, 0, Z, 3, Z, 6, Z)));
  out[2] = _mm256_or_si256(_mm256_shuffle_epi8(a, both(2, Z, 5, Z, 8, Z, 11, Z, 14, Z, Z, Z, Z, Z, Z, Z)),
                           _mm256_shuffle_epi8(b, both(Z, Z, Z, Z, Z, Z, Z, Z, Z, Z, 1, Z, 4, Z, 7, Z)));
}

// Three channels narrowed (clamp8) and merged into 48 bytes of 3-byte pixels.
inline void merge3(uint8_t* p, V c0, V c1, V c2) {
  const V t = _mm256_packus_epi16(c0, c1);  // c0 0-7, c1 0-7 | c0 8-15, c1 8-15
  const V c = _mm256_packus_epi16(c2, c2);  // c2 0-7 twice | c2 8-15 twice
  const V first = _mm256_or_si256(_mm256_shuffle_epi8(t, both(0, 8, Z, 1, 9, Z, 2, 10, Z, 3, 11, Z, 4, 12, Z, 5)),
                                  _mm256_shuffle_epi8(c, both(Z, Z, 0, Z, Z, 1, Z, Z, 2, Z, Z, 3, Z, Z, 4, Z)));
  const V rest = _mm256_or_si256(_mm256_shuffle_epi8(t, both(13, Z, 6, 14, Z, 7, 15, Z, Z, Z, Z, Z, Z, Z, Z, Z)),
                                 _mm256_shuffle_epi8(c, both(Z, 5, Z, Z, 6, Z, Z, 7, Z, Z, Z, Z, Z, Z, Z, Z)));
  _mm_storeu_si128(reinterpret_cast<H*>(p), _mm256_castsi256_si128(first));
  _mm_storel_epi64(reinterpret_cast<H*>(p + 16), _mm256_castsi256_si128(rest));
  _mm_storeu_si128(reinterpret_cast<H*>(p + 24), _mm256_extracti128_si256(first, 1));
  _mm_storel_epi64(reinterpret_cast<H*>(p + 40), _mm256_extracti128_si256(rest, 1));
}

// 64 bytes of sixteen 4-byte pixels into byte positions 0..2 (and 3 if Alpha).
template <bool Alpha>
inline void split4(const uint8_t* p, V out[4]) {
  // Halves take pixels 0..3 | 8..11 and 4..7 | 12..15; per half and group of
  // four pixels, two byte positions become two runs of four 16-bit lanes, and
  // the 64-bit runs of both groups meet in pixel order.
  const V a = join(p, p + 32), b = join(p + 16, p + 48);
  const V m01 = both(0, Z, 4, Z, 8, Z, 12, Z, 1, Z, 5, Z, 9, Z, 13, Z);
  const V m23 = both(2, Z, 6, Z, 10, Z, 14, Z, 3, Z, 7, Z, 11, Z, 15, Z);
  const V a01 = _mm256_shuffle_epi8(a, m01), b01 = _mm256_shuffle_epi8(b, m01);
  const V a23 = _mm256_shuffle_epi8(a, m23), b23 = _mm256_shuffle_epi8(b, m23);
  out[0] = _mm256_unpacklo_epi64(a01, b01);
  out[1] = _mm256_unpackhi_epi64(a01, b01);
  out[2] = _mm256_unpacklo_epi64(a23, b23);
  if constexpr (Alpha) out[3] = _mm256_unpackhi_epi64(a23, b23);
}

// Four channels narrowed and merged into the 64 bytes of sixteen 4-byte pixels
// as two vectors in memory order (pixels 0..7, 8..15).
inline void merge4(V c0, V c1, V c2, V c3, V& m0, V& m1) {
  const V c01 = _mm256_packus_epi16(c0, c1);   // c0 0-7, c1 0-7 | c0 8-15, c1 8-15
  const V c23 = _mm256_packus_epi16(c2, c3);
  const V t0 = _mm256_unpacklo_epi8(c01, c23);  // c0 c2 pairs, pixels 0-7 | 8-15
  const V t1 = _mm256_unpackhi_epi8(c01, c23);  // c1 c3 pairs
  const V q0 = _mm256_unpacklo_epi8(t0, t1);    // pixels 0-3 | 8-11
  const V q1 = _mm256_unpackhi_epi8(t0, t1);    // pixels 4-7 | 12-15
  m0 = _mm256_permute2x128_si256(q0, q1, 0x20);
  m1 = _mm256_permute2x128_si256(q0, q1, 0x31);
}

// Sixteen pixels of a layout: load() fills lanes v[0..2] in the form's channel
// order and, when asked, v[3] with alpha; store<WriteAlpha>() writes them.
template <class L>
struct Of;

template <int I0, int I1, int I2>
struct Of<layout::C3<I0, I1, I2>> {
  template <bool Alpha>
  static void load(const SrcPlanes& s, int x, V o[4]) {
    V m[3];
    split3(s.p[0] + 3 * x, m);
    o[I0] = m[0];
    o[I1] = m[1];
    o[I2] = m[2];
    if constexpr (Alpha) o[3] = _mm256_setzero_si256();
  }
  template <bool WriteAlpha>
  static void store(const DstPlanes& d, int x, const V o[4]) {
    merge3(d.p[0] + 3 * x, o[I0], o[I1], o[I2]);
  }
};

template <int I0, int I1, int I2>
struct Of<layout::C4<I0, I1, I2>> {
  template <bool Alpha>
  static void load(const SrcPlanes& s, int x, V o[4]) {
    V m[4];
    split4<Alpha>(s.p[0] + 4 * x, m);
    o[I0] = m[0];
    o[I1] = m[1];
    o[I2] = m[2];
    if constexpr (Alpha) o[3] = m[3];
  }
  // Without WriteAlpha the destination's alpha bytes are taken back from
  // memory into the stored vectors, so they keep their values.
  template <bool WriteAlpha>
  static void store(const DstPlanes& d, int x, const V o[4]) {
    uint8_t* p = d.p[0] + 4 * x;
    V m0, m1;
    merge4(o[I0], o[I1], o[I2], WriteAlpha ? o[3] : _mm256_setzero_si256(), m0, m1);
    if constexpr (!WriteAlpha) {
      const V keep = _mm256_set1_epi32(int(0xFF000000u));
      m0 = _mm256_blendv_epi8(m0, _mm256_loadu_si256(reinterpret_cast<const V*>(p)), keep);
      m1 = _mm256_blendv_epi8(m1, _mm256_loadu_si256(reinterpret_cast<const V*>(p + 32)), keep);
    }
    _mm256_storeu_si256(reinterpret_cast<V*>(p), m0);
    _mm256_storeu_si256(reinterpret_cast<V*>(p + 32), m1);
  }
};

template <int N>
struct Of<layout::P<N>> {
  template <bool Alpha>
  static void load(const SrcPlanes& s, int x, V o[4]) {
    for (int k = 0; k < 3; ++k) o[k] = widen(s.p[k] + x);
    if constexpr (Alpha) o[3] = N > 3 ? widen(s.p[3] + x) : _mm256_setzero_si256();
  }
  template <bool WriteAlpha>
  static void store(const DstPlanes& d, int x, const V o[4]) {
    for (int k = 0; k < 3; ++k) narrow(d.p[k] + x, o[k]);
    if constexpr (N > 3 && WriteAlpha) narrow(d.p[3] + x, o[3]);
  }
};

}  // namespace
}  // namespace lum::layout16
#endif
