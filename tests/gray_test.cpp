// Colour to gray, gray to colour and the luma of packed 4:2:2.
#include <gtest/gtest.h>

#include <cmath>
#include <cstring>
#include <limits>

#include "frame/simd.h"
#include "lumcc.h"
#include "support/family.h"

using namespace lumtest;

namespace {

using B = Buffers;

// Finite float samples with fractions, so that vector and scalar paths compare
// bit for bit (NaN payloads are not part of any contract).
template <class F>
FillFn finite(double lo, double hi) {
  return [lo, hi](GuardedImage& g, std::mt19937& rng) {
    std::uniform_real_distribution<double> dist(lo, hi);
    for (int y = 0; y < g.height(); ++y)
      for (int x = 0; x + int(sizeof(F)) <= g.rowBytes(); x += int(sizeof(F))) {
        const F v = F(dist(rng));
        std::memcpy(g.row(y) + x, &v, sizeof(F));
      }
  };
}

enum class Kind { ToGray, ToColor, Luma422 };

struct GrayCase {
  FnCase fc;
  Kind kind;
  int elem;      // sample bytes
  int channels;  // channels of the colour side
};

FnCase mk(const char* name, int elem, int srcChannels, int dstChannels, CallFn f) {
  FnCase c;
  c.name = name;
  c.src = packedImg(elem * srcChannels);
  c.dst = packedImg(elem * dstChannels);
  c.call = std::move(f);
  c.stepAlign = elem;
  if (elem == 4) c.fillSource = finite<float>(-300, 300);
  if (elem == 8) c.fillSource = finite<double>(-300, 300);
  return c;
}

// Weights of the ColorToGray rows of the table: not the defaults, and summing
// above 1 so that the 8u block saturates on bright pixels.
const Lum32f kW[3] = {0.41f, 0.47f, 0.23f};
const Lum64f kW64[3] = {0.299, 0.587, 0.114};

const std::vector<GrayCase>& cases() {
  static const std::vector<GrayCase> v = [] {
    std::vector<GrayCase> t;
    auto add = [&](FnCase c, Kind k, int elem, int ch) { t.push_back({std::move(c), k, elem, ch}); };
#define TO_GRAY(T, tag, lay, E, N)                                                                                \
  add(mk("RGBToGray_" #tag "_" #lay, E, N, 1,                                                                      \
         [](const B& b, LumSize r) { return lumiRGBToGray_##tag##_##lay##C1R(S<T>(b), b.srcStep, D<T>(b), b.dstStep, r); }), \
      Kind::ToGray, E, N);                                                                                         \
  add(mk("ColorToGray_" #tag "_" #lay, E, N, 1,                                                                    \
         [](const B& b, LumSize r) {                                                                               \
           return lumiColorToGray_##tag##_##lay##C1R(S<T>(b), b.srcStep, D<T>(b), b.dstStep, r, kW);               \
         }),                                                                                                       \
      Kind::ToGray, E, N)
    TO_GRAY(Lum8u, 8u, C3, 1, 3);
    TO_GRAY(Lum8u, 8u, AC4, 1, 4);
    TO_GRAY(Lum16u, 16u, C3, 2, 3);
    TO_GRAY(Lum16u, 16u, AC4, 2, 4);
    TO_GRAY(Lum16s, 16s, C3, 2, 3);
    TO_GRAY(Lum16s, 16s, AC4, 2, 4);
    TO_GRAY(Lum32f, 32f, C3, 4, 3);
    TO_GRAY(Lum32f, 32f, AC4, 4, 4);
#undef TO_GRAY
    add(mk("ColorToGray_64f_C3", 8, 3, 1,
           [](const B& b, LumSize r) { return lumiColorToGray_64f_C3C1R(S<Lum64f>(b), b.srcStep, D<Lum64f>(b), b.dstStep, r, kW64); }),
        Kind::ToGray, 8, 3);
    add(mk("ColorToGray_64f_AC4", 8, 4, 1,
           [](const B& b, LumSize r) { return lumiColorToGray_64f_AC4C1R(S<Lum64f>(b), b.srcStep, D<Lum64f>(b), b.dstStep, r, kW64); }),
        Kind::ToGray, 8, 4);
    add(mk("GrayToRGB_8u_C3", 1, 1, 3,
           [](const B& b, LumSize r) { return lumiGrayToRGB_8u_C1C3R(S<Lum8u>(b), b.srcStep, D<Lum8u>(b), b.dstStep, r); }),
        Kind::ToColor, 1, 3);
    add(mk("GrayToRGB_8u_C4", 1, 1, 4,
           [](const B& b, LumSize r) { return lumiGrayToRGB_8u_C1C4R(S<Lum8u>(b), b.srcStep, D<Lum8u>(b), b.dstStep, r, 0xA7); }),
        Kind::ToColor, 1, 4);
    add(mk("GrayToRGB_16u_C3", 2, 1, 3,
           [](const B& b, LumSize r) { return lumiGrayToRGB_16u_C1C3R(S<Lum16u>(b), b.srcStep, D<Lum16u>(b), b.dstStep, r); }),
        Kind::ToColor, 2, 3);
    add(mk("GrayToRGB_16u_C4", 2, 1, 4,
           [](const B& b, LumSize r) { return lumiGrayToRGB_16u_C1C4R(S<Lum16u>(b), b.srcStep, D<Lum16u>(b), b.dstStep, r, 0xA7); }),
        Kind::ToColor, 2, 4);
    add(mk("GrayToRGB_32f_C3", 4, 1, 3,
           [](const B& b, LumSize r) { return lumiGrayToRGB_32f_C1C3R(S<Lum32f>(b), b.srcStep, D<Lum32f>(b), b.dstStep, r); }),
        Kind::ToColor, 4, 3);
    add(mk("GrayToRGB_32f_C4", 4, 1, 4,
           [](const B& b, LumSize r) { return lumiGrayToRGB_32f_C1C4R(S<Lum32f>(b), b.srcStep, D<Lum32f>(b), b.dstStep, r, 0xA7); }),
        Kind::ToColor, 4, 4);
    add(mk("YCbCr422ToGray", 1, 2, 1,
           [](const B& b, LumSize r) { return lumiYCbCr422ToGray_8u_C2C1R(S<Lum8u>(b), b.srcStep, D<Lum8u>(b), b.dstStep, r); }),
        Kind::Luma422, 1, 2);
    return t;
  }();
  return v;
}

const GrayCase& byName(const std::string& n) {
  for (const auto& c : cases())
    if (c.fc.name == n) return c;
  throw std::runtime_error("no case " + n);
}

// Gray of a row of `width` copies of one pixel (dense images, no guard: the
// table tests cover memory safety). Returns the outputs.
template <class T, class F>
std::vector<T> grayOfRun(F fn, std::vector<T> px, int width) {
  const size_t n = px.size();
  std::vector<T> src(n * size_t(width));
  for (int x = 0; x < width; ++x) std::copy(px.begin(), px.end(), src.begin() + std::ptrdiff_t(n) * x);
  std::vector<T> dst(size_t(width), T(0x5A));
  EXPECT_EQ(fn(src.data(), int(n * sizeof(T)) * width, dst.data(), int(sizeof(T)) * width, LumSize{width, 1}),
            lumStatusOk);
  return dst;
}

}  // namespace

TEST(Gray, RefusalsInCheckOrderLeaveDestinationUntouched) {
  for (const auto& c : cases()) checkRefusals(c.fc);
}

TEST(Gray, VectorBlocksMatchScalarTwinsAtEveryWidth) {
  for (const auto& c : cases()) checkVectorMatchesScalar(c.fc, blockWidths(), 3);
}

TEST(Gray, AlignmentDoesNotChangeSamples) {
  for (const auto& c : cases()) checkAlignmentInvariance(c.fc, {1, 3, 4, 5, 7, 8, 15, 16, 17, 33, 64}, 3);
}

TEST(Gray, NegativeStepWalksBottomUp) {
  for (const auto& c : cases()) checkNegativeStep(c.fc, 37, 5);
}

TEST(Gray, NullWeightsMeanTheDefaults) {
  const Lum8u px8[] = {17, 91, 0, 9, 200, 100, 30, 77, 255, 255, 255, 1};
  Lum8u a[3], b[3];
  ASSERT_EQ(lumiRGBToGray_8u_C3C1R(px8, 12, a, 3, {3, 1}), lumStatusOk);
  ASSERT_EQ(lumiColorToGray_8u_C3C1R(px8, 12, b, 3, {3, 1}, nullptr), lumStatusOk);
  EXPECT_EQ(0, std::memcmp(a, b, 3));
  // Sixteen pixels go through the vector block as well.
  std::vector<Lum8u> src(64 * 4);
  std::mt19937 rng(9);
  for (auto& v : src) v = Lum8u(rng());
  std::vector<Lum8u> c(64), d(64);
  ASSERT_EQ(lumiRGBToGray_8u_AC4C1R(src.data(), 256, c.data(), 64, {64, 1}), lumStatusOk);
  ASSERT_EQ(lumiColorToGray_8u_AC4C1R(src.data(), 256, d.data(), 64, {64, 1}, nullptr), lumStatusOk);
  EXPECT_EQ(c, d);
  std::vector<Lum16u> s16(64 * 3);
  for (auto& v : s16) v = Lum16u(rng());
  std::vector<Lum16u> e(64), f(64);
  ASSERT_EQ(lumiRGBToGray_16u_C3C1R(s16.data(), 384, e.data(), 128, {64, 1}), lumStatusOk);
  ASSERT_EQ(lumiColorToGray_16u_C3C1R(s16.data(), 384, f.data(), 128, {64, 1}, nullptr), lumStatusOk);
  EXPECT_EQ(e, f);
  std::vector<Lum32f> s32(64 * 4, 0.25f);
  std::vector<Lum32f> g(64), h(64);
  ASSERT_EQ(lumiRGBToGray_32f_AC4C1R(s32.data(), 1024, g.data(), 256, {64, 1}), lumStatusOk);
  ASSERT_EQ(lumiColorToGray_32f_AC4C1R(s32.data(), 1024, h.data(), 256, {64, 1}, nullptr), lumStatusOk);
  EXPECT_EQ(g, h);
}

// The double forms have no default weights: a null coeffs is refused with the
// other pointers, before the size, and the destination keeps its samples.
TEST(Gray, DoubleFormsRefuseNullWeights) {
  using Fn = LumStatus (*)(const Lum64f*, int, Lum64f*, int, LumSize, const Lum64f*);
  for (auto [fn, n] : {std::pair<Fn, int>{lumiColorToGray_64f_C3C1R, 3}, {lumiColorToGray_64f_AC4C1R, 4}}) {
    std::vector<Lum64f> src(size_t(4 * n), 1.5), dst(4, -7.0);
    for (LumSize roi : {LumSize{4, 1}, LumSize{0, 1}, LumSize{4, -1}})
      EXPECT_EQ(fn(src.data(), 8 * 4 * n, dst.data(), 32, roi, nullptr), lumStatusNullPointer) << n;
    EXPECT_EQ(dst, std::vector<Lum64f>(4, -7.0));
  }
}

// Known answers of the 8u forms. Widths 1..3 are all tail, 4..7 put the first
// four pixels in the block, 8 and 16 are all block (16: the vector block).
TEST(Gray, EightBitKnownAnswersInBlockAndTail) {
  auto rgb = [](const Lum8u* s, int ss, Lum8u* d, int ds, LumSize r) { return lumiRGBToGray_8u_C3C1R(s, ss, d, ds, r); };
  auto rgba = [](const Lum8u* s, int ss, Lum8u* d, int ds, LumSize r) { return lumiRGBToGray_8u_AC4C1R(s, ss, d, ds, r); };
  const Lum32f w09[3] = {0.9f, 0.9f, 0.9f};
  auto wrap = [&](const Lum8u* s, int ss, Lum8u* d, int ds, LumSize r) {
    return lumiColorToGray_8u_C3C1R(s, ss, d, ds, r, w09);
  };
  auto wrap4 = [&](const Lum8u* s, int ss, Lum8u* d, int ds, LumSize r) {
    return lumiColorToGray_8u_AC4C1R(s, ss, d, ds, r, w09);
  };
  struct Row {
    const char* what;
    std::function<std::vector<Lum8u>(int)> run;
    int block, tail;  // expected in block columns and in tail columns
  };
  const Row rows[] = {
      {"white", [&](int w) { return grayOfRun<Lum8u>(rgb, {255, 255, 255}, w); }, 255, 255},
      {"white AC4", [&](int w) { return grayOfRun<Lum8u>(rgba, {255, 255, 255, 0}, w); }, 255, 255},
      {"black", [&](int w) { return grayOfRun<Lum8u>(rgb, {0, 0, 0}, w); }, 0, 0},
      {"red", [&](int w) { return grayOfRun<Lum8u>(rgb, {255, 0, 0}, w); }, 76, 76},
      {"green", [&](int w) { return grayOfRun<Lum8u>(rgb, {0, 255, 0}, w); }, 150, 150},
      {"blue", [&](int w) { return grayOfRun<Lum8u>(rgb, {0, 0, 255}, w); }, 29, 29},
      // Truncated high products against one rounded sum: one code apart.
      {"17,91,0", [&](int w) { return grayOfRun<Lum8u>(rgb, {17, 91, 0}, w); }, 58, 59},
      {"0,234,203", [&](int w) { return grayOfRun<Lum8u>(rgba, {0, 234, 203, 99}, w); }, 160, 161},
      // Weights 0.9: the block sum saturates at 0xFFFF, reads as -1 and gives 0;
      // the tail keeps the low byte of 688.
      {"white x0.9", [&](int w) { return grayOfRun<Lum8u>(wrap, {255, 255, 255}, w); }, 0, 176},
      {"white x0.9 AC4", [&](int w) { return grayOfRun<Lum8u>(wrap4, {255, 255, 255, 255}, w); }, 0, 176},
  };
  for (const Row& r : rows) {
    SCOPED_TRACE(r.what);
    for (int w : {1, 2, 3, 4, 5, 6, 7, 8, 9, 11, 16, 17, 19, 35}) {
      const auto out = r.run(w);
      for (int x = 0; x < w; ++x)
        ASSERT_EQ(out[size_t(x)], x < (w & ~3) ? r.block : r.tail) << "width " << w << " column " << x;
    }
  }
}

// Every column takes the block or the tail form by its position alone.
TEST(Gray, EachColumnTakesItsRowsForm) {
  std::mt19937 rng(11);
  int differ = 0, total = 0;
  for (const char* name : {"RGBToGray_8u_C3", "ColorToGray_8u_AC4"}) {
    const FnCase& fc = byName(name).fc;
    const int bpp = fc.src.planes[0].bpp;
    auto alone = [&](const uint8_t* px, int width) {
      CallImages ci(fc, LumSize{width, 1});
      for (int x = 0; x < width; ++x) std::memcpy(ci.src[0].row(0) + bpp * x, px, size_t(bpp));
      EXPECT_EQ(fc.call(ci.buffers(), LumSize{width, 1}), lumStatusOk);
      return ci.dst[0].row(0)[0];
    };
    for (int w : {1, 3, 4, 5, 7, 8, 9, 15, 16, 17, 20, 23, 31, 35}) {
      CallImages ci(fc, LumSize{w, 1});
      ci.randomizeSource(rng);
      ASSERT_EQ(fc.call(ci.buffers(), LumSize{w, 1}), lumStatusOk);
      for (int x = 0; x < w; ++x) {
        const uint8_t* px = ci.src[0].row(0) + bpp * x;
        const uint8_t blockV = alone(px, 16), tailV = alone(px, 1);
        ASSERT_EQ(ci.dst[0].row(0)[x], x < (w & ~3) ? blockV : tailV) << name << " width " << w << " column " << x;
        ASSERT_LE(std::abs(blockV - tailV), 1);
        differ += blockV != tailV;
        ++total;
      }
    }
  }
  // A few pixels in a hundred.
  EXPECT_GT(differ, 0);
  EXPECT_LT(differ * 5, total);
}

TEST(Gray, FourthChannelIsNotRead) {
  std::mt19937 rng(13);
  std::vector<Lum8u> a(40 * 4), b;
  for (auto& v : a) v = Lum8u(rng());
  b = a;
  for (int x = 0; x < 40; ++x) b[size_t(4 * x + 3)] = Lum8u(~a[size_t(4 * x + 3)]);
  std::vector<Lum8u> ga(40), gb(40);
  ASSERT_EQ(lumiRGBToGray_8u_AC4C1R(a.data(), 160, ga.data(), 40, {40, 1}), lumStatusOk);
  ASSERT_EQ(lumiRGBToGray_8u_AC4C1R(b.data(), 160, gb.data(), 40, {40, 1}), lumStatusOk);
  EXPECT_EQ(ga, gb);
  std::vector<Lum32f> fa(40 * 4, 7.5f), fb = fa;
  for (int x = 0; x < 40; ++x) fb[size_t(4 * x + 3)] = std::numeric_limits<float>::quiet_NaN();
  std::vector<Lum32f> oa(40), ob(40);
  ASSERT_EQ(lumiRGBToGray_32f_AC4C1R(fa.data(), 640, oa.data(), 160, {40, 1}), lumStatusOk);
  ASSERT_EQ(lumiRGBToGray_32f_AC4C1R(fb.data(), 640, ob.data(), 160, {40, 1}), lumStatusOk);
  EXPECT_EQ(oa, ob);
}

// 16u and 16s: the float sum rounds to nearest, ties to even, then saturates;
// an out-of-range or NaN sum converts to 0x80000000 and saturates low.
TEST(Gray, SixteenBitRoundsToEvenAndSaturates) {
  const float nan = std::numeric_limits<float>::quiet_NaN();
  struct U {
    Lum32f w[3];
    Lum16u c0;
    Lum16u want;
  } us[] = {
      {{0.5f, 0, 0}, 1, 0},       {{0.5f, 0, 0}, 3, 2},       {{0.5f, 0, 0}, 5, 2},
      {{0.5f, 0, 0}, 7, 4},       {{0.5f, 0, 0}, 65535, 32768}, {{2, 0, 0}, 40000, 65535},
      {{-1, 0, 0}, 1000, 0},      {{nan, 0, 0}, 1, 0},        {{1e6f, 0, 0}, 65535, 0},
      {{0.25f, 0, 0}, 6, 2},      {{0.25f, 0, 0}, 10, 2},     {{0.25f, 0, 0}, 14, 4},
  };
  for (const U& u : us)
    for (int w : {1, 8, 13}) {
      auto f = [&](const Lum16u* s, int ss, Lum16u* d, int ds, LumSize r) {
        return lumiColorToGray_16u_C3C1R(s, ss, d, ds, r, u.w);
      };
      for (Lum16u v : grayOfRun<Lum16u>(f, {u.c0, 321, 654}, w)) ASSERT_EQ(v, u.want) << u.c0 << " w0 " << u.w[0];
    }
  struct S16 {
    Lum32f w[3];
    Lum16s c0;
    Lum16s want;
  } ss[] = {
      {{0.5f, 0, 0}, -1, 0},      {{0.5f, 0, 0}, -3, -2},    {{0.5f, 0, 0}, 5, 2},
      {{-1, 0, 0}, -32768, 32767}, {{2, 0, 0}, 20000, 32767}, {{2, 0, 0}, -20000, -32768},
      {{nan, 0, 0}, 1, -32768},
  };
  for (const S16& s : ss)
    for (int w : {1, 8, 13}) {
      auto f = [&](const Lum16s* a, int as, Lum16s* d, int ds, LumSize r) {
        return lumiColorToGray_16s_AC4C1R(a, as, d, ds, r, s.w);
      };
      for (Lum16s v : grayOfRun<Lum16s>(f, {s.c0, -321, 654, 1}, w)) ASSERT_EQ(v, s.want) << s.c0;
    }
  // The default weights keep -32768 at -32768.
  for (int w : {1, 8, 13}) {
    auto f = [](const Lum16s* a, int as, Lum16s* d, int ds, LumSize r) { return lumiRGBToGray_16s_C3C1R(a, as, d, ds, r); };
    for (Lum16s v : grayOfRun<Lum16s>(f, {-32768, -32768, -32768}, w)) ASSERT_EQ(v, -32768);
    auto g = [](const Lum16u* a, int as, Lum16u* d, int ds, LumSize r) { return lumiRGBToGray_16u_AC4C1R(a, as, d, ds, r); };
    for (Lum16u v : grayOfRun<Lum16u>(g, {65535, 65535, 65535, 0}, w)) ASSERT_EQ(v, 65535);
  }
}

// The first two products are added first, then the third, with no clamp.
TEST(Gray, FloatSumsAssociateLeftAndDoNotClamp) {
  const Lum32f one[3] = {1, 1, 1};
  const Lum64f one64[3] = {1, 1, 1};
  for (int w : {1, 4, 7}) {
    auto f = [&](const Lum32f* a, int as, Lum32f* d, int ds, LumSize r) {
      return lumiColorToGray_32f_C3C1R(a, as, d, ds, r, one);
    };
    for (float v : grayOfRun<Lum32f>(f, {1e8f, -1e8f, 1}, w)) ASSERT_EQ(v, 1.0f);
    for (float v : grayOfRun<Lum32f>(f, {1, 1e8f, -1e8f}, w)) ASSERT_EQ(v, 0.0f);
    auto g = [&](const Lum64f* a, int as, Lum64f* d, int ds, LumSize r) {
      return lumiColorToGray_64f_AC4C1R(a, as, d, ds, r, one64);
    };
    for (double v : grayOfRun<Lum64f>(g, {1e17, -1e17, 1, 5}, w)) ASSERT_EQ(v, 1.0);
    for (double v : grayOfRun<Lum64f>(g, {1, 1e17, -1e17, 5}, w)) ASSERT_EQ(v, 0.0);
    auto h = [](const Lum32f* a, int as, Lum32f* d, int ds, LumSize r) { return lumiRGBToGray_32f_AC4C1R(a, as, d, ds, r); };
    const float big = (0.299f * 1000.0f + 0.587f * 1000.0f) + 0.114f * 1000.0f;
    for (float v : grayOfRun<Lum32f>(h, {1000, 1000, 1000, -1}, w)) ASSERT_EQ(v, big);
    for (float v : grayOfRun<Lum32f>(h, {-5, -5, -5, 0}, w)) ASSERT_LT(v, -4.99f);
  }
}

// Byte steps become element steps rounded down: an odd 16-bit step, a 32-bit
// step of 4k + 3 and a 64-bit step of 8k + 7 address rows like the step below.
TEST(Gray, ByteStepsRoundDownToWholeSamples) {
  const int w = 5, h = 3;
  std::mt19937 rng(17);
  {
    std::vector<Lum16u> src(64 * h), a(32 * h, 0), b(32 * h, 0);
    for (auto& v : src) v = Lum16u(rng());
    ASSERT_EQ(lumiRGBToGray_16u_C3C1R(src.data(), 2 * 20 + 1, a.data(), 2 * 7 + 1, {w, h}), lumStatusOk);
    ASSERT_EQ(lumiRGBToGray_16u_C3C1R(src.data(), 2 * 20, b.data(), 2 * 7, {w, h}), lumStatusOk);
    EXPECT_EQ(a, b);
    ASSERT_EQ(lumiGrayToRGB_16u_C1C4R(src.data(), 2 * 6 + 1, a.data(), 2 * 21 + 1, {w, h}, 3), lumStatusOk);
    ASSERT_EQ(lumiGrayToRGB_16u_C1C4R(src.data(), 2 * 6, b.data(), 2 * 21, {w, h}, 3), lumStatusOk);
    EXPECT_EQ(a, b);
  }
  {
    std::vector<Lum32f> src(64 * h), a(32 * h, 0), b(32 * h, 0);
    for (auto& v : src) v = float(rng() % 1000) / 8;
    ASSERT_EQ(lumiColorToGray_32f_AC4C1R(src.data(), 4 * 21 + 3, a.data(), 4 * 6 + 3, {w, h}, kW), lumStatusOk);
    ASSERT_EQ(lumiColorToGray_32f_AC4C1R(src.data(), 4 * 21, b.data(), 4 * 6, {w, h}, kW), lumStatusOk);
    EXPECT_EQ(a, b);
    ASSERT_EQ(lumiGrayToRGB_32f_C1C3R(src.data(), 4 * 7 + 2, a.data(), 4 * 16 + 1, {w, h}), lumStatusOk);
    ASSERT_EQ(lumiGrayToRGB_32f_C1C3R(src.data(), 4 * 7, b.data(), 4 * 16, {w, h}), lumStatusOk);
    EXPECT_EQ(a, b);
  }
  {
    std::vector<Lum64f> src(64 * h), a(32 * h, 0), b(32 * h, 0);
    for (auto& v : src) v = double(rng() % 1000) / 8;
    ASSERT_EQ(lumiColorToGray_64f_C3C1R(src.data(), 8 * 16 + 7, a.data(), 8 * 6 + 7, {w, h}, kW64), lumStatusOk);
    ASSERT_EQ(lumiColorToGray_64f_C3C1R(src.data(), 8 * 16, b.data(), 8 * 6, {w, h}, kW64), lumStatusOk);
    EXPECT_EQ(a, b);
  }
}

// Every destination pixel holds the source sample three times, and aval fourth.
TEST(Gray, GrayToColorReplicatesAndSetsAval) {
  for (const auto& c : cases()) {
    if (c.kind != Kind::ToColor) continue;
    SCOPED_TRACE(c.fc.name);
    for (int w : {1, 3, 4, 5, 15, 16, 17, 37}) {
      CallImages ci(c.fc, LumSize{w, 2});
      std::mt19937 rng{uint32_t(w)};
      ci.randomizeSource(rng);
      ci.fillDestination(0);
      ASSERT_EQ(c.fc.call(ci.buffers(), LumSize{w, 2}), lumStatusOk);
      for (int y = 0; y < 2; ++y)
        for (int x = 0; x < w; ++x) {
          const uint8_t* g = ci.src[0].row(y) + c.elem * x;
          const uint8_t* p = ci.dst[0].row(y) + c.elem * c.channels * x;
          for (int k = 0; k < 3; ++k) ASSERT_EQ(0, std::memcmp(p + c.elem * k, g, size_t(c.elem))) << x;
          if (c.channels == 4) {
            // 0xA7 in the sample's own type.
            uint8_t want[4] = {0xA7, 0, 0, 0};
            if (c.elem == 4) {
              const float f = 167.0f;
              std::memcpy(want, &f, 4);
            }
            ASSERT_EQ(0, std::memcmp(p + 3 * c.elem, want, size_t(c.elem))) << x;
          }
        }
    }
  }
}

// The luma of packed YCbCr422 at every width, odd ones in full, chroma unread.
TEST(Gray, LumaOf422AtEveryWidth) {
  const FnCase& fc = byName("YCbCr422ToGray").fc;
  for (int w = 1; w <= 70; ++w) {
    CallImages ci(fc, LumSize{w, 2});
    std::mt19937 rng{uint32_t(w)};
    ci.randomizeSource(rng);
    ci.fillDestination(0x5A);
    ASSERT_EQ(fc.call(ci.buffers(), LumSize{w, 2}), lumStatusOk) << w;
    auto before = ci.destinationBytes();
    for (int y = 0; y < 2; ++y)
      for (int x = 0; x < w; ++x) ASSERT_EQ(ci.dst[0].row(y)[x], ci.src[0].row(y)[2 * x]) << w << " " << x;
    for (int y = 0; y < 2; ++y)
      for (int x = 1; x < 2 * w; x += 2) ci.src[0].row(y)[x] ^= 0xFF;
    ASSERT_EQ(fc.call(ci.buffers(), LumSize{w, 2}), lumStatusOk);
    ASSERT_EQ(ci.destinationBytes(), before);
  }
}
