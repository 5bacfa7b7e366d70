// 4:2:0 to 4:2:2 with a four-tap vertical chroma filter. The destination gets
// luma as it is and each source chroma row on its even rows; the odd rows are
// then made in place from the even rows around them with taps -1, 9, 9, -1.
#include <algorithm>

#include "chroma/filter_rows.h"
#include "frame/check.h"
#include "frame/fixed_point.h"
#include "kernels/primitives.h"

using namespace lum;
using namespace lum::vrow;

namespace {

// clamp8((9 * (b + c) - a - d + 8) >> 4) over rows a, b, c, d (rows r-3, r-1,
// r+1, r+3 of the odd row r). The sum stays within -510..4598, so 16-bit lanes
// and a saturating pack give the scalar result exactly.
struct Tap4 {
  static int pixel(const int* v) { return fx::clamp8((9 * (v[1] + v[2]) - v[0] - v[3] + 8) >> 4); }
#if LUM_SIMD_SSE
  static V half(V a, V b, V c, V d) {
    V s = _mm_mullo_epi16(_mm_add_epi16(b, c), _mm_set1_epi16(9));
    s = _mm_add_epi16(_mm_sub_epi16(_mm_sub_epi16(s, a), d), _mm_set1_epi16(8));
    return _mm_srai_epi16(s, 4);
  }
  static V block(const V* v) {
    const V z = _mm_setzero_si128();
    const V lo = half(_mm_unpacklo_epi8(v[0], z), _mm_unpacklo_epi8(v[1], z), _mm_unpacklo_epi8(v[2], z),
                      _mm_unpacklo_epi8(v[3], z));
    const V hi = half(_mm_unpackhi_epi8(v[0], z), _mm_unpackhi_epi8(v[1], z), _mm_unpackhi_epi8(v[2], z),
                      _mm_unpackhi_epi8(v[3], z));
    return _mm_packus_epi16(lo, hi);
  }
#endif
};

// Destination of the family: three planes, chroma at half width and full height.
struct Planes422 {
  Lum8u* p[3];
  int step[3];
};

// Makes the odd rows of both chroma planes (h rows, h a multiple of 8, w samples)
// from their even rows. A row index beyond the plane stands for the nearest even
// row, which gives the three special rows 1, h-3 and h-1; the rows between use
// the plain taps. Rows go top to bottom, Cb then Cr of each.
void fillOddRows(const Planes422& d, int w, int h) {
  for (int r = 1; r < h; r += 2) {
    for (int k = 1; k <= 2; ++k) {
      // r +- 1 and r +- 3 are even; clamping to 0..h-2 picks the nearest even row.
      auto e = [&](int row) { return rowAt<const Lum8u>(d.p[k], std::clamp(row, 0, h - 2), d.step[k]); };
      const Rows<Bytes, 4> taps{{e(r - 3), e(r - 1), e(r + 1), e(r + 3)}};
      runRow<16, Tap4, Tap4>(w, ToPlane{taps, rowAt(d.p[k], r, d.step[k])});
    }
  }
}

// Luma rows copied as they are.
void copyLuma(const Lum8u* y, int yStep, const Planes422& d, int w, int h) {
  for (int r = 0; r < h; ++r) ownccCopy_8u_C1_W7(rowAt(y, r, yStep), rowAt(d.p[0], r, d.step[0]), w, false);
}

// Three source planes; swap exchanges the two chroma planes with their steps
// (a YCrCb source then still ends with Cb in destination plane 1).
void ownYCbCr420ToYCbCr422Filter_8u_P3R(const Lum8u* const src[3], const int srcStep[3], const Planes422& d, int w,
                                        int h, bool swap) {
  copyLuma(src[0], srcStep[0], d, w, h);
  const int a = swap ? 2 : 1, b = swap ? 1 : 2;
  for (int k = 0; k < h / 2; ++k) {
    ownccCopy_8u_C1_W7(rowAt(src[a], k, srcStep[a]), rowAt(d.p[1], 2 * k, d.step[1]), w / 2, false);
    ownccCopy_8u_C1_W7(rowAt(src[b], k, srcStep[b]), rowAt(d.p[2], 2 * k, d.step[2]), w / 2, false);
  }
  fillOddRows(d, w / 2, h);
}

// NV12 source: the interleaved chroma row is split on its way to the even rows.
void ownYCbCr420ToYCbCr422Filter_8u_P2P3R(const Lum8u* y, int yStep, const Lum8u* uv, int uvStep,
                                          const Planes422& d, int w, int h) {
  copyLuma(y, yStep, d, w, h);
  for (int k = 0; k < h / 2; ++k) {
    const Rows<Bytes, 1> in{{rowAt(uv, k, uvStep)}};
    runExact<Copy>(w / 2, ToSplit{in, rowAt(d.p[1], 2 * k, d.step[1]), rowAt(d.p[2], 2 * k, d.step[2])});
  }
  fillOddRows(d, w / 2, h);
}

Planes422 planes422(Lum8u* const p[3], const int step[3]) {
  return {{p[0], p[1], p[2]}, {step[0], step[1], step[2]}};
}

// Size test after the pointers: width at least 2, height at least 8. The work
// runs on width & ~1 by height & ~7; the rest of the region is left as it is.
LumStatus checkSize(LumSize roi) { return check::badSize(roi, 2, 8) ? lumStatusBadSize : lumStatusOk; }

LumStatus p3Filter(const Lum8u* const pSrc[3], const int srcStep[3], Lum8u* const pDst[3], const int dstStep[3],
                   LumSize roi, bool swap) {
  if (check::anyNull(pSrc, srcStep, pDst, dstStep) || check::anyPlaneNull(pSrc, 3) || check::anyPlaneNull(pDst, 3))
    return lumStatusNullPointer;
  if (LumStatus s = checkSize(roi)) return s;
  ownYCbCr420ToYCbCr422Filter_8u_P3R(pSrc, srcStep, planes422(pDst, dstStep), roi.width & ~1, roi.height & ~7, swap);
  return lumStatusOk;
}

}  // namespace

LumStatus lumiYCbCr420ToYCbCr422_Filter_8u_P3R(const Lum8u* const pSrc[3], const int srcStep[3],
                                               Lum8u* const pDst[3], const int dstStep[3], LumSize roi) {
  return p3Filter(pSrc, srcStep, pDst, dstStep, roi, false);
}

LumStatus lumiYCrCb420ToYCbCr422_Filter_8u_P3R(const Lum8u* const pSrc[3], const int srcStep[3],
                                               Lum8u* const pDst[3], const int dstStep[3], LumSize roi) {
  return p3Filter(pSrc, srcStep, pDst, dstStep, roi, true);
}

LumStatus lumiYCbCr420ToYCbCr422_Filter_8u_P2P3R(const Lum8u* pSrcY, int srcYStep, const Lum8u* pSrcCbCr,
                                                 int srcCbCrStep, Lum8u* const pDst[3], const int dstStep[3],
                                                 LumSize roi) {
  if (check::anyNull(pSrcY, pSrcCbCr, pDst, dstStep) || check::anyPlaneNull(pDst, 3)) return lumStatusNullPointer;
  if (LumStatus s = checkSize(roi)) return s;
  ownYCbCr420ToYCbCr422Filter_8u_P2P3R(pSrcY, srcYStep, pSrcCbCr, srcCbCrStep, planes422(pDst, dstStep),
                                       roi.width & ~1, roi.height & ~7);
  return lumStatusOk;
}
