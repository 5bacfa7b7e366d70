// Generic row kernels of the sub-sampled conversions. One call converts one row
// of chroma cells (a pair of pixel rows for 4:2:0, one row for 4:1:1): a block
// loop over the first pixels of the row, as many as the function's ladder gives,
// then a tail over the rest of the cells. Block and tail may use different forms;
// which cell falls into which is part of each function's behaviour. The vector
// code only speeds up the block part: 32 pixels a step where the processor has
// AVX2, then 16, then one step of 8, then the block form's scalar twin on
// whatever block pixels remain.
#pragma once

#include <algorithm>

#include "frame/cell_layouts.h"
#include "frame/cell_wide.h"
#include "frame/kernel.h"
#include "frame/row_pairs.h"

namespace lum {

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

#if LUM_SIMD_SSE
namespace detail {
// Chroma lanes of cells spread over the lanes of their pixels: lo for pixels 0..7,
// hi for pixels 8..15 of the cells in c.
template <class Cell>
inline void spreadCells(__m128i c, __m128i& lo, __m128i& hi) {
  if constexpr (Cell::kW == 2) {
    lo = _mm_unpacklo_epi16(c, c);
    hi = _mm_unpackhi_epi16(c, c);
  } else {
    const __m128i t = _mm_unpacklo_epi16(c, c);
    lo = _mm_unpacklo_epi16(t, t);
    hi = _mm_unpackhi_epi16(t, t);
  }
}
// Eight lanes of form F for a store that narrows with unsigned saturation: the
// form's vblock, which leaves clamp8 to that store.
template <class F>
inline void storedBlock(const __m128i* in, __m128i* out) {
  F::template vblock<lanes::Sse>(in, out);
}
template <bool Aligned>
inline __m128i loadLuma16(const uint8_t* p) {
  if constexpr (Aligned) return _mm_load_si128(reinterpret_cast<const __m128i*>(p));
  return _mm_loadu_si128(reinterpret_cast<const __m128i*>(p));
}
template <bool Aligned>
inline void storeLuma16(uint8_t* p, __m128i v) {
  if constexpr (Aligned) _mm_store_si128(reinterpret_cast<__m128i*>(p), v);
  else _mm_storeu_si128(reinterpret_cast<__m128i*>(p), v);
}
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
        for (; x + 16 <= blockEnd; x += 16) vectorStep<16>(rgb, out, x);
        if (x + 8 <= blockEnd) {
          vectorStep<8>(rgb, out, x);
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
      Chroma::store(out.chroma, x / Cell::kW, c[0], c[1]);
    }
  }

#if LUM_SIMD_SSE
  // Px = 16 or 8 pixels of each row of the cells, by the block form's vectors.
  template <int Px>
  static void vectorStep(const SrcPlanes* rgb, const CellRowPtrs<uint8_t>& out, int x) {
    layout::Vx lo[2], hi[2];
    for (int r = 0; r < Cell::kRows; ++r) {
      __m128i y0[3], y1[3];
      Src::load(rgb[r], x, lo[r]);
      detail::storedBlock<typename BlockF::Luma>(lo[r].v, y0);
      if constexpr (Px == 16) {
        Src::load(rgb[r], x + 8, hi[r]);
        detail::storedBlock<typename BlockF::Luma>(hi[r].v, y1);
        detail::storeLuma16<AlignedLuma>(out.luma[r] + x, _mm_packus_epi16(y0[0], y1[0]));
      } else {
        hi[r] = lo[r];
        layout::detail::storeBytes<8>(out.luma[r] + x, _mm_packus_epi16(y0[0], y0[0]));
      }
    }
    if constexpr (Cell::kRows == 1) {
      lo[1] = lo[0];
      hi[1] = hi[0];
    }
    __m128i s[3], c[2];
    for (int k = 0; k < 3; ++k) s[k] = cellSums<Cell, lanes::Sse>(lo[0].v[k], lo[1].v[k], hi[0].v[k], hi[1].v[k]);
    detail::storedBlock<typename BlockF::Chroma>(s, c);
    Chroma::template store<Px / Cell::kW>(out.chroma, x / Cell::kW, c[0], c[1]);
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
        for (; x + 16 <= blockEnd; x += 16) vectorStep<16>(in, rgb, x, c);
        if (x + 8 <= blockEnd) {
          vectorStep<8>(in, rgb, x, c);
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
      Chroma::load(in.chroma, x / Cell::kW, px.v[1], px.v[2]);
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
  template <int Px>
  static void vectorStep(const CellRowPtrs<const uint8_t>& in, const DstPlanes* rgb, int x, const RowCtx& c) {
    __m128i c0, c1;
    Chroma::template load<Px / Cell::kW>(in.chroma, x / Cell::kW, c0, c1);
    layout::Vx pin[2], out;
    detail::spreadCells<Cell>(c0, pin[0].v[1], pin[1].v[1]);
    detail::spreadCells<Cell>(c1, pin[0].v[2], pin[1].v[2]);
    pin[0].v[3] = pin[1].v[3] = _mm_setzero_si128();
    for (int r = 0; r < Cell::kRows; ++r) {
      if constexpr (Px == 16) {
        const __m128i y = detail::loadLuma16<AlignedLuma>(in.luma[r] + x);
        pin[0].v[0] = _mm_cvtepu8_epi16(y);
        pin[1].v[0] = _mm_cvtepu8_epi16(_mm_srli_si128(y, 8));
      } else {
        pin[0].v[0] = _mm_cvtepu8_epi16(layout::detail::loadBytes<8>(in.luma[r] + x));
      }
      for (int h = 0; h < Px / 8; ++h) {
        detail::storedBlock<BlockF>(pin[h].v, out.v);
        detail::setAlpha<BlockAlpha>(out, pin[h], c);
        Dst::template store<BlockAlpha != Alpha::Keep>(rgb[r], x + 8 * h, out);
      }
    }
  }
#endif
};

}  // namespace lum
