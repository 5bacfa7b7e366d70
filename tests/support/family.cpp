#include "support/family.h"

#include <gtest/gtest.h>

#include <numeric>

#include "frame/simd.h"

namespace lumtest {

namespace {
std::vector<GuardedImage> makeImage(const ImageShape& s, LumSize roi, ImageOptions opt) {
  std::vector<GuardedImage> v;
  for (const PlaneShape& p : s.planes)
    v.emplace_back(std::max(p.rowBytes(roi.width), 1), std::max(p.rows(roi.height), 1), opt);
  return v;
}
}  // namespace

CallImages::CallImages(const FnCase& fc, LumSize roi, ImageOptions opt) : fill(fc.fillSource), inPlace(fc.inPlace) {
  opt.stepAlign = std::lcm(opt.stepAlign, fc.stepAlign);
  if (fc.dense) {
    opt.padBytes = 0;
    opt.stepAlign = 1;
    opt.stepOverride = 0;
  }
  src = makeImage(fc.src, roi, opt);
  dst = makeImage(fc.dst, roi, opt);
  for (auto& g : src) {
    srcPtrs.push_back(g.data());
    srcSteps.push_back(g.step());
  }
  for (auto& g : dst) {
    dstPtrs.push_back(g.data());
    dstSteps.push_back(g.step());
  }
}

Buffers CallImages::buffers() {
  Buffers b;
  b.srcStep = srcSteps[0];
  b.dstStep = dstSteps[0];
  b.srcSteps = srcSteps.data();
  b.dstSteps = dstSteps.data();
  b.src = srcPtrs.size() > 1 || srcPtrs.empty() ? static_cast<const void*>(srcPtrs.data()) : srcPtrs[0];
  b.dst = dstPtrs.size() > 1 || dstPtrs.empty() ? static_cast<void*>(dstPtrs.data()) : dstPtrs[0];
  return b;
}

void CallImages::randomizeSource(std::mt19937& rng) {
  for (auto& g : src) {
    if (fill) fill(g, rng);
    else g.randomize(rng);
  }
}
void CallImages::fillDestination(uint8_t v) {
  if (inPlace) {
    for (size_t i = 0; i < dst.size(); ++i) dst[i].setBytes(src[i].bytes());
    return;
  }
  for (auto& g : dst) g.fill(v);
}
std::vector<uint8_t> CallImages::destinationBytes() const {
  std::vector<uint8_t> all;
  for (auto& g : dst) {
    auto b = g.bytes();
    all.insert(all.end(), b.begin(), b.end());
  }
  return all;
}
bool CallImages::canariesIntact() const {
  for (auto& g : src)
    if (!g.intactCanaries()) return false;
  for (auto& g : dst)
    if (!g.intactCanaries()) return false;
  return true;
}

namespace {
// Buffers of a call in which the array or plane pointer `which` is null:
// which = {image 0 src / 1 dst, plane -1 for the array or packed pointer}.
struct NullChoice {
  int image;
  int plane;
};

LumStatus callWithNull(const FnCase& fc, CallImages& ci, LumSize roi, NullChoice nc) {
  std::vector<uint8_t*> sp = ci.srcPtrs, dp = ci.dstPtrs;
  Buffers b = ci.buffers();
  if (fc.src.array || fc.src.separate) b.src = sp.data();
  if (fc.dst.array || fc.dst.separate) b.dst = dp.data();
  if (nc.image == 0) {
    if (nc.plane < 0) b.src = nullptr;
    else sp[size_t(nc.plane)] = nullptr;
  } else {
    if (nc.plane < 0) b.dst = nullptr;
    else dp[size_t(nc.plane)] = nullptr;
  }
  return fc.call(b, roi);
}

std::vector<NullChoice> nullChoices(const FnCase& fc) {
  std::vector<NullChoice> v;
  const ImageShape* imgs[2] = {&fc.src, &fc.dst};
  for (int i = 0; i < 2; ++i) {
    if (i == 0 && fc.inPlace) continue;  // no source argument
    if (imgs[i]->separate) {
      for (int p = 0; p < imgs[i]->nChecked(); ++p) v.push_back({i, p});
      continue;
    }
    v.push_back({i, -1});
    if (imgs[i]->array)
      for (int p = 0; p < imgs[i]->nChecked(); ++p) v.push_back({i, p});
  }
  return v;
}
}  // namespace

LumStatus FnCase::expected(LumSize roi) const { return expectedStatus(*this, roi); }

LumStatus expectedStatus(const FnCase& fc, LumSize roi) {
  if (fc.statusFor) return fc.statusFor(roi);
  if (fc.oddSizeWarns && ((roi.width | roi.height) & 1)) return lumStatusOddSize;
  return fc.okStatus;
}

void checkRefusals(const FnCase& fc) {
  SCOPED_TRACE(fc.name);
  const LumSize good{std::max(fc.minWidth, 4 * fc.widthStep), std::max(fc.minHeight, 4 * fc.heightStep)};
  const LumSize bads[] = {{0, good.height}, {good.width, 0}, {-1, good.height}, {good.width, -5},
                          {fc.minWidth - 1, good.height}, {good.width, fc.minHeight - 1}};
  CallImages ci(fc, good);
  std::mt19937 rng(7);
  ci.randomizeSource(rng);
  ci.fillDestination(0x5A);
  const auto before = ci.destinationBytes();

  for (const LumSize& bad : bads) {
    SCOPED_TRACE(testing::Message() << "size " << bad.width << "x" << bad.height);
    // A function that lets any height through takes a good width with any height.
    const bool heightOnly = bad.width >= fc.minWidth && bad.height < fc.minHeight;
    const LumStatus want = heightOnly && !fc.heightChecked ? fc.okStatus : lumStatusBadSize;
    EXPECT_EQ(fc.call(ci.buffers(), bad), want);
  }
  const auto inArray = [&](NullChoice nc) {
    const ImageShape& img = nc.image == 0 ? fc.src : fc.dst;
    return nc.plane >= 0 && img.array && !img.separate;  // a plane pointer inside an array
  };
  for (NullChoice nc : nullChoices(fc)) {
    SCOPED_TRACE(testing::Message() << "null image " << nc.image << " plane " << nc.plane);
    EXPECT_EQ(callWithNull(fc, ci, good, nc), lumStatusNullPointer);
    // Both wrong: the function's order decides.
    LumStatus want = lumStatusNullPointer;
    if (fc.order == Order::SizeNull) want = lumStatusBadSize;
    if ((fc.order == Order::NullSizePlanes || fc.order == Order::NullSizePlanesSize) && inArray(nc))
      want = lumStatusBadSize;
    EXPECT_EQ(callWithNull(fc, ci, LumSize{0, good.height}, nc), want);
    // A width of at least 1 that is still below the function's minimum.
    if (fc.minWidth > 1) {
      LumStatus wantMin = lumStatusNullPointer;
      if (fc.order == Order::SizeNull || (fc.order == Order::NullSizePlanes && inArray(nc)))
        wantMin = lumStatusBadSize;
      EXPECT_EQ(callWithNull(fc, ci, LumSize{fc.minWidth - 1, good.height}, nc), wantMin) << "below the minimum";
    }
  }
  for (int image : {0, 1}) {
    if (!(image == 0 ? fc.srcStepArray : fc.dstStepArray)) continue;
    SCOPED_TRACE(testing::Message() << "null step array of image " << image);
    Buffers b = ci.buffers();
    (image == 0 ? b.srcSteps : b.dstSteps) = nullptr;
    EXPECT_EQ(fc.call(b, good), lumStatusNullPointer);
    const LumStatus want = fc.order == Order::SizeNull ? lumStatusBadSize : lumStatusNullPointer;
    EXPECT_EQ(fc.call(b, LumSize{0, good.height}), want);
  }
  EXPECT_EQ(ci.destinationBytes(), before) << "a refused call wrote to the destination";
  EXPECT_TRUE(ci.canariesIntact());
}

void checkVectorMatchesScalar(const FnCase& fc, const std::vector<int>& widths, int height) {
  SCOPED_TRACE(fc.name);
  std::mt19937 rng(1234);
  for (int w : widths) {
    if (w < fc.minWidth || w % fc.widthStep) continue;
    const LumSize roi{w, std::max(height - height % fc.heightStep, fc.minHeight)};
    SCOPED_TRACE(testing::Message() << "width " << w);
    CallImages vec(fc, roi), nar(fc, roi), sca(fc, roi);
    vec.randomizeSource(rng);
    for (size_t i = 0; i < vec.src.size(); ++i) {
      nar.src[i].setBytes(vec.src[i].bytes());
      sca.src[i].setBytes(vec.src[i].bytes());
    }
    vec.fillDestination(0x33);
    nar.fillDestination(0x33);
    sca.fillDestination(0x33);
    ASSERT_EQ(fc.call(vec.buffers(), roi), expectedStatus(fc, roi));
    {
      lum::NarrowScope eightLanes;
      ASSERT_EQ(fc.call(nar.buffers(), roi), expectedStatus(fc, roi));
    }
    {
      lum::ScalarScope scalarOnly;
      ASSERT_EQ(fc.call(sca.buffers(), roi), expectedStatus(fc, roi));
    }
    ASSERT_EQ(vec.destinationBytes(), sca.destinationBytes()) << "vector and scalar paths differ";
    ASSERT_EQ(nar.destinationBytes(), sca.destinationBytes()) << "128-bit blocks and scalar paths differ";
    ASSERT_TRUE(vec.canariesIntact()) << "write outside the region";
    ASSERT_TRUE(nar.canariesIntact()) << "write outside the region (128-bit blocks)";
    ASSERT_TRUE(sca.canariesIntact()) << "write outside the region (scalar)";
  }
}

void checkAlignmentInvariance(const FnCase& fc, const std::vector<int>& widths, int height) {
  SCOPED_TRACE(fc.name);
  for (int w : widths) {
    if (w < fc.minWidth || w % fc.widthStep) continue;
    const LumSize roi{w, std::max(height - height % fc.heightStep, fc.minHeight)};
    SCOPED_TRACE(testing::Message() << "width " << w);
    // Aligned: every row start a multiple of 16 (the pad makes the step one too).
    ImageOptions al;
    al.alignOffset = 0;
    std::vector<uint8_t> ref;
    for (int off : {0, 1, 3, 8}) {
      ImageOptions o = al;
      o.alignOffset = off;
      o.padBytes = 16;
      o.stepAlign = 16;
      CallImages ci(fc, roi, o);
      // Same contents in every trial.
      std::mt19937 local{uint32_t(w)};
      ci.randomizeSource(local);
      ci.fillDestination(0x11);
      ASSERT_EQ(fc.call(ci.buffers(), roi), expectedStatus(fc, roi));
      auto out = ci.destinationBytes();
      if (ref.empty()) ref = out;
      else ASSERT_EQ(out, ref) << "offset " << off << " changes the output";
      ASSERT_TRUE(ci.canariesIntact());
    }
  }
}

void checkNegativeStep(const FnCase& fc, int width, int height) {
  SCOPED_TRACE(fc.name);
  const LumSize roi{std::max(width, fc.minWidth), std::max(height - height % fc.heightStep, fc.minHeight)};
  ImageOptions neg;
  neg.negativeStep = true;
  CallImages up(fc, roi), down(fc, roi, neg);
  std::mt19937 rng(5);
  up.randomizeSource(rng);
  // The bottom-up image holds the same rows, in memory order reversed.
  for (size_t i = 0; i < up.src.size(); ++i) down.src[i].setBytes(up.src[i].bytes());
  up.fillDestination(0);
  down.fillDestination(0);
  ASSERT_EQ(fc.call(up.buffers(), roi), expectedStatus(fc, roi));
  ASSERT_EQ(fc.call(down.buffers(), roi), expectedStatus(fc, roi));
  for (size_t i = 0; i < up.dst.size(); ++i) {
    auto& a = up.dst[i];
    auto& b = down.dst[i];
    for (int y = 0; y < a.height(); ++y)
      ASSERT_TRUE(std::equal(a.row(y), a.row(y) + a.rowBytes(), b.row(y))) << "row " << y;
  }
  ASSERT_TRUE(down.canariesIntact());
}

std::vector<int> blockWidths() {
  std::vector<int> w;
  for (int i = 1; i <= 50; ++i) w.push_back(i);
  for (int i : {63, 64, 65, 127, 128, 129, 333, 1000}) w.push_back(i);
  return w;
}

}  // namespace lumtest
