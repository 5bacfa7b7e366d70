// The frame of the colour-model forms (XYZ, LUV, Lab, ...): the lanes a sample
// type computes in, a pixel adaptor between the typed layouts and those lanes,
// the shared float pieces (matrix rows, the cube-root series, the biased 16-bit
// saturation) and the row driver: a block form over the first width & ~(Cover - 1)
// pixels of each row, whole vectors at a time, then a tail form pixel by pixel.
//
// A block form is `template <class O> static void vblock(const In in[3], Out out[3])`
// over lane set O, In and Out the lanes of the source and destination sample types
// (Lanes<O, T>: 32-bit integer V lanes for 8u, 16u, 16s; F lanes for 32f); it
// returns lanes already in the destination's range. A tail form is
// `static void pixel(const WorkOf<S> in[3], WorkOf<D> out[3])`; Lanewise<Form>
// makes the scalar twin of a block form that the tail shares. Channels are in the
// form's order (R, G, B or X, Y, Z, L, U, V); the layout maps them to memory.
// Alpha of four-channel layouts is never read into a lane and never written.
#pragma once

#include <cstddef>
#include <cstdint>
#include <type_traits>

#include "frame/check.h"
#include "frame/lanes.h"
#include "frame/layouts.h"
#include "frame/rows.h"
#include "models/model_layouts.h"
#include "models/pow_luv.h"

namespace lum::models {

using layout::WorkOf;

// Lanes of sample type T on lane set O: F for 32f, 32-bit integer V otherwise.
template <class O, class T>
using Lanes = std::conditional_t<std::is_same_v<T, Lum32f>, typename O::F, typename O::V>;
// Pixels per vector on lane set O.
template <class O>
constexpr int kPixelsOf = int(sizeof(typename O::F) / sizeof(float));

// Where a layout keeps form channel k of a pixel: samples per pixel, memory index
// of each channel, sample type. Interleaved layouts only.
template <int N, int I0, int I1, int I2, class T>
struct PixelMapOf {
  using Sample = T;
  static constexpr int kN = N;
  static constexpr int kAt[3] = {I0 == 0 ? 0 : (I1 == 0 ? 1 : 2), I0 == 1 ? 0 : (I1 == 1 ? 1 : 2),
                                 I0 == 2 ? 0 : (I1 == 2 ? 1 : 2)};
};
template <class L>
struct PixelMap;
template <int I0, int I1, int I2, class T>
struct PixelMap<layout::C3<I0, I1, I2, T>> : PixelMapOf<3, I0, I1, I2, T> {};
template <int I0, int I1, int I2, class T>
struct PixelMap<layout::C4<I0, I1, I2, T>> : PixelMapOf<4, I0, I1, I2, T> {};

// Moves kPixelsOf<O> pixels of layout L between memory and one vector of lanes
// per channel (the sample values as they are: no scaling, no clamp).
template <class O, class L>
struct PixelLanes {
  using M = PixelMap<L>;
  using T = typename M::Sample;
  using Ln = Lanes<O, T>;
  using Elem = std::conditional_t<std::is_same_v<T, Lum32f>, float, int32_t>;
  static constexpr int kP = kPixelsOf<O>;

  // True where an SSE adaptor moves the samples (C3 of 8u or 32f).
  static constexpr bool kShuffled =
#if LUM_SIMD_SSE
      std::is_same_v<O, lanes::Sse> && M::kN == 3 && (std::is_same_v<T, Lum8u> || std::is_same_v<T, Lum32f>);
#else
      false;
#endif

  static void load(const uint8_t* row, int x, Ln out[3]) {
    const T* p = layout::samples<T>(row) + std::ptrdiff_t(x) * M::kN;
#if LUM_SIMD_SSE
    if constexpr (kShuffled) {
      Ln m[3];
      if constexpr (std::is_same_v<T, Lum8u>) sse::load8uC3(p, m);
      else sse::load32fC3(p, m);
      for (int k = 0; k < 3; ++k) out[k] = m[M::kAt[k]];
      return;
    }
#endif
    for (int k = 0; k < 3; ++k) {
      alignas(32) Elem t[kP];
      for (int i = 0; i < kP; ++i) t[i] = Elem(loadAt(p + std::ptrdiff_t(i) * M::kN + M::kAt[k]));
      if constexpr (std::is_same_v<T, Lum32f>) out[k] = O::loadf(t);
      else out[k] = O::load(t);
    }
  }
  static void store(uint8_t* row, int x, const Ln in[3]) {
    T* p = layout::samples<T>(row) + std::ptrdiff_t(x) * M::kN;
#if LUM_SIMD_SSE
    if constexpr (kShuffled) {
      Ln m[3];
      for (int k = 0; k < 3; ++k) m[M::kAt[k]] = in[k];
      if constexpr (std::is_same_v<T, Lum8u>) sse::store8uC3(p, m);
      else sse::store32fC3(p, m);
      return;
    }
#endif
    for (int k = 0; k < 3; ++k) {
      alignas(32) Elem t[kP];
      if constexpr (std::is_same_v<T, Lum32f>) O::storef(t, in[k]);
      else O::store(t, in[k]);
      for (int i = 0; i < kP; ++i) storeAt(p + std::ptrdiff_t(i) * M::kN + M::kAt[k], T(t[i]));
    }
  }
};

// One pixel of layout L as three working values (channels in the form's order).
template <class L>
struct PixelScalar {
  using M = PixelMap<L>;
  using T = typename M::Sample;
  static void load(const uint8_t* row, int x, WorkOf<T> out[3]) {
    const T* p = layout::samples<T>(row) + std::ptrdiff_t(x) * M::kN;
    for (int k = 0; k < 3; ++k) out[k] = WorkOf<T>(loadAt(p + M::kAt[k]));
  }
  // Integer values are stored by their low bits (a form clamps where its rule does).
  static void store(uint8_t* row, int x, const WorkOf<T> in[3]) {
    T* p = layout::samples<T>(row) + std::ptrdiff_t(x) * M::kN;
    for (int k = 0; k < 3; ++k) storeAt(p + M::kAt[k], T(in[k]));
  }
};

// Marks a row kernel without a block part.
struct NoBlockForm {};

// Scalar twin of a block form: the pixel splatted over the lanes of lanes::Emu,
// run through vblock<Emu>, lane 0 taken.
template <class Form, class S, class D>
struct Lanewise {
  static void pixel(const WorkOf<S> in[3], WorkOf<D> out[3]) {
    using O = lanes::Emu;
    Lanes<O, S> a[3];
    Lanes<O, D> b[3];
    for (int k = 0; k < 3; ++k) {
      if constexpr (std::is_same_v<S, Lum32f>) a[k] = O::setf(in[k]);
      else a[k] = O::set32(in[k]);
    }
    Form::template vblock<O>(a, b);
    for (int k = 0; k < 3; ++k) {
      if constexpr (std::is_same_v<D, Lum32f>) out[k] = b[k].l[0];
      else out[k] = b[k].w(0);
    }
  }
};

// Runs a block form over pixels [x, x1) of one row, whole vectors of O; returns where it stopped.
template <class O, class Form, class Src, class Dst>
inline int runVectors(const uint8_t* s, uint8_t* d, int x, int x1) {
  using SL = PixelLanes<O, Src>;
  using DL = PixelLanes<O, Dst>;
  for (; x + kPixelsOf<O> <= x1; x += kPixelsOf<O>) {
    typename SL::Ln in[3];
    typename DL::Ln out[3];
    SL::load(s, x, in);
    Form::template vblock<O>(in, out);
    DL::store(d, x, out);
  }
  return x;
}

// Runs a tail form over pixels [x0, x1) of one row.
template <class Form, class Src, class Dst>
inline void runTail(const uint8_t* s, uint8_t* d, int x0, int x1) {
  using SP = PixelScalar<Src>;
  using DP = PixelScalar<Dst>;
  for (int x = x0; x < x1; ++x) {
    WorkOf<typename SP::T> in[3];
    WorkOf<typename DP::T> out[3];
    SP::load(s, x, in);
    Form::pixel(in, out);
    DP::store(d, x, out);
  }
}

namespace wide {
// The block form over the first n & ~7 pixels of a row, eight a step on AVX2;
// returns where it stopped. Defined in model_frame_avx2.h and instantiated in
// models_avx2.cpp, for three-channel layouts of 8u and 32f.
template <class Form, class Src, class Dst>
int blocks(const uint8_t* s, uint8_t* d, int n);
}  // namespace wide

// Row driver: in each row the block form over width & ~(Cover - 1) pixels (on
// the 128-bit set of this call: SSE where vector code is on, else its exact
// emulation), then the tail form over the rest. Block = NoBlockForm puts every
// pixel in the tail. Wide: the block part runs eight pixels a step where the
// processor has AVX2 (wide::blocks), the same lanes as the 128-bit blocks.
template <int Cover, class Block, class Tail, class Src, class Dst, bool Wide = false>
struct ModelRows {
  static void image(LumSize roi, const SrcPlanes& s, const DstPlanes& d) {
    constexpr bool kBlock = !std::is_same_v<Block, NoBlockForm>;
    const int blockEnd = kBlock ? (roi.width & ~(Cover - 1)) : 0;
#if LUM_SIMD_SSE
    if constexpr (kBlock && Wide) {
      if (useWide()) {
        for (int y = 0; y < roi.height; ++y) {
          const uint8_t* sr = rowAt(s.p[0], y, s.step[0]);
          uint8_t* dr = rowAt(d.p[0], y, d.step[0]);
          const int x = wide::blocks<Block, Src, Dst>(sr, dr, blockEnd);
          runVectors<lanes::Sse, Block, Src, Dst>(sr, dr, x, blockEnd);
          runTail<Tail, Src, Dst>(sr, dr, blockEnd, roi.width);
        }
        return;
      }
    }
#endif
    lanes::with128([&](auto o) {
      using O = decltype(o);
      for (int y = 0; y < roi.height; ++y) {
        const uint8_t* sr = rowAt(s.p[0], y, s.step[0]);
        uint8_t* dr = rowAt(d.p[0], y, d.step[0]);
        if constexpr (kBlock) runVectors<O, Block, Src, Dst>(sr, dr, 0, blockEnd);
        runTail<Tail, Src, Dst>(sr, dr, blockEnd, roi.width);
      }
    });
  }
};

// Byte step of a form that takes its step in samples of `bytes` bytes: the low
// bits dropped by an arithmetic shift, rounding toward minus infinity.
constexpr int sampleStep(int step, int bytes) { return (step >> (bytes == 2 ? 1 : bytes == 4 ? 2 : 0)) * bytes; }

// ---- float pieces, scalar and on lanes

// Output row k of a 3x3 matrix: (m0 a + m1 b) + m2 c.
inline float mat3Row(const float (&m)[3], float a, float b, float c) { return (a * m[0] + b * m[1]) + c * m[2]; }
template <class O, class F = typename O::F>
inline F mat3Row(const float (&m)[3], F a, F b, F c) {
  return O::addf(O::addf(O::mulf(a, O::setf(m[0])), O::mulf(b, O::setf(m[1]))), O::mulf(c, O::setf(m[2])));
}

// The truncated binomial series S(t) = 1 + k0 t - k1 t^2 + k2 t^3 - ... of N
// powers, summed from the constant term upward, each power the previous times t.
template <int N>
inline float series(float t, const float* k) {
  float s = 1.0f, p = t;
  for (int i = 0; i < N; ++i) {
    s = (i & 1) ? s - p * k[i] : s + p * k[i];
    p = p * t;
  }
  return s;
}
template <int N, class O, class F = typename O::F>
inline F series(F t, const float* k) {
  F s = O::setf(1.0f), p = t;
  for (int i = 0; i < N; ++i) {
    s = (i & 1) ? O::subf(s, O::mulf(p, O::setf(k[i]))) : O::addf(s, O::mulf(p, O::setf(k[i])));
    p = O::mulf(p, t);
  }
  return s;
}

// Row `i` of a POW_LUV edition, the index held inside the table.
template <size_t N>
inline PowLuvRow powLuvRow(const std::array<PowLuvRow, N>& t, int i) {
  return t[size_t(i < 0 ? 0 : (i > int(N) - 1 ? int(N) - 1 : i))];
}
// The same lane by lane: c and r of the rows of the 32-bit index lanes.
template <class O, size_t N, class V = typename O::V, class F = typename O::F>
inline void powLuvRows(const std::array<PowLuvRow, N>& t, V idx, F& c, F& r) {
  idx = O::min32(O::max32(idx, O::set32(0)), O::set32(int(N) - 1));
  alignas(32) int32_t i[kPixelsOf<O>];
  alignas(32) float cs[kPixelsOf<O>], rs[kPixelsOf<O>];
  O::store(i, idx);
  for (int k = 0; k < kPixelsOf<O>; ++k) {
    cs[k] = t[size_t(i[k])].c;
    rs[k] = t[size_t(i[k])].r;
  }
  c = O::loadf(cs);
  r = O::loadf(rs);
}

// Cube root from a row (c, r) and y on the table's scale: c S(r (y - c^3)).
template <int N>
inline float cubeRoot(PowLuvRow row, float y, const float* k) {
  const float t = row.r * (y - row.c * row.c * row.c);
  return row.c * series<N>(t, k);
}
template <int N, class O, class F = typename O::F>
inline F cubeRoot(F c, F r, F y, const float* k) {
  const F t = O::mulf(r, O::subf(y, O::mulf(O::mulf(c, c), c)));
  return O::mulf(c, series<N, O>(t, k));
}

// The once-refined reciprocal of the library's estimate a of 1/d: (a + a) - (d a) a.
inline float rcpRefined(float d) {
  const float a = rcpEstimate(d);
  return (a + a) - (d * a) * a;
}
template <class O, class F = typename O::F>
inline F rcpRefined(F d) {
  const F a = O::rcpf(d);
  return O::subf(O::addf(a, a), O::mulf(O::mulf(d, a), a));
}

// The x86 conversions of a float to int32 (nearest under the rounding mode, or
// truncated; NaN and out-of-range give INT32_MIN).
inline int32_t cvtNearest(float x) { return lanes::emu::cvtNearest(x); }
inline int32_t cvtTrunc(float x) { return lanes::emu::cvtTrunc(x); }

// Saturation of 32-bit results to a 16-bit sample as a signed pack makes it:
// v - 32768 (wrapping) saturated to -32768..32767, then for 16u 32768 added back.
template <bool Unsigned>
inline int32_t sat16Biased(int32_t v) {
  const int32_t w = int32_t(uint32_t(v) - 32768u);
  const int32_t s = w < -32768 ? -32768 : (w > 32767 ? 32767 : w);
  return Unsigned ? s + 32768 : s;
}
template <bool Unsigned, class O, class V = typename O::V>
inline V sat16Biased(V v) {
  const V s = O::min32(O::max32(O::add32(v, O::set32(-32768)), O::set32(-32768)), O::set32(32767));
  return Unsigned ? O::add32(s, O::set32(32768)) : s;
}

}  // namespace lum::models

namespace lum::models {

// The public body of a packed model function: pointers null, then size below 1;
// then the rows. StepBytes is the sample size where the function takes its steps
// in samples (the low bits of a byte step dropped), 1 where it takes them in bytes.
template <class Rows, int StepBytes, class S, class D>
inline LumStatus runPacked(const S* pSrc, int srcStep, D* pDst, int dstStep, LumSize roi) {
  if (LumStatus st = check::nullThenSize(roi, pSrc, pDst)) return st;
  Rows::image(roi, packed(reinterpret_cast<const uint8_t*>(pSrc), sampleStep(srcStep, StepBytes)),
              packed(reinterpret_cast<uint8_t*>(pDst), sampleStep(dstStep, StepBytes)));
  return lumStatusOk;
}

}  // namespace lum::models

// Defines the public function `name` on samples of type T, its steps in samples of
// StepBytes bytes (1: in bytes), its rows run by the row kernel given last: one
// line per function, as the family's member table lists them.
#define LUM_MODEL_FN(name, T, StepBytes, ...)                                         \
  LumStatus name(const T* pSrc, int srcStep, T* pDst, int dstStep, LumSize roi) {     \
    return ::lum::models::runPacked<__VA_ARGS__, StepBytes>(pSrc, srcStep, pDst, dstStep, roi); \
  }
