// Rows of the model frame whose block form also runs eight pixels at a time on
// the 256-bit lane set where useWide() allows it (asked once per call): the
// same block pixels, the same lanes, then the 128-bit blocks for what is left
// of the block part and the tail form for the rest.
#pragma once

#include "models/model_frame.h"

namespace lum::labycc {

// Block form over the whole groups of eight pixels of [0, end) of one row on
// the 256-bit set; returns where the groups end. Instantiated in lab_avx2.cpp.
template <class Form, class Src, class Dst>
int wideBlocks(const uint8_t* s, uint8_t* d, int end);

template <int Cover, class Block, class Tail, class Src, class Dst>
struct WideModelRows {
  static void image(LumSize roi, const SrcPlanes& s, const DstPlanes& d) {
    const int blockEnd = roi.width & ~(Cover - 1);
    [[maybe_unused]] const bool wide = useWide();
    lanes::with128([&](auto o) {
      using O = decltype(o);
      for (int y = 0; y < roi.height; ++y) {
        const uint8_t* sr = rowAt(s.p[0], y, s.step[0]);
        uint8_t* dr = rowAt(d.p[0], y, d.step[0]);
        int x = 0;
#if LUM_SIMD_SSE
        if (wide) x = wideBlocks<Block, Src, Dst>(sr, dr, blockEnd);
#endif
        models::runVectors<O, Block, Src, Dst>(sr, dr, x, blockEnd);
        models::runTail<Tail, Src, Dst>(sr, dr, blockEnd, roi.width);
      }
    });
  }
};

}  // namespace lum::labycc
