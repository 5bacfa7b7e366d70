// 4:2:2 <-> 4:2:0 for interlaced frames. Even rows belong to the top field and
// odd rows to the bottom field; each chroma row is made from rows of its own
// field only, weighted by where its chroma sites lie within that field. Vector
// blocks and scalar samples compute the same integer sums, so no result depends
// on block length or alignment.
#include "chroma/filter_rows.h"
#include "frame/check.h"
#include "kernels/primitives.h"

using namespace lum;
using namespace lum::vrow;

namespace {

// (WA * x + WB * y + 2^(Shift-1)) >> Shift of two rows x (upper) and y (lower).
// At most 8 * 255 + 4, so byte-pair multiply-adds into 16-bit lanes are exact.
template <int WA, int WB, int Shift>
struct Blend {
  static int pixel(const int* v) { return (WA * v[0] + WB * v[1] + (1 << (Shift - 1))) >> Shift; }
#if LUM_SIMD_SSE
  template <class O, class W = typename O::V>
  static W half(W pairs) {
    const W w = O::set(WA | (WB << 8));
    return O::srl(O::add16(O::maddubs16(pairs, w), O::set(1 << (Shift - 1))), Shift);
  }
  template <class O, class W = typename O::V>
  static W block(const W* v) {
    return O::packus16(half<O>(O::zipLo8(v[0], v[1])), half<O>(O::zipHi8(v[0], v[1])));
  }
#endif
};

// Down-sampling: output chroma row 2m (top field) from rows 4m and 4m+2, row 2m+1
// (bottom field) from rows 4m+1 and 4m+3.
using TopDown = Blend<3, 1, 2>;
using BottomDown = Blend<1, 3, 2>;

// Calls row<Form>(outRow, upperSourceRow, lowerSourceRow) for each output chroma
// row of an h-row 4:2:2 -> 4:2:0 conversion.
template <class RowFn>
void fieldsDown(int h, RowFn&& row) {
  for (int m = 0; m < h / 4; ++m) {
    row.template operator()<TopDown>(2 * m, 4 * m, 4 * m + 2);
    row.template operator()<BottomDown>(2 * m + 1, 4 * m + 1, 4 * m + 3);
  }
}

// Calls row<Form>(outRow, upperSourceRow, lowerSourceRow) for each output chroma
// row of an h-row 4:2:0 -> 4:2:2 conversion. The first two and the last two rows
// copy source rows 0, 1 and h/2-2, h/2-1 (Form = Copy, the lower row unused);
// groups of four rows between them weight 5/8 3/8, 7/8 1/8, 1/8 7/8, 3/8 5/8.
template <class RowFn>
void fieldsUp(int h, RowFn&& row) {
  row.template operator()<Copy>(0, 0, 0);
  row.template operator()<Copy>(1, 1, 1);
  for (int m = 0, e = 2; e < h - 2; ++m, e += 4) {
    const int b = 2 * m;
    row.template operator()<Blend<5, 3, 3>>(e, b, b + 2);
    row.template operator()<Blend<7, 1, 3>>(e + 1, b + 1, b + 3);
    row.template operator()<Blend<1, 7, 3>>(e + 2, b, b + 2);
    row.template operator()<Blend<3, 5, 3>>(e + 3, b + 1, b + 3);
  }
  row.template operator()<Copy>(h - 2, h / 2 - 2, h / 2 - 2);
  row.template operator()<Copy>(h - 1, h / 2 - 1, h / 2 - 1);
}

// Two rows of one plane as the inputs of a blend.
Rows<Bytes, 2> twoRows(const Lum8u* p, int step, int upper, int lower) {
  return rowsOf(window::at(window::Plane{p, step}, upper, lower));
}

void ownYCbCr422To420_Interlace_P3R(const Lum8u* const src[3], const int srcStep[3], Lum8u* const dst[3],
                                    const int dstStep[3], int w, int h) {
  lumiCopy_8u_C1R(src[0], srcStep[0], dst[0], dstStep[0], LumSize{w, h});
  for (int k = 1; k <= 2; ++k)
    fieldsDown(h, [&]<class F>(int out, int upper, int lower) {
      runExact<F>(w / 2, ToPlane{twoRows(src[k], srcStep[k], upper, lower), rowAt(dst[k], out, dstStep[k])});
    });
}

// CbYCr422 source: luma is the odd bytes; the even bytes hold Cb and Cr in turn
// and split into the two chroma planes.
void ownCbYCr422ToYCbCr420_Interlace_C2P3R(const Lum8u* src, int srcStep, Lum8u* const dst[3], const int dstStep[3],
                                           int w, int h) {
  for (int r = 0; r < h; ++r)
    runExact<Copy>(w, ToPlane{Rows<OddBytes, 1>{{rowAt(src, r, srcStep)}}, rowAt(dst[0], r, dstStep[0])});
  fieldsDown(h, [&]<class F>(int out, int upper, int lower) {
    const Rows<EvenBytes, 2> in = rowsOf<EvenBytes>(window::at(window::Plane{src, srcStep}, upper, lower));
    runExact<F>(w / 2, ToSplit{in, rowAt(dst[1], out, dstStep[1]), rowAt(dst[2], out, dstStep[2])});
  });
}

void ownYCbCr420To422_Interlace_P3R(const Lum8u* const src[3], const int srcStep[3], Lum8u* const dst[3],
                                    const int dstStep[3], int w, int h) {
  lumiCopy_8u_C1R(src[0], srcStep[0], dst[0], dstStep[0], LumSize{w, h});
  for (int k = 1; k <= 2; ++k)
    fieldsUp(h, [&]<class F>(int out, int upper, int lower) {
      runExact<F>(w / 2, ToPlane{twoRows(src[k], srcStep[k], upper, lower), rowAt(dst[k], out, dstStep[k])});
    });
}

// CbYCr422 output: byte 2x holds chroma x (Cb, Cr in turn) and byte 2x + 1 luma x.
void ownYCbCr420ToCbYCr422_Interlace_P3C2R(const Lum8u* const src[3], const int srcStep[3], Lum8u* dst, int dstStep,
                                           int w, int h) {
  fieldsUp(h, [&]<class F>(int out, int upper, int lower) {
    const Rows<Alternate, 2> chroma{{{rowAt(src[1], upper, srcStep[1]), rowAt(src[2], upper, srcStep[2])},
                                     {rowAt(src[1], lower, srcStep[1]), rowAt(src[2], lower, srcStep[2])}}};
    const Rows<Bytes, 1> luma{{rowAt(src[0], out, srcStep[0])}};
    runExact<Pair<Copy, F>>(w, toPacked<1>(luma, chroma, rowAt(dst, out, dstStep)));
  });
}

// Size test after the pointers and the planes of each array: width below 2 or
// height below 4.
LumStatus checkSize(LumSize roi) { return check::badSize(roi, 2, 4) ? lumStatusBadSize : lumStatusOk; }

// The work runs on width & ~1 by height & ~3; whatever that cuts is left as it
// is and reported.
LumStatus oddStatus(LumSize roi) { return (roi.width & 1) || (roi.height & 3) ? lumStatusOddSize : lumStatusOk; }

bool anyPlaneNull(const Lum8u* const* a) { return check::anyPlaneNull(a, 3); }

}  // namespace

LumStatus lumiYCbCr422To420_Interlace_8u_P3R(const Lum8u* const pSrc[3], const int srcStep[3],
                                             Lum8u* const pDst[3], const int dstStep[3], LumSize roi) {
  if (check::anyNull(pSrc, srcStep, pDst, dstStep) || anyPlaneNull(pSrc) || anyPlaneNull(pDst))
    return lumStatusNullPointer;
  if (LumStatus s = checkSize(roi)) return s;
  ownYCbCr422To420_Interlace_P3R(pSrc, srcStep, pDst, dstStep, roi.width & ~1, roi.height & ~3);
  return oddStatus(roi);
}

LumStatus lumiCbYCr422ToYCbCr420_Interlace_8u_C2P3R(const Lum8u* pSrc, int srcStep, Lum8u* const pDst[3],
                                                    const int dstStep[3], LumSize roi) {
  if (check::anyNull(pSrc, pDst, dstStep) || anyPlaneNull(pDst)) return lumStatusNullPointer;
  if (LumStatus s = checkSize(roi)) return s;
  ownCbYCr422ToYCbCr420_Interlace_C2P3R(pSrc, srcStep, pDst, dstStep, roi.width & ~1, roi.height & ~3);
  return oddStatus(roi);
}

LumStatus lumiYCbCr420To422_Interlace_8u_P3R(const Lum8u* const pSrc[3], const int srcStep[3],
                                             Lum8u* const pDst[3], const int dstStep[3], LumSize roi) {
  if (check::anyNull(pSrc, srcStep, pDst, dstStep) || anyPlaneNull(pSrc) || anyPlaneNull(pDst))
    return lumStatusNullPointer;
  if (LumStatus s = checkSize(roi)) return s;
  ownYCbCr420To422_Interlace_P3R(pSrc, srcStep, pDst, dstStep, roi.width & ~1, roi.height & ~3);
  return oddStatus(roi);
}

LumStatus lumiYCbCr420ToCbYCr422_Interlace_8u_P3C2R(const Lum8u* const pSrc[3], const int srcStep[3],
                                                    Lum8u* pDst, int dstStep, LumSize roi) {
  if (check::anyNull(pSrc, srcStep, pDst) || anyPlaneNull(pSrc)) return lumStatusNullPointer;
  if (LumStatus s = checkSize(roi)) return s;
  ownYCbCr420ToCbYCr422_Interlace_P3C2R(pSrc, srcStep, pDst, dstStep, roi.width & ~1, roi.height & ~3);
  return oddStatus(roi);
}
