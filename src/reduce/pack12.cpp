// 12-bit pack and unpack: rows of 16-bit words holding 12-bit samples against a
// dense form of two samples in three bytes, A11..A0 B11..B0 big-endian. Each row
// runs blocks of 8 samples, one block of 4, then pairs and a last odd sample one
// by one. The blocks of the pack OR bits 15..12 of each pair's first sample into
// its second byte; the pairs after them ignore those bits (valid 12-bit input
// gives the same bytes either way).
#include <cstring>

#include "frame/check.h"
#include "frame/lanes.h"
#include "frame/rows.h"
#include "lumcc.h"

using namespace lum;

namespace {

// Moves pairs of samples between memory and 32-bit lanes (one pair a lane):
// words A | B << 16 on the 16-bit side, bytes b0 | b1 << 8 | b2 << 16 on the
// packed side; `pairs` is 4 or 2 and nothing past them is read or written.
template <class O>
struct PairIo {
  using V = typename O::V;
  static V loadWords(const uint16_t* p, int pairs) {
    alignas(16) uint8_t t[16] = {};
    std::memcpy(t, p, size_t(4 * pairs));
    return O::load(t);
  }
  static void storeWords(uint16_t* p, V w, int pairs) {
    alignas(16) uint8_t t[16];
    O::store(t, w);
    std::memcpy(p, t, size_t(4 * pairs));
  }
  static V loadTriples(const uint8_t* p, int pairs) {
    alignas(16) uint8_t t[16] = {};
    for (int i = 0; i < pairs; ++i) std::memcpy(t + 4 * i, p + 3 * i, 3);
    return O::load(t);
  }
  static void storeTriples(uint8_t* p, V u, int pairs) {
    alignas(16) uint8_t t[16];
    O::store(t, u);
    for (int i = 0; i < pairs; ++i) std::memcpy(p + 3 * i, t + 4 * i, 3);
  }
};

#if LUM_SIMD_SSE
// The same moves by byte shuffles.
template <>
struct PairIo<lanes::Sse> {
  using V = __m128i;
  static constexpr int8_t Z = -128;
  static V loadWords(const uint16_t* p, int pairs) {
    return pairs == 4 ? _mm_loadu_si128(reinterpret_cast<const V*>(p)) : _mm_loadl_epi64(reinterpret_cast<const V*>(p));
  }
  static void storeWords(uint16_t* p, V w, int pairs) {
    if (pairs == 4) _mm_storeu_si128(reinterpret_cast<V*>(p), w);
    else _mm_storel_epi64(reinterpret_cast<V*>(p), w);
  }
  static V loadTriples(const uint8_t* p, int pairs) {
    int32_t hi;
    V b;
    if (pairs == 4) {
      std::memcpy(&hi, p + 8, 4);
      b = _mm_insert_epi32(_mm_loadl_epi64(reinterpret_cast<const V*>(p)), hi, 2);
    } else {
      int32_t lo = 0;
      hi = 0;
      std::memcpy(&lo, p, 4);
      std::memcpy(&hi, p + 4, 2);
      b = _mm_insert_epi32(_mm_cvtsi32_si128(lo), hi, 1);
    }
    return _mm_shuffle_epi8(b, _mm_setr_epi8(0, 1, 2, Z, 3, 4, 5, Z, 6, 7, 8, Z, 9, 10, 11, Z));
  }
  static void storeTriples(uint8_t* p, V u, int pairs) {
    const V b = _mm_shuffle_epi8(u, _mm_setr_epi8(0, 1, 2, 4, 5, 6, 8, 9, 10, 12, 13, 14, Z, Z, Z, Z));
    if (pairs == 4) {
      _mm_storel_epi64(reinterpret_cast<V*>(p), b);
      const int32_t hi = _mm_extract_epi32(b, 2);
      std::memcpy(p + 8, &hi, 4);
    } else {
      const int32_t lo = _mm_cvtsi128_si32(b), hi = _mm_extract_epi32(b, 1);
      std::memcpy(p, &lo, 4);
      std::memcpy(p + 4, &hi, 2);
    }
  }
};
#endif

// Pair words A | B << 16 to packed bytes, the block's rule: byte 0 = A >> 4,
// byte 1 = (A & 15) << 4 | A >> 12 | (B >> 8) & 15, byte 2 = B & 255.
template <class O, class V = typename O::V>
inline V packLanes(V w) {
  const V a = O::and_(O::srl32(w, 4), O::set32(0xFFF));
  const V b = O::and_(O::sll32(w, 12), O::set32(0xF000));
  const V c = O::and_(O::srl32(w, 16), O::set32(0xF00));
  const V d = O::and_(w, O::set32(0xFF0000));
  return O::or_(O::or_(a, b), O::or_(c, d));
}
// Packed bytes b0 | b1 << 8 | b2 << 16 to pair words: A = b0 << 4 | b1 >> 4,
// B = (b1 & 15) << 8 | b2.
template <class O, class V = typename O::V>
inline V unpackLanes(V u) {
  const V a = O::and_(O::sll32(u, 4), O::set32(0xFF0));
  const V b = O::and_(O::srl32(u, 12), O::set32(0xF));
  const V c = O::and_(O::sll32(u, 16), O::set32(0x0F000000));
  const V d = O::and_(u, O::set32(0x00FF0000));
  return O::or_(O::or_(a, b), O::or_(c, d));
}

// One pair and a last odd sample, the tail's rule (bits 15..12 ignored).
inline void packPair(uint16_t a, uint16_t b, uint8_t* p) {
  p[0] = uint8_t(a >> 4);
  p[1] = uint8_t((a << 4) | ((b >> 8) & 15));
  p[2] = uint8_t(b);
}
inline void packLast(uint16_t a, uint8_t* p) {
  p[0] = uint8_t(a >> 4);
  p[1] = uint8_t(a << 4);
}
inline uint16_t unpackFirst(const uint8_t* p) { return uint16_t((p[0] << 4) | (p[1] >> 4)); }
inline uint16_t unpackSecond(const uint8_t* p) { return uint16_t(((p[1] & 15) << 8) | p[2]); }

// Blocks of 8 samples, then one of 4 where it fits; returns where they end.
template <class O>
int packBlocks(const uint16_t* s, uint8_t* d, int w) {
  int x = 0;
  for (; x + 8 <= w; x += 8) PairIo<O>::storeTriples(d + x / 2 * 3, packLanes<O>(PairIo<O>::loadWords(s + x, 4)), 4);
  if (x + 4 <= w) {
    PairIo<O>::storeTriples(d + x / 2 * 3, packLanes<O>(PairIo<O>::loadWords(s + x, 2)), 2);
    x += 4;
  }
  return x;
}
template <class O>
int unpackBlocks(const uint8_t* s, uint16_t* d, int w) {
  int x = 0;
  for (; x + 8 <= w; x += 8) PairIo<O>::storeWords(d + x, unpackLanes<O>(PairIo<O>::loadTriples(s + x / 2 * 3, 4)), 4);
  if (x + 4 <= w) {
    PairIo<O>::storeWords(d + x, unpackLanes<O>(PairIo<O>::loadTriples(s + x / 2 * 3, 2)), 2);
    x += 4;
  }
  return x;
}

void packRow(const uint16_t* s, uint8_t* d, int w) {
  int x = lanes::with128([&](auto o) { return packBlocks<decltype(o)>(s, d, w); });
  for (; x + 2 <= w; x += 2) packPair(loadAt(s + x), loadAt(s + x + 1), d + x / 2 * 3);
  if (x < w) packLast(loadAt(s + x), d + x / 2 * 3);
}
void unpackRow(const uint8_t* s, uint16_t* d, int w) {
  int x = lanes::with128([&](auto o) { return unpackBlocks<decltype(o)>(s, d, w); });
  for (; x + 2 <= w; x += 2) {
    storeAt(d + x, unpackFirst(s + x / 2 * 3));
    storeAt(d + x + 1, unpackSecond(s + x / 2 * 3));
  }
  if (x < w) storeAt(d + x, unpackFirst(s + x / 2 * 3));
}

}  // namespace

extern "C" {

LumStatus lumiPack_16u12u_C1R(const Lum16u* pSrc, int srcStep, Lum8u* pDst, int dstStep, LumSize roi) {
  if (LumStatus st = check::nullSizeStep(roi, {srcStep, dstStep}, pSrc, pDst)) return st;
  for (int y = 0; y < roi.height; ++y) packRow(rowAt(pSrc, y, srcStep), rowAt(pDst, y, dstStep), roi.width);
  return lumStatusOk;
}

LumStatus lumiUnpack_12u16u_C1R(const Lum8u* pSrc, int srcStep, Lum16u* pDst, int dstStep, LumSize roi) {
  if (LumStatus st = check::nullSizeStep(roi, {srcStep, dstStep}, pSrc, pDst)) return st;
  for (int y = 0; y < roi.height; ++y) unpackRow(rowAt(pSrc, y, srcStep), rowAt(pDst, y, dstStep), roi.width);
  return lumStatusOk;
}

}  // extern "C"
