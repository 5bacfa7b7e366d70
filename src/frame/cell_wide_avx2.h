// The 256-bit layout adaptors of the cell kernels (AVX2): the block steps of
// cell_kernel.h at sixteen lanes, for the files built with AVX2, which
// instantiate WideForward and WideInverse for their kernels. Every lane computes
// what the 128-bit block and the scalar twin compute for the same pixel.
#pragma once

#if !defined(__AVX2__)
#error "cell_wide_avx2.h belongs to files built with AVX2"
#endif

#include "frame/cell_kernel.h"
#include "frame/pair_layouts_avx2.h"
#include "frame/lanes_avx2.h"
#include "frame/layouts.h"

namespace lum {
namespace wide {

using W = __m256i;

inline W load2x16(const uint8_t* lo, const uint8_t* hi) {
  return _mm256_inserti128_si256(_mm256_castsi128_si256(_mm_loadu_si128(reinterpret_cast<const __m128i*>(lo))),
                                 _mm_loadu_si128(reinterpret_cast<const __m128i*>(hi)), 1);
}
inline W load2x8(const uint8_t* lo, const uint8_t* hi) {
  return _mm256_inserti128_si256(_mm256_castsi128_si256(_mm_loadl_epi64(reinterpret_cast<const __m128i*>(lo))),
                                 _mm_loadl_epi64(reinterpret_cast<const __m128i*>(hi)), 1);
}
inline void store16(uint8_t* p, __m128i v) { _mm_storeu_si128(reinterpret_cast<__m128i*>(p), v); }
inline void store8(uint8_t* p, __m128i v) { _mm_storel_epi64(reinterpret_cast<__m128i*>(p), v); }
inline void store32(uint8_t* p, W v) { _mm256_storeu_si256(reinterpret_cast<W*>(p), v); }
inline __m128i lo128(W v) { return _mm256_castsi256_si128(v); }
inline __m128i hi128(W v) { return _mm256_extracti128_si256(v, 1); }
// The same 16-byte shuffle mask in both halves.
inline W mask2(__m128i m) { return _mm256_broadcastsi128_si256(m); }

// ---- pixel layouts: pixels x..x+7 and x+16..x+23 of a row --------------------

template <class L>
struct Layout;

template <int I0, int I1, int I2>
struct Layout<layout::C3<I0, I1, I2>> {
  static void load(const uint8_t* row, int x, W* o) {
    constexpr int8_t Z = -128;
    const uint8_t* p = row + 3 * x;
    const W a = load2x16(p, p + 48), b = load2x8(p + 16, p + 64);
    const W a0 = mask2(_mm_setr_epi8(0, Z, 3, Z, 6, Z, 9, Z, 12, Z, 15, Z, Z, Z, Z, Z));
    const W b0 = mask2(_mm_setr_epi8(Z, Z, Z, Z, Z, Z, Z, Z, Z, Z, Z, Z, 2, Z, 5, Z));
    const W a1 = mask2(_mm_setr_epi8(1, Z, 4, Z, 7, Z, 10, Z, 13, Z, Z, Z, Z, Z, Z, Z));
    const W b1 = mask2(_mm_setr_epi8(Z, Z, Z, Z, Z, Z, Z, Z, Z, Z, 0, Z, 3, Z, 6, Z));
    const W a2 = mask2(_mm_setr_epi8(2, Z, 5, Z, 8, Z, 11, Z, 14, Z, Z, Z, Z, Z, Z, Z));
    const W b2 = mask2(_mm_setr_epi8(Z, Z, Z, Z, Z, Z, Z, Z, Z, Z, 1, Z, 4, Z, 7, Z));
    o[I0] = _mm256_or_si256(_mm256_shuffle_epi8(a, a0), _mm256_shuffle_epi8(b, b0));
    o[I1] = _mm256_or_si256(_mm256_shuffle_epi8(a, a1), _mm256_shuffle_epi8(b, b1));
    o[I2] = _mm256_or_si256(_mm256_shuffle_epi8(a, a2), _mm256_shuffle_epi8(b, b2));
    o[3] = _mm256_setzero_si256();
  }
  template <bool WriteAlpha>
  static void store(uint8_t* row, int x, const W* o) {
    constexpr int8_t Z = -128;
    uint8_t* p = row + 3 * x;
    const W t = _mm256_packus_epi16(o[I0], o[I1]);  // c0 bytes 0..7, c1 bytes 8..15, in each half
    const W c = _mm256_packus_epi16(o[I2], o[I2]);
    const W t0 = mask2(_mm_setr_epi8(0, 8, Z, 1, 9, Z, 2, 10, Z, 3, 11, Z, 4, 12, Z, 5));
    const W c0 = mask2(_mm_setr_epi8(Z, Z, 0, Z, Z, 1, Z, Z, 2, Z, Z, 3, Z, Z, 4, Z));
    const W t1 = mask2(_mm_setr_epi8(13, Z, 6, 14, Z, 7, 15, Z, Z, Z, Z, Z, Z, Z, Z, Z));
    const W c1 = mask2(_mm_setr_epi8(Z, 5, Z, Z, 6, Z, Z, 7, Z, Z, Z, Z, Z, Z, Z, Z));
    const W head = _mm256_or_si256(_mm256_shuffle_epi8(t, t0), _mm256_shuffle_epi8(c, c0));
    const W tail = _mm256_or_si256(_mm256_shuffle_epi8(t, t1), _mm256_shuffle_epi8(c, c1));
    store16(p, lo128(head));
    store8(p + 16, lo128(tail));
    store16(p + 48, hi128(head));
    store8(p + 64, hi128(tail));
  }
};

template <int I0, int I1, int I2>
struct Layout<layout::C4<I0, I1, I2>> {
  static void load(const uint8_t* row, int x, W* o) {
    const uint8_t* p = row + 4 * x;
    const W m = mask2(_mm_setr_epi8(0, 4, 8, 12, 1, 5, 9, 13, 2, 6, 10, 14, 3, 7, 11, 15));
    const W a = _mm256_shuffle_epi8(load2x16(p, p + 64), m);
    const W b = _mm256_shuffle_epi8(load2x16(p + 16, p + 80), m);
    const W lo = _mm256_unpacklo_epi32(a, b), hi = _mm256_unpackhi_epi32(a, b);  // c0 c1, c2 c3: 8 bytes each
    const W z = _mm256_setzero_si256();
    o[I0] = _mm256_unpacklo_epi8(lo, z);
    o[I1] = _mm256_unpackhi_epi8(lo, z);
    o[I2] = _mm256_unpacklo_epi8(hi, z);
    o[3] = _mm256_unpackhi_epi8(hi, z);
  }
  // Alpha is written (as the kernel's rule gives it); no four-channel kernel
  // with a 256-bit block keeps the destination's alpha.
  template <bool WriteAlpha>
  static void store(uint8_t* row, int x, const W* o) {
    static_assert(WriteAlpha, "four-channel stores of the wide blocks write alpha");
    uint8_t* p = row + 4 * x;
    const W c02 = _mm256_packus_epi16(o[I0], o[I2]), c13 = _mm256_packus_epi16(o[I1], o[3]);
    const W lo = _mm256_unpacklo_epi8(c02, c13), hi = _mm256_unpackhi_epi8(c02, c13);  // c0 c1 pairs, c2 c3 pairs
    const W a = _mm256_unpacklo_epi16(lo, hi), b = _mm256_unpackhi_epi16(lo, hi);  // pixels 0..3, 4..7 of each half
    store32(p, _mm256_permute2x128_si256(a, b, 0x20));
    store32(p + 64, _mm256_permute2x128_si256(a, b, 0x31));
  }
};

// ---- cells -------------------------------------------------------------------

// The 256-bit adaptor of the cell steps of cell_kernel.h: group a is pixels 0..7
// and 16..23 of a step, group b pixels 8..15 and 24..31. With that order the
// in-lane operations come out in pixel order: packing a with b gives pixels
// 0..31, cellSums of a and b gives the cells in order (the chroma sides' lane
// views), and spreading cells over their pixels gives a and b again.
template <class Cell, class Pixels, class Chroma>
struct CellIo {
  static void load(const SrcPlanes& row, int x, W* v) { Layout<Pixels>::load(row.p[0], x, v); }
  template <bool WriteAlpha>
  static void store(const DstPlanes& row, int x, const W* v) {
    Layout<Pixels>::template store<WriteAlpha>(row.p[0], x, v);
  }
  static void storeLuma(uint8_t* p, W ya, W yb) { store32(p, _mm256_packus_epi16(ya, yb)); }
  static void lumaLanes(const uint8_t* p, W& a, W& b) {
    const W y = _mm256_loadu_si256(reinterpret_cast<const W*>(p)), z = _mm256_setzero_si256();
    a = _mm256_unpacklo_epi8(y, z);
    b = _mm256_unpackhi_epi8(y, z);
  }
  static void putChroma(const DstPlanes& d, int j, W c0, W c1) {
    pairs::Side32<Chroma>::template putLanes<32 / Cell::kW>(d, j, c0, c1);
  }
  static void getChroma(const SrcPlanes& s, int j, W& c0, W& c1) {
    pairs::Side32<Chroma>::template getLanes<32 / Cell::kW>(s, j, c0, c1);
  }
  static W zipLo16(W a, W b) { return _mm256_unpacklo_epi16(a, b); }
  static W zipHi16(W a, W b) { return _mm256_unpackhi_epi16(a, b); }
};

}  // namespace wide

template <class Cell, class BlockF, class Src, class Chroma>
int WideForward<Cell, BlockF, Src, Chroma>::run(const SrcPlanes* rgb, const CellRowPtrs<uint8_t>& out, int x, int end) {
  return cellForwardSteps<lanes::Avx2, Cell, BlockF, wide::CellIo<Cell, Src, Chroma>>(rgb, out, x, end);
}

template <class Cell, class BlockF, class Chroma, class Dst, Alpha A>
int WideInverse<Cell, BlockF, Chroma, Dst, A>::run(const CellRowPtrs<const uint8_t>& in, const DstPlanes* rgb, int x,
                                                   int end, const RowCtx& c) {
  return cellInverseSteps<lanes::Avx2, Cell, BlockF, A, wide::CellIo<Cell, Dst, Chroma>>(in, rgb, x, end, c);
}

}  // namespace lum
