// RGB to and from HLS and HSV, and the BGR-ordered 8u HLS family.
#include <gtest/gtest.h>

#include <array>
#include <cmath>
#include <cstring>
#include <limits>
#include <vector>

#include "frame/rcp_estimate.h"
#include "frame/simd.h"
#include "lumcc.h"
#include "support/family.h"

using namespace lumtest;

namespace {

using B = Buffers;

// Which pixels of a row the block form takes: width & ~(cover - 1); 0 = none
// (one form for every pixel).
struct HueCase {
  FnCase fc;
  int cover;
  int elem;          // bytes of a sample
  int alpha;         // 0: no alpha; 1: destination alpha kept; 2: copied from the source
  bool stepChecked;  // the BGR family refuses steps below 1
};

// Floats with the edges a caller may hand in: +-0, +-inf, NaN, values out of
// 0..1 and negative ones; every NaN the default one, so that any NaN a path
// makes or passes on has the same bits.
void floatEdges(GuardedImage& g, std::mt19937& rng) {
  uint32_t nanBits = 0xFFC00000u;
  float nan;
  std::memcpy(&nan, &nanBits, 4);
  const float inf = std::numeric_limits<float>::infinity();
  const float edges[] = {0.0f, -0.0f, 1.0f, 0.5f, inf, -inf, nan, 1.5f, -0.25f, 1e-8f, 1e-40f, 3e38f};
  std::uniform_real_distribution<float> unit(0.0f, 1.0f);
  for (int y = 0; y < g.height(); ++y)
    for (int x = 0; x + 4 <= g.rowBytes(); x += 4) {
      const uint32_t r = rng();
      const float v = r % 8 == 0 ? edges[(r >> 3) % std::size(edges)] : unit(rng);
      std::memcpy(g.row(y) + x, &v, 4);
    }
}

FnCase mk(const char* name, ImageShape s, ImageShape d, int elem, CallFn f) {
  FnCase c;
  c.name = name;
  c.src = std::move(s);
  c.dst = std::move(d);
  c.call = std::move(f);
  c.stepAlign = elem;
  if (elem == 4) c.fillSource = floatEdges;
  return c;
}

#define RGB_FN(fn, T)                                                                                      \
  [](const B& b, LumSize r) {                                                                              \
    return fn(reinterpret_cast<const T*>(b.srcPtr()), b.srcStep, reinterpret_cast<T*>(b.dstPtr()), b.dstStep, r); \
  }

const std::vector<HueCase>& cases() {
  static const std::vector<HueCase> v = [] {
    std::vector<HueCase> t;
    const auto rgb = [&](const char* n, int ch, int elem, int cover, CallFn f) {
      t.push_back({mk(n, packedImg(ch * elem), packedImg(ch * elem), elem, std::move(f)), cover, elem, ch == 4, false});
    };
    rgb("RGBToHLS_8u_C3R", 3, 1, 8, RGB_FN(lumiRGBToHLS_8u_C3R, Lum8u));
    rgb("RGBToHLS_8u_AC4R", 4, 1, 4, RGB_FN(lumiRGBToHLS_8u_AC4R, Lum8u));
    rgb("RGBToHLS_16u_C3R", 3, 2, 4, RGB_FN(lumiRGBToHLS_16u_C3R, Lum16u));
    rgb("RGBToHLS_16u_AC4R", 4, 2, 4, RGB_FN(lumiRGBToHLS_16u_AC4R, Lum16u));
    rgb("RGBToHLS_16s_C3R", 3, 2, 4, RGB_FN(lumiRGBToHLS_16s_C3R, Lum16s));
    rgb("RGBToHLS_16s_AC4R", 4, 2, 4, RGB_FN(lumiRGBToHLS_16s_AC4R, Lum16s));
    rgb("RGBToHLS_32f_C3R", 3, 4, 0, RGB_FN(lumiRGBToHLS_32f_C3R, Lum32f));
    rgb("RGBToHLS_32f_AC4R", 4, 4, 0, RGB_FN(lumiRGBToHLS_32f_AC4R, Lum32f));
    rgb("HLSToRGB_8u_C3R", 3, 1, 8, RGB_FN(lumiHLSToRGB_8u_C3R, Lum8u));
    rgb("HLSToRGB_8u_AC4R", 4, 1, 4, RGB_FN(lumiHLSToRGB_8u_AC4R, Lum8u));
    rgb("HLSToRGB_16u_C3R", 3, 2, 4, RGB_FN(lumiHLSToRGB_16u_C3R, Lum16u));
    rgb("HLSToRGB_16u_AC4R", 4, 2, 4, RGB_FN(lumiHLSToRGB_16u_AC4R, Lum16u));
    rgb("HLSToRGB_16s_C3R", 3, 2, 4, RGB_FN(lumiHLSToRGB_16s_C3R, Lum16s));
    rgb("HLSToRGB_16s_AC4R", 4, 2, 4, RGB_FN(lumiHLSToRGB_16s_AC4R, Lum16s));
    rgb("HLSToRGB_32f_C3R", 3, 4, 0, RGB_FN(lumiHLSToRGB_32f_C3R, Lum32f));
    rgb("HLSToRGB_32f_AC4R", 4, 4, 0, RGB_FN(lumiHLSToRGB_32f_AC4R, Lum32f));
    rgb("RGBToHSV_8u_C3R", 3, 1, 0, RGB_FN(lumiRGBToHSV_8u_C3R, Lum8u));
    rgb("RGBToHSV_8u_AC4R", 4, 1, 0, RGB_FN(lumiRGBToHSV_8u_AC4R, Lum8u));
    rgb("RGBToHSV_16u_C3R", 3, 2, 0, RGB_FN(lumiRGBToHSV_16u_C3R, Lum16u));
    rgb("RGBToHSV_16u_AC4R", 4, 2, 0, RGB_FN(lumiRGBToHSV_16u_AC4R, Lum16u));
    rgb("HSVToRGB_8u_C3R", 3, 1, 0, RGB_FN(lumiHSVToRGB_8u_C3R, Lum8u));
    rgb("HSVToRGB_8u_AC4R", 4, 1, 0, RGB_FN(lumiHSVToRGB_8u_AC4R, Lum8u));
    rgb("HSVToRGB_16u_C3R", 3, 2, 0, RGB_FN(lumiHSVToRGB_16u_C3R, Lum16u));
    rgb("HSVToRGB_16u_AC4R", 4, 2, 0, RGB_FN(lumiHSVToRGB_16u_AC4R, Lum16u));

    const ImageShape C3 = packedImg(3), AC4 = packedImg(4), P3 = planarImg(3), P4 = planarImg(4);
    const auto bgr = [&](const char* n, ImageShape s, ImageShape d, int alpha, CallFn f) {
      t.push_back({mk(n, std::move(s), std::move(d), 1, std::move(f)), 4, 1, alpha, true});
    };
    bgr("BGRToHLS_8u_AC4R", AC4, AC4, 1, [](const B& b, LumSize r) {
      return lumiBGRToHLS_8u_AC4R(b.srcPtr(), b.srcStep, b.dstPtr(), b.dstStep, r);
    });
    bgr("BGRToHLS_8u_P3R", P3, P3, 0, [](const B& b, LumSize r) {
      return lumiBGRToHLS_8u_P3R(b.srcPlanes(), b.srcStep, b.dstPlanes(), b.dstStep, r);
    });
    bgr("BGRToHLS_8u_AP4R", P4, P4, 2, [](const B& b, LumSize r) {
      return lumiBGRToHLS_8u_AP4R(b.srcPlanes(), b.srcStep, b.dstPlanes(), b.dstStep, r);
    });
    bgr("BGRToHLS_8u_C3P3R", C3, P3, 0, [](const B& b, LumSize r) {
      return lumiBGRToHLS_8u_C3P3R(b.srcPtr(), b.srcStep, b.dstPlanes(), b.dstStep, r);
    });
    bgr("BGRToHLS_8u_P3C3R", P3, C3, 0, [](const B& b, LumSize r) {
      return lumiBGRToHLS_8u_P3C3R(b.srcPlanes(), b.srcStep, b.dstPtr(), b.dstStep, r);
    });
    bgr("BGRToHLS_8u_AC4P4R", AC4, P4, 2, [](const B& b, LumSize r) {
      return lumiBGRToHLS_8u_AC4P4R(b.srcPtr(), b.srcStep, b.dstPlanes(), b.dstStep, r);
    });
    bgr("BGRToHLS_8u_AP4C4R", P4, AC4, 2, [](const B& b, LumSize r) {
      return lumiBGRToHLS_8u_AP4C4R(b.srcPlanes(), b.srcStep, b.dstPtr(), b.dstStep, r);
    });
    bgr("HLSToBGR_8u_P3R", P3, P3, 0, [](const B& b, LumSize r) {
      return lumiHLSToBGR_8u_P3R(b.srcPlanes(), b.srcStep, b.dstPlanes(), b.dstStep, r);
    });
    bgr("HLSToBGR_8u_AP4R", P4, P4, 2, [](const B& b, LumSize r) {
      return lumiHLSToBGR_8u_AP4R(b.srcPlanes(), b.srcStep, b.dstPlanes(), b.dstStep, r);
    });
    bgr("HLSToBGR_8u_C3P3R", C3, P3, 0, [](const B& b, LumSize r) {
      return lumiHLSToBGR_8u_C3P3R(b.srcPtr(), b.srcStep, b.dstPlanes(), b.dstStep, r);
    });
    bgr("HLSToBGR_8u_P3C3R", P3, C3, 0, [](const B& b, LumSize r) {
      return lumiHLSToBGR_8u_P3C3R(b.srcPlanes(), b.srcStep, b.dstPtr(), b.dstStep, r);
    });
    bgr("HLSToBGR_8u_AC4P4R", AC4, P4, 2, [](const B& b, LumSize r) {
      return lumiHLSToBGR_8u_AC4P4R(b.srcPtr(), b.srcStep, b.dstPlanes(), b.dstStep, r);
    });
    bgr("HLSToBGR_8u_AP4C4R", P4, AC4, 2, [](const B& b, LumSize r) {
      return lumiHLSToBGR_8u_AP4C4R(b.srcPlanes(), b.srcStep, b.dstPtr(), b.dstStep, r);
    });
    return t;
  }();
  return v;
}

const HueCase& byName(const std::string& n) {
  for (const auto& c : cases())
    if (c.fc.name == n) return c;
  throw std::runtime_error("no case " + n);
}

// ---- the family harness ----------------------------------------------------

TEST(ModelsHue, ThirtySevenFunctions) { EXPECT_EQ(cases().size(), 37u); }

TEST(ModelsHue, RefusalsInCheckOrderLeaveDestinationUntouched) {
  for (const auto& c : cases()) checkRefusals(c.fc);
}

TEST(ModelsHue, VectorBlocksMatchScalarTwinsAtEveryWidth) {
  for (const auto& c : cases()) checkVectorMatchesScalar(c.fc, blockWidths(), 3);
}

TEST(ModelsHue, AlignmentDoesNotChangeSamples) {
  for (const auto& c : cases()) checkAlignmentInvariance(c.fc, {1, 7, 8, 19, 64}, 2);
}

TEST(ModelsHue, NegativeStepWalksBottomUpWhereStepsGoUnchecked) {
  for (const auto& c : cases())
    if (!c.stepChecked) checkNegativeStep(c.fc, 21, 5);
}

// ---- step checks of the BGR family --------------------------------------------

TEST(ModelsHue, BgrFamilyRefusesStepsBelowOneInItsOrder) {
  struct Row {
    int srcStep, dstStep;
    LumSize roi;
    bool nullPointer;
    LumStatus planar, packedAC4;  // the planar functions; BGRToHLS_8u_AC4R
  };
  const Row rows[] = {
      {0, 64, {4, 2}, false, lumStatusBadStep, lumStatusBadStep},
      {64, -64, {4, 2}, false, lumStatusBadStep, lumStatusBadStep},
      {0, 64, {0, 2}, false, lumStatusBadStep, lumStatusBadSize},  // steps before size, but for AC4R
      {64, 0, {4, -1}, false, lumStatusBadStep, lumStatusBadSize},
      {0, 0, {4, 2}, true, lumStatusNullPointer, lumStatusNullPointer},
      {1, 1, {0, 2}, false, lumStatusBadSize, lumStatusBadSize},
  };
  for (const auto& c : cases()) {
    if (!c.stepChecked) continue;
    SCOPED_TRACE(c.fc.name);
    CallImages ci(c.fc, {4, 2});
    ci.fillDestination(0x5A);
    const auto before = ci.destinationBytes();
    for (const Row& r : rows) {
      B b = ci.buffers();
      b.srcStep = r.srcStep;
      b.dstStep = r.dstStep;
      if (r.nullPointer) b.dst = nullptr;
      const LumStatus want = c.fc.name == "BGRToHLS_8u_AC4R" ? r.packedAC4 : r.planar;
      EXPECT_EQ(c.fc.call(b, r.roi), want) << r.srcStep << " " << r.dstStep << " " << r.roi.width;
    }
    EXPECT_EQ(ci.destinationBytes(), before);
  }
}

// ---- alpha -----------------------------------------------------------------

// Kept alpha is never written; copied alpha equals the source's.
TEST(ModelsHue, AlphaKeptOrCopiedAsEachFunctionSays) {
  std::mt19937 rng(3);
  for (const auto& c : cases()) {
    if (!c.alpha) continue;
    SCOPED_TRACE(c.fc.name);
    for (int w : {1, 5, 8, 13, 33}) {
      const LumSize roi{w, 2};
      CallImages ci(c.fc, roi);
      ci.randomizeSource(rng);
      ci.fillDestination(0x77);
      ASSERT_EQ(c.fc.call(ci.buffers(), roi), lumStatusOk);
      for (int y = 0; y < roi.height; ++y)
        for (int x = 0; x < w; ++x) {
          const auto alphaAt = [&](std::vector<GuardedImage>& img) {
            if (img.size() == 4) return img[3].row(y) + x * c.elem;
            return img[0].row(y) + (4 * x + 3) * c.elem;
          };
          const uint8_t* d = alphaAt(ci.dst);
          if (c.alpha == 1) {
            for (int i = 0; i < c.elem; ++i) ASSERT_EQ(d[i], 0x77) << "alpha written at " << x;
          } else {
            ASSERT_EQ(std::memcmp(d, alphaAt(ci.src), size_t(c.elem)), 0) << "alpha not copied at " << x;
          }
        }
    }
  }
}

// ---- block and tail columns ----------------------------------------------------

// Each column of a row takes its form by position alone: the block answer of a
// pixel where x < width & ~(cover - 1), the tail answer (a one-pixel call) elsewhere.
TEST(ModelsHue, EachColumnTakesTheFormOfItsPosition) {
  std::mt19937 rng(11);
  for (const auto& c : cases()) {
    if (c.cover < 2) continue;
    SCOPED_TRACE(c.fc.name);
    std::vector<int> widths;
    for (int w = 1; w <= 40; ++w) widths.push_back(w);
    widths.push_back(517);
    for (int w : widths) {
      const LumSize roi{w, 1};
      CallImages row(c.fc, roi);
      row.randomizeSource(rng);
      ASSERT_EQ(c.fc.call(row.buffers(), roi), lumStatusOk);
      const int split = w & ~(c.cover - 1);
      for (int x : {0, split - 1, split, w - 1}) {
        if (x < 0 || x >= w) continue;
        // The same pixel alone (tail), or repeated over one whole block.
        const int n = x < split ? c.cover : 1;
        CallImages one(c.fc, {n, 1});
        for (size_t p = 0; p < row.src.size(); ++p) {
          const int bpp = row.src[p].rowBytes() / w;
          std::vector<uint8_t> px(size_t(n * bpp));
          for (int i = 0; i < n; ++i) std::memcpy(px.data() + i * bpp, row.src[p].row(0) + x * bpp, size_t(bpp));
          one.src[p].setBytes(px);
        }
        ASSERT_EQ(c.fc.call(one.buffers(), {n, 1}), lumStatusOk);
        for (size_t p = 0; p < row.dst.size(); ++p) {
          const int bpp = row.dst[p].rowBytes() / w;
          const int colour = c.alpha && row.dst.size() == 1 ? 3 * c.elem : bpp;
          ASSERT_EQ(std::memcmp(row.dst[p].row(0) + x * bpp, one.dst[p].row(0), size_t(colour)), 0)
              << "width " << w << " column " << x << " plane " << p;
        }
      }
    }
  }
}

// ---- known answers -------------------------------------------------------------

// One pixel at column `col` of a row `width` wide (all columns the same pixel).
template <class T, class Fn>
std::array<T, 3> convertAt(Fn fn, std::array<T, 3> in, int width, int col, int ch = 3) {
  std::vector<T> src(size_t(width * ch)), dst(size_t(width * ch), T(0));
  for (int x = 0; x < width; ++x)
    for (int k = 0; k < 3; ++k) src[size_t(x * ch + k)] = in[size_t(k)];
  const int step = width * ch * int(sizeof(T));
  EXPECT_EQ(fn(src.data(), step, dst.data(), step, LumSize{width, 1}), lumStatusOk);
  return {dst[size_t(col * ch)], dst[size_t(col * ch + 1)], dst[size_t(col * ch + 2)]};
}
using U8 = std::array<Lum8u, 3>;
using U16 = std::array<Lum16u, 3>;
using S16 = std::array<Lum16s, 3>;
using F32 = std::array<Lum32f, 3>;

// 255 x est(255) = 0.99998474 (est(255) = 4112 / 2^20), which decides the ties.
TEST(ModelsHue, EstimateOf255UnderOne) { EXPECT_EQ(lum::rcpEstimate(255.0f), 4112.0f / 1048576.0f); }

// 8u HLS: pixel at a block column (0 of 8) and at the tail (column 8 of 9).
TEST(ModelsHue, HlsEightBitBlockRoundsTailTruncates) {
  struct Row {
    U8 rgb, block, tail;
  };
  const Row rows[] = {
      {{0, 0, 0}, {0, 0, 0}, {0, 0, 0}},
      {{90, 90, 90}, {0, 90, 0}, {0, 90, 0}},        // gray: H = S = 0
      {{3, 0, 0}, {0, 2, 255}, {0, 1, 0}},           // L = 1.5
      {{255, 255, 255}, {0, 255, 0}, {0, 255, 0}},   // white
      // R and G tie: R's formula, 15300 est(255) = 59.99908 degrees, 42.4994.
      {{255, 255, 0}, {42, 128, 255}, {42, 127, 0}},
      // B holds the max: 240 degrees exactly.
      {{0, 0, 255}, {170, 128, 255}, {170, 127, 0}},
  };
  for (const Row& r : rows) {
    SCOPED_TRACE(int(r.rgb[0]) * 65536 + r.rgb[1] * 256 + r.rgb[2]);
    const U8 b = convertAt<Lum8u>(lumiRGBToHLS_8u_C3R, r.rgb, 8, 0);
    const U8 t = convertAt<Lum8u>(lumiRGBToHLS_8u_C3R, r.rgb, 9, 8);
    EXPECT_EQ(b, r.block);
    EXPECT_EQ(t[0], r.tail[0]);
    EXPECT_EQ(t[1], r.tail[1]);
    if (r.tail[2]) EXPECT_EQ(t[2], r.tail[2]);
    // The AC4 tail rounds too.
    EXPECT_EQ(convertAt<Lum8u>(lumiRGBToHLS_8u_AC4R, r.rgb, 5, 4, 4)[1], r.block[1]);
  }
}

TEST(ModelsHue, HlsSixteenBitScalesAndBias) {
  // Red: L = 32767.5, nearest 32768 in blocks, 32767 in the tail; H = 0; S full.
  EXPECT_EQ(convertAt<Lum16u>(lumiRGBToHLS_16u_C3R, U16{65535, 0, 0}, 4, 0), (U16{0, 32768, 65535}));
  EXPECT_EQ(convertAt<Lum16u>(lumiRGBToHLS_16u_C3R, U16{65535, 0, 0}, 5, 4)[1], 32767);
  EXPECT_EQ(convertAt<Lum16u>(lumiRGBToHLS_16u_C3R, U16{1000, 1000, 1000}, 5, 4), (U16{0, 1000, 0}));
  // 16s is 16u shifted down by 32768, on both sides.
  EXPECT_EQ(convertAt<Lum16s>(lumiRGBToHLS_16s_C3R, S16{32767, -32768, -32768}, 4, 0), (S16{-32768, 0, 32767}));
  EXPECT_EQ(convertAt<Lum16s>(lumiRGBToHLS_16s_C3R, S16{32767, -32768, -32768}, 5, 4)[1], -1);
  EXPECT_EQ(convertAt<Lum16s>(lumiRGBToHLS_16s_AC4R, S16{-32768, -32768, -32768}, 3, 2, 4), (S16{-32768, -32768, -32768}));
}

TEST(ModelsHue, HlsFloatGrayThresholdAndTrueDivisions) {
  struct Row {
    F32 rgb, hls;
  };
  const Row rows[] = {
      {{0x1p-27f, 0.0f, 0.0f}, {0.0f, 0x1p-28f, 0.0f}},        // d = 7.5e-9 counts as gray
      {{0.25f, 0.25f, 0.25f}, {0.0f, 0.25f, 0.0f}},
      {{1.0f, 0.0f, 0.0f}, {0.0f, 0.5f, 1.0f}},
      {{0.0f, 0.0f, 1.0f}, {240.0f / 360.0f, 0.5f, 1.0f}},
      {{0.0f, 0.5f, 0.0f}, {120.0f / 360.0f, 0.25f, 1.0f}},
      {{1.0f, 1.0f, 0.5f}, {60.0f / 360.0f, 0.75f, 1.0f}},    // L above 0.5: d / (2 - s)
  };
  for (const Row& r : rows) {
    for (int w : {1, 6}) {
      EXPECT_EQ(convertAt<Lum32f>(lumiRGBToHLS_32f_C3R, r.rgb, w, w - 1), r.hls) << r.rgb[0] << " " << r.rgb[1];
      EXPECT_EQ(convertAt<Lum32f>(lumiRGBToHLS_32f_AC4R, r.rgb, w, w - 1, 4), r.hls);
    }
  }
  // Just above FLT_EPSILON is a colour.
  EXPECT_GT(convertAt<Lum32f>(lumiRGBToHLS_32f_C3R, F32{2.5e-7f, 0.0f, 0.0f}, 1, 0)[2], 0.9f);
}

TEST(ModelsHue, HlsToRgbFloatStoresOutOfRangeValues) {
  struct Row {
    F32 hls, rgb;
  };
  const Row rows[] = {
      {{0.0f, 0.5f, 1.0f}, {1.0f, 0.0f, 0.0f}},
      {{1.0f / 3.0f, 0.5f, 1.0f}, {0.0f, 1.0f, 0.0f}},
      {{0.3f, 1.5f, 0.0f}, {1.5f, 1.5f, 1.5f}},      // S = 0: L as it is
      {{0.7f, -0.25f, 0.0f}, {-0.25f, -0.25f, -0.25f}},
      {{0.0f, 0.5f, 2.0f}, {1.5f, -0.5f, -0.5f}},    // M2 = 2.5 - 1, M1 = 1 - M2
  };
  for (const Row& r : rows)
    for (int w : {1, 4, 7}) {
      EXPECT_EQ(convertAt<Lum32f>(lumiHLSToRGB_32f_C3R, r.hls, w, w - 1), r.rgb) << r.hls[0];
      EXPECT_EQ(convertAt<Lum32f>(lumiHLSToRGB_32f_AC4R, r.hls, w, 0, 4), r.rgb);
    }
}

TEST(ModelsHue, HlsToRgbGrayAndPrimariesInBlocks) {
  struct Row {
    U8 hls, rgb;
  };
  const Row rows[] = {
      {{0, 0, 0}, {0, 0, 0}},
      {{77, 200, 0}, {200, 200, 200}},
      {{123, 255, 0}, {255, 255, 255}},
      {{0, 255, 255}, {255, 255, 255}},
  };
  for (const Row& r : rows) {
    EXPECT_EQ(convertAt<Lum8u>(lumiHLSToRGB_8u_C3R, r.hls, 8, 3), r.rgb);
    EXPECT_EQ(convertAt<Lum8u>(lumiHLSToRGB_8u_AC4R, r.hls, 4, 1, 4), r.rgb);
  }
  // H = 17 is 24 degrees, L = 0.2, S = 1: M2 = 0.4, M1 = 0, G = 0.4 x 24 / 60 x 255 =
  // 40.8, nearest in blocks, truncated in the tail.
  EXPECT_EQ(convertAt<Lum8u>(lumiHLSToRGB_8u_C3R, U8{17, 51, 255}, 8, 7), (U8{102, 41, 0}));
  EXPECT_EQ(convertAt<Lum8u>(lumiHLSToRGB_8u_C3R, U8{17, 51, 255}, 9, 8), (U8{102, 40, 0}));
  EXPECT_EQ(convertAt<Lum8u>(lumiHLSToRGB_8u_AC4R, U8{17, 51, 255}, 5, 4, 4), (U8{102, 40, 0}));
  EXPECT_EQ(convertAt<Lum16u>(lumiHLSToRGB_16u_C3R, U16{0, 0, 65535}, 5, 4), (U16{0, 0, 0}));
  EXPECT_EQ(convertAt<Lum16u>(lumiHLSToRGB_16u_C3R, U16{9, 65535, 0}, 5, 4), (U16{65535, 65535, 65535}));
  EXPECT_EQ(convertAt<Lum16s>(lumiHLSToRGB_16s_C3R, S16{-32768, 32767, 0}, 4, 0), (S16{32767, 32767, 32767}));
}

TEST(ModelsHue, HsvEightBitTiesGoToTheLastTest) {
  struct Row {
    U8 rgb, hsv;
  };
  const Row rows[] = {
      {{0, 0, 0}, {0, 0, 0}},            // black
      {{60, 60, 60}, {0, 0, 60}},        // gray
      {{255, 0, 0}, {0, 255, 255}},
      {{0, 255, 0}, {85, 255, 255}},     // 2 x 42.5
      {{0, 0, 255}, {170, 255, 255}},
      // Ties: with e = 255 est(255) = 0.99998474, G over R: 42.5 (2 - e) = 42.5006;
      // B over G: 42.5 (4 - e) = 127.5006; B over R: 42.5 (4 + e) = 212.4994.
      {{255, 255, 0}, {43, 255, 255}},
      {{0, 255, 255}, {128, 255, 255}},
      {{255, 0, 255}, {212, 255, 255}},
  };
  for (const Row& r : rows)
    for (int w : {1, 4, 9}) {
      EXPECT_EQ(convertAt<Lum8u>(lumiRGBToHSV_8u_C3R, r.rgb, w, w - 1), r.hsv) << int(r.rgb[0]) << " " << int(r.rgb[1]);
      EXPECT_EQ(convertAt<Lum8u>(lumiRGBToHSV_8u_AC4R, r.rgb, w, 0, 4), r.hsv);
    }
}

TEST(ModelsHue, HsvSixteenBitTrueDivisionsAndTies) {
  struct Row {
    U16 rgb, hsv;
  };
  const Row rows[] = {
      {{0, 0, 0}, {0, 0, 0}},
      {{500, 500, 500}, {0, 0, 500}},
      {{65535, 0, 0}, {0, 65535, 65535}},
      {{0, 65535, 0}, {21845, 65535, 65535}},    // 2 x 65535 / 6 + 0.5
      {{0, 65535, 65535}, {32768, 65535, 65535}},  // G and B tie: B's 4 - 1 + 0, 32767.5 + 0.5
      {{65535, 0, 65535}, {54613, 65535, 65535}},  // R and B tie: B's 4 + 1
      {{65535, 65535, 0}, {10923, 65535, 65535}},  // R and G tie: G's 0 + 2 - 1
      {{1000, 500, 500}, {0, 32768, 1000}},       // S = 0.5 x 65535 + 0.5
  };
  for (const Row& r : rows) {
    EXPECT_EQ(convertAt<Lum16u>(lumiRGBToHSV_16u_C3R, r.rgb, 3, 2), r.hsv) << r.rgb[0] << " " << r.rgb[1];
    EXPECT_EQ(convertAt<Lum16u>(lumiRGBToHSV_16u_AC4R, r.rgb, 2, 1, 4), r.hsv);
  }
}

TEST(ModelsHue, HsvToRgbHueAtFullScaleIsZero) {
  struct Row {
    U8 hsv, rgb;
  };
  const Row rows[] = {
      {{0, 255, 255}, {255, 0, 0}},
      {{85, 255, 255}, {0, 255, 0}},
      {{170, 255, 255}, {0, 0, 255}},
      {{200, 0, 77}, {77, 77, 77}},  // S = 0
  };
  for (const Row& r : rows)
    for (int w : {1, 4, 9}) EXPECT_EQ(convertAt<Lum8u>(lumiHSVToRGB_8u_C3R, r.hsv, w, w - 1), r.rgb);
  for (int s = 0; s < 256; s += 15)
    for (int v = 0; v < 256; v += 17) {
      EXPECT_EQ(convertAt<Lum8u>(lumiHSVToRGB_8u_C3R, U8{255, Lum8u(s), Lum8u(v)}, 5, 4),
                convertAt<Lum8u>(lumiHSVToRGB_8u_C3R, U8{0, Lum8u(s), Lum8u(v)}, 5, 4));
      EXPECT_EQ(convertAt<Lum8u>(lumiHSVToRGB_8u_AC4R, U8{255, Lum8u(s), Lum8u(v)}, 4, 0, 4),
                convertAt<Lum8u>(lumiHSVToRGB_8u_AC4R, U8{0, Lum8u(s), Lum8u(v)}, 4, 0, 4));
      EXPECT_EQ(convertAt<Lum16u>(lumiHSVToRGB_16u_C3R, U16{65535, Lum16u(s * 257), Lum16u(v * 257)}, 1, 0),
                convertAt<Lum16u>(lumiHSVToRGB_16u_C3R, U16{0, Lum16u(s * 257), Lum16u(v * 257)}, 1, 0));
    }
}

// The BGR family reads and writes B first, and truncates in blocks and tail.
TEST(ModelsHue, BgrFamilyOrdersBlueFirstAndTruncates) {
  const Lum8u blue[4] = {255, 0, 0, 9};  // B, G, R, A
  for (int w : {4, 5}) {
    std::vector<Lum8u> src(size_t(4 * w)), dst(size_t(4 * w), 0xEE);
    for (int x = 0; x < w; ++x) std::memcpy(&src[size_t(4 * x)], blue, 4);
    ASSERT_EQ(lumiBGRToHLS_8u_AC4R(src.data(), 4 * w, dst.data(), 4 * w, {w, 1}), lumStatusOk);
    // H = 240 x 0.7083333 = 170, L = 127.5 truncated, alpha kept.
    EXPECT_EQ(dst[size_t(4 * (w - 1))], 170);
    EXPECT_EQ(dst[size_t(4 * (w - 1) + 1)], 127);
    EXPECT_EQ(dst[size_t(4 * (w - 1) + 3)], 0xEE);
  }
  // Red in blocks: S = trunc(255 est(255) x 255) = trunc(254.996) = 254.
  Lum8u b[4] = {0, 0, 0, 0}, g[4] = {0, 0, 0, 0}, r[4] = {255, 255, 255, 255};
  Lum8u h[4], l[4], s[4];
  const Lum8u* srcP[3] = {b, g, r};
  Lum8u* dstP[3] = {h, l, s};
  ASSERT_EQ(lumiBGRToHLS_8u_P3R(srcP, 4, dstP, 4, {4, 1}), lumStatusOk);
  EXPECT_EQ(h[0], 0);
  EXPECT_EQ(l[0], 127);
  EXPECT_EQ(s[0], 254);
  // And back: gray L = 200 in blocks, 200 x 0.003921569 x 255 = 200.00001, truncated.
  Lum8u hh[4] = {9, 9, 9, 9}, ll[4] = {200, 200, 200, 200}, ss[4] = {0, 0, 0, 0};
  const Lum8u* inP[3] = {hh, ll, ss};
  Lum8u* outP[3] = {b, g, r};
  ASSERT_EQ(lumiHLSToBGR_8u_P3R(inP, 4, outP, 4, {4, 1}), lumStatusOk);
  EXPECT_EQ(b[0], 200);
  EXPECT_EQ(r[3], 200);
}

// ---- round trips ---------------------------------------------------------------

// Gray goes through HLS and HSV and back unchanged on every type and path;
// colours come back within the hue step of the integer types.
TEST(ModelsHue, RoundTripsReturnTheColour) {
  std::mt19937 rng(21);
  for (int w : {3, 8, 17}) {
    for (int v : {0, 1, 17, 128, 254, 255}) {
      const U8 gray{Lum8u(v), Lum8u(v), Lum8u(v)};
      for (int x : {0, w - 1})
        EXPECT_EQ(convertAt<Lum8u>(lumiHSVToRGB_8u_C3R, convertAt<Lum8u>(lumiRGBToHSV_8u_C3R, gray, w, x), w, x), gray);
      EXPECT_EQ(convertAt<Lum8u>(lumiHLSToRGB_8u_C3R, convertAt<Lum8u>(lumiRGBToHLS_8u_C3R, gray, w, 0), 8, 0), gray);
    }
  }
  const auto close8 = [](U8 a, U8 b, int tol) {
    for (int k = 0; k < 3; ++k)
      if (std::abs(int(a[size_t(k)]) - int(b[size_t(k)])) > tol) return false;
    return true;
  };
  for (int i = 0; i < 2000; ++i) {
    const U8 c{Lum8u(rng()), Lum8u(rng()), Lum8u(rng())};
    EXPECT_TRUE(close8(convertAt<Lum8u>(lumiHSVToRGB_8u_C3R, convertAt<Lum8u>(lumiRGBToHSV_8u_C3R, c, 1, 0), 1, 0), c, 8));
    EXPECT_TRUE(close8(convertAt<Lum8u>(lumiHLSToRGB_8u_C3R, convertAt<Lum8u>(lumiRGBToHLS_8u_C3R, c, 8, 0), 8, 0), c, 8));
    const U16 c16{Lum16u(rng()), Lum16u(rng()), Lum16u(rng())};
    const U16 back16 = convertAt<Lum16u>(lumiHLSToRGB_16u_C3R, convertAt<Lum16u>(lumiRGBToHLS_16u_C3R, c16, 4, 0), 4, 0);
    const U16 hsv16 = convertAt<Lum16u>(lumiHSVToRGB_16u_C3R, convertAt<Lum16u>(lumiRGBToHSV_16u_C3R, c16, 1, 0), 1, 0);
    for (int k = 0; k < 3; ++k) {
      EXPECT_NEAR(back16[size_t(k)], c16[size_t(k)], 8);
      EXPECT_NEAR(hsv16[size_t(k)], c16[size_t(k)], 8);
    }
    const F32 f{float(rng() % 1001) / 1000, float(rng() % 1001) / 1000, float(rng() % 1001) / 1000};
    const F32 fb = convertAt<Lum32f>(lumiHLSToRGB_32f_C3R, convertAt<Lum32f>(lumiRGBToHLS_32f_C3R, f, 1, 0), 1, 0);
    for (int k = 0; k < 3; ++k) EXPECT_NEAR(fb[size_t(k)], f[size_t(k)], 1e-5f);
  }
}

// Byte steps become sample steps rounded down: an odd 16-bit step and a 32-bit
// step of 4k + 3 address rows like the step below.
TEST(ModelsHue, ByteStepsRoundDownToWholeSamples) {
  const int w = 5, h = 3;
  std::mt19937 rng(17);
  std::vector<Lum16u> src(64 * h), a(64 * h, 0), b(64 * h, 0);
  for (auto& v : src) v = Lum16u(rng());
  ASSERT_EQ(lumiRGBToHLS_16u_C3R(src.data(), 2 * 20 + 1, a.data(), 2 * 17 + 1, {w, h}), lumStatusOk);
  ASSERT_EQ(lumiRGBToHLS_16u_C3R(src.data(), 2 * 20, b.data(), 2 * 17, {w, h}), lumStatusOk);
  EXPECT_EQ(a, b);
  std::vector<Lum32f> fs(64 * h), fa(64 * h, 0), fb(64 * h, 0);
  for (auto& v : fs) v = float(rng() % 1000) / 1000;
  ASSERT_EQ(lumiHLSToRGB_32f_AC4R(fs.data(), 4 * 21 + 3, fa.data(), 4 * 20 + 3, {w, h}), lumStatusOk);
  ASSERT_EQ(lumiHLSToRGB_32f_AC4R(fs.data(), 4 * 21, fb.data(), 4 * 20, {w, h}), lumStatusOk);
  EXPECT_EQ(fa, fb);
}

}  // namespace
