// Hexcone model files: packed HLS (H L S per pixel) and HSV (H S V per pixel),
// 8 bits a sample, hue 0..255 for the whole circle.
#include "formats.h"

namespace lumcli {
namespace {

using Convert = LumStatus (*)(const Lum8u*, int, Lum8u*, int, LumSize);

// A three-byte model: to RGB and from RGB by the library's 8u C3 functions.
Format hueModel(const char* name, const char* desc, Convert toRgb, Convert fromRgb) {
  Format f;
  f.name = name;
  f.description = desc;
  f.fileBytes = [](int w, int h) { return size_t(w) * size_t(h) * 3; };
  f.toRgb = [toRgb](const std::vector<uint8_t>& in, Image& out) {
    return toRgb(in.data(), 3 * out.width, out.pixels.data(), 3 * out.width, {out.width, out.height});
  };
  f.fromRgb = [fromRgb](const Image& in, std::vector<uint8_t>& out) {
    return fromRgb(in.pixels.data(), 3 * in.width, out.data(), 3 * in.width, {in.width, in.height});
  };
  return f;
}

const bool kRegistered = [] {
  registerFormat(hueModel("hls", "packed HLS (H L S per pixel, hue 0..255 for 0..360 degrees)", lumiHLSToRGB_8u_C3R,
                          lumiRGBToHLS_8u_C3R));
  registerFormat(hueModel("hsv", "packed HSV (H S V per pixel, hue 0..255 for 0..360 degrees)", lumiHSVToRGB_8u_C3R,
                          lumiRGBToHSV_8u_C3R));
  return true;
}();

}  // namespace
}  // namespace lumcli
