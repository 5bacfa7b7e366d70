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

#include "frame/check.h"
#include "frame/kernel.h"
#include "lumachroma/rgb_422_avx2.h"
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
// call whether they may run (useVector() and the processor), then gives them
// the first whole groups of sixteen pixels of its block part; the 128-bit
// blocks and the scalar twin go on from there, so the forms fall on the same
// pixels whichever ran.
namespace widen {
#if LUM_SIMD_SSE
template <class L> inline constexpr int pix = -1;
template <> inline constexpr int pix<layout::RGB> = int(wide::Pix::RGB);
template <> inline constexpr int pix<layout::BGR> = int(wide::Pix::BGR);
template <> inline constexpr int pix<layout::RGBA> = int(wide::Pix::RGBA);
template <> inline constexpr int pix<layout::BGRA> = int(wide::Pix::BGRA);
template <> inline constexpr int pix<layout::P3> = int(wide::Pix::P3);
template <bool A> inline constexpr int pix<layout422::C2<true, true, A>> = int(wide::Pix::YCbCr422);
template <bool A> inline constexpr int pix<layout422::C2<false, true, A>> = int(wide::Pix::CbYCr422);
template <bool A> inline constexpr int pix<layout422::C2<true, false, A>> = int(wide::Pix::YCrCb422);
template <> inline constexpr int pix<layout422::P3h> = int(wide::Pix::P3h);
template <class L> constexpr bool isPairs = pix<L> >= int(wide::Pix::YCbCr422) && pix<L> != int(wide::Pix::P3);
template <class L> constexpr bool isPixels = (pix<L> >= 0 && pix<L> <= int(wide::Pix::BGRA)) || pix<L> == int(wide::Pix::P3);

// Inverse forms with a wide block: the rounded IY scheme.
template <class Form> struct Inverse { static constexpr bool kHas = false; };
template <int Cy, int CrR, int CbG, int CrG, int CbB, int Round, int Shift>
struct Inverse<form::IYRounded<Cy, CrR, CbG, CrG, CbB, Round, Shift>> {
  static constexpr bool kHas = true;
  static constexpr wide::IYParams kParams{Cy, CrR, CbG, CrG, CbB, Round, Shift};
};
// Its destinations: three-byte pixels, or four with alpha written as aval.
template <class Form, class Src, class Dst, Alpha A>
constexpr bool inverseHas = Inverse<Form>::kHas && isPairs<Src> &&
                            (pix<Dst> == int(wide::Pix::RGB) || pix<Dst> == int(wide::Pix::BGR) ||
                             ((pix<Dst> == int(wide::Pix::RGBA) || pix<Dst> == int(wide::Pix::BGRA)) &&
                              (A == Alpha::Aval || A == Alpha::Zero)));

// Forward forms with a wide block.
template <class Form> struct Forward { static constexpr bool kHas = false; };
template <> struct Forward<form::PairForm<form::FY1, form::FC1>> {
  static constexpr bool kHas = true;
  static constexpr wide::PairForm kForm = wide::PairForm::FY1FC1;
};
template <> struct Forward<form::PairHighMul> {
  static constexpr bool kHas = true;
  static constexpr wide::PairForm kForm = wide::PairForm::HighMul;
};
template <class Form, class Src, class Dst>
constexpr bool forwardHas = Forward<Form>::kHas && isPixels<Src> && isPairs<Dst>;

inline wide::Rows rows(const SrcPlanes& s, const DstPlanes& d) {
  return wide::Rows{{s.p[0], s.p[1], s.p[2]}, {d.p[0], d.p[1], d.p[2]}};
}
#endif
// True when this call may run the 256-bit blocks.
inline bool allowed() {
#if LUM_SIMD_SSE
  return useVector() && wide::enabled();
#else
  return false;
#endif
}
}  // namespace widen

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
  // N = 16 or 8 pixels at x by the block form's vector lanes.
  template <int N>
  static void vectorAt(const SrcPlanes& s, const DstPlanes& d, int x) {
    layout::Vx a, b;
    Src::load(s, x, a);
    if constexpr (N == 16) Src::load(s, x + 8, b);
    else b = a;  // the upper lanes are computed and dropped
    layout::Px p;
    const int* prev = nullptr;
    if constexpr (BlockForm::kUsesPrev) {
      if (x > 0) {
        Src::load(s, x - 1, p);
        prev = p.v;
      }
    }
    form::Pairs<lanes::Sse> o;
    BlockForm::template vblock<lanes::Sse>(a.v, b.v, prev, o);
    if constexpr (N == 16) Dst::store16(d, x, o);
    else Dst::store8(d, x, o);
  }
#endif

  static void row(const SrcPlanes& s, const DstPlanes& d, int width, const RowCtx& = {},
                  bool wideOn = widen::allowed()) {
    const int blockEnd = width & ~(Cover - 1), pairEnd = width & ~1;
    int x = 0;
    (void)wideOn;
#if LUM_SIMD_SSE
    if constexpr (widen::forwardHas<BlockForm, Src, Dst>) {
      if (wideOn && (x = blockEnd & ~15) > 0)
        wide::pairs(widen::Forward<BlockForm>::kForm, wide::Pix(widen::pix<Src>), wide::Pix(widen::pix<Dst>),
                    widen::rows(s, d), x);
    }
    if (x < blockEnd && useVector()) {
      for (; x + 16 <= blockEnd; x += 16) vectorAt<16>(s, d, x);
      if (x + 8 <= blockEnd) {
        vectorAt<8>(s, d, x);
        x += 8;
      }
    }
#endif
    for (; x < blockEnd; x += 2) pairAt<BlockForm>(s, d, x);
    for (; x < pairEnd; x += 2) pairAt<TailForm>(s, d, x);
  }

  static void image(LumSize roi, const SrcPlanes& s, const DstPlanes& d, const RowCtx& c = {}) {
    const bool wideOn = widen::allowed();
    for (int y = 0; y < roi.height; ++y) row(s.row(y), d.row(y), roi.width, c, wideOn);
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

  // What the 256-bit blocks leave of a row: the rest of the whole pairs by the
  // 128-bit blocks and the tail, then an odd last pixel. Kept out of line so
  // that the row loop around the wide blocks stays small.
  [[gnu::noinline]] static void finish(const SrcPlanes& s, const DstPlanes& d, int width, int done,
                                       const RowCtx& c) {
    if (const int rest = (width & ~1) - done; rest > 0)
      WholePairs::row(advancePixels<Src>(s, done), advancePixels<Dst>(d, done), rest, c);
    if (width & 1) Odd::template last<TailForm, Src, Dst, A>(s, d, width, c);
  }

  static void row(const SrcPlanes& s, const DstPlanes& d, int width, const RowCtx& c = {},
                  bool wideOn = widen::allowed()) {
    // The 256-bit blocks take whole groups of 16 of the block part (a multiple of
    // Cover), so the rest splits into block and tail where the whole row would.
    int done = 0;
    (void)wideOn;
#if LUM_SIMD_SSE
    if constexpr (widen::inverseHas<BlockForm, Src, Dst, A>) {
      if (wideOn && (done = (width & ~1) & ~(Cover - 1) & ~15) > 0)
        wide::replicatedIY(widen::Inverse<BlockForm>::kParams, wide::Pix(widen::pix<Src>),
                           wide::Pix(widen::pix<Dst>), widen::rows(s, d), done, A == Alpha::Aval ? c.aval : 0);
    }
#endif
    if (done < width) finish(s, d, width, done, c);
  }
  static void image(LumSize roi, const SrcPlanes& s, const DstPlanes& d, const RowCtx& c = {}) {
    const bool wideOn = widen::allowed();
    for (int y = 0; y < roi.height; ++y) row(s.row(y), d.row(y), roi.width, c, wideOn);
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
  const bool wideOn = widen::allowed();
  Kernel::row(s, d, n1, RowCtx{}, wideOn);
  if (rest) Kernel::row(advancePixels<Src>(s, n1), advancePixels<Dst>(d, n1), rest, RowCtx{}, wideOn);
  return true;
}

}  // namespace lum
