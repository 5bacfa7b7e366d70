// The 4:2:2 layouts of pair_layouts.h (a pixel pair shares one Cb and one Cr)
// as the RGB kernels see them: packed C2 in its three byte orders and planar P3
// with half-width chroma planes.
//
// As a destination (forward conversions) a layout stores whole pairs: storePair
// takes Y0, Y1, Cb, Cr; store16 / store8 take a vector block of sixteen or eight
// pixels. As a source (inverse conversions) a layout presents every pixel as
// Y, Cb, Cr with its pair's chroma, so the full-resolution pixel kernels and
// forms run on it unchanged (load of one pixel, or of eight as 16-bit lanes).
// The model's second and third channels are Cb and Cr, or U and V.
#pragma once

#include <cstdint>

#include "frame/layouts.h"
#include "frame/pair_layouts.h"
#include "lumachroma/forms_422.h"

namespace lum::layout422 {

using layout::Px;
#if LUM_SIMD_SSE
using layout::Vx;
using Pairs16 = form::Pairs<lanes::Sse>;

namespace detail {
constexpr int8_t Z = -128;  // pshufb: write zero
// 16-bit lanes (0..255) to bytes in the low half.
inline __m128i narrow(__m128i v) { return _mm_packus_epi16(v, v); }
// Four chroma bytes as eight 16-bit lanes, each sample twice: the chroma of the
// four pairs of eight pixels.
inline __m128i replicate4(__m128i v) {
  return _mm_shuffle_epi8(v, _mm_setr_epi8(0, Z, 0, Z, 1, Z, 1, Z, 2, Z, 2, Z, 3, Z, 3, Z));
}
}  // namespace detail
#endif

// Packed 4:2:2, four bytes a pair, in the byte order of the pair layout P (a
// pairs::Packed). Aligned: the twin that uses aligned vector loads and stores,
// for calls whose pointers and steps are all multiples of 16.
template <class P, bool Aligned = false>
struct C2 {
  static constexpr int kY0 = P::kY0;
  static constexpr int kY1 = P::kY1;
  static constexpr int kCb = P::kCb;
  static constexpr int kCr = P::kCr;
  static constexpr bool kLumaFirst = kY0 == 0;
  static constexpr bool kCbFirst = kCb < kCr;
  static constexpr int kC0 = kLumaFirst ? 1 : 0;  // first chroma byte
  static constexpr int kC1 = kC0 + 2;             // second chroma byte

  static const uint8_t* pairAt(const uint8_t* row, int x) { return row + 2 * (x & ~1); }

  // --- as a source: pixel x of a whole pair, with the pair's chroma
  static void load(const SrcPlanes& s, int x, Px& o) {
    const uint8_t* p = pairAt(s.p[0], x);
    o.v[0] = p[(x & 1) ? kY1 : kY0];
    o.v[1] = p[kCb];
    o.v[2] = p[kCr];
    o.v[3] = 0;
  }
  // The lone pixel of an odd row: its luma and the first chroma byte of the half
  // pair (x even, the last pixel).
  static void loadHalf(const SrcPlanes& s, int x, int& y, int& c0) {
    const uint8_t* p = s.p[0] + 2 * x;
    y = p[kY0];
    c0 = p[kC0];
  }
  // Byte offset, from the half pair, of the second chroma of the pair to its left.
  static constexpr int kLeftC1 = kC1 - 4;
  // Channel (1 = Cb, 2 = Cr) of the first chroma byte.
  static constexpr int kFirstChannel = kCbFirst ? 1 : 2;

#if LUM_SIMD_SSE
  static __m128i in(const uint8_t* p) { return pairs::bytes::load<16, Aligned>(p); }
  static void out(uint8_t* p, __m128i v) { pairs::bytes::store<16, Aligned>(p, v); }
  // Eight pixels (16 bytes) as Y, Cb, Cr lanes with the chroma of each pair twice.
  static void load(const SrcPlanes& s, int x, Vx& o) {
    using detail::Z;
    const __m128i v = in(s.p[0] + 2 * x);
    constexpr int8_t y0 = kY0, b = kCb, r = kCr;
    o.v[0] = _mm_shuffle_epi8(v, _mm_setr_epi8(y0, Z, y0 + 2, Z, y0 + 4, Z, y0 + 6, Z, y0 + 8, Z, y0 + 10, Z,
                                               y0 + 12, Z, y0 + 14, Z));
    o.v[1] = _mm_shuffle_epi8(v, _mm_setr_epi8(b, Z, b, Z, b + 4, Z, b + 4, Z, b + 8, Z, b + 8, Z, b + 12, Z,
                                               b + 12, Z));
    o.v[2] = _mm_shuffle_epi8(v, _mm_setr_epi8(r, Z, r, Z, r + 4, Z, r + 4, Z, r + 8, Z, r + 8, Z, r + 12, Z,
                                               r + 12, Z));
    o.v[3] = _mm_setzero_si128();
  }
#endif

  // --- as a destination: pair at pixel x (even)
  static void storePair(const DstPlanes& d, int x, const int* o) { P::store(d, x, pairs::Pair{o[0], o[1], o[2], o[3]}); }
#if LUM_SIMD_SSE
  // Bytes of the pairs' chroma in memory order, first chroma then second.
  static __m128i chromaBytes(const Pairs16& o) {
    const __m128i cb = detail::narrow(o.cb), cr = detail::narrow(o.cr);
    return kCbFirst ? _mm_unpacklo_epi8(cb, cr) : _mm_unpacklo_epi8(cr, cb);
  }
  static __m128i lo(__m128i y, __m128i c) { return kLumaFirst ? _mm_unpacklo_epi8(y, c) : _mm_unpacklo_epi8(c, y); }
  static __m128i hi(__m128i y, __m128i c) { return kLumaFirst ? _mm_unpackhi_epi8(y, c) : _mm_unpackhi_epi8(c, y); }
  static void store16(const DstPlanes& d, int x, const Pairs16& o) {
    const __m128i y = _mm_packus_epi16(o.y[0], o.y[1]), c = chromaBytes(o);
    out(d.p[0] + 2 * x, lo(y, c));
    out(d.p[0] + 2 * x + 16, hi(y, c));
  }
  // Eight pixels: o.y[0] and the low four chroma lanes.
  static void store8(const DstPlanes& d, int x, const Pairs16& o) {
    out(d.p[0] + 2 * x, lo(detail::narrow(o.y[0]), chromaBytes(o)));
  }
#endif

  // The planes advanced by x pixels (x even).
  template <class T>
  static Planes<T> advance(Planes<T> p, int x) {
    p.p[0] += 2 * x;
    return p;
  }
};

// Y, Cb, Cr planes (pairs::PlanarRow); chroma planes have one sample per pair (x / 2).
struct P3h {
  using Side = pairs::CbCrPlanes;
  static void load(const SrcPlanes& s, int x, Px& o) {
    o.v[0] = s.p[0][x];
    Side::get(s, x >> 1, o.v[1], o.v[2]);
    o.v[3] = 0;
  }
  static void storePair(const DstPlanes& d, int x, const int* o) {
    pairs::PlanarRow::store(d, x, pairs::Pair{o[0], o[1], o[2], o[3]});
  }
#if LUM_SIMD_SSE
  // Eight pixels: eight luma bytes and four bytes of each chroma plane.
  static void load(const SrcPlanes& s, int x, Vx& o) {
    __m128i cb, cr;
    Side::get<4>(s, x >> 1, cb, cr);
    o.v[0] = _mm_cvtepu8_epi16(pairs::bytes::load<8>(s.p[0] + x));
    o.v[1] = detail::replicate4(cb);
    o.v[2] = detail::replicate4(cr);
    o.v[3] = _mm_setzero_si128();
  }
  static void store16(const DstPlanes& d, int x, const Pairs16& o) {
    pairs::bytes::store<16>(d.p[0] + x, _mm_packus_epi16(o.y[0], o.y[1]));
    Side::putLanes<8>(d, x >> 1, o.cb, o.cr);
  }
  static void store8(const DstPlanes& d, int x, const Pairs16& o) {
    pairs::bytes::store<8>(d.p[0] + x, detail::narrow(o.y[0]));
    Side::putLanes<4>(d, x >> 1, o.cb, o.cr);
  }
#endif
  template <class T>
  static Planes<T> advance(Planes<T> p, int x) {
    p.p[0] += x;
    p.p[1] += x >> 1;
    p.p[2] += x >> 1;
    return p;
  }
};

using YCbCr422 = C2<pairs::YUY2>;         // Y0 Cb Y1 Cr (also Y0 U Y1 V)
using CbYCr422 = C2<pairs::UYVY>;         // Cb Y0 Cr Y1
using YCrCb422 = C2<pairs::YVYU>;         // Y0 Cr Y1 Cb
using AlignedCbYCr422 = C2<pairs::UYVY, true>;  // CbYCr422 with aligned vector moves

}  // namespace lum::layout422
