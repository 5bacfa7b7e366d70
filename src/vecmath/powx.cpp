#include "vecmath/powx.h"

#include <cmath>
#include <cstring>
#include <limits>

#include "frame/fp_control.h"
#include "frame/rows.h"
#include "vecmath/powx_kernel.h"

namespace lum::vm {

namespace {
// 2 for an odd integer, 1 for an even integer or an infinity, 0 otherwise, read
// from the bits of y: the units bit lies at 52 - exponent (the exponent field's
// own lowest bit when the exponent is 0, which is set there).
int integerKind(double y) {
  uint64_t b;
  std::memcpy(&b, &y, 8);
  const int ex = int((b >> 52) & 0x7FF) - 1023;
  if (ex == 1024) return 1;
  if (ex < 0) return (b << 1) == 0 ? 1 : 0;
  if (ex >= 53) return 1;
  const uint64_t frac = (uint64_t(1) << (52 - ex)) - 1;
  if (b & frac) return 0;
  return ((b >> (52 - ex)) & 1) ? 2 : 1;
}

double rarePowD(double x, double y) {
  if (y != y) return x == 1.0 ? 1.0 : y + y;  // a NaN exponent: only a base of 1 gives 1
  if (y == 0.0) return 1.0;
  if (x != x) return x + x;
  const int kind = integerKind(y);
  if (x < 0.0 && kind == 0 && !std::isinf(x)) return -std::numeric_limits<double>::quiet_NaN();
  const double mag = std::pow(std::fabs(x), y);
  return std::signbit(x) && kind == 2 ? -mag : mag;
}
}  // namespace

float rarePow(float x, float y) { return float(rarePowD(double(x), double(y))); }

}  // namespace lum::vm

using namespace lum;

void lumsPowx_32f_A21(const Lum32f* pSrc, Lum32f val, Lum32f* pDst, int len) {
  if (len < 1 || pSrc == nullptr || pDst == nullptr) return;
  const FpState saved = fpEnterExact();
  if (val == 0.0f) {
    for (int i = 0; i < len; ++i) storeAt(pDst + i, 1.0f);
  } else if (std::fabs(val) >= std::numeric_limits<float>::min() && std::fabs(val) <= std::numeric_limits<float>::max()) {
    const bool fast = std::fabs(val) <= vm::kFloatMaxY;
#if LUM_SIMD_SSE
    if (useWide()) vm::powRowWide(pSrc, val, pDst, len, fast);
    else
#endif
      lanes::with128([&](auto o) {
        if (fast) vm::powRow<decltype(o), true>(pSrc, val, pDst, len);
        else vm::powRow<decltype(o), false>(pSrc, val, pDst, len);
      });
  } else {
    for (int i = 0; i < len; ++i) storeAt(pDst + i, vm::rarePow(loadAt(pSrc + i), val));  // a denormal, infinite or NaN exponent
  }
  fpRestore(saved);
}
