// POW_LUV, the cube-root table of the LUV and Lab forms. Row i holds c, the cube
// root (six decimals) of a node slightly above (i + 1) / 128, and r = 1 / c^3.
// A cube root is read as c * S(r * (y - c^3)), S a truncated binomial series of
// (1 + t)^(1/3) (series() in model_frame.h). Two editions: 129 rows (the last
// (1, 1)) and 128 rows, alike in rows 0..123 and a few units apart after.
#pragma once

#include <array>

namespace lum::models {

struct PowLuvRow {
  float c, r;
};

namespace detail {
// Cube root of x > 0 in double, by Newton steps from a start above the root.
constexpr double cbrtNewton(double x) {
  double c = x > 1.0 ? x : 1.0;
  for (int i = 0; i < 200; ++i) c = c - (c * c * c - x) / (3.0 * c * c);
  return c;
}
// x rounded to six decimals (x > 0).
constexpr double round6(double x) { return double(static_cast<long long>(x * 1e6 + 0.5)) / 1e6; }
// The row of a node at (i + 1.013) / 128, with c to six decimals and r to six decimals of 1 / c^3.
constexpr PowLuvRow nodeRow(int i) {
  const double c = round6(cbrtNewton((i + 1.013) / 128.0));
  return {float(c), float(round6(1.0 / (c * c * c)))};
}
template <int N>
constexpr std::array<PowLuvRow, N> makePowLuv(const PowLuvRow (&tail)[N - 124]) {
  std::array<PowLuvRow, N> t{};
  for (int i = 0; i < 124; ++i) t[size_t(i)] = nodeRow(i);
  // The first rows as the table has always given them.
  t[0] = {0.199269f, 126.380402f};
  t[1] = {0.250533f, 63.592041f};
  t[2] = {0.286586f, 42.484749f};
  t[3] = {0.315317f, 31.897442f};
  for (int i = 124; i < N; ++i) t[size_t(i)] = tail[i - 124];
  return t;
}
inline constexpr PowLuvRow kTail129[5] = {
    {0.992160f, 1.023895f}, {0.994798f, 1.015770f}, {0.997423f, 1.007772f}, {1.000033f, 0.999900f}, {1.0f, 1.0f}};
inline constexpr PowLuvRow kTail128[4] = {
    {0.992165f, 1.023880f}, {0.994803f, 1.015754f}, {0.997428f, 1.007757f}, {1.000038f, 0.999885f}};
}  // namespace detail

// The 129-row edition (the 16u, 16s and 32f kernels; rows past 127 serve Y above 1).
alignas(64) inline constexpr std::array<PowLuvRow, 129> kPowLuv129 = detail::makePowLuv<129>(detail::kTail129);
// The 128-row edition (the 8u forward forms).
alignas(64) inline constexpr std::array<PowLuvRow, 128> kPowLuv128 = detail::makePowLuv<128>(detail::kTail128);

}  // namespace lum::models
