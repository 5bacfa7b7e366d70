// BT.709 conversions, with libyuv's nearest conversions as peers: its BT.709
// matrices (kYuvH709Constants, kYuvF709Constants) on the way out of 4:2:0 and
// 4:4:4, and its UYVY and RGB24/ARGB to I420/NV12/UYVY routines elsewhere
// (libyuv has no BT.709 matrix on the way in; the work per pixel is alike).
#include "bench_support.h"

#ifdef LUM_BENCH_LIBYUV
#include <libyuv.h>
#endif

namespace lumbench {
namespace {

// Three planes of the given horizontal and vertical chroma divisors.
struct Planes3 {
  Plane p[3];
  int step[3];
  Planes3(Size s, int div, uint32_t seed) {
    const int cw = (s.w + div - 1) / div, ch = (s.h + div - 1) / div;
    p[0] = Plane(s.w, s.h, seed);
    p[1] = Plane(cw, div == 1 ? s.h : ch, seed + 1);
    p[2] = Plane(cw, div == 1 ? s.h : ch, seed + 2);
    for (int i = 0; i < 3; ++i) step[i] = p[i].step;
  }
  const Lum8u* const* src() {
    for (int i = 0; i < 3; ++i) c_[i] = p[i].data();
    return c_;
  }
  Lum8u* const* dst() {
    for (int i = 0; i < 3; ++i) d_[i] = p[i].data();
    return d_;
  }

 private:
  const Lum8u* c_[3];
  Lum8u* d_[3];
};

// Planes (4:4:4 when div is 1, 4:2:0 when 2) to a packed image of dbpp bytes a pixel.
template <class F>
MakeWork fromPlanes(int div, int dbpp, F f) {
  return [=](Size s) {
    auto in = std::make_shared<Planes3>(s, div, 3);
    auto dst = std::make_shared<Plane>(s.w * dbpp, s.h);
    return Work([=] { f(*in, dst->data(), dst->step, LumSize{s.w, s.h}); });
  };
}
// Packed image of sbpp bytes a pixel to 4:2:0 planes.
template <class F>
MakeWork toPlanes(int sbpp, F f) {
  return [=](Size s) {
    auto src = std::make_shared<Plane>(s.w * sbpp, s.h, 5);
    auto out = std::make_shared<Planes3>(s, 2, 7);
    return Work([=] { f(src->data(), src->step, *out, LumSize{s.w, s.h}); });
  };
}
// Packed to packed.
template <class F>
MakeWork packedWork(int sbpp, int dbpp, F f) {
  return [=](Size s) {
    auto src = std::make_shared<Plane>(s.w * sbpp, s.h, 9);
    auto dst = std::make_shared<Plane>(s.w * dbpp, s.h);
    return Work([=] { f(src->data(), src->step, dst->data(), dst->step, LumSize{s.w, s.h}); });
  };
}
// Packed to NV12 (luma plane, interleaved chroma plane).
template <class F>
MakeWork toNV12(int sbpp, F f) {
  return [=](Size s) {
    auto src = std::make_shared<Plane>(s.w * sbpp, s.h, 11);
    auto y = std::make_shared<Plane>(s.w, s.h), uv = std::make_shared<Plane>(s.w, (s.h + 1) / 2);
    return Work([=] { f(src->data(), src->step, y->data(), y->step, uv->data(), uv->step, LumSize{s.w, s.h}); });
  };
}

const bool kRegistered = [] {
  constexpr Lum8u av = 255;
  add("YCbCrToBGR_709CSC_8u_P3C3R", "lumcc", fromPlanes(1, 3, [](Planes3& p, Lum8u* d, int ds, LumSize r) {
        lumiYCbCrToBGR_709CSC_8u_P3C3R(p.src(), p.step[0], d, ds, r);
      }));
  add("YCbCrToBGR_709CSC_8u_P3C4R", "lumcc", fromPlanes(1, 4, [](Planes3& p, Lum8u* d, int ds, LumSize r) {
        lumiYCbCrToBGR_709CSC_8u_P3C4R(p.src(), p.step[0], d, ds, r, av);
      }));
  add("YCbCr420ToBGR_709CSC_8u_P3C3R", "lumcc", fromPlanes(2, 3, [](Planes3& p, Lum8u* d, int ds, LumSize r) {
        lumiYCbCr420ToBGR_709CSC_8u_P3C3R(p.src(), p.step, d, ds, r);
      }));
  add("YCbCr420ToBGR_709HDTV_8u_P3C4R", "lumcc", fromPlanes(2, 4, [](Planes3& p, Lum8u* d, int ds, LumSize r) {
        lumiYCbCr420ToBGR_709HDTV_8u_P3C4R(p.src(), p.step, d, ds, r, av);
      }));
  add("CbYCr422ToBGR_709HDTV_8u_C2C3R", "lumcc", packedWork(2, 3, lumiCbYCr422ToBGR_709HDTV_8u_C2C3R));
  add("CbYCr422ToBGR_709HDTV_8u_C2C4R", "lumcc", packedWork(2, 4, [](auto... a) {
        return lumiCbYCr422ToBGR_709HDTV_8u_C2C4R(a..., av);
      }));
  add("BGRToCbYCr422_709HDTV_8u_C3C2R", "lumcc", packedWork(3, 2, lumiBGRToCbYCr422_709HDTV_8u_C3C2R));
  add("BGRToCbYCr422_709HDTV_8u_AC4C2R", "lumcc", packedWork(4, 2, lumiBGRToCbYCr422_709HDTV_8u_AC4C2R));
  add("BGRToYCbCr420_709CSC_8u_C3P3R", "lumcc", toPlanes(3, [](const Lum8u* s, int ss, Planes3& p, LumSize r) {
        lumiBGRToYCbCr420_709CSC_8u_C3P3R(s, ss, p.dst(), p.step, r);
      }));
  add("BGRToYCbCr420_709CSC_8u_AC4P3R", "lumcc", toPlanes(4, [](const Lum8u* s, int ss, Planes3& p, LumSize r) {
        lumiBGRToYCbCr420_709CSC_8u_AC4P3R(s, ss, p.dst(), p.step, r);
      }));
  add("BGRToYCrCb420_709CSC_8u_C3P3R", "lumcc", toPlanes(3, [](const Lum8u* s, int ss, Planes3& p, LumSize r) {
        lumiBGRToYCrCb420_709CSC_8u_C3P3R(s, ss, p.dst(), p.step, r);
      }));
  add("BGRToYCrCb420_709CSC_8u_AC4P3R", "lumcc", toPlanes(4, [](const Lum8u* s, int ss, Planes3& p, LumSize r) {
        lumiBGRToYCrCb420_709CSC_8u_AC4P3R(s, ss, p.dst(), p.step, r);
      }));
  add("BGRToYCbCr420_709CSC_8u_C3P2R", "lumcc", toNV12(3, lumiBGRToYCbCr420_709CSC_8u_C3P2R));
  add("BGRToYCbCr420_709CSC_8u_AC4P2R", "lumcc", toNV12(4, lumiBGRToYCbCr420_709CSC_8u_AC4P2R));
  add("BGRToYCbCr420_709HDTV_8u_AC4P3R", "lumcc", toPlanes(4, [](const Lum8u* s, int ss, Planes3& p, LumSize r) {
        lumiBGRToYCbCr420_709HDTV_8u_AC4P3R(s, ss, p.dst(), p.step, r);
      }));

#ifdef LUM_BENCH_LIBYUV
  // Peers: BGR memory order is libyuv's RGB24, BGRA is its ARGB.
  using namespace libyuv;
  add("YCbCrToBGR_709CSC_8u_P3C3R", "libyuv", fromPlanes(1, 3, [](Planes3& p, Lum8u* d, int ds, LumSize r) {
        I444ToRGB24Matrix(p.p[0].data(), p.step[0], p.p[1].data(), p.step[1], p.p[2].data(), p.step[2], d, ds,
                          &kYuvH709Constants, r.width, r.height);
      }));
  add("YCbCrToBGR_709CSC_8u_P3C4R", "libyuv", fromPlanes(1, 4, [](Planes3& p, Lum8u* d, int ds, LumSize r) {
        I444ToARGBMatrix(p.p[0].data(), p.step[0], p.p[1].data(), p.step[1], p.p[2].data(), p.step[2], d, ds,
                         &kYuvH709Constants, r.width, r.height);
      }));
  add("YCbCr420ToBGR_709CSC_8u_P3C3R", "libyuv", fromPlanes(2, 3, [](Planes3& p, Lum8u* d, int ds, LumSize r) {
        I420ToRGB24Matrix(p.p[0].data(), p.step[0], p.p[1].data(), p.step[1], p.p[2].data(), p.step[2], d, ds,
                          &kYuvH709Constants, r.width, r.height);
      }));
  add("YCbCr420ToBGR_709HDTV_8u_P3C4R", "libyuv", fromPlanes(2, 4, [](Planes3& p, Lum8u* d, int ds, LumSize r) {
        I420ToARGBMatrix(p.p[0].data(), p.step[0], p.p[1].data(), p.step[1], p.p[2].data(), p.step[2], d, ds,
                         &kYuvF709Constants, r.width, r.height);
      }));
  // UYVY to RGB24 does not exist in libyuv: both CbYCr422 forms face UYVYToARGB.
  const auto uyvyToArgb = [](const Lum8u* s, int ss, Lum8u* d, int ds, LumSize r) {
    UYVYToARGB(s, ss, d, ds, r.width, r.height);
  };
  add("CbYCr422ToBGR_709HDTV_8u_C2C3R", "libyuv", packedWork(2, 4, uyvyToArgb));
  add("CbYCr422ToBGR_709HDTV_8u_C2C4R", "libyuv", packedWork(2, 4, uyvyToArgb));
  // RGB24 to UYVY does not exist: both face ARGBToUYVY.
  const auto argbToUyvy = [](const Lum8u* s, int ss, Lum8u* d, int ds, LumSize r) {
    ARGBToUYVY(s, ss, d, ds, r.width, r.height);
  };
  add("BGRToCbYCr422_709HDTV_8u_C3C2R", "libyuv", packedWork(4, 2, argbToUyvy));
  add("BGRToCbYCr422_709HDTV_8u_AC4C2R", "libyuv", packedWork(4, 2, argbToUyvy));
  const auto rgb24ToI420 = [](const Lum8u* s, int ss, Planes3& p, LumSize r) {
    RGB24ToI420(s, ss, p.p[0].data(), p.step[0], p.p[1].data(), p.step[1], p.p[2].data(), p.step[2], r.width,
                r.height);
  };
  const auto argbToI420 = [](const Lum8u* s, int ss, Planes3& p, LumSize r) {
    ARGBToI420(s, ss, p.p[0].data(), p.step[0], p.p[1].data(), p.step[1], p.p[2].data(), p.step[2], r.width,
               r.height);
  };
  add("BGRToYCbCr420_709CSC_8u_C3P3R", "libyuv", toPlanes(3, rgb24ToI420));
  add("BGRToYCrCb420_709CSC_8u_C3P3R", "libyuv", toPlanes(3, rgb24ToI420));
  add("BGRToYCbCr420_709CSC_8u_AC4P3R", "libyuv", toPlanes(4, argbToI420));
  add("BGRToYCrCb420_709CSC_8u_AC4P3R", "libyuv", toPlanes(4, argbToI420));
  add("BGRToYCbCr420_709HDTV_8u_AC4P3R", "libyuv", toPlanes(4, argbToI420));
  // RGB24 to NV12 does not exist: the C3 form faces RGB24ToI420 writing planes.
  add("BGRToYCbCr420_709CSC_8u_C3P2R", "libyuv", toPlanes(3, rgb24ToI420));
  add("BGRToYCbCr420_709CSC_8u_AC4P2R", "libyuv", toNV12(4, [](const Lum8u* s, int ss, Lum8u* y, int ys, Lum8u* uv,
                                                                 int uvs, LumSize r) {
        ARGBToNV12(s, ss, y, ys, uv, uvs, r.width, r.height);
      }));
#endif
  return true;
}();

}  // namespace
}  // namespace lumbench
