// The generic row kernel: a block loop over the first pixels of a row by one form,
// then a tail over the rest by another. Which pixel falls into which is part of
// each function's behaviour, so the split is computed exactly as
// width & ~(Cover - 1); the vector code only speeds up the block part and its
// scalar twin (the block form's pixel()) computes the same lanes.
#pragma once

#include "frame/lanes.h"
#include "frame/layouts.h"

namespace lum {

// What a destination's alpha (fourth channel) becomes.
enum class Alpha {
  Keep,    // not written
  Zero,    // written as 0
  Aval,    // written as the caller's aval
  Source,  // written as the source pixel's alpha
};

// Per-call constants handed to the row kernels.
struct RowCtx {
  int aval = 0;
};

// The sample type a form computes on: its Sample, or 8u when it names none.
template <class Form>
struct FormSample {
  using type = Lum8u;
};
template <class Form>
  requires requires { typename Form::Sample; }
struct FormSample<Form> {
  using type = typename Form::Sample;
};
template <class Form>
using SampleOf = typename FormSample<Form>::type;
// The sample type of a layout: its Sample, or 8u when it names none.
template <class L>
using LayoutSampleOf = typename FormSample<L>::type;

namespace detail {
template <Alpha A, class To, class From>
inline void setAlpha(layout::PxOf<To>& o, const layout::PxOf<From>& in, const RowCtx& c) {
  if constexpr (A == Alpha::Zero) o.v[3] = 0;
  if constexpr (A == Alpha::Aval) o.v[3] = c.aval;
  if constexpr (A == Alpha::Source) o.v[3] = in.v[3];
}
#if LUM_SIMD_SSE
template <Alpha A>
inline void setAlpha(layout::Vx& o, const layout::Vx& in, const RowCtx& c) {
  if constexpr (A == Alpha::Zero) o.v[3] = _mm_setzero_si128();
  if constexpr (A == Alpha::Aval) o.v[3] = _mm_set1_epi16(int16_t(c.aval));
  if constexpr (A == Alpha::Source) o.v[3] = in.v[3];
}
#endif
}  // namespace detail

// Form that marks "no block loop": every pixel goes to the tail.
struct NoBlock {};

// True when a form has a vector block() (a tail form may have one that computes
// its exact arithmetic on lanes; it then runs vectorised with the same results).
template <class Form>
constexpr bool hasBlock() {
#if LUM_SIMD_SSE
  return requires(const __m128i* i, __m128i* o) { Form::block(i, o); };
#else
  return false;
#endif
}

// A form whose blocks also run sixteen lanes at a time (AVX2). Its vector code is
// the lane-set template vblock<O>, whose last lanes the stores clamp (every
// vector store narrows with unsigned saturation, which is clamp8). The wide
// row driver is instantiated, one per form and layouts, in an *_avx2.cpp file
// (kernel_avx2.h); marking a form Wide is what asks for it.
template <class Form>
struct Wide : Form {
  static constexpr bool kWide = true;
};
template <class Form>
constexpr bool isWide() {
  return requires { Form::kWide; };
}

namespace wide16 {
// The rest of one row from pixel x on, run by the eight-lane blocks and the
// scalar twins: what the wide driver hands back to the baseline code.
using RowRest = void (*)(const SrcPlanes& s, const DstPlanes& d, int x, int width, const RowCtx& c);
// Row driver of the wide blocks: in each row, Form over the first
// leadEnd & ~15 pixels in groups of sixteen, then rest() from there when the
// row goes on. Defined in kernel_avx2.h, instantiated in *_avx2.cpp files.
template <class Form, class Src, class Dst, Alpha A>
void image(LumSize roi, const SrcPlanes& s, const DstPlanes& d, int leadEnd, const RowCtx& c, RowRest rest);
}  // namespace wide16

// True when a form of a sample type other than 8u has a lane-set block
// vblock<O> over that type's lanes (layouts.h: detail::LanesOf).
template <class Form>
constexpr bool hasLaneBlock() {
  if constexpr (std::is_same_v<SampleOf<Form>, Lum8u>) {
    return false;
  } else {
    using L = typename layout::detail::LanesOf<lanes::Narrow, SampleOf<Form>>::type;
    return requires(const L* i, L* o) { Form::template vblock<lanes::Narrow>(i, o); };
  }
}

// Runs a lane-set form over the groups of whole vectors in [x, x1) on lane set
// O; returns where the groups end.
template <class O, class Form, class Src, class Dst, Alpha A>
inline int runLanes(const SrcPlanes& s, const DstPlanes& d, int x, int x1, const RowCtx& c) {
  using T = SampleOf<Form>;
  using L = typename layout::detail::LanesOf<O, T>::type;
  constexpr int n = layout::detail::kLanesOf<O, T>;
  for (; x + n <= x1; x += n) {
    L in[4], out[4];
    Src::template loadLanes<O>(s, x, in);
    Form::template vblock<O>(in, out);
    if constexpr (A == Alpha::Zero) out[3] = layout::detail::splat<O, T>(0);
    if constexpr (A == Alpha::Aval) out[3] = layout::detail::splat<O, T>(layout::WorkOf<T>(c.aval));
    if constexpr (A == Alpha::Source) out[3] = in[3];
    Dst::template storeLanes<O, A != Alpha::Keep>(d, x, out);
  }
  return x;
}

// Runs one form over pixels [x0, x1) of a row by the scalar pixel() rule. The
// pixel holds the working values of the source's and the destination's sample types.
template <class Form, class Src, class Dst, Alpha A>
inline void runPixels(const SrcPlanes& s, const DstPlanes& d, int x0, int x1, const RowCtx& c) {
  for (int x = x0; x < x1; ++x) {
    layout::PxOf<LayoutSampleOf<Src>> in;
    layout::PxOf<LayoutSampleOf<Dst>> out;
    Src::load(s, x, in);
    Form::pixel(in.v, out.v);
    detail::setAlpha<A>(out, in, c);
    Dst::template store<A != Alpha::Keep>(d, x, out);
  }
}

// Runs a block form over pixels [x0, x1): groups of 8 by the vector block where
// the build has one, the rest by the form's scalar twin. A Wide form runs its
// lane-set block, whose clamp the stores make.
template <class Form, class Src, class Dst, Alpha A>
inline void runBlocks(const SrcPlanes& src, const DstPlanes& dst, int x0, int x1, const RowCtx& c) {
  int x = x0;
#if LUM_SIMD_SSE
  if constexpr (hasBlock<Form>()) {
    if (useVector()) {
      // Local copies: the stores may alias anything, and the row pointers
      // should stay in registers through the loop.
      const SrcPlanes s = src;
      const DstPlanes d = dst;
      for (; x + 8 <= x1; x += 8) {
        layout::Vx in, out;
        Src::load(s, x, in);
        if constexpr (isWide<Form>()) Form::template vblock<lanes::Sse>(in.v, out.v);
        else if constexpr (hasBlock<Form>()) Form::block(in.v, out.v);
        detail::setAlpha<A>(out, in, c);
        Dst::template store<A != Alpha::Keep>(d, x, out);
      }
    }
  }
#endif
  if constexpr (hasLaneBlock<Form>()) {
    // Forms of other sample types: whole vectors on the 128-bit set of the
    // build where vector code is on, then their scalar rule.
    if (useVector()) x = runLanes<lanes::Narrow, Form, Src, Dst, A>(src, dst, x, x1, c);
  }
  runPixels<Form, Src, Dst, A>(src, dst, x, x1, c);
}

// Row kernel: Cover is the block granularity (the block form covers
// width & ~(Cover - 1) pixels; 1 puts every pixel through the block form), the
// tail form takes the rest. BlockAlpha and TailAlpha say what each writes as alpha.
template <int Cover, class BlockForm, class TailForm, class Src, class Dst,
          Alpha BlockAlpha = Alpha::Keep, Alpha TailAlpha = BlockAlpha>
struct BlockThenTail {
  static constexpr bool kNoBlock = std::is_same_v<BlockForm, NoBlock>;
  // The form that starts each row, and how far it goes.
  using Lead = std::conditional_t<kNoBlock, TailForm, BlockForm>;
  static constexpr Alpha kLeadAlpha = kNoBlock ? TailAlpha : BlockAlpha;
  static int leadEnd(int width) { return kNoBlock ? width : width & ~(Cover - 1); }

  // The row from pixel x on; x is 0 or lies inside the lead form's part.
  static void rowFrom(const SrcPlanes& s, const DstPlanes& d, int x, int width, const RowCtx& c) {
    int blockEnd = 0;
    if constexpr (!kNoBlock) {
      blockEnd = width & ~(Cover - 1);
      runBlocks<BlockForm, Src, Dst, BlockAlpha>(s, d, x, blockEnd, c);
    }
    if constexpr (!std::is_same_v<TailForm, NoBlock>)
      runBlocks<TailForm, Src, Dst, TailAlpha>(s, d, blockEnd > x ? blockEnd : x, width, c);
  }
  static void row(const SrcPlanes& s, const DstPlanes& d, int width, const RowCtx& c) { rowFrom(s, d, 0, width, c); }
  // Whole region, row by row. A wide lead form runs sixteen lanes at a time
  // where the processor allows it, which is asked once here.
  static void image(LumSize roi, const SrcPlanes& s, const DstPlanes& d, const RowCtx& c = {}) {
#if LUM_SIMD_SSE
    if constexpr (isWide<Lead>()) {
      if (useWide()) {
        wide16::image<Lead, Src, Dst, kLeadAlpha>(roi, s, d, leadEnd(roi.width), c, &rowFrom);
        return;
      }
    }
#endif
    for (int y = 0; y < roi.height; ++y) row(s.row(y), d.row(y), roi.width, c);
  }
};

// Every pixel by the tail form alone.
template <class TailForm, class Src, class Dst, Alpha A = Alpha::Keep>
using TailOnly = BlockThenTail<1, NoBlock, TailForm, Src, Dst, A, A>;

namespace detail {
// The form marked for wide blocks where it has a vector block at all.
template <class F>
struct WideOf {
  using type = std::conditional_t<hasBlock<F>(), Wide<F>, F>;
};
template <>
struct WideOf<NoBlock> {
  using type = NoBlock;
};
}  // namespace detail

// BlockThenTail whose lead form (the block form, or the tail form where there
// is none) also runs sixteen lanes at a time where the processor has AVX2; the
// split between block and tail, and every sample, stay those of BlockThenTail.
template <int Cover, class BlockForm, class TailForm, class Src, class Dst, Alpha BlockAlpha = Alpha::Keep,
          Alpha TailAlpha = BlockAlpha>
using WideBlockThenTail =
    BlockThenTail<Cover, typename detail::WideOf<BlockForm>::type,
                  std::conditional_t<std::is_same_v<BlockForm, NoBlock>, typename detail::WideOf<TailForm>::type,
                                     TailForm>,
                  Src, Dst, BlockAlpha, TailAlpha>;
template <class TailForm, class Src, class Dst, Alpha A = Alpha::Keep>
using WideTailOnly = WideBlockThenTail<1, NoBlock, TailForm, Src, Dst, A, A>;

}  // namespace lum
