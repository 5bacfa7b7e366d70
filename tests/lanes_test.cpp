// Each lane set computes what the x86 instruction behind each of its operations
// does: the emulation against SSE4.2, and each half of the 256-bit set against
// SSE4.2, byte for byte, on edge and random lanes.
#include <gtest/gtest.h>

#include <cfloat>
#include <cmath>
#include <limits>
#include <random>

#include "frame/lanes.h"
#include "frame/simd.h"
#include "support/lane_ops.h"

namespace lumtest {

namespace {

template <class T>
std::vector<uint64_t> bitsOf(std::initializer_list<T> v) {
  std::vector<uint64_t> r;
  for (T x : v) {
    uint64_t b = 0;
    std::memcpy(&b, &x, sizeof x);
    r.push_back(b);
  }
  return r;
}

struct EdgeSet {
  int size;  // bytes of a lane
  std::vector<uint64_t> bits;
};

const std::vector<EdgeSet>& edgeSets() {
  constexpr float fi = std::numeric_limits<float>::infinity(), fn = std::numeric_limits<float>::quiet_NaN();
  constexpr double di = std::numeric_limits<double>::infinity(), dn = std::numeric_limits<double>::quiet_NaN();
  static const std::vector<EdgeSet> v = {
      {2, bitsOf<int16_t>({0, 1, -1, 2, 127, 128, 255, 256, 16384, -16384, 4769, -3330, 32766, 32767, -32767, -32768})},
      {4, bitsOf<int32_t>({0, 1, -1, 32767, -32768, 65535, 65536, -65536, 16777217, 1 << 30, INT32_MAX, INT32_MIN})},
      {4, bitsOf<float>({0.0f, -0.0f, 1.0f, -1.0f, 0.5f, 1.5f, 2.5f, -2.5f, 1e-40f, -1e-40f, FLT_MIN, FLT_MAX, fi, -fi, fn,
                         -fn, 2147483648.0f, -2147483648.0f, 2147483520.0f, 3e9f, 16777217.0f, 0.49999997f})},
      {8, bitsOf<double>({0.0, -0.0, 1.0, -1.0, 0.5, 2.5, 4.9e-324, DBL_MIN, di, -di, dn, -dn, 2147483647.5,
                          -2147483648.5, 2147483648.0, 1e300})},
      {1, {0, 1, 127, 128, 254, 255}},
  };
  return v;
}

}  // namespace

std::vector<uint8_t> laneOperands(int round, int bytes) {
  std::vector<uint8_t> r(size_t(3 * bytes));
  for (const EdgeSet& e : edgeSets()) {
    const int lanes = bytes / e.size, n = int(e.bits.size());
    const int rounds = (n * n + lanes - 1) / lanes;
    if (round >= rounds) {
      round -= rounds;
      continue;
    }
    for (int i = 0; i < lanes; ++i) {
      const int p = round * lanes + i;
      const uint64_t v[3] = {e.bits[size_t(p % n)], e.bits[size_t(p / n % n)], e.bits[size_t((7 * p + 3) % n)]};
      for (int k = 0; k < 3; ++k) std::memcpy(&r[size_t(k * bytes + i * e.size)], &v[k], size_t(e.size));
    }
    return r;
  }
  std::mt19937 g{uint32_t(round)};
  for (auto& b : r) b = uint8_t(g());
  return r;
}

namespace {

// Runs op on three operand registers of `bytes` each; the out buffer's bytes.
std::vector<uint8_t> runOp(LaneFn fn, const uint8_t* ops, int bytes) {
  const uint8_t* in[3] = {ops, ops + bytes, ops + 2 * bytes};
  std::vector<uint8_t> out(size_t(laneOutBytes(bytes)), 0);
  fn(in, out.data());
  return out;
}

#if LUM_SIMD_SSE
TEST(Lanes, EmulationMatchesSse) {
  const auto emu = laneOps<lum::lanes::Emu>();
  const auto sse = laneOps<lum::lanes::Sse>();
  ASSERT_EQ(emu.size(), sse.size());
  for (size_t i = 0; i < sse.size(); ++i)
    for (int r = 0; r < kLaneRounds; ++r) {
      const auto ops = laneOperands(r, 16);
      const auto want = runOp(sse[i].fn, ops.data(), 16), got = runOp(emu[i].fn, ops.data(), 16);
      if (!sameLanes(sse[i].kind, got.data(), want.data(), int(want.size()))) {
        ADD_FAILURE() << sse[i].name << " round " << r;
        break;
      }
    }
}

TEST(Lanes, WideHalvesMatchSse) {
  if (!lum::processorHasAvx2()) GTEST_SKIP() << "no AVX2 on this processor";
  EXPECT_EQ(checkLanesWide(laneOps<lum::lanes::Sse>()), "");
}
#endif

}  // namespace

}  // namespace lumtest
