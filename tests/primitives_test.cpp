// Row primitives: copies and fills in guarded memory on every path, the size
// rules of the streaming paths, the refusal orders, and the float reductions
// against a separate statement of their accumulation orders.
#include "kernels/primitives.h"

#include <gtest/gtest.h>

#include <cfloat>
#include <cmath>
#include <cstring>
#include <functional>
#include <random>
#include <vector>

#include "frame/simd.h"
#include "kernels/extended_sum.h"
#include "support/guarded_image.h"

using namespace lumtest;
namespace K = lum::kern;

namespace {

std::vector<int> widths() {
  std::vector<int> w;
  for (int i = 1; i <= 70; ++i) w.push_back(i);
  for (int i : {127, 128, 129, 300, 1000, 4099}) w.push_back(i);
  return w;
}

// Runs f once with the vector blocks and once with their scalar twins.
void bothPaths(const std::function<void(const char*)>& f) {
  f("vector");
  lum::ScalarScope scalar;
  f("scalar");
}

uint32_t bitsOf(float f) {
  uint32_t u;
  std::memcpy(&u, &f, 4);
  return u;
}
float fromBits(uint32_t u) {
  float f;
  std::memcpy(&f, &u, 4);
  return f;
}
uint64_t bitsOf(double d) {
  uint64_t u;
  std::memcpy(&u, &d, 8);
  return u;
}

// ---- refusals ------------------------------------------------------------

// A call with the pointer `nullArg` (or none, -1) null and a bad size or not.
// The destination and out-parameters live in `dst`, which a refusal must leave as it was.
struct RefusalCase {
  const char* name;
  int pointers;
  bool sizeFirst;
  std::function<LumStatus(int nullArg, bool badSize, std::vector<uint8_t>& src, std::vector<uint8_t>& dst)> call;
};

template <class T>
T* ptr(std::vector<uint8_t>& b, int arg, int nullArg) {
  return arg == nullArg ? nullptr : reinterpret_cast<T*>(b.data());
}

const std::vector<RefusalCase>& refusalCases() {
  static const std::vector<RefusalCase> v = {
      {"lumiCopy_8u_C1R", 2, false,
       [](int n, bool bad, auto& s, auto& d) {
         return lumiCopy_8u_C1R(ptr<Lum8u>(s, 0, n), 16, ptr<Lum8u>(d, 1, n), 16, {bad ? 0 : 4, 2});
       }},
      {"lumiCopy_8u_C1R_L", 2, false,
       [](int n, bool bad, auto& s, auto& d) {
         return lumiCopy_8u_C1R_L(ptr<Lum8u>(s, 0, n), 16, ptr<Lum8u>(d, 1, n), 16, {4, bad ? -1 : 2});
       }},
      {"lumiSet_8u_C1R", 1, true,
       [](int n, bool bad, auto&, auto& d) {
         return lumiSet_8u_C1R(7, ptr<Lum8u>(d, 0, n), 16, {bad ? -3 : 4, 2});
       }},
      {"lumiMax_32f_C1R", 2, false,
       [](int n, bool bad, auto& s, auto& d) {
         return lumiMax_32f_C1R(ptr<Lum32f>(s, 0, n), 16, {4, bad ? 0 : 2}, ptr<Lum32f>(d, 1, n));
       }},
      {"lumiSum_32f_C1R hint 2", 2, false,
       [](int n, bool bad, auto& s, auto& d) {
         return lumiSum_32f_C1R(ptr<Lum32f>(s, 0, n), 16, {bad ? 0 : 4, 2}, ptr<Lum64f>(d, 1, n), 2);
       }},
      {"lumiSum_32f_C1R hint 0", 2, false,
       [](int n, bool bad, auto& s, auto& d) {
         return lumiSum_32f_C1R(ptr<Lum32f>(s, 0, n), 16, {4, bad ? 0 : 2}, ptr<Lum64f>(d, 1, n), 0);
       }},
      // pMean (argument 1) is tested before the sum runs its own checks.
      {"lumiMean_32f_C1R", 2, false,
       [](int n, bool bad, auto& s, auto& d) {
         return lumiMean_32f_C1R(ptr<Lum32f>(s, 0, n), 16, {bad ? 0 : 4, 2}, ptr<Lum64f>(d, 1, n), 1);
       }},
      {"lumsCopy_8u", 2, false,
       [](int n, bool bad, auto& s, auto& d) {
         return lumsCopy_8u(ptr<Lum8u>(s, 0, n), ptr<Lum8u>(d, 1, n), bad ? 0 : 9);
       }},
      {"lumsCopy_32f", 2, false,
       [](int n, bool bad, auto& s, auto& d) {
         return lumsCopy_32f(ptr<Lum32f>(s, 0, n), ptr<Lum32f>(d, 1, n), bad ? -1 : 9);
       }},
      {"lumsCopy_32s", 2, false,
       [](int n, bool bad, auto& s, auto& d) {
         return lumsCopy_32s(ptr<Lum32s>(s, 0, n), ptr<Lum32s>(d, 1, n), bad ? 0 : 9);
       }},
      {"lumsSet_32f", 1, false,
       [](int n, bool bad, auto&, auto& d) { return lumsSet_32f(1.5f, ptr<Lum32f>(d, 0, n), bad ? 0 : 9); }},
      {"lumsAddC_32f", 2, false,
       [](int n, bool bad, auto& s, auto& d) {
         return lumsAddC_32f(ptr<Lum32f>(s, 0, n), 2.0f, ptr<Lum32f>(d, 1, n), bad ? 0 : 12);
       }},
      {"lumsSubC_32f", 2, false,
       [](int n, bool bad, auto& s, auto& d) {
         return lumsSubC_32f(ptr<Lum32f>(s, 0, n), 2.0f, ptr<Lum32f>(d, 1, n), bad ? 0 : 12);
       }},
      // val 0 hands everything to the copy, whose status comes back.
      {"lumsAddC_32f val 0", 2, false,
       [](int n, bool bad, auto& s, auto& d) {
         return lumsAddC_32f(ptr<Lum32f>(s, 0, n), 0.0f, ptr<Lum32f>(d, 1, n), bad ? 0 : 12);
       }},
      {"lumsSubC_32f val -0", 2, false,
       [](int n, bool bad, auto& s, auto& d) {
         return lumsSubC_32f(ptr<Lum32f>(s, 0, n), -0.0f, ptr<Lum32f>(d, 1, n), bad ? 0 : 12);
       }},
  };
  return v;
}

TEST(Primitives, RefusalsInTheirOrderLeaveTheDestinationUntouched) {
  for (const RefusalCase& c : refusalCases()) {
    for (int nullArg = -1; nullArg < c.pointers; ++nullArg) {
      for (bool bad : {false, true}) {
        std::vector<uint8_t> src(256, 0x3C), dst(256, 0xA5);
        const LumStatus got = c.call(nullArg, bad, src, dst);
        LumStatus want = lumStatusOk;
        if (nullArg >= 0 && bad)
          want = c.sizeFirst ? lumStatusBadSize : lumStatusNullPointer;
        else if (nullArg >= 0)
          want = lumStatusNullPointer;
        else if (bad)
          want = lumStatusBadSize;
        EXPECT_EQ(got, want) << c.name << " null=" << nullArg << " badSize=" << bad;
        if (want != lumStatusOk) {
          EXPECT_EQ(dst, std::vector<uint8_t>(256, 0xA5)) << c.name << " wrote on refusal";
        }
      }
    }
  }
}

// ---- path rules ------------------------------------------------------------

int64_t gProbeSize = 0;
int gProbeCalls = 0;
int64_t fakeProbe() {
  ++gProbeCalls;
  return gProbeSize;
}
int32_t gCoreStatus = 0;
int32_t fakeCore(int32_t* size) {
  ++gProbeCalls;
  *size = int32_t(gProbeSize);
  return gCoreStatus;
}

TEST(Primitives, RegionCopyStreamsByTheSizeRules) {
  struct Row {
    int w, h, ss, ds;
    int64_t cache;
    bool stream, merged, probed;
  } rows[] = {
      {63, 100000, 64, 64, 1 << 20, false, false, false},     // narrow rows never stream
      {32, 100000, 32, 32, 4 << 20, true, true, true},        // unless they merge into one
      {32, 100000, 32, 33, 4 << 20, false, false, false},     // both steps must equal the width
      {64, 2048, 128, 128, 1 << 10, false, false, false},     // 131072 bytes: plain without asking
      {64, 2049, 128, 128, 256 << 10, true, false, true},     // above half the cache
      {64, 2049, 128, 128, 0, false, false, true},            // unknown cache: plain
      {1000, 1000, 1000, 2000, 2 << 20, false, false, true},  // 1e6 is not above 1 MiB
      {65536, 65536, 65536, 65536, 0, true, false, false},    // product overflows: streams unasked
      {46341, 46341, 0, 0, 0, true, false, false},
  };
  for (const Row& r : rows) {
    gProbeSize = r.cache;
    gProbeCalls = 0;
    const K::RegionCopyPlan p = K::planRegionCopy(r.w, r.h, r.ss, r.ds, fakeProbe);
    EXPECT_EQ(p.streaming, r.stream) << r.w << "x" << r.h;
    EXPECT_EQ(p.merged, r.merged) << r.w << "x" << r.h;
    EXPECT_EQ(gProbeCalls > 0, r.probed) << r.w << "x" << r.h;
  }
}

TEST(Primitives, ArrayCopyAndFillStreamByTheSizeRules) {
  struct Row {
    const char* what;
    std::function<bool()> rule;
    int64_t cache;
    bool stream, probed;
  } rows[] = {
      {"copy below 1 MiB", [] { return K::bytesCopyStreams(1048575, fakeProbe); }, 1, false, false},
      {"copy at half the cache", [] { return K::bytesCopyStreams(1048576, fakeProbe); }, 2 << 20, true, true},
      {"copy below half", [] { return K::bytesCopyStreams(1048576, fakeProbe); }, (2 << 20) + 2, false, true},
      {"words at the limit", [] { return K::wordsSetStreams(262144, fakeProbe); }, 1, false, false},
      {"words above it", [] { return K::wordsSetStreams(262145, fakeProbe); }, 2 << 20, true, true},
      {"words, big cache", [] { return K::wordsSetStreams(262145, fakeProbe); }, 4 << 20, false, true},
      {"set at 524288", [] { return K::regionSetStreams(524288, fakeCore); }, 1, false, false},
      {"set, cache = total", [] { return K::regionSetStreams(524289, fakeCore); }, 524289, true, true},
      {"set, cache above", [] { return K::regionSetStreams(524289, fakeCore); }, 524290, false, true},
  };
  for (const Row& r : rows) {
    gProbeSize = r.cache;
    gProbeCalls = 0;
    gCoreStatus = 0;
    EXPECT_EQ(r.rule(), r.stream) << r.what;
    EXPECT_EQ(gProbeCalls > 0, r.probed) << r.what;
  }
  gCoreStatus = -1;  // the core library cannot tell: no streaming
  gProbeSize = 1;
  EXPECT_FALSE(K::regionSetStreams(1 << 30, fakeCore));
}

TEST(Primitives, CacheDescriptorsGiveTheLargestListedCache) {
  struct Row {
    uint32_t r[4];
    int64_t size;
  } rows[] = {
      {{0x00000001, 0, 0, 0x00000043}, 512 << 10},
      {{0x00EC0001, 0, 0, 0}, 24 << 20},                     // a descriptor in eax's upper bytes
      {{0x00000001, 0x00000043, 0x00004D00, 0}, 16 << 20},   // the table order picks the largest
      {{0x00000001, 0x800000EC, 0, 0x00000022}, 512 << 10},  // top bit set: register ignored
      {{0x00000002, 0x000000EC, 0, 0}, 0},                   // eax low byte must be 1
      {{0x000000FF, 0x000000EC, 0, 0}, 0},
      {{0x00FFFF01, 0x0000002C, 0, 0}, 0},  // no cache of the table named
      {{0x00000001, 0x93000000, 0, 0}, 0},  // 0x93 is a size code, not a descriptor
      {{0x00000001, 0, 0x00EB0000, 0}, 18 << 20},
      {{0x00000001, 0, 0, 0x48000000}, 3 << 20},
      {{0x00000001, 0x00290000, 0, 0}, 4 << 20},
  };
  for (const Row& r : rows) EXPECT_EQ(K::cacheSizeFromLeaf2(r.r), r.size) << std::hex << r.r[1] << " " << r.r[3];
  const int64_t here = K::probeCacheSize();
  EXPECT_TRUE(here == 0 || (here >= (512 << 10) && here <= (24 << 20))) << here;
}

// ---- copies and fills in guarded memory ------------------------------------

// Named copies from one guarded image to another of the same shape.
using Copier = std::pair<const char*, std::function<void(const GuardedImage&, const GuardedImage&)>>;

// Runs each copier on fresh random bytes and checks every byte, the canaries of
// both images and an unchanged source.
void expectCopies(GuardedImage& s, GuardedImage& d, const std::vector<Copier>& copiers, const std::string& what) {
  std::mt19937 rng(unsigned(s.rowBytes() * 31 + s.height()));
  s.randomize(rng);
  for (const auto& [name, copy] : copiers) {
    d.fill(0);
    const auto before = s.bytes();
    copy(s, d);
    ASSERT_EQ(d.bytes(), before) << what << " " << name;
    ASSERT_TRUE(d.intactCanaries()) << what << " " << name << ": write outside the region";
    ASSERT_TRUE(s.intactCanaries() && s.bytes() == before) << what << " " << name << ": source changed";
  }
}

LumSize sizeOf(const GuardedImage& g) { return {g.rowBytes(), g.height()}; }

const std::vector<Copier> kRegionCopies = {
    {"entry", [](auto& s, auto& d) { lumiCopy_8u_C1R(s.data(), s.step(), d.data(), d.step(), sizeOf(s)); }},
    {"long form",
     [](auto& s, auto& d) {
       lumiCopy_8u_C1R_L(s.data(), s.step(), d.data(), d.step(), {s.rowBytes(), s.height()});
     }},
    {"plain",
     [](auto& s, auto& d) {
       K::owniCopy8uas(s.data(), s.step(), d.data(), d.step(), s.rowBytes(), s.height(), {false, false});
     }},
    {"streaming",
     [](auto& s, auto& d) {
       K::owniCopy8uas(s.data(), s.step(), d.data(), d.step(), s.rowBytes(), s.height(), {true, false});
     }},
};

// Rows of step == width: merged into one row, on both paths.
const std::vector<Copier> kMergedCopies = {
    {"entry", kRegionCopies[0].second},
    {"merged plain",
     [](auto& s, auto& d) {
       K::owniCopy8uas(s.data(), s.step(), d.data(), d.step(), s.rowBytes(), s.height(), {false, true});
     }},
    {"merged streaming",
     [](auto& s, auto& d) {
       K::owniCopy8uas(s.data(), s.step(), d.data(), d.step(), s.rowBytes(), s.height(), {true, true});
     }},
};

// One row of n * 4 bytes.
const std::vector<Copier> kArrayCopies = {
    {"8u", [](auto& s, auto& d) { lumsCopy_8u(s.data(), d.data(), s.rowBytes()); }},
    {"32f", [](auto& s, auto& d) { lumsCopy_32f(s.template as<Lum32f>(), d.template as<Lum32f>(), s.rowBytes() / 4); }},
    {"32s", [](auto& s, auto& d) { lumsCopy_32s(s.template as<Lum32s>(), d.template as<Lum32s>(), s.rowBytes() / 4); }},
    {"ownsCopy plain", [](auto& s, auto& d) { K::ownsCopy_8u(s.data(), d.data(), size_t(s.rowBytes()), false); }},
    {"ownsCopy streaming", [](auto& s, auto& d) { K::ownsCopy_8u(s.data(), d.data(), size_t(s.rowBytes()), true); }},
    {"ownccCopy plain", [](auto& s, auto& d) { lum::ownccCopy_8u_C1_W7(s.data(), d.data(), s.rowBytes(), false); }},
    {"ownccCopy streaming", [](auto& s, auto& d) { lum::ownccCopy_8u_C1_W7(s.data(), d.data(), s.rowBytes(), true); }},
};

TEST(Primitives, RegionCopyOnEveryPath) {
  bothPaths([&](const char* mode) {
    for (int w : widths()) {
      for (int h : {1, 3}) {
        // Guard page after the last row, misaligned rows, and bottom-up rows.
        for (ImageOptions o : {ImageOptions{}, ImageOptions{5, 3}, ImageOptions{0, 8, true}}) {
          GuardedImage s(w, h, o), d(w, h, ImageOptions{7, -1, o.negativeStep});
          expectCopies(s, d, kRegionCopies, std::string(mode) + " w=" + std::to_string(w) + " h=" + std::to_string(h));
        }
      }
    }
    for (int w : {1, 7, 64, 100}) {
      GuardedImage s(w, 300, {0}), d(w, 300, {0});  // no padding: step == width
      expectCopies(s, d, kMergedCopies, std::string(mode) + " merged w=" + std::to_string(w));
    }
  });
}

TEST(Primitives, ArrayCopiesOnEveryPathAndAlignment) {
  bothPaths([&](const char* mode) {
    std::vector<int> lens = widths();
    lens.push_back(262144 * 2 + 4096 + 77);  // more than two streaming chunks
    for (int n : lens) {
      for (int off : {-1, 0, 1, 4, 8, 13}) {
        if (n > 5000 && off > 1) continue;
        GuardedImage s(n * 4, 1, {0, off}), d(n * 4, 1, {0, off < 0 ? -1 : (off * 3) & 15});
        expectCopies(s, d, kArrayCopies, std::string(mode) + " n=" + std::to_string(n) + " off=" + std::to_string(off));
      }
    }
  });
}

// The row copy of the layout kernels decides on streaming by the distance of the
// two streams; every distance copies the same bytes.
TEST(Primitives, RowCopyAtCollidingDistances) {
  std::vector<uint8_t> buf(1 << 18);
  for (int dist : {65215, 65216, 65300, 65520, 65521, 65536, 100}) {
    uint8_t* d = buf.data() + 4099;
    const uint8_t* s = d + 65536 + dist;  // source minus destination = dist mod 64 KiB
    std::mt19937 rng{unsigned(dist)};
    for (int k = 0; k < 1000; ++k) buf[size_t(s - buf.data()) + size_t(k)] = uint8_t(rng());
    std::fill(d - 8, d + 1008, uint8_t(0xEE));
    lum::ownccCopy_8u_C1_W7(s, d, 1000, true);
    EXPECT_TRUE(std::equal(d, d + 1000, s)) << dist;
    EXPECT_EQ(d[-1], 0xEE);
    EXPECT_EQ(d[1000], 0xEE);
  }
}

TEST(Primitives, FillsOnEveryPath) {
  bothPaths([&](const char* mode) {
    for (int w : widths()) {
      for (ImageOptions o : {ImageOptions{}, ImageOptions{0}, ImageOptions{3, 5, true}}) {
        const std::string what = std::string(mode) + " w=" + std::to_string(w);
        GuardedImage img(w, 3, o);
        img.fill(0);
        ASSERT_EQ(lumiSet_8u_C1R(0x9C, img.data(), img.step(), {w, 3}), lumStatusOk);
        ASSERT_EQ(img.bytes(), std::vector<uint8_t>(size_t(w) * 3, 0x9C)) << what;
        ASSERT_TRUE(img.intactCanaries()) << what;
        for (bool st : {false, true}) {
          img.fill(0);
          K::owniSet_8u_C1_W7(img.row(1), size_t(w), 0x41, st);
          ASSERT_EQ(img.bytes()[size_t(w)], 0x41) << what;
          ASSERT_EQ(img.bytes()[size_t(w) * 2 - 1], 0x41) << what;
          ASSERT_EQ(img.bytes()[0], 0) << what;
          ASSERT_TRUE(img.intactCanaries()) << what;
        }
        // A step of 0 fills the same row at every row of the region.
        GuardedImage one(w, 1);
        ASSERT_EQ(lumiSet_8u_C1R(3, one.data(), 0, {w, 5}), lumStatusOk);
        ASSERT_EQ(one.bytes(), std::vector<uint8_t>(size_t(w), 3));
        ASSERT_TRUE(one.intactCanaries()) << what;
      }
      for (int off : {-1, 0, 2, 4, 8, 12}) {
        const float v = -7.25f;
        for (int path = 0; path < 3; ++path) {
          GuardedImage a(w * 4, 1, {0, off});
          a.fill(0);
          if (path == 0)
            ASSERT_EQ(lumsSet_32f(v, a.as<Lum32f>(), w), lumStatusOk);
          else
            K::ownsSet_32s(a.as<uint32_t>(), size_t(w), bitsOf(v), path == 2);
          for (int i = 0; i < w; ++i) {
            float got;
            std::memcpy(&got, a.data() + 4 * i, 4);
            ASSERT_EQ(got, v) << mode << " n=" << w << " off=" << off << " path=" << path;
          }
          ASSERT_TRUE(a.intactCanaries()) << mode << " n=" << w << " off=" << off;
        }
      }
    }
  });
}

// ---- AddC / SubC -------------------------------------------------------------

TEST(Primitives, AddAndSubtractAConstant) {
  bothPaths([&](const char* mode) {
    std::mt19937 rng(5);
    std::uniform_real_distribution<float> u(-1000.0f, 1000.0f);
    for (int n : widths()) {
      for (int off : {-1, 0, 4, 8, 12, 2}) {
        for (int sub = 0; sub < 2; ++sub) {
          GuardedImage s(n * 4, 1, {0, -1}), d(n * 4, 1, {0, off});
          std::vector<float> in(static_cast<size_t>(n));
          for (float& f : in) f = u(rng);
          std::memcpy(s.data(), in.data(), in.size() * 4);
          const float v = 0.3f;
          const LumStatus st = sub ? lumsSubC_32f(s.as<Lum32f>(), v, d.as<Lum32f>(), n)
                                   : lumsAddC_32f(s.as<Lum32f>(), v, d.as<Lum32f>(), n);
          ASSERT_EQ(st, lumStatusOk);
          for (int i = 0; i < n; ++i) {
            float got;
            std::memcpy(&got, d.data() + 4 * i, 4);
            const float want = sub ? in[size_t(i)] - v : in[size_t(i)] + v;
            ASSERT_EQ(bitsOf(got), bitsOf(want)) << mode << " n=" << n << " off=" << off << " i=" << i;
          }
          ASSERT_TRUE(d.intactCanaries()) << mode << " n=" << n << " off=" << off;
        }
      }
    }
  });
}

// A val of 0 (either sign) copies: -0 and a signalling NaN come through as they
// are, where an addition would turn -0 + 0 into +0 and quiet the NaN.
TEST(Primitives, ConstantZeroCopiesBitForBit) {
  const uint32_t in[] = {0x80000000, 0x7F800001, 0xFF800001, 0x3F800000, 0x00000001, 0x80000000,
                         0x7FA00000, 0x80000000, 0x7F800001, 0x80000000, 0x7F800001, 0x80000000};
  const int n = int(std::size(in));
  for (float val : {0.0f, -0.0f}) {
    for (int sub = 0; sub < 2; ++sub) {
      uint32_t out[std::size(in)] = {};
      const LumStatus st =
          sub ? lumsSubC_32f(reinterpret_cast<const float*>(in), val, reinterpret_cast<float*>(out), n)
              : lumsAddC_32f(reinterpret_cast<const float*>(in), val, reinterpret_cast<float*>(out), n);
      EXPECT_EQ(st, lumStatusOk);
      for (int i = 0; i < n; ++i) EXPECT_EQ(out[i], in[i]) << "sub=" << sub << " val=" << val << " i=" << i;
    }
  }
}

// ---- reductions ------------------------------------------------------------

// A row of floats placed at a chosen address modulo 16 (misaligned to the word
// when off is not a multiple of 4), rows `pitch` bytes apart.
struct FloatRows {
  std::vector<uint8_t> buf;
  uint8_t* base;
  int pitch, w, h;
  FloatRows(int w_, int h_, int off, int extraPad = 0) : w(w_), h(h_) {
    pitch = w * 4 + 16 + extraPad;  // a multiple of 16 keeps every row at the same offset
    pitch = (pitch + 15) & ~15;
    buf.assign(size_t(pitch) * size_t(h) + 64, 0);
    base = buf.data() + ((16 - reinterpret_cast<uintptr_t>(buf.data()) % 16) % 16) + off;
  }
  void set(int y, int x, float v) { std::memcpy(base + y * pitch + 4 * x, &v, 4); }
  float get(int y, int x) const {
    float v;
    std::memcpy(&v, base + y * pitch + 4 * x, 4);
    return v;
  }
  const float* ptr() const { return reinterpret_cast<const float*>(base); }
};

// Where the samples of one row go, as the order reads: for a word-aligned row at
// 4 or 12 modulo 16 one sample to (acc 0, lane 0); at 4 or 8 (after that single)
// a pair to acc 1, lanes 0 and 1; then groups of 16 to accs 0..3 (sum) or of 8 to
// accs 0, 1 (max); then 8 -> accs 0, 1 (sum); 4 -> acc 2 (sum) or 0 (max);
// 2 -> acc 3 (sum) or 1 (max); 1 -> acc 2 (sum) or 0 (max).
struct Slot {
  int acc, lane;
};
std::vector<Slot> rowSlots(uintptr_t addr, int n, bool forMax) {
  std::vector<Slot> t;
  const int mod = int(addr % 16);
  if (mod == 4 || mod == 12) t.push_back({0, 0});
  if ((mod == 4 && n >= 3) || (mod == 8 && n >= 2)) {
    t.push_back({1, 0});
    t.push_back({1, 1});
  }
  const int big = forMax ? 8 : 16;
  while (n - int(t.size()) >= big)
    for (int k = 0; k < big; ++k) t.push_back({k / 4, k % 4});
  auto group = [&](int size, int acc) {
    if (n - int(t.size()) >= size)
      for (int k = 0; k < size; ++k) t.push_back({acc + k / 4, k % 4});
  };
  if (!forMax) group(8, 0);
  group(4, forMax ? 0 : 2);
  group(2, forMax ? 1 : 3);
  group(1, forMax ? 0 : 2);
  return t;
}

float x86max(float acc, float x) { return acc > x ? acc : x; }

float modelMax(const FloatRows& r) {
  float m[2][4];
  for (auto& a : m)
    for (float& l : a) l = -FLT_MAX;
  for (int y = 0; y < r.h; ++y) {
    const auto slots = rowSlots(reinterpret_cast<uintptr_t>(r.base + y * r.pitch), r.w, true);
    for (int x = 0; x < r.w; ++x)
      m[slots[size_t(x)].acc][slots[size_t(x)].lane] =
          x86max(m[slots[size_t(x)].acc][slots[size_t(x)].lane], r.get(y, x));
  }
  float t[4];
  for (int l = 0; l < 4; ++l) t[l] = x86max(m[0][l], m[1][l]);
  return x86max(x86max(t[0], t[2]), x86max(t[1], t[3]));
}

double modelSumSingle(const FloatRows& r) {
  long double ext = 0;
  for (int y = 0; y < r.h; ++y) {
    float a[4][4] = {};
    const auto slots = rowSlots(reinterpret_cast<uintptr_t>(r.base + y * r.pitch), r.w, false);
    for (int x = 0; x < r.w; ++x) a[slots[size_t(x)].acc][slots[size_t(x)].lane] += r.get(y, x);
    float t[4];
    for (int l = 0; l < 4; ++l) t[l] = (a[0][l] + a[1][l]) + (a[2][l] + a[3][l]);
    ext += t[0] + t[2];
    ext += t[1] + t[3];
  }
  return double(ext);
}

// Blocks of 16: even positions by position, odd ones in the chains 1, 5, 9, 13
// and 3, 7, 11, 15; leftover pairs and a last sample to the running sums.
double modelSumDouble(const FloatRows& r) {
  double even = 0, odd = 0;
  for (int y = 0; y < r.h; ++y) {
    const int blocks = r.w / 16;
    double s[16] = {}, chain[2] = {};
    for (int x = 0; x < blocks * 16; ++x) {
      const int pos = x % 16;
      if (pos % 2 == 0)
        s[pos] += r.get(y, x);
      else
        chain[(pos / 2) % 2] += r.get(y, x);
    }
    if (blocks) {
      even += ((s[0] + s[4]) + (s[8] + s[12])) + ((s[2] + s[6]) + (s[10] + s[14]));
      odd += chain[0] + chain[1];
    }
    int x = blocks * 16;
    for (; x + 2 <= r.w; x += 2) {
      even += r.get(y, x);
      odd += r.get(y, x + 1);
    }
    if (x < r.w) even += r.get(y, x);
  }
  return odd + even;
}

// Values that cancel: the result shows every change of order.
float cancelling(std::mt19937& rng) {
  static const float pool[] = {1e8f, -1e8f, 1.0f, -1.0f, 3.0f, 1e-3f, -2.5e7f, 7e5f, 0.5f, -0.0f};
  return pool[rng() % std::size(pool)] * (rng() % 4 == 0 ? 1.0f : 1.0f + float(rng() % 16) / 8.0f);
}

TEST(Primitives, ReductionsFollowTheirOrderOnEveryAlignment) {
  std::mt19937 rng(11);
  bothPaths([&](const char* mode) {
    for (int w : widths()) {
      if (w > 1000) continue;
      for (int off : {0, 4, 8, 12, 2}) {
        for (int h : {1, 3}) {
          FloatRows r(w, h, off);
          for (int y = 0; y < h; ++y)
            for (int x = 0; x < w; ++x) r.set(y, x, cancelling(rng));
          const std::string what = std::string(mode) + " w=" + std::to_string(w) + " off=" + std::to_string(off);
          double sum = -1, mean = -1;
          ASSERT_EQ(lumiSum_32f_C1R(r.ptr(), r.pitch, {w, h}, &sum, 0), lumStatusOk);
          ASSERT_EQ(bitsOf(sum), bitsOf(modelSumSingle(r))) << what << " " << sum;
          ASSERT_EQ(lumiSum_32f_C1R(r.ptr(), r.pitch, {w, h}, &sum, 2), lumStatusOk);
          ASSERT_EQ(bitsOf(sum), bitsOf(modelSumDouble(r))) << what << " hint 2 " << sum;
          ASSERT_EQ(lumiMean_32f_C1R(r.ptr(), r.pitch, {w, h}, &mean, 2), lumStatusOk);
          ASSERT_EQ(mean, sum / double(w * h)) << what;
          // Max with NaNs, infinities and zeros of both signs among the samples.
          for (int k = 0; k < 3; ++k) {
            const float special[] = {NAN, -INFINITY, -0.0f, 0.0f, INFINITY};
            r.set(int(rng() % unsigned(h)), int(rng() % unsigned(w)), special[rng() % 5]);
          }
          float mx = 0;
          ASSERT_EQ(lumiMax_32f_C1R(r.ptr(), r.pitch, {w, h}, &mx), lumStatusOk);
          ASSERT_EQ(bitsOf(mx), bitsOf(modelMax(r))) << what;
        }
      }
    }
  });
}

// Hand-worked cases: each would come out differently under another order.
TEST(Primitives, SumOrderKnownAnswers) {
  struct Case {
    const char* why;
    int w, h, off, hint;
    std::vector<std::pair<int, float>> at;  // (y * w + x, value); the rest 0
    double want;
  } cases[] = {
      {"a0 + a1 before a2: (1e8 + 1) + -1e8", 16, 1, 0, 0, {{0, 1e8f}, {4, 1.0f}, {8, -1e8f}}, 0.0},
      {"lanes fold high onto low: (1e8 + -1e8) then 3", 4, 1, 0, 0, {{0, 1e8f}, {1, 3.0f}, {2, -1e8f}}, 3.0},
      {"the single tail sample goes to a2, not a3", 15, 1, 0, 0, {{8, 1e8f}, {14, -1e8f}, {12, 1.0f}}, 1.0},
      {"peel: one to a0, a pair to a1", 19, 1, 4, 0, {{0, 1e8f}, {3, -1e8f}, {1, 1.0f}}, 1.0},
      {"extended precision across rows", 1, 3, 0, 0, {{0, 0x1p60f}, {1, 1.0f}, {2, -0x1p60f}}, 1.0},
      {"even fold (s0 + s4) + (s8 + s12)", 16, 1, 0, 2, {{0, 0x1p60f}, {4, 1.0f}, {8, -0x1p60f}}, 0.0},
      {"odd chains 1, 5, 9, 13 and 3, 7, 11, 15", 16, 1, 0, 2, {{1, 0x1p60f}, {3, 1.0f}, {5, -0x1p60f}}, 1.0},
      {"a last odd sample adds to the even sum", 3, 1, 0, 2, {{0, 0x1p60f}, {1, 1.0f}, {2, -0x1p60f}}, 1.0},
      {"even and odd sums run over the rows", 2, 2, 0, 2, {{0, 0x1p60f}, {1, 1.0f}, {2, -0x1p60f}}, 1.0},
  };
  bothPaths([&](const char* mode) {
    for (const Case& c : cases) {
      FloatRows r(c.w, c.h, c.off);
      for (auto [i, v] : c.at) r.set(i / c.w, i % c.w, v);
      double sum = -1;
      ASSERT_EQ(lumiSum_32f_C1R(r.ptr(), r.pitch, {c.w, c.h}, &sum, c.hint), lumStatusOk);
      EXPECT_EQ(sum, c.want) << mode << ": " << c.why;
    }
  });
}

TEST(Primitives, MaxKnownAnswers) {
  struct Case {
    const char* why;
    int w, off;
    std::vector<std::pair<int, float>> at;  // the rest -10
    float want;                             // NaN: the result is a NaN
  } cases[] = {
      {"accumulators start at -FLT_MAX",
       5,
       0,
       {{0, -INFINITY}, {1, -INFINITY}, {2, -INFINITY}, {3, -INFINITY}, {4, -INFINITY}},
       -FLT_MAX},
      {"a NaN in m1's last lane survives the merges", 8, 0, {{7, NAN}, {0, 5.0f}}, NAN},
      {"a NaN in m0 yields to m1 at the merge", 8, 0, {{3, NAN}, {0, 5.0f}}, 5.0f},
      {"the next sample replaces a NaN: 100, NaN, -5 in one lane", 24, 0, {{0, 100.0f}, {8, NAN}, {16, -5.0f}}, -5.0f},
      {"a lone NaN is lost to -FLT_MAX", 1, 0, {{0, NAN}}, -FLT_MAX},
      {"peeled pair to m1: its NaN in lane 1 yields at the fold", 3, 8, {{1, NAN}}, -10.0f},
  };
  bothPaths([&](const char* mode) {
    for (const Case& c : cases) {
      FloatRows r(c.w, 1, c.off);
      for (int x = 0; x < c.w; ++x) r.set(0, x, -10.0f);
      for (auto [i, v] : c.at) r.set(0, i, v);
      float mx = 0;
      ASSERT_EQ(lumiMax_32f_C1R(r.ptr(), r.pitch, {c.w, 1}, &mx), lumStatusOk);
      if (std::isnan(c.want))
        EXPECT_TRUE(std::isnan(mx)) << mode << ": " << c.why << " got " << mx;
      else
        EXPECT_EQ(bitsOf(mx), bitsOf(c.want)) << mode << ": " << c.why << " got " << mx;
      EXPECT_EQ(bitsOf(mx), bitsOf(modelMax(r))) << mode << ": " << c.why;
    }
  });
}

TEST(Primitives, SumOfOneSampleIsExactInBothAccumulators) {
  const uint32_t values[] = {0x3FC00000, 0xC0500000, 0x7F7FFFFF, 0x00000001, 0x4B800001, 0xFF800000, 0x33D6BF95};
  bothPaths([&](const char* mode) {
    for (uint32_t v : values) {
      for (int off : {0, 4, 8, 12, 1}) {
        for (int hint : {0, 2, 7}) {
          FloatRows r(1, 1, off);
          r.set(0, 0, fromBits(v));
          double sum = 0, mean = 0;
          ASSERT_EQ(lumiSum_32f_C1R(r.ptr(), r.pitch, {1, 1}, &sum, hint), lumStatusOk);
          EXPECT_EQ(sum, double(fromBits(v))) << mode << " " << std::hex << v << " off=" << off << " hint=" << hint;
          ASSERT_EQ(lumiMean_32f_C1R(r.ptr(), r.pitch, {1, 1}, &mean, hint), lumStatusOk);
          EXPECT_EQ(mean, sum);
        }
      }
    }
  });
}

// Steps of 0 and below: every row the same, or the image walked bottom-up.
TEST(Primitives, ReductionsTakeAnyStep) {
  FloatRows r(37, 4, 4);
  std::mt19937 rng(2);
  for (int y = 0; y < 4; ++y)
    for (int x = 0; x < 37; ++x) r.set(y, x, cancelling(rng));
  FloatRows flipped(37, 4, 4), thrice(37, 3, 4);
  for (int y = 0; y < 4; ++y)
    for (int x = 0; x < 37; ++x) {
      flipped.set(3 - y, x, r.get(y, x));
      if (y < 3) thrice.set(y, x, r.get(0, x));
    }
  for (int hint : {0, 2}) {
    const auto model = hint == 2 ? modelSumDouble : modelSumSingle;
    double up = 0, same = 0;
    lumiSum_32f_C1R(reinterpret_cast<const float*>(r.base + 3 * r.pitch), -r.pitch, {37, 4}, &up, hint);
    lumiSum_32f_C1R(r.ptr(), 0, {37, 3}, &same, hint);
    EXPECT_EQ(up, model(flipped)) << hint;
    EXPECT_EQ(same, model(thrice)) << hint;
  }
  float mx = 0;
  lumiMax_32f_C1R(reinterpret_cast<const float*>(r.base + 3 * r.pitch), -r.pitch, {37, 4}, &mx);
  EXPECT_EQ(mx, modelMax(r));
}

// The software model of the extended accumulator against the x87 itself.
TEST(Primitives, SoftExtendedMatchesTheX87) {
#if LDBL_MANT_DIG != 64
  GTEST_SKIP() << "long double is not the x87 extended type here";
#else
  // Ties at the 64-bit rounding point go to even; then the big term is taken away.
  const std::vector<std::vector<float>> seqs = {{0x1p63f, 0.5f, -0x1p63f},
                                                {0x1p63f, 1.5f, -0x1p63f},
                                                {-0x1p63f, -2.5f, 0x1p63f},
                                                {0x1p64f, 1.0f, -0x1p64f},
                                                {0x1p64f, 3.0f, -0x1p64f},
                                                {0x1p63f, 0x1p-1f, 0x1p-2f, -0x1p63f},
                                                {0x1p100f, -0x1p36f, 1.0f},
                                                {1.0f, -1.0f},
                                                {-0.0f, -0.0f},
                                                {-0.0f},
                                                {INFINITY, -INFINITY},
                                                {INFINITY, 5.0f}};
  for (const auto& q : seqs) {
    K::SoftExtended soft;
    long double x87 = 0;
    for (float f : q) {
      soft.add(f);
      x87 += f;
    }
    EXPECT_EQ(bitsOf(soft.value()), bitsOf(double(x87))) << q[0] << ", " << q[1];
  }
  std::mt19937 rng(9);
  for (int run = 0; run < 2000; ++run) {
    K::SoftExtended soft;
    long double x87 = 0;
    const int n = 1 + int(rng() % 40);
    for (int i = 0; i < n; ++i) {
      uint32_t b = uint32_t(rng());
      const int kind = int(rng() % 16);
      if (kind < 4) b = (b & 0x807FFFFF) | (uint32_t(120 + rng() % 20) << 23);  // close exponents: cancellation
      if (kind == 4) b &= 0x807FFFFF;                                           // denormals and zeros
      if (kind == 5 && run % 50 == 0) b = (b & 0x80000000) | 0x7F800000 | (rng() % 2 ? 0 : 0x400000 | (b & 7));
      if ((b & 0x7F800000) == 0x7F800000 && (b & 0x7FFFFF) && !(b & 0x400000)) b |= 0x400000;  // row totals are quiet
      soft.add(fromBits(b));
      x87 += fromBits(b);
    }
    ASSERT_EQ(bitsOf(soft.value()), bitsOf(double(x87))) << "run " << run;
  }
#endif
}

}  // namespace
