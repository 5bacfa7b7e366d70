// Chroma cells of sub-sampled images and the row driver that walks them. A cell
// is the group of pixels that share one chroma pair: 2x2 in 4:2:0 (a pair of
// rows), 4x1 in 4:1:1. A region whose width or height does not fill whole cells
// is converted on the part that does; the rest is neither read nor written.
#pragma once

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

// The 4:2:0 case: one call per pair of rows.
template <class Fn>
inline void forEachRowPair(int height, Fn&& fn) {
  forEachCellRow<Cell420>(height, fn);
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

}  // namespace lum
