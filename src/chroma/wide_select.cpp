// Whether the 256-bit layout blocks may run: asked of the processor once per
// process, and switchable per thread so that tests can compare them with the
// 128-bit blocks.
#include "chroma/wide_blocks.h"

namespace lum::chroma::wide {
namespace {
thread_local bool tOn = true;

bool processorHasAvx2() noexcept {
#if LUM_SIMD_SSE && defined(__GNUC__)
  static const bool has = __builtin_cpu_supports("avx2");
  return has;
#else
  return false;
#endif
}
}  // namespace

bool enabled() noexcept { return tOn && processorHasAvx2(); }
void setEnabled(bool on) noexcept { tOn = on; }
bool NarrowScope::enabledOnThread() noexcept { return tOn; }

}  // namespace lum::chroma::wide
