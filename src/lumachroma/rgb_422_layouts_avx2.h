// Sixteen-lane (AVX2) loads and stores of the 4:2:2 layouts, and the 256-bit
// step driver of the forward pair kernels. Include only from *_avx2.cpp files:
// like the lane set, everything here has internal linkage or is instantiated
// there alone.
//
// As sources (inverse conversions) the layouts give sixteen pixels as Y, Cb, Cr
// lanes with each pair's chroma twice, in either lane order of layouts_avx2.h.
// As destinations (forward conversions) they take the output of a pair form run
// on two groups a and b of sixteen pixels in one lane order: lumas of a and b,
// and chroma lanes as hadd16(a, b) leaves them inside the 128-bit halves, which
// the stores put back in pair order.
#pragma once

#include "frame/kernel_avx2.h"
#include "lumachroma/rgb_422_kernel.h"

#if LUM_SIMD_SSE && defined(__AVX2__)
namespace lum::layout16 {
namespace {

// Sixteen pixels of packed 4:2:2 (32 bytes) as Y, Cb, Cr lanes.
template <class P, bool Aligned>
struct Of<layout422::C2<P, Aligned>> {
  using L = layout422::C2<P, Aligned>;
  static constexpr bool kStoresQuads = false;
  template <Order Ord, bool Alpha, bool High>
  static void load(const SrcPlanes& s, int x, V o[4]) {
    static_assert(!High);
    V v = _mm256_loadu_si256(reinterpret_cast<const V*>(s.p[0] + 2 * x));
    // Quads: pixels 0..3 and 8..11 (bytes 0..7, 16..23) in the low half.
    if constexpr (Ord == Order::Quads) v = _mm256_permute4x64_epi64(v, 0xD8);
    constexpr int8_t y = L::kY0, b = L::kCb, r = L::kCr;
    o[0] = _mm256_shuffle_epi8(v, both(pick<false>(y, y + 2, y + 4, y + 6, y + 8, y + 10, y + 12, y + 14)));
    o[1] = _mm256_shuffle_epi8(v, both(pick<false>(b, b, b + 4, b + 4, b + 8, b + 8, b + 12, b + 12)));
    o[2] = _mm256_shuffle_epi8(v, both(pick<false>(r, r, r + 4, r + 4, r + 8, r + 8, r + 12, r + 12)));
    if constexpr (Alpha) o[3] = _mm256_setzero_si256();
  }
};

// Sixteen pixels of planar 4:2:2: sixteen luma bytes, eight of each chroma
// plane, each twice.
template <>
struct Of<layout422::P3h> {
  static constexpr bool kStoresQuads = false;
  // Sixteen bytes (pixels 0..15) as lanes in the order Ord.
  template <Order Ord>
  static V lanesOf(H bytes) {
    const V v = _mm256_cvtepu8_epi16(bytes);
    return Ord == Order::Quads ? _mm256_permute4x64_epi64(v, 0xD8) : v;
  }
  template <Order Ord, bool Alpha, bool High>
  static void load(const SrcPlanes& s, int x, V o[4]) {
    static_assert(!High);
    const H cb = load8(s.p[1] + (x >> 1)), cr = load8(s.p[2] + (x >> 1));
    o[0] = lanesOf<Ord>(loadu(s.p[0] + x));
    o[1] = lanesOf<Ord>(_mm_unpacklo_epi8(cb, cb));
    o[2] = lanesOf<Ord>(_mm_unpacklo_epi8(cr, cr));
    if constexpr (Alpha) o[3] = _mm256_setzero_si256();
  }
};

// The pair outputs of 32 pixels (groups a, b of sixteen in the order Ord) to a
// 4:2:2 destination.
template <class L>
struct PairsOf;

// Lumas of a and b as 32 bytes in pixel order.
template <Order Ord>
inline V lumaBytes(V ya, V yb) {
  const V y = _mm256_packus_epi16(ya, yb);
  if constexpr (Ord == Order::Quads)
    return _mm256_permutevar8x32_epi32(y, _mm256_setr_epi32(0, 4, 1, 5, 2, 6, 3, 7));
  else
    return _mm256_permute4x64_epi64(y, 0xD8);
}

template <class P, bool Aligned>
struct PairsOf<layout422::C2<P, Aligned>> {
  using L = layout422::C2<P, Aligned>;
  template <Order Ord>
  static void store(const DstPlanes& d, int x, const form::Pairs<lanes::Avx2>& o) {
    uint8_t* p = d.p[0] + 2 * x;
    const V y = lumaBytes<Ord>(o.y[0], o.y[1]);  // pixels 0..15 | 16..31
    const V cc = L::kCbFirst ? _mm256_packus_epi16(o.cb, o.cr) : _mm256_packus_epi16(o.cr, o.cb);
    V c = _mm256_unpacklo_epi8(cc, _mm256_srli_si256(cc, 8));  // chroma byte pairs, per half
    // Natural: pairs 0..3, 8..11 | 4..7, 12..15 in quads of bytes; Quads: pairs
    // (0 1)(4 5)(8 9)(12 13) | (2 3)(6 7)(10 11)(14 15) in dwords.
    if constexpr (Ord == Order::Quads)
      c = _mm256_permutevar8x32_epi32(c, _mm256_setr_epi32(0, 4, 1, 5, 2, 6, 3, 7));
    else
      c = _mm256_permute4x64_epi64(c, 0xD8);
    const V lo = L::kLumaFirst ? _mm256_unpacklo_epi8(y, c) : _mm256_unpacklo_epi8(c, y);
    const V hi = L::kLumaFirst ? _mm256_unpackhi_epi8(y, c) : _mm256_unpackhi_epi8(c, y);
    _mm256_storeu_si256(reinterpret_cast<V*>(p), _mm256_permute2x128_si256(lo, hi, 0x20));
    _mm256_storeu_si256(reinterpret_cast<V*>(p + 32), _mm256_permute2x128_si256(lo, hi, 0x31));
  }
};

template <>
struct PairsOf<layout422::P3h> {
  // One chroma plane's sixteen bytes in pair order.
  template <Order Ord>
  static H chromaBytes(V c) {
    const V v = _mm256_packus_epi16(c, c);
    // Natural: pairs 0..3, 8..11 | 4..7, 12..15; Quads: (0 1)(4 5)(8 9)(12 13) |
    // (2 3)(6 7)(10 11)(14 15).
    if constexpr (Ord == Order::Quads) return _mm_unpacklo_epi16(lo(v), hi(v));
    else return _mm_unpacklo_epi32(lo(v), hi(v));
  }
  template <Order Ord>
  static void store(const DstPlanes& d, int x, const form::Pairs<lanes::Avx2>& o) {
    _mm256_storeu_si256(reinterpret_cast<V*>(d.p[0] + x), lumaBytes<Ord>(o.y[0], o.y[1]));
    store16(d.p[1] + (x >> 1), chromaBytes<Ord>(o.cb));
    store16(d.p[2] + (x >> 1), chromaBytes<Ord>(o.cr));
  }
};

// Sixteen pixels in and 32 pixels' pairs out: the Io of pairSteps on 256 bits.
// Four-byte pixels move in Quads, the others in Natural order.
template <class S, class Dst>
struct PairIo256 {
  using Src = S;
  static constexpr Order kOrd = isPacked4<S> ? Order::Quads : Order::Natural;
  static void load(const SrcPlanes& s, int x, V* v) { Of<S>::template load<kOrd, false, false>(s, x, v); }
  static void store(const DstPlanes& d, int x, const form::Pairs<lanes::Avx2>& o) {
    PairsOf<Dst>::template store<kOrd>(d, x, o);
  }
};

}  // namespace
}  // namespace lum::layout16

namespace lum::wide422 {
template <class Form, class Src, class Dst>
int pairs(const SrcPlanes& s, const DstPlanes& d, int end) {
  return pairSteps<lanes::Avx2, Form, layout16::PairIo256<Src, Dst>>(s, d, 0, end);
}
template <class Form, class Src, class Dst>
void image(LumSize roi, const SrcPlanes& src, const DstPlanes& dst, int end, RowRest rest) {
  for (int y = 0; y < roi.height; ++y) {
    const SrcPlanes s = src.row(y);
    const DstPlanes d = dst.row(y);
    const int x = pairSteps<lanes::Avx2, Form, layout16::PairIo256<Src, Dst>>(s, d, 0, end);
    if (x < roi.width) rest(s, d, x, roi.width);
  }
}
}  // namespace lum::wide422
#endif
