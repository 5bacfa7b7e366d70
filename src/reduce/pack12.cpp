// 12-bit pack and unpack: rows of 16-bit words holding 12-bit samples against a
// dense form of two samples in three bytes, A11..A0 B11..B0 big-endian. Each row
// runs blocks of 8 samples, one block of 4, then pairs and a last odd sample one
// by one. The blocks of the pack OR bits 15..12 of each pair's first sample into
// its second byte; the pairs after them ignore those bits (valid 12-bit input
// gives the same bytes either way).
#include <cstring>

#include "frame/check.h"
#include "reduce/pack12_kernel.h"
#include "frame/lanes.h"
#include "frame/rows.h"
#include "lumcc.h"

using namespace lum;
using namespace lum::pack12;

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
  // Eight pairs: 24 bytes as two runs of four.
  static void storeTriples2(uint8_t* p, V u0, V u1) {
    storeTriples(p, u0, 4);
    storeTriples(p + 12, u1, 4);
  }
  static void loadTriples2(const uint8_t* p, V& u0, V& u1) {
    u0 = loadTriples(p, 4);
    u1 = loadTriples(p + 12, 4);
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
    return expand(b);
  }
  static V compact(V u) { return _mm_shuffle_epi8(u, _mm_setr_epi8(0, 1, 2, 4, 5, 6, 8, 9, 10, 12, 13, 14, Z, Z, Z, Z)); }
  static V expand(V b) { return _mm_shuffle_epi8(b, _mm_setr_epi8(0, 1, 2, Z, 3, 4, 5, Z, 6, 7, 8, Z, 9, 10, 11, Z)); }
  // Eight pairs: the 24 bytes as one 16-byte and one 8-byte store.
  static void storeTriples2(uint8_t* p, V u0, V u1) {
    const V a = compact(u0), b = compact(u1);
    _mm_storeu_si128(reinterpret_cast<V*>(p), _mm_or_si128(a, _mm_slli_si128(b, 12)));
    _mm_storel_epi64(reinterpret_cast<V*>(p + 16), _mm_srli_si128(b, 4));
  }
  static void loadTriples2(const uint8_t* p, V& u0, V& u1) {
    const V a = _mm_loadu_si128(reinterpret_cast<const V*>(p));
    const V b = _mm_loadl_epi64(reinterpret_cast<const V*>(p + 16));
    u0 = expand(a);
    u1 = expand(_mm_alignr_epi8(b, a, 12));
  }
  static void storeTriples(uint8_t* p, V u, int pairs) {
    const V b = compact(u);
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

// From sample x on, blocks of 8 samples (two at a time where 16 remain), then one
// of 4 where it fits: block(x, pairs) runs pairs (2, 4 or 8) from sample x;
// returns where the blocks end.
template <class Block>
int blockLadder(int x, int w, Block block) {
  for (; x + 16 <= w; x += 16) block(x, 8);
  for (; x + 8 <= w; x += 8) block(x, 4);
  if (x + 4 <= w) {
    block(x, 2);
    x += 4;
  }
  return x;
}

// A row; `wide` runs the first blocks sixteen samples a 256-bit step.
void packRow(const uint16_t* s, uint8_t* d, int w, bool wide) {
  const int x0 = wide ? packWide(s, d, w) : 0;
  int x = lanes::with128([&](auto o) {
    using Io = PairIo<decltype(o)>;
    return blockLadder(x0, w, [&](int at, int pairs) {
      if (pairs == 8)
        Io::storeTriples2(d + at / 2 * 3, packLanes<decltype(o)>(Io::loadWords(s + at, 4)),
                          packLanes<decltype(o)>(Io::loadWords(s + at + 8, 4)));
      else
        Io::storeTriples(d + at / 2 * 3, packLanes<decltype(o)>(Io::loadWords(s + at, pairs)), pairs);
    });
  });
  for (; x + 2 <= w; x += 2) packPair(loadAt(s + x), loadAt(s + x + 1), d + x / 2 * 3);
  if (x < w) packLast(loadAt(s + x), d + x / 2 * 3);
}
void unpackRow(const uint8_t* s, uint16_t* d, int w, bool wide) {
  const int x0 = wide ? unpackWide(s, d, w) : 0;
  int x = lanes::with128([&](auto o) {
    using Io = PairIo<decltype(o)>;
    return blockLadder(x0, w, [&](int at, int pairs) {
      if (pairs == 8) {
        typename decltype(o)::V u0, u1;
        Io::loadTriples2(s + at / 2 * 3, u0, u1);
        Io::storeWords(d + at, unpackLanes<decltype(o)>(u0), 4);
        Io::storeWords(d + at + 8, unpackLanes<decltype(o)>(u1), 4);
      } else {
        Io::storeWords(d + at, unpackLanes<decltype(o)>(Io::loadTriples(s + at / 2 * 3, pairs)), pairs);
      }
    });
  });
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
  const bool wide = LUM_SIMD_SSE && useWide();
  for (int y = 0; y < roi.height; ++y) packRow(rowAt(pSrc, y, srcStep), rowAt(pDst, y, dstStep), roi.width, wide);
  return lumStatusOk;
}

LumStatus lumiUnpack_12u16u_C1R(const Lum8u* pSrc, int srcStep, Lum16u* pDst, int dstStep, LumSize roi) {
  if (LumStatus st = check::nullSizeStep(roi, {srcStep, dstStep}, pSrc, pDst)) return st;
  const bool wide = LUM_SIMD_SSE && useWide();
  for (int y = 0; y < roi.height; ++y) unpackRow(rowAt(pSrc, y, srcStep), rowAt(pDst, y, dstStep), roi.width, wide);
  return lumStatusOk;
}

}  // extern "C"
