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
  bool needsMatrix709 = false;  // reserved for BT.709 variants chosen by --matrix 709
};

// All registered formats, in registration order.
std::vector<Format>& formats();
const Format* findFormat(const std::string& name);
// Registers a format; used by static registrars in the format files.
bool registerFormat(Format f);

}  // namespace lumcli
