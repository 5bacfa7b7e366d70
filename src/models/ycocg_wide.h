// The sixteen-pixel groups of the YCoCg flavours (AVX2), instantiated in
// ycocg_avx2.cpp and entered only where useWide() holds.
#pragma once

#include "models/ycocg_forms.h"

namespace lum::ycocg::wide {

// Runs the groups of sixteen pixels of one row from pixel 0; returns where they stop.
using Groups = int (*)(const SrcPlanes& s, const DstPlanes& d, int width, int aval);

// Defined for every flavour in ycocg_avx2.cpp.
template <class C>
int groups256(const SrcPlanes& s, const DstPlanes& d, int width, int aval);

template <class C>
Groups groupsOf() {
  return &groups256<C>;
}

}  // namespace lum::ycocg::wide
