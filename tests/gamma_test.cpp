// Gamma correction: the harness table of all forms (refusals, vector against
// scalar, guard pages and canaries, alignment), the step and range checks,
// known answers of the tables and of the 32f curves, the 384-float chunks,
// alpha, and the caller's floating-point state.
#include <gtest/gtest.h>

#include <cfenv>
#include <cmath>
#include <cstring>
#include <limits>

#include "frame/fp_control.h"
#include "lumcc.h"
#include "support/family.h"

using namespace lumtest;

namespace {

using B = Buffers;
template <class T>
const T* const* SP(const B& b) { return static_cast<const T* const*>(b.src); }
template <class T>
T* const* DP(const B& b) { return static_cast<T* const*>(b.dst); }

const float kNaN = std::numeric_limits<float>::quiet_NaN();
const float kInf = std::numeric_limits<float>::infinity();

// Floats around the range 0..1 with the edges: +-0, NaN, +-inf, negatives,
// values far out of range, values at the breaks.
FillFn floatsWithEdges() {
  return [](GuardedImage& g, std::mt19937& rng) {
    const float edges[] = {0.0f, -0.0f, kNaN, kInf, -kInf, -0.5f, 7.0f, 0.018f, 0.0812f, 1.0f, 1e-30f, 3e38f};
    std::uniform_real_distribution<float> dist(-0.2f, 1.2f);
    for (int y = 0; y < g.height(); ++y)
      for (int x = 0; x + 4 <= g.rowBytes(); x += 4) {
        const uint32_t r = rng();
        const float v = r % 13 == 0 ? edges[r / 13 % 12] : dist(rng);
        std::memcpy(g.row(y) + x, &v, 4);
      }
  };
}

// A 32f entry with its range left open.
using RangedFn = std::function<LumStatus(const B&, LumSize, float, float)>;

struct GammaCase {
  FnCase fc;
  RangedFn ranged;  // 32f only
};

enum class Shape { C3, AC4, P3 };

FnCase shaped(const char* name, Shape shape, int elem, bool inPlace, CallFn call) {
  FnCase c;
  c.name = name;
  const ImageShape img = shape == Shape::P3 ? planarImg(3, elem) : packedImg(elem * (shape == Shape::AC4 ? 4 : 3));
  c.src = img;
  c.dst = img;
  c.inPlace = inPlace;
  c.call = std::move(call);
  c.stepAlign = elem;
  if (elem == 4) c.fillSource = floatsWithEdges();
  return c;
}

GammaCase fixed(const char* name, Shape shape, int elem, bool inPlace, CallFn call) {
  return {shaped(name, shape, elem, inPlace, std::move(call)), {}};
}
GammaCase ranged(const char* name, Shape shape, bool inPlace, RangedFn f) {
  GammaCase g{shaped(name, shape, 4, inPlace, [f](const B& b, LumSize r) { return f(b, r, 0.0f, 1.0f); }), f};
  return g;
}

#define PACKED(fn, T) [](const B& b, LumSize r) { return fn(S<T>(b), b.srcStep, D<T>(b), b.dstStep, r); }
#define PACKED_I(fn, T) [](const B& b, LumSize r) { return fn(D<T>(b), b.dstStep, r); }
#define PLANAR(fn, T) [](const B& b, LumSize r) { return fn(SP<T>(b), b.srcStep, DP<T>(b), b.dstStep, r); }
#define PLANAR_I(fn, T) [](const B& b, LumSize r) { return fn(DP<T>(b), b.dstStep, r); }
#define PACKED_F(fn) \
  [](const B& b, LumSize r, float lo, float hi) { return fn(S<Lum32f>(b), b.srcStep, D<Lum32f>(b), b.dstStep, r, lo, hi); }
#define PACKED_FI(fn) [](const B& b, LumSize r, float lo, float hi) { return fn(D<Lum32f>(b), b.dstStep, r, lo, hi); }
#define PLANAR_F(fn) \
  [](const B& b, LumSize r, float lo, float hi) { return fn(SP<Lum32f>(b), b.srcStep, DP<Lum32f>(b), b.dstStep, r, lo, hi); }
#define PLANAR_FI(fn) [](const B& b, LumSize r, float lo, float hi) { return fn(DP<Lum32f>(b), b.dstStep, r, lo, hi); }

const std::vector<GammaCase>& cases() {
  static const std::vector<GammaCase> all = {
      fixed("GammaFwd_8u_C3R", Shape::C3, 1, false, PACKED(lumiGammaFwd_8u_C3R, Lum8u)),
      fixed("GammaFwd_8u_C3IR", Shape::C3, 1, true, PACKED_I(lumiGammaFwd_8u_C3IR, Lum8u)),
      fixed("GammaFwd_8u_AC4R", Shape::AC4, 1, false, PACKED(lumiGammaFwd_8u_AC4R, Lum8u)),
      fixed("GammaFwd_8u_AC4IR", Shape::AC4, 1, true, PACKED_I(lumiGammaFwd_8u_AC4IR, Lum8u)),
      fixed("GammaFwd_8u_P3R", Shape::P3, 1, false, PLANAR(lumiGammaFwd_8u_P3R, Lum8u)),
      fixed("GammaFwd_8u_IP3R", Shape::P3, 1, true, PLANAR_I(lumiGammaFwd_8u_IP3R, Lum8u)),
      fixed("GammaFwd_16u_C3R", Shape::C3, 2, false, PACKED(lumiGammaFwd_16u_C3R, Lum16u)),
      fixed("GammaFwd_16u_C3IR", Shape::C3, 2, true, PACKED_I(lumiGammaFwd_16u_C3IR, Lum16u)),
      fixed("GammaFwd_16u_AC4R", Shape::AC4, 2, false, PACKED(lumiGammaFwd_16u_AC4R, Lum16u)),
      fixed("GammaFwd_16u_AC4IR", Shape::AC4, 2, true, PACKED_I(lumiGammaFwd_16u_AC4IR, Lum16u)),
      fixed("GammaFwd_16u_P3R", Shape::P3, 2, false, PLANAR(lumiGammaFwd_16u_P3R, Lum16u)),
      fixed("GammaFwd_16u_IP3R", Shape::P3, 2, true, PLANAR_I(lumiGammaFwd_16u_IP3R, Lum16u)),
      fixed("GammaInv_8u_C3R", Shape::C3, 1, false, PACKED(lumiGammaInv_8u_C3R, Lum8u)),
      fixed("GammaInv_8u_C3IR", Shape::C3, 1, true, PACKED_I(lumiGammaInv_8u_C3IR, Lum8u)),
      fixed("GammaInv_8u_AC4R", Shape::AC4, 1, false, PACKED(lumiGammaInv_8u_AC4R, Lum8u)),
      fixed("GammaInv_8u_AC4IR", Shape::AC4, 1, true, PACKED_I(lumiGammaInv_8u_AC4IR, Lum8u)),
      fixed("GammaInv_8u_P3R", Shape::P3, 1, false, PLANAR(lumiGammaInv_8u_P3R, Lum8u)),
      fixed("GammaInv_8u_IP3R", Shape::P3, 1, true, PLANAR_I(lumiGammaInv_8u_IP3R, Lum8u)),
      fixed("GammaInv_16u_C3R", Shape::C3, 2, false, PACKED(lumiGammaInv_16u_C3R, Lum16u)),
      fixed("GammaInv_16u_C3IR", Shape::C3, 2, true, PACKED_I(lumiGammaInv_16u_C3IR, Lum16u)),
      fixed("GammaInv_16u_AC4R", Shape::AC4, 2, false, PACKED(lumiGammaInv_16u_AC4R, Lum16u)),
      fixed("GammaInv_16u_AC4IR", Shape::AC4, 2, true, PACKED_I(lumiGammaInv_16u_AC4IR, Lum16u)),
      fixed("GammaInv_16u_P3R", Shape::P3, 2, false, PLANAR(lumiGammaInv_16u_P3R, Lum16u)),
      fixed("GammaInv_16u_IP3R", Shape::P3, 2, true, PLANAR_I(lumiGammaInv_16u_IP3R, Lum16u)),
      ranged("GammaFwd_32f_C3R", Shape::C3, false, PACKED_F(lumiGammaFwd_32f_C3R)),
      ranged("GammaFwd_32f_C3IR", Shape::C3, true, PACKED_FI(lumiGammaFwd_32f_C3IR)),
      ranged("GammaFwd_32f_AC4R", Shape::AC4, false, PACKED_F(lumiGammaFwd_32f_AC4R)),
      ranged("GammaFwd_32f_AC4IR", Shape::AC4, true, PACKED_FI(lumiGammaFwd_32f_AC4IR)),
      ranged("GammaFwd_32f_P3R", Shape::P3, false, PLANAR_F(lumiGammaFwd_32f_P3R)),
      ranged("GammaFwd_32f_IP3R", Shape::P3, true, PLANAR_FI(lumiGammaFwd_32f_IP3R)),
      ranged("GammaInv_32f_C3R", Shape::C3, false, PACKED_F(lumiGammaInv_32f_C3R)),
      ranged("GammaInv_32f_C3IR", Shape::C3, true, PACKED_FI(lumiGammaInv_32f_C3IR)),
      ranged("GammaInv_32f_AC4R", Shape::AC4, false, PACKED_F(lumiGammaInv_32f_AC4R)),
      ranged("GammaInv_32f_AC4IR", Shape::AC4, true, PACKED_FI(lumiGammaInv_32f_AC4IR)),
      ranged("GammaInv_32f_P3R", Shape::P3, false, PLANAR_F(lumiGammaInv_32f_P3R)),
      ranged("GammaInv_32f_IP3R", Shape::P3, true, PLANAR_FI(lumiGammaInv_32f_IP3R)),
  };
  return all;
}

// Widths across the blocks and the 384-float chunks.
std::vector<int> gammaWidths() {
  std::vector<int> w = blockWidths();
  for (int x : {255, 256, 257, 383, 384, 385}) w.push_back(x);
  return w;
}

TEST(Gamma, RefusalsLeaveTheDestinationUntouched) {
  for (const auto& g : cases()) checkRefusals(g.fc);
}

TEST(Gamma, VectorMatchesScalarAtEveryWidth) {
  for (const auto& g : cases()) checkVectorMatchesScalar(g.fc, gammaWidths(), 3);
}

TEST(Gamma, AlignmentDoesNotChangeResults) {
  for (const auto& g : cases()) checkAlignmentInvariance(g.fc, {1, 5, 17, 129}, 2);
}

// Steps below 1 are refused (after null and size); negative steps too.
TEST(Gamma, StepsAreChecked) {
  for (const auto& g : cases()) {
    SCOPED_TRACE(g.fc.name);
    CallImages ci(g.fc, LumSize{8, 3});
    std::mt19937 rng(1);
    ci.randomizeSource(rng);
    ci.fillDestination(0x44);
    const auto before = ci.destinationBytes();
    for (int bad : {0, -1, -ci.dstSteps[0]}) {
      B b = ci.buffers();
      b.dstStep = bad;
      EXPECT_EQ(g.fc.call(b, LumSize{8, 3}), lumStatusBadStep) << "destination step " << bad;
      EXPECT_EQ(g.fc.call(b, LumSize{0, 3}), lumStatusBadSize) << "size before step";
      if (!g.fc.inPlace) {
        B s = ci.buffers();
        s.srcStep = bad;
        EXPECT_EQ(g.fc.call(s, LumSize{8, 3}), lumStatusBadStep) << "source step " << bad;
      }
    }
    EXPECT_EQ(ci.destinationBytes(), before);
    EXPECT_TRUE(ci.canariesIntact());
  }
}

// A range whose top does not exceed its bottom is refused before any pointer is looked at.
TEST(Gamma, RangeIsCheckedFirst) {
  for (const auto& g : cases()) {
    if (!g.ranged) continue;
    SCOPED_TRACE(g.fc.name);
    CallImages ci(g.fc, LumSize{4, 2});
    std::mt19937 rng(2);
    ci.randomizeSource(rng);
    ci.fillDestination(0);
    const auto before = ci.destinationBytes();
    B null;
    null.srcStep = null.dstStep = 0;
    for (auto [lo, hi] : {std::pair{1.0f, 1.0f}, {2.0f, 1.0f}, {0.0f, -0.0f}, {kInf, -kInf}}) {
      EXPECT_EQ(g.ranged(null, LumSize{0, 0}, lo, hi), lumStatusBadRange) << lo << ".." << hi;
      EXPECT_EQ(g.ranged(ci.buffers(), LumSize{4, 2}, lo, hi), lumStatusBadRange) << lo << ".." << hi;
    }
    EXPECT_EQ(g.ranged(null, LumSize{4, 2}, 0.0f, 1.0f), lumStatusNullPointer);
    EXPECT_EQ(ci.destinationBytes(), before);
    // A NaN end is not "at or below": the range goes through.
    EXPECT_EQ(g.ranged(ci.buffers(), LumSize{4, 2}, 0.0f, kNaN), lumStatusOk);
  }
}

// ---- tables

// Runs an 8u or 16u C3 function over every sample value, 3 per pixel.
template <class T>
std::vector<T> tableOf(LumStatus (*fn)(const T*, int, T*, int, LumSize)) {
  const int n = int(sizeof(T)) == 1 ? 256 : 65536;
  std::vector<T> in(size_t(n + 2)), out(in.size());
  for (int i = 0; i < n; ++i) in[size_t(i)] = T(i);
  const int w = (n + 2) / 3;
  EXPECT_EQ(fn(in.data(), 3 * w * int(sizeof(T)), out.data(), 3 * w * int(sizeof(T)), LumSize{w, 1}), lumStatusOk);
  out.resize(size_t(n));
  return out;
}

TEST(Gamma, TablesHoldTheTellingValues) {
  struct Telling {
    const char* name;
    std::vector<int> got;
    std::vector<int> head, tail;
  };
  auto widen = [](const auto& v) { return std::vector<int>(v.begin(), v.end()); };
  const Telling t[] = {
      {"Fwd8u", widen(tableOf<Lum8u>(lumiGammaFwd_8u_C3R)), {0, 4, 9, 14, 18, 23, 27, 30, 34, 37}, {254, 254, 255, 255}},
      {"Inv8u", widen(tableOf<Lum8u>(lumiGammaInv_8u_C3R)), {0, 0, 0, 1, 1, 1, 1, 2}, {247, 249, 251, 253, 255}},
      {"Fwd16u", widen(tableOf<Lum16u>(lumiGammaFwd_16u_C3R)), {0, 4, 9, 14, 18, 22, 27, 32, 36, 40, 45, 50}, {65535}},
      {"Inv16u", widen(tableOf<Lum16u>(lumiGammaInv_16u_C3R)), {0}, {65531, 65533, 65535}},
  };
  for (const auto& x : t) {
    SCOPED_TRACE(x.name);
    ASSERT_GE(x.got.size(), x.head.size());
    EXPECT_EQ(std::vector<int>(x.got.begin(), x.got.begin() + long(x.head.size())), x.head);
    EXPECT_EQ(std::vector<int>(x.got.end() - long(x.tail.size()), x.got.end()), x.tail);
  }
  // The inverse steps down at its break (0.0812 x 65535 = 5321.4): 1182 then 1179.
  EXPECT_EQ(t[3].got[5321], 1182);
  EXPECT_EQ(t[3].got[5322], 1179);
}

// Both curves rise; the one exception is the inverse's step down at its break.
TEST(Gamma, TablesRiseExceptAtTheInverseBreak) {
  const auto fwd = tableOf<Lum16u>(lumiGammaFwd_16u_C3R);
  const auto inv = tableOf<Lum16u>(lumiGammaInv_16u_C3R);
  for (size_t i = 1; i < fwd.size(); ++i) ASSERT_LE(fwd[i - 1], fwd[i]) << i;
  for (size_t i = 1; i < inv.size(); ++i) {
    if (i != 5322) ASSERT_LE(inv[i - 1], inv[i]) << i;
  }
  // Forward then inverse comes back within a few code values above the linear part.
  for (size_t i = 6000; i < fwd.size(); i += 97) ASSERT_NEAR(int(inv[fwd[i]]), int(i), 8) << i;
}

// C3, AC4 and P3, in place and copying, give each colour sample the same value;
// AC4 leaves alpha alone (the destination's in AC4R, the image's own in AC4IR).
TEST(Gamma, LayoutsAgreeAndAlphaIsKept) {
  const int w = 37;
  std::vector<Lum8u> c3(3 * w), ac4(4 * w), p[3];
  std::mt19937 rng(8);
  for (auto& v : c3) v = Lum8u(rng());
  for (int k = 0; k < 3; ++k) p[k].resize(w);
  for (int i = 0; i < w; ++i)
    for (int k = 0; k < 3; ++k) ac4[size_t(4 * i + k)] = p[k][size_t(i)] = c3[size_t(3 * i + k)];
  for (int i = 0; i < w; ++i) ac4[size_t(4 * i + 3)] = Lum8u(200 + i % 7);
  const LumSize roi{w, 1};
  std::vector<Lum8u> outC3(c3.size()), outAc4(ac4.size(), 0x5C), inAc4 = ac4, inC3 = c3, outP[3], inP[3];
  ASSERT_EQ(lumiGammaInv_8u_C3R(c3.data(), 3 * w, outC3.data(), 3 * w, roi), lumStatusOk);
  ASSERT_EQ(lumiGammaInv_8u_AC4R(ac4.data(), 4 * w, outAc4.data(), 4 * w, roi), lumStatusOk);
  ASSERT_EQ(lumiGammaInv_8u_AC4IR(inAc4.data(), 4 * w, roi), lumStatusOk);
  ASSERT_EQ(lumiGammaInv_8u_C3IR(inC3.data(), 3 * w, roi), lumStatusOk);
  Lum8u* po[3];
  Lum8u* pi[3];
  const Lum8u* ps[3];
  for (int k = 0; k < 3; ++k) {
    outP[k].resize(w);
    inP[k] = p[k];
    po[k] = outP[k].data();
    pi[k] = inP[k].data();
    ps[k] = p[k].data();
  }
  ASSERT_EQ(lumiGammaInv_8u_P3R(ps, w, po, w, roi), lumStatusOk);
  ASSERT_EQ(lumiGammaInv_8u_IP3R(pi, w, roi), lumStatusOk);
  EXPECT_EQ(inC3, outC3);
  for (int i = 0; i < w; ++i) {
    for (int k = 0; k < 3; ++k) {
      const Lum8u want = outC3[size_t(3 * i + k)];
      ASSERT_EQ(outAc4[size_t(4 * i + k)], want);
      ASSERT_EQ(inAc4[size_t(4 * i + k)], want);
      ASSERT_EQ(outP[k][size_t(i)], want);
      ASSERT_EQ(inP[k][size_t(i)], want);
    }
    ASSERT_EQ(outAc4[size_t(4 * i + 3)], 0x5C) << "AC4R wrote alpha";
    ASSERT_EQ(inAc4[size_t(4 * i + 3)], 200 + i % 7) << "AC4IR wrote alpha";
  }
}

// ---- 32f

using FwdFn = LumStatus (*)(const Lum32f*, int, Lum32f*, int, LumSize, Lum32f, Lum32f);

// One pixel of three equal samples x through a C3 or AC4 copying form.
float onePixel(FwdFn fn, bool ac4, float x, float lo, float hi) {
  float in[4] = {x, x, x, 5.0f}, out[4] = {0, 0, 0, -9.0f};
  EXPECT_EQ(fn(in, 16, out, 16, LumSize{1, 1}, lo, hi), lumStatusOk);
  EXPECT_EQ(out[0], out[1]);
  EXPECT_EQ(out[1], out[2]);
  if (ac4) {
    EXPECT_EQ(out[3], -9.0f) << "alpha written";
  }
  return out[0];
}

TEST(Gamma, FloatKnownAnswers) {
  struct Case {
    const char* name;
    FwdFn fn;
    bool ac4;
    float lo, hi, x, want, tol;
  };
  // Values of the rules worked by hand: forward 1.099 x^0.45 - 0.099 and 4.5 x,
  // inverse ((v + 0.099) / 1.099)^(1 / 0.45) and v / 4.5.
  const Case c[] = {
      {"fwd C3 top", lumiGammaFwd_32f_C3R, false, 0, 1, 1.0f, 1.0f, 5e-7f},
      {"fwd C3 linear", lumiGammaFwd_32f_C3R, false, 0, 1, 0.01f, 0.045f, 1e-8f},
      {"fwd C3 half", lumiGammaFwd_32f_C3R, false, 0, 1, 0.5f, 0.7055150f, 1e-6f},
      {"fwd C3 no clamp", lumiGammaFwd_32f_C3R, false, 0, 1, 2.0f, 1.4022782f, 2e-6f},
      {"fwd C3 linear below 0", lumiGammaFwd_32f_C3R, false, 0, 1, -1.0f, -4.5f, 0},
      {"fwd AC4 top", lumiGammaFwd_32f_AC4R, true, 0, 1, 1.0f, 1.0f, 5e-7f},
      {"fwd AC4 half", lumiGammaFwd_32f_AC4R, true, 0, 1, 0.5f, 0.7055150f, 1e-6f},
      // 0..255: AC4 scales (255 x forward(100 / 255)); C3 raises t = 100 itself.
      {"fwd AC4 0..255", lumiGammaFwd_32f_AC4R, true, 0, 255, 100.0f, 158.66053f, 2e-3f},
      {"fwd C3 0..255", lumiGammaFwd_32f_C3R, false, 0, 255, 100.0f, 2200.8202f, 2e-2f},
      // C3 tests t x R against 0.018: 0.01 x 255 is not below it.
      {"fwd C3 0..255 threshold", lumiGammaFwd_32f_C3R, false, 0, 255, 0.01f, 10.035755f, 5e-5f},
      {"fwd C3 offset range", lumiGammaFwd_32f_C3R, false, 10, 11, 10.5f, 10.705515f, 2e-6f},
      {"inv C3 top", lumiGammaInv_32f_C3R, false, 0, 1, 1.0f, 1.0f, 5e-7f},
      {"inv C3 linear", lumiGammaInv_32f_C3R, false, 0, 1, 0.045f, 0.01f, 1e-8f},
      {"inv C3 half", lumiGammaInv_32f_C3R, false, 0, 1, 0.7055150f, 0.5f, 2e-6f},
      {"inv C3 below break", lumiGammaInv_32f_C3R, false, 0, 1, 0.0811f, 0.0180222f, 1e-7f},
      {"inv C3 at break", lumiGammaInv_32f_C3R, false, 0, 1, 0.0812f, 0.0179894f, 2e-7f},
      {"inv AC4 0..255", lumiGammaInv_32f_AC4R, true, 0, 255, 158.66053f, 100.0f, 2e-3f},
      // C3 leaves the power unscaled: (((200 / 255) + 0.099) / 1.099)^(1 / 0.45).
      {"inv C3 0..255", lumiGammaInv_32f_C3R, false, 0, 255, 200.0f, 0.6153887f, 2e-6f},
  };
  for (const Case& k : c) {
    SCOPED_TRACE(k.name);
    const float got = onePixel(k.fn, k.ac4, k.x, k.lo, k.hi);
    EXPECT_NEAR(got, k.want, k.tol);
  }
  // The inverse break is a step down.
  EXPECT_GT(onePixel(lumiGammaInv_32f_C3R, false, 0.0811999f, 0, 1), onePixel(lumiGammaInv_32f_C3R, false, 0.0812f, 0, 1));
}

// Chunks of 384 floats change nothing: a wide row gives what its pixels give one by one.
TEST(Gamma, ChunksDoNotChangeTheSamples) {
  for (const auto& g : cases()) {
    if (!g.ranged) continue;
    SCOPED_TRACE(g.fc.name);
    for (int w : {127, 128, 129, 256, 257}) {
      const LumSize roi{w, 1};
      CallImages row(g.fc, roi);
      std::mt19937 rng{uint32_t(w)};
      row.randomizeSource(rng);
      row.fillDestination(0);
      ASSERT_EQ(g.ranged(row.buffers(), roi, -0.25f, 2.0f), lumStatusOk);
      const auto whole = row.destinationBytes();
      // Pixel by pixel through the same images' memory.
      CallImages one(g.fc, roi);
      for (size_t i = 0; i < one.src.size(); ++i) one.src[i].setBytes(row.src[i].bytes());
      one.fillDestination(0);
      const int bpp = int(g.fc.src.planes[0].bpp);
      for (int x = 0; x < w; ++x) {
        B b = one.buffers();
        std::vector<uint8_t*> sp(one.srcPtrs), dp(one.dstPtrs);
        for (auto& p : sp) p += ptrdiff_t(x) * bpp;
        for (auto& p : dp) p += ptrdiff_t(x) * bpp;
        if (g.fc.src.array) {
          b.src = sp.data();
          b.dst = dp.data();
        } else {
          b.src = sp[0];
          b.dst = dp[0];
        }
        ASSERT_EQ(g.ranged(b, LumSize{1, 1}, -0.25f, 2.0f), lumStatusOk);
      }
      ASSERT_EQ(one.destinationBytes(), whole) << "width " << w;
    }
  }
}

#if defined(__x86_64__) || defined(__i386__)
constexpr uint32_t kStickyFlags = 0x3F;  // the vector unit's exception flags
#else
constexpr uint32_t kStickyFlags = 0;
#endif

// Rounding mode, exception masks and flush modes come back as the caller set
// them (the sticky flags that the forms' own arithmetic raises are the caller's).
TEST(Gamma, FloatFormsKeepTheCallersControlWords) {
  for (const auto& g : cases()) {
    if (!g.ranged) continue;
    SCOPED_TRACE(g.fc.name);
    const LumSize roi{130, 2};
    CallImages ci(g.fc, roi);
    std::mt19937 rng(3);
    ci.randomizeSource(rng);
    ci.fillDestination(0);
    const lum::FpState start = lum::fpEnterExact();
    lum::fpRestore(start);
    std::fesetround(FE_UPWARD);
    lum::FpState caller = lum::fpEnterExact();
    caller.mxcsr |= kStickyFlags ? 0x8040u : 0u;  // flush to zero, denormals are zero
    lum::fpRestore(caller);
    ASSERT_EQ(g.ranged(ci.buffers(), roi, 0.0f, 1.0f), lumStatusOk);
    const lum::FpState after = lum::fpEnterExact();
    lum::fpRestore(after);
    lum::fpRestore(start);
    EXPECT_EQ(after.mxcsr & ~kStickyFlags, caller.mxcsr & ~kStickyFlags);
    EXPECT_EQ(after.x87, caller.x87);
  }
}

// ---- forward gamma then CbYCr 4:2:2

FnCase gammaCbYCr() {
  FnCase c;
  c.name = "RGBToCbYCr422Gamma_8u_C3C2R";
  c.src = packedImg(3);
  c.dst = packedImg(2);  // an odd last pixel writes Cb and Y
  c.call = [](const B& b, LumSize r) {
    return lumiRGBToCbYCr422Gamma_8u_C3C2R(b.srcPtr(), b.srcStep, b.dstPtr(), b.dstStep, r);
  };
  return c;
}

TEST(GammaCbYCr, RefusesAndStaysInsideTheRegion) {
  const FnCase c = gammaCbYCr();
  checkRefusals(c);
  checkVectorMatchesScalar(c, blockWidths(), 3);
  checkNegativeStep(c, 9, 4);
}

// Pairs and a last odd pixel of black, white, mid grey (128 is 180 after the
// table) and blue: Cb Y0 Cr Y1, then Cb Y of the odd pixel.
TEST(GammaCbYCr, KnownAnswers) {
  struct Case {
    Lum8u r, g, b;
    int pair[4], odd[2];
  } const table[] = {
      {0, 0, 0, {128, 16, 128, 16}, {128, 16}},
      {255, 255, 255, {128, 235, 128, 235}, {128, 235}},
      {128, 128, 128, {128, 171, 128, 171}, {128, 171}},
      {0, 0, 255, {240, 41, 110, 41}, {240, 41}},
  };
  for (const Case& k : table) {
    const Lum8u src[9] = {k.r, k.g, k.b, k.r, k.g, k.b, k.r, k.g, k.b};
    Lum8u out[8];
    std::memset(out, 0xEE, sizeof out);
    ASSERT_EQ(lumiRGBToCbYCr422Gamma_8u_C3C2R(src, 9, out, 8, LumSize{3, 1}), lumStatusOk);
    for (int i = 0; i < 4; ++i) EXPECT_EQ(out[i], k.pair[i]) << int(k.r) << " byte " << i;
    for (int i = 0; i < 2; ++i) EXPECT_EQ(out[4 + i], k.odd[i]) << int(k.r) << " odd byte " << i;
    EXPECT_EQ(out[6], 0xEE);
  }
  // A pair of two colours: chroma from the pair's mean, offset 128.5 (128.0
  // would give Cb 117, Cr 87; the first pixel's colour alone Cb 182).
  const Lum8u two[6] = {90, 40, 220, 0, 255, 0};
  Lum8u out[4];
  ASSERT_EQ(lumiRGBToCbYCr422Gamma_8u_C3C2R(two, 6, out, 4, LumSize{2, 1}), lumStatusOk);
  const int want[4] = {118, 127, 88, 145};
  for (int i = 0; i < 4; ++i) EXPECT_EQ(out[i], want[i]) << "byte " << i;
}

}  // namespace
