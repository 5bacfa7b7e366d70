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
// r+1, r+3 of the odd row r). The sum stays within -510..4598, so byte-pair
// multiply-adds (9b - a, 9c - d) into 16-bit lanes and a saturating pack give
// the scalar result exactly.
struct Tap4 {
  static int pixel(const int* v) { return fx::clamp8((9 * (v[1] + v[2]) - v[0] - v[3] + 8) >> 4); }
#if LUM_SIMD_SSE
  template <class O, class W = typename O::V>
  static W half(W ba, W cd) {
    const W w = O::set(9 | (0xFF << 8));  // byte weights 9, -1
    const W s = O::add16(O::maddubs16(ba, w), O::maddubs16(cd, w));
    return O::sra(O::add16(s, O::set(8)), 4);
  }
  template <class O, class W = typename O::V>
  static W block(const W* v) {
    return O::packus16(half<O>(O::zipLo8(v[1], v[0]), O::zipLo8(v[2], v[3])),
                       half<O>(O::zipHi8(v[1], v[0]), O::zipHi8(v[2], v[3])));
  }
#endif
};

// Destination of the family: three planes, chroma at half width and full height.
struct Planes422 {
  Lum8u* p[3];
  int step[3];
};

// Makes odd row r of both chroma planes (h rows, h a multiple of 8, w samples)
// from the even rows around it. A row index beyond the plane stands for the
// nearest even row, which gives the three special rows 1, h-3 and h-1; the rows
// between use the plain taps. Cb first, then Cr.
void oddRow(const Planes422& d, int w, int h, int r) {
  for (int k = 1; k <= 2; ++k) {
    // r +- 1 and r +- 3 are even; clamping to 0..h-2 picks the nearest even row.
    const window::Plane<const Lum8u> plane{d.p[k], d.step[k]};
    const Rows<Bytes, 4> taps = rowsOf(window::around(plane, r, std::array{-3, -1, 1, 3}, window::Clamp{0, h - 2}));
    runRow<16, Tap4, Tap4>(w, ToPlane{taps, rowAt(d.p[k], r, d.step[k])});
  }
}

// Works down the destination: copy(k) puts luma rows 2k, 2k+1 and chroma row k
// of the source in place, and each odd row is made as soon as the even rows it
// reads are there, top to bottom.
template <class CopyRows>
void upsample(const Planes422& d, int w, int h, CopyRows&& copy) {
  for (int k = 0; k < h / 2; ++k) {
    copy(k);
    if (2 * k - 3 >= 1) oddRow(d, w / 2, h, 2 * k - 3);
  }
  oddRow(d, w / 2, h, h - 3);
  oddRow(d, w / 2, h, h - 1);
}

// Luma rows 2k and 2k+1 copied as they are.
void copyLuma(const Lum8u* y, int yStep, const Planes422& d, int w, int k) {
  for (int r = 2 * k; r <= 2 * k + 1; ++r)
    ownccCopy_8u_C1_W7(rowAt(y, r, yStep), rowAt(d.p[0], r, d.step[0]), w, false);
}

// Three source planes; swap exchanges the two chroma planes with their steps
// (a YCrCb source then still ends with Cb in destination plane 1).
void ownYCbCr420ToYCbCr422Filter_8u_P3R(const Lum8u* const src[3], const int srcStep[3], const Planes422& d, int w,
                                        int h, bool swap) {
  const int a = swap ? 2 : 1, b = swap ? 1 : 2;
  upsample(d, w, h, [&](int k) {
    copyLuma(src[0], srcStep[0], d, w, k);
    ownccCopy_8u_C1_W7(rowAt(src[a], k, srcStep[a]), rowAt(d.p[1], 2 * k, d.step[1]), w / 2, false);
    ownccCopy_8u_C1_W7(rowAt(src[b], k, srcStep[b]), rowAt(d.p[2], 2 * k, d.step[2]), w / 2, false);
  });
}

// NV12 source: the interleaved chroma row is split on its way to the even rows.
void ownYCbCr420ToYCbCr422Filter_8u_P2P3R(const Lum8u* y, int yStep, const Lum8u* uv, int uvStep,
                                          const Planes422& d, int w, int h) {
  upsample(d, w, h, [&](int k) {
    copyLuma(y, yStep, d, w, k);
    const Rows<Bytes, 1> in{{rowAt(uv, k, uvStep)}};
    runExact<Copy>(w / 2, ToSplit{in, rowAt(d.p[1], 2 * k, d.step[1]), rowAt(d.p[2], 2 * k, d.step[2])});
  });
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
