// The power kernel's lanes, written once over the lane set: x^y as
// 2^(y * log2 x), with log2 and exp2 in double precision, rounded once to float.
#pragma once

#include <cfloat>
#include <cstdint>
#include <cstring>

#include "frame/lanes.h"
#include "frame/rows.h"
#include "vecmath/powx.h"

namespace lum::vm {

// Coefficients of the kernel: log(m) = 2 s (1 + z/3 + ... + z^6/13) with
// s = (m - 1) / (m + 1), z = s * s; 2^f = e^g, g = f ln 2, by Taylor to g^8.
inline constexpr double kLogOdd[] = {1.0 / 13, 1.0 / 11, 1.0 / 9, 1.0 / 7, 1.0 / 5, 1.0 / 3, 1.0};
inline constexpr double kExp[] = {1.0 / 40320, 1.0 / 5040, 1.0 / 720, 1.0 / 120, 1.0 / 24, 1.0 / 6, 0.5, 1.0, 1.0};
inline constexpr double kInvLn2 = 1.4426950408889634074;
inline constexpr double kLn2 = 0.69314718055994530942;
// Bits of the float nearest sqrt(1/2): mantissas are reduced into [sqrt(1/2), sqrt(2)).
inline constexpr int kSqrtHalfBits = 0x3F3504F3;
// 2^t is 0 or infinite in float beyond this |t|; clamping keeps 2^k buildable.
inline constexpr double kTClamp = 200.0;

// y * log2(2^e * m) of double lanes, m in [sqrt(1/2), sqrt(2)).
template <class O, class D = typename O::D>
inline D yLog2(D m, D e, D y) {
  const D one = O::setd(1.0);
  const D s = O::divd(O::subd(m, one), O::addd(m, one));
  const D z = O::muld(s, s);
  D q = O::setd(kLogOdd[0]);
  for (int i = 1; i < 7; ++i) q = O::addd(O::muld(q, z), O::setd(kLogOdd[i]));
  const D lnm = O::muld(O::addd(s, s), q);
  return O::muld(y, O::addd(e, O::muld(lnm, O::setd(kInvLn2))));
}

// 2^f of double lanes, |f| about 0.5 at most.
template <class O, class D = typename O::D>
inline D exp2Small(D f) {
  const D g = O::muld(f, O::setd(kLn2));
  D p = O::setd(kExp[0]);
  for (int i = 1; i < 9; ++i) p = O::addd(O::muld(p, g), O::setd(kExp[i]));
  return p;
}

// 2^k of 32-bit lanes k within -126..127, as floats.
template <class O, class V = typename O::V>
inline typename O::F pow2i(V k) {
  return O::castvf(O::sll32(O::add32(k, O::set32(127)), 23));
}

// x^y of lanes holding positive normal floats (other lanes give meaningless values).
template <class O, class F = typename O::F, class D = typename O::D>
inline F powNormal(F x, D y) {
  const auto bits = O::castfv(x);
  const auto e = O::sra32(O::sub32(bits, O::set32(kSqrtHalfBits)), 23);
  const F m = O::castvf(O::sub32(bits, O::sll32(e, 23)));
  const F ef = O::cvtif(e);
  const D lo = O::setd(-kTClamp), hi = O::setd(kTClamp);
  const D t0 = O::mind(O::maxd(yLog2<O>(O::cvtfdLo(m), O::cvtfdLo(ef), y), lo), hi);
  const D t1 = O::mind(O::maxd(yLog2<O>(O::cvtfdHi(m), O::cvtfdHi(ef), y), lo), hi);
  // k = nearest integer of t (through float: any near integer serves), f = t - k exactly.
  const auto k = O::cvtfi(O::cvtdf(t0, t1));
  const F kf = O::cvtif(k);
  const auto ka = O::sra32(k, 1);
  const F sa = pow2i<O>(ka), sb = pow2i<O>(O::sub32(k, ka));
  const D p0 = O::muld(O::muld(exp2Small<O>(O::subd(t0, O::cvtfdLo(kf))), O::cvtfdLo(sa)), O::cvtfdLo(sb));
  const D p1 = O::muld(O::muld(exp2Small<O>(O::subd(t1, O::cvtfdHi(kf))), O::cvtfdHi(sa)), O::cvtfdHi(sb));
  return O::cvtdf(p0, p1);
}

// The float kernel, for exponents of magnitude up to kFloatMaxY (the gamma
// exponents among them): log2 by the same series in single precision,
// ln(m) = 2s + 2s z (1/3 + z/5 + ... + z^4/11), y * e split exactly as
// yh * e + yl * e (yh the top 12 bits of y), 2^f by Taylor to g^7.
inline constexpr float kFloatMaxY = 2.5f;
inline constexpr float kLogOddF[] = {1.0f / 11, 1.0f / 9, 1.0f / 7, 1.0f / 5, 1.0f / 3};
inline constexpr float kExpF[] = {1.0f / 5040, 1.0f / 720, 1.0f / 120, 1.0f / 24, 1.0f / 6, 0.5f, 1.0f, 1.0f};
inline constexpr float kInvLn2F = 1.44269504f, kLn2F = 0.693147182f;

// y and its exact split y = yh + yl, yh holding the top 12 significant bits.
template <class O>
struct SplitY {
  typename O::F y, yh, yl;
  explicit SplitY(float v) {
    uint32_t b;
    std::memcpy(&b, &v, 4);
    b &= 0xFFFFF000u;
    float h;
    std::memcpy(&h, &b, 4);
    y = O::setf(v);
    yh = O::setf(h);
    yl = O::setf(v - h);
  }
};

template <class O, class F = typename O::F>
inline F powNormalF(F x, const SplitY<O>& y) {
  const auto bits = O::castfv(x);
  const auto e = O::sra32(O::sub32(bits, O::set32(kSqrtHalfBits)), 23);
  const F m = O::castvf(O::sub32(bits, O::sll32(e, 23)));
  const F ef = O::cvtif(e);
  const F one = O::setf(1.0f);
  const F s = O::divf(O::subf(m, one), O::addf(m, one));
  const F z = O::mulf(s, s);
  F q = O::setf(kLogOddF[0]);
  for (int i = 1; i < 5; ++i) q = O::addf(O::mulf(q, z), O::setf(kLogOddF[i]));
  const F s2 = O::addf(s, s);
  const F l2m = O::mulf(O::addf(s2, O::mulf(s2, O::mulf(z, q))), O::setf(kInvLn2F));
  // t = a + (b + c): a and b exact products, a - k exact, so f = (a - k) + (b + c).
  const F a = O::mulf(y.yh, ef), bc = O::addf(O::mulf(y.yl, ef), O::mulf(y.y, l2m));
  const F tc = O::minf(O::maxf(O::addf(a, bc), O::setf(-200.0f)), O::setf(200.0f));
  const auto k = O::cvtfi(tc);
  const F f = O::minf(O::maxf(O::addf(O::subf(a, O::cvtif(k)), bc), O::setf(-1.0f)), one);
  const F g = O::mulf(f, O::setf(kLn2F));
  F p = O::setf(kExpF[0]);
  for (int i = 1; i < 8; ++i) p = O::addf(O::mulf(p, g), O::setf(kExpF[i]));
  const auto ka = O::sra32(k, 1);
  return O::mulf(O::mulf(p, pow2i<O>(ka)), pow2i<O>(O::sub32(k, ka)));
}

// One register of elements: the normal lanes by powNormal, the others by rarePow.
template <class O, bool Fast>
inline void powLanes(const float* s, float y, float* d) {
  using F = typename O::F;
  constexpr int n = int(sizeof(F) / sizeof(float));
  const F x = O::loadf(s);
  F r;
  if constexpr (Fast) r = powNormalF<O>(x, SplitY<O>(y));
  else r = powNormal<O>(x, O::setd(double(y)));
  const F normal = O::castvf(O::and_(O::castfv(O::cmplef(O::setf(FLT_MIN), x)), O::castfv(O::cmplef(x, O::setf(FLT_MAX)))));
  const int mask = O::maskf(normal);
  if (mask == (1 << n) - 1) {
    O::storef(d, r);
    return;
  }
  alignas(32) float xs[n], rs[n];
  O::storef(xs, x);
  O::storef(rs, r);
  for (int i = 0; i < n; ++i)
    if (!((mask >> i) & 1)) rs[i] = rarePow(xs[i], y);
  O::storef(d, O::loadf(rs));
}

// One element through the same lanes (lane 0 of a register of ones).
template <class O, bool Fast>
inline void powOne(const float* s, float y, float* d) {
  alignas(32) float in[8] = {1, 1, 1, 1, 1, 1, 1, 1}, out[8];
  in[0] = loadAt(s);
  powLanes<O, Fast>(in, y, out);
  storeAt(d, out[0]);
}

// The row: from 16 elements on, single elements up to a 16-byte boundary of the
// destination, then 8 elements a step; the rest one by one. y is a normal float,
// of magnitude up to kFloatMaxY where Fast.
template <class O, bool Fast>
inline void powRow(const float* s, float y, float* d, int len) {
  int i = 0;
  if (len >= 16) {
    if ((reinterpret_cast<uintptr_t>(d) & 3) == 0)
      for (; i < len && (reinterpret_cast<uintptr_t>(d + i) & 15); ++i) powOne<O, Fast>(s + i, y, d + i);
    constexpr int n = int(sizeof(typename O::F) / sizeof(float));
    for (; i + 8 <= len; i += 8)
      for (int j = 0; j < 8; j += n) powLanes<O, Fast>(s + i + j, y, d + i + j);
  }
  for (; i < len; ++i) powOne<O, Fast>(s + i, y, d + i);
}

// powRow on 256-bit lanes (vector build, AVX2 processors): the same bits.
void powRowWide(const float* s, float y, float* d, int len, bool fast);

}  // namespace lum::vm
