// YCoCg files: three planes (Y, then Co, then Cg). "ycocg" holds 8-bit samples
// with Co and Cg biased by 128; "ycocg-rev" holds the reversible transform's
// signed 16-bit samples (little-endian), from which RGB returns exactly.
#include <cstring>

#include "formats.h"
#include "ycocg_tool.h"

namespace lumcli {

void swapRB(const uint8_t* in, uint8_t* out, size_t pixels) {
  for (size_t i = 0; i < pixels; ++i) {
    out[3 * i] = in[3 * i + 2];
    out[3 * i + 1] = in[3 * i + 1];
    out[3 * i + 2] = in[3 * i];
  }
}

LumStatus rgbToYCoCgRev(const Image& in, std::vector<Lum16s>& planes) {
  const size_t n = size_t(in.width) * size_t(in.height);
  std::vector<uint8_t> bgr(3 * n);
  swapRB(in.pixels.data(), bgr.data(), n);
  planes.assign(3 * n, 0);
  Lum16s* const p[3] = {planes.data(), planes.data() + n, planes.data() + 2 * n};
  return lumiBGRToYCoCg_Rev_8u16s_C3P3R(bgr.data(), in.width * 3, p, in.width * 2, LumSize{in.width, in.height});
}

LumStatus yCoCgRevToRgb(const std::vector<Lum16s>& planes, Image& out) {
  const size_t n = size_t(out.width) * size_t(out.height);
  std::vector<uint8_t> bgr(3 * n);
  const Lum16s* const p[3] = {planes.data(), planes.data() + n, planes.data() + 2 * n};
  const LumStatus st =
      lumiYCoCgToBGR_Rev_16s8u_P3C3R(p, out.width * 2, bgr.data(), out.width * 3, LumSize{out.width, out.height});
  swapRB(bgr.data(), out.pixels.data(), n);
  return st;
}

namespace {

const bool kRegistered = [] {
  Format f;
  f.name = "ycocg";
  f.description = "planar YCoCg, 8 bits (Y plane, Co and Cg planes biased by 128)";
  f.fileBytes = [](int w, int h) { return size_t(w) * size_t(h) * 3; };
  f.toRgb = [](const std::vector<uint8_t>& in, Image& out) {
    const size_t plane = size_t(out.width) * size_t(out.height);
    const Lum8u* p[3] = {in.data(), in.data() + plane, in.data() + 2 * plane};
    return lumiYCoCgToRGB_8u_P3C3R(p, out.width, out.pixels.data(), out.width * 3, LumSize{out.width, out.height});
  };
  f.fromRgb = [](const Image& in, std::vector<uint8_t>& out) {
    const size_t plane = size_t(in.width) * size_t(in.height);
    Lum8u* p[3] = {out.data(), out.data() + plane, out.data() + 2 * plane};
    return lumiRGBToYCoCg_8u_C3P3R(in.pixels.data(), in.width * 3, p, in.width, LumSize{in.width, in.height});
  };
  registerFormat(f);

  Format r;
  r.name = "ycocg-rev";
  r.description = "planar reversible YCoCg, signed 16-bit little-endian samples (lossless)";
  r.fileBytes = [](int w, int h) { return size_t(w) * size_t(h) * 6; };
  r.toRgb = [](const std::vector<uint8_t>& in, Image& out) {
    std::vector<Lum16s> planes(in.size() / 2);
    std::memcpy(planes.data(), in.data(), planes.size() * 2);
    return yCoCgRevToRgb(planes, out);
  };
  r.fromRgb = [](const Image& in, std::vector<uint8_t>& out) {
    std::vector<Lum16s> planes;
    const LumStatus st = rgbToYCoCgRev(in, planes);
    std::memcpy(out.data(), planes.data(), planes.size() * 2);
    return st;
  };
  registerFormat(r);
  return true;
}();

}  // namespace
}  // namespace lumcli
