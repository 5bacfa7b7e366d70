// Colour twist: the affine 3x4 and linear 4x4 maps over 8u, 16u, 16s and 32f.
#include <gtest/gtest.h>

#include <cmath>
#include <cstring>
#include <limits>

#include "frame/simd.h"
#include "lumcc.h"
#include "support/family.h"
#include "support/fp_state.h"

using namespace lumtest;

namespace {

// The matrices the calls take; tests swap them.
const Lum32f (*gT)[4] = nullptr;
const Lum32f (*gT4)[4] = nullptr;

enum Kind { K8u, K16u, K16s, K32f };
enum class Sh { C3, AC4, C4, P3 };
constexpr int kSize[] = {1, 2, 2, 4};

struct TwistCase {
  FnCase fc;
  Kind kind;
  Sh shape;
};

using B = Buffers;
template <class T>
const T* cs(const B& b) { return reinterpret_cast<const T*>(b.src); }
template <class T>
T* ds(const B& b) { return reinterpret_cast<T*>(b.dst); }
template <class T>
const T* const* cp(const B& b) { return reinterpret_cast<const T* const*>(b.src); }
template <class T>
T* const* dp(const B& b) { return reinterpret_cast<T* const*>(b.dst); }

// Source floats with the edges among ordinary values. One NaN pattern (the one the
// processor makes from inf x 0), so no result depends on which of two NaNs wins.
void fillFloats(GuardedImage& g, std::mt19937& rng) {
  const float nan = -std::numeric_limits<float>::quiet_NaN();
  const float edges[] = {0.0f, -0.0f, 1.0f, -1.0f, 0.5f, 1e30f, -1e30f, INFINITY, -INFINITY, nan, 1e-40f, 65535.5f};
  std::uniform_real_distribution<float> u(-1000.0f, 1000.0f);
  for (int y = 0; y < g.height(); ++y)
    for (int x = 0; x + 4 <= g.rowBytes(); x += 4) {
      const float v = rng() % 8 == 0 ? edges[rng() % std::size(edges)] : u(rng);
      std::memcpy(g.row(y) + x, &v, 4);
    }
}
// Whole numbers in -1000..1000, where every map below is exact.
void fillWhole(GuardedImage& g, std::mt19937& rng) {
  for (int y = 0; y < g.height(); ++y)
    for (int x = 0; x + 4 <= g.rowBytes(); x += 4) {
      const float v = float(int(rng() % 2001) - 1000);
      std::memcpy(g.row(y) + x, &v, 4);
    }
}

TwistCase make(const char* name, Kind k, Sh sh, bool inPlace, CallFn f) {
  const int s = kSize[k];
  ImageShape img = sh == Sh::P3 ? planarImg(3, s) : packedImg((sh == Sh::C3 ? 3 : 4) * s);
  FnCase c;
  c.name = name;
  c.src = img;
  c.dst = img;
  c.call = std::move(f);
  c.stepAlign = s;
  c.inPlace = inPlace;
  if (k == K32f) c.fillSource = fillFloats;
  return {c, k, sh};
}

const std::vector<TwistCase>& cases() {
  static const std::vector<TwistCase> v = [] {
    std::vector<TwistCase> t;
    // 32f
    t.push_back(make("32f_C3R", K32f, Sh::C3, false, [](const B& b, LumSize r) {
      return lumiColorTwist_32f_C3R(cs<Lum32f>(b), b.srcStep, ds<Lum32f>(b), b.dstStep, r, gT); }));
    t.push_back(make("32f_C3IR", K32f, Sh::C3, true, [](const B& b, LumSize r) {
      return lumiColorTwist_32f_C3IR(ds<Lum32f>(b), b.dstStep, r, gT); }));
    t.push_back(make("32f_AC4R", K32f, Sh::AC4, false, [](const B& b, LumSize r) {
      return lumiColorTwist_32f_AC4R(cs<Lum32f>(b), b.srcStep, ds<Lum32f>(b), b.dstStep, r, gT); }));
    t.push_back(make("32f_AC4IR", K32f, Sh::AC4, true, [](const B& b, LumSize r) {
      return lumiColorTwist_32f_AC4IR(ds<Lum32f>(b), b.dstStep, r, gT); }));
    t.push_back(make("32f_C4R", K32f, Sh::C4, false, [](const B& b, LumSize r) {
      return lumiColorTwist_32f_C4R(cs<Lum32f>(b), b.srcStep, ds<Lum32f>(b), b.dstStep, r, gT4); }));
    t.push_back(make("32f_P3R", K32f, Sh::P3, false, [](const B& b, LumSize r) {
      return lumiColorTwist_32f_P3R(cp<Lum32f>(b), b.srcStep, dp<Lum32f>(b), b.dstStep, r, gT); }));
    t.push_back(make("32f_IP3R", K32f, Sh::P3, true, [](const B& b, LumSize r) {
      return lumiColorTwist_32f_IP3R(dp<Lum32f>(b), b.dstStep, r, gT); }));
    // 8u
    t.push_back(make("8u_C3R", K8u, Sh::C3, false, [](const B& b, LumSize r) {
      return lumiColorTwist32f_8u_C3R(cs<Lum8u>(b), b.srcStep, ds<Lum8u>(b), b.dstStep, r, gT); }));
    t.push_back(make("8u_C3IR", K8u, Sh::C3, true, [](const B& b, LumSize r) {
      return lumiColorTwist32f_8u_C3IR(ds<Lum8u>(b), b.dstStep, r, gT); }));
    t.push_back(make("8u_AC4R", K8u, Sh::AC4, false, [](const B& b, LumSize r) {
      return lumiColorTwist32f_8u_AC4R(cs<Lum8u>(b), b.srcStep, ds<Lum8u>(b), b.dstStep, r, gT); }));
    t.push_back(make("8u_AC4IR", K8u, Sh::AC4, true, [](const B& b, LumSize r) {
      return lumiColorTwist32f_8u_AC4IR(ds<Lum8u>(b), b.dstStep, r, gT); }));
    t.push_back(make("8u_P3R", K8u, Sh::P3, false, [](const B& b, LumSize r) {
      return lumiColorTwist32f_8u_P3R(cp<Lum8u>(b), b.srcStep, dp<Lum8u>(b), b.dstStep, r, gT); }));
    t.push_back(make("8u_IP3R", K8u, Sh::P3, true, [](const B& b, LumSize r) {
      return lumiColorTwist32f_8u_IP3R(dp<Lum8u>(b), b.dstStep, r, gT); }));
    // 16u
    t.push_back(make("16u_C3R", K16u, Sh::C3, false, [](const B& b, LumSize r) {
      return lumiColorTwist32f_16u_C3R(cs<Lum16u>(b), b.srcStep, ds<Lum16u>(b), b.dstStep, r, gT); }));
    t.push_back(make("16u_C3IR", K16u, Sh::C3, true, [](const B& b, LumSize r) {
      return lumiColorTwist32f_16u_C3IR(ds<Lum16u>(b), b.dstStep, r, gT); }));
    t.push_back(make("16u_AC4R", K16u, Sh::AC4, false, [](const B& b, LumSize r) {
      return lumiColorTwist32f_16u_AC4R(cs<Lum16u>(b), b.srcStep, ds<Lum16u>(b), b.dstStep, r, gT); }));
    t.push_back(make("16u_AC4IR", K16u, Sh::AC4, true, [](const B& b, LumSize r) {
      return lumiColorTwist32f_16u_AC4IR(ds<Lum16u>(b), b.dstStep, r, gT); }));
    t.push_back(make("16u_P3R", K16u, Sh::P3, false, [](const B& b, LumSize r) {
      return lumiColorTwist32f_16u_P3R(cp<Lum16u>(b), b.srcStep, dp<Lum16u>(b), b.dstStep, r, gT); }));
    t.push_back(make("16u_IP3R", K16u, Sh::P3, true, [](const B& b, LumSize r) {
      return lumiColorTwist32f_16u_IP3R(dp<Lum16u>(b), b.dstStep, r, gT); }));
    // 16s
    t.push_back(make("16s_C3R", K16s, Sh::C3, false, [](const B& b, LumSize r) {
      return lumiColorTwist32f_16s_C3R(cs<Lum16s>(b), b.srcStep, ds<Lum16s>(b), b.dstStep, r, gT); }));
    t.push_back(make("16s_C3IR", K16s, Sh::C3, true, [](const B& b, LumSize r) {
      return lumiColorTwist32f_16s_C3IR(ds<Lum16s>(b), b.dstStep, r, gT); }));
    t.push_back(make("16s_AC4R", K16s, Sh::AC4, false, [](const B& b, LumSize r) {
      return lumiColorTwist32f_16s_AC4R(cs<Lum16s>(b), b.srcStep, ds<Lum16s>(b), b.dstStep, r, gT); }));
    t.push_back(make("16s_AC4IR", K16s, Sh::AC4, true, [](const B& b, LumSize r) {
      return lumiColorTwist32f_16s_AC4IR(ds<Lum16s>(b), b.dstStep, r, gT); }));
    t.push_back(make("16s_P3R", K16s, Sh::P3, false, [](const B& b, LumSize r) {
      return lumiColorTwist32f_16s_P3R(cp<Lum16s>(b), b.srcStep, dp<Lum16s>(b), b.dstStep, r, gT); }));
    t.push_back(make("16s_IP3R", K16s, Sh::P3, true, [](const B& b, LumSize r) {
      return lumiColorTwist32f_16s_IP3R(dp<Lum16s>(b), b.dstStep, r, gT); }));
    return t;
  }();
  return v;
}

// A map with mixed signs, offsets and saturation both ways, and its 4x4 twin.
const Lum32f kMixed[3][4] = {{0.299f, 0.587f, 0.114f, 10.5f}, {-1.25f, 0.75f, 2.5f, -20.25f}, {0.5f, -0.5f, 1.0f, 128.0f}};
const Lum32f kMixed4[4][4] = {{0.299f, 0.587f, 0.114f, 0.25f}, {-1.25f, 0.75f, 2.5f, -2.0f},
                              {0.5f, -0.5f, 1.0f, 3.0f}, {0.1f, 0.2f, 0.3f, 0.4f}};
// Exact maps: out = (2 s1 - 100, s2 + 0.5, 255 - s0), and (2 s1, s2, -s0, 3 s3).
const Lum32f kExact[3][4] = {{0, 2, 0, -100}, {0, 0, 1, 0.5f}, {-1, 0, 0, 255}};
const Lum32f kExact4[4][4] = {{0, 2, 0, 0}, {0, 0, 1, 0}, {-1, 0, 0, 0}, {0, 0, 0, 3}};

// Sets the matrices for a scope.
struct UseMatrices {
  const Lum32f (*t)[4], (*t4)[4];
  UseMatrices(const Lum32f (*a)[4], const Lum32f (*a4)[4]) : t(gT), t4(gT4) {
    gT = a;
    gT4 = a4;
  }
  ~UseMatrices() {
    gT = t;
    gT4 = t4;
  }
};

// Sample c of pixel x, row y, as a double, and its image position.
struct Pos {
  int plane;
  int offset;
};
Pos posOf(const TwistCase& c, int x, int ch) {
  const int s = kSize[c.kind];
  if (c.shape == Sh::P3) return {ch, x * s};
  return {0, (x * (c.shape == Sh::C3 ? 3 : 4) + ch) * s};
}
double sampleAt(const std::vector<GuardedImage>& img, const TwistCase& c, int x, int y, int ch) {
  const Pos p = posOf(c, x, ch);
  const uint8_t* q = img[size_t(p.plane)].row(y) + p.offset;
  switch (c.kind) {
    case K8u: return *q;
    case K16u: { uint16_t v; std::memcpy(&v, q, 2); return v; }
    case K16s: { int16_t v; std::memcpy(&v, q, 2); return v; }
    default: { float v; std::memcpy(&v, q, 4); return v; }
  }
}
double lowLimit(Kind k) { return k == K8u || k == K16u ? 0 : (k == K16s ? -32768 : -INFINITY); }
double highLimit(Kind k) { return k == K8u ? 255 : (k == K16u ? 65535 : (k == K16s ? 32767 : INFINITY)); }
double clampTo(Kind k, double v) { return std::min(std::max(v, lowLimit(k)), highLimit(k)); }
int channels(const TwistCase& c) { return c.shape == Sh::C4 ? 4 : 3; }

// Runs one call of the case at the size; fills the source by `fill` (random bytes when empty).
struct TwistRun {
  CallImages ci;
  LumStatus status;
  TwistRun(const TwistCase& c, LumSize roi, const FillFn& fill, uint32_t seed) : ci(withFill(c.fc, fill), roi) {
    std::mt19937 rng(seed);
    ci.randomizeSource(rng);
    ci.fillDestination(0x5A);
    status = c.fc.call(ci.buffers(), roi);
  }
  static FnCase withFill(FnCase fc, const FillFn& f) {
    if (f) fc.fillSource = f;
    return fc;
  }
  double out(const TwistCase& c, int x, int y, int ch) const { return sampleAt(ci.dst, c, x, y, ch); }
  double in(const TwistCase& c, int x, int y, int ch) const { return sampleAt(ci.src, c, x, y, ch); }
};

}  // namespace

TEST(Twist, RefusalsInCheckOrderLeaveDestinationUntouched) {
  UseMatrices m(kMixed, kMixed4);
  for (const auto& c : cases()) checkRefusals(c.fc);
}

TEST(Twist, NullMatrixAndBadStepsAreRefusedInOrder) {
  for (const auto& c : cases()) {
    SCOPED_TRACE(c.fc.name);
    const LumSize good{9, 3};
    CallImages ci(c.fc, good);
    std::mt19937 rng(2);
    ci.randomizeSource(rng);
    ci.fillDestination(0);
    const auto before = ci.destinationBytes();
    {
      UseMatrices none(nullptr, nullptr);
      EXPECT_EQ(c.fc.call(ci.buffers(), good), lumStatusNullPointer);
      EXPECT_EQ(c.fc.call(ci.buffers(), LumSize{0, 3}), lumStatusNullPointer);
    }
    UseMatrices m(kMixed, kMixed4);
    for (int step : {0, -1, -4096}) {
      SCOPED_TRACE(testing::Message() << "step " << step);
      for (int which : {0, 1}) {
        if (which == 0 && c.fc.inPlace) continue;  // one step only
        Buffers b = ci.buffers();
        (which == 0 ? b.srcStep : b.dstStep) = step;
        EXPECT_EQ(c.fc.call(b, good), lumStatusBadStep);
        EXPECT_EQ(c.fc.call(b, LumSize{9, 0}), lumStatusBadSize) << "size before step";
        Buffers n = b;
        if (c.fc.inPlace) n.dst = nullptr;
        else n.src = nullptr;
        EXPECT_EQ(c.fc.call(n, good), lumStatusNullPointer) << "null before step";
      }
    }
    EXPECT_EQ(ci.destinationBytes(), before);
  }
}

TEST(Twist, VectorBlocksMatchScalarTwinsAtEveryWidth) {
  UseMatrices m(kMixed, kMixed4);
  for (const auto& c : cases()) checkVectorMatchesScalar(c.fc, blockWidths(), 3);
}

TEST(Twist, AlignmentDoesNotChangeSamples) {
  UseMatrices m(kMixed, kMixed4);
  for (const auto& c : cases()) checkAlignmentInvariance(c.fc, {1, 3, 4, 5, 8, 17, 64, 100}, 3);
}

// Every column, in blocks and tails, at widths 1..40 and a large one: the exact
// maps give known samples, saturated and rounded (s2 + 0.5 ties to even), and
// alpha stays as it was in the destination.
TEST(Twist, EveryColumnGivesTheExactMap) {
  UseMatrices m(kExact, kExact4);
  std::vector<int> widths;
  for (int w = 1; w <= 40; ++w) widths.push_back(w);
  widths.push_back(1001);
  for (const auto& c : cases()) {
    SCOPED_TRACE(c.fc.name);
    for (int w : widths) {
      const TwistRun r(c, LumSize{w, 2}, c.kind == K32f ? FillFn(fillWhole) : FillFn(), uint32_t(w));
      ASSERT_EQ(r.status, lumStatusOk);
      for (int y = 0; y < 2; ++y)
        for (int x = 0; x < w; ++x) {
          const double s0 = r.in(c, x, y, 0), s1 = r.in(c, x, y, 1), s2 = r.in(c, x, y, 2);
          double want[4];
          if (c.shape == Sh::C4) {
            want[0] = 2 * s1, want[1] = s2, want[2] = -s0, want[3] = 3 * r.in(c, x, y, 3);
          } else {
            const double odd = std::fmod(std::fabs(s2), 2.0) == 1.0 ? 1.0 : 0.0;
            want[0] = clampTo(c.kind, 2 * s1 - 100);
            want[1] = c.kind == K32f ? s2 + 0.5 : clampTo(c.kind, s2 + odd);
            want[2] = clampTo(c.kind, 255 - s0);
          }
          for (int ch = 0; ch < channels(c); ++ch)
            ASSERT_EQ(r.out(c, x, y, ch), want[ch]) << "width " << w << " x " << x << " channel " << ch;
          if (c.shape == Sh::AC4) {
            const Pos p = posOf(c, x, 3);
            const uint8_t* a = r.ci.dst[0].row(y) + p.offset;
            const uint8_t* orig = r.ci.src[0].row(y) + p.offset;
            for (int i = 0; i < kSize[c.kind]; ++i)
              ASSERT_EQ(a[i], c.fc.inPlace ? orig[i] : 0x5A) << "alpha of x " << x;
          }
        }
    }
  }
}

// A zero matrix with an offset column gives the offset everywhere, whatever the
// input; integer forms clamp, round half to even, and a NaN stores the upper limit.
TEST(Twist, ZeroMatrixGivesTheOffset) {
  struct Row {
    Kind kind;
    float offset;
    double want;
  };
  const float nan = std::numeric_limits<float>::quiet_NaN();
  const Row rows[] = {
      {K8u, 255.5f, 255},     {K8u, 0.5f, 0},         {K8u, 1.5f, 2},        {K8u, 2.5f, 2},
      {K8u, -7.0f, 0},        {K8u, 300.0f, 255},     {K8u, nan, 255},       {K16u, 65535.5f, 65535},
      {K16u, 0.5f, 0},        {K16u, 1.5f, 2},        {K16u, -1.0f, 0},      {K16u, nan, 65535},
      {K16s, -32768.5f, -32768}, {K16s, 32767.5f, 32767}, {K16s, -2.5f, -2}, {K16s, -1.5f, -2},
      {K16s, -40000.0f, -32768}, {K16s, nan, 32767},  {K32f, -3.25f, -3.25}, {K32f, 1e30f, 1e30f},
  };
  for (const Row& row : rows) {
    const Lum32f t[3][4] = {{0, 0, 0, row.offset}, {0, 0, 0, row.offset}, {0, 0, 0, row.offset}};
    UseMatrices m(t, kExact4);
    for (const auto& c : cases()) {
      if (c.kind != row.kind || c.shape == Sh::C4) continue;
      SCOPED_TRACE(testing::Message() << c.fc.name << " offset " << row.offset);
      const TwistRun r(c, LumSize{37, 2}, c.kind == K32f ? FillFn(fillWhole) : FillFn(), 9);
      ASSERT_EQ(r.status, lumStatusOk);
      for (int y = 0; y < 2; ++y)
        for (int x = 0; x < 37; ++x)
          for (int ch = 0; ch < 3; ++ch) ASSERT_EQ(r.out(c, x, y, ch), row.want) << "x " << x;
    }
  }
}

// In float forms a NaN sample stays NaN under a zero matrix: NaN x 0 is NaN.
TEST(Twist, NaNSampleGivesNaNInFloatForms) {
  const Lum32f t[3][4] = {{0, 0, 0, 7}, {0, 0, 0, 7}, {0, 0, 0, 7}};
  const Lum32f zero4[4][4] = {};
  UseMatrices m(t, zero4);
  const FillFn nanAt5 = [](GuardedImage& g, std::mt19937& rng) {
    fillWhole(g, rng);
    const float nan = std::numeric_limits<float>::quiet_NaN();
    for (int y = 0; y < g.height(); ++y)
      for (int x = 5 * 4; x + 4 <= g.rowBytes(); x += 17 * 4) std::memcpy(g.row(y) + x, &nan, 4);
  };
  for (const auto& c : cases()) {
    if (c.kind != K32f) continue;
    SCOPED_TRACE(c.fc.name);
    const TwistRun r(c, LumSize{21, 2}, nanAt5, 1);
    for (int y = 0; y < 2; ++y)
      for (int x = 0; x < 21; ++x) {
        bool anyNaN = false;
        for (int ch = 0; ch < channels(c); ++ch) anyNaN |= std::isnan(r.in(c, x, y, ch));
        for (int ch = 0; ch < channels(c); ++ch) {
          const double o = r.out(c, x, y, ch);
          if (anyNaN) EXPECT_TRUE(std::isnan(o)) << "x " << x;
          else EXPECT_EQ(o, c.shape == Sh::C4 ? 0.0 : 7.0) << "x " << x;
        }
      }
  }
}

// The sums run in the stated order: (offset + s0 m0) + (s2 m2 + s1 m1) gives 1
// where a left-to-right sum gives 0; the 4x4 map ((s0 m0 + s1 m1) + s2 m2) + s3 m3
// gives 0 where a pairwise sum gives 1.
TEST(Twist, SumsRunInTheirOrder) {
  const float big = 16777216.0f;
  const Lum32f t[3][4] = {{big, 1, -big, 1}, {big, 1, -big, 1}, {big, 1, -big, 1}};
  const Lum32f t4[4][4] = {{big, 1, 1, -big}, {big, 1, 1, -big}, {big, 1, 1, -big}, {big, 1, 1, -big}};
  UseMatrices m(t, t4);
  const FillFn ones = [](GuardedImage& g, std::mt19937&) {
    const float one = 1.0f;
    for (int y = 0; y < g.height(); ++y)
      for (int x = 0; x + 4 <= g.rowBytes(); x += 4) std::memcpy(g.row(y) + x, &one, 4);
  };
  for (const auto& c : cases()) {
    if (c.kind != K32f) continue;
    SCOPED_TRACE(c.fc.name);
    const TwistRun r(c, LumSize{11, 1}, ones, 1);
    for (int x = 0; x < 11; ++x)
      for (int ch = 0; ch < channels(c); ++ch) ASSERT_EQ(r.out(c, x, 0, ch), c.shape == Sh::C4 ? 0.0 : 1.0);
  }
}

// Steps of 4 W bytes in the 4x4 form run W x H pixels as one contiguous run.
TEST(Twist, FourByFourWithQuarterStepsRunsOneRun) {
  const int w = 5, h = 3, n = w * h;
  std::vector<float> src(size_t(4 * n)), dst(size_t(4 * n) + 4, -9.0f), ref(size_t(4 * n) + 4, -9.0f);
  for (size_t i = 0; i < src.size(); ++i) src[i] = float(i) - 20.0f;
  ASSERT_EQ(lumiColorTwist_32f_C4R(src.data(), 4 * w, dst.data(), 4 * w, LumSize{w, h}, kExact4), lumStatusOk);
  ASSERT_EQ(lumiColorTwist_32f_C4R(src.data(), 16 * n, ref.data(), 16 * n, LumSize{n, 1}, kExact4), lumStatusOk);
  EXPECT_EQ(dst, ref);
  EXPECT_EQ(dst[size_t(4 * n)], -9.0f) << "written past the run";
  EXPECT_EQ(dst[4], 2 * src[5]);
}

// Every call leaves the caller's rounding mode and control words as they were, and
// the integer forms round to nearest under any caller mode.
TEST(Twist, CallerFloatingPointStateIsKept) {
  UseMatrices m(kMixed, kMixed4);
  for (const auto& c : cases()) {
    SCOPED_TRACE(c.fc.name);
    std::vector<uint8_t> nearest;
    for (int mode : kRoundingModes)
      for (bool ftz : {false, true}) {
        SCOPED_TRACE(testing::Message() << "mode " << mode << " ftz " << ftz);
        CallImages ci(c.fc, LumSize{23, 2});
        std::mt19937 rng(4);
        ci.randomizeSource(rng);
        ci.fillDestination(0);
        LumStatus st;
        ControlWords before, after;
        {
          FpModeScope scope(mode, ftz);
          before = controlWords();
          st = c.fc.call(ci.buffers(), LumSize{23, 2});
          after = controlWords();
        }
        EXPECT_EQ(st, lumStatusOk);
        EXPECT_TRUE(before == after) << "control word changed";
        if (c.kind != K32f) {
          if (nearest.empty()) nearest = ci.destinationBytes();
          else EXPECT_EQ(ci.destinationBytes(), nearest) << "the caller's mode reached the rounding";
        }
      }
  }
}
