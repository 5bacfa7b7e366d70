// RGB <-> Photo YCC and RGB <-> Lab.
#include <gtest/gtest.h>

#include <cmath>
#include <cstring>
#include <limits>

#include "frame/simd.h"
#include "lumcc.h"
#include "models/lab_forms.h"
#include "support/family.h"

using namespace lumtest;

namespace {

using B = Buffers;

// Float samples: mostly in -0.5..1.5 (out of gamut on both sides), some edges
// (+-0, +-inf, NaN, huge, tiny). The NaN is the processor's default NaN, so that
// no result depends on which of two NaN operands an operation passes on.
template <class F>
FillFn floatsWithEdges(double lo, double hi) {
  return [lo, hi](GuardedImage& g, std::mt19937& rng) {
    const F nan = -std::numeric_limits<F>::quiet_NaN();
    const F edges[] = {F(0), F(-0.0), F(1), F(-1), std::numeric_limits<F>::infinity(),
                       -std::numeric_limits<F>::infinity(), nan, F(1e30), F(-1e30), F(1e-40), F(hi * 4)};
    std::uniform_real_distribution<double> dist(lo, hi);
    for (int y = 0; y < g.height(); ++y)
      for (int x = 0; x + int(sizeof(F)) <= g.rowBytes(); x += int(sizeof(F))) {
        const F v = rng() % 16 == 0 ? edges[rng() % std::size(edges)] : F(dist(rng));
        std::memcpy(g.row(y) + x, &v, sizeof(F));
      }
  };
}

FnCase mk(const char* name, int srcBytes, int dstBytes, int elem, CallFn f) {
  FnCase c;
  c.name = name;
  c.src = packedImg(srcBytes);
  c.dst = packedImg(dstBytes);
  c.call = std::move(f);
  c.stepAlign = elem;
  if (elem == 4) c.fillSource = floatsWithEdges<float>(-0.5, 1.5);
  return c;
}

// ---------------------------------------------------------------------------
// The table
// ---------------------------------------------------------------------------

struct Case {
  FnCase fc;
  int elem = 1;      // sample bytes
  int channels = 3;  // 3 or 4 (alpha kept)
};

const std::vector<Case>& yccCases() {
  static const std::vector<Case> v = [] {
    std::vector<Case> t;
#define YCC(Fn, T, tag, lay, E, N)                                                                               \
  t.push_back({mk(#Fn "_" #tag "_" #lay, E * N, E * N, E,                                                        \
                  [](const B& b, LumSize r) { return lumi##Fn##_##tag##_##lay##R(S<T>(b), b.srcStep, D<T>(b), b.dstStep, r); }), \
               E, N})
#define BOTH(T, tag, E)              \
  YCC(RGBToYCC, T, tag, C3, E, 3);   \
  YCC(RGBToYCC, T, tag, AC4, E, 4);  \
  YCC(YCCToRGB, T, tag, C3, E, 3);   \
  YCC(YCCToRGB, T, tag, AC4, E, 4)
    BOTH(Lum8u, 8u, 1);
    BOTH(Lum16u, 16u, 2);
    BOTH(Lum16s, 16s, 2);
    BOTH(Lum32f, 32f, 4);
#undef BOTH
#undef YCC
    return t;
  }();
  return v;
}

// Planar cases: arrays of three planes and of three steps.
template <class T>
FnCase planarCase(const char* name, std::function<LumStatus(const T* const*, const int*, T* const*, const int*, LumSize)> f) {
  FnCase c;
  c.name = name;
  c.src = planarImg(3, int(sizeof(T)));
  c.dst = planarImg(3, int(sizeof(T)));
  c.stepAlign = int(sizeof(T));
  c.srcStepArray = c.dstStepArray = true;
  c.fillSource = floatsWithEdges<T>(-0.5, 1.5);
  c.call = [f](const B& b, LumSize r) {
    return f(static_cast<const T* const*>(b.src), b.srcSteps, static_cast<T* const*>(b.dst), b.dstSteps, r);
  };
  return c;
}
// The long-size form behind the same table row: the steps widened on the way in.
template <class T>
auto viaLong(LumStatus (*fn)(const T* const*, const LumLong*, T* const*, const LumLong*, LumSizeL)) {
  return [fn](const T* const* s, const int* ss, T* const* d, const int* ds, LumSize r) {
    LumLong ls[3], ld[3];
    for (int i = 0; i < 3; ++i) {
      if (ss) ls[i] = ss[i];
      if (ds) ld[i] = ds[i];
    }
    return fn(s, ss ? ls : nullptr, d, ds ? ld : nullptr, LumSizeL{r.width, r.height});
  };
}

const std::vector<Case>& labCases() {
  static const std::vector<Case> v = [] {
    std::vector<Case> t;
#define LAB(Fn, Dt, tag, SB, DB, E)                                                                            \
  t.push_back({mk(#Fn "_" #tag, SB, DB, E,                                                                        \
                  [](const B& b, LumSize r) { return lumi##Fn##_##tag##_C3R(S<Dt::first_type>(b), b.srcStep, D<Dt::second_type>(b), b.dstStep, r); }), \
               E, 3})
    using U8 = std::pair<Lum8u, Lum8u>;
    using U8U16 = std::pair<Lum8u, Lum16u>;
    using U16U8 = std::pair<Lum16u, Lum8u>;
    using F32 = std::pair<Lum32f, Lum32f>;
    LAB(RGBToLab, U8, 8u, 3, 3, 1);
    LAB(BGRToLab, U8, 8u, 3, 3, 1);
    LAB(BGRToLab, U8U16, 8u16u, 3, 6, 2);
    LAB(RGBToLab, F32, 32f, 12, 12, 4);
    LAB(BGRToLab, F32, 32f, 12, 12, 4);
    LAB(LabToRGB, U8, 8u, 3, 3, 1);
    LAB(LabToBGR, U8, 8u, 3, 3, 1);
    LAB(LabToBGR, U16U8, 16u8u, 6, 3, 2);
    LAB(LabToRGB, F32, 32f, 12, 12, 4);
    LAB(LabToBGR, F32, 32f, 12, 12, 4);
#undef LAB
    // Lab samples spread over their whole range and past it.
    for (auto& c : t)
      if (c.elem == 4 && c.fc.name.rfind("Lab", 0) == 0) c.fc.fillSource = floatsWithEdges<float>(-150, 150);
    t.push_back({planarCase<Lum32f>("RGBToLab_32f_P3", lumiRGBToLab_32f_P3R), 4, 3});
    t.push_back({planarCase<Lum32f>("RGBToLab_32f_P3_L", viaLong<Lum32f>(lumiRGBToLab_32f_P3R_L)), 4, 3});
    t.push_back({planarCase<Lum64f>("RGBToLab_64f_P3", lumiRGBToLab_64f_P3R), 8, 3});
    t.push_back({planarCase<Lum64f>("RGBToLab_64f_P3_L", viaLong<Lum64f>(lumiRGBToLab_64f_P3R_L)), 8, 3});
    const size_t firstReverse = t.size();
    t.push_back({planarCase<Lum32f>("LabToRGB_32f_P3", lumiLabToRGB_32f_P3R), 4, 3});
    t.push_back({planarCase<Lum32f>("LabToRGB_32f_P3_L", viaLong<Lum32f>(lumiLabToRGB_32f_P3R_L)), 4, 3});
    t.push_back({planarCase<Lum64f>("LabToRGB_64f_P3", lumiLabToRGB_64f_P3R), 8, 3});
    t.push_back({planarCase<Lum64f>("LabToRGB_64f_P3_L", viaLong<Lum64f>(lumiLabToRGB_64f_P3R_L)), 8, 3});
    t[firstReverse].fc.fillSource = t[firstReverse + 1].fc.fillSource = floatsWithEdges<float>(-150, 150);
    t[firstReverse + 2].fc.fillSource = t[firstReverse + 3].fc.fillSource = floatsWithEdges<double>(-150, 150);
    return t;
  }();
  return v;
}

const Case& byName(const std::vector<Case>& cs, const std::string& n) {
  for (const auto& c : cs)
    if (c.fc.name == n) return c;
  throw std::runtime_error("no case " + n);
}

// Runs a function on a dense row of `width` copies of one pixel; returns the
// destination row (filled with `fill` before the call).
template <class S, class T>
std::vector<T> runOfPixel(const FnCase& fc, const std::vector<S>& px, int width, int dstChannels, T fill = T(0)) {
  const size_t n = px.size();
  std::vector<S> src(n * size_t(width));
  for (int x = 0; x < width; ++x) std::copy(px.begin(), px.end(), src.begin() + std::ptrdiff_t(n) * x);
  std::vector<T> dst(size_t(dstChannels) * size_t(width), fill);
  B b;
  b.src = src.data();
  b.srcStep = int(n * sizeof(S)) * width;
  b.dst = dst.data();
  b.dstStep = int(dstChannels * sizeof(T)) * width;
  EXPECT_EQ(fc.call(b, LumSize{width, 1}), lumStatusOk);
  return dst;
}

// Runs a function on one dense row given sample by sample.
template <class S, class T>
std::vector<T> runRow(const FnCase& fc, const std::vector<S>& src, int width, int dstChannels, T fill = T(0)) {
  std::vector<T> dst(size_t(dstChannels) * size_t(width), fill);
  B b;
  b.src = src.data();
  b.srcStep = int(src.size() * sizeof(S));
  b.dst = dst.data();
  b.dstStep = int(dst.size() * sizeof(T));
  EXPECT_EQ(fc.call(b, LumSize{width, 1}), lumStatusOk);
  return dst;
}

// One pixel's samples repeated n times.
template <class T>
std::vector<T> repeated(std::vector<T> px, int n) {
  std::vector<T> v;
  for (int i = 0; i < n; ++i) v.insert(v.end(), px.begin(), px.end());
  return v;
}

}  // namespace

// ---------------------------------------------------------------------------
// Photo YCC
// ---------------------------------------------------------------------------

TEST(ModelsYcc, RefusalsInCheckOrderLeaveDestinationUntouched) {
  for (const auto& c : yccCases()) checkRefusals(c.fc);
}

TEST(ModelsYcc, VectorBlocksMatchScalarTwinsAtEveryWidth) {
  for (const auto& c : yccCases()) checkVectorMatchesScalar(c.fc, blockWidths(), 3);
}

TEST(ModelsYcc, AlignmentDoesNotChangeSamples) {
  for (const auto& c : yccCases()) checkAlignmentInvariance(c.fc, {1, 3, 4, 5, 7, 8, 15, 16, 17, 33}, 2);
}

TEST(ModelsYcc, NegativeStepWalksBottomUp) {
  for (const auto& c : yccCases()) checkNegativeStep(c.fc, 37, 5);
}

// Hand-computed answers of the 8u fixed-point rules.
TEST(ModelsYcc, EightBitKnownAnswers) {
  struct Row {
    const char* fn;
    std::vector<Lum8u> in, out;
  } rows[] = {
      // White: L = 16382 x 255, Y = (4079 x 2921) >> 16 = 181, chroma neutral.
      {"RGBToYCC_8u_C3", {255, 255, 255}, {181, 156, 137}},
      {"RGBToYCC_8u_C3", {0, 0, 0}, {0, 156, 137}},
      // Pure blue: C1 = ((4177920 - 476085) >> 10) x 1789 >> 16 = 98, + 156.
      {"RGBToYCC_8u_C3", {0, 0, 255}, {20, 254, 121}},
      // Yellow: a negative difference floors (-3615 x 1789 >> 16 = -99).
      {"RGBToYCC_8u_C3", {255, 255, 0}, {161, 57, 152}},
      {"YCCToRGB_8u_C3", {0, 156, 137}, {0, 0, 0}},
      // p = 5564 x 181: R = B = p >> 12 = 245, G = 16 p >> 16 = 245.
      {"YCCToRGB_8u_C3", {181, 156, 137}, {245, 245, 245}},
      // Chroma far off neutral: R and B clamp, G = 12747800 >> 16 and 12716996 >> 16.
      {"YCCToRGB_8u_C3", {255, 255, 255}, {255, 194, 255}},
      {"YCCToRGB_8u_C3", {0, 0, 0}, {0, 194, 0}},
  };
  for (const auto& r : rows) {
    SCOPED_TRACE(r.fn);
    const FnCase& fc = byName(yccCases(), r.fn).fc;
    // Every column of every width takes the same answer: the 8u rule is one.
    for (int w : {1, 3, 4, 5, 8, 9, 16, 17, 40}) {
      const auto out = runOfPixel<Lum8u, Lum8u>(fc, r.in, w, 3);
      for (int x = 0; x < w; ++x)
        for (int k = 0; k < 3; ++k) ASSERT_EQ(out[size_t(3 * x + k)], r.out[size_t(k)]) << "width " << w << " x " << x;
    }
  }
}

// The 16-bit forms round to nearest in blocks and add 0.49999 and truncate in
// the tail: a pixel with a result near a half shows which column took which.
TEST(ModelsYcc, SixteenBitBlockAndTailColumns) {
  std::mt19937 rng(11);
  for (const char* fn : {"RGBToYCC_16u_C3", "RGBToYCC_16u_AC4", "YCCToRGB_16u_C3", "YCCToRGB_16u_AC4",
                         "RGBToYCC_16s_C3", "YCCToRGB_16s_AC4"}) {
    SCOPED_TRACE(fn);
    const Case& c = byName(yccCases(), fn);
    const bool s16 = std::string(fn).find("16s") != std::string::npos;
    // Look for a pixel whose block and tail answers differ.
    std::vector<uint16_t> px(size_t(c.channels)), blk, tail;
    bool found = false;
    for (int tries = 0; tries < 200000 && !found; ++tries) {
      for (auto& v : px) v = uint16_t(rng());
      blk = runOfPixel<uint16_t, uint16_t>(c.fc, px, 4, c.channels);
      tail = runOfPixel<uint16_t, uint16_t>(c.fc, px, 1, c.channels);
      found = !std::equal(tail.begin(), tail.begin() + 3, blk.begin());
    }
    ASSERT_TRUE(found) << "block and tail never differ";
    // They differ by one code value at most.
    for (int k = 0; k < 3; ++k) EXPECT_LE(std::abs(int(blk[size_t(k)]) - int(tail[size_t(k)])), 1);
    (void)s16;
    for (int w = 1; w <= 41; ++w) {
      const auto out = runOfPixel<uint16_t, uint16_t>(c.fc, px, w, c.channels);
      for (int x = 0; x < w; ++x) {
        const auto& want = x < (w & ~3) ? blk : tail;
        for (int k = 0; k < 3; ++k)
          ASSERT_EQ(out[size_t(c.channels * x + k)], want[size_t(k)]) << "width " << w << " x " << x;
      }
    }
  }
}

// 16s is 16u moved down by 32768 on both sides, in blocks and in the tail.
TEST(ModelsYcc, SignedIsUnsignedShifted) {
  std::mt19937 rng(3);
  for (const char* dir : {"RGBToYCC", "YCCToRGB"}) {
    SCOPED_TRACE(dir);
    const FnCase& u = byName(yccCases(), std::string(dir) + "_16u_C3").fc;
    const FnCase& s = byName(yccCases(), std::string(dir) + "_16s_C3").fc;
    const int w = 23;
    std::vector<uint16_t> src(size_t(3 * w));
    for (auto& v : src) v = uint16_t(rng());
    src[0] = src[1] = src[2] = 0;
    src[3] = src[4] = src[5] = 65535;
    std::vector<int16_t> ssrc(src.size());
    for (size_t i = 0; i < src.size(); ++i) ssrc[i] = int16_t(int(src[i]) - 32768);
    const auto ou = runRow<uint16_t, uint16_t>(u, src, w, 3);
    const auto os = runRow<int16_t, int16_t>(s, ssrc, w, 3);
    for (size_t i = 0; i < ou.size(); ++i) ASSERT_EQ(int(os[i]), int(ou[i]) - 32768) << i;
  }
}

// The float forms: forward does not clamp, reverse clamps to 0..1 (NaN to 0).
TEST(ModelsYcc, FloatClampsOnlyInReverse) {
  const FnCase& fwd = byName(yccCases(), "RGBToYCC_32f_C3").fc;
  const FnCase& inv = byName(yccCases(), "YCCToRGB_32f_C3").fc;
  for (int w : {1, 4, 5}) {
    const auto y = runOfPixel<float, float>(fwd, {2.0f, 2.0f, 2.0f}, w, 3);
    EXPECT_GT(y[0], 1.4f);  // 0.7132668 x 2
    EXPECT_NEAR(y[1], 0.6117647f, 1e-6f);
    EXPECT_NEAR(y[2], 0.5372549f, 1e-6f);
    const auto n = runOfPixel<float, float>(fwd, {-1.0f, 0.0f, 0.0f}, w, 3);
    EXPECT_LT(n[0], 0.0f);
    const auto r = runOfPixel<float, float>(inv, {1.5f, 0.6117647f, 0.5372549f}, w, 3);
    for (int k = 0; k < 3; ++k) EXPECT_EQ(r[size_t(k)], 1.0f);
    const auto z = runOfPixel<float, float>(inv, {-0.5f, 0.6117647f, 0.5372549f}, w, 3);
    for (int k = 0; k < 3; ++k) EXPECT_EQ(z[size_t(k)], 0.0f);
    const float nan = std::numeric_limits<float>::quiet_NaN();
    const auto q = runOfPixel<float, float>(inv, {nan, 0.5f, 0.5f}, w, 3);
    for (int k = 0; k < 3; ++k) EXPECT_EQ(q[size_t(k)], 0.0f);
  }
}

// Gray goes to neutral chroma, and neutral chroma back to gray, in every type.
TEST(ModelsYcc, GrayStaysNeutral) {
  for (int w : {1, 4, 5}) {
    SCOPED_TRACE(w);
    for (int v : {0, 1, 77, 128, 254, 255}) {
      const auto y8 = runOfPixel<Lum8u, Lum8u>(byName(yccCases(), "RGBToYCC_8u_C3").fc,
                                               {Lum8u(v), Lum8u(v), Lum8u(v)}, w, 3);
      EXPECT_EQ(y8[1], 156);
      EXPECT_EQ(y8[2], 137);
      const auto g8 = runOfPixel<Lum8u, Lum8u>(byName(yccCases(), "YCCToRGB_8u_C3").fc, {Lum8u(v), 156, 137}, w, 3);
      EXPECT_EQ(g8[0], g8[1]);
      EXPECT_EQ(g8[1], g8[2]);
      const uint16_t u = uint16_t(v * 257);
      const auto y16 = runOfPixel<uint16_t, uint16_t>(byName(yccCases(), "RGBToYCC_16u_C3").fc, {u, u, u}, w, 3);
      EXPECT_NEAR(y16[1], 40092, 1);
      EXPECT_NEAR(y16[2], 35209, 1);
      const auto g16 =
          runOfPixel<uint16_t, uint16_t>(byName(yccCases(), "YCCToRGB_16u_C3").fc, {u, 40092, 35209}, w, 3);
      EXPECT_EQ(g16[0], g16[2]);
      EXPECT_EQ(g16[0], g16[1]);
      // s = 1.3584 Y: the reverse luma factor is not the inverse of the forward one.
      EXPECT_NEAR(g16[0], std::min(65535.0, 1.3584 * u), 1.0);
    }
  }
}

// AC4 computes the colour channels of C3 and never writes alpha.
TEST(ModelsYcc, FourChannelsMatchThreeAndKeepAlpha) {
  std::mt19937 rng(4);
  for (const auto& c : yccCases()) {
    if (c.channels != 4) continue;
    SCOPED_TRACE(c.fc.name);
    std::string name3 = c.fc.name;
    name3.replace(name3.find("AC4"), 3, "C3");
    const FnCase& c3 = byName(yccCases(), name3).fc;
    const int w = 13, e = c.elem;
    std::vector<uint8_t> src4(size_t(4 * w * e)), src3(size_t(3 * w * e));
    if (e == 4) {
      for (int i = 0; i < 4 * w; ++i) {
        const float f = std::uniform_real_distribution<float>(-0.2f, 1.2f)(rng);
        std::memcpy(&src4[size_t(i * 4)], &f, 4);
      }
    } else {
      for (auto& v : src4) v = uint8_t(rng());
    }
    for (int x = 0; x < w; ++x) std::memcpy(&src3[size_t(3 * x * e)], &src4[size_t(4 * x * e)], size_t(3 * e));
    const auto o4 = runRow<uint8_t, uint8_t>(c.fc, src4, w, 4 * e, uint8_t(0xA7));
    const auto o3 = runRow<uint8_t, uint8_t>(c3, src3, w, 3 * e);
    for (int x = 0; x < w; ++x) {
      EXPECT_EQ(0, std::memcmp(&o4[size_t(4 * x * e)], &o3[size_t(3 * x * e)], size_t(3 * e))) << "pixel " << x;
      for (int b = 0; b < e; ++b) EXPECT_EQ(o4[size_t(4 * x * e + 3 * e + b)], 0xA7) << "alpha of pixel " << x;
    }
  }
}

// A byte step that is no multiple of the sample size is rounded down.
TEST(ModelsYcc, ByteStepsRoundDownToWholeSamples) {
  for (const char* fn : {"RGBToYCC_16u_C3", "YCCToRGB_32f_AC4"}) {
    SCOPED_TRACE(fn);
    const Case& c = byName(yccCases(), fn);
    const int w = 5, h = 3, row = w * c.channels * c.elem;
    std::vector<uint8_t> src(size_t(row * h));
    std::mt19937 rng(2);
    for (size_t i = 0; i < src.size(); i += size_t(c.elem)) {
      if (c.elem == 4) {
        const float f = std::uniform_real_distribution<float>(0.0f, 1.0f)(rng);
        std::memcpy(&src[i], &f, 4);
      } else {
        src[i] = uint8_t(rng());
        src[i + 1] = uint8_t(rng());
      }
    }
    std::vector<uint8_t> a(src.size(), 0), b(src.size(), 0);
    B ba{src.data(), row, nullptr, a.data(), row, nullptr};
    B bb{src.data(), row + c.elem - 1, nullptr, b.data(), row + 1, nullptr};
    ASSERT_EQ(c.fc.call(ba, LumSize{w, h}), lumStatusOk);
    ASSERT_EQ(c.fc.call(bb, LumSize{w, h}), lumStatusOk);
    EXPECT_EQ(a, b);
  }
}

// The 8u forms are one rule in blocks and tail: every column of every width
// takes the answer of a lone pixel.
TEST(ModelsYcc, EightBitColumnsAreOneRule) {
  std::mt19937 rng(21);
  for (const char* fn : {"RGBToYCC_8u_C3", "YCCToRGB_8u_AC4"}) {
    SCOPED_TRACE(fn);
    const Case& c = byName(yccCases(), fn);
    std::vector<Lum8u> px(size_t(c.channels));
    for (auto& v : px) v = Lum8u(rng());
    const auto one = runOfPixel<Lum8u, Lum8u>(c.fc, px, 1, c.channels);
    for (int w : {2, 3, 4, 5, 8, 9, 15, 16, 17, 33, 40, 1000}) {
      const auto out = runOfPixel<Lum8u, Lum8u>(c.fc, px, w, c.channels);
      for (int x = 0; x < w; ++x)
        for (int k = 0; k < 3; ++k) ASSERT_EQ(out[size_t(c.channels * x + k)], one[size_t(k)]) << w << " " << x;
    }
  }
}

// ---------------------------------------------------------------------------
// Lab
// ---------------------------------------------------------------------------

TEST(ModelsLab, RefusalsInCheckOrderLeaveDestinationUntouched) {
  for (const auto& c : labCases()) checkRefusals(c.fc);
}

TEST(ModelsLab, VectorBlocksMatchScalarTwinsAtEveryWidth) {
  for (const auto& c : labCases()) checkVectorMatchesScalar(c.fc, blockWidths(), 3);
}

TEST(ModelsLab, AlignmentDoesNotChangeSamples) {
  for (const auto& c : labCases()) checkAlignmentInvariance(c.fc, {1, 2, 3, 4, 5, 7, 8, 9, 17, 33}, 2);
}

TEST(ModelsLab, NegativeStepWalksBottomUp) {
  for (const auto& c : labCases()) checkNegativeStep(c.fc, 37, 5);
}

// Blocks and tail share one formula: a row of one pixel gives one answer in
// every column at every width.
TEST(ModelsLab, EveryColumnOfAnyWidthTakesTheSameAnswer) {
  std::mt19937 rng(8);
  for (const auto& c : labCases()) {
    if (c.fc.src.array) continue;
    SCOPED_TRACE(c.fc.name);
    const int srcBytes = c.fc.src.planes[0].bpp, dstBytes = c.fc.dst.planes[0].bpp;
    std::vector<uint8_t> px(static_cast<size_t>(srcBytes));
    if (c.elem == 4) {
      const bool lab = c.fc.name.rfind("Lab", 0) == 0;
      const float v[3] = {lab ? 53.0f : 0.8f, lab ? 70.0f : 0.1f, lab ? -40.0f : 0.004f};
      std::memcpy(px.data(), v, 12);
    } else {
      for (auto& b : px) b = uint8_t(rng());
    }
    const auto one = runOfPixel<uint8_t, uint8_t>(c.fc, px, 1, dstBytes);
    for (int w = 2; w <= 41; ++w) {
      const auto out = runOfPixel<uint8_t, uint8_t>(c.fc, px, w, dstBytes);
      for (int x = 0; x < w; ++x)
        ASSERT_EQ(0, std::memcmp(&out[size_t(dstBytes * x)], one.data(), size_t(dstBytes))) << w << " " << x;
    }
    const auto big = runOfPixel<uint8_t, uint8_t>(c.fc, px, 1000, dstBytes);
    ASSERT_EQ(0, std::memcmp(&big[size_t(dstBytes * 999)], one.data(), size_t(dstBytes)));
  }
}

TEST(ModelsLab, KnownAnswers) {
  const FnCase& fwd8 = byName(labCases(), "RGBToLab_8u").fc;
  const FnCase& inv8 = byName(labCases(), "LabToRGB_8u").fc;
  for (int w : {1, 4, 5}) {
    SCOPED_TRACE(w);
    // White: L sample 255, a and b 128, within 1.
    const auto white = runOfPixel<Lum8u, Lum8u>(fwd8, {255, 255, 255}, w, 3);
    EXPECT_NEAR(white[0], 255, 1);
    EXPECT_NEAR(white[1], 128, 1);
    EXPECT_NEAR(white[2], 128, 1);
    // Black: both f values are 0.13793103, L = 0; the reverse cubes P =
    // 16/116 (no linear segment) and gives 0.669 of a code in each channel.
    const auto black = runOfPixel<Lum8u, Lum8u>(fwd8, {0, 0, 0}, w, 3);
    EXPECT_EQ(black, repeated<Lum8u>({0, 128, 128}, w));
    const auto back = runOfPixel<Lum8u, Lum8u>(inv8, {0, 128, 128}, w, 3);
    EXPECT_EQ(back, repeated<Lum8u>({1, 1, 1}, w));
    // 32f black: L = a = b = 0 exactly.
    const auto b32 = runOfPixel<float, float>(byName(labCases(), "RGBToLab_32f").fc, {0.0f, 0.0f, 0.0f}, w, 3);
    EXPECT_EQ(b32, repeated<float>({0.0f, 0.0f, 0.0f}, w));
    // High a: red above 1, no clamp in any column.
    const auto hot = runOfPixel<float, float>(byName(labCases(), "LabToRGB_32f").fc, {50.0f, 120.0f, 0.0f}, w, 3);
    EXPECT_GT(hot[0], 1.2f);
    EXPECT_LT(hot[1], 0.0f);
    // 16-bit white: L = 100 x 655.35, a = b = 128 x 255.
    const auto w16 = runOfPixel<Lum8u, Lum16u>(byName(labCases(), "BGRToLab_8u16u").fc, {255, 255, 255}, w, 3);
    EXPECT_NEAR(w16[0], 65535, 2);
    EXPECT_NEAR(w16[1], 32640, 100);
    EXPECT_NEAR(w16[2], 32640, 100);
  }
}

// BGR functions differ from RGB ones in the order of the colour side alone.
TEST(ModelsLab, BgrIsRgbReversed) {
  std::mt19937 rng(12);
  const int w = 29;
  std::vector<Lum8u> rgb(size_t(3 * w)), bgr(rgb.size());
  for (auto& v : rgb) v = Lum8u(rng());
  for (int x = 0; x < w; ++x)
    for (int k = 0; k < 3; ++k) bgr[size_t(3 * x + k)] = rgb[size_t(3 * x + 2 - k)];
  const auto fromRgb = runRow<Lum8u, Lum8u>(byName(labCases(), "RGBToLab_8u").fc, rgb, w, 3);
  const auto fromBgr = runRow<Lum8u, Lum8u>(byName(labCases(), "BGRToLab_8u").fc, bgr, w, 3);
  EXPECT_EQ(fromRgb, fromBgr);
  const auto viaRgb = runRow<Lum8u, Lum8u>(byName(labCases(), "LabToRGB_8u").fc, rgb, w, 3);
  const auto viaBgr = runRow<Lum8u, Lum8u>(byName(labCases(), "LabToBGR_8u").fc, rgb, w, 3);
  for (int x = 0; x < w; ++x)
    for (int k = 0; k < 3; ++k) ASSERT_EQ(viaRgb[size_t(3 * x + k)], viaBgr[size_t(3 * x + 2 - k)]);
  std::vector<float> frgb(rgb.size()), fbgr(rgb.size());
  for (size_t i = 0; i < rgb.size(); ++i) frgb[i] = rgb[i] / 255.0f, fbgr[i] = bgr[i] / 255.0f;
  const auto fFromRgb = runRow<float, float>(byName(labCases(), "RGBToLab_32f").fc, frgb, w, 3);
  const auto fFromBgr = runRow<float, float>(byName(labCases(), "BGRToLab_32f").fc, fbgr, w, 3);
  EXPECT_EQ(fFromRgb, fFromBgr);
}

// The 16u Lab samples are the 8u ones at 257 x L and 255 x (a, b): the 16u8u
// reverse reads them to the same colour within a code.
TEST(ModelsLab, SixteenBitLabReadsLikeEightBit) {
  std::mt19937 rng(13);
  const int w = 31;
  std::vector<Lum8u> lab8(size_t(3 * w));
  std::vector<Lum16u> lab16(lab8.size());
  for (int x = 0; x < w; ++x) {
    const Lum8u l = Lum8u(rng()), a = Lum8u(rng()), b = Lum8u(rng());
    lab8[size_t(3 * x)] = l, lab8[size_t(3 * x + 1)] = a, lab8[size_t(3 * x + 2)] = b;
    lab16[size_t(3 * x)] = Lum16u(l * 257), lab16[size_t(3 * x + 1)] = Lum16u(a * 255), lab16[size_t(3 * x + 2)] = Lum16u(b * 255);
  }
  const auto o8 = runRow<Lum8u, Lum8u>(byName(labCases(), "LabToBGR_8u").fc, lab8, w, 3);
  const auto o16 = runRow<Lum16u, Lum8u>(byName(labCases(), "LabToBGR_16u8u").fc, lab16, w, 3);
  for (size_t i = 0; i < o8.size(); ++i) EXPECT_NEAR(int(o8[i]), int(o16[i]), 1) << i;
  // And the forward 8u16u agrees with 8u on the same pixels within the scales.
  std::vector<Lum8u> bgr(lab8.size());
  for (auto& v : bgr) v = Lum8u(rng());
  const auto f8 = runRow<Lum8u, Lum8u>(byName(labCases(), "BGRToLab_8u").fc, bgr, w, 3);
  const auto f16 = runRow<Lum8u, Lum16u>(byName(labCases(), "BGRToLab_8u16u").fc, bgr, w, 3);
  for (int x = 0; x < w; ++x) {
    EXPECT_NEAR(f16[size_t(3 * x)] / 257.0, f8[size_t(3 * x)], 0.51) << x;
    for (int k = 1; k < 3; ++k) EXPECT_NEAR(f16[size_t(3 * x + k)] / 255.0, f8[size_t(3 * x + k)], 0.51) << x;
  }
}

namespace {
// Runs a planar case on one dense row of n pixels given plane by plane.
template <class T>
std::vector<std::vector<T>> runPlanes(const FnCase& fc, const std::vector<std::vector<T>>& in, int n) {
  std::vector<std::vector<T>> out(3, std::vector<T>(size_t(n)));
  const T* s[3] = {in[0].data(), in[1].data(), in[2].data()};
  T* d[3] = {out[0].data(), out[1].data(), out[2].data()};
  const int st[3] = {int(sizeof(T)) * n, int(sizeof(T)) * n, int(sizeof(T)) * n};
  B b;
  b.src = s;
  b.srcSteps = st;
  b.dst = d;
  b.dstSteps = st;
  EXPECT_EQ(fc.call(b, LumSize{n, 1}), lumStatusOk);
  return out;
}
}  // namespace

// Planar 32f is the interleaved formula; 64f agrees with it to float accuracy
// and round-trips bright colours to double accuracy.
TEST(ModelsLab, PlanarFormsAgree) {
  std::mt19937 rng(14);
  const int n = 45;
  std::vector<float> px(size_t(3 * n));
  std::vector<std::vector<float>> pf(3, std::vector<float>(size_t(n)));
  std::vector<std::vector<double>> pd(3, std::vector<double>(size_t(n)));
  for (int x = 0; x < n; ++x)
    for (int k = 0; k < 3; ++k) {
      const float v = std::uniform_real_distribution<float>(0.05f, 1.0f)(rng);
      px[size_t(3 * x + k)] = pf[size_t(k)][size_t(x)] = v;
      pd[size_t(k)][size_t(x)] = v;
    }
  const auto c3 = runRow<float, float>(byName(labCases(), "RGBToLab_32f").fc, px, n, 3);
  const auto p3 = runPlanes<float>(byName(labCases(), "RGBToLab_32f_P3").fc, pf, n);
  const auto p64 = runPlanes<double>(byName(labCases(), "RGBToLab_64f_P3_L").fc, pd, n);
  for (int x = 0; x < n; ++x)
    for (int k = 0; k < 3; ++k) {
      ASSERT_EQ(c3[size_t(3 * x + k)], p3[size_t(k)][size_t(x)]);
      ASSERT_NEAR(p64[size_t(k)][size_t(x)], p3[size_t(k)][size_t(x)], 2e-3);
    }
  const auto back = runPlanes<double>(byName(labCases(), "LabToRGB_64f_P3").fc, p64, n);
  const auto back32 = runPlanes<float>(byName(labCases(), "LabToRGB_32f_P3_L").fc, p3, n);
  for (int k = 0; k < 3; ++k)
    for (int x = 0; x < n; ++x) {
      EXPECT_NEAR(back[size_t(k)][size_t(x)], pd[size_t(k)][size_t(x)], 2e-6);
      EXPECT_NEAR(back32[size_t(k)][size_t(x)], pf[size_t(k)][size_t(x)], 2e-4);
    }
}

// A dense image (all six steps the row's bytes) runs as one long row: the
// same samples as the same image with padded rows.
TEST(ModelsLab, DenseReverseImageIsOneRow) {
  std::mt19937 rng(15);
  const int w = 7, h = 5, pad = 3;
  for (const char* fn : {"LabToRGB_64f_P3_L", "LabToRGB_32f_P3"}) {
    SCOPED_TRACE(fn);
    const bool dbl = std::string(fn).find("64f") != std::string::npos;
    const int e = dbl ? 8 : 4;
    std::vector<std::vector<uint8_t>> dense(3, std::vector<uint8_t>(size_t(w * h * e))),
        padded(3, std::vector<uint8_t>(size_t((w + pad) * h * e)));
    for (int k = 0; k < 3; ++k)
      for (int i = 0; i < w * h; ++i) {
        const double v = std::uniform_real_distribution<double>(-100, 100)(rng);
        const float f = float(v);
        uint8_t* dp = &dense[size_t(k)][size_t(i * e)];
        dbl ? std::memcpy(dp, &v, 8) : std::memcpy(dp, &f, 4);
        std::memcpy(&padded[size_t(k)][size_t(((i / w) * (w + pad) + i % w) * e)], dp, size_t(e));
      }
    std::vector<std::vector<uint8_t>> od(3, std::vector<uint8_t>(dense[0].size())),
        op(3, std::vector<uint8_t>(padded[0].size()));
    const void* sd[3] = {dense[0].data(), dense[1].data(), dense[2].data()};
    const void* sp[3] = {padded[0].data(), padded[1].data(), padded[2].data()};
    void* dd[3] = {od[0].data(), od[1].data(), od[2].data()};
    void* dp[3] = {op[0].data(), op[1].data(), op[2].data()};
    const int stD[3] = {w * e, w * e, w * e}, stP[3] = {(w + pad) * e, (w + pad) * e, (w + pad) * e};
    const FnCase& fc = byName(labCases(), fn).fc;
    ASSERT_EQ(fc.call(B{sd, 0, stD, dd, 0, stD}, LumSize{w, h}), lumStatusOk);
    ASSERT_EQ(fc.call(B{sp, 0, stP, dp, 0, stP}, LumSize{w, h}), lumStatusOk);
    for (int k = 0; k < 3; ++k)
      for (int y = 0; y < h; ++y)
        ASSERT_EQ(0, std::memcmp(&od[size_t(k)][size_t(y * w * e)], &op[size_t(k)][size_t(y * (w + pad) * e)],
                                 size_t(w * e)));
  }
}

// A null step array is refused before the plane arrays are read.
TEST(ModelsLab, NullStepArrayRefusedBeforeAnyPointer) {
  const int steps[3] = {16, 16, 16};
  // Plane arrays that must not be dereferenced.
  const auto bogusSrc = reinterpret_cast<const Lum32f* const*>(uintptr_t(8));
  const auto bogusDst = reinterpret_cast<Lum32f* const*>(uintptr_t(8));
  EXPECT_EQ(lumiLabToRGB_32f_P3R(bogusSrc, nullptr, bogusDst, steps, LumSize{4, 4}), lumStatusNullPointer);
  EXPECT_EQ(lumiRGBToLab_32f_P3R(bogusSrc, steps, bogusDst, nullptr, LumSize{0, 0}), lumStatusNullPointer);
  EXPECT_EQ(lumiLabToRGB_64f_P3R(reinterpret_cast<const Lum64f* const*>(uintptr_t(8)), nullptr,
                                 reinterpret_cast<Lum64f* const*>(uintptr_t(8)), nullptr, LumSize{4, 4}),
            lumStatusNullPointer);
}

// The 53-bit cube root against the long-double one, over every binary
// exponent of the normal range, both signs, on the emulated and the build's
// 128-bit lanes: within one unit in the last place.
TEST(ModelsLab, DoubleCubeRootWithinOneUlp) {
  std::mt19937_64 rng(16);
  const auto check = [&](auto o) {
    using O = decltype(o);
    for (int e = -1022; e <= 1023; ++e)
      for (int rep = 0; rep < 6; ++rep) {
        const double m = rep == 0 ? 1.0 : (rep == 1 ? std::nextafter(2.0, 1.0) : 1.0 + double(rng() >> 11) * 0x1p-53);
        const double x = std::ldexp(rep % 2 ? -m : m, e);
        alignas(16) double in[2] = {x, e > -1022 ? -x * 0.75 : -x * 1.5}, out[2];
        O::stored(out, lum::lab::cbrt53<O>(O::loadd(in)));
        for (int j = 0; j < 2; ++j) {
          const double want = double(std::cbrt((long double)in[j]));
          const double ulp = std::nextafter(std::fabs(want), INFINITY) - std::fabs(want);
          ASSERT_LE(std::fabs(out[j] - want), ulp) << in[j];
        }
      }
  };
  check(lum::lanes::Emu{});
  check(lum::lanes::Narrow{});
}
