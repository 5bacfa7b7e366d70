// Whether the wide (AVX2) blocks of the BT.709 conversions may run: the
// library-wide answer. This file is built for the baseline processor.
#include "frame/wide.h"
#include "lumachroma/bt709_kernels.h"

namespace lum::bt709::wide {

bool enabled() noexcept { return lum::useWide(); }
void setEnabled(bool on) noexcept { lum::setWideEnabled(on); }

}  // namespace lum::bt709::wide
