// The eight-pixel blocks of the model forms (model_frame.h), for models_avx2.cpp
// only: layout adaptors of three-channel 8u and 32f pixels on 256-bit registers
// (each 128-bit half holds four pixels as the SSE adaptors lay them out) and the
// row loop that wide::blocks instantiates. Everything here is file-local to the
// AVX2 file but wide::blocks itself.
#pragma once

#include "frame/lanes_avx2.h"
#include "models/model_frame.h"

#if LUM_SIMD_SSE && defined(__AVX2__)
namespace lum::models {
namespace {

// Twelve bytes (four 3-byte pixels) into the low 12 bytes of a register.
inline __m128i load12(const uint8_t* p) {
  int32_t w;
  std::memcpy(&w, p + 8, 4);
  return _mm_insert_epi32(_mm_loadl_epi64(reinterpret_cast<const __m128i*>(p)), w, 2);
}
inline void store12(uint8_t* p, __m128i v) {
  _mm_storel_epi64(reinterpret_cast<__m128i*>(p), v);
  const int32_t w = _mm_extract_epi32(v, 2);
  std::memcpy(p + 8, &w, 4);
}

// Eight pixels of a C3 layout of 8u or 32f and three registers of 32-bit lanes, memory order.
template <class T>
struct WideC3;
template <>
struct WideC3<Lum8u> {
  using Ln = __m256i;
  static void load(const uint8_t* p, Ln out[3]) {
    using layout::detail::Z;
    const __m256i v = _mm256_set_m128i(load12(p + 12), load12(p));
    for (int k = 0; k < 3; ++k)
      out[k] = _mm256_shuffle_epi8(v, _mm256_setr_epi8(k, Z, Z, Z, 3 + k, Z, Z, Z, 6 + k, Z, Z, Z, 9 + k, Z, Z, Z, k,
                                                       Z, Z, Z, 3 + k, Z, Z, Z, 6 + k, Z, Z, Z, 9 + k, Z, Z, Z));
  }
  static void store(uint8_t* p, const Ln in[3]) {
    using layout::detail::Z;
    const __m256i m = _mm256_setr_epi8(0, 4, 8, 12, Z, Z, Z, Z, Z, Z, Z, Z, Z, Z, Z, Z, 0, 4, 8, 12, Z, Z, Z, Z, Z,
                                       Z, Z, Z, Z, Z, Z, Z);
    const __m256i t = _mm256_unpacklo_epi8(_mm256_shuffle_epi8(in[0], m), _mm256_shuffle_epi8(in[1], m));
    const __m256i b2 = _mm256_shuffle_epi8(in[2], m);
    const __m256i v = _mm256_or_si256(
        _mm256_shuffle_epi8(t, _mm256_setr_epi8(0, 1, Z, 2, 3, Z, 4, 5, Z, 6, 7, Z, Z, Z, Z, Z, 0, 1, Z, 2, 3, Z, 4,
                                                5, Z, 6, 7, Z, Z, Z, Z, Z)),
        _mm256_shuffle_epi8(b2, _mm256_setr_epi8(Z, Z, 0, Z, Z, 1, Z, Z, 2, Z, Z, 3, Z, Z, Z, Z, Z, Z, 0, Z, Z, 1, Z,
                                                 Z, 2, Z, Z, 3, Z, Z, Z, Z)));
    store12(p, _mm256_castsi256_si128(v));
    store12(p + 12, _mm256_extracti128_si256(v, 1));
  }
};
template <>
struct WideC3<Lum32f> {
  using Ln = __m256;
  static void load(const uint8_t* row, Ln out[3]) {
    const float* p = reinterpret_cast<const float*>(row);
    // Per half: a = r0 g0 b0 r1, b = g1 b1 r2 g2, c = b2 r3 g3 b3.
    const __m256 a = _mm256_set_m128(_mm_loadu_ps(p + 12), _mm_loadu_ps(p));
    const __m256 b = _mm256_set_m128(_mm_loadu_ps(p + 16), _mm_loadu_ps(p + 4));
    const __m256 c = _mm256_set_m128(_mm_loadu_ps(p + 20), _mm_loadu_ps(p + 8));
    const __m256 t1 = _mm256_shuffle_ps(b, c, _MM_SHUFFLE(1, 1, 2, 2));  // r2 r2 r3 r3
    const __m256 t2 = _mm256_shuffle_ps(b, c, _MM_SHUFFLE(2, 2, 3, 3));  // g2 g2 g3 g3
    const __m256 t3 = _mm256_shuffle_ps(a, b, _MM_SHUFFLE(0, 0, 1, 1));  // g0 g0 g1 g1
    const __m256 t4 = _mm256_shuffle_ps(a, b, _MM_SHUFFLE(1, 1, 2, 2));  // b0 b0 b1 b1
    const __m256 t5 = _mm256_shuffle_ps(c, c, _MM_SHUFFLE(3, 3, 0, 0));  // b2 b2 b3 b3
    out[0] = _mm256_shuffle_ps(a, t1, _MM_SHUFFLE(2, 0, 3, 0));
    out[1] = _mm256_shuffle_ps(t3, t2, _MM_SHUFFLE(2, 0, 2, 0));
    out[2] = _mm256_shuffle_ps(t4, t5, _MM_SHUFFLE(2, 0, 2, 0));
  }
  static void store(uint8_t* row, const Ln in[3]) {
    float* p = reinterpret_cast<float*>(row);
    const __m256 a = in[0], b = in[1], c = in[2];
    // Per half: o0 = a0 b0 c0 a1, o1 = b1 c1 a2 b2, o2 = c2 a3 b3 c3.
    const __m256 o0 = _mm256_shuffle_ps(_mm256_unpacklo_ps(a, b), _mm256_unpacklo_ps(c, a), _MM_SHUFFLE(3, 0, 1, 0));
    const __m256 o1 = _mm256_shuffle_ps(_mm256_unpacklo_ps(b, c), _mm256_unpackhi_ps(a, b), _MM_SHUFFLE(1, 0, 3, 2));
    const __m256 o2 = _mm256_shuffle_ps(_mm256_unpackhi_ps(c, a), _mm256_unpackhi_ps(b, c), _MM_SHUFFLE(3, 2, 3, 0));
    _mm_storeu_ps(p, _mm256_castps256_ps128(o0));
    _mm_storeu_ps(p + 4, _mm256_castps256_ps128(o1));
    _mm_storeu_ps(p + 8, _mm256_castps256_ps128(o2));
    _mm_storeu_ps(p + 12, _mm256_extractf128_ps(o0, 1));
    _mm_storeu_ps(p + 16, _mm256_extractf128_ps(o1, 1));
    _mm_storeu_ps(p + 20, _mm256_extractf128_ps(o2, 1));
  }
};

// Eight pixels of layout L (C3 of 8u or 32f) in the form's channel order.
template <class L>
struct WideLanes {
  using M = PixelMap<L>;
  using T = typename M::Sample;
  using W = WideC3<T>;
  static void load(const uint8_t* row, int x, typename W::Ln out[3]) {
    typename W::Ln m[3];
    W::load(row + std::ptrdiff_t(x) * 3 * int(sizeof(T)), m);
    for (int k = 0; k < 3; ++k) out[k] = m[M::kAt[k]];
  }
  static void store(uint8_t* row, int x, const typename W::Ln in[3]) {
    typename W::Ln m[3];
    for (int k = 0; k < 3; ++k) m[M::kAt[k]] = in[k];
    W::store(row + std::ptrdiff_t(x) * 3 * int(sizeof(T)), m);
  }
};

}  // namespace

namespace wide {
template <class Form, class Src, class Dst>
int blocks(const uint8_t* s, uint8_t* d, int n) {
  int x = 0;
  for (; x + 8 <= n; x += 8) {
    typename WideLanes<Src>::W::Ln in[3];
    typename WideLanes<Dst>::W::Ln out[3];
    WideLanes<Src>::load(s, x, in);
    Form::template vblock<lanes::Avx2>(in, out);
    WideLanes<Dst>::store(d, x, out);
  }
  return x;
}
}  // namespace wide

}  // namespace lum::models
#endif
