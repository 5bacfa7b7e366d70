// CIE XYZ and CIE L*u*v* files: three bytes per pixel (X Y Z, or L U V on the
// library's 8-bit scales), the RGB side taken as linear.
#include "formats.h"

namespace lumcli {
namespace {

size_t threeBytes(int w, int h) { return size_t(w) * size_t(h) * 3; }

Format packedModel(const char* name, const char* desc, LumStatus (*to)(const Lum8u*, int, Lum8u*, int, LumSize),
                   LumStatus (*from)(const Lum8u*, int, Lum8u*, int, LumSize)) {
  Format f;
  f.name = name;
  f.description = desc;
  f.fileBytes = threeBytes;
  f.toRgb = [to](const std::vector<uint8_t>& in, Image& out) {
    return to(in.data(), out.width * 3, out.pixels.data(), out.width * 3, LumSize{out.width, out.height});
  };
  f.fromRgb = [from](const Image& in, std::vector<uint8_t>& out) {
    return from(in.pixels.data(), in.width * 3, out.data(), in.width * 3, LumSize{in.width, in.height});
  };
  return f;
}

const bool kRegistered = [] {
  registerFormat(packedModel("xyz", "packed CIE XYZ (X Y Z per pixel, 0..255 for 0..1; linear RGB, D65)",
                             lumiXYZToRGB_8u_C3R, lumiRGBToXYZ_8u_C3R));
  registerFormat(packedModel("luv", "packed CIE L*u*v* (L x 2.55, (u + 134) x 0.72, (v + 140) x 0.973; linear RGB)",
                             lumiLUVToRGB_8u_C3R, lumiRGBToLUV_8u_C3R));
  return true;
}();

}  // namespace
}  // namespace lumcli
