// Row windows: the rows a row kernel reads around the row it makes. A window
// names its rows by offsets from a centre row (y - k .. y + k, or whatever set
// a slice needs) or by their indices; an edge rule chosen by the caller maps
// each index to the row that is read (clamped into the plane, or left as it
// is where the caller's rows are readable beyond its origin). Rows are typed
// pointers of any sample type, addressed in pointer width.
#pragma once

#include <algorithm>
#include <array>
#include <cstddef>

#include "frame/rows.h"

namespace lum::window {

// A plane of rows of T: row y starts y * step bytes after base (y may be
// negative where the caller's rows reach above base).
template <class T>
struct Plane {
  T* base;
  int step;
  T* row(int y) const { return rowAt(base, y, step); }
};
template <class T>
Plane(T*, int) -> Plane<T>;

// Edge rules: the row index a window reads for index y.
// Every index names a readable row.
struct Inside {
  constexpr int operator()(int y) const { return y; }
};
// The nearest index within lo..hi.
struct Clamp {
  int lo, hi;
  int operator()(int y) const { return std::clamp(y, lo, hi); }
};

// Rows y + off[0], ..., y + off[N - 1] of p, each index through edge.
template <class T, std::size_t N, class Edge = Inside>
inline std::array<T*, N> around(const Plane<T>& p, int y, const std::array<int, N>& off, Edge edge = {}) {
  std::array<T*, N> r;
  for (std::size_t i = 0; i < N; ++i) r[i] = p.row(edge(y + off[i]));
  return r;
}

// Rows first, first + 1, ..., first + N - 1 of p.
template <std::size_t N, class T>
inline std::array<T*, N> from(const Plane<T>& p, int first) {
  std::array<T*, N> r;
  for (std::size_t i = 0; i < N; ++i) r[i] = p.row(first + int(i));
  return r;
}

// Rows y... of p, in the order given.
template <class T, class... I>
inline std::array<T*, sizeof...(I)> at(const Plane<T>& p, I... y) {
  return {p.row(y)...};
}

// The window driver: kernel(y, rows) for every y in [y0, y1) in order, rows the
// window around y through edge.
template <class T, std::size_t N, class Edge, class Kernel>
inline void eachRow(const Plane<T>& p, int y0, int y1, const std::array<int, N>& off, Edge edge, Kernel&& kernel) {
  for (int y = y0; y < y1; ++y) kernel(y, around(p, y, off, edge));
}

}  // namespace lum::window
