// The clamp table: chop[i] = clamp8(i - 370), a branch-free clamp for tails.
#pragma once

#include <array>
#include <cstdint>

namespace lum {

namespace detail {
constexpr std::array<uint8_t, 1000> makeChop() {
  std::array<uint8_t, 1000> t{};
  for (int i = 0; i < 1000; ++i) {
    const int v = i - 370;
    t[i] = uint8_t(v < 0 ? 0 : (v > 255 ? 255 : v));
  }
  return t;
}
}  // namespace detail

alignas(64) inline constexpr std::array<uint8_t, 1000> chop = detail::makeChop();
// CHOP_ARRAY[v] == clamp8(v) for -370 <= v <= 629.
inline constexpr const uint8_t* CHOP_ARRAY = chop.data() + 370;

}  // namespace lum
