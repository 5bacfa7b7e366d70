// The layouts of pair_layouts.h thirty-two pixels at a time, in 256-bit
// registers. Include it only from the *_avx2.cpp files: like lanes_avx2.h it
// lives in an unnamed namespace, so every block instantiated with it stays in
// those files. Where the shuffles work inside each 128-bit half they are the
// 128-bit ones twice; q0213, the cross-half lane moves and the 16-byte
// streaming halves belong to the 256-bit width alone.
#pragma once

#include "frame/pair_layouts.h"

#if LUM_SIMD_SSE && defined(__AVX2__)
namespace lum::pairs {
namespace {

namespace bytes256 {
using V = __m256i;
inline V load(const uint8_t* p) { return _mm256_loadu_si256(reinterpret_cast<const V*>(p)); }
inline __m128i load16(const uint8_t* p) { return _mm_loadu_si128(reinterpret_cast<const __m128i*>(p)); }
inline __m128i load8(const uint8_t* p) { return _mm_loadl_epi64(reinterpret_cast<const __m128i*>(p)); }
inline void store16(uint8_t* p, __m128i v) { _mm_storeu_si128(reinterpret_cast<__m128i*>(p), v); }
inline void store8(uint8_t* p, __m128i v) { _mm_storel_epi64(reinterpret_cast<__m128i*>(p), v); }
// The high 8 bytes of v stored at p.
inline void storeHigh8(uint8_t* p, __m128i v) { _mm_storel_epi64(reinterpret_cast<__m128i*>(p), _mm_unpackhi_epi64(v, v)); }
// 32 bytes at p; streaming stores go as two 16-byte halves, since the callers
// promise 16-byte alignment only.
template <bool Stream>
inline void store(uint8_t* p, V v) {
  if constexpr (Stream) {
    _mm_stream_si128(reinterpret_cast<__m128i*>(p), _mm256_castsi256_si128(v));
    _mm_stream_si128(reinterpret_cast<__m128i*>(p + 16), _mm256_extracti128_si256(v, 1));
  } else {
    _mm256_storeu_si256(reinterpret_cast<V*>(p), v);
  }
}
inline V join(__m128i lo, __m128i hi) { return _mm256_inserti128_si256(_mm256_castsi128_si256(lo), hi, 1); }
// Quadwords in the order 0 2 1 3: puts the halves of per-lane unpacks back in
// memory order.
inline V q0213(V v) { return _mm256_permute4x64_epi64(v, 0xD8); }
// Per 128-bit half: even bytes in the low 8, odd bytes in the high 8.
inline V splitEvenOdd(V a) {
  return _mm256_shuffle_epi8(a, _mm256_setr_epi8(0, 2, 4, 6, 8, 10, 12, 14, 1, 3, 5, 7, 9, 11, 13, 15,  //
                                                 0, 2, 4, 6, 8, 10, 12, 14, 1, 3, 5, 7, 9, 11, 13, 15));
}
inline __m128i splitEvenOdd(__m128i a) {
  return _mm_shuffle_epi8(a, _mm_setr_epi8(0, 2, 4, 6, 8, 10, 12, 14, 1, 3, 5, 7, 9, 11, 13, 15));
}
// The two bytes of every 16-bit lane exchanged.
inline V swapPairs(V a) {
  return _mm256_shuffle_epi8(a, _mm256_setr_epi8(1, 0, 3, 2, 5, 4, 7, 6, 9, 8, 11, 10, 13, 12, 15, 14,  //
                                                 1, 0, 3, 2, 5, 4, 7, 6, 9, 8, 11, 10, 13, 12, 15, 14));
}
inline __m128i swapPairs(__m128i a) {
  return _mm_shuffle_epi8(a, _mm_setr_epi8(1, 0, 3, 2, 5, 4, 7, 6, 9, 8, 11, 10, 13, 12, 15, 14));
}
// The even 16-bit lanes of the whole register, in order, in the low 16 bytes.
inline __m128i evenPairs(V a) {
  const V e = _mm256_shuffle_epi8(a, _mm256_setr_epi8(0, 1, 4, 5, 8, 9, 12, 13, 0, 1, 4, 5, 8, 9, 12, 13,  //
                                                      0, 1, 4, 5, 8, 9, 12, 13, 0, 1, 4, 5, 8, 9, 12, 13));
  return _mm256_castsi256_si128(_mm256_permute4x64_epi64(e, 0x08));
}
// Eight pairs (16 bytes) with every pair doubled: 32 bytes.
inline V doublePairs(__m128i c) { return join(_mm_unpacklo_epi16(c, c), _mm_unpackhi_epi16(c, c)); }
}  // namespace bytes256

// Thirty-two pixels: lumas and their 16 chroma pairs Cb Cr, in memory order.
struct Pair32 {
  static constexpr int kPixels = 32;
  __m256i y, c;
};

// The 256-bit register of the repack loop: 32 bytes, eight groups.
struct Bytes256 {
  using V = __m256i;
  static constexpr int kBytes = 32;
  static V load(const uint8_t* p) { return bytes256::load(p); }
  template <bool Stream>
  static void store(uint8_t* p, V v) { bytes256::store<Stream>(p, v); }
  static V groupMask(const std::array<int, 4>& m) {
    return _mm256_setr_epi8(m[0], m[1], m[2], m[3], 4 + m[0], 4 + m[1], 4 + m[2], 4 + m[3],  //
                            8 + m[0], 8 + m[1], 8 + m[2], 8 + m[3], 12 + m[0], 12 + m[1], 12 + m[2], 12 + m[3],
                            m[0], m[1], m[2], m[3], 4 + m[0], 4 + m[1], 4 + m[2], 4 + m[3],  //
                            8 + m[0], 8 + m[1], 8 + m[2], 8 + m[3], 12 + m[0], 12 + m[1], 12 + m[2], 12 + m[3]);
  }
  static V shuffle(V v, V mask) { return _mm256_shuffle_epi8(v, mask); }
};

// ---- chroma sides, 32 samples or 16 pairs at a time ---------------------------
template <class CS>
struct Side32;

template <>
struct Side32<CbCrPlanes> {
  using V = __m256i;
  // The chroma of 32 pixels as 16 pairs; HSub 2 reads 8 samples and doubles them.
  template <int HSub>
  static V pairs(const SrcPlanes& s, int j) {
    using namespace bytes256;
    if constexpr (HSub == 1) {
      const __m128i cb = load16(s.p[1] + j), cr = load16(s.p[2] + j);
      return join(_mm_unpacklo_epi8(cb, cr), _mm_unpackhi_epi8(cb, cr));
    } else {
      return doublePairs(_mm_unpacklo_epi8(load8(s.p[1] + j), load8(s.p[2] + j)));
    }
  }
  // HSub 2 keeps the even pairs.
  template <int HSub>
  static void putPairs(const DstPlanes& d, int j, V c) {
    using namespace bytes256;
    if constexpr (HSub == 1) {
      const V v = q0213(splitEvenOdd(c));  // Cb x16, Cr x16
      store16(d.p[1] + j, _mm256_castsi256_si128(v));
      store16(d.p[2] + j, _mm256_extracti128_si256(v, 1));
    } else {
      const __m128i v = splitEvenOdd(evenPairs(c));  // Cb x8, Cr x8
      store8(d.p[1] + j, v);
      storeHigh8(d.p[2] + j, v);
    }
  }
  template <int N>
  static void get(const SrcPlanes& s, int j, V& cb, V& cr) {
    static_assert(N == 32);
    cb = bytes256::load(s.p[1] + j);
    cr = bytes256::load(s.p[2] + j);
  }
  template <int N>
  static void put(const DstPlanes& d, int j, V cb, V cr) {
    static_assert(N == 32);
    bytes256::store<false>(d.p[1] + j, cb);
    bytes256::store<false>(d.p[2] + j, cr);
  }
  // N samples from j as 16-bit lanes of cb and cr: N = 16 in lanes 0..15, N = 8
  // in lanes 0..3 and 8..11 (four in the low quarter of each 128-bit half).
  template <int N>
  static void getLanes(const SrcPlanes& s, int j, V& cb, V& cr) {
    using namespace bytes256;
    if constexpr (N == 16) {
      cb = _mm256_cvtepu8_epi16(load16(s.p[1] + j));
      cr = _mm256_cvtepu8_epi16(load16(s.p[2] + j));
    } else {
      static_assert(N == 8);
      cb = q0213(_mm256_cvtepu8_epi16(load8(s.p[1] + j)));
      cr = q0213(_mm256_cvtepu8_epi16(load8(s.p[2] + j)));
    }
  }
  // The lanes of getLanes (0..255) as N samples from j; nothing else written.
  template <int N>
  static void putLanes(const DstPlanes& d, int j, V cb, V cr) {
    using namespace bytes256;
    if constexpr (N == 16) {
      const V t = q0213(_mm256_packus_epi16(cb, cr));  // Cb x16, Cr x16
      store16(d.p[1] + j, _mm256_castsi256_si128(t));
      store16(d.p[2] + j, _mm256_extracti128_si256(t, 1));
    } else {
      static_assert(N == 8);
      // Cb samples 0..3 and 4..7 in dwords 0 and 1, Cr in dwords 2 and 3.
      const V t = _mm256_permutevar8x32_epi32(_mm256_packus_epi16(cb, cr), _mm256_setr_epi32(0, 4, 2, 6, 1, 3, 5, 7));
      const __m128i l = _mm256_castsi256_si128(t);
      store8(d.p[1] + j, l);
      store8(d.p[2] + j, _mm_srli_si128(l, 8));
    }
  }
};

template <bool CrFirst>
struct Side32<CbCrPairs<CrFirst>> {
  using V = __m256i;
  template <int HSub>
  static V pairs(const SrcPlanes& s, int j) {
    using namespace bytes256;
    if constexpr (HSub == 1) {
      const V v = load(s.p[1] + 2 * j);
      return CrFirst ? swapPairs(v) : v;
    } else {
      const __m128i v = load16(s.p[1] + 2 * j);
      return doublePairs(CrFirst ? swapPairs(v) : v);
    }
  }
  template <int HSub>
  static void putPairs(const DstPlanes& d, int j, V c) {
    using namespace bytes256;
    if constexpr (HSub == 1) {
      store<false>(d.p[1] + 2 * j, CrFirst ? swapPairs(c) : c);
    } else {
      const __m128i v = evenPairs(c);
      store16(d.p[1] + 2 * j, CrFirst ? swapPairs(v) : v);
    }
  }
  template <int N>
  static void get(const SrcPlanes& s, int j, V& cb, V& cr) {
    static_assert(N == 32);
    using namespace bytes256;
    const uint8_t* p = s.p[1] + 2 * j;
    const V a = q0213(splitEvenOdd(load(p)));       // first x16, second x16 of pairs 0..15
    const V b = q0213(splitEvenOdd(load(p + 32)));  // the same of pairs 16..31
    const V first = _mm256_permute2x128_si256(a, b, 0x20), second = _mm256_permute2x128_si256(a, b, 0x31);
    cb = CrFirst ? second : first;
    cr = CrFirst ? first : second;
  }
  template <int N>
  static void put(const DstPlanes& d, int j, V cb, V cr) {
    static_assert(N == 32);
    using namespace bytes256;
    const V a = CrFirst ? cr : cb, b = CrFirst ? cb : cr;
    const V lo = _mm256_unpacklo_epi8(a, b), hi = _mm256_unpackhi_epi8(a, b);
    uint8_t* p = d.p[1] + 2 * j;
    store<false>(p, _mm256_permute2x128_si256(lo, hi, 0x20));
    store<false>(p + 32, _mm256_permute2x128_si256(lo, hi, 0x31));
  }
  // 16 pairs from j as 16-bit lanes 0..15 of cb and cr.
  template <int N>
  static void getLanes(const SrcPlanes& s, int j, V& cb, V& cr) {
    static_assert(N == 16);
    const V v = bytes256::load(s.p[1] + 2 * j);
    const V even = _mm256_and_si256(v, _mm256_set1_epi16(0xFF)), odd = _mm256_srli_epi16(v, 8);
    cb = CrFirst ? odd : even;
    cr = CrFirst ? even : odd;
  }
  // Lanes 0..15 (0..255) of cb and cr as 16 pairs from j.
  template <int N>
  static void putLanes(const DstPlanes& d, int j, V cb, V cr) {
    static_assert(N == 16);
    const V a = _mm256_packus_epi16(cb, cb), b = _mm256_packus_epi16(cr, cr);
    bytes256::store<false>(d.p[1] + 2 * j, CrFirst ? _mm256_unpacklo_epi8(b, a) : _mm256_unpacklo_epi8(a, b));
  }
};

// ---- pixel layouts, 32 pixels at a time ------------------------------------
// Loads ignore Aligned and stores ignore DstAligned: the 256-bit moves are
// unaligned (streams go by 16-byte halves).
template <class L>
struct Wide;

template <int Y0, int CB, int Y1, int CR>
struct Wide<Packed<Y0, CB, Y1, CR>> {
  template <bool Aligned = false>
  static void load(const SrcPlanes& s, int x, Pair32& o) {
    using namespace bytes256;
    const __m256i m = _mm256_setr_epi8(Y0, Y1, 4 + Y0, 4 + Y1, 8 + Y0, 8 + Y1, 12 + Y0, 12 + Y1,  //
                                       CB, CR, 4 + CB, 4 + CR, 8 + CB, 8 + CR, 12 + CB, 12 + CR,  //
                                       Y0, Y1, 4 + Y0, 4 + Y1, 8 + Y0, 8 + Y1, 12 + Y0, 12 + Y1,  //
                                       CB, CR, 4 + CB, 4 + CR, 8 + CB, 8 + CR, 12 + CB, 12 + CR);
    const uint8_t* p = s.p[0] + 2 * x;
    const __m256i a = _mm256_shuffle_epi8(bytes256::load(p), m), b = _mm256_shuffle_epi8(bytes256::load(p + 32), m);
    o.y = q0213(_mm256_unpacklo_epi64(a, b));
    o.c = q0213(_mm256_unpackhi_epi64(a, b));
  }
  template <bool Aligned = false, bool Stream = false>
  static void store(const DstPlanes& d, int x, const Pair32& o) {
    using namespace bytes256;
    const __m256i y = q0213(o.y), c = q0213(CB < CR ? o.c : swapPairs(o.c));
    const __m256i lo = Y0 == 0 ? _mm256_unpacklo_epi8(y, c) : _mm256_unpacklo_epi8(c, y);
    const __m256i hi = Y0 == 0 ? _mm256_unpackhi_epi8(y, c) : _mm256_unpackhi_epi8(c, y);
    uint8_t* p = d.p[0] + 2 * x;
    bytes256::store<Stream>(p, lo);
    bytes256::store<Stream>(p + 32, hi);
  }
};

template <class CS, int HSub>
struct Wide<Split<CS, HSub>> {
  template <bool Aligned = false>
  static void load(const SrcPlanes& s, int x, Pair32& o) {
    o.y = bytes256::load(s.p[0] + x);
    o.c = Side32<CS>::template pairs<HSub>(s, x / (2 * HSub));
  }
  template <bool Aligned = false, bool Stream = false>
  static void store(const DstPlanes& d, int x, const Pair32& o) {
    storeLuma<Aligned, Stream>(d, x, o);
    Side32<CS>::template putPairs<HSub>(d, x / (2 * HSub), o.c);
  }
  template <bool Aligned = false, bool Stream = false>
  static void storeLuma(const DstPlanes& d, int x, const Pair32& o) {
    bytes256::store<Stream>(d.p[0] + x, o.y);
  }
};

template <class Dst>
struct Wide<LumaOnly<Dst>> {
  template <bool Aligned = false, bool Stream = false>
  static void store(const DstPlanes& d, int x, const Pair32& o) {
    Wide<Dst>::template storeLuma<Aligned, Stream>(d, x, o);
  }
};

}  // namespace
}  // namespace lum::pairs
#endif
