// Internal row primitives: copy, set, reductions and constant arithmetic over
// rows of images and one-dimensional arrays. None is exported; other families
// call them for their plain moves.
#pragma once

#include <cstddef>
#include <cstdint>

#include "lumcc.h"

// Copies a region of bytes row by row (streaming stores on large images).
LumStatus lumiCopy_8u_C1R(const Lum8u* pSrc, int srcStep, Lum8u* pDst, int dstStep, LumSize roiSize);
// Long-size form of the region copy.
LumStatus lumiCopy_8u_C1R_L(const Lum8u* pSrc, LumLong srcStep, Lum8u* pDst, LumLong dstStep, LumSizeL roiSize);
// Fills a region with one byte value.
LumStatus lumiSet_8u_C1R(Lum8u value, Lum8u* pDst, int dstStep, LumSize roiSize);
// Largest sample of a float region.
LumStatus lumiMax_32f_C1R(const Lum32f* pSrc, int srcStep, LumSize roiSize, Lum32f* pMax);
// Sum of a float region; hint 2 sums in double precision, any other value in single
// precision per row with an extended accumulator over rows.
LumStatus lumiSum_32f_C1R(const Lum32f* pSrc, int srcStep, LumSize roiSize, Lum64f* pSum, int hint);
// Mean of a float region through the sum of the same hint.
LumStatus lumiMean_32f_C1R(const Lum32f* pSrc, int srcStep, LumSize roiSize, Lum64f* pMean, int hint);
// pDst[i] = pSrc[i] + val, or - val.
LumStatus lumsAddC_32f(const Lum32f* pSrc, Lum32f val, Lum32f* pDst, int len);
LumStatus lumsSubC_32f(const Lum32f* pSrc, Lum32f val, Lum32f* pDst, int len);
// Fills len floats.
LumStatus lumsSet_32f(Lum32f val, Lum32f* pDst, int len);
// Copies len elements.
LumStatus lumsCopy_8u(const Lum8u* pSrc, Lum8u* pDst, int len);
LumStatus lumsCopy_32f(const Lum32f* pSrc, Lum32f* pDst, int len);
LumStatus lumsCopy_32s(const Lum32s* pSrc, Lum32s* pDst, int len);

namespace lum {
// Row copy of the chroma-layout kernels: len bytes, streaming stores when asked
// and when the two streams do not collide. Results never depend on the flag.
void ownccCopy_8u_C1_W7(const Lum8u* pSrc, Lum8u* pDst, int len, bool streaming);
}  // namespace lum

#include "kernels/cache_probe.h"

// The kernels under the entries, with their path chosen by the caller (tests
// drive each path directly; the entries choose by the size rules).
namespace lum::kern {
// Region copy by rows, or as one merged row; streaming rows end with one fence.
void owniCopy8uas(const uint8_t* pSrc, int srcStep, uint8_t* pDst, int dstStep, int width, int height,
                  RegionCopyPlan plan);
// Array copy of n bytes; the first form asks bytesCopyStreams for the path.
void ownsCopy_8u(const uint8_t* pSrc, uint8_t* pDst, size_t n);
void ownsCopy_8u(const uint8_t* pSrc, uint8_t* pDst, size_t n, bool streaming);
// One row of n bytes set to value.
void owniSet_8u_C1_W7(uint8_t* pDst, size_t n, uint8_t value, bool streaming);
// n 32-bit words set to w; the first form asks wordsSetStreams for the path.
void ownsSet_32s(uint32_t* pDst, size_t n, uint32_t w);
void ownsSet_32s(uint32_t* pDst, size_t n, uint32_t w, bool streaming);
// pDst[i] = pSrc[i] + v, or - v, for len >= 1 elements.
void ownsAddC_32f(const float* pSrc, float v, float* pDst, int len);
void ownsSubC_32f(const float* pSrc, float v, float* pDst, int len);
// Maximum over a region of at least one sample.
float ownpi_Max_32f_C1R(const float* pSrc, int srcStep, int width, int height);
// Single-precision rows into the extended accumulator (every hint but 2).
double ownpi_Sum_32f_C1R(const float* pSrc, int srcStep, int width, int height);
}  // namespace lum::kern
