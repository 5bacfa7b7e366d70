#include "frame/fp_control.h"

#include <cfenv>

#include "frame/simd.h"

namespace lum {

#if LUM_SIMD_SSE
uint32_t lum_set_rc_ssx(uint32_t mode) noexcept {
  const uint32_t prev = _mm_getcsr();
  _mm_setcsr((prev & ~kRoundingMask) | ((mode << 13) & kRoundingMask));
  return prev;
}
void lum_set_cw_ssx(uint32_t word) noexcept { _mm_setcsr(word); }
#else
// Portable build: the same word layout, mapped onto the C rounding modes.
namespace {
int modeToFe(uint32_t bits) {
  switch (bits & 3) {
    case 1: return FE_DOWNWARD;
    case 2: return FE_UPWARD;
    case 3: return FE_TOWARDZERO;
    default: return FE_TONEAREST;
  }
}
uint32_t feToMode(int fe) {
  switch (fe) {
    case FE_DOWNWARD: return 1;
    case FE_UPWARD: return 2;
    case FE_TOWARDZERO: return 3;
    default: return 0;
  }
}
}  // namespace
uint32_t lum_set_rc_ssx(uint32_t mode) noexcept {
  const uint32_t prev = feToMode(std::fegetround()) << 13;
  std::fesetround(modeToFe(mode));
  return prev;
}
void lum_set_cw_ssx(uint32_t word) noexcept { std::fesetround(modeToFe(word >> 13)); }
#endif

}  // namespace lum
