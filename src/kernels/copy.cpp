// Byte copies: the region copy (owniCopy8uas) with its merged-row and streaming
// rules, the long-size region copy, the array copies (ownsCopy_8u) and the row
// copy of the chroma-layout kernels. Every copy runs forward; source and
// destination must not overlap. Which stores a path uses never changes a byte.
#include <climits>
#include <cstring>

#include "frame/check.h"
#include "frame/lanes.h"
#include "kernels/cache_probe.h"
#include "kernels/primitives.h"

using namespace lum;
using namespace lum::kern;

namespace {

// How the 64-byte blocks of a kernel store.
enum class Stores { Aligned, Streaming };

// Stores one 16-byte value at a 16-byte aligned address, streaming or not.
template <class O, Stores S, class V>
inline void put16(uint8_t* d, const V& v) {
  if constexpr (S == Stores::Streaming)
    O::stream(d, v);
  else
    O::storeA(d, v);
}

// Copies 64 bytes to a 16-byte aligned destination; loads aligned when asked.
template <class O, Stores S, bool AlignedLoad>
inline void copy64(const uint8_t* s, uint8_t* d) {
  for (int k = 0; k < 64; k += 16) {
    const auto v = AlignedLoad ? O::loadA(s + k) : O::load(s + k);
    put16<O, S>(d + k, v);
  }
}

// Copies n bytes by scalar moves: 8 at a step, then 4, then single bytes.
inline void copySmall(const uint8_t* s, uint8_t* d, size_t n) {
  for (; n >= 8; n -= 8, s += 8, d += 8) std::memcpy(d, s, 8);
  if (n >= 4) {
    std::memcpy(d, s, 4);
    s += 4;
    d += 4;
    n -= 4;
  }
  for (; n; --n) *d++ = *s++;
}

// Bytes to the next multiple of `align` (a power of two) from p.
inline size_t toAlign(const void* p, size_t align) { return size_t(-reinterpret_cast<uintptr_t>(p)) & (align - 1); }

// ---- owniCopy8uas ---------------------------------------------------------

// Plain row: align the destination by 1, 2, 4 and 8 byte moves, 128-byte blocks
// (aligned loads when the source is aligned too), then 64, 32, 16 and the ladder.
template <class O>
void copyRowPlain(const uint8_t* s, uint8_t* d, size_t n) {
  if (n >= 16) {
    const size_t head = toAlign(d, 16);
    for (size_t k = 1; k <= 8; k <<= 1) {
      if (head & k) {
        copySmall(s, d, k);
        s += k;
        d += k;
        n -= k;
      }
    }
    const bool srcAligned = toAlign(s, 16) == 0;
    for (; n >= 128; n -= 128, s += 128, d += 128) {
      if (srcAligned) {
        copy64<O, Stores::Aligned, true>(s, d);
        copy64<O, Stores::Aligned, true>(s + 64, d + 64);
      } else {
        copy64<O, Stores::Aligned, false>(s, d);
        copy64<O, Stores::Aligned, false>(s + 64, d + 64);
      }
    }
    for (size_t k = 64; k >= 16; k >>= 1) {
      if (n >= k) {
        for (size_t j = 0; j < k; j += 16) O::storeA(d + j, O::load(s + j));
        s += k;
        d += k;
        n -= k;
      }
    }
  }
  copySmall(s, d, n);
}

// Streaming row: single bytes up to a 64-byte aligned destination, streamed
// 64-byte blocks, single bytes. The caller fences after the last row.
template <class O>
void copyRowStreaming(const uint8_t* s, uint8_t* d, size_t n) {
  size_t head = toAlign(d, 64);
  if (head > n) head = n;
  for (size_t k = 0; k < head; ++k) d[k] = s[k];
  s += head;
  d += head;
  n -= head;
  for (; n >= 64; n -= 64, s += 64, d += 64) copy64<O, Stores::Streaming, false>(s, d);
  for (size_t k = 0; k < n; ++k) d[k] = s[k];
}

template <class O>
void copyRegion(const uint8_t* s, int srcStep, uint8_t* d, int dstStep, int w, int h, RegionCopyPlan plan) {
  size_t rowBytes = size_t(w);
  int rows = h;
  if (plan.merged) {
    rowBytes = size_t(w) * size_t(h);
    rows = 1;
  }
  for (int y = 0; y < rows; ++y) {
    const uint8_t* sr = s + std::ptrdiff_t(y) * srcStep;
    uint8_t* dr = d + std::ptrdiff_t(y) * dstStep;
    if (plan.streaming)
      copyRowStreaming<O>(sr, dr, rowBytes);
    else
      copyRowPlain<O>(sr, dr, rowBytes);
  }
  if (plan.streaming) O::fence();
}

// ---- ownsCopy_8u and ownccCopy_8u_C1_W7 -----------------------------------

// Copies 16 bytes unaligned, then advances both pointers so that the destination
// is 16-byte aligned; the overlap is written twice with the same bytes. n >= 16.
template <class O>
size_t alignDestination(const uint8_t*& s, uint8_t*& d) {
  const size_t adv = toAlign(d, 16);
  if (adv) {
    O::store(d, O::load(s));
    s += adv;
    d += adv;
  }
  return adv;
}

// The rest below 64 bytes behind an aligned destination: 16 at a step, then the ladder.
template <class O>
void copyRest(const uint8_t* s, uint8_t* d, size_t n) {
  for (; n >= 16; n -= 16, s += 16, d += 16) O::storeA(d, O::load(s));
  copySmall(s, d, n);
}

// Streamed chunks of 262144 bytes; each chunk's source is first read once per
// 4096 bytes so that its pages are in before the stores start.
template <class O>
size_t copyChunksStreaming(const uint8_t* s, uint8_t* d, size_t n) {
  const size_t start = n;
  while (n >= 64) {
    const size_t chunk = (n < 262144 ? n : 262144) & ~size_t(63);
    for (size_t k = 0; k < chunk; k += 4096) (void)*static_cast<const volatile uint8_t*>(s + k);
    for (size_t k = 0; k < chunk; k += 64) copy64<O, Stores::Streaming, false>(s + k, d + k);
    s += chunk;
    d += chunk;
    n -= chunk;
  }
  O::fence();
  return start - n;
}

// Aligned 64-byte blocks. With an aligned source whose destination leads it by
// less than a block in the 4 KiB page offset, the next block's loads would wait
// on the stores just made (4 KiB aliasing): that case loads the whole block
// before storing any of it.
template <class O>
size_t copyBlocksPlain(const uint8_t* s, uint8_t* d, size_t n) {
  const size_t start = n;
  if (toAlign(s, 16) == 0) {
    const size_t lag = (reinterpret_cast<uintptr_t>(d) - reinterpret_cast<uintptr_t>(s)) & 0xFFF;
    if (lag != 0 && lag < 64) {
      for (; n >= 64; n -= 64, s += 64, d += 64) {
        const auto v0 = O::loadA(s), v1 = O::loadA(s + 16), v2 = O::loadA(s + 32), v3 = O::loadA(s + 48);
        O::storeA(d, v0);
        O::storeA(d + 16, v1);
        O::storeA(d + 32, v2);
        O::storeA(d + 48, v3);
      }
    } else {
      for (; n >= 64; n -= 64, s += 64, d += 64) copy64<O, Stores::Aligned, true>(s, d);
    }
  } else {
    for (; n >= 64; n -= 64, s += 64, d += 64) copy64<O, Stores::Aligned, false>(s, d);
  }
  return start - n;
}

template <class O>
void copyBytes(const uint8_t* s, uint8_t* d, size_t n, bool streaming) {
  if (n < 64) {
    copySmall(s, d, n);
    return;
  }
  n -= alignDestination<O>(s, d);
  const size_t done = streaming ? copyChunksStreaming<O>(s, d, n) : copyBlocksPlain<O>(s, d, n);
  copyRest<O>(s + done, d + done, n - done);
}

// The two streams collide when the source trails the destination by 16 to 320
// bytes modulo 64 KiB; such copies keep plain stores.
bool streamsCollide(const uint8_t* s, const uint8_t* d) {
  const unsigned low = unsigned(reinterpret_cast<uintptr_t>(s) - reinterpret_cast<uintptr_t>(d)) & 0xFFFF;
  return low >= 65216 && low <= 65520;
}

// Without streaming, a 16-byte aligned source takes aligned loads; sources on a
// 4- or 8-byte grid take unaligned loads, which read the same bytes.
template <class O>
void ccCopy(const uint8_t* s, uint8_t* d, size_t n, bool streaming) {
  if (n < 64) {
    copySmall(s, d, n);
    return;
  }
  const bool stream = streaming && !streamsCollide(s, d);
  n -= alignDestination<O>(s, d);
  if (stream) {
    for (; n >= 64; n -= 64, s += 64, d += 64) copy64<O, Stores::Streaming, false>(s, d);
    O::fence();
  } else if (toAlign(s, 16) == 0) {
    for (; n >= 64; n -= 64, s += 64, d += 64) copy64<O, Stores::Aligned, true>(s, d);
  } else {
    for (; n >= 64; n -= 64, s += 64, d += 64) copy64<O, Stores::Aligned, false>(s, d);
  }
  copyRest<O>(s, d, n);
}

}  // namespace

namespace lum::kern {
void owniCopy8uas(const uint8_t* s, int srcStep, uint8_t* d, int dstStep, int w, int h, RegionCopyPlan plan) {
  lanes::with128([&](auto ops) { copyRegion<decltype(ops)>(s, srcStep, d, dstStep, w, h, plan); });
}
void ownsCopy_8u(const uint8_t* s, uint8_t* d, size_t n, bool streaming) {
  lanes::with128([&](auto ops) { copyBytes<decltype(ops)>(s, d, n, streaming); });
}
void ownsCopy_8u(const uint8_t* s, uint8_t* d, size_t n) { ownsCopy_8u(s, d, n, bytesCopyStreams(n)); }
}  // namespace lum::kern

namespace lum {
void ownccCopy_8u_C1_W7(const Lum8u* pSrc, Lum8u* pDst, int len, bool streaming) {
  if (len <= 0) return;
  lanes::with128([&](auto ops) { ccCopy<decltype(ops)>(pSrc, pDst, size_t(len), streaming); });
}
}  // namespace lum

// ---- entries ---------------------------------------------------------------

LumStatus lumiCopy_8u_C1R(const Lum8u* pSrc, int srcStep, Lum8u* pDst, int dstStep, LumSize roi) {
  if (LumStatus s = check::nullThenSize(roi, pSrc, pDst)) return s;
  const RegionCopyPlan plan = planRegionCopy(roi.width, roi.height, srcStep, dstStep);
  kern::owniCopy8uas(pSrc, srcStep, pDst, dstStep, roi.width, roi.height, plan);
  return lumStatusOk;
}

// Rows longer than 0x40000000 bytes go in pieces of that size; the status is the
// last piece's.
LumStatus lumiCopy_8u_C1R_L(const Lum8u* pSrc, LumLong srcStep, Lum8u* pDst, LumLong dstStep, LumSizeL roi) {
  if (check::anyNull(pSrc, pDst)) return lumStatusNullPointer;
  if (roi.width < 1 || roi.height < 1) return lumStatusBadSize;
  constexpr LumLong kPiece = 0x40000000;
  LumStatus status = lumStatusOk;
  for (LumLong y = 0; y < roi.height; ++y) {
    const Lum8u* s = pSrc + y * srcStep;
    Lum8u* d = pDst + y * dstStep;
    LumLong left = roi.width;
    for (; left > kPiece; left -= kPiece, s += kPiece, d += kPiece) lumsCopy_8u(s, d, int(kPiece));
    status = lumsCopy_8u(s, d, int(left));
  }
  return status;
}

LumStatus lumsCopy_8u(const Lum8u* pSrc, Lum8u* pDst, int len) {
  if (check::anyNull(pSrc, pDst)) return lumStatusNullPointer;
  if (len < 1) return lumStatusBadSize;
  kern::ownsCopy_8u(pSrc, pDst, size_t(len));
  return lumStatusOk;
}

// The whole byte count goes to the kernel in one call, computed without overflow.
LumStatus lumsCopy_32f(const Lum32f* pSrc, Lum32f* pDst, int len) {
  if (check::anyNull(pSrc, pDst)) return lumStatusNullPointer;
  if (len < 1) return lumStatusBadSize;
  kern::ownsCopy_8u(reinterpret_cast<const uint8_t*>(pSrc), reinterpret_cast<uint8_t*>(pDst), size_t(len) * 4);
  return lumStatusOk;
}

// Lengths above 0x1FFFFFFF elements go in pieces of 0x7FFFFFE0 bytes.
LumStatus lumsCopy_32s(const Lum32s* pSrc, Lum32s* pDst, int len) {
  if (check::anyNull(pSrc, pDst)) return lumStatusNullPointer;
  if (len < 1) return lumStatusBadSize;
  const uint8_t* s = reinterpret_cast<const uint8_t*>(pSrc);
  uint8_t* d = reinterpret_cast<uint8_t*>(pDst);
  size_t left = size_t(len) * 4;
  if (len > 0x1FFFFFFF) {
    constexpr size_t kPiece = 0x7FFFFFE0;
    for (; left > kPiece; left -= kPiece, s += kPiece, d += kPiece) kern::ownsCopy_8u(s, d, kPiece);
  }
  kern::ownsCopy_8u(s, d, left);
  return lumStatusOk;
}
