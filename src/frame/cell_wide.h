// 256-bit blocks of the cell kernels: 32 pixels of each row of a cell row a step.
// Declared here for the kernels of cell_kernel.h; defined, for every kernel that
// has a vector block, in the files built with AVX2 (cell_wide_avx2.h gives the
// steps of cell_kernel.h their 256-bit adaptor). run() converts steps of 32 pixels from x while they fit below
// end and returns the pixel where it stopped; the 128-bit blocks and the scalar
// twin take over from there.
#pragma once

#include "frame/kernel.h"
#include "frame/row_pairs.h"

namespace lum {

// A forward cell form: the luma of each pixel by Luma (its out[0]), the chroma
// pair of the cell by Chroma, from the sums of R, G and B over the cell's pixels.
template <class LumaForm, class ChromaForm>
struct CellForm {
  using Luma = LumaForm;
  using Chroma = ChromaForm;
};

template <class Cell, class BlockF, class Src, class Chroma>
struct WideForward {
  static int run(const SrcPlanes* rgb, const CellRowPtrs<uint8_t>& out, int x, int end);
};

template <class Cell, class BlockF, class Chroma, class Dst, Alpha A>
struct WideInverse {
  static int run(const CellRowPtrs<const uint8_t>& in, const DstPlanes* rgb, int x, int end, const RowCtx& c);
};

}  // namespace lum
