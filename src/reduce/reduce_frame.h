// The frame of the bit-depth reduction: the sample domains of the eight forms,
// the per-call quantiser constants, the scratch layout and the noise tables.
// Every dither kind is one kernel over these adaptors.
#pragma once

#include <cstddef>
#include <cstdint>
#include <cstring>
#include <type_traits>

#include "frame/lanes.h"
#include "frame/rows.h"
#include "lumcc.h"

namespace lum::reduce {

// x86 conversions of a float to int32: truncated, NaN and out of range giving INT32_MIN.
inline int32_t truncI(float v) { return v >= -2147483648.0f && v < 2147483648.0f ? int32_t(v) : INT32_MIN; }
inline int32_t sat16s(int32_t v) { return v < -32768 ? -32768 : (v > 32767 ? 32767 : v); }
inline int32_t clampI(int32_t v, int32_t hi) { return v < 0 ? 0 : (v > hi ? hi : v); }
// a + b and a - b wrapping as 32-bit lanes do.
inline int32_t addW(int32_t a, int32_t b) { return int32_t(uint32_t(a) + uint32_t(b)); }

// A form: source sample S, destination sample D, and what follows from them.
template <class S, class D>
struct Form {
  using Src = S;
  using Dst = D;
  static constexpr bool kFloatSrc = std::is_same_v<S, Lum32f>;
  static constexpr bool kSignedSrc = std::is_same_v<S, Lum16s>;
  static constexpr bool k8uSrc = std::is_same_v<S, Lum8u>;
  static constexpr bool k8Dst = std::is_same_v<D, Lum8u>;
  static constexpr int kMaxLevels = k8Dst ? 256 : 65536;
  // Top of the sample domain in which the dither kinds work.
  static constexpr float kTop = k8uSrc ? 255.0f : (kFloatSrc ? 1.0f : 65535.0f);
  // Largest output code before the signed shift.
  static constexpr int32_t kOutMax = k8Dst ? 255 : 65535;
  // The signed destination is the unsigned code moved down.
  static constexpr int32_t kBias = std::is_same_v<D, Lum16s> ? -32768 : 0;
  // 16-bit samples to 8-bit codes: the code is the domain value shifted right.
  static constexpr int kShift = (!k8uSrc && !kFloatSrc && k8Dst) ? 8 : 0;
  // Domain value to output code: 1 for integer sources, the code range for floats.
  static constexpr float kCodeScale = kFloatSrc ? (k8Dst ? 255.0f : 65535.0f) : 1.0f;

  // The sample in the sample domain (a signed source moved up by 32768).
  static float domain(S s) {
    if constexpr (kFloatSrc) return s;
    else if constexpr (kSignedSrc) return float(int32_t(s) + 32768);
    else return float(s);
  }
  // The source sample as an integer lane (floats go through domain()).
  static int32_t intLane(S s) { return kSignedSrc ? int32_t(s) + 32768 : int32_t(s); }
  // The distance between two levels in the sample domain.
  static float step(float L) {
    if constexpr (k8uSrc) return (65280.0f / L) * 0.00390625f;
    else if constexpr (kFloatSrc) return 1.0f / L;
    else return 65535.0f / L;
  }
  // The factor from a domain value to a level number.
  static float inv(float L) {
    if constexpr (k8uSrc) return L / 255.0f;
    else if constexpr (kFloatSrc) return L;
    else return L / 65535.0f;
  }
};

// The eight forms by name tag, source and destination sample, for the entry
// points and the explicit instantiations of each kind's kernels.
#define LUM_REDUCE_FORMS(X)                                                                  \
  X(8u, Lum8u, Lum8u) X(16u, Lum16u, Lum16u) X(16s, Lum16s, Lum16s) X(16u8u, Lum16u, Lum8u) \
      X(16s8u, Lum16s, Lum8u) X(32f8u, Lum32f, Lum8u) X(32f16u, Lum32f, Lum16u) X(32f16s, Lum32f, Lum16s)

// How a domain value q becomes a code: trunc(q * kCodeScale [+ 0.5f]), shifted,
// [clamped to 0..kOutMax], biased; the destination keeps the low bits.
struct Output {
  bool half = false;
  bool clamp = false;
};
template <class Fm>
inline typename Fm::Dst code(float q, Output o) {
  float v = q * Fm::kCodeScale;
  if (o.half) v = v + 0.5f;
  int32_t i = truncI(v) >> Fm::kShift;
  if (o.clamp) i = clampI(i, Fm::kOutMax);
  return typename Fm::Dst(addW(i, Fm::kBias));
}
// The same rule on lanes; the lanes hold the codes as 32-bit values.
template <class O, class Fm>
inline typename O::V codeLanes(typename O::F q, Output o) {
  typename O::F v = O::mulf(q, O::setf(Fm::kCodeScale));
  if (o.half) v = O::addf(v, O::setf(0.5f));
  typename O::V i = O::sra32(O::cvttfi(v), Fm::kShift);
  if (o.clamp) i = O::min32(O::max32(i, O::set32(0)), O::set32(Fm::kOutMax));
  return O::add32(i, O::set32(Fm::kBias));
}

// ---- sample adaptors between memory and float lanes
// Four samples p[0], p[stride], ... of one channel as domain values.
template <class O, class Fm>
inline typename O::F loadDomain(const typename Fm::Src* p, int stride) {
  if constexpr (Fm::kFloatSrc) {
    alignas(16) float t[4];
    for (int i = 0; i < 4; ++i) t[i] = loadAt(p + std::ptrdiff_t(i) * stride);
    return O::loadf(t);
  } else {
    alignas(16) int32_t t[4];
    for (int i = 0; i < 4; ++i) t[i] = Fm::intLane(loadAt(p + std::ptrdiff_t(i) * stride));
    return O::cvtif(O::load(t));
  }
}
// Four 32-bit code lanes to samples p[0], p[stride], ... (low bits kept).
template <class O, class D>
inline void storeCodes(D* p, int stride, typename O::V v) {
  alignas(16) int32_t t[4];
  O::store(t, v);
  for (int i = 0; i < 4; ++i) storeAt(p + std::ptrdiff_t(i) * stride, D(t[i]));
}

// ---- one call
// The arguments every kind receives; steps in bytes, as the caller gave them.
struct Call {
  const uint8_t* src;
  int srcStep;
  uint8_t* dst;
  int dstStep;
  LumSize roi;
  int pixelStride;  // samples between two pixels: 1, 3, 4
  int channels;     // channels changed: 1, 3, 3 (AC4), 4
  bool c4;          // the four-channel layout that changes alpha
  int noise;
  int levels;
  uint8_t* buffer;
};

// Row y of an image whose step is counted in whole samples of T (the dither
// kinds round a byte step down to a multiple of the sample size).
template <class T>
inline T* sampleRow(const uint8_t* base, int stepBytes, int y) {
  const int stepSamples = stepBytes >> (sizeof(T) == 1 ? 0 : (sizeof(T) == 2 ? 1 : 2));
  return const_cast<T*>(reinterpret_cast<const T*>(base)) + std::ptrdiff_t(y) * stepSamples;
}

// ---- scratch layout
// The work area: the first 64-byte boundary at or after pBuffer.
inline uint8_t* workArea(uint8_t* p) {
  return reinterpret_cast<uint8_t*>((reinterpret_cast<uintptr_t>(p) + 63) & ~uintptr_t(63));
}
constexpr std::ptrdiff_t kNoiseIndexAt = 4096, kState16At = 6144, kState32At = 6192;
// Error rows follow the noise tables; 4-byte alignment only, deliberately.
constexpr std::ptrdiff_t kErrorsAfterNoise = 6244;
constexpr int kNoiseLen = 1024;

// The two noise tables, built at the start of every call with noise.
struct Noise {
  const float* threshold = nullptr;
  const int16_t* index = nullptr;
  // The term of pixel column x in region row y; the same for every channel.
  float at(int x, int y) const { return threshold[(index[x & 1023] + 2 * y + x) & 1023]; }
};
// Builds both tables in the work area: index in 0..1024, thresholds in [low, high).
Noise buildNoise(uint8_t* work, float low, float high);

// ---- kinds, one kernel each over the forms (explicitly instantiated in their files)
template <class Fm>
void plainQuantise(const Call& c);
template <class Fm>
LumStatus orderedDither(const Call& c);
template <class Fm>
LumStatus errorDiffusion(const Call& c, int kind);

}  // namespace lum::reduce
