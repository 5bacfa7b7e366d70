// Demosaicing: bilinear, VNG and AHD on every Bayer grid.
#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <cstring>
#include <functional>
#include <random>
#include <vector>

#include "frame/simd.h"
#include "lumcc.h"
#include "support/guarded_image.h"

using namespace lumtest;

namespace {

// One method of the family, seen through one call shape.
struct Method {
  const char* name;
  int elem;      // bytes per sample
  int channels;  // samples per destination pixel
  int minSide;   // smallest image side accepted
  bool scratch;  // takes pTmp, tmpStep
  std::function<LumStatus(const void* src, int srcStep, LumRect rc, LumSize img, void* dst, int dstStep, int grid,
                          uint8_t* tmp, int tmpStep)>
      call;
};

// Scratch bytes a row for a region of width w.
int tmpRowBytes(const Method& m, int w) { return (w + 6) * (m.elem + 1); }

template <class T>
const T* cs(const void* p) {
  return static_cast<const T*>(p);
}
template <class T>
T* ds(void* p) {
  return static_cast<T*>(p);
}

LumRectL longRect(LumRect r) { return {r.x, r.y, r.width, r.height}; }
LumSizeL longSize(LumSize s) { return {s.width, s.height}; }

const std::vector<Method>& methods() {
  static const std::vector<Method> all = {
      {"CFAToRGB_8u", 1, 3, 2, false,
       [](const void* s, int ss, LumRect r, LumSize i, void* d, int dd, int g, uint8_t*, int) {
         return lumiCFAToRGB_8u_C1C3R(cs<Lum8u>(s), r, i, ss, ds<Lum8u>(d), dd, LumCfaGrid(g));
       }},
      {"CFAToRGB_16u", 2, 3, 2, false,
       [](const void* s, int ss, LumRect r, LumSize i, void* d, int dd, int g, uint8_t*, int) {
         return lumiCFAToRGB_16u_C1C3R(cs<Lum16u>(s), r, i, ss, ds<Lum16u>(d), dd, LumCfaGrid(g));
       }},
      {"VNG_8u", 1, 4, 5, false,
       [](const void* s, int ss, LumRect r, LumSize i, void* d, int dd, int g, uint8_t*, int) {
         return lumiCFAToBGRA_VNG_8u_C1C4R(cs<Lum8u>(s), r, i, ss, nullptr, ds<Lum8u>(d), dd, LumCfaGrid(g));
       }},
      {"VNG_8u_L", 1, 4, 5, false,
       [](const void* s, int ss, LumRect r, LumSize i, void* d, int dd, int g, uint8_t*, int) {
         return lumiCFAToBGRA_VNG_8u_C1C4R_L(cs<Lum8u>(s), longRect(r), longSize(i), ss, nullptr, ds<Lum8u>(d), dd,
                                             LumCfaGrid(g));
       }},
      {"VNG_16u", 2, 4, 5, false,
       [](const void* s, int ss, LumRect r, LumSize i, void* d, int dd, int g, uint8_t*, int) {
         return lumiCFAToBGRA_VNG_16u_C1C4R(cs<Lum16u>(s), r, i, ss, nullptr, ds<Lum16u>(d), dd, LumCfaGrid(g));
       }},
      {"VNG_16u_L", 2, 4, 5, false,
       [](const void* s, int ss, LumRect r, LumSize i, void* d, int dd, int g, uint8_t*, int) {
         return lumiCFAToBGRA_VNG_16u_C1C4R_L(cs<Lum16u>(s), longRect(r), longSize(i), ss, nullptr, ds<Lum16u>(d), dd,
                                              LumCfaGrid(g));
       }},
      {"AHD_8u", 1, 3, 5, true,
       [](const void* s, int ss, LumRect r, LumSize i, void* d, int dd, int g, uint8_t* t, int ts) {
         return lumiDemosaicAHD_8u_C1C3R(cs<Lum8u>(s), r, i, ss, ds<Lum8u>(d), dd, LumCfaGrid(g), t, ts);
       }},
      {"AHD_16u", 2, 3, 5, true,
       [](const void* s, int ss, LumRect r, LumSize i, void* d, int dd, int g, uint8_t* t, int ts) {
         return lumiDemosaicAHD_16u_C1C3R(cs<Lum16u>(s), r, i, ss, ds<Lum16u>(d), dd, LumCfaGrid(g), t, ts);
       }},
  };
  return all;
}

const Method& method(const char* name) {
  for (auto& m : methods())
    if (std::string(m.name) == name) return m;
  throw std::invalid_argument(name);
}

// A mosaic of W x H samples, row after row, as bytes of the method's sample type.
struct Mosaic {
  int w, h, elem;
  std::vector<uint8_t> bytes;
  void set(int x, int y, int v) { std::memcpy(&bytes[size_t((y * w + x) * elem)], &v, size_t(elem)); }
};
Mosaic randomMosaic(int w, int h, int elem, std::mt19937& rng, int maxValue = -1) {
  Mosaic m{w, h, elem, std::vector<uint8_t>(size_t(w * h * elem))};
  const int top = maxValue < 0 ? (elem == 1 ? 255 : 65535) : maxValue;
  std::uniform_int_distribution<int> d(0, top);
  for (int y = 0; y < h; ++y)
    for (int x = 0; x < w; ++x) m.set(x, y, d(rng));
  return m;
}
Mosaic flatMosaic(int w, int h, int elem, int v) {
  Mosaic m{w, h, elem, std::vector<uint8_t>(size_t(w * h * elem))};
  for (int y = 0; y < h; ++y)
    for (int x = 0; x < w; ++x) m.set(x, y, v);
  return m;
}
// Samples that depend on the row alone, or on the column alone.
Mosaic stripes(int w, int h, int elem, bool rows, std::vector<int> levels) {
  Mosaic m{w, h, elem, std::vector<uint8_t>(size_t(w * h * elem))};
  for (int y = 0; y < h; ++y)
    for (int x = 0; x < w; ++x) m.set(x, y, levels[size_t(rows ? y : x) % levels.size()]);
  return m;
}

struct RunOptions {
  bool negativeSrcStep = false;
  int dstFill = 0x5A;           // destination bytes before the call
  int extraDstCols = 0;         // destination pixels allocated past the region's width
  int extraDstRows = 0;
  int tmpFill = 0x77;           // scratch bytes before the call
};

// The result of one call: status and the destination's samples, one row after another.
struct Result {
  LumStatus status;
  std::vector<int> px;  // channels samples a pixel
  int w = 0, h = 0, ch = 0;
  int at(int x, int y, int k) const { return px[size_t((y * w + x) * ch + k)]; }
};

// Calls m on the region rc of the mosaic, with guard pages after the source and
// the destination and canaries around the destination and the scratch.
Result run(const Method& m, const Mosaic& src, LumRect rc, int grid, RunOptions o = {}) {
  // Steps of whole samples: the 16u bilinear entry drops an odd byte of a step.
  ImageOptions so;
  so.negativeStep = o.negativeSrcStep;
  so.stepAlign = m.elem;
  GuardedImage s(src.w * m.elem, src.h, so);
  for (int y = 0; y < src.h; ++y) std::memcpy(s.row(y), &src.bytes[size_t(y * src.w * m.elem)], size_t(src.w * m.elem));
  const int dw = std::max(rc.width, 1) + o.extraDstCols, dh = std::max(rc.height, 1) + o.extraDstRows;
  ImageOptions dopt;
  dopt.stepAlign = m.elem;
  GuardedImage d(dw * m.channels * m.elem, dh, dopt);
  d.fill(uint8_t(o.dstFill));
  const int tw = std::min(std::max(rc.width, 1), src.w);
  ImageOptions topt;
  topt.stepAlign = 2;  // the scratch step is used rounded down to even
  GuardedImage t(m.scratch ? tmpRowBytes(m, tw) : 1, 30, topt);
  t.fill(uint8_t(o.tmpFill));
  Result r;
  r.status = m.call(s.data(), s.step(), rc, {src.w, src.h}, d.data(), d.step(), grid, t.data(), t.step());
  EXPECT_TRUE(d.intactCanaries()) << m.name << " wrote outside the destination";
  EXPECT_TRUE(t.intactCanaries()) << m.name << " wrote outside the scratch";
  r.w = dw;
  r.h = dh;
  r.ch = m.channels;
  for (int y = 0; y < dh; ++y)
    for (int x = 0; x < dw * m.channels; ++x) {
      int v = 0;
      std::memcpy(&v, d.row(y) + x * m.elem, size_t(m.elem));
      r.px.push_back(v);
    }
  return r;
}

Result runWhole(const Method& m, const Mosaic& src, int grid, RunOptions o = {}) {
  return run(m, src, {0, 0, src.w, src.h}, grid, o);
}

// ---- argument checks --------------------------------------------------------

TEST(Demosaic, RefusalsInOrderLeaveTheDestinationUntouched) {
  struct Case {
    bool nullSrc, nullDst;
    int w, h, grid;
    LumStatus want;
  };
  for (const Method& m : methods()) {
    const int bad = m.minSide - 1, ok = m.minSide + 3;
    const Case cases[] = {
        {true, false, ok, ok, 0, lumStatusNullPointer},  {false, true, ok, ok, 0, lumStatusNullPointer},
        {true, false, bad, ok, 9, lumStatusNullPointer}, {false, true, ok, bad, -1, lumStatusNullPointer},
        {false, false, bad, ok, 0, lumStatusBadSize},    {false, false, ok, bad, 0, lumStatusBadSize},
        {false, false, 1, 100, 0, lumStatusBadSize},     {false, false, bad, bad, 4, lumStatusBadSize},
        {false, false, ok, ok, 4, lumStatusBadArgument}, {false, false, ok, ok, -1, lumStatusBadArgument},
        {false, false, ok, ok, 7, lumStatusBadArgument},
    };
    for (const Case& c : cases) {
      std::vector<uint8_t> src(size_t(64 * 64 * 2), 9), dst(size_t(64 * 64 * 8), 0xA7), tmp(size_t(64 * 30 * 3), 0x3C);
      const auto dst0 = dst, tmp0 = tmp;
      const LumStatus s = m.call(c.nullSrc ? nullptr : src.data(), 64 * m.elem, {0, 0, ok, ok}, {c.w, c.h},
                                 c.nullDst ? nullptr : dst.data(), 64 * m.channels * m.elem, c.grid, tmp.data(), 64 * 3);
      EXPECT_EQ(s, c.want) << m.name << " " << c.w << "x" << c.h << " grid " << c.grid;
      EXPECT_EQ(dst, dst0) << m.name;
      EXPECT_EQ(tmp, tmp0) << m.name;
    }
  }
}

TEST(Demosaic, RegionsCutToNothingSucceedAndWriteNothing) {
  std::mt19937 rng(3);
  for (const Method& m : methods()) {
    const Mosaic src = randomMosaic(12, 10, m.elem, rng);
    for (LumRect rc : {LumRect{0, 0, 0, 5}, LumRect{0, 0, 5, 0}, LumRect{12, 0, 4, 4}, LumRect{0, 10, 4, 4},
                       LumRect{3, 3, -2, 4}}) {
      const Result r = run(m, src, rc, 1, {.dstFill = 0x5A});
      EXPECT_EQ(r.status, lumStatusOk) << m.name;
      const int fill = m.elem == 1 ? 0x5A : 0x5A5A;
      EXPECT_TRUE(std::all_of(r.px.begin(), r.px.end(), [&](int v) { return v == fill; })) << m.name;
    }
  }
}

// ---- known answers ---------------------------------------------------------

TEST(Demosaic, FlatImagesComeBackFlatEverywhere) {
  for (const Method& m : methods())
    for (int grid = 0; grid < 4; ++grid)
      for (auto [w, h] : {std::pair{m.minSide, m.minSide}, {3, 3}, {5, 5}, {7, 9}, {40, 11}, {21, 36}}) {
        if (w < m.minSide || h < m.minSide) continue;
        const int v = m.elem == 1 ? 173 : 31234;  // VNG's 16u single-pixel step shows above 32767
        const Result r = runWhole(m, flatMosaic(w, h, m.elem, v), grid, {.dstFill = 0});
        ASSERT_EQ(r.status, lumStatusOk);
        for (int y = 0; y < h; ++y)
          for (int x = 0; x < w; ++x)
            for (int k = 0; k < 3; ++k) ASSERT_EQ(r.at(x, y, k), v) << m.name << " " << w << "x" << h << " grid " << grid << " at " << x << "," << y;
      }
}

// R, G, B of every pixel of a bilinear call on a small mosaic, against hand values.
struct Expect {
  int x, y, r, g, b;
};
void expectRGB(const Result& r, const std::vector<Expect>& e, const char* what) {
  for (const Expect& p : e) {
    EXPECT_EQ(r.at(p.x, p.y, 0), p.r) << what << " R at " << p.x << "," << p.y;
    EXPECT_EQ(r.at(p.x, p.y, 1), p.g) << what << " G at " << p.x << "," << p.y;
    EXPECT_EQ(r.at(p.x, p.y, 2), p.b) << what << " B at " << p.x << "," << p.y;
  }
}

TEST(Demosaic, BilinearSmallImagesAreAllBorder) {
  for (const char* name : {"CFAToRGB_8u", "CFAToRGB_16u"}) {
    const Method& m = method(name);
    // 2 by 2 BGGR: b g1 / g2 r.
    Mosaic two{2, 2, m.elem, std::vector<uint8_t>(size_t(4 * m.elem))};
    two.set(0, 0, 40), two.set(1, 0, 21), two.set(0, 1, 30), two.set(1, 1, 200);
    expectRGB(runWhole(m, two, lumCfaBGGR), {{0, 0, 200, 26, 40}, {1, 0, 200, 21, 40}, {0, 1, 200, 30, 40}, {1, 1, 200, 26, 40}},
              "2x2");
    // 3 by 3 RGGB: a b c / d e f / g h i.
    Mosaic three{3, 3, m.elem, std::vector<uint8_t>(size_t(9 * m.elem))};
    const int v[9] = {10, 20, 30, 40, 50, 60, 70, 83, 99};
    for (int i = 0; i < 9; ++i) three.set(i % 3, i / 3, v[i]);
    expectRGB(runWhole(m, three, lumCfaRGGB),
              {{1, 1, 52, 51, 50}, {0, 0, 10, 30, 50}, {1, 0, 20, 20, 50}, {0, 1, 40, 40, 50}, {2, 1, 65, 60, 50}, {2, 2, 99, 72, 50}},
              "3x3");
    // 5 by 3 RGGB: green at a red site on the top edge counts the lower neighbour twice.
    Mosaic five = flatMosaic(5, 3, m.elem, 100);
    five.set(1, 0, 11), five.set(3, 0, 30), five.set(2, 1, 61);
    expectRGB(runWhole(m, five, lumCfaRGGB), {{2, 0, 100, 41, 100}}, "5x3");
  }
}

// A 6 by 6 RGGB mosaic of 100 with one sample changed: the interior's green at
// (2, 2) follows the smaller gradient, and a tie takes the four-neighbour mean.
TEST(Demosaic, BilinearInteriorGreenFollowsTheSmootherAxis) {
  struct Case {
    int upDown2, leftRight2;  // samples at (2, 0) and (0, 2)
    int want;
  };
  // Neighbours of (2, 2): up 90, down 110, left 60, right 61.
  const Case cases[] = {{100, 140, 100}, {140, 100, 61}, {120, 120, 80}};
  for (const char* name : {"CFAToRGB_8u", "CFAToRGB_16u"}) {
    const Method& m = method(name);
    for (const Case& c : cases) {
      Mosaic s = flatMosaic(6, 6, m.elem, 100);
      s.set(2, 1, 90), s.set(2, 3, 110), s.set(1, 2, 60), s.set(3, 2, 61);
      s.set(2, 0, c.upDown2), s.set(0, 2, c.leftRight2);
      EXPECT_EQ(runWhole(m, s, lumCfaRGGB).at(2, 2, 1), c.want) << name << " " << c.upDown2 << "/" << c.leftRight2;
    }
  }
}

// The 16u entry takes both steps in whole samples: one more byte changes nothing.
TEST(Demosaic, Bilinear16uStepsAreWholeSamples) {
  std::mt19937 rng(29);
  const Mosaic src = randomMosaic(9, 7, 2, rng);
  const auto* s = reinterpret_cast<const Lum16u*>(src.bytes.data());
  std::vector<Lum16u> even(size_t(9 * 7 * 3), 1), odd = even;
  for (int grid = 0; grid < 4; ++grid) {
    ASSERT_EQ(lumiCFAToRGB_16u_C1C3R(s, {0, 0, 9, 7}, {9, 7}, 18, even.data(), 54, LumCfaGrid(grid)), lumStatusOk);
    ASSERT_EQ(lumiCFAToRGB_16u_C1C3R(s, {0, 0, 9, 7}, {9, 7}, 19, odd.data(), 55, LumCfaGrid(grid)), lumStatusOk);
    EXPECT_EQ(even, odd) << "grid " << grid;
  }
}

// ---- structure: crops, blocks and tails, vector and scalar -----------------

// Pixels of the region equal the same pixels of the whole image's output, for
// every grid, odd and even offsets, and widths that put the region's columns in
// blocks and tails differently from the whole image's rows.
void expectCropsMatch(const Method& m, const Mosaic& src, const std::vector<LumRect>& rects) {
  for (int grid = 0; grid < 4; ++grid) {
    const Result whole = runWhole(m, src, grid);
    for (LumRect rc : rects) {
      const Result part = run(m, src, rc, grid);
      ASSERT_EQ(part.status, lumStatusOk);
      for (int y = 0; y < rc.height; ++y)
        for (int x = 0; x < rc.width; ++x)
          for (int k = 0; k < 3; ++k)
            ASSERT_EQ(part.at(x, y, k), whole.at(rc.x + x, rc.y + y, k))
                << m.name << " grid " << grid << " region " << rc.x << "," << rc.y << " " << rc.width << "x" << rc.height
                << " at " << x << "," << y;
    }
  }
}

TEST(Demosaic, BilinearCropsEqualTheWholeImage) {
  std::mt19937 rng(11);
  for (const char* name : {"CFAToRGB_8u", "CFAToRGB_16u"}) {
    const Method& m = method(name);
    const Mosaic src = randomMosaic(61, 23, m.elem, rng);
    std::vector<LumRect> rects = {{1, 1, 60, 22}, {3, 5, 17, 9}, {2, 2, 57, 19}, {0, 1, 61, 3}, {59, 0, 2, 23}};
    for (int w = 1; w <= 40; ++w) rects.push_back({1 + w % 5, 3 + w % 2, w, 3});
    expectCropsMatch(m, src, rects);
  }
}

TEST(Demosaic, RegionsLargerThanTheImageAreCut) {
  std::mt19937 rng(5);
  for (const Method& m : methods()) {
    const Mosaic src = randomMosaic(19, 13, m.elem, rng);
    const Result whole = runWhole(m, src, 2);
    const Result big = run(m, src, {0, 0, 25, 16}, 2, {.dstFill = 0x33});
    ASSERT_EQ(big.status, lumStatusOk);
    const int fill = m.elem == 1 ? 0x33 : 0x3333;
    for (int y = 0; y < 16; ++y)
      for (int x = 0; x < 25; ++x)
        for (int k = 0; k < 3; ++k)
          ASSERT_EQ(big.at(x, y, k), x < 19 && y < 13 ? whole.at(x, y, k) : fill) << m.name << " " << x << "," << y;
  }
}

// The vector blocks and the scalar path give the same bits, at widths across the
// block sizes, and a negative source step reads the same mosaic.
TEST(Demosaic, VectorAndScalarPathsAgree) {
  std::mt19937 rng(7);
  for (const Method& m : methods())
    for (int w : {5, 8, 15, 16, 17, 18, 19, 20, 21, 24, 33, 35, 36, 37, 38, 39, 40, 67, 130}) {
      const Mosaic src = randomMosaic(w, 9, m.elem, rng);
      for (int grid = 0; grid < 4; ++grid) {
        const Result vec = runWhole(m, src, grid);
        Result sca;
        {
          lum::ScalarScope scalar;
          sca = runWhole(m, src, grid, {.negativeSrcStep = true});
        }
        ASSERT_EQ(vec.px, sca.px) << m.name << " width " << w << " grid " << grid;
      }
    }
}

// ---- VNG ---------------------------------------------------------------------

// B, G, R of pixel (x, y) of a BGRA result.
void expectBGR(const Result& r, int x, int y, int b, int g, int red, const char* what) {
  EXPECT_EQ(r.at(x, y, 0), b) << what << " B at " << x << "," << y;
  EXPECT_EQ(r.at(x, y, 1), g) << what << " G at " << x << "," << y;
  EXPECT_EQ(r.at(x, y, 2), red) << what << " R at " << x << "," << y;
}

// A 5 by 5 image has one interior pixel, (2, 2), repeated to all 25; RGGB puts a
// red site there. The answers follow the gradients, threshold and sums by hand.
TEST(Demosaic, VngFiveByFiveKnownAnswers) {
  struct Case {
    const char* what;
    int base;
    std::vector<std::array<int, 3>> set;  // x, y, value
    int b, g, r;
  };
  const Case cases[] = {
      // All eight gradients 40, all selected: the sums differ by 20 a direction.
      {"bright centre", 100, {{2, 2, 120}}, 110, 110, 120},
      // Greens above and below 108: N and S (0) alone are below T = 0 + 24 / 2,
      // green 100 + (432 - 400) / 4.
      {"vertical greens", 100, {{2, 1, 108}, {2, 3, 108}}, 100, 108, 100},
  };
  for (const char* name : {"VNG_8u", "VNG_8u_L", "VNG_16u", "VNG_16u_L"}) {
    const Method& m = method(name);
    for (const Case& c : cases) {
      Mosaic s = flatMosaic(5, 5, m.elem, c.base);
      for (auto [x, y, v] : c.set) s.set(x, y, v);
      const Result r = runWhole(m, s, lumCfaRGGB, {.dstFill = 0x21});
      for (int y = 0; y < 5; ++y)
        for (int x = 0; x < 5; ++x) {
          expectBGR(r, x, y, c.b, c.g, c.r, c.what);
          EXPECT_EQ(r.at(x, y, 3), m.elem == 1 ? 0x21 : 0x2121) << name << " fourth sample at " << x << "," << y;
        }
    }
  }
}

// 16u: the single-pixel step, which meets the last interior pixel of a row when
// the interior's width is odd, saturates the computed colours to the signed
// range and reads them back as unsigned; the block steps saturate to 0..65535.
TEST(Demosaic, Vng16uSinglePixelStepSaturatesSigned) {
  const Method& m = method("VNG_16u");
  // Flat 40000: the computed colours are 40000, or 32767 in the single step.
  const Result odd = runWhole(m, flatMosaic(5, 5, 2, 40000), lumCfaRGGB);
  expectBGR(odd, 0, 0, 32767, 32767, 40000, "5x5 flat");
  const Result even = runWhole(m, flatMosaic(6, 5, 2, 40000), lumCfaRGGB);
  for (int x = 0; x < 6; ++x) expectBGR(even, x, 2, 40000, 40000, 40000, "6x5 flat");
  // 7 by 6 BGGR: interior columns 2..4; column 4 (and the border it fills) takes
  // the single step; (4, 2) is a blue site, (4, 3) a green one.
  const Result seven = runWhole(m, flatMosaic(7, 6, 2, 40000), lumCfaBGGR);
  for (int x : {4, 5, 6}) {
    expectBGR(seven, x, 2, 40000, 32767, 32767, "7x6 blue site");
    expectBGR(seven, x, 3, 32767, 40000, 32767, "7x6 green site");
  }
  for (int x : {0, 1, 2, 3}) expectBGR(seven, x, 2, 40000, 40000, 40000, "7x6 block step");
  // Red site 0 among red sites 65535 and green and blue 0: -32767.5 rounds to
  // -32768, which the single step reads as 32768.
  Mosaic s = flatMosaic(5, 5, 2, 0);
  for (int y = 0; y < 5; y += 2)
    for (int x = 0; x < 5; x += 2)
      if (x != 2 || y != 2) s.set(x, y, 65535);
  expectBGR(runWhole(m, s, lumCfaRGGB), 1, 3, 32768, 32768, 0, "wrapped");
}

TEST(Demosaic, VngGains) {
  struct Case {
    std::array<float, 3> gain;
    int base, b, g, r;
  };
  const Case cases[] = {{{1.0f, 1.0f, 1.0f}, 100, 100, 100, 100},
                        {{0.5f, 1.0f, 1.5f}, 100, 50, 100, 150},
                        {{2.0f, 2.0f, 2.0f}, 200, 255, 255, 255},
                        {{0.0125f, 0.0f, -1.0f}, 100, 1, 0, 0},  // 1.25 rounds to 1, negatives saturate at 0
                        {{0.025f, 0.015f, 0.035f}, 100, 2, 2, 4}};  // 2.5 to 2, 1.5 to 2, 3.5 to 4
  for (const Case& c : cases)
    for (int grid = 0; grid < 4; ++grid) {
      std::vector<Lum8u> src(size_t(8 * 7), Lum8u(c.base)), dst(size_t(8 * 7 * 4), 9);
      ASSERT_EQ(lumiCFAToBGRA_VNG_8u_C1C4R(src.data(), {0, 0, 8, 7}, {8, 7}, 8, c.gain.data(), dst.data(), 32,
                                           LumCfaGrid(grid)),
                lumStatusOk);
      for (size_t i = 0; i < dst.size(); i += 4) {
        ASSERT_EQ(dst[i], c.b);
        ASSERT_EQ(dst[i + 1], c.g);
        ASSERT_EQ(dst[i + 2], c.r);
        ASSERT_EQ(dst[i + 3], 9);
      }
    }
  // A null pScale and gains of exactly one give the same output.
  std::mt19937 rng(2);
  const Mosaic s = randomMosaic(23, 17, 2, rng);
  const float ones[3] = {1.0f, 1.0f, 1.0f};
  std::vector<Lum16u> a(size_t(23 * 17 * 4), 1), b = a;
  const auto* src = reinterpret_cast<const Lum16u*>(s.bytes.data());
  ASSERT_EQ(lumiCFAToBGRA_VNG_16u_C1C4R(src, {0, 0, 23, 17}, {23, 17}, 46, nullptr, a.data(), 23 * 8, lumCfaGBRG), 0);
  ASSERT_EQ(lumiCFAToBGRA_VNG_16u_C1C4R(src, {0, 0, 23, 17}, {23, 17}, 46, ones, b.data(), 23 * 8, lumCfaGBRG), 0);
  EXPECT_EQ(a, b);
}

// Regions away from the image's edges copy nothing and read their neighbours from
// the image: they equal the whole image's pixels (16u kept below the single-step
// limit, where the step cannot show).
TEST(Demosaic, VngCropsAwayFromTheEdgesEqualTheWholeImage) {
  std::mt19937 rng(13);
  for (const char* name : {"VNG_8u", "VNG_16u_L"}) {
    const Method& m = method(name);
    const Mosaic src = randomMosaic(47, 21, m.elem, rng, m.elem == 1 ? 255 : 12000);
    std::vector<LumRect> rects = {{2, 2, 42, 16}, {3, 5, 18, 9}, {5, 3, 2, 1}};
    // An odd 16u region ends on the single-pixel step, which the whole image's row has elsewhere.
    for (int w = 1; w <= 40; ++w)
      if (m.elem == 1 || w % 2 == 0) rects.push_back({2 + w % 3, 3 + w % 2, w, 3});
    expectCropsMatch(m, src, rects);
  }
}

// A region that ends two pixels before the image's right and bottom edges has
// its last column and row repeated one pixel past it.
TEST(Demosaic, VngBorderCopiesReachPastARegionNearTheEdge) {
  std::mt19937 rng(17);
  for (const char* name : {"VNG_8u", "VNG_16u"}) {
    const Method& m = method(name);
    const Mosaic src = randomMosaic(12, 10, m.elem, rng);
    const Result r = run(m, src, {0, 0, 10, 8}, 3, {.dstFill = 0x44, .extraDstCols = 2, .extraDstRows = 2});
    const int fill = m.elem == 1 ? 0x44 : 0x4444;
    for (int k = 0; k < 4; ++k) {
      for (int y = 0; y < 8; ++y) EXPECT_EQ(r.at(10, y, k), y < 2 ? fill : r.at(9, y, k)) << name << " row " << y;
      for (int x = 0; x < 10; ++x) EXPECT_EQ(r.at(x, 8, k), r.at(x, 7, k)) << name << " column " << x;
      for (int y = 0; y < 10; ++y) EXPECT_EQ(r.at(11, y, k), fill) << name;
      for (int x = 0; x < 12; ++x) EXPECT_EQ(r.at(x, 9, k), fill) << name;
      EXPECT_EQ(r.at(10, 8, k), fill) << name;
    }
  }
}

// ---- AHD ---------------------------------------------------------------------

// Samples constant along the rows: the horizontal candidate is grey and wins;
// constant along the columns: the vertical candidate does.
TEST(Demosaic, AhdEdgesPickTheirCandidate) {
  for (const char* name : {"AHD_8u", "AHD_16u"}) {
    const Method& m = method(name);
    const int k = m.elem == 1 ? 1 : 257;
    for (bool rows : {true, false})
      for (int grid = 0; grid < 4; ++grid) {
        const std::vector<int> levels = {20 * k, 20 * k, 20 * k, 200 * k, 200 * k, 90 * k, 90 * k, 90 * k};
        const Mosaic s = stripes(23, 19, m.elem, rows, levels);
        const Result r = runWhole(m, s, grid);
        for (int y = 0; y < 19; ++y)
          for (int x = 0; x < 23; ++x)
            for (int c = 0; c < 3; ++c)
              ASSERT_EQ(r.at(x, y, c), levels[size_t(rows ? y : x) % 8])
                  << name << (rows ? " rows" : " columns") << " grid " << grid << " at " << x << "," << y;
      }
  }
}

// The strips and the interior of a region differ from those of the whole image,
// and a zero window sum repeats the last decision of its own segment's row: a
// crop agrees with the whole image except at rare ties near a seam. A wrong phase
// or seam would spoil whole columns or rows.
TEST(Demosaic, AhdCropsEqualTheWholeImageButForSeamTies) {
  std::mt19937 rng(19);
  for (const char* name : {"AHD_8u", "AHD_16u"}) {
    const Method& m = method(name);
    const Mosaic src = randomMosaic(41, 33, m.elem, rng);
    for (LumRect rc : {LumRect{7, 9, 21, 15}, LumRect{6, 6, 29, 21}, LumRect{5, 5, 31, 23}, LumRect{0, 0, 5, 5},
                       LumRect{1, 2, 39, 30}, LumRect{9, 3, 1, 27}, LumRect{3, 11, 35, 1}})
      for (int grid = 0; grid < 4; ++grid) {
        const Result whole = runWhole(m, src, grid);
        const Result part = run(m, src, rc, grid);
        int differ = 0;
        for (int y = 0; y < rc.height; ++y)
          for (int x = 0; x < rc.width; ++x)
            for (int k = 0; k < 3; ++k)
              if (part.at(x, y, k) != whole.at(rc.x + x, rc.y + y, k)) {
                ++differ;
                break;
              }
        EXPECT_LE(differ * 100, rc.width * rc.height * 2 + 100)
            << name << " grid " << grid << " region " << rc.x << "," << rc.y << " " << rc.width << "x" << rc.height;
      }
    // Stripes leave no ties between differing candidates: crops agree exactly.
    for (bool rows : {true, false}) {
      const Mosaic s = stripes(29, 27, m.elem, rows, {5, 250, 250, 30, 120, 7, 7});
      expectCropsMatch(m, s, {{7, 9, 13, 11}, {5, 6, 19, 15}, {0, 1, 29, 26}});
    }
  }
}

// The result does not depend on what the scratch held; a 5 by 5 image is all strip.
TEST(Demosaic, AhdIgnoresTheScratchContents) {
  std::mt19937 rng(23);
  for (const char* name : {"AHD_8u", "AHD_16u"}) {
    const Method& m = method(name);
    for (auto [w, h] : {std::pair{5, 5}, {6, 9}, {30, 17}}) {
      const Mosaic src = randomMosaic(w, h, m.elem, rng);
      for (int grid = 0; grid < 4; ++grid)
        EXPECT_EQ(runWhole(m, src, grid, {.tmpFill = 0}).px, runWhole(m, src, grid, {.tmpFill = 0xFF}).px) << name;
    }
  }
}

}  // namespace
