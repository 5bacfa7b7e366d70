// BT.709 raw files, chosen with --matrix 709: 4:2:0 planes and NV12 in studio
// range (709CSC), packed 4:2:2 in full-scale luma (709HDTV), and 4:4:4 planes
// on the way to RGB. Files hold dense planes. The library's BT.709 functions
// work on BGR, so the RGB image is swapped on the way.
#include <utility>

#include "formats.h"

namespace lumcli {
namespace {

// Exchanges the first and third sample of every pixel (RGB <-> BGR).
void swapRB(uint8_t* p, size_t pixels) {
  for (size_t i = 0; i < pixels; ++i) std::swap(p[3 * i], p[3 * i + 2]);
}

// A BGR copy of an RGB image.
std::vector<uint8_t> toBgr(const Image& in) {
  std::vector<uint8_t> bgr = in.pixels;
  swapRB(bgr.data(), size_t(in.width) * size_t(in.height));
  return bgr;
}

// Runs a conversion into out's pixels as BGR, then turns them into RGB.
template <class F>
LumStatus intoRgb(Image& out, F f) {
  const LumStatus s = f(out.pixels.data(), out.width * 3);
  swapRB(out.pixels.data(), size_t(out.width) * size_t(out.height));
  return s;
}

size_t dense420(int w, int h) {
  // The 4:2:0 conversions cover whole 2-by-2 cells only.
  if ((w | h) & 1) return 0;
  return size_t(w) * size_t(h) * 3 / 2;
}
size_t dense422(int w, int h) { return size_t(w) * size_t(h) * 2; }

// Y, then the two chroma planes of a dense 4:2:0 frame, in file order.
struct Frame420 {
  uint8_t* y;
  uint8_t* c1;
  uint8_t* c2;
  int w, h;
  Frame420(uint8_t* base, int w_, int h_) : w(w_), h(h_) {
    y = base;
    c1 = base + size_t(w) * size_t(h);
    c2 = c1 + size_t(w / 2) * size_t(h / 2);
  }
};

// 4:2:0 planes, Cb first (i420) or Cr first (yv12).
Format planar420(const char* name, const char* desc, bool crFirst) {
  Format f;
  f.name = name;
  f.description = desc;
  f.matrix = "709";
  f.fileBytes = dense420;
  f.toRgb = [crFirst](const std::vector<uint8_t>& in, Image& out) {
    Frame420 fr(const_cast<uint8_t*>(in.data()), out.width, out.height);
    const Lum8u* p[3] = {fr.y, crFirst ? fr.c2 : fr.c1, crFirst ? fr.c1 : fr.c2};
    const int st[3] = {fr.w, fr.w / 2, fr.w / 2};
    return intoRgb(out, [&](Lum8u* d, int ds) {
      return lumiYCbCr420ToBGR_709CSC_8u_P3C3R(p, st, d, ds, LumSize{fr.w, fr.h});
    });
  };
  f.fromRgb = [crFirst](const Image& in, std::vector<uint8_t>& out) {
    const auto bgr = toBgr(in);
    Frame420 fr(out.data(), in.width, in.height);
    Lum8u* p[3] = {fr.y, fr.c1, fr.c2};
    const int st[3] = {fr.w, fr.w / 2, fr.w / 2};
    const LumSize roi{in.width, in.height};
    return crFirst ? lumiBGRToYCrCb420_709CSC_8u_C3P3R(bgr.data(), in.width * 3, p, st, roi)
                   : lumiBGRToYCbCr420_709CSC_8u_C3P3R(bgr.data(), in.width * 3, p, st, roi);
  };
  return f;
}

// NV12: luma plane, then one plane of Cb Cr pairs. On the way to RGB the pairs
// are split into two planes for the 4:2:0 planar conversion.
Format nv12() {
  Format f;
  f.name = "nv12";
  f.description = "NV12: Y plane, Cb Cr pairs (4:2:0); 709: studio range, even sizes";
  f.matrix = "709";
  f.fileBytes = dense420;
  f.toRgb = [](const std::vector<uint8_t>& in, Image& out) {
    const int w = out.width, h = out.height;
    const size_t n = size_t(w / 2) * size_t(h / 2);
    std::vector<uint8_t> cb(n), cr(n);
    const uint8_t* uv = in.data() + size_t(w) * size_t(h);
    for (size_t i = 0; i < n; ++i) {
      cb[i] = uv[2 * i];
      cr[i] = uv[2 * i + 1];
    }
    const Lum8u* p[3] = {in.data(), cb.data(), cr.data()};
    const int st[3] = {w, w / 2, w / 2};
    return intoRgb(out, [&](Lum8u* d, int ds) {
      return lumiYCbCr420ToBGR_709CSC_8u_P3C3R(p, st, d, ds, LumSize{w, h});
    });
  };
  f.fromRgb = [](const Image& in, std::vector<uint8_t>& out) {
    const auto bgr = toBgr(in);
    const int w = in.width, h = in.height;
    return lumiBGRToYCbCr420_709CSC_8u_C3P2R(bgr.data(), w * 3, out.data(), w, out.data() + size_t(w) * size_t(h),
                                             w, LumSize{w, h});
  };
  return f;
}

// Exchanges the bytes of every two-byte half of a 4:2:2 row (YUY2 <-> UYVY);
// an odd row's lone half pair (Y Cb <-> Cb Y) included.
std::vector<uint8_t> swapPairs(const uint8_t* p, size_t bytes) {
  std::vector<uint8_t> out(p, p + bytes);
  for (size_t i = 0; i + 1 < bytes; i += 2) std::swap(out[i], out[i + 1]);
  return out;
}

// Packed 4:2:2: uyvy natively, yuy2 through a byte swap of each half pair.
Format packed422(const char* name, const char* desc, bool yuy2) {
  Format f;
  f.name = name;
  f.description = desc;
  f.matrix = "709";
  f.fileBytes = dense422;
  f.toRgb = [yuy2](const std::vector<uint8_t>& in, Image& out) {
    const std::vector<uint8_t> uyvy = yuy2 ? swapPairs(in.data(), in.size()) : in;
    return intoRgb(out, [&](Lum8u* d, int ds) {
      return lumiCbYCr422ToBGR_709HDTV_8u_C2C3R(uyvy.data(), out.width * 2, d, ds, LumSize{out.width, out.height});
    });
  };
  f.fromRgb = [yuy2](const Image& in, std::vector<uint8_t>& out) {
    const auto bgr = toBgr(in);
    const LumStatus s =
        lumiBGRToCbYCr422_709HDTV_8u_C3C2R(bgr.data(), in.width * 3, out.data(), in.width * 2, LumSize{in.width, in.height});
    if (yuy2 && s >= 0) out = swapPairs(out.data(), out.size());
    return s;
  };
  return f;
}

// Planar 4:4:4 to RGB only: there is no BT.709 conversion into it.
Format planar444() {
  Format f;
  f.name = "ycbcr444p";
  f.description = "planar YCbCr 4:4:4; 709: studio range, to RGB only";
  f.matrix = "709";
  f.fileBytes = [](int w, int h) { return size_t(w) * size_t(h) * 3; };
  f.toRgb = [](const std::vector<uint8_t>& in, Image& out) {
    const size_t plane = size_t(out.width) * size_t(out.height);
    const Lum8u* p[3] = {in.data(), in.data() + plane, in.data() + 2 * plane};
    return intoRgb(out, [&](Lum8u* d, int ds) {
      return lumiYCbCrToBGR_709CSC_8u_P3C3R(p, out.width, d, ds, LumSize{out.width, out.height});
    });
  };
  return f;
}

const bool kRegistered = [] {
  registerFormat(planar420("i420", "I420: Y, Cb, Cr planes (4:2:0); 709: studio range, even sizes", false));
  registerFormat(planar420("yv12", "YV12: Y, Cr, Cb planes (4:2:0); 709: studio range, even sizes", true));
  registerFormat(nv12());
  registerFormat(packed422("uyvy", "UYVY: packed Cb Y0 Cr Y1 (4:2:2); 709: full-scale luma, codes 1..254", false));
  registerFormat(packed422("yuy2", "YUY2: packed Y0 Cb Y1 Cr (4:2:2); 709: full-scale luma, codes 1..254", true));
  registerFormat(planar444());
  return true;
}();

}  // namespace
}  // namespace lumcli
