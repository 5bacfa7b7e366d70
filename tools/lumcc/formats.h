// The table of raw formats that `lumcc convert` reads and writes. Each format
// knows its file size for a width and height and how to go to and from 8-bit RGB
// through the library; a family adds its formats by registering them in a file
// of its own (see formats_full.cpp).
#pragma once

#include <cstdint>
#include <functional>
#include <string>
#include <vector>

#include "image_io.h"
#include "lumcc.h"

namespace lumcli {

struct Format {
  std::string name;         // as given to --from / --to
  std::string description;  // one line for --help
  // Bytes of a file of this format at the given size; 0 when the size is not allowed.
  std::function<size_t(int w, int h)> fileBytes;
  // File bytes -> RGB image (3 channels). Returns the library's status.
  std::function<LumStatus(const std::vector<uint8_t>&, Image&)> toRgb;
  // RGB image -> file bytes. Returns the library's status.
  std::function<LumStatus(const Image&, std::vector<uint8_t>&)> fromRgb;
  std::string matrix = "601";  // coefficient set, chosen by --matrix (601 or 709)
};

// A direct conversion between two raw formats that needs no trip through RGB
// (layout changes): file bytes in, file bytes out (sized by the target's fileBytes).
struct Route {
  std::string from, to;
  std::function<LumStatus(const std::vector<uint8_t>& in, int w, int h, std::vector<uint8_t>& out)> run;
};

// All registered formats, in registration order.
std::vector<Format>& formats();
// The format of that name for the matrix; falls back to the 601 entry when the
// name has no entry of that matrix.
const Format* findFormat(const std::string& name, const std::string& matrix = "601");
// Registers a format; used by static registrars in the format files. A format
// may leave toRgb/fromRgb empty (reachable by direct routes only); entries of the
// same name and matrix merge.
bool registerFormat(Format f);

std::vector<Route>& routes();
const Route* findRoute(const std::string& from, const std::string& to);
bool registerRoute(Route r);

// A command of the tool beyond convert/demo/info (gamma, dither, demosaic ...),
// registered by a static registrar in the file that implements it.
struct Command {
  std::string name;   // first argument
  std::string usage;  // one or more lines for `lumcc help`, without the leading indent
  // Arguments after the command name; returns the process exit code. Throws
  // std::invalid_argument for a usage error.
  std::function<int(const std::vector<std::string>& args)> run;
};

std::vector<Command>& commands();
const Command* findCommand(const std::string& name);
bool registerCommand(Command c);

}  // namespace lumcli
