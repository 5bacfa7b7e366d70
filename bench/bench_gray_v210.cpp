// Gray and v210 conversions, with libyuv's J400 and YUY2ToY functions and
// OpenCV's cvtColor (one thread) as peers doing the same work. libyuv has no
// v210 decoder, so the v210 rows run alone.
#include <cstring>

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

// First 64-byte aligned byte of a plane (its buffer has 64 spare bytes), as
// OpenCV's matrices are aligned.
inline uint8_t* aligned64(Plane& p) {
  return reinterpret_cast<uint8_t*>((reinterpret_cast<uintptr_t>(p.data()) + 63) & ~uintptr_t(63));
}

// One image of sc-channel T samples to one of dc-channel T samples.
template <class T, class F>
MakeWork typed(int sc, int dc, F f) {
  return [=](Size s) {
    auto src = typedPlane<T>(s.w * sc, s.h, 1);
    auto dst = typedPlane<T>(s.w * dc, s.h, 2);
    return Work([=] {
      f(reinterpret_cast<const T*>(aligned64(*src)), src->step, reinterpret_cast<T*>(aligned64(*dst)), dst->step,
        LumSize{s.w, s.h});
    });
  };
}

// v210 rows (words per row padded to 64 bytes) to 16-bit words; steps in elements.
template <class F>
MakeWork v210(F f) {
  return [=](Size s) {
    const int words = 4 * ((s.w + 5) / 6);
    auto src = std::make_shared<Plane>(words * 4, s.h, 3);
    auto dst = std::make_shared<Plane>(s.w * 2, s.h, 4);
    return Work([=] {
      f(reinterpret_cast<const Lum32u*>(aligned64(*src)), src->step / 4, reinterpret_cast<Lum16u*>(aligned64(*dst)),
        dst->step / 2, LumSize{s.w, s.h});
    });
  };
}

#ifdef LUM_BENCH_OPENCV
MakeWork cvConvert(int srcType, int dstType, int code) {
  return [=](Size s) {
    cv::setNumThreads(1);
    auto src = std::make_shared<cv::Mat>(s.h, s.w, srcType);
    cv::randu(*src, 0, CV_MAT_DEPTH(srcType) == CV_32F ? 1 : 255);
    auto dst = std::make_shared<cv::Mat>(s.h, s.w, dstType);
    return Work([=] { cv::cvtColor(*src, *dst, code); });
  };
}
#endif

#ifdef LUM_BENCH_LIBYUV
template <class F>
MakeWork yuvPlanes(int sbpp, int dbpp, F f) {
  return [=](Size s) {
    auto src = std::make_shared<Plane>(s.w * sbpp, s.h, 5);
    auto dst = std::make_shared<Plane>(s.w * dbpp, s.h, 6);
    return Work([=] { f(aligned64(*src), src->step, aligned64(*dst), dst->step, s.w, s.h); });
  };
}
#endif

const Lum32f kWeights[3] = {0.25f, 0.5f, 0.25f};
const Lum64f kWeights64[3] = {0.299, 0.587, 0.114};

const bool kRegistered = [] {
  add("RGBToGray_8u_C3C1R", "lumcc", typed<Lum8u>(3, 1, lumiRGBToGray_8u_C3C1R));
  add("RGBToGray_8u_AC4C1R", "lumcc", typed<Lum8u>(4, 1, lumiRGBToGray_8u_AC4C1R));
  add("ColorToGray_8u_C3C1R", "lumcc",
      typed<Lum8u>(3, 1, [](auto... a) { return lumiColorToGray_8u_C3C1R(a..., kWeights); }));
  add("RGBToGray_16u_C3C1R", "lumcc", typed<Lum16u>(3, 1, lumiRGBToGray_16u_C3C1R));
  add("RGBToGray_16s_AC4C1R", "lumcc", typed<Lum16s>(4, 1, lumiRGBToGray_16s_AC4C1R));
  add("RGBToGray_32f_C3C1R", "lumcc", typed<Lum32f>(3, 1, lumiRGBToGray_32f_C3C1R));
  add("RGBToGray_32f_AC4C1R", "lumcc", typed<Lum32f>(4, 1, lumiRGBToGray_32f_AC4C1R));
  add("ColorToGray_64f_C3C1R", "lumcc",
      typed<Lum64f>(3, 1, [](auto... a) { return lumiColorToGray_64f_C3C1R(a..., kWeights64); }));
  add("GrayToRGB_8u_C1C3R", "lumcc", typed<Lum8u>(1, 3, lumiGrayToRGB_8u_C1C3R));
  add("GrayToRGB_8u_C1C4R", "lumcc", typed<Lum8u>(1, 4, [](auto... a) { return lumiGrayToRGB_8u_C1C4R(a..., 255); }));
  add("GrayToRGB_16u_C1C3R", "lumcc", typed<Lum16u>(1, 3, lumiGrayToRGB_16u_C1C3R));
  add("GrayToRGB_32f_C1C4R", "lumcc",
      typed<Lum32f>(1, 4, [](auto... a) { return lumiGrayToRGB_32f_C1C4R(a..., 1.0f); }));
  add("YCbCr422ToGray_8u_C2C1R", "lumcc", typed<Lum8u>(2, 1, lumiYCbCr422ToGray_8u_C2C1R));
  add("YUV422v210ToRGB_709HDTV", "lumcc", v210(lumiYUV422v210ToRGB_709HDTV_32u16u_C3));
  add("YUV422v210ToBGR_709HDTV", "lumcc", v210(lumiYUV422v210ToBGR_709HDTV_32u16u_C3));
  add("YUV422v210ToGray_709HDTV", "lumcc", v210(lumiYUV422v210ToGray_709HDTV_32u16u_C3C1));
#ifdef LUM_BENCH_OPENCV
  add("RGBToGray_8u_C3C1R", "opencv", cvConvert(CV_8UC3, CV_8UC1, cv::COLOR_RGB2GRAY));
  add("RGBToGray_8u_AC4C1R", "opencv", cvConvert(CV_8UC4, CV_8UC1, cv::COLOR_RGBA2GRAY));
  add("RGBToGray_16u_C3C1R", "opencv", cvConvert(CV_16UC3, CV_16UC1, cv::COLOR_RGB2GRAY));
  add("RGBToGray_32f_C3C1R", "opencv", cvConvert(CV_32FC3, CV_32FC1, cv::COLOR_RGB2GRAY));
  add("RGBToGray_32f_AC4C1R", "opencv", cvConvert(CV_32FC4, CV_32FC1, cv::COLOR_RGBA2GRAY));
  add("GrayToRGB_8u_C1C3R", "opencv", cvConvert(CV_8UC1, CV_8UC3, cv::COLOR_GRAY2RGB));
  add("GrayToRGB_8u_C1C4R", "opencv", cvConvert(CV_8UC1, CV_8UC4, cv::COLOR_GRAY2RGBA));
  add("GrayToRGB_16u_C1C3R", "opencv", cvConvert(CV_16UC1, CV_16UC3, cv::COLOR_GRAY2RGB));
  add("GrayToRGB_32f_C1C4R", "opencv", cvConvert(CV_32FC1, CV_32FC4, cv::COLOR_GRAY2RGBA));
#endif
#ifdef LUM_BENCH_LIBYUV
  add("RGBToGray_8u_C3C1R", "libyuv", yuvPlanes(3, 1, libyuv::RAWToJ400));
  add("RGBToGray_8u_AC4C1R", "libyuv", yuvPlanes(4, 1, libyuv::ARGBToJ400));
  add("GrayToRGB_8u_C1C4R", "libyuv", yuvPlanes(1, 4, libyuv::J400ToARGB));
  add("YCbCr422ToGray_8u_C2C1R", "libyuv", yuvPlanes(2, 1, libyuv::YUY2ToY));
#endif
  return true;
}();

}  // namespace
}  // namespace lumbench
