// 12-bit pack and unpack: the block rule over 32-bit lanes of sample pairs, and
// the 256-bit steps of sixteen samples (pack12_avx2.cpp), which give the bytes of
// two blocks of 8.
#pragma once

#include <cstdint>

#include "frame/lanes.h"

namespace lum::pack12 {

// w moved by S bits: left when S is positive, right when negative.
template <class O, int S, class V = typename O::V>
inline V moved(V w) {
  if constexpr (S >= 0) return O::sll32(w, S);
  else return O::srl32(w, -S);
}
// The OR of four fields of w, each moved by its shift and masked.
template <class O, int S0, int M0, int S1, int M1, int S2, int M2, int S3, int M3, class V = typename O::V>
inline V fields(V w) {
  const V a = O::and_(moved<O, S0>(w), O::set32(M0)), b = O::and_(moved<O, S1>(w), O::set32(M1));
  const V c = O::and_(moved<O, S2>(w), O::set32(M2)), d = O::and_(moved<O, S3>(w), O::set32(M3));
  return O::or_(O::or_(a, b), O::or_(c, d));
}
// Pair words A | B << 16 to packed bytes, the block's rule: byte 0 = A >> 4,
// byte 1 = (A & 15) << 4 | A >> 12 | (B >> 8) & 15, byte 2 = B & 255.
template <class O, class V = typename O::V>
inline V packLanes(V w) {
  return fields<O, -4, 0xFFF, 12, 0xF000, -16, 0xF00, 0, 0xFF0000>(w);
}
// Packed bytes b0 | b1 << 8 | b2 << 16 to pair words: A = b0 << 4 | b1 >> 4,
// B = (b1 & 15) << 8 | b2.
template <class O, class V = typename O::V>
inline V unpackLanes(V u) {
  return fields<O, 4, 0xFF0, -12, 0xF, 16, 0x0F000000, 0, 0x00FF0000>(u);
}

// Sixteen samples a 256-bit step from sample 0 while they fit; return where the
// steps end. Defined in pack12_avx2.cpp, entered only where useWide() holds.
int packWide(const uint16_t* s, uint8_t* d, int w);
int unpackWide(const uint8_t* s, uint16_t* d, int w);

}  // namespace lum::pack12

#if LUM_SIMD_SSE && defined(__AVX2__)
#include "frame/lanes_avx2.h"

namespace lum::pack12 {

// Eight pairs between memory and 32-bit lanes, four to each 128-bit half: words
// A | B << 16 on the 16-bit side, bytes b0 | b1 << 8 | b2 << 16 on the packed side
// (24 bytes, nothing read or written past them).
struct Avx2Moves {
  static __m256i loadWords(const uint16_t* p) { return _mm256_loadu_si256(reinterpret_cast<const __m256i*>(p)); }
  static void storeWords(uint16_t* p, __m256i w) { _mm256_storeu_si256(reinterpret_cast<__m256i*>(p), w); }
  static __m256i loadTriples(const uint8_t* p) {
    const __m256i v = _mm256_set_m128i(_mm_loadl_epi64(reinterpret_cast<const __m128i*>(p + 16)),
                                       _mm_loadu_si128(reinterpret_cast<const __m128i*>(p)));
    const __m256i h = _mm256_permutevar8x32_epi32(v, _mm256_setr_epi32(0, 1, 2, 0, 3, 4, 5, 0));
    constexpr int8_t Z = -128;
    return _mm256_shuffle_epi8(h, _mm256_setr_epi8(0, 1, 2, Z, 3, 4, 5, Z, 6, 7, 8, Z, 9, 10, 11, Z, 0, 1, 2, Z, 3, 4,
                                                   5, Z, 6, 7, 8, Z, 9, 10, 11, Z));
  }
  static void storeTriples(uint8_t* p, __m256i u) {
    constexpr int8_t Z = -128;
    const __m256i c = _mm256_shuffle_epi8(u, _mm256_setr_epi8(0, 1, 2, 4, 5, 6, 8, 9, 10, 12, 13, 14, Z, Z, Z, Z, 0, 1,
                                                              2, 4, 5, 6, 8, 9, 10, 12, 13, 14, Z, Z, Z, Z));
    const __m256i t = _mm256_permutevar8x32_epi32(c, _mm256_setr_epi32(0, 1, 2, 4, 5, 6, 7, 7));
    _mm_storeu_si128(reinterpret_cast<__m128i*>(p), _mm256_castsi256_si128(t));
    _mm_storel_epi64(reinterpret_cast<__m128i*>(p + 16), _mm256_extracti128_si256(t, 1));
  }
};

template <class O, class Io>
int packRun(const uint16_t* s, uint8_t* d, int w) {
  int x = 0;
  for (; x + 16 <= w; x += 16) Io::storeTriples(d + x / 2 * 3, packLanes<O>(Io::loadWords(s + x)));
  return x;
}
template <class O, class Io>
int unpackRun(const uint8_t* s, uint16_t* d, int w) {
  int x = 0;
  for (; x + 16 <= w; x += 16) Io::storeWords(d + x, unpackLanes<O>(Io::loadTriples(s + x / 2 * 3)));
  return x;
}

}  // namespace lum::pack12
#endif
