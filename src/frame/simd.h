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

}  // namespace lum
