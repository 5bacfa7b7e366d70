// Gamma correction, with OpenCV (one thread) as the peer doing the same work:
// 8u by cv::LUT with a 256-entry table, 32f by cv::pow followed by the scaling
// 1.099 p - 0.099.
#include <cstring>

#include "bench_support.h"

#ifdef LUM_BENCH_OPENCV
#include <opencv2/core.hpp>
#endif

namespace lumbench {
namespace {

template <class T>
T* at(Plane& p) {
  return reinterpret_cast<T*>(p.data());
}

// A copying packed form of ch channels.
template <class T, class F>
MakeWork packedWork(int ch, F f) {
  return [=](Size s) {
    auto src = typedPlane<T>(s.w * ch, s.h, 1);
    auto dst = typedPlane<T>(s.w * ch, s.h, 2);
    return Work([=] { f(at<T>(*src), src->step, at<T>(*dst), dst->step, LumSize{s.w, s.h}); });
  };
}

// A copying planar form.
template <class T, class F>
MakeWork planarWork(F f) {
  return [=](Size s) {
    std::vector<std::shared_ptr<Plane>> planes;
    for (uint32_t k = 0; k < 6; ++k) planes.push_back(typedPlane<T>(s.w, s.h, k + 1));
    return Work([=] {
      const T* src[3] = {at<T>(*planes[0]), at<T>(*planes[1]), at<T>(*planes[2])};
      T* dst[3] = {at<T>(*planes[3]), at<T>(*planes[4]), at<T>(*planes[5])};
      f(src, planes[0]->step, dst, planes[3]->step, LumSize{s.w, s.h});
    });
  };
}

template <class F>
auto unitRange(F f) {
  return [f](auto... a) { return f(a..., 0.0f, 1.0f); };
}

#ifdef LUM_BENCH_OPENCV
MakeWork cvLut() {
  return [](Size s) {
    cv::setNumThreads(1);
    auto src = std::make_shared<cv::Mat>(s.h, s.w, CV_8UC3);
    cv::randu(*src, 0, 255);
    auto dst = std::make_shared<cv::Mat>(s.h, s.w, CV_8UC3);
    auto lut = std::make_shared<cv::Mat>(1, 256, CV_8UC1);
    for (int i = 0; i < 256; ++i) lut->at<uint8_t>(i) = uint8_t(255 - i);
    return Work([=] { cv::LUT(*src, *lut, *dst); });
  };
}
MakeWork cvPowScale() {
  return [](Size s) {
    cv::setNumThreads(1);
    auto src = std::make_shared<cv::Mat>(s.h, s.w, CV_32FC3);
    cv::randu(*src, 0.0f, 1.0f);
    auto dst = std::make_shared<cv::Mat>(s.h, s.w, CV_32FC3);
    return Work([=] {
      cv::pow(*src, 0.45, *dst);
      dst->convertTo(*dst, -1, 1.099, -0.099);
    });
  };
}
#endif

const bool kRegistered = [] {
  add("GammaFwd_8u_C3R", "lumcc", packedWork<Lum8u>(3, lumiGammaFwd_8u_C3R));
  add("GammaInv_8u_C3R", "lumcc", packedWork<Lum8u>(3, lumiGammaInv_8u_C3R));
  add("GammaFwd_8u_AC4R", "lumcc", packedWork<Lum8u>(4, lumiGammaFwd_8u_AC4R));
  add("GammaFwd_8u_P3R", "lumcc", planarWork<Lum8u>(lumiGammaFwd_8u_P3R));
  add("GammaFwd_16u_C3R", "lumcc", packedWork<Lum16u>(3, lumiGammaFwd_16u_C3R));
  add("GammaFwd_32f_C3R", "lumcc", packedWork<Lum32f>(3, unitRange(lumiGammaFwd_32f_C3R)));
  add("GammaInv_32f_C3R", "lumcc", packedWork<Lum32f>(3, unitRange(lumiGammaInv_32f_C3R)));
  add("GammaFwd_32f_AC4R", "lumcc", packedWork<Lum32f>(4, unitRange(lumiGammaFwd_32f_AC4R)));
  add("GammaFwd_32f_P3R", "lumcc", planarWork<Lum32f>(unitRange(lumiGammaFwd_32f_P3R)));
#ifdef LUM_BENCH_OPENCV
  add("GammaFwd_8u_C3R", "opencv", cvLut());
  add("GammaFwd_32f_C3R", "opencv", cvPowScale());
#endif
  return true;
}();

}  // namespace
}  // namespace lumbench
