#include "formats.h"

namespace lumcli {

std::vector<Format>& formats() {
  static std::vector<Format> all;
  return all;
}

const Format* findFormat(const std::string& name, const std::string& matrix) {
  const Format* fallback = nullptr;
  for (const Format& f : formats()) {
    if (f.name != name) continue;
    if (f.matrix == matrix) return &f;
    if (f.matrix == "601") fallback = &f;
  }
  return fallback;
}

bool registerFormat(Format f) {
  formats().push_back(std::move(f));
  return true;
}

std::vector<Route>& routes() {
  static std::vector<Route> all;
  return all;
}

const Route* findRoute(const std::string& from, const std::string& to) {
  for (const Route& r : routes())
    if (r.from == from && r.to == to) return &r;
  return nullptr;
}

bool registerRoute(Route r) {
  routes().push_back(std::move(r));
  return true;
}

}  // namespace lumcli
