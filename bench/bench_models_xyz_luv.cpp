// RGB <-> XYZ and RGB <-> LUV on 8u and 32f, with OpenCV's cvtColor as the peer
// (one thread, its linear-RGB Luv codes) on the same pixels.
#include <cstring>

#include "bench_support.h"

#ifdef LUM_BENCH_OPENCV
#include <opencv2/core.hpp>
#include <opencv2/imgproc.hpp>
#endif

namespace lumbench {
namespace {

// Three-channel source and destination of sample type T; floats on 0..1 (or L,
// U, V in their ranges when luv is set), bytes random.
template <class T, class F>
MakeWork c3(F f, bool luv = false) {
  return [=](Size s) {
    auto in = std::make_shared<Plane>(s.w * 3 * int(sizeof(T)), s.h, 3);
    auto out = std::make_shared<Plane>(s.w * 3 * int(sizeof(T)), s.h);
    if constexpr (sizeof(T) == 4) {
      std::mt19937 rng(7);
      for (int y = 0; y < s.h; ++y)
        for (int x = 0; x < 3 * s.w; ++x) {
          float v = float(rng() % 10000) / 10000.0f;
          if (luv) v = x % 3 == 0 ? v * 100.0f : (x % 3 == 1 ? v * 300.0f - 120.0f : v * 240.0f - 130.0f);
          std::memcpy(in->data() + size_t(y) * size_t(in->step) + 4 * size_t(x), &v, 4);
        }
    }
    return Work([=] {
      f(reinterpret_cast<const T*>(in->data()), in->step, reinterpret_cast<T*>(out->data()), out->step,
        LumSize{s.w, s.h});
    });
  };
}

#ifdef LUM_BENCH_OPENCV
MakeWork cv3(int type, int code, bool luv = false) {
  return [=](Size s) {
    cv::setNumThreads(1);
    auto src = std::make_shared<cv::Mat>(s.h, s.w, type);
    if (type == CV_32FC3 && luv) cv::randu(*src, cv::Scalar(0, -120, -130), cv::Scalar(100, 180, 110));
    else if (type == CV_32FC3) cv::randu(*src, 0.0, 1.0);
    else cv::randu(*src, 0, 255);
    auto dst = std::make_shared<cv::Mat>(s.h, s.w, type);
    return Work([=] { cv::cvtColor(*src, *dst, code); });
  };
}
#endif

const bool kRegistered = [] {
  add("RGBToXYZ_8u_C3R", "lumcc", c3<Lum8u>(lumiRGBToXYZ_8u_C3R));
  add("XYZToRGB_8u_C3R", "lumcc", c3<Lum8u>(lumiXYZToRGB_8u_C3R));
  add("RGBToXYZ_32f_C3R", "lumcc", c3<Lum32f>(lumiRGBToXYZ_32f_C3R));
  add("XYZToRGB_32f_C3R", "lumcc", c3<Lum32f>(lumiXYZToRGB_32f_C3R));
  add("RGBToLUV_8u_C3R", "lumcc", c3<Lum8u>(lumiRGBToLUV_8u_C3R));
  add("LUVToRGB_8u_C3R", "lumcc", c3<Lum8u>(lumiLUVToRGB_8u_C3R));
  add("RGBToLUV_32f_C3R", "lumcc", c3<Lum32f>(lumiRGBToLUV_32f_C3R));
  add("LUVToRGB_32f_C3R", "lumcc", c3<Lum32f>(lumiLUVToRGB_32f_C3R, true));
  add("RGBToXYZ_16u_C3R", "lumcc", c3<Lum16u>(lumiRGBToXYZ_16u_C3R));
  add("RGBToLUV_16u_C3R", "lumcc", c3<Lum16u>(lumiRGBToLUV_16u_C3R));
#ifdef LUM_BENCH_OPENCV
  add("RGBToXYZ_8u_C3R", "opencv", cv3(CV_8UC3, cv::COLOR_RGB2XYZ));
  add("XYZToRGB_8u_C3R", "opencv", cv3(CV_8UC3, cv::COLOR_XYZ2RGB));
  add("RGBToXYZ_32f_C3R", "opencv", cv3(CV_32FC3, cv::COLOR_RGB2XYZ));
  add("XYZToRGB_32f_C3R", "opencv", cv3(CV_32FC3, cv::COLOR_XYZ2RGB));
  add("RGBToLUV_8u_C3R", "opencv", cv3(CV_8UC3, cv::COLOR_LRGB2Luv));
  add("LUVToRGB_8u_C3R", "opencv", cv3(CV_8UC3, cv::COLOR_Luv2LRGB));
  add("RGBToLUV_32f_C3R", "opencv", cv3(CV_32FC3, cv::COLOR_LRGB2Luv));
  add("LUVToRGB_32f_C3R", "opencv", cv3(CV_32FC3, cv::COLOR_Luv2LRGB, true));
#endif
  return true;
}();

}  // namespace
}  // namespace lumbench
