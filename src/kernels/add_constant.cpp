// pDst[i] = pSrc[i] + val, or pSrc[i] - val, in single precision. One operation
// per element, so the block structure never changes a result; a val of 0 (of
// either sign) is not an operation at all but a copy, which keeps a signalling
// NaN or a negative zero of the source as it is.
#include "frame/check.h"
#include "frame/lanes.h"
#include "frame/rows.h"
#include "kernels/primitives.h"

using namespace lum;

namespace {

struct AddForm {
  static float pixel(float s, float v) { return s + v; }
  template <class O, class F = typename O::F>
  static F vblock(F s, F v) { return O::addf(s, v); }
};

struct SubForm {
  static float pixel(float s, float v) { return s - v; }
  template <class O, class F = typename O::F>
  static F vblock(F s, F v) { return O::subf(s, v); }
};

// One element by the form's scalar rule, at any address.
template <class Form>
inline void one(const float* s, float v, float* d) {
  storeAt(d, Form::pixel(loadAt(s), v));
}

// ownsAddC_32f / ownsSubC_32f: from 11 elements on, a word-aligned destination
// is peeled to 16-byte alignment; then 8 elements a step (two vectors), then singles.
template <class Form, class O>
void arithConst(const float* s, float v, float* d, int len) {
  int i = 0;
  if (len >= 11) {
    if ((reinterpret_cast<uintptr_t>(d) & 3) == 0)
      for (; i < len && (reinterpret_cast<uintptr_t>(d + i) & 15); ++i) one<Form>(s + i, v, d + i);
    const auto vv = O::setf(v);
    for (; i + 8 <= len; i += 8) {
      O::storef(d + i, Form::template vblock<O>(O::loadf(s + i), vv));
      O::storef(d + i + 4, Form::template vblock<O>(O::loadf(s + i + 4), vv));
    }
  }
  for (; i < len; ++i) one<Form>(s + i, v, d + i);
}

template <class Form>
void arithConst(const float* s, float v, float* d, int len) {
  lanes::with128([&](auto lanes) { arithConst<Form, decltype(lanes)>(s, v, d, len); });
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
