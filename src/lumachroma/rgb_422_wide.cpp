// Whether the 256-bit blocks of the 4:2:2 kernels may run: the library-wide
// answer. Built with the library's baseline flags.
#include "frame/wide.h"
#include "lumachroma/rgb_422_avx2.h"

namespace lum::wide {

bool enabled() noexcept { return lum::wideEnabled() && lum::cpuHasAvx2(); }
void setEnabled(bool on) noexcept { lum::setWideEnabled(on); }

}  // namespace lum::wide
