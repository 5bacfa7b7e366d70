// The chroma resamplers (4:2:0 <-> 4:1:1 with averaging, 4:2:0 <-> 16:2:0), whose
// rounding depends on where a sample falls in its row, and the deliberate
// oddities of the layout family: crossed steps, the missing swap, check orders,
// and lossless round trips.
#include <gtest/gtest.h>

#include <cstring>
#include <random>
#include <vector>

#include "frame/simd.h"
#include "lumcc.h"
#include "support/guarded_image.h"

using namespace lumtest;

namespace {

using Rows = std::vector<std::vector<int>>;

Rows readPlane(const GuardedImage& g) {
  Rows r(size_t(g.height()), std::vector<int>(size_t(g.rowBytes())));
  for (int y = 0; y < g.height(); ++y)
    for (int x = 0; x < g.rowBytes(); ++x) r[size_t(y)][size_t(x)] = g.row(y)[x];
  return r;
}

int avgUp(int a, int b) { return (a + b + 1) >> 1; }
int avgDown(int a, int b) { return (a + b) >> 1; }
int avgBy(bool up, int a, int b) { return up ? avgUp(a, b) : avgDown(a, b); }

// Which samples of a row of n round up, found by walking the block loops as
// they are stated: a block of `len` is taken while the remaining count passes
// its test; the samples that no block takes round down.
struct BlockRule {
  int len;
  int minRemaining;  // a block runs while n - j >= minRemaining
};
std::vector<bool> roundsUp(int n, std::initializer_list<BlockRule> rules) {
  std::vector<bool> up(size_t(n), false);
  int j = 0;
  for (BlockRule r : rules)
    for (; n - j >= r.minRemaining; j += r.len)
      for (int i = 0; i < r.len; ++i) up[size_t(j + i)] = true;
  return up;
}

// ---- references -----------------------------------------------------------------------------
// 4:2:0 rows (H/2 of 2n) to 4:1:1 rows (H of n).
Rows ref420To411(const Rows& in, int n) {
  const int rows = int(in.size());
  Rows out(size_t(2 * rows), std::vector<int>(size_t(n)));
  const auto up = roundsUp(n, {{32, 32}});  // blocks of 32 outputs round up; 8s and singles down
  for (int r = 0; r + 1 < rows; ++r)
    for (int j = 0; j < n; ++j) {
      out[size_t(2 * r)][size_t(j)] = in[size_t(r)][size_t(2 * j)];
      out[size_t(2 * r + 1)][size_t(j)] = avgBy(up[size_t(j)], in[size_t(r)][size_t(2 * j)], in[size_t(r + 1)][size_t(2 * j)]);
    }
  for (int j = 0; j < n; ++j)
    out[size_t(2 * rows - 2)][size_t(j)] = out[size_t(2 * rows - 1)][size_t(j)] = in[size_t(rows - 1)][size_t(2 * j)];
  return out;
}

// h(x) with the given rounding per input sample; the last input fills both outputs.
std::vector<int> expand(const std::vector<int>& x, const std::vector<bool>& up) {
  const size_t n = x.size();
  std::vector<int> h(2 * n);
  for (size_t j = 0; j + 1 < n; ++j) {
    h[2 * j] = x[j];
    h[2 * j + 1] = avgBy(up[j], x[j], x[j + 1]);
  }
  h[2 * n - 2] = h[2 * n - 1] = x[n - 1];
  return h;
}

// 4:1:1 rows (H of n) to 4:2:0 rows (H/2 of 2n).
Rows ref411To420(const Rows& in, int n) {
  Rows out;
  const auto up = roundsUp(n, {{64, 65}, {16, 17}});  // "more than 64", "more than 16" remain
  for (size_t k = 0; 2 * k < in.size(); ++k) out.push_back(expand(in[2 * k], up));
  return out;
}

// 4:2:0 rows (H/2 of 2n) to 16:2:0 rows (H/4 of n).
Rows ref420To1620(const Rows& in, int n) {
  Rows out(in.size() / 2, std::vector<int>(size_t(n)));
  for (size_t r = 0; r < out.size(); ++r)
    for (int c = 0; c < n; ++c) out[r][size_t(c)] = in[2 * r][size_t(2 * c)];
  return out;
}

// 16:2:0 rows (H/4 of n) to 4:2:0 rows (H/2 of 2n).
Rows ref1620To420(const Rows& in, int n) {
  const size_t rows = in.size();
  Rows out(2 * rows);
  const auto up = roundsUp(n, {{32, 33}, {16, 17}});
  const auto upLast = roundsUp(n, {{16, 17}});
  for (size_t r = 0; r + 1 < rows; ++r) {
    const auto& s = in[r];
    const auto& t = in[r + 1];
    out[2 * r] = expand(s, up);
    std::vector<int> mid(size_t(2 * n));
    for (int j = 0; j + 1 < n; ++j) {
      const bool u = up[size_t(j)];
      mid[size_t(2 * j)] = avgBy(u, s[size_t(j)], t[size_t(j)]);
      mid[size_t(2 * j + 1)] =
          avgBy(u, avgBy(u, s[size_t(j)], s[size_t(j + 1)]), avgBy(u, t[size_t(j)], t[size_t(j + 1)]));
    }
    mid[size_t(2 * n - 2)] = mid[size_t(2 * n - 1)] = avgDown(s[size_t(n - 1)], t[size_t(n - 1)]);
    out[2 * r + 1] = mid;
  }
  const auto& s = in[rows - 1];
  out[2 * rows - 2] = expand(s, upLast);
  std::vector<int> rep(size_t(2 * n));
  for (int j = 0; j < n; ++j) rep[size_t(2 * j)] = rep[size_t(2 * j + 1)] = s[size_t(j)];
  out[2 * rows - 1] = rep;
  return out;
}

// ---- running a resampler on guarded planes ---------------------------------------------
using P3Fn = LumStatus (*)(const Lum8u* const[3], const int[3], Lum8u* const[3], const int[3], LumSize);

struct Resampler {
  const char* name;
  P3Fn fn;
  int sw, sh, dw, dh;  // chroma plane divisors of source and destination
  Rows (*ref)(const Rows&, int);
};
const Resampler kResamplers[] = {
    {"420To411", lumiYCbCr420To411_8u_P3R, 2, 2, 4, 1, ref420To411},
    {"411To420", lumiYCbCr411To420_8u_P3R, 4, 1, 2, 2, ref411To420},
    {"420To1620", lumiYCbCr420To1620_8u_P3R, 2, 2, 4, 4, ref420To1620},
    {"1620To420", lumiYCbCr1620To420_8u_P3R, 4, 4, 2, 2, ref1620To420},
};

struct Converted {
  GuardedPlanes src, dst;
};

// Source planes filled by gen(plane, row, sample), destination converted.
template <class Gen>
Converted runResampler(const Resampler& rs, LumSize roi, Gen gen) {
  const int W = roi.width, H = roi.height;
  Converted r{GuardedPlanes({W, W / rs.sw, W / rs.sw}, {H, H / rs.sh, H / rs.sh}),
        GuardedPlanes({W, W / rs.dw, W / rs.dw}, {H, H / rs.dh, H / rs.dh})};
  for (int p = 0; p < 3; ++p) {
    GuardedImage& g = r.src.planes[size_t(p)];
    for (int y = 0; y < g.height(); ++y)
      for (int x = 0; x < g.rowBytes(); ++x) g.row(y)[x] = uint8_t(gen(p, y, x));
    r.dst.planes[size_t(p)].fill(0xEE);
  }
  EXPECT_EQ(rs.fn(r.src.cptr(), r.src.steps, r.dst.ptr, r.dst.steps, roi), lumStatusOk);
  EXPECT_TRUE(r.src.intactCanaries());
  EXPECT_TRUE(r.dst.intactCanaries());
  return r;
}

void checkResampler(const Resampler& rs, LumSize roi, uint32_t seed) {
  SCOPED_TRACE(testing::Message() << rs.name << " " << roi.width << "x" << roi.height);
  std::mt19937 rng(seed);
  std::vector<uint8_t> noise(1 << 16);
  for (auto& b : noise) b = uint8_t(rng());
  const Converted r = runResampler(rs, roi, [&](int p, int y, int x) { return noise[size_t((p * 7919 + y * 613 + x) & 0xFFFF)]; });
  ASSERT_EQ(r.dst.planes[0].bytes(), r.src.planes[0].bytes()) << "luma";
  for (int p = 1; p < 3; ++p) {
    const Rows want = rs.ref(readPlane(r.src.planes[size_t(p)]), roi.width / 4);
    const Rows got = readPlane(r.dst.planes[size_t(p)]);
    ASSERT_EQ(got.size(), want.size());
    for (size_t y = 0; y < got.size(); ++y)
      for (size_t x = 0; x < got[y].size(); ++x)
        ASSERT_EQ(got[y][x], want[y][x]) << "plane " << p << " row " << y << " sample " << x;
  }
}

}  // namespace

// Row lengths n = W/4 on both sides of every block length (8, 16, 32, 64), at
// the smallest heights and a few more, with vector blocks and with scalar twins.
TEST(ChromaResample, EachSampleTakesTheRoundingOfItsBlock) {
  const int ns[] = {1, 2, 3, 7, 8, 9, 15, 16, 17, 18, 31, 32, 33, 34, 40, 48, 49, 63, 64, 65, 66, 80, 81, 96, 97, 129, 130};
  for (const Resampler& rs : kResamplers) {
    for (int n : ns)
      for (int h : {4, 8, 12}) {
        checkResampler(rs, LumSize{4 * n, h}, uint32_t(n * 31 + h));
        {
          lum::ScalarScope scalarOnly;
          checkResampler(rs, LumSize{4 * n, h}, uint32_t(n * 31 + h));
        }
        if (testing::Test::HasFatalFailure()) return;
      }
  }
}

// Every vertical average of 4:2:0 to 4:1:1 lies half-way between two codes: a
// row of 40 outputs rounds its first 32 up and its last 8 down.
TEST(ChromaResample, To411RowHoldsRoundedUpAndDownSideBySide) {
  const Resampler& rs = kResamplers[0];
  const Converted r = runResampler(rs, LumSize{160, 4}, [](int p, int y, int) { return p == 0 ? 0 : 10 + (y & 1); });
  for (int p = 1; p < 3; ++p) {
    const GuardedImage& d = r.dst.planes[size_t(p)];
    for (int j = 0; j < 40; ++j) {
      EXPECT_EQ(d.row(0)[j], 10);
      EXPECT_EQ(d.row(1)[j], j < 32 ? 11 : 10) << j;  // avg of 10 and 11
      EXPECT_EQ(d.row(2)[j], 11);
      EXPECT_EQ(d.row(3)[j], 11);
    }
  }
}

// H = 2: the row loop makes its regular pass before it tests the end, so two
// input chroma rows are read and four output rows written (the caller leaves a
// chroma row of room in the source and two in the destination).
TEST(ChromaResample, To411AtHeight2RunsARegularPassThenTheClosingPass) {
  const int W = 160, n = W / 4;
  GuardedPlanes src({W, W / 2, W / 2}, {2, 2, 2}), dst({W, n, n}, {2, 4, 4});
  for (int p = 1; p < 3; ++p)
    for (int y = 0; y < 2; ++y)
      for (int x = 0; x < W / 2; ++x) src.planes[size_t(p)].row(y)[x] = uint8_t(10 * p + 40 * y + (x & 2));
  EXPECT_EQ(lumiYCbCr420To411_8u_P3R(src.cptr(), src.steps, dst.ptr, dst.steps, LumSize{W, 2}), lumStatusOk);
  for (int p = 1; p < 3; ++p)
    for (int j = 0; j < n; ++j) {
      const int a = 10 * p + (2 * j & 2), b = a + 40;
      EXPECT_EQ(dst.planes[size_t(p)].row(0)[j], a);
      EXPECT_EQ(dst.planes[size_t(p)].row(1)[j], (a + b + (j < 32)) >> 1) << j;
      EXPECT_EQ(dst.planes[size_t(p)].row(2)[j], b);
      EXPECT_EQ(dst.planes[size_t(p)].row(3)[j], b);
    }
  EXPECT_TRUE(src.intactCanaries());
  EXPECT_TRUE(dst.intactCanaries());
}

// Horizontal averages in 4:1:1 to 4:2:0: with n = 20 inputs the first 16 round
// up, inputs 16..18 down, and the last fills two outputs.
TEST(ChromaResample, To420RoundsByInputPosition) {
  const Converted r = runResampler(kResamplers[1], LumSize{80, 4}, [](int, int, int x) { return 50 + (x & 1); });
  const GuardedImage& d = r.dst.planes[1];
  for (int j = 0; j < 19; ++j) {
    EXPECT_EQ(d.row(0)[2 * j], 50 + (j & 1));
    EXPECT_EQ(d.row(0)[2 * j + 1], j < 16 ? 51 : 50) << j;
  }
  EXPECT_EQ(d.row(0)[38], 51);
  EXPECT_EQ(d.row(0)[39], 51);
}

// W = 4: one input sample per row, and both outputs equal it.
TEST(ChromaResample, To420WithOneInputSampleRepeatsIt) {
  const Converted r = runResampler(kResamplers[1], LumSize{4, 8}, [](int p, int y, int) { return 20 * p + y; });
  for (int p = 1; p < 3; ++p)
    for (int k = 0; k < 4; ++k) {
      EXPECT_EQ(r.dst.planes[size_t(p)].row(k)[0], 20 * p + 2 * k);
      EXPECT_EQ(r.dst.planes[size_t(p)].row(k)[1], 20 * p + 2 * k);
    }
}

// H = 4 has one 16:2:0 row: the even output row is interpolated, the odd one
// only repeats the samples.
TEST(ChromaResample, From1620AtHeight4HasOnlyTheLastRowPass) {
  const Converted r = runResampler(kResamplers[3], LumSize{16, 4}, [](int, int, int x) { return 10 * x + 3; });
  const GuardedImage& d = r.dst.planes[2];
  const int even[8] = {3, 8, 13, 18, 23, 28, 33, 33};
  const int odd[8] = {3, 3, 13, 13, 23, 23, 33, 33};
  for (int i = 0; i < 8; ++i) {
    EXPECT_EQ(d.row(0)[i], even[i]) << i;
    EXPECT_EQ(d.row(1)[i], odd[i]) << i;
  }
}

// H = 2 holds one 4:2:0 chroma row and two 4:1:1 rows. The function reads that
// row only and writes two equal rows of its even samples: nothing outside the
// planes is read or written (the guard pages would fault).
TEST(ChromaResample, To1620KeepsEvenRowsAndSamples) {
  const Converted r = runResampler(kResamplers[2], LumSize{16, 8}, [](int, int y, int x) { return 16 * y + x; });
  const GuardedImage& d = r.dst.planes[1];
  for (int row = 0; row < 2; ++row)
    for (int c = 0; c < 4; ++c) EXPECT_EQ(d.row(row)[c], 16 * (2 * row) + 2 * c);
}

// ---- oddities of the layout family ---------------------------------------------------------

// YV12 to NV12 walks the Cb plane (pSrc[2]) with srcStep[1] and the Cr plane
// (pSrc[1]) with srcStep[2].
TEST(ChromaLayoutQuirks, YV12ToNV12CrossesTheChromaSteps) {
  const int W = 16, H = 8;
  // Each chroma plane holds enough rows for either step.
  ImageOptions o;
  o.stepOverride = 40;
  GuardedImage y(W, H), cr(W / 2, 4, o), cb(W / 2, 4, o);
  std::mt19937 rng(9);
  y.randomize(rng);
  for (int i = 0; i < 4 * 40 - 40 + 8; ++i) {
    cr.data()[i] = uint8_t(i);
    cb.data()[i] = uint8_t(100 + i);
  }
  const Lum8u* src[3] = {y.data(), cr.data(), cb.data()};
  const int steps[3] = {y.step(), 40, 24};  // Cr's step 40, Cb's step 24
  GuardedImage dy(W, H), dc(W, H / 2);
  ASSERT_EQ(lumiYCrCb420ToYCbCr420_8u_P3P2R(src, steps, dy.data(), dy.step(), dc.data(), dc.step(), LumSize{W, H}),
            lumStatusOk);
  for (int k = 0; k < 4; ++k)
    for (int j = 0; j < 8; ++j) {
      EXPECT_EQ(dc.row(k)[2 * j], uint8_t(100 + k * 40 + j)) << "Cb follows srcStep[1]";
      EXPECT_EQ(dc.row(k)[2 * j + 1], uint8_t(k * 24 + j)) << "Cr follows srcStep[2]";
    }
  EXPECT_EQ(dy.bytes(), y.bytes());
}

// NV12 to "YCrCb420" planes sends Cb to pDst[1], like the plain NV12 split.
TEST(ChromaLayoutQuirks, NV12ToYCrCb420KeepsCbInPlane1) {
  const Lum8u y[8] = {1, 2, 3, 4, 5, 6, 7, 8}, c[4] = {10, 20, 30, 40};
  Lum8u a[8], b[2], d[2], a2[8], b2[2], d2[2];
  Lum8u* dst[3] = {a, b, d};
  Lum8u* dst2[3] = {a2, b2, d2};
  const int steps[3] = {4, 2, 2};
  ASSERT_EQ(lumiYCbCr420ToYCrCb420_8u_P2P3R(y, 4, c, 4, dst, steps, LumSize{4, 2}), lumStatusOk);
  ASSERT_EQ(lumiYCbCr420_8u_P2P3R(y, 4, c, 4, dst2, steps, LumSize{4, 2}), lumStatusOk);
  EXPECT_EQ(b[0], 10);
  EXPECT_EQ(b[1], 30);
  EXPECT_EQ(d[0], 20);
  EXPECT_EQ(d[1], 40);
  EXPECT_EQ(0, std::memcmp(a, a2, 8));
  EXPECT_EQ(0, std::memcmp(b, b2, 2));
  EXPECT_EQ(0, std::memcmp(d, d2, 2));
}

// Size below 1 is tested before the planes, the class minimum after them.
TEST(ChromaLayoutQuirks, NV12ToYCrCb420ChecksInTwoRounds) {
  Lum8u buf[64] = {};
  Lum8u* good[3] = {buf, buf + 16, buf + 32};
  Lum8u* holed[3] = {buf, nullptr, buf + 32};
  const int steps[3] = {4, 2, 2};
  auto f = [&](Lum8u* const* d, LumSize s) { return lumiYCbCr420ToYCrCb420_8u_P2P3R(buf, 4, buf, 4, d, steps, s); };
  EXPECT_EQ(f(holed, LumSize{0, 4}), lumStatusBadSize);
  EXPECT_EQ(f(holed, LumSize{4, 0}), lumStatusBadSize);
  EXPECT_EQ(f(holed, LumSize{1, 4}), lumStatusNullPointer);
  EXPECT_EQ(f(holed, LumSize{4, 1}), lumStatusNullPointer);
  EXPECT_EQ(f(good, LumSize{1, 4}), lumStatusBadSize);
  EXPECT_EQ(f(nullptr, LumSize{0, 4}), lumStatusNullPointer);
  EXPECT_EQ(lumiYCbCr420ToYCrCb420_8u_P2P3R(nullptr, 4, buf, 4, good, steps, LumSize{0, 0}), lumStatusNullPointer);
}

// The YUY2 split refuses a null step array; it is the only one that looks.
TEST(ChromaLayoutQuirks, YUY2SplitRefusesANullStepArray) {
  Lum8u src[16] = {}, y[8], u[4], v[4];
  Lum8u* dst[3] = {y, u, v};
  EXPECT_EQ(lumiYCbCr422_8u_C2P3R(src, 8, dst, nullptr, LumSize{4, 2}), lumStatusNullPointer);
  EXPECT_EQ(lumiYCbCr422_8u_C2P3R(src, 8, dst, nullptr, LumSize{0, 2}), lumStatusNullPointer);
}

// Functions whose pointer test covers the planes of pDst still refuse a null
// array rather than read through it.
TEST(ChromaLayoutQuirks, NullPlaneArrayIsRefusedNotRead) {
  Lum8u buf[64] = {};
  const int steps[3] = {8, 4, 4};
  const LumSize s{8, 4};
  EXPECT_EQ(lumiYCbCr411_8u_P2P3R(buf, 8, buf, 8, nullptr, steps, s), lumStatusNullPointer);
  EXPECT_EQ(lumiYCbCr411ToYCbCr422_8u_P2P3R(buf, 8, buf, 8, nullptr, steps, s), lumStatusNullPointer);
  EXPECT_EQ(lumiYCbCr411ToYCbCr420_8u_P2P3R(buf, 8, buf, 8, nullptr, steps, s), lumStatusNullPointer);
  EXPECT_EQ(lumiYCbCr411ToYCrCb420_8u_P2P3R(buf, 8, buf, 8, nullptr, steps, s), lumStatusNullPointer);
}

// Known bytes of one group per packed reorder.
TEST(ChromaLayoutQuirks, PackedReordersOfOneGroup) {
  const Lum8u g[4] = {'Y', 'u', 'y', 'v'};  // Y0 Cb Y1 Cr
  Lum8u o[4];
  ASSERT_EQ(lumiYCbCr422ToCbYCr422_8u_C2R(g, 4, o, 4, LumSize{2, 1}), lumStatusOk);
  EXPECT_EQ(0, std::memcmp(o, "uYvy", 4));
  ASSERT_EQ(lumiCbYCr422ToYCbCr422_8u_C2R(g, 4, o, 4, LumSize{2, 1}), lumStatusOk);
  EXPECT_EQ(0, std::memcmp(o, "uYvy", 4));  // bytes 1 0 3 2 both ways
  ASSERT_EQ(lumiYCbCr422ToYCrCb422_8u_C2R(g, 4, o, 4, LumSize{2, 1}), lumStatusOk);
  EXPECT_EQ(0, std::memcmp(o, "Yvyu", 4));
}

// ---- round trips that lose nothing -------------------------------------------------------
namespace {
template <class Forward, class Back>
void roundTrip(const char* name, std::vector<std::pair<int, int>> srcPlanes, std::vector<std::pair<int, int>> midPlanes,
               Forward fwd, Back back) {
  SCOPED_TRACE(name);
  std::vector<int> sw, sh, mw, mh;
  for (auto [w, h] : srcPlanes) sw.push_back(w), sh.push_back(h);
  for (auto [w, h] : midPlanes) mw.push_back(w), mh.push_back(h);
  GuardedPlanes src(sw, sh), mid(mw, mh), out(sw, sh);
  std::mt19937 rng(77);
  src.randomize(rng);
  ASSERT_EQ(fwd(src, mid), lumStatusOk);
  ASSERT_EQ(back(mid, out), lumStatusOk);
  EXPECT_EQ(out.bytes(), src.bytes());
  EXPECT_TRUE(mid.intactCanaries());
  EXPECT_TRUE(out.intactCanaries());
}
}  // namespace

TEST(ChromaLayoutQuirks, LosslessRoundTrips) {
  const int W = 132, H = 10;
  const LumSize r{W, H};
  // Packed byte orders: YUY2 <-> UYVY.
  roundTrip("YUY2-UYVY", {{2 * W, H}}, {{2 * W, H}},
            [&](GuardedPlanes& s, GuardedPlanes& m) { return lumiYCbCr422ToCbYCr422_8u_C2R(s.ptr[0], s.steps[0], m.ptr[0], m.steps[0], r); },
            [&](GuardedPlanes& m, GuardedPlanes& o) { return lumiCbYCr422ToYCbCr422_8u_C2R(m.ptr[0], m.steps[0], o.ptr[0], o.steps[0], r); });
  // Packed 4:2:2 and planes: YUY2 -> planes -> YUY2, UYVY -> planes -> UYVY, YVYU -> planes -> YVYU.
  roundTrip("YUY2-I422", {{2 * W, H}}, {{W, H}, {W / 2, H}, {W / 2, H}},
            [&](GuardedPlanes& s, GuardedPlanes& m) { return lumiYCbCr422_8u_C2P3R(s.ptr[0], s.steps[0], m.ptr, m.steps, r); },
            [&](GuardedPlanes& m, GuardedPlanes& o) { return lumiYCbCr422_8u_P3C2R(m.cptr(), m.steps, o.ptr[0], o.steps[0], r); });
  roundTrip("UYVY-I422", {{2 * W, H}}, {{W, H}, {W / 2, H}, {W / 2, H}},
            [&](GuardedPlanes& s, GuardedPlanes& m) { return lumiCbYCr422ToYCbCr422_8u_C2P3R(s.ptr[0], s.steps[0], m.ptr, m.steps, r); },
            [&](GuardedPlanes& m, GuardedPlanes& o) { return lumiYCbCr422ToCbYCr422_8u_P3C2R(m.cptr(), m.steps, o.ptr[0], o.steps[0], r); });
  roundTrip("YVYU-I422", {{2 * W, H}}, {{W, H}, {W / 2, H}, {W / 2, H}},
            [&](GuardedPlanes& s, GuardedPlanes& m) { return lumiYCrCb422ToYCbCr422_8u_C2P3R(s.ptr[0], s.steps[0], m.ptr, m.steps, r); },
            [&](GuardedPlanes& m, GuardedPlanes& o) { return lumiYCbCr422ToYCrCb422_8u_P3C2R(m.cptr(), m.steps, o.ptr[0], o.steps[0], r); });
  // Interleaved and split chroma: NV12 <-> I420 and the 4:1:1 pair.
  roundTrip("NV12-I420", {{W, H}, {W, H / 2}}, {{W, H}, {W / 2, H / 2}, {W / 2, H / 2}},
            [&](GuardedPlanes& s, GuardedPlanes& m) { return lumiYCbCr420_8u_P2P3R(s.ptr[0], s.steps[0], s.ptr[1], s.steps[1], m.ptr, m.steps, r); },
            [&](GuardedPlanes& m, GuardedPlanes& o) { return lumiYCbCr420_8u_P3P2R(m.cptr(), m.steps, o.ptr[0], o.steps[0], o.ptr[1], o.steps[1], r); });
  roundTrip("NV11-I411", {{W, H}, {W / 2, H}}, {{W, H}, {W / 4, H}, {W / 4, H}},
            [&](GuardedPlanes& s, GuardedPlanes& m) { return lumiYCbCr411_8u_P2P3R(s.ptr[0], s.steps[0], s.ptr[1], s.steps[1], m.ptr, m.steps, r); },
            [&](GuardedPlanes& m, GuardedPlanes& o) { return lumiYCbCr411_8u_P3P2R(m.cptr(), m.steps, o.ptr[0], o.steps[0], o.ptr[1], o.steps[1], r); });
  // 4:2:0 -> 4:1:1 -> 4:2:0, through both semi-planar directions.
  roundTrip("NV12-I411-NV12", {{W, H}, {W, H / 2}}, {{W, H}, {W / 4, H}, {W / 4, H}},
            [&](GuardedPlanes& s, GuardedPlanes& m) { return lumiYCbCr420ToYCbCr411_8u_P2P3R(s.ptr[0], s.steps[0], s.ptr[1], s.steps[1], m.ptr, m.steps, r); },
            [&](GuardedPlanes& m, GuardedPlanes& o) { return lumiYCbCr411ToYCbCr420_8u_P3P2R(m.cptr(), m.steps, o.ptr[0], o.steps[0], o.ptr[1], o.steps[1], r); });
  roundTrip("I420-NV11-I420", {{W, H}, {W / 2, H / 2}, {W / 2, H / 2}}, {{W, H}, {W / 2, H}},
            [&](GuardedPlanes& s, GuardedPlanes& m) { return lumiYCbCr420ToYCbCr411_8u_P3P2R(s.cptr(), s.steps, m.ptr[0], m.steps[0], m.ptr[1], m.steps[1], r); },
            [&](GuardedPlanes& m, GuardedPlanes& o) { return lumiYCbCr411ToYCbCr420_8u_P2P3R(m.ptr[0], m.steps[0], m.ptr[1], m.steps[1], o.ptr, o.steps, r); });
}
