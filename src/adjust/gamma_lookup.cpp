// Gamma on 8u and 16u: every colour sample replaced by its table element. No
// other arithmetic, so in-place and copying forms give the same samples; alpha
// of the AC4 forms is neither read nor written.
#include <cstdint>
#include <cstring>

#include "adjust/gamma_tables.h"
#include "frame/check.h"
#include "frame/rows.h"

using namespace lum;

namespace {

// Samples a row of `count` pixels touches: the three colour samples of each
// group of Stride (3: a C3 row as 3 x width samples; 4: AC4, alpha skipped; 1: a plane).
template <class T, int Stride>
inline void lookupRow(const T* tab, const T* s, T* d, int count) {
  if constexpr (Stride == 4) {
    for (int i = 0; i < count; ++i)
      for (int c = 0; c < 3; ++c) storeAt(d + 4 * i + c, tab[loadAt(s + 4 * i + c)]);
  } else {
    // Eight bytes of samples read and written at once (little-endian), each sample looked up by itself.
    constexpr int kPer = int(8 / sizeof(T));
    constexpr int kBits = int(8 * sizeof(T));
    const int n = count * Stride;
    int i = 0;
    for (; i + kPer <= n; i += kPer) {
      uint64_t in, out = 0;
      std::memcpy(&in, s + i, 8);
      for (int k = 0; k < kPer; ++k) out |= uint64_t(tab[T(in >> (kBits * k))]) << (kBits * k);
      std::memcpy(d + i, &out, 8);
    }
    for (; i < n; ++i) storeAt(d + i, tab[loadAt(s + i)]);
  }
}

template <class T, int Stride>
void lookupImage(const T* tab, const T* src, int srcStep, T* dst, int dstStep, LumSize roi) {
  for (int y = 0; y < roi.height; ++y) lookupRow<T, Stride>(tab, rowAt(src, y, srcStep), rowAt(dst, y, dstStep), roi.width);
}

// C3 and AC4, copying: null, size, step.
template <class T, int Stride>
LumStatus packedCopy(const T* tab, const T* pSrc, int srcStep, T* pDst, int dstStep, LumSize roi) {
  if (LumStatus st = check::nullSizeStep(check::anyNull(pSrc, pDst), roi, {srcStep, dstStep})) return st;
  lookupImage<T, Stride>(tab, pSrc, srcStep, pDst, dstStep, roi);
  return lumStatusOk;
}

// C3 and AC4, in place.
template <class T, int Stride>
LumStatus packedInPlace(const T* tab, T* p, int step, LumSize roi) {
  if (LumStatus st = check::nullSizeStep(check::anyNull(p), roi, {step})) return st;
  lookupImage<T, Stride>(tab, p, step, p, step, roi);
  return lumStatusOk;
}

// P3, copying: the arrays and their plane pointers, size, step.
template <class T>
LumStatus planarCopy(const T* tab, const T* const* pSrc, int srcStep, T* const* pDst, int dstStep, LumSize roi) {
  const bool null = check::anyNull(pSrc, pDst) || check::anyPlaneNull(pSrc, 3) || check::anyPlaneNull(pDst, 3);
  if (LumStatus st = check::nullSizeStep(null, roi, {srcStep, dstStep})) return st;
  for (int k = 0; k < 3; ++k) lookupImage<T, 1>(tab, pSrc[k], srcStep, pDst[k], dstStep, roi);
  return lumStatusOk;
}

// P3, in place.
template <class T>
LumStatus planarInPlace(const T* tab, T* const* p, int step, LumSize roi) {
  if (LumStatus st = check::nullSizeStep(check::anyNull(p) || check::anyPlaneNull(p, 3), roi, {step})) return st;
  for (int k = 0; k < 3; ++k) lookupImage<T, 1>(tab, p[k], step, p[k], step, roi);
  return lumStatusOk;
}

}  // namespace

using gamma::tableFwd16u;
using gamma::tableFwd8u;
using gamma::tableInv16u;
using gamma::tableInv8u;

extern "C" {

LumStatus lumiGammaFwd_8u_C3R(const Lum8u* pSrc, int srcStep, Lum8u* pDst, int dstStep, LumSize roi) {
  return packedCopy<Lum8u, 3>(tableFwd8u, pSrc, srcStep, pDst, dstStep, roi);
}
LumStatus lumiGammaFwd_8u_C3IR(Lum8u* pSrcDst, int srcDstStep, LumSize roi) {
  return packedInPlace<Lum8u, 3>(tableFwd8u, pSrcDst, srcDstStep, roi);
}
LumStatus lumiGammaFwd_8u_AC4R(const Lum8u* pSrc, int srcStep, Lum8u* pDst, int dstStep, LumSize roi) {
  return packedCopy<Lum8u, 4>(tableFwd8u, pSrc, srcStep, pDst, dstStep, roi);
}
LumStatus lumiGammaFwd_8u_AC4IR(Lum8u* pSrcDst, int srcDstStep, LumSize roi) {
  return packedInPlace<Lum8u, 4>(tableFwd8u, pSrcDst, srcDstStep, roi);
}
LumStatus lumiGammaFwd_8u_P3R(const Lum8u* const pSrc[3], int srcStep, Lum8u* const pDst[3], int dstStep, LumSize roi) {
  return planarCopy<Lum8u>(tableFwd8u, pSrc, srcStep, pDst, dstStep, roi);
}
LumStatus lumiGammaFwd_8u_IP3R(Lum8u* const pSrcDst[3], int srcDstStep, LumSize roi) {
  return planarInPlace<Lum8u>(tableFwd8u, pSrcDst, srcDstStep, roi);
}
LumStatus lumiGammaFwd_16u_C3R(const Lum16u* pSrc, int srcStep, Lum16u* pDst, int dstStep, LumSize roi) {
  return packedCopy<Lum16u, 3>(tableFwd16u, pSrc, srcStep, pDst, dstStep, roi);
}
LumStatus lumiGammaFwd_16u_C3IR(Lum16u* pSrcDst, int srcDstStep, LumSize roi) {
  return packedInPlace<Lum16u, 3>(tableFwd16u, pSrcDst, srcDstStep, roi);
}
LumStatus lumiGammaFwd_16u_AC4R(const Lum16u* pSrc, int srcStep, Lum16u* pDst, int dstStep, LumSize roi) {
  return packedCopy<Lum16u, 4>(tableFwd16u, pSrc, srcStep, pDst, dstStep, roi);
}
LumStatus lumiGammaFwd_16u_AC4IR(Lum16u* pSrcDst, int srcDstStep, LumSize roi) {
  return packedInPlace<Lum16u, 4>(tableFwd16u, pSrcDst, srcDstStep, roi);
}
LumStatus lumiGammaFwd_16u_P3R(const Lum16u* const pSrc[3], int srcStep, Lum16u* const pDst[3], int dstStep, LumSize roi) {
  return planarCopy<Lum16u>(tableFwd16u, pSrc, srcStep, pDst, dstStep, roi);
}
LumStatus lumiGammaFwd_16u_IP3R(Lum16u* const pSrcDst[3], int srcDstStep, LumSize roi) {
  return planarInPlace<Lum16u>(tableFwd16u, pSrcDst, srcDstStep, roi);
}

LumStatus lumiGammaInv_8u_C3R(const Lum8u* pSrc, int srcStep, Lum8u* pDst, int dstStep, LumSize roi) {
  return packedCopy<Lum8u, 3>(tableInv8u, pSrc, srcStep, pDst, dstStep, roi);
}
LumStatus lumiGammaInv_8u_C3IR(Lum8u* pSrcDst, int srcDstStep, LumSize roi) {
  return packedInPlace<Lum8u, 3>(tableInv8u, pSrcDst, srcDstStep, roi);
}
LumStatus lumiGammaInv_8u_AC4R(const Lum8u* pSrc, int srcStep, Lum8u* pDst, int dstStep, LumSize roi) {
  return packedCopy<Lum8u, 4>(tableInv8u, pSrc, srcStep, pDst, dstStep, roi);
}
LumStatus lumiGammaInv_8u_AC4IR(Lum8u* pSrcDst, int srcDstStep, LumSize roi) {
  return packedInPlace<Lum8u, 4>(tableInv8u, pSrcDst, srcDstStep, roi);
}
LumStatus lumiGammaInv_8u_P3R(const Lum8u* const pSrc[3], int srcStep, Lum8u* const pDst[3], int dstStep, LumSize roi) {
  return planarCopy<Lum8u>(tableInv8u, pSrc, srcStep, pDst, dstStep, roi);
}
LumStatus lumiGammaInv_8u_IP3R(Lum8u* const pSrcDst[3], int srcDstStep, LumSize roi) {
  return planarInPlace<Lum8u>(tableInv8u, pSrcDst, srcDstStep, roi);
}
LumStatus lumiGammaInv_16u_C3R(const Lum16u* pSrc, int srcStep, Lum16u* pDst, int dstStep, LumSize roi) {
  return packedCopy<Lum16u, 3>(tableInv16u, pSrc, srcStep, pDst, dstStep, roi);
}
LumStatus lumiGammaInv_16u_C3IR(Lum16u* pSrcDst, int srcDstStep, LumSize roi) {
  return packedInPlace<Lum16u, 3>(tableInv16u, pSrcDst, srcDstStep, roi);
}
LumStatus lumiGammaInv_16u_AC4R(const Lum16u* pSrc, int srcStep, Lum16u* pDst, int dstStep, LumSize roi) {
  return packedCopy<Lum16u, 4>(tableInv16u, pSrc, srcStep, pDst, dstStep, roi);
}
LumStatus lumiGammaInv_16u_AC4IR(Lum16u* pSrcDst, int srcDstStep, LumSize roi) {
  return packedInPlace<Lum16u, 4>(tableInv16u, pSrcDst, srcDstStep, roi);
}
LumStatus lumiGammaInv_16u_P3R(const Lum16u* const pSrc[3], int srcStep, Lum16u* const pDst[3], int dstStep, LumSize roi) {
  return planarCopy<Lum16u>(tableInv16u, pSrc, srcStep, pDst, dstStep, roi);
}
LumStatus lumiGammaInv_16u_IP3R(Lum16u* const pSrcDst[3], int srcDstStep, LumSize roi) {
  return planarInPlace<Lum16u>(tableInv16u, pSrcDst, srcDstStep, roi);
}

}  // extern "C"

// ---- forward gamma then RGB to CbYCr 4:2:2 -----------------------------------
namespace {

inline uint8_t sat8(int v) { return uint8_t(v < 0 ? 0 : (v > 255 ? 255 : v)); }

// One row: each sample through the forward table, then Cb Y0 Cr Y1 a pair. Luma
// per pixel at 2^-15; chroma from the pair's sums, the half coefficients at 2^-14
// (the pair mean of the other RGB to 4:2:2 conversions), offset 128.5 as the
// luma's 0x84000 is 16.5. A last odd pixel writes Cb and Y at 2^-16, Cb as the
// low byte of its sum.
void gammaCbYCr422Row(const Lum8u* s, Lum8u* d, int w) {
  const Lum8u* t = gamma::tableFwd8u;
  int x = 0;
  for (; x + 2 <= w; x += 2, s += 6, d += 4) {
    const int r0 = t[s[0]], g0 = t[s[1]], b0 = t[s[2]], r1 = t[s[3]], g1 = t[s[4]], b1 = t[s[5]];
    const int sR = r0 + r1, sG = g0 + g1, sB = b0 + b1;
    d[0] = sat8((-1213 * sR - 2385 * sG + 3596 * sB + 0x202000) >> 14);
    d[1] = sat8((8422 * r0 + 16515 * g0 + 3212 * b0 + 0x84000) >> 15);
    d[2] = sat8((3596 * sR - 3015 * sG - 582 * sB + 0x202000) >> 14);
    d[3] = sat8((8422 * r1 + 16515 * g1 + 3212 * b1 + 0x84000) >> 15);
  }
  if (x < w) {
    const int r = t[s[0]], g = t[s[1]], b = t[s[2]];
    d[0] = uint8_t((-9699 * r - 19071 * g + 28770 * b - 0x7F8000) >> 16);
    d[1] = uint8_t((16843 * r + 33030 * g + 6423 * b + 0x108000) >> 16);
  }
}

}  // namespace

extern "C" {

// Checks as the RGB to 4:2:2 conversions: the pointers, then the size; steps unchecked.
LumStatus lumiRGBToCbYCr422Gamma_8u_C3C2R(const Lum8u* pSrc, int srcStep, Lum8u* pDst, int dstStep, LumSize roi) {
  if (LumStatus st = check::nullThenSize(roi, pSrc, pDst)) return st;
  for (int y = 0; y < roi.height; ++y) gammaCbYCr422Row(rowAt(pSrc, y, srcStep), rowAt(pDst, y, dstStep), roi.width);
  return lumStatusOk;
}

}  // extern "C"
