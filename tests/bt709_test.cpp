// BT.709 conversions (709CSC studio range, 709HDTV full-scale luma).
#include <gtest/gtest.h>

#include <cstring>
#include <optional>

#include "frame/simd.h"
#include "lumachroma/bt709_kernels.h"
#include "lumcc.h"
#include "support/family.h"

using namespace lumtest;

namespace {

using B = Buffers;
constexpr Lum8u kAval = 0xA7;

// How a function groups pixels: chroma shared by a 2-by-2 cell (4:2:0), a pair
// of a row (4:2:2), or none (4:4:4).
enum class Kind { Inv444, Inv420, Inv422, Fwd420, Fwd422 };

struct Case709 {
  FnCase fc;
  Kind kind;
  int (*blockEnd)(int width);  // pixels of a row the block form covers
  int blockWidth;              // a width whose units all take the block form
  int unitW() const { return kind == Kind::Inv444 ? 1 : 2; }
  int unitH() const { return kind == Kind::Inv420 || kind == Kind::Fwd420 ? 2 : 1; }
};

// Image shapes: luma-size planes, half-size chroma planes, packed images.
const ImageShape kP3 = planarImg(3);
const ImageShape kP420 = {true, {{1, 1, 1}, {1, 2, 2}, {1, 2, 2}}, -1, false};
const ImageShape kNV12 = {true, {{1, 1, 1}, {2, 2, 2}}, -1, true};
const ImageShape kC2 = packedImg(2), kC3 = packedImg(3), kC4 = packedImg(4);

FnCase mk(const char* name, ImageShape s, ImageShape d, Order o, CallFn f, bool cells) {
  FnCase c;
  c.name = name;
  c.src = std::move(s);
  c.dst = std::move(d);
  c.order = o;
  c.call = std::move(f);
  c.oddSizeWarns = cells;
  return c;
}
FnCase fwd420(const char* name, ImageShape s, ImageShape d, CallFn f) {
  FnCase c = mk(name, std::move(s), std::move(d), Order::NullSize, std::move(f), true);
  c.minWidth = c.minHeight = 2;
  return c;
}

// The block ladders of the member table.
int all(int w) { return w; }
int by8(int w) { return w & ~7; }
int by16(int w) { return w & ~15; }
int by32(int w) { return w & ~31; }
int by16Then4(int w) { return (w & ~15) + ((w & 7) >= 4 ? 4 : 0); }

const std::vector<Case709>& cases() {
  static const std::vector<Case709> v = [] {
    std::vector<Case709> t;
    t.push_back({mk("YCbCrToBGR_709CSC_P3C3R", kP3, kC3, Order::NullSize, [](const B& b, LumSize r) {
                   return lumiYCbCrToBGR_709CSC_8u_P3C3R(b.srcPlanes(), b.srcStep, b.dstPtr(), b.dstStep, r);
                 }, false), Kind::Inv444, all, 16});
    t.push_back({mk("YCbCrToBGR_709CSC_P3C4R", kP3, kC4, Order::NullSize, [](const B& b, LumSize r) {
                   return lumiYCbCrToBGR_709CSC_8u_P3C4R(b.srcPlanes(), b.srcStep, b.dstPtr(), b.dstStep, r, kAval);
                 }, false), Kind::Inv444, all, 16});
    t.push_back({mk("YCbCr420ToBGR_709CSC_P3C3R", kP420, kC3, Order::NullSizePlanes, [](const B& b, LumSize r) {
                   return lumiYCbCr420ToBGR_709CSC_8u_P3C3R(b.srcPlanes(), b.srcSteps, b.dstPtr(), b.dstStep, r);
                 }, true), Kind::Inv420, by8, 8});
    t.push_back({mk("YCbCr420ToBGR_709HDTV_P3C4R", kP420, kC4, Order::NullSizePlanes, [](const B& b, LumSize r) {
                   return lumiYCbCr420ToBGR_709HDTV_8u_P3C4R(b.srcPlanes(), b.srcSteps, b.dstPtr(), b.dstStep, r,
                                                             kAval);
                 }, true), Kind::Inv420, by8, 8});
    t.push_back({mk("CbYCr422ToBGR_709HDTV_C2C3R", kC2, kC3, Order::NullSize, [](const B& b, LumSize r) {
                   return lumiCbYCr422ToBGR_709HDTV_8u_C2C3R(b.srcPtr(), b.srcStep, b.dstPtr(), b.dstStep, r);
                 }, false), Kind::Inv422, by8, 8});
    t.push_back({mk("CbYCr422ToBGR_709HDTV_C2C4R", kC2, kC4, Order::NullSize, [](const B& b, LumSize r) {
                   return lumiCbYCr422ToBGR_709HDTV_8u_C2C4R(b.srcPtr(), b.srcStep, b.dstPtr(), b.dstStep, r, kAval);
                 }, false), Kind::Inv422, by8, 8});
    t.push_back({mk("BGRToCbYCr422_709HDTV_C3C2R", kC3, kC2, Order::NullSize, [](const B& b, LumSize r) {
                   return lumiBGRToCbYCr422_709HDTV_8u_C3C2R(b.srcPtr(), b.srcStep, b.dstPtr(), b.dstStep, r);
                 }, false), Kind::Fwd422, by32, 32});
    t.push_back({mk("BGRToCbYCr422_709HDTV_AC4C2R", kC4, kC2, Order::NullSize, [](const B& b, LumSize r) {
                   return lumiBGRToCbYCr422_709HDTV_8u_AC4C2R(b.srcPtr(), b.srcStep, b.dstPtr(), b.dstStep, r);
                 }, false), Kind::Fwd422, by8, 8});
    t.push_back({fwd420("BGRToYCbCr420_709CSC_C3P3R", kC3, kP420, [](const B& b, LumSize r) {
                   return lumiBGRToYCbCr420_709CSC_8u_C3P3R(b.srcPtr(), b.srcStep, b.dstPlanes(), b.dstSteps, r);
                 }), Kind::Fwd420, by16Then4, 16});
    t.push_back({fwd420("BGRToYCbCr420_709CSC_AC4P3R", kC4, kP420, [](const B& b, LumSize r) {
                   return lumiBGRToYCbCr420_709CSC_8u_AC4P3R(b.srcPtr(), b.srcStep, b.dstPlanes(), b.dstSteps, r);
                 }), Kind::Fwd420, by16Then4, 16});
    t.push_back({fwd420("BGRToYCrCb420_709CSC_C3P3R", kC3, kP420, [](const B& b, LumSize r) {
                   return lumiBGRToYCrCb420_709CSC_8u_C3P3R(b.srcPtr(), b.srcStep, b.dstPlanes(), b.dstSteps, r);
                 }), Kind::Fwd420, by16Then4, 16});
    t.push_back({fwd420("BGRToYCrCb420_709CSC_AC4P3R", kC4, kP420, [](const B& b, LumSize r) {
                   return lumiBGRToYCrCb420_709CSC_8u_AC4P3R(b.srcPtr(), b.srcStep, b.dstPlanes(), b.dstSteps, r);
                 }), Kind::Fwd420, by16Then4, 16});
    t.push_back({fwd420("BGRToYCbCr420_709CSC_C3P2R", kC3, kNV12, [](const B& b, LumSize r) {
                   return lumiBGRToYCbCr420_709CSC_8u_C3P2R(b.srcPtr(), b.srcStep, b.dstPlanes()[0], b.dstSteps[0],
                                                            b.dstPlanes()[1], b.dstSteps[1], r);
                 }), Kind::Fwd420, by16, 16});
    t.push_back({fwd420("BGRToYCbCr420_709CSC_AC4P2R", kC4, kNV12, [](const B& b, LumSize r) {
                   return lumiBGRToYCbCr420_709CSC_8u_AC4P2R(b.srcPtr(), b.srcStep, b.dstPlanes()[0], b.dstSteps[0],
                                                             b.dstPlanes()[1], b.dstSteps[1], r);
                 }), Kind::Fwd420, by8, 16});
    t.push_back({fwd420("BGRToYCbCr420_709HDTV_AC4P3R", kC4, kP420, [](const B& b, LumSize r) {
                   return lumiBGRToYCbCr420_709HDTV_8u_AC4P3R(b.srcPtr(), b.srcStep, b.dstPlanes(), b.dstSteps, r);
                 }), Kind::Fwd420, by16Then4, 16});
    for (auto& c : t) {
      if ((c.kind != Kind::Inv420 && c.kind != Kind::Fwd420) || c.fc.dst.separate) continue;
      c.fc.srcStepArray = c.fc.src.array;
      c.fc.dstStepArray = c.fc.dst.array;
    }
    return t;
  }();
  return v;
}

const Case709& byName(const std::string& n) {
  for (const auto& c : cases())
    if (c.fc.name == n) return c;
  throw std::invalid_argument(n);
}

// Bytes of unit i (unitW pixels by unitH rows) of an image, plane after plane
// and row after row: for 4:2:0 the 2-by-2 luma bytes and the cell's chroma.
std::vector<uint8_t> unitBytes(const std::vector<GuardedImage>& img, const ImageShape& s, int i, int uw, int uh) {
  std::vector<uint8_t> out;
  for (size_t p = 0; p < img.size(); ++p) {
    const PlaneShape& ps = s.planes[p];
    const int bpu = ps.bpp * uw / ps.wDiv, rpu = uh / ps.hDiv;
    for (int r = 0; r < rpu; ++r) out.insert(out.end(), img[p].row(r) + i * bpu, img[p].row(r) + (i + 1) * bpu);
  }
  return out;
}
void setUnitBytes(std::vector<GuardedImage>& img, const ImageShape& s, int i, int uw, int uh,
                  const std::vector<uint8_t>& v) {
  size_t k = 0;
  for (size_t p = 0; p < img.size(); ++p) {
    const PlaneShape& ps = s.planes[p];
    const int bpu = ps.bpp * uw / ps.wDiv, rpu = uh / ps.hDiv;
    for (int r = 0; r < rpu; ++r, k += size_t(bpu)) std::memcpy(img[p].row(r) + i * bpu, v.data() + k, size_t(bpu));
  }
}

// Output unit 0 of a row (or row pair) `width` pixels wide whose units all equal `unit`.
std::vector<uint8_t> convertUniform(const Case709& c, const std::vector<uint8_t>& unit, int width) {
  const LumSize roi{width, c.unitH()};
  CallImages ci(c.fc, roi);
  for (int i = 0; i < width / c.unitW(); ++i) setUnitBytes(ci.src, c.fc.src, i, c.unitW(), c.unitH(), unit);
  ci.fillDestination(0x5A);
  EXPECT_EQ(c.fc.call(ci.buffers(), roi), expectedStatus(c.fc, roi));
  EXPECT_TRUE(ci.canariesIntact());
  return unitBytes(ci.dst, c.fc.dst, 0, c.unitW(), c.unitH());
}

std::vector<uint8_t> rep(std::vector<uint8_t> px, int n) {
  std::vector<uint8_t> out;
  for (int i = 0; i < n; ++i) out.insert(out.end(), px.begin(), px.end());
  return out;
}

}  // namespace

TEST(Bt709, RefusalsInCheckOrderLeaveDestinationUntouched) {
  for (const auto& c : cases()) checkRefusals(c.fc);
}

// The step arrays are pointers too: a null one is refused before anything is written.
TEST(Bt709, VectorBlocksMatchScalarTwinsAtEveryWidth) {
  for (const auto& c : cases()) {
    checkVectorMatchesScalar(c.fc, blockWidths(), 4);
    checkVectorMatchesScalar(c.fc, {1, 7, 17, 33, 45}, 3);
  }
}

// Offset 0 makes every pointer and step a multiple of 16, which sends the
// CbYCr422 C4 functions down their aligned paths; the samples must not change.
TEST(Bt709, AlignmentDoesNotChangeSamples) {
  for (const auto& c : cases())
    checkAlignmentInvariance(c.fc, {1, 2, 3, 7, 8, 9, 15, 16, 17, 31, 32, 33, 47, 48, 64, 100}, 4);
}

TEST(Bt709, NegativeStepWalksBottomUp) {
  for (const auto& c : cases()) {
    checkNegativeStep(c.fc, 37, 6);
    checkNegativeStep(c.fc, 64, 5);
  }
}

// Each chroma unit (cell, pair) takes the block form or the tail form by its
// column alone, as the function's ladder says; the same unit converted inside
// an all-block row or an all-tail row is the reference.
TEST(Bt709, EachUnitTakesItsLaddersForm) {
  std::mt19937 rng(17);
  const int widths[] = {2, 3, 4, 6, 8, 9, 10, 12, 14, 16, 18, 20, 24, 28, 30, 32, 34, 36, 37,
                        38, 40, 42, 44, 45, 46, 48, 52, 54, 56, 60, 62, 64, 66, 70};
  for (const auto& c : cases()) {
    if (c.kind == Kind::Inv444) continue;
    SCOPED_TRACE(c.fc.name);
    int differing = 0;
    for (int w : widths) {
      if (w < c.fc.minWidth) continue;
      SCOPED_TRACE(testing::Message() << "width " << w);
      const LumSize roi{w, c.unitH()};
      CallImages ci(c.fc, roi);
      ci.randomizeSource(rng);
      ci.fillDestination(0x5A);
      ASSERT_EQ(c.fc.call(ci.buffers(), roi), expectedStatus(c.fc, roi));
      for (int i = 0; i < w / 2; ++i) {
        const auto unit = unitBytes(ci.src, c.fc.src, i, 2, c.unitH());
        const auto block = convertUniform(c, unit, c.blockWidth), tail = convertUniform(c, unit, 2);
        differing += block != tail;
        ASSERT_EQ(unitBytes(ci.dst, c.fc.dst, i, 2, c.unitH()), 2 * i < c.blockEnd(w) ? block : tail)
            << "unit " << i << (2 * i < c.blockEnd(w) ? " (block)" : " (tail)");
      }
    }
    EXPECT_GT(differing, 0) << "no unit told the block form from the tail form";
  }
}

// The 4-pixel step of the forward 4:2:0 ladder looks at the low three bits of
// the width only. Widths 38, 40 and 44 with a colour whose block and tail codes
// differ: 38 runs columns 32..35 by the block form and 36, 37 by the tail; 40
// sends 32..39 to the tail; 44 runs 32..35 by the block and 36..43 by the tail.
TEST(Bt709, FourPixelStepFollowsTheLowThreeBitsOfTheWidth) {
  const Case709& c = byName("BGRToYCbCr420_709HDTV_AC4P3R");
  // R, G, B = 228, 115, 246: block Y 148, Cb 182, Cr 180; tail Y 149, Cb 181, Cr 179.
  const std::vector<uint8_t> px = {246, 115, 228, 9};
  struct Row {
    int width, blockCols;
  } rows[] = {{38, 36}, {40, 32}, {44, 36}, {36, 36}, {46, 36}, {20, 20}, {4, 4}, {3, 0}};
  for (const Row& r : rows) {
    SCOPED_TRACE(testing::Message() << "width " << r.width);
    const LumSize roi{r.width, 2};
    CallImages ci(c.fc, roi);
    for (int x = 0; x < r.width; ++x)
      for (int y = 0; y < 2; ++y) std::memcpy(ci.src[0].row(y) + 4 * x, px.data(), 4);
    ci.fillDestination(0x5A);
    ASSERT_EQ(c.fc.call(ci.buffers(), roi), expectedStatus(c.fc, roi));
    for (int x = 0; x < (r.width & ~1); ++x) {
      const bool block = x < r.blockCols;
      EXPECT_EQ(ci.dst[0].row(0)[x], block ? 148 : 149) << "column " << x;
      EXPECT_EQ(ci.dst[0].row(1)[x], block ? 148 : 149) << "column " << x;
      EXPECT_EQ(ci.dst[1].row(0)[x / 2], block ? 182 : 181) << "column " << x;
      EXPECT_EQ(ci.dst[2].row(0)[x / 2], block ? 180 : 179) << "column " << x;
    }
    ASSERT_TRUE(ci.canariesIntact());
  }
}

// Known answers in each function's own memory order: a unit of identical
// pixels converted at a width that puts it in the block form, and at width 2
// (or 1 for 4:4:4) that puts it in the tail.
TEST(Bt709, KnownAnswersInBlockAndTail) {
  struct Known {
    const char* fn;
    int width;
    std::vector<uint8_t> unit, want;
  };
  const std::vector<uint8_t> black = {0, 0, 0}, white = {255, 255, 255};
  const std::vector<uint8_t> orange = {253, 254, 142};  // B, G, R: chroma differs by block and tail
  const std::vector<uint8_t> violet = {223, 17, 45};    // luma differs by block and tail
  const Known known[] = {
      // Studio range: black 16 and white 235 in block and tail alike.
      {"BGRToYCbCr420_709CSC_C3P3R", 16, rep(black, 4), {16, 16, 16, 16, 128, 128}},
      {"BGRToYCbCr420_709CSC_C3P3R", 2, rep(black, 4), {16, 16, 16, 16, 128, 128}},
      {"BGRToYCbCr420_709CSC_C3P3R", 16, rep(white, 4), {235, 235, 235, 235, 128, 128}},
      {"BGRToYCbCr420_709CSC_C3P3R", 2, rep(white, 4), {235, 235, 235, 235, 128, 128}},
      {"BGRToYCbCr420_709CSC_C3P3R", 16, rep(orange, 4), {214, 214, 214, 214, 139, 79}},
      {"BGRToYCbCr420_709CSC_C3P3R", 2, rep(orange, 4), {214, 214, 214, 214, 138, 78}},
      {"BGRToYCbCr420_709CSC_C3P3R", 16, rep(violet, 4), {49, 49, 49, 49, 215, 132}},
      {"BGRToYCbCr420_709CSC_C3P3R", 2, rep(violet, 4), {48, 48, 48, 48, 215, 132}},
      {"BGRToYCrCb420_709CSC_C3P3R", 16, rep(orange, 4), {214, 214, 214, 214, 79, 139}},
      {"BGRToYCbCr420_709CSC_AC4P3R", 16, rep({253, 254, 142, 0}, 4), {214, 214, 214, 214, 139, 79}},
      {"BGRToYCrCb420_709CSC_AC4P3R", 2, rep({253, 254, 142, 255}, 4), {214, 214, 214, 214, 78, 138}},
      {"BGRToYCbCr420_709CSC_C3P2R", 16, rep(orange, 4), {214, 214, 214, 214, 139, 79}},
      {"BGRToYCbCr420_709CSC_C3P2R", 2, rep(orange, 4), {214, 214, 214, 214, 138, 78}},
      {"BGRToYCbCr420_709CSC_AC4P2R", 8, rep({223, 17, 45, 3}, 4), {49, 49, 49, 49, 215, 132}},
      {"BGRToYCbCr420_709CSC_AC4P2R", 2, rep({223, 17, 45, 3}, 4), {48, 48, 48, 48, 215, 132}},
      // Full-scale luma held in 1..254: black gives 1, white 254.
      {"BGRToCbYCr422_709HDTV_C3C2R", 32, rep(black, 2), {128, 1, 128, 1}},
      {"BGRToCbYCr422_709HDTV_C3C2R", 2, rep(black, 2), {128, 1, 128, 1}},
      {"BGRToCbYCr422_709HDTV_C3C2R", 32, rep(white, 2), {128, 254, 128, 254}},
      {"BGRToCbYCr422_709HDTV_C3C2R", 2, rep(white, 2), {128, 254, 128, 254}},
      {"BGRToCbYCr422_709HDTV_C3C2R", 32, rep({211, 123, 44}, 2), {182, 112, 84, 112}},
      {"BGRToCbYCr422_709HDTV_C3C2R", 2, rep({211, 123, 44}, 2), {182, 113, 83, 113}},
      // The Cr offset of the pair tail is 2 below Cb's: this pair shows it (70 with Cb's offset).
      {"BGRToCbYCr422_709HDTV_C3C2R", 2, {26, 153, 33, 130, 210, 82}, {90, 118, 69, 177}},
      {"BGRToCbYCr422_709HDTV_AC4C2R", 8, rep({130, 74, 203, 1}, 2), {141, 105, 191, 105}},
      {"BGRToCbYCr422_709HDTV_AC4C2R", 2, rep({130, 74, 203, 1}, 2), {142, 106, 191, 106}},
      {"BGRToCbYCr422_709HDTV_AC4C2R", 8, rep({0, 0, 0, 0}, 2), {128, 1, 128, 1}},
      {"BGRToYCbCr420_709HDTV_AC4P3R", 16, rep({246, 115, 228, 0}, 4), {148, 148, 148, 148, 182, 180}},
      {"BGRToYCbCr420_709HDTV_AC4P3R", 2, rep({246, 115, 228, 0}, 4), {149, 149, 149, 149, 181, 179}},
      {"BGRToYCbCr420_709HDTV_AC4P3R", 16, rep({255, 255, 255, 0}, 4), {254, 254, 254, 254, 128, 128}},
      // Inverse: Y, Cb, Cr in; the two green forms of a coefficient set differ.
      {"YCbCrToBGR_709CSC_P3C3R", 16, {142, 144, 90}, {180, 163, 78}},
      {"YCbCrToBGR_709CSC_P3C3R", 1, {142, 144, 90}, {180, 163, 78}},
      {"YCbCrToBGR_709CSC_P3C4R", 16, {142, 144, 90}, {180, 164, 78, kAval}},
      {"YCbCrToBGR_709CSC_P3C4R", 1, {142, 144, 90}, {180, 164, 78, kAval}},
      {"YCbCr420ToBGR_709CSC_P3C3R", 8, {142, 142, 142, 142, 144, 90}, rep({180, 163, 78}, 4)},
      {"YCbCr420ToBGR_709CSC_P3C3R", 2, {142, 142, 142, 142, 144, 90}, rep({181, 164, 79}, 4)},
      {"YCbCr420ToBGR_709HDTV_P3C4R", 8, {138, 138, 138, 138, 249, 203}, rep({255, 82, 254, kAval}, 4)},
      {"YCbCr420ToBGR_709HDTV_P3C4R", 2, {138, 138, 138, 138, 249, 203}, rep({255, 81, 253, kAval}, 4)},
      {"CbYCr422ToBGR_709HDTV_C2C3R", 8, {221, 55, 153, 55}, rep({224, 26, 94}, 2)},
      {"CbYCr422ToBGR_709HDTV_C2C3R", 2, {221, 55, 153, 55}, rep({224, 27, 93}, 2)},
      {"CbYCr422ToBGR_709HDTV_C2C4R", 8, {221, 55, 153, 55}, rep({224, 26, 94, kAval}, 2)},
      {"CbYCr422ToBGR_709HDTV_C2C4R", 2, {221, 55, 153, 55}, rep({224, 27, 93, kAval}, 2)},
  };
  for (const Known& k : known) {
    SCOPED_TRACE(testing::Message() << k.fn << " width " << k.width);
    EXPECT_EQ(convertUniform(byName(k.fn), k.unit, k.width), k.want);
  }
}

// The last pixel of an odd CbYCr422 row: Cb and Y from its half pair, Cr from
// the pair to its left, or its own Cb when the row is one pixel wide; SH form;
// aval as alpha.
TEST(Bt709, LonePixelOfCbYCr422TakesCrFromTheLeftPair) {
  // Y 200, Cb 150 with Cr 90 -> R, G, B 141, 213, 240; with Cr = Cb 150 -> 234, 186, 240.
  for (const char* fn : {"CbYCr422ToBGR_709HDTV_C2C3R", "CbYCr422ToBGR_709HDTV_C2C4R"}) {
    const Case709& c = byName(fn);
    const int bpp = c.fc.dst.planes[0].bpp;
    for (int w : {1, 3, 9, 17}) {
      SCOPED_TRACE(testing::Message() << fn << " width " << w);
      const LumSize roi{w, 2};
      CallImages ci(c.fc, roi);
      std::mt19937 rng{uint32_t(w)};
      ci.randomizeSource(rng);
      for (int y = 0; y < 2; ++y) {
        uint8_t* s = ci.src[0].row(y) + 2 * (w - 1);
        s[0] = 150;
        s[1] = 200;
        if (w > 1) s[-2] = 90;
      }
      ci.fillDestination(0x5A);
      ASSERT_EQ(c.fc.call(ci.buffers(), roi), lumStatusOk);
      std::vector<uint8_t> want = w > 1 ? std::vector<uint8_t>{240, 213, 141} : std::vector<uint8_t>{240, 186, 234};
      if (bpp == 4) want.push_back(kAval);
      for (int y = 0; y < 2; ++y) {
        const uint8_t* d = ci.dst[0].row(y) + bpp * (w - 1);
        EXPECT_EQ(std::vector<uint8_t>(d, d + bpp), want) << "row " << y;
      }
      ASSERT_TRUE(ci.canariesIntact());
    }
  }
}

// The last pixel of an odd row on the way to CbYCr422 writes only Cb and Y. The
// BGRA function reads its first memory byte as R and its third as B, on both
// paths: a pure blue last pixel gets the luma and Cb of pure red. The BGR
// function keeps B first.
TEST(Bt709, LonePixelOfBGRToCbYCr422) {
  struct Row {
    const char* fn;
    std::vector<uint8_t> px, want;  // memory bytes of the last pixel; Cb, Y written
  } rows[] = {
      {"BGRToCbYCr422_709HDTV_AC4C2R", {255, 0, 0, 0}, {98, 54}},   // blue read as red
      {"BGRToCbYCr422_709HDTV_AC4C2R", {0, 0, 255, 0}, {254, 18}},  // red read as blue
      {"BGRToCbYCr422_709HDTV_C3C2R", {255, 0, 0}, {254, 18}},      // blue stays blue
      {"BGRToCbYCr422_709HDTV_C3C2R", {0, 0, 255}, {98, 54}},
  };
  for (const Row& r : rows) {
    const Case709& c = byName(r.fn);
    for (int w : {1, 3, 9, 17, 33}) {
      for (int off : {0, 5}) {  // offset 0: every pointer and step aligned
        SCOPED_TRACE(testing::Message() << r.fn << " width " << w << " offset " << off);
        ImageOptions o;
        o.alignOffset = off;
        o.padBytes = 16;
        o.stepAlign = 16;
        const LumSize roi{w, 2};
        CallImages ci(c.fc, roi, o);
        std::mt19937 rng{uint32_t(w)};
        ci.randomizeSource(rng);
        for (int y = 0; y < 2; ++y) std::memcpy(ci.src[0].row(y) + r.px.size() * size_t(w - 1), r.px.data(), r.px.size());
        ci.fillDestination(0x5A);
        ASSERT_EQ(c.fc.call(ci.buffers(), roi), lumStatusOk);
        for (int y = 0; y < 2; ++y) {
          const uint8_t* d = ci.dst[0].row(y) + 2 * (w - 1);
          EXPECT_EQ(std::vector<uint8_t>(d, d + 2), r.want) << "row " << y;
        }
        ASSERT_TRUE(ci.canariesIntact());
      }
    }
  }
}

// 709HDTV never gives the codes 0 or 255 on the way in, saturated colours included.
TEST(Bt709, HdtvForwardCodesStayWithin1To254) {
  const uint8_t sat[][3] = {{0, 0, 0},     {255, 255, 255}, {255, 0, 0},   {0, 255, 0},  {0, 0, 255},
                            {255, 255, 0}, {0, 255, 255},   {255, 0, 255}, {255, 128, 0}, {0, 128, 255}};
  std::mt19937 rng(23);
  for (const char* fn : {"BGRToCbYCr422_709HDTV_C3C2R", "BGRToCbYCr422_709HDTV_AC4C2R", "BGRToYCbCr420_709HDTV_AC4P3R"}) {
    const Case709& c = byName(fn);
    SCOPED_TRACE(fn);
    for (int w : {67, 64}) {
      const LumSize roi{w, 4};
      CallImages ci(c.fc, roi);
      ci.randomizeSource(rng);
      const int bpp = c.fc.src.planes[0].bpp;
      // Rows 0 and 1: runs of saturated colours (both rows alike, so cells and pairs stay saturated).
      for (int y = 0; y < 2; ++y)
        for (int x = 0; x < w; ++x) std::memcpy(ci.src[0].row(y) + bpp * x, sat[(x / 2) % 10], 3);
      ASSERT_EQ(c.fc.call(ci.buffers(), roi), expectedStatus(c.fc, roi));
      // Bytes left unwritten keep the canary value, itself inside 1..254.
      for (const auto& d : ci.dst)
        for (int y = 0; y < d.height(); ++y)
          for (int x = 0; x < d.rowBytes(); ++x)
            ASSERT_TRUE(d.row(y)[x] >= 1 && d.row(y)[x] <= 254) << "byte " << x << " row " << y;
    }
  }
}

// 4:2:0 works on width >> 1 by height >> 1 cells; an odd size warns and leaves
// the last column and row as they were.
TEST(Bt709, OddSizesConvertTheEvenPartAndWarn) {
  for (const auto& c : cases()) {
    if (c.kind != Kind::Inv420 && c.kind != Kind::Fwd420) continue;
    SCOPED_TRACE(c.fc.name);
    for (LumSize roi : {LumSize{5, 3}, LumSize{3, 2}, LumSize{1, 4}, LumSize{6, 1}, LumSize{2, 2}}) {
      if (roi.width < c.fc.minWidth || roi.height < c.fc.minHeight) continue;
      SCOPED_TRACE(testing::Message() << roi.width << "x" << roi.height);
      CallImages ci(c.fc, roi);
      std::mt19937 rng(3);
      ci.randomizeSource(rng);
      ci.fillDestination(0x5A);
      const bool odd = (roi.width | roi.height) & 1;
      ASSERT_EQ(c.fc.call(ci.buffers(), roi), odd ? lumStatusOddSize : lumStatusOk);
      // Luma plane or packed destination: bytes per pixel of plane 0.
      const GuardedImage& d = ci.dst[0];
      const int bpp = c.fc.dst.planes[0].bpp;
      for (int y = 0; y < roi.height; ++y)
        for (int x = 0; x < roi.width; ++x) {
          const bool covered = x < (roi.width & ~1) && y < (roi.height & ~1);
          if (covered) continue;
          for (int k = 0; k < bpp; ++k) EXPECT_EQ(d.row(y)[bpp * x + k], 0x5A) << "x " << x << " y " << y;
        }
      ASSERT_TRUE(ci.canariesIntact());
    }
  }
}

TEST(Bt709, YCrCbEqualsYCbCrWithPlanesExchanged) {
  const std::pair<const char*, const char*> pairs[] = {
      {"BGRToYCbCr420_709CSC_C3P3R", "BGRToYCrCb420_709CSC_C3P3R"},
      {"BGRToYCbCr420_709CSC_AC4P3R", "BGRToYCrCb420_709CSC_AC4P3R"}};
  for (auto [cbName, crName] : pairs) {
    SCOPED_TRACE(crName);
    const Case709 &cb = byName(cbName), &cr = byName(crName);
    const LumSize roi{45, 6};
    CallImages a(cb.fc, roi), b(cr.fc, roi);
    std::mt19937 rng(8);
    a.randomizeSource(rng);
    b.src[0].setBytes(a.src[0].bytes());
    ASSERT_EQ(cb.fc.call(a.buffers(), roi), lumStatusOddSize);
    ASSERT_EQ(cr.fc.call(b.buffers(), roi), lumStatusOddSize);
    EXPECT_EQ(a.dst[0].bytes(), b.dst[0].bytes());
    EXPECT_EQ(a.dst[1].bytes(), b.dst[2].bytes());
    EXPECT_EQ(a.dst[2].bytes(), b.dst[1].bytes());
  }
}

// Fixed images through every function, on the vector and the scalar path: a
// digest of the destination (FNV-1a over its rows; unwritten bytes 0x5A) pins
// every constant and rounding, blocks, tails and lone pixels alike. The source
// bytes come from a plain LCG so that the digests can be recomputed anywhere.
TEST(Bt709, FixedImageDigests) {
  struct Digest {
    const char* fn;
    int w, h;
    uint32_t fnv;
  } digests[] = {
      {"YCbCrToBGR_709CSC_P3C3R", 45, 6, 0xB3ECEA52u},      {"YCbCrToBGR_709CSC_P3C4R", 45, 6, 0x2B3C8C8Fu},
      {"YCbCr420ToBGR_709CSC_P3C3R", 45, 6, 0x8538D7EAu},   {"YCbCr420ToBGR_709HDTV_P3C4R", 45, 6, 0x15F31A89u},
      {"CbYCr422ToBGR_709HDTV_C2C3R", 45, 6, 0x75F99A8Cu},  {"CbYCr422ToBGR_709HDTV_C2C4R", 45, 6, 0xD0DCB216u},
      {"BGRToCbYCr422_709HDTV_C3C2R", 45, 6, 0x05038628u},  {"BGRToCbYCr422_709HDTV_AC4C2R", 45, 6, 0x494B5E15u},
      {"BGRToYCbCr420_709CSC_C3P3R", 45, 6, 0x6A2104AAu},   {"BGRToYCbCr420_709CSC_AC4P3R", 45, 6, 0x7397EDCEu},
      {"BGRToYCrCb420_709CSC_C3P3R", 45, 6, 0xD5274A16u},   {"BGRToYCrCb420_709CSC_AC4P3R", 45, 6, 0xDEAF40FEu},
      {"BGRToYCbCr420_709CSC_C3P2R", 45, 6, 0x434C0B53u},   {"BGRToYCbCr420_709CSC_AC4P2R", 45, 6, 0x3B6F0D42u},
      {"BGRToYCbCr420_709HDTV_AC4P3R", 45, 6, 0x41910220u}, {"YCbCrToBGR_709CSC_P3C3R", 70, 4, 0x7CE40521u},
      {"YCbCrToBGR_709CSC_P3C4R", 70, 4, 0x69A1F0FCu},      {"YCbCr420ToBGR_709CSC_P3C3R", 70, 4, 0xC80A4F47u},
      {"YCbCr420ToBGR_709HDTV_P3C4R", 70, 4, 0x359F4205u},  {"CbYCr422ToBGR_709HDTV_C2C3R", 70, 4, 0x5A10326Au},
      {"CbYCr422ToBGR_709HDTV_C2C4R", 70, 4, 0x0F8ECCB4u},  {"BGRToCbYCr422_709HDTV_C3C2R", 70, 4, 0x071F248Du},
      {"BGRToCbYCr422_709HDTV_AC4C2R", 70, 4, 0x115A9E9Eu}, {"BGRToYCbCr420_709CSC_C3P3R", 70, 4, 0x728AE81Au},
      {"BGRToYCbCr420_709CSC_AC4P3R", 70, 4, 0xEB218961u},  {"BGRToYCrCb420_709CSC_C3P3R", 70, 4, 0xF27F400Eu},
      {"BGRToYCrCb420_709CSC_AC4P3R", 70, 4, 0x3010AF91u},  {"BGRToYCbCr420_709CSC_C3P2R", 70, 4, 0xEFECBE9Eu},
      {"BGRToYCbCr420_709CSC_AC4P2R", 70, 4, 0xDEAAB12Du},  {"BGRToYCbCr420_709HDTV_AC4P3R", 70, 4, 0xEE3A23FFu},
  };
  for (const Digest& dg : digests) {
    for (bool scalar : {false, true}) {
      SCOPED_TRACE(testing::Message() << dg.fn << " " << dg.w << "x" << dg.h << (scalar ? " scalar" : ""));
      const Case709& c = byName(dg.fn);
      const LumSize roi{dg.w, dg.h};
      CallImages ci(c.fc, roi);
      uint32_t state = 2024;
      for (auto& plane : ci.src)
        for (int y = 0; y < plane.height(); ++y)
          for (int x = 0; x < plane.rowBytes(); ++x) {
            state = state * 1103515245u + 12345u;
            plane.row(y)[x] = uint8_t(state >> 24);
          }
      ci.fillDestination(0x5A);
      {
        std::optional<lum::ScalarScope> off;
        if (scalar) off.emplace();
        ASSERT_EQ(c.fc.call(ci.buffers(), roi), expectedStatus(c.fc, roi));
      }
      uint32_t h = 0x811C9DC5u;
      for (const auto& plane : ci.dst)
        for (int y = 0; y < plane.height(); ++y)
          for (int x = 0; x < plane.rowBytes(); ++x) h = (h ^ plane.row(y)[x]) * 0x01000193u;
      EXPECT_EQ(h, dg.fnv);
    }
  }
}
