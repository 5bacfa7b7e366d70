// Field-aware 4:2:2 <-> 4:2:0 conversions.
#include <gtest/gtest.h>

#include <cstring>

#include "lumcc.h"
#include "support/family.h"

using namespace lumtest;

namespace {

using B = Buffers;
const PlaneShape kFull{1, 1, 1}, kHalf420{1, 2, 2}, kHalf422{1, 2, 1};
const ImageShape kP420 = planesImg({kFull, kHalf420, kHalf420});
const ImageShape kP422 = planesImg({kFull, kHalf422, kHalf422});
const ImageShape kUyvy = packedImg(2);

LumStatus oddStatus(LumSize r) { return (r.width & 1) || (r.height & 3) ? lumStatusOddSize : lumStatusOk; }

struct Case {
  FnCase fc;
  bool down;       // 4:2:2 -> 4:2:0
  bool packedSrc;  // CbYCr422 source
  bool packedDst;  // CbYCr422 destination
};

Case mk(const char* name, ImageShape s, ImageShape d, bool down, CallFn f) {
  FnCase c;
  c.name = name;
  c.src = std::move(s);
  c.dst = std::move(d);
  c.call = std::move(f);
  c.minWidth = 2;
  c.minHeight = 4;
  c.statusFor = oddStatus;
  return {c, down, !c.src.array, !c.dst.array};
}

const std::vector<Case>& cases() {
  static const std::vector<Case> v = {
      mk("YCbCr422To420_Interlace_P3R", kP422, kP420, true,
         [](const B& b, LumSize r) {
           return lumiYCbCr422To420_Interlace_8u_P3R(b.srcPlanes(), b.srcSteps, b.dstPlanes(), b.dstSteps, r);
         }),
      mk("CbYCr422ToYCbCr420_Interlace_C2P3R", kUyvy, kP420, true,
         [](const B& b, LumSize r) {
           return lumiCbYCr422ToYCbCr420_Interlace_8u_C2P3R(b.srcPtr(), b.srcStep, b.dstPlanes(), b.dstSteps, r);
         }),
      mk("YCbCr420To422_Interlace_P3R", kP420, kP422, false,
         [](const B& b, LumSize r) {
           return lumiYCbCr420To422_Interlace_8u_P3R(b.srcPlanes(), b.srcSteps, b.dstPlanes(), b.dstSteps, r);
         }),
      mk("YCbCr420ToCbYCr422_Interlace_P3C2R", kP420, kUyvy, false,
         [](const B& b, LumSize r) {
           return lumiYCbCr420ToCbYCr422_Interlace_8u_P3C2R(b.srcPlanes(), b.srcSteps, b.dstPtr(), b.dstStep, r);
         }),
  };
  return v;
}

// Samples of an image in planar terms, whatever its layout: plane 0 is luma
// (x counts pixels), planes 1 and 2 are Cb and Cr (x counts chroma samples).
size_t offsetOf(bool packed, int plane, int x) {
  if (!packed) return size_t(x);
  return plane == 0 ? size_t(2 * x + 1) : size_t(4 * x + (plane == 1 ? 0 : 2));
}
int sample(const std::vector<GuardedImage>& img, bool packed, int plane, int r, int x) {
  return img[packed ? 0 : size_t(plane)].row(r)[offsetOf(packed, plane, x)];
}

// One output row of a field filter: (wa * upper + wb * lower + round) >> shift.
struct Weighted {
  int out, wa, wb, shift, upper, lower;
};

// Chroma rows as the family's tables give them, for a masked height h.
std::vector<Weighted> chromaPlan(bool down, int h) {
  std::vector<Weighted> p;
  if (down) {
    for (int m = 0; m < h / 4; ++m) {
      p.push_back({2 * m, 3, 1, 2, 4 * m, 4 * m + 2});
      p.push_back({2 * m + 1, 1, 3, 2, 4 * m + 1, 4 * m + 3});
    }
    return p;
  }
  p.push_back({0, 1, 0, 0, 0, 0});
  p.push_back({1, 1, 0, 0, 1, 1});
  for (int m = 0, e = 2; e < h - 2; ++m, e += 4) {
    const int b = 2 * m;
    p.push_back({e, 5, 3, 3, b, b + 2});
    p.push_back({e + 1, 7, 1, 3, b + 1, b + 3});
    p.push_back({e + 2, 1, 7, 3, b, b + 2});
    p.push_back({e + 3, 3, 5, 3, b + 1, b + 3});
  }
  p.push_back({h - 2, 1, 0, 0, h / 2 - 2, h / 2 - 2});
  p.push_back({h - 1, 1, 0, 0, h / 2 - 1, h / 2 - 1});
  return p;
}

// Converts random images and compares every destination byte with the plan:
// luma carried over, chroma by the weights, everything outside the masked size
// as it was.
void checkKnownAnswers(const Case& c, LumSize roi) {
  SCOPED_TRACE(testing::Message() << c.fc.name << " " << roi.width << "x" << roi.height);
  CallImages ci(c.fc, roi);
  std::mt19937 rng(uint32_t(roi.width * 977 + roi.height));
  ci.randomizeSource(rng);
  for (auto& d : ci.dst) d.randomize(rng);
  std::vector<std::vector<uint8_t>> want;
  for (auto& d : ci.dst) want.push_back(d.bytes());
  auto at = [&](int plane, int r, int x) -> uint8_t& {
    const size_t img = c.packedDst ? 0 : size_t(plane);
    return want[img][size_t(r) * size_t(ci.dst[img].rowBytes()) + offsetOf(c.packedDst, plane, x)];
  };
  const int w = roi.width & ~1, h = roi.height & ~3;
  for (int r = 0; r < h; ++r)
    for (int x = 0; x < w; ++x) at(0, r, x) = uint8_t(sample(ci.src, c.packedSrc, 0, r, x));
  for (const Weighted& p : chromaPlan(c.down, h))
    for (int plane = 1; plane <= 2; ++plane)
      for (int i = 0; i < w / 2; ++i) {
        const int u = sample(ci.src, c.packedSrc, plane, p.upper, i), l = sample(ci.src, c.packedSrc, plane, p.lower, i);
        at(plane, p.out, i) = uint8_t((p.wa * u + p.wb * l + (p.shift ? 1 << (p.shift - 1) : 0)) >> p.shift);
      }
  ASSERT_EQ(c.fc.call(ci.buffers(), roi), oddStatus(roi));
  for (size_t i = 0; i < ci.dst.size(); ++i) ASSERT_EQ(ci.dst[i].bytes(), want[i]) << "image " << i;
  ASSERT_TRUE(ci.canariesIntact());
}

}  // namespace

TEST(Interlaced, RefusalsInCheckOrderLeaveDestinationUntouched) {
  for (const auto& c : cases()) checkRefusals(c.fc);
}

TEST(Interlaced, VectorBlocksMatchScalarTwinsAtEveryWidth) {
  for (const auto& c : cases()) checkVectorMatchesScalar(c.fc, blockWidths(), 12);
}

TEST(Interlaced, AlignmentDoesNotChangeSamples) {
  for (const auto& c : cases()) checkAlignmentInvariance(c.fc, {2, 6, 16, 30, 32, 34, 64, 66, 100}, 8);
}

TEST(Interlaced, NegativeStepWalksBottomUp) {
  for (const auto& c : cases()) checkNegativeStep(c.fc, 37, 12);
}

TEST(Interlaced, RowsAndColumnsFollowTheFieldWeights) {
  for (const auto& c : cases())
    for (int h : {4, 5, 6, 7, 8, 12, 16, 20})
      for (int w : {2, 3, 4, 9, 16, 31, 32, 33, 34, 48, 64, 66, 130}) checkKnownAnswers(c, {w, h});
}
