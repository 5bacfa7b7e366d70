// 4:2:0 and 4:1:1 files with their RGB conversions: I420, YV12, NV12, NV21, YUV
// 4:2:0 planes and I411. Planes are dense and follow each other in the file:
// luma (W x H), then the chroma of whole cells (W/2 x H/2 each for 4:2:0 planes,
// one W x H/2 plane of pairs for NV12/NV21, W/4 x H each for 4:1:1). A size the
// layout cannot hold (odd W or H for 4:2:0, W not a multiple of 4 for 4:1:1) has
// no file size, so the tool refuses it before converting.
#include <algorithm>

#include "formats.h"

namespace lumcli {
namespace {

size_t bytes420(int w, int h) {
  if ((w | h) & 1) return 0;
  return size_t(w) * size_t(h) * 3 / 2;
}
size_t bytes411(int w, int h) {
  if (w & 3) return 0;
  return size_t(w) * size_t(h) * 3 / 2;
}

// Plane pointers and steps of a dense three-plane file; `swap` exchanges the
// chroma planes (YV12 keeps Cr before Cb).
template <class T>
struct Planes3 {
  T* p[3];
  int step[3];
};
template <class T>
Planes3<T> planes3(T* base, int w, int h, int cw, int ch, bool swap) {
  const size_t luma = size_t(w) * size_t(h), chroma = size_t(cw) * size_t(ch);
  Planes3<T> r{{base, base + luma, base + luma + chroma}, {w, cw, cw}};
  if (swap) std::swap(r.p[1], r.p[2]);
  return r;
}

// RGB <-> BGR in place, for the 4:1:1 functions whose packed side is BGR.
void swapRedBlue(uint8_t* px, size_t n) {
  for (size_t i = 0; i < n; ++i) std::swap(px[3 * i], px[3 * i + 2]);
}

// I420 (Y, Cb, Cr) and YV12 (Y, Cr, Cb) share the YCbCr 4:2:0 conversions; YV12
// hands them its planes exchanged, so both give the same pixels for the same
// samples.
Format planar420(const char* name, const char* desc, bool crcb) {
  Format f;
  f.name = name;
  f.description = desc;
  f.fileBytes = bytes420;
  f.toRgb = [crcb](const std::vector<uint8_t>& in, Image& out) {
    const int w = out.width, h = out.height;
    const auto s = planes3(in.data(), w, h, w / 2, h / 2, crcb);
    return lumiYCbCr420ToRGB_8u_P3C3R(s.p, s.step, out.pixels.data(), 3 * w, LumSize{w, h});
  };
  f.fromRgb = [crcb](const Image& in, std::vector<uint8_t>& out) {
    const int w = in.width, h = in.height;
    const auto d = planes3(out.data(), w, h, w / 2, h / 2, crcb);
    return lumiRGBToYCbCr420_8u_C3P3R(in.pixels.data(), 3 * w, d.p, d.step, LumSize{w, h});
  };
  return f;
}

Format nv12() {
  Format f;
  f.name = "nv12";
  f.description = "YCbCr 4:2:0 semi-planar: Y plane, then one plane of Cb Cr pairs (NV12)";
  f.fileBytes = bytes420;
  f.toRgb = [](const std::vector<uint8_t>& in, Image& out) {
    const int w = out.width, h = out.height;
    return lumiYCbCr420ToRGB_8u_P2C3R(in.data(), w, in.data() + size_t(w) * size_t(h), w, out.pixels.data(), 3 * w,
                                      LumSize{w, h});
  };
  f.fromRgb = [](const Image& in, std::vector<uint8_t>& out) {
    const int w = in.width, h = in.height;
    return lumiRGBToYCbCr420_8u_C3P2R(in.pixels.data(), 3 * w, out.data(), w, out.data() + size_t(w) * size_t(h), w,
                                      LumSize{w, h});
  };
  return f;
}

// NV21 is read by its own conversion; it is written as NV12 with each chroma
// pair turned round (the library has no RGB to NV21 conversion).
Format nv21() {
  Format f;
  f.name = "nv21";
  f.description = "YCrCb 4:2:0 semi-planar: Y plane, then one plane of Cr Cb pairs (NV21)";
  f.fileBytes = bytes420;
  f.toRgb = [](const std::vector<uint8_t>& in, Image& out) {
    const int w = out.width, h = out.height;
    return lumiYCrCb420ToRGB_8u_P2C3R(in.data(), w, in.data() + size_t(w) * size_t(h), w, out.pixels.data(), 3 * w,
                                      LumSize{w, h});
  };
  f.fromRgb = [](const Image& in, std::vector<uint8_t>& out) {
    const int w = in.width, h = in.height;
    uint8_t* pairs = out.data() + size_t(w) * size_t(h);
    const LumStatus s = lumiRGBToYCbCr420_8u_C3P2R(in.pixels.data(), 3 * w, out.data(), w, pairs, w, LumSize{w, h});
    if (s >= 0)
      for (size_t i = 0; i + 1 < size_t(w) * size_t(h / 2); i += 2) std::swap(pairs[i], pairs[i + 1]);
    return s;
  };
  return f;
}

Format yuv420p() {
  Format f;
  f.name = "yuv420p";
  f.description = "YUV 4:2:0 planar (analogue-style full range): Y plane, U plane, V plane";
  f.fileBytes = bytes420;
  f.toRgb = [](const std::vector<uint8_t>& in, Image& out) {
    const int w = out.width, h = out.height;
    const auto s = planes3(in.data(), w, h, w / 2, h / 2, false);
    return lumiYUV420ToRGB_8u_P3C3R(s.p, s.step, out.pixels.data(), 3 * w, LumSize{w, h});
  };
  f.fromRgb = [](const Image& in, std::vector<uint8_t>& out) {
    const int w = in.width, h = in.height;
    const auto d = planes3(out.data(), w, h, w / 2, h / 2, false);
    return lumiRGBToYUV420_8u_C3P3R(in.pixels.data(), 3 * w, d.p, d.step, LumSize{w, h});
  };
  return f;
}

// The 4:1:1 conversions take and give B, G, R: the tool turns the pixels round
// on the way.
Format i411() {
  Format f;
  f.name = "i411";
  f.description = "YCbCr 4:1:1 planar: Y plane, Cb and Cr planes of width / 4 (width a multiple of 4)";
  f.fileBytes = bytes411;
  f.toRgb = [](const std::vector<uint8_t>& in, Image& out) {
    const int w = out.width, h = out.height;
    const auto s = planes3(in.data(), w, h, w / 4, h, false);
    const LumStatus st = lumiYCbCr411ToBGR_8u_P3C3R(s.p, s.step, out.pixels.data(), 3 * w, LumSize{w, h});
    if (st >= 0) swapRedBlue(out.pixels.data(), size_t(w) * size_t(h));
    return st;
  };
  f.fromRgb = [](const Image& in, std::vector<uint8_t>& out) {
    const int w = in.width, h = in.height;
    std::vector<uint8_t> bgr = in.pixels;
    swapRedBlue(bgr.data(), size_t(w) * size_t(h));
    const auto d = planes3(out.data(), w, h, w / 4, h, false);
    return lumiBGRToYCbCr411_8u_C3P3R(bgr.data(), 3 * w, d.p, d.step, LumSize{w, h});
  };
  return f;
}

const bool kRegistered = [] {
  registerFormat(planar420("i420", "YCbCr 4:2:0 planar: Y plane, Cb plane, Cr plane (I420)", false));
  registerFormat(planar420("yv12", "YCrCb 4:2:0 planar: Y plane, Cr plane, Cb plane (YV12)", true));
  registerFormat(nv12());
  registerFormat(nv21());
  registerFormat(yuv420p());
  registerFormat(i411());
  return true;
}();

}  // namespace
}  // namespace lumcli
