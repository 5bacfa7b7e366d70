// Reductions of a float region: maximum, sum and mean. Results depend on the
// exact order of the float operations, so the vector lanes and their scalar twins
// are written over one row structure and add in the same order.
#include <cfloat>

#include "frame/check.h"
#include "kernels/extended_sum.h"
#include "frame/lanes.h"
#include "frame/rows.h"
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
  using F = typename L::F;
  F m0 = L::setf(-FLT_MAX), m1 = m0;
  for (int y = 0; y < h; ++y) {
    const float* p = rowOf(src, y, step);
    int n = w;
    const int peeled = peelTo16(
        p, n, [&](const float* q) { m0 = L::maxf1(m0, q); }, [&](const float* q) { m1 = L::maxf2(m1, q); });
    p += peeled;
    n -= peeled;
    for (; n >= 8; n -= 8, p += 8) {
      m0 = L::maxf(m0, L::loadf(p));
      m1 = L::maxf(m1, L::loadf(p + 4));
    }
    if (n >= 4) {
      m0 = L::maxf(m0, L::loadf(p));
      p += 4;
      n -= 4;
    }
    if (n >= 2) {
      m1 = L::maxf2(m1, p);
      p += 2;
      n -= 2;
    }
    if (n >= 1) m0 = L::maxf1(m0, p);
  }
  // m0 is the destination of the merge, as the low half and the low lane are after it.
  return L::foldMaxf(L::maxf(m0, m1));
}

// ---- ownpi_Sum_32f_C1R: single precision per row ---------------------------

// Row: a0..a3 from zero; peel (single to a0, pair to a1); 16 a step to a0..a3;
// then 8 to a0, a1; 4 to a2; 2 to a3; 1 to a2. The row total
// (a0 + a1) + (a2 + a3), folded to two floats, adds to the extended sum.
template <class L>
void sumRowSingle(const float* p, int n, ExtendedSum& acc) {
  using F = typename L::F;
  F a0 = L::zerof(), a1 = a0, a2 = a0, a3 = a0;
  const int peeled = peelTo16(
      p, n, [&](const float* q) { a0 = L::addf(a0, L::loadf1(q)); },
      [&](const float* q) { a1 = L::addf(a1, L::loadf2(q)); });
  p += peeled;
  n -= peeled;
  for (; n >= 16; n -= 16, p += 16) {
    a0 = L::addf(a0, L::loadf(p));
    a1 = L::addf(a1, L::loadf(p + 4));
    a2 = L::addf(a2, L::loadf(p + 8));
    a3 = L::addf(a3, L::loadf(p + 12));
  }
  if (n >= 8) {
    a0 = L::addf(a0, L::loadf(p));
    a1 = L::addf(a1, L::loadf(p + 4));
    p += 8;
    n -= 8;
  }
  if (n >= 4) {
    a2 = L::addf(a2, L::loadf(p));
    p += 4;
    n -= 4;
  }
  if (n >= 2) {
    a3 = L::addf(a3, L::loadf2(p));
    p += 2;
    n -= 2;
  }
  if (n >= 1) a2 = L::addf(a2, L::loadf1(p));
  float lo, hi;
  L::foldAddf(L::addf(L::addf(a0, a1), L::addf(a2, a3)), lo, hi);
  acc.add(lo);
  acc.add(hi);
}

// The rows of a region into one extended sum.
template <class L>
double sumRegionSingle(const float* src, int step, int w, int h) {
  ExtendedSum acc;
  for (int y = 0; y < h; ++y) sumRowSingle<L>(rowOf(src, y, step), w, acc);
  return acc.value();
}

// ---- lumiSum_32f_C1R, hint 2: double precision ------------------------------

// Blocks of 16 samples (8 pairs). The even positions 0, 2, ..., 14 sum into
// eight accumulators by position, in the lanes S0 = {s0, s2}, S1 = {s4, s6},
// S2 = {s8, s10}, S3 = {s12, s14}; the odd ones into two chains C = {positions
// 1, 5, 9, 13; positions 3, 7, 11, 15}, each in that order. After the block
// loop of a row the evens fold as ((s0 + s4) + (s8 + s12)) + ((s2 + s6) +
// (s10 + s14)) and the chains as chainA + chainB; these add to the even and odd sums.
template <class O>
void pairBlocks(const float* p, int blocks, double& even, double& odd) {
  using F = typename O::F;
  using D = typename O::D;
  D s0 = O::zerod(), s1 = s0, s2 = s0, s3 = s0, c = s0;
  for (int b = 0; b < blocks; ++b, p += 16) {
    const F v0 = O::loadf(p), v1 = O::loadf(p + 4), v2 = O::loadf(p + 8), v3 = O::loadf(p + 12);
    const F e01 = O::evensf(v0, v1), o01 = O::oddsf(v0, v1);  // x0 x2 x4 x6, x1 x3 x5 x7
    const F e23 = O::evensf(v2, v3), o23 = O::oddsf(v2, v3);  // x8 .. x14, x9 .. x15
    s0 = O::addd(s0, O::cvtfdLo(e01));
    s1 = O::addd(s1, O::cvtfdHi(e01));
    s2 = O::addd(s2, O::cvtfdLo(e23));
    s3 = O::addd(s3, O::cvtfdHi(e23));
    c = O::addd(c, O::cvtfdLo(o01));
    c = O::addd(c, O::cvtfdHi(o01));
    c = O::addd(c, O::cvtfdLo(o23));
    c = O::addd(c, O::cvtfdHi(o23));
  }
  even += O::sumd(O::addd(O::addd(s0, s1), O::addd(s2, s3)));
  odd += O::sumd(c);
}

// Remaining pairs add to the even and odd sums; a last odd sample to the even sum.
template <class O>
void sumRowDouble(const float* p, int n, double& even, double& odd) {
  const int pairs = n / 2, blocks = pairs / 8;
  if (blocks) pairBlocks<O>(p, blocks, even, odd);
  for (int k = blocks * 8; k < pairs; ++k) {
    even += double(loadAt(p + 2 * k));
    odd += double(loadAt(p + 2 * k + 1));
  }
  if (n & 1) even += double(loadAt(p + n - 1));
}

double sumDouble(const float* src, int step, int w, int h) {
  return lanes::with128([&](auto lanes) {
    double even = 0, odd = 0;
    for (int y = 0; y < h; ++y) sumRowDouble<decltype(lanes)>(rowOf(src, y, step), w, even, odd);
    return odd + even;
  });
}

}  // namespace

namespace lum::kern {
float ownpi_Max_32f_C1R(const float* pSrc, int srcStep, int width, int height) {
  return lanes::with128([&](auto lanes) { return maxRegion<decltype(lanes)>(pSrc, srcStep, width, height); });
}
double ownpi_Sum_32f_C1R(const float* pSrc, int srcStep, int width, int height) {
  return lanes::with128([&](auto lanes) { return sumRegionSingle<decltype(lanes)>(pSrc, srcStep, width, height); });
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
