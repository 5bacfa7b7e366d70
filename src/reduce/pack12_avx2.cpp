// 12-bit pack and unpack: the 256-bit steps, the block rule instantiated with
// lanes::Avx2 and its moves. Entered only where useWide() holds, asked once per call.
#include "reduce/pack12_kernel.h"

#if LUM_SIMD_SSE && defined(__AVX2__)
namespace lum::pack12 {
int packWide(const uint16_t* s, uint8_t* d, int w) { return packRun<lanes::Avx2, Avx2Moves>(s, d, w); }
int unpackWide(const uint8_t* s, uint16_t* d, int w) { return unpackRun<lanes::Avx2, Avx2Moves>(s, d, w); }
}  // namespace lum::pack12
#endif
