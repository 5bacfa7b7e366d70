/* lumcore: processor facts that the colour library asks for. Plain C. */
#ifndef LUMCORE_H
#define LUMCORE_H
#include <stdint.h>

#ifndef LUMCORE_API
#if defined(__GNUC__)
#define LUMCORE_API __attribute__((visibility("default")))
#else
#define LUMCORE_API
#endif
#endif

#ifdef __cplusplus
extern "C" {
#endif

/** Stores the size in bytes of the processor's largest cache in *pSizeByte.
 *  Returns 0 on success, -8 for a null pointer, -1 when the size cannot be
 *  determined (then *pSizeByte is 0). */
LUMCORE_API int32_t lumGetMaxCacheSizeB(int32_t* pSizeByte);

#ifdef __cplusplus
}
#endif
#endif
