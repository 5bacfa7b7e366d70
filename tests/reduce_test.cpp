// Bit-depth reduction: plain quantisation, ordered dither, error diffusion, the
// noise generator and the one-bit bitmap.
#include <gtest/gtest.h>

#include <cmath>
#include <cstring>
#include <limits>

#include "lumcc.h"
#include "reduce/rand_uniform.h"
#include "support/family.h"

using namespace lumtest;

namespace {

template <class S, class D>
using ReduceFn = LumStatus (*)(const S*, int, D*, int, LumSize, int, LumDitherKind, int, Lum8u*);

// A dither kind with its noise and levels (for 8-bit and for 16-bit destinations).
struct Mode {
  const char* name;
  LumDitherKind kind;
  int noise, levels8, levels16;
};
const Mode kModes[] = {
    {"off", lumDitherOff, 0, 5, 300},           {"offNoisy", lumDitherOff, 37, 256, 65536},
    {"ordered", lumDitherOrdered, 0, 3, 1000},  {"orderedNoise", lumDitherOrdered, 60, 7, 5},
    {"fs", lumDitherFloydSteinberg, 0, 2, 17},  {"fsNoise", lumDitherFloydSteinberg, 100, 4, 4000},
    {"jjn", lumDitherJarvisJudiceNinke, 0, 6, 100}, {"stuckiNoise", lumDitherStucki, 25, 3, 65536},
};

// A scratch buffer of the queried size whose last byte touches a guard page
// and whose start is not 64-byte aligned.
struct Scratch {
  GuardedImage mem;
  Lum8u* p = nullptr;
  Scratch(int layout, LumSize roi, const Mode& m) {
    int n = 0;
    EXPECT_EQ(lumiReduceBitsGetBufferSize(layout, LumSize{std::max(roi.width, 1), 1}, m.noise, m.kind, &n),
              lumStatusOk);
    if (n > 0) {
      mem = GuardedImage(n, 1);
      p = mem.data();
    }
  }
};

// Float sources: mostly 0..1 with edges: signed zeros, the ends, out of range, NaN, infinities.
void floatEdges(GuardedImage& g, std::mt19937& rng) {
  const float edges[] = {0.0f, -0.0f, 1.0f, 0.99999994f, 1.0000001f, -0.25f, 1.7f, 200.0f, -3e9f, 3e9f,
                         std::numeric_limits<float>::quiet_NaN(), std::numeric_limits<float>::infinity(),
                         -std::numeric_limits<float>::infinity(), 1e-8f};
  std::uniform_real_distribution<float> u(-0.05f, 1.05f);
  for (int y = 0; y < g.height(); ++y)
    for (int x = 0; x + 4 <= g.rowBytes(); x += 4) {
      const float v = rng() % 8 == 0 ? edges[rng() % std::size(edges)] : u(rng);
      std::memcpy(g.row(y) + x, &v, 4);
    }
}

struct LayoutInfo {
  const char* tag;
  int channels, code;
};
constexpr LayoutInfo kLayouts[] = {{"C1", 1, 1}, {"C3", 3, 3}, {"C4", 4, 4}, {"AC4", 4, 9}};

template <class S, class D>
FnCase reduceCase(const std::string& name, ReduceFn<S, D> fn, const LayoutInfo& lay, const Mode& m) {
  FnCase c;
  c.name = name + "_" + lay.tag + "/" + m.name;
  c.src = packedImg(int(sizeof(S)) * lay.channels);
  c.dst = packedImg(int(sizeof(D)) * lay.channels);
  c.stepAlign = int(std::max(sizeof(S), sizeof(D)));
  if (std::is_same_v<S, Lum32f>) c.fillSource = floatEdges;
  const int levels = sizeof(D) == 1 ? m.levels8 : m.levels16;
  c.call = [fn, m, levels, code = lay.code](const Buffers& b, LumSize r) {
    Scratch sc(code, r, m);
    return fn(static_cast<const S*>(b.src), b.srcStep, static_cast<D*>(b.dst), b.dstStep, r, m.noise, m.kind,
              levels, sc.p);
  };
  return c;
}

const std::vector<FnCase>& cases() {
  static const std::vector<FnCase> v = [] {
    std::vector<FnCase> t;
    for (const Mode& m : kModes) {
#define LUM_ADD(tag, S, D)                                                           \
  t.push_back(reduceCase<S, D>(#tag, lumiReduceBits_##tag##_C1R, kLayouts[0], m));  \
  t.push_back(reduceCase<S, D>(#tag, lumiReduceBits_##tag##_C3R, kLayouts[1], m));  \
  t.push_back(reduceCase<S, D>(#tag, lumiReduceBits_##tag##_C4R, kLayouts[2], m));  \
  t.push_back(reduceCase<S, D>(#tag, lumiReduceBits_##tag##_AC4R, kLayouts[3], m));
      LUM_ADD(8u, Lum8u, Lum8u)
      LUM_ADD(16u, Lum16u, Lum16u)
      LUM_ADD(16s, Lum16s, Lum16s)
      LUM_ADD(16u8u, Lum16u, Lum8u)
      LUM_ADD(16s8u, Lum16s, Lum8u)
      LUM_ADD(32f8u, Lum32f, Lum8u)
      LUM_ADD(32f16u, Lum32f, Lum16u)
      LUM_ADD(32f16s, Lum32f, Lum16s)
#undef LUM_ADD
    }
    return t;
  }();
  return v;
}

}  // namespace

// ---- the family table ------------------------------------------------------

TEST(ReduceBits, RefusalsInCheckOrderLeaveDestinationUntouched) {
  for (const auto& c : cases()) checkRefusals(c);
}

TEST(ReduceBits, VectorBlocksMatchScalarTwinsAtEveryWidth) {
  for (const auto& c : cases()) checkVectorMatchesScalar(c, blockWidths(), 3);
}

TEST(ReduceBits, AlignmentDoesNotChangeSamples) {
  for (const auto& c : cases()) checkAlignmentInvariance(c, {1, 3, 4, 5, 7, 8, 9, 15, 16, 17, 33}, 3);
}

TEST(ReduceBits, NegativeStepWalksBottomUp) {
  for (const auto& c : cases()) checkNegativeStep(c, 37, 6);
}

// ---- checks and the scratch size ----------------------------------------------

// Two arguments wrong at once: the first in the order null, size, noise, levels, kind wins.
TEST(ReduceBits, FamilyArgumentsRefuseInOrder) {
  struct Row {
    const char* what;
    LumSize roi;
    int noise, kind, levels;
    bool nullSrc, nullBuffer;
    LumStatus want;
  };
  const Row rows[] = {
      {"null before size", {0, 2}, 0, 0, 2, true, false, lumStatusNullPointer},
      {"size before noise", {4, 0}, 101, 0, 2, false, false, lumStatusBadSize},
      {"noise before levels", {4, 2}, 101, 0, 1, false, false, lumStatusNoiseOutOfRange},
      {"negative noise fails unsigned", {4, 2}, -1, 0, 2, false, false, lumStatusNoiseOutOfRange},
      {"levels before kind", {4, 2}, 0, 9, 257, false, false, lumStatusLevelsOutOfRange},
      {"levels 1", {4, 2}, 0, 0, 1, false, false, lumStatusLevelsOutOfRange},
      {"kind 5", {4, 2}, 0, 5, 2, false, false, lumStatusBadDitherKind},
      {"kind -1", {4, 2}, 0, -1, 2, false, true, lumStatusBadDitherKind},
      {"noise ignored with off", {4, 2}, 100, 0, 256, false, true, lumStatusOk},
      {"off takes a null buffer", {4, 2}, 0, 0, 2, false, true, lumStatusOk},
      {"ordered takes a null buffer", {4, 2}, 0, 4, 2, false, true, lumStatusOk},
      {"ordered noise needs one", {4, 2}, 1, 4, 2, false, true, lumStatusNullPointer},
      {"diffusion needs one", {4, 2}, 0, 1, 2, false, true, lumStatusNullPointer},
      {"jjn needs one", {4, 2}, 0, 2, 2, false, true, lumStatusNullPointer},
      {"stucki needs one", {4, 2}, 0, 3, 2, false, true, lumStatusNullPointer},
  };
  std::vector<Lum8u> src(64, 100), buf(20000);
  for (const Row& r : rows) {
    std::vector<Lum8u> dst(64, 0x5A);
    const LumStatus s = lumiReduceBits_8u_C3R(r.nullSrc ? nullptr : src.data(), 12, dst.data(), 12, r.roi, r.noise,
                                              LumDitherKind(r.kind), r.levels, r.nullBuffer ? nullptr : buf.data());
    EXPECT_EQ(s, r.want) << r.what;
    if (r.want != lumStatusOk) {
      EXPECT_EQ(dst, std::vector<Lum8u>(64, 0x5A)) << r.what;
    }
  }
  // Level ranges of the 16-bit destinations and of the 8-bit ones with 16-bit sources.
  std::vector<Lum16u> s16(8, 1), d16(8);
  std::vector<Lum8u> d8(8);
  EXPECT_EQ(lumiReduceBits_16u_C1R(s16.data(), 16, d16.data(), 16, {8, 1}, 0, lumDitherOff, 65536, nullptr), lumStatusOk);
  EXPECT_EQ(lumiReduceBits_16u_C1R(s16.data(), 16, d16.data(), 16, {8, 1}, 0, lumDitherOff, 65537, nullptr),
            lumStatusLevelsOutOfRange);
  EXPECT_EQ(lumiReduceBits_16u8u_C1R(s16.data(), 16, d8.data(), 8, {8, 1}, 0, lumDitherOff, 257, nullptr),
            lumStatusLevelsOutOfRange);
}

TEST(ReduceBits, BufferSizeQuery) {
  struct Row {
    int layout, width, height, noise, kind;
    LumStatus want;
    int size;
  };
  const Row rows[] = {
      {1, 100, 1, 0, lumDitherOff, lumStatusOk, 0},
      {3, 100, 1, 100, lumDitherOff, lumStatusOk, 0},
      {4, 100, 1, 0, lumDitherOrdered, lumStatusOk, 0},
      {9, 100, 1, 1, lumDitherOrdered, lumStatusOk, 6320},
      {9, 7, 1, 50, lumDitherOrdered, lumStatusOk, 6320},
      {1, 100, 1, 0, lumDitherFloydSteinberg, lumStatusOk, 8 * 100 + 80},
      {1, 100, 1, 5, lumDitherFloydSteinberg, lumStatusOk, 8 * 100 + 16 + 6256 + 64},
      {3, 10, 1, 0, lumDitherJarvisJudiceNinke, lumStatusOk, 12 * 10 + 48 + 64},
      {4, 10, 1, 9, lumDitherStucki, lumStatusOk, 12 * 10 + 48 + 6256 + 64},
      {1, 10, 0, 0, lumDitherStucki, lumStatusOk, 12 * 10 + 48 + 64},  // height not looked at
      {1, 0, 1, 0, lumDitherOff, lumStatusBadSize, -1},
      {2, 0, 1, 0, lumDitherOff, lumStatusBadSize, -1},  // size before layout
      {2, 10, 1, 101, lumDitherOff, lumStatusBadLayout, -1},
      {5, 10, 1, 0, lumDitherOff, lumStatusBadLayout, -1},
      {1, 10, 1, 101, 5, lumStatusNoiseOutOfRange, -1},
      {1, 10, 1, -3, lumDitherOff, lumStatusNoiseOutOfRange, -1},
      {1, 10, 1, 0, 5, lumStatusBadDitherKind, -1},
  };
  for (const Row& r : rows) {
    int n = -1;
    EXPECT_EQ(lumiReduceBitsGetBufferSize(r.layout, {r.width, r.height}, r.noise, LumDitherKind(r.kind), &n), r.want)
        << r.layout << " " << r.width << " " << r.kind;
    EXPECT_EQ(n, r.size) << r.layout << " " << r.width << " " << r.kind;
  }
  EXPECT_EQ(lumiReduceBitsGetBufferSize(1, {0, 1}, 0, lumDitherOff, nullptr), lumStatusNullPointer);
}

// ---- the generator --------------------------------------------------------------

TEST(ReduceBits, GeneratorSequenceFromFixedSeeds) {
  using namespace lum;
  // Seed 0 and bounds 0..1024: the first eight noise indices.
  LumRandState16s s16;
  ASSERT_EQ(lumsRandUniformInit_16s(&s16, 0, 1024, 0), lumStatusOk);
  Lum16s a[8];
  ASSERT_EQ(lumsRandUniform_16s(a, 3, &s16), lumStatusOk);
  ASSERT_EQ(lumsRandUniform_16s(a + 3, 5, &s16), lumStatusOk);  // goes on where the first call stopped
  const Lum16s want16[8] = {1, 133, 217, 413, 361, 759, 844, 242};
  for (int i = 0; i < 8; ++i) EXPECT_EQ(a[i], want16[i]) << i;
  // Bounds -2^31..2^31 make the value the raw sum r itself (as a float).
  struct Seq {
    uint32_t seed;
    double r[4];
  };
  const Seq seqs[] = {{0, {-2143376656.0, -1588453546.0, -1238212167.0, -415855842.0}},
                      {12345, {-852021644.0, 1853869290.0, 53130500.0, 1735112000.0}}};
  for (const Seq& q : seqs) {
    LumRandState32f s32;
    ASSERT_EQ(lumsRandUniformInit_32f(&s32, -2147483648.0f, 2147483648.0f, q.seed), lumStatusOk);
    Lum32f f[4];
    ASSERT_EQ(lumsRandUniform_32f(f, 4, &s32), lumStatusOk);
    for (int i = 0; i < 4; ++i) EXPECT_EQ(f[i], float(q.r[i])) << q.seed << " " << i;
  }
  int n = 0;
  EXPECT_EQ(lumsRandUniformGetSize_16s(&n), lumStatusOk);
  EXPECT_EQ(n, 48);
  EXPECT_EQ(lumsRandUniformGetSize_32f(&n), lumStatusOk);
  EXPECT_EQ(n, 52);
}

TEST(ReduceBits, GeneratorRefusals) {
  using namespace lum;
  LumRandState16s s16;
  LumRandState32f s32;
  ASSERT_EQ(lumsRandUniformInit_16s(&s16, 0, 10, 1), lumStatusOk);
  ASSERT_EQ(lumsRandUniformInit_32f(&s32, 0.0f, 1.0f, 1), lumStatusOk);
  Lum16s d16[2];
  Lum32f d32[2];
  EXPECT_EQ(lumsRandUniform_16s(nullptr, 2, &s16), lumStatusNullPointer);
  EXPECT_EQ(lumsRandUniform_16s(d16, 2, nullptr), lumStatusNullPointer);
  EXPECT_EQ(lumsRandUniform_16s(d16, 0, &s16), lumStatusBadSize);
  EXPECT_EQ(lumsRandUniform_32f(d32, -1, &s32), lumStatusBadSize);
  EXPECT_EQ(lumsRandUniform_16s(d16, 2, reinterpret_cast<LumRandState16s*>(&s32)), lumStatusWrongState);
  EXPECT_EQ(lumsRandUniform_32f(d32, 2, reinterpret_cast<LumRandState32f*>(&s16)), lumStatusWrongState);
  EXPECT_EQ(lumsRandUniformInit_16s(nullptr, 0, 1, 0), lumStatusNullPointer);
  EXPECT_EQ(lumsRandUniformGetSize_32f(nullptr), lumStatusNullPointer);
}

// ---- plain quantisation ------------------------------------------------------------

namespace {
// One row of samples through fn at `levels`; returns the destination.
template <class S, class D>
std::vector<D> reduceRow(ReduceFn<S, D> fn, const std::vector<S>& src, int channels, LumDitherKind kind, int levels,
                         int noise = 0, std::vector<D> dst = {}) {
  const int w = int(src.size()) / channels;
  if (dst.empty()) dst.assign(src.size(), D(0x5A));
  std::vector<Lum8u> buf(size_t(20000 + 16 * w));
  EXPECT_EQ(fn(src.data(), int(src.size() * sizeof(S)), dst.data(), int(dst.size() * sizeof(D)), {w, 1}, noise, kind,
               levels, buf.data()),
            lumStatusOk);
  return dst;
}
}  // namespace

TEST(ReduceBits, PlainTwoLevelsSplitAtHalf) {
  EXPECT_EQ((reduceRow<Lum8u, Lum8u>(lumiReduceBits_8u_C1R, {0, 127, 128, 255, 1}, 1, lumDitherOff, 2)),
            (std::vector<Lum8u>{0, 0, 255, 255, 0}));
  EXPECT_EQ((reduceRow<Lum16u, Lum16u>(lumiReduceBits_16u_C1R, {0, 32767, 32768, 65535, 9}, 1, lumDitherOff, 2)),
            (std::vector<Lum16u>{0, 0, 65535, 65535, 0}));
  EXPECT_EQ((reduceRow<Lum16s, Lum16s>(lumiReduceBits_16s_C1R, {-32768, -1, 0, 32767, 5}, 1, lumDitherOff, 2)),
            (std::vector<Lum16s>{-32768, -32768, 32767, 32767, 32767}));
  EXPECT_EQ((reduceRow<Lum16s, Lum8u>(lumiReduceBits_16s8u_C1R, {-32768, -1, 0, 32767, 5}, 1, lumDitherOff, 2)),
            (std::vector<Lum8u>{0, 0, 255, 255, 255}));
  // Exactly half does not round up: the test is strict.
  EXPECT_EQ((reduceRow<Lum32f, Lum8u>(lumiReduceBits_32f8u_C1R, {0.5f, 0.50000006f, 0.0f, 1.0f, -0.3f}, 1,
                                     lumDitherOff, 2)),
            (std::vector<Lum8u>{0, 255, 0, 255, 0}));
  EXPECT_EQ((reduceRow<Lum32f, Lum16s>(lumiReduceBits_32f16s_C1R, {0.5f, 0.75f, 0.0f, 1.0f, 7.0f}, 1,
                                      lumDitherOff, 2)),
            (std::vector<Lum16s>{-32768, 32767, -32768, 32767, 32767}));
}

// Far above 1, an 8-bit code saturates through 16 bits in the block body and
// is read from its low 16 bits in the tail (200 * 255 = 51000 reads negative).
TEST(ReduceBits, PlainFloatBodySaturatesTailWraps) {
  const std::vector<Lum32f> far(5, 200.0f);
  EXPECT_EQ((reduceRow<Lum32f, Lum8u>(lumiReduceBits_32f8u_C1R, far, 1, lumDitherOff, 256)),
            (std::vector<Lum8u>{255, 255, 255, 255, 0}));
  // C3 of two pixels: six samples, the body takes four.
  EXPECT_EQ((reduceRow<Lum32f, Lum8u>(lumiReduceBits_32f8u_C3R, std::vector<Lum32f>(6, 200.0f), 3, lumDitherOff, 256)),
            (std::vector<Lum8u>{255, 255, 255, 255, 0, 0}));
  // AC4 runs every pixel through the body; alpha stays.
  EXPECT_EQ((reduceRow<Lum32f, Lum8u>(lumiReduceBits_32f8u_AC4R, std::vector<Lum32f>(8, 200.0f), 4, lumDitherOff, 256)),
            (std::vector<Lum8u>{255, 255, 255, 0x5A, 255, 255, 255, 0x5A}));
}

// ---- ordered dither ----------------------------------------------------------------

// Flat 128, two levels: 255 where bayer_thresh * 255 < 128, the matrix anchored
// at the region's first pixel.
TEST(ReduceBits, OrderedFlatImageShowsTheMatrix) {
  const Lum8u want[4][4] = {{255, 0, 255, 0}, {0, 255, 0, 255}, {255, 0, 255, 0}, {0, 255, 0, 255}};
  const int W = 9, H = 6;
  std::vector<Lum8u> src(size_t(W * H), 128), dst(size_t(W * H), 1);
  // The region starts at (1, 1) of the buffer: the matrix follows the region.
  ASSERT_EQ(lumiReduceBits_8u_C1R(src.data() + W + 1, W, dst.data() + W + 1, W, {W - 1, H - 1}, 0, lumDitherOrdered,
                                  2, nullptr),
            lumStatusOk);
  for (int y = 0; y < H - 1; ++y)
    for (int x = 0; x < W - 1; ++x) EXPECT_EQ(dst[size_t((y + 1) * W + x + 1)], want[y & 3][x & 3]) << x << "," << y;
  for (int x = 0; x < W; ++x) EXPECT_EQ(dst[size_t(x)], 1);  // outside the region
  // Zero stays zero; the top of a 16-bit source with 256 levels gives 255.
  EXPECT_EQ((reduceRow<Lum8u, Lum8u>(lumiReduceBits_8u_C1R, std::vector<Lum8u>(7, 0), 1, lumDitherOrdered, 2)),
            std::vector<Lum8u>(7, 0));
  EXPECT_EQ((reduceRow<Lum16u, Lum8u>(lumiReduceBits_16u8u_C1R, std::vector<Lum16u>(7, 65535), 1, lumDitherOrdered, 256)),
            std::vector<Lum8u>(7, 255));
}

// A narrower region gives the columns of a wider one: a tail pixel still uses column x & 3.
TEST(ReduceBits, OrderedCropEqualsWiderRegion) {
  std::mt19937 rng(3);
  std::vector<Lum16u> src(40 * 3);
  for (auto& v : src) v = Lum16u(rng());
  for (int noise : {0, 70}) {
    std::vector<Lum8u> buf(8000);
    std::vector<Lum16u> wide(40 * 3), narrow(37 * 3);
    ASSERT_EQ(lumiReduceBits_16u_C3R(src.data(), 240, wide.data(), 240, {40, 1}, noise, lumDitherOrdered, 9, buf.data()),
              lumStatusOk);
    ASSERT_EQ(lumiReduceBits_16u_C3R(src.data(), 240, narrow.data(), 222, {37, 1}, noise, lumDitherOrdered, 9,
                                     buf.data()),
              lumStatusOk);
    EXPECT_TRUE(std::equal(narrow.begin(), narrow.end(), wide.begin())) << noise;
  }
}

// The fourth destination sample of AC4 keeps its value in every kind and path.
TEST(ReduceBits, AlphaUntouchedInEveryAc4Path) {
  for (const auto& c : cases()) {
    if (c.name.find("_AC4/") == std::string::npos) continue;
    const LumSize roi{21, 5};
    CallImages ci(c, roi);
    std::mt19937 rng(11);
    ci.randomizeSource(rng);
    ci.fillDestination(0x77);
    ASSERT_EQ(c.call(ci.buffers(), roi), lumStatusOk) << c.name;
    const int elem = ci.dst[0].rowBytes() / (4 * roi.width);
    for (int y = 0; y < roi.height; ++y)
      for (int x = 0; x < roi.width; ++x)
        for (int b = 0; b < elem; ++b)
          ASSERT_EQ(ci.dst[0].row(y)[(4 * x + 3) * elem + b], 0x77) << c.name << " pixel " << x << "," << y;
  }
}

// ---- error diffusion --------------------------------------------------------------

// Clamped samples pass no error on: 0 and 255 come out as they went in.
TEST(ReduceBits, DiffusionClampedSamplesDoNotBleed) {
  std::mt19937 rng(4);
  std::vector<Lum8u> src(24 * 6);
  for (auto& v : src) v = rng() & 1 ? 255 : 0;
  for (int kind : {1, 2, 3})
    for (int noise : {0, 30}) {
      std::vector<Lum8u> dst(src.size()), buf(8000);
      ASSERT_EQ(lumiReduceBits_8u_C1R(src.data(), 24, dst.data(), 24, {24, 6}, noise, LumDitherKind(kind), 5,
                                      buf.data()),
                lumStatusOk);
      EXPECT_EQ(dst, src) << kind << " " << noise;
    }
}

// Width 1: the pads supply every neighbour, only the rows above count.
TEST(ReduceBits, DiffusionSingleColumn) {
  struct Row {
    int kind;
    std::vector<Lum8u> want;
  };
  const Row rows[] = {{1, {0, 255, 0, 0, 255, 0}}, {2, {0, 0, 0, 255, 0, 0}}, {3, {0, 0, 255, 0, 0, 255}}};
  for (const Row& r : rows) {
    std::vector<Lum8u> src(6, 100), dst(6), buf(4000);
    ASSERT_EQ(lumiReduceBits_8u_C1R(src.data(), 1, dst.data(), 1, {1, 6}, 0, LumDitherKind(r.kind), 2, buf.data()),
              lumStatusOk);
    EXPECT_EQ(dst, r.want) << r.kind;
  }
}

TEST(ReduceBits, DiffusionFlatGrayGivesAboutHalf) {
  std::vector<Lum8u> src(64 * 64, 128), dst(src.size()), buf(4000);
  for (int kind : {1, 2, 3}) {
    ASSERT_EQ(lumiReduceBits_8u_C1R(src.data(), 64, dst.data(), 64, {64, 64}, 0, LumDitherKind(kind), 2, buf.data()),
              lumStatusOk);
    const auto on = std::count(dst.begin(), dst.end(), 255);
    EXPECT_EQ(on + std::count(dst.begin(), dst.end(), 0), 64 * 64);
    EXPECT_NEAR(double(on) / (64 * 64), 0.5, 0.05) << kind;
  }
}

// Three-row kinds: in a block the fourth pixel (x & 3 == 3) reads the rows
// above at x + 1 twice and never at x + 2; the tail reads the full filter.
TEST(ReduceBits, ThreeRowBlockFourthPixelSkipsFarColumn) {
  struct Row {
    int width, changed, watched;
    bool affects;
  };
  const Row rows[] = {{8, 5, 3, false}, {8, 4, 2, true}, {8, 4, 3, true}, {7, 6, 4, true}};
  for (int kind : {2, 3})
    for (const Row& r : rows) {
      auto run = [&](Lum8u v, Lum8u below) {
        std::vector<Lum8u> src(size_t(2 * r.width), below), dst(src.size()), buf(4000);
        std::fill(src.begin(), src.begin() + r.width, 0);
        src[size_t(r.changed)] = v;  // error v in the first row at one column
        EXPECT_EQ(lumiReduceBits_8u_C1R(src.data(), r.width, dst.data(), r.width, {r.width, 2}, 0, LumDitherKind(kind),
                                        2, buf.data()),
                  lumStatusOk);
        return dst[size_t(r.width + r.watched)];
      };
      bool differs = false;
      for (int below = 60; below < 200; ++below)
        for (Lum8u v : {40, 80, 100, 120}) differs |= run(v, Lum8u(below)) != run(0, Lum8u(below));
      EXPECT_EQ(differs, r.affects) << kind << " width " << r.width << " col " << r.changed << "->" << r.watched;
    }
}

// The error rows are not cleared between channels: C3 is not three planes.
TEST(ReduceBits, DiffusionC3IsNotThreePlanes) {
  const int W = 16, H = 8;
  std::mt19937 rng(8);
  std::vector<Lum8u> src(size_t(W * H * 3));
  for (auto& v : src) v = Lum8u(rng());
  std::vector<Lum8u> c3(src.size()), buf(4000);
  ASSERT_EQ(lumiReduceBits_8u_C3R(src.data(), 3 * W, c3.data(), 3 * W, {W, H}, 0, lumDitherFloydSteinberg, 3,
                                  buf.data()),
            lumStatusOk);
  bool laterDiffers = false;
  for (int ch = 0; ch < 3; ++ch) {
    std::vector<Lum8u> plane(size_t(W * H)), out(plane.size());
    for (size_t i = 0; i < plane.size(); ++i) plane[i] = src[3 * i + size_t(ch)];
    ASSERT_EQ(lumiReduceBits_8u_C1R(plane.data(), W, out.data(), W, {W, H}, 0, lumDitherFloydSteinberg, 3, buf.data()),
              lumStatusOk);
    bool same = true;
    for (size_t i = 0; i < out.size(); ++i) same &= out[i] == c3[3 * i + size_t(ch)];
    if (ch == 0) EXPECT_TRUE(same) << "the first channel starts from zero rows";
    else laterDiffers |= !same;
  }
  EXPECT_TRUE(laterDiffers);
}

// ---- one-bit reduction -----------------------------------------------------------

TEST(ReduceBits1u, ArgumentsRefuseInOrder) {
  struct Row {
    const char* what;
    bool nullSrc;
    int offset, width, kind;
    bool nullBuffer;
    LumStatus want;
  };
  const Row rows[] = {
      {"null before size", true, -1, 0, 1, true, lumStatusNullPointer},
      {"negative offset", false, -1, 8, 0, false, lumStatusBadSize},
      {"size before kind", false, 0, 0, 1, false, lumStatusBadSize},
      {"kind 1", false, 0, 8, 1, false, lumStatusBadDitherKind},
      {"kind 2", false, 0, 8, 2, false, lumStatusBadDitherKind},
      {"kind 4 before buffer", false, 0, 8, 4, true, lumStatusBadDitherKind},
      {"stucki needs a buffer", false, 0, 8, 3, true, lumStatusNullPointer},
      {"threshold takes none", false, 5, 8, 0, true, lumStatusOk},
  };
  std::vector<Lum8u> src(16, 200), buf(1000);
  for (const Row& r : rows) {
    std::vector<Lum8u> dst(4, 0x5A);
    EXPECT_EQ(lumiReduceBits_8u1u_C1R(r.nullSrc ? nullptr : src.data(), 8, dst.data(), 4, r.offset, {r.width, 1}, 7, 9,
                                      LumDitherKind(r.kind), 100, r.nullBuffer ? nullptr : buf.data()),
              r.want)
        << r.what;
    if (r.want != lumStatusOk) {
      EXPECT_EQ(dst, std::vector<Lum8u>(4, 0x5A)) << r.what;
    }
  }
}

// Bit placement around dstBitOffset: the first byte keeps its top bits and
// loses the rest; a last partial byte keeps its low bits.
TEST(ReduceBits1u, BitsAroundTheOffset) {
  struct Row {
    std::vector<Lum8u> px;
    int offset;
    Lum8u threshold;
    std::vector<Lum8u> want;  // destination bytes, starting from 0xFF 0xAA 0x55
  };
  const Row rows[] = {
      {{200, 0}, 3, 100, {0xF0, 0xAA, 0x55}},
      {{200, 0}, 11, 100, {0xF0, 0xAA, 0x55}},  // only the low three bits count
      {{1, 1, 1, 1, 1, 1, 1, 1, 1, 1}, 0, 0, {0xFF, 0xEA, 0x55}},
      {{9, 0, 0, 0, 0, 0, 0, 9, 0, 9}, 0, 0, {0x81, 0x6A, 0x55}},
      {{255, 255, 255, 255, 255, 255, 255, 255, 255, 255}, 0, 255, {0x00, 0x2A, 0x55}},
      {{5, 0, 5, 0, 5, 0, 5}, 1, 4, {0xD5, 0xAA, 0x55}},
      {{5, 0, 5, 0, 5, 0, 5, 5, 5}, 1, 4, {0xD5, 0xEA, 0x55}},
  };
  for (const Row& r : rows) {
    std::vector<Lum8u> dst{0xFF, 0xAA, 0x55};
    const int w = int(r.px.size());
    ASSERT_EQ(lumiReduceBits_8u1u_C1R(r.px.data(), w, dst.data(), 3, r.offset, {w, 1}, 0, 0, lumDitherOff, r.threshold,
                                      nullptr),
              lumStatusOk);
    EXPECT_EQ(dst, r.want) << "offset " << r.offset << " width " << w;
  }
}

// Stucki in integers on flat 128, threshold 127: the first pixel is on, its
// error -1023 turns the next off (840), then on (-964), off; about half overall.
TEST(ReduceBits1u, StuckiFlatGray) {
  const int W = 64, H = 32;
  std::vector<Lum8u> src(size_t(W * H), 128), dst(size_t(W / 8 * H)), buf(2000);
  ASSERT_EQ(lumiReduceBits_8u1u_C1R(src.data(), W, dst.data(), W / 8, 0, {W, H}, 0, 0, lumDitherStucki, 127, buf.data()),
            lumStatusOk);
  EXPECT_EQ(dst[0] >> 4, 0xA);
  int on = 0;
  for (Lum8u b : dst) on += __builtin_popcount(b);
  EXPECT_NEAR(double(on) / (W * H), 0.5, 0.05);
  // Every row restarts at the same bit offset: rows of the offset call equal the plain call's shifted bits.
  std::vector<Lum8u> shifted(size_t((W / 8 + 1) * H), 0);
  ASSERT_EQ(lumiReduceBits_8u1u_C1R(src.data(), W, shifted.data(), W / 8 + 1, 4, {W, H}, 0, 0, lumDitherStucki, 127,
                                    buf.data()),
            lumStatusOk);
  for (int y = 0; y < H; ++y)
    for (int i = 0; i < W / 8; ++i) {
      const int got = ((shifted[size_t(y * (W / 8 + 1) + i)] << 4) | (shifted[size_t(y * (W / 8 + 1) + i + 1)] >> 4)) & 0xFF;
      ASSERT_EQ(got, dst[size_t(y * W / 8 + i)]) << y << " " << i;
    }
}

// An odd byte step: lumDitherOff reads and writes row 1 at byte 5, the dither
// kinds round the step down to whole samples and use byte 4.
TEST(ReduceBits, OddStepHonouredByOffRoundedByDitherKinds) {
  // Read at byte 4 the sample is 0xFF00 (on), at byte 5 it is 0x00FF (off).
  const uint8_t src[10] = {0, 0, 0, 0, 0x00, 0xFF, 0x00, 0xFF, 0x00, 0xFF};
  auto sampleAt = [](const uint8_t* d, int byte) {
    Lum16u v;
    std::memcpy(&v, d + byte, 2);
    return int(v);
  };
  for (int kind : {lumDitherOff, lumDitherOrdered, lumDitherFloydSteinberg}) {
    alignas(4) uint8_t dst[12] = {};
    std::vector<Lum8u> buf(2000);
    alignas(4) uint8_t in[12] = {};
    std::memcpy(in, src, sizeof src);
    ASSERT_EQ(lumiReduceBits_16u_C1R(reinterpret_cast<const Lum16u*>(in), 5, reinterpret_cast<Lum16u*>(dst), 5,
                                     {2, 2}, 0, LumDitherKind(kind), 2, buf.data()),
              lumStatusOk);
    const int row1 = kind == lumDitherOff ? 5 : 4;
    const int want = kind == lumDitherOff ? 0 : 65535;
    EXPECT_EQ(sampleAt(dst, row1), want) << kind;
    EXPECT_EQ(sampleAt(dst, row1 + 2), want) << kind;
  }
}

// Noise terms from the generator's first values (seed 0): pixel (0, 0) takes
// threshold[1] = r1 / 2^31 = -0.7397 of a unit, pixel (0, 1) threshold[3] =
// r3 / 2^31 = -0.1936 (noise 100). Ordered: t = (term + B) * 255, so (0, 0)
// has t = -188.6 and turns on at 0, (0, 1) has t = 154.6 instead of 204.
// Floyd-Steinberg: t = (term + 0.5) * 255 = -61.1 at (0, 0).
TEST(ReduceBits, NoiseTermsOfTheFirstPixels) {
  struct Row {
    int kind, noise;
    Lum8u v0, v1;
    Lum8u want0, want1;
  };
  const Row rows[] = {
      {lumDitherOrdered, 100, 0, 150, 255, 0},  {lumDitherOrdered, 100, 0, 160, 255, 255},
      {lumDitherOrdered, 0, 0, 160, 0, 0},      {lumDitherFloydSteinberg, 100, 0, 0, 255, 0},
      {lumDitherFloydSteinberg, 0, 0, 0, 0, 0},
  };
  for (const Row& r : rows) {
    const Lum8u src[2] = {r.v0, r.v1};
    Lum8u dst[2] = {7, 7};
    std::vector<Lum8u> buf(8000);
    ASSERT_EQ(lumiReduceBits_8u_C1R(src, 1, dst, 1, {1, 2}, r.noise, LumDitherKind(r.kind), 2, buf.data()), lumStatusOk);
    EXPECT_EQ(dst[0], r.want0) << r.kind << " " << r.noise << " " << int(r.v1);
    EXPECT_EQ(dst[1], r.want1) << r.kind << " " << r.noise << " " << int(r.v1);
  }
}
