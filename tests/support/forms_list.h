// The list of forms whose vector blocks the forms test runs on every lane set.
#pragma once

#include "lumachroma/forms.h"
#include "lumachroma/forms_420.h"
#include "lumachroma/forms_422.h"
#include "lumachroma/forms_709.h"
#include "lumachroma/forms_gray.h"
#include "models/hue_forms.h"
#include "support/form_check.h"

namespace lumtest {

// Weights of the gray forms: the defaults, and weights summing above 1 that
// saturate bright pixels.
inline constexpr lum::gray::GrayQ15Block kGray8{{9798, 19235, 3736}}, kGray8Hot{{13435, 15401, 7537}};
inline constexpr lum::gray::GrayRoundF32<Lum16u> kGray16u{{0.41f, 0.47f, 0.23f}};
inline constexpr lum::gray::GrayRoundF32<Lum16s> kGray16s{{0.41f, 0.47f, 0.23f}};
inline constexpr lum::gray::GrayF32 kGray32f{{0.299f, 0.587f, 0.114f}};

template <class Fn>
void forEachForm(Fn&& fn) {
  using namespace lum::form;
  fn.template operator()<Px8<FY1>>("FY1");
  fn.template operator()<Px8<FY2>>("FY2");
  fn.template operator()<Px8<IY1>>("IY1");
  fn.template operator()<Px8<IY2>>("IY2");
  fn.template operator()<Px8<IY3>>("IY3");
  fn.template operator()<Px8<SY1>>("SY1");
  fn.template operator()<Px8<SY2>>("SY2");
  fn.template operator()<Px8<SY3>>("SY3");
  fn.template operator()<Px8<FU1>>("FU1");
  fn.template operator()<Px8<FU2>>("FU2");
  fn.template operator()<Px8<TU3>>("TU3");
  fn.template operator()<Px8<IU1>>("IU1");
  fn.template operator()<Px8<IU2>>("IU2");
  fn.template operator()<Px8<IU3>>("IU3");
  fn.template operator()<Px8<SU1>>("SU1");
  fn.template operator()<Px8<SU2>>("SU2");
  fn.template operator()<Px8<SU3>>("SU3");
  fn.template operator()<Px8<IY4>>("IY4");
  fn.template operator()<Px8<IU5>>("IU5");
  fn.template operator()<Px8<IY4Cell>>("IY4Cell");
  fn.template operator()<Px8<IU2Fine>>("IU2Fine");
  fn.template operator()<Px8<I7Neg>>("I7Neg");
  fn.template operator()<Px8<I7Pos>>("I7Pos");
  fn.template operator()<Px8<IHNeg>>("IHNeg");
  fn.template operator()<Px8<IHPos>>("IHPos");
  fn.template operator()<Px16<FY5, 3, 1>>("FY5");
  fn.template operator()<Px16<YuvQ14Luma, 3, 1>>("YuvQ14Luma");
  fn.template operator()<Cell<FC2>>("FC2");
  fn.template operator()<Cell<FC5>>("FC5");
  fn.template operator()<Cell<YuvQ14Chroma>>("YuvQ14Chroma");
  fn.template operator()<Cell<FU2Cell>>("FU2Cell");
  fn.template operator()<Pair<PairForm<FY1, FC1>>>("FY1 + FC1");
  fn.template operator()<Pair<PairHighMul>>("PairHighMul");
  fn.template operator()<Pair<YUV422BlockC2>>("YUV422BlockC2");
  fn.template operator()<Pair<YUV422BlockP3>>("YUV422BlockP3");
  fn.template operator()<Pair<V8Block>>("V8Block");
  fn.template operator()<GrayInt<kGray8, int16_t, 0, 255, 8>>("Gray8u");
  fn.template operator()<GrayInt<kGray8Hot, int16_t, 0, 255, 8>>("Gray8uHot");
  fn.template operator()<GrayInt<kGray16u, int32_t, 0, 65535>>("Gray16u");
  fn.template operator()<GrayInt<kGray16s, int32_t, -32768, 32767>>("Gray16s");
  fn.template operator()<GrayF<kGray32f>>("Gray32f");
  fn.template operator()<Px16<LumaOf<Blk7Cell>, 3, 1>>("Y7");
  fn.template operator()<Px16<LumaOf<BlkHCell>, 3, 1>>("YH");
  fn.template operator()<Cell<ChromaOf<Blk7Cell>>>("C7Cell");
  fn.template operator()<Cell<ChromaOf<BlkHCell>>>("CHCell");
  fn.template operator()<Px16<ChromaOf<BlkHPair>, 3, 2, 510>>("CHPair");
  fn.template operator()<Px16<ChromaOf<BlkHPairSigned>, 3, 2, 510>>("CHPairSigned");
  // HLS and HSV
  fn.template operator()<Px8<lum::hue::HlsFwd<Lum8u, lum::hue::Div::Bare, lum::hue::Round::Nearest, true>>>("HlsFwd8u");
  fn.template operator()<Px8<lum::hue::HlsFwd<Lum8u, lum::hue::Div::Bare, lum::hue::Round::Trunc, true>>>("HlsFwdBgr");
  fn.template operator()<Px8<lum::hue::HlsInv<Lum8u, true, lum::hue::Round::Nearest, true>>>("HlsInv8u");
  fn.template operator()<Px8<lum::hue::HlsInv<Lum8u, true, lum::hue::Round::Trunc, true>>>("HlsInvBgr");
  fn.template operator()<PxF<lum::hue::Inv32f>>("HlsInv32f");
  fn.template operator()<PxF<lum::hue::Fwd32f>>("HlsFwd32f");
  fn.template operator()<Px8<lum::hue::HsvFwd8u>>("HsvFwd8u");
  fn.template operator()<Px8<lum::hue::HsvInv<Lum8u>>>("HsvInv8u");
}

// Every form of the list on lane set O; the failures, one per line.
template <class O>
std::string checkAllForms(const char* set) {
  std::string fails;
  forEachForm([&]<class A>(const char* name) {
    const std::string m = checkShape<O>(static_cast<const A*>(nullptr), 0x5EED0000u + uint32_t(name[0]) * 131u + uint32_t(name[2]));
    if (!m.empty()) fails += std::string(set) + " " + name + ": " + m + "\n";
  });
  return fails;
}

}  // namespace lumtest
