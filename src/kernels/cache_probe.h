// The processor's largest cache as told by its leaf-2 cache descriptors, and the
// size tests that send large copies and fills to streaming stores. The probe is
// asked afresh on every large call; nothing is remembered between calls.
#pragma once

#include <cstddef>
#include <cstdint>

namespace lum::kern {

// Size in bytes of the largest cache, or 0 when it is unknown (unknown means
// that no copy or fill streams).
using CacheProbe = int64_t (*)();

// Leaf-2 descriptor table: pairs of (descriptor byte, encoded size), largest
// caches first, ended by a zero byte. An encoded byte e stands for
// (e >> 4) << ((e & 15) + 18) bytes.
inline constexpr uint8_t kCacheDescriptors[] = {
    0xEC, 0x35,                                                                                      // 24 MiB
    0xEB, 0x93,                                                                                      // 18 MiB
    0x4D, 0x16,                                                                                      // 16 MiB
    0xEA, 0x34, 0x4C, 0x34,                                                                          // 12 MiB
    0xE4, 0x15, 0xDE, 0x15, 0x4B, 0x15, 0x47, 0x15,                                                  // 8 MiB
    0x4E, 0x33, 0x4A, 0x33,                                                                          // 6 MiB
    0xE3, 0x14, 0xDD, 0x14, 0xD8, 0x14, 0x49, 0x14, 0x29, 0x14, 0x46, 0x14,                          // 4 MiB
    0x48, 0x32,                                                                                      // 3 MiB
    0xE2, 0x13, 0xDC, 0x13, 0xD7, 0x13, 0xD2, 0x13, 0x25, 0x13, 0x7D, 0x13, 0x85, 0x13, 0x45, 0x13,  // 2 MiB
    0xD6, 0x12, 0xD1, 0x12, 0x23, 0x12, 0x87, 0x12, 0x7C, 0x12, 0x78, 0x12, 0x84, 0x12, 0x44, 0x12,  // 1 MiB
    0xD0, 0x11, 0x22, 0x11, 0x7B, 0x11, 0x80, 0x11, 0x86, 0x11, 0x3E, 0x11, 0x7F, 0x11, 0x83, 0x11,
    0x43, 0x11,  // 512 KiB
    0x00};
static_assert(sizeof(kCacheDescriptors) == 43 * 2 + 1, "43 descriptors and the end mark");

// Bytes of an encoded table size.
constexpr int64_t decodeCacheSize(uint8_t e) { return int64_t(e >> 4) << ((e & 15) + 18); }

// Largest cache named by the four registers of leaf 2 (eax, ebx, ecx, edx), or 0.
// The low byte of eax must be 1; a register with its top bit set carries no
// descriptors. The table is searched in its order, so the first hit is the largest.
int64_t cacheSizeFromLeaf2(const uint32_t regs[4]);

// Runs the processor identification: leaf 0 for the vendor (only the maker whose
// descriptors the table lists answers leaf 2 in this form), then leaf 2.
int64_t probeCacheSize();

// ---- path choices, kept apart from the kernels so that each rule reads as one
// ---- function; `probe` is only asked when the rule gets that far.

// owniCopy8uas: whether a region copy streams, and whether its rows merge.
struct RegionCopyPlan {
  bool streaming = false;
  bool merged = false;  // the region is copied as one row of width * height bytes
};
RegionCopyPlan planRegionCopy(int width, int height, int srcStep, int dstStep, CacheProbe probe = probeCacheSize);

// ownsCopy_8u: a copy of `bytes` streams from 1 MiB on when it is not below
// half the largest cache.
bool bytesCopyStreams(size_t bytes, CacheProbe probe = probeCacheSize);

// ownsSet_32s: a fill of more than 262144 words streams when its bytes are not
// below half the largest cache.
bool wordsSetStreams(size_t words, CacheProbe probe = probeCacheSize);

// lumiSet_8u_C1R: a fill of `total` bytes streams above 524288 bytes when the
// core library reports a largest cache not above the total.
using CoreCacheQuery = int32_t (*)(int32_t*);
bool regionSetStreams(int64_t total, CoreCacheQuery query);

}  // namespace lum::kern
