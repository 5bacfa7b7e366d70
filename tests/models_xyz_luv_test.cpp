// RGB <-> XYZ and RGB <-> LUV: the family table, known answers of block and
// tail columns, the float edge rules, alpha, and round trips.
#include <gtest/gtest.h>

#include <cmath>
#include <cstring>
#include <limits>

#include "lumcc.h"
#include "support/family.h"

using namespace lumtest;

namespace {

using B = Buffers;

// The NaN every float path produces (negative quiet NaN), so that vector and
// scalar outputs compare byte for byte.
float nanF() {
  const uint32_t u = 0xFFC00000u;
  float f;
  std::memcpy(&f, &u, 4);
  return f;
}

// Floats in [lo, hi) with one sample in eight an edge value: +-0, NaN, +-inf,
// far out of range, negative, tiny.
FillFn floats(float lo, float hi) {
  return [lo, hi](GuardedImage& g, std::mt19937& rng) {
    const float edges[] = {0.0f, -0.0f, nanF(), std::numeric_limits<float>::infinity(),
                           -std::numeric_limits<float>::infinity(), 1e30f, -3.5f, 1e-7f, 2.0f, 1.0f};
    std::uniform_real_distribution<float> dist(lo, hi);
    for (int y = 0; y < g.height(); ++y)
      for (int x = 0; x + 4 <= g.rowBytes(); x += 4) {
        const float v = rng() % 8 == 0 ? edges[rng() % 10] : dist(rng);
        std::memcpy(g.row(y) + x, &v, 4);
      }
  };
}

using Fn8 = LumStatus (*)(const Lum8u*, int, Lum8u*, int, LumSize);
using Fn16u = LumStatus (*)(const Lum16u*, int, Lum16u*, int, LumSize);
using Fn16s = LumStatus (*)(const Lum16s*, int, Lum16s*, int, LumSize);
using Fn32 = LumStatus (*)(const Lum32f*, int, Lum32f*, int, LumSize);

template <class T>
FnCase mk(const char* name, LumStatus (*fn)(const T*, int, T*, int, LumSize), int channels, bool luvSource) {
  FnCase c;
  c.name = name;
  c.src = packedImg(int(sizeof(T)) * channels);
  c.dst = packedImg(int(sizeof(T)) * channels);
  c.call = [fn](const B& b, LumSize r) {
    return fn(static_cast<const T*>(b.src), b.srcStep, static_cast<T*>(b.dst), b.dstStep, r);
  };
  c.stepAlign = int(sizeof(T));
  if (sizeof(T) == 4) c.fillSource = luvSource ? floats(-20.0f, 120.0f) : floats(-0.25f, 1.25f);
  return c;
}

const std::vector<FnCase>& cases() {
  static const std::vector<FnCase> v = [] {
    std::vector<FnCase> t;
#define ALL_TYPES(dir, luv)                                                   \
  t.push_back(mk(#dir "_8u_C3", lumi##dir##_8u_C3R, 3, luv));                 \
  t.push_back(mk(#dir "_8u_AC4", lumi##dir##_8u_AC4R, 4, luv));               \
  t.push_back(mk(#dir "_16u_C3", lumi##dir##_16u_C3R, 3, luv));               \
  t.push_back(mk(#dir "_16u_AC4", lumi##dir##_16u_AC4R, 4, luv));             \
  t.push_back(mk(#dir "_16s_C3", lumi##dir##_16s_C3R, 3, luv));               \
  t.push_back(mk(#dir "_16s_AC4", lumi##dir##_16s_AC4R, 4, luv));             \
  t.push_back(mk(#dir "_32f_C3", lumi##dir##_32f_C3R, 3, luv));               \
  t.push_back(mk(#dir "_32f_AC4", lumi##dir##_32f_AC4R, 4, luv))
    ALL_TYPES(RGBToXYZ, false);
    ALL_TYPES(XYZToRGB, false);
    ALL_TYPES(RGBToLUV, false);
    ALL_TYPES(LUVToRGB, true);
#undef ALL_TYPES
    t.push_back(mk("BGRToLUV_8u_C3", lumiBGRToLUV_8u_C3R, 3, false));
    t.push_back(mk("BGRToLUV_32f_C3", lumiBGRToLUV_32f_C3R, 3, false));
    t.push_back(mk("LUVToBGR_8u_C3", lumiLUVToBGR_8u_C3R, 3, true));
    t.push_back(mk("LUVToBGR_32f_C3", lumiLUVToBGR_32f_C3R, 3, true));
    return t;
  }();
  return v;
}

// Runs fn on a row of `width` copies of pixel px (n samples each); returns the outputs.
template <class T>
std::vector<T> runRow(LumStatus (*fn)(const T*, int, T*, int, LumSize), std::vector<T> px, int width) {
  const size_t n = px.size();
  std::vector<T> src(n * size_t(width)), dst(n * size_t(width), T(77));
  for (int x = 0; x < width; ++x) std::copy(px.begin(), px.end(), src.begin() + std::ptrdiff_t(n) * x);
  const int step = int(n * sizeof(T)) * width;
  EXPECT_EQ(fn(src.data(), step, dst.data(), step, LumSize{width, 1}), lumStatusOk);
  return dst;
}
// Pixel x of a row of n-sample pixels.
template <class T>
std::vector<T> at(const std::vector<T>& row, int x, size_t n = 3) {
  return {row.begin() + std::ptrdiff_t(n) * x, row.begin() + std::ptrdiff_t(n) * x + 3};
}

}  // namespace

TEST(ModelsXyzLuv, RefusalsInCheckOrderLeaveDestinationUntouched) {
  EXPECT_EQ(cases().size(), 36u);
  for (const auto& c : cases()) checkRefusals(c);
}

TEST(ModelsXyzLuv, VectorBlocksMatchScalarAtEveryWidth) {
  for (const auto& c : cases()) checkVectorMatchesScalar(c, blockWidths(), 3);
}

TEST(ModelsXyzLuv, AlignmentAndNegativeSteps) {
  for (const auto& c : cases()) {
    checkAlignmentInvariance(c, {1, 3, 4, 5, 8, 9, 17, 33}, 2);
    checkNegativeStep(c, 37, 4);
  }
}

// Block columns take the 2^-15 set, tail columns the 2^-16 set: white gives Y 255
// in a block, 254 in the tail. C3 blocks are 8 pixels, AC4 blocks 4.
TEST(ModelsXyzLuv, XyzEightBitWhiteByColumn) {
  struct Row {
    Fn8 fn;
    size_t n;
    int width, blockEnd;
  };
  for (const Row& r : {Row{lumiRGBToXYZ_8u_C3R, 3, 9, 8}, Row{lumiRGBToXYZ_8u_C3R, 3, 7, 0},
                       Row{lumiRGBToXYZ_8u_AC4R, 4, 7, 4}, Row{lumiRGBToXYZ_8u_AC4R, 4, 3, 0}}) {
    std::vector<Lum8u> px(r.n, 255);
    const auto out = runRow(r.fn, px, r.width);
    for (int x = 0; x < r.width; ++x) {
      const std::vector<Lum8u> want = x < r.blockEnd ? std::vector<Lum8u>{242, 255, 255} : std::vector<Lum8u>{242, 254, 255};
      EXPECT_EQ(at(out, x, r.n), want) << "width " << r.width << " x " << x;
      if (r.n == 4) EXPECT_EQ(out[4 * size_t(x) + 3], 77) << "alpha written";
    }
  }
  // Saturation of the reverse sets: red-only XYZ clamps G at 0 in both columns.
  const auto inv = runRow(lumiXYZToRGB_8u_C3R, {255, 0, 0}, 9);
  EXPECT_EQ(at(inv, 0), (std::vector<Lum8u>{255, 0, 14}));
  EXPECT_EQ(at(inv, 8), (std::vector<Lum8u>{255, 0, 14}));
}

TEST(ModelsXyzLuv, XyzSixteenBitKnownAnswers) {
  for (int w : {1, 4, 5})
    EXPECT_EQ(at(runRow(lumiXYZToRGB_16u_C3R, {65535, 0, 0}, w), w - 1), (std::vector<Lum16u>{65535, 0, 3646}));
  for (int w : {1, 5})
    EXPECT_EQ(at(runRow(lumiRGBToXYZ_16s_C3R, {-32768, -32768, -32768}, w), w - 1),
              (std::vector<Lum16s>{-32768, -32768, -32768}));
  // 16s is 16u shifted by 32768: mid gray both ways.
  const auto u = runRow(lumiRGBToXYZ_16u_C3R, {40000, 20000, 1000}, 5);
  const auto s = runRow(lumiRGBToXYZ_16s_C3R, {40000 - 32768, 20000 - 32768, 1000 - 32768}, 5);
  for (size_t i = 0; i < u.size(); ++i) EXPECT_EQ(int(u[i]) - 32768, s[i]) << i;
}

// 32f: only Z is clamped forward (a NaN Z becomes 0); the reverse clamps each
// output but lets NaN through. Widths 4 and 5 cover block and tail columns.
TEST(ModelsXyzLuv, XyzFloatEdgeRules) {
  for (int w : {4, 5}) {
    const auto two = runRow(lumiRGBToXYZ_32f_C3R, {2.0f, 2.0f, 2.0f}, w);
    EXPECT_GT(two[0], 1.0f);
    EXPECT_GT(two[1], 1.0f);
    EXPECT_EQ(two[2], 1.0f);
    const auto neg = runRow(lumiRGBToXYZ_32f_C3R, {0.0f, 0.0f, -1.0f}, w);
    EXPECT_LT(neg[0], 0.0f);
    EXPECT_EQ(neg[2], 0.0f);
    const auto nan = runRow(lumiRGBToXYZ_32f_AC4R, {0.0f, 0.0f, nanF(), 0.5f}, w);
    EXPECT_TRUE(std::isnan(nan[0]));
    EXPECT_EQ(nan[2], 0.0f);
    const auto back = runRow(lumiXYZToRGB_32f_C3R, {nanF(), 0.5f, 0.5f}, w);
    EXPECT_TRUE(std::isnan(back[0]) && std::isnan(back[1]) && std::isnan(back[2]));
    const auto cl = runRow(lumiXYZToRGB_32f_C3R, {1.0f, 0.0f, 0.0f}, w);
    EXPECT_EQ(at(cl, w - 1), (std::vector<Lum32f>{1.0f, 0.0f, 0.055648f}));
  }
}

// Black: 8u gives 0, 97, 136 in every column; 16u gives 0, 24807, 35019 in blocks
// and 0, 0, 0 in the tail (16s 32768 lower).
TEST(ModelsXyzLuv, LuvBlackDependsOnColumnIn16Bit) {
  for (int w : {1, 3, 4, 5, 8}) {
    for (Fn8 fn : {lumiRGBToLUV_8u_C3R, lumiBGRToLUV_8u_C3R}) {
      const auto out = runRow(fn, {0, 0, 0}, w);
      for (int x = 0; x < w; ++x) EXPECT_EQ(at(out, x), (std::vector<Lum8u>{0, 97, 136})) << w;
    }
    const auto ac4 = runRow(lumiRGBToLUV_8u_AC4R, {0, 0, 0, 9}, w);
    EXPECT_EQ(at(ac4, w - 1, 4), (std::vector<Lum8u>{0, 97, 136}));
  }
  for (Fn16u fn : {lumiRGBToLUV_16u_C3R}) {
    const auto out = runRow(fn, {0, 0, 0}, 5);
    for (int x = 0; x < 4; ++x) EXPECT_EQ(at(out, x), (std::vector<Lum16u>{0, 24807, 35019}));
    EXPECT_EQ(at(out, 4), (std::vector<Lum16u>{0, 0, 0}));
  }
  const auto ac4 = runRow(lumiRGBToLUV_16u_AC4R, {0, 0, 0, 0}, 5);
  EXPECT_EQ(at(ac4, 0, 4), (std::vector<Lum16u>{0, 24807, 35019}));
  EXPECT_EQ(at(ac4, 4, 4), (std::vector<Lum16u>{0, 0, 0}));
  const auto s = runRow(lumiRGBToLUV_16s_C3R, {-32768, -32768, -32768}, 5);
  EXPECT_EQ(at(s, 0), (std::vector<Lum16s>{-32768, 24807 - 32768, 35019 - 32768}));
  EXPECT_EQ(at(s, 4), (std::vector<Lum16s>{-32768, -32768, -32768}));
}

// White: L = 100, U and V near 0 in every type and column.
TEST(ModelsXyzLuv, LuvWhite) {
  for (int w : {3, 4}) {
    const auto f = runRow(lumiRGBToLUV_32f_C3R, {1.0f, 1.0f, 1.0f}, w);
    EXPECT_NEAR(f[0], 100.0f, 0.01f);
    EXPECT_NEAR(f[1], 0.0f, 0.01f);
    EXPECT_NEAR(f[2], 0.0f, 0.01f);
    const auto e = runRow(lumiRGBToLUV_8u_C3R, {255, 255, 255}, w);
    EXPECT_EQ(at(e, 0), (std::vector<Lum8u>{255, 97, 136}));
    const auto s = runRow(lumiRGBToLUV_16u_C3R, {65535, 65535, 65535}, w);
    EXPECT_NEAR(s[0], 65535, 2);
    EXPECT_NEAR(s[1], 24807, 3);
  }
}

// The forward cube root follows the table: L of grays across the range against
// 116 Y^(1/3) - 16 (and 903.3 Y below the break), in blocks and tails.
TEST(ModelsXyzLuv, LuvLightnessOfGrays) {
  for (float g : {0.005f, 0.0089f, 0.0095f, 0.05f, 0.2f, 0.5f, 0.77f, 0.999f, 1.0f})
    for (int w : {3, 4}) {
      const float y = g * (0.212671f + 0.715160f + 0.072169f);
      const double want = y <= 0.008856f ? 903.3 * y : 116.0 * std::cbrt(double(y)) - 16.0;
      EXPECT_NEAR(runRow(lumiRGBToLUV_32f_C3R, {g, g, g}, w)[0], want, 5e-4) << g;
    }
}

// Reverse 8u: an L sample of 10 takes the cube in a block and the linear segment
// in the tail; L sample 0 in the tail is black whatever U and V are.
TEST(ModelsXyzLuv, LuvReverseEightBitByColumn) {
  const auto out = runRow(lumiLUVToRGB_8u_C3R, {10, 97, 136}, 5);
  EXPECT_NE(at(out, 0), at(out, 4));
  EXPECT_EQ(at(runRow(lumiLUVToRGB_8u_C3R, {0, 200, 30}, 3), 2), (std::vector<Lum8u>{0, 0, 0}));
  EXPECT_EQ(at(runRow(lumiLUVToRGB_16s_C3R, {-32768, 0, 100}, 3), 2), (std::vector<Lum16s>{-32768, -32768, -32768}));
  // The BGR forms move the channels and nothing else.
  const auto rgb = runRow(lumiLUVToRGB_8u_C3R, {150, 60, 200}, 6);
  const auto bgr = runRow(lumiLUVToBGR_8u_C3R, {150, 60, 200}, 6);
  for (int x = 0; x < 6; ++x) EXPECT_EQ(at(rgb, x), (std::vector<Lum8u>{bgr[3 * x + 2], bgr[3 * x + 1], bgr[3 * x]}));
  const auto fw = runRow(lumiRGBToLUV_8u_C3R, {10, 140, 230}, 6);
  const auto fb = runRow(lumiBGRToLUV_8u_C3R, {230, 140, 10}, 6);
  EXPECT_EQ(fw, fb);
}

// Reverse 32f: blocks store out-of-gamut values, the tail clamps; AC4 clamps all.
TEST(ModelsXyzLuv, LuvReverseFloatClampsTailOnly) {
  const std::vector<Lum32f> px = {60.0f, 200.0f, -120.0f};
  const auto c3 = runRow(lumiLUVToRGB_32f_C3R, px, 5);
  const auto ac4 = runRow(lumiLUVToRGB_32f_AC4R, {60.0f, 200.0f, -120.0f, 0.25f}, 5);
  EXPECT_TRUE(c3[0] > 1.0f || c3[1] < 0.0f || c3[2] > 1.0f);
  for (int k = 0; k < 3; ++k) {
    EXPECT_GE(c3[12 + size_t(k)], 0.0f);
    EXPECT_LE(c3[12 + size_t(k)], 1.0f);
    EXPECT_GE(ac4[size_t(k)], 0.0f);
    EXPECT_LE(ac4[size_t(k)], 1.0f);
  }
  EXPECT_EQ(ac4[3], 77.0f);
}

// Round trips of in-gamut colours: 32f to within 1e-3, 8u and 16u within a few codes.
TEST(ModelsXyzLuv, RoundTrips) {
  std::mt19937 rng(5);
  std::uniform_real_distribution<float> d(0.05f, 0.95f);
  for (int i = 0; i < 64; ++i) {
    const std::vector<Lum32f> px = {d(rng), d(rng), d(rng)};
    for (int w : {3, 4}) {
      auto luv = runRow(lumiRGBToLUV_32f_C3R, px, w);
      auto back = runRow(lumiLUVToRGB_32f_C3R, at(luv, 0), w);
      auto xyz = runRow(lumiRGBToXYZ_32f_C3R, px, w);
      auto rgb = runRow(lumiXYZToRGB_32f_C3R, at(xyz, 0), w);
      for (int k = 0; k < 3; ++k) {
        EXPECT_NEAR(back[size_t(k)], px[size_t(k)], 1e-3f);
        EXPECT_NEAR(rgb[size_t(k)], px[size_t(k)], 1e-4f);
      }
    }
    const std::vector<Lum16u> p16 = {Lum16u(px[0] * 65535), Lum16u(px[1] * 65535), Lum16u(px[2] * 65535)};
    for (int w : {3, 4}) {
      auto back = runRow(lumiLUVToRGB_16u_C3R, at(runRow(lumiRGBToLUV_16u_C3R, p16, w), 0), w);
      for (int k = 0; k < 3; ++k) EXPECT_NEAR(back[size_t(k)], p16[size_t(k)], 200) << w;
    }
  }
}

// Forward 16-bit tails: 16u C3 and 16s round, 16u AC4 truncates; the blocks
// (the first four pixels) are the same in both layouts.
TEST(ModelsXyzLuv, LuvSixteenBitTailRounding) {
  std::mt19937 rng(11);
  int differ = 0;
  for (int i = 0; i < 200; ++i) {
    const Lum16u r = Lum16u(rng()), g = Lum16u(rng()), b = Lum16u(rng());
    const auto c3 = runRow(lumiRGBToLUV_16u_C3R, {r, g, b}, 5);
    const auto ac4 = runRow(lumiRGBToLUV_16u_AC4R, {r, g, b, 0}, 5);
    EXPECT_EQ(at(c3, 0), at(ac4, 0, 4));
    for (int k = 0; k < 3; ++k) {
      EXPECT_LE(ac4[16 + size_t(k)], c3[12 + size_t(k)]);
      EXPECT_LE(c3[12 + size_t(k)] - ac4[16 + size_t(k)], 1);
      differ += c3[12 + size_t(k)] != ac4[16 + size_t(k)];
    }
    const auto s3 = runRow(lumiRGBToLUV_16s_C3R, {Lum16s(r - 32768), Lum16s(g - 32768), Lum16s(b - 32768)}, 5);
    const auto s4 = runRow(lumiRGBToLUV_16s_AC4R, {Lum16s(r - 32768), Lum16s(g - 32768), Lum16s(b - 32768), 0}, 5);
    EXPECT_EQ(at(s3, 4), at(s4, 4, 4));
    for (int k = 0; k < 3; ++k) EXPECT_EQ(int(c3[12 + size_t(k)]) - 32768, s3[12 + size_t(k)]);
  }
  EXPECT_GT(differ, 100);
}
