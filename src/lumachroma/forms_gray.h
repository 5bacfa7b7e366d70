// Forms, layouts and row kernels of the one-channel conversions: colour to gray
// over 8u, 16u, 16s, 32f and 64f samples, gray to three or four channels, and
// the luma of packed 4:2:2. Rows are addressed in elements; the channel splits
// and spreads the adaptors use are those of frame/layouts.h.
//
// A form is a small struct: pixel() is the lane-exact scalar rule, and where a
// vector block pays, vblock<O>() computes the same lanes over the lane set O
// (lanes.h) and groups<O, Io>() runs it along a row through the layout
// adaptors Io (Io128 here, the 256-bit ones in gray_layouts_avx2.h). The row
// kernels put pixels [0, width & ~(Cover - 1)) through the block form (vector
// groups, then its scalar twin) and the rest through the tail form.
#pragma once

#include <cmath>
#include <cstdint>
#include <cstring>
#include <type_traits>

#include "frame/coeffs.h"
#include "frame/fixed_point.h"
#include "frame/lanes.h"
#include "frame/layouts.h"
#include "frame/rows.h"
#include "lumcc.h"

namespace lum {

// ---------------------------------------------------------------------------
// Float to 32-bit integer as the processor converts: out of range and NaN give
// INT32_MIN (0x80000000), whichever path runs.
// ---------------------------------------------------------------------------

// Nearest under the current rounding mode (ties to even in the default mode).
inline int32_t cvtNearest(float x) {
#if LUM_SIMD_SSE
  return _mm_cvtss_si32(_mm_set_ss(x));
#else
  return lanes::emu::cvtNearest(x);
#endif
}

// Truncation toward zero of a double.
inline int32_t cvtTrunc(double x) {
#if LUM_SIMD_SSE
  return _mm_cvttsd_si32(_mm_set_sd(x));
#else
  return lanes::emu::cvtTrunc(x);
#endif
}

// Row y of an image whose step counts elements of T.
template <class T>
inline T* rowOfElems(T* base, int y, int elemStep) {
  return base + std::ptrdiff_t(y) * elemStep;
}

// Byte step turned into an element step, rounded down (arithmetic shift).
template <class T>
constexpr int elemStep(int byteStep) {
  if constexpr (sizeof(T) == 1) return byteStep;
  else if constexpr (sizeof(T) == 2) return byteStep >> 1;
  else if constexpr (sizeof(T) == 4) return byteStep >> 2;
  else return byteStep >> 3;
}

namespace gray {

// The luma weights, as single-precision values.
inline constexpr const float (&kDefaultWeights)[3] = coef::gray::kWeightsF32;

// Q15 integer of a weight for the 8u forms: trunc(double(w) * 32768 + 0.5).
inline int q15(float w) { return cvtTrunc(double(w) * 32768.0 + 0.5); }

#if LUM_SIMD_SSE
// Layout adaptors of the 128-bit gray blocks: they move samples between the
// rows and the lanes of lanes::Sse and do no arithmetic (the stores' saturating
// packs are the forms' clamps).
struct Io128 {
  // Sixteen N-byte pixels as two halves (pixels 0..7, 8..15) of three channels,
  // each sample << 8 in its 16-bit lane: unpacking under a zero byte puts it there.
  template <int N>
  static void q15In(const uint8_t* p, __m128i c[2][3]) {
    __m128i b[3];
    layout::channels::bytes<N>(p, b);
    const __m128i z = _mm_setzero_si128();
    for (int k = 0; k < 3; ++k) {
      c[0][k] = _mm_unpacklo_epi8(z, b[k]);
      c[1][k] = _mm_unpackhi_epi8(z, b[k]);
    }
  }
  // Two halves of 16-bit lanes to sixteen bytes, clamped to 0..255 (packus).
  static void q15Out(uint8_t* d, __m128i a, __m128i b) {
    _mm_storeu_si128(reinterpret_cast<__m128i*>(d), _mm_packus_epi16(a, b));
  }
  // Eight N-sample 16-bit pixels as two halves (pixels 0..3, 4..7) of three
  // channels on 32-bit lanes, widened as T is signed or not.
  template <class T, int N>
  static void wordsIn(const T* s, __m128i c[2][3]) {
    __m128i w[3];
    layout::channels::words<N>(reinterpret_cast<const uint16_t*>(s), w);
    for (int k = 0; k < 3; ++k)
      for (int h = 0; h < 2; ++h) {
        const __m128i v = h ? _mm_srli_si128(w[k], 8) : w[k];
        c[h][k] = std::is_same_v<T, Lum16s> ? _mm_cvtepi16_epi32(v) : _mm_cvtepu16_epi32(v);
      }
  }
  // Two halves of 32-bit lanes to eight samples of T, saturated to its range.
  template <class T>
  static void wordsOut(T* d, __m128i a, __m128i b) {
    const __m128i out = std::is_same_v<T, Lum16s> ? _mm_packs_epi32(a, b) : _mm_packus_epi32(a, b);
    _mm_storeu_si128(reinterpret_cast<__m128i*>(d), out);
  }
  // Four N-channel float pixels as three channels.
  template <int N>
  static void floatsIn(const float* p, __m128 c[3]) { layout::channels::floats<N>(p, c); }

  // Gray to colour: source samples a step, and the step itself, which spreads
  // 16 bytes of gray samples over N-channel pixels with aval's bytes or'ed in.
  template <class T, int N>
  static constexpr int kSpread = 16 / int(sizeof(T));
  static __m128i alpha(__m128i pattern) { return pattern; }
  template <class T, int N>
  static void spread(const T* s, T* d, __m128i alpha) {
    static constexpr layout::channels::Spread<int(sizeof(T)), N> kMasks{};
    const __m128i v = _mm_loadu_si128(reinterpret_cast<const __m128i*>(s));
    for (int j = 0; j < N; ++j) {
      const __m128i m = _mm_loadu_si128(reinterpret_cast<const __m128i*>(kMasks.mask[j]));
      _mm_storeu_si128(reinterpret_cast<__m128i*>(d) + j, _mm_or_si128(_mm_shuffle_epi8(v, m), alpha));
    }
  }

  // Luma of packed 4:2:2: pixels a step, and the step, which keeps the first
  // byte of every two; then a step of 8.
  static constexpr int kLuma = 16;
  static void luma(const uint8_t* s, uint8_t* d) {
    const __m128i m = _mm_set1_epi16(0x00FF);
    const __m128i a = _mm_and_si128(_mm_loadu_si128(reinterpret_cast<const __m128i*>(s)), m);
    const __m128i b = _mm_and_si128(_mm_loadu_si128(reinterpret_cast<const __m128i*>(s + 16)), m);
    _mm_storeu_si128(reinterpret_cast<__m128i*>(d), _mm_packus_epi16(a, b));
  }
  static void luma8(const uint8_t* s, uint8_t* d) {
    const __m128i a = _mm_and_si128(_mm_loadu_si128(reinterpret_cast<const __m128i*>(s)), _mm_set1_epi16(0x00FF));
    _mm_storel_epi64(reinterpret_cast<__m128i*>(d), _mm_packus_epi16(a, a));
  }
};
#endif

// ---------------------------------------------------------------------------
// Colour to gray
// ---------------------------------------------------------------------------

// 8u block: Q16 high products of the samples shifted up by 8, saturating sums
// and a rounding 64, then the 16-bit sum read as signed, >> 7 and clamped. A sum
// that saturates at 0xFFFF reads as -1 and gives 0.
struct GrayQ15Block {
  int k[3];
  static constexpr bool kVector = true;
  uint8_t pixel(int c0, int c1, int c2) const {
    using namespace fx;
    const int s = addus16u(addus16u(addus16u(mulhi16u(c0 << 8, k[0]), mulhi16u(c1 << 8, k[1])),
                                    mulhi16u(c2 << 8, k[2])), coef::gray::kRoundX128);
    return uint8_t(clamp8(sra16(s, 7)));
  }
  // The lanes of pixel(): c holds the three samples << 8 (the loads put them
  // there), the result is clamped by the store (packus).
  template <class O, class V = typename O::V>
  V vblock(const V* c) const {
    const V s = O::addus16u(O::addus16u(O::addus16u(O::mulhi16u(c[0], O::set(k[0])), O::mulhi16u(c[1], O::set(k[1]))),
                                        O::mulhi16u(c[2], O::set(k[2]))),
                            O::set(coef::gray::kRoundX128));
    return O::sra(s, 7);
  }
  // Pixels [x, n) of an N-channel row in groups of 2 * O::kLanes, through the
  // adaptors Io; returns the first pixel left.
  template <class O, class Io, int N>
  int groups(const uint8_t* s, uint8_t* d, int x, int n) const {
    const GrayQ15Block f = *this;  // a local copy: no store can change the weights
    for (; x + 2 * O::kLanes <= n; x += 2 * O::kLanes) {
      typename O::V c[2][3];
      Io::template q15In<N>(s + N * x, c);
      Io::q15Out(d + x, f.template vblock<O>(c[0]), f.template vblock<O>(c[1]));
    }
    return x;
  }
};

// 8u tail: one 32-bit Q15 sum, rounded, stored as its low byte (no clamp).
struct GrayQ15Tail {
  int k[3];
  uint8_t pixel(int c0, int c1, int c2) const {
    const uint32_t s = uint32_t(k[0]) * uint32_t(c0) + uint32_t(k[1]) * uint32_t(c1) +
                       uint32_t(k[2]) * uint32_t(c2) + uint32_t(coef::gray::kRoundQ15);
    return uint8_t(int32_t(s) >> 15);
  }
};

// 16u and 16s: single-precision products summed as (p0 + p1) + p2, nearest
// integer, saturated to the sample's range. Block and tail are the same form.
template <class T>
struct GrayRoundF32 {
  static_assert(std::is_same_v<T, Lum16u> || std::is_same_v<T, Lum16s>);
  static constexpr int kLo = std::is_same_v<T, Lum16u> ? 0 : -32768;
  static constexpr int kHi = std::is_same_v<T, Lum16u> ? 65535 : 32767;
  float w[3];
  static constexpr bool kVector = true;
  T pixel(T c0, T c1, T c2) const {
    const float s = (float(c0) * w[0] + float(c1) * w[1]) + float(c2) * w[2];
    const int32_t r = cvtNearest(s);
    return T(r < kLo ? kLo : (r > kHi ? kHi : r));
  }
  // The lanes of pixel() on 32-bit lanes of samples; the store saturates to T.
  template <class O, class V = typename O::V>
  V vblock(const V* c) const {
    using F = typename O::F;
    const F s = O::addf(O::addf(O::mulf(O::cvtif(c[0]), O::setf(w[0])), O::mulf(O::cvtif(c[1]), O::setf(w[1]))),
                        O::mulf(O::cvtif(c[2]), O::setf(w[2])));
    return O::cvtfi(s);
  }
  // Pixels [x, n) in groups of O::kLanes (two halves of 32-bit lanes).
  template <class O, class Io, int N>
  int groups(const T* s, T* d, int x, int n) const {
    const GrayRoundF32 f = *this;  // a local copy: no store can change the weights
    for (; x + O::kLanes <= n; x += O::kLanes) {
      typename O::V c[2][3];
      Io::template wordsIn<T, N>(s + N * x, c);
      Io::template wordsOut<T>(d + x, f.template vblock<O>(c[0]), f.template vblock<O>(c[1]));
    }
    return x;
  }
};

// 32f: w0 c0 + w1 c1, then + w2 c2, in single precision; no clamp.
struct GrayF32 {
  float w[3];
  static constexpr bool kVector = true;
  float pixel(float c0, float c1, float c2) const { return (w[0] * c0 + w[1] * c1) + w[2] * c2; }
  template <class O, class F = typename O::F>
  F vblock(const F* c) const {
    return O::addf(O::addf(O::mulf(O::setf(w[0]), c[0]), O::mulf(O::setf(w[1]), c[1])), O::mulf(O::setf(w[2]), c[2]));
  }
  // Pixels [x, n) in groups of O::kLanes / 2 (the float lanes of a register).
  template <class O, class Io, int N>
  int groups(const float* s, float* d, int x, int n) const {
    const GrayF32 f = *this;  // a local copy: no store can change the weights
    for (; x + O::kLanes / 2 <= n; x += O::kLanes / 2) {
      typename O::F c[3];
      Io::template floatsIn<N>(s + N * x, c);
      O::storef(d + x, f.template vblock<O>(c));
    }
    return x;
  }
};

// 64f: the same sum in double precision (scalar: the rows are memory bound).
struct GrayF64 {
  double w[3];
  double pixel(double c0, double c1, double c2) const { return (w[0] * c0 + w[1] * c1) + w[2] * c2; }
};

// How far the vector code of one call goes, asked once per call.
enum class Reach { Scalar, Narrow, Wide };
inline Reach reach() { return useWide() ? Reach::Wide : (useVector() ? Reach::Narrow : Reach::Scalar); }

#if LUM_SIMD_SSE
// The 256-bit groups of the blocks (gray_avx2.cpp): each converts the longest
// run of whole 256-bit steps from the row's start and returns the pixels done.
namespace avx2 {
template <int N, class Form, class T>
int groups(const Form& f, const T* s, T* d, int n);
}  // namespace avx2
#endif

// Row kernel of colour to gray over an N-channel row of T: pixels below
// width & ~(Cover - 1) by the block form (256-bit groups, 128-bit groups, then
// its scalar twin), the rest by the tail form. Channel 4 of AC4 is never read.
template <int Cover, class T, int N, class BlockForm, class TailForm>
inline void toGrayRow(const T* s, T* d, int width, const BlockForm& bf, const TailForm& tf, Reach r) {
  const int blockEnd = width & ~(Cover - 1);
  int x = 0;
#if LUM_SIMD_SSE
  if constexpr (requires { BlockForm::kVector; }) {
    if (r == Reach::Wide) x = avx2::groups<N>(bf, s, d, blockEnd);
    if (r != Reach::Scalar) x = bf.template groups<lanes::Sse, Io128, N>(s, d, x, blockEnd);
  }
#else
  (void)r;
#endif
  for (; x < blockEnd; ++x)
    storeAt(d + x, T(bf.pixel(loadAt(s + N * x), loadAt(s + N * x + 1), loadAt(s + N * x + 2))));
  for (; x < width; ++x)
    storeAt(d + x, T(tf.pixel(loadAt(s + N * x), loadAt(s + N * x + 1), loadAt(s + N * x + 2))));
}

// ---------------------------------------------------------------------------
// Gray to colour, and the luma of packed 4:2:2
// ---------------------------------------------------------------------------


// Gray sample to N channels; the fourth channel of four is the call's aval.
template <class T, int N>
struct GrayToColor {
  T aval;
  void pixel(T g, T* d) const {
    storeAt(d, g);
    storeAt(d + 1, g);
    storeAt(d + 2, g);
    if constexpr (N == 4) storeAt(d + 3, aval);
  }
#if LUM_SIMD_SSE
  // aval in the bytes of the fourth channel, zero elsewhere (zero for N == 3).
  __m128i alphaPattern() const {
    __m128i v = _mm_setzero_si128();
    if constexpr (N == 4) {
      T pat[16 / sizeof(T)] = {};
      for (size_t i = 3; i < 16 / sizeof(T); i += 4) pat[i] = aval;
      std::memcpy(&v, pat, 16);
    }
    return v;
  }
  // Pixels [x, n) in the steps of the adaptors Io; returns the first pixel left.
  template <class Io>
  int groups(const T* s, T* d, int x, int n) const {
    const auto alpha = Io::alpha(alphaPattern());
    constexpr int kStep = Io::template kSpread<T, N>;
    for (; x + kStep <= n; x += kStep) Io::template spread<T, N>(s + x, d + N * x, alpha);
    return x;
  }
#endif
};

#if LUM_SIMD_SSE
namespace avx2 {
template <class T, int N>
int spread(const T* s, T* d, int n, const GrayToColor<T, N>& f);
int luma422(const uint8_t* s, uint8_t* d, int n);
}  // namespace avx2
#endif

// Row kernel of gray to colour: vector steps, then single pixels.
template <class T, int N>
inline void grayToColorRow(const T* s, T* d, int width, const GrayToColor<T, N>& f, Reach r) {
  int x = 0;
#if LUM_SIMD_SSE
  if (r == Reach::Wide) x = avx2::spread(s, d, width, f);
  if (r != Reach::Scalar) x = f.template groups<Io128>(s, d, x, width);
#else
  (void)r;
#endif
  for (; x < width; ++x) f.pixel(loadAt(s + x), d + N * x);
}

// Luma of a packed YCbCr422 row: the first byte of every two-byte pixel. The
// block runs 16 pixels a step, then 8, then 4; pairs and a last pixel end the
// row, so odd widths are converted in full. Chroma bytes are never read.
struct LumaOf422 {
  static void pixel(const uint8_t* s, uint8_t* d) { *d = *s; }
#if LUM_SIMD_SSE
  // Pixels [x, n) in the steps of the adaptors Io; returns the first pixel left.
  template <class Io>
  static int groups(const uint8_t* s, uint8_t* d, int x, int n) {
    for (; x + Io::kLuma <= n; x += Io::kLuma) Io::luma(s + 2 * x, d + x);
    return x;
  }
#endif
  static void row(const uint8_t* s, uint8_t* d, int width, Reach r) {
    int x = 0;
#if LUM_SIMD_SSE
    if (r == Reach::Wide) x = avx2::luma422(s, d, width);
    if (r != Reach::Scalar) {
      x = groups<Io128>(s, d, x, width);
      if (x + 8 <= width) {
        Io128::luma8(s + 2 * x, d + x);
        x += 8;
      }
    }
#else
    (void)r;
#endif
    for (; x < width; ++x) pixel(s + 2 * x, d + x);
  }
};

}  // namespace gray
}  // namespace lum
