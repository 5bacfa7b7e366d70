// Layout adaptors of the BT.709 wide blocks on sixteen 16-bit lanes of
// lanes::Avx2, gathered in Io256 with the members of Io128 (bt709_kernels.h):
// pixel loads and stores are those of layout16::Of, in pixel order; what is
// the family's own is the shape of its rows, the 4:2:0 chroma sinks and the
// packed CbYCr422 pairs. Stores narrow with unsigned saturation (clamp8).
// Include only from *_avx2.cpp files; everything here has internal linkage.
#pragma once

#include "frame/lanes_avx2.h"
#include "frame/layouts_avx2.h"
#include "lumachroma/bt709_kernels.h"

#if LUM_SIMD_SSE && defined(__AVX2__)
namespace lum::bt709 {
namespace {
namespace io256 {

using layout16::hi;
using layout16::lo;
using V = __m256i;
using H = __m128i;

// Sixteen lanes (0..255) as sixteen bytes.
H bytes(V v) { return _mm_packus_epi16(lo(v), hi(v)); }

// Sixteen pixels from x as three channels in the form's order (R G B or Y Cb
// Cr), lanes in pixel order: the packed layouts load as layout16::Of does.
template <class Src>
struct Load {
  static void at(const SrcPlanes& s, int x, V out[3]) {
    layout16::Of<Src>::template load<layout16::Order::Natural, false, false>(s, x, out);
  }
};
template <>
struct Load<BGRAAligned> : Load<layout::BGRA> {};

// Sixteen pixels R, G, B stored at x from lanes in pixel order, alpha as A
// says (aval, or left alone), through layout16::Of.
template <class Dst, Alpha A>
struct Store {
  static_assert(A == Alpha::Keep || A == Alpha::Aval);
  static void at(const DstPlanes& d, int x, const V in[3], int aval) {
    const V o[4] = {in[0], in[1], in[2], A == Alpha::Aval ? _mm256_set1_epi16(int16_t(aval)) : _mm256_setzero_si256()};
    layout16::Of<Dst>::template store<layout16::Order::Natural, A != Alpha::Keep>(d, x, o);
  }
};

// The lanes of hadd16(a, b), a holding pixels 0..15 and b 16..31, put in pixel order.
V inOrder(V v) { return _mm256_permute4x64_epi64(v, 0xD8); }
// Thirty-two lanes of luma as 32 bytes, in order.
V lumaBytes(V a, V b) { return _mm256_permute4x64_epi64(_mm256_packus_epi16(a, b), 0xD8); }

template <class Sink>
struct Chroma16;
template <>
struct Chroma16<PlanarCbCr> {
  static void at(const DstPlanes& c, int i, const V cc[2]) {
    _mm_storeu_si128(reinterpret_cast<H*>(c.p[0] + i), bytes(cc[0]));
    _mm_storeu_si128(reinterpret_cast<H*>(c.p[1] + i), bytes(cc[1]));
  }
};
template <>
struct Chroma16<InterleavedCbCr> {
  static void at(const DstPlanes& c, int i, const V cc[2]) {
    const H cb = bytes(cc[0]), cr = bytes(cc[1]);
    _mm_storeu_si128(reinterpret_cast<H*>(c.p[0] + 2 * i), _mm_unpacklo_epi8(cb, cr));
    _mm_storeu_si128(reinterpret_cast<H*>(c.p[0] + 2 * i + 16), _mm_unpackhi_epi8(cb, cr));
  }
};

}  // namespace io256

struct Io256 {
  using V = __m256i;
  template <class Src>
  static void load(const SrcPlanes& s, int x, V o[3]) {
    io256::Load<Src>::at(s, x, o);
  }
  template <class Dst, Alpha A>
  static void store(const DstPlanes& d, int x, const V o[3], int aval) {
    io256::Store<Dst, A>::at(d, x, o, aval);
  }
  static V inOrder(V v) { return io256::inOrder(v); }
  // Two vectors of luma as 32 bytes.
  static void luma(uint8_t* p, V a, V b) { _mm256_storeu_si256(reinterpret_cast<V*>(p), io256::lumaBytes(a, b)); }
  template <class Sink>
  static void chroma(const DstPlanes& c, int i, const V* cc) {
    io256::Chroma16<Sink>::at(c, i, cc);
  }
  // Sixteen pairs as Cb Y0 Cr Y1, 64 bytes.
  template <bool Al>
  static void pairsOut(uint8_t* d, const V* cc, V ya, V yb) {
    using io256::H;
    const V y = io256::lumaBytes(ya, yb);
    const H cb = io256::bytes(cc[0]), cr = io256::bytes(cc[1]);
    const H c0 = _mm_unpacklo_epi8(cb, cr), c1 = _mm_unpackhi_epi8(cb, cr);  // Cb Cr of pairs 0-7, 8-15
    store16<Al>(d, _mm_unpacklo_epi8(c0, io256::lo(y)));
    store16<Al>(d + 16, _mm_unpackhi_epi8(c0, io256::lo(y)));
    store16<Al>(d + 32, _mm_unpacklo_epi8(c1, io256::hi(y)));
    store16<Al>(d + 48, _mm_unpackhi_epi8(c1, io256::hi(y)));
  }
  // Eight chroma samples at p, each serving two pixels.
  static V chromaTwice(const uint8_t* p) { return layout16::Of<HalfChromaP3>::twice(p); }
  // Sixteen bytes at p as sixteen lanes.
  static V bytes(const uint8_t* p) { return _mm256_cvtepu8_epi16(layout16::loadu(p)); }
};

}  // namespace
}  // namespace lum::bt709
#endif
