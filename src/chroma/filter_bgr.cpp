// YCrCb 4:2:0 planes to BGRA with horizontally interpolated chroma and fixed
// BT.601 studio-range coefficients. Rows go in pairs that share one chroma row.
// In a row, pixel 2j takes chroma sample j and pixel 2j+1 the upward-rounded
// average of samples j and j+1, for j below n = W/2 - 1; the closing pair j = n
// takes sample n for both pixels. Blocks of 8 chroma samples (16 pixels) use
// 16-bit products truncated term by term; the samples after the last whole block
// use 32-bit sums truncated once, so the two can differ by a code value or so.
#include "frame/check.h"
#include "frame/fixed_point.h"
#include "frame/kernel.h"
#include "lumachroma/chop.h"

using namespace lum;
using namespace lum::fx;
namespace L = lum::layout;

namespace {

// Block form: each term is the high half of (v - base) << 7 times its Q12
// coefficient, summed with saturation, shifted by 3 and packed to a byte.
struct BgrQ3 {
  static int t(int v, int base, int k) { return mulhi16s(subs16s(v, base) << 7, k); }
  static void pixel(const int* in, int* out) {
    const int y = t(in[0], 16, 4769);
    out[0] = clamp8(sra16(adds16s(y, t(in[2], 128, 6537)), 3));
    out[1] = clamp8(sra16(subs16s(subs16s(y, t(in[1], 128, 1605)), t(in[2], 128, 3330)), 3));
    out[2] = clamp8(sra16(adds16s(y, t(in[1], 128, 8263)), 3));
  }
#if LUM_SIMD_SSE
  static V t(V v, int base, int k) { return mulhi16s(sll16<7>(subs16s(v, set16(base))), set16(k)); }
  static void block(const V* in, V* out) {
    const V y = t(in[0], 16, 4769);
    out[0] = clamp8(sra16<3>(adds16s(y, t(in[2], 128, 6537))));
    out[1] = clamp8(sra16<3>(subs16s(subs16s(y, t(in[1], 128, 1605)), t(in[2], 128, 3330))));
    out[2] = clamp8(sra16<3>(adds16s(y, t(in[1], 128, 8263))));
  }
#endif
};

// Tail form: Q12 sums in 32 bits, truncated once, clamped through chop.
struct BgrQ12 {
  static void pixel(const int* in, int* out) {
    const int y = 4769 * (in[0] - 16), cb = in[1] - 128, cr = in[2] - 128;
    out[0] = CHOP_ARRAY[(y + 6537 * cr) >> 12];
    out[1] = CHOP_ARRAY[(y - 3330 * cr - 1605 * cb) >> 12];
    out[2] = CHOP_ARRAY[(y + 8263 * cb) >> 12];
  }
};

// Source pixel x of one row: Y from plane 0, Cb and Cr (planes 1 and 2 of the
// row record) of pair x/2, averaged with pair x/2 + 1 for odd x.
struct Interpolated {
  static void load(const SrcPlanes& s, int x, L::Px& o) {
    const int j = x >> 1;
    o.v[0] = s.p[0][x];
    for (int k = 1; k <= 2; ++k) o.v[k] = x & 1 ? avg8(s.p[k][j], s.p[k][j + 1]) : s.p[k][j];
    o.v[3] = 0;
  }
#if LUM_SIMD_SSE
  // Eight pixels from x (even): chroma samples x/2 .. x/2 + 4.
  static void load(const SrcPlanes& s, int x, L::Vx& o) {
    const int j = x >> 1;
    o.v[0] = L::detail::load8x8(s.p[0] + x);
    for (int k = 1; k <= 2; ++k) {
      int a, b;
      __builtin_memcpy(&a, s.p[k] + j, 4);
      __builtin_memcpy(&b, s.p[k] + j + 1, 4);
      const V here = _mm_cvtsi32_si128(a), next = _mm_cvtsi32_si128(b);
      o.v[k] = _mm_cvtepu8_epi16(_mm_unpacklo_epi8(here, _mm_avg_epu8(here, next)));
    }
    o.v[3] = _mm_setzero_si128();
  }
#endif
};

// The closing pair: both pixels take the chroma of their own pair.
struct Repeated {
  static void load(const SrcPlanes& s, int x, L::Px& o) {
    o.v[0] = s.p[0][x];
    o.v[1] = s.p[1][x >> 1];
    o.v[2] = s.p[2][x >> 1];
    o.v[3] = 0;
  }
};

// One row of pixels 0 .. 2n + 1 (n = W/2 - 1 >= 0).
void innerYCrCb420ToBGR(const SrcPlanes& s, const DstPlanes& d, int n, const RowCtx& c) {
  const int blockEnd = 16 * (n / 8);
  runBlocks<BgrQ3, Interpolated, L::BGRA, Alpha::Aval>(s, d, 0, blockEnd, c);
  runPixels<BgrQ12, Interpolated, L::BGRA, Alpha::Aval>(s, d, blockEnd, 2 * n, c);
  runPixels<BgrQ12, Repeated, L::BGRA, Alpha::Aval>(s, d, 2 * n, 2 * n + 2, c);
}

// Row pairs 2k, 2k+1 over chroma row k. The source record holds Y, Cb, Cr in
// that order: the caller's planes 0, 2, 1.
void myYCrCb420ToBGR_8u_P3C4R(const Lum8u* const src[3], const int srcStep[3], Lum8u* dst, int dstStep, int w,
                              int h, Lum8u alpha) {
  const RowCtx c{alpha};
  for (int k = 0; k < h / 2; ++k) {
    SrcPlanes s;
    s.p[1] = rowAt(src[2], k, srcStep[2]);
    s.p[2] = rowAt(src[1], k, srcStep[1]);
    for (int r = 2 * k; r <= 2 * k + 1; ++r) {
      s.p[0] = rowAt(src[0], r, srcStep[0]);
      DstPlanes d;
      d.p[0] = rowAt(dst, r, dstStep);
      innerYCrCb420ToBGR(s, d, w / 2 - 1, c);
    }
  }
}

}  // namespace

// Checks: pSrc and pDst, the size, then the planes of pSrc. The work covers the
// even part of the region; an odd width or height returns lumStatusOddSize after
// it. A region one pixel wide or high has no even part and is left as it is.
LumStatus lumiYCrCb420ToBGR_Filter_8u_P3C4R(const Lum8u* const pSrc[3], const int srcStep[3], Lum8u* pDst,
                                            int dstStep, LumSize roi, Lum8u alpha) {
  if (check::anyNull(pSrc, srcStep, pDst)) return lumStatusNullPointer;
  if (check::badSize(roi)) return lumStatusBadSize;
  if (check::anyPlaneNull(pSrc, 3)) return lumStatusNullPointer;
  if (roi.width >= 2) myYCrCb420ToBGR_8u_P3C4R(pSrc, srcStep, pDst, dstStep, roi.width, roi.height, alpha);
  return (roi.width | roi.height) & 1 ? lumStatusOddSize : lumStatusOk;
}
