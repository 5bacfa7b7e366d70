// Filtered chroma conversions: the four-tap 4:2:0 -> 4:2:2 up-sampler, NV12
// deinterlacing by slice, and YCrCb420 -> BGRA with interpolated chroma.
#include <gtest/gtest.h>

#include <algorithm>
#include <cstring>

#include "frame/simd.h"
#include "lumcc.h"
#include "support/family.h"

using namespace lumtest;

namespace {

using B = Buffers;
const PlaneShape kFull{1, 1, 1}, kHalf420{1, 2, 2}, kHalf422{1, 2, 1}, kNv12Chroma{2, 2, 2};
const ImageShape kP420 = planesImg({kFull, kHalf420, kHalf420});
const ImageShape kP422 = planesImg({kFull, kHalf422, kHalf422});
const ImageShape kNv12 = separateImg({kFull, kNv12Chroma});

// A plane whose rows hold at least minBytes bytes whatever the width.
PlaneShape atLeast(PlaneShape p, int minBytes) {
  p.bytesFor = [p, minBytes](int w) { return std::max(p.rowBytes(w), minBytes); };
  return p;
}
// A region one pixel wide converts two pixels a row from chroma sample 0: the
// images of the BGR filter carry that room.
const ImageShape kP420Pair = planesImg({atLeast(kFull, 2), atLeast(kHalf420, 1), atLeast(kHalf420, 1)});
const ImageShape kBgraPair{false, {atLeast(PlaneShape{4}, 8)}, -1};

FnCase mk(const char* name, ImageShape s, ImageShape d, Order o, int minW, int minH, CallFn f) {
  FnCase c;
  c.name = name;
  c.src = std::move(s);
  c.dst = std::move(d);
  c.order = o;
  c.call = std::move(f);
  c.minWidth = minW;
  c.minHeight = minH;
  return c;
}

LumStatus p2c2(const B& b, LumSize r, int layout) {
  return lumiYCbCr420ToYCbCr422_Filter_8u_P2C2R(b.srcPlanes()[0], b.srcSteps[0], b.srcPlanes()[1], b.srcSteps[1],
                                                b.dstPtr(), b.dstStep, r, layout);
}
LumStatus p2p3(const B& b, LumSize r, int layout) {
  return lumiYCbCr420ToYCrCb420_Filter_8u_P2P3R(b.srcPlanes()[0], b.srcSteps[0], b.srcPlanes()[1], b.srcSteps[1],
                                                b.dstPlanes(), b.dstSteps, r, layout);
}

// The functions as the harness sees them; the deinterlacers at the slice values
// that need no rows above the region.
const std::vector<FnCase>& cases() {
  static const std::vector<FnCase> v = [] {
    std::vector<FnCase> t;
    t.push_back(mk("YCbCr420ToYCbCr422_Filter_P3R", kP420, kP422, Order::NullSize, 2, 8, [](const B& b, LumSize r) {
      return lumiYCbCr420ToYCbCr422_Filter_8u_P3R(b.srcPlanes(), b.srcSteps, b.dstPlanes(), b.dstSteps, r);
    }));
    t.push_back(mk("YCrCb420ToYCbCr422_Filter_P3R", kP420, kP422, Order::NullSize, 2, 8, [](const B& b, LumSize r) {
      return lumiYCrCb420ToYCbCr422_Filter_8u_P3R(b.srcPlanes(), b.srcSteps, b.dstPlanes(), b.dstSteps, r);
    }));
    t.push_back(mk("YCbCr420ToYCbCr422_Filter_P2P3R", kNv12, kP422, Order::NullSize, 2, 8, [](const B& b, LumSize r) {
      return lumiYCbCr420ToYCbCr422_Filter_8u_P2P3R(b.srcPlanes()[0], b.srcSteps[0], b.srcPlanes()[1], b.srcSteps[1],
                                                    b.dstPlanes(), b.dstSteps, r);
    }));
    for (int layout : {lumSliceFirst, lumSliceWhole}) {
      const std::string sfx = "/layout" + std::to_string(layout);
      t.push_back(mk(("NV12ToYUY2_Filter_P2C2R" + sfx).c_str(), kNv12, packedImg(2), Order::NullSize, 2, 2,
                     [layout](const B& b, LumSize r) { return p2c2(b, r, layout); }));
      t.push_back(mk(("NV12ToYV12_Filter_P2P3R" + sfx).c_str(), kNv12, kP420, Order::NullSizePlanesSize, 2, 2,
                     [layout](const B& b, LumSize r) { return p2p3(b, r, layout); }));
    }
    FnCase bgr = mk("YCrCb420ToBGR_Filter_P3C4R", kP420Pair, kBgraPair, Order::NullSizePlanes, 1, 1,
                    [](const B& b, LumSize r) {
                      return lumiYCrCb420ToBGR_Filter_8u_P3C4R(b.srcPlanes(), b.srcSteps, b.dstPtr(), b.dstStep, r, 0x9C);
                    });
    bgr.statusFor = [](LumSize r) { return (r.width | r.height) & 1 ? lumStatusOddSize : lumStatusOk; };
    t.push_back(bgr);
    for (auto& c : t) {
      c.srcStepArray = c.src.array && !c.src.separate;
      c.dstStepArray = c.dst.array && !c.dst.separate;
    }
    return t;
  }();
  return v;
}

int avgUp(int a, int b) { return (a + b + 1) >> 1; }
int clampByte(int v) { return std::clamp(v, 0, 255); }
int floorHalf(int v) { return v >> 1; }

// ---------------------------------------------------------------------------
// Reference plan of the deinterlacers, row by row as the family's tables give it.
// ---------------------------------------------------------------------------

enum class Sum { T, M, B };
// Luma output row `out` from source rows first, first+1 (T, B) or first..first+2
// (M). Columns below width & ~(cover-1) take the averaging form; the others, or
// all when cover is 0, the scalar sum with its bias.
struct LumaRow {
  int out;
  Sum sum;
  int first;
  int cover;
  int bias;
};
// Chroma output row from NV12 chroma rows first, first+1 (or `first` unchanged).
struct ChromaRow {
  int out;
  int first;
  int cover;
  bool copy = false;
};

int lumaValue(const LumaRow& r, const int* v, bool block) {
  switch (r.sum) {
    case Sum::T: return block ? avgUp(avgUp(v[1], v[0]), v[0]) : std::min(255, (3 * v[0] + v[1] + r.bias) >> 2);
    case Sum::M:
      return block ? avgUp(avgUp(v[1], v[0]), avgUp(v[1], v[2])) : std::min(255, (v[0] + 2 * v[1] + v[2] + r.bias) >> 2);
    case Sum::B: return block ? avgUp(avgUp(v[0], v[1]), v[1]) : std::min(255, (v[0] + 3 * v[1] + r.bias) >> 2);
  }
  return -1;
}
int chromaValue(const ChromaRow& r, int c0, int c1, bool block) {
  if (r.copy) return c0;
  return block ? avgUp(c0, c1) : (c0 + c1) >> 1;
}
bool inBlock(int x, int n, int cover) { return cover > 0 && x < (n & ~(cover - 1)); }

struct Plan {
  std::vector<LumaRow> luma;
  std::vector<ChromaRow> chroma;  // for the packed output: one per luma row, same out
};

// 4:2:0 planar output. k is the block width of the slice kernels (16, or 32 for
// the HDTV kernels, which also make the bottom row in blocks).
Plan planarPlan(int layout, int h, bool hdtv) {
  Plan p;
  const int k = hdtv ? 32 : 16;
  auto mids = [&](int from, int to, int cover) {
    for (int j = from; j <= to; ++j) p.luma.push_back({j, Sum::M, j - 1, cover, 0});
  };
  auto chromas = [&](int from, int to, int cover) {
    for (int c = from; c <= to; ++c) p.chroma.push_back({c, c, cover});
  };
  if ((layout & 21) == 21) {
    if (h == 2) {
      p.luma = {{0, Sum::T, 0, 0, 4}, {1, Sum::B, 0, 0, 4}};
      p.chroma = {{0, 0, 0, true}};
      return p;
    }
    p.luma.push_back({0, Sum::T, 0, 0, 0});
    mids(1, h - 2, 16);
    p.luma.push_back({h - 1, Sum::B, h - 2, 0, 0});
    chromas(0, h / 2 - 2, 16);
    p.chroma.push_back({h / 2 - 1, h / 2 - 2, 0});
  } else if (layout == lumSliceFirst) {
    p.luma.push_back({0, Sum::T, 0, k, 0});
    mids(1, h - 3, k);
    chromas(0, h / 2 - 2, k);
  } else if (layout == lumSliceMiddle) {
    mids(-2, h - 3, k);
    chromas(-1, h / 2 - 2, k);
  } else if (layout == lumSliceLast) {
    mids(-2, h - 2, k);
    p.luma.push_back({h - 1, Sum::B, h - 2, hdtv ? k : 0, 0});
    chromas(-1, h / 2 - 2, k);
    p.chroma.push_back({h / 2 - 1, h / 2 - 2, 0});
  }
  return p;
}

// Packed YCbCr422 output: a luma and a chroma rule for each output row.
Plan packedPlan(int layout, int h) {
  Plan p;
  auto row = [&](LumaRow l, ChromaRow c) {
    c.out = l.out;
    p.luma.push_back(l);
    p.chroma.push_back(c);
  };
  auto middle = [&](int from, int to) {
    for (int r = from; r <= to; ++r) row({r, Sum::M, r - 1, 32, 0}, {r, floorHalf(r), 32});
  };
  if ((layout & 21) == 21) {
    if (h == 2) {
      row({0, Sum::T, 0, 0, 4}, {0, 0, 0, true});
      row({1, Sum::B, 0, 0, 4}, {1, 0, 0, true});
      return p;
    }
    row({0, Sum::T, 0, 0, 4}, {0, 0, 0});
    row({1, Sum::M, 0, 0, 4}, {1, 0, 0});
    for (int r = 2; r <= h - 3; ++r) row({r, Sum::M, r - 1, 32, 4}, {r, r / 2, 32});
    row({h - 2, Sum::M, h - 3, 0, 4}, {h - 2, h / 2 - 2, 0});
    row({h - 1, Sum::B, h - 2, 0, 4}, {h - 1, h / 2 - 2, 0});
  } else if (layout == lumSliceFirst) {
    if (h < 4) return p;  // a two-row first slice leaves its rows to the slice below
    row({0, Sum::T, 0, 8, 0}, {0, 0, 8});
    row({1, Sum::M, 0, 8, 0}, {1, 0, 8});
    middle(2, h - 3);
  } else if (layout == lumSliceMiddle) {
    middle(-2, h - 3);
  } else if (layout == lumSliceLast) {
    middle(-2, h - 3);
    row({h - 2, Sum::M, h - 3, 8, 0}, {h - 2, h / 2 - 2, 0});
    row({h - 1, Sum::B, h - 2, 8, 0}, {h - 1, h / 2 - 2, 0});
  }
  return p;
}

// A slice inside a frame: images with rows above the slice's origin (3 luma
// rows, 1 chroma row in the source; the same in the destination, so that a write
// one row too high shows), guard pages after the last row, canaries in padding.
struct SliceImages {
  static constexpr int kAbove = 3, kAboveC = 1;
  int w, h;
  bool packed;
  GuardedImage y, uv;
  std::vector<GuardedImage> dst;
  SliceImages(int w_, int h_, bool packed_, ImageOptions o = {}) : w(w_), h(h_), packed(packed_) {
    y = GuardedImage(w, h + kAbove, o);
    uv = GuardedImage(w / 2 * 2, h / 2 + kAboveC, o);
    if (packed) {
      dst.emplace_back(2 * w, h + kAbove, o);
    } else {
      dst.emplace_back(w, h + kAbove, o);
      dst.emplace_back(w / 2, h / 2 + kAboveC + 1, o);
      dst.emplace_back(w / 2, h / 2 + kAboveC + 1, o);
    }
    std::mt19937 rng(uint32_t(w * 131 + h));
    y.randomize(rng);
    uv.randomize(rng);
    for (auto& d : dst) d.randomize(rng);
  }
  const Lum8u* srcY() const { return y.row(kAbove); }
  const Lum8u* srcUV() const { return uv.row(kAboveC); }
  int dstAbove(size_t plane) const { return plane == 0 ? kAbove : kAboveC + 1; }
  Lum8u* dstRow(size_t plane, int r) const { return dst[plane].row(r + dstAbove(plane)); }
  int sy(int r, int x) const { return y.row(r + kAbove)[x]; }
  int suv(int r, int x) const { return uv.row(r + kAboveC)[x]; }

  LumStatus call(int layout) {
    const LumSize roi{w, h};
    if (packed)
      return lumiYCbCr420ToYCbCr422_Filter_8u_P2C2R(srcY(), y.step(), srcUV(), uv.step(), dstRow(0, 0),
                                                    dst[0].step(), roi, layout);
    Lum8u* p[3] = {dstRow(0, 0), dstRow(1, 0), dstRow(2, 0)};
    const int s[3] = {dst[0].step(), dst[1].step(), dst[2].step()};
    return lumiYCbCr420ToYCrCb420_Filter_8u_P2P3R(srcY(), y.step(), srcUV(), uv.step(), p, s, roi, layout);
  }

  // The destination images as the plan says they must be after the call.
  std::vector<std::vector<uint8_t>> expected(const Plan& plan) const {
    std::vector<std::vector<uint8_t>> out;
    for (auto& d : dst) out.push_back(d.bytes());
    auto at = [&](size_t plane, int r, int x) -> uint8_t& {
      return out[plane][size_t(r + dstAbove(plane)) * size_t(dst[plane].rowBytes()) + size_t(x)];
    };
    const int wm = w & ~1;
    for (size_t i = 0; i < plan.luma.size(); ++i) {
      const LumaRow& l = plan.luma[i];
      for (int x = 0; x < wm; ++x) {
        const int v[3] = {sy(l.first, x), sy(l.first + 1, x), l.sum == Sum::M ? sy(l.first + 2, x) : 0};
        const uint8_t val = uint8_t(lumaValue(l, v, inBlock(x, wm, l.cover)));
        if (packed) at(0, l.out, 2 * x) = val;
        else at(0, l.out, x) = val;
      }
    }
    for (const ChromaRow& c : plan.chroma) {
      for (int x = 0; x < wm; ++x) {
        const int c1 = c.copy ? 0 : suv(c.first + 1, x);
        if (packed) {
          at(0, c.out, 2 * x + 1) = uint8_t(chromaValue(c, suv(c.first, x), c1, inBlock(x, wm, c.cover)));
        } else {
          const int i = x / 2;
          at(size_t(1 + (x & 1)), c.out, i) = uint8_t(chromaValue(c, suv(c.first, x), c1, inBlock(i, wm / 2, c.cover)));
        }
      }
    }
    return out;
  }
  std::vector<std::vector<uint8_t>> actual() const {
    std::vector<std::vector<uint8_t>> out;
    for (auto& d : dst) out.push_back(d.bytes());
    return out;
  }
  bool canariesIntact() const {
    bool ok = y.intactCanaries() && uv.intactCanaries();
    for (auto& d : dst) ok = ok && d.intactCanaries();
    return ok;
  }
};

// Runs one slice on random data and compares every destination byte, including
// the rows above the origin, with the plan; both with the vector unit and without.
void checkSlice(bool packed, int layout, int w, int h, ImageOptions o = {}, bool hdtv = false) {
  SCOPED_TRACE(testing::Message() << (packed ? "P2C2" : "P2P3") << " layout " << layout << " " << w << "x" << h);
  for (bool scalar : {false, true}) {
    SliceImages im(w, h, packed, o);
    const Lum8u y0 = im.y.row(0)[0];
    const auto srcBefore = im.y.bytes(), uvBefore = im.uv.bytes();
    const Plan plan = packed ? packedPlan(layout, h & ~1) : planarPlan(layout, h & ~1, hdtv);
    const auto want = im.expected(plan);
    LumStatus st;
    if (scalar) {
      lum::ScalarScope s;
      st = im.call(layout);
    } else {
      st = im.call(layout);
    }
    ASSERT_EQ(st, lumStatusOk);
    const auto got = im.actual();
    for (size_t p = 0; p < got.size(); ++p) ASSERT_EQ(got[p], want[p]) << "plane " << p << (scalar ? " scalar" : "");
    ASSERT_TRUE(im.canariesIntact());
    ASSERT_EQ(im.y.bytes(), srcBefore);
    ASSERT_EQ(im.uv.bytes(), uvBefore);
    ASSERT_EQ(im.y.row(0)[0], y0);
  }
}

// Widths on both sides of every block length the family uses (8, 16, 32, 64).
const int kWidths[] = {2, 3, 6, 8, 10, 14, 16, 18, 22, 30, 32, 34, 46, 48, 62, 64, 66, 96, 98, 130};

}  // namespace

// ---------------------------------------------------------------------------
// Harness: refusals, vector against scalar, alignment, negative steps
// ---------------------------------------------------------------------------

TEST(ChromaFilter, RefusalsInCheckOrderLeaveDestinationUntouched) {
  for (const auto& c : cases()) checkRefusals(c);
}

TEST(ChromaFilter, VectorBlocksMatchScalarTwinsAtEveryWidth) {
  for (const auto& c : cases()) checkVectorMatchesScalar(c, blockWidths(), c.minHeight == 8 ? 16 : 6);
}

TEST(ChromaFilter, AlignmentDoesNotChangeSamples) {
  for (const auto& c : cases()) checkAlignmentInvariance(c, {2, 14, 16, 18, 32, 64, 100, 128}, c.minHeight == 8 ? 8 : 4);
}

TEST(ChromaFilter, NegativeStepWalksBottomUp) {
  for (const auto& c : cases()) checkNegativeStep(c, 37, c.minHeight == 8 ? 16 : 6);
}

// ---------------------------------------------------------------------------
// Four-tap up-sampler
// ---------------------------------------------------------------------------

namespace {
// Runs the P3 up-sampler on a region whose chroma columns all hold the given
// source rows (one value per source chroma row); returns the Cb plane's first
// column, and leaves the images for inspection.
struct TapRun {
  CallImages ci;
  TapRun(LumSize roi, const std::vector<int>& rows, bool yv12 = false) : ci(cases()[yv12 ? 1 : 0], roi) {
    std::mt19937 rng(9);
    ci.randomizeSource(rng);
    ci.fillDestination(0x77);
    for (int k = 0; k < int(rows.size()); ++k) std::memset(ci.src[1].row(k), rows[size_t(k)], size_t(ci.src[1].rowBytes()));
    Buffers b = ci.buffers();
    status = cases()[yv12 ? 1 : 0].call(b, roi);
  }
  int cb(int r, int x = 0) const { return ci.dst[1].row(r)[x]; }
  LumStatus status;
};
}  // namespace

TEST(ChromaFilter, FourTapRowsOfAnEightRowRegion) {
  // Even rows 10, 50, 200, 30. Row 1 repeats row 0 above, rows 5 and 7 repeat
  // row 6 below; row 3 is the plain -1, 9, 9, -1.
  for (int w : {2, 16, 34}) {
    TapRun t({w, 8}, {10, 50, 200, 30});
    ASSERT_EQ(t.status, lumStatusOk);
    const int want[8] = {10, 21, 50, 138, 200, 124, 30, 19};
    for (int x = 0; x < w / 2; ++x)
      for (int r = 0; r < 8; ++r) EXPECT_EQ(t.cb(r, x), want[r]) << "row " << r << " width " << w;
  }
}

TEST(ChromaFilter, FourTapOvershootClampsBothWays) {
  TapRun low({32, 8}, {255, 0, 0, 255});
  EXPECT_EQ(low.cb(3), 0);  // (0 - 510 + 8) >> 4 = -32
  TapRun high({32, 8}, {0, 255, 255, 0});
  EXPECT_EQ(high.cb(3), 255);  // (4590 + 8) >> 4 = 287
}

TEST(ChromaFilter, FourTapWorksOnWholeBlocksOfEightRows) {
  // Height 15 works as 8; width 9 as 8: the rest of the region stays as it was.
  TapRun t({9, 15}, {10, 50, 200, 30, 90, 90, 90});
  ASSERT_EQ(t.status, lumStatusOk);
  EXPECT_EQ(t.cb(7), 19);
  for (int r = 8; r < 15; ++r) {
    EXPECT_EQ(t.cb(r), 0x77) << r;
    EXPECT_EQ(t.ci.dst[0].row(r)[0], 0x77) << r;
  }
  for (int r = 0; r < 8; ++r) {
    EXPECT_EQ(t.ci.dst[0].row(r)[8], 0x77) << "luma column 8, row " << r;
    EXPECT_EQ(0, std::memcmp(t.ci.dst[0].row(r), t.ci.src[0].row(r), 8)) << "luma row " << r;
  }
  EXPECT_TRUE(t.ci.canariesIntact());
}


TEST(ChromaFilter, FourTapChromaSources) {
  // YV12 takes Cb from plane 2; NV12 splits even bytes to Cb and odd bytes to Cr.
  TapRun yv({4, 8}, {10, 50, 200, 30}, true);
  EXPECT_EQ(yv.ci.dst[2].row(3)[0], 138);  // plane 1 of the source is Cr
  for (int r = 0; r < 4; ++r)
    EXPECT_EQ(yv.ci.dst[1].row(2 * r)[1], yv.ci.src[2].row(r)[1]);

  const FnCase& nv = cases()[2];
  CallImages ci(nv, {6, 8});
  std::mt19937 rng(3);
  ci.randomizeSource(rng);
  ASSERT_EQ(nv.call(ci.buffers(), {6, 8}), lumStatusOk);
  for (int k = 0; k < 4; ++k)
    for (int i = 0; i < 3; ++i) {
      EXPECT_EQ(ci.dst[1].row(2 * k)[i], ci.src[1].row(k)[2 * i]);
      EXPECT_EQ(ci.dst[2].row(2 * k)[i], ci.src[1].row(k)[2 * i + 1]);
    }
}

// ---------------------------------------------------------------------------
// Deinterlacing
// ---------------------------------------------------------------------------

TEST(Deinterlace, EverySliceWritesItsRowsAndColumnsByTheirForms) {
  for (bool packed : {false, true})
    for (int layout : {lumSliceFirst, lumSliceMiddle, lumSliceLast, lumSliceWhole})
      for (int w : kWidths)
        for (int h : {2, 4, 6, 8, 10, 9}) {  // an odd height works on its even part
          if (h == 9 && w != 34) continue;
          checkSlice(packed, layout, w, h);
        }
}

TEST(Deinterlace, HdtvKernelsMakeTheBottomRowInBlocks) {
  // Whole blocks, 16-row slices and aligned pointers and steps select the HDTV
  // kernels; a misaligned call of the same size takes the plain ones.
  ImageOptions aligned;
  aligned.alignOffset = 0;
  aligned.stepAlign = 32;
  ImageOptions misaligned = aligned;
  misaligned.alignOffset = 1;
  for (int layout : {lumSliceFirst, lumSliceMiddle, lumSliceLast}) {
    checkSlice(false, layout, 128, 16, aligned, true);
    checkSlice(false, layout, 128, 16, misaligned, false);
    checkSlice(false, layout, 96, 16, aligned, false);  // 96 is no multiple of 64
    checkSlice(false, layout, 128, 18, aligned, false);
  }
}

TEST(Deinterlace, PartialLayoutValuesDoNothing) {
  for (bool packed : {false, true})
    for (int layout : {0, 2, 5, 17, 20, 8, 64, -22}) {
      SliceImages im(34, 8, packed);
      const auto before = im.actual();
      ASSERT_EQ(im.call(layout), lumStatusOk) << layout;
      EXPECT_EQ(im.actual(), before) << "layout " << layout;
    }
}

TEST(Deinterlace, AnyValueWithAllThreeSliceBitsIsTheWholeFrame) {
  for (bool packed : {false, true}) {
    SliceImages ref(50, 8, packed);
    ASSERT_EQ(ref.call(lumSliceWhole), lumStatusOk);
    for (int layout : {23, 31, 53, 0x7FFFFFFF, -1}) {
      SliceImages im(50, 8, packed);
      ASSERT_EQ(im.call(layout), lumStatusOk);
      EXPECT_EQ(im.actual(), ref.actual()) << layout;
    }
  }
}

TEST(Deinterlace, WholeFramePackedBiasOnFlatImages) {
  // All 255: luma 255 everywhere (chop holds the bias). All 0: the scalar rows and
  // tails give 1, the vector blocks 0. Width 40: columns 0..31 in blocks; a frame
  // of four rows has no vector rows at all.
  for (int h : {4, 8})
    for (int v : {0, 255}) {
      SliceImages im(40, h, true);
      im.y.fill(uint8_t(v));
      im.uv.fill(uint8_t(v));
      ASSERT_EQ(im.call(lumSliceWhole), lumStatusOk);
      for (int r = 0; r < h; ++r)
        for (int x = 0; x < 40; ++x) {
          const bool block = r >= 2 && r <= h - 3 && x < 32;
          EXPECT_EQ(im.dstRow(0, r)[2 * x], v == 255 ? 255 : (block ? 0 : 1)) << r << "," << x;
          EXPECT_EQ(im.dstRow(0, r)[2 * x + 1], v) << r << "," << x;
        }
    }
}

// A whole frame of two rows: the luma sums carry the bias of 4 (top 11 where the
// unbiased sum gives 10), the chroma row comes through unchanged.
TEST(Deinterlace, WholeFrameOfTwoRowsCarriesChromaUnchanged) {
  const uint8_t y0[6] = {0, 255, 10, 11, 200, 3}, y1[6] = {0, 255, 13, 10, 100, 254};
  const int top[6] = {1, 255, 11, 11, 176, 66}, bottom[6] = {1, 255, 13, 11, 126, 192};
  for (bool packed : {false, true}) {
    SliceImages im(6, 2, packed);
    std::memcpy(im.y.row(3), y0, 6);
    std::memcpy(im.y.row(4), y1, 6);
    ASSERT_EQ(im.call(lumSliceWhole), lumStatusOk);
    const int k = packed ? 2 : 1;
    for (int x = 0; x < 6; ++x) {
      EXPECT_EQ(im.dstRow(0, 0)[k * x], top[x]) << x;
      EXPECT_EQ(im.dstRow(0, 1)[k * x], bottom[x]) << x;
      const int c = im.suv(0, x);
      if (packed) {
        EXPECT_EQ(im.dstRow(0, 0)[2 * x + 1], c);
        EXPECT_EQ(im.dstRow(0, 1)[2 * x + 1], c);
      } else {
        EXPECT_EQ(im.dstRow(size_t(1 + (x & 1)), 0)[x / 2], c);
      }
    }
  }
}

TEST(Deinterlace, BlockAndTailDifferInOneRow) {
  // Row -2 is M of rows -3, -2, -1 = 0, 0, 1: blocks round up to 1, the tail sums
  // to 0. Width 20 in the planar middle kernel: 16 block columns, 4 tail columns.
  SliceImages im(20, 4, false);
  im.y.fill(0);
  std::memset(im.y.row(-1 + SliceImages::kAbove), 1, 20);
  ASSERT_EQ(im.call(lumSliceMiddle), lumStatusOk);
  for (int x = 0; x < 20; ++x) EXPECT_EQ(im.dstRow(0, -2)[x], x < 16 ? 1 : 0) << x;
}

// ---------------------------------------------------------------------------
// YCrCb420 to BGRA with interpolated chroma
// ---------------------------------------------------------------------------

namespace {
// B, G, R of the 16-bit block form.
void blockBgr(int y, int cb, int cr, int out[3]) {
  auto t = [](int v, int base, int k) { return (((v - base) << 7) * k) >> 16; };
  const int ty = t(y, 16, 4769);
  out[0] = clampByte((ty + t(cb, 128, 8263)) >> 3);
  out[1] = clampByte((ty - t(cb, 128, 1605) - t(cr, 128, 3330)) >> 3);
  out[2] = clampByte((ty + t(cr, 128, 6537)) >> 3);
}
// B, G, R of the 32-bit tail form.
void tailBgr(int y, int cb, int cr, int out[3]) {
  const int l = 4769 * (y - 16);
  out[0] = clampByte((l + 8263 * (cb - 128)) >> 12);
  out[1] = clampByte((l - 3330 * (cr - 128) - 1605 * (cb - 128)) >> 12);
  out[2] = clampByte((l + 6537 * (cr - 128)) >> 12);
}

void checkBgrFilter(LumSize roi) {
  SCOPED_TRACE(testing::Message() << roi.width << "x" << roi.height);
  const FnCase& fc = cases().back();
  CallImages ci(fc, roi);
  std::mt19937 rng(uint32_t(roi.width * 7 + roi.height));
  ci.randomizeSource(rng);
  ci.fillDestination(0x42);
  ASSERT_EQ(fc.call(ci.buffers(), roi), fc.expected(roi));
  const int n = roi.width > 1 ? roi.width / 2 - 1 : 0;  // one pixel wide: the closing pair alone
  const int pairs = roi.height / 2;
  for (int r = 0; r < roi.height; ++r)
    for (int x = 0; x < roi.width; ++x) {
      const uint8_t* px = ci.dst[0].row(r) + 4 * x;
      if (r >= 2 * pairs || x > 2 * n + 1) {
        for (int k = 0; k < 4; ++k) ASSERT_EQ(px[k], 0x42) << "untouched pixel " << x << " row " << r;
        continue;
      }
      const int j = x / 2, k = r / 2;
      const uint8_t* cr = ci.src[1].row(k);
      const uint8_t* cb = ci.src[2].row(k);
      const bool interp = (x & 1) && j < n;
      const int vcb = interp ? avgUp(cb[j], cb[j + 1]) : cb[j], vcr = interp ? avgUp(cr[j], cr[j + 1]) : cr[j];
      int want[3];
      if (x < 16 * (n / 8)) blockBgr(ci.src[0].row(r)[x], vcb, vcr, want);
      else tailBgr(ci.src[0].row(r)[x], vcb, vcr, want);
      for (int c = 0; c < 3; ++c) ASSERT_EQ(px[c], want[c]) << "pixel " << x << " row " << r << " channel " << c;
      ASSERT_EQ(px[3], 0x9C);
    }
  ASSERT_TRUE(ci.canariesIntact());
}
}  // namespace

TEST(BgrFilter, EachColumnTakesItsFormAndChroma) {
  // One row or one column writes nothing.
  for (int w : {1, 2, 3, 4, 5, 16, 17, 18, 19, 20, 32, 33, 34, 35, 36, 40, 50, 64, 66, 100})
    for (int h : {1, 2, 3, 4, 7}) checkBgrFilter({w, h});
}


// W = 1: the closing pair alone, pixels 0 and 1 from chroma sample 0, and the
// odd-size warning; H = 1 writes nothing.
TEST(BgrFilter, OnePixelWideWritesTheClosingPair) {
  const Lum8u y[2][2] = {{235, 16}, {126, 235}}, cr[1] = {128}, cb[1] = {128};
  const Lum8u* src[3] = {&y[0][0], cr, cb};
  const int steps[3] = {2, 1, 1};
  Lum8u out[2][12];
  std::memset(out, 0xEE, sizeof out);
  ASSERT_EQ(lumiYCrCb420ToBGR_Filter_8u_P3C4R(src, steps, &out[0][0], 12, {1, 2}, 7), lumStatusOddSize);
  const int grey[2][2] = {{254, 0}, {128, 254}};
  for (int r = 0; r < 2; ++r) {
    for (int x = 0; x < 2; ++x) {
      for (int k = 0; k < 3; ++k) EXPECT_EQ(out[r][4 * x + k], grey[r][x]) << r << " " << x;
      EXPECT_EQ(out[r][4 * x + 3], 7);
    }
    for (int b = 8; b < 12; ++b) EXPECT_EQ(out[r][b], 0xEE);
  }
  std::memset(out, 0xEE, sizeof out);
  ASSERT_EQ(lumiYCrCb420ToBGR_Filter_8u_P3C4R(src, steps, &out[0][0], 12, {1, 1}, 7), lumStatusOddSize);
  for (int b = 0; b < 12; ++b) EXPECT_EQ(out[0][b], 0xEE);
}

TEST(BgrFilter, GreyAndPrimaryKnownAnswers) {
  // Studio white and black, a mid grey, and the three primaries, in the tail
  // (width 2) and in a block (width 18: pixels 0..15).
  struct Case {
    uint8_t y, cr, cb;
    uint8_t tail[3], block[3];  // B, G, R
  } const table[] = {
      {235, 128, 128, {254, 254, 254}, {254, 254, 254}},
      {16, 128, 128, {0, 0, 0}, {0, 0, 0}},
      {126, 128, 128, {128, 128, 128}, {128, 128, 128}},
      {41, 110, 240, {255, 0, 0}, {254, 0, 0}},  // blue: the block truncates each product
      {81, 240, 90, {0, 0, 254}, {0, 0, 254}},
      {145, 54, 34, {0, 247, 32}, {0, 247, 32}},
  };
  for (const Case& c : table)
    for (int w : {2, 18}) {
      std::vector<Lum8u> y(size_t(w) * 2, c.y), cr(size_t(w / 2), c.cr), cb(size_t(w / 2), c.cb), out(size_t(w) * 8);
      const Lum8u* src[3] = {y.data(), cr.data(), cb.data()};
      const int steps[3] = {w, w / 2, w / 2};
      ASSERT_EQ(lumiYCrCb420ToBGR_Filter_8u_P3C4R(src, steps, out.data(), 4 * w, {w, 2}, 7), lumStatusOk);
      const uint8_t* want = w == 2 ? c.tail : c.block;
      for (int k = 0; k < 3; ++k) EXPECT_EQ(out[size_t(k)], want[k]) << int(c.y) << " width " << w;
      EXPECT_EQ(out[3], 7);
    }
}
