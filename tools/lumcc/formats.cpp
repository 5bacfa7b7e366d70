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
  // Two families may describe the same layout (one its RGB conversions, another
  // only its size for direct routes): the entries merge, the first text wins.
  for (Format& g : formats()) {
    if (g.name != f.name || g.matrix != f.matrix) continue;
    if (!g.fileBytes) g.fileBytes = std::move(f.fileBytes);
    if (!g.toRgb) g.toRgb = std::move(f.toRgb);
    if (!g.fromRgb) g.fromRgb = std::move(f.fromRgb);
    if (g.description.empty()) g.description = std::move(f.description);
    return true;
  }
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

std::vector<Command>& commands() {
  static std::vector<Command> all;
  return all;
}

const Command* findCommand(const std::string& name) {
  for (const Command& c : commands())
    if (c.name == name) return &c;
  return nullptr;
}

bool registerCommand(Command c) {
  commands().push_back(std::move(c));
  return true;
}

}  // namespace lumcli
