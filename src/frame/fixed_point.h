// The fixed-point vocabulary of the scalar rules: a definition per operation,
// lane-exact to the vector instruction of the same name in the lane sets.
#pragma once

#include <cstdint>

#include "frame/simd.h"

namespace lum::fx {

// Value wrapped to a signed 16-bit lane.
constexpr int s16(int a) { return int16_t(uint16_t(unsigned(a))); }
// Value wrapped to an unsigned 16-bit lane.
constexpr int u16(int a) { return int(uint16_t(unsigned(a))); }

// Returns (a * b) >> 16 of signed 16-bit lanes: rounds towards minus infinity.
constexpr int mulhi16s(int a, int b) { return (s16(a) * s16(b)) >> 16; }
// Returns (a * b) >> 16 of unsigned 16-bit lanes.
constexpr int mulhi16u(int a, int b) { return int((unsigned(u16(a)) * unsigned(u16(b))) >> 16); }
// Returns the Q15 product rounded to nearest: (((a * b) >> 14) + 1) >> 1.
constexpr int mulhrs16s(int a, int b) { return s16((((s16(a) * s16(b)) >> 14) + 1) >> 1); }
// Returns a + b clamped to -32768..32767.
constexpr int adds16s(int a, int b) {
  const int v = s16(a) + s16(b);
  return v < -32768 ? -32768 : (v > 32767 ? 32767 : v);
}
// Returns a - b clamped to -32768..32767.
constexpr int subs16s(int a, int b) {
  const int v = s16(a) - s16(b);
  return v < -32768 ? -32768 : (v > 32767 ? 32767 : v);
}
// Returns a + b clamped to 0..65535.
constexpr int addus16u(int a, int b) {
  const int v = u16(a) + u16(b);
  return v > 65535 ? 65535 : v;
}
// Returns a - b clamped to 0..65535.
constexpr int subus16u(int a, int b) {
  const int v = u16(a) - u16(b);
  return v < 0 ? 0 : v;
}
// Returns a clamped to 0..255.
constexpr int clamp8(int a) { return a < 0 ? 0 : (a > 255 ? 255 : a); }
// Returns (a + b + 1) >> 1 of unsigned values.
constexpr int avg8(int a, int b) { return (a + b + 1) >> 1; }
// Arithmetic shift right of a signed 16-bit lane.
constexpr int sra16(int a, int n) { return s16(a) >> n; }
// Logical shift right of a 16-bit lane.
constexpr int srl16(int a, int n) { return u16(a) >> n; }

}  // namespace lum::fx
