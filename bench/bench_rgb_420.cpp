// RGB <-> 4:2:0 and 4:1:1, with libyuv's RAW / RGB24 / ARGB <-> I420 / NV12
// conversions as peers doing the same work (libyuv "RAW" is R, G, B in memory,
// "RGB24" and "ARGB" start with blue).
#include "bench_support.h"

#ifdef LUM_BENCH_LIBYUV
#include <libyuv.h>
#endif

namespace lumbench {
namespace {

// Luma plane plus two chroma planes of a 4:2:0 (hDiv 2) or 4:1:1 (wDiv 4) image.
struct YuvPlanes {
  Plane y, c1, c2;
  YuvPlanes(Size s, int wDiv, int hDiv) : y(s.w, s.h, 7), c1(s.w / wDiv, s.h / hDiv, 8), c2(s.w / wDiv, s.h / hDiv, 9) {}
  Lum8u* p[3];
  int steps[3];
  void bind() {
    p[0] = y.data(), p[1] = c1.data(), p[2] = c2.data();
    steps[0] = y.step, steps[1] = c1.step, steps[2] = c2.step;
  }
};

// Packed RGB to three planes with an array of steps.
template <class F>
MakeWork packedToPlanes(int sbpp, int wDiv, int hDiv, F f) {
  return [=](Size s) {
    auto src = std::make_shared<Plane>(s.w * sbpp, s.h);
    auto dst = std::make_shared<YuvPlanes>(s, wDiv, hDiv);
    return Work([=] {
      dst->bind();
      f(src->data(), src->step, dst->p, dst->steps, LumSize{s.w, s.h});
    });
  };
}
// Packed RGB to NV12.
template <class F>
MakeWork packedToNV12(int sbpp, F f) {
  return [=](Size s) {
    auto src = std::make_shared<Plane>(s.w * sbpp, s.h);
    auto y = std::make_shared<Plane>(s.w, s.h), uv = std::make_shared<Plane>(s.w, s.h / 2);
    return Work([=] { f(src->data(), src->step, y->data(), y->step, uv->data(), uv->step, LumSize{s.w, s.h}); });
  };
}
// Three planes (step array) to packed; aval passed by the wrapper where taken.
template <class F>
MakeWork planesToPacked(int dbpp, int wDiv, int hDiv, F f) {
  return [=](Size s) {
    auto src = std::make_shared<YuvPlanes>(s, wDiv, hDiv);
    auto dst = std::make_shared<Plane>(s.w * dbpp, s.h);
    return Work([=] {
      src->bind();
      const Lum8u* p[3] = {src->p[0], src->p[1], src->p[2]};
      f(p, src->steps, dst->data(), dst->step, LumSize{s.w, s.h});
    });
  };
}
template <class F>
MakeWork nv12ToPacked(int dbpp, F f) {
  return [=](Size s) {
    auto y = std::make_shared<Plane>(s.w, s.h, 3), uv = std::make_shared<Plane>(s.w, s.h / 2, 4);
    auto dst = std::make_shared<Plane>(s.w * dbpp, s.h);
    return Work([=] { f(y->data(), y->step, uv->data(), uv->step, dst->data(), dst->step, LumSize{s.w, s.h}); });
  };
}
// Three full-size planes (one step) to 4:2:0 planes, and back.
template <class F>
MakeWork rgbPlanesToYuv(F f) {
  return [=](Size s) {
    auto in = std::make_shared<std::vector<Plane>>();
    for (int i = 0; i < 3; ++i) in->emplace_back(s.w, s.h, uint32_t(i + 5));
    auto dst = std::make_shared<YuvPlanes>(s, 2, 2);
    return Work([=] {
      dst->bind();
      const Lum8u* p[3] = {(*in)[0].data(), (*in)[1].data(), (*in)[2].data()};
      f(p, (*in)[0].step, dst->p, dst->steps, LumSize{s.w, s.h});
    });
  };
}
template <class F>
MakeWork yuvToRgbPlanes(F f) {
  return [=](Size s) {
    auto src = std::make_shared<YuvPlanes>(s, 2, 2);
    auto out = std::make_shared<std::vector<Plane>>();
    for (int i = 0; i < 3; ++i) out->emplace_back(s.w, s.h);
    return Work([=] {
      src->bind();
      const Lum8u* p[3] = {src->p[0], src->p[1], src->p[2]};
      Lum8u* q[3] = {(*out)[0].data(), (*out)[1].data(), (*out)[2].data()};
      f(p, src->steps, q, (*out)[0].step, LumSize{s.w, s.h});
    });
  };
}
// Dense images: no steps.
MakeWork denseRgbToYuv(bool planar) {
  return [=](Size s) {
    auto src = std::make_shared<std::vector<uint8_t>>(size_t(s.w) * size_t(s.h) * 3, uint8_t(77));
    auto dst = std::make_shared<std::vector<uint8_t>>(size_t(s.w) * size_t(s.h) * 3 / 2);
    return Work([=] {
      const size_t n = size_t(s.w) * size_t(s.h);
      Lum8u* q[3] = {dst->data(), dst->data() + n, dst->data() + n + n / 4};
      if (planar) {
        const Lum8u* p[3] = {src->data(), src->data() + n, src->data() + 2 * n};
        lumiRGBToYUV420_8u_P3(p, q, LumSize{s.w, s.h});
      } else {
        lumiRGBToYUV420_8u_C3P3(src->data(), q, LumSize{s.w, s.h});
      }
    });
  };
}
MakeWork denseYuvToRgb(bool planar) {
  return [=](Size s) {
    auto src = std::make_shared<std::vector<uint8_t>>(size_t(s.w) * size_t(s.h) * 3 / 2, uint8_t(99));
    auto dst = std::make_shared<std::vector<uint8_t>>(size_t(s.w) * size_t(s.h) * 3);
    return Work([=] {
      const size_t n = size_t(s.w) * size_t(s.h);
      const Lum8u* p[3] = {src->data(), src->data() + n, src->data() + n + n / 4};
      if (planar) {
        Lum8u* q[3] = {dst->data(), dst->data() + n, dst->data() + 2 * n};
        lumiYUV420ToRGB_8u_P3(p, q, LumSize{s.w, s.h});
      } else {
        lumiYUV420ToRGB_8u_P3C3(p, dst->data(), LumSize{s.w, s.h});
      }
    });
  };
}

template <class F>
auto withAval(F f) {
  return [f](auto... a) { return f(a..., Lum8u(255)); };
}

#ifdef LUM_BENCH_LIBYUV
// libyuv: packed to I420 / I420 to packed / NV12 to packed / packed to NV12.
template <class F>
MakeWork yuvFromPacked(int sbpp, F f) {
  return [=](Size s) {
    auto src = std::make_shared<Plane>(s.w * sbpp, s.h);
    auto d = std::make_shared<YuvPlanes>(s, 2, 2);
    return Work([=] {
      f(src->data(), src->step, d->y.data(), d->y.step, d->c1.data(), d->c1.step, d->c2.data(), d->c2.step, s.w, s.h);
    });
  };
}
template <class F>
MakeWork yuvToPacked(int dbpp, F f) {
  return [=](Size s) {
    auto d = std::make_shared<YuvPlanes>(s, 2, 2);
    auto dst = std::make_shared<Plane>(s.w * dbpp, s.h);
    return Work([=] {
      f(d->y.data(), d->y.step, d->c1.data(), d->c1.step, d->c2.data(), d->c2.step, dst->data(), dst->step, s.w, s.h);
    });
  };
}
template <class F>
MakeWork nv12ToPackedYuv(int dbpp, F f) {
  return [=](Size s) {
    auto y = std::make_shared<Plane>(s.w, s.h, 3), uv = std::make_shared<Plane>(s.w, s.h / 2, 4);
    auto dst = std::make_shared<Plane>(s.w * dbpp, s.h);
    return Work([=] { f(y->data(), y->step, uv->data(), uv->step, dst->data(), dst->step, s.w, s.h); });
  };
}
template <class F>
MakeWork nv12FromPacked(int sbpp, F f) {
  return [=](Size s) {
    auto src = std::make_shared<Plane>(s.w * sbpp, s.h);
    auto y = std::make_shared<Plane>(s.w, s.h), uv = std::make_shared<Plane>(s.w, s.h / 2);
    return Work([=] { f(src->data(), src->step, y->data(), y->step, uv->data(), uv->step, s.w, s.h); });
  };
}
// RAW to NV12 has no single call in libyuv: RAW to I420, then I420 to NV12.
MakeWork rawToNV12() {
  return [=](Size s) {
    auto src = std::make_shared<Plane>(s.w * 3, s.h);
    auto t = std::make_shared<YuvPlanes>(s, 2, 2);
    auto uv = std::make_shared<Plane>(s.w, s.h / 2);
    return Work([=] {
      libyuv::RAWToI420(src->data(), src->step, t->y.data(), t->y.step, t->c1.data(), t->c1.step, t->c2.data(),
                        t->c2.step, s.w, s.h);
      libyuv::I420ToNV12(t->y.data(), t->y.step, t->c1.data(), t->c1.step, t->c2.data(), t->c2.step, t->y.data(),
                         t->y.step, uv->data(), uv->step, s.w, s.h);
    });
  };
}
#endif

const bool kRegistered = [] {
  // RGB to 4:2:0 and 4:1:1
  add("RGBToYCbCr420_8u_C3P3R", "lumcc", packedToPlanes(3, 2, 2, lumiRGBToYCbCr420_8u_C3P3R));
  add("BGRToYCbCr420_8u_C3P3R", "lumcc", packedToPlanes(3, 2, 2, lumiBGRToYCbCr420_8u_C3P3R));
  add("BGRToYCbCr420_8u_AC4P3R", "lumcc", packedToPlanes(4, 2, 2, lumiBGRToYCbCr420_8u_AC4P3R));
  add("BGRToYCrCb420_8u_C3P3R", "lumcc", packedToPlanes(3, 2, 2, lumiBGRToYCrCb420_8u_C3P3R));
  add("BGRToYCrCb420_8u_AC4P3R", "lumcc", packedToPlanes(4, 2, 2, lumiBGRToYCrCb420_8u_AC4P3R));
  add("RGBToYCrCb420_8u_AC4P3R", "lumcc", packedToPlanes(4, 2, 2, lumiRGBToYCrCb420_8u_AC4P3R));
  add("RGBToYCbCr420_8u_C3P2R", "lumcc", packedToNV12(3, lumiRGBToYCbCr420_8u_C3P2R));
  add("RGBToYCbCr420_8u_C4P2R", "lumcc", packedToNV12(4, lumiRGBToYCbCr420_8u_C4P2R));
  add("BGRToYCbCr420_8u_C3P2R", "lumcc", packedToNV12(3, lumiBGRToYCbCr420_8u_C3P2R));
  add("BGRToYCbCr420_8u_AC4P2R", "lumcc", packedToNV12(4, lumiBGRToYCbCr420_8u_AC4P2R));
  add("RGBToYUV420_8u_C3P3R", "lumcc", packedToPlanes(3, 2, 2, lumiRGBToYUV420_8u_C3P3R));
  add("RGBToYUV420_8u_P3R", "lumcc", rgbPlanesToYuv(lumiRGBToYUV420_8u_P3R));
  add("BGRToYUV420_8u_AC4P3R", "lumcc", packedToPlanes(4, 2, 2, lumiBGRToYUV420_8u_AC4P3R));
  add("RGBToYUV420_8u_C3P3", "lumcc", denseRgbToYuv(false));
  add("RGBToYUV420_8u_P3", "lumcc", denseRgbToYuv(true));
  add("BGRToYCbCr411_8u_C3P3R", "lumcc", packedToPlanes(3, 4, 1, lumiBGRToYCbCr411_8u_C3P3R));
  add("BGRToYCbCr411_8u_AC4P3R", "lumcc", packedToPlanes(4, 4, 1, lumiBGRToYCbCr411_8u_AC4P3R));
  // 4:2:0 and 4:1:1 to RGB
  add("YCbCr420ToRGB_8u_P3C3R", "lumcc", planesToPacked(3, 2, 2, lumiYCbCr420ToRGB_8u_P3C3R));
  add("YCbCr420ToBGR_8u_P3C3R", "lumcc", planesToPacked(3, 2, 2, lumiYCbCr420ToBGR_8u_P3C3R));
  add("YCbCr420ToBGR_8u_P3C4R", "lumcc", planesToPacked(4, 2, 2, withAval(lumiYCbCr420ToBGR_8u_P3C4R)));
  add("YCrCb420ToRGB_8u_P3C4R", "lumcc", planesToPacked(4, 2, 2, withAval(lumiYCrCb420ToRGB_8u_P3C4R)));
  add("YCbCr420ToRGB_8u_P2C3R", "lumcc", nv12ToPacked(3, lumiYCbCr420ToRGB_8u_P2C3R));
  add("YCbCr420ToRGB_8u_P2C4R", "lumcc", nv12ToPacked(4, withAval(lumiYCbCr420ToRGB_8u_P2C4R)));
  add("YCbCr420ToBGR_8u_P2C3R", "lumcc", nv12ToPacked(3, lumiYCbCr420ToBGR_8u_P2C3R));
  add("YCbCr420ToBGR_8u_P2C4R", "lumcc", nv12ToPacked(4, withAval(lumiYCbCr420ToBGR_8u_P2C4R)));
  add("YCrCb420ToRGB_8u_P2C3R", "lumcc", nv12ToPacked(3, lumiYCrCb420ToRGB_8u_P2C3R));
  add("YCrCb420ToRGB_8u_P2C4R", "lumcc", nv12ToPacked(4, withAval(lumiYCrCb420ToRGB_8u_P2C4R)));
  add("YCrCb420ToBGR_8u_P2C3R", "lumcc", nv12ToPacked(3, lumiYCrCb420ToBGR_8u_P2C3R));
  add("YCrCb420ToBGR_8u_P2C4R", "lumcc", nv12ToPacked(4, withAval(lumiYCrCb420ToBGR_8u_P2C4R)));
  add("YUV420ToRGB_8u_P3C3R", "lumcc", planesToPacked(3, 2, 2, lumiYUV420ToRGB_8u_P3C3R));
  add("YUV420ToRGB_8u_P3R", "lumcc", yuvToRgbPlanes(lumiYUV420ToRGB_8u_P3R));
  add("YUV420ToRGB_8u_P3AC4R", "lumcc", planesToPacked(4, 2, 2, lumiYUV420ToRGB_8u_P3AC4R));
  add("YUV420ToBGR_8u_P3C3R", "lumcc", planesToPacked(3, 2, 2, lumiYUV420ToBGR_8u_P3C3R));
  add("YUV420ToRGB_8u_P3C3", "lumcc", denseYuvToRgb(false));
  add("YUV420ToRGB_8u_P3", "lumcc", denseYuvToRgb(true));
  add("YCbCr411ToBGR_8u_P3C3R", "lumcc", planesToPacked(3, 4, 1, lumiYCbCr411ToBGR_8u_P3C3R));
  add("YCbCr411ToBGR_8u_P3C4R", "lumcc", planesToPacked(4, 4, 1, withAval(lumiYCbCr411ToBGR_8u_P3C4R)));
#ifdef LUM_BENCH_LIBYUV
  add("RGBToYCbCr420_8u_C3P3R", "libyuv", yuvFromPacked(3, libyuv::RAWToI420));
  add("BGRToYCbCr420_8u_C3P3R", "libyuv", yuvFromPacked(3, libyuv::RGB24ToI420));
  add("BGRToYCbCr420_8u_AC4P3R", "libyuv", yuvFromPacked(4, libyuv::ARGBToI420));
  add("RGBToYUV420_8u_C3P3R", "libyuv", yuvFromPacked(3, libyuv::RAWToJ420));
  add("RGBToYCbCr420_8u_C3P2R", "libyuv", rawToNV12());
  add("BGRToYCbCr420_8u_AC4P2R", "libyuv", nv12FromPacked(4, libyuv::ARGBToNV12));
  add("YCbCr420ToRGB_8u_P3C3R", "libyuv", yuvToPacked(3, libyuv::I420ToRAW));
  add("YCbCr420ToBGR_8u_P3C3R", "libyuv", yuvToPacked(3, libyuv::I420ToRGB24));
  add("YCbCr420ToBGR_8u_P3C4R", "libyuv", yuvToPacked(4, libyuv::I420ToARGB));
  add("YUV420ToRGB_8u_P3C3R", "libyuv", yuvToPacked(3, libyuv::J420ToRAW));
  add("YCbCr420ToRGB_8u_P2C3R", "libyuv", nv12ToPackedYuv(3, libyuv::NV12ToRAW));
  add("YCbCr420ToBGR_8u_P2C3R", "libyuv", nv12ToPackedYuv(3, libyuv::NV12ToRGB24));
  add("YCbCr420ToBGR_8u_P2C4R", "libyuv", nv12ToPackedYuv(4, libyuv::NV12ToARGB));
  add("YCbCr420ToRGB_8u_P2C4R", "libyuv", nv12ToPackedYuv(4, libyuv::NV12ToABGR));
  add("YCrCb420ToRGB_8u_P2C3R", "libyuv", nv12ToPackedYuv(3, libyuv::NV21ToRAW));
  add("YCrCb420ToBGR_8u_P2C4R", "libyuv", nv12ToPackedYuv(4, libyuv::NV21ToARGB));
#endif
  return true;
}();

}  // namespace
}  // namespace lumbench
