// Arithmetic forms of the hexcone models HLS and HSV, written once over the
// sample types 8u, 16u, 16s (the 16u value shifted down by 32768) and 32f.
// Everything is single precision, integer samples included. pixel() is the
// exact scalar rule; vblock<O>() computes the same lanes on a lane set: 8u
// forms take eight 16-bit lanes (two float halves), 16u and 16s forms four
// 32-bit lanes, 32f forms four float lanes. Every branch of a hue sector is a
// lane mask in the blocks, and pixel() takes the same tests in the same order.
//
// The forms differ on purpose in how they divide (the library's bare 12-bit
// reciprocal estimate, the estimate refined once, or a true division), in
// their constants and in how they round; a public function uses the ones its
// path names, so two forms that look alike are never to be merged.
#pragma once

#include <algorithm>
#include <cstdint>
#include <type_traits>

#include "frame/coeffs.h"
#include "frame/lanes.h"
#include "frame/layouts.h"
#include "frame/rcp_estimate.h"

namespace lum::hue {

using namespace coef::hue;
using lanes::emu::maxX;
using lanes::emu::minX;

// How a form divides: bare estimate, estimate refined once, true division.
enum class Div { Bare, Refined, True };
// How a form turns a float result into a sample: nearest (under the rounding
// mode), truncation, or not at all (32f).
enum class Round { Nearest, Trunc };

// The scales of a sample type.
template <class T>
struct Scale;
template <>
struct Scale<Lum8u> {
  static constexpr int kBias = 0, kLo = 0, kHi = 255;
  static constexpr float kFull = 255.0f, kMid = 127.5f, kTwoMax = 510.0f;
  static constexpr float kHuePerDeg = kHue8uPerDeg, kDegPer = kDegPer8u, kUnitPer = kUnitPer8u;
};
template <>
struct Scale<Lum16u> {
  static constexpr int kBias = 0, kLo = 0, kHi = 65535;
  static constexpr float kFull = 65535.0f, kMid = 32767.5f, kTwoMax = 131070.0f;
  static constexpr float kHuePerDeg = kHue16uPerDeg, kDegPer = kDegPer16u, kUnitPer = kUnitPer16u;
};
// 16s: the 16u scale on samples biased by 32768; results biased back.
template <>
struct Scale<Lum16s> : Scale<Lum16u> {
  static constexpr int kBias = 32768, kLo = -32768, kHi = 32767;
};
template <>
struct Scale<Lum32f> {
  static constexpr float kFull = 1.0f, kMid = 0.5f, kTwoMax = 2.0f;
};

template <class T>
constexpr bool kIsFloat = std::is_same_v<T, Lum32f>;

// ---- scalar helpers --------------------------------------------------------

// a / den by the form's division: a * estimate, a * refined estimate ((e + e) - den e e), or a / den.
template <Div D>
inline float quot(float a, float den) {
  if constexpr (D == Div::True) {
    return a / den;
  } else {
    const float e = rcpEstimate(den);
    if constexpr (D == Div::Bare) return a * e;
    else return a * ((e + e) - den * e * e);
  }
}

// x on the sample scale to an integer: the x86 conversion (NaN and overflow give INT32_MIN).
template <Round R>
inline int32_t toInt(float x) {
  return R == Round::Nearest ? lanes::emu::cvtNearest(x) : lanes::emu::cvtTrunc(x);
}

// A float result as the sample of T: rounded, biased back (wrapping, as the
// 32-bit lane add), and where Sat saturated as the block's packs do; else
// stored as it is (the tail results fit by construction).
template <class T, Round R, bool Sat>
inline int toSample(float x) {
  int32_t i = toInt<R>(x);
  if constexpr (Scale<T>::kBias != 0) i = int32_t(uint32_t(i) - uint32_t(Scale<T>::kBias));
  if constexpr (Sat) i = std::clamp(i, int32_t(Scale<T>::kLo), int32_t(Scale<T>::kHi));
  return i;
}

// ---- lane helpers ------------------------------------------------------------

// Lanes of the reciprocal a form multiplies by: the estimate, or the estimate refined once.
template <Div D, class O, class F = typename O::F>
inline F vrecip(F den) {
  const F e = O::rcpf(den);
  if constexpr (D == Div::Bare) return e;
  else return O::subf(O::addf(e, e), O::mulf(O::mulf(den, e), e));
}

// Float lanes to integer lanes, rounded as R says.
template <Round R, class O, class F = typename O::F>
inline typename O::V vtoInt(F x) {
  return R == Round::Nearest ? O::cvtfi(x) : O::cvttfi(x);
}

// Runs a float kernel k(in[3], out[3]) over the lanes of sample type T and
// returns samples: 8u lanes as two float halves narrowed back with the packs'
// saturation (the store makes the last clamp to a byte); 16u and 16s lanes
// biased, converted and clamped as the packs clamp; 32f lanes as they are.
template <class T, Round R, class O, class L, class Kernel>
inline void vrun(const L* in, L* out, Kernel&& k) {
  using F = typename O::F;
  using V = typename O::V;
  if constexpr (kIsFloat<T>) {
    k(in, out);
  } else if constexpr (std::is_same_v<T, Lum8u>) {
    F a[3], b[3], fa[3], fb[3];
    for (int c = 0; c < 3; ++c) {
      V lo, hi;
      O::widen(in[c], lo, hi);
      a[c] = O::cvtif(lo);
      b[c] = O::cvtif(hi);
    }
    k(a, fa);
    k(b, fb);
    for (int c = 0; c < 3; ++c) out[c] = O::narrow(vtoInt<R, O>(fa[c]), vtoInt<R, O>(fb[c]));
  } else {
    constexpr int bias = Scale<T>::kBias;
    F a[3], f[3];
    for (int c = 0; c < 3; ++c) a[c] = O::cvtif(bias ? O::add32(in[c], O::set32(bias)) : in[c]);
    k(a, f);
    for (int c = 0; c < 3; ++c) {
      V v = vtoInt<R, O>(f[c]);
      if constexpr (bias != 0) v = O::sub32(v, O::set32(bias));
      out[c] = O::min32(O::max32(v, O::set32(Scale<T>::kLo)), O::set32(Scale<T>::kHi));
    }
  }
}

// Channels as floats on the sample scale (16s biased).
template <class T, class W>
inline void toFloats(const W* in, float f[3]) {
  for (int c = 0; c < 3; ++c) {
    if constexpr (kIsFloat<T>) f[c] = in[c];
    else f[c] = float(in[c] + Scale<T>::kBias);
  }
}

// The eight-lane block() of an 8u form: its vblock on the SSE set.
#if LUM_SIMD_SSE
#define LUM_HUE_BLOCK8(...)                                                         \
  static void block(const __m128i* in, __m128i* out) requires(__VA_ARGS__) {         \
    vblock<lanes::Sse>(in, out);                                                    \
  }
#else
#define LUM_HUE_BLOCK8(...)
#endif

// ---------------------------------------------------------------------------
// RGB to HLS
// ---------------------------------------------------------------------------

// R, G, B on the sample scale to H, L, S: L = (max + min) / 2; S = d / s at or
// below the midpoint, else d / (2M - s), times the full scale; hue by the
// channel that holds the max, R before G before B; gray where d is 0 (32f: at
// or below FLT_EPSILON). D says how every division is made.
template <class T, Div D>
struct HlsCore {
  using K = Scale<T>;
  static void pixel(const float* rgb, float* hls) {
    const float r = rgb[0], g = rgb[1], b = rgb[2];
    const float mx = maxX(maxX(r, g), b), mn = minX(minX(r, g), b);
    const float d = mx - mn, s = mx + mn;
    hls[1] = s * 0.5f;
    if (kIsFloat<T> ? d <= kGray32f : d == 0.0f) {
      hls[0] = 0.0f;
      hls[2] = 0.0f;
      return;
    }
    const float den = hls[1] <= K::kMid ? s : K::kTwoMax - s;
    hls[2] = quot<D>(d, den);
    if constexpr (!kIsFloat<T>) hls[2] = hls[2] * K::kFull;
    float h;
    if (mx == r) h = quot<D>((g - b) * kDeg60, d);
    else if (mx == g) h = quot<D>((b - r) * kDeg60, d) + kDeg120;
    else h = quot<D>((r - g) * kDeg60, d) + kDeg240;
    if (h < 0.0f) h = h + kDeg360;
    if constexpr (kIsFloat<T>) hls[0] = h / kDeg360;
    else hls[0] = h * K::kHuePerDeg;
  }
  template <class O, class F = typename O::F>
  static void vblock(const F* rgb, F* hls) {
    const F r = rgb[0], g = rgb[1], b = rgb[2];
    const F mx = O::maxf(O::maxf(r, g), b), mn = O::minf(O::minf(r, g), b);
    const F d = O::subf(mx, mn), s = O::addf(mx, mn);
    const F l = O::mulf(s, O::setf(0.5f));
    const F den = O::selectf(O::cmplef(l, O::setf(K::kMid)), s, O::subf(O::setf(K::kTwoMax), s));
    F sat, rd;
    if constexpr (D == Div::True) {
      sat = O::divf(d, den);
    } else {
      sat = O::mulf(O::mulf(d, vrecip<D, O>(den)), O::setf(K::kFull));
      rd = vrecip<D, O>(d);
    }
    // ((a) x 60) / d by the form's division.
    const auto sector = [&](F a) {
      const F t = O::mulf(a, O::setf(kDeg60));
      if constexpr (D == Div::True) return O::divf(t, d);
      else return O::mulf(t, rd);
    };
    const F hr = sector(O::subf(g, b));
    const F hg = O::addf(sector(O::subf(b, r)), O::setf(kDeg120));
    const F hb = O::addf(sector(O::subf(r, g)), O::setf(kDeg240));
    F h = O::selectf(O::cmpeqf(mx, r), hr, O::selectf(O::cmpeqf(mx, g), hg, hb));
    h = O::selectf(O::cmpltf(h, O::zerof()), O::addf(h, O::setf(kDeg360)), h);
    F gray;
    if constexpr (kIsFloat<T>) {
      gray = O::cmplef(d, O::setf(kGray32f));
      h = O::divf(h, O::setf(kDeg360));
    } else {
      gray = O::cmpeqf(d, O::zerof());
      h = O::mulf(h, O::setf(K::kHuePerDeg));
    }
    hls[0] = O::andnotf(gray, h);
    hls[1] = l;
    hls[2] = O::andnotf(gray, sat);
  }
};

// RGB to HLS on samples of T, dividing by D, rounding by R; Sat: results
// saturated as by packing (blocks), else stored as they are (tails).
template <class T, Div D, Round R, bool Sat>
struct HlsFwd {
  using Sample = T;
  using W = layout::WorkOf<T>;
  static void pixel(const W* in, W* out) {
    float rgb[3], hls[3];
    toFloats<T>(in, rgb);
    HlsCore<T, D>::pixel(rgb, hls);
    for (int c = 0; c < 3; ++c) {
      if constexpr (kIsFloat<T>) out[c] = hls[c];
      else out[c] = toSample<T, R, Sat>(hls[c]);
    }
  }
  template <class O, class L>
  static void vblock(const L* in, L* out) requires(Sat || kIsFloat<T>) {
    vrun<T, R, O>(in, out, [](const auto* a, auto* f) { HlsCore<T, D>::template vblock<O>(a, f); });
  }
  LUM_HUE_BLOCK8(Sat && std::is_same_v<T, Lum8u>)
};

// ---------------------------------------------------------------------------
// HLS to RGB
// ---------------------------------------------------------------------------

// H in degrees, L and S in 0..1 to R, G, B in 0..1. Blk: the block formulas
// (M2 = L S + L at or below the midpoint, the sector width by 0.016666667);
// else the tail formulas (M2 = (S + 1) L), whose sector width is a true
// division by 60 where Div60 says so (8u tails).
template <bool Blk, bool Div60>
struct HlsRgbCore {
  static float channel(float x, float m1, float m2) {
    const float span = m2 - m1;
    if (x < kDeg60) return (Div60 ? (span * x) / kDeg60 : (span * x) * kPer60) + m1;
    if (x < 180.0f) return m2;
    if (x < kDeg240) return (Div60 ? (span * (kDeg240 - x)) / kDeg60 : (span * (kDeg240 - x)) * kPer60) + m1;
    return m1;
  }
  static void pixel(float h, float l, float s, float* rgb) {
    if (s == 0.0f) {
      rgb[0] = rgb[1] = rgb[2] = l;
      return;
    }
    const float m2 = l <= 0.5f ? (Blk ? l * s + l : (s + 1.0f) * l) : (l + s) - s * l;
    const float m1 = 2.0f * l - m2;
    float hr = h + kDeg120;
    if (hr > kDeg360) hr = hr - kDeg360;
    float hb = h - kDeg120;
    if (hb < 0.0f) hb = hb + kDeg360;
    rgb[0] = channel(hr, m1, m2);
    rgb[1] = channel(h, m1, m2);
    rgb[2] = channel(hb, m1, m2);
  }
  template <class O, class F = typename O::F>
  static F vchannel(F x, F m1, F m2) {
    static_assert(Blk, "lane blocks run the block formulas");
    const F span = O::subf(m2, m1), k = O::setf(kPer60);
    const F rise = O::addf(O::mulf(O::mulf(span, x), k), m1);
    const F fall = O::addf(O::mulf(O::mulf(span, O::subf(O::setf(kDeg240), x)), k), m1);
    return O::selectf(O::cmpltf(x, O::setf(kDeg60)), rise,
                      O::selectf(O::cmpltf(x, O::setf(180.0f)), m2,
                                 O::selectf(O::cmpltf(x, O::setf(kDeg240)), fall, m1)));
  }
  template <class O, class F = typename O::F>
  static void vblock(F h, F l, F s, F* rgb) {
    const F m2 = O::selectf(O::cmplef(l, O::setf(0.5f)), O::addf(O::mulf(l, s), l),
                            O::subf(O::addf(l, s), O::mulf(s, l)));
    const F m1 = O::subf(O::mulf(O::setf(2.0f), l), m2);
    const F k360 = O::setf(kDeg360);
    F hr = O::addf(h, O::setf(kDeg120));
    hr = O::selectf(O::cmpltf(k360, hr), O::subf(hr, k360), hr);
    F hb = O::subf(h, O::setf(kDeg120));
    hb = O::selectf(O::cmpltf(hb, O::zerof()), O::addf(hb, k360), hb);
    const F gray = O::cmpeqf(s, O::zerof());
    rgb[0] = O::selectf(gray, l, vchannel<O>(hr, m1, m2));
    rgb[1] = O::selectf(gray, l, vchannel<O>(h, m1, m2));
    rgb[2] = O::selectf(gray, l, vchannel<O>(hb, m1, m2));
  }
};

// HLS to RGB on samples of T. Blk: block formulas and constants (8u: H x
// 1.4117647, L and S x 0.003921569), else the tail ones (8u: H x 360 / 255,
// L and S / 255, a true division by 60); 16u and 16s take H x 0.00549325 and
// x 1.5259022e-5 on both paths, 32f H x 360 and L, S as they are, stored
// unclamped. R rounds; Sat saturates as the packs do.
template <class T, bool Blk, Round R, bool Sat>
struct HlsInv {
  using Sample = T;
  using W = layout::WorkOf<T>;
  static constexpr bool k8uTail = std::is_same_v<T, Lum8u> && !Blk;
  using Core = HlsRgbCore<Blk, k8uTail>;
  static void pixel(const W* in, W* out) {
    float x[3], rgb[3];
    toFloats<T>(in, x);
    if constexpr (kIsFloat<T>) {
      Core::pixel(x[0] * kDeg360, x[1], x[2], out);
    } else {
      using K = Scale<T>;
      if constexpr (k8uTail) Core::pixel((x[0] * kDeg360) / 255.0f, x[1] / 255.0f, x[2] / 255.0f, rgb);
      else Core::pixel(x[0] * K::kDegPer, x[1] * K::kUnitPer, x[2] * K::kUnitPer, rgb);
      for (int c = 0; c < 3; ++c) out[c] = toSample<T, R, Sat>(rgb[c] * K::kFull);
    }
  }
  template <class O, class L>
  static void vblock(const L* in, L* out) requires(Blk && (Sat || kIsFloat<T>)) {
    vrun<T, R, O>(in, out, [](const auto* x, auto* f) {
      if constexpr (kIsFloat<T>) {
        Core::template vblock<O>(O::mulf(x[0], O::setf(kDeg360)), x[1], x[2], f);
      } else {
        using K = Scale<T>;
        const auto u = O::setf(K::kUnitPer);
        Core::template vblock<O>(O::mulf(x[0], O::setf(K::kDegPer)), O::mulf(x[1], u), O::mulf(x[2], u), f);
        for (int c = 0; c < 3; ++c) f[c] = O::mulf(f[c], O::setf(K::kFull));
      }
    });
  }
  LUM_HUE_BLOCK8(Blk && Sat && std::is_same_v<T, Lum8u>)
};

// ---------------------------------------------------------------------------
// HSV
// ---------------------------------------------------------------------------

// 8u RGB to HSV, every path: V = max; S = nearest(est(V) d 255); with r =
// est(d), the hue tests run R, G, B in turn and the last true one wins (a tie
// goes to B, then G); h x 42.5, plus 255 below 0, nearest. Black and gray give
// H = S = 0. Saturated as by packing.
struct HsvFwd8u {
  using Sample = Lum8u;
  static void pixel(const int* in, int* out) {
    float x[3];
    toFloats<Lum8u>(in, x);
    const float r = x[0], g = x[1], b = x[2];
    const float v = maxX(maxX(r, g), b), d = v - minX(minX(r, g), b);
    float h = 0.0f, s = 0.0f;
    if (v != 0.0f && d != 0.0f) {
      s = (rcpEstimate(v) * d) * 255.0f;
      const float e = rcpEstimate(d);
      if (v == r) h = (v - b) * e - (v - g) * e;
      if (v == g) h = ((v - r) * e - (v - b) * e) + 2.0f;
      if (v == b) h = ((v - g) * e - (v - r) * e) + 4.0f;
      h = h * kHsv8uSector;
      if (h < 0.0f) h = h + 255.0f;
    }
    out[0] = toSample<Lum8u, Round::Nearest, true>(h);
    out[1] = toSample<Lum8u, Round::Nearest, true>(s);
    out[2] = toSample<Lum8u, Round::Nearest, true>(v);
  }
  template <class O, class L>
  static void vblock(const L* in, L* out) {
    vrun<Lum8u, Round::Nearest, O>(in, out, [](const auto* x, auto* f) {
      using F = std::remove_cvref_t<decltype(x[0])>;
      const F r = x[0], g = x[1], b = x[2];
      const F v = O::maxf(O::maxf(r, g), b), d = O::subf(v, O::minf(O::minf(r, g), b));
      const F s = O::mulf(O::mulf(O::rcpf(v), d), O::setf(255.0f));
      const F e = O::rcpf(d);
      const auto part = [&](F a, F c) { return O::subf(O::mulf(O::subf(v, a), e), O::mulf(O::subf(v, c), e)); };
      F h = part(b, g);
      h = O::selectf(O::cmpeqf(v, g), O::addf(part(r, b), O::setf(2.0f)), h);
      h = O::selectf(O::cmpeqf(v, b), O::addf(part(g, r), O::setf(4.0f)), h);
      h = O::mulf(h, O::setf(kHsv8uSector));
      h = O::selectf(O::cmpltf(h, O::zerof()), O::addf(h, O::setf(255.0f)), h);
      const F none = O::cmpeqf(d, O::zerof());  // d is 0 wherever V is
      f[0] = O::andnotf(none, h);
      f[1] = O::andnotf(none, s);
      f[2] = v;
    });
  }
#if LUM_SIMD_SSE
  static void block(const __m128i* in, __m128i* out) { vblock<lanes::Sse>(in, out); }
#endif
};

// 16u RGB to HSV, pixel by pixel: max and min in integers; S = trunc(d / V x
// 65535 + 0.5) by a true division; k = 1 / d; B's formula first (a tie goes to
// B, then G); h + FLT_EPSILON below 0 adds 6; H = trunc(h x 65535 / 6 + 0.5).
struct HsvFwd16u {
  using Sample = Lum16u;
  static void pixel(const int* in, int* out) {
    const int r = in[0], g = in[1], b = in[2];
    const int v = std::max(std::max(r, g), b), d = v - std::min(std::min(r, g), b);
    out[2] = v;
    if (v == 0 || d == 0) {
      out[0] = out[1] = 0;
      return;
    }
    out[1] = lanes::emu::cvtTrunc((float(d) / float(v)) * 65535.0f + 0.5f);
    const float k = 1.0f / float(d);
    const float a = float(v - r) * k, bb = float(v - g) * k, c = float(v - b) * k;
    float h;
    if (v == b) h = (4.0f - a) + bb;
    else if (v == g) h = (a + 2.0f) - c;
    else h = c - bb;
    if (h + kGray32f < 0.0f) h = h + 6.0f;
    out[0] = lanes::emu::cvtTrunc((h * 65535.0f) / 6.0f + 0.5f);
  }
};

// HSV to RGB on 8u or 16u (M = 255 or 65535), every path: S = 0 gives V; h = H
// x 360/M with H = M taken as 0; sector k = trunc(h / 60), f its fraction;
// c = V x S/M (8u: S x 0.003921569; 16u: a true division); p = V - c; the
// sector picks V, p, p + f c or V - f c per channel, each nearest.
template <class T>
struct HsvInv {
  using Sample = T;
  using K = Scale<T>;
  // (sector picks) V where inV, p + f c where inUp, V - f c where inDown, else p.
  static float pick(float k, float v, float p, float up, float down, int inV0, int inV1, int inUp, int inDown) {
    if (k == float(inV0) || k == float(inV1)) return v;
    if (k == float(inUp)) return up;
    if (k == float(inDown)) return down;
    return p;
  }
  static constexpr int kPicks[3][4] = {{0, 5, 4, 1}, {1, 2, 0, 3}, {3, 4, 2, 5}};
  static float chroma(float v, float s) {
    if constexpr (std::is_same_v<T, Lum8u>) return v * (s * kUnitPer8u);
    else return v * (s / K::kFull);
  }
  static void pixel(const int* in, int* out) {
    float x[3];
    toFloats<T>(in, x);
    const float v = x[2], s = x[1];
    const float h = x[0] == K::kFull ? 0.0f : x[0] * K::kDegPer;
    const float t = h * kPer60;
    const float k = float(lanes::emu::cvtTrunc(t)), f = t - k;
    const float c = chroma(v, s), p = v - c, fc = f * c;
    for (int ch = 0; ch < 3; ++ch) {
      const auto& q = kPicks[ch];
      const float o = s == 0.0f ? v : pick(k, v, p, p + fc, v - fc, q[0], q[1], q[2], q[3]);
      out[ch] = toSample<T, Round::Nearest, true>(o);
    }
  }
  template <class O, class L>
  static void vblock(const L* in, L* out) {
    vrun<T, Round::Nearest, O>(in, out, [](const auto* x, auto* o) {
      using F = std::remove_cvref_t<decltype(x[0])>;
      const F v = x[2], s = x[1];
      const F h = O::andnotf(O::cmpeqf(x[0], O::setf(K::kFull)), O::mulf(x[0], O::setf(K::kDegPer)));
      const F t = O::mulf(h, O::setf(kPer60));
      const F k = O::cvtif(O::cvttfi(t)), f = O::subf(t, k);
      F c;
      if constexpr (std::is_same_v<T, Lum8u>) c = O::mulf(v, O::mulf(s, O::setf(kUnitPer8u)));
      else c = O::mulf(v, O::divf(s, O::setf(K::kFull)));
      const F p = O::subf(v, c), fc = O::mulf(f, c);
      const F up = O::addf(p, fc), down = O::subf(v, fc), gray = O::cmpeqf(s, O::zerof());
      const auto is = [&](int n) { return O::cmpeqf(k, O::setf(float(n))); };
      for (int ch = 0; ch < 3; ++ch) {
        const auto& q = kPicks[ch];
        F r = O::selectf(is(q[3]), down, p);
        r = O::selectf(is(q[2]), up, r);
        r = O::selectf(is(q[0]), v, r);
        r = O::selectf(is(q[1]), v, r);
        o[ch] = O::selectf(gray, v, r);
      }
    });
  }
  LUM_HUE_BLOCK8(std::is_same_v<T, Lum8u>)
};

#undef LUM_HUE_BLOCK8

// ---------------------------------------------------------------------------
// The forms of each path
// ---------------------------------------------------------------------------

// RGB to HLS: blocks round to nearest, tails truncate (8u AC4 tails round);
// the 8u blocks divide by the bare estimate, everything else refines it once.
template <class T>
using FwdBlock = HlsFwd<T, std::is_same_v<T, Lum8u> ? Div::Bare : Div::Refined, Round::Nearest, true>;
template <class T>
using FwdTail = HlsFwd<T, Div::Refined, Round::Trunc, false>;
using FwdTail8uAC4 = HlsFwd<Lum8u, Div::Refined, Round::Nearest, false>;
using Fwd32f = HlsFwd<Lum32f, Div::True, Round::Nearest, false>;

// HLS to RGB: block formulas rounding to nearest; 8u tails truncate, 16u and 16s tails round.
template <class T>
using InvBlock = HlsInv<T, true, Round::Nearest, true>;
template <class T>
using InvTail = HlsInv<T, false, std::is_same_v<T, Lum8u> ? Round::Trunc : Round::Nearest, false>;
using Inv32f = HlsInv<Lum32f, true, Round::Nearest, false>;

// The BGR family truncates on both paths.
using BgrFwdBlock = HlsFwd<Lum8u, Div::Bare, Round::Trunc, true>;
using BgrInvBlock = HlsInv<Lum8u, true, Round::Trunc, true>;

}  // namespace lum::hue
