// The caller's floating-point control state as a test sees it: the rounding mode,
// the vector unit's control word without its sticky flags, and the x87 control
// word; and a scope that runs code under a given mode, with flush-to-zero and
// denormals-are-zero where asked.
#pragma once

#include <cfenv>

#if defined(__x86_64__)
#include <xmmintrin.h>
#endif

namespace lumtest {

struct ControlWords {
  unsigned sse = 0, x87 = 0;
  int round = 0;
  bool operator==(const ControlWords&) const = default;
};

inline ControlWords controlWords() {
  ControlWords c;
  c.round = std::fegetround();
#if defined(__x86_64__)
  c.sse = _mm_getcsr() & ~0x3Fu;
  unsigned short cw;
  __asm__ volatile("fnstcw %0" : "=m"(cw));
  c.x87 = cw;
#endif
  return c;
}

// Sets a rounding mode (and FTZ/DAZ) for its lifetime; restores nearest after.
class FpModeScope {
 public:
  FpModeScope(int mode, bool ftz) {
#if defined(__x86_64__)
    saved_ = _mm_getcsr();
#endif
    std::fesetround(mode);
#if defined(__x86_64__)
    if (ftz) _mm_setcsr(_mm_getcsr() | 0x8040);
#else
    (void)ftz;
#endif
  }
  ~FpModeScope() {
#if defined(__x86_64__)
    _mm_setcsr(saved_);
#endif
    std::fesetround(FE_TONEAREST);
  }
  FpModeScope(const FpModeScope&) = delete;
  FpModeScope& operator=(const FpModeScope&) = delete;

 private:
  unsigned saved_ = 0;
};

inline constexpr int kRoundingModes[] = {FE_TONEAREST, FE_UPWARD, FE_DOWNWARD, FE_TOWARDZERO};

}  // namespace lumtest
