// Whether the 256-bit layout blocks may run: the library-wide answer (processor
// has AVX2, not switched off on this thread by a test).
#include "chroma/wide_blocks.h"
#include "frame/wide.h"

namespace lum::chroma::wide {

bool enabled() noexcept { return lum::wideEnabled() && lum::cpuHasAvx2(); }
void setEnabled(bool on) noexcept { lum::setWideEnabled(on); }
bool NarrowScope::enabledOnThread() noexcept { return lum::wideEnabled(); }

}  // namespace lum::chroma::wide
