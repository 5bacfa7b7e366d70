// RGB <-> 4:2:0 and 4:1:1: chroma cells of 2x2 or 4x1 pixels.
#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <cstring>
#include <optional>
#include <stdexcept>

#include "frame/simd.h"
#include "lumcc.h"
#include "support/family.h"

using namespace lumtest;

namespace {

using Bytes = std::vector<uint8_t>;
using B = Buffers;

// How many pixels at the start of a row the block form covers (the rest of the
// whole cells go to the tail form).
enum class Ladder { UpTo8, UpTo16Then4, All, None };
int blockEnd(Ladder l, int cellWidth) {
  switch (l) {
    case Ladder::UpTo8: return cellWidth & ~7;
    case Ladder::UpTo16Then4: return (cellWidth & ~15) + ((cellWidth & 7) >= 4 ? 4 : 0);
    case Ladder::All: return cellWidth;
    case Ladder::None: return 0;
  }
  return 0;
}

struct Traits {
  bool forward;  // RGB -> luma-chroma
  bool yuv;      // YUV model rather than YCbCr
  int cellW;     // 2: 2x2 cells (4:2:0); 4: 4x1 cells (4:1:1)
  Ladder ladder;
  bool bgr = false;   // RGB side in B, G, R order
  bool crcb = false;  // chroma stored Cr before Cb
};

struct CellCase {
  FnCase fc;
  Traits t;
  int rows() const { return t.cellW == 2 ? 2 : 1; }
};

const ImageShape C3 = packedImg(3), C4 = packedImg(4), RGBP3 = planarImg(3);
const ImageShape P420 = planesImg({{1}, {1, 2, 2}, {1, 2, 2}});
const ImageShape P411 = planesImg({{1}, {1, 4, 1}, {1, 4, 1}});
const ImageShape NV = semiPlanarImg({2, 2, 2});

LumStatus status420(LumSize r) { return ((r.width | r.height) & 1) ? lumStatusOddSize : lumStatusOk; }
LumStatus status411(LumSize r) { return (r.width & 3) ? lumStatusOddSize : lumStatusOk; }

CellCase mk(const char* name, ImageShape s, ImageShape d, Order o, CallFn f, Traits t, int minW = 1, int minH = 1,
            bool dense = false) {
  CellCase c;
  c.fc.name = name;
  c.fc.src = std::move(s);
  c.fc.dst = std::move(d);
  c.fc.order = o;
  c.fc.call = std::move(f);
  c.fc.minWidth = minW;
  c.fc.minHeight = minH;
  c.fc.dense = dense;
  if (t.cellW == 2) c.fc.statusFor = status420;
  else if (t.forward) c.fc.statusFor = status411;
  const ImageShape& planes = t.forward ? c.fc.dst : c.fc.src;
  const bool stepArray = !dense && planes.array && !planes.separate;
  c.fc.srcStepArray = stepArray && !t.forward;
  c.fc.dstStepArray = stepArray && t.forward;
  c.t = t;
  return c;
}

const Lum8u kAval = 0xA7;

const std::vector<CellCase>& cases() {
  static const std::vector<CellCase> v = [] {
    using O = Order;
    const Traits ycc{true, false, 2, Ladder::UpTo8}, yccBgr{true, false, 2, Ladder::UpTo8, true};
    const Traits ladder{true, false, 2, Ladder::UpTo16Then4, true};
    std::vector<CellCase> t;
    // ---- forward YCbCr / YCrCb
    t.push_back(mk("RGBToYCbCr420_C3P3R", C3, P420, O::NullSize, [](const B& b, LumSize r) {
      return lumiRGBToYCbCr420_8u_C3P3R(b.srcPtr(), b.srcStep, b.dstPlanes(), b.dstSteps, r); }, ycc));
    t.push_back(mk("BGRToYCbCr420_C3P3R", C3, P420, O::NullSize, [](const B& b, LumSize r) {
      return lumiBGRToYCbCr420_8u_C3P3R(b.srcPtr(), b.srcStep, b.dstPlanes(), b.dstSteps, r); }, yccBgr, 2, 2));
    t.push_back(mk("BGRToYCrCb420_C3P3R", C3, P420, O::NullSize, [](const B& b, LumSize r) {
      return lumiBGRToYCrCb420_8u_C3P3R(b.srcPtr(), b.srcStep, b.dstPlanes(), b.dstSteps, r); },
      {true, false, 2, Ladder::UpTo8, true, true}, 2, 2));
    t.push_back(mk("BGRToYCbCr420_AC4P3R", C4, P420, O::NullSize, [](const B& b, LumSize r) {
      return lumiBGRToYCbCr420_8u_AC4P3R(b.srcPtr(), b.srcStep, b.dstPlanes(), b.dstSteps, r); }, ladder, 2, 2));
    t.push_back(mk("BGRToYCrCb420_AC4P3R", C4, P420, O::NullSize, [](const B& b, LumSize r) {
      return lumiBGRToYCrCb420_8u_AC4P3R(b.srcPtr(), b.srcStep, b.dstPlanes(), b.dstSteps, r); },
      {true, false, 2, Ladder::UpTo16Then4, true, true}, 2, 2));
    t.push_back(mk("RGBToYCrCb420_AC4P3R", C4, P420, O::NullSize, [](const B& b, LumSize r) {
      return lumiRGBToYCrCb420_8u_AC4P3R(b.srcPtr(), b.srcStep, b.dstPlanes(), b.dstSteps, r); },
      {true, false, 2, Ladder::UpTo16Then4, false, true}, 2, 2));
    // ---- forward semi-planar
    t.push_back(mk("RGBToYCbCr420_C3P2R", C3, NV, O::NullSize, [](const B& b, LumSize r) {
      return lumiRGBToYCbCr420_8u_C3P2R(b.srcPtr(), b.srcStep, b.dstPlanes()[0], b.dstSteps[0], b.dstPlanes()[1],
                                        b.dstSteps[1], r); }, ycc));
    t.push_back(mk("RGBToYCbCr420_C4P2R", C4, NV, O::NullSize, [](const B& b, LumSize r) {
      return lumiRGBToYCbCr420_8u_C4P2R(b.srcPtr(), b.srcStep, b.dstPlanes()[0], b.dstSteps[0], b.dstPlanes()[1],
                                        b.dstSteps[1], r); }, ycc));
    t.push_back(mk("BGRToYCbCr420_C3P2R", C3, NV, O::NullSize, [](const B& b, LumSize r) {
      return lumiBGRToYCbCr420_8u_C3P2R(b.srcPtr(), b.srcStep, b.dstPlanes()[0], b.dstSteps[0], b.dstPlanes()[1],
                                        b.dstSteps[1], r); }, yccBgr));
    t.push_back(mk("BGRToYCbCr420_AC4P2R", C4, NV, O::NullSize, [](const B& b, LumSize r) {
      return lumiBGRToYCbCr420_8u_AC4P2R(b.srcPtr(), b.srcStep, b.dstPlanes()[0], b.dstSteps[0], b.dstPlanes()[1],
                                         b.dstSteps[1], r); }, yccBgr));
    // ---- forward YUV
    const Traits yuv{true, true, 2, Ladder::UpTo8};
    t.push_back(mk("RGBToYUV420_C3P3R", C3, P420, O::NullSizePlanes, [](const B& b, LumSize r) {
      return lumiRGBToYUV420_8u_C3P3R(b.srcPtr(), b.srcStep, b.dstPlanes(), b.dstSteps, r); }, yuv));
    t.push_back(mk("RGBToYUV420_P3R", RGBP3, P420, O::NullSizePlanes, [](const B& b, LumSize r) {
      return lumiRGBToYUV420_8u_P3R(b.srcPlanes(), b.srcStep, b.dstPlanes(), b.dstSteps, r); },
      {true, true, 2, Ladder::None}));
    t.push_back(mk("BGRToYUV420_AC4P3R", C4, P420, O::NullSizePlanes, [](const B& b, LumSize r) {
      return lumiBGRToYUV420_8u_AC4P3R(b.srcPtr(), b.srcStep, b.dstPlanes(), b.dstSteps, r); },
      {true, true, 2, Ladder::UpTo8, true}));
    t.push_back(mk("RGBToYUV420_C3P3", C3, P420, O::NullSizePlanes, [](const B& b, LumSize r) {
      return lumiRGBToYUV420_8u_C3P3(b.srcPtr(), b.dstPlanes(), r); }, yuv, 1, 1, true));
    t.push_back(mk("RGBToYUV420_P3", RGBP3, P420, O::NullSizePlanes, [](const B& b, LumSize r) {
      return lumiRGBToYUV420_8u_P3(b.srcPlanes(), b.dstPlanes(), r); }, {true, true, 2, Ladder::None}, 1, 1, true));
    // ---- forward 4:1:1
    const Traits to411{true, false, 4, Ladder::UpTo8, true};
    t.push_back(mk("BGRToYCbCr411_C3P3R", C3, P411, O::NullSize, [](const B& b, LumSize r) {
      return lumiBGRToYCbCr411_8u_C3P3R(b.srcPtr(), b.srcStep, b.dstPlanes(), b.dstSteps, r); }, to411, 4, 1));
    t.push_back(mk("BGRToYCbCr411_AC4P3R", C4, P411, O::NullSize, [](const B& b, LumSize r) {
      return lumiBGRToYCbCr411_8u_AC4P3R(b.srcPtr(), b.srcStep, b.dstPlanes(), b.dstSteps, r); }, to411, 4, 1));
    // ---- inverse YCbCr / YCrCb planes
    const Traits inv{false, false, 2, Ladder::UpTo8};
    t.push_back(mk("YCbCr420ToRGB_P3C3R", P420, C3, O::NullSize, [](const B& b, LumSize r) {
      return lumiYCbCr420ToRGB_8u_P3C3R(b.srcPlanes(), b.srcSteps, b.dstPtr(), b.dstStep, r); }, inv));
    t.push_back(mk("YCbCr420ToBGR_P3C3R", P420, C3, O::NullSize, [](const B& b, LumSize r) {
      return lumiYCbCr420ToBGR_8u_P3C3R(b.srcPlanes(), b.srcSteps, b.dstPtr(), b.dstStep, r); },
      {false, false, 2, Ladder::UpTo8, true}));
    t.push_back(mk("YCbCr420ToBGR_P3C4R", P420, C4, O::NullSize, [](const B& b, LumSize r) {
      return lumiYCbCr420ToBGR_8u_P3C4R(b.srcPlanes(), b.srcSteps, b.dstPtr(), b.dstStep, r, kAval); },
      {false, false, 2, Ladder::All, true}));
    t.push_back(mk("YCrCb420ToRGB_P3C4R", P420, C4, O::NullSize, [](const B& b, LumSize r) {
      return lumiYCrCb420ToRGB_8u_P3C4R(b.srcPlanes(), b.srcSteps, b.dstPtr(), b.dstStep, r, kAval); },
      {false, false, 2, Ladder::UpTo8, false, true}));
    // ---- inverse semi-planar
    auto p2 = [&t](const char* name, auto fn, bool bgr, bool crcb, bool c4, Order o) {
      t.push_back(mk(name, NV, c4 ? C4 : C3, o, [fn](const B& b, LumSize r) {
        return fn(b.srcPlanes()[0], b.srcSteps[0], b.srcPlanes()[1], b.srcSteps[1], b.dstPtr(), b.dstStep, r); },
        {false, false, 2, Ladder::UpTo8, bgr, crcb}));
    };
    auto aval = [](auto f) {
      return [f](const Lum8u* y, int ys, const Lum8u* c, int cs, Lum8u* d, int ds, LumSize r) {
        return f(y, ys, c, cs, d, ds, r, kAval);
      };
    };
    p2("YCbCr420ToRGB_P2C3R", lumiYCbCr420ToRGB_8u_P2C3R, false, false, false, O::NullSize);
    p2("YCbCr420ToRGB_P2C4R", aval(lumiYCbCr420ToRGB_8u_P2C4R), false, false, true, O::NullSize);
    p2("YCbCr420ToBGR_P2C3R", lumiYCbCr420ToBGR_8u_P2C3R, true, false, false, O::NullSize);
    p2("YCbCr420ToBGR_P2C4R", aval(lumiYCbCr420ToBGR_8u_P2C4R), true, false, true, O::NullSize);
    p2("YCrCb420ToRGB_P2C3R", lumiYCrCb420ToRGB_8u_P2C3R, false, true, false, O::NullSize);
    p2("YCrCb420ToRGB_P2C4R", aval(lumiYCrCb420ToRGB_8u_P2C4R), false, true, true, O::SizeNull);
    p2("YCrCb420ToBGR_P2C3R", lumiYCrCb420ToBGR_8u_P2C3R, true, true, false, O::NullSize);
    p2("YCrCb420ToBGR_P2C4R", aval(lumiYCrCb420ToBGR_8u_P2C4R), true, true, true, O::SizeNull);
    // ---- inverse YUV
    t.push_back(mk("YUV420ToRGB_P3C3R", P420, C3, O::NullSizePlanes, [](const B& b, LumSize r) {
      return lumiYUV420ToRGB_8u_P3C3R(b.srcPlanes(), b.srcSteps, b.dstPtr(), b.dstStep, r); },
      {false, true, 2, Ladder::All}));
    t.push_back(mk("YUV420ToRGB_P3R", P420, RGBP3, O::NullSizePlanes, [](const B& b, LumSize r) {
      return lumiYUV420ToRGB_8u_P3R(b.srcPlanes(), b.srcSteps, b.dstPlanes(), b.dstStep, r); },
      {false, true, 2, Ladder::None}));
    t.push_back(mk("YUV420ToRGB_P3AC4R", P420, C4, O::NullSizePlanes, [](const B& b, LumSize r) {
      return lumiYUV420ToRGB_8u_P3AC4R(b.srcPlanes(), b.srcSteps, b.dstPtr(), b.dstStep, r); },
      {false, true, 2, Ladder::UpTo8}));
    t.push_back(mk("YUV420ToBGR_P3C3R", P420, C3, O::NullSizePlanes, [](const B& b, LumSize r) {
      return lumiYUV420ToBGR_8u_P3C3R(b.srcPlanes(), b.srcSteps, b.dstPtr(), b.dstStep, r); },
      {false, true, 2, Ladder::All, true}, 2, 2));
    t.push_back(mk("YUV420ToRGB_P3", P420, RGBP3, O::NullSizePlanes, [](const B& b, LumSize r) {
      return lumiYUV420ToRGB_8u_P3(b.srcPlanes(), b.dstPlanes(), r); }, {false, true, 2, Ladder::None}, 1, 1, true));
    t.push_back(mk("YUV420ToRGB_P3C3", P420, C3, O::NullSizePlanes, [](const B& b, LumSize r) {
      return lumiYUV420ToRGB_8u_P3C3(b.srcPlanes(), b.dstPtr(), r); }, {false, true, 2, Ladder::All}, 1, 1, true));
    // ---- inverse 4:1:1
    const Traits from411{false, false, 4, Ladder::UpTo8, true};
    t.push_back(mk("YCbCr411ToBGR_P3C3R", P411, C3, O::NullSize, [](const B& b, LumSize r) {
      return lumiYCbCr411ToBGR_8u_P3C3R(b.srcPlanes(), b.srcSteps, b.dstPtr(), b.dstStep, r); }, from411, 4, 1));
    t.push_back(mk("YCbCr411ToBGR_P3C4R", P411, C4, O::NullSize, [](const B& b, LumSize r) {
      return lumiYCbCr411ToBGR_8u_P3C4R(b.srcPlanes(), b.srcSteps, b.dstPtr(), b.dstStep, r, kAval); },
      from411, 4, 1));
    return t;
  }();
  return v;
}

const CellCase& byName(const std::string& n) {
  for (const auto& c : cases())
    if (c.fc.name == n) return c;
  throw std::invalid_argument(n);
}

// ---- access to the two sides of a call ---------------------------------------

const ImageShape& rgbShape(const CellCase& c) { return c.t.forward ? c.fc.src : c.fc.dst; }
const ImageShape& ycShape(const CellCase& c) { return c.t.forward ? c.fc.dst : c.fc.src; }

// Bytes of pixel (x, y) of the RGB side, over its planes.
Bytes pixelBytes(const std::vector<GuardedImage>& img, const ImageShape& s, int x, int y) {
  Bytes out;
  for (size_t p = 0; p < img.size(); ++p) {
    const int bpp = s.planes[p].bpp;
    const uint8_t* r = img[p].row(y) + x * bpp;
    out.insert(out.end(), r, r + bpp);
  }
  return out;
}
void setPixelBytes(std::vector<GuardedImage>& img, const ImageShape& s, int x, int y, const uint8_t* v) {
  for (size_t p = 0; p < img.size(); ++p) {
    const int bpp = s.planes[p].bpp;
    std::memcpy(img[p].row(y) + x * bpp, v, size_t(bpp));
    v += bpp;
  }
}

// R, G, B of a pixel of the RGB side.
std::array<int, 3> rgbOf(const CellCase& c, const Bytes& px) {
  return c.t.bgr ? std::array<int, 3>{px[2], px[1], px[0]} : std::array<int, 3>{px[0], px[1], px[2]};
}

// The luma-chroma bytes of a cell: its lumas row by row, then its chroma bytes
// (every chroma plane's bytes of the cell, in memory order).
Bytes ycCell(const std::vector<GuardedImage>& img, const CellCase& c, int cx, int cy) {
  Bytes out;
  for (int r = 0; r < c.rows(); ++r)
    for (int i = 0; i < c.t.cellW; ++i) out.push_back(img[0].row(cy * c.rows() + r)[cx * c.t.cellW + i]);
  const ImageShape& s = ycShape(c);
  for (size_t p = 1; p < img.size(); ++p) {
    const int bpp = s.planes[p].bpp;
    const uint8_t* q = img[p].row(cy) + cx * bpp;
    out.insert(out.end(), q, q + bpp);
  }
  return out;
}
void setYcCell(std::vector<GuardedImage>& img, const CellCase& c, int cx, int cy, const Bytes& v) {
  size_t k = 0;
  for (int r = 0; r < c.rows(); ++r)
    for (int i = 0; i < c.t.cellW; ++i) img[0].row(cy * c.rows() + r)[cx * c.t.cellW + i] = v[k++];
  const ImageShape& s = ycShape(c);
  for (size_t p = 1; p < img.size(); ++p) {
    const int bpp = s.planes[p].bpp;
    std::memcpy(img[p].row(cy) + cx * bpp, v.data() + k, size_t(bpp));
    k += size_t(bpp);
  }
}
// The RGB-side bytes of a cell's pixels, row by row.
Bytes rgbCell(const std::vector<GuardedImage>& img, const CellCase& c, int cx, int cy) {
  Bytes out;
  for (int r = 0; r < c.rows(); ++r)
    for (int i = 0; i < c.t.cellW; ++i) {
      const Bytes px = pixelBytes(img, rgbShape(c), cx * c.t.cellW + i, cy * c.rows() + r);
      out.insert(out.end(), px.begin(), px.end());
    }
  return out;
}
void setRgbCell(std::vector<GuardedImage>& img, const CellCase& c, int cx, int cy, const Bytes& v) {
  const size_t n = v.size() / size_t(c.rows() * c.t.cellW);
  size_t k = 0;
  for (int r = 0; r < c.rows(); ++r)
    for (int i = 0; i < c.t.cellW; ++i, k += n)
      setPixelBytes(img, rgbShape(c), cx * c.t.cellW + i, cy * c.rows() + r, v.data() + k);
}

// What a cell reads and what it writes.
Bytes cellIn(CallImages& ci, const CellCase& c, int cx, int cy) {
  return c.t.forward ? rgbCell(ci.src, c, cx, cy) : ycCell(ci.src, c, cx, cy);
}
void setCellIn(CallImages& ci, const CellCase& c, int cx, int cy, const Bytes& v) {
  if (c.t.forward) setRgbCell(ci.src, c, cx, cy, v);
  else setYcCell(ci.src, c, cx, cy, v);
}
Bytes cellOut(CallImages& ci, const CellCase& c, int cx, int cy) {
  return c.t.forward ? ycCell(ci.dst, c, cx, cy) : rgbCell(ci.dst, c, cx, cy);
}

// A call on a random source; returns the status.
LumStatus run(CallImages& ci, const CellCase& c, LumSize roi, std::mt19937& rng, uint8_t fill = 0x5A) {
  ci.randomizeSource(rng);
  ci.fillDestination(fill);
  return c.fc.call(ci.buffers(), roi);
}

}  // namespace

// ---- the harness over every function ------------------------------------------

TEST(Rgb420, RefusalsInCheckOrderLeaveDestinationUntouched) {
  for (const auto& c : cases()) checkRefusals(c.fc);
}

// Also across the offsets of the 32-pixel steps.
TEST(Rgb420, VectorBlocksMatchScalarTwinsAtEveryWidth) {
  std::vector<int> widths = blockWidths();
  for (int w : {62, 66, 96, 97, 130, 161, 200}) widths.push_back(w);
  for (const auto& c : cases()) {
    checkVectorMatchesScalar(c.fc, widths, 5);
    checkVectorMatchesScalar(c.fc, {16, 37, 64}, 2);
  }
}

TEST(Rgb420, AlignmentDoesNotChangeSamples) {
  for (const auto& c : cases()) checkAlignmentInvariance(c.fc, {2, 7, 15, 16, 17, 32, 33, 48, 64, 100}, 4);
}

TEST(Rgb420, NegativeStepWalksBottomUp) {
  for (const auto& c : cases()) {
    if (c.fc.dense) continue;
    checkNegativeStep(c.fc, 37, 6);
    checkNegativeStep(c.fc, 21, 5);
  }
}

// An odd last column or row (a column beyond a multiple of 4 in 4:1:1) is not
// written; what is converted does not depend on the destination's old bytes.
TEST(Rgb420, OddSizesLeaveTheRestUntouched) {
  std::mt19937 rng(17);
  for (const auto& c : cases()) {
    SCOPED_TRACE(c.fc.name);
    const std::vector<LumSize> sizes =
        c.t.cellW == 2 ? std::vector<LumSize>{{3, 2}, {2, 3}, {4, 1}, {5, 4}, {7, 5}, {16, 1}, {33, 3}, {1, 1}, {38, 7}}
                       : std::vector<LumSize>{{5, 1}, {6, 3}, {7, 2}, {9, 1}, {22, 3}, {45, 2}};
    for (LumSize roi : sizes) {
      if (roi.width < c.fc.minWidth || roi.height < c.fc.minHeight) continue;
      SCOPED_TRACE(testing::Message() << roi.width << "x" << roi.height);
      CallImages a(c.fc, roi), b(c.fc, roi);
      a.randomizeSource(rng);
      for (size_t i = 0; i < a.src.size(); ++i) b.src[i].setBytes(a.src[i].bytes());
      a.fillDestination(0x5A);
      b.fillDestination(0xA5);
      ASSERT_EQ(c.fc.call(a.buffers(), roi), c.fc.expected(roi));
      ASSERT_EQ(c.fc.call(b.buffers(), roi), c.fc.expected(roi));
      if (c.t.cellW == 2) {
        EXPECT_EQ(c.fc.expected(roi), status420(roi));
      }
      const int wc = roi.width & ~(c.t.cellW - 1), hc = roi.height & ~(c.rows() - 1);
      // Per-pixel planes: luma on the way in, every RGB plane on the way out.
      auto& ia = a.dst;
      auto& ib = b.dst;
      const size_t perPixel = c.t.forward ? 1 : ia.size();
      for (size_t p = 0; p < perPixel; ++p) {
        const int bpp = c.fc.dst.planes[p].bpp;
        for (int y = 0; y < roi.height; ++y)
          for (int x = 0; x < roi.width; ++x)
            for (int k = 0; k < bpp; ++k) {
              const uint8_t va = ia[p].row(y)[x * bpp + k], vb = ib[p].row(y)[x * bpp + k];
              if (x < wc && y < hc) ASSERT_EQ(va, vb) << "converted pixel " << x << "," << y;
              else {
                ASSERT_EQ(va, 0x5A) << "pixel " << x << "," << y << " written";
                ASSERT_EQ(vb, 0xA5) << "pixel " << x << "," << y << " written";
              }
            }
      }
      // Chroma planes hold whole cells only: all of them converted. Without a
      // whole cell the plane is empty (the test's one-byte stand-in stays as it was).
      for (size_t p = 1; c.t.forward && p < ia.size(); ++p) {
        if (wc > 0 && hc > 0) {
          EXPECT_EQ(ia[p].bytes(), ib[p].bytes());
        } else {
          EXPECT_EQ(ia[p].bytes(), Bytes(ia[p].bytes().size(), 0x5A));
        }
      }
      EXPECT_TRUE(a.canariesIntact());
      EXPECT_TRUE(b.canariesIntact());
    }
  }
}

// Each cell takes the block form or the tail form by its column alone: a cell
// below the function's block end gives what it gives inside a wide image of
// blocks, the others what they give in an image one cell wide (all tail).
// Widths 12, 28, 38 and 44 take the step of 4 of the four-channel forms, 24 and 40
// do not.
TEST(Rgb420, EachCellTakesItsRowsForm) {
  std::mt19937 rng(23);
  for (const auto& c : cases()) {
    SCOPED_TRACE(c.fc.name);
    int differ = 0, compared = 0;
    for (int w : {4, 6, 8, 12, 14, 20, 24, 28, 30, 38, 40, 44, 46}) {
      if (w < c.fc.minWidth) continue;
      const int cells = w / c.t.cellW, rows = c.rows();
      CallImages main(c.fc, LumSize{w, rows});
      ASSERT_EQ(run(main, c, LumSize{w, rows}, rng), c.fc.expected(LumSize{w, rows}));
      // The same cells side by side in a width of whole blocks, and stacked in a
      // column one cell wide.
      const int wide = (w + 15) & ~15;
      CallImages blocks(c.fc, LumSize{wide, rows}), tails(c.fc, LumSize{c.t.cellW, rows * cells});
      blocks.randomizeSource(rng);
      for (int k = 0; k < cells; ++k) {
        const Bytes in = cellIn(main, c, k, 0);
        setCellIn(blocks, c, k, 0, in);
        setCellIn(tails, c, 0, k, in);
      }
      ASSERT_GE(c.fc.call(blocks.buffers(), LumSize{wide, rows}), 0);
      ASSERT_GE(c.fc.call(tails.buffers(), LumSize{c.t.cellW, rows * cells}), 0);
      const int end = blockEnd(c.t.ladder, w & ~(c.t.cellW - 1));
      for (int k = 0; k < cells; ++k) {
        const Bytes blockOut = cellOut(blocks, c, k, 0), tailOut = cellOut(tails, c, 0, k);
        const Bytes& want = k * c.t.cellW < end ? blockOut : tailOut;
        ASSERT_EQ(cellOut(main, c, k, 0), want) << "width " << w << " cell " << k
                                                << (k * c.t.cellW < end ? " (block)" : " (tail)");
        differ += blockOut != tailOut;
        ++compared;
      }
    }
    // The test only tells the forms apart where they differ somewhere.
    if (c.t.ladder == Ladder::UpTo8 || c.t.ladder == Ladder::UpTo16Then4) {
      EXPECT_GT(differ, 0) << compared;
    }
  }
}

// ---- known answers ---------------------------------------------------------------

namespace {
// One cell, (R, G, B) of its pixels row by row, replicated over a row of the
// given width and converted; returns the first cell's lumas and (Cb, Cr).
Bytes forwardCell(const CellCase& c, const std::vector<std::array<int, 3>>& px, int width) {
  CallImages ci(c.fc, LumSize{width, c.rows()});
  const int bpp = c.fc.src.array ? 1 : c.fc.src.planes[0].bpp;
  Bytes cell;
  for (const auto& p : px) {
    Bytes b(size_t(c.fc.src.array ? 3 : bpp), 0);
    for (int k = 0; k < 3; ++k) b[size_t(c.t.bgr ? 2 - k : k)] = uint8_t(p[size_t(k)]);
    cell.insert(cell.end(), b.begin(), b.end());
  }
  for (int k = 0; k < width / c.t.cellW; ++k) setRgbCell(ci.src, c, k, 0, cell);
  EXPECT_EQ(c.fc.call(ci.buffers(), LumSize{width, c.rows()}), lumStatusOk);
  Bytes out = ycCell(ci.dst, c, 0, 0);
  if (c.t.crcb) std::swap(out[out.size() - 2], out[out.size() - 1]);
  return out;
}
// One cell's lumas and (Cb, Cr) replicated and converted; the first pixel's R, G, B.
std::array<int, 3> inverseCell(const CellCase& c, int Y, int cb, int cr, int width) {
  CallImages ci(c.fc, LumSize{width, c.rows()});
  Bytes cell(size_t(c.rows() * c.t.cellW), uint8_t(Y));
  cell.push_back(uint8_t(c.t.crcb ? cr : cb));
  cell.push_back(uint8_t(c.t.crcb ? cb : cr));
  for (int k = 0; k < width / c.t.cellW; ++k) setYcCell(ci.src, c, k, 0, cell);
  EXPECT_EQ(c.fc.call(ci.buffers(), LumSize{width, c.rows()}), lumStatusOk);
  return rgbOf(c, pixelBytes(ci.dst, c.fc.dst, 0, 0));
}
}  // namespace

// Hand-worked cells: FY1 with FC2 in blocks against FY3 with TC3 in the tail, and
// FY5 with FC5 in the four-channel blocks.
TEST(Rgb420, KnownAnswersOfTheForwardForms) {
  const std::vector<std::array<int, 3>> cellA = {{37, 78, 17}, {157, 126, 15}, {174, 150, 85}, {44, 205, 246}};
  const std::vector<std::array<int, 3>> cellB = {{190, 161, 36}, {62, 11, 127}, {49, 200, 77}, {68, 87, 64}};
  for (const char* n : {"RGBToYCbCr420_C3P3R", "BGRToYCbCr420_C3P3R", "BGRToYCrCb420_C3P3R", "RGBToYCbCr420_C3P2R",
                        "RGBToYCbCr420_C4P2R", "BGRToYCbCr420_C3P2R", "BGRToYCbCr420_AC4P2R"}) {
    SCOPED_TRACE(n);
    EXPECT_EQ(forwardCell(byName(n), cellA, 16), (Bytes{67, 121, 145, 155, 111, 115}));  // FY1, FC2
    EXPECT_EQ(forwardCell(byName(n), cellA, 2), (Bytes{66, 121, 145, 155, 112, 115}));   // FY3, TC3
  }
  for (const char* n : {"BGRToYCbCr420_AC4P3R", "BGRToYCrCb420_AC4P3R", "RGBToYCrCb420_AC4P3R"}) {
    SCOPED_TRACE(n);
    EXPECT_EQ(forwardCell(byName(n), cellB, 16), (Bytes{149, 50, 137, 84, 114, 121}));  // FY5, FC5
    EXPECT_EQ(forwardCell(byName(n), cellB, 4), (Bytes{149, 50, 137, 84, 114, 121}));   // the step of 4
    EXPECT_EQ(forwardCell(byName(n), cellB, 2), (Bytes{150, 50, 137, 84, 114, 120}));   // FY3, TC3
  }
}

// The YUV tails, worked by hand. Planar and BGRA: luma y32 >> 16 per pixel,
// chroma of four times the cell's difference rounded by 32767, then >> 18; the
// cell's luma sum ends in exactly 0x8000, where 32767 and 32768 part (V 72, not
// 73). C3: the luma adds 2 before >> 14, which lifts only the first pixel (two
// below its next code), not the others (a rounding half would lift all four);
// its chroma rounds once (U 126, truncation would give 125).
TEST(Rgb420, KnownAnswersOfTheYuvTails) {
  const std::vector<std::array<int, 3>> cellA = {{113, 206, 188}, {112, 247, 142}, {23, 124, 31}, {148, 217, 183}};
  for (const char* n : {"RGBToYUV420_P3R", "RGBToYUV420_P3", "BGRToYUV420_AC4P3R"}) {
    SCOPED_TRACE(n);
    EXPECT_EQ(forwardCell(byName(n), cellA, 2), (Bytes{176, 194, 83, 192, 115, 72}));
  }
  const std::vector<std::array<int, 3>> cellB = {{74, 108, 127}, {90, 60, 30}, {17, 33, 250}, {250, 240, 10}};
  for (const char* n : {"RGBToYUV420_C3P3R", "RGBToYUV420_C3P3"}) {
    SCOPED_TRACE(n);
    EXPECT_EQ(forwardCell(byName(n), cellB, 2), (Bytes{100, 65, 52, 216, 126, 127}));
  }
}

TEST(Rgb420, KnownAnswersOfTheInverseForms) {
  struct Row {
    const char* name;
    int y, cb, cr, width;
    std::array<int, 3> rgb;
  };
  const Row rows[] = {
      {"YCbCr420ToRGB_P2C3R", 67, 164, 249, 16, {253, 0, 132}},  // IY4 with the 4:2:0 set
      {"YCbCr420ToRGB_P2C3R", 67, 164, 249, 2, {252, 0, 132}},   // SY1
      {"YCrCb420ToBGR_P2C4R", 67, 164, 249, 16, {253, 0, 132}},
      {"YCbCr420ToRGB_P2C3R", 62, 134, 98, 16, {6, 76, 66}},  // 4:2:2 offsets: 5, 75, 65
      {"YCrCb420ToRGB_P3C4R", 62, 134, 98, 8, {6, 76, 66}},
      {"YCrCb420ToBGR_P2C3R", 73, 137, 140, 2, {85, 53, 84}},  // SY1 (SY2 would give 86, 53, 85)
      {"YCrCb420ToRGB_P3C4R", 73, 137, 140, 6, {85, 53, 84}},
      {"YCrCb420ToRGB_P3C4R", 67, 164, 249, 8, {253, 0, 132}},
      {"YCrCb420ToRGB_P3C4R", 67, 164, 249, 6, {252, 0, 132}},
      {"YCbCr411ToBGR_P3C3R", 116, 236, 56, 8, {1, 133, 255}},  // IY1
      {"YCbCr411ToBGR_P3C4R", 116, 236, 56, 4, {2, 133, 255}},  // the 4:1:1 tail set
      {"YCbCr420ToRGB_P3C3R", 116, 236, 56, 2, {1, 133, 255}},  // SY1
      {"YUV420ToRGB_P3AC4R", 120, 210, 125, 8, {117, 90, 255}},  // IU5
      {"YUV420ToRGB_P3AC4R", 120, 210, 125, 6, {117, 89, 255}},  // SU3
      {"YUV420ToRGB_P3R", 120, 210, 125, 16, {116, 89, 255}},    // SU4
  };
  for (const Row& r : rows) {
    SCOPED_TRACE(testing::Message() << r.name << " width " << r.width);
    EXPECT_EQ(inverseCell(byName(r.name), r.y, r.cb, r.cr, r.width), r.rgb);
  }
}

// ---- relations between functions ------------------------------------------------

namespace {
// Random 4:2:0 planes at w x h (chroma w/2 x h/2), dense.
struct Yuv420 {
  int w, h;
  Bytes y, c1, c2;
  Yuv420(int w_, int h_, std::mt19937& rng) : w(w_), h(h_) {
    y.resize(size_t(w * h));
    c1.resize(size_t((w / 2) * (h / 2)));
    c2.resize(c1.size());
    for (auto* v : {&y, &c1, &c2})
      for (auto& b : *v) b = uint8_t(rng());
  }
  // Chroma repeated to full resolution.
  Bytes up(const Bytes& c) const {
    Bytes out(size_t(w * h));
    for (int yy = 0; yy < h; ++yy)
      for (int x = 0; x < w; ++x) out[size_t(yy * w + x)] = c[size_t((yy / 2) * (w / 2) + x / 2)];
    return out;
  }
};
}  // namespace

// The inverse 4:2:0 forms are the full-resolution forms on chroma repeated over
// each cell: same blocks, same tails.
TEST(Rgb420, RepeatedChromaMatchesTheFullResolutionInverse) {
  std::mt19937 rng(37);
  for (int w : {2, 6, 8, 14, 16, 22, 38, 40, 64}) {
    SCOPED_TRACE(testing::Message() << "width " << w);
    const int h = 4;
    Yuv420 in(w, h, rng);
    const Bytes u1 = in.up(in.c1), u2 = in.up(in.c2);
    const Lum8u* sub[3] = {in.y.data(), in.c1.data(), in.c2.data()};
    const int subSteps[3] = {w, w / 2, w / 2};
    const Lum8u* full[3] = {in.y.data(), u1.data(), u2.data()};
    Bytes a(size_t(4 * w * h)), b(a.size());
    auto same = [&](int bpp, int upTo) {
      for (int yy = 0; yy < h; ++yy)
        ASSERT_EQ(0, std::memcmp(a.data() + yy * w * bpp, b.data() + yy * w * bpp, size_t(upTo * bpp))) << "row " << yy;
    };
    ASSERT_EQ(lumiYCbCr420ToRGB_8u_P3C3R(sub, subSteps, a.data(), 3 * w, LumSize{w, h}), lumStatusOk);
    ASSERT_EQ(lumiYCbCrToRGB_8u_P3C3R(full, w, b.data(), 3 * w, LumSize{w, h}), lumStatusOk);
    same(3, w);
    ASSERT_EQ(lumiYCbCr420ToBGR_8u_P3C3R(sub, subSteps, a.data(), 3 * w, LumSize{w, h}), lumStatusOk);
    ASSERT_EQ(lumiYCbCrToBGR_8u_P3C3R(full, w, b.data(), 3 * w, LumSize{w, h}), lumStatusOk);
    same(3, w);
    ASSERT_EQ(lumiYCbCr420ToBGR_8u_P3C4R(sub, subSteps, a.data(), 4 * w, LumSize{w, h}, 9), lumStatusOk);
    ASSERT_EQ(lumiYCbCrToBGR_8u_P3C4R(full, w, b.data(), 4 * w, LumSize{w, h}, 9), lumStatusOk);
    same(4, w);
    // IU2 on every pixel against the full-resolution IU2 blocks of 16.
    ASSERT_EQ(lumiYUV420ToRGB_8u_P3C3R(sub, subSteps, a.data(), 3 * w, LumSize{w, h}), lumStatusOk);
    ASSERT_EQ(lumiYUVToRGB_8u_P3C3R(full, w, b.data(), 3 * w, LumSize{w, h}), lumStatusOk);
    same(3, w & ~15);
  }
}

// The YCrCb forms are the YCbCr forms with the chroma planes (or the bytes of
// each pair) exchanged; NV12 and YV12 give the same RGBA for the same chroma.
TEST(Rgb420, CrCbOrderOnlyMovesChroma) {
  std::mt19937 rng(41);
  for (int w : {6, 20, 38, 44}) {
    SCOPED_TRACE(testing::Message() << "width " << w);
    const int h = 4, cw = w / 2, ch = h / 2;
    Bytes bgra(size_t(4 * w * h));
    for (auto& v : bgra) v = uint8_t(rng());
    for (bool four : {false, true}) {
      Bytes y1(size_t(w * h)), y2(y1.size()), cb(size_t(cw * ch)), cr(cb.size()), cb2(cb.size()), cr2(cb.size());
      Lum8u* const ycbcr[3] = {y1.data(), cb.data(), cr.data()};
      Lum8u* const ycrcb[3] = {y2.data(), cr2.data(), cb2.data()};
      const int steps[3] = {w, cw, cw};
      if (four) {
        ASSERT_EQ(lumiBGRToYCbCr420_8u_AC4P3R(bgra.data(), 4 * w, ycbcr, steps, LumSize{w, h}), lumStatusOk);
        ASSERT_EQ(lumiBGRToYCrCb420_8u_AC4P3R(bgra.data(), 4 * w, ycrcb, steps, LumSize{w, h}), lumStatusOk);
      } else {
        ASSERT_EQ(lumiBGRToYCbCr420_8u_C3P3R(bgra.data(), 3 * w, ycbcr, steps, LumSize{w, h}), lumStatusOk);
        ASSERT_EQ(lumiBGRToYCrCb420_8u_C3P3R(bgra.data(), 3 * w, ycrcb, steps, LumSize{w, h}), lumStatusOk);
      }
      EXPECT_EQ(y1, y2);
      EXPECT_EQ(cb, cb2);
      EXPECT_EQ(cr, cr2);
    }
    // Inverse: NV12, NV21 and YV12 of the same samples.
    Yuv420 in(w, h, rng);
    Bytes nv12(size_t(w * ch)), nv21(nv12.size());
    for (int i = 0; i < cw * ch; ++i) {
      nv12[size_t(2 * i)] = nv21[size_t(2 * i + 1)] = in.c1[size_t(i)];
      nv12[size_t(2 * i + 1)] = nv21[size_t(2 * i)] = in.c2[size_t(i)];
    }
    const Lum8u* yv12[3] = {in.y.data(), in.c2.data(), in.c1.data()};
    const int steps[3] = {w, cw, cw};
    Bytes a(size_t(4 * w * h)), b(a.size()), c(a.size());
    ASSERT_EQ(lumiYCbCr420ToRGB_8u_P2C4R(in.y.data(), w, nv12.data(), w, a.data(), 4 * w, LumSize{w, h}, 1), 0);
    ASSERT_EQ(lumiYCrCb420ToRGB_8u_P2C4R(in.y.data(), w, nv21.data(), w, b.data(), 4 * w, LumSize{w, h}, 1), 0);
    ASSERT_EQ(lumiYCrCb420ToRGB_8u_P3C4R(yv12, steps, c.data(), 4 * w, LumSize{w, h}, 1), 0);
    EXPECT_EQ(a, b);
    EXPECT_EQ(a, c);
    ASSERT_EQ(lumiYCbCr420ToBGR_8u_P2C3R(in.y.data(), w, nv12.data(), w, a.data(), 3 * w, LumSize{w, h}), 0);
    ASSERT_EQ(lumiYCrCb420ToBGR_8u_P2C3R(in.y.data(), w, nv21.data(), w, b.data(), 3 * w, LumSize{w, h}), 0);
    EXPECT_EQ(a, b);
  }
}

// The BGR YUV form keeps IU2's R and B and may come out one code above it in G.
TEST(Rgb420, FineIU2StaysWithinACodeOfIU2) {
  std::mt19937 rng(47);
  const int w = 64, h = 8;
  Yuv420 in(w, h, rng);
  const Lum8u* sub[3] = {in.y.data(), in.c1.data(), in.c2.data()};
  const int steps[3] = {w, w / 2, w / 2};
  Bytes rgb(size_t(3 * w * h)), bgr(rgb.size());
  ASSERT_EQ(lumiYUV420ToRGB_8u_P3C3R(sub, steps, rgb.data(), 3 * w, LumSize{w, h}), 0);
  ASSERT_EQ(lumiYUV420ToBGR_8u_P3C3R(sub, steps, bgr.data(), 3 * w, LumSize{w, h}), 0);
  int above = 0;
  for (int i = 0; i < w * h; ++i) {
    EXPECT_EQ(bgr[size_t(3 * i + 2)], rgb[size_t(3 * i)]);
    EXPECT_EQ(bgr[size_t(3 * i)], rgb[size_t(3 * i + 2)]);
    const int d = bgr[size_t(3 * i + 1)] - rgb[size_t(3 * i + 1)];
    EXPECT_TRUE(d == 0 || d == 1) << d;
    above += d;
  }
  EXPECT_GT(above, 0);
}

// ---- alpha ----------------------------------------------------------------------

TEST(Rgb420, AlphaIsAvalOrZeroAndSourceAlphaIsIgnored) {
  std::mt19937 rng(53);
  for (const auto& c : cases()) {
    const ImageShape& rgb = rgbShape(c);
    if (rgb.array || rgb.planes[0].bpp != 4) continue;
    SCOPED_TRACE(c.fc.name);
    const LumSize roi{37, 5};
    CallImages a(c.fc, roi), b(c.fc, roi);
    ASSERT_EQ(run(a, c, roi, rng), c.fc.expected(roi));
    if (c.t.forward) {
      // Other source alpha, same output.
      for (size_t i = 0; i < a.src.size(); ++i) b.src[i].setBytes(a.src[i].bytes());
      for (int y = 0; y < roi.height; ++y)
        for (int x = 0; x < roi.width; ++x) b.src[0].row(y)[4 * x + 3] ^= 0xFF;
      b.fillDestination(0x5A);
      ASSERT_EQ(c.fc.call(b.buffers(), roi), c.fc.expected(roi));
      EXPECT_EQ(a.destinationBytes(), b.destinationBytes());
    } else {
      const int want = c.fc.name == "YUV420ToRGB_P3AC4R" ? 0 : kAval;
      const int wc = roi.width & ~(c.t.cellW - 1), hc = roi.height & ~(c.rows() - 1);
      for (int y = 0; y < hc; ++y)
        for (int x = 0; x < wc; ++x) ASSERT_EQ(a.dst[0].row(y)[4 * x + 3], want) << x << "," << y;
    }
  }
}

// ---- dense forms ---------------------------------------------------------------

// Each dense call equals its region form with dense steps, odd sizes included.
TEST(Rgb420, DenseFormsEqualTheRegionFormsWithDenseSteps) {
  std::mt19937 rng(59);
  for (int w : {2, 7, 16, 30, 33}) {
    for (int h : {2, 3, 6}) {
      SCOPED_TRACE(testing::Message() << w << "x" << h);
      const LumSize roi{w, h};
      const int cw = w / 2, ch = h / 2, steps[3] = {w, cw, cw};
      const LumStatus want = status420(roi);
      Bytes rgb(size_t(3 * w * h));
      for (auto& v : rgb) v = uint8_t(rng());
      // Outputs of the dense form and of the region form, each as three planes
      // over one buffer (4:2:0 planes, or RGB planes of w x h).
      struct Out {
        Bytes b;
        Lum8u* p[3];
        Out(size_t n0, size_t n1) : b(n0 + 2 * n1) { p[0] = b.data(), p[1] = p[0] + n0, p[2] = p[1] + n1; }
      };
      const size_t n = size_t(w * h), nc = size_t(cw * ch);
      Out y1(n, nc), y2(n, nc);
      const Lum8u* s3[3] = {rgb.data(), rgb.data() + n, rgb.data() + 2 * n};
      EXPECT_EQ(lumiRGBToYUV420_8u_C3P3(rgb.data(), y1.p, roi), want);
      EXPECT_EQ(lumiRGBToYUV420_8u_C3P3R(rgb.data(), 3 * w, y2.p, steps, roi), want);
      EXPECT_EQ(y1.b, y2.b) << "C3P3";
      EXPECT_EQ(lumiRGBToYUV420_8u_P3(s3, y1.p, roi), want);
      EXPECT_EQ(lumiRGBToYUV420_8u_P3R(s3, w, y2.p, steps, roi), want);
      EXPECT_EQ(y1.b, y2.b) << "P3";
      const Lum8u* yuv[3] = {y1.p[0], y1.p[1], y1.p[2]};
      Out o1(n, n), o2(n, n);
      EXPECT_EQ(lumiYUV420ToRGB_8u_P3C3(yuv, o1.b.data(), roi), want);
      EXPECT_EQ(lumiYUV420ToRGB_8u_P3C3R(yuv, steps, o2.b.data(), 3 * w, roi), want);
      EXPECT_EQ(o1.b, o2.b) << "P3C3";
      EXPECT_EQ(lumiYUV420ToRGB_8u_P3(yuv, o1.p, roi), want);
      EXPECT_EQ(lumiYUV420ToRGB_8u_P3R(yuv, steps, o2.p, w, roi), want);
      EXPECT_EQ(o1.b, o2.b) << "P3 out";
    }
  }
}
