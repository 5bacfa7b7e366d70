// RGB <-> YCbCr / YUV at full resolution, with OpenCV's cvtColor and libyuv's
// ARGB <-> I444 as peers doing the same amount of work, and lumcc itself on its
// eight-lane blocks ("lumcc-sse": what a processor without AVX2 runs).
#include "bench_support.h"
#include "frame/simd.h"

#ifdef LUM_BENCH_OPENCV
#include <opencv2/core.hpp>
#include <opencv2/imgproc.hpp>
#endif
#ifdef LUM_BENCH_LIBYUV
#include <libyuv.h>
#endif

namespace lumbench {
namespace {

// Packed source and destination of the given bytes per pixel.
template <class F>
MakeWork packedToPacked(int sbpp, int dbpp, F f) {
  return [=](Size s) {
    auto src = std::make_shared<Plane>(s.w * sbpp, s.h);
    auto dst = std::make_shared<Plane>(s.w * dbpp, s.h);
    return Work([=] { f(src->data(), src->step, dst->data(), dst->step, LumSize{s.w, s.h}); });
  };
}
// Packed to three planes (or four).
template <class F>
MakeWork packedToPlanes(int sbpp, int n, F f) {
  return [=](Size s) {
    auto src = std::make_shared<Plane>(s.w * sbpp, s.h);
    auto planes = std::make_shared<std::vector<Plane>>();
    for (int i = 0; i < n; ++i) planes->emplace_back(s.w, s.h);
    return Work([=] {
      Lum8u* p[4] = {};
      for (int i = 0; i < n; ++i) p[i] = (*planes)[size_t(i)].data();
      f(src->data(), src->step, p, (*planes)[0].step, LumSize{s.w, s.h});
    });
  };
}
// Three planes to packed.
template <class F>
MakeWork planesToPacked(int dbpp, F f) {
  return [=](Size s) {
    auto planes = std::make_shared<std::vector<Plane>>();
    for (int i = 0; i < 3; ++i) planes->emplace_back(s.w, s.h, uint32_t(i + 3));
    auto dst = std::make_shared<Plane>(s.w * dbpp, s.h);
    return Work([=] {
      const Lum8u* p[3] = {(*planes)[0].data(), (*planes)[1].data(), (*planes)[2].data()};
      f(p, (*planes)[0].step, dst->data(), dst->step, LumSize{s.w, s.h});
    });
  };
}
// Three planes to three planes.
template <class F>
MakeWork planesToPlanes(F f) {
  return [=](Size s) {
    auto in = std::make_shared<std::vector<Plane>>();
    auto out = std::make_shared<std::vector<Plane>>();
    for (int i = 0; i < 3; ++i) {
      in->emplace_back(s.w, s.h, uint32_t(i + 5));
      out->emplace_back(s.w, s.h);
    }
    return Work([=] {
      const Lum8u* p[3] = {(*in)[0].data(), (*in)[1].data(), (*in)[2].data()};
      Lum8u* q[3] = {(*out)[0].data(), (*out)[1].data(), (*out)[2].data()};
      f(p, (*in)[0].step, q, (*out)[0].step, LumSize{s.w, s.h});
    });
  };
}

#ifdef LUM_BENCH_OPENCV
MakeWork cvConvert(int srcType, int dstType, int code) {
  return [=](Size s) {
    cv::setNumThreads(1);
    auto src = std::make_shared<cv::Mat>(s.h, s.w, srcType);
    cv::randu(*src, 0, 255);
    auto dst = std::make_shared<cv::Mat>(s.h, s.w, dstType);
    return Work([=] { cv::cvtColor(*src, *dst, code); });
  };
}
#endif

// The same call with the sixteen-lane blocks off: the eight-lane (SSE4.2) path.
template <class F>
auto eightLanes(F f) {
  return [f](auto... a) {
    lum::NarrowScope narrow;
    return f(a...);
  };
}
template <class F>
auto withAval(F f) {
  return [f](auto... a) { return f(a..., Lum8u(255)); };
}

// Registers the call as "lumcc" and, on the eight-lane blocks, as "lumcc-sse".
template <class Shape, class F>
void both(const char* name, Shape shape, F f) {
  add(name, "lumcc", shape(f));
  add(name, "lumcc-sse", shape(eightLanes(f)));
}

const bool kRegistered = [] {
  const auto c3c3 = [](auto f) { return packedToPacked(3, 3, f); };
  const auto c4c4 = [](auto f) { return packedToPacked(4, 4, f); };
  const auto c3c4 = [](auto f) { return packedToPacked(3, 4, f); };
  const auto c3p3 = [](auto f) { return packedToPlanes(3, 3, f); };
  const auto c4p3 = [](auto f) { return packedToPlanes(4, 3, f); };
  const auto c4p4 = [](auto f) { return packedToPlanes(4, 4, f); };
  const auto p3p3 = [](auto f) { return planesToPlanes(f); };
  const auto p3c3 = [](auto f) { return planesToPacked(3, f); };
  const auto p3c4 = [](auto f) { return planesToPacked(4, f); };
  both("RGBToYCbCr_8u_C3R", c3c3, lumiRGBToYCbCr_8u_C3R);
  both("RGBToYCbCr_8u_AC4R", c4c4, lumiRGBToYCbCr_8u_AC4R);
  both("RGBToYCbCr_8u_C3P3R", c3p3, lumiRGBToYCbCr_8u_C3P3R);
  both("RGBToYCbCr_8u_AC4P3R", c4p3, lumiRGBToYCbCr_8u_AC4P3R);
  both("RGBToYCbCr_8u_P3R", p3p3, lumiRGBToYCbCr_8u_P3R);
  both("YCbCrToRGB_8u_C3R", c3c3, lumiYCbCrToRGB_8u_C3R);
  both("YCbCrToRGB_8u_AC4R", c4c4, lumiYCbCrToRGB_8u_AC4R);
  both("YCbCrToRGB_8u_P3R", p3p3, lumiYCbCrToRGB_8u_P3R);
  both("YCbCrToRGB_8u_P3C3R", p3c3, lumiYCbCrToRGB_8u_P3C3R);
  both("YCbCrToRGB_8u_P3C4R", p3c4, withAval(lumiYCbCrToRGB_8u_P3C4R));
  both("YCbCrToBGR_8u_P3C3R", p3c3, lumiYCbCrToBGR_8u_P3C3R);
  both("YCbCrToBGR_8u_P3C4R", p3c4, withAval(lumiYCbCrToBGR_8u_P3C4R));
  both("RGBToYUV_8u_C3R", c3c3, lumiRGBToYUV_8u_C3R);
  both("RGBToYUV_8u_AC4R", c4c4, lumiRGBToYUV_8u_AC4R);
  both("RGBToYUV_8u_C3P3R", c3p3, lumiRGBToYUV_8u_C3P3R);
  both("RGBToYUV_8u_P3R", p3p3, lumiRGBToYUV_8u_P3R);
  both("RGBToYUV_8u_AC4P4R", c4p4, lumiRGBToYUV_8u_AC4P4R);
  both("YUVToRGB_8u_C3R", c3c3, lumiYUVToRGB_8u_C3R);
  both("YUVToRGB_8u_AC4R", c4c4, lumiYUVToRGB_8u_AC4R);
  both("YUVToRGB_8u_P3R", p3p3, lumiYUVToRGB_8u_P3R);
  both("YUVToRGB_8u_P3C3R", p3c3, lumiYUVToRGB_8u_P3C3R);
  both("YUVToRGB_8u_C3C4R", c3c4, withAval(lumiYUVToRGB_8u_C3C4R));
#ifdef LUM_BENCH_OPENCV
  add("RGBToYCbCr_8u_C3R", "opencv", cvConvert(CV_8UC3, CV_8UC3, cv::COLOR_RGB2YCrCb));
  add("YCbCrToRGB_8u_C3R", "opencv", cvConvert(CV_8UC3, CV_8UC3, cv::COLOR_YCrCb2RGB));
  add("RGBToYUV_8u_C3R", "opencv", cvConvert(CV_8UC3, CV_8UC3, cv::COLOR_RGB2YUV));
  add("YUVToRGB_8u_C3R", "opencv", cvConvert(CV_8UC3, CV_8UC3, cv::COLOR_YUV2RGB));
#endif
#ifdef LUM_BENCH_LIBYUV
  add("RGBToYCbCr_8u_AC4P3R", "libyuv", [](Size s) {
    auto src = std::make_shared<Plane>(s.w * 4, s.h);
    auto y = std::make_shared<Plane>(s.w, s.h), u = std::make_shared<Plane>(s.w, s.h),
         v = std::make_shared<Plane>(s.w, s.h);
    return Work([=] {
      libyuv::ARGBToI444(src->data(), src->step, y->data(), y->step, u->data(), u->step, v->data(), v->step, s.w, s.h);
    });
  });
  add("YCbCrToRGB_8u_P3C4R", "libyuv", [](Size s) {
    auto y = std::make_shared<Plane>(s.w, s.h), u = std::make_shared<Plane>(s.w, s.h),
         v = std::make_shared<Plane>(s.w, s.h);
    auto dst = std::make_shared<Plane>(s.w * 4, s.h);
    return Work([=] {
      libyuv::I444ToARGB(y->data(), y->step, u->data(), u->step, v->data(), v->step, dst->data(), dst->step, s.w, s.h);
    });
  });
#endif
  return true;
}();

}  // namespace
}  // namespace lumbench
