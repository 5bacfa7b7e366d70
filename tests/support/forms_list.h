// The list of forms whose vector blocks the forms test runs on every lane set.
#pragma once

#include "lumachroma/forms.h"
#include "support/form_check.h"

namespace lumtest {

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
}

// Every form of the list on lane set O; the failures, one per line.
template <class O>
std::string checkAllForms(const char* set) {
  std::string fails;
  forEachForm([&]<class A>(const char* name) {
    const std::string m = checkForm<O, A>(0x5EED0000u + uint32_t(name[0]) * 131u + uint32_t(name[2]));
    if (!m.empty()) fails += std::string(set) + " " + name + ": " + m + "\n";
  });
  return fails;
}

}  // namespace lumtest
