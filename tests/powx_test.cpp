// The single-precision power kernel: accuracy against double precision over a
// dense sweep, the C rules on zeros, infinities, NaNs and negative bases, blocks
// against single elements, vector against emulated lanes, and the caller's
// floating-point state.
#include <gtest/gtest.h>

#include <cfenv>
#include <cfloat>
#include <algorithm>
#include <cmath>
#include <cstring>
#include <limits>
#include <random>
#include <vector>

#include "frame/fp_control.h"
#include "frame/simd.h"
#include "vecmath/powx.h"

namespace {

float bitsToFloat(uint32_t b) {
  float f;
  std::memcpy(&f, &b, 4);
  return f;
}
uint32_t floatBits(float f) {
  uint32_t b;
  std::memcpy(&b, &f, 4);
  return b;
}
const float kInf = std::numeric_limits<float>::infinity();
const float kNaN = std::numeric_limits<float>::quiet_NaN();

// Correct bits of r against the exact value e: -log2 of the relative error,
// measured against FLT_MIN below it (denormal results carry fewer bits); a
// result beyond the float range must be the infinity.
double correctBits(float r, double e) {
  if (std::fabs(e) > FLT_MAX) return r == float(e) ? 99.0 : 0.0;
  const double rel = std::fabs(double(r) - e) / std::max(std::fabs(e), double(FLT_MIN));
  return rel == 0 ? 99.0 : -std::log2(rel);
}

// Worst correct bits of x^y over positive floats from FLT_MIN to the top,
// every `stride`-th bit pattern.
double worstBits(float y, uint32_t stride) {
  constexpr int kBatch = 4096;
  std::vector<float> xs(kBatch), rs(kBatch);
  double worst = 99;
  int n = 0;
  auto flush = [&] {
    lumsPowx_32f_A21(xs.data(), y, rs.data(), n);
    for (int i = 0; i < n; ++i) {
      const double b = correctBits(rs[size_t(i)], std::pow(double(xs[size_t(i)]), double(y)));
      if (b < worst) worst = b;
    }
    n = 0;
  };
  for (uint64_t b = 0x00800000; b < 0x7F800000; b += stride) {
    xs[size_t(n++)] = bitsToFloat(uint32_t(b));
    if (n == kBatch) flush();
  }
  flush();
  return worst;
}

TEST(Powx, AtLeast21CorrectBitsOverTheFloatRange) {
  struct Sweep {
    float y;
    uint32_t stride;
  };
  const Sweep sweeps[] = {{0.45f, 97},     {2.2222223f, 97}, {2.5f, 997},  {-2.5f, 997},   {2.4999998f, 997},
                          {-1.0f, 997}, {0.5f, 997},    {3.0f, 997}, {1.7f, 997}, {-0.3f, 997}, {2.5000002f, 997},
                          {1e-4f, 997},     {17.3f, 997}, {-0.07f, 997},  {1.0000001f, 997},
                          {100.0f, 997},   {-100.0f, 997},   {1e30f, 4999}, {-3e-30f, 4999}};
  for (const Sweep& s : sweeps) {
    const double bits = worstBits(s.y, s.stride);
    std::printf("  powx exponent %-12g worst correct bits %.2f\n", double(s.y), bits);
    EXPECT_GE(bits, 21.0) << "exponent " << s.y;
  }
}

TEST(Powx, EdgeValuesFollowTheRulesOfPow) {
  struct Case {
    float x, y, want;
  };
  const float tiny = std::ldexp(1.0f, -149);
  const Case cases[] = {
      {0.0f, 0.45f, 0.0f},        {-0.0f, 0.45f, 0.0f},       {0.0f, -2.2222223f, kInf}, {-0.0f, -3.0f, -kInf},
      {-0.0f, 3.0f, -0.0f},       {-0.0f, -0.5f, kInf},       {-8.0f, 0.45f, kNaN},      {-2.0f, 3.0f, -8.0f},
      {-2.0f, 2.0f, 4.0f},        {-2.0f, -1.0f, -0.5f},      {kInf, 0.45f, kInf},       {kInf, -0.45f, 0.0f},
      {-kInf, 3.0f, -kInf},       {-kInf, 0.45f, kInf},       {-kInf, -3.0f, -0.0f},     {kNaN, 0.45f, kNaN},
      {1.0f, kNaN, 1.0f},         {2.0f, kNaN, kNaN},         {kNaN, 0.0f, 1.0f},        {-1.0f, kInf, 1.0f},
      {0.5f, kInf, 0.0f},         {2.0f, kInf, kInf},         {2.0f, -kInf, 0.0f},       {0.5f, -kInf, kInf},
      {std::ldexp(1.0f, -140), 0.5f, std::ldexp(1.0f, -70)},  {tiny, 2.0f, 0.0f},        {2.0f, 128.0f, kInf},
      {2.0f, -149.0f, tiny},      {4.0f, 0.5f, 2.0f},         {1.0f, 0.45f, 1.0f},       {1.0f, 1e30f, 1.0f},
      {8.0f, tiny, 1.0f},         {-4.0f, 0.0f, 1.0f},        {3.0f, 2.0f, 9.0f},        {0.25f, -0.5f, 2.0f},
  };
  for (const Case& c : cases) {
    float r = 12345.0f;
    lumsPowx_32f_A21(&c.x, c.y, &r, 1);
    SCOPED_TRACE(testing::Message() << c.x << " ^ " << c.y);
    if (std::isnan(c.want)) {
      EXPECT_TRUE(std::isnan(r)) << r;
    } else {
      EXPECT_EQ(floatBits(r), floatBits(c.want)) << r;
    }
  }
}

// Inputs that reach every path: normal values of all sizes and the rare ones.
std::vector<float> mixedInputs(size_t n, uint32_t seed) {
  std::mt19937 rng(seed);
  const float edges[] = {0.0f, -0.0f, -1.5f, kInf, -kInf, kNaN, 1e-40f, FLT_MIN, FLT_MAX, 1.0f};
  std::vector<float> v(n);
  for (auto& x : v) {
    const uint32_t r = rng();
    x = r % 11 == 0 ? edges[r / 11 % 10] : bitsToFloat(0x00800000 + rng() % 0x7EFFFFFF);
  }
  return v;
}

TEST(Powx, BlocksAndSingleElementsAgree) {
  const auto in = mixedInputs(200, 3);
  for (float y : {0.45f, 2.2222223f, -3.0f}) {
    std::vector<float> single(in.size());
    for (size_t i = 0; i < in.size(); ++i) lumsPowx_32f_A21(&in[i], y, &single[i], 1);
    for (int len : {1, 2, 3, 7, 8, 15, 16, 17, 23, 24, 31, 33, 40, 127, 128, 129, 200}) {
      for (int off = 0; off < 4; ++off) {  // the destination's distance from a 16-byte boundary
        std::vector<float> out(size_t(len + 8), -7.0f);
        lumsPowx_32f_A21(in.data(), y, out.data() + off, len);
        for (int i = 0; i < len; ++i)
          ASSERT_EQ(floatBits(out[size_t(off + i)]), floatBits(single[size_t(i)])) << "len " << len << " off " << off << " i " << i;
        for (int i = 0; i < off; ++i) ASSERT_EQ(out[size_t(i)], -7.0f);
        for (size_t i = size_t(off + len); i < out.size(); ++i) ASSERT_EQ(out[i], -7.0f) << "write past the end";
      }
    }
    // In place gives the same as copying.
    std::vector<float> inPlace = in;
    lumsPowx_32f_A21(inPlace.data(), y, inPlace.data(), int(in.size()));
    for (size_t i = 0; i < in.size(); ++i) ASSERT_EQ(floatBits(inPlace[i]), floatBits(single[i]));
  }
}

TEST(Powx, VectorAndEmulatedLanesGiveTheSameBits) {
  const auto in = mixedInputs(100000, 9);
  for (float y : {0.45f, 2.2222223f, -0.7f, 5.0f}) {
    std::vector<float> wide(in.size()), narrow(in.size()), emu(in.size());
    lumsPowx_32f_A21(in.data(), y, wide.data(), int(in.size()));
    {
      lum::NarrowScope eightLanes;
      lumsPowx_32f_A21(in.data(), y, narrow.data(), int(in.size()));
    }
    {
      lum::ScalarScope scalar;
      lumsPowx_32f_A21(in.data(), y, emu.data(), int(in.size()));
    }
    ASSERT_EQ(std::memcmp(wide.data(), emu.data(), wide.size() * 4), 0) << "exponent " << y;
    ASSERT_EQ(std::memcmp(narrow.data(), emu.data(), narrow.size() * 4), 0) << "exponent " << y;
  }
}

TEST(Powx, RefusedArgumentsWriteNothing) {
  const float in[4] = {1, 2, 3, 4};
  float out[4] = {9, 9, 9, 9};
  lumsPowx_32f_A21(in, 0.45f, out, 0);
  lumsPowx_32f_A21(in, 0.45f, out, -3);
  lumsPowx_32f_A21(nullptr, 0.45f, out, 4);
  lumsPowx_32f_A21(nullptr, 0.0f, out, 4);
  lumsPowx_32f_A21(in, 0.45f, nullptr, 4);
  for (float v : out) EXPECT_EQ(v, 9.0f);
}

// The current control state, read through the save/restore pair.
lum::FpState currentFp() {
  const lum::FpState s = lum::fpEnterExact();
  lum::fpRestore(s);
  return s;
}

TEST(Powx, CallerFloatingPointStateIsUnchanged) {
  const auto in = mixedInputs(333, 4);
  std::vector<float> ref(in.size()), got(in.size());
  lumsPowx_32f_A21(in.data(), 0.45f, ref.data(), int(in.size()));
  const lum::FpState start = currentFp();
  for (int mode : {FE_UPWARD, FE_DOWNWARD, FE_TOWARDZERO}) {
    std::fesetround(mode);
    lum::FpState caller = currentFp();
#if defined(__x86_64__) || defined(__i386__)
    caller.mxcsr |= 0x8040;  // flush to zero and denormals-are-zero on
    caller.mxcsr &= ~0x0200u;  // the underflow exception unmasked
    lum::fpRestore(caller);
#endif
    for (float y : {0.45f, 0.0f, kNaN}) {
      lumsPowx_32f_A21(in.data(), y, got.data(), int(in.size()));
      const lum::FpState after = currentFp();
      EXPECT_EQ(after.mxcsr, caller.mxcsr) << "mode " << mode << " exponent " << y;
      EXPECT_EQ(after.x87, caller.x87);
    }
    lumsPowx_32f_A21(in.data(), 0.45f, got.data(), int(in.size()));
    lum::fpRestore(start);
    EXPECT_EQ(std::memcmp(got.data(), ref.data(), got.size() * 4), 0) << "results depend on the caller's mode " << mode;
  }
}

}  // namespace
