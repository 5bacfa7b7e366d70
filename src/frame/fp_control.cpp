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

// ---- added for the power kernel
#if defined(__x86_64__) || defined(__i386__)
// Exception masks of the vector control word (0x1F80), its flags (0x3F), flush
// to zero (0x8000) and denormals-are-zero (0x40).
FpState fpEnterExact() noexcept {
  FpState s;
  __asm__ volatile("stmxcsr %0" : "=m"(s.mxcsr));
  __asm__ volatile("fnstcw %0" : "=m"(s.x87));
  if ((s.x87 & 0x3F) != 0x3F) {
    const uint16_t masked = uint16_t(s.x87 | 0x3F);
    __asm__ volatile("fnclex\n\tfldcw %0" : : "m"(masked));
  }
  const uint32_t exact = (s.mxcsr & ~(kRoundingMask | 0x8000u | 0x40u)) | 0x1F80u;
  if (exact != s.mxcsr) __asm__ volatile("ldmxcsr %0" : : "m"(exact));
  return s;
}
void fpRestore(const FpState& s) noexcept {
  uint16_t now;
  __asm__ volatile("fnstcw %0" : "=m"(now));
  if (now != s.x87) __asm__ volatile("fldcw %0" : : "m"(s.x87));
  __asm__ volatile("ldmxcsr %0" : : "m"(s.mxcsr));
}
#else
// Elsewhere the rounding mode is the only control this library uses.
FpState fpEnterExact() noexcept {
  FpState s;
  s.mxcsr = uint32_t(std::fegetround());
  std::fesetround(FE_TONEAREST);
  return s;
}
void fpRestore(const FpState& s) noexcept { std::fesetround(int(s.mxcsr)); }
#endif

}  // namespace lum
