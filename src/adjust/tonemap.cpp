// Tone mapping: a one-channel float image to 8 bits by one global scale, 255 over
// the image's maximum (the low byte of the truncated product is kept) or 255 over
// twice its mean (the truncated product saturates to 0..255).
#include <cstdint>

#include "frame/check.h"
#include "frame/lanes.h"
#include "frame/rows.h"
#include "kernels/primitives.h"
#include "lumcc.h"

using namespace lum;

namespace {

// Smallest normal float: a maximum or twice a mean not above it sets the image to 0.
constexpr float kTinyMax = 1.1754944e-38f;
constexpr double kTinyMean = 1.1754943508222875e-38;

// How a truncated product becomes a byte.
enum class Byte { Low, Saturated };

// One sample: p = sample x scale in single precision, truncated toward zero (NaN and
// out of range give INT32_MIN, as the processor's conversion does), then the byte.
template <Byte B>
inline uint8_t toByte(float sample, float scale) {
  const int32_t i = lanes::emu::cvtTrunc(sample * scale);
  if constexpr (B == Byte::Low) return uint8_t(i);
  else return uint8_t(i < 0 ? 0 : (i > 255 ? 255 : i));
}

// Sixteen samples to sixteen bytes over lanes: the low byte by a mask, or the
// saturation by the signed 32-to-16 then unsigned 16-to-8 narrowing, which for
// truncated values equals the scalar clamp.
template <class O, Byte B>
inline typename O::V sixteen(const float* s, typename O::F scale) {
  typename O::V q[4];
  for (int i = 0; i < 4; ++i) {
    q[i] = O::cvttfi(O::mulf(O::loadf(s + 4 * i), scale));
    if constexpr (B == Byte::Low) q[i] = O::and_(q[i], O::set32(255));
  }
  return O::packus16(O::narrow(q[0], q[1]), O::narrow(q[2], q[3]));
}

// Vector path of one row: single samples up to a 16-byte aligned destination
// (rows of at least 16), then 16 samples a step with aligned stores, then singles.
template <class O, Byte B>
void rowLanes(const float* s, uint8_t* d, int w, float scale) {
  int x = 0;
  if (w >= 16)
    for (; x < w && !aligned16(d + x); ++x) d[x] = toByte<B>(loadAt(s + x), scale);
  const typename O::F k = O::setf(scale);
  for (; x + 16 <= w; x += 16) O::storeA(d + x, sixteen<O, B>(s + x, k));
  for (; x < w; ++x) d[x] = toByte<B>(loadAt(s + x), scale);
}

// Scalar path of one row: two samples read, then two bytes written; then one.
template <Byte B>
void rowPairs(const float* s, uint8_t* d, int w, float scale) {
  int x = 0;
  for (; x + 2 <= w; x += 2) {
    const float a = loadAt(s + x), b = loadAt(s + x + 1);
    d[x] = toByte<B>(a, scale);
    d[x + 1] = toByte<B>(b, scale);
  }
  if (x < w) d[x] = toByte<B>(loadAt(s + x), scale);
}

// Scales the image. The vector path needs W <= dstStep and a destination range
// (pDst to pDst + (H-1) dstStep + W - 1) clear of the first source row.
template <Byte B>
void scaleImage(const float* src, int srcStep, uint8_t* dst, int dstStep, LumSize roi, float scale) {
  const intptr_t dLo = reinterpret_cast<intptr_t>(dst);
  const intptr_t dHi = dLo + intptr_t(roi.height - 1) * dstStep + roi.width - 1;
  const intptr_t sLo = reinterpret_cast<intptr_t>(src);
  const intptr_t sHi = sLo + 4 * intptr_t(roi.width) - 1;
  const bool overlap = dLo <= sHi && sLo <= dHi;
  if (roi.width <= dstStep && !overlap) {
    lanes::with128([&](auto o) {
      for (int y = 0; y < roi.height; ++y)
        rowLanes<decltype(o), B>(rowAt(src, y, srcStep), rowAt(dst, y, dstStep), roi.width, scale);
    });
  } else {
    for (int y = 0; y < roi.height; ++y) rowPairs<B>(rowAt(src, y, srcStep), rowAt(dst, y, dstStep), roi.width, scale);
  }
}

}  // namespace

extern "C" {

LumStatus lumiToneMapLinear_32f8u_C1R(const Lum32f* pSrc, int srcStep, Lum8u* pDst, int dstStep, LumSize roi) {
  if (LumStatus st = check::nullThenSize(roi, pSrc, pDst)) return st;
  Lum32f m = 0;
  if (LumStatus st = lumiMax_32f_C1R(pSrc, srcStep, roi, &m)) return st;
  if (m < 0) return lumStatusNegativeMean;
  // Also a NaN maximum.
  if (!(m > kTinyMax)) return lumiSet_8u_C1R(0, pDst, dstStep, roi);
  scaleImage<Byte::Low>(pSrc, srcStep, pDst, dstStep, roi, 255.0f / m);
  return lumStatusOk;
}

LumStatus lumiToneMapMean_32f8u_C1R(const Lum32f* pSrc, int srcStep, Lum8u* pDst, int dstStep, LumSize roi) {
  if (LumStatus st = check::nullThenSize(roi, pSrc, pDst)) return st;
  Lum64f mean = 0;
  if (LumStatus st = lumiMean_32f_C1R(pSrc, srcStep, roi, &mean, 1)) return st;
  const double v = 2.0 * mean;
  if (v < 0) return lumStatusNegativeMean;
  // Also a NaN mean.
  if (!(v > kTinyMean)) {
    lumiSet_8u_C1R(0, pDst, dstStep, roi);
    return lumStatusOk;
  }
  scaleImage<Byte::Saturated>(pSrc, srcStep, pDst, dstStep, roi, float(255.0 / v));
  return lumStatusOk;
}

}  // extern "C"
