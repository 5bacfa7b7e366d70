// The vector unit's control word: rounding-mode helpers for the few float kernels
// that need round-to-nearest regardless of the caller's mode.
#pragma once

#include <cstdint>

namespace lum {

// Rounding bits of the control word (mask 0x6000): 00 nearest, 01 down, 10 up, 11 toward zero.
constexpr uint32_t kRoundingMask = 0x6000;

// Sets the rounding bits to `mode` (0..3, placed under 0x6000) and returns the
// previous control word.
uint32_t lum_set_rc_ssx(uint32_t mode) noexcept;
// Restores a control word returned by lum_set_rc_ssx.
void lum_set_cw_ssx(uint32_t word) noexcept;


// ---- added for the power kernel
// The caller's whole floating-point control state: the vector unit's control and
// status word and, on x86, the x87 control word.
struct FpState {
  uint32_t mxcsr = 0;
  uint16_t x87 = 0;
};
// Saves the state, then runs with every exception masked, round to nearest and
// no flush to zero or denormals-are-zero (x87 pending exceptions cleared first).
FpState fpEnterExact() noexcept;
// Puts back exactly the saved state, flags included.
void fpRestore(const FpState& s) noexcept;

}  // namespace lum
