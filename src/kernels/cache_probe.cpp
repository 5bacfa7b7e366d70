// Cache probe and the size rules of the streaming paths.
#include "kernels/cache_probe.h"

#include <climits>
#include <cstring>

#if defined(__x86_64__) || defined(__i386__)
#include <cpuid.h>
#define LUM_HAVE_CPUID 1
#else
#define LUM_HAVE_CPUID 0
#endif

namespace lum::kern {

int64_t cacheSizeFromLeaf2(const uint32_t regs[4]) {
  if ((regs[0] & 0xFF) != 1) return 0;
  for (const uint8_t* e = kCacheDescriptors; *e; e += 2) {
    for (int r = 0; r < 4; ++r) {
      if (regs[r] & 0x80000000u) continue;
      for (int b = 0; b < 4; ++b)
        if (((regs[r] >> (8 * b)) & 0xFF) == e[0]) return decodeCacheSize(e[1]);
    }
  }
  return 0;
}

int64_t probeCacheSize() {
#if LUM_HAVE_CPUID
  unsigned a = 0, b = 0, c = 0, d = 0;
  if (!__get_cpuid(0, &a, &b, &c, &d) || a < 2) return 0;
  char vendor[12];
  std::memcpy(vendor, &b, 4);
  std::memcpy(vendor + 4, &d, 4);
  std::memcpy(vendor + 8, &c, 4);
  if (std::memcmp(vendor, "GenuineIntel", 12) != 0) return 0;
  __cpuid(2, a, b, c, d);
  const uint32_t regs[4] = {a, b, c, d};
  return cacheSizeFromLeaf2(regs);
#else
  return 0;
#endif
}

RegionCopyPlan planRegionCopy(int width, int height, int srcStep, int dstStep, CacheProbe probe) {
  RegionCopyPlan plan;
  // "Overflows 32 bits" is read as the signed product leaving int: such an image
  // streams at once, without asking the probe and without merging rows.
  const int64_t total = int64_t(width) * int64_t(height);
  if (total > INT_MAX) {
    plan.streaming = true;
    return plan;
  }
  int64_t rowBytes = width;
  if (width == srcStep && width == dstStep) {
    plan.merged = true;
    rowBytes = total;
  }
  if (rowBytes < 64 || total <= 131072) return plan;
  const int64_t cache = probe();
  plan.streaming = cache > 0 && total > cache / 2;
  return plan;
}

bool bytesCopyStreams(size_t bytes, CacheProbe probe) {
  if (bytes < 1048576) return false;
  const int64_t cache = probe();
  return cache > 0 && int64_t(bytes) >= cache / 2;
}

// Same comparison as the byte copy of this family: not below half the cache.
bool wordsSetStreams(size_t words, CacheProbe probe) {
  if (words <= 262144) return false;
  const int64_t cache = probe();
  return cache > 0 && int64_t(words) * 4 >= cache / 2;
}

bool regionSetStreams(int64_t total, CoreCacheQuery query) {
  if (total <= 524288) return false;
  int32_t cache = 0;
  if (query(&cache) != 0) return false;
  return int64_t(cache) <= total;
}

}  // namespace lum::kern
