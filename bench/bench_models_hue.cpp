// HLS and HSV conversions, with OpenCV's cvtColor (one thread) on the same
// work where it has it: RGB2HLS_FULL, HLS2RGB_FULL, RGB2HSV_FULL, HSV2RGB_FULL
// on 8u, and the HLS pair on 32f (OpenCV keeps 32f hue in degrees; the work is
// the same per pixel).
#include <cstring>

#include "bench_support.h"

#ifdef LUM_BENCH_OPENCV
#include <opencv2/core.hpp>
#include <opencv2/imgproc.hpp>
#endif

namespace lumbench {
namespace {

// Source and destination of ch-channel T pixels, 64-byte aligned rows; float
// samples in 0..1, integer samples random.
template <class T>
struct HueImages {
  Plane src, dst;
  HueImages(Size s, int ch) : src(s.w * ch * int(sizeof(T)), s.h, 11), dst(s.w * ch * int(sizeof(T)), s.h, 12) {
    if constexpr (std::is_floating_point_v<T>) {
      std::mt19937 rng(5);
      for (size_t i = 0; i + sizeof(T) <= src.bytes.size(); i += sizeof(T)) {
        const T v = T(rng() % 4096) / T(4095);
        std::memcpy(src.bytes.data() + i, &v, sizeof(T));
      }
    }
  }
};

template <class T, class F>
MakeWork ours(int ch, F f) {
  return [=](Size s) {
    auto im = std::make_shared<HueImages<T>>(s, ch);
    return Work([=] {
      f(reinterpret_cast<const T*>(im->src.data()), im->src.step, reinterpret_cast<T*>(im->dst.data()), im->dst.step,
        LumSize{s.w, s.h});
    });
  };
}

#ifdef LUM_BENCH_OPENCV
MakeWork peer(int type, int code) {
  return [=](Size s) {
    cv::setNumThreads(1);
    auto src = std::make_shared<cv::Mat>(s.h, s.w, type);
    cv::randu(*src, 0, CV_MAT_DEPTH(type) == CV_32F ? 1 : 256);
    auto dst = std::make_shared<cv::Mat>(s.h, s.w, type);
    return Work([=] { cv::cvtColor(*src, *dst, code); });
  };
}
#endif

const bool kRegistered = [] {
  add("RGBToHLS_8u_C3R", "lumcc", ours<Lum8u>(3, lumiRGBToHLS_8u_C3R));
  add("RGBToHLS_8u_AC4R", "lumcc", ours<Lum8u>(4, lumiRGBToHLS_8u_AC4R));
  add("RGBToHLS_16u_C3R", "lumcc", ours<Lum16u>(3, lumiRGBToHLS_16u_C3R));
  add("RGBToHLS_16s_C3R", "lumcc", ours<Lum16s>(3, lumiRGBToHLS_16s_C3R));
  add("RGBToHLS_32f_C3R", "lumcc", ours<Lum32f>(3, lumiRGBToHLS_32f_C3R));
  add("HLSToRGB_8u_C3R", "lumcc", ours<Lum8u>(3, lumiHLSToRGB_8u_C3R));
  add("HLSToRGB_8u_AC4R", "lumcc", ours<Lum8u>(4, lumiHLSToRGB_8u_AC4R));
  add("HLSToRGB_16u_C3R", "lumcc", ours<Lum16u>(3, lumiHLSToRGB_16u_C3R));
  add("HLSToRGB_32f_C3R", "lumcc", ours<Lum32f>(3, lumiHLSToRGB_32f_C3R));
  add("RGBToHSV_8u_C3R", "lumcc", ours<Lum8u>(3, lumiRGBToHSV_8u_C3R));
  add("RGBToHSV_16u_C3R", "lumcc", ours<Lum16u>(3, lumiRGBToHSV_16u_C3R));
  add("HSVToRGB_8u_C3R", "lumcc", ours<Lum8u>(3, lumiHSVToRGB_8u_C3R));
  add("HSVToRGB_16u_C3R", "lumcc", ours<Lum16u>(3, lumiHSVToRGB_16u_C3R));
  add("BGRToHLS_8u_AC4R", "lumcc", ours<Lum8u>(4, lumiBGRToHLS_8u_AC4R));
#ifdef LUM_BENCH_OPENCV
  add("RGBToHLS_8u_C3R", "opencv", peer(CV_8UC3, cv::COLOR_RGB2HLS_FULL));
  add("RGBToHLS_32f_C3R", "opencv", peer(CV_32FC3, cv::COLOR_RGB2HLS_FULL));
  add("HLSToRGB_8u_C3R", "opencv", peer(CV_8UC3, cv::COLOR_HLS2RGB_FULL));
  add("HLSToRGB_32f_C3R", "opencv", peer(CV_32FC3, cv::COLOR_HLS2RGB_FULL));
  add("RGBToHSV_8u_C3R", "opencv", peer(CV_8UC3, cv::COLOR_RGB2HSV_FULL));
  add("HSVToRGB_8u_C3R", "opencv", peer(CV_8UC3, cv::COLOR_HSV2RGB_FULL));
#endif
  return true;
}();

}  // namespace
}  // namespace lumbench
