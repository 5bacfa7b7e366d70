// YCoCg: packed BGR/RGB to and from Y, Co, Cg planes, plain and reversible.
#include <gtest/gtest.h>

#include <cstring>
#include <vector>

#include "frame/simd.h"
#include "lumcc.h"
#include "support/family.h"

using namespace lumtest;

namespace {

using B = Buffers;

template <class T>
const T* const* SP(const B& b) {
  return static_cast<const T* const*>(b.src);
}
template <class T>
T* const* DP(const B& b) {
  return static_cast<T* const*>(b.dst);
}

struct YCase {
  FnCase fc;
  bool forward;
  int packedElem, channels, planeElem;
};

YCase mk(const char* name, bool forward, int packedElem, int n, int planeElem, bool sized, CallFn f) {
  FnCase c;
  c.name = name;
  const ImageShape packedSide = packedImg(packedElem * n), planeSide = planarImg(3, planeElem);
  c.src = forward ? packedSide : planeSide;
  c.dst = forward ? planeSide : packedSide;
  c.call = std::move(f);
  c.sizeChecked = sized;
  c.stepAlign = std::max(packedElem, planeElem);
  return {std::move(c), forward, packedElem, n, planeElem};
}

const std::vector<YCase>& cases() {
  static const std::vector<YCase> v = [] {
    std::vector<YCase> t;
#define FWD(fn, TS, TD, es, n, ed, sized)                                                                             \
  t.push_back(mk(#fn, true, es, n, ed, sized,                                                                          \
                 [](const B& b, LumSize r) { return lumi##fn(S<TS>(b), b.srcStep, DP<TD>(b), b.dstStep, r); }))
#define INV(fn, TS, TD, es, n, ed, sized)                                                                             \
  t.push_back(mk(#fn, false, ed, n, es, sized,                                                                         \
                 [](const B& b, LumSize r) { return lumi##fn(SP<TS>(b), b.srcStep, D<TD>(b), b.dstStep, r); }))
#define INV4(fn, TS, TD, es, ed, sized, aval)                                                                         \
  t.push_back(mk(#fn, false, ed, 4, es, sized,                                                                         \
                 [](const B& b, LumSize r) { return lumi##fn(SP<TS>(b), b.srcStep, D<TD>(b), b.dstStep, r, aval); }))
    FWD(BGRToYCoCg_8u16s_C3P3R, Lum8u, Lum16s, 1, 3, 2, true);
    FWD(BGRToYCoCg_8u16s_C4P3R, Lum8u, Lum16s, 1, 4, 2, true);
    FWD(BGRToYCoCg_Rev_8u16s_C3P3R, Lum8u, Lum16s, 1, 3, 2, true);
    FWD(BGRToYCoCg_Rev_8u16s_C4P3R, Lum8u, Lum16s, 1, 4, 2, true);
    FWD(SBGRToYCoCg_16s_C3P3R, Lum16s, Lum16s, 2, 3, 2, true);
    FWD(SBGRToYCoCg_16s_C4P3R, Lum16s, Lum16s, 2, 4, 2, true);
    FWD(SBGRToYCoCg_Rev_16s_C3P3R, Lum16s, Lum16s, 2, 3, 2, false);
    FWD(SBGRToYCoCg_Rev_16s_C4P3R, Lum16s, Lum16s, 2, 4, 2, false);
    FWD(SBGRToYCoCg_16s32s_C3P3R, Lum16s, Lum32s, 2, 3, 4, true);
    FWD(SBGRToYCoCg_16s32s_C4P3R, Lum16s, Lum32s, 2, 4, 4, false);
    FWD(SBGRToYCoCg_Rev_16s32s_C3P3R, Lum16s, Lum32s, 2, 3, 4, true);
    FWD(SBGRToYCoCg_Rev_16s32s_C4P3R, Lum16s, Lum32s, 2, 4, 4, false);
    FWD(RGBToYCoCg_8u_C3P3R, Lum8u, Lum8u, 1, 3, 1, true);
    INV(YCoCgToBGR_16s8u_P3C3R, Lum16s, Lum8u, 2, 3, 1, false);
    INV4(YCoCgToBGR_16s8u_P3C4R, Lum16s, Lum8u, 2, 1, false, 0xA7);
    INV(YCoCgToBGR_Rev_16s8u_P3C3R, Lum16s, Lum8u, 2, 3, 1, false);
    INV4(YCoCgToBGR_Rev_16s8u_P3C4R, Lum16s, Lum8u, 2, 1, false, 0x3C);
    INV(YCoCgToSBGR_16s_P3C3R, Lum16s, Lum16s, 2, 3, 2, false);
    INV4(YCoCgToSBGR_16s_P3C4R, Lum16s, Lum16s, 2, 2, true, -12345);
    INV(YCoCgToSBGR_Rev_16s_P3C3R, Lum16s, Lum16s, 2, 3, 2, false);
    INV4(YCoCgToSBGR_Rev_16s_P3C4R, Lum16s, Lum16s, 2, 2, false, 32767);
    INV(YCoCgToSBGR_32s16s_P3C3R, Lum32s, Lum16s, 4, 3, 2, true);
    INV4(YCoCgToSBGR_32s16s_P3C4R, Lum32s, Lum16s, 4, 2, true, -32768);
    INV(YCoCgToSBGR_Rev_32s16s_P3C3R, Lum32s, Lum16s, 4, 3, 2, false);
    INV4(YCoCgToSBGR_Rev_32s16s_P3C4R, Lum32s, Lum16s, 4, 2, false, 77);
    INV(YCoCgToRGB_8u_P3C3R, Lum8u, Lum8u, 1, 3, 1, false);
#undef FWD
#undef INV
#undef INV4
    return t;
  }();
  return v;
}

const FnCase& byName(const std::string& n) {
  for (const auto& c : cases())
    if (c.fc.name == n) return c.fc;
  throw std::runtime_error("no case " + n);
}

// Calls a case on dense images of one row: packed samples in, three planes out
// (or the reverse), returning the destination samples.
template <class TS, class TD>
std::vector<TD> runDense(const std::string& name, const std::vector<TS>& src, int width, int srcChannels,
                         int dstChannels, TD fill = TD(0x5A)) {
  const FnCase& fc = byName(name);
  std::vector<TD> dst(size_t(width) * size_t(dstChannels), fill);
  std::vector<const uint8_t*> sp;
  std::vector<uint8_t*> dp;
  B b;
  if (fc.src.array) {
    for (int k = 0; k < 3; ++k) sp.push_back(reinterpret_cast<const uint8_t*>(src.data() + size_t(k) * size_t(width)));
  }
  if (fc.src.array) {
    b.src = sp.data();
    b.srcStep = width * int(sizeof(TS));
  } else {
    b.src = src.data();
    b.srcStep = width * srcChannels * int(sizeof(TS));
  }
  if (fc.dst.array) {
    for (int k = 0; k < 3; ++k) dp.push_back(reinterpret_cast<uint8_t*>(dst.data() + size_t(k) * size_t(width)));
    b.dst = dp.data();
    b.dstStep = width * int(sizeof(TD));
  } else {
    b.dst = dst.data();
    b.dstStep = width * dstChannels * int(sizeof(TD));
  }
  EXPECT_EQ(fc.call(b, LumSize{width, 1}), lumStatusOk) << name;
  return dst;
}

// One pixel through a forward case, the packed samples in memory order; Y, Co, Cg out.
template <class TS, class TD>
std::vector<TD> fwd1(const std::string& name, std::vector<TS> px) {
  const int n = int(px.size());
  return runDense<TS, TD>(name, px, 1, n, 3);
}
// One pixel through a reverse case: Y, Co, Cg in, the packed samples out in memory order.
template <class TS, class TD>
std::vector<TD> inv1(const std::string& name, std::vector<TS> ycc, int n) {
  return runDense<TS, TD>(name, ycc, 1, 3, n);
}

}  // namespace

TEST(YCoCg, RefusalsInCheckOrderLeaveDestinationUntouched) {
  for (const auto& c : cases()) checkRefusals(c.fc);
}

TEST(YCoCg, VectorBlocksMatchScalarTwinsAtEveryWidth) {
  for (const auto& c : cases()) checkVectorMatchesScalar(c.fc, blockWidths(), 3);
}

TEST(YCoCg, AlignmentDoesNotChangeSamples) {
  for (const auto& c : cases()) checkAlignmentInvariance(c.fc, {1, 7, 8, 9, 15, 16, 17, 33, 64}, 3);
}

TEST(YCoCg, NegativeStepWalksBottomUp) {
  for (const auto& c : cases()) checkNegativeStep(c.fc, 37, 5);
}

// A pixel's result does not depend on its column: every column of a row, run
// alone as a region one pixel wide, gives what the whole row gives there.
TEST(YCoCg, EveryColumnMatchesItsOnePixelRegion) {
  std::vector<int> widths;
  for (int w = 1; w <= 40; ++w) widths.push_back(w);
  widths.push_back(261);
  for (const auto& yc : cases()) {
    const FnCase& fc = yc.fc;
    SCOPED_TRACE(fc.name);
    const int srcBpp = yc.forward ? yc.packedElem * yc.channels : yc.planeElem;
    const int dstBpp = yc.forward ? yc.planeElem : yc.packedElem * yc.channels;
    std::mt19937 rng(77);
    for (int w : widths) {
      const LumSize roi{w, 2};
      CallImages row(fc, roi), cols(fc, roi);
      row.randomizeSource(rng);
      for (size_t i = 0; i < row.src.size(); ++i) cols.src[i].setBytes(row.src[i].bytes());
      row.fillDestination(0x21);
      cols.fillDestination(0x21);
      ASSERT_EQ(fc.call(row.buffers(), roi), lumStatusOk);
      for (int x = 0; x < w; ++x) {
        std::vector<const uint8_t*> sp;
        std::vector<uint8_t*> dp;
        for (auto* p : cols.srcPtrs) sp.push_back(p + std::ptrdiff_t(x) * srcBpp);
        for (auto* p : cols.dstPtrs) dp.push_back(p + std::ptrdiff_t(x) * dstBpp);
        B b = cols.buffers();
        b.src = sp.size() > 1 ? static_cast<const void*>(sp.data()) : sp[0];
        b.dst = dp.size() > 1 ? static_cast<void*>(dp.data()) : dp[0];
        ASSERT_EQ(fc.call(b, LumSize{1, 2}), lumStatusOk);
      }
      ASSERT_EQ(row.destinationBytes(), cols.destinationBytes()) << "width " << w;
    }
  }
}

// Hand-computed answers of the forward forms, B, G, R (or R, G, B) in memory order.
TEST(YCoCg, ForwardKnownAnswers) {
  struct KA {
    const char* fn;
    std::vector<int> px;
    std::vector<int> ycc;
  };
  const KA table[] = {
      // Plain: Y = (R + 2G + B + 2) >> 2, Co = (R - B + 1) >> 1, Cg = (2G - R - B + 2) >> 2.
      {"BGRToYCoCg_8u16s_C3P3R", {10, 20, 30}, {20, 10, 0}},
      {"BGRToYCoCg_8u16s_C3P3R", {0, 0, 1}, {0, 1, 0}},
      {"BGRToYCoCg_8u16s_C3P3R", {1, 0, 0}, {0, 0, 0}},
      {"BGRToYCoCg_8u16s_C3P3R", {255, 0, 0}, {64, -127, -64}},
      {"BGRToYCoCg_8u16s_C4P3R", {255, 0, 0, 99}, {64, -127, -64}},
      {"BGRToYCoCg_8u16s_C3P3R", {0, 255, 0}, {128, 0, 128}},
      // Reversible: Co = R - B, t = B + (Co >> 1), Cg = G - t, Y = t + (Cg >> 1).
      {"BGRToYCoCg_Rev_8u16s_C3P3R", {0, 0, 1}, {0, 1, 0}},
      {"BGRToYCoCg_Rev_8u16s_C3P3R", {1, 0, 0}, {0, -1, 0}},
      {"BGRToYCoCg_Rev_8u16s_C3P3R", {255, 0, 0}, {63, -255, -127}},
      {"BGRToYCoCg_Rev_8u16s_C4P3R", {0, 255, 255, 1}, {191, 255, 128}},
      {"BGRToYCoCg_Rev_8u16s_C3P3R", {255, 255, 255}, {255, 0, 0}},
      // 16s plain: the sums in 32 bits; Co = 32768 keeps its low 16 bits.
      {"SBGRToYCoCg_16s_C3P3R", {-32768, 0, 32767}, {0, -32768, 0}},
      {"SBGRToYCoCg_16s_C4P3R", {-32768, 32767, -32768, 5}, {0, 0, -32768}},
      {"SBGRToYCoCg_16s_C3P3R", {-32768, -32768, -32768}, {-32768, 0, 0}},
      {"SBGRToYCoCg_16s_C3P3R", {32767, 32767, 32767}, {32767, 0, 0}},
      // 16s reversible modulo 2^16: R - B = 65535 wraps to -1.
      {"SBGRToYCoCg_Rev_16s_C3P3R", {-32768, 0, 32767}, {16383, -1, -32767}},
      {"SBGRToYCoCg_Rev_16s_C4P3R", {-32768, 0, 32767, 0}, {16383, -1, -32767}},
      {"SBGRToYCoCg_Rev_16s_C3P3R", {32767, -32768, -32768}, {32767, 1, 1}},
      // 32-bit planes hold the whole range.
      {"SBGRToYCoCg_16s32s_C3P3R", {-32768, 0, 32767}, {0, 32768, 0}},
      {"SBGRToYCoCg_16s32s_C4P3R", {-32768, 32767, -32768, 1}, {0, 0, 32768}},
      {"SBGRToYCoCg_Rev_16s32s_C3P3R", {-32768, 0, 32767}, {-1, 65535, 1}},
      {"SBGRToYCoCg_Rev_16s32s_C4P3R", {32767, -32768, -32768, 3}, {-16385, -65535, -32767}},
      // 8u planes: Co and Cg + 128, limited to 255; R, G, B in memory order.
      {"RGBToYCoCg_8u_C3P3R", {255, 255, 255}, {255, 128, 128}},
      {"RGBToYCoCg_8u_C3P3R", {255, 0, 0}, {64, 255, 64}},
      {"RGBToYCoCg_8u_C3P3R", {0, 0, 255}, {64, 1, 64}},
      {"RGBToYCoCg_8u_C3P3R", {0, 255, 0}, {128, 128, 255}},
      {"RGBToYCoCg_8u_C3P3R", {0, 0, 0}, {0, 128, 128}},
  };
  for (const KA& k : table) {
    SCOPED_TRACE(testing::Message() << k.fn << " px " << k.px[0] << "," << k.px[1] << "," << k.px[2]);
    const std::string n = k.fn;
    std::vector<int> got;
    if (n.find("_8u16s_") != std::string::npos) {
      for (auto v : fwd1<Lum8u, Lum16s>(n, std::vector<Lum8u>(k.px.begin(), k.px.end()))) got.push_back(v);
    } else if (n.find("_8u_") != std::string::npos) {
      for (auto v : fwd1<Lum8u, Lum8u>(n, std::vector<Lum8u>(k.px.begin(), k.px.end()))) got.push_back(v);
    } else if (n.find("16s32s") != std::string::npos) {
      for (auto v : fwd1<Lum16s, Lum32s>(n, std::vector<Lum16s>(k.px.begin(), k.px.end()))) got.push_back(v);
    } else {
      for (auto v : fwd1<Lum16s, Lum16s>(n, std::vector<Lum16s>(k.px.begin(), k.px.end()))) got.push_back(v);
    }
    EXPECT_EQ(got, k.ycc);
  }
}

// Hand-computed answers of the reverse forms: Y, Co, Cg in; the packed samples
// out in memory order (B, G, R, alpha; R, G, B for the 8u form).
TEST(YCoCg, ReverseKnownAnswers) {
  struct KA {
    const char* fn;
    std::vector<int> ycc;
    std::vector<int> px;
  };
  const KA table[] = {
      // Plain: R = Y + Co - Cg, G = Y + Cg, B = Y - Co - Cg; 8u clamps the 16-bit result.
      {"YCoCgToBGR_16s8u_P3C3R", {20, 10, 0}, {10, 20, 30}},
      {"YCoCgToBGR_16s8u_P3C3R", {300, 0, 0}, {255, 255, 255}},
      {"YCoCgToBGR_16s8u_P3C3R", {-5, 0, 0}, {0, 0, 0}},
      // 32767 + 1 wraps to -32768 before the clamp: R is 0, not 255.
      {"YCoCgToBGR_16s8u_P3C3R", {32767, 1, 0}, {255, 255, 0}},
      {"YCoCgToBGR_16s8u_P3C4R", {32767, 1, 0}, {255, 255, 0, 0xA7}},
      // Reversible: t = Y - (Cg >> 1), G = Cg + t, B = t - (Co >> 1), R = B + Co.
      {"YCoCgToBGR_Rev_16s8u_P3C3R", {63, -255, -127}, {255, 0, 0}},
      {"YCoCgToBGR_Rev_16s8u_P3C4R", {191, 255, 128}, {0, 255, 255, 0x3C}},
      {"YCoCgToBGR_Rev_16s8u_P3C3R", {32767, 2, -2}, {255, 255, 0}},
      {"YCoCgToSBGR_16s_P3C3R", {32767, 1, 0}, {32766, 32767, -32768}},
      {"YCoCgToSBGR_16s_P3C4R", {-32768, 0, -1}, {-32767, 32767, -32767, -12345}},
      {"YCoCgToSBGR_Rev_16s_P3C3R", {16383, -1, -32767}, {-32768, 0, 32767}},
      {"YCoCgToSBGR_Rev_16s_P3C4R", {32767, 1, 1}, {32767, -32768, -32768, 32767}},
      // 32-bit planes: the sums in 32 bits, the low 16 bits stored.
      {"YCoCgToSBGR_32s16s_P3C3R", {70000, 0, 0}, {4464, 4464, 4464}},
      {"YCoCgToSBGR_32s16s_P3C4R", {-1, 65536, 0}, {-1, -1, -1, -32768}},
      // Cg >> 1 sees bit 16 of Cg: 65537 >> 1 = 32768.
      {"YCoCgToSBGR_Rev_32s16s_P3C3R", {0, 0, 65537}, {-32768, -32767, -32768}},
      {"YCoCgToSBGR_Rev_32s16s_P3C4R", {-1, 65535, 1}, {-32768, 0, 32767, 77}},
      // 8u planes with biased Co, Cg: R = Y + Co - Cg, G = Y + Cg - 128, B = Y - Co - Cg + 256.
      {"YCoCgToRGB_8u_P3C3R", {255, 128, 128}, {255, 255, 255}},
      {"YCoCgToRGB_8u_P3C3R", {0, 255, 0}, {255, 0, 1}},
      {"YCoCgToRGB_8u_P3C3R", {100, 140, 120}, {120, 92, 96}},
  };
  for (const KA& k : table) {
    SCOPED_TRACE(testing::Message() << k.fn << " ycc " << k.ycc[0] << "," << k.ycc[1] << "," << k.ycc[2]);
    const std::string n = k.fn;
    const int ch = int(k.px.size());
    std::vector<int> got;
    if (n.find("16s8u") != std::string::npos) {
      for (auto v : inv1<Lum16s, Lum8u>(n, std::vector<Lum16s>(k.ycc.begin(), k.ycc.end()), ch)) got.push_back(v);
    } else if (n.find("_8u_") != std::string::npos) {
      for (auto v : inv1<Lum8u, Lum8u>(n, std::vector<Lum8u>(k.ycc.begin(), k.ycc.end()), ch)) got.push_back(v);
    } else if (n.find("32s16s") != std::string::npos) {
      for (auto v : inv1<Lum32s, Lum16s>(n, std::vector<Lum32s>(k.ycc.begin(), k.ycc.end()), ch)) got.push_back(v);
    } else {
      for (auto v : inv1<Lum16s, Lum16s>(n, std::vector<Lum16s>(k.ycc.begin(), k.ycc.end()), ch)) got.push_back(v);
    }
    EXPECT_EQ(got, k.px);
  }
}

namespace {
// Packed pixels through a reversible pair and back: the result must equal the
// source. Forward and reverse take the packed samples with three or four
// channels; the planes have samples of TP.
template <class TS, class TP>
void roundTrip(const char* fwdName, const char* invName, const std::vector<TS>& px, int width, int n) {
  const FnCase& f = byName(fwdName);
  const FnCase& r = byName(invName);
  const int height = int(px.size() / size_t(n) / size_t(width));
  std::vector<TP> planes(size_t(3) * size_t(width) * size_t(height));
  std::vector<TS> back(px.size(), TS(0x11));
  std::vector<uint8_t*> dp;
  for (int k = 0; k < 3; ++k)
    dp.push_back(reinterpret_cast<uint8_t*>(planes.data() + size_t(k) * size_t(width) * size_t(height)));
  B a;
  a.src = px.data();
  a.srcStep = width * n * int(sizeof(TS));
  a.dst = dp.data();
  a.dstStep = width * int(sizeof(TP));
  ASSERT_EQ(f.call(a, LumSize{width, height}), lumStatusOk);
  B b;
  b.src = dp.data();
  b.srcStep = a.dstStep;
  b.dst = back.data();
  b.dstStep = a.srcStep;
  ASSERT_EQ(r.call(b, LumSize{width, height}), lumStatusOk);
  if (n == 4)  // the fourth sample is the reverse's aval, not a round-tripped one
    for (size_t i = 3; i < px.size(); i += 4) back[i] = px[i];
  for (size_t i = 0; i < px.size(); ++i)
    ASSERT_EQ(back[i], px[i]) << fwdName << " sample " << i;
}
}  // namespace

// Every 8u pixel, in blocks of 256 x 256 (R, G) per B.
TEST(YCoCg, ReversiblePairReturnsEvery8uPixel) {
  for (int n : {3, 4}) {
    std::vector<Lum8u> px(size_t(65536) * 16 * size_t(n));
    for (int b0 = 0; b0 < 256; b0 += 16) {
      size_t i = 0;
      for (int b = b0; b < b0 + 16; ++b)
        for (int g = 0; g < 256; ++g)
          for (int r = 0; r < 256; ++r) {
            px[i] = Lum8u(b);
            px[i + 1] = Lum8u(g);
            px[i + 2] = Lum8u(r);
            if (n == 4) px[i + 3] = Lum8u(r ^ g);
            i += size_t(n);
          }
      if (n == 3) roundTrip<Lum8u, Lum16s>("BGRToYCoCg_Rev_8u16s_C3P3R", "YCoCgToBGR_Rev_16s8u_P3C3R", px, 4096, 3);
      else roundTrip<Lum8u, Lum16s>("BGRToYCoCg_Rev_8u16s_C4P3R", "YCoCgToBGR_Rev_16s8u_P3C4R", px, 4096, 4);
      if (HasFatalFailure()) return;
    }
  }
}

// A dense sweep of 16s pixels (every 257th value of each channel, both ends
// included): the 32-bit planes hold them whole, and the modulo 2^16 lifting
// undoes itself as well.
TEST(YCoCg, ReversiblePairsReturnA16sSweep) {
  std::vector<int> vals;
  for (int v = -32768; v <= 32767; v += 257) vals.push_back(v);
  vals.push_back(-32767);
  vals.push_back(32766);
  vals.push_back(0);
  vals.push_back(-1);
  const int m = int(vals.size());
  for (int n : {3, 4}) {
    std::vector<Lum16s> px(size_t(m) * size_t(m) * size_t(n));
    for (int b = 0; b < m; ++b) {
      size_t i = 0;
      for (int g = 0; g < m; ++g)
        for (int r = 0; r < m; ++r) {
          px[i] = Lum16s(vals[size_t(b)]);
          px[i + 1] = Lum16s(vals[size_t(g)]);
          px[i + 2] = Lum16s(vals[size_t(r)]);
          if (n == 4) px[i + 3] = Lum16s(r * 31 - g);
          i += size_t(n);
        }
      if (n == 3) {
        roundTrip<Lum16s, Lum32s>("SBGRToYCoCg_Rev_16s32s_C3P3R", "YCoCgToSBGR_Rev_32s16s_P3C3R", px, m, 3);
        roundTrip<Lum16s, Lum16s>("SBGRToYCoCg_Rev_16s_C3P3R", "YCoCgToSBGR_Rev_16s_P3C3R", px, m, 3);
      } else {
        roundTrip<Lum16s, Lum32s>("SBGRToYCoCg_Rev_16s32s_C4P3R", "YCoCgToSBGR_Rev_32s16s_P3C4R", px, m, 4);
        roundTrip<Lum16s, Lum16s>("SBGRToYCoCg_Rev_16s_C4P3R", "YCoCgToSBGR_Rev_16s_P3C4R", px, m, 4);
      }
      if (HasFatalFailure()) return;
    }
  }
}

// The reverse C4 forms write aval to every alpha, in block and tail.
TEST(YCoCg, ReverseFourChannelFormsWriteAvalEverywhere) {
  for (int w : {1, 7, 8, 9, 16, 33}) {
    std::vector<Lum16s> ycc(size_t(3) * size_t(w));
    for (size_t i = 0; i < ycc.size(); ++i) ycc[i] = Lum16s(int(i * 37) % 300 - 20);
    const auto out = runDense<Lum16s, Lum8u>("YCoCgToBGR_16s8u_P3C4R", ycc, w, 3, 4);
    for (int x = 0; x < w; ++x) EXPECT_EQ(out[size_t(4 * x + 3)], 0xA7) << "width " << w << " pixel " << x;
  }
}

// The 8u forward runs its groups on byte lanes: every 8u pixel through the
// wide, the 128-bit and the scalar paths gives the same planes.
TEST(YCoCg, EightBitPlanesAgreeOnEveryPixelInEveryPath) {
  const int w = 4096, h = 256;
  std::vector<Lum8u> px(size_t(w) * h * 3);
  std::vector<Lum8u> ref;
  for (int r0 = 0; r0 < 256; r0 += 16) {
    size_t i = 0;
    for (int r = r0; r < r0 + 16; ++r)
      for (int g = 0; g < 256; ++g)
        for (int b = 0; b < 256; ++b) {
          px[i++] = Lum8u(r);
          px[i++] = Lum8u(g);
          px[i++] = Lum8u(b);
        }
    for (int path = 0; path < 3; ++path) {
      std::vector<Lum8u> out(size_t(w) * h * 3, 0x5A);
      Lum8u* const p[3] = {out.data(), out.data() + size_t(w) * h, out.data() + 2 * size_t(w) * h};
      if (path == 0) {
        ASSERT_EQ(lumiRGBToYCoCg_8u_C3P3R(px.data(), 3 * w, p, w, {w, h}), lumStatusOk);
      } else if (path == 1) {
        lum::NarrowScope eightLanes;
        ASSERT_EQ(lumiRGBToYCoCg_8u_C3P3R(px.data(), 3 * w, p, w, {w, h}), lumStatusOk);
      } else {
        lum::ScalarScope scalarOnly;
        ASSERT_EQ(lumiRGBToYCoCg_8u_C3P3R(px.data(), 3 * w, p, w, {w, h}), lumStatusOk);
      }
      if (path == 0) ref = out;
      else ASSERT_EQ(out, ref) << "path " << path << " from R = " << r0;
    }
  }
}
