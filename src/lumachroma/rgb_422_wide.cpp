// Whether the 256-bit blocks of the 4:2:2 kernels may run. Built with the
// library's baseline flags: the processor is asked once per process.
#include "frame/simd.h"
#include "lumachroma/rgb_422_avx2.h"

namespace lum::wide {
namespace {
thread_local bool tOn = true;

bool processorHasAvx2() {
#if LUM_SIMD_SSE && (defined(__x86_64__) || defined(__i386__))
  static const bool has = [] {
    __builtin_cpu_init();
    return __builtin_cpu_supports("avx2") != 0;
  }();
  return has;
#else
  return false;
#endif
}
}  // namespace

bool enabled() noexcept { return tOn && processorHasAvx2(); }
void setEnabled(bool on) noexcept { tOn = on; }

}  // namespace lum::wide
