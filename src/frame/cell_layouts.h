// Chroma sides of sub-sampled images as the cell kernels name them: where the
// two chroma samples of cell cx of a cell row lie. The first chroma is the
// form's first (Cb or U), the second its second (Cr or V). The layouts are
// those of pair_layouts.h; their lane views (getLanes / putLanes) move N cells
// as 16-bit lanes and touch exactly the bytes of those cells.
#pragma once

#include "frame/pair_layouts.h"

namespace lum::layout {

// Chroma in planes 1 and 2 (P3 chroma; a YCrCb image hands its planes over in
// the other order).
using ChromaP3 = pairs::CbCrPlanes;
// Chroma interleaved in plane 1: first chroma first (NV12) or second first (NV21).
using ChromaNV12 = pairs::CbCrPairs<false>;
using ChromaNV21 = pairs::CbCrPairs<true>;

}  // namespace lum::layout
