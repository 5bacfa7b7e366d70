// liblumcore: the size of the processor's largest cache.
#include "lumcore.h"

#include <cstdio>
#include <cstdlib>
#include <cstring>
#if defined(__x86_64__) || defined(__i386__)
#include <cpuid.h>
#endif

namespace {

// Largest cache from the deterministic cache-parameter leaf (4); 0 when absent.
int64_t largestCacheFromCpuid() {
#if defined(__x86_64__) || defined(__i386__)
  unsigned a, b, c, d;
  if (!__get_cpuid(0, &a, &b, &c, &d) || a < 4) return 0;
  int64_t best = 0;
  for (unsigned sub = 0; sub < 16; ++sub) {
    __cpuid_count(4, sub, a, b, c, d);
    const unsigned type = a & 31;
    if (type == 0) break;
    const int64_t ways = ((b >> 22) & 0x3FF) + 1;
    const int64_t parts = ((b >> 12) & 0x3FF) + 1;
    const int64_t line = (b & 0xFFF) + 1;
    const int64_t sets = int64_t(c) + 1;
    const int64_t size = ways * parts * line * sets;
    if (size > best) best = size;
  }
  return best;
#else
  return 0;
#endif
}

// Largest cache the kernel reports in sysfs; 0 when absent.
int64_t largestCacheFromSysfs() {
  int64_t best = 0;
  for (int i = 0; i < 8; ++i) {
    char path[96];
    std::snprintf(path, sizeof path, "/sys/devices/system/cpu/cpu0/cache/index%d/size", i);
    std::FILE* f = std::fopen(path, "r");
    if (!f) continue;
    char text[32] = {0};
    if (std::fgets(text, sizeof text, f)) {
      char* end = nullptr;
      int64_t v = std::strtoll(text, &end, 10);
      if (end && (*end == 'K' || *end == 'k')) v *= 1024;
      else if (end && (*end == 'M' || *end == 'm')) v *= 1024 * 1024;
      if (v > best) best = v;
    }
    std::fclose(f);
  }
  return best;
}

// The processor's largest cache, asked once per process: the answer never changes,
// and asking (identification instructions, sysfs) is slow under a hypervisor.
int64_t largestCache() {
  static const int64_t size = [] {
    const int64_t c = largestCacheFromCpuid();
    return c > 0 ? c : largestCacheFromSysfs();
  }();
  return size;
}

}  // namespace

extern "C" LUMCORE_API int32_t lumGetMaxCacheSizeB(int32_t* pSizeByte) {
  if (!pSizeByte) return -8;
  const int64_t size = largestCache();
  if (size <= 0) {
    *pSizeByte = 0;
    return -1;
  }
  *pSizeByte = size > 0x7FFFFFFF ? 0x7FFFFFFF : int32_t(size);
  return 0;
}
