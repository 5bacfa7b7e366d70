// Vertical filters over byte rows. A vertical form combines the samples that
// lie at one position of N source rows (top to bottom) into one output sample:
// pixel(const int* v) is its lane-exact scalar rule and, where a form runs in
// block loops, block<O>(const V* v) computes the same byte lanes at once over
// the lane set O (16 per 128-bit register).
//
// Readers say where logical sample x of a row lies in memory: plain bytes, the
// even or odd bytes of a packed 4:2:2 row, or two half-width planes taken in
// turn. Sinks say where results go: one plane, two planes (even samples to the
// first, odd to the second), or a packed 4:2:2 row made of a luma and a chroma
// stream. runRow() sends samples [0, n & ~(Cover - 1)) through the block form
// (vector steps where the build has them, the form's scalar twin otherwise) and
// the rest through the tail form: which sample falls where is part of each
// function's result, so the split never depends on the vector unit.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <type_traits>

#include "frame/kernel.h"
#include "frame/lanes.h"
#include "frame/rows.h"
#include "frame/simd.h"
#include "frame/window.h"

namespace lum::vrow {

#if LUM_SIMD_SSE
using V = __m128i;
// 16 bytes at p, any alignment.
inline V load16(const uint8_t* p) { return _mm_loadu_si128(reinterpret_cast<const V*>(p)); }
// 8 bytes at p into the low half.
inline V load8(const uint8_t* p) { return _mm_loadl_epi64(reinterpret_cast<const V*>(p)); }
inline void store16(uint8_t* p, V v) { _mm_storeu_si128(reinterpret_cast<V*>(p), v); }
// Even bytes of the 32 bytes lo:hi.
inline V evenBytes(V lo, V hi) {
  const V m = _mm_set1_epi16(0x00FF);
  return _mm_packus_epi16(_mm_and_si128(lo, m), _mm_and_si128(hi, m));
}
// Odd bytes of the 32 bytes lo:hi.
inline V oddBytes(V lo, V hi) { return _mm_packus_epi16(_mm_srli_epi16(lo, 8), _mm_srli_epi16(hi, 8)); }
#endif

// ---------------------------------------------------------------------------
// Readers: logical sample x of one source row
// ---------------------------------------------------------------------------

// Sample x is byte x.
struct Bytes {
  using Ptr = const uint8_t*;
  static int at(Ptr p, int x) { return p[x]; }
#if LUM_SIMD_SSE
  // Samples x..x+15.
  static V load(Ptr p, int x) { return load16(p + x); }
#endif
};

// Sample x is byte 2x: the chroma bytes (Cb, Cr in turn) of a CbYCr422 row.
struct EvenBytes {
  using Ptr = const uint8_t*;
  static int at(Ptr p, int x) { return p[2 * x]; }
#if LUM_SIMD_SSE
  // Reads bytes 2x..2x+31: the last is the luma byte of sample x+15's own pixel.
  static V load(Ptr p, int x) { return evenBytes(load16(p + 2 * x), load16(p + 2 * x + 16)); }
#endif
};

// Sample x is byte 2x + 1: the luma bytes of a CbYCr422 row.
struct OddBytes {
  using Ptr = const uint8_t*;
  static int at(Ptr p, int x) { return p[2 * x + 1]; }
#if LUM_SIMD_SSE
  static V load(Ptr p, int x) { return oddBytes(load16(p + 2 * x), load16(p + 2 * x + 16)); }
#endif
};

// Two half-width rows taken in turn: sample x is a[x/2] for even x, b[x/2] for
// odd x (Cb and Cr planes read as one interleaved chroma row).
struct Alternate {
  struct Ptr {
    const uint8_t* a;
    const uint8_t* b;
  };
  // The row is chosen before it is indexed: g++ 12 with -fsanitize=shift drops the
  // index of `(c ? a : b)[x >> 1]` on one arm of the choice.
  static int at(Ptr p, int x) {
    const uint8_t* row = x & 1 ? p.b : p.a;
    return row[x >> 1];
  }
#if LUM_SIMD_SSE
  // x even: reads a[x/2 .. x/2+7] and b[x/2 .. x/2+7].
  static V load(Ptr p, int x) { return _mm_unpacklo_epi8(load8(p.a + x / 2), load8(p.b + x / 2)); }
#endif
};

// N source rows read through one reader; applies a form at a position.
template <class Reader, int N>
struct Rows {
  typename Reader::Ptr r[N];

  template <class Form>
  int pixel(int x) const {
    int v[N];
    for (int i = 0; i < N; ++i) v[i] = Reader::at(r[i], x);
    return Form::pixel(v);
  }
#if LUM_SIMD_SSE
  template <class Form>
  V block(int x) const {
    V v[N];
    for (int i = 0; i < N; ++i) v[i] = Reader::load(r[i], x);
    return Form::template block<lanes::Sse>(v);
  }
#endif
};

// The rows of a window (frame/window.h) read through a byte reader.
template <class Reader = Bytes, std::size_t N>
inline Rows<Reader, int(N)> rowsOf(const std::array<const uint8_t*, N>& rows) {
  Rows<Reader, int(N)> r;
  for (std::size_t i = 0; i < N; ++i) r.r[i] = rows[i];
  return r;
}

// ---------------------------------------------------------------------------
// Forms shared by the families
// ---------------------------------------------------------------------------

// (a + b) >> 1 of unsigned byte lanes: the rounded-up average, less one where
// the sum is odd.
template <class O, class W = typename O::V>
inline W avgDown8(W a, W b) {
  return O::sub8(O::avg8(a, b), O::and_(O::xor_(a, b), O::splat8(1)));
}

// The first row's sample, unchanged.
struct Copy {
  static int pixel(const int* v) { return v[0]; }
#if LUM_SIMD_SSE
  template <class O, class W = typename O::V>
  static W block(const W* v) { return v[0]; }
#endif
};

// A luma form and a chroma form that run side by side in a packed 4:2:2 row.
template <class L, class C>
struct Pair {
  using Luma = L;
  using Chroma = C;
};

// ---------------------------------------------------------------------------
// Sinks and the row runner
// ---------------------------------------------------------------------------

// Tag that hands a form to a sink.
template <class F>
struct Use {};

// One output plane: out[x] = form(in at x).
template <class In>
struct ToPlane {
  In in;
  uint8_t* out;
  static constexpr int kStep = 16;
  template <class F>
  void one(int x, Use<F>) const {
    out[x] = uint8_t(in.template pixel<F>(x));
  }
#if LUM_SIMD_SSE
  // A vector step is calc (loads and arithmetic) then put (stores), so that a
  // sink run beside another (Both) loads before either stores.
  template <class F>
  V calc(int x) const {
    return in.template block<F>(x);
  }
  void put(int x, V v) const { store16(out + x, v); }
  template <class F>
  void block(int x, Use<F>) const {
    put(x, calc<F>(x));
  }
#endif
};
template <class In>
ToPlane(In, uint8_t*) -> ToPlane<In>;

// Two output planes from one interleaved stream: a[i] = form(in at 2i),
// b[i] = form(in at 2i + 1). Positions count samples of one output plane.
template <class In>
struct ToSplit {
  In in;
  uint8_t* a;
  uint8_t* b;
  static constexpr int kStep = 16;
  template <class F>
  void one(int i, Use<F>) const {
    a[i] = uint8_t(in.template pixel<F>(2 * i));
    b[i] = uint8_t(in.template pixel<F>(2 * i + 1));
  }
#if LUM_SIMD_SSE
  template <class F>
  void block(int i, Use<F>) const {
    const V lo = in.template block<F>(2 * i), hi = in.template block<F>(2 * i + 16);
    store16(a + i, evenBytes(lo, hi));
    store16(b + i, oddBytes(lo, hi));
  }
#endif
};
template <class In>
ToSplit(In, uint8_t*, uint8_t*) -> ToSplit<In>;

// A packed 4:2:2 row: byte 2x + LumaByte is luma sample x, the other byte of
// the two is chroma sample x (Cb for even x, Cr for odd x). The form is a
// Pair of a luma and a chroma form.
template <int LumaByte, class LIn, class CIn>
struct ToPacked {
  LIn l;
  CIn c;
  uint8_t* out;
  static constexpr int kStep = 16;
  template <class P>
  void one(int x, Use<P>) const {
    out[2 * x + LumaByte] = uint8_t(l.template pixel<typename P::Luma>(x));
    out[2 * x + 1 - LumaByte] = uint8_t(c.template pixel<typename P::Chroma>(x));
  }
#if LUM_SIMD_SSE
  struct Out {
    V y, ch;
  };
  template <class P>
  Out calc(int x) const {
    return {l.template block<typename P::Luma>(x), c.template block<typename P::Chroma>(x)};
  }
  void put(int x, Out o) const {
    const V first = LumaByte == 0 ? o.y : o.ch, second = LumaByte == 0 ? o.ch : o.y;
    store16(out + 2 * x, _mm_unpacklo_epi8(first, second));
    store16(out + 2 * x + 16, _mm_unpackhi_epi8(first, second));
  }
  template <class P>
  void block(int x, Use<P>) const {
    put(x, calc<P>(x));
  }
#endif
};
template <int LumaByte, class LIn, class CIn>
inline ToPacked<LumaByte, LIn, CIn> toPacked(const LIn& l, const CIn& c, uint8_t* out) {
  return {l, c, out};
}

// Two sinks of the same kind run in one loop (two output rows that share source
// rows): each vector step loads and computes both before it stores either, so
// the shared rows are read once.
template <class S>
struct Both {
  S first, second;
  static constexpr int kStep = S::kStep;
  template <class F>
  void one(int x, Use<F> f) const {
    first.one(x, f);
    second.one(x, f);
  }
#if LUM_SIMD_SSE
  template <class F>
  void block(int x, Use<F>) const {
    const auto a = first.template calc<F>(x);
    const auto b = second.template calc<F>(x);
    first.put(x, a);
    second.put(x, b);
  }
#endif
};
template <class S>
Both(S, S) -> Both<S>;

// Runs n positions of a sink: [0, n & ~(Cover - 1)) by the block form, in vector
// steps of the sink's width when the vector unit is on and by the block form's
// scalar twin otherwise, then the rest by the tail form. BlockForm = NoBlock puts
// every position through the tail form.
template <int Cover, class BlockForm, class TailForm, class Sink>
inline void runRow(int n, const Sink& sink) {
  int x = 0;
  if constexpr (!std::is_same_v<BlockForm, NoBlock>) {
    const int end = n & ~(Cover - 1);
#if LUM_SIMD_SSE
    if (useVector())
      for (; x + Sink::kStep <= end; x += Sink::kStep) sink.block(x, Use<BlockForm>{});
#endif
    for (; x < end; ++x) sink.one(x, Use<BlockForm>{});
  }
  for (; x < n; ++x) sink.one(x, Use<TailForm>{});
}

// Every position by one form that has a vector block (the two paths agree).
template <class Form, class Sink>
inline void runExact(int n, const Sink& sink) {
  runRow<1, Form, Form>(n, sink);
}

// Every position by a scalar-only form.
template <class Form, class Sink>
inline void runScalar(int n, const Sink& sink) {
  runRow<1, NoBlock, Form>(n, sink);
}

}  // namespace lum::vrow
