// Gamma on 32f over the caller's range vMin..vMax, R = vMax - vMin. Rows go in
// chunks of 384 floats: the power of the whole chunk first (one call of the
// power kernel), then the per-element selection, 4 floats a step. C3 and P3
// take vMin off the whole row first and add it back last; AC4 folds both into
// their gather and selection. The two groups treat R differently on purpose:
// C3/P3 forward raise the unscaled t and test t x R, C3/P3 inverse leave the
// power unscaled; only AC4 scales properly. No clamp: a t below 0 on the power
// branch gives NaN.
#include <algorithm>

#include "frame/check.h"
#include "frame/coeffs.h"
#include "frame/lanes.h"
#include "frame/rows.h"
#include "kernels/primitives.h"
#include "vecmath/powx.h"

using namespace lum;
namespace g = lum::coef::gamma709;

namespace {

constexpr int kChunk = 384;         // floats per power call
constexpr int kChunkPixels = kChunk / 3;  // AC4 pixels per gathered chunk

// Per-call constants: the range and its reciprocal in single and double precision.
struct Range {
  float vMin, r, invR;
  double invRd;
  Range(float lo, float hi) : vMin(lo), r(hi - lo), invR(1.0f / r), invRd(1.0 / double(r)) {}
};

// ---- elementwise forms: pixel() the rule, vblock<O>() the same lanes

// Forward C3/P3 selection of t and p = t^0.45: 4.5 t if t x R < 0.018, else (1.099 p - 0.099) x R.
struct FwdSelect {
  static float pixel(float t, float p, const Range& c) {
    return t * c.r < g::kFwdBreak ? g::kFwdSlope * t : (g::kFwdGain * p - g::kFwdOffset) * c.r;
  }
  template <class O, class F = typename O::F>
  static F vblock(F t, F p, const Range& c) {
    const F r = O::setf(c.r);
    const F lin = O::mulf(O::setf(g::kFwdSlope), t);
    const F pw = O::mulf(O::subf(O::mulf(O::setf(g::kFwdGain), p), O::setf(g::kFwdOffset)), r);
    return O::selectf(O::cmpltf(O::mulf(t, r), O::setf(g::kFwdBreak)), lin, pw);
  }
};

// n = t x (1 / R) with 1 / R in single precision (C3).
struct NSingle {
  static float pixel(float t, const Range& c) { return t * c.invR; }
  template <class O, class F = typename O::F>
  static F vblock(F t, const Range& c) { return O::mulf(t, O::setf(c.invR)); }
};
// n = t x (1 / R) multiplied in double with 1 / R in double, rounded to float (P3).
struct NDouble {
  static float pixel(float t, const Range& c) { return float(double(t) * c.invRd); }
  template <class O, class F = typename O::F>
  static F vblock(F t, const Range& c) {
    const auto k = O::setd(c.invRd);
    return O::cvtdf(O::muld(O::cvtfdLo(t), k), O::muld(O::cvtfdHi(t), k));
  }
};

// Inverse base (n + 0.099) x 0.9099181.
template <class N>
struct InvBase {
  static float pixel(float t, float, const Range& c) { return (N::pixel(t, c) + g::kInvOffset) * g::kInvGain; }
  template <class O, class F = typename O::F>
  static F vblock(F t, F, const Range& c) {
    return O::mulf(O::addf(N::template vblock<O>(t, c), O::setf(g::kInvOffset)), O::setf(g::kInvGain));
  }
};

// Inverse C3/P3 selection: t x 0.22222222 if n < 0.0812, else p unscaled.
template <class N>
struct InvSelect {
  static float pixel(float t, float p, const Range& c) { return N::pixel(t, c) < g::kInvBreak ? t * g::kInvSlope : p; }
  template <class O, class F = typename O::F>
  static F vblock(F t, F p, const Range& c) {
    return O::selectf(O::cmpltf(N::template vblock<O>(t, c), O::setf(g::kInvBreak)), O::mulf(t, O::setf(g::kInvSlope)), p);
  }
};

// out[i] = Form(a[i], b[i]): 4 floats a step, then singles. Rows are at any
// address; every element has its own arithmetic, so the split changes nothing.
template <class Form, class O>
void mapRow(const float* a, const float* b, float* out, int n, const Range& c) {
  constexpr int L = int(sizeof(typename O::F) / sizeof(float));
  int i = 0;
  for (; i + L <= n; i += L) O::storef(out + i, Form::template vblock<O>(O::loadf(a + i), O::loadf(b + i), c));
  for (; i < n; ++i) storeAt(out + i, Form::pixel(loadAt(a + i), loadAt(b + i), c));
}
template <class Form>
void mapRow(const float* a, const float* b, float* out, int n, const Range& c) {
  lanes::with128([&](auto o) { mapRow<Form, decltype(o)>(a, b, out, n, c); });
}

// ---- C3 and P3: a row of n floats, t = x - vMin over the whole row first

// Forward chunk of t in w: p into the stack buffer, the selection back into w.
struct FwdChunk {
  static void run(float* w, int n, const Range& c) {
    alignas(16) float p[kChunk];
    lumsPowx_32f_A21(w, g::kFwdPower, p, n);
    mapRow<FwdSelect>(w, p, w, n, c);
  }
};
// Inverse chunk of t in w: the base into the buffer, its power in place, the selection into w.
template <class N>
struct InvChunk {
  static void run(float* w, int n, const Range& c) {
    alignas(16) float p[kChunk];
    mapRow<InvBase<N>>(w, w, p, n, c);
    lumsPowx_32f_A21(p, g::kInvPower, p, n);
    mapRow<InvSelect<N>>(w, p, w, n, c);
  }
};

// One row: src (or the row itself) minus vMin into w, the chunks, plus vMin.
template <class Chunk>
void runRow(const float* src, float* w, int n, const Range& c) {
  lumsSubC_32f(src, c.vMin, w, n);
  for (int i = 0; i < n; i += kChunk) Chunk::run(w + i, std::min(kChunk, n - i), c);
  lumsAddC_32f(w, c.vMin, w, n);
}

template <class Chunk>
void runImage(const float* src, int srcStep, float* dst, int dstStep, int n, int height, const Range& c) {
  for (int y = 0; y < height; ++y) runRow<Chunk>(rowAt(src, y, srcStep), rowAt(dst, y, dstStep), n, c);
}

// ---- AC4: 128 pixels gathered, alpha skipped

// Forward: n = (x - vMin) x (1 / R) gathered; y = 4.5 (x - vMin) if n < 0.018,
// else (1.099 p - 0.099) x R; result y + vMin.
struct FwdAC4 {
  static float gather(float x, const Range& c) { return (x - c.vMin) * c.invR; }
  static constexpr float kPower = g::kFwdPower;
  static float select(float x, float p, const Range& c) {
    const float t = x - c.vMin;
    const float y = (t * c.invR) < g::kFwdBreak ? g::kFwdSlope * t : (g::kFwdGain * p - g::kFwdOffset) * c.r;
    return y + c.vMin;
  }
};
// Inverse: n and the base in double precision; y = t x 0.22222222 if n < 0.0812,
// else p x R; result y + vMin.
struct InvAC4 {
  static double n(float x, const Range& c) { return double(x - c.vMin) * c.invRd; }
  static float gather(float x, const Range& c) { return float((n(x, c) + g::kInvOffsetD) * g::kInvGainD); }
  static constexpr float kPower = g::kInvPower;
  static float select(float x, float p, const Range& c) {
    const float y = n(x, c) < g::kInvBreakD ? (x - c.vMin) * g::kInvSlope : p * c.r;
    return y + c.vMin;
  }
};

template <class Form>
void runRowAC4(const float* s, float* d, int width, const Range& c) {
  alignas(16) float buf[kChunk];
  for (int x0 = 0; x0 < width; x0 += kChunkPixels) {
    const int np = std::min(kChunkPixels, width - x0);
    const float* sp = s + 4 * std::ptrdiff_t(x0);
    float* dp = d + 4 * std::ptrdiff_t(x0);
    for (int i = 0; i < np; ++i)
      for (int k = 0; k < 3; ++k) buf[3 * i + k] = Form::gather(loadAt(sp + 4 * i + k), c);
    lumsPowx_32f_A21(buf, Form::kPower, buf, 3 * np);
    for (int i = 0; i < np; ++i)
      for (int k = 0; k < 3; ++k) storeAt(dp + 4 * i + k, Form::select(loadAt(sp + 4 * i + k), buf[3 * i + k], c));
  }
}

// ---- entries: range, null, size, step

using Fwd = FwdChunk;
using InvC3 = InvChunk<NSingle>;
using InvP3 = InvChunk<NDouble>;

template <class Chunk>
LumStatus c3(const Lum32f* s, int ss, Lum32f* d, int ds, LumSize roi, float vMin, float vMax, bool inPlace) {
  if (LumStatus st = check::range(vMin, vMax)) return st;
  const bool null = inPlace ? check::anyNull(d) : check::anyNull(s, d);
  if (LumStatus st = check::nullSizeStep(null, roi, {inPlace ? ds : ss, ds})) return st;
  runImage<Chunk>(inPlace ? d : s, inPlace ? ds : ss, d, ds, 3 * roi.width, roi.height, Range(vMin, vMax));
  return lumStatusOk;
}

template <class Chunk>
LumStatus p3(const Lum32f* const* s, int ss, Lum32f* const* d, int ds, LumSize roi, float vMin, float vMax, bool inPlace) {
  if (LumStatus st = check::range(vMin, vMax)) return st;
  const bool null = inPlace ? check::anyNull(d) || check::anyPlaneNull(d, 3)
                            : check::anyNull(s, d) || check::anyPlaneNull(s, 3) || check::anyPlaneNull(d, 3);
  if (LumStatus st = check::nullSizeStep(null, roi, {inPlace ? ds : ss, ds})) return st;
  const Range c(vMin, vMax);
  for (int k = 0; k < 3; ++k)
    runImage<Chunk>(inPlace ? d[k] : s[k], inPlace ? ds : ss, d[k], ds, roi.width, roi.height, c);
  return lumStatusOk;
}

template <class Form>
LumStatus ac4(const Lum32f* s, int ss, Lum32f* d, int ds, LumSize roi, float vMin, float vMax, bool inPlace) {
  if (LumStatus st = check::range(vMin, vMax)) return st;
  const bool null = inPlace ? check::anyNull(d) : check::anyNull(s, d);
  if (LumStatus st = check::nullSizeStep(null, roi, {inPlace ? ds : ss, ds})) return st;
  if (inPlace) s = d, ss = ds;
  const Range c(vMin, vMax);
  for (int y = 0; y < roi.height; ++y) runRowAC4<Form>(rowAt(s, y, ss), rowAt(d, y, ds), roi.width, c);
  return lumStatusOk;
}

}  // namespace

extern "C" {

LumStatus lumiGammaFwd_32f_C3R(const Lum32f* pSrc, int srcStep, Lum32f* pDst, int dstStep, LumSize roi, Lum32f vMin,
                               Lum32f vMax) {
  return c3<Fwd>(pSrc, srcStep, pDst, dstStep, roi, vMin, vMax, false);
}
LumStatus lumiGammaFwd_32f_C3IR(Lum32f* pSrcDst, int srcDstStep, LumSize roi, Lum32f vMin, Lum32f vMax) {
  return c3<Fwd>(nullptr, 0, pSrcDst, srcDstStep, roi, vMin, vMax, true);
}
LumStatus lumiGammaFwd_32f_AC4R(const Lum32f* pSrc, int srcStep, Lum32f* pDst, int dstStep, LumSize roi, Lum32f vMin,
                                Lum32f vMax) {
  return ac4<FwdAC4>(pSrc, srcStep, pDst, dstStep, roi, vMin, vMax, false);
}
LumStatus lumiGammaFwd_32f_AC4IR(Lum32f* pSrcDst, int srcDstStep, LumSize roi, Lum32f vMin, Lum32f vMax) {
  return ac4<FwdAC4>(nullptr, 0, pSrcDst, srcDstStep, roi, vMin, vMax, true);
}
LumStatus lumiGammaFwd_32f_P3R(const Lum32f* const pSrc[3], int srcStep, Lum32f* const pDst[3], int dstStep,
                               LumSize roi, Lum32f vMin, Lum32f vMax) {
  return p3<Fwd>(pSrc, srcStep, pDst, dstStep, roi, vMin, vMax, false);
}
LumStatus lumiGammaFwd_32f_IP3R(Lum32f* const pSrcDst[3], int srcDstStep, LumSize roi, Lum32f vMin, Lum32f vMax) {
  return p3<Fwd>(nullptr, 0, pSrcDst, srcDstStep, roi, vMin, vMax, true);
}

LumStatus lumiGammaInv_32f_C3R(const Lum32f* pSrc, int srcStep, Lum32f* pDst, int dstStep, LumSize roi, Lum32f vMin,
                               Lum32f vMax) {
  return c3<InvC3>(pSrc, srcStep, pDst, dstStep, roi, vMin, vMax, false);
}
LumStatus lumiGammaInv_32f_C3IR(Lum32f* pSrcDst, int srcDstStep, LumSize roi, Lum32f vMin, Lum32f vMax) {
  return c3<InvC3>(nullptr, 0, pSrcDst, srcDstStep, roi, vMin, vMax, true);
}
LumStatus lumiGammaInv_32f_AC4R(const Lum32f* pSrc, int srcStep, Lum32f* pDst, int dstStep, LumSize roi, Lum32f vMin,
                                Lum32f vMax) {
  return ac4<InvAC4>(pSrc, srcStep, pDst, dstStep, roi, vMin, vMax, false);
}
LumStatus lumiGammaInv_32f_AC4IR(Lum32f* pSrcDst, int srcDstStep, LumSize roi, Lum32f vMin, Lum32f vMax) {
  return ac4<InvAC4>(nullptr, 0, pSrcDst, srcDstStep, roi, vMin, vMax, true);
}
LumStatus lumiGammaInv_32f_P3R(const Lum32f* const pSrc[3], int srcStep, Lum32f* const pDst[3], int dstStep,
                               LumSize roi, Lum32f vMin, Lum32f vMax) {
  return p3<InvP3>(pSrc, srcStep, pDst, dstStep, roi, vMin, vMax, false);
}
LumStatus lumiGammaInv_32f_IP3R(Lum32f* const pSrcDst[3], int srcDstStep, LumSize roi, Lum32f vMin, Lum32f vMax) {
  return p3<InvP3>(nullptr, 0, pSrcDst, srcDstStep, roi, vMin, vMax, true);
}

}  // extern "C"
