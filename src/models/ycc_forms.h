// Forms of RGB <-> Photo YCC. pixel() is each form's exact scalar rule;
// vblock<O>() computes the same lanes over a lane set O: 32-bit integer lanes
// of 8u, 16u and 16s samples, float lanes of 32f samples; its results are
// already in the destination's range (the model frame stores low bits).
// Channels in and out are R, G, B and Y, C1, C2. Block and tail forms of the
// 16-bit types round differently on purpose; the 8u forms are one rule.
#pragma once

#include <type_traits>

#include "frame/coeffs.h"
#include "frame/lanes.h"
#include "lumcc.h"

namespace lum::ycc {

namespace k = coef::ycc;
using lanes::emu::cvtNearest;
using lanes::emu::cvtTrunc;
using lanes::emu::maxX;
using lanes::emu::minX;
using lanes::emu::sat16u;

// What a 16s sample adds to reach its 16u value (0 for 16u).
template <class T>
inline constexpr int kBias = std::is_same_v<T, Lum16s> ? k::kBias16s : 0;

// ---------------------------------------------------------------------------
// 8u, fixed point
// ---------------------------------------------------------------------------

// RGB to YCC: L in Q14, then Q16 products of the sums >> 10, floored. The
// sums stay far inside 32 bits; results lie in 0..255 for 8-bit input and
// are stored by their low byte.
struct Fwd8u {
  static void pixel(const int* in, int* out) {
    const int l = k::kLumaQ14[0] * in[0] + k::kLumaQ14[1] * in[1] + k::kLumaQ14[2] * in[2];
    out[0] = ((l >> 10) * k::kFwdYQ16) >> 16;
    out[1] = ((((in[2] << 14) - l) >> 10) * k::kFwdC1Q16 >> 16) + k::kC1U8;
    out[2] = ((((in[0] << 14) - l) >> 10) * k::kFwdC2Q16 >> 16) + k::kC2U8;
  }
  template <class O, class V = typename O::V>
  static void vblock(const V* in, V* out) {
    const V l = O::add32(O::add32(O::mul32(in[0], k::kLumaQ14[0]), O::mul32(in[1], k::kLumaQ14[1])),
                         O::mul32(in[2], k::kLumaQ14[2]));
    out[0] = O::sra32(O::mul32(O::sra32(l, 10), k::kFwdYQ16), 16);
    out[1] = diff<O>(in[2], l, k::kFwdC1Q16, k::kC1U8);
    out[2] = diff<O>(in[0], l, k::kFwdC2Q16, k::kC2U8);
  }
  // (((c << 14) - L) >> 10) x f >> 16, plus the neutral value.
  template <class O, class V = typename O::V>
  static V diff(V c, V l, int f, int neutral) {
    const V d = O::sra32(O::sub32(O::sll32(c, 14), l), 10);
    return O::add32(O::sra32(O::mul32(d, f), 16), O::set32(neutral));
  }
};

// YCC to RGB: Q12 products offset by the neutral chroma; green from the
// chroma products >> 8 at Q16. Each result clamped to 0..255.
struct Inv8u {
  static int clamp(int v) { return v < 0 ? 0 : (v > 255 ? 255 : v); }
  static void pixel(const int* in, int* out) {
    const int p = k::kInvYQ12 * in[0];
    const int q = k::kInvC1Q12 * in[1] - k::kInvC1Off;
    const int w = k::kInvC2Q12 * in[2] - k::kInvC2Off;
    out[0] = clamp((p + w) >> 12);
    out[1] = clamp((16 * p - k::kInvGc1Q16 * (q >> 8) - k::kInvGc2Q16 * (w >> 8)) >> 16);
    out[2] = clamp((p + q) >> 12);
  }
  template <class O, class V = typename O::V>
  static void vblock(const V* in, V* out) {
    const V p = O::mul32(in[0], k::kInvYQ12);
    const V q = O::sub32(O::mul32(in[1], k::kInvC1Q12), O::set32(k::kInvC1Off));
    const V w = O::sub32(O::mul32(in[2], k::kInvC2Q12), O::set32(k::kInvC2Off));
    const V g = O::sub32(O::sub32(O::sll32(p, 4), O::mul32(O::sra32(q, 8), k::kInvGc1Q16)),
                         O::mul32(O::sra32(w, 8), k::kInvGc2Q16));
    out[0] = clamp<O>(O::sra32(O::add32(p, w), 12));
    out[1] = clamp<O>(O::sra32(g, 16));
    out[2] = clamp<O>(O::sra32(O::add32(p, q), 12));
  }
  template <class O, class V = typename O::V>
  static V clamp(V v) { return O::min32(O::max32(v, O::set32(0)), O::set32(255)); }
};

// ---------------------------------------------------------------------------
// Float arithmetic shared by the 16u, 16s and 32f forms
// ---------------------------------------------------------------------------

// L = 0.299 R + 0.587 G + 0.114 B, summed left to right.
inline float luma(float r, float g, float b) {
  return k::kLumaF[0] * r + k::kLumaF[1] * g + k::kLumaF[2] * b;
}
template <class O, class F = typename O::F>
inline F luma(F r, F g, F b) {
  return O::addf(O::addf(O::mulf(O::setf(k::kLumaF[0]), r), O::mulf(O::setf(k::kLumaF[1]), g)),
                 O::mulf(O::setf(k::kLumaF[2]), b));
}
// f (d) + n.
template <class O, class F = typename O::F>
inline F scaleAdd(float f, F d, float n) {
  return O::addf(O::mulf(O::setf(f), d), O::setf(n));
}

// Y, C1, C2 of one pixel on the float scale of its samples, C2 by factor c2f
// and the neutral values n1, n2 of that scale.
inline void fwdF(float r, float g, float b, float c2f, float n1, float n2, float* o) {
  const float l = luma(r, g, b);
  o[0] = k::kFwdY * l;
  o[1] = k::kFwdC1 * (b - l) + n1;
  o[2] = c2f * (r - l) + n2;
}
template <class O, class F = typename O::F>
inline void fwdF(F r, F g, F b, float c2f, float n1, float n2, F* o) {
  const F l = luma<O>(r, g, b);
  o[0] = O::mulf(O::setf(k::kFwdY), l);
  o[1] = scaleAdd<O>(k::kFwdC1, O::subf(b, l), n1);
  o[2] = scaleAdd<O>(c2f, O::subf(r, l), n2);
}

// R, G, B of the reverse block rule from Y and the centred chroma:
// s = 1.3584 Y, b = 2.2179 c1, r = 1.8215 c2; R = s + r, G = s - 0.194 b - 0.509 r, B = s + b.
inline void invF(float y, float c1, float c2, float* o) {
  const float s = k::kInvY * y, b = k::kInvB * c1, r = k::kInvR * c2;
  o[0] = s + r;
  o[1] = s - k::kInvGb * b - k::kInvGr * r;
  o[2] = s + b;
}
template <class O, class F = typename O::F>
inline void invF(F y, F c1, F c2, F* o) {
  const F s = O::mulf(O::setf(k::kInvY), y), b = O::mulf(O::setf(k::kInvB), c1), r = O::mulf(O::setf(k::kInvR), c2);
  o[0] = O::addf(s, r);
  o[1] = O::subf(O::subf(s, O::mulf(O::setf(k::kInvGb), b)), O::mulf(O::setf(k::kInvGr), r));
  o[2] = O::addf(s, b);
}

// ---------------------------------------------------------------------------
// 32f
// ---------------------------------------------------------------------------

// RGB to YCC on 0..1 nominal samples, no clamp.
struct Fwd32f {
  static void pixel(const float* in, float* out) { fwdF(in[0], in[1], in[2], k::kFwdC2F32, k::kC1F32, k::kC2F32, out); }
  template <class O, class F = typename O::F>
  static void vblock(const F* in, F* out) {
    fwdF<O>(in[0], in[1], in[2], k::kFwdC2F32, k::kC1F32, k::kC2F32, out);
  }
};

// YCC to RGB, each result clamped: a maximum with 0.0, then a minimum with 1.0
// (the processor's rule: a NaN becomes 0.0).
struct Inv32f {
  static void pixel(const float* in, float* out) {
    invF(in[0], in[1] - k::kC1F32, in[2] - k::kC2F32, out);
    for (int c = 0; c < 3; ++c) out[c] = minX(maxX(out[c], 0.0f), 1.0f);
  }
  template <class O, class F = typename O::F>
  static void vblock(const F* in, F* out) {
    invF<O>(in[0], O::subf(in[1], O::setf(k::kC1F32)), O::subf(in[2], O::setf(k::kC2F32)), out);
    for (int c = 0; c < 3; ++c) out[c] = O::minf(O::maxf(out[c], O::zerof()), O::setf(1.0f));
  }
};

// ---------------------------------------------------------------------------
// 16u and 16s: float products on the 16u sample scale
// ---------------------------------------------------------------------------

// Saturated to 0..65535, then moved back to T's scale.
template <class T>
inline int toSample(int v) { return sat16u(v) - kBias<T>; }
template <class T, class O, class V = typename O::V>
inline V toSample(V v) {
  return O::sub32(O::min32(O::max32(v, O::set32(0)), O::set32(65535)), O::set32(kBias<T>));
}
// Samples of T as floats on the 16u scale.
template <class T, class O, class V = typename O::V>
inline typename O::F fromSample(V v) { return O::cvtif(O::add32(v, O::set32(kBias<T>))); }

// RGB to YCC, block: converted to nearest under the rounding mode.
template <class T>
struct Fwd16Block {
  static void pixel(const int* in, int* out) {
    float f[3];
    fwdF(float(in[0] + kBias<T>), float(in[1] + kBias<T>), float(in[2] + kBias<T>), k::kFwdC2U16, k::kC1U16,
         k::kC2U16, f);
    for (int c = 0; c < 3; ++c) out[c] = toSample<T>(cvtNearest(f[c]));
  }
  template <class O, class V = typename O::V>
  static void vblock(const V* in, V* out) {
    typename O::F f[3];
    fwdF<O>(fromSample<T, O>(in[0]), fromSample<T, O>(in[1]), fromSample<T, O>(in[2]), k::kFwdC2U16, k::kC1U16,
            k::kC2U16, f);
    for (int c = 0; c < 3; ++c) out[c] = toSample<T, O>(O::cvtfi(f[c]));
  }
};

// RGB to YCC, tail: 0.49999 added and truncated, so an exact half rounds down.
template <class T>
struct Fwd16Tail {
  static void pixel(const int* in, int* out) {
    float f[3];
    fwdF(float(in[0] + kBias<T>), float(in[1] + kBias<T>), float(in[2] + kBias<T>), k::kFwdC2U16, k::kC1U16,
         k::kC2U16, f);
    for (int c = 0; c < 3; ++c) out[c] = toSample<T>(cvtTrunc(f[c] + k::kHalfDown));
  }
};

// YCC to RGB, block: the unfolded rule on the centred chroma, converted to nearest.
template <class T>
struct Inv16Block {
  static void pixel(const int* in, int* out) {
    float f[3];
    invF(float(in[0] + kBias<T>), float(in[1] + kBias<T> - k::kC1U16), float(in[2] + kBias<T> - k::kC2U16), f);
    for (int c = 0; c < 3; ++c) out[c] = toSample<T>(cvtNearest(f[c]));
  }
  template <class O, class V = typename O::V>
  static void vblock(const V* in, V* out) {
    typename O::F f[3];
    const V c1 = O::sub32(in[1], O::set32(k::kC1U16 - kBias<T>)), c2 = O::sub32(in[2], O::set32(k::kC2U16 - kBias<T>));
    invF<O>(fromSample<T, O>(in[0]), O::cvtif(c1), O::cvtif(c2), f);
    for (int c = 0; c < 3; ++c) out[c] = toSample<T, O>(O::cvtfi(f[c]));
  }
};

// YCC to RGB, tail: 0.49999 folded into s, green by the folded factors, truncated.
template <class T>
struct Inv16Tail {
  static void pixel(const int* in, int* out) {
    const float c1 = float(in[1] + kBias<T> - k::kC1U16), c2 = float(in[2] + kBias<T> - k::kC2U16);
    const float s = k::kInvY * float(in[0] + kBias<T>) + k::kHalfDown;
    out[0] = toSample<T>(cvtTrunc(s + k::kInvR * c2));
    out[1] = toSample<T>(cvtTrunc(s - k::kInvGc1 * c1 - k::kInvGc2 * c2));
    out[2] = toSample<T>(cvtTrunc(s + k::kInvB * c1));
  }
};

}  // namespace lum::ycc
