#include "formats.h"

namespace lumcli {

std::vector<Format>& formats() {
  static std::vector<Format> all;
  return all;
}

const Format* findFormat(const std::string& name) {
  for (const Format& f : formats())
    if (f.name == name) return &f;
  return nullptr;
}

bool registerFormat(Format f) {
  formats().push_back(std::move(f));
  return true;
}

}  // namespace lumcli
