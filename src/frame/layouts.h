// Pixel layouts: load and store adaptors between memory and the three channels
// (plus alpha) a form works on, over a sample type T (Lum8u, Lum16u, Lum16s,
// Lum32f, Lum64f; 8u when not named). Channel k of a form is the k-th letter of
// its model (R, G, B or Y, Cb, Cr); the layout maps it to memory. Steps stay in
// bytes; samples are read and written at any address.
#pragma once

#include <cstdint>
#include <cstring>
#include <type_traits>

#include "frame/rows.h"
#include "frame/simd.h"

namespace lum::layout {

// The type a form computes a sample in: int for integer samples, float for
// 32f, double for 64f.
template <class T>
struct SampleTraits {
  using Work = int;
};
template <>
struct SampleTraits<Lum32f> {
  using Work = float;
};
template <>
struct SampleTraits<Lum64f> {
  using Work = double;
};
template <class T>
using WorkOf = typename SampleTraits<T>::Work;

// One pixel as the form sees it: three channels and alpha (v[3]).
template <class T>
struct PxOf {
  WorkOf<T> v[4];
};
using Px = PxOf<Lum8u>;

// Row pointer of a plane as samples of type T.
template <class T>
inline const T* samples(const uint8_t* row) { return reinterpret_cast<const T*>(row); }
template <class T>
inline T* samples(uint8_t* row) { return reinterpret_cast<T*>(row); }

namespace detail {
// The lanes of sample type T on lane set O, for the lane adaptors: 16-bit V
// lanes for 8u; 32-bit V lanes for 16u and 16s (whose sums then need no
// saturation); F lanes for 32f; D lanes for 64f.
template <class O, class T>
struct LanesOf {
  using Elem = std::conditional_t<std::is_same_v<T, Lum8u>, int16_t,
                                  std::conditional_t<std::is_floating_point_v<T>, T, int32_t>>;
  using type = std::conditional_t<std::is_same_v<T, Lum32f>, typename O::F,
                                  std::conditional_t<std::is_same_v<T, Lum64f>, typename O::D, typename O::V>>;
  static type load(const Elem* p) {
    if constexpr (std::is_same_v<T, Lum32f>) return O::loadf(p);
    else if constexpr (std::is_same_v<T, Lum64f>) return O::loadd(p);
    else return O::load(p);
  }
  static void store(Elem* p, type v) {
    if constexpr (std::is_same_v<T, Lum32f>) O::storef(p, v);
    else if constexpr (std::is_same_v<T, Lum64f>) O::stored(p, v);
    else O::store(p, v);
  }
};
// Pixels per vector of T on O.
template <class O, class T>
constexpr int kLanesOf = int(sizeof(typename LanesOf<O, T>::type) / sizeof(typename LanesOf<O, T>::Elem));

// Samples p[0], p[stride], ... of one channel into one vector of lanes.
template <class O, class T>
inline typename LanesOf<O, T>::type gather(const T* p, int stride) {
  using L = LanesOf<O, T>;
  alignas(32) typename L::Elem t[kLanesOf<O, T>];
  for (int i = 0; i < kLanesOf<O, T>; ++i) t[i] = typename L::Elem(loadAt(p + std::ptrdiff_t(i) * stride));
  return L::load(t);
}
// One vector of lanes into samples p[0], p[stride], ...; the lanes already hold
// values of T (the form makes its clamp or rounding before the store).
template <class O, class T>
inline void scatter(T* p, int stride, typename LanesOf<O, T>::type v) {
  using L = LanesOf<O, T>;
  alignas(32) typename L::Elem t[kLanesOf<O, T>];
  L::store(t, v);
  for (int i = 0; i < kLanesOf<O, T>; ++i) storeAt(p + std::ptrdiff_t(i) * stride, T(t[i]));
}
// Every lane set to v.
template <class O, class T>
inline typename LanesOf<O, T>::type splat(WorkOf<T> v) {
  using L = LanesOf<O, T>;
  alignas(32) typename L::Elem t[kLanesOf<O, T>];
  for (auto& e : t) e = typename L::Elem(v);
  return L::load(t);
}
}  // namespace detail

#if LUM_SIMD_SSE
// Eight pixels as 16-bit lanes, one vector per channel and one for alpha.
struct Vx {
  __m128i v[4];
};

namespace detail {
// pshufb mask byte that writes zero.
constexpr int8_t Z = -128;

// 16 bytes from memory; Al promises a 16-byte aligned address.
template <bool Al>
inline __m128i load16(const uint8_t* p) {
  if constexpr (Al) return _mm_load_si128(reinterpret_cast<const __m128i*>(p));
  else return _mm_loadu_si128(reinterpret_cast<const __m128i*>(p));
}
template <bool Al>
inline void store16(uint8_t* p, __m128i v) {
  if constexpr (Al) _mm_store_si128(reinterpret_cast<__m128i*>(p), v);
  else _mm_storeu_si128(reinterpret_cast<__m128i*>(p), v);
}

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

#if LUM_SIMD_SSE
// Channel splits of packed pixels, the samples keeping their width: sixteen 3-
// or 4-byte pixels into byte lanes, eight 3- or 4-sample 16-bit pixels into
// 16-bit lanes, four 3- or 4-sample float pixels into float lanes; one register
// per channel, in memory order (channel k of memory into out[k]), the first
// three channels only (a fourth is never read into a lane). Spread goes the
// other way, one channel to three or four.
namespace channels {
using detail::Z;

// Shuffle masks that gather channel k of sixteen 3-byte pixels from load j of the
// three 16-byte loads (channel k of pixel i lies at byte 3i + k of the 48);
// the 128-bit and the 256-bit splits share them.
alignas(16) inline constexpr int8_t kSplit3[3][3][16] = {
    {{0, 3, 6, 9, 12, 15, Z, Z, Z, Z, Z, Z, Z, Z, Z, Z},
     {Z, Z, Z, Z, Z, Z, 2, 5, 8, 11, 14, Z, Z, Z, Z, Z},
     {Z, Z, Z, Z, Z, Z, Z, Z, Z, Z, Z, 1, 4, 7, 10, 13}},
    {{1, 4, 7, 10, 13, Z, Z, Z, Z, Z, Z, Z, Z, Z, Z, Z},
     {Z, Z, Z, Z, Z, 0, 3, 6, 9, 12, 15, Z, Z, Z, Z, Z},
     {Z, Z, Z, Z, Z, Z, Z, Z, Z, Z, Z, 2, 5, 8, 11, 14}},
    {{2, 5, 8, 11, 14, Z, Z, Z, Z, Z, Z, Z, Z, Z, Z, Z},
     {Z, Z, Z, Z, Z, 1, 4, 7, 10, 13, Z, Z, Z, Z, Z, Z},
     {Z, Z, Z, Z, Z, Z, Z, Z, Z, Z, 0, 3, 6, 9, 12, 15}},
};

// The same for eight 3-sample 16-bit pixels: lane k of pixel i is 16-bit element
// 3i + k of the 24 in the three loads.
alignas(16) inline constexpr int8_t kSplit3w[3][3][16] = {
    {{0, 1, 6, 7, 12, 13, Z, Z, Z, Z, Z, Z, Z, Z, Z, Z},
     {Z, Z, Z, Z, Z, Z, 2, 3, 8, 9, 14, 15, Z, Z, Z, Z},
     {Z, Z, Z, Z, Z, Z, Z, Z, Z, Z, Z, Z, 4, 5, 10, 11}},
    {{2, 3, 8, 9, 14, 15, Z, Z, Z, Z, Z, Z, Z, Z, Z, Z},
     {Z, Z, Z, Z, Z, Z, 4, 5, 10, 11, Z, Z, Z, Z, Z, Z},
     {Z, Z, Z, Z, Z, Z, Z, Z, Z, Z, 0, 1, 6, 7, 12, 13}},
    {{4, 5, 10, 11, Z, Z, Z, Z, Z, Z, Z, Z, Z, Z, Z, Z},
     {Z, Z, Z, Z, 0, 1, 6, 7, 12, 13, Z, Z, Z, Z, Z, Z},
     {Z, Z, Z, Z, Z, Z, Z, Z, Z, Z, 2, 3, 8, 9, 14, 15}},
};

// 48 bytes of three-channel pixels into three vectors, channel by channel, with
// the shuffle masks of table t (one per channel and load).
inline void gather3(const uint8_t* p, const int8_t (&t)[3][3][16], __m128i out[3]) {
  const __m128i a = _mm_loadu_si128(reinterpret_cast<const __m128i*>(p));
  const __m128i b = _mm_loadu_si128(reinterpret_cast<const __m128i*>(p + 16));
  const __m128i c = _mm_loadu_si128(reinterpret_cast<const __m128i*>(p + 32));
  for (int k = 0; k < 3; ++k) {
    const __m128i m0 = _mm_load_si128(reinterpret_cast<const __m128i*>(t[k][0]));
    const __m128i m1 = _mm_load_si128(reinterpret_cast<const __m128i*>(t[k][1]));
    const __m128i m2 = _mm_load_si128(reinterpret_cast<const __m128i*>(t[k][2]));
    out[k] = _mm_or_si128(_mm_or_si128(_mm_shuffle_epi8(a, m0), _mm_shuffle_epi8(b, m1)), _mm_shuffle_epi8(c, m2));
  }
}

// 64 bytes of four-channel pixels into the first three channels' vectors: mask m
// groups each load's samples by channel, then 32- and 64-bit unpacks transpose.
inline void gather4(const uint8_t* p, __m128i m, __m128i out[3]) {
  __m128i v[4];
  for (int i = 0; i < 4; ++i) v[i] = _mm_shuffle_epi8(_mm_loadu_si128(reinterpret_cast<const __m128i*>(p + 16 * i)), m);
  const __m128i lo01 = _mm_unpacklo_epi32(v[0], v[1]), lo23 = _mm_unpacklo_epi32(v[2], v[3]);
  const __m128i hi01 = _mm_unpackhi_epi32(v[0], v[1]), hi23 = _mm_unpackhi_epi32(v[2], v[3]);
  out[0] = _mm_unpacklo_epi64(lo01, lo23);
  out[1] = _mm_unpackhi_epi64(lo01, lo23);
  out[2] = _mm_unpacklo_epi64(hi01, hi23);
}

// Groups a load's 8-bit samples (four pixels) or 16-bit samples (two pixels) by channel.
inline __m128i byChannel8() { return _mm_setr_epi8(0, 4, 8, 12, 1, 5, 9, 13, 2, 6, 10, 14, 3, 7, 11, 15); }
inline __m128i byChannel16() { return _mm_setr_epi8(0, 1, 8, 9, 2, 3, 10, 11, 4, 5, 12, 13, 6, 7, 14, 15); }

// Four 3- or 4-channel float pixels into three vectors of four lanes.
template <int N>
inline void floats(const float* p, __m128 out[3]) {
  if constexpr (N == 3) {
    const __m128 a = _mm_loadu_ps(p), b = _mm_loadu_ps(p + 4), c = _mm_loadu_ps(p + 8);
    // a = r0 g0 b0 r1, b = g1 b1 r2 g2, c = b2 r3 g3 b3
    const __m128 t1 = _mm_shuffle_ps(b, c, _MM_SHUFFLE(1, 1, 2, 2));  // r2 r2 r3 r3
    const __m128 t2 = _mm_shuffle_ps(b, c, _MM_SHUFFLE(2, 2, 3, 3));  // g2 g2 g3 g3
    const __m128 t3 = _mm_shuffle_ps(a, b, _MM_SHUFFLE(0, 0, 1, 1));  // g0 g0 g1 g1
    const __m128 t4 = _mm_shuffle_ps(a, b, _MM_SHUFFLE(1, 1, 2, 2));  // b0 b0 b1 b1
    const __m128 t5 = _mm_shuffle_ps(c, c, _MM_SHUFFLE(3, 3, 0, 0));  // b2 b2 b3 b3
    out[0] = _mm_shuffle_ps(a, t1, _MM_SHUFFLE(2, 0, 3, 0));
    out[1] = _mm_shuffle_ps(t3, t2, _MM_SHUFFLE(2, 0, 2, 0));
    out[2] = _mm_shuffle_ps(t4, t5, _MM_SHUFFLE(2, 0, 2, 0));
  } else {
    __m128 a = _mm_loadu_ps(p), b = _mm_loadu_ps(p + 4), c = _mm_loadu_ps(p + 8), d = _mm_loadu_ps(p + 12);
    _MM_TRANSPOSE4_PS(a, b, c, d);
    out[0] = a;
    out[1] = b;
    out[2] = c;
  }
}

// Sixteen N-byte pixels into three vectors of byte lanes.
template <int N>
inline void bytes(const uint8_t* p, __m128i out[3]) {
  if constexpr (N == 3) gather3(p, kSplit3, out);
  else gather4(p, byChannel8(), out);
}
// Eight N-sample 16-bit pixels into three vectors of 16-bit lanes.
template <int N>
inline void words(const uint16_t* p, __m128i out[3]) {
  if constexpr (N == 3) gather3(reinterpret_cast<const uint8_t*>(p), kSplit3w, out);
  else gather4(reinterpret_cast<const uint8_t*>(p), byChannel16(), out);
}

// The reverse of a split for one channel: pshufb masks that spread 16 bytes of
// E-byte single-channel samples over the three or four channels of N-channel
// pixels: output vector j, byte i takes the source
// byte of its pixel's sample, or zero where the byte belongs to the fourth
// channel (filled from the aval pattern instead).
template <int E, int N>
struct Spread {
  static constexpr int kPixels = 16 / E;  // source pixels per 16 bytes
  int8_t mask[N][16];
  constexpr Spread() : mask{} {
    for (int j = 0; j < N; ++j)
      for (int i = 0; i < 16; ++i) {
        const int byte = 16 * j + i, elem = byte / E, pixel = elem / N, ch = elem % N;
        mask[j][i] = ch == 3 ? Z : int8_t(pixel * E + byte % E);
      }
  }
};
}  // namespace channels
#endif

// Three interleaved channels; memory sample k holds form channel Ik.
template <int I0, int I1, int I2, class T = Lum8u>
struct C3 {
  using Sample = T;
  static constexpr int kBytes = 3 * int(sizeof(T));  // bytes per pixel
  static void load(const SrcPlanes& s, int x, PxOf<T>& o) {
    const T* p = samples<T>(s.p[0]) + 3 * std::ptrdiff_t(x);
    o.v[I0] = loadAt(p);
    o.v[I1] = loadAt(p + 1);
    o.v[I2] = loadAt(p + 2);
    o.v[3] = 0;
  }
  template <bool WriteAlpha>
  static void store(const DstPlanes& d, int x, const PxOf<T>& o) {
    T* p = samples<T>(d.p[0]) + 3 * std::ptrdiff_t(x);
    storeAt(p, T(o.v[I0]));
    storeAt(p + 1, T(o.v[I1]));
    storeAt(p + 2, T(o.v[I2]));
  }
  // kLanesOf<O, T> pixels as one vector per channel (alpha lanes zero).
  template <class O, class L>
  static void loadLanes(const SrcPlanes& s, int x, L o[4]) {
    const T* p = samples<T>(s.p[0]) + 3 * std::ptrdiff_t(x);
    o[I0] = detail::gather<O>(p, 3);
    o[I1] = detail::gather<O>(p + 1, 3);
    o[I2] = detail::gather<O>(p + 2, 3);
    o[3] = detail::splat<O, T>(0);
  }
  template <class O, bool WriteAlpha, class L>
  static void storeLanes(const DstPlanes& d, int x, const L o[4]) {
    T* p = samples<T>(d.p[0]) + 3 * std::ptrdiff_t(x);
    detail::scatter<O>(p, 3, o[I0]);
    detail::scatter<O>(p + 1, 3, o[I1]);
    detail::scatter<O>(p + 2, 3, o[I2]);
  }
#if LUM_SIMD_SSE
  static void load(const SrcPlanes& s, int x, Vx& o) requires std::is_same_v<T, Lum8u> {
    __m128i m[3];
    detail::deinterleave3(s.p[0] + 3 * x, m);
    o.v[I0] = m[0];
    o.v[I1] = m[1];
    o.v[I2] = m[2];
    o.v[3] = _mm_setzero_si128();
  }
  template <bool WriteAlpha>
  static void store(const DstPlanes& d, int x, const Vx& o) requires std::is_same_v<T, Lum8u> {
    const __m128i m[3] = {o.v[I0], o.v[I1], o.v[I2]};
    detail::interleave3(d.p[0] + 3 * x, m);
  }
#endif
};

// Four interleaved channels, the fourth being alpha; store writes alpha only
// when the caller's rule asks for it, and otherwise leaves that byte alone.
template <int I0, int I1, int I2, class T = Lum8u>
struct C4 {
  using Sample = T;
  static constexpr int kBytes = 4 * int(sizeof(T));  // bytes per pixel
  static void load(const SrcPlanes& s, int x, PxOf<T>& o) {
    const T* p = samples<T>(s.p[0]) + 4 * std::ptrdiff_t(x);
    o.v[I0] = loadAt(p);
    o.v[I1] = loadAt(p + 1);
    o.v[I2] = loadAt(p + 2);
    o.v[3] = loadAt(p + 3);
  }
  template <bool WriteAlpha>
  static void store(const DstPlanes& d, int x, const PxOf<T>& o) {
    T* p = samples<T>(d.p[0]) + 4 * std::ptrdiff_t(x);
    storeAt(p, T(o.v[I0]));
    storeAt(p + 1, T(o.v[I1]));
    storeAt(p + 2, T(o.v[I2]));
    if constexpr (WriteAlpha) storeAt(p + 3, T(o.v[3]));
  }
  template <class O, class L>
  static void loadLanes(const SrcPlanes& s, int x, L o[4]) {
    const T* p = samples<T>(s.p[0]) + 4 * std::ptrdiff_t(x);
    o[I0] = detail::gather<O>(p, 4);
    o[I1] = detail::gather<O>(p + 1, 4);
    o[I2] = detail::gather<O>(p + 2, 4);
    o[3] = detail::gather<O>(p + 3, 4);
  }
  // Kept alpha is never written.
  template <class O, bool WriteAlpha, class L>
  static void storeLanes(const DstPlanes& d, int x, const L o[4]) {
    T* p = samples<T>(d.p[0]) + 4 * std::ptrdiff_t(x);
    detail::scatter<O>(p, 4, o[I0]);
    detail::scatter<O>(p + 1, 4, o[I1]);
    detail::scatter<O>(p + 2, 4, o[I2]);
    if constexpr (WriteAlpha) detail::scatter<O>(p + 3, 4, o[3]);
  }
#if LUM_SIMD_SSE
  static void load(const SrcPlanes& s, int x, Vx& o) requires std::is_same_v<T, Lum8u> {
    __m128i m[4];
    detail::deinterleave4(s.p[0] + 4 * x, m);
    o.v[I0] = m[0];
    o.v[I1] = m[1];
    o.v[I2] = m[2];
    o.v[3] = m[3];
  }
  template <bool WriteAlpha>
  static void store(const DstPlanes& d, int x, const Vx& o) requires std::is_same_v<T, Lum8u> {
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
template <int N, class T = Lum8u>
struct P {
  using Sample = T;
  static constexpr int kBytes = int(sizeof(T));  // bytes per pixel in each plane
  static void load(const SrcPlanes& s, int x, PxOf<T>& o) {
    for (int k = 0; k < 3; ++k) o.v[k] = loadAt(samples<T>(s.p[k]) + x);
    o.v[3] = N > 3 ? loadAt(samples<T>(s.p[3]) + x) : 0;
  }
  template <bool WriteAlpha>
  static void store(const DstPlanes& d, int x, const PxOf<T>& o) {
    for (int k = 0; k < 3; ++k) storeAt(samples<T>(d.p[k]) + x, T(o.v[k]));
    if constexpr (N > 3 && WriteAlpha) storeAt(samples<T>(d.p[3]) + x, T(o.v[3]));
  }
  template <class O, class L>
  static void loadLanes(const SrcPlanes& s, int x, L o[4]) {
    for (int k = 0; k < 3; ++k) o[k] = detail::gather<O>(samples<T>(s.p[k]) + x, 1);
    o[3] = N > 3 ? detail::gather<O>(samples<T>(s.p[3]) + x, 1) : detail::splat<O, T>(0);
  }
  template <class O, bool WriteAlpha, class L>
  static void storeLanes(const DstPlanes& d, int x, const L o[4]) {
    for (int k = 0; k < 3; ++k) detail::scatter<O>(samples<T>(d.p[k]) + x, 1, o[k]);
    if constexpr (N > 3 && WriteAlpha) detail::scatter<O>(samples<T>(d.p[3]) + x, 1, o[3]);
  }
#if LUM_SIMD_SSE
  static void load(const SrcPlanes& s, int x, Vx& o) requires std::is_same_v<T, Lum8u> {
    for (int k = 0; k < 3; ++k) o.v[k] = detail::load8x8(s.p[k] + x);
    o.v[3] = N > 3 ? detail::load8x8(s.p[3] + x) : _mm_setzero_si128();
  }
  template <bool WriteAlpha>
  static void store(const DstPlanes& d, int x, const Vx& o) requires std::is_same_v<T, Lum8u> {
    for (int k = 0; k < 3; ++k) detail::store8x8(d.p[k] + x, o.v[k]);
    if constexpr (N > 3 && WriteAlpha) detail::store8x8(d.p[3] + x, o.v[3]);
  }
#endif
};

// Y, Cb, Cr planes with chroma at half the horizontal resolution: pixel x takes
// chroma sample x >> 1 (replication, no interpolation); loads only. The row
// driver hands the chroma rows that belong to the luma row.
struct HalfChromaP3 {
  static void load(const SrcPlanes& s, int x, Px& o) {
    o.v[0] = s.p[0][x];
    o.v[1] = s.p[1][x >> 1];
    o.v[2] = s.p[2][x >> 1];
    o.v[3] = 0;
  }
#if LUM_SIMD_SSE
  // Eight pixels from x (even): 8 luma bytes and 4 bytes of each chroma plane.
  static __m128i chroma4(const uint8_t* p) {
    int32_t w;
    std::memcpy(&w, p, 4);
    const __m128i c = _mm_cvtepu8_epi16(_mm_cvtsi32_si128(w));
    return _mm_unpacklo_epi16(c, c);
  }
  static void load(const SrcPlanes& s, int x, Vx& o) {
    o.v[0] = _mm_cvtepu8_epi16(_mm_loadl_epi64(reinterpret_cast<const __m128i*>(s.p[0] + x)));
    o.v[1] = chroma4(s.p[1] + (x >> 1));
    o.v[2] = chroma4(s.p[2] + (x >> 1));
    o.v[3] = _mm_setzero_si128();
  }
#endif
};

// Packed CbYCr422 (UYVY): Cb Y0 Cr Y1 per pixel pair; both pixels of a pair take
// its Cb and Cr; loads only. Al: the vector loads may assume 16-byte alignment.
template <bool Al>
struct CbYCrC2 {
  static void load(const SrcPlanes& s, int x, Px& o) {
    const uint8_t* pair = s.p[0] + 4 * (x >> 1);
    o.v[0] = pair[1 + 2 * (x & 1)];
    o.v[1] = pair[0];
    o.v[2] = pair[2];
    o.v[3] = 0;
  }
#if LUM_SIMD_SSE
  // Eight pixels from x (a multiple of 8): 16 bytes, split into 16-bit lanes.
  static void load(const SrcPlanes& s, int x, Vx& o) {
    using detail::Z;
    const __m128i m = detail::load16<Al>(s.p[0] + 2 * x);
    o.v[0] = _mm_shuffle_epi8(m, _mm_setr_epi8(1, Z, 3, Z, 5, Z, 7, Z, 9, Z, 11, Z, 13, Z, 15, Z));
    o.v[1] = _mm_shuffle_epi8(m, _mm_setr_epi8(0, Z, 0, Z, 4, Z, 4, Z, 8, Z, 8, Z, 12, Z, 12, Z));
    o.v[2] = _mm_shuffle_epi8(m, _mm_setr_epi8(2, Z, 2, Z, 6, Z, 6, Z, 10, Z, 10, Z, 14, Z, 14, Z));
    o.v[3] = _mm_setzero_si128();
  }
#endif
};

using RGB = C3<0, 1, 2>;
using BGR = C3<2, 1, 0>;
using RGBA = C4<0, 1, 2>;
using BGRA = C4<2, 1, 0>;
using P3 = P<3>;
using P4 = P<4>;

// The same layouts over any sample type.
template <class T>
using RGBOf = C3<0, 1, 2, T>;
template <class T>
using BGROf = C3<2, 1, 0, T>;
template <class T>
using RGBAOf = C4<0, 1, 2, T>;
template <class T>
using BGRAOf = C4<2, 1, 0, T>;
template <class T>
using P3Of = P<3, T>;
template <class T>
using P4Of = P<4, T>;

}  // namespace lum::layout
