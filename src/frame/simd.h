// Vector-unit selection. LUM_SIMD_SSE is set by the build: 1 compiles the SSE4.2
// blocks, 0 gives the portable library in which every block runs its scalar twin.
#pragma once

#ifndef LUM_SIMD_SSE
#define LUM_SIMD_SSE 0
#endif

#if LUM_SIMD_SSE
#include <immintrin.h>
#endif

namespace lum {

// Per-thread switch that sends every kernel down its scalar twin. Tests use it to
// compare the vector and scalar paths; the library itself never sets it.
bool vectorEnabled() noexcept;
void setVectorEnabled(bool on) noexcept;

// RAII: runs a scope with the vector blocks off (tests only).
class ScalarScope {
 public:
  ScalarScope() noexcept : prev_(vectorEnabled()) { setVectorEnabled(false); }
  ~ScalarScope() { setVectorEnabled(prev_); }
  ScalarScope(const ScalarScope&) = delete;
  ScalarScope& operator=(const ScalarScope&) = delete;

 private:
  bool prev_;
};

// True when vector blocks should run in this call.
inline bool useVector() noexcept { return LUM_SIMD_SSE && vectorEnabled(); }

// Per-thread switch of the sixteen-lane (AVX2) blocks alone: off, the vector
// code stays on the eight-lane blocks. Tests use it to compare the two widths.
bool wideEnabled() noexcept;
void setWideEnabled(bool on) noexcept;
// True when the processor runs AVX2 (asked once, in a file built for the baseline).
bool processorHasAvx2() noexcept;

// RAII: runs a scope on the eight-lane blocks (tests only).
class NarrowScope {
 public:
  NarrowScope() noexcept : prev_(wideEnabled()) { setWideEnabled(false); }
  ~NarrowScope() { setWideEnabled(prev_); }
  NarrowScope(const NarrowScope&) = delete;
  NarrowScope& operator=(const NarrowScope&) = delete;

 private:
  bool prev_;
};

// True when the sixteen-lane blocks may run in this call: vector code on, the
// wide switch on and a processor with AVX2. Asked once per call.
inline bool useWide() noexcept { return useVector() && wideEnabled() && processorHasAvx2(); }

}  // namespace lum
