// Colour-model files of 8-bit samples, three per pixel: CIE Lab (L x 2.55,
// a + 128, b + 128) and Photo YCC (Y, C1, C2 with neutral chroma at 156, 137).
#include "formats.h"

namespace lumcli {
namespace {

using Conv = LumStatus (*)(const Lum8u*, int, Lum8u*, int, LumSize);

Format packed8(const char* name, const char* desc, Conv to, Conv from) {
  Format f;
  f.name = name;
  f.description = desc;
  f.fileBytes = [](int w, int h) { return size_t(w) * size_t(h) * 3; };
  f.toRgb = [to](const std::vector<uint8_t>& in, Image& out) {
    return to(in.data(), out.width * 3, out.pixels.data(), out.width * 3, LumSize{out.width, out.height});
  };
  f.fromRgb = [from](const Image& in, std::vector<uint8_t>& out) {
    return from(in.pixels.data(), in.width * 3, out.data(), in.width * 3, LumSize{in.width, in.height});
  };
  return f;
}

const bool kRegistered = [] {
  registerFormat(packed8("lab", "packed CIE Lab, 8 bits (L x 2.55, a + 128, b + 128; linear RGB, D65)",
                         lumiLabToRGB_8u_C3R, lumiRGBToLab_8u_C3R));
  registerFormat(packed8("ycc", "packed Photo YCC, 8 bits (Y, C1, C2; neutral chroma 156, 137)", lumiYCCToRGB_8u_C3R,
                         lumiRGBToYCC_8u_C3R));
  return true;
}();

}  // namespace
}  // namespace lumcli
