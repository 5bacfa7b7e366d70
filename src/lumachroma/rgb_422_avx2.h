// 256-bit (AVX2) blocks of the 4:2:2 kernels: sixteen 16-bit lanes per
// instruction, computing exactly the lanes of the forms' scalar twins. They live
// in their own translation unit, built with AVX2 enabled and sharing no inline
// code with the rest of the library, and run only when the processor has AVX2
// (tested once per process, and read once per call).
//
// Only plain declarations here: this header is included by both kinds of
// translation unit.
#pragma once

#include <cstdint>

namespace lum::wide {

// True when the AVX2 blocks may run: the build has them, the processor has
// AVX2, and this thread has not switched them off.
bool enabled() noexcept;
// Per-thread switch for tests, so that they can run the 128-bit blocks too.
void setEnabled(bool on) noexcept;

// Pixel layouts the wide blocks know. For 4:2:2 images: the packed byte orders
// and the planar form with half-width chroma.
enum class Pix : int { RGB, BGR, RGBA, BGRA, YCbCr422, CbYCr422, YCrCb422, P3, P3h };

// Coefficients of the rounded inverse YCbCr scheme (IY1, IY2 and their kin):
// y = mulhi16s((Y-16)<<7, cy), chroma less 128 << 7, saturating sums, then
// (sum + round) >> shift.
struct IYParams {
  int cy, crR, cbG, crG, cbB, round, shift;
};

// Image rows as the kernels hand them over: up to three plane pointers.
struct Rows {
  const uint8_t* src[3];
  uint8_t* dst[3];
};

// Inverse: converts pixels [0, n) of a row, n a multiple of 16, every pixel on its
// pair's chroma; alpha (four-byte destinations) is written as aval.
void replicatedIY(const IYParams& k, Pix src, Pix dst, const Rows& rows, int n, int aval);

// Forward pair forms with a wide block.
enum class PairForm : int {
  FY1FC1,   // FY1 luma per pixel, FC1 chroma of the pair sums
  HighMul,  // the high-multiply block of the BGRA -> CbYCr422 kernel
};
// Converts the pairs of pixels [0, n) of a row, n a multiple of 16.
void pairs(PairForm f, Pix src, Pix dst, const Rows& rows, int n);

}  // namespace lum::wide
