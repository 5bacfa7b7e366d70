#include "frame/simd.h"

namespace lum {
namespace {
thread_local bool tVectorOn = true;
}
bool vectorEnabled() noexcept { return tVectorOn; }
void setVectorEnabled(bool on) noexcept { tVectorOn = on; }
}  // namespace lum
