// CIE XYZ and CIE L*u*v* files: three bytes per pixel (X Y Z, or L U V on the
// library's 8-bit scales), the RGB side taken as linear.
#include "formats.h"

namespace lumcli {
namespace {

using Convert = LumStatus (*)(const Lum8u*, int, Lum8u*, int, LumSize);

// Three bytes a pixel both sides: one packed call over the whole image.
LumStatus packedCall(Convert fn, const uint8_t* in, uint8_t* out, int w, int h) {
  return fn(in, w * 3, out, w * 3, LumSize{w, h});
}

Format packedModel(const char* name, const char* desc, Convert to, Convert from) {
  Format f{name, desc, [](int w, int h) { return size_t(w) * size_t(h) * 3; }, {}, {}};
  f.toRgb = [to](const std::vector<uint8_t>& in, Image& out) {
    return packedCall(to, in.data(), out.pixels.data(), out.width, out.height);
  };
  f.fromRgb = [from](const Image& in, std::vector<uint8_t>& out) {
    return packedCall(from, in.pixels.data(), out.data(), in.width, in.height);
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
