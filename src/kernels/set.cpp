// Fills: the byte region fill (lumiSet_8u_C1R over owniSet_8u_C1_W7) and the
// 32-bit word fill (ownsSet_32s) behind lumsSet_32f.
#include <cstring>

#include "frame/check.h"
#include "frame/lanes.h"
#include "kernels/cache_probe.h"
#include "kernels/primitives.h"
#include "lumcore.h"

using namespace lum;
using namespace lum::kern;

namespace {

// Up to three 16-byte stores (aligned or not), then single bytes; n below 64.
template <class O, bool Aligned>
void setRest(uint8_t* d, size_t n, typename O::V v, uint8_t value) {
  for (; n >= 16; n -= 16, d += 16) {
    if constexpr (Aligned)
      O::storeA(d, v);
    else
      O::store(d, v);
  }
  for (; n; --n) *d++ = value;
}

// One row: the first 16 bytes unaligned, then from the next 16-byte boundary
// blocks of 64 (streamed when asked, fenced after), then the rest. Rows below
// 64 bytes take the rest alone.
template <class O>
void setRow(uint8_t* d, size_t n, uint8_t value, bool streaming) {
  const auto v = O::splat8(value);
  if (n < 64) {
    setRest<O, false>(d, n, v, value);
    return;
  }
  O::store(d, v);
  const size_t adv = 16 - (reinterpret_cast<uintptr_t>(d) & 15);
  d += adv;
  n -= adv;
  if (streaming) {
    for (; n >= 64; n -= 64, d += 64)
      for (int k = 0; k < 64; k += 16) O::stream(d + k, v);
    O::fence();
  } else {
    for (; n >= 64; n -= 64, d += 64)
      for (int k = 0; k < 64; k += 16) O::storeA(d + k, v);
  }
  setRest<O, true>(d, n, v, value);
}

template <class O>
void setWords(uint32_t* d, size_t n, uint32_t w, bool streaming) {
  const auto v = O::set32(int(w));
  uint8_t* p = reinterpret_cast<uint8_t*>(d);
  if (reinterpret_cast<uintptr_t>(d) & 3) {
    // A destination off the word grid is filled with unaligned stores.
    for (; n >= 4; n -= 4, p += 16) O::store(p, v);
    for (; n; --n, p += 4) std::memcpy(p, &w, 4);
    return;
  }
  for (; n && (reinterpret_cast<uintptr_t>(p) & 15); --n, p += 4) std::memcpy(p, &w, 4);
  if (streaming) {
    for (; n >= 16; n -= 16, p += 64)
      for (int k = 0; k < 64; k += 16) O::stream(p + k, v);
    O::fence();
  } else {
    for (; n >= 16; n -= 16, p += 64)
      for (int k = 0; k < 64; k += 16) O::storeA(p + k, v);
  }
  for (; n >= 4; n -= 4, p += 16) O::storeA(p, v);
  for (; n; --n, p += 4) std::memcpy(p, &w, 4);
}

}  // namespace

namespace lum::kern {
void owniSet_8u_C1_W7(uint8_t* d, size_t n, uint8_t value, bool streaming) {
  lanes::with128([&](auto ops) { setRow<decltype(ops)>(d, n, value, streaming); });
}
void ownsSet_32s(uint32_t* d, size_t n, uint32_t w, bool streaming) {
  lanes::with128([&](auto ops) { setWords<decltype(ops)>(d, n, w, streaming); });
}
void ownsSet_32s(uint32_t* d, size_t n, uint32_t w) { ownsSet_32s(d, n, w, wordsSetStreams(n)); }
}  // namespace lum::kern

// Checks the size before the pointer, unlike its siblings. A step equal to the
// width fills the region as one row.
LumStatus lumiSet_8u_C1R(Lum8u value, Lum8u* pDst, int dstStep, LumSize roi) {
  if (LumStatus s = check::sizeThenNull(roi, pDst)) return s;
  const int64_t total = int64_t(roi.width) * roi.height;
  const bool streaming = regionSetStreams(total, lumGetMaxCacheSizeB);
  if (dstStep == roi.width) {
    kern::owniSet_8u_C1_W7(pDst, size_t(total), value, streaming);
  } else {
    for (int y = 0; y < roi.height; ++y)
      kern::owniSet_8u_C1_W7(pDst + std::ptrdiff_t(y) * dstStep, size_t(roi.width), value, streaming);
  }
  return lumStatusOk;
}

LumStatus lumsSet_32f(Lum32f val, Lum32f* pDst, int len) {
  if (!pDst) return lumStatusNullPointer;
  if (len < 1) return lumStatusBadSize;
  uint32_t w;
  std::memcpy(&w, &val, 4);
  kern::ownsSet_32s(reinterpret_cast<uint32_t*>(pDst), size_t(len), w);
  return lumStatusOk;
}
