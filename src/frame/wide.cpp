#include "frame/wide.h"

namespace lum {
namespace {
thread_local bool tWideOn = true;
}
bool wideEnabled() noexcept { return tWideOn; }
void setWideEnabled(bool on) noexcept { tWideOn = on; }

bool cpuHasAvx2() noexcept {
#if LUM_SIMD_AVX2 && (defined(__x86_64__) || defined(__i386__))
  // The compiler's probe also asks the operating system whether it saves the
  // 256-bit registers.
  static const bool has = __builtin_cpu_supports("avx2");
  return has;
#else
  return false;
#endif
}
}  // namespace lum
