// Colour twist: the affine map of three channels (3x4, the fourth column the
// offset) and the linear map of four channels (4x4), in single precision. Integer
// samples are widened to float, mapped, clamped and rounded to nearest. One rule
// per map, written once as a scalar pixel and once over float lanes; every pixel
// has the same formula, so blocks and tails agree sample for sample.
#pragma once

#include <cstddef>
#include <cstdint>
#include <type_traits>

#include "frame/lanes.h"
#include "frame/rows.h"

namespace lum::twist {

// Memory shapes of the images: three or four interleaved samples a pixel (AC4
// reads and writes the first three), or three planes.
enum class Shape { C3, AC4, C4, P3 };
template <Shape S>
constexpr int kStride = S == Shape::C3 ? 3 : (S == Shape::P3 ? 1 : 4);
template <Shape S>
constexpr int kChannels = S == Shape::C4 ? 4 : 3;

// Sample k of pixel x of a row: interleaved from p[0], or in plane p[k].
template <Shape S, class T>
inline T* sampleAt(T* const* p, int k, std::ptrdiff_t x) {
  if constexpr (S == Shape::P3) return p[k] + x;
  else return p[0] + x * kStride<S> + k;
}

// The map of one call: k[c][j] weighs input channel j in output channel c; in the
// affine map j = 3 is the offset and row 3 stays zero (no fourth output).
struct Matrix {
  float k[4][4] = {};
};
inline Matrix affine(const float t[3][4]) {
  Matrix m;
  for (int c = 0; c < 3; ++c)
    for (int j = 0; j < 4; ++j) m.k[c][j] = t[c][j];
  return m;
}
inline Matrix linear(const float t[4][4]) {
  Matrix m;
  for (int c = 0; c < 4; ++c)
    for (int j = 0; j < 4; ++j) m.k[c][j] = t[c][j];
  return m;
}

// Clamp limits of the integer sample types.
template <class T>
struct Limits;
template <>
struct Limits<Lum8u> {
  static constexpr float lo = 0.0f, hi = 255.0f;
};
template <>
struct Limits<Lum16u> {
  static constexpr float lo = 0.0f, hi = 65535.0f;
};
template <>
struct Limits<Lum16s> {
  static constexpr float lo = -32768.0f, hi = 32767.0f;
};
template <class T>
constexpr bool kFloat = std::is_same_v<T, Lum32f>;

// ---- one pixel

// Affine output c: (offset + s0 m0) + (s2 m2 + s1 m1); the order fixes the last bit.
inline float affineAt(const Matrix& m, int c, const float* s) {
  const float* k = m.k[c];
  return (k[3] + s[0] * k[0]) + (s[2] * k[2] + s[1] * k[1]);
}
// Linear output c: ((s0 m0 + s1 m1) + s2 m2) + s3 m3, no offset.
inline float linearAt(const Matrix& m, int c, const float* s) {
  const float* k = m.k[c];
  return ((s[0] * k[0] + s[1] * k[1]) + s[2] * k[2]) + s[3] * k[3];
}

// A result as a sample: floats as they are; integers clamped from above (a NaN
// takes the upper limit, as the packed minimum gives), then from below, then
// rounded by the current mode, which the caller of the kernels sets to nearest.
template <class T>
inline T toSample(float r) {
  if constexpr (kFloat<T>) {
    return r;
  } else {
    r = lanes::emu::minX(r, Limits<T>::hi);
    r = lanes::emu::maxX(r, Limits<T>::lo);
    return T(lanes::emu::cvtNearest(r));
  }
}

// Pixels [x0, x1) of a row, one at a time; each pixel is read whole before it is
// written, so source and destination may be the same row. O names the lane set
// whose run it ends (each set keeps its own copy).
template <class O, class T, Shape S, bool Linear>
void rowPixels(const T* const* s, T* const* d, std::ptrdiff_t x0, std::ptrdiff_t x1, const Matrix& m) {
  constexpr int n = kChannels<S>;
  for (std::ptrdiff_t x = x0; x < x1; ++x) {
    float in[4] = {};
    for (int k = 0; k < n; ++k) in[k] = float(loadAt(sampleAt<S>(s, k, x)));
    T out[4];
    for (int c = 0; c < n; ++c) out[c] = toSample<T>(Linear ? linearAt(m, c, in) : affineAt(m, c, in));
    for (int c = 0; c < n; ++c) storeAt(sampleAt<S>(d, c, x), out[c]);
  }
}

// ---- float lanes

// The matrix spread over lanes, one vector a coefficient.
template <class O>
struct Coefs {
  typename O::F k[4][4];
  Coefs(const Matrix& m, int outputs) {
    for (int c = 0; c < outputs; ++c)
      for (int j = 0; j < 4; ++j) k[c][j] = O::setf(m.k[c][j]);
  }
};

// affineAt and linearAt over lanes, the operations in the same order.
template <class O, class F = typename O::F>
inline F affineLanes(const Coefs<O>& K, int c, const F* s) {
  const F* k = K.k[c];
  return O::addf(O::addf(k[3], O::mulf(s[0], k[0])), O::addf(O::mulf(s[2], k[2]), O::mulf(s[1], k[1])));
}
template <class O, class F = typename O::F>
inline F linearLanes(const Coefs<O>& K, int c, const F* s) {
  const F* k = K.k[c];
  return O::addf(O::addf(O::addf(O::mulf(s[0], k[0]), O::mulf(s[1], k[1])), O::mulf(s[2], k[2])), O::mulf(s[3], k[3]));
}

// Lanes of the results as stored: float lanes for 32f, else 32-bit integer lanes.
template <class O, class T, bool IsFloat = kFloat<T>>
struct OutLanesOf {
  using type = typename O::V;
};
template <class O, class T>
struct OutLanesOf<O, T, true> {
  using type = typename O::F;
};
template <class O, class T>
using OutLanes = typename OutLanesOf<O, T>::type;

// toSample over lanes: minimum with the upper limit first (NaN gives the limit).
template <class O, class T>
inline OutLanes<O, T> toLanes(typename O::F r) {
  if constexpr (kFloat<T>) {
    return r;
  } else {
    return O::cvtfi(O::maxf(O::minf(r, O::setf(Limits<T>::hi)), O::setf(Limits<T>::lo)));
  }
}

// Moves pixels between a row and lanes, one vector per channel (the generic
// adaptor: any set, any sample type and shape). Faster adaptors of the same
// moves take its place for some sets.
template <class O, class T, Shape S>
struct Io {
  using F = typename O::F;
  static constexpr int kLanes = int(sizeof(F) / sizeof(float));
  static void load(const T* const* p, std::ptrdiff_t x, F s[4]) {
    for (int k = 0; k < kChannels<S>; ++k) {
      alignas(32) float t[kLanes];
      for (int i = 0; i < kLanes; ++i) t[i] = float(loadAt(sampleAt<S>(p, k, x + i)));
      s[k] = O::loadf(t);
    }
  }
  template <bool Stream>
  static void store(T* const* p, std::ptrdiff_t x, const OutLanes<O, T>* r) {
    for (int k = 0; k < kChannels<S>; ++k) {
      if constexpr (kFloat<T>) {
        alignas(32) float t[kLanes];
        O::storef(t, r[k]);
        for (int i = 0; i < kLanes; ++i) storeAt(sampleAt<S>(p, k, x + i), t[i]);
      } else {
        alignas(32) int32_t t[kLanes];
        O::store(t, r[k]);
        for (int i = 0; i < kLanes; ++i) storeAt(sampleAt<S>(p, k, x + i), T(t[i]));
      }
    }
  }
};

// Whole vectors of pixels from x0 on, up to x1; returns where they end. Stream
// asks for streaming stores where the adaptor has them (speed only).
template <class O, class T, Shape S, bool Linear, bool Stream = false>
std::ptrdiff_t rowLanes(const T* const* s, T* const* d, std::ptrdiff_t x0, std::ptrdiff_t x1, const Coefs<O>& K) {
  using IoT = Io<O, T, S>;
  constexpr int n = kChannels<S>;
  std::ptrdiff_t x = x0;
  for (; x + IoT::kLanes <= x1; x += IoT::kLanes) {
    typename O::F in[4], r[4];
    IoT::load(s, x, in);
    for (int c = 0; c < n; ++c) r[c] = Linear ? linearLanes<O>(K, c, in) : affineLanes<O>(K, c, in);
    OutLanes<O, T> out[4];
    for (int c = 0; c < n; ++c) out[c] = toLanes<O, T>(r[c]);
    IoT::template store<Stream>(d, x, out);
  }
  return x;
}

// A region: the rows of both images, with width pixels each (the row pointers
// of row y are the bases plus y steps).
template <class T>
struct Region {
  const T* src[3];
  int srcStep;
  T* dst[3];
  int dstStep;
  std::ptrdiff_t width;
  int height;
};

// Row y of one image's plane pointers.
template <class T, Shape S>
inline void rowPointers(T* const* base, int step, int y, T** out) {
  for (int k = 0; k < (S == Shape::P3 ? 3 : 1); ++k) out[k] = rowAt(base[k], y, step);
}

// Runs the region on lane set O: whole vectors, then single pixels, row by row.
template <class O, class T, Shape S, bool Linear, bool Stream = false>
void regionOn(const Region<T>& g, const Matrix& m) {
  const Coefs<O> K(m, kChannels<S>);
  for (int y = 0; y < g.height; ++y) {
    const T* s[3];
    T* d[3];
    rowPointers<const T, S>(g.src, g.srcStep, y, s);
    rowPointers<T, S>(g.dst, g.dstStep, y, d);
    const std::ptrdiff_t x = rowLanes<O, T, S, Linear, Stream>(s, d, 0, g.width, K);
    rowPixels<O, T, S, Linear>(s, d, x, g.width, m);
  }
  if constexpr (Stream) O::fence();
}

// The run on the 256-bit set (twist_avx2.cpp), for the forms that have 256-bit
// moves: the three-channel images and the integer planar ones.
template <class T, Shape S, bool Linear, bool Stream>
void regionWide(const Region<T>& g, const Matrix& m);
template <class T, Shape S>
constexpr bool kHasWide = S == Shape::C3 || (S == Shape::P3 && !kFloat<T>);

}  // namespace lum::twist
