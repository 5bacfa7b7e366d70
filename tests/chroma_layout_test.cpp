// The chroma layout family: every function described once by its source and
// destination layouts, its size class and the way its chroma samples map, then
// checked against that description byte by byte, plus the generic checks
// (refusals in order, vector against scalar, alignment, bottom-up images).
#include <gtest/gtest.h>

#include <cstring>
#include <tuple>

#include "frame/simd.h"
#include "lumcc.h"
#include "support/family.h"

using namespace lumtest;

namespace {

// ---- layouts, as the format tables describe them ----------------------------------
enum class Fmt {
  YUY2,   // Y0 Cb Y1 Cr
  UYVY,   // Cb Y0 Cr Y1
  YVYU,   // Y0 Cr Y1 Cb
  I422,   // planes Y, Cb, Cr; chroma W/2 x H
  YV16,   // planes Y, Cr, Cb; chroma W/2 x H
  I420,   // planes Y, Cb, Cr; chroma W/2 x H/2
  YV12,   // planes Y, Cr, Cb; chroma W/2 x H/2
  NV12,   // luma, then Cb Cr pairs W/2 x H/2
  NV21,   // luma, then Cr Cb pairs W/2 x H/2
  I411,   // planes Y, Cb, Cr; chroma W/4 x H
  NV11,   // luma, then Cb Cr pairs W/4 x H
  I1620,  // planes Y, Cb, Cr; chroma W/4 x H/4
};

enum class Side { Packed, Array, Separate };

constexpr Side sideOf(Fmt f) {
  switch (f) {
    case Fmt::YUY2:
    case Fmt::UYVY:
    case Fmt::YVYU:
      return Side::Packed;
    case Fmt::NV12:
    case Fmt::NV21:
    case Fmt::NV11:
      return Side::Separate;
    default:
      return Side::Array;
  }
}

// Chroma grid of a layout: one chroma sample per cw x ch luma pixels.
struct Grid {
  int cw, ch;
};
Grid gridOf(Fmt f) {
  switch (f) {
    case Fmt::YUY2:
    case Fmt::UYVY:
    case Fmt::YVYU:
    case Fmt::I422:
    case Fmt::YV16:
      return {2, 1};
    case Fmt::I420:
    case Fmt::YV12:
    case Fmt::NV12:
    case Fmt::NV21:
      return {2, 2};
    case Fmt::I411:
    case Fmt::NV11:
      return {4, 1};
    case Fmt::I1620:
      return {4, 4};
  }
  return {1, 1};
}

ImageShape shapeOf(Fmt f) {
  const Grid g = gridOf(f);
  switch (sideOf(f)) {
    case Side::Packed:
      return packedImg(2);
    case Side::Separate: {
      ImageShape s{false, {{1, 1, 1}, {2, g.cw, g.ch}}, -1};
      s.separate = true;
      return s;
    }
    case Side::Array:
      return ImageShape{true, {{1, 1, 1}, {1, g.cw, g.ch}, {1, g.cw, g.ch}}, -1};
  }
  return {};
}

// Where a sample lives: plane, row, byte in the row.
struct Loc {
  int plane, row, byte;
};
Loc lumaAt(Fmt f, int x, int y) {
  if (sideOf(f) == Side::Packed) return {0, y, 2 * x + (f == Fmt::UYVY ? 1 : 0)};
  return {0, y, x};
}
// Chroma c (0 Cb, 1 Cr), sample j of chroma row k.
Loc chromaAt(Fmt f, int c, int j, int k) {
  switch (f) {
    case Fmt::YUY2:
      return {0, k, 4 * j + (c ? 3 : 1)};
    case Fmt::UYVY:
      return {0, k, 4 * j + (c ? 2 : 0)};
    case Fmt::YVYU:
      return {0, k, 4 * j + (c ? 1 : 3)};
    case Fmt::YV16:
    case Fmt::YV12:
      return {2 - c, k, j};
    case Fmt::NV12:
    case Fmt::NV11:
      return {1, k, 2 * j + c};
    case Fmt::NV21:
      return {1, k, 2 * j + 1 - c};
    default:
      return {1 + c, k, j};
  }
}

// ---- calls --------------------------------------------------------------------------------
using B = Buffers;
template <Fmt F>
auto srcArgs(const B& b) {
  if constexpr (sideOf(F) == Side::Packed) return std::make_tuple(b.srcPtr(), b.srcStep);
  else if constexpr (sideOf(F) == Side::Array) return std::make_tuple(b.srcPlanes(), b.srcSteps);
  else return std::make_tuple(b.srcPlanes()[0], b.srcSteps[0], b.srcPlanes()[1], b.srcSteps[1]);
}
template <Fmt F>
auto dstArgs(const B& b) {
  if constexpr (sideOf(F) == Side::Packed) return std::make_tuple(b.dstPtr(), b.dstStep);
  else if constexpr (sideOf(F) == Side::Array) return std::make_tuple(b.dstPlanes(), b.dstSteps);
  else return std::make_tuple(b.dstPlanes()[0], b.dstSteps[0], b.dstPlanes()[1], b.dstSteps[1]);
}
template <auto Fn, Fmt S, Fmt D>
LumStatus call(const B& b, LumSize r) {
  return std::apply(Fn, std::tuple_cat(srcArgs<S>(b), dstArgs<D>(b), std::make_tuple(r)));
}

// ---- the family --------------------------------------------------------------------------
enum class Cls { A, B, C, D, E, F, G, G2 };

// How destination chroma sample (j, k) is found in the source.
enum class Map {
  Same,       // (j, k)
  EvenRows,   // (j, 2k): 4:2:2 to 4:2:0
  RowTwice,   // (j, k/2): 4:2:0 to 4:2:2
  EvenCols,   // (2j, k): 4:2:2 to 4:1:1
  ColTwice,   // (j/2, k): 4:1:1 to 4:2:2
  To411,      // (2j + k%2, k/2)
  To420,      // (j/2, 2k + j%2)
  Filtered,   // resampling kernels, tested on their own
};

struct LayoutCase {
  FnCase fc;
  Fmt src, dst;
  Cls cls;
  Map map;
};

template <auto Fn, Fmt S, Fmt D>
LayoutCase mk(const char* name, Cls cls, Map map, Order order = Order::NullSize) {
  LayoutCase c;
  c.fc.name = name;
  c.fc.src = shapeOf(S);
  c.fc.dst = shapeOf(D);
  c.fc.order = order;
  c.fc.call = call<Fn, S, D>;
  const bool four = cls == Cls::D || cls == Cls::E || cls == Cls::F || cls == Cls::G || cls == Cls::G2;
  c.fc.minWidth = four ? 4 : 2;
  // G2 accepts height 2 but then reads and writes chroma rows below the planes
  // (its own test covers that): the generic tests start at 4.
  c.fc.minHeight = (cls == Cls::A || cls == Cls::D) ? 2 : (cls == Cls::G || cls == Cls::G2 ? 4 : 1);
  c.fc.heightChecked = !(cls == Cls::C || cls == Cls::F);
  if (cls == Cls::G || cls == Cls::G2) c.fc.widthStep = 4;
  if (cls == Cls::G) c.fc.heightStep = 4;
  if (cls == Cls::G2) c.fc.heightStep = 2;
  c.src = S;
  c.dst = D;
  c.cls = cls;
  c.map = map;
  return c;
}

const std::vector<LayoutCase>& cases() {
  static const std::vector<LayoutCase> v = {
      // Packed byte orders
      mk<lumiYCbCr422ToCbYCr422_8u_C2R, Fmt::YUY2, Fmt::UYVY>("YCbCr422ToCbYCr422_C2R", Cls::B, Map::Same),
      mk<lumiCbYCr422ToYCbCr422_8u_C2R, Fmt::UYVY, Fmt::YUY2>("CbYCr422ToYCbCr422_C2R", Cls::B, Map::Same),
      mk<lumiYCbCr422ToYCrCb422_8u_C2R, Fmt::YUY2, Fmt::YVYU>("YCbCr422ToYCrCb422_C2R", Cls::C, Map::Same),
      // Packed 4:2:2 and planes
      mk<lumiYCbCr422_8u_C2P3R, Fmt::YUY2, Fmt::I422>("YCbCr422_C2P3R", Cls::B, Map::Same),
      mk<lumiYCrCb422ToYCbCr422_8u_C2P3R, Fmt::YVYU, Fmt::I422>("YCrCb422ToYCbCr422_C2P3R", Cls::B, Map::Same),
      mk<lumiCbYCr422ToYCbCr422_8u_C2P3R, Fmt::UYVY, Fmt::I422>("CbYCr422ToYCbCr422_C2P3R", Cls::B, Map::Same),
      mk<lumiYCbCr422_8u_P3C2R, Fmt::I422, Fmt::YUY2>("YCbCr422_P3C2R", Cls::B, Map::Same),
      mk<lumiYCbCr422ToCbYCr422_8u_P3C2R, Fmt::I422, Fmt::UYVY>("YCbCr422ToCbYCr422_P3C2R", Cls::B, Map::Same),
      mk<lumiYCbCr422ToYCrCb422_8u_P3C2R, Fmt::I422, Fmt::YVYU>("YCbCr422ToYCrCb422_P3C2R", Cls::C, Map::Same),
      // Interleaved and split chroma
      mk<lumiYCbCr420_8u_P2P3R, Fmt::NV12, Fmt::I420>("YCbCr420_P2P3R", Cls::A, Map::Same),
      mk<lumiYCbCr420_8u_P3P2R, Fmt::I420, Fmt::NV12>("YCbCr420_P3P2R", Cls::A, Map::Same),
      // No swap: the destination reads as Y, Cb, Cr.
      mk<lumiYCbCr420ToYCrCb420_8u_P2P3R, Fmt::NV12, Fmt::I420>("YCbCr420ToYCrCb420_P2P3R", Cls::A, Map::Same,
                                                                Order::NullSizePlanesSize),
      mk<lumiYCrCb420ToYCbCr420_8u_P3P2R, Fmt::YV12, Fmt::NV12>("YCrCb420ToYCbCr420_P3P2R", Cls::A, Map::Same),
      mk<lumiYCbCr411_8u_P2P3R, Fmt::NV11, Fmt::I411>("YCbCr411_P2P3R", Cls::F, Map::Same),
      mk<lumiYCbCr411_8u_P3P2R, Fmt::I411, Fmt::NV11>("YCbCr411_P3P2R", Cls::F, Map::Same),
      // 4:2:2 to 4:2:0
      mk<lumiYCbCr422ToYCbCr420_8u_C2P3R, Fmt::YUY2, Fmt::I420>("YCbCr422ToYCbCr420_C2P3R", Cls::A, Map::EvenRows),
      mk<lumiYCrCb422ToYCbCr420_8u_C2P3R, Fmt::YVYU, Fmt::I420>("YCrCb422ToYCbCr420_C2P3R", Cls::A, Map::EvenRows),
      mk<lumiCbYCr422ToYCbCr420_8u_C2P3R, Fmt::UYVY, Fmt::I420>("CbYCr422ToYCbCr420_C2P3R", Cls::A, Map::EvenRows),
      mk<lumiYCbCr422ToYCrCb420_8u_C2P3R, Fmt::YUY2, Fmt::YV12>("YCbCr422ToYCrCb420_C2P3R", Cls::A, Map::EvenRows),
      mk<lumiCbYCr422ToYCrCb420_8u_C2P3R, Fmt::UYVY, Fmt::YV12>("CbYCr422ToYCrCb420_C2P3R", Cls::A, Map::EvenRows),
      mk<lumiYCbCr422ToYCbCr420_8u_C2P2R, Fmt::YUY2, Fmt::NV12>("YCbCr422ToYCbCr420_C2P2R", Cls::A, Map::EvenRows),
      mk<lumiYCbCr422ToYCrCb420_8u_C2P2R, Fmt::YUY2, Fmt::NV21>("YCbCr422ToYCrCb420_C2P2R", Cls::A, Map::EvenRows),
      mk<lumiCbYCr422ToYCbCr420_8u_C2P2R, Fmt::UYVY, Fmt::NV12>("CbYCr422ToYCbCr420_C2P2R", Cls::A, Map::EvenRows),
      mk<lumiYCbCr422ToYCbCr420_8u_P3R, Fmt::I422, Fmt::I420>("YCbCr422ToYCbCr420_P3R", Cls::A, Map::EvenRows),
      mk<lumiYCbCr422ToYCbCr420_8u_P3P2R, Fmt::I422, Fmt::NV12>("YCbCr422ToYCbCr420_P3P2R", Cls::A, Map::EvenRows),
      // 4:2:0 to 4:2:2
      mk<lumiYCbCr420ToYCbCr422_8u_P3R, Fmt::I420, Fmt::I422>("YCbCr420ToYCbCr422_P3R", Cls::A, Map::RowTwice),
      mk<lumiYCrCb420ToYCbCr422_8u_P3R, Fmt::YV12, Fmt::I422>("YCrCb420ToYCbCr422_P3R", Cls::A, Map::RowTwice),
      mk<lumiYCbCr420ToYCbCr422_8u_P2P3R, Fmt::NV12, Fmt::I422>("YCbCr420ToYCbCr422_P2P3R", Cls::A, Map::RowTwice),
      mk<lumiYCbCr420ToYCbCr422_8u_P2C2R, Fmt::NV12, Fmt::YUY2>("YCbCr420ToYCbCr422_P2C2R", Cls::A, Map::RowTwice),
      mk<lumiYCbCr420ToCbYCr422_8u_P2C2R, Fmt::NV12, Fmt::UYVY>("YCbCr420ToCbYCr422_P2C2R", Cls::A, Map::RowTwice),
      mk<lumiYCrCb420ToYCbCr422_8u_P3C2R, Fmt::YV12, Fmt::YUY2>("YCrCb420ToYCbCr422_P3C2R", Cls::A, Map::RowTwice),
      mk<lumiYCrCb420ToCbYCr422_8u_P3C2R, Fmt::YV12, Fmt::UYVY>("YCrCb420ToCbYCr422_P3C2R", Cls::A, Map::RowTwice),
      // 4:2:2 to 4:1:1
      mk<lumiYCbCr422ToYCbCr411_8u_C2P3R, Fmt::YUY2, Fmt::I411>("YCbCr422ToYCbCr411_C2P3R", Cls::E, Map::EvenCols),
      mk<lumiYCrCb422ToYCbCr411_8u_C2P3R, Fmt::YVYU, Fmt::I411>("YCrCb422ToYCbCr411_C2P3R", Cls::F, Map::EvenCols),
      mk<lumiCbYCr422ToYCbCr411_8u_C2P3R, Fmt::UYVY, Fmt::I411>("CbYCr422ToYCbCr411_C2P3R", Cls::F, Map::EvenCols),
      mk<lumiYCbCr422ToYCbCr411_8u_C2P2R, Fmt::YUY2, Fmt::NV11>("YCbCr422ToYCbCr411_C2P2R", Cls::F, Map::EvenCols),
      mk<lumiYCbCr422ToYCbCr411_8u_P3R, Fmt::I422, Fmt::I411>("YCbCr422ToYCbCr411_P3R", Cls::F, Map::EvenCols),
      mk<lumiYCbCr422ToYCbCr411_8u_P3P2R, Fmt::I422, Fmt::NV11>("YCbCr422ToYCbCr411_P3P2R", Cls::F, Map::EvenCols),
      // 4:1:1 to 4:2:2
      mk<lumiYCbCr411ToYCbCr422_8u_P3R, Fmt::I411, Fmt::I422>("YCbCr411ToYCbCr422_P3R", Cls::F, Map::ColTwice),
      mk<lumiYCbCr411ToYCrCb422_8u_P3R, Fmt::I411, Fmt::YV16>("YCbCr411ToYCrCb422_P3R", Cls::F, Map::ColTwice),
      mk<lumiYCbCr411ToYCbCr422_8u_P3C2R, Fmt::I411, Fmt::YUY2>("YCbCr411ToYCbCr422_P3C2R", Cls::F, Map::ColTwice),
      mk<lumiYCbCr411ToYCrCb422_8u_P3C2R, Fmt::I411, Fmt::YVYU>("YCbCr411ToYCrCb422_P3C2R", Cls::F, Map::ColTwice),
      mk<lumiYCbCr411ToYCbCr422_8u_P2P3R, Fmt::NV11, Fmt::I422>("YCbCr411ToYCbCr422_P2P3R", Cls::F, Map::ColTwice),
      mk<lumiYCbCr411ToYCbCr422_8u_P2C2R, Fmt::NV11, Fmt::YUY2>("YCbCr411ToYCbCr422_P2C2R", Cls::F, Map::ColTwice),
      // 4:2:0 and 4:1:1, sample for sample
      mk<lumiYCbCr420ToYCbCr411_8u_P2P3R, Fmt::NV12, Fmt::I411>("YCbCr420ToYCbCr411_P2P3R", Cls::D, Map::To411),
      mk<lumiYCbCr420ToYCbCr411_8u_P3P2R, Fmt::I420, Fmt::NV11>("YCbCr420ToYCbCr411_P3P2R", Cls::D, Map::To411),
      mk<lumiYCrCb420ToYCbCr411_8u_P3P2R, Fmt::YV12, Fmt::NV11>("YCrCb420ToYCbCr411_P3P2R", Cls::D, Map::To411),
      mk<lumiYCbCr411ToYCbCr420_8u_P3R, Fmt::I411, Fmt::I420>("YCbCr411ToYCbCr420_P3R", Cls::D, Map::To420),
      mk<lumiYCbCr411ToYCbCr420_8u_P3P2R, Fmt::I411, Fmt::NV12>("YCbCr411ToYCbCr420_P3P2R", Cls::D, Map::To420),
      mk<lumiYCbCr411ToYCbCr420_8u_P2P3R, Fmt::NV11, Fmt::I420>("YCbCr411ToYCbCr420_P2P3R", Cls::D, Map::To420),
      mk<lumiYCbCr411ToYCrCb420_8u_P2P3R, Fmt::NV11, Fmt::YV12>("YCbCr411ToYCrCb420_P2P3R", Cls::D, Map::To420),
      // Resamplers
      mk<lumiYCbCr420To411_8u_P3R, Fmt::I420, Fmt::I411>("YCbCr420To411_P3R", Cls::G2, Map::Filtered),
      mk<lumiYCbCr411To420_8u_P3R, Fmt::I411, Fmt::I420>("YCbCr411To420_P3R", Cls::G, Map::Filtered),
      mk<lumiYCbCr420To1620_8u_P3R, Fmt::I420, Fmt::I1620>("YCbCr420To1620_P3R", Cls::G, Map::Filtered),
      mk<lumiYCbCr1620To420_8u_P3R, Fmt::I1620, Fmt::I420>("YCbCr1620To420_P3R", Cls::G, Map::Filtered),
  };
  return v;
}

// The region a class works on.
LumSize masked(Cls c, LumSize r) {
  switch (c) {
    case Cls::A:
      return {r.width & ~1, r.height & ~1};
    case Cls::B:
    case Cls::C:
      return {r.width & ~1, r.height};
    case Cls::D:
      return {r.width & ~3, r.height & ~1};
    case Cls::E:
    case Cls::F:
      return {r.width & ~3, r.height};
    default:
      return r;
  }
}

// Source chroma position of destination chroma sample (j, k).
std::pair<int, int> sourceOf(Map m, int j, int k) {
  switch (m) {
    case Map::EvenRows:
      return {j, 2 * k};
    case Map::RowTwice:
      return {j, k / 2};
    case Map::EvenCols:
      return {2 * j, k};
    case Map::ColTwice:
      return {j / 2, k};
    case Map::To411:
      return {2 * j + k % 2, k / 2};
    case Map::To420:
      return {j / 2, 2 * k + j % 2};
    default:
      return {j, k};
  }
}

uint8_t at(const std::vector<GuardedImage>& img, Loc l) { return img[size_t(l.plane)].row(l.row)[l.byte]; }

// Converts a random image of the given size and checks every destination byte:
// lumas and chroma samples of the masked region by the case's map, every other
// byte of the destination images untouched.
void checkAgainstMap(const LayoutCase& c, LumSize roi) {
  SCOPED_TRACE(testing::Message() << c.fc.name << " " << roi.width << "x" << roi.height);
  CallImages ci(c.fc, roi);
  std::mt19937 rng(uint32_t(roi.width * 1000 + roi.height));
  ci.randomizeSource(rng);
  const uint8_t fill = 0xE7;
  ci.fillDestination(fill);
  ASSERT_EQ(c.fc.call(ci.buffers(), roi), lumStatusOk);

  const LumSize m = masked(c.cls, roi);
  std::vector<std::vector<uint8_t>> touched;
  for (auto& d : ci.dst) touched.emplace_back(size_t(d.rowBytes()) * size_t(d.height()), 0);
  auto mark = [&](Loc l) { touched[size_t(l.plane)][size_t(l.row) * size_t(ci.dst[size_t(l.plane)].rowBytes()) + size_t(l.byte)] = 1; };

  for (int y = 0; y < m.height; ++y)
    for (int x = 0; x < m.width; ++x) {
      const Loc d = lumaAt(c.dst, x, y);
      ASSERT_EQ(at(ci.dst, d), at(ci.src, lumaAt(c.src, x, y))) << "luma " << x << "," << y;
      mark(d);
    }
  const Grid g = gridOf(c.dst);
  for (int k = 0; k < m.height / g.ch; ++k)
    for (int j = 0; j < m.width / g.cw; ++j)
      for (int ch = 0; ch < 2; ++ch) {
        const auto [sj, sk] = sourceOf(c.map, j, k);
        const Loc d = chromaAt(c.dst, ch, j, k);
        ASSERT_EQ(at(ci.dst, d), at(ci.src, chromaAt(c.src, ch, sj, sk)))
            << (ch ? "Cr " : "Cb ") << j << "," << k << " from " << sj << "," << sk;
        mark(d);
      }
  for (size_t p = 0; p < ci.dst.size(); ++p) {
    const auto b = ci.dst[p].bytes();
    for (size_t i = 0; i < b.size(); ++i)
      if (!touched[p][i]) {
        ASSERT_EQ(b[i], fill) << "plane " << p << " byte " << i << " outside the masked region";
      }
  }
  ASSERT_TRUE(ci.canariesIntact());
}

}  // namespace

TEST(ChromaLayout, TableCoversTheFamily) {
  EXPECT_EQ(cases().size(), 55u);
}

TEST(ChromaLayout, RefusalsInCheckOrderLeaveDestinationUntouched) {
  for (const auto& c : cases()) checkRefusals(c.fc);
}

// Every layout change at sizes that cross the 16- and 32-pixel blocks, odd and
// masked sizes included (the other paths give the same bytes, as checked below).
TEST(ChromaLayout, EverySampleLandsWhereItsLayoutSays) {
  const LumSize sizes[] = {{2, 2}, {3, 3}, {5, 5}, {7, 3}, {15, 2}, {16, 4}, {17, 5}, {31, 3},
                           {33, 2}, {47, 3}, {64, 2}, {66, 2}, {100, 6}, {257, 3}};
  for (const auto& c : cases()) {
    if (c.map == Map::Filtered) continue;
    for (LumSize s : sizes) {
      if (s.width < c.fc.minWidth || s.height < c.fc.minHeight) continue;
      checkAgainstMap(c, s);
      if (testing::Test::HasFatalFailure()) return;
    }
  }
}

TEST(ChromaLayout, VectorBlocksMatchScalarTwinsAtEveryWidth) {
  for (const auto& c : cases()) checkVectorMatchesScalar(c.fc, blockWidths(), 8);
}

// Aligned images take the aligned split of YCbCr422_C2P3R at widths of whole
// 16-pixel blocks; no output may change with the offset.
TEST(ChromaLayout, AlignmentDoesNotChangeSamples) {
  for (const auto& c : cases()) checkAlignmentInvariance(c.fc, {4, 16, 28, 32, 48, 64, 80, 100}, 8);
}

TEST(ChromaLayout, NegativeStepWalksBottomUp) {
  for (const auto& c : cases()) checkNegativeStep(c.fc, 68, 8);
}

// Functions that do not test the height: 0 or below writes nothing and succeeds.
TEST(ChromaLayout, UntestedHeightWritesNothing) {
  for (const auto& c : cases()) {
    if (c.fc.heightChecked) continue;
    SCOPED_TRACE(c.fc.name);
    CallImages ci(c.fc, LumSize{8, 2});
    ci.fillDestination(0x3C);
    const auto before = ci.destinationBytes();
    for (int h : {0, -1, -100}) EXPECT_EQ(c.fc.call(ci.buffers(), LumSize{8, h}), lumStatusOk);
    EXPECT_EQ(ci.destinationBytes(), before);
  }
}

// The four resampling kernels refuse sizes that are not whole multiples.
TEST(ChromaLayout, ResamplersRefuseSizesOffTheirGrid) {
  for (const auto& c : cases()) {
    if (c.map != Map::Filtered) continue;
    SCOPED_TRACE(c.fc.name);
    CallImages ci(c.fc, LumSize{16, 16});
    ci.fillDestination(0x3C);
    const auto before = ci.destinationBytes();
    const bool g2 = c.cls == Cls::G2;
    for (LumSize s : {LumSize{6, 8}, LumSize{10, 8}, LumSize{8, 3}, LumSize{8, 5}, LumSize{8, 6}, LumSize{8, 2}}) {
      const bool ok = g2 && s.width % 4 == 0 && s.height % 2 == 0;
      EXPECT_EQ(c.fc.call(ci.buffers(), s), ok ? lumStatusOk : lumStatusBadSize) << s.width << "x" << s.height;
      if (!ok) {
        EXPECT_EQ(ci.destinationBytes(), before);
      }
    }
  }
}

// Images without row padding (a luma plane copied as one run) give the same
// bytes as padded ones.
TEST(ChromaLayout, DenseImagesMatchPaddedOnes) {
  for (const auto& c : cases()) {
    SCOPED_TRACE(c.fc.name);
    for (LumSize roi : {LumSize{36, 8}, LumSize{64, 4}}) {
      ImageOptions dense;
      dense.padBytes = 0;
      CallImages a(c.fc, roi), b(c.fc, roi, dense);
      std::mt19937 rng(uint32_t(roi.width));
      a.randomizeSource(rng);
      for (size_t i = 0; i < a.src.size(); ++i) b.src[i].setBytes(a.src[i].bytes());
      a.fillDestination(0x21);
      b.fillDestination(0x21);
      ASSERT_EQ(c.fc.call(a.buffers(), roi), lumStatusOk);
      ASSERT_EQ(c.fc.call(b.buffers(), roi), lumStatusOk);
      EXPECT_EQ(a.destinationBytes(), b.destinationBytes());
      EXPECT_TRUE(b.canariesIntact());
    }
  }
}

// Large images with 16-byte aligned destination rows take the streaming stores
// of the functions that have them; misaligned ones do not. Same bytes either way,
// with either vector width.
TEST(ChromaLayout, StreamingStoresWriteTheSameBytes) {
  const char* streaming[] = {"YCbCr422ToCbYCr422_C2R",   "YCbCr422ToYCrCb422_C2R",   "YCbCr422ToYCrCb422_P3C2R",
                             "YCrCb420ToCbYCr422_P3C2R", "YCbCr411ToYCbCr422_P3C2R", "YCbCr411ToYCrCb422_P3C2R",
                             "YCbCr411ToYCbCr422_P2C2R", "YCbCr422ToYCbCr411_C2P2R"};
  int found = 0;
  for (const auto& c : cases())
    for (const char* name : streaming)
      if (c.fc.name == name) {
        ++found;
        checkAlignmentInvariance(c.fc, {1028}, 452);
        lum::NarrowScope narrow;
        checkAlignmentInvariance(c.fc, {1028}, 452);
      }
  EXPECT_EQ(found, 8);
}
