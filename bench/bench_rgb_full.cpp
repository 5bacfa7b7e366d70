// RGB <-> YCbCr / YUV at full resolution, with OpenCV's cvtColor and libyuv's
// ARGB <-> I444 as peers doing the same amount of work.
#include "bench_support.h"

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

const bool kRegistered = [] {
  add("RGBToYCbCr_8u_C3R", "lumcc", packedToPacked(3, 3, lumiRGBToYCbCr_8u_C3R));
  add("RGBToYCbCr_8u_AC4R", "lumcc", packedToPacked(4, 4, lumiRGBToYCbCr_8u_AC4R));
  add("RGBToYCbCr_8u_C3P3R", "lumcc", packedToPlanes(3, 3, lumiRGBToYCbCr_8u_C3P3R));
  add("RGBToYCbCr_8u_AC4P3R", "lumcc", packedToPlanes(4, 3, lumiRGBToYCbCr_8u_AC4P3R));
  add("RGBToYCbCr_8u_P3R", "lumcc", planesToPlanes(lumiRGBToYCbCr_8u_P3R));
  add("YCbCrToRGB_8u_C3R", "lumcc", packedToPacked(3, 3, lumiYCbCrToRGB_8u_C3R));
  add("YCbCrToRGB_8u_AC4R", "lumcc", packedToPacked(4, 4, lumiYCbCrToRGB_8u_AC4R));
  add("YCbCrToRGB_8u_P3R", "lumcc", planesToPlanes(lumiYCbCrToRGB_8u_P3R));
  add("YCbCrToRGB_8u_P3C3R", "lumcc", planesToPacked(3, lumiYCbCrToRGB_8u_P3C3R));
  add("YCbCrToRGB_8u_P3C4R", "lumcc", planesToPacked(4, [](auto... a) { return lumiYCbCrToRGB_8u_P3C4R(a..., 255); }));
  add("YCbCrToBGR_8u_P3C3R", "lumcc", planesToPacked(3, lumiYCbCrToBGR_8u_P3C3R));
  add("YCbCrToBGR_8u_P3C4R", "lumcc", planesToPacked(4, [](auto... a) { return lumiYCbCrToBGR_8u_P3C4R(a..., 255); }));
  add("RGBToYUV_8u_C3R", "lumcc", packedToPacked(3, 3, lumiRGBToYUV_8u_C3R));
  add("RGBToYUV_8u_AC4R", "lumcc", packedToPacked(4, 4, lumiRGBToYUV_8u_AC4R));
  add("RGBToYUV_8u_C3P3R", "lumcc", packedToPlanes(3, 3, lumiRGBToYUV_8u_C3P3R));
  add("RGBToYUV_8u_P3R", "lumcc", planesToPlanes(lumiRGBToYUV_8u_P3R));
  add("RGBToYUV_8u_AC4P4R", "lumcc", packedToPlanes(4, 4, lumiRGBToYUV_8u_AC4P4R));
  add("YUVToRGB_8u_C3R", "lumcc", packedToPacked(3, 3, lumiYUVToRGB_8u_C3R));
  add("YUVToRGB_8u_AC4R", "lumcc", packedToPacked(4, 4, lumiYUVToRGB_8u_AC4R));
  add("YUVToRGB_8u_P3R", "lumcc", planesToPlanes(lumiYUVToRGB_8u_P3R));
  add("YUVToRGB_8u_P3C3R", "lumcc", planesToPacked(3, lumiYUVToRGB_8u_P3C3R));
  add("YUVToRGB_8u_C3C4R", "lumcc", packedToPacked(3, 4, [](auto... a) { return lumiYUVToRGB_8u_C3C4R(a..., 255); }));
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
