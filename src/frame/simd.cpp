#include "frame/simd.h"

namespace lum {
namespace {
thread_local bool tVectorOn = true;
thread_local bool tWideOn = true;
}  // namespace
bool vectorEnabled() noexcept { return tVectorOn; }
void setVectorEnabled(bool on) noexcept { tVectorOn = on; }
bool wideEnabled() noexcept { return tWideOn; }
void setWideEnabled(bool on) noexcept { tWideOn = on; }

bool processorHasAvx2() noexcept {
#if LUM_SIMD_SSE && defined(__GNUC__)
  // The answer includes the system's support of the 256-bit register state.
  // The explicit init makes it right even when asked from a static constructor.
  static const bool has = (__builtin_cpu_init(), __builtin_cpu_supports("avx2") != 0);
  return has;
#else
  return false;
#endif
}
}  // namespace lum
