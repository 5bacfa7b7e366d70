// 4:2:2 files: packed pairs (YUY2, UYVY, YVYU, and Y U Y V for the YUV model)
// and planar (a Y plane, then two half-width chroma planes), all dense. Two
// pixels share a chroma pair, so these files need an even width.
#include "formats.h"

namespace lumcli {
namespace {

// Bytes of a frame: two a pixel, chroma halved; 0 when the width is odd.
size_t twoBytes(int w, int h) { return (w % 2 || w < 1 || h < 1) ? 0 : size_t(w) * size_t(h) * 2; }

using PackedTo = LumStatus (*)(const Lum8u*, int, Lum8u*, int, LumSize);

Format packedFormat(const char* name, const char* desc, PackedTo to, PackedTo from) {
  Format f;
  f.name = name;
  f.description = desc;
  f.fileBytes = twoBytes;
  f.toRgb = [to](const std::vector<uint8_t>& in, Image& out) {
    return to(in.data(), out.width * 2, out.pixels.data(), out.width * 3, LumSize{out.width, out.height});
  };
  f.fromRgb = [from](const Image& in, std::vector<uint8_t>& out) {
    return from(in.pixels.data(), in.width * 3, out.data(), in.width * 2, LumSize{in.width, in.height});
  };
  return f;
}

// Plane pointers of a dense planar 4:2:2 frame held in `bytes`.
template <class T>
void planes422(T* bytes, int w, int h, T* p[3]) {
  const size_t luma = size_t(w) * size_t(h), chroma = size_t(w / 2) * size_t(h);
  p[0] = bytes;
  p[1] = bytes + luma;
  p[2] = bytes + luma + chroma;
}

// Y, Cb, Cr planes through the R forms (a step per plane).
Format ycbcrPlanar() {
  Format f;
  f.name = "i422";
  f.description = "planar YCbCr 4:2:2 (Y plane, then Cb and Cr planes of half width; BT.601 studio range)";
  f.fileBytes = twoBytes;
  f.toRgb = [](const std::vector<uint8_t>& in, Image& out) {
    const Lum8u* p[3];
    planes422(in.data(), out.width, out.height, p);
    const int steps[3] = {out.width, out.width / 2, out.width / 2};
    return lumiYCbCr422ToRGB_8u_P3C3R(p, steps, out.pixels.data(), out.width * 3, LumSize{out.width, out.height});
  };
  f.fromRgb = [](const Image& in, std::vector<uint8_t>& out) {
    Lum8u* p[3];
    planes422(out.data(), in.width, in.height, p);
    const int steps[3] = {in.width, in.width / 2, in.width / 2};
    return lumiRGBToYCbCr422_8u_C3P3R(in.pixels.data(), in.width * 3, p, steps, LumSize{in.width, in.height});
  };
  return f;
}

// Y, U, V planes through the dense forms, which take the frame as it lies in the file.
Format yuvPlanar() {
  Format f;
  f.name = "yuv422p";
  f.description = "planar YUV 4:2:2 (Y plane, then U and V planes of half width; full range)";
  f.fileBytes = twoBytes;
  f.toRgb = [](const std::vector<uint8_t>& in, Image& out) {
    const Lum8u* p[3];
    planes422(in.data(), out.width, out.height, p);
    return lumiYUV422ToRGB_8u_P3C3(p, out.pixels.data(), LumSize{out.width, out.height});
  };
  f.fromRgb = [](const Image& in, std::vector<uint8_t>& out) {
    Lum8u* p[3];
    planes422(out.data(), in.width, in.height, p);
    return lumiRGBToYUV422_8u_C3P3(in.pixels.data(), p, LumSize{in.width, in.height});
  };
  return f;
}

const bool kRegistered = [] {
  registerFormat(packedFormat("yuy2", "packed YCbCr 4:2:2, Y0 Cb Y1 Cr (BT.601 studio range)",
                              lumiYCbCr422ToRGB_8u_C2C3R, lumiRGBToYCbCr422_8u_C3C2R));
  registerFormat(packedFormat("uyvy", "packed YCbCr 4:2:2, Cb Y0 Cr Y1 (chroma filtered 1/4 1/2 1/4 on the way in)",
                              lumiCbYCr422ToRGB_8u_C2C3R, lumiRGBToCbYCr422_8u_C3C2R));
  registerFormat(packedFormat("yvyu", "packed YCbCr 4:2:2, Y0 Cr Y1 Cb", lumiYCrCb422ToRGB_8u_C2C3R,
                              lumiRGBToYCrCb422_8u_C3C2R));
  registerFormat(ycbcrPlanar());
  registerFormat(yuvPlanar());
  registerFormat(packedFormat("yuv422", "packed YUV 4:2:2, Y0 U Y1 V (full range)", lumiYUV422ToRGB_8u_C2C3R,
                              lumiRGBToYUV422_8u_C3C2R));
  return true;
}();

}  // namespace
}  // namespace lumcli
