// Row addressing and the generic row drivers.
#pragma once

#include <cstddef>
#include <cstdint>
#include <cstring>
#include <type_traits>

#include "lumcc.h"

namespace lum {

// Pointer to row y of an image: base + y * step in the pointer's own width, so no
// step sign or size is excluded (the 32-bit product cannot overflow here).
template <class T>
inline T* rowAt(T* base, int y, int step) {
  using Byte = std::conditional_t<std::is_const_v<T>, const uint8_t, uint8_t>;
  return reinterpret_cast<T*>(reinterpret_cast<Byte*>(base) + std::ptrdiff_t(y) * step);
}

// One sample read or written at any address: a sample type's pointer need not
// be aligned to the sample's size.
template <class T>
inline T loadAt(const T* p) {
  T v;
  std::memcpy(&v, p, sizeof(T));
  return v;
}
template <class T>
inline void storeAt(T* p, T v) {
  std::memcpy(p, &v, sizeof(T));
}

// Row pointers of up to four planes, one step each; what a row kernel receives.
template <class T>
struct Planes {
  T* p[4] = {nullptr, nullptr, nullptr, nullptr};
  int step[4] = {0, 0, 0, 0};

  // The row y of every plane.
  Planes row(int y) const {
    Planes r = *this;
    for (int i = 0; i < 4; ++i)
      if (p[i]) r.p[i] = rowAt(p[i], y, step[i]);
    return r;
  }
};
using SrcPlanes = Planes<const uint8_t>;
using DstPlanes = Planes<uint8_t>;

// One interleaved image.
template <class T>
inline Planes<T> packed(T* p, int step) {
  Planes<T> r;
  r.p[0] = p;
  r.step[0] = step;
  return r;
}
// n planes with one shared step.
template <class T>
inline Planes<T> planar(T* const* p, int n, int step) {
  Planes<T> r;
  for (int i = 0; i < n; ++i) {
    r.p[i] = p[i];
    r.step[i] = step;
  }
  return r;
}
// n planes with a step each.
template <class T>
inline Planes<T> planar(T* const* p, int n, const int* steps) {
  Planes<T> r;
  for (int i = 0; i < n; ++i) {
    r.p[i] = p[i];
    r.step[i] = steps[i];
  }
  return r;
}

// Calls kernel(srcRow, dstRow, width) for each row of the region.
template <class S, class D, class Kernel>
inline void forEachRow(LumSize roi, const Planes<S>& src, const Planes<D>& dst, Kernel&& kernel) {
  for (int y = 0; y < roi.height; ++y) kernel(src.row(y), dst.row(y), roi.width);
}

// True when the address is a multiple of 16.
inline bool aligned16(const void* p) { return (reinterpret_cast<uintptr_t>(p) & 15) == 0; }
// True when every pointer in use and every step of both images is a multiple of 16.
template <class S, class D>
inline bool allAligned16(const Planes<S>& s, const Planes<D>& d) {
  for (int i = 0; i < 4; ++i) {
    if (s.p[i] && (!aligned16(s.p[i]) || (s.step[i] & 15))) return false;
    if (d.p[i] && (!aligned16(d.p[i]) || (d.step[i] & 15))) return false;
  }
  return true;
}

}  // namespace lum
