// Every form's vector block against its scalar pixel(), lane for lane, on each
// lane set this build and processor have.
#include <gtest/gtest.h>

#include "frame/simd.h"
#include "support/forms_list.h"

namespace {

TEST(Forms, EmulatedBlockMatchesPixel) { EXPECT_EQ(lumtest::checkAllForms<lum::lanes::Emu>("Emu"), ""); }

#if LUM_SIMD_SSE
TEST(Forms, SseBlockMatchesPixel) { EXPECT_EQ(lumtest::checkAllForms<lum::lanes::Sse>("Sse"), ""); }

TEST(Forms, WideBlockMatchesPixel) {
  if (!lum::processorHasAvx2()) GTEST_SKIP() << "no AVX2 on this processor";
  EXPECT_EQ(lumtest::checkFormsWide(), "");
}
#endif

}  // namespace
