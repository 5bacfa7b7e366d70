// Four float lanes for the reductions: the SSE register and its scalar twin,
// which computes every lane with the same single operation in the same order.
// Loads that fill fewer lanes put zeros in the others (a sum adds them); the
// partial maxima leave the other lanes as they are.
#pragma once

#include "frame/simd.h"

namespace lum::kern {

struct ScalarLanes {
  struct V {
    float l[4];
  };
  static V set1(float x) { return {{x, x, x, x}}; }
  static V zero() { return {{0.0f, 0.0f, 0.0f, 0.0f}}; }
  static V load(const float* p) { return {{p[0], p[1], p[2], p[3]}}; }
  static V load2(const float* p) { return {{p[0], p[1], 0.0f, 0.0f}}; }
  static V load1(const float* p) { return {{p[0], 0.0f, 0.0f, 0.0f}}; }
  static V add(const V& a, const V& b) {
    V r;
    for (int i = 0; i < 4; ++i) r.l[i] = a.l[i] + b.l[i];
    return r;
  }
  // The processor's maximum with acc as destination operand: a NaN in either
  // lane, or two zeros, give x.
  static float max1(float acc, float x) { return acc > x ? acc : x; }
  static V max(const V& acc, const V& x) {
    V r;
    for (int i = 0; i < 4; ++i) r.l[i] = max1(acc.l[i], x.l[i]);
    return r;
  }
  // Maximum of lanes 0 and 1 with two samples; lanes 2 and 3 unchanged.
  static V maxLow2(V acc, const float* p) {
    acc.l[0] = max1(acc.l[0], p[0]);
    acc.l[1] = max1(acc.l[1], p[1]);
    return acc;
  }
  // Maximum of lane 0 with one sample; the other lanes unchanged.
  static V maxLow1(V acc, const float* p) {
    acc.l[0] = max1(acc.l[0], p[0]);
    return acc;
  }
  // Lanes 2 and 3 folded onto 0 and 1: {l0 + l2, l1 + l3}.
  static void foldAdd(const V& t, float& lo, float& hi) {
    lo = t.l[0] + t.l[2];
    hi = t.l[1] + t.l[3];
  }
  // max(max(l0, l2), max(l1, l3)), the low lane as destination at each step.
  static float foldMax(const V& t) { return max1(max1(t.l[0], t.l[2]), max1(t.l[1], t.l[3])); }
};

#if LUM_SIMD_SSE
struct SseLanes {
  using V = __m128;
  static V set1(float x) { return _mm_set1_ps(x); }
  static V zero() { return _mm_setzero_ps(); }
  static V load(const float* p) { return _mm_loadu_ps(p); }
  static V load2(const float* p) { return _mm_castpd_ps(_mm_load_sd(reinterpret_cast<const double*>(p))); }
  static V load1(const float* p) { return _mm_load_ss(p); }
  static V add(V a, V b) { return _mm_add_ps(a, b); }
  static V max(V acc, V x) { return _mm_max_ps(acc, x); }
  static V maxLow2(V acc, const float* p) {
    return _mm_max_ps(acc, _mm_loadl_pi(acc, reinterpret_cast<const __m64*>(p)));
  }
  static V maxLow1(V acc, const float* p) { return _mm_max_ss(acc, _mm_load_ss(p)); }
  static void foldAdd(V t, float& lo, float& hi) {
    const V f = _mm_add_ps(t, _mm_movehl_ps(t, t));
    lo = _mm_cvtss_f32(f);
    hi = _mm_cvtss_f32(_mm_shuffle_ps(f, f, 1));
  }
  static float foldMax(V t) {
    const V h = _mm_max_ps(t, _mm_movehl_ps(t, t));
    return _mm_cvtss_f32(_mm_max_ss(h, _mm_shuffle_ps(h, h, 1)));
  }
};
#endif

// Calls f(Lanes{}) with the vector lanes when this call may use them, else with the twin.
template <class F>
inline decltype(auto) withFloatLanes(F&& f) {
#if LUM_SIMD_SSE
  if (useVector()) return f(SseLanes{});
#endif
  return f(ScalarLanes{});
}

}  // namespace lum::kern
