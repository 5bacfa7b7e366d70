// Full-resolution luma-chroma files: packed (Y Cb Cr per pixel) and planar (a
// whole plane of Y, then Cb, then Cr), in the YCbCr and YUV models.
#include "formats.h"

namespace lumcli {
namespace {

size_t threeBytes(int w, int h) { return size_t(w) * size_t(h) * 3; }

Format packedFormat(const char* name, const char* desc,
                    LumStatus (*to)(const Lum8u*, int, Lum8u*, int, LumSize),
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

Format planarFormat(const char* name, const char* desc,
                    LumStatus (*to)(const Lum8u* const[3], int, Lum8u*, int, LumSize),
                    LumStatus (*from)(const Lum8u*, int, Lum8u* const[3], int, LumSize)) {
  Format f;
  f.name = name;
  f.description = desc;
  f.fileBytes = threeBytes;
  f.toRgb = [to](const std::vector<uint8_t>& in, Image& out) {
    const size_t plane = size_t(out.width) * size_t(out.height);
    const Lum8u* p[3] = {in.data(), in.data() + plane, in.data() + 2 * plane};
    return to(p, out.width, out.pixels.data(), out.width * 3, LumSize{out.width, out.height});
  };
  f.fromRgb = [from](const Image& in, std::vector<uint8_t>& out) {
    const size_t plane = size_t(in.width) * size_t(in.height);
    Lum8u* p[3] = {out.data(), out.data() + plane, out.data() + 2 * plane};
    return from(in.pixels.data(), in.width * 3, p, in.width, LumSize{in.width, in.height});
  };
  return f;
}

const bool kRegistered = [] {
  registerFormat(packedFormat("ycbcr", "packed YCbCr 4:4:4 (Y Cb Cr per pixel, BT.601 studio range)",
                              lumiYCbCrToRGB_8u_C3R, lumiRGBToYCbCr_8u_C3R));
  registerFormat(planarFormat("ycbcr444p", "planar YCbCr 4:4:4 (Y plane, Cb plane, Cr plane)",
                              lumiYCbCrToRGB_8u_P3C3R, lumiRGBToYCbCr_8u_C3P3R));
  registerFormat(packedFormat("yuv", "packed YUV 4:4:4 (Y U V per pixel, full range)", lumiYUVToRGB_8u_C3R,
                              lumiRGBToYUV_8u_C3R));
  registerFormat(planarFormat("yuv444p", "planar YUV 4:4:4 (Y plane, U plane, V plane)", lumiYUVToRGB_8u_P3C3R,
                              lumiRGBToYUV_8u_C3P3R));
  return true;
}();

}  // namespace
}  // namespace lumcli
