// The generic 256-bit blocks of the cell kernels (AVX2). Include only in files
// built with AVX2; they instantiate WideForward and WideInverse for their kernels.
//
// A step covers 32 pixels of each row of the cell row, held as two groups of 16
// lanes: group A = pixels 0..7 and 16..23, group B = pixels 8..15 and 24..31 of
// the step. With that order the in-lane AVX2 operations come out in pixel order:
// packing A with B gives pixels 0..31, adding neighbouring lanes of A and B gives
// the cells in order, and spreading cells over their pixels gives A and B again.
// Every lane computes what the 128-bit block and the scalar twin compute for the
// same pixel.
#pragma once

#if !defined(__AVX2__)
#error "cell_wide_avx2.h belongs to files built with AVX2"
#endif

#include "frame/cell_layouts.h"
#include "frame/pair_layouts_avx2.h"
#include "frame/cell_wide.h"
#include "frame/lanes_avx2.h"
#include "frame/layouts.h"

namespace lum {
namespace wide {

using W = __m256i;

// Sixteen pixels, one vector per channel (v[3] alpha).
struct Wx {
  W v[4];
};

// The 256-bit block of a form: its vblock on the sixteen-lane set. Every output
// of a step is narrowed by a saturating pack, which is clamp8, so vblock's lanes
// (clamp8 left to the store) give the same bytes.
template <class F>
struct WideForm {
  static void block(const W* in, W* out) { F::template vblock<lanes::Avx2>(in, out); }
};

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
  static void load(const uint8_t* row, int x, Wx& o) {
    constexpr int8_t Z = -128;
    const uint8_t* p = row + 3 * x;
    const W a = load2x16(p, p + 48), b = load2x8(p + 16, p + 64);
    const W a0 = mask2(_mm_setr_epi8(0, Z, 3, Z, 6, Z, 9, Z, 12, Z, 15, Z, Z, Z, Z, Z));
    const W b0 = mask2(_mm_setr_epi8(Z, Z, Z, Z, Z, Z, Z, Z, Z, Z, Z, Z, 2, Z, 5, Z));
    const W a1 = mask2(_mm_setr_epi8(1, Z, 4, Z, 7, Z, 10, Z, 13, Z, Z, Z, Z, Z, Z, Z));
    const W b1 = mask2(_mm_setr_epi8(Z, Z, Z, Z, Z, Z, Z, Z, Z, Z, 0, Z, 3, Z, 6, Z));
    const W a2 = mask2(_mm_setr_epi8(2, Z, 5, Z, 8, Z, 11, Z, 14, Z, Z, Z, Z, Z, Z, Z));
    const W b2 = mask2(_mm_setr_epi8(Z, Z, Z, Z, Z, Z, Z, Z, Z, Z, 1, Z, 4, Z, 7, Z));
    o.v[I0] = _mm256_or_si256(_mm256_shuffle_epi8(a, a0), _mm256_shuffle_epi8(b, b0));
    o.v[I1] = _mm256_or_si256(_mm256_shuffle_epi8(a, a1), _mm256_shuffle_epi8(b, b1));
    o.v[I2] = _mm256_or_si256(_mm256_shuffle_epi8(a, a2), _mm256_shuffle_epi8(b, b2));
    o.v[3] = _mm256_setzero_si256();
  }
  template <bool WriteAlpha>
  static void store(uint8_t* row, int x, const Wx& o) {
    constexpr int8_t Z = -128;
    uint8_t* p = row + 3 * x;
    const W t = _mm256_packus_epi16(o.v[I0], o.v[I1]);  // c0 bytes 0..7, c1 bytes 8..15, in each half
    const W c = _mm256_packus_epi16(o.v[I2], o.v[I2]);
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
  static void load(const uint8_t* row, int x, Wx& o) {
    const uint8_t* p = row + 4 * x;
    const W m = mask2(_mm_setr_epi8(0, 4, 8, 12, 1, 5, 9, 13, 2, 6, 10, 14, 3, 7, 11, 15));
    const W a = _mm256_shuffle_epi8(load2x16(p, p + 64), m);
    const W b = _mm256_shuffle_epi8(load2x16(p + 16, p + 80), m);
    const W lo = _mm256_unpacklo_epi32(a, b), hi = _mm256_unpackhi_epi32(a, b);  // c0 c1, c2 c3: 8 bytes each
    const W z = _mm256_setzero_si256();
    o.v[I0] = _mm256_unpacklo_epi8(lo, z);
    o.v[I1] = _mm256_unpackhi_epi8(lo, z);
    o.v[I2] = _mm256_unpacklo_epi8(hi, z);
    o.v[3] = _mm256_unpackhi_epi8(hi, z);
  }
  // Alpha is written (as the kernel's rule gives it); no four-channel kernel
  // with a 256-bit block keeps the destination's alpha.
  template <bool WriteAlpha>
  static void store(uint8_t* row, int x, const Wx& o) {
    static_assert(WriteAlpha, "four-channel stores of the wide blocks write alpha");
    uint8_t* p = row + 4 * x;
    const W c02 = _mm256_packus_epi16(o.v[I0], o.v[I2]), c13 = _mm256_packus_epi16(o.v[I1], o.v[3]);
    const W lo = _mm256_unpacklo_epi8(c02, c13), hi = _mm256_unpackhi_epi8(c02, c13);  // c0 c1 pairs, c2 c3 pairs
    const W a = _mm256_unpacklo_epi16(lo, hi), b = _mm256_unpackhi_epi16(lo, hi);  // pixels 0..3, 4..7 of each half
    store32(p, _mm256_permute2x128_si256(a, b, 0x20));
    store32(p + 64, _mm256_permute2x128_si256(a, b, 0x31));
  }
};

// ---- cells -------------------------------------------------------------------

// Chroma lanes of the cells spread over the lanes of their pixels, groups A and B.
template <class Cell>
inline void spread(W c, W& a, W& b) {
  if constexpr (Cell::kW == 2) {
    a = _mm256_unpacklo_epi16(c, c);
    b = _mm256_unpackhi_epi16(c, c);
  } else {
    const W t = _mm256_unpacklo_epi16(c, c);
    a = _mm256_unpacklo_epi16(t, t);
    b = _mm256_unpackhi_epi16(t, t);
  }
}

// The alpha lanes a kernel writes: zero, or the caller's aval.
template <Alpha A>
inline W alphaLanes(const RowCtx& c) {
  static_assert(A != Alpha::Source, "no wide kernel copies source alpha");
  return A == Alpha::Aval ? _mm256_set1_epi16(int16_t(c.aval)) : _mm256_setzero_si256();
}

}  // namespace wide

// The row pointers are copied to locals first: the byte stores of the loop could
// otherwise alias them, and the compiler would load them again at every store.
template <class Cell, class BlockF, class Src, class Chroma>
int WideForward<Cell, BlockF, Src, Chroma>::run(const SrcPlanes* rgb, const CellRowPtrs<uint8_t>& out, int x, int end) {
  using namespace wide;
  const uint8_t* const src[2] = {rgb[0].p[0], rgb[Cell::kRows - 1].p[0]};
  uint8_t* const luma[2] = {out.luma[0], out.luma[1]};
  const DstPlanes chroma = out.chroma;
  for (; x + 32 <= end; x += 32) {
    Wx a[2], b[2];
    for (int r = 0; r < Cell::kRows; ++r) {
      W ya[3], yb[3];
      Layout<Src>::load(src[r], x, a[r]);
      Layout<Src>::load(src[r], x + 8, b[r]);
      WideForm<typename BlockF::Luma>::block(a[r].v, ya);
      WideForm<typename BlockF::Luma>::block(b[r].v, yb);
      store32(luma[r] + x, _mm256_packus_epi16(ya[0], yb[0]));
    }
    if constexpr (Cell::kRows == 1) {
      a[1] = a[0];
      b[1] = b[0];
    }
    W s[3], c[2];
    for (int k = 0; k < 3; ++k) s[k] = cellSums<Cell, lanes::Avx2>(a[0].v[k], a[1].v[k], b[0].v[k], b[1].v[k]);
    WideForm<typename BlockF::Chroma>::block(s, c);
    pairs::Side32<Chroma>::template putLanes<32 / Cell::kW>(chroma, x / Cell::kW, c[0], c[1]);
  }
  return x;
}

template <class Cell, class BlockF, class Chroma, class Dst, Alpha A>
int WideInverse<Cell, BlockF, Chroma, Dst, A>::run(const CellRowPtrs<const uint8_t>& in, const DstPlanes* rgb, int x,
                                                   int end, const RowCtx& c) {
  using namespace wide;
  const uint8_t* const luma[2] = {in.luma[0], in.luma[1]};
  const SrcPlanes chroma = in.chroma;
  uint8_t* const dst[2] = {rgb[0].p[0], rgb[Cell::kRows - 1].p[0]};
  const W z = _mm256_setzero_si256(), alpha = alphaLanes<A>(c);
  for (; x + 32 <= end; x += 32) {
    W c0, c1;
    pairs::Side32<Chroma>::template getLanes<32 / Cell::kW>(chroma, x / Cell::kW, c0, c1);
    Wx a, b, out;
    spread<Cell>(c0, a.v[1], b.v[1]);
    spread<Cell>(c1, a.v[2], b.v[2]);
    a.v[3] = b.v[3] = z;
    for (int r = 0; r < Cell::kRows; ++r) {
      const W y = _mm256_loadu_si256(reinterpret_cast<const W*>(luma[r] + x));
      a.v[0] = _mm256_unpacklo_epi8(y, z);
      b.v[0] = _mm256_unpackhi_epi8(y, z);
      WideForm<BlockF>::block(a.v, out.v);
      out.v[3] = alpha;
      Layout<Dst>::template store<A != Alpha::Keep>(dst[r], x, out);
      WideForm<BlockF>::block(b.v, out.v);
      out.v[3] = alpha;
      Layout<Dst>::template store<A != Alpha::Keep>(dst[r], x + 8, out);
    }
  }
  return x;
}

}  // namespace lum
