// The forms test on the sixteen-lane set. Built with AVX2 and entered only when
// the processor has it; it holds no test framework code of its own.
#include "frame/lanes_avx2.h"
#include "support/forms_list.h"

namespace lumtest {
std::string checkFormsWide() { return checkAllForms<lum::lanes::Avx2>("Avx2"); }
}  // namespace lumtest
