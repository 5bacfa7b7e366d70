// The power kernel's row on 256-bit lanes: the same template as the 128-bit row,
// instantiated with lanes::Avx2, entered only where useWide() says so.
#include "frame/lanes_avx2.h"
#include "vecmath/powx_kernel.h"

#if LUM_SIMD_SSE && defined(__AVX2__)
namespace lum::vm {
void powRowWide(const float* s, float y, float* d, int len, bool fast) {
  if (fast) powRow<lanes::Avx2, true>(s, y, d, len);
  else powRow<lanes::Avx2, false>(s, y, d, len);
}
}  // namespace lum::vm
#endif
