// Generic row kernels of the sub-sampled conversions. A cell is the group of
// pixels that share one chroma pair: 2x2 in 4:2:0 (a pair of rows), 4x1 in
// 4:1:1. A region whose width or height does not fill whole cells is converted
// on the part that does; the rest is neither read nor written.
//
// One call converts one row of chroma cells: a block loop over the first pixels
// of the row, as many as the function's ladder gives, then a tail over the rest
// of the cells. Block and tail may use different forms; which cell falls into
// which is part of each function's behaviour. The vector code only speeds up the
// block part: 32 pixels a step where the processor has AVX2, then 16, then one
// step of 8, then the block form's scalar twin on whatever block pixels remain.
#pragma once

#include <algorithm>

#include "frame/cell_layouts.h"
#include "frame/kernel.h"
#include "frame/lanes.h"
#include "frame/rows.h"

namespace lum {

// 2x2 cells: chroma planes of width / 2 by height / 2.
struct Cell420 {
  static constexpr int kW = 2, kRows = 2;
};
// 4x1 cells: chroma planes of width / 4 by height.
struct Cell411 {
  static constexpr int kW = 4, kRows = 1;
};

// Sums of one channel over cells, on a lane set O: a0, a1 and b0, b1 are two
// groups of pixels of the cell's rows (row 1 ignored for one-row cells), each
// group of whole cells within a 128-bit half. In each half: the cells of a then
// those of b (2x2), or the cells of a then b twice over (4x1). On 128 bits with
// a = pixels 0..7 and b = 8..15: 8 cells (2x2) or 4 (4x1) in order.
template <class Cell, class O, class V = typename O::V>
inline V cellSums(V a0, V a1, V b0, V b1) {
  if constexpr (Cell::kRows == 2) {
    return O::hadd16(O::add16(a0, a1), O::add16(b0, b1));
  } else {
    const V h = O::hadd16(a0, b0);
    return O::hadd16(h, h);
  }
}

// Pixels of a row that whole cells cover (width >= 0).
template <class Cell>
constexpr int cellWidth(int width) {
  return width - width % Cell::kW;
}

// Calls fn(y, cy) for each whole row of cells: y is the cell's first pixel row,
// cy its chroma row. A last pixel row that does not fill a cell is not visited.
template <class Cell, class Fn>
inline void forEachCellRow(int height, Fn&& fn) {
  const int rows = height / Cell::kRows;
  for (int cy = 0; cy < rows; ++cy) fn(cy * Cell::kRows, cy);
}

// Row pointers of one cell row of a luma-chroma image: its luma rows (the second
// equals the first for one-row cells), and its chroma rows as planes 1 and 2
// (plane 2 null for pair-interleaved chroma).
template <class T>
struct CellRowPtrs {
  T* luma[2];
  Planes<T> chroma;
};

// The cell row at pixel row y, chroma row cy, of an image held as plane 0 = luma,
// planes 1 and 2 = chroma (plane 2 null for interleaved chroma).
template <class Cell, class T>
inline CellRowPtrs<T> cellRow(const Planes<T>& img, int y, int cy) {
  CellRowPtrs<T> r;
  r.luma[0] = rowAt(img.p[0], y, img.step[0]);
  r.luma[1] = rowAt(img.p[0], y + Cell::kRows - 1, img.step[0]);
  r.chroma.p[1] = rowAt(img.p[1], cy, img.step[1]);
  r.chroma.p[2] = img.p[2] ? rowAt(img.p[2], cy, img.step[2]) : nullptr;
  return r;
}

// Status of a conversion on 2x2 cells: an odd width or height leaves the last
// column or row unconverted, which the caller hears as lumStatusOddSize.
constexpr LumStatus cellStatus420(LumSize roi) {
  return ((roi.width | roi.height) & 1) ? lumStatusOddSize : lumStatusOk;
}
// The same for 4x1 cells: a width that is not a multiple of 4.
constexpr LumStatus cellStatus411(LumSize roi) { return (roi.width & 3) ? lumStatusOddSize : lumStatusOk; }

// A forward cell form: the luma of each pixel by Luma (its out[0]), the chroma
// pair of the cell by Chroma, from the sums of R, G and B over the cell's pixels.
template <class LumaForm, class ChromaForm>
struct CellForm {
  using Luma = LumaForm;
  using Chroma = ChromaForm;
};

// ---- 256-bit blocks: 32 pixels of each row of a cell row a step. Declared
// here for the kernels below; defined, for every kernel that has a vector
// block, in the files built with AVX2 (cell_wide_avx2.h gives the steps below
// their 256-bit adaptor). run() converts steps of 32 pixels from x while they
// fit below end and returns the pixel where it stopped; the 128-bit blocks and
// the scalar twin take over from there.

template <class Cell, class BlockF, class Src, class Chroma>
struct WideForward {
  static int run(const SrcPlanes* rgb, const CellRowPtrs<uint8_t>& out, int x, int end);
};

template <class Cell, class BlockF, class Chroma, class Dst, Alpha A>
struct WideInverse {
  static int run(const CellRowPtrs<const uint8_t>& in, const DstPlanes* rgb, int x, int end, const RowCtx& c);
};

// Ladders: the number of pixels at the start of a row that the block form
// covers. UpTo<16> is a loop of 16 pixels a step, UpTo<8> the same loop plus one
// step of 8 when that many remain, UpTo<1> every pixel.
template <int N>
struct UpTo {
  static constexpr int end(int width) { return width & ~(N - 1); }
};
// Steps of 16, then one step of 4 if (width & 7) >= 4: the test looks only at the
// low three bits of the width, so a width of 44 takes the step of 4 and a width of
// 40 does not, although both leave 8 pixels after the steps of 16.
struct UpTo16Then4 {
  static constexpr int end(int width) { return (width & ~15) + ((width & 7) >= 4 ? 4 : 0); }
};
// No block loop: every cell by the tail form.
struct NoLadder {
  static constexpr int end(int) { return 0; }
};

// Chroma lanes of cells spread over the lanes of their pixels, groups a and b
// of a step: each cell lane twice (2-pixel cells) or four times (4-pixel cells),
// by the 16-bit interleaves of the width's adaptor Io.
template <class Cell, class Io, class V>
inline void spreadCells(V c, V& a, V& b) {
  if constexpr (Cell::kW == 2) {
    a = Io::zipLo16(c, c);
    b = Io::zipHi16(c, c);
  } else {
    const V t = Io::zipLo16(c, c);
    a = Io::zipLo16(t, t);
    b = Io::zipHi16(t, t);
  }
}

// The row pointers of a set of planes, read one at a time; the steps stay 0.
template <class T>
inline Planes<T> rowPointers(const Planes<T>& in) {
  Planes<T> r;
  for (int i = 0; i < 4; ++i) r.p[i] = in.p[i];
  return r;
}

// The block steps of the cell kernels, written once over a lane set O and run
// at 128 bits (lanes::Sse) and, in the *_avx2.cpp files, at 256 bits. A step
// covers 2 * O::kLanes pixels of each row of the cell row from x, as two groups
// a (at x) and b (at x + 8) of eight pixels per 128-bit half; Io is the layout
// adaptor of the width:
//   load(row, x, v)          a group of RGB pixels as channel lanes,
//   store<WriteAlpha>(row, x, v)  a group of channel lanes as RGB pixels,
//   storeLuma(p, ya, yb)     the lumas of a and b as bytes in pixel order,
//   lumaLanes(p, a, b)       the step's luma bytes as the lanes of a and b,
//   putChroma / getChroma    the chroma of the step's cells, in the lane order
//                            cellSums leaves them,
//   zipLo16 / zipHi16        the 16-bit interleaves of each 128-bit half.
// Each returns the pixel where its steps stop.
template <class O, class Cell, class BlockF, class Io>
inline int cellForwardSteps(const SrcPlanes* rgb, const CellRowPtrs<uint8_t>& out, int x, int end) {
  using V = typename O::V;
  constexpr int kStep = 2 * O::kLanes;
  if (x + kStep > end) return x;
  // Local copies: the byte stores could otherwise alias the row pointers, which
  // the compiler would then load again at every store. Only the pointers are
  // copied, one by one: the caller has just written them 8 bytes at a time, and
  // wider reads of them would wait for those stores to reach the cache.
  const SrcPlanes src[2] = {rowPointers(rgb[0]), rowPointers(rgb[Cell::kRows - 1])};
  uint8_t* const luma[2] = {out.luma[0], out.luma[1]};
  const DstPlanes chroma = out.chroma;
  for (; x + kStep <= end; x += kStep) {
    V a[2][4], b[2][4];
    for (int r = 0; r < Cell::kRows; ++r) {
      V ya[3], yb[3];
      Io::load(src[r], x, a[r]);
      Io::load(src[r], x + 8, b[r]);
      BlockF::Luma::template vblock<O>(a[r], ya);
      BlockF::Luma::template vblock<O>(b[r], yb);
      Io::storeLuma(luma[r] + x, ya[0], yb[0]);
    }
    constexpr int r1 = Cell::kRows - 1;
    V s[3], c[2];
    for (int k = 0; k < 3; ++k) s[k] = cellSums<Cell, O>(a[0][k], a[r1][k], b[0][k], b[r1][k]);
    BlockF::Chroma::template vblock<O>(s, c);
    Io::putChroma(chroma, x / Cell::kW, c[0], c[1]);
  }
  return x;
}

// Every stored output narrows with unsigned saturation, which is clamp8, so the
// vblock lanes (clamp8 left to the store) give the bytes of the scalar rule.
template <class O, class Cell, class BlockF, Alpha A, class Io>
inline int cellInverseSteps(const CellRowPtrs<const uint8_t>& in, const DstPlanes* rgb, int x, int end,
                            const RowCtx& ctx) {
  static_assert(A != Alpha::Source, "the cells have no source alpha");
  using V = typename O::V;
  constexpr int kStep = 2 * O::kLanes;
  const uint8_t* const luma[2] = {in.luma[0], in.luma[1]};
  const SrcPlanes chroma = in.chroma;
  const DstPlanes dst[2] = {rgb[0], rgb[Cell::kRows - 1]};
  const V alpha = A == Alpha::Aval ? O::set(ctx.aval) : O::zero();
  for (; x + kStep <= end; x += kStep) {
    V c0, c1, a[4], b[4], out[4];
    Io::getChroma(chroma, x / Cell::kW, c0, c1);
    spreadCells<Cell, Io>(c0, a[1], b[1]);
    spreadCells<Cell, Io>(c1, a[2], b[2]);
    a[3] = b[3] = O::zero();
    for (int r = 0; r < Cell::kRows; ++r) {
      Io::lumaLanes(luma[r] + x, a[0], b[0]);
      BlockF::template vblock<O>(a, out);
      out[3] = alpha;
      Io::template store<A != Alpha::Keep>(dst[r], x, out);
      BlockF::template vblock<O>(b, out);
      out[3] = alpha;
      Io::template store<A != Alpha::Keep>(dst[r], x + 8, out);
    }
  }
  return x;
}

#if LUM_SIMD_SSE
namespace detail {
// Eight pixels of the RGB layout L as the 128-bit lanes of its channels (v[3]
// alpha), loaded and stored through L's own eight-pixel moves.
template <class L>
struct PixelLanes128 {
  static void load(const SrcPlanes& row, int x, __m128i* v) {
    layout::Vx t;
    L::load(row, x, t);
    for (int k = 0; k < 4; ++k) v[k] = t.v[k];
  }
  template <bool WriteAlpha>
  static void store(const DstPlanes& row, int x, const __m128i* v) {
    layout::Vx t;
    for (int k = 0; k < 4; ++k) t.v[k] = v[k];
    L::template store<WriteAlpha>(row, x, t);
  }
};

// The 128-bit adaptor of the cell steps: groups a and b are pixels 0..7 and
// 8..15 of a step; Pixels is the RGB layout, Chroma the chroma side, AlignedLuma
// the promise that every luma row is 16-byte aligned.
template <class Cell, class Pixels, class Chroma, bool AlignedLuma>
struct CellIo128 : PixelLanes128<Pixels> {
  using V = __m128i;
  static void storeLuma(uint8_t* p, V ya, V yb) { pairs::bytes::store<16, AlignedLuma>(p, _mm_packus_epi16(ya, yb)); }
  static void lumaLanes(const uint8_t* p, V& a, V& b) {
    const V y = pairs::bytes::load<16, AlignedLuma>(p);
    a = _mm_cvtepu8_epi16(y);
    b = _mm_cvtepu8_epi16(_mm_srli_si128(y, 8));
  }
  static void putChroma(const DstPlanes& d, int j, V c0, V c1) {
    Chroma::template putLanes<16 / Cell::kW>(d, j, c0, c1);
  }
  static void getChroma(const SrcPlanes& s, int j, V& c0, V& c1) {
    Chroma::template getLanes<16 / Cell::kW>(s, j, c0, c1);
  }
  static V zipLo16(V a, V b) { return _mm_unpacklo_epi16(a, b); }
  static V zipHi16(V a, V b) { return _mm_unpackhi_epi16(a, b); }
};
}  // namespace detail
#endif

// RGB (any pixel layout Src) to luma plus sub-sampled chroma (Chroma layout).
// BlockF and TailF are CellForms; AlignedLuma is the aligned twin's promise that
// every pointer and step is a multiple of 16 (same samples, aligned stores).
template <class Cell, class Ladder, class BlockF, class TailF, class Src, class Chroma, bool AlignedLuma = false>
struct CellsForward {
  // One cell row: width is a whole number of cells; wide asks for the 256-bit blocks.
  static void row(const SrcPlanes* rgb, const CellRowPtrs<uint8_t>& out, int width, [[maybe_unused]] bool wide) {
    const int blockEnd = std::min(Ladder::end(width), width);
    int x = 0;
    if constexpr (!std::is_same_v<BlockF, NoBlock>) {
#if LUM_SIMD_SSE
      if (useVector()) {
#if LUM_SIMD_AVX2
        if (wide) x = WideForward<Cell, BlockF, Src, Chroma>::run(rgb, out, x, blockEnd);
#endif
        x = cellForwardSteps<lanes::Sse, Cell, BlockF, Io>(rgb, out, x, blockEnd);
        if (x + 8 <= blockEnd) {
          step8(rgb, out, x);
          x += 8;
        }
      }
#endif
      cells<BlockF>(rgb, out, x, blockEnd);
    }
    cells<TailF>(rgb, out, blockEnd, width);
  }

  // Whole region: the cells that fit; a last odd column or row stays untouched.
  static void image(LumSize roi, const SrcPlanes& src, const DstPlanes& dst) {
    const int w = cellWidth<Cell>(roi.width);
    const bool wide = useWide();
    forEachCellRow<Cell>(roi.height, [&](int y, int cy) {
      const SrcPlanes rgb[2] = {src.row(y), src.row(y + Cell::kRows - 1)};
      row(rgb, cellRow<Cell>(dst, y, cy), w, wide);
    });
  }

 private:
  // Cells [x0, x1) by form F, pixel by pixel: the scalar rule.
  template <class F>
  static void cells(const SrcPlanes* rgb, const CellRowPtrs<uint8_t>& out, int x0, int x1) {
    for (int x = x0; x < x1; x += Cell::kW) {
      int s[3] = {0, 0, 0};
      for (int r = 0; r < Cell::kRows; ++r)
        for (int i = 0; i < Cell::kW; ++i) {
          layout::Px px;
          Src::load(rgb[r], x + i, px);
          int y[3];
          F::Luma::pixel(px.v, y);
          out.luma[r][x + i] = uint8_t(y[0]);
          for (int k = 0; k < 3; ++k) s[k] += px.v[k];
        }
      int c[2];
      F::Chroma::pixel(s, c);
      Chroma::put(out.chroma, x / Cell::kW, c[0], c[1]);
    }
  }

#if LUM_SIMD_SSE
  using Io = detail::CellIo128<Cell, Src, Chroma, AlignedLuma>;
  // Eight pixels of each row of the cells by the block form's vectors.
  static void step8(const SrcPlanes* rgb, const CellRowPtrs<uint8_t>& out, int x) {
    __m128i a[2][4];
    for (int r = 0; r < Cell::kRows; ++r) {
      __m128i y[3];
      Io::load(rgb[r], x, a[r]);
      BlockF::Luma::template vblock<lanes::Sse>(a[r], y);
      pairs::bytes::store<8>(out.luma[r] + x, _mm_packus_epi16(y[0], y[0]));
    }
    constexpr int r1 = Cell::kRows - 1;
    __m128i s[3], c[2];
    for (int k = 0; k < 3; ++k) s[k] = cellSums<Cell, lanes::Sse>(a[0][k], a[r1][k], a[0][k], a[r1][k]);
    BlockF::Chroma::template vblock<lanes::Sse>(s, c);
    Chroma::template putLanes<8 / Cell::kW>(out.chroma, x / Cell::kW, c[0], c[1]);
  }
#endif
};

// Luma plus sub-sampled chroma (Chroma layout) to RGB (any pixel layout Dst):
// every pixel of a cell takes the cell's chroma pair unchanged. BlockF and TailF
// are per-pixel forms on (Y, first chroma, second chroma); BlockAlpha and
// TailAlpha say what each writes as alpha.
template <class Cell, class Ladder, class BlockF, class TailF, class Chroma, class Dst, Alpha BlockAlpha = Alpha::Keep,
          Alpha TailAlpha = BlockAlpha, bool AlignedLuma = false>
struct CellsInverse {
  static void row(const CellRowPtrs<const uint8_t>& in, const DstPlanes* rgb, int width, const RowCtx& c, [[maybe_unused]] bool wide) {
    const int blockEnd = std::min(Ladder::end(width), width);
    int x = 0;
    if constexpr (!std::is_same_v<BlockF, NoBlock>) {
#if LUM_SIMD_SSE
      if (useVector()) {
#if LUM_SIMD_AVX2
        if (wide) x = WideInverse<Cell, BlockF, Chroma, Dst, BlockAlpha>::run(in, rgb, x, blockEnd, c);
#endif
        x = cellInverseSteps<lanes::Sse, Cell, BlockF, BlockAlpha, Io>(in, rgb, x, blockEnd, c);
        if (x + 8 <= blockEnd) {
          step8(in, rgb, x, c);
          x += 8;
        }
      }
#endif
      cells<BlockF, BlockAlpha>(in, rgb, x, blockEnd, c);
    }
    if constexpr (!std::is_same_v<TailF, NoBlock>) cells<TailF, TailAlpha>(in, rgb, blockEnd, width, c);
  }

  static void image(LumSize roi, const SrcPlanes& src, const DstPlanes& dst, const RowCtx& c = {}) {
    const int w = cellWidth<Cell>(roi.width);
    const bool wide = useWide();
    forEachCellRow<Cell>(roi.height, [&](int y, int cy) {
      const DstPlanes rgb[2] = {dst.row(y), dst.row(y + Cell::kRows - 1)};
      row(cellRow<Cell>(src, y, cy), rgb, w, c, wide);
    });
  }

 private:
  template <class F, Alpha A>
  static void cells(const CellRowPtrs<const uint8_t>& in, const DstPlanes* rgb, int x0, int x1, const RowCtx& c) {
    for (int x = x0; x < x1; x += Cell::kW) {
      layout::Px px, out;
      Chroma::get(in.chroma, x / Cell::kW, px.v[1], px.v[2]);
      px.v[3] = 0;
      for (int r = 0; r < Cell::kRows; ++r)
        for (int i = 0; i < Cell::kW; ++i) {
          px.v[0] = in.luma[r][x + i];
          F::pixel(px.v, out.v);
          detail::setAlpha<A>(out, px, c);
          Dst::template store<A != Alpha::Keep>(rgb[r], x + i, out);
        }
    }
  }

#if LUM_SIMD_SSE
  using Io = detail::CellIo128<Cell, Dst, Chroma, AlignedLuma>;
  // Eight pixels of each row of the cells by the block form's vectors.
  static void step8(const CellRowPtrs<const uint8_t>& in, const DstPlanes* rgb, int x, const RowCtx& c) {
    __m128i c0, c1, a[4], b[4], out[4];
    Chroma::template getLanes<8 / Cell::kW>(in.chroma, x / Cell::kW, c0, c1);
    spreadCells<Cell, Io>(c0, a[1], b[1]);
    spreadCells<Cell, Io>(c1, a[2], b[2]);
    a[3] = lanes::Sse::zero();
    const __m128i alpha = BlockAlpha == Alpha::Aval ? lanes::Sse::set(c.aval) : lanes::Sse::zero();
    for (int r = 0; r < Cell::kRows; ++r) {
      a[0] = _mm_cvtepu8_epi16(pairs::bytes::load<8>(in.luma[r] + x));
      BlockF::template vblock<lanes::Sse>(a, out);
      out[3] = alpha;
      Io::template store<BlockAlpha != Alpha::Keep>(rgb[r], x, out);
    }
  }
#endif
};

}  // namespace lum
