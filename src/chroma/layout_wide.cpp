// 256-bit (AVX2) blocks of the layout kernels. This file alone is built with
// AVX2 code generation, so everything it runs is its own: helpers live in an
// anonymous namespace and nothing here calls an inline function of a shared
// header (its AVX2 copy could otherwise stand in for the 128-bit one elsewhere).
// From the shared headers it takes only types and constants.
#include "chroma/wide_blocks.h"

#if LUM_SIMD_SSE
#include <immintrin.h>

#include "chroma/pair_layouts.h"

namespace lum::chroma::wide {
namespace {

using V = __m256i;

inline V ld(const uint8_t* p) { return _mm256_loadu_si256(reinterpret_cast<const __m256i*>(p)); }
inline __m128i ld16(const uint8_t* p) { return _mm_loadu_si128(reinterpret_cast<const __m128i*>(p)); }
inline __m128i ld8(const uint8_t* p) { return _mm_loadl_epi64(reinterpret_cast<const __m128i*>(p)); }
inline void st16(uint8_t* p, __m128i v) { _mm_storeu_si128(reinterpret_cast<__m128i*>(p), v); }
inline void st8(uint8_t* p, __m128i v) { _mm_storel_epi64(reinterpret_cast<__m128i*>(p), v); }
inline void st8High(uint8_t* p, __m128i v) { _mm_storeh_pd(reinterpret_cast<double*>(p), _mm_castsi128_pd(v)); }
// 32 bytes at p; streaming stores go as two 16-byte halves, since the callers
// promise 16-byte alignment only.
template <bool Stream>
inline void st(uint8_t* p, V v) {
  if constexpr (Stream) {
    _mm_stream_si128(reinterpret_cast<__m128i*>(p), _mm256_castsi256_si128(v));
    _mm_stream_si128(reinterpret_cast<__m128i*>(p + 16), _mm256_extracti128_si256(v, 1));
  } else {
    _mm256_storeu_si256(reinterpret_cast<__m256i*>(p), v);
  }
}
inline V join(__m128i lo, __m128i hi) { return _mm256_inserti128_si256(_mm256_castsi128_si256(lo), hi, 1); }
// Quadwords in the order 0 2 1 3: puts the halves of per-lane unpacks back in
// memory order.
inline V q0213(V v) { return _mm256_permute4x64_epi64(v, 0xD8); }
// Per lane: even bytes in the low half, odd bytes in the high half.
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

// Thirty-two pixels: lumas and their 16 chroma pairs Cb Cr, in memory order.
struct Px32 {
  V y, c;
};

// ---- chroma sides ---------------------------------------------------------------------
template <class CS>
struct Chroma;

template <>
struct Chroma<CbCrPlanes> {
  // The chroma of 32 pixels as 16 pairs; HSub 2 reads 8 samples and doubles them.
  template <int HSub>
  static V pairs(const SrcPlanes& s, int j) {
    if constexpr (HSub == 1) {
      const __m128i cb = ld16(s.p[1] + j), cr = ld16(s.p[2] + j);
      return join(_mm_unpacklo_epi8(cb, cr), _mm_unpackhi_epi8(cb, cr));
    } else {
      return doublePairs(_mm_unpacklo_epi8(ld8(s.p[1] + j), ld8(s.p[2] + j)));
    }
  }
  // HSub 2 keeps the even pairs.
  template <int HSub>
  static void putPairs(const DstPlanes& d, int j, V c) {
    if constexpr (HSub == 1) {
      const V v = q0213(splitEvenOdd(c));  // Cb x16, Cr x16
      st16(d.p[1] + j, _mm256_castsi256_si128(v));
      st16(d.p[2] + j, _mm256_extracti128_si256(v, 1));
    } else {
      const __m128i v = splitEvenOdd(evenPairs(c));  // Cb x8, Cr x8
      st8(d.p[1] + j, v);
      st8High(d.p[2] + j, v);
    }
  }
  static void get32(const SrcPlanes& s, int j, V& cb, V& cr) {
    cb = ld(s.p[1] + j);
    cr = ld(s.p[2] + j);
  }
  static void put32(const DstPlanes& d, int j, V cb, V cr) {
    st<false>(d.p[1] + j, cb);
    st<false>(d.p[2] + j, cr);
  }
};

template <bool CrFirst>
struct Chroma<CbCrPairs<CrFirst>> {
  template <int HSub>
  static V pairs(const SrcPlanes& s, int j) {
    if constexpr (HSub == 1) {
      const V v = ld(s.p[1] + 2 * j);
      return CrFirst ? swapPairs(v) : v;
    } else {
      const __m128i v = ld16(s.p[1] + 2 * j);
      return doublePairs(CrFirst ? swapPairs(v) : v);
    }
  }
  template <int HSub>
  static void putPairs(const DstPlanes& d, int j, V c) {
    if constexpr (HSub == 1) {
      st<false>(d.p[1] + 2 * j, CrFirst ? swapPairs(c) : c);
    } else {
      const __m128i v = evenPairs(c);
      st16(d.p[1] + 2 * j, CrFirst ? swapPairs(v) : v);
    }
  }
  static void get32(const SrcPlanes& s, int j, V& cb, V& cr) {
    const uint8_t* p = s.p[1] + 2 * j;
    const V a = q0213(splitEvenOdd(ld(p)));       // first x16, second x16 of pairs 0..15
    const V b = q0213(splitEvenOdd(ld(p + 32)));  // the same of pairs 16..31
    const V first = _mm256_permute2x128_si256(a, b, 0x20), second = _mm256_permute2x128_si256(a, b, 0x31);
    cb = CrFirst ? second : first;
    cr = CrFirst ? first : second;
  }
  static void put32(const DstPlanes& d, int j, V cb, V cr) {
    const V a = CrFirst ? cr : cb, b = CrFirst ? cb : cr;
    const V lo = _mm256_unpacklo_epi8(a, b), hi = _mm256_unpackhi_epi8(a, b);
    uint8_t* p = d.p[1] + 2 * j;
    st<false>(p, _mm256_permute2x128_si256(lo, hi, 0x20));
    st<false>(p + 32, _mm256_permute2x128_si256(lo, hi, 0x31));
  }
};

// ---- pixel layouts -------------------------------------------------------------------------
template <class L>
struct Wide;

template <int Y0, int CB, int Y1, int CR>
struct Wide<Packed<Y0, CB, Y1, CR>> {
  static void load(const SrcPlanes& s, int x, Px32& o) {
    const V m = _mm256_setr_epi8(Y0, Y1, 4 + Y0, 4 + Y1, 8 + Y0, 8 + Y1, 12 + Y0, 12 + Y1,  //
                                 CB, CR, 4 + CB, 4 + CR, 8 + CB, 8 + CR, 12 + CB, 12 + CR,  //
                                 Y0, Y1, 4 + Y0, 4 + Y1, 8 + Y0, 8 + Y1, 12 + Y0, 12 + Y1,  //
                                 CB, CR, 4 + CB, 4 + CR, 8 + CB, 8 + CR, 12 + CB, 12 + CR);
    const uint8_t* p = s.p[0] + 2 * x;
    const V a = _mm256_shuffle_epi8(ld(p), m), b = _mm256_shuffle_epi8(ld(p + 32), m);
    o.y = q0213(_mm256_unpacklo_epi64(a, b));
    o.c = q0213(_mm256_unpackhi_epi64(a, b));
  }
  template <bool Stream>
  static void store(const DstPlanes& d, int x, const Px32& o) {
    const V y = q0213(o.y), c = q0213(CB < CR ? o.c : swapPairs(o.c));
    const V lo = Y0 == 0 ? _mm256_unpacklo_epi8(y, c) : _mm256_unpacklo_epi8(c, y);
    const V hi = Y0 == 0 ? _mm256_unpackhi_epi8(y, c) : _mm256_unpackhi_epi8(c, y);
    uint8_t* p = d.p[0] + 2 * x;
    st<Stream>(p, lo);
    st<Stream>(p + 32, hi);
  }
};

template <class CS, int HSub>
struct Wide<Split<CS, HSub>> {
  static void load(const SrcPlanes& s, int x, Px32& o) {
    o.y = ld(s.p[0] + x);
    o.c = Chroma<CS>::template pairs<HSub>(s, x / (2 * HSub));
  }
  template <bool Stream>
  static void store(const DstPlanes& d, int x, const Px32& o) {
    storeLuma<Stream>(d, x, o);
    Chroma<CS>::template putPairs<HSub>(d, x / (2 * HSub), o.c);
  }
  template <bool Stream>
  static void storeLuma(const DstPlanes& d, int x, const Px32& o) {
    st<Stream>(d.p[0] + x, o.y);
  }
};

template <class Dst>
struct Wide<LumaOnly<Dst>> {
  template <bool Stream>
  static void store(const DstPlanes& d, int x, const Px32& o) {
    Wide<Dst>::template storeLuma<Stream>(d, x, o);
  }
};

template <class Src, class Dst, bool Stream>
int pairs32(const SrcPlanes& s, const DstPlanes& d, int width) {
  int x = 0;
  for (; x + 32 <= width; x += 32) {
    Px32 v;
    Wide<Src>::load(s, x, v);
    Wide<Dst>::template store<Stream>(d, x, v);
  }
  return x;
}

// Source byte of each destination byte of a 4-byte group, order A to order B.
template <class A, class B>
constexpr int repackIndex(int k) {
  return k == B::kY0 ? A::kY0 : k == B::kCb ? A::kCb : k == B::kY1 ? A::kY1 : A::kCr;
}

template <class A, class B, bool Stream>
int repack64(const uint8_t* s, uint8_t* d, int bytes) {
  constexpr int m0 = repackIndex<A, B>(0), m1 = repackIndex<A, B>(1), m2 = repackIndex<A, B>(2),
                m3 = repackIndex<A, B>(3);
  const V sh = _mm256_setr_epi8(m0, m1, m2, m3, 4 + m0, 4 + m1, 4 + m2, 4 + m3, 8 + m0, 8 + m1, 8 + m2, 8 + m3,
                                12 + m0, 12 + m1, 12 + m2, 12 + m3, m0, m1, m2, m3, 4 + m0, 4 + m1, 4 + m2, 4 + m3,
                                8 + m0, 8 + m1, 8 + m2, 8 + m3, 12 + m0, 12 + m1, 12 + m2, 12 + m3);
  int i = 0;
  for (; i + 64 <= bytes; i += 64) {
    const V a = _mm256_shuffle_epi8(ld(s + i), sh), b = _mm256_shuffle_epi8(ld(s + i + 32), sh);
    st<Stream>(d + i, a);
    st<Stream>(d + i + 32, b);
  }
  return i;
}

}  // namespace

template <class Src, class Dst>
int pairBlocks(const uint8_t* s0, const uint8_t* s1, const uint8_t* s2, uint8_t* d0, uint8_t* d1, uint8_t* d2,
               int width, bool stream) {
  SrcPlanes s;
  s.p[0] = s0;
  s.p[1] = s1;
  s.p[2] = s2;
  DstPlanes d;
  d.p[0] = d0;
  d.p[1] = d1;
  d.p[2] = d2;
  return stream ? pairs32<Src, Dst, true>(s, d, width) : pairs32<Src, Dst, false>(s, d, width);
}

template <class A, class B>
int repackBlocks(const uint8_t* s, uint8_t* d, int bytes, bool stream) {
  return stream ? repack64<A, B, true>(s, d, bytes) : repack64<A, B, false>(s, d, bytes);
}

template <class SC, class DC>
int copyBlocks(const uint8_t* s1, const uint8_t* s2, uint8_t* d1, uint8_t* d2, int n) {
  SrcPlanes s;
  s.p[1] = s1;
  s.p[2] = s2;
  DstPlanes d;
  d.p[1] = d1;
  d.p[2] = d2;
  int j = 0;
  for (; j + 32 <= n; j += 32) {
    V cb, cr;
    Chroma<SC>::get32(s, j, cb, cr);
    Chroma<DC>::put32(d, j, cb, cr);
  }
  return j;
}

// Every layout pair the family converts.
template int repackBlocks<YUY2, UYVY>(const uint8_t*, uint8_t*, int, bool);
template int repackBlocks<UYVY, YUY2>(const uint8_t*, uint8_t*, int, bool);
template int repackBlocks<YUY2, YVYU>(const uint8_t*, uint8_t*, int, bool);

template int pairBlocks<YUY2, PlanarRow>(const uint8_t*, const uint8_t*, const uint8_t*, uint8_t*, uint8_t*, uint8_t*, int,
                                                  bool);
template int pairBlocks<UYVY, PlanarRow>(const uint8_t*, const uint8_t*, const uint8_t*, uint8_t*, uint8_t*, uint8_t*, int,
                                                  bool);
template int pairBlocks<PlanarRow, YUY2>(const uint8_t*, const uint8_t*, const uint8_t*, uint8_t*, uint8_t*, uint8_t*, int,
                                                  bool);
template int pairBlocks<PlanarRow, UYVY>(const uint8_t*, const uint8_t*, const uint8_t*, uint8_t*, uint8_t*, uint8_t*, int,
                                                  bool);
template int pairBlocks<PlanarRow, YVYU>(const uint8_t*, const uint8_t*, const uint8_t*, uint8_t*, uint8_t*, uint8_t*, int,
                                                  bool);
template int pairBlocks<YUY2, LumaOnly<PlanarRow>>(const uint8_t*, const uint8_t*, const uint8_t*, uint8_t*, uint8_t*, uint8_t*, int,
                                                  bool);
template int pairBlocks<UYVY, LumaOnly<PlanarRow>>(const uint8_t*, const uint8_t*, const uint8_t*, uint8_t*, uint8_t*, uint8_t*, int,
                                                  bool);
template int pairBlocks<YUY2, NV12Row>(const uint8_t*, const uint8_t*, const uint8_t*, uint8_t*, uint8_t*, uint8_t*, int,
                                                  bool);
template int pairBlocks<YUY2, NV21Row>(const uint8_t*, const uint8_t*, const uint8_t*, uint8_t*, uint8_t*, uint8_t*, int,
                                                  bool);
template int pairBlocks<UYVY, NV12Row>(const uint8_t*, const uint8_t*, const uint8_t*, uint8_t*, uint8_t*, uint8_t*, int,
                                                  bool);
template int pairBlocks<YUY2, LumaOnly<NV12Row>>(const uint8_t*, const uint8_t*, const uint8_t*, uint8_t*, uint8_t*, uint8_t*, int,
                                                  bool);
template int pairBlocks<YUY2, LumaOnly<NV21Row>>(const uint8_t*, const uint8_t*, const uint8_t*, uint8_t*, uint8_t*, uint8_t*, int,
                                                  bool);
template int pairBlocks<UYVY, LumaOnly<NV12Row>>(const uint8_t*, const uint8_t*, const uint8_t*, uint8_t*, uint8_t*, uint8_t*, int,
                                                  bool);
template int pairBlocks<NV12Row, YUY2>(const uint8_t*, const uint8_t*, const uint8_t*, uint8_t*, uint8_t*, uint8_t*, int,
                                                  bool);
template int pairBlocks<NV12Row, UYVY>(const uint8_t*, const uint8_t*, const uint8_t*, uint8_t*, uint8_t*, uint8_t*, int,
                                                  bool);
template int pairBlocks<YUY2, Planar411Row>(const uint8_t*, const uint8_t*, const uint8_t*, uint8_t*, uint8_t*, uint8_t*, int,
                                                  bool);
template int pairBlocks<UYVY, Planar411Row>(const uint8_t*, const uint8_t*, const uint8_t*, uint8_t*, uint8_t*, uint8_t*, int,
                                                  bool);
template int pairBlocks<YUY2, Pairs411Row>(const uint8_t*, const uint8_t*, const uint8_t*, uint8_t*, uint8_t*, uint8_t*, int,
                                                  bool);
template int pairBlocks<Planar411Row, YUY2>(const uint8_t*, const uint8_t*, const uint8_t*, uint8_t*, uint8_t*, uint8_t*, int,
                                                  bool);
template int pairBlocks<Pairs411Row, YUY2>(const uint8_t*, const uint8_t*, const uint8_t*, uint8_t*, uint8_t*, uint8_t*, int,
                                                  bool);

template int copyBlocks<CbCrPairs<false>, CbCrPlanes>(const uint8_t*, const uint8_t*, uint8_t*, uint8_t*, int);
template int copyBlocks<CbCrPlanes, CbCrPairs<false>>(const uint8_t*, const uint8_t*, uint8_t*, uint8_t*, int);

}  // namespace lum::chroma::wide
#endif
