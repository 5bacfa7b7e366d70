// The forms of RGB <-> LUV: forward and reverse blocks of every sample type and the
// scalar tails with their own rules.
#pragma once

#include <cmath>
#include "frame/coeffs.h"
#include "models/model_frame.h"

namespace lum::models::luv {

namespace cie = lum::coef::cie;

template <class T>
constexpr bool kIs8u = std::is_same_v<T, Lum8u>;
template <class T>
constexpr bool kIs16 = std::is_same_v<T, Lum16u> || std::is_same_v<T, Lum16s>;
template <class T>
constexpr bool kIs16s = std::is_same_v<T, Lum16s>;

// The 8u series: four powers, the fourth carrying the coefficient of the fifth.
constexpr float kSeries8u[4] = {cie::kSeries[0], cie::kSeries[1], cie::kSeries[2], cie::kSeries8uT4};

// ---- RGB -> LUV

// Powers of the forward series by sample type: 4 for 8u, 6 for 16 bits, 8 for 32f.
template <class T>
constexpr int kFwdTerms = kIs8u<T> ? 4 : (kIs16<T> ? 6 : 8);
template <class T>
constexpr const float* fwdSeries() { return kIs8u<T> ? kSeries8u : cie::kSeries; }
// The POW_LUV edition of the forward forms: 128 rows for 8u, 129 for the others.
template <class T>
constexpr const auto& fwdTable() {
  if constexpr (kIs8u<T>) return kPowLuv128;
  else return kPowLuv129;
}

// Sample to the forward matrix's input: 8u on 0..1, 16u and 16s on 0..65535, 32f as it is.
template <class T>
inline float fwdIn(WorkOf<T> s) {
  if constexpr (kIs8u<T>) return float(s) * cie::kInv255;
  else if constexpr (kIs16s<T>) return float(s + 32768);
  else return float(s);
}
template <class T, class O, class In, class F = typename O::F>
inline F fwdIn(In s) {
  if constexpr (kIs8u<T>) return O::mulf(O::cvtif(s), O::setf(cie::kInv255));
  else if constexpr (kIs16s<T>) return O::cvtif(O::add32(s, O::set32(32768)));
  else if constexpr (kIs16<T>) return O::cvtif(s);
  else return s;
}

// L from Y of the type's scale; Row is the table row the cube segment reads.
template <class T>
inline float lightness(float y, PowLuvRow row) {
  const float yn = kIs16<T> ? y * cie::kInv65535 : y;
  const bool linear = kIs16<T> ? y <= cie::kYBreak16 : y <= cie::kYBreak;
  if (linear) return cie::kLinearL * yn;
  return cie::kCubeL * cubeRoot<kFwdTerms<T>>(row, yn, fwdSeries<T>()) - cie::kCubeOff;
}
// Row index by truncation: trunc(Y x 127.99805), or trunc(Y) >> 9 on the 16-bit scale.
template <class T>
inline int rowTrunc(float y) {
  return kIs16<T> ? cvtTrunc(y) >> 9 : cvtTrunc(y * cie::kRowScale);
}

// u' and v' times the refined reciprocal of D = (3 Z + 15 Y) + X.
inline void chroma(float x, float y, float d, float& u, float& v) {
  const float r = rcpRefined(d);
  u = (4.0f * x) * r;
  v = (9.0f * y) * r;
}

// U and V from u', v' and L.
inline void uv(float u, float v, float l, float& uo, float& vo) {
  uo = (u - cie::kWhiteU) * (13.0f * l);
  vo = (v - cie::kWhiteV) * (13.0f * l);
}

// Forward block of every type: D = 0 replaced by 3; outputs scaled per type
// (8u nearest, clamped; 16u/16s L truncated, U and V nearest; 32f as computed).
template <class T>
struct FwdBlock {
  template <class O, class In, class Out>
  static void vblock(const In in[3], Out out[3]) {
    using F = typename O::F;
    F a[3], xyz[3];
    for (int k = 0; k < 3; ++k) a[k] = fwdIn<T, O>(in[k]);
    for (int k = 0; k < 3; ++k) xyz[k] = mat3Row<O>(cie::kRGBToXYZ[k], a[0], a[1], a[2]);
    const F x = xyz[0], y = xyz[1], z = xyz[2];
    // L.
    F yn = y, linear;
    typename O::V idx;
    if constexpr (kIs16<T>) {
      yn = O::mulf(y, O::setf(cie::kInv65535));
      linear = O::cmplef(y, O::setf(cie::kYBreak16));
      idx = O::sra32(O::cvttfi(y), 9);
    } else {
      linear = O::cmplef(y, O::setf(cie::kYBreak));
      idx = O::cvttfi(O::mulf(y, O::setf(cie::kRowScale)));
    }
    F c, r;
    powLuvRows<O>(fwdTable<T>(), idx, c, r);
    const F cube = O::subf(O::mulf(O::setf(cie::kCubeL), cubeRoot<kFwdTerms<T>, O>(c, r, yn, fwdSeries<T>())),
                           O::setf(cie::kCubeOff));
    const F l = O::selectf(linear, O::mulf(O::setf(cie::kLinearL), yn), cube);
    // u', v'.
    F d = O::addf(O::addf(O::mulf(O::setf(3.0f), z), O::mulf(O::setf(15.0f), y)), x);
    d = O::selectf(O::cmpeqf(d, O::zerof()), O::setf(3.0f), d);
    const F rd = rcpRefined<O>(d);
    const F u1 = O::mulf(O::mulf(O::setf(4.0f), x), rd), v1 = O::mulf(O::mulf(O::setf(9.0f), y), rd);
    const F l13 = O::mulf(O::setf(13.0f), l);
    const F u = O::mulf(O::subf(u1, O::setf(cie::kWhiteU)), l13);
    const F v = O::mulf(O::subf(v1, O::setf(cie::kWhiteV)), l13);
    // Output.
    if constexpr (kIs8u<T>) {
      const auto to8 = [](F f) { return O::min32(O::max32(O::cvtfi(f), O::set32(0)), O::set32(255)); };
      out[0] = to8(O::mulf(l, O::setf(cie::kLTo8u)));
      out[1] = to8(O::mulf(O::addf(u, O::setf(cie::kUOff)), O::setf(cie::kUTo8u)));
      out[2] = to8(O::mulf(O::addf(v, O::setf(cie::kVOff)), O::setf(cie::kVTo8u)));
    } else if constexpr (kIs16<T>) {
      constexpr bool kU = !kIs16s<T>;
      out[0] = sat16Biased<kU, O>(O::cvttfi(O::mulf(l, O::setf(cie::kLTo16u))));
      out[1] = sat16Biased<kU, O>(O::cvtfi(O::mulf(O::addf(u, O::setf(cie::kUOff)), O::setf(cie::kUTo16u))));
      out[2] = sat16Biased<kU, O>(
          O::cvtfi(O::addf(O::mulf(O::addf(v, O::setf(cie::kVOff)), O::setf(cie::kVTo16u)), O::setf(0.5f))));
    } else {
      out[0] = l;
      out[1] = u;
      out[2] = v;
    }
  }
};

// Forward tail of 8u (C3 tail, and every pixel of AC4) and 32f: u' = v' = 0 where
// Z is exactly 0; 8u stores the low eight bits of the nearest values, no clamp.
template <class T>
struct FwdTailZ {
  static void pixel(const WorkOf<T> in[3], WorkOf<T> out[3]) {
    const float a = fwdIn<T>(in[0]), b = fwdIn<T>(in[1]), c = fwdIn<T>(in[2]);
    const float x = mat3Row(cie::kRGBToXYZ[0], a, b, c), y = mat3Row(cie::kRGBToXYZ[1], a, b, c),
                z = mat3Row(cie::kRGBToXYZ[2], a, b, c);
    const float l = lightness<T>(y, powLuvRow(fwdTable<T>(), rowTrunc<T>(y)));
    float u1 = 0.0f, v1 = 0.0f;
    if (z != 0.0f) chroma(x, y, (3.0f * z + 15.0f * y) + x, u1, v1);
    float u, v;
    uv(u1, v1, l, u, v);
    if constexpr (kIs8u<T>) {
      out[0] = cvtNearest(l * cie::kLTo8u);
      out[1] = cvtNearest((u + cie::kUOff) * cie::kUTo8u);
      out[2] = cvtNearest((v + cie::kVOff) * cie::kVTo8u);
    } else {
      out[0] = l;
      out[1] = u;
      out[2] = v;
    }
  }
};

// Forward tail of 16u and 16s: U and V samples 0 (on the 16u scale) where D is 0.
// Round: nearest for L, U, V and the row index by the nearest Y (16u C3, 16s);
// else truncation throughout (16u AC4).
template <class T, bool Round>
struct FwdTail16 {
  static void pixel(const int in[3], int out[3]) {
    constexpr bool kU = !kIs16s<T>;
    const auto cvt = [](float f) { return Round ? cvtNearest(f) : cvtTrunc(f); };
    const float a = fwdIn<T>(in[0]), b = fwdIn<T>(in[1]), c = fwdIn<T>(in[2]);
    const float x = mat3Row(cie::kRGBToXYZ[0], a, b, c), y = mat3Row(cie::kRGBToXYZ[1], a, b, c),
                z = mat3Row(cie::kRGBToXYZ[2], a, b, c);
    const float l = lightness<T>(y, powLuvRow(kPowLuv129, cvt(y) >> 9));
    out[0] = sat16Biased<kU>(cvt(l * cie::kLTo16u));
    const float d = (3.0f * z + 15.0f * y) + x;
    if (d == 0.0f) {
      out[1] = out[2] = sat16Biased<kU>(0);
      return;
    }
    float u1, v1, u, v;
    chroma(x, y, d, u1, v1);
    uv(u1, v1, l, u, v);
    out[1] = sat16Biased<kU>(cvt((u + cie::kUOff) * cie::kUTo16u));
    out[2] = sat16Biased<kU>(cvt((v + cie::kVOff) * cie::kVTo16u + 0.5f));
  }
};

// ---- LUV -> RGB

// Y of the block paths from L: the reverse slope where `linear`, else the cube of (L + 16) / 116.
template <class O, class F = typename O::F>
inline F blockY(F l, F linear) {
  const F p = O::mulf(O::addf(l, O::setf(cie::kCubeOff)), O::setf(cie::kInv116));
  return O::selectf(linear, O::mulf(O::setf(cie::kLinearY), l), O::mulf(O::mulf(p, p), p));
}

// v' = V a + white v', with 9e-5 added where |v'| is at or below the block floor.
template <class O, class F = typename O::F>
inline F blockV(F v, F a) {
  const F vp = O::addf(O::mulf(v, a), O::setf(cie::kWhiteV));
  return O::selectf(O::cmplef(O::absf(vp), O::setf(cie::kVFloor)), O::addf(vp, O::setf(cie::kLFloor)), vp);
}

// X, Y, Z of the block paths from u' parts: X = u' (2.25 q); Z = (3 q - 5 Y) - X / 3.
template <class O, class F = typename O::F>
inline void blockXZ(F u, F a, F y, F q, F& x, F& z) {
  const F up = O::addf(O::mulf(u, a), O::setf(cie::kWhiteU));
  x = O::mulf(up, O::mulf(O::setf(2.25f), q));
  z = O::subf(O::subf(O::mulf(O::setf(3.0f), q), O::mulf(O::setf(5.0f), y)), O::mulf(O::setf(0.33333334f), x));
}

// 32f block: L at or below 9e-5 raised by 9e-5; refined reciprocals; no clamp.
struct Inv32fBlock {
  template <class O, class F = typename O::F>
  static void vblock(const F in[3], F out[3]) {
    F l = in[0];
    l = O::selectf(O::cmplef(l, O::setf(cie::kLFloor)), O::addf(l, O::setf(cie::kLFloor)), l);
    const F a = rcpRefined<O>(O::mulf(O::setf(13.0f), l));
    const F vp = blockV<O>(in[2], a);
    const F y = blockY<O>(l, O::cmplef(l, O::setf(cie::kLBreak)));
    const F q = O::mulf(y, rcpRefined<O>(vp));
    F x, z;
    blockXZ<O>(in[1], a, y, q, x, z);
    for (int k = 0; k < 3; ++k) out[k] = mat3Row<O>(cie::kXYZToRGB[k], x, y, z);
  }
};

// 8u block. C3: the linear segment only where the L sample is 0, nearest of
// R, G, B times 255. AC4: the segment by the break on L, Y times 255 before the
// matrix, truncation. Bare reciprocal estimates; clamped to 0..255.
template <bool Ac4>
struct Inv8uBlock {
  template <class O, class V = typename O::V>
  static void vblock(const V in[3], V out[3]) {
    using F = typename O::F;
    const F s = O::cvtif(in[0]);
    const F zero = O::cmplef(s, O::setf(cie::kLFloor));
    const F l = O::mulf(O::selectf(zero, O::addf(s, O::setf(cie::kLFloor)), s), O::setf(cie::kL8uTo));
    const F u = O::subf(O::mulf(O::cvtif(in[1]), O::setf(cie::kU8uTo)), O::setf(cie::kUOff));
    const F v = O::subf(O::mulf(O::cvtif(in[2]), O::setf(cie::kV8uTo)), O::setf(cie::kVOff));
    const F a = O::rcpf(O::mulf(O::setf(13.0f), l));
    const F vp = blockV<O>(v, a);
    F y = blockY<O>(l, Ac4 ? O::cmplef(l, O::setf(cie::kLBreak)) : zero);
    if (Ac4) y = O::mulf(y, O::setf(255.0f));
    const F q = O::mulf(y, O::rcpf(vp));
    F x, z;
    blockXZ<O>(u, a, y, q, x, z);
    for (int k = 0; k < 3; ++k) {
      const F c = mat3Row<O>(cie::kXYZToRGB[k], x, y, z);
      const V i = Ac4 ? O::cvttfi(c) : O::cvtfi(O::mulf(c, O::setf(255.0f)));
      out[k] = O::min32(O::max32(i, O::set32(0)), O::set32(255));
    }
  }
};

// 16u and 16s block: samples (16s biased) to L, U, V by the block scales, L at or
// below 9e-5 raised; refined reciprocals; Y times 65535 before the matrix;
// R, G, B truncated and saturated as a signed pack does.
template <class T>
struct Inv16Block {
  template <class O, class V = typename O::V>
  static void vblock(const V in[3], V out[3]) {
    using F = typename O::F;
    F s[3];
    for (int k = 0; k < 3; ++k) s[k] = O::cvtif(kIs16s<T> ? O::add32(in[k], O::set32(32768)) : in[k]);
    const F l0 = s[0];
    const F l = O::mulf(O::selectf(O::cmplef(l0, O::setf(cie::kLFloor)), O::addf(l0, O::setf(cie::kLFloor)), l0),
                        O::setf(cie::kL16uTo));
    const F u = O::subf(O::mulf(s[1], O::setf(cie::kU16uTo)), O::setf(cie::kUOff));
    const F v = O::subf(O::mulf(s[2], O::setf(cie::kV16uTo)), O::setf(cie::kVOff));
    const F a = rcpRefined<O>(O::mulf(O::setf(13.0f), l));
    const F vp = blockV<O>(v, a);
    const F y = O::mulf(blockY<O>(l, O::cmplef(l, O::setf(cie::kLBreak))), O::setf(65535.0f));
    const F q = O::mulf(y, rcpRefined<O>(vp));
    F x, z;
    blockXZ<O>(u, a, y, q, x, z);
    for (int k = 0; k < 3; ++k)
      out[k] = sat16Biased<!kIs16s<T>, O>(O::cvttfi(mat3Row<O>(cie::kXYZToRGB[k], x, y, z)));
  }
};

// Y of the tails from L, true divisions: ((L + 16) / 116)^3 from the break up, else L / 903.3.
inline float tailY(float l) {
  if (l >= cie::kLBreak) {
    const float p = (l + cie::kCubeOff) / cie::kCubeL;
    return (p * p) * p;
  }
  return l / cie::kLinearL;
}

// 32f tail (and every pixel of AC4): black below the L floor; q through the
// small floor of v'; each output clamped to 0..1 (NaN passes).
struct Inv32fTail {
  static void pixel(const float in[3], float out[3]) {
    const float l = in[0];
    if (l < cie::kLFloor) {
      out[0] = out[1] = out[2] = 0.0f;
      return;
    }
    const float y = tailY(l);
    const float l13 = 13.0f * l;
    const float vp = in[2] / l13 + cie::kWhiteV;
    const float u2 = (in[1] / l13 + cie::kWhiteU) * 2.25f;
    const float q = std::fabs(vp) < cie::kVFloor32fTail ? y / (cie::kLFloor + vp) : y / vp;
    const float x = u2 * q;
    const float z = (3.0f * q - 5.0f * y) - x / 3.0f;
    for (int k = 0; k < 3; ++k) {
      const float c = mat3Row(cie::kXYZToRGB[k], x, y, z);
      out[k] = c < 0.0f ? 0.0f : (c > 1.0f ? 1.0f : c);
    }
  }
};

// Integer tail of 8u, 16u, 16s (M = 255 or 65535): true divisions, the tails' own
// white point, rounding by + 0.5 and truncation, blue in double; clamped to 0..M.
template <class T>
struct InvIntTail {
  static void pixel(const int in[3], int out[3]) {
    constexpr float kM = kIs8u<T> ? 255.0f : 65535.0f;
    constexpr int kMax = kIs8u<T> ? 255 : 65535;
    constexpr int kBias = kIs16s<T> ? 32768 : 0;
    const float s0 = float(in[0] + kBias), s1 = float(in[1] + kBias), s2 = float(in[2] + kBias);
    const float l = s0 * 100.0f / kM;
    // L below the floor (for 8u: the L sample 0) is black.
    if (l < cie::kLFloor) {
      out[0] = out[1] = out[2] = -kBias;
      return;
    }
    const float u = s1 * 354.0f / kM - cie::kUOff;
    const float v = s2 * 262.0f / kM - cie::kVOff;
    const float y = tailY(l) * kM;
    const float l13 = 13.0f * l;
    const float u2 = (u / l13 + cie::kWhiteUTail) * 2.25f;
    float vp = v / l13 + cie::kWhiteVTail;
    if (!kIs8u<T> && std::fabs(vp) < cie::kVFloor) vp = vp + cie::kLFloor;
    const float q = y / vp;
    const float x = u2 * q;
    const float z = (3.0f * q - x / 3.0f) - 5.0f * y;
    const auto& m = cie::kXYZToRGB;
    const int32_t r = cvtTrunc(((m[0][0] * x + 0.5f) + m[0][1] * y) + m[0][2] * z);
    const int32_t g = cvtTrunc(((m[1][0] * x + 0.5f) + m[1][1] * y) + m[1][2] * z);
    const int32_t b = lanes::emu::cvtTrunc((double(m[2][0] * x + m[2][1] * y) + 0.5) + double(z) * cie::kZToB64);
    const int32_t rgb[3] = {r, g, b};
    for (int k = 0; k < 3; ++k) out[k] = (rgb[k] < 0 ? 0 : (rgb[k] > kMax ? kMax : rgb[k])) - kBias;
  }
};

}  // namespace lum::models::luv
