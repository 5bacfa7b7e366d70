// The luma-chroma memory layouts of 8-bit video, seen two pixels at a time:
//   Packed<Y0, CB, Y1, CR>   one plane of 4-byte groups (YUY2, UYVY, YVYU),
//   CbCrPlanes               chroma in planes 1 (Cb) and 2 (Cr),
//   CbCrPairs<CrFirst>       one plane of interleaved pairs (NV12, NV21),
//   Split<CS, HSub>          a luma plane and a chroma side CS, HSub pairs per
//                            chroma sample (4:2:2 and 4:2:0 rows, 4:1:1 rows),
//   LumaOnly<Dst>            the lumas of a Split layout alone (odd 4:2:0 rows).
// A family moves pixels by loading a pair (or a block of pairs) from one layout
// and storing it to another; which chroma row serves which luma row is its own
// driver's business. Scalar load/store move one pair at pixel x (x even); the
// 128-bit load/store move sixteen pixels at x (x a multiple of 16) and are
// lane-exact twins of eight scalar pair moves; pair_layouts_avx2.h gives the
// same layouts thirty-two pixels at a time for the *_avx2.cpp files.
// moveBlocks(), repackBlocks() and copyBlocks() are the block loops over any
// of these widths.
#pragma once

#include <array>
#include <cstdint>
#include <cstring>

#include "frame/rows.h"
#include "frame/simd.h"

namespace lum::pairs {

// Two pixels: their lumas and the Cb, Cr they share.
struct Pair {
  int y0, y1, cb, cr;
};

#if LUM_SIMD_SSE
// Sixteen pixels: 16 lumas, and their 8 chroma pairs interleaved Cb Cr Cb Cr.
struct Pair16 {
  static constexpr int kPixels = 16;
  __m128i y, c;
};

namespace bytes {

// N bytes at p into the low bytes of a register, the rest zero (N = 2, 4, 8
// or 16).
template <int N, bool Aligned = false>
inline __m128i load(const uint8_t* p) {
  if constexpr (N == 16) {
    if constexpr (Aligned) return _mm_load_si128(reinterpret_cast<const __m128i*>(p));
    else return _mm_loadu_si128(reinterpret_cast<const __m128i*>(p));
  } else if constexpr (N == 8) {
    return _mm_loadl_epi64(reinterpret_cast<const __m128i*>(p));
  } else if constexpr (N == 4) {
    int32_t v;
    std::memcpy(&v, p, 4);
    return _mm_cvtsi32_si128(v);
  } else {
    static_assert(N == 2);
    uint16_t v;
    std::memcpy(&v, p, 2);
    return _mm_cvtsi32_si128(v);
  }
}
// The low N bytes of v stored at p; Stream uses a non-temporal store (16-byte
// aligned p only).
template <int N, bool Aligned = false, bool Stream = false>
inline void store(uint8_t* p, __m128i v) {
  if constexpr (N == 16) {
    if constexpr (Stream) _mm_stream_si128(reinterpret_cast<__m128i*>(p), v);
    else if constexpr (Aligned) _mm_store_si128(reinterpret_cast<__m128i*>(p), v);
    else _mm_storeu_si128(reinterpret_cast<__m128i*>(p), v);
  } else if constexpr (N == 8) {
    _mm_storel_epi64(reinterpret_cast<__m128i*>(p), v);
  } else if constexpr (N == 4) {
    const int32_t x = _mm_cvtsi128_si32(v);
    std::memcpy(p, &x, 4);
  } else {
    static_assert(N == 2);
    const uint16_t x = uint16_t(_mm_cvtsi128_si32(v));
    std::memcpy(p, &x, 2);
  }
}
// Even bytes of a in the low half, odd bytes in the high half.
inline __m128i splitEvenOdd(__m128i a) {
  return _mm_shuffle_epi8(a, _mm_setr_epi8(0, 2, 4, 6, 8, 10, 12, 14, 1, 3, 5, 7, 9, 11, 13, 15));
}
// The two bytes of every 16-bit lane exchanged.
inline __m128i swapPairs(__m128i a) {
  return _mm_shuffle_epi8(a, _mm_setr_epi8(1, 0, 3, 2, 5, 4, 7, 6, 9, 8, 11, 10, 13, 12, 15, 14));
}
// Even 16-bit lanes of a in the low half (high half: the same again).
inline __m128i evenPairs(__m128i a) {
  return _mm_shuffle_epi8(a, _mm_setr_epi8(0, 1, 4, 5, 8, 9, 12, 13, 0, 1, 4, 5, 8, 9, 12, 13));
}
// The high 8 bytes of v stored at p.
inline void storeHigh8(uint8_t* p, __m128i v) { _mm_storel_epi64(reinterpret_cast<__m128i*>(p), _mm_unpackhi_epi64(v, v)); }
}  // namespace bytes
#endif

// ---- packed 4:2:2 (C2) --------------------------------------------------
// A stream of 4-byte groups, one per pixel pair; the template arguments are the
// byte positions of the first luma, Cb, the second luma and Cr in a group.
template <int Y0, int CB, int Y1, int CR>
struct Packed {
  static_assert(Y1 == Y0 + 2 && (Y0 == 0 || Y0 == 1) && CB + CR == 4 - 2 * Y0 && CB != CR,
                "a 4:2:2 group alternates luma and chroma");
  static constexpr int kY0 = Y0, kCb = CB, kY1 = Y1, kCr = CR;

  static void load(const SrcPlanes& s, int x, Pair& o) {
    const uint8_t* p = s.p[0] + 2 * x;
    o.y0 = p[Y0];
    o.cb = p[CB];
    o.y1 = p[Y1];
    o.cr = p[CR];
  }
  static void store(const DstPlanes& d, int x, const Pair& o) {
    uint8_t* p = d.p[0] + 2 * x;
    p[Y0] = uint8_t(o.y0);
    p[CB] = uint8_t(o.cb);
    p[Y1] = uint8_t(o.y1);
    p[CR] = uint8_t(o.cr);
  }
#if LUM_SIMD_SSE
  template <bool Aligned = false>
  static void load(const SrcPlanes& s, int x, Pair16& o) {
    // Per register of four groups: the 8 lumas low, then the 4 pairs Cb Cr.
    const __m128i m = _mm_setr_epi8(Y0, Y1, 4 + Y0, 4 + Y1, 8 + Y0, 8 + Y1, 12 + Y0, 12 + Y1,  //
                                    CB, CR, 4 + CB, 4 + CR, 8 + CB, 8 + CR, 12 + CB, 12 + CR);
    const uint8_t* p = s.p[0] + 2 * x;
    const __m128i a = _mm_shuffle_epi8(bytes::load<16, Aligned>(p), m);
    const __m128i b = _mm_shuffle_epi8(bytes::load<16, Aligned>(p + 16), m);
    o.y = _mm_unpacklo_epi64(a, b);
    o.c = _mm_unpackhi_epi64(a, b);
  }
  template <bool Aligned = false, bool Stream = false>
  static void store(const DstPlanes& d, int x, const Pair16& o) {
    const __m128i c = CB < CR ? o.c : bytes::swapPairs(o.c);
    const __m128i lo = Y0 == 0 ? _mm_unpacklo_epi8(o.y, c) : _mm_unpacklo_epi8(c, o.y);
    const __m128i hi = Y0 == 0 ? _mm_unpackhi_epi8(o.y, c) : _mm_unpackhi_epi8(c, o.y);
    uint8_t* p = d.p[0] + 2 * x;
    bytes::store<16, Aligned, Stream>(p, lo);
    bytes::store<16, Aligned, Stream>(p + 16, hi);
  }
#endif
};

using YUY2 = Packed<0, 1, 2, 3>;  // Y0 Cb Y1 Cr: YCbCr422
using UYVY = Packed<1, 0, 3, 2>;  // Cb Y0 Cr Y1: CbYCr422
using YVYU = Packed<0, 3, 2, 1>;  // Y0 Cr Y1 Cb: YCrCb422

// ---- chroma rows of planar and semi-planar images ------------------------
// A chroma side reads and writes chroma sample j of a row; plane 1 and 2 of the
// row pointers (Cb, Cr) or plane 1 alone (interleaved pairs).

// Cb in plane 1, Cr in plane 2.
struct CbCrPlanes {
  static void get(const SrcPlanes& s, int j, int& cb, int& cr) {
    cb = s.p[1][j];
    cr = s.p[2][j];
  }
  static void put(const DstPlanes& d, int j, int cb, int cr) {
    d.p[1][j] = uint8_t(cb);
    d.p[2][j] = uint8_t(cr);
  }
#if LUM_SIMD_SSE
  // N samples from j into the low bytes of cb and cr (N = 16 fills them).
  template <int N>
  static void get(const SrcPlanes& s, int j, __m128i& cb, __m128i& cr) {
    cb = bytes::load<N>(s.p[1] + j);
    cr = bytes::load<N>(s.p[2] + j);
  }
  template <int N>
  static void put(const DstPlanes& d, int j, __m128i cb, __m128i cr) {
    bytes::store<N>(d.p[1] + j, cb);
    bytes::store<N>(d.p[2] + j, cr);
  }
  // N pairs (N = 4 or 8) from j, interleaved Cb Cr in the low 2N bytes.
  template <int N>
  static __m128i pairs(const SrcPlanes& s, int j) {
    return _mm_unpacklo_epi8(bytes::load<N>(s.p[1] + j), bytes::load<N>(s.p[2] + j));
  }
  template <int N>
  static void putPairs(const DstPlanes& d, int j, __m128i c) {
    const __m128i v = bytes::splitEvenOdd(c);  // Cb x8, Cr x8
    if constexpr (N == 8) {
      bytes::store<8>(d.p[1] + j, v);
      bytes::storeHigh8(d.p[2] + j, v);
    } else {
      static_assert(N == 4);
      bytes::store<4>(d.p[1] + j, v);
      bytes::store<4>(d.p[2] + j, _mm_srli_si128(v, 8));
    }
  }
  // N samples (N = 2, 4 or 8) from j as 16-bit lanes 0..N-1 of cb and cr.
  template <int N>
  static void getLanes(const SrcPlanes& s, int j, __m128i& cb, __m128i& cr) {
    cb = _mm_cvtepu8_epi16(bytes::load<N>(s.p[1] + j));
    cr = _mm_cvtepu8_epi16(bytes::load<N>(s.p[2] + j));
  }
  // Lanes 0..N-1 (0..255) of cb and cr as N samples from j; nothing else written.
  template <int N>
  static void putLanes(const DstPlanes& d, int j, __m128i cb, __m128i cr) {
    bytes::store<N>(d.p[1] + j, _mm_packus_epi16(cb, cb));
    bytes::store<N>(d.p[2] + j, _mm_packus_epi16(cr, cr));
  }
#endif
};

// One plane of interleaved pairs, Cb Cr (NV12) or Cr Cb (NV21).
template <bool CrFirst>
struct CbCrPairs {
  static void get(const SrcPlanes& s, int j, int& cb, int& cr) {
    const uint8_t* p = s.p[1] + 2 * j;
    cb = p[CrFirst ? 1 : 0];
    cr = p[CrFirst ? 0 : 1];
  }
  static void put(const DstPlanes& d, int j, int cb, int cr) {
    uint8_t* p = d.p[1] + 2 * j;
    p[CrFirst ? 1 : 0] = uint8_t(cb);
    p[CrFirst ? 0 : 1] = uint8_t(cr);
  }
#if LUM_SIMD_SSE
  // 16 samples from j as separate Cb and Cr registers.
  template <int N>
  static void get(const SrcPlanes& s, int j, __m128i& cb, __m128i& cr) {
    static_assert(N == 16);
    const uint8_t* p = s.p[1] + 2 * j;
    const __m128i a = bytes::splitEvenOdd(bytes::load<16>(p));
    const __m128i b = bytes::splitEvenOdd(bytes::load<16>(p + 16));
    cb = CrFirst ? _mm_unpackhi_epi64(a, b) : _mm_unpacklo_epi64(a, b);
    cr = CrFirst ? _mm_unpacklo_epi64(a, b) : _mm_unpackhi_epi64(a, b);
  }
  // N pairs (N = 4 or 8) from j, interleaved Cb Cr in the low 2N bytes.
  template <int N>
  static __m128i pairs(const SrcPlanes& s, int j) {
    const __m128i v = bytes::load<2 * N>(s.p[1] + 2 * j);
    return CrFirst ? bytes::swapPairs(v) : v;
  }
  template <int N>
  static void putPairs(const DstPlanes& d, int j, __m128i c) {
    bytes::store<2 * N>(d.p[1] + 2 * j, CrFirst ? bytes::swapPairs(c) : c);
  }
  template <int N>
  static void put(const DstPlanes& d, int j, __m128i cb, __m128i cr) {
    static_assert(N == 16);
    uint8_t* p = d.p[1] + 2 * j;
    const __m128i a = CrFirst ? cr : cb, b = CrFirst ? cb : cr;
    bytes::store<16>(p, _mm_unpacklo_epi8(a, b));
    bytes::store<16>(p + 16, _mm_unpackhi_epi8(a, b));
  }
  // N pairs (N = 4 or 8) from j as 16-bit lanes 0..N-1 of cb and cr.
  template <int N>
  static void getLanes(const SrcPlanes& s, int j, __m128i& cb, __m128i& cr) {
    const __m128i v = bytes::load<2 * N>(s.p[1] + 2 * j);
    const __m128i even = _mm_and_si128(v, _mm_set1_epi16(0xFF));
    const __m128i odd = _mm_srli_epi16(v, 8);
    cb = CrFirst ? odd : even;
    cr = CrFirst ? even : odd;
  }
  // Lanes 0..N-1 (0..255) of cb and cr as N pairs from j; nothing else written.
  template <int N>
  static void putLanes(const DstPlanes& d, int j, __m128i cb, __m128i cr) {
    const __m128i a = _mm_packus_epi16(cb, cb), b = _mm_packus_epi16(cr, cr);
    bytes::store<2 * N>(d.p[1] + 2 * j, CrFirst ? _mm_unpacklo_epi8(b, a) : _mm_unpacklo_epi8(a, b));
  }
#endif
};

// ---- planar and semi-planar rows, pair by pair ---------------------------
// Luma in plane 0, chroma by the side CS; HSub pixel pairs share one chroma
// sample (1 for 4:2:2 and 4:2:0, 2 for 4:1:1). A 4:1:1 load repeats the sample
// for both pairs; a 4:1:1 store keeps the first pair's chroma and drops the
// second's.
template <class CS, int HSub>
struct Split {
  static_assert(HSub == 1 || HSub == 2);

  static void load(const SrcPlanes& s, int x, Pair& o) {
    o.y0 = s.p[0][x];
    o.y1 = s.p[0][x + 1];
    CS::get(s, (x >> 1) / HSub, o.cb, o.cr);
  }
  static void store(const DstPlanes& d, int x, const Pair& o) {
    storeLuma(d, x, o);
    if ((x >> 1) % HSub == 0) CS::put(d, (x >> 1) / HSub, o.cb, o.cr);
  }
  static void storeLuma(const DstPlanes& d, int x, const Pair& o) {
    d.p[0][x] = uint8_t(o.y0);
    d.p[0][x + 1] = uint8_t(o.y1);
  }
#if LUM_SIMD_SSE
  template <bool Aligned = false>
  static void load(const SrcPlanes& s, int x, Pair16& o) {
    o.y = bytes::load<16>(s.p[0] + x);
    if constexpr (HSub == 1) {
      o.c = CS::template pairs<8>(s, x >> 1);
    } else {
      const __m128i c = CS::template pairs<4>(s, x >> 2);
      o.c = _mm_unpacklo_epi16(c, c);  // every pair twice
    }
  }
  template <bool Aligned = false, bool Stream = false>
  static void store(const DstPlanes& d, int x, const Pair16& o) {
    storeLuma<Aligned, Stream>(d, x, o);
    if constexpr (HSub == 1) CS::template putPairs<8>(d, x >> 1, o.c);
    else CS::template putPairs<4>(d, x >> 2, bytes::evenPairs(o.c));
  }
  template <bool Aligned = false, bool Stream = false>
  static void storeLuma(const DstPlanes& d, int x, const Pair16& o) {
    bytes::store<16, Aligned, Stream>(d.p[0] + x, o.y);
  }
#endif
};

// Stores only the lumas of a planar layout: the odd rows of a 4:2:0 destination.
template <class Dst>
struct LumaOnly {
  static void store(const DstPlanes& d, int x, const Pair& o) { Dst::storeLuma(d, x, o); }
#if LUM_SIMD_SSE
  template <bool Aligned = false, bool Stream = false>
  static void store(const DstPlanes& d, int x, const Pair16& o) {
    Dst::template storeLuma<Aligned, Stream>(d, x, o);
  }
#endif
};

using PlanarRow = Split<CbCrPlanes, 1>;          // Y, Cb, Cr planes, 4:2:2 or 4:2:0 rows
using NV12Row = Split<CbCrPairs<false>, 1>;      // Y plane and Cb Cr pairs, 4:2:0
using NV21Row = Split<CbCrPairs<true>, 1>;       // Y plane and Cr Cb pairs, 4:2:0
using Planar411Row = Split<CbCrPlanes, 2>;       // Y, Cb, Cr planes, 4:1:1
using Pairs411Row = Split<CbCrPairs<false>, 2>;  // Y plane and Cb Cr pairs, 4:1:1

// ---- block loops ------------------------------------------------------------
// Byte order of one 4-byte group of A rearranged into B's: m[k] is the source
// byte of destination byte k.
template <class A, class B>
constexpr std::array<int, 4> repackOrder() {
  std::array<int, 4> m{};
  m[B::kY0] = A::kY0;
  m[B::kCb] = A::kCb;
  m[B::kY1] = A::kY1;
  m[B::kCr] = A::kCr;
  return m;
}

#if LUM_SIMD_SSE
// The 128-bit register of the repack loop: 16 bytes, four groups.
struct Bytes128 {
  using V = __m128i;
  static constexpr int kBytes = 16;
  static V load(const uint8_t* p) { return bytes::load<16>(p); }
  template <bool Stream>
  static void store(uint8_t* p, V v) { bytes::store<16, Stream, Stream>(p, v); }
  // The mask that rearranges every group of a register by m.
  static V groupMask(const std::array<int, 4>& m) {
    return _mm_setr_epi8(m[0], m[1], m[2], m[3], 4 + m[0], 4 + m[1], 4 + m[2], 4 + m[3],  //
                         8 + m[0], 8 + m[1], 8 + m[2], 8 + m[3], 12 + m[0], 12 + m[1], 12 + m[2], 12 + m[3]);
  }
  static V shuffle(V v, V mask) { return _mm_shuffle_epi8(v, mask); }
};
#endif

// Pixels from x on, U blocks of Block::kPixels at a time, loaded through the
// source adaptor SrcA and stored through DstA (a layout at one register
// width); all U blocks are loaded before any is stored. Returns the first
// pixel not done.
template <class SrcA, class DstA, class Block, int U, bool SrcAligned, bool DstAligned, bool Stream>
inline int moveBlocks(const SrcPlanes& s, const DstPlanes& d, int x, int width) {
  constexpr int kStep = U * Block::kPixels;
  for (; x + kStep <= width; x += kStep) {
    Block b[U];
    for (int u = 0; u < U; ++u) SrcA::template load<SrcAligned>(s, x + u * Block::kPixels, b[u]);
    for (int u = 0; u < U; ++u) DstA::template store<DstAligned, Stream>(d, x + u * Block::kPixels, b[u]);
  }
  return x;
}

// Packed bytes from i on, from order A to order B, U registers of R at a time
// (all loaded before any is stored). Returns the first byte not done.
template <class R, class A, class B, int U, bool Stream>
inline int repackBlocks(const uint8_t* s, uint8_t* d, int i, int n) {
  constexpr std::array<int, 4> m = repackOrder<A, B>();
  const typename R::V sh = R::groupMask(m);
  constexpr int kStep = U * R::kBytes;
  for (; i + kStep <= n; i += kStep) {
    typename R::V v[U];
    for (int u = 0; u < U; ++u) v[u] = R::shuffle(R::load(s + i + u * R::kBytes), sh);
    for (int u = 0; u < U; ++u) R::template store<Stream>(d + i + u * R::kBytes, v[u]);
  }
  return i;
}

// Chroma samples from j on, N at a time of register type V, from side SA to
// side DA (chroma sides at one register width). Returns the first sample not done.
template <class SA, class DA, class V, int N>
inline int copyBlocks(const SrcPlanes& s, const DstPlanes& d, int j, int n) {
  for (; j + N <= n; j += N) {
    V cb, cr;
    SA::template get<N>(s, j, cb, cr);
    DA::template put<N>(d, j, cb, cr);
  }
  return j;
}

}  // namespace lum::pairs
