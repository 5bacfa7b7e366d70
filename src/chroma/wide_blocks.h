// 256-bit blocks of the hottest layout kernels, for processors with AVX2. They
// live in layout_avx2.cpp, built with AVX2 code generation, and cover the
// leading whole blocks of a row; the 128-bit blocks and the scalar pairs
// finish it. Each computes exactly the bytes of its scalar twin, so the
// choice, made once per call, never changes a result.
#pragma once

#include <cstdint>

#include "frame/rows.h"

namespace lum::chroma::wide {

#if LUM_SIMD_SSE
// Pixel pairs from layout Src to layout Dst in blocks of 32 pixels; returns the
// pixels done (width rounded down to 32). Rows are given by their plane
// pointers (unused ones null), so they travel in registers. Streaming stores
// need 16-byte aligned destination rows.
template <class Src, class Dst>
int pairBlocks(const uint8_t* s0, const uint8_t* s1, const uint8_t* s2, uint8_t* d0, uint8_t* d1, uint8_t* d2,
               int width, bool stream);

// Packed bytes from order A to order B in blocks of 64 bytes; returns the bytes done.
template <class A, class B>
int repackBlocks(const uint8_t* s, uint8_t* d, int bytes, bool stream);

// Chroma samples from side SC to side DC in blocks of 32; returns the samples
// done. Planes 1 and 2 of each row, as above.
template <class SC, class DC>
int copyBlocks(const uint8_t* s1, const uint8_t* s2, uint8_t* d1, uint8_t* d2, int n);
#endif

}  // namespace lum::chroma::wide
