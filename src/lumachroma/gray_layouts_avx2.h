// Layout adaptors of the 256-bit gray blocks: the loads, shuffles and stores
// that move samples between the rows and the lanes of lanes::Avx2, with the
// same members as Io128 (forms_gray.h). Each step is two 128-bit steps side by
// side, one per 128-bit half, with the 128-bit masks; the saturating packs of
// the stores are the forms' clamps. Include only from *_avx2.cpp files;
// everything here has internal linkage.
#pragma once

#include "frame/lanes_avx2.h"
#include "frame/layouts_avx2.h"
#include "lumachroma/forms_gray.h"

#if LUM_SIMD_SSE && defined(__AVX2__)
namespace lum::gray {
namespace {

struct Io256 {
  using Y = __m256i;

  // Thirty-two N-byte pixels as two sets of three channels, samples << 8:
  // pixels 0..7 | 16..23, then 8..15 | 24..31; the store's pack restores the order.
  template <int N>
  static void q15In(const uint8_t* p, Y c[2][3]) {
    Y b[3];
    layout16::channels::bytes<N>(p, b);
    const Y z = _mm256_setzero_si256();
    for (int k = 0; k < 3; ++k) {
      c[0][k] = _mm256_unpacklo_epi8(z, b[k]);
      c[1][k] = _mm256_unpackhi_epi8(z, b[k]);
    }
  }
  static void q15Out(uint8_t* d, Y a, Y b) {
    _mm256_storeu_si256(reinterpret_cast<Y*>(d), _mm256_packus_epi16(a, b));
  }

  // Sixteen N-sample 16-bit pixels as two sets of three channels on 32-bit
  // lanes: pixels 0..3 | 8..11, then 4..7 | 12..15.
  template <class T, int N>
  static void wordsIn(const T* s, Y c[2][3]) {
    Y w[3];
    layout16::channels::words<N>(reinterpret_cast<const uint16_t*>(s), w);
    for (int k = 0; k < 3; ++k)
      for (int h = 0; h < 2; ++h) {
        const Y u = h ? _mm256_unpackhi_epi16(w[k], w[k]) : _mm256_unpacklo_epi16(w[k], w[k]);
        c[h][k] = std::is_same_v<T, Lum16s> ? _mm256_srai_epi32(u, 16) : _mm256_srli_epi32(u, 16);
      }
  }
  template <class T>
  static void wordsOut(T* d, Y a, Y b) {
    const Y out = std::is_same_v<T, Lum16s> ? _mm256_packs_epi32(a, b) : _mm256_packus_epi32(a, b);
    _mm256_storeu_si256(reinterpret_cast<Y*>(d), out);
  }

  // Four 3- or 4-channel float pixels per half (half 1 at p + 4N floats).
  template <int N>
  static void floatsIn(const float* p, __m256 out[3]) { layout16::channels::floats<N>(p, out); }

  // Gray to colour. Four channels take 8 source bytes a step, in both halves,
  // each half spreading its part; three channels take 32 source bytes a step
  // and put the six 16-byte blocks in order.
  template <class T, int N>
  static constexpr int kSpread = (N == 4 ? 8 : 32) / int(sizeof(T));
  static Y alpha(__m128i pattern) { return layout16::both(pattern); }
  template <class T, int N>
  static void spread(const T* s, T* d, Y alpha) {
    static constexpr layout::channels::Spread<int(sizeof(T)), N> kMasks{};
    auto mask = [](int j) { return _mm_loadu_si128(reinterpret_cast<const __m128i*>(kMasks.mask[j])); };
    if constexpr (N == 4) {
      const Y m = _mm256_inserti128_si256(_mm256_castsi128_si256(mask(0)), mask(1), 1);
      long long q;
      std::memcpy(&q, s, 8);
      const Y v = _mm256_set1_epi64x(q);
      _mm256_storeu_si256(reinterpret_cast<Y*>(d), _mm256_or_si256(_mm256_shuffle_epi8(v, m), alpha));
    } else {
      // Half 0 spreads the first 16 source bytes into blocks 0..2, half 1 the
      // next 16 into blocks 3..5.
      const Y v = _mm256_loadu_si256(reinterpret_cast<const Y*>(s));
      using layout16::channels::shuf;
      const Y o0 = shuf(v, mask(0)), o1 = shuf(v, mask(1)), o2 = shuf(v, mask(2));
      auto* q = reinterpret_cast<Y*>(d);
      _mm256_storeu_si256(q, _mm256_permute2x128_si256(o0, o1, 0x20));
      _mm256_storeu_si256(q + 1, _mm256_permute2x128_si256(o2, o0, 0x30));
      _mm256_storeu_si256(q + 2, _mm256_permute2x128_si256(o1, o2, 0x31));
    }
  }

  // Luma of packed 4:2:2, 32 pixels a step.
  static constexpr int kLuma = 32;
  static void luma(const uint8_t* s, uint8_t* d) {
    const Y m = _mm256_set1_epi16(0x00FF);
    const Y a = _mm256_and_si256(_mm256_loadu_si256(reinterpret_cast<const Y*>(s)), m);
    const Y b = _mm256_and_si256(_mm256_loadu_si256(reinterpret_cast<const Y*>(s + 32)), m);
    // packus interleaves the halves (a0 b0 a1 b1); the permute restores the order.
    _mm256_storeu_si256(reinterpret_cast<Y*>(d), _mm256_permute4x64_epi64(_mm256_packus_epi16(a, b), 0xD8));
  }
};

}  // namespace
}  // namespace lum::gray
#endif
