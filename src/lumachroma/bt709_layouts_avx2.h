// Layout adaptors of the BT.709 wide blocks: the loads, shuffles and stores
// that move the samples of the family's layouts between memory and sixteen
// 16-bit lanes of lanes::Avx2, gathered in Io256 with the members of Io128
// (bt709_kernels.h). Stores narrow with unsigned saturation (clamp8). Include
// only from *_avx2.cpp files; everything here has internal linkage.
#pragma once

#include "frame/lanes_avx2.h"
#include "frame/layouts_avx2.h"
#include "lumachroma/bt709_kernels.h"

#if LUM_SIMD_SSE && defined(__AVX2__)
namespace lum::bt709 {
namespace {
namespace io256 {

using layout16::both;
using layout16::hi;
using layout16::load8;
using layout16::loadu;
using layout16::lo;
using layout16::Z;
using V = __m256i;
using H = __m128i;

template <bool Al>
H load16(const uint8_t* p) {
  if constexpr (Al) return _mm_load_si128(reinterpret_cast<const H*>(p));
  else return _mm_loadu_si128(reinterpret_cast<const H*>(p));
}
template <bool Al>
void store16(uint8_t* p, H v) {
  if constexpr (Al) _mm_store_si128(reinterpret_cast<H*>(p), v);
  else _mm_storeu_si128(reinterpret_cast<H*>(p), v);
}
// Two eight-lane halves as one sixteen-lane vector.
V join(H lo, H hi) { return _mm256_inserti128_si256(_mm256_castsi128_si256(lo), hi, 1); }
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
template <>
struct Load<HalfChromaP3> {
  // Eight chroma samples, each serving two pixels.
  static V twice(const uint8_t* p) {
    const H c = _mm_cvtepu8_epi16(load8(p));
    return join(_mm_unpacklo_epi16(c, c), _mm_unpackhi_epi16(c, c));
  }
  static void at(const SrcPlanes& s, int x, V out[3]) {
    out[0] = _mm256_cvtepu8_epi16(loadu(s.p[0] + x));
    out[1] = twice(s.p[1] + (x >> 1));
    out[2] = twice(s.p[2] + (x >> 1));
  }
};
template <bool Al>
struct Load<CbYCrC2<Al>> {
  static void at(const SrcPlanes& s, int x, V out[3]) {
    const uint8_t* p = s.p[0] + 2 * x;
    const V m = join(load16<Al>(p), load16<Al>(p + 16));
    out[0] = _mm256_shuffle_epi8(m, both(_mm_setr_epi8(1, Z, 3, Z, 5, Z, 7, Z, 9, Z, 11, Z, 13, Z, 15, Z)));
    out[1] = _mm256_shuffle_epi8(m, both(_mm_setr_epi8(0, Z, 0, Z, 4, Z, 4, Z, 8, Z, 8, Z, 12, Z, 12, Z)));
    out[2] = _mm256_shuffle_epi8(m, both(_mm_setr_epi8(2, Z, 2, Z, 6, Z, 6, Z, 10, Z, 10, Z, 14, Z, 14, Z)));
  }
};

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
    io256::store16<Al>(d, _mm_unpacklo_epi8(c0, io256::lo(y)));
    io256::store16<Al>(d + 16, _mm_unpackhi_epi8(c0, io256::lo(y)));
    io256::store16<Al>(d + 32, _mm_unpacklo_epi8(c1, io256::hi(y)));
    io256::store16<Al>(d + 48, _mm_unpackhi_epi8(c1, io256::hi(y)));
  }
  // Eight chroma samples at p, each serving two pixels.
  static V chromaTwice(const uint8_t* p) { return io256::Load<HalfChromaP3>::twice(p); }
  // Sixteen bytes at p as sixteen lanes.
  static V bytes(const uint8_t* p) { return _mm256_cvtepu8_epi16(io256::loadu(p)); }
};

}  // namespace
}  // namespace lum::bt709
#endif
