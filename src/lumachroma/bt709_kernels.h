// Row kernels and drivers of the BT.709 conversions: the sub-sampled layouts
// (4:2:0 planes, packed CbYCr422 pairs), the forward cell and pair kernels with
// their block ladders, and the row drivers that walk rows or row pairs.
//
// Every kernel runs its block form over the first pixels of a row (the ladder
// decides how many) and its tail form over the rest; the vector groups only
// speed up the block part, whose scalar twin computes the same lanes.
#pragma once

#include <cstring>

#include "frame/check.h"
#include "frame/kernel.h"
#include "frame/layouts.h"
#include "frame/rows.h"
#include "lumachroma/forms_709.h"

namespace lum::bt709 {

using layout::Px;
#if LUM_SIMD_SSE
using layout::Vx;

// 16 bytes from memory; Al promises a 16-byte aligned address (the myAl paths).
template <bool Al>
inline __m128i load16(const uint8_t* p) {
  if constexpr (Al) return _mm_load_si128(reinterpret_cast<const __m128i*>(p));
  else return _mm_loadu_si128(reinterpret_cast<const __m128i*>(p));
}
template <bool Al>
inline void store16(uint8_t* p, __m128i v) {
  if constexpr (Al) _mm_store_si128(reinterpret_cast<__m128i*>(p), v);
  else _mm_storeu_si128(reinterpret_cast<__m128i*>(p), v);
}
#endif

// Status of a conversion on 2-by-2 cells: a warning when a column or row was left over.
inline LumStatus oddSizeStatus(LumSize roi) { return ((roi.width | roi.height) & 1) ? lumStatusOddSize : lumStatusOk; }

// ---------------------------------------------------------------------------
// Wide blocks: sixteen 16-bit lanes (AVX2), in bt709_avx2.cpp
// ---------------------------------------------------------------------------
// They compute the lanes of the same forms as the eight-lane blocks and the
// scalar twins; a row kernel hands them the first whole groups of its block
// part and goes on from the pixel they return. They run only when the processor
// has AVX2 (asked once) and vector blocks are on.
namespace wide {
// True when the wide blocks may run in this call.
bool enabled() noexcept;
// Tests: turns the wide blocks off (or back on) in this thread, leaving the
// eight-lane blocks on, so that each lane width can be compared with the others.
void setEnabled(bool on) noexcept;

#if LUM_SIMD_SSE
// Inverse block Form over pixels [0, n) of a row, groups of 16; returns the
// pixels done. Alpha A of a four-byte destination is aval.
template <class Form, class Src, class Dst, Alpha A>
int inverse(const SrcPlanes& s, const DstPlanes& d, int n, int aval);
// Inverse block Form over pixels [0, n) of a row pair of 4:2:0 planes (s0, s1
// share their chroma rows), groups of 16 of each row: the chroma products are
// made once for the two rows. Returns the pixels done in each row.
template <class Form, class Dst, Alpha A>
int inverseCells(const SrcPlanes& s0, const SrcPlanes& s1, const DstPlanes& d0, const DstPlanes& d1, int n,
                 int aval);
// Forward cells of a row pair over pixels [0, n), groups of 32; returns the pixels done.
template <class Block, class Src, class Sink>
int cells(const SrcPlanes& s0, const SrcPlanes& s1, uint8_t* y0, uint8_t* y1, const DstPlanes& c, int n);
// Forward 4:2:2 pairs of a row over pixels [0, n), groups of 32; returns the pixels done.
template <class Block, class Src, bool Al>
int pairs(const SrcPlanes& s, uint8_t* d, int n);
#endif
}  // namespace wide

// ---------------------------------------------------------------------------
// Sources of the inverse conversions
// ---------------------------------------------------------------------------

// Y, Cb, Cr planes with chroma at half the horizontal resolution: pixel x takes
// chroma sample x >> 1 (replication, no interpolation). The row driver hands
// the chroma rows that belong to the luma row.
struct HalfChromaP3 {
  static void load(const SrcPlanes& s, int x, Px& o) {
    o.v[0] = s.p[0][x];
    o.v[1] = s.p[1][x >> 1];
    o.v[2] = s.p[2][x >> 1];
    o.v[3] = 0;
  }
#if LUM_SIMD_SSE
  // Eight pixels from x (even): 8 luma bytes and 4 bytes of each chroma plane.
  static __m128i chroma4(const uint8_t* p) {
    int32_t w;
    std::memcpy(&w, p, 4);
    const __m128i c = _mm_cvtepu8_epi16(_mm_cvtsi32_si128(w));
    return _mm_unpacklo_epi16(c, c);
  }
  static void load(const SrcPlanes& s, int x, Vx& o) {
    o.v[0] = _mm_cvtepu8_epi16(_mm_loadl_epi64(reinterpret_cast<const __m128i*>(s.p[0] + x)));
    o.v[1] = chroma4(s.p[1] + (x >> 1));
    o.v[2] = chroma4(s.p[2] + (x >> 1));
    o.v[3] = _mm_setzero_si128();
  }
#endif
};

// Packed CbYCr422 (UYVY): Cb Y0 Cr Y1 per pixel pair; both pixels of a pair take
// its Cb and Cr. Al: the vector loads may assume 16-byte alignment.
template <bool Al>
struct CbYCrC2 {
  static void load(const SrcPlanes& s, int x, Px& o) {
    const uint8_t* pair = s.p[0] + 4 * (x >> 1);
    o.v[0] = pair[1 + 2 * (x & 1)];
    o.v[1] = pair[0];
    o.v[2] = pair[2];
    o.v[3] = 0;
  }
#if LUM_SIMD_SSE
  // Eight pixels from x (a multiple of 8): 16 bytes, split into 16-bit lanes.
  static void load(const SrcPlanes& s, int x, Vx& o) {
    constexpr int8_t Z = -128;
    const __m128i m = load16<Al>(s.p[0] + 2 * x);
    o.v[0] = _mm_shuffle_epi8(m, _mm_setr_epi8(1, Z, 3, Z, 5, Z, 7, Z, 9, Z, 11, Z, 13, Z, 15, Z));
    o.v[1] = _mm_shuffle_epi8(m, _mm_setr_epi8(0, Z, 0, Z, 4, Z, 4, Z, 8, Z, 8, Z, 12, Z, 12, Z));
    o.v[2] = _mm_shuffle_epi8(m, _mm_setr_epi8(2, Z, 2, Z, 6, Z, 6, Z, 10, Z, 10, Z, 14, Z, 14, Z));
    o.v[3] = _mm_setzero_si128();
  }
#endif
};

// BGRA source whose vector loads assume 16-byte aligned pixel groups (the
// aligned path of BGRA to CbYCr422); scalar loads and results as layout::BGRA.
struct BGRAAligned : layout::BGRA {
  using layout::BGRA::load;
#if LUM_SIMD_SSE
  static void load(const SrcPlanes& s, int x, Vx& o) {
    const uint8_t* p = s.p[0] + 4 * x;
    const __m128i m = _mm_setr_epi8(0, 4, 8, 12, 1, 5, 9, 13, 2, 6, 10, 14, 3, 7, 11, 15);
    const __m128i a = _mm_shuffle_epi8(load16<true>(p), m), b = _mm_shuffle_epi8(load16<true>(p + 16), m);
    const __m128i lo = _mm_unpacklo_epi32(a, b), hi = _mm_unpackhi_epi32(a, b);  // B G | R A, 8 each
    o.v[2] = _mm_cvtepu8_epi16(lo);
    o.v[1] = _mm_cvtepu8_epi16(_mm_srli_si128(lo, 8));
    o.v[0] = _mm_cvtepu8_epi16(hi);
    o.v[3] = _mm_cvtepu8_epi16(_mm_srli_si128(hi, 8));
  }
#endif
};

// ---------------------------------------------------------------------------
// Inverse drivers
// ---------------------------------------------------------------------------

// Row kernel of the inverse conversions: the block form over width & ~(Cover-1)
// pixels (wide groups of 16, then groups of 8, then its scalar twin), the tail
// form over the rest, as BlockThenTail.
template <int Cover, class BlockForm, class TailForm, class Src, class Dst, Alpha A = Alpha::Keep>
struct InverseRow {
  using Block = BlockForm;
  using DstLayout = Dst;
  static constexpr Alpha kAlpha = A;
  static int blockEnd(int width) { return std::is_same_v<TailForm, NoBlock> ? width : width & ~(Cover - 1); }
  // The row from pixel x on (x a multiple of 8 inside the block part).
  static void rest(const SrcPlanes& s, const DstPlanes& d, int x, int width, const RowCtx& c) {
    const int end = blockEnd(width);
    runBlocks<BlockForm, Src, Dst, A>(s, d, x, end, c);
    if constexpr (!std::is_same_v<TailForm, NoBlock>) runPixels<TailForm, Src, Dst, A>(s, d, end, width, c);
  }
  static void row(const SrcPlanes& s, const DstPlanes& d, int width, const RowCtx& c) {
    int x = 0;
#if LUM_SIMD_SSE
    if (wide::enabled()) x = wide::inverse<BlockForm, Src, Dst, A>(s, d, blockEnd(width), c.aval);
#endif
    rest(s, d, x, width, c);
  }
  static void image(LumSize roi, const SrcPlanes& s, const DstPlanes& d, const RowCtx& c = {}) {
    for (int y = 0; y < roi.height; ++y) row(s.row(y), d.row(y), roi.width, c);
  }
};

// 4:2:0 planes to a packed image, two rows at once: each luma row with the
// chroma row of its cell, over the even part of the region (width >> 1 by
// height >> 1 cells). Kernel is an InverseRow over HalfChromaP3.
template <class Kernel>
inline void cells420ToPacked(LumSize roi, const uint8_t* const src[3], const int srcStep[3], uint8_t* dst, int dstStep,
                             const RowCtx& c) {
  const int w = roi.width & ~1, h = roi.height & ~1;
  for (int y = 0; y < h; y += 2) {
    SrcPlanes s[2];
    DstPlanes d[2];
    for (int r = 0; r < 2; ++r) {
      s[r].p[0] = rowAt(src[0], y + r, srcStep[0]);
      s[r].p[1] = rowAt(src[1], y >> 1, srcStep[1]);
      s[r].p[2] = rowAt(src[2], y >> 1, srcStep[2]);
      d[r] = packed(rowAt(dst, y + r, dstStep), dstStep);
    }
    int x = 0;
#if LUM_SIMD_SSE
    if (wide::enabled())
      x = wide::inverseCells<typename Kernel::Block, typename Kernel::DstLayout, Kernel::kAlpha>(
          s[0], s[1], d[0], d[1], Kernel::blockEnd(w), c.aval);
#endif
    Kernel::rest(s[0], d[0], x, w, c);
    Kernel::rest(s[1], d[1], x, w, c);
  }
}

// Packed CbYCr422 to a packed image. Pairs go through Kernel (a BlockThenTail
// over CbYCrC2); the lone last pixel of an odd row takes Cb and Y from its half
// pair and Cr from the pair to its left (two bytes before its Cb), or its own Cb
// when the row is one pixel wide, and is converted by LoneForm.
template <class Kernel, class LoneForm, class Dst, Alpha A>
inline void pairs422ToPacked(LumSize roi, const uint8_t* src, int srcStep, uint8_t* dst, int dstStep, const RowCtx& c) {
  const int w = roi.width;
  for (int y = 0; y < roi.height; ++y) {
    const SrcPlanes s = packed(rowAt(src, y, srcStep), srcStep);
    const DstPlanes d = packed(rowAt(dst, y, dstStep), dstStep);
    Kernel::row(s, d, w & ~1, c);
    if (w & 1) {
      const uint8_t* half = s.p[0] + 2 * (w - 1);
      Px in, out;
      in.v[0] = half[1];
      in.v[1] = half[0];
      in.v[2] = w > 1 ? half[-2] : half[0];
      in.v[3] = 0;
      LoneForm::pixel(in.v, out.v);
      lum::detail::setAlpha<A>(out, in, c);
      Dst::template store<A != Alpha::Keep>(d, w - 1, out);
    }
  }
}

// ---------------------------------------------------------------------------
// Forward: ladders, chroma destinations, cell and pair kernels
// ---------------------------------------------------------------------------

// How many pixels of a row the block form covers.
struct Ladder16 {  // 16 a step
  static constexpr int end(int w) { return w & ~15; }
};
struct Ladder16Then8 {  // 16 a step, then 8 a step
  static constexpr int end(int w) { return w & ~7; }
};
struct Ladder32 {  // 32 a step
  static constexpr int end(int w) { return w & ~31; }
};
struct Ladder8 {  // 8 a step
  static constexpr int end(int w) { return w & ~7; }
};
// 16 a step, then one step of 4 when (width & 7) >= 4. Only the low three bits
// of the width are looked at: 44 runs 32 + 4 and leaves 8 pixels to the cell
// tail, 40 runs 32 and leaves 8 as well. The ladder is kept as it is, since the
// block and the tail can differ by one code.
struct Ladder16Then4 {
  static constexpr int end(int w) { return (w & ~15) + ((w & 7) >= 4 ? 4 : 0); }
};

// Cb and Cr rows in two planes: cell i at byte i of each.
struct PlanarCbCr {
  static void store(const DstPlanes& c, int i, const int* cc) {
    c.p[0][i] = uint8_t(cc[0]);
    c.p[1][i] = uint8_t(cc[1]);
  }
#if LUM_SIMD_SSE
  // Eight cells from i.
  static void store8(const DstPlanes& c, int i, const __m128i* cc) {
    _mm_storel_epi64(reinterpret_cast<__m128i*>(c.p[0] + i), _mm_packus_epi16(cc[0], cc[0]));
    _mm_storel_epi64(reinterpret_cast<__m128i*>(c.p[1] + i), _mm_packus_epi16(cc[1], cc[1]));
  }
#endif
};

// One row of interleaved Cb Cr pairs (NV12): cell i at bytes 2i, 2i+1.
struct InterleavedCbCr {
  static void store(const DstPlanes& c, int i, const int* cc) {
    c.p[0][2 * i] = uint8_t(cc[0]);
    c.p[0][2 * i + 1] = uint8_t(cc[1]);
  }
#if LUM_SIMD_SSE
  static void store8(const DstPlanes& c, int i, const __m128i* cc) {
    const __m128i cb = _mm_packus_epi16(cc[0], cc[0]), cr = _mm_packus_epi16(cc[1], cc[1]);
    _mm_storeu_si128(reinterpret_cast<__m128i*>(c.p[0] + 2 * i), _mm_unpacklo_epi8(cb, cr));
  }
#endif
};

// Sum of channel k over the pixels.
inline void sum3(const Px* px, int n, int* s) {
  for (int k = 0; k < 3; ++k) {
    s[k] = 0;
    for (int i = 0; i < n; ++i) s[k] += px[i].v[k];
  }
}

// Packed rows to luma rows and one chroma row, 2-by-2 cells: Block covers the
// first Ladder::end(width) pixels of each row pair, Tail the cells up to
// width & ~1. A cell's chroma comes from the sums of its four pixels.
template <class Block, class Tail, class Src, class Sink, class Ladder>
struct ForwardCells {
  // One cell at column x (even) by form F.
  template <class F>
  static void cell(const SrcPlanes& s0, const SrcPlanes& s1, uint8_t* y0, uint8_t* y1, const DstPlanes& c, int x) {
    Px p[4];
    Src::load(s0, x, p[0]);
    Src::load(s0, x + 1, p[1]);
    Src::load(s1, x, p[2]);
    Src::load(s1, x + 1, p[3]);
    y0[x] = uint8_t(F::y(p[0].v[0], p[0].v[1], p[0].v[2]));
    y0[x + 1] = uint8_t(F::y(p[1].v[0], p[1].v[1], p[1].v[2]));
    y1[x] = uint8_t(F::y(p[2].v[0], p[2].v[1], p[2].v[2]));
    y1[x + 1] = uint8_t(F::y(p[3].v[0], p[3].v[1], p[3].v[2]));
    int s[3], cc[2];
    sum3(p, 4, s);
    F::chroma(s, cc);
    Sink::store(c, x >> 1, cc);
  }

  static void rowPair(const SrcPlanes& s0, const SrcPlanes& s1, uint8_t* y0, uint8_t* y1, const DstPlanes& c,
                      int width) {
    const int blockEnd = Ladder::end(width), cellEnd = width & ~1;
    int x = 0;
#if LUM_SIMD_SSE
    if (wide::enabled()) x = wide::cells<Block, Src, Sink>(s0, s1, y0, y1, c, blockEnd);
    if (useVector()) {
      // 16 pixels of each row: 8 cells.
      for (; x + 16 <= blockEnd; x += 16) {
        Vx a0, a1, b0, b1;
        Src::load(s0, x, a0);
        Src::load(s0, x + 8, a1);
        Src::load(s1, x, b0);
        Src::load(s1, x + 8, b1);
        _mm_storeu_si128(reinterpret_cast<__m128i*>(y0 + x), _mm_packus_epi16(Block::template vy<form::Sse>(a0.v), Block::template vy<form::Sse>(a1.v)));
        _mm_storeu_si128(reinterpret_cast<__m128i*>(y1 + x), _mm_packus_epi16(Block::template vy<form::Sse>(b0.v), Block::template vy<form::Sse>(b1.v)));
        __m128i s[3], cc[2];
        for (int k = 0; k < 3; ++k)
          s[k] = _mm_hadd_epi16(_mm_add_epi16(a0.v[k], b0.v[k]), _mm_add_epi16(a1.v[k], b1.v[k]));
        Block::template vchroma<form::Sse>(s, cc);
        Sink::store8(c, x >> 1, cc);
      }
    }
#endif
    for (; x < blockEnd; x += 2) cell<Block>(s0, s1, y0, y1, c, x);
    for (; x < cellEnd; x += 2) cell<Tail>(s0, s1, y0, y1, c, x);
  }

  // The even part of the region: row pairs 2j, 2j+1 write chroma row j.
  // dst.p[0] is the luma plane, dst.p[1] (and p[2]) the chroma plane(s).
  static void image(LumSize roi, const uint8_t* src, int srcStep, const DstPlanes& dst) {
    for (int j = 0; j < roi.height >> 1; ++j) {
      DstPlanes c;
      for (int k = 1; k < 3; ++k)
        if (dst.p[k]) c.p[k - 1] = rowAt(dst.p[k], j, dst.step[k]);
      rowPair(packed(rowAt(src, 2 * j, srcStep), srcStep), packed(rowAt(src, 2 * j + 1, srcStep), srcStep),
              rowAt(dst.p[0], 2 * j, dst.step[0]), rowAt(dst.p[0], 2 * j + 1, dst.step[0]), c, roi.width);
    }
  }
};

// Packed rows to packed CbYCr422 (Cb Y0 Cr Y1): Block covers the first
// Ladder::end(width) pixels, Tail the pairs up to width & ~1; a pair's chroma
// comes from the sums of its two pixels. The lone last pixel of an odd row is
// loaded through LoneSrc and writes two bytes, Cb and Y, by TYH and its own Cb.
// Al: all vector loads and stores may assume 16-byte alignment.
template <class Block, class Tail, class Src, class LoneSrc, class Ladder, bool Al>
struct ForwardPairs {
  template <class F>
  static void pair(const SrcPlanes& s, uint8_t* d, int x) {
    Px p[2];
    Src::load(s, x, p[0]);
    Src::load(s, x + 1, p[1]);
    int sum[3], cc[2];
    sum3(p, 2, sum);
    F::chroma(sum, cc);
    d[2 * x] = uint8_t(cc[0]);
    d[2 * x + 1] = uint8_t(F::y(p[0].v[0], p[0].v[1], p[0].v[2]));
    d[2 * x + 2] = uint8_t(cc[1]);
    d[2 * x + 3] = uint8_t(F::y(p[1].v[0], p[1].v[1], p[1].v[2]));
  }

  static void row(const SrcPlanes& s, uint8_t* d, int width) {
    const int blockEnd = Ladder::end(width), pairEnd = width & ~1;
    int x = 0;
#if LUM_SIMD_SSE
    if (wide::enabled()) x = wide::pairs<Block, Src, Al>(s, d, blockEnd);
    if (useVector()) {
      // 16 pixels: 8 pairs, 32 bytes out.
      for (; x + 16 <= blockEnd; x += 16) {
        Vx a, b;
        Src::load(s, x, a);
        Src::load(s, x + 8, b);
        __m128i sum[3], cc[2];
        for (int k = 0; k < 3; ++k) sum[k] = _mm_hadd_epi16(a.v[k], b.v[k]);
        Block::template vchroma<form::Sse>(sum, cc);
        const __m128i y = _mm_packus_epi16(Block::template vy<form::Sse>(a.v), Block::template vy<form::Sse>(b.v));
        const __m128i c = _mm_unpacklo_epi8(_mm_packus_epi16(cc[0], cc[0]), _mm_packus_epi16(cc[1], cc[1]));
        store16<Al>(d + 2 * x, _mm_unpacklo_epi8(c, y));
        store16<Al>(d + 2 * x + 16, _mm_unpackhi_epi8(c, y));
      }
    }
#endif
    for (; x < blockEnd; x += 2) pair<Block>(s, d, x);
    for (; x < pairEnd; x += 2) pair<Tail>(s, d, x);
    if (width & 1) {
      Px p;
      LoneSrc::load(s, x, p);
      d[2 * x] = uint8_t(form::loneCbH(p.v[0], p.v[1], p.v[2]));
      d[2 * x + 1] = uint8_t(form::tyh(p.v[0], p.v[1], p.v[2]));
    }
  }

  static void image(LumSize roi, const uint8_t* src, int srcStep, uint8_t* dst, int dstStep) {
    for (int y = 0; y < roi.height; ++y)
      row(packed(rowAt(src, y, srcStep), srcStep), rowAt(dst, y, dstStep), roi.width);
  }
};

// ---------------------------------------------------------------------------
// Public-layer helpers
// ---------------------------------------------------------------------------

// Forward 4:2:0 on three planes: pointers (array, its planes, the steps), then
// a size of at least 2 by 2; the even part is converted, odd sizes warn.
template <class Kernel>
LumStatus toPlanes420(const Lum8u* pSrc, int srcStep, Lum8u* const pDst[3], const int dstStep[3], LumSize roi) {
  if (check::anyNull(pSrc, pDst, dstStep) || check::anyPlaneNull(pDst, 3)) return lumStatusNullPointer;
  if (check::badSize(roi, 2, 2)) return lumStatusBadSize;
  Kernel::image(roi, pSrc, srcStep, planar(pDst, 3, dstStep));
  return oddSizeStatus(roi);
}

}  // namespace lum::bt709
