// The Bayer vocabulary shared by the demosaic methods: grid codes and their
// shifts, the colour of each site, and reads of a one-sample-a-pixel mosaic
// through an edge rule.
#pragma once

#include <cstddef>
#include <cstdint>

#include "frame/rows.h"
#include "lumcc.h"

namespace lum::bayer {

// Colour indices; a destination pixel holds them as R, G, B.
enum Colour : int { kRed = 0, kGreen = 1, kBlue = 2 };

// True for a grid code of LumCfaGrid.
constexpr bool validGrid(int grid) { return grid >= 0 && grid <= 3; }

// The grid of the 2x2 cell that starts at (x, y) of an image whose first cell
// is grid: an odd column swaps the columns (g ^ 2), an odd row the rows (g ^ 3).
constexpr int gridAt(int grid, std::ptrdiff_t x, std::ptrdiff_t y) {
  return grid ^ (int(x & 1) << 1) ^ (int(y & 1) * 3);
}

// The colour at the first pixel of a cell of grid g (BGGR, RGGB, GBRG, GRBG).
constexpr int firstColour(int g) { return g == 0 ? kBlue : (g == 1 ? kRed : kGreen); }

// The colour at (x, y).
constexpr int colourAt(int grid, std::ptrdiff_t x, std::ptrdiff_t y) { return firstColour(gridAt(grid, x, y)); }

// Red for blue and blue for red.
constexpr int otherColour(int c) { return kBlue - c; }

// A site: its colour, the colour of its left and right neighbours and that of
// its upper and lower neighbours (green at a red or blue site).
struct Site {
  int own, horiz, vert;
  constexpr bool green() const { return own == kGreen; }
  // At a red or blue site, the colour on its diagonals.
  constexpr int diag() const { return otherColour(own); }
};
constexpr Site siteAt(int grid, std::ptrdiff_t x, std::ptrdiff_t y) {
  return {colourAt(grid, x, y), colourAt(grid, x + 1, y), colourAt(grid, x, y + 1)};
}

// A mosaic of samples T: w by h pixels from base, rows step bytes apart.
template <class T>
struct Mosaic {
  const T* base;
  std::ptrdiff_t step;
  std::ptrdiff_t w, h;
  const T* row(std::ptrdiff_t y) const {
    return reinterpret_cast<const T*>(reinterpret_cast<const uint8_t*>(base) + y * step);
  }
  int at(std::ptrdiff_t x, std::ptrdiff_t y) const { return loadAt(row(y) + x); }
  bool has(std::ptrdiff_t x, std::ptrdiff_t y) const { return x >= 0 && y >= 0 && x < w && y < h; }
};

// Row y of an image of T at base, in pointer width.
template <class T>
inline T* rowOf(T* base, std::ptrdiff_t y, std::ptrdiff_t step) {
  using Byte = std::conditional_t<std::is_const_v<T>, const uint8_t, uint8_t>;
  return reinterpret_cast<T*>(reinterpret_cast<Byte*>(base) + y * step);
}

// The largest value of a sample of T.
template <class T>
constexpr int kMaxOf = T(~T(0));

// v clamped to 0..max.
constexpr int saturate(int v, int max) { return v < 0 ? 0 : (v > max ? max : v); }

// Rounded means of two and of four samples.
constexpr int mean2(int a, int b) { return (a + b + 1) >> 1; }
constexpr int mean4(int a, int b, int c, int d) { return (a + b + c + d + 2) >> 2; }

}  // namespace lum::bayer
