// Memory layouts of the 8-bit luma-chroma video forms, seen two pixels at a
// time. Every 4:2:2, 4:2:0 and 4:1:1 layout change is a load from one layout
// and a store to another of the same pixel pair (two lumas and the chroma pair
// they share); which chroma row serves which luma row is the drivers' business.
//
// Scalar load/store move one pair at pixel x (x even); vector load/store move
// sixteen pixels at x (x a multiple of 16) and are lane-exact twins of eight
// scalar pair moves.
#pragma once

#include <cstdint>
#include <cstring>

#include "frame/rows.h"
#include "frame/simd.h"

namespace lum::chroma {

// Two pixels: their lumas and the Cb, Cr they share.
struct Pair {
  int y0, y1, cb, cr;
};

#if LUM_SIMD_SSE
// Sixteen pixels: 16 lumas, and the 8 chroma pairs as Cb bytes and Cr bytes in
// the low halves of cb and cr (the high halves are don't-care).
struct Pair16 {
  __m128i y, cb, cr;
};

namespace bytes {
// pshufb index that writes zero.
constexpr int8_t Z = -128;

// N bytes at p into the low bytes of a register (N = 4, 8 or 16).
template <int N, bool Aligned = false>
inline __m128i load(const uint8_t* p) {
  if constexpr (N == 16) {
    if constexpr (Aligned) return _mm_load_si128(reinterpret_cast<const __m128i*>(p));
    else return _mm_loadu_si128(reinterpret_cast<const __m128i*>(p));
  } else if constexpr (N == 8) {
    return _mm_loadl_epi64(reinterpret_cast<const __m128i*>(p));
  } else {
    static_assert(N == 4);
    int32_t v;
    std::memcpy(&v, p, 4);
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
  } else {
    static_assert(N == 4);
    const int32_t x = _mm_cvtsi128_si32(v);
    std::memcpy(p, &x, 4);
  }
}
// Even bytes of a in the low half, odd bytes in the high half.
inline __m128i splitEvenOdd(__m128i a) {
  return _mm_shuffle_epi8(a, _mm_setr_epi8(0, 2, 4, 6, 8, 10, 12, 14, 1, 3, 5, 7, 9, 11, 13, 15));
}
// Even bytes of a in the low half (high half: the same again).
inline __m128i evens(__m128i a) {
  return _mm_shuffle_epi8(a, _mm_setr_epi8(0, 2, 4, 6, 8, 10, 12, 14, 0, 2, 4, 6, 8, 10, 12, 14));
}
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
    // Per register of four groups: the 8 lumas low, then 4 Cb, then 4 Cr.
    const __m128i m = _mm_setr_epi8(Y0, Y1, 4 + Y0, 4 + Y1, 8 + Y0, 8 + Y1, 12 + Y0, 12 + Y1,  //
                                    CB, 4 + CB, 8 + CB, 12 + CB, CR, 4 + CR, 8 + CR, 12 + CR);
    const uint8_t* p = s.p[0] + 2 * x;
    const __m128i a = _mm_shuffle_epi8(bytes::load<16, Aligned>(p), m);
    const __m128i b = _mm_shuffle_epi8(bytes::load<16, Aligned>(p + 16), m);
    o.y = _mm_unpacklo_epi64(a, b);
    const __m128i c = _mm_unpackhi_epi32(a, b);  // Cb x8, Cr x8
    o.cb = c;
    o.cr = _mm_srli_si128(c, 8);
  }
  template <bool Aligned = false, bool Stream = false>
  static void store(const DstPlanes& d, int x, const Pair16& o) {
    const __m128i c = CB < CR ? _mm_unpacklo_epi8(o.cb, o.cr) : _mm_unpacklo_epi8(o.cr, o.cb);
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
  // N samples from j into the low bytes of cb and cr.
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
  template <int N>
  static void get(const SrcPlanes& s, int j, __m128i& cb, __m128i& cr) {
    const uint8_t* p = s.p[1] + 2 * j;
    __m128i first, second;
    if constexpr (N == 16) {
      const __m128i a = bytes::splitEvenOdd(bytes::load<16>(p));
      const __m128i b = bytes::splitEvenOdd(bytes::load<16>(p + 16));
      first = _mm_unpacklo_epi64(a, b);
      second = _mm_unpackhi_epi64(a, b);
    } else if constexpr (N == 8) {
      first = bytes::splitEvenOdd(bytes::load<16>(p));
      second = _mm_srli_si128(first, 8);
    } else {
      static_assert(N == 4);
      first = _mm_shuffle_epi8(bytes::load<8>(p),
                               _mm_setr_epi8(0, 2, 4, 6, 1, 3, 5, 7, bytes::Z, bytes::Z, bytes::Z, bytes::Z,
                                             bytes::Z, bytes::Z, bytes::Z, bytes::Z));
      second = _mm_srli_si128(first, 4);
    }
    cb = CrFirst ? second : first;
    cr = CrFirst ? first : second;
  }
  template <int N>
  static void put(const DstPlanes& d, int j, __m128i cb, __m128i cr) {
    uint8_t* p = d.p[1] + 2 * j;
    const __m128i a = CrFirst ? cr : cb, b = CrFirst ? cb : cr;
    if constexpr (N == 16) {
      bytes::store<16>(p, _mm_unpacklo_epi8(a, b));
      bytes::store<16>(p + 16, _mm_unpackhi_epi8(a, b));
    } else if constexpr (N == 8) {
      bytes::store<16>(p, _mm_unpacklo_epi8(a, b));
    } else {
      static_assert(N == 4);
      bytes::store<8>(p, _mm_unpacklo_epi8(a, b));
    }
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
      CS::template get<8>(s, x >> 1, o.cb, o.cr);
    } else {
      __m128i cb, cr;
      CS::template get<4>(s, x >> 2, cb, cr);
      o.cb = _mm_unpacklo_epi8(cb, cb);
      o.cr = _mm_unpacklo_epi8(cr, cr);
    }
  }
  template <bool Aligned = false, bool Stream = false>
  static void store(const DstPlanes& d, int x, const Pair16& o) {
    storeLuma<Aligned, Stream>(d, x, o);
    if constexpr (HSub == 1) CS::template put<8>(d, x >> 1, o.cb, o.cr);
    else CS::template put<4>(d, x >> 2, bytes::evens(o.cb), bytes::evens(o.cr));
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

}  // namespace lum::chroma
