// Forms, layouts and row kernels of the one-channel conversions: colour to gray
// over 8u, 16u, 16s, 32f and 64f samples, gray to three or four channels, and
// the luma of packed 4:2:2. Samples are typed here (the 8-bit layouts of
// frame/layouts.h know bytes only), and rows are addressed in elements.
//
// A form is a small struct: pixel() is the lane-exact scalar rule, and where a
// vector block pays, block<N>() computes the same lanes for kLanes pixels of an
// N-channel row. The row kernels put pixels [0, width & ~(Cover - 1)) through
// the block form (vector groups, then its scalar twin) and the rest through the
// tail form.
#pragma once

#include <cmath>
#include <cstdint>
#include <cstring>
#include <type_traits>

#include "frame/fixed_point.h"
#include "frame/simd.h"
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
  const float r = std::nearbyint(x);
  if (!(r >= -2147483648.0f && r < 2147483648.0f)) return INT32_MIN;
  return int32_t(r);
#endif
}

// Truncation toward zero of a double.
inline int32_t cvtTrunc(double x) {
#if LUM_SIMD_SSE
  return _mm_cvttsd_si32(_mm_set_sd(x));
#else
  if (!(x > -2147483649.0 && x < 2147483648.0)) return INT32_MIN;
  return int32_t(x);
#endif
}

// Unaligned element access: images of 16-, 32- and 64-bit samples may start at
// any byte, so no load or store assumes the sample's natural alignment.
template <class T>
inline T ld(const T* p) {
  T v;
  std::memcpy(&v, p, sizeof(T));
  return v;
}
template <class T>
inline void st(T* p, T v) {
  std::memcpy(p, &v, sizeof(T));
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
inline constexpr float kDefaultWeights[3] = {0.299f, 0.587f, 0.114f};

// Q15 integer of a weight for the 8u forms: trunc(double(w) * 32768 + 0.5).
inline int q15(float w) { return cvtTrunc(double(w) * 32768.0 + 0.5); }

#if LUM_SIMD_SSE
namespace detail {
constexpr int8_t Z = -128;  // pshufb: write zero

// Shuffle masks that gather channel k of sixteen 3-byte pixels from load j of the
// three 16-byte loads (channel k of pixel i lies at byte 3i + k of the 48);
// the 128-bit and the 256-bit splits share them.
alignas(16) inline constexpr int8_t kSplit3[3][3][16] = {
    {{0, 3, 6, 9, 12, 15, Z, Z, Z, Z, Z, Z, Z, Z, Z, Z},
     {Z, Z, Z, Z, Z, Z, 2, 5, 8, 11, 14, Z, Z, Z, Z, Z},
     {Z, Z, Z, Z, Z, Z, Z, Z, Z, Z, Z, 1, 4, 7, 10, 13}},
    {{1, 4, 7, 10, 13, Z, Z, Z, Z, Z, Z, Z, Z, Z, Z, Z},
     {Z, Z, Z, Z, Z, 0, 3, 6, 9, 12, 15, Z, Z, Z, Z, Z},
     {Z, Z, Z, Z, Z, Z, Z, Z, Z, Z, Z, 2, 5, 8, 11, 14}},
    {{2, 5, 8, 11, 14, Z, Z, Z, Z, Z, Z, Z, Z, Z, Z, Z},
     {Z, Z, Z, Z, Z, 1, 4, 7, 10, 13, Z, Z, Z, Z, Z, Z},
     {Z, Z, Z, Z, Z, Z, Z, Z, Z, Z, 0, 3, 6, 9, 12, 15}},
};

// The same for eight 3-sample 16-bit pixels: lane k of pixel i is 16-bit element
// 3i + k of the 24 in the three loads.
alignas(16) inline constexpr int8_t kSplit3w[3][3][16] = {
    {{0, 1, 6, 7, 12, 13, Z, Z, Z, Z, Z, Z, Z, Z, Z, Z},
     {Z, Z, Z, Z, Z, Z, 2, 3, 8, 9, 14, 15, Z, Z, Z, Z},
     {Z, Z, Z, Z, Z, Z, Z, Z, Z, Z, Z, Z, 4, 5, 10, 11}},
    {{2, 3, 8, 9, 14, 15, Z, Z, Z, Z, Z, Z, Z, Z, Z, Z},
     {Z, Z, Z, Z, Z, Z, 4, 5, 10, 11, Z, Z, Z, Z, Z, Z},
     {Z, Z, Z, Z, Z, Z, Z, Z, Z, Z, 0, 1, 6, 7, 12, 13}},
    {{4, 5, 10, 11, Z, Z, Z, Z, Z, Z, Z, Z, Z, Z, Z, Z},
     {Z, Z, Z, Z, 0, 1, 6, 7, 12, 13, Z, Z, Z, Z, Z, Z},
     {Z, Z, Z, Z, Z, Z, Z, Z, Z, Z, 2, 3, 8, 9, 14, 15}},
};

// 48 bytes of three-channel pixels into three vectors, channel by channel, with
// the shuffle masks of table t (one per channel and load).
inline void gather3(const uint8_t* p, const int8_t (&t)[3][3][16], __m128i out[3]) {
  const __m128i a = _mm_loadu_si128(reinterpret_cast<const __m128i*>(p));
  const __m128i b = _mm_loadu_si128(reinterpret_cast<const __m128i*>(p + 16));
  const __m128i c = _mm_loadu_si128(reinterpret_cast<const __m128i*>(p + 32));
  for (int k = 0; k < 3; ++k) {
    const __m128i m0 = _mm_load_si128(reinterpret_cast<const __m128i*>(t[k][0]));
    const __m128i m1 = _mm_load_si128(reinterpret_cast<const __m128i*>(t[k][1]));
    const __m128i m2 = _mm_load_si128(reinterpret_cast<const __m128i*>(t[k][2]));
    out[k] = _mm_or_si128(_mm_or_si128(_mm_shuffle_epi8(a, m0), _mm_shuffle_epi8(b, m1)), _mm_shuffle_epi8(c, m2));
  }
}

// 64 bytes of four-channel pixels into the first three channels' vectors: mask m
// groups each load's samples by channel, then 32- and 64-bit unpacks transpose.
inline void gather4(const uint8_t* p, __m128i m, __m128i out[3]) {
  __m128i v[4];
  for (int i = 0; i < 4; ++i) v[i] = _mm_shuffle_epi8(_mm_loadu_si128(reinterpret_cast<const __m128i*>(p + 16 * i)), m);
  const __m128i lo01 = _mm_unpacklo_epi32(v[0], v[1]), lo23 = _mm_unpacklo_epi32(v[2], v[3]);
  const __m128i hi01 = _mm_unpackhi_epi32(v[0], v[1]), hi23 = _mm_unpackhi_epi32(v[2], v[3]);
  out[0] = _mm_unpacklo_epi64(lo01, lo23);
  out[1] = _mm_unpackhi_epi64(lo01, lo23);
  out[2] = _mm_unpacklo_epi64(hi01, hi23);
}

// Groups a load's 8-bit samples (four pixels) or 16-bit samples (two pixels) by channel.
inline __m128i byChannel8() { return _mm_setr_epi8(0, 4, 8, 12, 1, 5, 9, 13, 2, 6, 10, 14, 3, 7, 11, 15); }
inline __m128i byChannel16() { return _mm_setr_epi8(0, 1, 8, 9, 2, 3, 10, 11, 4, 5, 12, 13, 6, 7, 14, 15); }

// Sixteen 3- or 4-byte pixels, or eight 3- or 4-sample 16-bit pixels, into three vectors.
inline void split3x16(const uint8_t* p, __m128i out[3]) { gather3(p, kSplit3, out); }
inline void split4x16(const uint8_t* p, __m128i out[3]) { gather4(p, byChannel8(), out); }
inline void split3x8w(const uint16_t* p, __m128i out[3]) {
  gather3(reinterpret_cast<const uint8_t*>(p), kSplit3w, out);
}
inline void split4x8w(const uint16_t* p, __m128i out[3]) {
  gather4(reinterpret_cast<const uint8_t*>(p), byChannel16(), out);
}

// Four 3- or 4-channel float pixels into three vectors of four lanes.
template <int N>
inline void split4f(const float* p, __m128 out[3]) {
  if constexpr (N == 3) {
    const __m128 a = _mm_loadu_ps(p), b = _mm_loadu_ps(p + 4), c = _mm_loadu_ps(p + 8);
    // a = r0 g0 b0 r1, b = g1 b1 r2 g2, c = b2 r3 g3 b3
    const __m128 t1 = _mm_shuffle_ps(b, c, _MM_SHUFFLE(1, 1, 2, 2));  // r2 r2 r3 r3
    const __m128 t2 = _mm_shuffle_ps(b, c, _MM_SHUFFLE(2, 2, 3, 3));  // g2 g2 g3 g3
    const __m128 t3 = _mm_shuffle_ps(a, b, _MM_SHUFFLE(0, 0, 1, 1));  // g0 g0 g1 g1
    const __m128 t4 = _mm_shuffle_ps(a, b, _MM_SHUFFLE(1, 1, 2, 2));  // b0 b0 b1 b1
    const __m128 t5 = _mm_shuffle_ps(c, c, _MM_SHUFFLE(3, 3, 0, 0));  // b2 b2 b3 b3
    out[0] = _mm_shuffle_ps(a, t1, _MM_SHUFFLE(2, 0, 3, 0));
    out[1] = _mm_shuffle_ps(t3, t2, _MM_SHUFFLE(2, 0, 2, 0));
    out[2] = _mm_shuffle_ps(t4, t5, _MM_SHUFFLE(2, 0, 2, 0));
  } else {
    __m128 a = _mm_loadu_ps(p), b = _mm_loadu_ps(p + 4), c = _mm_loadu_ps(p + 8), d = _mm_loadu_ps(p + 12);
    _MM_TRANSPOSE4_PS(a, b, c, d);
    out[0] = a;
    out[1] = b;
    out[2] = c;
  }
}
}  // namespace detail
#endif

// ---------------------------------------------------------------------------
// Colour to gray
// ---------------------------------------------------------------------------

// 8u block: Q16 high products of the samples shifted up by 8, saturating sums
// and a rounding 64, then the 16-bit sum read as signed, >> 7 and clamped. A sum
// that saturates at 0xFFFF reads as -1 and gives 0.
struct GrayQ15Block {
  int k[3];
  static constexpr int kLanes = 16;
  uint8_t pixel(int c0, int c1, int c2) const {
    using namespace fx;
    const int s = addus16u(addus16u(addus16u(mulhi16u(c0 << 8, k[0]), mulhi16u(c1 << 8, k[1])),
                                    mulhi16u(c2 << 8, k[2])), 64);
    return uint8_t(clamp8(sra16(s, 7)));
  }
#if LUM_SIMD_SSE
  // Sixteen pixels of N bytes at s to sixteen bytes at d.
  template <int N>
  void block(const uint8_t* s, uint8_t* d) const {
    __m128i c[3];
    if constexpr (N == 3) detail::split3x16(s, c);
    else detail::split4x16(s, c);
    const __m128i z = _mm_setzero_si128();
    __m128i half[2];
    for (int h = 0; h < 2; ++h) {
      // Unpacking under a zero byte puts each sample at c << 8 in its lane.
      auto lane = [&](int ch) { return h ? _mm_unpackhi_epi8(z, c[ch]) : _mm_unpacklo_epi8(z, c[ch]); };
      const __m128i p0 = _mm_mulhi_epu16(lane(0), fx::set16(k[0]));
      const __m128i p1 = _mm_mulhi_epu16(lane(1), fx::set16(k[1]));
      const __m128i p2 = _mm_mulhi_epu16(lane(2), fx::set16(k[2]));
      const __m128i s16 = _mm_adds_epu16(_mm_adds_epu16(_mm_adds_epu16(p0, p1), p2), fx::set16(64));
      half[h] = _mm_srai_epi16(s16, 7);
    }
    // packus clamps the signed lanes to 0..255.
    _mm_storeu_si128(reinterpret_cast<__m128i*>(d), _mm_packus_epi16(half[0], half[1]));
  }
#endif
};

// 8u tail: one 32-bit Q15 sum, rounded, stored as its low byte (no clamp).
struct GrayQ15Tail {
  int k[3];
  uint8_t pixel(int c0, int c1, int c2) const {
    const uint32_t s = uint32_t(k[0]) * uint32_t(c0) + uint32_t(k[1]) * uint32_t(c1) +
                       uint32_t(k[2]) * uint32_t(c2) + 16384u;
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
  static constexpr int kLanes = 8;
  T pixel(T c0, T c1, T c2) const {
    const float s = (float(c0) * w[0] + float(c1) * w[1]) + float(c2) * w[2];
    const int32_t r = cvtNearest(s);
    return T(r < kLo ? kLo : (r > kHi ? kHi : r));
  }
#if LUM_SIMD_SSE
  template <int N>
  void block(const T* s, T* d) const {
    __m128i c[3];
    const auto* p = reinterpret_cast<const uint16_t*>(s);
    if constexpr (N == 3) detail::split3x8w(p, c);
    else detail::split4x8w(p, c);
    __m128i half[2];
    for (int h = 0; h < 2; ++h) {
      auto lane = [&](int ch) {
        const __m128i v = h ? _mm_srli_si128(c[ch], 8) : c[ch];
        return _mm_cvtepi32_ps(kLo == 0 ? _mm_cvtepu16_epi32(v) : _mm_cvtepi16_epi32(v));
      };
      const __m128 sum = _mm_add_ps(_mm_add_ps(_mm_mul_ps(lane(0), _mm_set1_ps(w[0])),
                                               _mm_mul_ps(lane(1), _mm_set1_ps(w[1]))),
                                    _mm_mul_ps(lane(2), _mm_set1_ps(w[2])));
      half[h] = _mm_cvtps_epi32(sum);
    }
    const __m128i out = kLo == 0 ? _mm_packus_epi32(half[0], half[1]) : _mm_packs_epi32(half[0], half[1]);
    _mm_storeu_si128(reinterpret_cast<__m128i*>(d), out);
  }
#endif
};

// 32f: w0 c0 + w1 c1, then + w2 c2, in single precision; no clamp.
struct GrayF32 {
  float w[3];
  static constexpr int kLanes = 4;
  float pixel(float c0, float c1, float c2) const { return (w[0] * c0 + w[1] * c1) + w[2] * c2; }
#if LUM_SIMD_SSE
  template <int N>
  void block(const float* s, float* d) const {
    __m128 c[3];
    detail::split4f<N>(s, c);
    const __m128 sum = _mm_add_ps(_mm_add_ps(_mm_mul_ps(_mm_set1_ps(w[0]), c[0]), _mm_mul_ps(_mm_set1_ps(w[1]), c[1])),
                                  _mm_mul_ps(_mm_set1_ps(w[2]), c[2]));
    _mm_storeu_ps(d, sum);
  }
#endif
};

// 64f: the same sum in double precision (scalar: the rows are memory bound).
struct GrayF64 {
  double w[3];
  double pixel(double c0, double c1, double c2) const { return (w[0] * c0 + w[1] * c1) + w[2] * c2; }
};

#if LUM_SIMD_SSE
// 256-bit twins of the blocks above, for processors with AVX2 (gray_wide.cpp).
// Each converts the longest run of whole 256-bit steps from the row's start
// and returns the pixels done; the caller tests usable() on every call.
namespace avx2 {
bool usable() noexcept;
template <int N>
int q15(const uint8_t* s, uint8_t* d, int n, const GrayQ15Block& f);
template <class T, int N>
int roundF32(const T* s, T* d, int n, const GrayRoundF32<T>& f);
template <int N>
int f32(const float* s, float* d, int n, const GrayF32& f);
}  // namespace avx2

// The widest block the processor runs: pixels of [0, n) done by 256-bit steps.
template <int N>
inline int wideBlocks(const GrayQ15Block& f, const uint8_t* s, uint8_t* d, int n) {
  return avx2::usable() ? avx2::q15<N>(s, d, n, f) : 0;
}
template <int N, class T>
inline int wideBlocks(const GrayRoundF32<T>& f, const T* s, T* d, int n) {
  return avx2::usable() ? avx2::roundF32<T, N>(s, d, n, f) : 0;
}
template <int N>
inline int wideBlocks(const GrayF32& f, const float* s, float* d, int n) {
  return avx2::usable() ? avx2::f32<N>(s, d, n, f) : 0;
}
#endif

// Row kernel of colour to gray over an N-channel row of T: pixels below
// width & ~(Cover - 1) by the block form (vector groups of kLanes, then its
// scalar twin), the rest by the tail form. Channel 4 of AC4 is never read.
template <int Cover, class T, int N, class BlockForm, class TailForm>
inline void toGrayRow(const T* s, T* d, int width, const BlockForm& bf, const TailForm& tf) {
  const int blockEnd = width & ~(Cover - 1);
  int x = 0;
#if LUM_SIMD_SSE
  if constexpr (requires { BlockForm::kLanes; }) {
    if (useVector()) {
      x = wideBlocks<N>(bf, s, d, blockEnd);
      for (; x + BlockForm::kLanes <= blockEnd; x += BlockForm::kLanes) bf.template block<N>(s + N * x, d + x);
    }
  }
#endif
  for (; x < blockEnd; ++x) st(d + x, T(bf.pixel(ld(s + N * x), ld(s + N * x + 1), ld(s + N * x + 2))));
  for (; x < width; ++x) st(d + x, T(tf.pixel(ld(s + N * x), ld(s + N * x + 1), ld(s + N * x + 2))));
}

// ---------------------------------------------------------------------------
// Gray to colour, and the luma of packed 4:2:2
// ---------------------------------------------------------------------------

#if LUM_SIMD_SSE
namespace detail {
// pshufb masks that spread 16 bytes of E-byte gray samples over the three or
// four channels of N-channel pixels: output vector j, byte i takes the source
// byte of its pixel's sample, or zero where the byte belongs to the fourth
// channel (filled from the aval pattern instead).
template <int E, int N>
struct Spread {
  static constexpr int kPixels = 16 / E;  // source pixels per 16 bytes
  int8_t mask[N][16];
  constexpr Spread() : mask{} {
    for (int j = 0; j < N; ++j)
      for (int i = 0; i < 16; ++i) {
        const int byte = 16 * j + i, elem = byte / E, pixel = elem / N, ch = elem % N;
        mask[j][i] = ch == 3 ? Z : int8_t(pixel * E + byte % E);
      }
  }
};
}  // namespace detail
#endif

// Gray sample to N channels; the fourth channel of four is the call's aval.
template <class T, int N>
struct GrayToColor {
  T aval;
  static constexpr int kLanes = 16 / int(sizeof(T));
  void pixel(T g, T* d) const {
    st(d, g);
    st(d + 1, g);
    st(d + 2, g);
    if constexpr (N == 4) st(d + 3, aval);
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
  // kLanes gray samples at s to kLanes pixels at d.
  void block(const T* s, T* d, __m128i alpha) const {
    static constexpr detail::Spread<int(sizeof(T)), N> kSpread{};
    const __m128i v = _mm_loadu_si128(reinterpret_cast<const __m128i*>(s));
    for (int j = 0; j < N; ++j) {
      const __m128i m = _mm_loadu_si128(reinterpret_cast<const __m128i*>(kSpread.mask[j]));
      _mm_storeu_si128(reinterpret_cast<__m128i*>(d) + j, _mm_or_si128(_mm_shuffle_epi8(v, m), alpha));
    }
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

// Row kernel of gray to colour: vector groups of 16 bytes of source, then single pixels.
template <class T, int N>
inline void grayToColorRow(const T* s, T* d, int width, const GrayToColor<T, N>& f) {
  int x = 0;
#if LUM_SIMD_SSE
  if (useVector()) {
    if (avx2::usable()) x = avx2::spread(s, d, width, f);
    const __m128i alpha = f.alphaPattern();
    for (; x + f.kLanes <= width; x += f.kLanes) f.block(s + x, d + N * x, alpha);
  }
#endif
  for (; x < width; ++x) f.pixel(ld(s + x), d + N * x);
}

// Luma of a packed YCbCr422 row: the first byte of every two-byte pixel. The
// block runs 16 pixels a step, then 8, then 4; pairs and a last pixel end the
// row, so odd widths are converted in full. Chroma bytes are never read.
struct LumaOf422 {
  static void pixel(const uint8_t* s, uint8_t* d) { *d = *s; }
#if LUM_SIMD_SSE
  static void block16(const uint8_t* s, uint8_t* d) {
    const __m128i m = _mm_set1_epi16(0x00FF);
    const __m128i a = _mm_and_si128(_mm_loadu_si128(reinterpret_cast<const __m128i*>(s)), m);
    const __m128i b = _mm_and_si128(_mm_loadu_si128(reinterpret_cast<const __m128i*>(s + 16)), m);
    _mm_storeu_si128(reinterpret_cast<__m128i*>(d), _mm_packus_epi16(a, b));
  }
  static void block8(const uint8_t* s, uint8_t* d) {
    const __m128i a = _mm_and_si128(_mm_loadu_si128(reinterpret_cast<const __m128i*>(s)), _mm_set1_epi16(0x00FF));
    _mm_storel_epi64(reinterpret_cast<__m128i*>(d), _mm_packus_epi16(a, a));
  }
#endif
  static void row(const uint8_t* s, uint8_t* d, int width) {
    int x = 0;
#if LUM_SIMD_SSE
    if (useVector()) {
      if (avx2::usable()) x = avx2::luma422(s, d, width);
      for (; x + 16 <= width; x += 16) block16(s + 2 * x, d + x);
      if (x + 8 <= width) {
        block8(s + 2 * x, d + x);
        x += 8;
      }
    }
#endif
    for (; x < width; ++x) pixel(s + 2 * x, d + x);
  }
};

}  // namespace gray
}  // namespace lum
