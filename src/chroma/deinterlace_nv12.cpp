// NV12 deinterlacing: a vertical three-tap luma filter (1, 2, 1) and two-tap
// chroma averaging, to 4:2:0 planes or to packed YCbCr422, for a whole frame or
// slice by slice. Vector blocks average bytes with upward rounding in steps,
// scalar samples sum and shift once: a tail sample can be one below what a block
// gives for the same inputs, and the same row shows both when its width is not a
// multiple of the block. Row indices below are relative to the slice's origin;
// the middle and last slices reach back over the two luma rows and the chroma row
// that the slice above left to them (and read one luma row further up).
#include "chroma/filter_rows.h"
#include "frame/check.h"
#include "frame/fixed_point.h"
#include "frame/chop.h"

using namespace lum;
using namespace lum::vrow;

namespace {

using fx::avg8;

// ---------------------------------------------------------------------------
// Forms. Luma rows come top to bottom: a, c, b for the middle rows (c the row
// written), s0, s1 for the top row, p, q for the bottom row; chroma rows k, k+1.
// ---------------------------------------------------------------------------

// M in blocks: avgUp(avgUp(c, a), avgUp(c, b)).
struct MidAvg {
  static int pixel(const int* v) { return avg8(avg8(v[1], v[0]), avg8(v[1], v[2])); }
#if LUM_SIMD_SSE
  template <class O, class W = typename O::V>
  static W block(const W* v) { return O::avg8(O::avg8(v[1], v[0]), O::avg8(v[1], v[2])); }
#endif
};
// M in scalar samples: (a + 2c + b) >> 2; Bias 4 is the whole-frame packed kernel's.
template <int Bias>
struct MidSumOf {
  static int pixel(const int* v) { return CHOP_ARRAY[(v[0] + 2 * v[1] + v[2] + Bias) >> 2]; }
};
using MidSum = MidSumOf<0>;
using MidSumBias = MidSumOf<4>;

// T in blocks: avgUp(avgUp(s1, s0), s0).
struct TopAvg {
  static int pixel(const int* v) { return avg8(avg8(v[1], v[0]), v[0]); }
#if LUM_SIMD_SSE
  template <class O, class W = typename O::V>
  static W block(const W* v) { return O::avg8(O::avg8(v[1], v[0]), v[0]); }
#endif
};
// T in scalar samples: (3 s0 + s1) >> 2.
template <int Bias>
struct TopSumOf {
  static int pixel(const int* v) { return CHOP_ARRAY[(3 * v[0] + v[1] + Bias) >> 2]; }
};
using TopSum = TopSumOf<0>;
using TopSumBias = TopSumOf<4>;

// B in blocks: avgUp(avgUp(p, q), q).
struct BotAvg {
  static int pixel(const int* v) { return avg8(avg8(v[0], v[1]), v[1]); }
#if LUM_SIMD_SSE
  template <class O, class W = typename O::V>
  static W block(const W* v) { return O::avg8(O::avg8(v[0], v[1]), v[1]); }
#endif
};
// B in scalar samples: (p + 3q) >> 2.
template <int Bias>
struct BotSumOf {
  static int pixel(const int* v) { return CHOP_ARRAY[(v[0] + 3 * v[1] + Bias) >> 2]; }
};
using BotSum = BotSumOf<0>;
using BotSumBias = BotSumOf<4>;

// C in blocks: avgUp of chroma rows k and k+1.
struct ChromaAvg {
  static int pixel(const int* v) { return avg8(v[0], v[1]); }
#if LUM_SIMD_SSE
  template <class O, class W = typename O::V>
  static W block(const W* v) { return O::avg8(v[0], v[1]); }
#endif
};
// C in scalar samples: (c(k) + c(k+1)) >> 1. Its vector block computes the same
// downward-rounded lanes, for the rows whose chroma is scalar by rule.
struct ChromaSum {
  static int pixel(const int* v) { return CHOP_ARRAY[(v[0] + v[1]) >> 1]; }
#if LUM_SIMD_SSE
  template <class O, class W = typename O::V>
  static W block(const W* v) {
    return avgDown8<O>(v[0], v[1]);
  }
#endif
};

// ---------------------------------------------------------------------------
// Images
// ---------------------------------------------------------------------------

struct Nv12 {
  const Lum8u* y;
  int yStep;
  const Lum8u* uv;
  int uvStep;
  // Luma rows first .. first + N - 1; chroma rows likewise (first may be
  // negative: slices reach back above their origin).
  template <int N>
  Rows<Bytes, N> luma(int first) const { return rowsOf(window::from<N>(window::Plane{y, yStep}, first)); }
  template <int N>
  Rows<Bytes, N> chroma(int first) const { return rowsOf(window::from<N>(window::Plane{uv, uvStep}, first)); }
};

struct Yv12 {
  Lum8u* p[3];
  int step[3];
  Lum8u* row(int plane, int r) const { return rowAt(p[plane], r, step[plane]); }
};

// ---------------------------------------------------------------------------
// 4:2:0 planes. Luma of width w; chroma: w / 2 samples a plane, even bytes of
// the NV12 row to plane 1, odd bytes to plane 2.
// ---------------------------------------------------------------------------

// Block widths of the slice kernels. The HDTV kernels take 32 samples a step and
// have no tails (their calls fill whole blocks); they make the bottom row in
// vector form, where the plain last kernel makes it scalar.
struct PlainKernels {
  static constexpr int kLuma = 16, kChroma = 16;
  using BottomBlock = NoBlock;
};
struct HdtvKernels {
  static constexpr int kLuma = 32, kChroma = 32;
  using BottomBlock = BotAvg;
};

// Luma row `out` from N source rows starting at `first`.
template <int Cover, class BF, class TF, int N>
void lumaRow(const Nv12& s, int first, const Yv12& d, int out, int w) {
  runRow<Cover, BF, TF>(w, ToPlane{s.luma<N>(first), d.row(0, out)});
}
// Chroma row k of both planes from N source chroma rows starting at `first`.
template <int Cover, class BF, class TF, int N>
void chromaRow(const Nv12& s, int first, const Yv12& d, int k, int w) {
  runRow<Cover, BF, TF>(w / 2, ToSplit{s.chroma<N>(first), d.row(1, k), d.row(2, k)});
}

// Middle luma rows [from, to] and chroma rows [kFrom, kTo]. Luma rows go two at
// a time where they can, reading their four source rows once.
template <int LumaCover, int ChromaCover>
void middleRows(const Nv12& s, const Yv12& d, int w, int from, int to, int kFrom, int kTo) {
  int j = from;
  for (; j + 1 <= to; j += 2)
    runRow<LumaCover, MidAvg, MidSum>(
        w, Both{ToPlane{s.luma<3>(j - 1), d.row(0, j)}, ToPlane{s.luma<3>(j), d.row(0, j + 1)}});
  if (j == to) lumaRow<LumaCover, MidAvg, MidSum, 3>(s, j - 1, d, j, w);
  for (int k = kFrom; k <= kTo; ++k) chromaRow<ChromaCover, ChromaAvg, ChromaSum, 2>(s, k, d, k, w);
}

// First slice: luma 0 by T (blocks and tail), 1 .. h-3 by M; chroma 0 .. h/2-2.
template <class K>
void innerNV12ToYV12DeinterlaceFirst(const Nv12& s, const Yv12& d, int w, int h) {
  lumaRow<K::kLuma, TopAvg, TopSum, 2>(s, 0, d, 0, w);
  middleRows<K::kLuma, K::kChroma>(s, d, w, 1, h - 3, 0, h / 2 - 2);
}

// Middle slice: luma -2 .. h-3 by M; chroma -1 .. h/2-2.
template <class K>
void innerNV12ToYV12DeinterlaceMiddle(const Nv12& s, const Yv12& d, int w, int h) {
  middleRows<K::kLuma, K::kChroma>(s, d, w, -2, h - 3, -1, h / 2 - 2);
}

// Last slice: luma -2 .. h-2 by M and h-1 by B; chroma -1 .. h/2-2, then the last
// chroma row, scalar, from rows h/2-2 and h/2-1 (the same inputs as the row above it).
template <class K>
void innerNV12ToYV12DeinterlaceLast(const Nv12& s, const Yv12& d, int w, int h) {
  middleRows<K::kLuma, K::kChroma>(s, d, w, -2, h - 2, -1, h / 2 - 2);
  lumaRow<K::kLuma, typename K::BottomBlock, BotSum, 2>(s, h - 2, d, h - 1, w);
  chromaRow<1, NoBlock, ChromaSum, 2>(s, h / 2 - 2, d, h / 2 - 1, w);
}

// Whole frame: rows 0 and h-1 scalar only, middle rows and chroma in blocks of 16.
// A frame of two rows is all scalar, adds a bias of 4 to its luma sums and
// copies its one chroma row unchanged.
void innerNV12ToYV12DeinterlaceAll(const Nv12& s, const Yv12& d, int w, int h) {
  if (h == 2) {
    lumaRow<1, NoBlock, TopSumBias, 2>(s, 0, d, 0, w);
    lumaRow<1, NoBlock, BotSumBias, 2>(s, 0, d, 1, w);
    chromaRow<1, NoBlock, Copy, 1>(s, 0, d, 0, w);
    return;
  }
  lumaRow<1, NoBlock, TopSum, 2>(s, 0, d, 0, w);
  middleRows<16, 16>(s, d, w, 1, h - 2, 0, h / 2 - 2);
  lumaRow<1, NoBlock, BotSum, 2>(s, h - 2, d, h - 1, w);
  chromaRow<1, NoBlock, ChromaSum, 2>(s, h / 2 - 2, d, h / 2 - 1, w);
}

// The HDTV kernels run when every block is whole and every access aligned.
bool hdtvCall(const Nv12& s, const Yv12& d, int w, int h) {
  if (w % 64 || h % 16 || (s.yStep & 15) || (s.uvStep & 31)) return false;
  if (!aligned16(s.y) || !aligned16(s.uv)) return false;
  for (int i = 0; i < 3; ++i)
    if ((d.step[i] & 31) || !aligned16(d.p[i])) return false;
  return true;
}

template <class K>
void sliceYV12(const Nv12& s, const Yv12& d, int w, int h, int layout) {
  if (layout == lumSliceFirst) innerNV12ToYV12DeinterlaceFirst<K>(s, d, w, h);
  if (layout == lumSliceMiddle) innerNV12ToYV12DeinterlaceMiddle<K>(s, d, w, h);
  if (layout == lumSliceLast) innerNV12ToYV12DeinterlaceLast<K>(s, d, w, h);
}

// ---------------------------------------------------------------------------
// Packed YCbCr422 (Y0 Cb Y1 Cr). Output rows 2k and 2k+1 share chroma C of NV12
// rows k and k+1; pixel x has luma byte 2x and chroma byte 2x + 1.
// ---------------------------------------------------------------------------

struct Yuy2 {
  Lum8u* p;
  int step;
};

// Output row `out` from N luma rows starting at `lumaFirst` and NC chroma rows
// starting at `chromaFirst`; the forms are Pairs of a luma and a chroma form.
template <int Cover, class BP, class TP, int N, int NC>
void packedRow(const Nv12& s, int lumaFirst, int chromaFirst, const Yuy2& d, int out, int w) {
  runRow<Cover, BP, TP>(w, toPacked<0>(s.luma<N>(lumaFirst), s.chroma<NC>(chromaFirst), rowAt(d.p, out, d.step)));
}

// Output rows 2k and 2k+1 by M over C of chroma rows k and k+1, 32 pixels a
// step; the two rows read their shared luma and chroma rows once.
template <class Tail>
void middlePair(const Nv12& s, const Yuy2& d, int w, int k) {
  const auto chroma = s.chroma<2>(k);
  runRow<32, Pair<MidAvg, ChromaAvg>, Tail>(
      w, Both{toPacked<0>(s.luma<3>(2 * k - 1), chroma, rowAt(d.p, 2 * k, d.step)),
              toPacked<0>(s.luma<3>(2 * k), chroma, rowAt(d.p, 2 * k + 1, d.step))});
}

// Middle kernel: row pairs k = kFrom .. kTo, scalar tail by the plain sums.
void innerNV12ToYUY2Deinterlace(const Nv12& s, const Yuy2& d, int w, int kFrom, int kTo) {
  for (int k = kFrom; k <= kTo; ++k) middlePair<Pair<MidSum, ChromaSum>>(s, d, w, k);
}

// First slice: rows 0 (T) and 1 (M) in 8-pixel steps with chroma rows 0 and 1,
// then the middle kernel over rows 2 .. h-3. Row 1 reads luma row 2 and the
// chroma pair reads chroma row 1, which a slice of two rows does not have: such a
// slice writes nothing and leaves its rows to the slice below.
void myNV12ToYUY2DeinterlaceFirst(const Nv12& s, const Yuy2& d, int w, int h) {
  if (h < 4) return;
  packedRow<8, Pair<TopAvg, ChromaAvg>, Pair<TopSum, ChromaSum>, 2, 2>(s, 0, 0, d, 0, w);
  packedRow<8, Pair<MidAvg, ChromaAvg>, Pair<MidSum, ChromaSum>, 3, 2>(s, 0, 0, d, 1, w);
  innerNV12ToYUY2Deinterlace(s, d, w, 1, h / 2 - 2);
}

// Last slice: the middle kernel over rows -2 .. h-3, then rows h-2 (M) and h-1 (B)
// in 8-pixel steps. Their chroma is the last chroma row, which is scalar in every
// column, in 8-pixel steps too (as the planar last slice makes it).
void myNV12ToYUY2DeinterlaceLast(const Nv12& s, const Yuy2& d, int w, int h) {
  innerNV12ToYUY2Deinterlace(s, d, w, -1, h / 2 - 2);
  packedRow<8, Pair<MidAvg, ChromaSum>, Pair<MidSum, ChromaSum>, 3, 2>(s, h - 3, h / 2 - 2, d, h - 2, w);
  packedRow<8, Pair<BotAvg, ChromaSum>, Pair<BotSum, ChromaSum>, 2, 2>(s, h - 2, h / 2 - 2, d, h - 1, w);
}

// Whole frame. Every scalar luma sum carries a bias of 4 before its shift (it adds
// one to the result, and chop holds it at 255); chroma sums carry none. Rows 0, 1,
// h-2 and h-1 are scalar only; rows 2 .. h-3 take M in 32-pixel blocks. Row h-1
// repeats row h-2's chroma bytes: both are the scalar C of the last two chroma
// rows. A frame of two rows carries its one chroma row unchanged in both rows.
void myNV12ToYUY2DeinterlaceAll(const Nv12& s, const Yuy2& d, int w, int h) {
  if (h == 2) {
    packedRow<1, NoBlock, Pair<TopSumBias, Copy>, 2, 1>(s, 0, 0, d, 0, w);
    packedRow<1, NoBlock, Pair<BotSumBias, Copy>, 2, 1>(s, 0, 0, d, 1, w);
    return;
  }
  using Scalar = Pair<MidSumBias, ChromaSum>;
  packedRow<1, NoBlock, Pair<TopSumBias, ChromaSum>, 2, 2>(s, 0, 0, d, 0, w);
  packedRow<1, NoBlock, Scalar, 3, 2>(s, 0, 0, d, 1, w);
  for (int k = 1; k <= h / 2 - 2; ++k) middlePair<Scalar>(s, d, w, k);
  packedRow<1, NoBlock, Scalar, 3, 2>(s, h - 3, h / 2 - 2, d, h - 2, w);
  packedRow<1, NoBlock, Pair<BotSumBias, ChromaSum>, 2, 2>(s, h - 2, h / 2 - 2, d, h - 1, w);
}

// Which part of a frame a call works on: exactly one slice bit selects that
// slice, all three bits the whole frame, anything else nothing.
enum class Part { None, First, Middle, Last, Whole };
Part partOf(int layout) {
  if (layout == lumSliceFirst) return Part::First;
  if (layout == lumSliceMiddle) return Part::Middle;
  if (layout == lumSliceLast) return Part::Last;
  if ((layout & lumSliceWhole) == lumSliceWhole) return Part::Whole;
  return Part::None;
}

}  // namespace

LumStatus lumiYCbCr420ToYCbCr422_Filter_8u_P2C2R(const Lum8u* pSrcY, int srcYStep, const Lum8u* pSrcCbCr,
                                                 int srcCbCrStep, Lum8u* pDst, int dstStep, LumSize roi,
                                                 int layout) {
  if (check::anyNull(pSrcY, pSrcCbCr, pDst)) return lumStatusNullPointer;
  if (check::badSize(roi, 2, 2)) return lumStatusBadSize;
  const Nv12 s{pSrcY, srcYStep, pSrcCbCr, srcCbCrStep};
  const Yuy2 d{pDst, dstStep};
  const int w = roi.width & ~1, h = roi.height & ~1;
  switch (partOf(layout)) {
    case Part::First: myNV12ToYUY2DeinterlaceFirst(s, d, w, h); break;
    case Part::Middle: innerNV12ToYUY2Deinterlace(s, d, w, -1, h / 2 - 2); break;
    case Part::Last: myNV12ToYUY2DeinterlaceLast(s, d, w, h); break;
    case Part::Whole: myNV12ToYUY2DeinterlaceAll(s, d, w, h); break;
    case Part::None: break;
  }
  return lumStatusOk;
}

// Checks: the three pointers, a size below 1, the planes of pDst, then a size
// below 2.
LumStatus lumiYCbCr420ToYCrCb420_Filter_8u_P2P3R(const Lum8u* pSrcY, int srcYStep, const Lum8u* pSrcCbCr,
                                                 int srcCbCrStep, Lum8u* const pDst[3], const int dstStep[3],
                                                 LumSize roi, int layout) {
  if (check::anyNull(pSrcY, pSrcCbCr, pDst, dstStep)) return lumStatusNullPointer;
  if (check::badSize(roi)) return lumStatusBadSize;
  if (check::anyPlaneNull(pDst, 3)) return lumStatusNullPointer;
  if (check::badSize(roi, 2, 2)) return lumStatusBadSize;
  const Nv12 s{pSrcY, srcYStep, pSrcCbCr, srcCbCrStep};
  const Yv12 d{{pDst[0], pDst[1], pDst[2]}, {dstStep[0], dstStep[1], dstStep[2]}};
  const int w = roi.width & ~1, h = roi.height & ~1;
  const Part part = partOf(layout);
  if (part == Part::Whole) innerNV12ToYV12DeinterlaceAll(s, d, w, h);
  else if (hdtvCall(s, d, w, h)) sliceYV12<HdtvKernels>(s, d, w, h, layout);
  else sliceYV12<PlainKernels>(s, d, w, h, layout);
  return lumStatusOk;
}
