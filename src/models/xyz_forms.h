// The forms of RGB <-> XYZ: the 8u integer sets of blocks and tails, the float matrix
// of 16u, 16s and 32f.
#pragma once

#include "frame/coeffs.h"
#include "models/model_frame.h"

namespace lum::models::xyz {

namespace cie = lum::coef::cie;

// 8u block: each output (m0 a + m1 b + m2 c) >> Shift in 32 bits, a floor, clamped to 0..255.
template <const int (&M)[3][3], int Shift>
struct IntBlock8u {
  template <class O, class V = typename O::V>
  static void vblock(const V in[3], V out[3]) {
    for (int k = 0; k < 3; ++k) {
      const V s = O::add32(O::add32(O::mul32(in[0], M[k][0]), O::mul32(in[1], M[k][1])), O::mul32(in[2], M[k][2]));
      out[k] = O::min32(O::max32(O::sra32(s, Shift), O::set32(0)), O::set32(255));
    }
  }
};

// 8u tail: each output (m0 a + m1 b + m2 c) >> 16; ClampFrom is the first output
// clamped to 0..255 (the ones before it are stored as they are).
template <const int (&M)[3][3], int ClampFrom>
struct IntTail8u {
  static void pixel(const int in[3], int out[3]) {
    for (int k = 0; k < 3; ++k) {
      const int v = (M[k][0] * in[0] + M[k][1] * in[1] + M[k][2] * in[2]) >> 16;
      out[k] = k < ClampFrom ? v : (v < 0 ? 0 : (v > 255 ? 255 : v));
    }
  }
};

// 16u and 16s: the float matrix on the samples (16s biased by 32768), truncated,
// saturated as a signed pack does (16s: 32768 taken off). Block and tail alike.
template <const float (&M)[3][3], bool Signed>
struct Float16 {
  template <class O, class V = typename O::V>
  static void vblock(const V in[3], V out[3]) {
    typename O::F a[3];
    for (int k = 0; k < 3; ++k) a[k] = O::cvtif(Signed ? O::add32(in[k], O::set32(32768)) : in[k]);
    for (int k = 0; k < 3; ++k) out[k] = sat16Biased<!Signed, O>(O::cvttfi(mat3Row<O>(M[k], a[0], a[1], a[2])));
  }
};

// 32f RGB -> XYZ: X and Y as they are, Z by a maximum with 0 then a minimum with 1
// (a NaN Z becomes 0).
struct ToXYZ32f {
  template <class O, class F = typename O::F>
  static void vblock(const F in[3], F out[3]) {
    for (int k = 0; k < 3; ++k) out[k] = mat3Row<O>(cie::kRGBToXYZ[k], in[0], in[1], in[2]);
    out[2] = O::minf(O::maxf(out[2], O::zerof()), O::setf(1.0f));
  }
};

// 32f XYZ -> RGB: each output below 0 becomes 0, else above 1 becomes 1; NaN passes.
struct ToRGB32f {
  template <class O, class F = typename O::F>
  static void vblock(const F in[3], F out[3]) {
    for (int k = 0; k < 3; ++k)
      out[k] = O::minf(O::setf(1.0f), O::maxf(O::zerof(), mat3Row<O>(cie::kXYZToRGB[k], in[0], in[1], in[2])));
  }
};

// The two sets of each direction of the 8u forms.
using Fwd8uBlock = IntBlock8u<cie::kRGBToXYZBlockQ15, 15>;
using Fwd8uTail = IntTail8u<cie::kRGBToXYZTailQ16, 2>;
using Inv8uBlock = IntBlock8u<cie::kXYZToRGBBlockQ13, 13>;
using Inv8uTail = IntTail8u<cie::kXYZToRGBTailQ16, 0>;

}  // namespace lum::models::xyz
