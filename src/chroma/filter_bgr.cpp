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
#include "frame/lanes.h"
#include "frame/window.h"
#include "frame/chop.h"

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
  // The same over the 16-bit lanes of lane set O.
  template <class O>
  struct Lanes {
    using W = typename O::V;
    static W t(W v, int base, int k) { return O::mulhi16s(O::sll(O::subs16s(v, O::set(base)), 7), O::set(k)); }
    // The chroma terms, shared by the two rows of a pair.
    struct Terms {
      W r, g1, g2, b;
    };
    static Terms terms(W cb, W cr) { return {t(cr, 128, 6537), t(cb, 128, 1605), t(cr, 128, 3330), t(cb, 128, 8263)}; }
    // Lanes not yet clamped: the store's saturating pack to bytes clamps them.
    static void rgb(W luma, const Terms& c, W* out) {
      const W y = t(luma, 16, 4769);
      out[0] = O::sra(O::adds16s(y, c.r), 3);
      out[1] = O::sra(O::subs16s(O::subs16s(y, c.g1), c.g2), 3);
      out[2] = O::sra(O::adds16s(y, c.b), 3);
    }
  };
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

#if LUM_SIMD_SSE
// Chroma of pixels x .. x+15 of a row (x = 2j, j + 8 <= n) as two vectors of
// eight 16-bit lanes: even pixels take sample j + i, odd pixels the average of
// samples j + i and j + i + 1.
void chroma16(const Lum8u* c, int j, __m128i out[2]) {
  const __m128i here = _mm_loadl_epi64(reinterpret_cast<const __m128i*>(c + j));
  const __m128i next = _mm_loadl_epi64(reinterpret_cast<const __m128i*>(c + j + 1));
  const __m128i px = _mm_unpacklo_epi8(here, lanes::Sse::avg8(here, next));
  out[0] = _mm_cvtepu8_epi16(px);
  out[1] = _mm_unpackhi_epi8(px, _mm_setzero_si128());
}

// The block part of both rows of a pair, 16 pixels a step; the chroma terms of
// a step serve both rows.
void pairBlocks(const SrcPlanes& s0, const SrcPlanes& s1, const DstPlanes& d0, const DstPlanes& d1, int end,
                const RowCtx& c) {
  for (int x = 0; x < end; x += 16) {
    __m128i cb[2], cr[2];
    chroma16(s0.p[1], x / 2, cb);
    chroma16(s0.p[2], x / 2, cr);
    for (int half = 0; half < 2; ++half) {
      using Q3 = BgrQ3::Lanes<lanes::Sse>;
      const Q3::Terms t = Q3::terms(cb[half], cr[half]);
      const int at = x + 8 * half;
      for (int row = 0; row < 2; ++row) {
        L::Vx out;
        Q3::rgb(L::detail::load8x8((row ? s1 : s0).p[0] + at), t, out.v);
        out.v[3] = lanes::Sse::set(c.aval);
        L::BGRA::store<true>(row ? d1 : d0, at, out);
      }
    }
  }
}
#endif

// A row pair of pixels 0 .. 2n + 1 (n = W/2 - 1 >= 0): blocks of 8 chroma samples,
// then the interpolated pixels up to 2n by the tail form, then the closing pair.
void innerYCrCb420ToBGR(const SrcPlanes (&s)[2], const DstPlanes (&d)[2], int n, const RowCtx& c) {
  const int blockEnd = 16 * (n / 8);
  bool blocksDone = false;
#if LUM_SIMD_SSE
  if (useVector()) {
    pairBlocks(s[0], s[1], d[0], d[1], blockEnd, c);
    blocksDone = true;
  }
#endif
  for (int row = 0; row < 2; ++row) {
    if (!blocksDone) runPixels<BgrQ3, Interpolated, L::BGRA, Alpha::Aval>(s[row], d[row], 0, blockEnd, c);
    runPixels<BgrQ12, Interpolated, L::BGRA, Alpha::Aval>(s[row], d[row], blockEnd, 2 * n, c);
    runPixels<BgrQ12, Repeated, L::BGRA, Alpha::Aval>(s[row], d[row], 2 * n, 2 * n + 2, c);
  }
}

// Row pairs 2k, 2k+1 over chroma row k. The source records hold Y, Cb, Cr in
// that order: the caller's planes 0, 2, 1.
void myYCrCb420ToBGR_8u_P3C4R(const Lum8u* const src[3], const int srcStep[3], Lum8u* dst, int dstStep, int w,
                              int h, Lum8u alpha) {
  const RowCtx c{alpha};
  for (int k = 0; k < h / 2; ++k) {
    const auto luma = window::from<2>(window::Plane{src[0], srcStep[0]}, 2 * k);
    const auto out = window::from<2>(window::Plane{dst, dstStep}, 2 * k);
    SrcPlanes s[2];
    DstPlanes d[2];
    for (int row = 0; row < 2; ++row) {
      s[row].p[0] = luma[row];
      s[row].p[1] = rowAt(src[2], k, srcStep[2]);
      s[row].p[2] = rowAt(src[1], k, srcStep[1]);
      d[row].p[0] = out[row];
    }
    // W = 1 has no pair before the closing one: the closing pair is pixels 0 and 1.
    innerYCrCb420ToBGR(s, d, w > 1 ? w / 2 - 1 : 0, c);
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
  myYCrCb420ToBGR_8u_P3C4R(pSrc, srcStep, pDst, dstStep, roi.width, roi.height, alpha);
  return (roi.width | roi.height) & 1 ? lumStatusOddSize : lumStatusOk;
}
