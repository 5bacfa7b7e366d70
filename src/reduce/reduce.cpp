// Public entry points of the bit-depth reduction: checks in the family's order,
// the scratch size query, the noise tables, and the dispatch on the dither kind.
#include <climits>

#include "frame/check.h"
#include "reduce/rand_uniform.h"
#include "reduce/reduce_frame.h"

namespace lum::reduce {

Noise buildNoise(uint8_t* work, float low, float high) {
  auto* threshold = reinterpret_cast<float*>(work);
  auto* index = reinterpret_cast<int16_t*>(work + kNoiseIndexAt);
  auto* s16 = reinterpret_cast<LumRandState16s*>(work + kState16At);
  auto* s32 = reinterpret_cast<LumRandState32f*>(work + kState32At);
  // Both seeds are 0: a call's noise depends on nothing but its arguments.
  lumsRandUniformInit_16s(s16, 0, kNoiseLen, 0);
  lumsRandUniform_16s(index, kNoiseLen, s16);
  lumsRandUniformInit_32f(s32, low, high, 0);
  lumsRandUniform_32f(threshold, kNoiseLen, s32);
  return Noise{threshold, index};
}

namespace {

// The layouts' codes as the kinds see them.
struct Layout {
  int stride, channels;
  bool c4;
};
constexpr Layout kC1{1, 1, false}, kC3{3, 3, false}, kC4{4, 4, true}, kAC4{4, 3, false};

template <class Fm>
LumStatus reduceBits(const typename Fm::Src* pSrc, int srcStep, typename Fm::Dst* pDst, int dstStep, LumSize roi,
                     int noise, LumDitherKind kind, int levels, Lum8u* pBuffer, Layout lay) {
  if (LumStatus s = check::reduceBits(roi, noise, levels, Fm::kMaxLevels, pSrc, pDst)) return s;
  const Call c{reinterpret_cast<const uint8_t*>(pSrc), srcStep, reinterpret_cast<uint8_t*>(pDst), dstStep, roi,
               lay.stride, lay.channels, lay.c4, noise, levels, pBuffer};
  switch (kind) {
    case lumDitherOff:
      plainQuantise<Fm>(c);
      return lumStatusOk;
    case lumDitherOrdered:
      return orderedDither<Fm>(c);
    case lumDitherFloydSteinberg:
    case lumDitherJarvisJudiceNinke:
    case lumDitherStucki:
      return errorDiffusion<Fm>(c, int(kind));
    default:
      return lumStatusBadDitherKind;
  }
}

}  // namespace
}  // namespace lum::reduce

using namespace lum::reduce;

extern "C" {

LUMAPI LumStatus lumiReduceBitsGetBufferSize(int layout, LumSize roiSize, int noise, LumDitherKind ditherKind,
                                             int* pBufferSize) {
  if (pBufferSize == nullptr) return lumStatusNullPointer;
  if (roiSize.width < 1) return lumStatusBadSize;  // the height is not looked at
  if (layout != 1 && layout != 3 && layout != 4 && layout != 9) return lumStatusBadLayout;
  if (unsigned(noise) > 100u) return lumStatusNoiseOutOfRange;
  if (ditherKind == lumDitherOff) {
    *pBufferSize = 0;
    return lumStatusOk;
  }
  long long s = 0;
  switch (ditherKind) {
    case lumDitherOrdered: s = 0; break;
    case lumDitherFloydSteinberg: s = 8LL * roiSize.width + 16; break;
    case lumDitherJarvisJudiceNinke:
    case lumDitherStucki: s = 12LL * roiSize.width + 48; break;
    default: return lumStatusBadDitherKind;
  }
  // Noise tables and both generator records, rounded up to 16 bytes each.
  if (noise > 0) s += 6144 + 48 + 64;
  const long long total = s > 0 ? s + 64 : 0;
  // A width whose buffer size an int cannot hold is refused as a bad size.
  if (total > INT_MAX) return lumStatusBadSize;
  *pBufferSize = int(total);
  return lumStatusOk;
}

#define LUM_REDUCE_ENTRY(tag, S, D, lay)                                                                       \
  LUMAPI LumStatus lumiReduceBits_##tag##_##lay##R(const S* pSrc, int srcStep, D* pDst, int dstStep,          \
                                                    LumSize roiSize, int noise, LumDitherKind ditherKind,      \
                                                    int levels, Lum8u* pBuffer) {                              \
    return reduceBits<Form<S, D>>(pSrc, srcStep, pDst, dstStep, roiSize, noise, ditherKind, levels, pBuffer, \
                                  k##lay);                                                                     \
  }
#define LUM_REDUCE_LAYOUTS(tag, S, D) \
  LUM_REDUCE_ENTRY(tag, S, D, C1)     \
  LUM_REDUCE_ENTRY(tag, S, D, C3) LUM_REDUCE_ENTRY(tag, S, D, C4) LUM_REDUCE_ENTRY(tag, S, D, AC4)

LUM_REDUCE_FORMS(LUM_REDUCE_LAYOUTS)

}  // extern "C"
