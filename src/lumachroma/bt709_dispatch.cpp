// Whether the wide (AVX2) blocks of the BT.709 conversions may run. This file is
// built for the baseline processor, so the test runs anywhere.
#include "lumachroma/bt709_kernels.h"

namespace lum::bt709::wide {
namespace {
thread_local bool tWideOn = true;

bool processorHasAvx2() noexcept {
#if LUM_SIMD_SSE && defined(__GNUC__)
  static const bool has = __builtin_cpu_supports("avx2");
  return has;
#else
  return false;
#endif
}
}  // namespace

bool enabled() noexcept { return useVector() && tWideOn && processorHasAvx2(); }
void setEnabled(bool on) noexcept { tWideOn = on; }

}  // namespace lum::bt709::wide
