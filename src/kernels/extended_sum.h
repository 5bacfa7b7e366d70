// The 80-bit extended accumulator that carries a float sum across rows: 64-bit
// significand, round to nearest even. Where long double is the x87 extended
// type it is used as such; elsewhere SoftExtended computes the same sums in
// integer arithmetic (round to nearest; the x87 rounding-mode bits are not followed).
#pragma once

#include <cfloat>
#include <cmath>
#include <cstdint>
#include <cstring>
#include <utility>

namespace lum::kern {

// Software model of x87 addition of floats into an extended accumulator, read
// out as a double. Finite sums are exact to the x87 result; NaN results follow
// the x87 rules for quiet operands (the larger significand wins, the positive
// one on a tie; infinity minus infinity gives the negative default NaN).
class SoftExtended {
 public:
  void add(float f) {
    uint32_t b;
    std::memcpy(&b, &f, 4);
    const bool neg = b >> 31;
    const uint32_t ex = (b >> 23) & 0xFF, man = b & 0x7FFFFF;
    if (ex == 0xFF) {
      if (man) {
        takeNaN(neg, (uint64_t(man | 0x400000) << 40) | (uint64_t(1) << 63));
      } else if (kind_ == Kind::Inf && neg != neg_) {
        kind_ = Kind::NaN;  // infinity minus infinity: the default NaN
        neg_ = true;
        mant_ = uint64_t(3) << 62;
      } else if (kind_ == Kind::Finite) {
        kind_ = Kind::Inf;
        neg_ = neg;
      }
      return;
    }
    if (kind_ != Kind::Finite) return;
    // f = man * 2^(exponent), exactly.
    uint64_t m = ex ? (man | 0x800000u) : man;
    int e = ex ? int(ex) - 150 : -149;
    if (m == 0) {
      if (mant_ == 0) neg_ = neg_ && neg;  // +0 unless both zeros are negative
      return;
    }
    const int lz = __builtin_clzll(m);
    m <<= lz;
    e -= lz;
    if (mant_ == 0) {
      mant_ = m;
      exp_ = e;
      neg_ = neg;
      return;
    }
    addFinite(neg, m, e);
  }

  double value() const {
    if (kind_ == Kind::NaN) {
      const uint64_t bits = (uint64_t(neg_) << 63) | (uint64_t(0x7FF) << 52) | ((mant_ << 1) >> 12);
      double d;
      std::memcpy(&d, &bits, 8);
      return d;
    }
    if (kind_ == Kind::Inf) return neg_ ? -HUGE_VAL : HUGE_VAL;
    if (mant_ == 0) return neg_ ? -0.0 : 0.0;
    // Round the 64-bit significand to 53 bits, nearest even.
    uint64_t q = mant_ >> 11;
    const uint64_t rem = mant_ & 0x7FF;
    int e = exp_ + 11;
    if (rem > 0x400 || (rem == 0x400 && (q & 1))) ++q;
    if (q >> 53) {
      q >>= 1;
      ++e;
    }
    const double mag = std::ldexp(double(q), e);
    return neg_ ? -mag : mag;
  }

 private:
  enum class Kind { Finite, Inf, NaN };

  // A quiet NaN operand: against a NaN accumulator the larger significand wins,
  // and on equal significands the positive one.
  void takeNaN(bool neg, uint64_t sig) {
    if (kind_ == Kind::NaN) {
      if (sig < mant_) return;
      if (sig == mant_) {
        neg_ = neg_ && neg;
        return;
      }
    }
    kind_ = Kind::NaN;
    neg_ = neg;
    mant_ = sig;
  }

  // Adds a nonzero (neg, m * 2^e), m normalised, to a nonzero accumulator.
  void addFinite(bool neg, uint64_t m, int e) {
    using U = unsigned __int128;
    bool xNeg = neg_, yNeg = neg;
    uint64_t xm = mant_, ym = m;
    int xe = exp_, ye = e;
    if (ye > xe || (ye == xe && ym > xm)) {
      std::swap(xNeg, yNeg);
      std::swap(xm, ym);
      std::swap(xe, ye);
    }
    // Both significands sit at bit 125 of a 128-bit frame; the smaller one is
    // shifted down with a sticky bit, which keeps the rounding exact because the
    // rounding point lies far above bit 0 whenever bits are lost.
    const int shift = xe - ye;
    const U a = U(xm) << 62;
    U b;
    if (shift >= 126) {
      b = 1;
    } else {
      const U full = U(ym) << 62;
      b = full >> shift;
      if ((b << shift) != full) b |= 1;
    }
    U r = xNeg == yNeg ? a + b : a - b;
    if (r == 0) {
      mant_ = 0;
      neg_ = false;
      return;
    }
    const uint64_t hi = uint64_t(r >> 64);
    const int msb = hi ? 127 - __builtin_clzll(hi) : 63 - __builtin_clzll(uint64_t(r));
    const int low = msb - 63;  // bits below the 64-bit significand
    int re = xe - 62 + low;
    uint64_t q;
    if (low <= 0) {
      q = uint64_t(r << -low);
    } else {
      q = uint64_t(r >> low);
      const U rem = r & ((U(1) << low) - 1);
      const U half = U(1) << (low - 1);
      if (rem > half || (rem == half && (q & 1))) {
        if (++q == 0) {
          q = uint64_t(1) << 63;
          ++re;
        }
      }
    }
    mant_ = q;
    exp_ = re;
    neg_ = xNeg;
  }

  Kind kind_ = Kind::Finite;
  bool neg_ = false;
  uint64_t mant_ = 0;  // finite: significand (bit 63 set unless zero); NaN: x87 significand
  int exp_ = 0;        // finite: value = mant_ * 2^exp_
};

#if LDBL_MANT_DIG == 64
// The x87 extended type itself.
class X87Extended {
 public:
  void add(float f) { v_ += f; }
  double value() const { return double(v_); }

 private:
  long double v_ = 0;
};
using ExtendedSum = X87Extended;
#else
using ExtendedSum = SoftExtended;
#endif

}  // namespace lum::kern
