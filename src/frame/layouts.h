// Pixel layouts of 8-bit images: load and store adaptors between memory and the
// three channels (plus alpha) a form works on. Channel k of a form is the k-th
// letter of its model (R, G, B or Y, Cb, Cr); the layout maps it to memory.
#pragma once

#include <cstdint>
#include <cstring>

#include "frame/rows.h"
#include "frame/simd.h"

namespace lum::layout {

// One pixel as the form sees it: three channels and alpha (v[3]).
struct Px {
  int v[4];
};

#if LUM_SIMD_SSE
// Eight pixels as 16-bit lanes, one vector per channel and one for alpha.
struct Vx {
  __m128i v[4];
};

namespace detail {
// pshufb mask byte that writes zero.
constexpr int8_t Z = -128;

// Eight bytes at p widened to 16-bit lanes.
inline __m128i load8x8(const uint8_t* p) {
  return _mm_cvtepu8_epi16(_mm_loadl_epi64(reinterpret_cast<const __m128i*>(p)));
}
// 16-bit lanes (0..255) narrowed to bytes and stored as eight bytes.
inline void store8x8(uint8_t* p, __m128i v) {
  _mm_storel_epi64(reinterpret_cast<__m128i*>(p), _mm_packus_epi16(v, v));
}

// 24 bytes of eight 3-byte pixels into the three byte positions as 16-bit lanes.
inline void deinterleave3(const uint8_t* p, __m128i out[3]) {
  const __m128i a = _mm_loadu_si128(reinterpret_cast<const __m128i*>(p));
  const __m128i b = _mm_loadl_epi64(reinterpret_cast<const __m128i*>(p + 16));
  const __m128i a0 = _mm_setr_epi8(0, Z, 3, Z, 6, Z, 9, Z, 12, Z, 15, Z, Z, Z, Z, Z);
  const __m128i b0 = _mm_setr_epi8(Z, Z, Z, Z, Z, Z, Z, Z, Z, Z, Z, Z, 2, Z, 5, Z);
  const __m128i a1 = _mm_setr_epi8(1, Z, 4, Z, 7, Z, 10, Z, 13, Z, Z, Z, Z, Z, Z, Z);
  const __m128i b1 = _mm_setr_epi8(Z, Z, Z, Z, Z, Z, Z, Z, Z, Z, 0, Z, 3, Z, 6, Z);
  const __m128i a2 = _mm_setr_epi8(2, Z, 5, Z, 8, Z, 11, Z, 14, Z, Z, Z, Z, Z, Z, Z);
  const __m128i b2 = _mm_setr_epi8(Z, Z, Z, Z, Z, Z, Z, Z, Z, Z, 1, Z, 4, Z, 7, Z);
  out[0] = _mm_or_si128(_mm_shuffle_epi8(a, a0), _mm_shuffle_epi8(b, b0));
  out[1] = _mm_or_si128(_mm_shuffle_epi8(a, a1), _mm_shuffle_epi8(b, b1));
  out[2] = _mm_or_si128(_mm_shuffle_epi8(a, a2), _mm_shuffle_epi8(b, b2));
}

// Three vectors of 16-bit lanes (0..255) interleaved into 24 bytes at p.
inline void interleave3(uint8_t* p, const __m128i in[3]) {
  const __m128i t = _mm_packus_epi16(in[0], in[1]);  // c0 bytes 0..7, c1 bytes 8..15
  const __m128i c = _mm_packus_epi16(in[2], in[2]);  // c2 bytes 0..7
  const __m128i t0 = _mm_setr_epi8(0, 8, Z, 1, 9, Z, 2, 10, Z, 3, 11, Z, 4, 12, Z, 5);
  const __m128i c0 = _mm_setr_epi8(Z, Z, 0, Z, Z, 1, Z, Z, 2, Z, Z, 3, Z, Z, 4, Z);
  const __m128i t1 = _mm_setr_epi8(13, Z, 6, 14, Z, 7, 15, Z, Z, Z, Z, Z, Z, Z, Z, Z);
  const __m128i c1 = _mm_setr_epi8(Z, 5, Z, Z, 6, Z, Z, 7, Z, Z, Z, Z, Z, Z, Z, Z);
  _mm_storeu_si128(reinterpret_cast<__m128i*>(p),
                   _mm_or_si128(_mm_shuffle_epi8(t, t0), _mm_shuffle_epi8(c, c0)));
  _mm_storel_epi64(reinterpret_cast<__m128i*>(p + 16),
                   _mm_or_si128(_mm_shuffle_epi8(t, t1), _mm_shuffle_epi8(c, c1)));
}

// 32 bytes of eight 4-byte pixels into the four byte positions as 16-bit lanes.
inline void deinterleave4(const uint8_t* p, __m128i out[4]) {
  // Per group of four pixels, two byte positions as two runs of four 16-bit
  // lanes; the runs of the two groups then meet.
  const __m128i a = _mm_loadu_si128(reinterpret_cast<const __m128i*>(p));
  const __m128i b = _mm_loadu_si128(reinterpret_cast<const __m128i*>(p + 16));
  const __m128i m01 = _mm_setr_epi8(0, Z, 4, Z, 8, Z, 12, Z, 1, Z, 5, Z, 9, Z, 13, Z);
  const __m128i m23 = _mm_setr_epi8(2, Z, 6, Z, 10, Z, 14, Z, 3, Z, 7, Z, 11, Z, 15, Z);
  const __m128i a01 = _mm_shuffle_epi8(a, m01), b01 = _mm_shuffle_epi8(b, m01);
  const __m128i a23 = _mm_shuffle_epi8(a, m23), b23 = _mm_shuffle_epi8(b, m23);
  out[0] = _mm_unpacklo_epi64(a01, b01);
  out[1] = _mm_unpackhi_epi64(a01, b01);
  out[2] = _mm_unpacklo_epi64(a23, b23);
  out[3] = _mm_unpackhi_epi64(a23, b23);
}

// Four vectors of 16-bit lanes narrowed (clamp8) into the 32 bytes of eight
// 4-byte pixels, as two vectors in memory order.
inline void interleave4(const __m128i in[4], __m128i& m0, __m128i& m1) {
  const __m128i c01 = _mm_packus_epi16(in[0], in[1]);
  const __m128i c23 = _mm_packus_epi16(in[2], in[3]);
  const __m128i t0 = _mm_unpacklo_epi8(c01, c23);  // c0 c2 pairs
  const __m128i t1 = _mm_unpackhi_epi8(c01, c23);  // c1 c3 pairs
  m0 = _mm_unpacklo_epi8(t0, t1);
  m1 = _mm_unpackhi_epi8(t0, t1);
}
// The same, stored at p.
inline void interleave4(uint8_t* p, const __m128i in[4]) {
  __m128i m0, m1;
  interleave4(in, m0, m1);
  _mm_storeu_si128(reinterpret_cast<__m128i*>(p), m0);
  _mm_storeu_si128(reinterpret_cast<__m128i*>(p + 16), m1);
}
}  // namespace detail
#endif

// Three interleaved channels; memory byte k holds form channel Ik.
template <int I0, int I1, int I2>
struct C3 {
  static constexpr int kBytes = 3;
  static void load(const SrcPlanes& s, int x, Px& o) {
    const uint8_t* p = s.p[0] + 3 * x;
    o.v[I0] = p[0];
    o.v[I1] = p[1];
    o.v[I2] = p[2];
    o.v[3] = 0;
  }
  template <bool WriteAlpha>
  static void store(const DstPlanes& d, int x, const Px& o) {
    uint8_t* p = d.p[0] + 3 * x;
    p[0] = uint8_t(o.v[I0]);
    p[1] = uint8_t(o.v[I1]);
    p[2] = uint8_t(o.v[I2]);
  }
#if LUM_SIMD_SSE
  static void load(const SrcPlanes& s, int x, Vx& o) {
    __m128i m[3];
    detail::deinterleave3(s.p[0] + 3 * x, m);
    o.v[I0] = m[0];
    o.v[I1] = m[1];
    o.v[I2] = m[2];
    o.v[3] = _mm_setzero_si128();
  }
  template <bool WriteAlpha>
  static void store(const DstPlanes& d, int x, const Vx& o) {
    const __m128i m[3] = {o.v[I0], o.v[I1], o.v[I2]};
    detail::interleave3(d.p[0] + 3 * x, m);
  }
#endif
};

// Four interleaved channels, the fourth being alpha; store writes alpha only
// when the caller's rule asks for it, and otherwise leaves that byte alone.
template <int I0, int I1, int I2>
struct C4 {
  static constexpr int kBytes = 4;
  static void load(const SrcPlanes& s, int x, Px& o) {
    const uint8_t* p = s.p[0] + 4 * x;
    o.v[I0] = p[0];
    o.v[I1] = p[1];
    o.v[I2] = p[2];
    o.v[3] = p[3];
  }
  template <bool WriteAlpha>
  static void store(const DstPlanes& d, int x, const Px& o) {
    uint8_t* p = d.p[0] + 4 * x;
    p[0] = uint8_t(o.v[I0]);
    p[1] = uint8_t(o.v[I1]);
    p[2] = uint8_t(o.v[I2]);
    if constexpr (WriteAlpha) p[3] = uint8_t(o.v[3]);
  }
#if LUM_SIMD_SSE
  static void load(const SrcPlanes& s, int x, Vx& o) {
    __m128i m[4];
    detail::deinterleave4(s.p[0] + 4 * x, m);
    o.v[I0] = m[0];
    o.v[I1] = m[1];
    o.v[I2] = m[2];
    o.v[3] = m[3];
  }
  template <bool WriteAlpha>
  static void store(const DstPlanes& d, int x, const Vx& o) {
    uint8_t* p = d.p[0] + 4 * x;
    const __m128i m[4] = {o.v[I0], o.v[I1], o.v[I2], o.v[3]};
    if constexpr (WriteAlpha) {
      detail::interleave4(p, m);
    } else {
      // Kept alpha is never written, not even with its own value: the three colour
      // bytes of each pixel are stored by themselves.
      alignas(16) uint8_t bytes[32];
      detail::interleave4(bytes, m);
      for (int i = 0; i < 8; ++i) std::memcpy(p + 4 * i, bytes + 4 * i, 3);
    }
  }
#endif
};

// N planes (3 colour planes, or 4 with an alpha plane), channel k in plane k.
template <int N>
struct P {
  static constexpr int kBytes = 1;
  static void load(const SrcPlanes& s, int x, Px& o) {
    for (int k = 0; k < 3; ++k) o.v[k] = s.p[k][x];
    o.v[3] = N > 3 ? s.p[3][x] : 0;
  }
  template <bool WriteAlpha>
  static void store(const DstPlanes& d, int x, const Px& o) {
    for (int k = 0; k < 3; ++k) d.p[k][x] = uint8_t(o.v[k]);
    if constexpr (N > 3 && WriteAlpha) d.p[3][x] = uint8_t(o.v[3]);
  }
#if LUM_SIMD_SSE
  static void load(const SrcPlanes& s, int x, Vx& o) {
    for (int k = 0; k < 3; ++k) o.v[k] = detail::load8x8(s.p[k] + x);
    o.v[3] = N > 3 ? detail::load8x8(s.p[3] + x) : _mm_setzero_si128();
  }
  template <bool WriteAlpha>
  static void store(const DstPlanes& d, int x, const Vx& o) {
    for (int k = 0; k < 3; ++k) detail::store8x8(d.p[k] + x, o.v[k]);
    if constexpr (N > 3 && WriteAlpha) detail::store8x8(d.p[3] + x, o.v[3]);
  }
#endif
};

using RGB = C3<0, 1, 2>;
using BGR = C3<2, 1, 0>;
using RGBA = C4<0, 1, 2>;
using BGRA = C4<2, 1, 0>;
using P3 = P<3>;
using P4 = P<4>;

}  // namespace lum::layout
