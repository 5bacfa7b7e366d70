// 256-bit (AVX2) blocks. They are built into files of their own with their own
// compiler flags and entered only when the processor has AVX2, a test made once
// per call. They compute exactly the lanes of the 128-bit blocks and of the
// scalar twins, so the choice never shows in a result.
#pragma once

#include "frame/simd.h"

#ifndef LUM_SIMD_AVX2
#define LUM_SIMD_AVX2 0
#endif

namespace lum {

// True when the processor and the operating system run AVX2 code.
bool cpuHasAvx2() noexcept;

// Per-thread switch that keeps the 256-bit blocks off while the 128-bit ones stay
// on. Tests use it to compare the two widths; the library never sets it.
bool wideEnabled() noexcept;
void setWideEnabled(bool on) noexcept;

// RAII: runs a scope with the 256-bit blocks off (tests only).
class NarrowScope {
 public:
  NarrowScope() noexcept : prev_(wideEnabled()) { setWideEnabled(false); }
  ~NarrowScope() { setWideEnabled(prev_); }
  NarrowScope(const NarrowScope&) = delete;
  NarrowScope& operator=(const NarrowScope&) = delete;

 private:
  bool prev_;
};

// True when 256-bit blocks should run in this call.
inline bool useWide() noexcept { return LUM_SIMD_AVX2 && useVector() && wideEnabled() && cpuHasAvx2(); }

}  // namespace lum
