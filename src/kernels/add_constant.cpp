// pDst[i] = pSrc[i] + val, or pSrc[i] - val, in single precision. One operation
// per element, so the block structure never changes a result; a val of 0 (of
// either sign) is not an operation at all but a copy, which keeps a signalling
// NaN or a negative zero of the source as it is.
#include "frame/check.h"
#include "frame/simd.h"
#include "kernels/primitives.h"

using namespace lum;

namespace {

struct AddForm {
  static float pixel(float s, float v) { return s + v; }
#if LUM_SIMD_SSE
  static __m128 block(__m128 s, __m128 v) { return _mm_add_ps(s, v); }
#endif
};

struct SubForm {
  static float pixel(float s, float v) { return s - v; }
#if LUM_SIMD_SSE
  static __m128 block(__m128 s, __m128 v) { return _mm_sub_ps(s, v); }
#endif
};

// Eight elements by the form: two vectors, or the scalar twin lane by lane.
template <class Form>
inline void eight(const float* s, float v, float* d, bool vec) {
#if LUM_SIMD_SSE
  if (vec) {
    const __m128 vv = _mm_set1_ps(v);
    _mm_storeu_ps(d, Form::block(_mm_loadu_ps(s), vv));
    _mm_storeu_ps(d + 4, Form::block(_mm_loadu_ps(s + 4), vv));
    return;
  }
#endif
  (void)vec;
  for (int k = 0; k < 8; ++k) d[k] = Form::pixel(s[k], v);
}

// ownsAddC_32f / ownsSubC_32f: from 11 elements on, a word-aligned destination
// is peeled to 16-byte alignment; then 8 elements a step, then singles.
template <class Form>
void arithConst(const float* s, float v, float* d, int len) {
  int i = 0;
  if (len >= 11) {
    if ((reinterpret_cast<uintptr_t>(d) & 3) == 0)
      for (; i < len && (reinterpret_cast<uintptr_t>(d + i) & 15); ++i) d[i] = Form::pixel(s[i], v);
    const bool vec = useVector();
    for (; i + 8 <= len; i += 8) eight<Form>(s + i, v, d + i, vec);
  }
  for (; i < len; ++i) d[i] = Form::pixel(s[i], v);
}

// The copy of val 0 makes its own checks, so its status is the one returned.
template <void (*Kernel)(const float*, float, float*, int)>
LumStatus arithConstEntry(const Lum32f* pSrc, Lum32f val, Lum32f* pDst, int len) {
  if (val == 0.0f) return lumsCopy_32f(pSrc, pDst, len);
  if (check::anyNull(pSrc, pDst)) return lumStatusNullPointer;
  if (len < 1) return lumStatusBadSize;
  Kernel(pSrc, val, pDst, len);
  return lumStatusOk;
}

}  // namespace

namespace lum::kern {
void ownsAddC_32f(const float* s, float v, float* d, int len) { arithConst<AddForm>(s, v, d, len); }
void ownsSubC_32f(const float* s, float v, float* d, int len) { arithConst<SubForm>(s, v, d, len); }
}  // namespace lum::kern

LumStatus lumsAddC_32f(const Lum32f* pSrc, Lum32f val, Lum32f* pDst, int len) {
  return arithConstEntry<kern::ownsAddC_32f>(pSrc, val, pDst, len);
}

LumStatus lumsSubC_32f(const Lum32f* pSrc, Lum32f val, Lum32f* pDst, int len) {
  return arithConstEntry<kern::ownsSubC_32f>(pSrc, val, pDst, len);
}
