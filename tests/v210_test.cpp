// v210 rows to 5-6-5 colour words and to 10-bit luma words.
#include <gtest/gtest.h>

#include <cmath>
#include <cstring>

#include "lumcc.h"
#include "support/family.h"

using namespace lumtest;

namespace {

using B = Buffers;
using V210Fn = LumStatus (*)(const Lum32u*, int, Lum16u*, int, LumSize);

// Words a row of w pixels needs: four a whole group, then 1, 2, 3, 3, 4 for a
// partial group of 1..5 pixels.
int wordsFor(int w) {
  static const int part[6] = {0, 1, 2, 3, 3, 4};
  return 4 * (w / 6) + part[w % 6];
}

struct V210Case {
  FnCase fc;
  V210Fn fn;
  int order;  // 0 RGB (R low), 1 BGR (B low), 2 gray
};

FnCase mk(const char* name, V210Fn fn) {
  FnCase c;
  c.name = name;
  PlaneShape words;
  words.bytesFor = [](int w) { return 4 * wordsFor(w); };
  c.src = ImageShape{false, {words}, -1};
  c.dst = packedImg(2);
  c.stepAlign = 4;  // steps handed over in words and in 16-bit words
  c.call = [fn](const B& b, LumSize r) {
    return fn(static_cast<const Lum32u*>(b.src), b.srcStep / 4, static_cast<Lum16u*>(b.dst), b.dstStep / 2, r);
  };
  return c;
}

const std::vector<V210Case>& cases() {
  static const std::vector<V210Case> v = {
      {mk("v210ToRGB", lumiYUV422v210ToRGB_709HDTV_32u16u_C3), lumiYUV422v210ToRGB_709HDTV_32u16u_C3, 0},
      {mk("v210ToBGR", lumiYUV422v210ToBGR_709HDTV_32u16u_C3), lumiYUV422v210ToBGR_709HDTV_32u16u_C3, 1},
      {mk("v210ToGray", lumiYUV422v210ToGray_709HDTV_32u16u_C3C1), lumiYUV422v210ToGray_709HDTV_32u16u_C3C1, 2},
  };
  return v;
}

Lum32u word(int a, int b, int c, int top = 0) {
  return Lum32u(a) | Lum32u(b) << 10 | Lum32u(c) << 20 | Lum32u(top) << 30;
}

// A row of pixels given by (Y, Cb, Cr) per pair: packs y[i], and cb/cr of pair i/2.
std::vector<Lum32u> pack(const std::vector<int>& y, const std::vector<int>& cb, const std::vector<int>& cr) {
  const int w = int(y.size());
  std::vector<Lum32u> out(size_t(4 * ((w + 5) / 6)), 0);
  auto Y = [&](int i) { return i < w ? y[size_t(i)] : 0; };
  auto Cb = [&](int p) { return p < int(cb.size()) ? cb[size_t(p)] : 0; };
  auto Cr = [&](int p) { return p < int(cr.size()) ? cr[size_t(p)] : 0; };
  for (int g = 0; g < (w + 5) / 6; ++g) {
    const int i = 6 * g, p = 3 * g;
    out[size_t(4 * g + 0)] = word(Cb(p), Y(i), Cr(p));
    out[size_t(4 * g + 1)] = word(Y(i + 1), Cb(p + 1), Y(i + 2));
    out[size_t(4 * g + 2)] = word(Cr(p + 1), Y(i + 3), Cb(p + 2));
    out[size_t(4 * g + 3)] = word(Y(i + 4), Cr(p + 2), Y(i + 5));
  }
  return out;
}

std::vector<Lum16u> run(V210Fn fn, const std::vector<Lum32u>& src, int w) {
  std::vector<Lum16u> dst(size_t(w), 0xBEEF);
  EXPECT_EQ(fn(src.data(), int(src.size()), dst.data(), w, LumSize{w, 1}), lumStatusOk);
  return dst;
}

struct Fields {
  int r, g, b;
};
Fields fieldsOf(Lum16u v, bool bgr) {
  const int lo = v & 31, g = (v >> 5) & 63, hi = v >> 11;
  return bgr ? Fields{hi, g, lo} : Fields{lo, g, hi};
}

}  // namespace

TEST(V210, RefusalsInCheckOrderLeaveDestinationUntouched) {
  for (const auto& c : cases()) checkRefusals(c.fc);
}

// Steps below 1 are size errors, tested after the pointers.
TEST(V210, StepsBelowOneAreSizeErrors) {
  for (const auto& c : cases()) {
    SCOPED_TRACE(c.fc.name);
    std::vector<Lum32u> src(8, word(512, 100, 512));
    std::vector<Lum16u> dst(12, 0x1234);
    const auto before = dst;
    for (auto [ss, ds] : {std::pair{0, 6}, {-8, 6}, {8, 0}, {8, -6}, {0, 0}}) {
      EXPECT_EQ(c.fn(src.data(), ss, dst.data(), ds, {6, 2}), lumStatusBadSize) << ss << " " << ds;
      EXPECT_EQ(c.fn(nullptr, ss, dst.data(), ds, {6, 2}), lumStatusNullPointer);
      EXPECT_EQ(c.fn(src.data(), ss, nullptr, ds, {6, 2}), lumStatusNullPointer);
    }
    EXPECT_EQ(dst, before);
  }
}

// Guard page right after the last word a row needs: partial groups read no
// further than their own samples, whole groups no further than the group.
TEST(V210, VectorBlocksMatchScalarTwinsAtEveryWidth) {
  for (const auto& c : cases()) checkVectorMatchesScalar(c.fc, blockWidths(), 3);
}

TEST(V210, AlignmentDoesNotChangeSamples) {
  for (const auto& c : cases()) checkAlignmentInvariance(c.fc, {1, 2, 3, 4, 5, 6, 7, 11, 12, 13, 48, 100}, 3);
}

TEST(V210, EdgeValuesOfTheUnscaledClamp) {
  struct K {
    int y, cb, cr;
    Fields want;
  } ks[] = {
      {0, 512, 512, {0, 0, 0}},
      {31, 512, 512, {31, 31, 31}},
      {64, 512, 512, {31, 63, 31}},
      {1023, 512, 512, {31, 63, 31}},
      {10, 512, 520, {22, 6, 10}},   // R 22.32, G 6.328, B 10
      {20, 400, 600, {31, 0, 0}},    // R 155.52, G 0.104, B -183.392
      {5, 530, 500, {0, 7, 31}},     // R -13.48, G 7.214, B 37.688
      // Ties to even: R = -0.5, 0.5, 1.5, 2.5, 3.5 at Cr 37.
      {731, 512, 37, {0, 63, 31}},
      {732, 512, 37, {0, 63, 31}},
      {733, 512, 37, {2, 63, 31}},
      {734, 512, 37, {2, 63, 31}},
      {735, 512, 37, {4, 63, 31}},
      // G = 58.5, 59.5, 62.5 at Cb 1010, Cr 186.
      {0, 1010, 186, {0, 58, 31}},
      {1, 1010, 186, {0, 60, 31}},
      {4, 1010, 186, {0, 62, 31}},
  };
  for (const auto& c : cases()) {
    if (c.order == 2) continue;
    SCOPED_TRACE(c.fc.name);
    for (const K& k : ks)
      for (int w : {1, 2, 3, 4, 5, 6, 12, 17}) {
        const std::vector<int> ys(size_t(w), k.y), cbs(size_t(w), k.cb), crs(size_t(w), k.cr);
        const auto out = run(c.fn, pack(ys, cbs, crs), w);
        for (int x = 0; x < w; ++x) {
          const Fields f = fieldsOf(out[size_t(x)], c.order == 1);
          ASSERT_EQ(f.r, k.want.r) << "Y " << k.y << " width " << w << " column " << x;
          ASSERT_EQ(f.g, k.want.g) << "Y " << k.y << " width " << w << " column " << x;
          ASSERT_EQ(f.b, k.want.b) << "Y " << k.y << " width " << w << " column " << x;
        }
      }
  }
}

// Each pixel takes its own luma and its pair's chroma: a double-precision model
// of the three sums agrees wherever it is not within a hair of a tie.
TEST(V210, PixelsTakeTheirOwnLumaAndTheirPairsChroma) {
  std::mt19937 rng(3);
  for (const auto& c : cases()) {
    if (c.order == 2) continue;
    SCOPED_TRACE(c.fc.name);
    for (int w : {1, 2, 3, 4, 5, 6, 7, 11, 12, 13, 29, 30}) {
      std::vector<int> ys(static_cast<size_t>(w)), cbs(static_cast<size_t>((w + 1) / 2)), crs(cbs.size());
      for (auto& v : ys) v = int(rng() % 48);
      for (auto& v : cbs) v = 512 + int(rng() % 41) - 20;
      for (auto& v : crs) v = 512 + int(rng() % 41) - 20;
      const auto out = run(c.fn, pack(ys, cbs, crs), w);
      for (int x = 0; x < w; ++x) {
        const double y = ys[size_t(x)], u = cbs[size_t(x / 2)] - 512, v = crs[size_t(x / 2)] - 512;
        const double e[3] = {1.54 * v + y, (-0.459 * v + y) - 0.183 * u, 1.816 * u + y};
        const int hi[3] = {31, 63, 31};
        const Fields f = fieldsOf(out[size_t(x)], c.order == 1);
        const int got[3] = {f.r, f.g, f.b};
        for (int k = 0; k < 3; ++k) {
          if (std::fabs(e[k] - std::floor(e[k]) - 0.5) < 1e-3) continue;
          const int want = std::min(hi[k], std::max(0, int(std::lround(e[k]))));
          ASSERT_EQ(got[k], want) << "width " << w << " column " << x << " channel " << k;
        }
      }
    }
  }
}

// Gray: the luma samples in order, bits 30 and 31 ignored, partial groups too.
TEST(V210, GrayIsTheLumaInOrder) {
  const V210Fn fn = lumiYUV422v210ToGray_709HDTV_32u16u_C3C1;
  std::mt19937 rng(5);
  for (int w = 1; w <= 40; ++w) {
    std::vector<int> ys(static_cast<size_t>(w)), cs(static_cast<size_t>(w));
    for (auto& v : ys) v = int(rng() & 0x3FF);
    for (auto& v : cs) v = int(rng() & 0x3FF);
    auto src = pack(ys, cs, cs);
    for (auto& wd : src) wd |= 0xC0000000u;
    const auto out = run(fn, src, w);
    for (int x = 0; x < w; ++x) ASSERT_EQ(out[size_t(x)], ys[size_t(x)]) << w << " " << x;
  }
}

// Steps count elements: row n starts at word n * srcStep and at 16-bit word
// n * dstStep; each row equals the same row converted alone.
TEST(V210, StepsCountElements) {
  for (const auto& c : cases()) {
    SCOPED_TRACE(c.fc.name);
    const int w = 13, h = 4, ss = wordsFor(w) + 3, ds = w + 5;
    std::vector<Lum32u> src(size_t(ss * h));
    std::mt19937 rng(7);
    for (auto& v : src) v = Lum32u(rng());
    std::vector<Lum16u> dst(size_t(ds * h), 0x7777);
    ASSERT_EQ(c.fn(src.data(), ss, dst.data(), ds, {w, h}), lumStatusOk);
    for (int y = 0; y < h; ++y) {
      std::vector<Lum32u> row(src.begin() + y * ss, src.begin() + y * ss + wordsFor(w));
      const auto alone = run(c.fn, row, w);
      ASSERT_TRUE(std::equal(alone.begin(), alone.end(), dst.begin() + y * ds)) << "row " << y;
      for (int x = w; x < ds; ++x) ASSERT_EQ(dst[size_t(y * ds + x)], 0x7777) << "padding written, row " << y;
    }
  }
}

// The same pixels in a whole group and in a partial group give the same words.
TEST(V210, PartialGroupsComputeLikeWholeOnes) {
  std::mt19937 rng(19);
  for (const auto& c : cases()) {
    SCOPED_TRACE(c.fc.name);
    std::vector<Lum32u> grp(4);
    for (auto& v : grp) v = Lum32u(rng());
    const auto whole = run(c.fn, grp, 6);
    for (int rem = 1; rem <= 5; ++rem) {
      std::vector<Lum32u> part(grp.begin(), grp.begin() + wordsFor(rem));
      const auto out = run(c.fn, part, rem);
      for (int x = 0; x < rem; ++x) ASSERT_EQ(out[size_t(x)], whole[size_t(x)]) << rem << " " << x;
    }
  }
}
