// Tone mapping (maximum and twice-the-mean scaling) and 12-bit pack and unpack.
#include <gtest/gtest.h>

#include <cstring>
#include <limits>

#include "frame/simd.h"
#include "lumcc.h"
#include "support/family.h"
#include "support/fp_state.h"

using namespace lumtest;

namespace {

using B = Buffers;

// Floats mostly positive (a positive maximum and mean), with negatives, zeros and
// values that truncate to the byte edges.
void fillTone(GuardedImage& g, std::mt19937& rng) {
  const float edges[] = {0.0f, -0.0f, -1.5f, 999.99f, 0.3f, -200.0f};
  std::uniform_real_distribution<float> u(-20.0f, 1000.0f);
  for (int y = 0; y < g.height(); ++y)
    for (int x = 0; x + 4 <= g.rowBytes(); x += 4) {
      const float v = rng() % 8 == 0 ? edges[rng() % std::size(edges)] : u(rng);
      std::memcpy(g.row(y) + x, &v, 4);
    }
}

// Bytes of a packed 12-bit row of w samples.
int packedBytes(int w) { return 3 * (w / 2) + 2 * (w & 1); }

FnCase mk(const char* name, ImageShape s, ImageShape d, CallFn f) {
  FnCase c;
  c.name = name;
  c.src = std::move(s);
  c.dst = std::move(d);
  c.call = std::move(f);
  return c;
}

const ImageShape kPacked = {false, {PlaneShape{1, 1, 1, false, packedBytes}}, -1};

FnCase toneLinear() {
  FnCase c = mk("ToneMapLinear", packedImg(4), packedImg(1), [](const B& b, LumSize r) {
    return lumiToneMapLinear_32f8u_C1R(reinterpret_cast<const Lum32f*>(b.src), b.srcStep, b.dstPtr(), b.dstStep, r);
  });
  c.fillSource = fillTone;
  return c;
}
FnCase toneMean() {
  FnCase c = mk("ToneMapMean", packedImg(4), packedImg(1), [](const B& b, LumSize r) {
    return lumiToneMapMean_32f8u_C1R(reinterpret_cast<const Lum32f*>(b.src), b.srcStep, b.dstPtr(), b.dstStep, r);
  });
  c.fillSource = fillTone;
  return c;
}
FnCase pack() {
  return mk("Pack", packedImg(2), kPacked, [](const B& b, LumSize r) {
    return lumiPack_16u12u_C1R(reinterpret_cast<const Lum16u*>(b.src), b.srcStep, b.dstPtr(), b.dstStep, r);
  });
}
FnCase unpack() {
  return mk("Unpack", kPacked, packedImg(2), [](const B& b, LumSize r) {
    return lumiUnpack_12u16u_C1R(b.srcPtr(), b.srcStep, reinterpret_cast<Lum16u*>(b.dst), b.dstStep, r);
  });
}
std::vector<FnCase> all() { return {toneLinear(), toneMean(), pack(), unpack()}; }

}  // namespace

TEST(ToneMapPack, RefusalsInCheckOrderLeaveDestinationUntouched) {
  for (const auto& c : all()) checkRefusals(c);
}

TEST(ToneMapPack, PackStepsBelowOneAreRefusedAfterNullAndSize) {
  for (const auto& c : {pack(), unpack()}) {
    SCOPED_TRACE(c.name);
    CallImages ci(c, LumSize{9, 3});
    std::mt19937 rng(1);
    ci.randomizeSource(rng);
    ci.fillDestination(0x77);
    for (int step : {0, -1}) {
      for (int which : {0, 1}) {
        B b = ci.buffers();
        (which ? b.dstStep : b.srcStep) = step;
        EXPECT_EQ(c.call(b, LumSize{9, 3}), lumStatusBadStep);
        EXPECT_EQ(c.call(b, LumSize{9, 0}), lumStatusBadSize);
        b.src = nullptr;
        EXPECT_EQ(c.call(b, LumSize{9, 3}), lumStatusNullPointer);
      }
    }
    for (uint8_t v : ci.destinationBytes()) ASSERT_EQ(v, 0x77);
  }
}

TEST(ToneMapPack, VectorBlocksMatchScalarTwinsAtEveryWidth) {
  for (const auto& c : all()) checkVectorMatchesScalar(c, blockWidths(), 3);
}

TEST(ToneMapPack, AlignmentDoesNotChangeSamples) {
  for (const auto& c : all()) checkAlignmentInvariance(c, {1, 2, 3, 4, 7, 8, 15, 16, 17, 33, 100}, 3);
}

TEST(ToneMapPack, ToneMapNegativeStepWalksBottomUp) {
  checkNegativeStep(toneLinear(), 37, 5);
  checkNegativeStep(toneMean(), 37, 5);
}

TEST(ToneMapPack, CallerFloatingPointStateIsKept) {
  for (const auto& c : all()) {
    SCOPED_TRACE(c.name);
    for (int mode : kRoundingModes)
      for (bool ftz : {false, true}) {
        CallImages ci(c, LumSize{21, 2});
        std::mt19937 rng(3);
        ci.randomizeSource(rng);
        ControlWords before, after;
        {
          FpModeScope scope(mode, ftz);
          before = controlWords();
          EXPECT_EQ(c.call(ci.buffers(), LumSize{21, 2}), lumStatusOk);
          after = controlWords();
        }
        EXPECT_TRUE(before == after) << "mode " << mode << " ftz " << ftz;
      }
  }
}

namespace {
// One known answer of a tone map: a pattern of samples (repeated to make the row),
// the bytes each sample gives, or a warning with the destination untouched.
struct ToneRow {
  const char* what;
  bool mean;
  std::vector<float> in;
  std::vector<int> out;  // empty: lumStatusNegativeMean
};
}  // namespace

TEST(ToneMapPack, ToneMapKnownAnswers) {
  const float nan = std::numeric_limits<float>::quiet_NaN();
  const ToneRow rows[] = {
      {"all zero", false, {0, 0, -0.0f}, {0, 0, 0}},
      {"all zero", true, {0, 0, -0.0f}, {0, 0, 0}},
      {"all negative", false, {-1, -2}, {}},
      {"all negative", true, {-1, -2}, {}},
      {"negative wraps", false, {382.5f, -1.5f}, {255, 255}},
      {"negative saturates", true, {382.5f, -1.5f}, {255, 0}},
      {"one", false, {1.0f}, {255}},
      {"one halves", true, {1.0f}, {127}},
      {"falls short", false, {0.3f}, {254}},
      {"NaN mean", true, {1.0f, nan, 2.0f}, {0, 0, 0}},
      {"tiny maximum", false, {1e-39f, 0.0f}, {0, 0}},
      {"tiny mean", true, {1e-39f, 0.0f}, {0, 0}},
      {"twice the mean saturates", true, {0, 0, 0, 4, 2}, {0, 0, 0, 255, 212}},
      {"low byte", false, {5, -20}, {255, 4}},
      {"negative mean, positive maximum", true, {5, -20}, {}},
  };
  for (const ToneRow& r : rows) {
    for (int copies : {1, 9}) {
      SCOPED_TRACE(testing::Message() << r.what << (r.mean ? " (mean)" : " (linear)") << " x" << copies);
      const int w = int(r.in.size()) * copies;
      std::vector<float> src;
      for (int k = 0; k < copies; ++k) src.insert(src.end(), r.in.begin(), r.in.end());
      std::vector<uint8_t> dst(size_t(w), 0x5A);
      const LumStatus st = (r.mean ? lumiToneMapMean_32f8u_C1R : lumiToneMapLinear_32f8u_C1R)(
          src.data(), 4 * w, dst.data(), w, LumSize{w, 1});
      if (r.out.empty()) {
        EXPECT_EQ(st, lumStatusNegativeMean);
        for (uint8_t v : dst) ASSERT_EQ(v, 0x5A) << "written after the warning";
        continue;
      }
      EXPECT_EQ(st, lumStatusOk);
      for (int x = 0; x < w; ++x) ASSERT_EQ(dst[size_t(x)], r.out[size_t(x) % r.out.size()]) << "x " << x;
    }
  }
}

// A destination over the first source row takes the scalar path: two samples read,
// two bytes written, which gives the bytes of a separate destination.
TEST(ToneMapPack, DestinationOverTheSourceGivesTheSameBytes) {
  for (bool mean : {false, true}) {
    const int w = 45;
    std::vector<float> src(45);
    std::mt19937 rng(8);
    std::uniform_real_distribution<float> u(0.0f, 50.0f);
    for (auto& v : src) v = u(rng);
    std::vector<uint8_t> ref(45);
    auto fn = mean ? lumiToneMapMean_32f8u_C1R : lumiToneMapLinear_32f8u_C1R;
    ASSERT_EQ(fn(src.data(), 4 * w, ref.data(), w, LumSize{w, 1}), lumStatusOk);
    std::vector<float> img = src;
    uint8_t* over = reinterpret_cast<uint8_t*>(img.data());
    ASSERT_EQ(fn(img.data(), 4 * w, over, w, LumSize{w, 1}), lumStatusOk);
    for (int x = 0; x < w; ++x) ASSERT_EQ(over[x], ref[size_t(x)]) << "x " << x << " mean " << mean;
  }
}

namespace {
std::vector<uint8_t> packRow(const std::vector<uint16_t>& s) {
  const int w = int(s.size());
  std::vector<uint8_t> d(static_cast<size_t>(packedBytes(w)));
  EXPECT_EQ(lumiPack_16u12u_C1R(s.data(), 2 * w, d.data(), int(d.size()), LumSize{w, 1}), lumStatusOk);
  return d;
}
std::vector<uint16_t> unpackRow(const std::vector<uint8_t>& s, int w) {
  std::vector<uint16_t> d(static_cast<size_t>(w));
  EXPECT_EQ(lumiUnpack_12u16u_C1R(s.data(), int(s.size()), d.data(), 2 * w, LumSize{w, 1}), lumStatusOk);
  return d;
}
}  // namespace

TEST(ToneMapPack, PackKnownAnswers) {
  struct Row {
    std::vector<uint16_t> in;
    std::vector<uint8_t> out;
  };
  const Row rows[] = {
      {{0x0ABC, 0x0DEF}, {0xAB, 0xCD, 0xEF}},
      {{0x0ABC}, {0xAB, 0xC0}},
      {{0x0ABC, 0x0DEF, 0x0123}, {0xAB, 0xCD, 0xEF, 0x12, 0x30}},
      // Bits 15..12: the pairs after the blocks ignore them.
      {{0xFABC, 0xFDEF}, {0xAB, 0xCD, 0xEF}},
      {{0xFABC}, {0xAB, 0xC0}},
      // A block of 4 ORs the first sample's bits 15..12 into its second byte.
      {{0xFABC, 0x0DEF, 0x5123, 0x0456}, {0xAB, 0xCF, 0xEF, 0x12, 0x35, 0x56}},
      {{0xFABC, 0xFDEF, 0x0000, 0xF000, 0x7ABC, 0x0DEF},
       {0xAB, 0xCF, 0xEF, 0x00, 0x00, 0x00, 0xAB, 0xCD, 0xEF}},
  };
  for (const Row& r : rows) {
    SCOPED_TRACE(testing::Message() << "width " << r.in.size() << " first " << std::hex << r.in[0]);
    EXPECT_EQ(packRow(r.in), r.out);
  }
  // Unpack: bits 3..0 of the odd last sample's second byte are ignored.
  EXPECT_EQ(unpackRow({0xAB, 0xCD, 0xEF}, 2), (std::vector<uint16_t>{0x0ABC, 0x0DEF}));
  EXPECT_EQ(unpackRow({0xAB, 0xC7}, 1), (std::vector<uint16_t>{0x0ABC}));
}

// Bits 15..12 of each pair's first sample reach its second byte inside the blocks
// (the first W & ~3 samples) and nowhere else, at every width.
TEST(ToneMapPack, PackBlocksAloneOrTheHighNibble) {
  for (int w = 1; w <= 40; ++w) {
    std::vector<uint16_t> s(static_cast<size_t>(w));
    for (int x = 0; x < w; ++x) s[size_t(x)] = uint16_t(x % 2 == 0 ? 0xA000 | (x * 37 % 4096) : (x * 91 % 4096));
    const auto d = packRow(s);
    for (int x = 0; x + 1 < w; x += 2) {
      const uint8_t low = d[size_t(x / 2 * 3 + 1)] & 15;
      const int want = (s[size_t(x + 1)] >> 8) | (x < (w & ~3) ? 0xA : 0);
      ASSERT_EQ(low, want) << "width " << w << " pair at " << x;
    }
  }
}

TEST(ToneMapPack, RoundTripsAreExactAtEveryWidth) {
  std::mt19937 rng(12);
  for (int w = 1; w <= 64; ++w) {
    SCOPED_TRACE(testing::Message() << "width " << w);
    std::vector<uint16_t> s(static_cast<size_t>(w));
    for (auto& v : s) v = uint16_t(rng() & 0xFFF);
    EXPECT_EQ(unpackRow(packRow(s), w), s);
    std::vector<uint8_t> b(static_cast<size_t>(packedBytes(w)));
    for (auto& v : b) v = uint8_t(rng());
    if (w & 1) b.back() &= 0xF0;  // the odd sample's unused bits
    EXPECT_EQ(packRow(unpackRow(b, w)), b);
  }
}
