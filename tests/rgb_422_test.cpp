// RGB <-> 4:2:2: argument checks, vector against scalar, column forms, odd widths,
// aligned twins, dense forms, and known answers of the family's edge cases.
#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <cstring>

#include "frame/simd.h"
#include "lumcc.h"
#include "support/family.h"

using namespace lumtest;

namespace {

// What becomes of an odd row's last pixel.
enum class Odd {
  NotWritten,  // forward: left as it was
  OneOff,      // packed source, other chroma from the left pair behind the one-off guard
  OneOffBGR,   // the same, stored B, G, R
  Exact,       // packed source, other chroma from the left pair; alone, its own byte twice
  OwnChroma,   // planar source: its own chroma sample
};

struct Case422 {
  FnCase fc;
  int cover;       // the block form covers width & ~(cover - 1) pixels
  bool forward;    // RGB -> 4:2:2
  bool yuv;        // YUV model
  std::array<int, 4> pair; // positions of Y0, Y1, Cb, Cr in a pair's bytes (over its planes)
  Odd odd = Odd::NotWritten;
  bool threeTap = false;    // chroma filtered across pairs
  bool alignShows = false;  // an aligned call runs other arithmetic
};

using B = Buffers;
const ImageShape C3 = packedImg(3), AC4 = packedImg(4), C2 = packedImg(2), P3 = planarImg(3);
// Planar 4:2:2: full-width luma, half-width chroma (rounded up where a lone last
// pixel has a sample of its own).
ImageShape p3h(bool roundUp) {
  ImageShape s = planarImg(3);
  s.planes[1] = s.planes[2] = PlaneShape{1, 2, 1, roundUp};
  return s;
}
const ImageShape P3hOut = p3h(false), P3hIn = p3h(true);

constexpr std::array<int, 4> kYCbCr{0, 2, 1, 3}, kYCrCb{0, 2, 3, 1}, kCbYCr{1, 3, 0, 2}, kPlanes{0, 1, 2, 3};

FnCase mk(const char* name, ImageShape s, ImageShape d, Order o, int minW, CallFn f) {
  FnCase c;
  c.name = name;
  c.src = std::move(s);
  c.dst = std::move(d);
  c.order = o;
  c.minWidth = minW;
  c.call = std::move(f);
  return c;
}
FnCase dense(FnCase c) {
  c.dense = true;
  return c;
}

const Lum8u kAval = 0xA7;

const std::vector<Case422>& cases() {
  static const std::vector<Case422> v = [] {
    std::vector<Case422> t;
    const auto NS = Order::NullSize, NSP = Order::NullSizePlanes;
    // ---- forward
    t.push_back({mk("RGBToYCbCr422_C3C2R", C3, C2, NS, 1, [](const B& b, LumSize r) {
                   return lumiRGBToYCbCr422_8u_C3C2R(b.srcPtr(), b.srcStep, b.dstPtr(), b.dstStep, r); }),
                 16, true, false, kYCbCr});
    t.push_back({mk("RGBToYCrCb422_C3C2R", C3, C2, NS, 1, [](const B& b, LumSize r) {
                   return lumiRGBToYCrCb422_8u_C3C2R(b.srcPtr(), b.srcStep, b.dstPtr(), b.dstStep, r); }),
                 16, true, false, kYCrCb});
    t.push_back({mk("RGBToCbYCr422_C3C2R", C3, C2, NS, 1, [](const B& b, LumSize r) {
                   return lumiRGBToCbYCr422_8u_C3C2R(b.srcPtr(), b.srcStep, b.dstPtr(), b.dstStep, r); }),
                 16, true, false, kCbYCr, Odd::NotWritten, true});
    t.push_back({mk("BGRToYCbCr422_C3C2R", C3, C2, NS, 2, [](const B& b, LumSize r) {
                   return lumiBGRToYCbCr422_8u_C3C2R(b.srcPtr(), b.srcStep, b.dstPtr(), b.dstStep, r); }),
                 16, true, false, kYCbCr});
    t.push_back({mk("BGRToYCbCr422_AC4C2R", AC4, C2, NS, 2, [](const B& b, LumSize r) {
                   return lumiBGRToYCbCr422_8u_AC4C2R(b.srcPtr(), b.srcStep, b.dstPtr(), b.dstStep, r); }),
                 16, true, false, kYCbCr});
    t.push_back({mk("BGRToCbYCr422_AC4C2R", AC4, C2, NS, 1, [](const B& b, LumSize r) {
                   return lumiBGRToCbYCr422_8u_AC4C2R(b.srcPtr(), b.srcStep, b.dstPtr(), b.dstStep, r); }),
                 8, true, false, kCbYCr});
    t.push_back({mk("RGBToYCbCr422_P3C2R", P3, C2, NSP, 1, [](const B& b, LumSize r) {
                   return lumiRGBToYCbCr422_8u_P3C2R(b.srcPlanes(), b.srcStep, b.dstPtr(), b.dstStep, r); }),
                 16, true, false, kYCbCr});
    t.push_back({mk("RGBToYCrCb422_P3C2R", P3, C2, NSP, 1, [](const B& b, LumSize r) {
                   return lumiRGBToYCrCb422_8u_P3C2R(b.srcPlanes(), b.srcStep, b.dstPtr(), b.dstStep, r); }),
                 16, true, false, kYCrCb});
    t.push_back({mk("RGBToYCbCr422_C3P3R", C3, P3hOut, NS, 2, [](const B& b, LumSize r) {
                   return lumiRGBToYCbCr422_8u_C3P3R(b.srcPtr(), b.srcStep, b.dstPlanes(), b.dstSteps, r); }),
                 8, true, false, kPlanes});
    t.push_back({mk("BGRToYCbCr422_C3P3R", C3, P3hOut, NS, 2, [](const B& b, LumSize r) {
                   return lumiBGRToYCbCr422_8u_C3P3R(b.srcPtr(), b.srcStep, b.dstPlanes(), b.dstSteps, r); }),
                 8, true, false, kPlanes});
    t.push_back({mk("BGRToYCbCr422_AC4P3R", AC4, P3hOut, NS, 2, [](const B& b, LumSize r) {
                   return lumiBGRToYCbCr422_8u_AC4P3R(b.srcPtr(), b.srcStep, b.dstPlanes(), b.dstSteps, r); }),
                 8, true, false, kPlanes});
    t.push_back({mk("RGBToYUV422_C3C2R", C3, C2, NS, 1, [](const B& b, LumSize r) {
                   return lumiRGBToYUV422_8u_C3C2R(b.srcPtr(), b.srcStep, b.dstPtr(), b.dstStep, r); }),
                 16, true, true, kYCbCr});
    Case422 yuvC3P3{mk("RGBToYUV422_C3P3R", C3, P3hOut, NSP, 1, [](const B& b, LumSize r) {
                      return lumiRGBToYUV422_8u_C3P3R(b.srcPtr(), b.srcStep, b.dstPlanes(), b.dstSteps, r); }),
                    16, true, true, kPlanes};
    yuvC3P3.alignShows = true;
    t.push_back(yuvC3P3);
    t.push_back({mk("RGBToYUV422_P3R", P3, P3hOut, NSP, 1, [](const B& b, LumSize r) {
                   return lumiRGBToYUV422_8u_P3R(b.srcPlanes(), b.srcStep, b.dstPlanes(), b.dstSteps, r); }),
                 16, true, true, kPlanes});
    Case422 denseC3P3{dense(mk("RGBToYUV422_C3P3", C3, P3hIn, NSP, 1, [](const B& b, LumSize r) {
                        return lumiRGBToYUV422_8u_C3P3(b.srcPtr(), b.dstPlanes(), r); })),
                      16, true, true, kPlanes};
    denseC3P3.alignShows = true;
    t.push_back(denseC3P3);
    t.push_back({dense(mk("RGBToYUV422_P3", P3, P3hIn, NSP, 1, [](const B& b, LumSize r) {
                   return lumiRGBToYUV422_8u_P3(b.srcPlanes(), b.dstPlanes(), r); })),
                 16, true, true, kPlanes});
    // ---- inverse
    t.push_back({mk("YCbCr422ToRGB_C2C3R", C2, C3, NS, 1, [](const B& b, LumSize r) {
                   return lumiYCbCr422ToRGB_8u_C2C3R(b.srcPtr(), b.srcStep, b.dstPtr(), b.dstStep, r); }),
                 16, false, false, kYCbCr, Odd::OneOffBGR});
    t.push_back({mk("YCbCr422ToBGR_C2C3R", C2, C3, NS, 2, [](const B& b, LumSize r) {
                   return lumiYCbCr422ToBGR_8u_C2C3R(b.srcPtr(), b.srcStep, b.dstPtr(), b.dstStep, r); }),
                 16, false, false, kYCbCr, Odd::OneOff});
    t.push_back({mk("YCrCb422ToRGB_C2C3R", C2, C3, NS, 1, [](const B& b, LumSize r) {
                   return lumiYCrCb422ToRGB_8u_C2C3R(b.srcPtr(), b.srcStep, b.dstPtr(), b.dstStep, r); }),
                 8, false, false, kYCrCb, Odd::Exact});
    t.push_back({mk("YCrCb422ToBGR_C2C3R", C2, C3, NS, 1, [](const B& b, LumSize r) {
                   return lumiYCrCb422ToBGR_8u_C2C3R(b.srcPtr(), b.srcStep, b.dstPtr(), b.dstStep, r); }),
                 8, false, false, kYCrCb, Odd::Exact});
    t.push_back({mk("CbYCr422ToRGB_C2C3R", C2, C3, NS, 1, [](const B& b, LumSize r) {
                   return lumiCbYCr422ToRGB_8u_C2C3R(b.srcPtr(), b.srcStep, b.dstPtr(), b.dstStep, r); }),
                 16, false, false, kCbYCr, Odd::OneOff});
    t.push_back({mk("YCbCr422ToRGB_C2C4R", C2, AC4, NS, 1, [](const B& b, LumSize r) {
                   return lumiYCbCr422ToRGB_8u_C2C4R(b.srcPtr(), b.srcStep, b.dstPtr(), b.dstStep, r, kAval); }),
                 8, false, false, kYCbCr, Odd::Exact});
    t.push_back({mk("YCbCr422ToBGR_C2C4R", C2, AC4, NS, 1, [](const B& b, LumSize r) {
                   return lumiYCbCr422ToBGR_8u_C2C4R(b.srcPtr(), b.srcStep, b.dstPtr(), b.dstStep, r, kAval); }),
                 8, false, false, kYCbCr, Odd::Exact});
    t.push_back({mk("YCrCb422ToRGB_C2C4R", C2, AC4, NS, 1, [](const B& b, LumSize r) {
                   return lumiYCrCb422ToRGB_8u_C2C4R(b.srcPtr(), b.srcStep, b.dstPtr(), b.dstStep, r, kAval); }),
                 8, false, false, kYCrCb, Odd::Exact});
    t.push_back({mk("YCrCb422ToBGR_C2C4R", C2, AC4, NS, 1, [](const B& b, LumSize r) {
                   return lumiYCrCb422ToBGR_8u_C2C4R(b.srcPtr(), b.srcStep, b.dstPtr(), b.dstStep, r, kAval); }),
                 8, false, false, kYCrCb, Odd::Exact});
    t.push_back({mk("CbYCr422ToBGR_C2C4R", C2, AC4, NS, 1, [](const B& b, LumSize r) {
                   return lumiCbYCr422ToBGR_8u_C2C4R(b.srcPtr(), b.srcStep, b.dstPtr(), b.dstStep, r, kAval); }),
                 8, false, false, kCbYCr, Odd::Exact});
    t.push_back({mk("YCbCr422ToRGB_C2P3R", C2, P3, NS, 1, [](const B& b, LumSize r) {
                   return lumiYCbCr422ToRGB_8u_C2P3R(b.srcPtr(), b.srcStep, b.dstPlanes(), b.dstStep, r); }),
                 8, false, false, kYCbCr, Odd::Exact});
    t.push_back({mk("YCrCb422ToRGB_C2P3R", C2, P3, NS, 1, [](const B& b, LumSize r) {
                   return lumiYCrCb422ToRGB_8u_C2P3R(b.srcPtr(), b.srcStep, b.dstPlanes(), b.dstStep, r); }),
                 8, false, false, kYCrCb, Odd::Exact});
    t.push_back({mk("YCbCr422ToRGB_P3C3R", P3hIn, C3, NS, 2, [](const B& b, LumSize r) {
                   return lumiYCbCr422ToRGB_8u_P3C3R(b.srcPlanes(), b.srcSteps, b.dstPtr(), b.dstStep, r); }),
                 8, false, false, kPlanes, Odd::OwnChroma});
    t.push_back({mk("YCbCr422ToBGR_P3C3R", P3hIn, C3, NS, 2, [](const B& b, LumSize r) {
                   return lumiYCbCr422ToBGR_8u_P3C3R(b.srcPlanes(), b.srcSteps, b.dstPtr(), b.dstStep, r); }),
                 8, false, false, kPlanes, Odd::OwnChroma});
    t.push_back({mk("YUV422ToRGB_C2C3R", C2, C3, NS, 1, [](const B& b, LumSize r) {
                   return lumiYUV422ToRGB_8u_C2C3R(b.srcPtr(), b.srcStep, b.dstPtr(), b.dstStep, r); }),
                 16, false, true, kYCbCr, Odd::Exact});
    t.push_back({mk("YUV422ToRGB_P3C3R", P3hIn, C3, NSP, 1, [](const B& b, LumSize r) {
                   return lumiYUV422ToRGB_8u_P3C3R(b.srcPlanes(), b.srcSteps, b.dstPtr(), b.dstStep, r); }),
                 16, false, true, kPlanes, Odd::OwnChroma});
    t.push_back({mk("YUV422ToRGB_P3AC4R", P3hIn, AC4, NSP, 1, [](const B& b, LumSize r) {
                   return lumiYUV422ToRGB_8u_P3AC4R(b.srcPlanes(), b.srcSteps, b.dstPtr(), b.dstStep, r); }),
                 4, false, true, kPlanes, Odd::OwnChroma});
    t.push_back({mk("YUV422ToRGB_P3R", P3hIn, P3, NSP, 1, [](const B& b, LumSize r) {
                   return lumiYUV422ToRGB_8u_P3R(b.srcPlanes(), b.srcSteps, b.dstPlanes(), b.dstStep, r); }),
                 16, false, true, kPlanes, Odd::OwnChroma});
    t.push_back({dense(mk("YUV422ToRGB_P3C3", P3hIn, C3, NSP, 1, [](const B& b, LumSize r) {
                   return lumiYUV422ToRGB_8u_P3C3(b.srcPlanes(), b.dstPtr(), r); })),
                 16, false, true, kPlanes, Odd::OwnChroma});
    t.push_back({dense(mk("YUV422ToRGB_P3", P3hIn, P3, NSP, 1, [](const B& b, LumSize r) {
                   return lumiYUV422ToRGB_8u_P3(b.srcPlanes(), b.dstPlanes(), r); })),
                 16, false, true, kPlanes, Odd::OwnChroma});
    // Half-width chroma planes with a step each: the 4:2:2 planar side of an R form.
    for (auto& c : t) {
      c.fc.srcStepArray = !c.fc.dense && c.fc.src.array && c.fc.src.planes[1].wDiv == 2;
      c.fc.dstStepArray = !c.fc.dense && c.fc.dst.array && c.fc.dst.planes[1].wDiv == 2;
    }
    return t;
  }();
  return v;
}

const Case422& byName(const std::string& n) {
  for (const auto& c : cases())
    if (c.fc.name == n) return c;
  throw std::invalid_argument(n);
}

// Bytes of pixel x (or of the pair starting at even x, pair = true), gathered over planes.
std::vector<uint8_t> unitBytes(const std::vector<GuardedImage>& img, const ImageShape& s, int x, int y, bool pair) {
  std::vector<uint8_t> out;
  for (size_t p = 0; p < img.size(); ++p) {
    const PlaneShape& ps = s.planes[p];
    const int n = pair ? ps.rowBytes(2) : ps.bpp;
    const uint8_t* r = img[p].row(y) + (pair ? ps.rowBytes(x) : x * ps.bpp);
    out.insert(out.end(), r, r + n);
  }
  return out;
}
void setUnitBytes(std::vector<GuardedImage>& img, const ImageShape& s, int x, int y, bool pair,
                  const std::vector<uint8_t>& v) {
  size_t k = 0;
  for (size_t p = 0; p < img.size(); ++p) {
    const PlaneShape& ps = s.planes[p];
    const int n = pair ? ps.rowBytes(2) : ps.bpp;
    std::memcpy(img[p].row(y) + (pair ? ps.rowBytes(x) : x * ps.bpp), v.data() + k, size_t(n));
    k += size_t(n);
  }
}

// The result (destination bytes of the pair) of converting the source pair (and
// the pixel before it, if any) placed in a row of `width` pixels at `at`; the
// rest of the row repeats the pair.
std::vector<uint8_t> convertPairIn(const Case422& c, const std::vector<uint8_t>& srcPair,
                                   const std::vector<uint8_t>* prevPixel, int width, int at) {
  CallImages ci(c.fc, LumSize{width, 1});
  for (int x = 0; x + 1 < width; x += 2) setUnitBytes(ci.src, c.fc.src, x, 0, true, srcPair);
  if (prevPixel) setUnitBytes(ci.src, c.fc.src, at - 1, 0, false, *prevPixel);
  ci.fillDestination(0x5A);
  EXPECT_EQ(c.fc.call(ci.buffers(), LumSize{width, 1}), lumStatusOk);
  return unitBytes(ci.dst, c.fc.dst, at, 0, true);
}

}  // namespace

TEST(Rgb422, RefusalsInCheckOrderLeaveDestinationUntouched) {
  for (const auto& c : cases()) checkRefusals(c.fc);
}

TEST(Rgb422, VectorBlocksMatchScalarTwinsAtEveryWidth) {
  for (const auto& c : cases()) checkVectorMatchesScalar(c.fc, blockWidths(), 3);
}

TEST(Rgb422, AlignmentDoesNotChangeSamples) {
  for (const auto& c : cases())
    if (!c.alignShows) checkAlignmentInvariance(c.fc, {1, 2, 7, 8, 15, 16, 17, 32, 48, 64, 100}, 4);
}

TEST(Rgb422, NegativeStepWalksBottomUp) {
  for (const auto& c : cases())
    if (!c.fc.dense) checkNegativeStep(c.fc, 37, 5);
}

// Each pair takes the block form or the tail form by its position alone: pairs
// below width & ~(cover - 1) equal the same pair converted inside a full block,
// the others the pair converted alone in a tail. For the filtered chroma the
// pixel before the pair goes along.
TEST(Rgb422, EachPairTakesItsRowsForm) {
  std::mt19937 rng(11);
  for (const auto& c : cases()) {
    if (c.fc.dense) continue;
    SCOPED_TRACE(c.fc.name);
    for (int w : {2, 4, 6, 8, 10, 14, 16, 18, 22, 24, 30, 32, 34, 40, 47, 49}) {
      CallImages ci(c.fc, LumSize{w, 1});
      ci.randomizeSource(rng);
      ci.fillDestination(0x5A);
      ASSERT_EQ(c.fc.call(ci.buffers(), LumSize{w, 1}), lumStatusOk);
      const int blockEnd = w & ~(c.cover - 1);
      for (int x = 0; x + 1 < w; x += 2) {
        const auto src = unitBytes(ci.src, c.fc.src, x, 0, true);
        std::vector<uint8_t> prev;
        if (c.threeTap && x > 0) prev = unitBytes(ci.src, c.fc.src, x - 1, 0, false);
        const std::vector<uint8_t>* pp = prev.empty() ? nullptr : &prev;
        // Inside a 32-wide row the pair is in a block; in a row that ends with it, in a tail.
        const auto want = x + 2 <= blockEnd ? convertPairIn(c, src, pp, 32, pp || !c.threeTap ? 2 : 0)
                                            : convertPairIn(c, src, pp, pp ? 4 : 2, pp ? 2 : 0);
        ASSERT_EQ(unitBytes(ci.dst, c.fc.dst, x, 0, true), want) << "width " << w << " pair at " << x;
      }
    }
  }
}

// ---- odd widths

// On the way in, an odd last pixel has no partner: its destination bytes stay
// as they were and the call still succeeds.
TEST(Rgb422, OddLastColumnIsNotWrittenOnTheWayIn) {
  std::mt19937 rng(3);
  for (const auto& c : cases()) {
    if (!c.forward) continue;
    SCOPED_TRACE(c.fc.name);
    for (int w : {1, 3, 17, 33}) {
      if (w < c.fc.minWidth) continue;
      CallImages ci(c.fc, LumSize{w, 2});
      ci.randomizeSource(rng);
      ci.fillDestination(0x5A);
      ASSERT_EQ(c.fc.call(ci.buffers(), LumSize{w, 2}), lumStatusOk);
      for (int y = 0; y < 2; ++y) {
        // The luma plane (or the packed row) holds the lone pixel's bytes at its end.
        const GuardedImage& d = ci.dst[0];
        const int bpp = c.fc.dst.array ? 1 : 2;
        for (int k = 0; k < bpp; ++k) EXPECT_EQ(d.row(y)[(w - 1) * bpp + k], 0x5A) << "width " << w;
      }
      if (c.fc.dense) {  // the chroma rows of a dense image are rounded up; their last sample stays too
        for (int p = 1; p < 3; ++p) EXPECT_EQ(ci.dst[size_t(p)].row(1)[w / 2], 0x5A);
      }
    }
  }
}

// On the way out, the last pixel of an odd row comes from a half pair. Its other
// chroma is the left pair's; the three YCbCr422 / CbYCr422 -> RGB functions
// guard that with width >> 1 against 1, so width 3 uses the pixel's own byte
// twice and width 1 reads the byte before the row. YCbCr422ToRGB_C2C3R stores
// that pixel as B, G, R.
TEST(Rgb422, OddLastPixelOnTheWayOut) {
  std::mt19937 rng(5);
  for (const auto& c : cases()) {
    if (c.forward || c.fc.dense) continue;
    SCOPED_TRACE(c.fc.name);
    for (int w : {1, 3, 5, 9, 19, 33}) {
      if (w < c.fc.minWidth || (w == 1 && c.fc.name == "YUV422ToRGB_C2C3R")) continue;  // its own path, below
      SCOPED_TRACE(testing::Message() << "width " << w);
      CallImages ci(c.fc, LumSize{w, 1});
      ci.randomizeSource(rng);
      ci.fillDestination(0x5A);
      ASSERT_EQ(c.fc.call(ci.buffers(), LumSize{w, 1}), lumStatusOk);
      // The pixel the function should have seen, as a whole pair of two equal lumas.
      const int x = w - 1;
      int y = 0, own = 0, other = 0;
      if (c.odd == Odd::OwnChroma) {
        y = ci.src[0].row(0)[x];
        own = ci.src[1].row(0)[x / 2];
        other = ci.src[2].row(0)[x / 2];
      } else {
        const uint8_t* half = ci.src[0].row(0) + 2 * x;
        const bool lumaFirst = c.pair[0] == 0;
        y = half[lumaFirst ? 0 : 1];
        own = half[lumaFirst ? 1 : 0];
        // The other chroma sits in the left pair at its position less 4.
        const int otherPos = c.pair[2] == (lumaFirst ? 1 : 0) ? c.pair[3] : c.pair[2];
        const bool left = c.odd == Odd::Exact ? w >= 3 : (w >> 1) != 1;
        other = left ? half[otherPos - 4] : own;
      }
      // pair bytes: Y0, Y1 both y; the half pair's own chroma and the other in their places
      const bool ownIsCb = c.odd == Odd::OwnChroma || c.pair[2] == (c.pair[0] == 0 ? 1 : 0);
      std::vector<uint8_t> yc(4);
      yc[size_t(c.pair[0])] = yc[size_t(c.pair[1])] = uint8_t(y);
      yc[size_t(c.pair[2])] = uint8_t(ownIsCb ? own : other);
      yc[size_t(c.pair[3])] = uint8_t(ownIsCb ? other : own);
      // Convert it as a whole pair alone (the tail form) and take its first pixel.
      const auto full = convertPairIn(c, yc, nullptr, 2, 0);
      std::vector<uint8_t> want;
      if (c.fc.dst.array) want = {full[0], full[2], full[4]};  // planes gathered R0 R1 G0 G1 B0 B1
      else want.assign(full.begin(), full.begin() + long(full.size() / 2));
      if (c.odd == Odd::OneOffBGR) std::swap(want[0], want[2]);
      const auto got = unitBytes(ci.dst, c.fc.dst, x, 0, false);
      ASSERT_EQ(got, want);
      if (w > 1) {  // the rest of the row is the even-width conversion
        CallImages even(c.fc, LumSize{w - 1, 1});
        for (size_t p = 0; p < even.src.size(); ++p)
          for (int i = 0; i < even.src[p].rowBytes(); ++i) even.src[p].row(0)[i] = ci.src[p].row(0)[i];
        ASSERT_EQ(c.fc.call(even.buffers(), LumSize{w - 1, 1}), lumStatusOk);
        for (int i = 0; i < x; ++i)
          ASSERT_EQ(unitBytes(ci.dst, c.fc.dst, i, 0, false), unitBytes(even.dst, c.fc.dst, i, 0, false)) << i;
      }
    }
  }
}

// Width 1 of YCbCr422ToRGB_C2C3R reads the byte before the row as Cr (the
// one-off guard); the pixel is stored B, G, R.
TEST(Rgb422, WidthOneReadsTheByteBeforeTheRow) {
  const uint8_t row[] = {200 /* before: Cr */, 120, 60};  // Y = 120, Cb = 60
  uint8_t out[3];
  ASSERT_EQ(lumiYCbCr422ToRGB_8u_C2C3R(row + 1, 2, out, 3, LumSize{1, 1}), lumStatusOk);
  // SY1 on (120, 60, 200).
  const int y = 76282 * (120 - 16) + 32768, u = 60 - 128, v = 200 - 128;
  auto c8 = [](int a) { return std::min(255, std::max(0, a)); };
  EXPECT_EQ(out[2], c8((y + 104593 * v) >> 16));  // R last
  EXPECT_EQ(out[1], c8((y - 25689 * u - 53279 * v) >> 16));
  EXPECT_EQ(out[0], c8((y + 132184 * u) >> 16));
  const uint8_t uyvy[] = {200 /* Cr, two bytes before */, 0, 60, 120};  // Cb = 60, Y = 120
  ASSERT_EQ(lumiCbYCr422ToRGB_8u_C2C3R(uyvy + 2, 2, out, 3, LumSize{1, 1}), lumStatusOk);
  EXPECT_EQ(out[0], c8((y + 104593 * v) >> 16));  // R first: its own order
  EXPECT_EQ(out[2], c8((y + 132184 * u) >> 16));
}

// ---- known answers

// The planar inverse tail on one pair where its coefficients part from the
// packed tail's: G 24 here, 23 with the other set.
TEST(Rgb422, PlanarInverseTailKnownAnswer) {
  const uint8_t pair[4] = {20, 138, 20, 100};  // Y0 Cb Y1 Cr
  uint8_t r[2], g[2], b[2];
  Lum8u* const planes[3] = {r, g, b};
  ASSERT_EQ(lumiYCbCr422ToRGB_8u_C2P3R(pair, 4, planes, 2, LumSize{2, 1}), lumStatusOk);
  for (int x = 0; x < 2; ++x) EXPECT_EQ((std::array<int, 3>{r[x], g[x], b[x]}), (std::array<int, 3>{0, 24, 25})) << x;
}

// Black and white in, studio range out; zero luma out, black (alpha aside):
// in the tail (width 2) and in a block (width 32) alike.
TEST(Rgb422, StudioRangeEndsInBlockAndTail) {
  for (const auto& c : cases()) {
    if (c.yuv) continue;
    SCOPED_TRACE(c.fc.name);
    for (int w : {2, 32}) {
      const int at = w == 2 ? 0 : 2;
      if (c.forward) {
        const size_t n = c.fc.src.array ? 6 : size_t(2 * c.fc.src.planes[0].bpp);
        for (int v : {0, 255}) {
          const auto out = convertPairIn(c, std::vector<uint8_t>(n, uint8_t(v)), nullptr, w, at);
          const int want[4] = {v ? 235 : 16, v ? 235 : 16, 128, 128};
          for (int k = 0; k < 4; ++k) EXPECT_EQ(out[size_t(c.pair[size_t(k)])], want[k]) << v << " width " << w;
        }
        continue;
      }
      std::vector<uint8_t> yc(4, 128);
      yc[size_t(c.pair[0])] = yc[size_t(c.pair[1])] = 0;
      const auto out = convertPairIn(c, yc, nullptr, w, at);
      for (size_t k = 0; k < out.size(); ++k)
        if (c.fc.dst.array || out.size() != 8 || k % 4 != 3) {  // not alpha
          EXPECT_EQ(out[k], 0) << "byte " << k;
        }
    }
  }
}

// A pair of equal pixels gives the chroma of that pixel, as the full-resolution
// tail (FY3) rounds it, in TC1; TC2 rounds at an eighth instead of a half.
TEST(Rgb422, EqualPairsGiveThePixelsChroma) {
  std::mt19937 rng(17);
  int tc2Lower = 0;
  for (int i = 0; i < 500; ++i) {
    const uint8_t px[3] = {uint8_t(rng()), uint8_t(rng()), uint8_t(rng())};
    uint8_t full[3], tc1[4], tc2[4];
    ASSERT_EQ(lumiRGBToYCbCr_8u_C3R(px, 3, full, 3, LumSize{1, 1}), lumStatusOk);
    const uint8_t pair[6] = {px[0], px[1], px[2], px[0], px[1], px[2]};
    const uint8_t bgr[6] = {px[2], px[1], px[0], px[2], px[1], px[0]};
    ASSERT_EQ(lumiRGBToYCbCr422_8u_C3C2R(pair, 6, tc1, 4, LumSize{2, 1}), lumStatusOk);
    ASSERT_EQ(lumiBGRToYCbCr422_8u_C3C2R(bgr, 6, tc2, 4, LumSize{2, 1}), lumStatusOk);
    EXPECT_EQ(tc1[0], full[0]);
    EXPECT_EQ(tc1[1], full[1]);
    EXPECT_EQ(tc1[3], full[2]);
    EXPECT_EQ(tc2[0], full[0]);
    EXPECT_EQ(tc2[2], full[0]);
    EXPECT_LE(full[1] - tc2[1], 1);
    EXPECT_GE(full[1] - tc2[1], 0);
    tc2Lower += full[1] != tc2[1];
  }
  EXPECT_GT(tc2Lower, 100);  // rounding at 1/8 instead of 1/2: about 3 in 8 lower
}

// In the TC1 tail the odd pixel's luma truncates: one lower than the even
// pixel's for some colours; TC2 and the block never split a flat pair.
TEST(Rgb422, OddLumaOfTC1CanBeOneLower) {
  int lower = 0;
  for (int g = 0; g < 256; g += 3) {
    const uint8_t pair[6] = {uint8_t(g), uint8_t(g), uint8_t(255 - g), uint8_t(g), uint8_t(g), uint8_t(255 - g)};
    uint8_t tail[4], tc2[4];
    ASSERT_EQ(lumiRGBToYCbCr422_8u_C3C2R(pair, 6, tail, 4, LumSize{2, 1}), lumStatusOk);
    ASSERT_EQ(lumiBGRToYCbCr422_8u_C3C2R(pair, 6, tc2, 4, LumSize{2, 1}), lumStatusOk);
    ASSERT_TRUE(tail[2] == tail[0] || tail[2] + 1 == tail[0]);
    lower += tail[2] + 1 == tail[0];
    EXPECT_EQ(tc2[0], tc2[2]);
  }
  EXPECT_GT(lower, 20);
}

// The first pair of a row has no pixel before it: its chroma has only the
// weights 1/2 and 1/4 around 128, in the block and in the tail alike.
TEST(Rgb422, ThreeTapChromaFallsShortAtTheRowStart) {
  for (int w : {6, 32}) {
    std::vector<uint8_t> row(size_t(3 * w));
    for (int x = 0; x < w; ++x) {
      row[size_t(3 * x)] = 20;
      row[size_t(3 * x + 1)] = 40;
      row[size_t(3 * x + 2)] = 240;  // strong blue: Cb far above 128
    }
    std::vector<uint8_t> out(size_t(2 * w));
    ASSERT_EQ(lumiRGBToCbYCr422_8u_C3C2R(row.data(), 3 * w, out.data(), 2 * w, LumSize{w, 1}), lumStatusOk);
    const int full = out[4], first = out[0];  // Cb of pairs 1 and 0
    EXPECT_NEAR(full, 128 - 0.148 * 20 - 0.291 * 40 + 0.439 * 240, 1.0) << w;
    EXPECT_NEAR(first - 128, 0.75 * (full - 128), 1.0) << w;
    for (int x = 4; x < 2 * w; x += 4) EXPECT_EQ(out[size_t(x)], full) << w;
  }
}

// Width 1 of YUV422ToRGB_C2C3R: one chroma sample serves as U and V, with no
// rounding add; width 2 runs the ordinary tail (SU3, rounded, U and V apart).
TEST(Rgb422, YuvWidthOneUsesItsOneChromaSampleTwice) {
  const uint8_t src[4] = {100, 200, 100, 60};  // Y U Y V
  uint8_t one[3], two[6];
  ASSERT_EQ(lumiYUV422ToRGB_8u_C2C3R(src, 4, one, 3, LumSize{1, 1}), lumStatusOk);
  ASSERT_EQ(lumiYUV422ToRGB_8u_C2C3R(src, 4, two, 6, LumSize{2, 1}), lumStatusOk);
  const int y = 100 << 16, c = 200 - 128;
  EXPECT_EQ(one[0], std::min(255, (y + 74711 * c) >> 16));
  EXPECT_EQ(one[1], (y - 63897 * c) >> 16);
  EXPECT_EQ(one[2], std::min(255, (y + 133169 * c) >> 16));
  const int u = 200 - 128, v = 60 - 128;
  EXPECT_EQ(two[0], (y + 74711 * v + 32768) >> 16);
  EXPECT_EQ(two[1], (y - 25821 * u - 38076 * v + 32768) >> 16);
  EXPECT_EQ(two[2], std::min(255, (y + 133169 * u + 32768) >> 16));
  EXPECT_EQ(std::memcmp(two, two + 3, 3), 0);
}

TEST(Rgb422, AlphaIsAvalOrZeroInEveryPixel) {
  for (const auto& c : cases()) {
    if (c.forward || c.fc.dst.array || c.fc.dst.planes[0].bpp != 4) continue;
    SCOPED_TRACE(c.fc.name);
    const int want = c.yuv ? 0 : kAval;
    for (int w : {1, 7, 37}) {
      CallImages ci(c.fc, LumSize{w, 2});
      std::mt19937 rng(4);
      ci.randomizeSource(rng);
      ci.fillDestination(0x11);
      ASSERT_EQ(c.fc.call(ci.buffers(), LumSize{w, 2}), lumStatusOk);
      for (int y = 0; y < 2; ++y)
        for (int x = 0; x < w; ++x) EXPECT_EQ(ci.dst[0].row(y)[4 * x + 3], want) << x;
    }
  }
}

// ---- paths chosen by alignment

// RGBToYUV422_8u_C3P3R on an all-aligned call runs its own kernel: the samples
// may differ by one code value on some pixels, and V wraps below zero there.
TEST(Rgb422, AlignedYuvPlanarKernelDiffersByOne) {
  const Case422& c = byName("RGBToYUV422_C3P3R");
  const LumSize roi{64, 8};
  ImageOptions al, un;
  al.alignOffset = 0;
  al.padBytes = 16;
  al.stepAlign = 16;
  un = al;
  un.alignOffset = 3;
  CallImages a(c.fc, roi, al), u(c.fc, roi, un);
  std::mt19937 rng(9);
  a.randomizeSource(rng);
  for (size_t i = 0; i < a.src.size(); ++i) u.src[i].setBytes(a.src[i].bytes());
  ASSERT_EQ(c.fc.call(a.buffers(), roi), lumStatusOk);
  ASSERT_EQ(c.fc.call(u.buffers(), roi), lumStatusOk);
  const auto da = a.destinationBytes(), du = u.destinationBytes();
  int differ = 0;
  for (size_t i = 0; i < da.size(); ++i) {
    EXPECT_LE(std::abs(int(da[i]) - int(du[i])), 1) << i;
    differ += da[i] != du[i];
  }
  EXPECT_GT(differ, 0);
  EXPECT_LT(differ, int(da.size()) / 4);
  // Pure green: V below zero. The general kernel clamps it to 0, and so does the
  // aligned kernel's block; its tail limits V at the top only and keeps the low
  // byte of -3.
  for (auto* ci : {&a, &u})
    for (int y = 0; y < roi.height; ++y)
      for (int x = 0; x < roi.width; ++x) {
        ci->src[0].row(y)[3 * x] = 0;
        ci->src[0].row(y)[3 * x + 1] = 255;
        ci->src[0].row(y)[3 * x + 2] = 0;
      }
  ASSERT_EQ(c.fc.call(a.buffers(), LumSize{18, 1}), lumStatusOk);  // 16 by the block, one pair by the tail
  ASSERT_EQ(c.fc.call(u.buffers(), LumSize{18, 1}), lumStatusOk);
  for (int k = 0; k < 9; ++k) {
    EXPECT_EQ(u.dst[2].row(0)[k], 0) << k;
    EXPECT_EQ(a.dst[2].row(0)[k], k < 8 ? 0 : 253) << k;
  }
}

// ---- dense forms

// A dense call equals the R form on the same memory with the derived steps when
// it does not fold (fewer than 256 pixels or an odd width), and the R form on
// one long row of the largest multiple of 8 pixels, then one of the rest, when
// it folds.
TEST(Rgb422, DenseFormsAgainstTheRForms) {
  struct Pair {
    const char* dense;
    const char* r;
  };
  const Pair pairs[] = {{"RGBToYUV422_C3P3", "RGBToYUV422_C3P3R"},
                        {"RGBToYUV422_P3", "RGBToYUV422_P3R"},
                        {"YUV422ToRGB_P3C3", "YUV422ToRGB_P3C3R"},
                        {"YUV422ToRGB_P3", "YUV422ToRGB_P3R"}};
  std::mt19937 rng(13);
  for (const Pair& p : pairs) {
    const Case422& d = byName(p.dense);
    const Case422& r = byName(p.r);
    SCOPED_TRACE(p.dense);
    for (LumSize roi : {LumSize{6, 4}, LumSize{15, 20}, LumSize{16, 16}, LumSize{30, 9}, LumSize{42, 7}, LumSize{2, 200}}) {
      SCOPED_TRACE(testing::Message() << roi.width << "x" << roi.height);
      const int64_t n = int64_t(roi.width) * roi.height;
      const bool folds = n >= 256 && roi.width % 2 == 0;
      ImageOptions odd;  // unaligned, so that the R form takes the general kernel
      odd.alignOffset = 1;
      CallImages dc(d.fc, roi, odd);
      dc.randomizeSource(rng);
      dc.fillDestination(0x5A);
      ASSERT_EQ(d.fc.call(dc.buffers(), roi), lumStatusOk);
      ASSERT_TRUE(dc.canariesIntact());
      // The R form on the dense image's own memory and derived steps.
      CallImages rc(d.fc, roi, odd);
      for (size_t i = 0; i < rc.src.size(); ++i) rc.src[i].setBytes(dc.src[i].bytes());
      rc.fillDestination(0x5A);
      Buffers b = rc.buffers();
      if (!folds) {
        ASSERT_EQ(r.fc.call(b, roi), lumStatusOk);
      } else {
        const int n1 = int(n & ~int64_t(7));
        for (int part = 0; part < 2; ++part) {
          const int x0 = part ? n1 : 0, len = part ? int(n - n1) : n1;
          if (len == 0) continue;
          std::vector<const uint8_t*> sp;
          std::vector<uint8_t*> dp;
          for (size_t i = 0; i < rc.src.size(); ++i)
            sp.push_back(rc.srcPtrs[i] + (i && !d.forward ? x0 / 2 : x0) * (rc.src.size() == 1 ? 3 : 1));
          for (size_t i = 0; i < rc.dst.size(); ++i)
            dp.push_back(rc.dstPtrs[i] + (i && d.forward ? x0 / 2 : x0) * (rc.dst.size() == 1 ? 3 : 1));
          Buffers pb = b;
          pb.src = sp.size() == 1 ? static_cast<const void*>(sp[0]) : static_cast<const void*>(sp.data());
          pb.dst = dp.size() == 1 ? static_cast<void*>(dp[0]) : static_cast<void*>(dp.data());
          ASSERT_EQ(r.fc.call(pb, LumSize{len, 1}), lumStatusOk);
        }
      }
      ASSERT_EQ(dc.destinationBytes(), rc.destinationBytes()) << (folds ? "folded" : "row by row");
    }
  }
}

// ---- known answers

// Digests of each function's output for a fixed 45x2 image (bytes from a linear
// congruential generator, region bytes plane by plane and row by row; the
// destination prefilled with 0x5A, so unwritten bytes count too). They were
// computed by a separate model of the documented arithmetic, not by this code:
// any change of a form, a block boundary or an odd-column rule shows here.
TEST(Rgb422, OutputsMatchIndependentDigests) {
  struct Digest {
    const char* name;
    uint32_t fnv;
  };
  const Digest digests[] = {
    {"RGBToYCbCr422_C3C2R", 0xAE7FA85Eu},
    {"RGBToYCrCb422_C3C2R", 0x47A1FD92u},
    {"RGBToCbYCr422_C3C2R", 0x9DA66B40u},
    {"BGRToYCbCr422_C3C2R", 0xCC76588Fu},
    {"BGRToYCbCr422_AC4C2R", 0xB9BB1CE9u},
    {"BGRToCbYCr422_AC4C2R", 0x917BA3EEu},
    {"RGBToYCbCr422_P3C2R", 0x365AB23Bu},
    {"RGBToYCrCb422_P3C2R", 0x37009E83u},
    {"RGBToYCbCr422_C3P3R", 0xA926569Cu},
    {"BGRToYCbCr422_C3P3R", 0x02ED831Du},
    {"BGRToYCbCr422_AC4P3R", 0x5DDC0486u},
    {"RGBToYUV422_C3C2R", 0x9A5142B3u},
    {"RGBToYUV422_C3P3R", 0x63422D00u},
    {"RGBToYUV422_P3R", 0xCF7633F6u},
    {"YCbCr422ToRGB_C2C3R", 0x07C43E24u},
    {"YCbCr422ToBGR_C2C3R", 0xD78F1528u},
    {"YCrCb422ToRGB_C2C3R", 0x6125DAD8u},
    {"YCrCb422ToBGR_C2C3R", 0x4F250034u},
    {"CbYCr422ToRGB_C2C3R", 0x62E84935u},
    {"YCbCr422ToRGB_C2C4R", 0xF86A33C8u},
    {"YCbCr422ToBGR_C2C4R", 0x65C470AEu},
    {"YCrCb422ToRGB_C2C4R", 0xD4563646u},
    {"YCrCb422ToBGR_C2C4R", 0x5AFBAACAu},
    {"CbYCr422ToBGR_C2C4R", 0xF53F3E8Du},
    {"YCbCr422ToRGB_C2P3R", 0x51CC4CD1u},
    {"YCrCb422ToRGB_C2P3R", 0xA229D8F1u},
    {"YCbCr422ToRGB_P3C3R", 0x15449D18u},
    {"YCbCr422ToBGR_P3C3R", 0x8D7DE5A0u},
    {"YUV422ToRGB_C2C3R", 0x98A9D4C4u},
    {"YUV422ToRGB_P3C3R", 0xCCF7DEC4u},
    {"YUV422ToRGB_P3AC4R", 0x86666932u},
    {"YUV422ToRGB_P3R", 0x7644C852u},
    // the kernel of all-aligned calls
    {"RGBToYUV422_C3P3R aligned", 0x7263B9CDu},
  };
  for (int narrowOnly = 0; narrowOnly < 2; ++narrowOnly)
  for (const Digest& dg : digests) {
    lum::setWideEnabled(narrowOnly == 0);
    SCOPED_TRACE(narrowOnly ? "128-bit blocks" : "widest blocks");
    std::string name = dg.name;
    const bool aligned = name.ends_with(" aligned");
    if (aligned) name.resize(name.size() - 8);
    const Case422& c = byName(name);
    SCOPED_TRACE(dg.name);
    ImageOptions opt;
    if (aligned) {
      opt.alignOffset = 0;
      opt.padBytes = 16;
      opt.stepAlign = 16;
    }
    const LumSize roi{45, 2};
    CallImages ci(c.fc, roi, opt);
    uint32_t x = c.forward ? 1 : 2;
    for (auto& img : ci.src)
      for (int y = 0; y < roi.height; ++y)
        for (int i = 0; i < img.rowBytes(); ++i) {
          x = x * 1103515245u + 12345u;
          img.row(y)[i] = uint8_t(x >> 24);
        }
    ci.fillDestination(0x5A);
    ASSERT_EQ(c.fc.call(ci.buffers(), roi), lumStatusOk);
    uint32_t h = 0x811c9dc5u;
    for (uint8_t b : ci.destinationBytes()) h = (h ^ b) * 0x01000193u;
    EXPECT_EQ(h, dg.fnv);
  }
  lum::setWideEnabled(true);
}
