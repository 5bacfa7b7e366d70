// 256-bit (AVX2) blocks. They are built into files of their own with their own
// compiler flags and entered only when the processor has AVX2, a test made once
// per call. They compute exactly the lanes of the 128-bit blocks and of the
// scalar twins, so the choice never shows in a result. The one switch is
// useWide() and the one processor test processorHasAvx2(), both in frame/simd.h.
#pragma once

#include "frame/simd.h"

#ifndef LUM_SIMD_AVX2
#define LUM_SIMD_AVX2 0
#endif

namespace lum {

// Deprecated: the processor test under another name, for the callers that have
// not moved to useWide(). New code asks useWide() once per call.
inline bool cpuHasAvx2() noexcept { return LUM_SIMD_AVX2 && processorHasAvx2(); }

}  // namespace lum
