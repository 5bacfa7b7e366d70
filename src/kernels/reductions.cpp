// Reductions of a float region: maximum, sum and mean. Results depend on the
// exact order of the float operations, so the vector lanes and their scalar twins
// are written over one row structure and add in the same order.
#include <cfloat>

#include "frame/check.h"
#include "kernels/extended_sum.h"
#include "kernels/float_lanes.h"
#include "kernels/primitives.h"

using namespace lum;
using namespace lum::kern;

namespace {

const float* rowOf(const float* p, int y, int step) {
  return reinterpret_cast<const float*>(reinterpret_cast<const uint8_t*>(p) + std::ptrdiff_t(y) * step);
}

// A row that starts on a 4-byte boundary but not on a 16-byte one is peeled: one
// sample if the address asks for 4 bytes, then a pair if it asks for 8 (as far as
// the row reaches). one(p) and two(p) take them; returns the samples used.
template <class One, class Two>
int peelTo16(const float* p, int n, One one, Two two) {
  const uintptr_t a = reinterpret_cast<uintptr_t>(p);
  if (a & 3) return 0;
  int used = 0;
  if ((a & 4) && n >= 1) {
    one(p);
    used = 1;
  }
  if (((a + 4 * uintptr_t(used)) & 8) && n - used >= 2) {
    two(p + used);
    used += 2;
  }
  return used;
}

// ---- ownpi_Max_32f_C1R --------------------------------------------------------

// Two accumulators m0, m1. Single samples and quads go to m0, pairs and the
// second half of each 8 to m1 (the peel follows the sum's: single, then pair).
template <class L>
float maxRegion(const float* src, int step, int w, int h) {
  using V = typename L::V;
  V m0 = L::set1(-FLT_MAX), m1 = m0;
  for (int y = 0; y < h; ++y) {
    const float* p = rowOf(src, y, step);
    int n = w;
    const int peeled = peelTo16(
        p, n, [&](const float* q) { m0 = L::maxLow1(m0, q); }, [&](const float* q) { m1 = L::maxLow2(m1, q); });
    p += peeled;
    n -= peeled;
    for (; n >= 8; n -= 8, p += 8) {
      m0 = L::max(m0, L::load(p));
      m1 = L::max(m1, L::load(p + 4));
    }
    if (n >= 4) {
      m0 = L::max(m0, L::load(p));
      p += 4;
      n -= 4;
    }
    if (n >= 2) {
      m1 = L::maxLow2(m1, p);
      p += 2;
      n -= 2;
    }
    if (n >= 1) m0 = L::maxLow1(m0, p);
  }
  // m0 is the destination of the merge, as the low half and the low lane are after it.
  return L::foldMax(L::max(m0, m1));
}

// ---- ownpi_Sum_32f_C1R: single precision per row ---------------------------

// Row: a0..a3 from zero; peel (single to a0, pair to a1); 16 a step to a0..a3;
// then 8 to a0, a1; 4 to a2; 2 to a3; 1 to a2. The row total
// (a0 + a1) + (a2 + a3), folded to two floats, adds to the extended sum.
template <class L>
void sumRowSingle(const float* p, int n, ExtendedSum& acc) {
  using V = typename L::V;
  V a0 = L::zero(), a1 = a0, a2 = a0, a3 = a0;
  const int peeled = peelTo16(
      p, n, [&](const float* q) { a0 = L::add(a0, L::load1(q)); },
      [&](const float* q) { a1 = L::add(a1, L::load2(q)); });
  p += peeled;
  n -= peeled;
  for (; n >= 16; n -= 16, p += 16) {
    a0 = L::add(a0, L::load(p));
    a1 = L::add(a1, L::load(p + 4));
    a2 = L::add(a2, L::load(p + 8));
    a3 = L::add(a3, L::load(p + 12));
  }
  if (n >= 8) {
    a0 = L::add(a0, L::load(p));
    a1 = L::add(a1, L::load(p + 4));
    p += 8;
    n -= 8;
  }
  if (n >= 4) {
    a2 = L::add(a2, L::load(p));
    p += 4;
    n -= 4;
  }
  if (n >= 2) {
    a3 = L::add(a3, L::load2(p));
    p += 2;
    n -= 2;
  }
  if (n >= 1) a2 = L::add(a2, L::load1(p));
  float lo, hi;
  L::foldAdd(L::add(L::add(a0, a1), L::add(a2, a3)), lo, hi);
  acc.add(lo);
  acc.add(hi);
}

// ---- lumiSum_32f_C1R, hint 2: double precision ------------------------------

// Blocks of 16 samples (8 pairs). The even positions 0, 2, ..., 14 sum into
// eight accumulators by position; the odd ones into two chains, positions
// 1, 5, 9, 13 and 3, 7, 11, 15, each in that order. After the block loop of a
// row the evens fold as ((s0 + s4) + (s8 + s12)) + ((s2 + s6) + (s10 + s14)) and
// the chains as chainA + chainB; these add to the even and odd sums.
struct ScalarPairBlocks {
  static void run(const float* p, int blocks, double& even, double& odd) {
    double s[8] = {0, 0, 0, 0, 0, 0, 0, 0};  // s[k]: position 2k
    double ca = 0, cb = 0;
    for (int b = 0; b < blocks; ++b, p += 16) {
      for (int k = 0; k < 8; ++k) s[k] += double(p[2 * k]);
      for (int k = 1; k < 16; k += 4) {
        ca += double(p[k]);
        cb += double(p[k + 2]);
      }
    }
    even += ((s[0] + s[2]) + (s[4] + s[6])) + ((s[1] + s[3]) + (s[5] + s[7]));
    odd += ca + cb;
  }
};

#if LUM_SIMD_SSE
// The same lanes in registers: S0 = {s0, s2}, S1 = {s4, s6}, S2 = {s8, s10},
// S3 = {s12, s14}, C = {chainA, chainB}.
struct SsePairBlocks {
  static void run(const float* p, int blocks, double& even, double& odd) {
    __m128d s0 = _mm_setzero_pd(), s1 = s0, s2 = s0, s3 = s0, c = s0;
    for (int b = 0; b < blocks; ++b, p += 16) {
      const __m128 v0 = _mm_loadu_ps(p), v1 = _mm_loadu_ps(p + 4);
      const __m128 v2 = _mm_loadu_ps(p + 8), v3 = _mm_loadu_ps(p + 12);
      const __m128 e01 = _mm_shuffle_ps(v0, v1, _MM_SHUFFLE(2, 0, 2, 0));  // x0 x2 x4 x6
      const __m128 o01 = _mm_shuffle_ps(v0, v1, _MM_SHUFFLE(3, 1, 3, 1));  // x1 x3 x5 x7
      const __m128 e23 = _mm_shuffle_ps(v2, v3, _MM_SHUFFLE(2, 0, 2, 0));  // x8 x10 x12 x14
      const __m128 o23 = _mm_shuffle_ps(v2, v3, _MM_SHUFFLE(3, 1, 3, 1));  // x9 x11 x13 x15
      s0 = _mm_add_pd(s0, _mm_cvtps_pd(e01));
      s1 = _mm_add_pd(s1, _mm_cvtps_pd(_mm_movehl_ps(e01, e01)));
      s2 = _mm_add_pd(s2, _mm_cvtps_pd(e23));
      s3 = _mm_add_pd(s3, _mm_cvtps_pd(_mm_movehl_ps(e23, e23)));
      c = _mm_add_pd(c, _mm_cvtps_pd(o01));
      c = _mm_add_pd(c, _mm_cvtps_pd(_mm_movehl_ps(o01, o01)));
      c = _mm_add_pd(c, _mm_cvtps_pd(o23));
      c = _mm_add_pd(c, _mm_cvtps_pd(_mm_movehl_ps(o23, o23)));
    }
    const __m128d t = _mm_add_pd(_mm_add_pd(s0, s1), _mm_add_pd(s2, s3));
    even += _mm_cvtsd_f64(t) + _mm_cvtsd_f64(_mm_unpackhi_pd(t, t));
    odd += _mm_cvtsd_f64(c) + _mm_cvtsd_f64(_mm_unpackhi_pd(c, c));
  }
};
#endif

// Remaining pairs add to the even and odd sums; a last odd sample to the even sum.
template <class Blocks>
void sumRowDouble(const float* p, int n, double& even, double& odd) {
  const int pairs = n / 2, blocks = pairs / 8;
  if (blocks) Blocks::run(p, blocks, even, odd);
  for (int k = blocks * 8; k < pairs; ++k) {
    even += double(p[2 * k]);
    odd += double(p[2 * k + 1]);
  }
  if (n & 1) even += double(p[n - 1]);
}

template <class Blocks>
double sumRegionDouble(const float* src, int step, int w, int h) {
  double even = 0, odd = 0;
  for (int y = 0; y < h; ++y) sumRowDouble<Blocks>(rowOf(src, y, step), w, even, odd);
  return odd + even;
}

double sumDouble(const float* src, int step, int w, int h) {
#if LUM_SIMD_SSE
  if (useVector()) return sumRegionDouble<SsePairBlocks>(src, step, w, h);
#endif
  return sumRegionDouble<ScalarPairBlocks>(src, step, w, h);
}

}  // namespace

namespace lum::kern {
float ownpi_Max_32f_C1R(const float* pSrc, int srcStep, int width, int height) {
  return withFloatLanes([&](auto lanes) { return maxRegion<decltype(lanes)>(pSrc, srcStep, width, height); });
}
double ownpi_Sum_32f_C1R(const float* pSrc, int srcStep, int width, int height) {
  ExtendedSum acc;
  withFloatLanes([&](auto lanes) {
    for (int y = 0; y < height; ++y) sumRowSingle<decltype(lanes)>(rowOf(pSrc, y, srcStep), width, acc);
  });
  return acc.value();
}
}  // namespace lum::kern

LumStatus lumiMax_32f_C1R(const Lum32f* pSrc, int srcStep, LumSize roi, Lum32f* pMax) {
  if (LumStatus s = check::nullThenSize(roi, pSrc, pMax)) return s;
  *pMax = kern::ownpi_Max_32f_C1R(pSrc, srcStep, roi.width, roi.height);
  return lumStatusOk;
}

LumStatus lumiSum_32f_C1R(const Lum32f* pSrc, int srcStep, LumSize roi, Lum64f* pSum, int hint) {
  if (LumStatus s = check::nullThenSize(roi, pSrc, pSum)) return s;
  *pSum = hint == 2 ? sumDouble(pSrc, srcStep, roi.width, roi.height)
                    : kern::ownpi_Sum_32f_C1R(pSrc, srcStep, roi.width, roi.height);
  return lumStatusOk;
}

// The pixel count is the 32-bit signed product of the sides, wrapping as such.
LumStatus lumiMean_32f_C1R(const Lum32f* pSrc, int srcStep, LumSize roi, Lum64f* pMean, int hint) {
  if (!pMean) return lumStatusNullPointer;
  Lum64f sum = 0;
  if (LumStatus s = lumiSum_32f_C1R(pSrc, srcStep, roi, &sum, hint)) return s;
  const int32_t count = int32_t(uint32_t(roi.width) * uint32_t(roi.height));
  *pMean = sum / double(count);
  return lumStatusOk;
}
