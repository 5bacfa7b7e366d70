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

using layout::detail::load16;
using layout::detail::store16;
#endif

// Status of a conversion on 2-by-2 cells: a warning when a column or row was left over.
inline LumStatus oddSizeStatus(LumSize roi) { return ((roi.width | roi.height) & 1) ? lumStatusOddSize : lumStatusOk; }

// ---------------------------------------------------------------------------
// Wide blocks: sixteen 16-bit lanes (AVX2), in bt709_avx2.cpp
// ---------------------------------------------------------------------------
// They compute the lanes of the same forms as the eight-lane blocks and the
// scalar twins; a row kernel hands them the first whole groups of its block
// part and goes on from the pixel they return. They run only where useWide()
// holds, asked once per call.
namespace wide {
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

// How far the vector code of one call goes, asked once per call.
struct Reach {
  bool vector = useVector();
  bool wide = useWide();
};

// ---------------------------------------------------------------------------
// Sources of the inverse conversions
// ---------------------------------------------------------------------------

using layout::CbYCrC2;
using layout::HalfChromaP3;

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

// 4:2:0 planes to a packed image, two rows at once: each luma row with the
// chroma row of its cell, over the even part of the region (width >> 1 by
// height >> 1 cells). Each row is the BlockThenTail of Form over width & ~7
// pixels and Tail over the rest; the wide groups that start both rows make the
// chroma products once for the pair.
template <class Form, class Tail, class Dst, Alpha A>
inline void cells420ToPacked(LumSize roi, const uint8_t* const src[3], const int srcStep[3], uint8_t* dst, int dstStep,
                             const RowCtx& c) {
  using Kernel = BlockThenTail<8, Form, Tail, HalfChromaP3, Dst, A>;
  const Reach r;
  const int w = roi.width & ~1, h = roi.height & ~1;
  for (int y = 0; y < h; y += 2) {
    SrcPlanes s[2];
    DstPlanes d[2];
    for (int k = 0; k < 2; ++k) {
      s[k].p[0] = rowAt(src[0], y + k, srcStep[0]);
      s[k].p[1] = rowAt(src[1], y >> 1, srcStep[1]);
      s[k].p[2] = rowAt(src[2], y >> 1, srcStep[2]);
      d[k] = packed(rowAt(dst, y + k, dstStep), dstStep);
    }
    int x = 0;
#if LUM_SIMD_SSE
    if (r.wide) x = wide::inverseCells<Form, Dst, A>(s[0], s[1], d[0], d[1], Kernel::leadEnd(w), c.aval);
#endif
    Kernel::rowFrom(s[0], d[0], x, w, c);
    Kernel::rowFrom(s[1], d[1], x, w, c);
  }
}

// Packed CbYCr422 to a packed image. Pairs are the BlockThenTail of Form over
// width & ~7 pixels and Tail over the rest; the lone last pixel of an odd row
// takes Cb and Y from its half pair and Cr from the pair to its left (two bytes
// before its Cb), or its own Cb when the row is one pixel wide, and is
// converted by Tail.
template <class Form, class Tail, bool Al, class Dst, Alpha A>
inline void pairs422ToPacked(LumSize roi, const uint8_t* src, int srcStep, uint8_t* dst, int dstStep, const RowCtx& c) {
  using Src = CbYCrC2<Al>;
  using Kernel = BlockThenTail<8, Form, Tail, Src, Dst, A>;
  const Reach r;
  const int w = roi.width;
  for (int y = 0; y < roi.height; ++y) {
    const SrcPlanes s = packed(rowAt(src, y, srcStep), srcStep);
    const DstPlanes d = packed(rowAt(dst, y, dstStep), dstStep);
    int x = 0;
#if LUM_SIMD_SSE
    if (r.wide) x = wide::inverse<Form, Src, Dst, A>(s, d, Kernel::leadEnd(w & ~1), c.aval);
#endif
    Kernel::rowFrom(s, d, x, w & ~1, c);
    if (w & 1) {
      const uint8_t* half = s.p[0] + 2 * (w - 1);
      Px in, out;
      in.v[0] = half[1];
      in.v[1] = half[0];
      in.v[2] = w > 1 ? half[-2] : half[0];
      in.v[3] = 0;
      Tail::pixel(in.v, out.v);
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

#if LUM_SIMD_SSE
// ---------------------------------------------------------------------------
// Vector groups, written once over a lane set O and its layout adaptors Io
// (Io128 below, Io256 in bt709_layouts_avx2.h). Each runs its form over
// pixels [x, n) in whole groups and returns the first pixel left.
// ---------------------------------------------------------------------------

// Forward cells of a row pair, 2 * O::kLanes pixels of each row a group: the
// chroma of a cell from the sums of its four pixels.
template <class O, class Io, class Block, class Src, class Sink>
inline int cellGroups(const SrcPlanes& s0, const SrcPlanes& s1, uint8_t* y0, uint8_t* y1, const DstPlanes& c, int x,
                      int n) {
  using V = typename O::V;
  for (; x + 2 * O::kLanes <= n; x += 2 * O::kLanes) {
    V a0[3], a1[3], b0[3], b1[3];
    Io::template load<Src>(s0, x, a0);
    Io::template load<Src>(s0, x + O::kLanes, a1);
    Io::template load<Src>(s1, x, b0);
    Io::template load<Src>(s1, x + O::kLanes, b1);
    Io::luma(y0 + x, Block::template vy<O>(a0), Block::template vy<O>(a1));
    Io::luma(y1 + x, Block::template vy<O>(b0), Block::template vy<O>(b1));
    V sum[3], cc[2];
    for (int k = 0; k < 3; ++k) sum[k] = Io::inOrder(O::hadd16(O::add16(a0[k], b0[k]), O::add16(a1[k], b1[k])));
    Block::template vchroma<O>(sum, cc);
    Io::template chroma<Sink>(c, x >> 1, cc);
  }
  return x;
}

// Forward 4:2:2 pairs of a row, 2 * O::kLanes pixels a group.
template <class O, class Io, class Block, class Src, bool Al>
inline int pairGroups(const SrcPlanes& s, uint8_t* d, int x, int n) {
  using V = typename O::V;
  for (; x + 2 * O::kLanes <= n; x += 2 * O::kLanes) {
    V a[3], b[3];
    Io::template load<Src>(s, x, a);
    Io::template load<Src>(s, x + O::kLanes, b);
    V sum[3], cc[2];
    for (int k = 0; k < 3; ++k) sum[k] = Io::inOrder(O::hadd16(a[k], b[k]));
    Block::template vchroma<O>(sum, cc);
    Io::template pairsOut<Al>(d + 2 * x, cc, Block::template vy<O>(a), Block::template vy<O>(b));
  }
  return x;
}

// Inverse block Form over a row, O::kLanes pixels a group.
template <class O, class Io, class Form, class Src, class Dst, Alpha A>
inline int inverseGroups(const SrcPlanes& s, const DstPlanes& d, int x, int n, int aval) {
  using V = typename O::V;
  for (; x + O::kLanes <= n; x += O::kLanes) {
    V in[3], out[3];
    Io::template load<Src>(s, x, in);
    Form::template vblock<O>(in, out);
    Io::template store<Dst, A>(d, x, out, aval);
  }
  return x;
}

// Inverse block Form over a row pair of 4:2:0 planes that share their chroma
// rows, O::kLanes pixels of each row a group: the chroma products once for both.
template <class O, class Io, class Form, class Dst, Alpha A>
inline int inverseCellGroups(const SrcPlanes& s0, const SrcPlanes& s1, const DstPlanes& d0, const DstPlanes& d1,
                             int x, int n, int aval) {
  using V = typename O::V;
  for (; x + O::kLanes <= n; x += O::kLanes) {
    V t[4], out[3];
    Form::template vterms<O>(Io::chromaTwice(s0.p[1] + (x >> 1)), Io::chromaTwice(s0.p[2] + (x >> 1)), t);
    Form::template vfinish<O>(Io::bytes(s0.p[0] + x), t, out);
    Io::template store<Dst, A>(d0, x, out, aval);
    Form::template vfinish<O>(Io::bytes(s1.p[0] + x), t, out);
    Io::template store<Dst, A>(d1, x, out, aval);
  }
  return x;
}

// Layout adaptors of the eight-lane groups: the layouts' own loads, and the
// stores that narrow lanes to bytes with unsigned saturation (clamp8).
struct Io128 {
  template <class Src>
  static void load(const SrcPlanes& s, int x, __m128i o[3]) {
    Vx v;
    Src::load(s, x, v);
    for (int k = 0; k < 3; ++k) o[k] = v.v[k];
  }
  // The lanes of hadd16(a, b) in pixel order: a register is one half.
  static __m128i inOrder(__m128i v) { return v; }
  // Two vectors of luma as sixteen bytes.
  static void luma(uint8_t* p, __m128i a, __m128i b) {
    _mm_storeu_si128(reinterpret_cast<__m128i*>(p), _mm_packus_epi16(a, b));
  }
  template <class Sink>
  static void chroma(const DstPlanes& c, int i, const __m128i* cc) {
    Sink::store8(c, i, cc);
  }
  // Eight pairs as Cb Y0 Cr Y1, 32 bytes.
  template <bool Al>
  static void pairsOut(uint8_t* d, const __m128i* cc, __m128i ya, __m128i yb) {
    const __m128i y = _mm_packus_epi16(ya, yb);
    const __m128i c = _mm_unpacklo_epi8(_mm_packus_epi16(cc[0], cc[0]), _mm_packus_epi16(cc[1], cc[1]));
    store16<Al>(d, _mm_unpacklo_epi8(c, y));
    store16<Al>(d + 16, _mm_unpackhi_epi8(c, y));
  }
};
#endif

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
                      int width, const Reach& r) {
    const int blockEnd = Ladder::end(width), cellEnd = width & ~1;
    int x = 0;
#if LUM_SIMD_SSE
    if (r.wide) x = wide::cells<Block, Src, Sink>(s0, s1, y0, y1, c, blockEnd);
    if (r.vector) x = cellGroups<lanes::Sse, Io128, Block, Src, Sink>(s0, s1, y0, y1, c, x, blockEnd);
#else
    (void)r;
#endif
    for (; x < blockEnd; x += 2) cell<Block>(s0, s1, y0, y1, c, x);
    for (; x < cellEnd; x += 2) cell<Tail>(s0, s1, y0, y1, c, x);
  }

  // The even part of the region: row pairs 2j, 2j+1 write chroma row j.
  // dst.p[0] is the luma plane, dst.p[1] (and p[2]) the chroma plane(s).
  static void image(LumSize roi, const uint8_t* src, int srcStep, const DstPlanes& dst) {
    const Reach r;
    for (int j = 0; j < roi.height >> 1; ++j) {
      DstPlanes c;
      for (int k = 1; k < 3; ++k)
        if (dst.p[k]) c.p[k - 1] = rowAt(dst.p[k], j, dst.step[k]);
      rowPair(packed(rowAt(src, 2 * j, srcStep), srcStep), packed(rowAt(src, 2 * j + 1, srcStep), srcStep),
              rowAt(dst.p[0], 2 * j, dst.step[0]), rowAt(dst.p[0], 2 * j + 1, dst.step[0]), c, roi.width, r);
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

  static void row(const SrcPlanes& s, uint8_t* d, int width, const Reach& r) {
    const int blockEnd = Ladder::end(width), pairEnd = width & ~1;
    int x = 0;
#if LUM_SIMD_SSE
    if (r.wide) x = wide::pairs<Block, Src, Al>(s, d, blockEnd);
    if (r.vector) x = pairGroups<lanes::Sse, Io128, Block, Src, Al>(s, d, x, blockEnd);
#else
    (void)r;
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
    const Reach r;
    for (int y = 0; y < roi.height; ++y)
      row(packed(rowAt(src, y, srcStep), srcStep), rowAt(dst, y, dstStep), roi.width, r);
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
