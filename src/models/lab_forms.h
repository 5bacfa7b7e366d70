// Forms of RGB <-> CIE Lab. The single-precision forms take cube roots by a
// POW_LUV row and a binomial series whose length fits the output type; the
// double forms by a 53-bit cube root of their own (two lanes at once, a 32-cell
// table per exponent residue). The reverse direction cubes everywhere: it has
// no linear segment. Channels in and out: R, G, B and L, a, b; every form
// computes on lanes (vblock<O>) and its scalar twin is the same code on one
// splatted lane of lanes::Emu.
#pragma once

#include <cstdint>
#include <cstring>

#include "frame/coeffs.h"
#include "frame/lanes.h"
#include "models/lab_cbrt_tables.h"
#include "models/model_frame.h"

namespace lum::lab {

namespace k = coef::lab;
namespace cie = coef::cie;

// ---------------------------------------------------------------------------
// Single precision
// ---------------------------------------------------------------------------

// Cube root of v on 0..1 by the row trunc(v x 127.99805) of the 128-row table
// (the index held inside the table) and N powers of the series k.
template <int N, class O, class F = typename O::F>
inline F cubeRootOf(F v, const float* series) {
  static_assert(sizeof(models::PowLuvRow) == 2 * sizeof(float));
  constexpr int kLast = int(models::kPowLuv128.size()) - 1;
  const auto row = O::min32(O::max32(O::cvttfi(O::mulf(v, O::setf(cie::kRowScale))), O::set32(0)), O::set32(kLast));
  F c, r;
  O::pairsf(reinterpret_cast<const float*>(models::kPowLuv128.data()), row, c, r);
  return models::cubeRoot<N, O>(c, r, v, series);
}

// L, a, b of white-scaled x, y, z: f(v) = 7.787 v + 0.13793103 at or below the
// break, else the cube root; L = 903.3 y there, else 116 f(y) - 16.
template <int N, class O, class F = typename O::F>
inline F segmentOf(F v, F brk, const float* series) {
  const F root = cubeRootOf<N, O>(v, series);
  const F lin = O::addf(O::mulf(O::setf(k::kSlope), v), O::setf(k::kOffset));
  return O::leSelectf(v, brk, lin, root);
}
template <int N, class O, class F = typename O::F>
inline void labOf(F x, F y, F z, const float* series, F out[3]) {
  const F brk = O::setf(cie::kYBreak);
  const F fx = segmentOf<N, O>(x, brk, series), fy = segmentOf<N, O>(y, brk, series);
  const F fz = segmentOf<N, O>(z, brk, series);
  out[0] = O::leSelectf(y, brk, O::mulf(O::setf(cie::kLinearL), y),
                        O::subf(O::mulf(O::setf(cie::kCubeL), fy), O::setf(cie::kCubeOff)));
  out[1] = O::mulf(O::setf(k::kA), O::subf(fx, fy));
  out[2] = O::mulf(O::setf(k::kB), O::subf(fy, fz));
}

// X, Y, Z of r, g, b by the forward matrix, each times its white factor w.
template <class O, class F = typename O::F>
inline void xyzOf(F r, F g, F b, const float (&w)[3], F out[3]) {
  for (int c = 0; c < 3; ++c) out[c] = O::mulf(models::mat3Row<O>(cie::kRGBToXYZ[c], r, g, b), O::setf(w[c]));
}

// R, G, B of L, a, b: P = (L + 16) x 0.00862069, Q = P + 0.002 a, R = P - 0.005 b;
// X, Y, Z = Q^3, P^3, R^3 times the white factors w; then the inverse matrix.
template <class O, class F = typename O::F>
inline void rgbOf(F l, F a, F b, const float (&w)[3], F out[3]) {
  const F p = O::mulf(O::addf(l, O::setf(cie::kCubeOff)), O::setf(cie::kInv116));
  const F q = O::addf(p, O::mulf(a, O::setf(k::kInvA)));
  const F r = O::subf(p, O::mulf(b, O::setf(k::kInvB)));
  const auto cube = [](F v) { return O::mulf(O::mulf(v, v), v); };
  const F x = O::mulf(cube(q), O::setf(w[0])), y = O::mulf(cube(p), O::setf(w[1])), z = O::mulf(cube(r), O::setf(w[2]));
  for (int c = 0; c < 3; ++c) out[c] = models::mat3Row<O>(cie::kXYZToRGB[c], x, y, z);
}

// Integer lanes held in lo..hi (the clamp of the block paths).
template <class O, class V = typename O::V>
inline V clampTo(V v, int lo, int hi) {
  return O::min32(O::max32(v, O::set32(lo)), O::set32(hi));
}

// Forward, 32f: L, a, b as they come, eight powers.
struct Fwd32f {
  template <class O, class F = typename O::F>
  static void vblock(const F in[3], F out[3]) {
    static constexpr float kWhite[3] = {k::kWhiteX, 1.0f, k::kWhiteZ};
    F xyz[3];
    xyzOf<O>(in[0], in[1], in[2], kWhite, xyz);
    labOf<8, O>(xyz[0], xyz[1], xyz[2], cie::kSeries, out);
  }
};

// Forward, 8u samples to Lab samples of 8 or 16 bits: nearest of L x 2.55 and
// a + 128, b + 128 (8u), or of L x 655.35 and (a + 128) x 255 (16u). Clamp: the
// block's saturation; the tail stores the low bits instead.
template <bool Wide16, bool Clamp>
struct Fwd8u {
  template <class O, class V = typename O::V>
  static void vblock(const V in[3], V out[3]) {
    using F = typename O::F;
    F xyz[3], lab[3];
    xyzOf<O>(O::cvtif(in[0]), O::cvtif(in[1]), O::cvtif(in[2]), k::kWhite8u, xyz);
    if constexpr (Wide16) labOf<8, O>(xyz[0], xyz[1], xyz[2], k::kSeries16, lab);
    else labOf<4, O>(xyz[0], xyz[1], xyz[2], cie::kSeries, lab);
    const F off = O::setf(k::kAbOff);
    if constexpr (Wide16) {
      out[0] = O::cvtfi(O::mulf(lab[0], O::setf(cie::kLTo16u)));
      for (int c = 1; c < 3; ++c) out[c] = O::cvtfi(O::mulf(O::addf(lab[c], off), O::setf(k::kAbTo16u)));
    } else {
      out[0] = O::cvtfi(O::mulf(lab[0], O::setf(cie::kLTo8u)));
      for (int c = 1; c < 3; ++c) out[c] = O::cvtfi(O::addf(lab[c], off));
    }
    if constexpr (Clamp)
      for (int c = 0; c < 3; ++c) out[c] = clampTo<O>(out[c], 0, Wide16 ? 65535 : 255);
  }
};

// Reverse, 32f: no clamp.
struct Inv32f {
  template <class O, class F = typename O::F>
  static void vblock(const F in[3], F out[3]) { rgbOf<O>(in[0], in[1], in[2], k::kInvWhite, out); }
};

// Reverse, 8u or 16u Lab samples to 8u RGB: L = sample x 0.39215687, a, b =
// sample - 128 (8u), or L = sample x 0.0015259022, a, b = sample x 0.003921569
// - 128 (16u); white factors folded with 255; nearest, clamped to 0..255.
template <bool From16>
struct Inv8u {
  template <class O, class V = typename O::V>
  static void vblock(const V in[3], V out[3]) {
    using F = typename O::F;
    const F l = O::cvtif(in[0]), a = O::cvtif(in[1]), b = O::cvtif(in[2]), off = O::setf(k::kAbOff);
    F rgb[3];
    if constexpr (From16)
      rgbOf<O>(O::mulf(l, O::setf(k::kL16uTo)), O::subf(O::mulf(a, O::setf(cie::kInv255)), off),
               O::subf(O::mulf(b, O::setf(cie::kInv255)), off), k::kInvWhite8u, rgb);
    else
      rgbOf<O>(O::mulf(l, O::setf(cie::kL8uTo)), O::subf(a, off), O::subf(b, off), k::kInvWhite8u, rgb);
    for (int c = 0; c < 3; ++c) out[c] = clampTo<O>(O::cvtfi(rgb[c]), 0, 255);
  }
};

// ---------------------------------------------------------------------------
// Double precision
// ---------------------------------------------------------------------------

// -1/c_i of the cells of [1, 2), c_i = 1 + (2 i + 1)/64 their midpoints.
inline constexpr auto kCbrtRcp = [] {
  std::array<double, 32> t{};
  for (int i = 0; i < 32; ++i) t[size_t(i)] = -1.0 / (1.0 + double(2 * i + 1) / 64.0);
  return t;
}();

// Bits of a double and back.
inline uint64_t bitsOf(double x) {
  uint64_t b;
  std::memcpy(&b, &x, 8);
  return b;
}
inline double fromBits(uint64_t b) {
  double x;
  std::memcpy(&x, &b, 8);
  return x;
}

// Cube roots of the lanes of x, to the last bit of double precision, for
// positive or negative normal numbers (other lanes get some value, never a
// fault). Per lane: e the biased exponent, i the top five mantissa bits,
// e3 = (5462 e) >> 14, r = e - 3 e3; s = +-2^(e3 - 341); m the mantissa in
// [1, 2), c the middle of its cell; t = (m - c)/c as -1/c x ((-m) - (-c));
// H = hi x s; root = H + (s x lo + (t H) Q(t)). The table reads go lane by lane.
template <class O, class D = typename O::D>
inline D cbrt53(D x) {
  constexpr int n = int(sizeof(D) / sizeof(double));
  alignas(32) double xs[n], ss[n], ms[n], cs[n], rcp[n], hi[n], lo[n];
  O::stored(xs, x);
  constexpr uint64_t kSign = uint64_t(1) << 63, kMant = (uint64_t(1) << 52) - 1;
  constexpr uint64_t kMinusOne = 0xBFF0000000000000ull;
  for (int j = 0; j < n; ++j) {
    const uint64_t b = bitsOf(xs[j]);
    const int e = int((b >> 52) & 0x7FF), i = int((b >> 47) & 31);
    const int e3 = (5462 * e) >> 14, r = e - 3 * e3;
    ss[j] = fromBits((b & kSign) | (uint64_t(0x2AA + e3) << 52));
    ms[j] = fromBits((b & kMant) | kMinusOne);
    cs[j] = fromBits(kMinusOne | (uint64_t(i) << 47) | (uint64_t(1) << 46));
    rcp[j] = kCbrtRcp[size_t(i)];
    hi[j] = kCbrtHi[32 * r + i];
    lo[j] = kCbrtLo[32 * r + i];
  }
  const D s = O::loadd(ss);
  const D t = O::muld(O::loadd(rcp), O::subd(O::loadd(ms), O::loadd(cs)));
  D q = O::setd(k::kCbrtQ[7]);
  for (int c = 6; c >= 0; --c) q = O::addd(O::setd(k::kCbrtQ[c]), O::muld(t, q));
  const D h = O::muld(O::loadd(hi), s);
  return O::addd(h, O::addd(O::muld(s, O::loadd(lo)), O::muld(O::muld(t, h), q)));
}

// Row c of a float matrix widened to double: (m0 a + m1 b) + m2 c.
template <class O, class D = typename O::D>
inline D mat3RowD(const float (&m)[3], D a, D b, D c) {
  return O::addd(O::addd(O::muld(a, O::setd(double(m[0]))), O::muld(b, O::setd(double(m[1])))),
                 O::muld(c, O::setd(double(m[2]))));
}

// Forward, 64f: the widened matrix, the double white factors, cube roots by
// cbrt53, the segments at the widened break.
struct Fwd64f {
  template <class O, class D = typename O::D>
  static void vblock(const D in[3], D out[3]) {
    const D x = O::muld(mat3RowD<O>(cie::kRGBToXYZ[0], in[0], in[1], in[2]), O::setd(k::kWhiteX64));
    const D y = mat3RowD<O>(cie::kRGBToXYZ[1], in[0], in[1], in[2]);
    const D z = O::muld(mat3RowD<O>(cie::kRGBToXYZ[2], in[0], in[1], in[2]), O::setd(k::kWhiteZ64));
    const D brk = O::setd(k::kBreak64);
    const auto f = [&](D v, D root) {
      return O::leSelectd(v, brk, O::addd(O::muld(O::setd(k::kSlope64), v), O::setd(k::kOffset64)), root);
    };
    const D ry = cbrt53<O>(y);
    const D fx = f(x, cbrt53<O>(x)), fy = f(y, ry), fz = f(z, cbrt53<O>(z));
    out[0] = O::leSelectd(y, brk, O::muld(O::setd(k::kLinearL64), y),
                          O::subd(O::muld(O::setd(double(cie::kCubeL)), ry), O::setd(double(cie::kCubeOff))));
    out[1] = O::muld(O::setd(double(k::kA)), O::subd(fx, fy));
    out[2] = O::muld(O::setd(double(k::kB)), O::subd(fy, fz));
  }
};

// Reverse, 64f: the steps of the float form in double, with the double 1/116,
// 0.002 and 0.005 and the widened white factors and matrix; no clamp.
struct Inv64f {
  template <class O, class D = typename O::D>
  static void vblock(const D in[3], D out[3]) {
    const D p = O::muld(O::addd(in[0], O::setd(double(cie::kCubeOff))), O::setd(k::kInv116_64));
    const D q = O::addd(p, O::muld(in[1], O::setd(k::kInvA64)));
    const D r = O::subd(p, O::muld(in[2], O::setd(k::kInvB64)));
    const auto cube = [](D v) { return O::muld(O::muld(v, v), v); };
    const D x = O::muld(cube(q), O::setd(double(k::kInvWhite[0])));
    const D y = O::muld(cube(p), O::setd(double(k::kInvWhite[1])));
    const D z = O::muld(cube(r), O::setd(double(k::kInvWhite[2])));
    for (int c = 0; c < 3; ++c) out[c] = mat3RowD<O>(cie::kXYZToRGB[c], x, y, z);
  }
};

}  // namespace lum::lab
