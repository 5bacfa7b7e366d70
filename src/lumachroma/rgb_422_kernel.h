// Row kernels of the RGB <-> 4:2:2 conversions.
//
// Forward (PairsThenTail): a row is converted pair by pair; the block form takes
// the pairs of the first width & ~(Cover - 1) pixels (vector steps of sixteen,
// then one of eight where Cover allows, and the scalar twin for the rest), the
// tail form the remaining whole pairs. An odd last pixel has no partner and is
// not written.
//
// Inverse (ReplicatedRow): every pixel of a whole pair is converted by the
// full-resolution kernel on its pair's chroma; an odd last pixel follows the
// function's own rule (Odd*).
#pragma once

#include <climits>
#include <cstdint>
#include <type_traits>

#include "frame/cell_kernel.h"
#include "frame/check.h"
#include "frame/kernel.h"
#include "lumachroma/rgb_422_layouts.h"

namespace lum {

namespace check {
// Pointers null -> lumStatusNullPointer, then width below 2 or height below 1 ->
// lumStatusBadSize (the 4:2:2 functions that need a whole pair).
template <class... P>
constexpr LumStatus nullThenWidth2(LumSize roi, const P*... p) {
  if (anyNull(p...)) return lumStatusNullPointer;
  if (badSize(roi, 2)) return lumStatusBadSize;
  return lumStatusOk;
}
}  // namespace check

// The planes of a layout advanced by x pixels (x even for 4:2:2 layouts).
template <class L, class T>
inline Planes<T> advancePixels(Planes<T> p, int x) {
  if constexpr (requires { L::advance(p, x); }) {
    return L::advance(p, x);
  } else {
    for (int i = 0; i < 4; ++i)
      if (p.p[i]) p.p[i] += L::kBytes * x;
    return p;
  }
}

// The 256-bit blocks: which forms and layouts have one. A kernel asks once per
// call whether they may run (useWide()), then gives them the first whole steps
// of its block part; the 128-bit blocks and the scalar twin go on from there,
// so the forms fall on the same pixels whichever ran.
namespace wide422 {
template <class L> inline constexpr bool isPairs = false;
template <class P, bool A> inline constexpr bool isPairs<layout422::C2<P, A>> = true;
template <> inline constexpr bool isPairs<layout422::P3h> = true;
template <class L> inline constexpr bool isPixels3 = false;
template <> inline constexpr bool isPixels3<layout::RGB> = true;
template <> inline constexpr bool isPixels3<layout::BGR> = true;
template <class L> inline constexpr bool isPixels4 = false;
template <> inline constexpr bool isPixels4<layout::RGBA> = true;
template <> inline constexpr bool isPixels4<layout::BGRA> = true;

// Forward pair forms with a wide block, from pixels to pairs.
template <class Form> inline constexpr bool forwardForm = false;
template <> inline constexpr bool forwardForm<form::PairForm<form::FY1, form::FC1>> = true;
template <> inline constexpr bool forwardForm<form::PairHighMul> = true;
template <class Form, class Src, class Dst>
constexpr bool forwardHas =
    forwardForm<Form> && (isPixels3<Src> || isPixels4<Src> || std::is_same_v<Src, layout::P3>) && isPairs<Dst>;

// Inverse forms with a wide block: the rounded IY scheme, to three-byte pixels,
// or four with alpha written as zero or aval.
template <class Form> inline constexpr bool inverseForm = false;
template <int Cy, int CrR, int CbG, int CrG, int CbB, int Round, int Shift>
inline constexpr bool inverseForm<form::IYRounded<Cy, CrR, CbG, CrG, CbB, Round, Shift>> = true;
template <class Form, class Src, class Dst, Alpha A>
constexpr bool inverseHas = inverseForm<Form> && isPairs<Src> &&
                            (isPixels3<Dst> || (isPixels4<Dst> && (A == Alpha::Aval || A == Alpha::Zero)));

// Pairs of the pixels [0, end) of a row by Form's 256-bit lanes, 32 pixels a
// step; returns the pixel where the steps stop. Defined in
// rgb_422_layouts_avx2.h, instantiated in rgb_422_avx2.cpp.
template <class Form, class Src, class Dst>
int pairs(const SrcPlanes& s, const DstPlanes& d, int end);
// The same in every row of a region, each row then finished by rest(s, d, x,
// width) from the pixel x where the steps stop.
using RowRest = void (*)(const SrcPlanes& s, const DstPlanes& d, int x, int width);
template <class Form, class Src, class Dst>
void image(LumSize roi, const SrcPlanes& s, const DstPlanes& d, int end, RowRest rest);
}  // namespace wide422

// Pairs of pixels from x by BlockForm's lanes on the set O, 2 * O::kLanes pixels
// a step while they fit below end; Io moves the pixels in (load) and the pairs
// out (store). Returns the pixel where the steps stop.
template <class O, class BlockForm, class Io>
inline int pairSteps(const SrcPlanes& src, const DstPlanes& dst, int x, int end) {
  using V = typename O::V;
  constexpr int kStep = 2 * O::kLanes;
  // Local copies: the stores may alias anything, and the row pointers should
  // stay in registers through the loop.
  const SrcPlanes s = src;
  const DstPlanes d = dst;
  for (; x + kStep <= end; x += kStep) {
    V a[4], b[4];
    Io::load(s, x, a);
    Io::load(s, x + O::kLanes, b);
    layout::Px p;
    const int* prev = nullptr;
    if constexpr (BlockForm::kUsesPrev) {
      if (x > 0) {
        Io::Src::load(s, x - 1, p);
        prev = p.v;
      }
    }
    form::Pairs<O> o;
    BlockForm::template vblock<O>(a, b, prev, o);
    Io::store(d, x, o);
  }
  return x;
}

#if LUM_SIMD_SSE
// Eight pixels in and sixteen pixels' pairs out, by the 4:2:2 kernel's layouts.
template <class S, class Dst>
struct PairIo128 {
  using Src = S;
  static void load(const SrcPlanes& s, int x, __m128i* v) { detail::PixelLanes128<Src>::load(s, x, v); }
  static void store(const DstPlanes& d, int x, const form::Pairs<lanes::Sse>& o) { Dst::store16(d, x, o); }
};
#endif

template <int Cover, class BlockForm, class TailForm, class Src, class Dst>
struct PairsThenTail {
  static_assert(Cover >= 2 && (Cover & (Cover - 1)) == 0, "blocks cover whole pairs");

  // One pair at pixel x by a form's scalar rule.
  template <class Form>
  static void pairAt(const SrcPlanes& s, const DstPlanes& d, int x) {
    layout::Px a, b, p;
    Src::load(s, x, a);
    Src::load(s, x + 1, b);
    const int* prev = nullptr;
    if constexpr (Form::kUsesPrev) {
      if (x > 0) {
        Src::load(s, x - 1, p);
        prev = p.v;
      }
    }
    int o[4];
    Form::pair(prev, a.v, b.v, o);
    Dst::storePair(d, x, o);
  }

#if LUM_SIMD_SSE
  // Eight pixels at x by the block form's vector lanes.
  static void vectorAt8(const SrcPlanes& s, const DstPlanes& d, int x) {
    layout::Vx a;
    Src::load(s, x, a);
    layout::Px p;
    const int* prev = nullptr;
    if constexpr (BlockForm::kUsesPrev) {
      if (x > 0) {
        Src::load(s, x - 1, p);
        prev = p.v;
      }
    }
    form::Pairs<lanes::Sse> o;
    BlockForm::template vblock<lanes::Sse>(a.v, a.v, prev, o);  // the upper lanes are computed and dropped
    Dst::store8(d, x, o);
  }
#endif

  // The row from pixel x on: x is 0, or where the 256-bit steps stopped.
  static void rowFrom(const SrcPlanes& s, const DstPlanes& d, int x, int width) {
    const int blockEnd = width & ~(Cover - 1), pairEnd = width & ~1;
#if LUM_SIMD_SSE
    if (x < blockEnd && useVector()) {
      x = pairSteps<lanes::Sse, BlockForm, PairIo128<Src, Dst>>(s, d, x, blockEnd);
      if (x + 8 <= blockEnd) {
        vectorAt8(s, d, x);
        x += 8;
      }
    }
#endif
    for (; x < blockEnd; x += 2) pairAt<BlockForm>(s, d, x);
    for (; x < pairEnd; x += 2) pairAt<TailForm>(s, d, x);
  }

  static void row(const SrcPlanes& s, const DstPlanes& d, int width, const RowCtx& = {},
                  [[maybe_unused]] bool wideOn = useWide()) {
    int x = 0;
#if LUM_SIMD_SSE
    if constexpr (wide422::forwardHas<BlockForm, Src, Dst>) {
      if (wideOn) x = wide422::pairs<BlockForm, Src, Dst>(s, d, width & ~(Cover - 1));
    }
#endif
    rowFrom(s, d, x, width);
  }

  static void image(LumSize roi, const SrcPlanes& s, const DstPlanes& d, const RowCtx& = {}) {
#if LUM_SIMD_SSE
    if constexpr (wide422::forwardHas<BlockForm, Src, Dst>) {
      if (useWide()) {
        wide422::image<BlockForm, Src, Dst>(roi, s, d, roi.width & ~(Cover - 1), &rowFrom);
        return;
      }
    }
#endif
    for (int y = 0; y < roi.height; ++y) rowFrom(s.row(y), d.row(y), 0, roi.width);
  }
};

// Odd last pixel of a planar source: it has a chroma sample of its own (the
// chroma rows hold width / 2 + 1 samples), so the tail form converts it.
struct OddOwnChroma {
  template <class Tail, class Src, class Dst, Alpha A>
  static void last(const SrcPlanes& s, const DstPlanes& d, int width, const RowCtx& c) {
    runPixels<Tail, Src, Dst, A>(s, d, width - 1, width, c);
  }
};

// Odd last pixel of a packed source: a half pair, its luma and one chroma byte.
// The other chroma is taken from the pair to the left.
enum class Guard {
  // A lone pixel (width 1) uses its one chroma byte as both.
  Exact,
  // The guard tests width >> 1 against 1: at width 3 the pixel's own chroma byte
  // serves as both although a pair lies to the left, and at width 1 the byte
  // where a left pair's chroma would be (before the row) is read. Kept as the
  // YCbCr422 / CbYCr422 -> RGB kernels have always behaved.
  OneOff,
};
// StoreAs: the layout this pixel is stored in, when it differs from the row's.
template <Guard G, class StoreAs = void>
struct OddHalfPair {
  template <class Tail, class Src, class Dst, Alpha A>
  static void last(const SrcPlanes& s, const DstPlanes& d, int width, const RowCtx& c) {
    const int x = width - 1;
    layout::Px in, out;
    int c0;
    Src::loadHalf(s, x, in.v[0], c0);
    const bool fromLeft = G == Guard::Exact ? width >= 3 : (width >> 1) != 1;
    const int c1 = fromLeft ? s.p[0][2 * x + Src::kLeftC1] : c0;
    in.v[Src::kFirstChannel] = c0;
    in.v[3 - Src::kFirstChannel] = c1;
    in.v[3] = 0;
    Tail::pixel(in.v, out.v);
    lum::detail::setAlpha<A>(out, in, c);
    using D = std::conditional_t<std::is_void_v<StoreAs>, Dst, StoreAs>;
    D::template store<A != Alpha::Keep>(d, x, out);
  }
};

template <int Cover, class BlockForm, class TailForm, class Src, class Dst, Alpha A, class Odd>
struct ReplicatedRow {
  using WholePairs = BlockThenTail<Cover, BlockForm, TailForm, Src, Dst, A, A>;

  // The row from pixel x on (x = 0, or a multiple of 16 inside the block part):
  // the rest of the whole pairs by the vector blocks and the tail, then an odd
  // last pixel.
  static void rowFrom(const SrcPlanes& s, const DstPlanes& d, int x, int width, const RowCtx& c) {
    if (x < (width & ~1)) WholePairs::rowFrom(s, d, x, width & ~1, c);
    if (width & 1) Odd::template last<TailForm, Src, Dst, A>(s, d, width, c);
  }
  // Whole region. The 256-bit blocks take whole groups of 16 of the block part
  // (a multiple of Cover), so the rest splits into block and tail where the
  // whole row would.
  static void image(LumSize roi, const SrcPlanes& s, const DstPlanes& d, const RowCtx& c = {},
                    [[maybe_unused]] bool wideOn = useWide()) {
#if LUM_SIMD_SSE
    if constexpr (wide422::inverseHas<BlockForm, Src, Dst, A>) {
      if (wideOn) {
        wide16::image<BlockForm, Src, Dst, A>(roi, s, d, (roi.width & ~1) & ~(Cover - 1), c, &rowFrom);
        return;
      }
    }
#endif
    for (int y = 0; y < roi.height; ++y) rowFrom(s.row(y), d.row(y), 0, roi.width, c);
  }
  static void row(const SrcPlanes& s, const DstPlanes& d, int width, const RowCtx& c = {},
                  bool wideOn = useWide()) {
    image(LumSize{width, 1}, s, d, c, wideOn);
  }
};

// Dense images (no row padding) fold into one long row when the width is even
// and the image holds at least 256 pixels: the row kernel runs once over the
// largest multiple of 8 of width * height pixels and once over the rest, so the
// block and tail forms fall by position in that long row. Returns false when
// the image does not fold (the caller then runs its row driver).
template <class Kernel, class Src, class Dst>
inline bool foldDense(LumSize roi, const SrcPlanes& s, const DstPlanes& d) {
  const int64_t n = int64_t(roi.width) * roi.height;
  // Beyond INT_MAX pixels one row cannot hold the image: those go row by row.
  if (n < 256 || (roi.width & 1) || n > INT_MAX) return false;
  const int n1 = int(n & ~int64_t(7)), rest = int(n - n1);
  const bool wideOn = useWide();
  Kernel::row(s, d, n1, RowCtx{}, wideOn);
  if (rest) Kernel::row(advancePixels<Src>(s, n1), advancePixels<Dst>(d, n1), rest, RowCtx{}, wideOn);
  return true;
}

}  // namespace lum
