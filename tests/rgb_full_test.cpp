// RGB <-> YCbCr and RGB <-> YUV at full resolution.
#include <gtest/gtest.h>

#include <cmath>
#include <cstdio>
#include <cstring>
#include <iterator>
#include <optional>
#include <set>
#include <string>

#include "frame/simd.h"
#include "lumachroma/forms.h"
#include "lumcc.h"
#include "support/family.h"

using namespace lumtest;

namespace {

// Block granularity of each function: the block form covers width & ~(cover-1)
// pixels of a row; 1 = every pixel by the block form, 0 = every pixel by the tail.
struct FullCase {
  FnCase fc;
  int cover;
  bool forward;  // RGB -> luma-chroma
  bool yuv;      // YUV model rather than YCbCr
  bool bgr;      // packed side in B, G, R order
};

using B = Buffers;
const ImageShape C3 = packedImg(3), AC4 = packedImg(4), P3 = planarImg(3), P4 = planarImg(4);

FnCase mk(const char* name, ImageShape s, ImageShape d, Order o, CallFn f) {
  FnCase c;
  c.name = name;
  c.src = std::move(s);
  c.dst = std::move(d);
  c.order = o;
  c.call = std::move(f);
  return c;
}

const std::vector<FullCase>& cases() {
  static const std::vector<FullCase> v = [] {
    std::vector<FullCase> t;
    auto P4three = P4;
    P4three.checkedPlanes = 3;  // the alpha plane's pointer goes unchecked
    const Lum8u av = 0xA7;
    t.push_back({mk("RGBToYCbCr_C3R", C3, C3, Order::NullSize,
                    [](const B& b, LumSize r) { return lumiRGBToYCbCr_8u_C3R(b.srcPtr(), b.srcStep, b.dstPtr(), b.dstStep, r); }),
                 16, true, false, false});
    t.push_back({mk("RGBToYCbCr_AC4R", AC4, AC4, Order::NullSize,
                    [](const B& b, LumSize r) { return lumiRGBToYCbCr_8u_AC4R(b.srcPtr(), b.srcStep, b.dstPtr(), b.dstStep, r); }),
                 16, true, false, false});
    t.push_back({mk("RGBToYCbCr_C3P3R", C3, P3, Order::NullSize,
                    [](const B& b, LumSize r) { return lumiRGBToYCbCr_8u_C3P3R(b.srcPtr(), b.srcStep, b.dstPlanes(), b.dstStep, r); }),
                 8, true, false, false});
    t.push_back({mk("RGBToYCbCr_AC4P3R", AC4, P3, Order::NullSize,
                    [](const B& b, LumSize r) { return lumiRGBToYCbCr_8u_AC4P3R(b.srcPtr(), b.srcStep, b.dstPlanes(), b.dstStep, r); }),
                 8, true, false, false});
    t.push_back({mk("RGBToYCbCr_P3R", P3, P3, Order::NullSizePlanes,
                    [](const B& b, LumSize r) { return lumiRGBToYCbCr_8u_P3R(b.srcPlanes(), b.srcStep, b.dstPlanes(), b.dstStep, r); }),
                 8, true, false, false});
    t.push_back({mk("YCbCrToRGB_C3R", C3, C3, Order::NullSize,
                    [](const B& b, LumSize r) { return lumiYCbCrToRGB_8u_C3R(b.srcPtr(), b.srcStep, b.dstPtr(), b.dstStep, r); }),
                 8, false, false, false});
    t.push_back({mk("YCbCrToRGB_AC4R", AC4, AC4, Order::NullSize,
                    [](const B& b, LumSize r) { return lumiYCbCrToRGB_8u_AC4R(b.srcPtr(), b.srcStep, b.dstPtr(), b.dstStep, r); }),
                 0, false, false, false});
    t.push_back({mk("YCbCrToRGB_P3R", P3, P3, Order::NullSizePlanes,
                    [](const B& b, LumSize r) { return lumiYCbCrToRGB_8u_P3R(b.srcPlanes(), b.srcStep, b.dstPlanes(), b.dstStep, r); }),
                 4, false, false, false});
    t.push_back({mk("YCbCrToRGB_P3C3R", P3, C3, Order::NullSize,
                    [](const B& b, LumSize r) { return lumiYCbCrToRGB_8u_P3C3R(b.srcPlanes(), b.srcStep, b.dstPtr(), b.dstStep, r); }),
                 8, false, false, false});
    t.push_back({mk("YCbCrToRGB_P3C4R", P3, AC4, Order::NullSizePlanes,
                    [av](const B& b, LumSize r) { return lumiYCbCrToRGB_8u_P3C4R(b.srcPlanes(), b.srcStep, b.dstPtr(), b.dstStep, r, av); }),
                 8, false, false, false});
    t.push_back({mk("YCbCrToBGR_P3C3R", P3, C3, Order::NullSize,
                    [](const B& b, LumSize r) { return lumiYCbCrToBGR_8u_P3C3R(b.srcPlanes(), b.srcStep, b.dstPtr(), b.dstStep, r); }),
                 8, false, false, true});
    t.push_back({mk("YCbCrToBGR_P3C4R", P3, AC4, Order::NullSize,
                    [av](const B& b, LumSize r) { return lumiYCbCrToBGR_8u_P3C4R(b.srcPlanes(), b.srcStep, b.dstPtr(), b.dstStep, r, av); }),
                 1, false, false, true});
    t.push_back({mk("RGBToYUV_C3R", C3, C3, Order::NullSize,
                    [](const B& b, LumSize r) { return lumiRGBToYUV_8u_C3R(b.srcPtr(), b.srcStep, b.dstPtr(), b.dstStep, r); }),
                 16, true, true, false});
    t.push_back({mk("RGBToYUV_AC4R", AC4, AC4, Order::NullSize,
                    [](const B& b, LumSize r) { return lumiRGBToYUV_8u_AC4R(b.srcPtr(), b.srcStep, b.dstPtr(), b.dstStep, r); }),
                 0, true, true, false});
    t.push_back({mk("RGBToYUV_C3P3R", C3, P3, Order::NullSizePlanes,
                    [](const B& b, LumSize r) { return lumiRGBToYUV_8u_C3P3R(b.srcPtr(), b.srcStep, b.dstPlanes(), b.dstStep, r); }),
                 8, true, true, false});
    t.push_back({mk("RGBToYUV_P3R", P3, P3, Order::NullSizePlanes,
                    [](const B& b, LumSize r) { return lumiRGBToYUV_8u_P3R(b.srcPlanes(), b.srcStep, b.dstPlanes(), b.dstStep, r); }),
                 16, true, true, false});
    t.push_back({mk("RGBToYUV_AC4P4R", AC4, P4three, Order::NullSizePlanes,
                    [](const B& b, LumSize r) { return lumiRGBToYUV_8u_AC4P4R(b.srcPtr(), b.srcStep, b.dstPlanes(), b.dstStep, r); }),
                 8, true, true, false});
    t.push_back({mk("YUVToRGB_C3R", C3, C3, Order::NullSize,
                    [](const B& b, LumSize r) { return lumiYUVToRGB_8u_C3R(b.srcPtr(), b.srcStep, b.dstPtr(), b.dstStep, r); }),
                 8, false, true, false});
    t.push_back({mk("YUVToRGB_AC4R", AC4, AC4, Order::NullSize,
                    [](const B& b, LumSize r) { return lumiYUVToRGB_8u_AC4R(b.srcPtr(), b.srcStep, b.dstPtr(), b.dstStep, r); }),
                 0, false, true, false});
    t.push_back({mk("YUVToRGB_P3R", P3, P3, Order::NullSizePlanes,
                    [](const B& b, LumSize r) { return lumiYUVToRGB_8u_P3R(b.srcPlanes(), b.srcStep, b.dstPlanes(), b.dstStep, r); }),
                 0, false, true, false});
    t.push_back({mk("YUVToRGB_P3C3R", P3, C3, Order::NullSizePlanes,
                    [](const B& b, LumSize r) { return lumiYUVToRGB_8u_P3C3R(b.srcPlanes(), b.srcStep, b.dstPtr(), b.dstStep, r); }),
                 16, false, true, false});
    t.push_back({mk("YUVToRGB_C3C4R", C3, AC4, Order::NullSize,
                    [av](const B& b, LumSize r) { return lumiYUVToRGB_8u_C3C4R(b.srcPtr(), b.srcStep, b.dstPtr(), b.dstStep, r, av); }),
                 8, false, true, false});
    return t;
  }();
  return v;
}

// Bytes of pixel x of an image, gathered over its planes.
std::vector<uint8_t> pixelBytes(const std::vector<GuardedImage>& img, const ImageShape& s, int x, int y) {
  std::vector<uint8_t> out;
  for (size_t p = 0; p < img.size(); ++p) {
    const int bpp = s.planes[p].bpp;
    const uint8_t* r = img[p].row(y) + x * bpp;
    out.insert(out.end(), r, r + bpp);
  }
  return out;
}
void setPixelBytes(std::vector<GuardedImage>& img, const ImageShape& s, int x, int y, const std::vector<uint8_t>& v) {
  size_t k = 0;
  for (size_t p = 0; p < img.size(); ++p) {
    const int bpp = s.planes[p].bpp;
    std::memcpy(img[p].row(y) + x * bpp, v.data() + k, size_t(bpp));
    k += size_t(bpp);
  }
}

// Output of a function for one source pixel in a row of `width` copies of it.
std::vector<uint8_t> convertAlone(const FnCase& fc, const std::vector<uint8_t>& srcPixel, int width, int at) {
  CallImages ci(fc, LumSize{width, 1});
  for (int x = 0; x < width; ++x) setPixelBytes(ci.src, fc.src, x, 0, srcPixel);
  ci.fillDestination(0x5A);
  EXPECT_EQ(fc.call(ci.buffers(), LumSize{width, 1}), lumStatusOk);
  return pixelBytes(ci.dst, fc.dst, at, 0);
}

}  // namespace

TEST(RgbFull, RefusalsInCheckOrderLeaveDestinationUntouched) {
  for (const auto& c : cases()) checkRefusals(c.fc);
}

TEST(RgbFull, VectorBlocksMatchScalarTwinsAtEveryWidth) {
  for (const auto& c : cases()) checkVectorMatchesScalar(c.fc, blockWidths(), 3);
}

TEST(RgbFull, AlignmentDoesNotChangeSamples) {
  for (const auto& c : cases()) checkAlignmentInvariance(c.fc, {1, 7, 15, 16, 17, 32, 48, 64, 100}, 4);
}

TEST(RgbFull, NegativeStepWalksBottomUp) {
  for (const auto& c : cases()) checkNegativeStep(c.fc, 37, 5);
}

TEST(RgbFull, StepZeroRepeatsOneRow) {
  // With a zero source step every row reads the same memory: every output row is row 0's.
  for (const auto& c : cases()) {
    SCOPED_TRACE(c.fc.name);
    CallImages ci(c.fc, LumSize{19, 1});
    std::mt19937 rng(3);
    ci.randomizeSource(rng);
    CallImages out(c.fc, LumSize{19, 4});
    Buffers b = ci.buffers();
    Buffers o = out.buffers();
    b.srcStep = 0;
    o.src = b.src;
    o.srcStep = 0;
    ASSERT_EQ(c.fc.call(o, LumSize{19, 4}), lumStatusOk);
    for (auto& d : out.dst)
      for (int y = 1; y < 4; ++y) EXPECT_EQ(0, std::memcmp(d.row(0), d.row(y), size_t(d.rowBytes())));
  }
}

// Each column takes the block form or the tail form by its position alone:
// columns below width & ~(cover-1) equal the pixel converted inside a full block,
// the others equal the pixel converted alone (width 1).
TEST(RgbFull, EachColumnTakesItsRowsForm) {
  std::mt19937 rng(11);
  for (const auto& c : cases()) {
    SCOPED_TRACE(c.fc.name);
    for (int w : {1, 3, 4, 5, 7, 8, 9, 15, 16, 17, 23, 31, 33}) {
      CallImages ci(c.fc, LumSize{w, 1});
      ci.randomizeSource(rng);
      ci.fillDestination(0x5A);
      ASSERT_EQ(c.fc.call(ci.buffers(), LumSize{w, 1}), lumStatusOk);
      const int blockEnd = c.cover == 0 ? 0 : (w & ~(c.cover - 1));
      for (int x = 0; x < w; ++x) {
        const auto px = pixelBytes(ci.src, c.fc.src, x, 0);
        const auto want = x < blockEnd ? convertAlone(c.fc, px, 16, 5) : convertAlone(c.fc, px, 1, 0);
        ASSERT_EQ(pixelBytes(ci.dst, c.fc.dst, x, 0), want) << "width " << w << " column " << x;
      }
    }
  }
}

TEST(RgbFull, BlackAndWhiteMapToStudioRangeInEveryForm) {
  for (const auto& c : cases()) {
    if (!c.forward || c.yuv) continue;
    SCOPED_TRACE(c.fc.name);
    for (int w : {1, 16}) {  // tail form, then block form
      const std::vector<uint8_t> black(size_t(c.fc.src.planes.size() * size_t(c.fc.src.planes[0].bpp)), 0);
      const std::vector<uint8_t> white(black.size(), 255);
      auto k = convertAlone(c.fc, black, w, 0);
      auto wt = convertAlone(c.fc, white, w, 0);
      EXPECT_EQ(k[0], 16);
      EXPECT_EQ(k[1], 128);
      EXPECT_EQ(k[2], 128);
      EXPECT_EQ(wt[0], 235);
      EXPECT_EQ(wt[1], 128);
      EXPECT_EQ(wt[2], 128);
    }
  }
}

TEST(RgbFull, ZeroLumaClampsToBlackInBlockAndTail) {
  for (const auto& c : cases()) {
    if (c.forward || c.yuv) continue;
    SCOPED_TRACE(c.fc.name);
    for (int w : {1, 16}) {
      std::vector<uint8_t> px(size_t(c.fc.src.planes.size() * size_t(c.fc.src.planes[0].bpp)), 0);
      if (c.fc.src.array) px = {0, 128, 128};
      else px[1] = px[2] = 128;
      auto out = convertAlone(c.fc, px, w, 0);
      EXPECT_EQ(out[0], 0);
      EXPECT_EQ(out[1], 0);
      EXPECT_EQ(out[2], 0);
    }
  }
}

// The three inverse tails on one pixel where their coefficients and rounding
// part: SY1 (rounded), SY2 (rounded, other coefficients), SY3 (truncated).
TEST(RgbFull, InverseTailsKnownAnswers) {
  const struct {
    const char* name;
    std::vector<uint8_t> in, out;
  } rows[] = {
      {"YCbCrToRGB_C3R", {20, 138, 100}, {0, 23, 25}},           // SY1
      {"YCbCrToRGB_P3R", {20, 138, 100}, {0, 24, 25}},           // SY2
      {"YCbCrToRGB_AC4R", {20, 138, 100, 9}, {0, 23, 24, 0x5A}},  // SY3, alpha kept
  };
  for (const auto& r : rows) {
    const FullCase* c = nullptr;
    for (const auto& k : cases())
      if (k.fc.name == r.name) c = &k;
    ASSERT_NE(c, nullptr) << r.name;
    EXPECT_EQ(convertAlone(c->fc, r.in, 1, 0), r.out) << r.name;
  }
}

TEST(RgbFull, SaturatedRedGivesFullV) {
  const FnCase& fc = cases()[12].fc;  // RGBToYUV_C3R
  ASSERT_EQ(fc.name, "RGBToYUV_C3R");
  for (int w : {1, 16}) EXPECT_EQ(convertAlone(fc, {255, 0, 0}, w, 0)[2], 255);
}

TEST(RgbFull, AlphaOfRGBToYCbCrAC4DependsOnTheColumn) {
  // Blocks store alpha 0, the tail leaves it: width 20 has 16 block pixels.
  CallImages ci(cases()[1].fc, LumSize{20, 2});
  std::mt19937 rng(2);
  ci.randomizeSource(rng);
  ci.fillDestination(0x77);
  Buffers b = ci.buffers();
  ASSERT_EQ(lumiRGBToYCbCr_8u_AC4R(b.srcPtr(), b.srcStep, b.dstPtr(), b.dstStep, LumSize{20, 2}), lumStatusOk);
  for (int y = 0; y < 2; ++y)
    for (int x = 0; x < 20; ++x) EXPECT_EQ(ci.dst[0].row(y)[4 * x + 3], x < 16 ? 0 : 0x77) << x;
}

TEST(RgbFull, AvalReachesEveryPixelAndSourceAlphaIsIgnored) {
  for (const auto& c : cases()) {
    if (c.fc.dst.array || c.fc.dst.planes[0].bpp != 4 || c.fc.src.planes[0].bpp == 4) continue;
    SCOPED_TRACE(c.fc.name);
    CallImages ci(c.fc, LumSize{37, 2});
    std::mt19937 rng(4);
    ci.randomizeSource(rng);
    ci.fillDestination(0);
    ASSERT_EQ(c.fc.call(ci.buffers(), LumSize{37, 2}), lumStatusOk);
    for (int y = 0; y < 2; ++y)
      for (int x = 0; x < 37; ++x) EXPECT_EQ(ci.dst[0].row(y)[4 * x + 3], 0xA7) << x;
  }
}

TEST(RgbFull, AlphaPlaneCopiesSourceAlpha) {
  const FnCase& fc = cases()[16].fc;
  ASSERT_EQ(fc.name, "RGBToYUV_AC4P4R");
  CallImages ci(fc, LumSize{21, 3});
  std::mt19937 rng(8);
  ci.randomizeSource(rng);
  ASSERT_EQ(fc.call(ci.buffers(), LumSize{21, 3}), lumStatusOk);
  for (int y = 0; y < 3; ++y)
    for (int x = 0; x < 21; ++x) EXPECT_EQ(ci.dst[3].row(y)[x], ci.src[0].row(y)[4 * x + 3]);
}

// The tail of YUVToRGB_C3R truncates green where YUVToRGB_C3C4R rounds it.
TEST(RgbFull, LopsidedGreenRoundingOfTheYuvTail) {
  std::mt19937 rng(31);
  int lower = 0, same = 0;
  for (int i = 0; i < 2000; ++i) {
    const Lum8u px[3] = {uint8_t(60 + rng() % 120), uint8_t(rng()), uint8_t(rng())};
    Lum8u a[3], b[4];
    ASSERT_EQ(lumiYUVToRGB_8u_C3R(px, 3, a, 3, LumSize{1, 1}), lumStatusOk);
    ASSERT_EQ(lumiYUVToRGB_8u_C3C4R(px, 3, b, 4, LumSize{1, 1}, 0), lumStatusOk);
    EXPECT_EQ(a[0], b[0]);
    EXPECT_EQ(a[2], b[2]);
    if (a[1] + 1 == b[1]) ++lower;
    else if (a[1] == b[1]) ++same;
    else ADD_FAILURE() << "green differs by more than the rounding";
  }
  EXPECT_GT(lower, 700);
  EXPECT_GT(same, 700);
}

// Block form FY1 and tail form FY3 give different codes for some pixels: the
// same pixel in a 15-wide row (all tail) and a 16-wide row (all block).
TEST(RgbFull, Width15And16UseDifferentForms) {
  std::mt19937 rng(41);
  int differ = 0;
  for (int i = 0; i < 200; ++i) {
    const std::vector<uint8_t> px = {uint8_t(rng()), uint8_t(rng()), uint8_t(rng())};
    auto a = convertAlone(cases()[0].fc, px, 15, 0);
    auto b = convertAlone(cases()[0].fc, px, 16, 0);
    for (int k = 0; k < 3; ++k) {
      EXPECT_LE(std::abs(int(a[size_t(k)]) - int(b[size_t(k)])), 1);
      differ += a[size_t(k)] != b[size_t(k)];
    }
  }
  EXPECT_GT(differ, 100);
}

// Digests of each function's output for two fixed images: 45x3 on unaligned
// images (every block width with a tail after it) and 48x2 on 16-byte aligned
// images and steps (the aligned loops). Source bytes come from a linear
// congruential generator, plane by plane and row by row; the destination is
// prefilled with 0x5A, so kept alpha counts too. The digests were computed by a
// separate model of the documented arithmetic, not by this code: a changed
// constant, rounding, block boundary or alpha rule shows here, on the vector
// blocks and on their scalar twins alike.
TEST(RgbFull, OutputsMatchIndependentDigests) {
  struct Digest {
    const char* name;
    uint32_t unaligned45x3, aligned48x2;
  };
  const Digest digests[] = {
      {"RGBToYCbCr_C3R", 0x63E101C7u, 0x0237725Cu},    {"RGBToYCbCr_AC4R", 0xA55CB48Du, 0x91D192B1u},
      {"RGBToYCbCr_C3P3R", 0x80DBE66Au, 0x6FA7F0B5u},  {"RGBToYCbCr_AC4P3R", 0x154C8D2Fu, 0x5C9A8533u},
      {"RGBToYCbCr_P3R", 0x674E1101u, 0x722FDAD2u},    {"YCbCrToRGB_C3R", 0xB6A69396u, 0x5706AE41u},
      {"YCbCrToRGB_AC4R", 0xFDD6111Bu, 0x2355C7CAu},   {"YCbCrToRGB_P3R", 0x9A9B2B05u, 0xC0F477CFu},
      {"YCbCrToRGB_P3C3R", 0xFDB90A30u, 0x80E1E81Du},  {"YCbCrToRGB_P3C4R", 0x75B854ABu, 0x7EF86181u},
      {"YCbCrToBGR_P3C3R", 0x58ADBE6Cu, 0xC0C71345u},  {"YCbCrToBGR_P3C4R", 0x5FED742Au, 0xB98876DDu},
      {"RGBToYUV_C3R", 0x9BA89BBEu, 0x025BE161u},      {"RGBToYUV_AC4R", 0x47BB06FDu, 0xC94CEA86u},
      {"RGBToYUV_C3P3R", 0x7FD6BC2Eu, 0x762730C3u},    {"RGBToYUV_P3R", 0x1B81E530u, 0xCD542E74u},
      {"RGBToYUV_AC4P4R", 0xED2DF3A9u, 0x8B6E6CE5u},   {"YUVToRGB_C3R", 0xB1922CA6u, 0xAE5643F9u},
      {"YUVToRGB_AC4R", 0x8A2853FDu, 0xFCAC80A3u},     {"YUVToRGB_P3R", 0x372CC255u, 0x6580DD66u},
      {"YUVToRGB_P3C3R", 0x1D699A92u, 0xFB120B9Bu},    {"YUVToRGB_C3C4R", 0x3221DF93u, 0x430983EBu},
  };
  ASSERT_EQ(std::size(digests), cases().size());
  for (const Digest& dg : digests) {
    const FullCase* c = nullptr;
    for (const auto& k : cases())
      if (k.fc.name == dg.name) c = &k;
    ASSERT_NE(c, nullptr) << dg.name;
    for (const bool aligned : {false, true})
      for (const bool scalar : {false, true}) {
        SCOPED_TRACE(testing::Message() << dg.name << (aligned ? " aligned 48x2" : " 45x3")
                                        << (scalar ? " scalar" : " vector"));
        const LumSize roi = aligned ? LumSize{48, 2} : LumSize{45, 3};
        ImageOptions opt;
        if (aligned) {
          opt.alignOffset = 0;
          opt.padBytes = 16;
          opt.stepAlign = 16;
        }
        CallImages ci(c->fc, roi, opt);
        uint32_t state = aligned ? 2025u : 2024u;
        for (auto& img : ci.src)
          for (int y = 0; y < img.height(); ++y)
            for (int i = 0; i < img.rowBytes(); ++i) {
              state = state * 1103515245u + 12345u;
              img.row(y)[i] = uint8_t(state >> 24);
            }
        ci.fillDestination(0x5A);
        {
          std::optional<lum::ScalarScope> off;
          if (scalar) off.emplace();
          ASSERT_EQ(c->fc.call(ci.buffers(), roi), lumStatusOk);
        }
        uint32_t h = 0x811C9DC5u;
        for (uint8_t b : ci.destinationBytes()) h = (h ^ b) * 0x01000193u;
        EXPECT_EQ(h, aligned ? dg.aligned48x2 : dg.unaligned45x3);
      }
  }
}

TEST(RgbFull, VersionRecordIsOneConstant) {
  const LumLibraryVersion* v = lumccGetLibVersion();
  ASSERT_NE(v, nullptr);
  EXPECT_EQ(v, lumccGetLibVersion());
  EXPECT_EQ(v->major, 2020);
  EXPECT_EQ(v->minor, 0);
  EXPECT_EQ(v->majorBuild, 3);
  EXPECT_EQ(uint32_t(v->build), 0x3390EAC5u);
  EXPECT_EQ(std::memcmp(v->targetCpu, "p8\0\0", 4), 0);
  EXPECT_STREQ(v->name, "lumCC SSE4.2 (p8)");
  EXPECT_STREQ(v->version, "2020.0.3 (r0x3390eac5)");
  EXPECT_STREQ(v->buildDate, "Sep 22 2020");
}

extern "C" int lumcc_header_c99_check(void);
TEST(RgbFull, HeaderWorksFromC99) { EXPECT_EQ(lumcc_header_c99_check(), 2020); }
