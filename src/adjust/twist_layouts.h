// Colour twist: 128-bit moves of four pixels between memory and float lanes, by
// shuffles, for the shapes and sample types the twist runs most. They move the
// same samples as the generic Io of twist_kernel.h and read and write nothing past
// the four pixels (alpha is read where it lies between, never written).
#pragma once

#include <cstring>

#include "adjust/twist_kernel.h"
#include "frame/layouts.h"

#if LUM_SIMD_SSE
namespace lum::twist {

namespace sse {
using lanes::Sse;
constexpr int8_t Z = -128;

struct Mask {
  int8_t b[16];
};
// Spreads elements of E bytes from one channel vector (element i at bytes E i ..)
// into an interleaved run of N-element pixels, channel k, for the run's bytes
// [from, from + 16); other bytes zero.
constexpr Mask spread(int e, int n, int k, int from) {
  Mask m{};
  for (int j = 0; j < 16; ++j) {
    const int byte = from + j, elem = byte / e;
    m.b[j] = elem % n == k ? int8_t((elem / n) * e + byte % e) : Z;
  }
  return m;
}
// The reverse: gathers channel k's elements of E bytes from an interleaved run's
// bytes [from, from + 16) into element slots of W bytes (zero-extended), slot i
// for pixel i.
constexpr Mask gather(int e, int n, int k, int from, int w) {
  Mask m{};
  for (int j = 0; j < 16; ++j) m.b[j] = Z;
  for (int i = 0; i < 16 / w; ++i)
    for (int c = 0; c < e; ++c) {
      const int byte = (i * n + k) * e + c - from;
      if (byte >= 0 && byte < 16) m.b[i * w + c] = int8_t(byte);
    }
  return m;
}
inline __m128i shuf(__m128i v, const Mask& m) {
  return _mm_shuffle_epi8(v, _mm_loadu_si128(reinterpret_cast<const __m128i*>(m.b)));
}
// n bytes (4, 8, 12 or 16) from p into the low bytes of a register.
inline __m128i loadBytes(const void* p, int n) {
  const auto* q = static_cast<const uint8_t*>(p);
  if (n == 16) return _mm_loadu_si128(reinterpret_cast<const __m128i*>(q));
  int32_t w;
  if (n == 4) {
    std::memcpy(&w, q, 4);
    return _mm_cvtsi32_si128(w);
  }
  const __m128i lo = _mm_loadl_epi64(reinterpret_cast<const __m128i*>(q));
  if (n == 8) return lo;
  std::memcpy(&w, q + 8, 4);
  return _mm_insert_epi32(lo, w, 2);
}
inline void storeBytes(void* p, __m128i v, int n) {
  auto* q = static_cast<uint8_t*>(p);
  if (n == 16) {
    _mm_storeu_si128(reinterpret_cast<__m128i*>(q), v);
    return;
  }
  int32_t w;
  if (n == 4) {
    w = _mm_cvtsi128_si32(v);
    std::memcpy(q, &w, 4);
    return;
  }
  _mm_storel_epi64(reinterpret_cast<__m128i*>(q), v);
  if (n == 12) {
    w = _mm_extract_epi32(v, 2);
    std::memcpy(q + 8, &w, 4);
  }
}
// Four samples of an integer type, zero- or sign-extended to 32-bit lanes, from
// the low bytes of v; and 32-bit lanes (already within the type's range) narrowed.
template <class T>
inline __m128i widen(__m128i v) {
  if constexpr (std::is_same_v<T, Lum8u>) return _mm_cvtepu8_epi32(v);
  else if constexpr (std::is_same_v<T, Lum16u>) return _mm_cvtepu16_epi32(v);
  else return _mm_cvtepi16_epi32(v);
}
template <class T>
inline __m128i narrow(__m128i v) {
  if constexpr (std::is_same_v<T, Lum8u>) return _mm_packus_epi16(_mm_packus_epi32(v, v), v);
  else if constexpr (std::is_same_v<T, Lum16u>) return _mm_packus_epi32(v, v);
  else return _mm_packs_epi32(v, v);
}
// Three channels of four 8-bit samples in 32-bit lanes (within 0..255) as the
// bytes r0..r3 g0..g3 b0..b3 (and b0..b3 again), in each 128-bit half.
template <class V>
inline V channelMajor8(V r, V g, V b) {
  if constexpr (sizeof(V) == 16) return _mm_packus_epi16(_mm_packus_epi32(r, g), _mm_packus_epi32(b, b));
  else return _mm256_packus_epi16(_mm256_packus_epi32(r, g), _mm256_packus_epi32(b, b));
}
// Channel k of four 3-byte pixels into 32-bit lanes, zero-extended.
inline constexpr Mask kSplit3x4[3] = {gather(1, 3, 0, 0, 4), gather(1, 3, 1, 0, 4), gather(1, 3, 2, 0, 4)};
// Channel-major bytes of four pixels to their twelve interleaved bytes.
inline constexpr Mask kInterleave3x4 = {{0, 4, 8, 1, 5, 9, 2, 6, 10, 3, 7, 11, Z, Z, Z, Z}};
inline void storeF(float* p, __m128 v, bool stream) {
  if (stream && aligned16(p)) _mm_stream_ps(p, v);
  else _mm_storeu_ps(p, v);
}
}  // namespace sse

// Three interleaved floats.
template <>
struct Io<lanes::Sse, Lum32f, Shape::C3> {
  static constexpr int kLanes = 4;
  static void load(const Lum32f* const* p, std::ptrdiff_t x, __m128 s[4]) {
    layout::channels::floats<3>(p[0] + 3 * x, s);
  }
  template <bool Stream>
  static void store(Lum32f* const* p, std::ptrdiff_t x, const __m128* r) {
    const __m128 a = _mm_unpacklo_ps(r[0], r[1]);                        // R0 G0 R1 G1
    const __m128 b = _mm_unpackhi_ps(r[0], r[1]);                        // R2 G2 R3 G3
    const __m128 c = _mm_shuffle_ps(r[2], a, _MM_SHUFFLE(2, 2, 0, 0));   // B0 B0 R1 R1
    const __m128 d = _mm_shuffle_ps(a, r[2], _MM_SHUFFLE(1, 1, 3, 3));   // G1 G1 B1 B1
    const __m128 e = _mm_shuffle_ps(r[2], b, _MM_SHUFFLE(3, 2, 3, 2));   // B2 B3 R3 G3
    float* q = p[0] + 3 * x;
    sse::storeF(q, _mm_shuffle_ps(a, c, _MM_SHUFFLE(2, 0, 1, 0)), Stream);
    sse::storeF(q + 4, _mm_shuffle_ps(d, b, _MM_SHUFFLE(1, 0, 2, 0)), Stream);
    sse::storeF(q + 8, _mm_shuffle_ps(e, e, _MM_SHUFFLE(1, 3, 2, 0)), Stream);
  }
};

// Four interleaved floats: all four channels (C4), or three with alpha kept (AC4).
template <Shape S>
  requires(S == Shape::C4 || S == Shape::AC4)
struct Io<lanes::Sse, Lum32f, S> {
  static constexpr int kLanes = 4;
  static void load(const Lum32f* const* p, std::ptrdiff_t x, __m128 s[4]) {
    const float* q = p[0] + 4 * x;
    __m128 a = _mm_loadu_ps(q), b = _mm_loadu_ps(q + 4), c = _mm_loadu_ps(q + 8), d = _mm_loadu_ps(q + 12);
    _MM_TRANSPOSE4_PS(a, b, c, d);
    s[0] = a, s[1] = b, s[2] = c, s[3] = d;
  }
  template <bool Stream>
  static void store(Lum32f* const* p, std::ptrdiff_t x, const __m128* r) {
    __m128 a = r[0], b = r[1], c = r[2], d = S == Shape::C4 ? r[3] : _mm_setzero_ps();
    _MM_TRANSPOSE4_PS(a, b, c, d);
    float* q = p[0] + 4 * x;
    const __m128 px[4] = {a, b, c, d};
    for (int i = 0; i < 4; ++i) {
      if constexpr (S == Shape::C4) {
        sse::storeF(q + 4 * i, px[i], Stream);
      } else {
        _mm_storel_pi(reinterpret_cast<__m64*>(q + 4 * i), px[i]);
        _mm_store_ss(q + 4 * i + 2, _mm_movehl_ps(px[i], px[i]));
      }
    }
  }
};

// Three float planes.
template <>
struct Io<lanes::Sse, Lum32f, Shape::P3> {
  static constexpr int kLanes = 4;
  static void load(const Lum32f* const* p, std::ptrdiff_t x, __m128 s[4]) {
    for (int k = 0; k < 3; ++k) s[k] = _mm_loadu_ps(p[k] + x);
  }
  template <bool Stream>
  static void store(Lum32f* const* p, std::ptrdiff_t x, const __m128* r) {
    for (int k = 0; k < 3; ++k) _mm_storeu_ps(p[k] + x, r[k]);
  }
};

// Three interleaved integer samples: four pixels are 12 or 24 bytes.
template <class T>
  requires(!std::is_same_v<T, Lum32f>)
struct Io<lanes::Sse, T, Shape::C3> {
  static constexpr int kLanes = 4;
  static constexpr int E = int(sizeof(T));
  static void load(const T* const* p, std::ptrdiff_t x, __m128 s[4]) {
    const uint8_t* q = reinterpret_cast<const uint8_t*>(p[0] + 3 * x);
    if constexpr (E == 1) {
      const __m128i v = sse::loadBytes(q, 12);
      for (int k = 0; k < 3; ++k) s[k] = _mm_cvtepi32_ps(sse::shuf(v, sse::kSplit3x4[k]));
    } else {
      static constexpr sse::Mask lo[3] = {sse::gather(2, 3, 0, 0, 2), sse::gather(2, 3, 1, 0, 2),
                                          sse::gather(2, 3, 2, 0, 2)};
      static constexpr sse::Mask hi[3] = {sse::gather(2, 3, 0, 16, 2), sse::gather(2, 3, 1, 16, 2),
                                          sse::gather(2, 3, 2, 16, 2)};
      const __m128i a = sse::loadBytes(q, 16), b = sse::loadBytes(q + 16, 8);
      for (int k = 0; k < 3; ++k)
        s[k] = _mm_cvtepi32_ps(sse::widen<T>(_mm_or_si128(sse::shuf(a, lo[k]), sse::shuf(b, hi[k]))));
    }
  }
  template <bool Stream>
  static void store(T* const* p, std::ptrdiff_t x, const __m128i* r) {
    uint8_t* q = reinterpret_cast<uint8_t*>(p[0] + 3 * x);
    if constexpr (E == 1) {
      sse::storeBytes(q, sse::shuf(sse::channelMajor8(r[0], r[1], r[2]), sse::kInterleave3x4), 12);
    } else {
      static constexpr sse::Mask lo[3] = {sse::spread(2, 3, 0, 0), sse::spread(2, 3, 1, 0), sse::spread(2, 3, 2, 0)};
      static constexpr sse::Mask hi[3] = {sse::spread(2, 3, 0, 16), sse::spread(2, 3, 1, 16),
                                          sse::spread(2, 3, 2, 16)};
      __m128i n[3], a = _mm_setzero_si128(), b = _mm_setzero_si128();
      for (int k = 0; k < 3; ++k) {
        n[k] = sse::narrow<T>(r[k]);
        a = _mm_or_si128(a, sse::shuf(n[k], lo[k]));
        b = _mm_or_si128(b, sse::shuf(n[k], hi[k]));
      }
      sse::storeBytes(q, a, 16);
      sse::storeBytes(q + 16, b, 8);
    }
  }
};

// Three integer planes.
template <class T>
  requires(!std::is_same_v<T, Lum32f>)
struct Io<lanes::Sse, T, Shape::P3> {
  static constexpr int kLanes = 4;
  static void load(const T* const* p, std::ptrdiff_t x, __m128 s[4]) {
    for (int k = 0; k < 3; ++k) s[k] = _mm_cvtepi32_ps(sse::widen<T>(sse::loadBytes(p[k] + x, 4 * sizeof(T))));
  }
  template <bool Stream>
  static void store(T* const* p, std::ptrdiff_t x, const __m128i* r) {
    for (int k = 0; k < 3; ++k) sse::storeBytes(p[k] + x, sse::narrow<T>(r[k]), 4 * sizeof(T));
  }
};

}  // namespace lum::twist
#endif
