// RGB <-> Lab and RGB <-> Photo YCC, with OpenCV's cvtColor (one thread) as the
// peer of RGB <-> Lab in 8u and 32f.
#include <cstring>

#include "bench_support.h"

#ifdef LUM_BENCH_OPENCV
#include <opencv2/core.hpp>
#include <opencv2/imgproc.hpp>
#endif

namespace lumbench {
namespace {

// Float samples: RGB in 0..1 or Lab in its ranges (L 0..100, a and b -100..100).
void fillFloats(Plane& p, int w, int h, int channels, bool lab) {
  std::mt19937 rng(7);
  for (int y = 0; y < h; ++y) {
    float* row = reinterpret_cast<float*>(p.data() + std::ptrdiff_t(y) * p.step);
    for (int i = 0; i < w * channels; ++i) {
      const int k = i % channels;
      row[i] = !lab ? std::uniform_real_distribution<float>(0, 1)(rng)
                    : (k == 0 ? std::uniform_real_distribution<float>(0, 100)(rng)
                              : std::uniform_real_distribution<float>(-100, 100)(rng));
    }
  }
}

// Packed images of the given sample type and channel counts.
template <class S, class D, class F>
MakeWork packed(int sch, int dch, bool floatLab, F f) {
  return [=](Size s) {
    auto src = std::make_shared<Plane>(s.w * sch * int(sizeof(S)), s.h);
    auto dst = std::make_shared<Plane>(s.w * dch * int(sizeof(D)), s.h);
    if constexpr (std::is_same_v<S, float>) fillFloats(*src, s.w, s.h, sch, floatLab);
    return Work([=] {
      f(reinterpret_cast<const S*>(src->data()), src->step, reinterpret_cast<D*>(dst->data()), dst->step,
        LumSize{s.w, s.h});
    });
  };
}

// Three planes of T to three planes.
template <class T, class F>
MakeWork planes(bool lab, F f) {
  return [=](Size s) {
    auto in = std::make_shared<std::vector<Plane>>();
    auto out = std::make_shared<std::vector<Plane>>();
    for (int i = 0; i < 3; ++i) {
      in->emplace_back(s.w * int(sizeof(T)), s.h);
      out->emplace_back(s.w * int(sizeof(T)), s.h);
      std::mt19937 rng{uint32_t(i)};
      for (int y = 0; y < s.h; ++y) {
        T* row = reinterpret_cast<T*>((*in)[size_t(i)].data() + std::ptrdiff_t(y) * (*in)[size_t(i)].step);
        for (int x = 0; x < s.w; ++x)
          row[x] = T(lab ? std::uniform_real_distribution<double>(i ? -100 : 0, 100)(rng)
                         : std::uniform_real_distribution<double>(0, 1)(rng));
      }
    }
    return Work([=] {
      const T* p[3] = {reinterpret_cast<const T*>((*in)[0].data()), reinterpret_cast<const T*>((*in)[1].data()),
                       reinterpret_cast<const T*>((*in)[2].data())};
      T* q[3] = {reinterpret_cast<T*>((*out)[0].data()), reinterpret_cast<T*>((*out)[1].data()),
                 reinterpret_cast<T*>((*out)[2].data())};
      const int st[3] = {(*in)[0].step, (*in)[1].step, (*in)[2].step};
      const int dt[3] = {(*out)[0].step, (*out)[1].step, (*out)[2].step};
      f(p, st, q, dt, LumSize{s.w, s.h});
    });
  };
}

#ifdef LUM_BENCH_OPENCV
MakeWork cvConvert(int srcType, int dstType, int code, bool floatLab) {
  return [=](Size s) {
    cv::setNumThreads(1);
    auto src = std::make_shared<cv::Mat>(s.h, s.w, srcType);
    if (srcType == CV_32FC3 && floatLab) cv::randu(*src, cv::Scalar(0, -100, -100), cv::Scalar(100, 100, 100));
    else if (srcType == CV_32FC3) cv::randu(*src, 0, 1);
    else cv::randu(*src, 0, 255);
    auto dst = std::make_shared<cv::Mat>(s.h, s.w, dstType);
    return Work([=] { cv::cvtColor(*src, *dst, code); });
  };
}
#endif

const bool kRegistered = [] {
  add("RGBToLab_8u_C3R", "lumcc", packed<Lum8u, Lum8u>(3, 3, false, lumiRGBToLab_8u_C3R));
  add("BGRToLab_8u16u_C3R", "lumcc", packed<Lum8u, Lum16u>(3, 3, false, lumiBGRToLab_8u16u_C3R));
  add("LabToRGB_8u_C3R", "lumcc", packed<Lum8u, Lum8u>(3, 3, false, lumiLabToRGB_8u_C3R));
  add("LabToBGR_16u8u_C3R", "lumcc", packed<Lum16u, Lum8u>(3, 3, false, lumiLabToBGR_16u8u_C3R));
  add("RGBToLab_32f_C3R", "lumcc", packed<Lum32f, Lum32f>(3, 3, false, lumiRGBToLab_32f_C3R));
  add("LabToRGB_32f_C3R", "lumcc", packed<Lum32f, Lum32f>(3, 3, true, lumiLabToRGB_32f_C3R));
  add("RGBToLab_32f_P3R", "lumcc", planes<Lum32f>(false, lumiRGBToLab_32f_P3R));
  add("LabToRGB_32f_P3R", "lumcc", planes<Lum32f>(true, lumiLabToRGB_32f_P3R));
  add("RGBToLab_64f_P3R", "lumcc", planes<Lum64f>(false, lumiRGBToLab_64f_P3R));
  add("LabToRGB_64f_P3R", "lumcc", planes<Lum64f>(true, lumiLabToRGB_64f_P3R));
  add("RGBToYCC_8u_C3R", "lumcc", packed<Lum8u, Lum8u>(3, 3, false, lumiRGBToYCC_8u_C3R));
  add("YCCToRGB_8u_C3R", "lumcc", packed<Lum8u, Lum8u>(3, 3, false, lumiYCCToRGB_8u_C3R));
  add("RGBToYCC_16u_AC4R", "lumcc", packed<Lum16u, Lum16u>(4, 4, false, lumiRGBToYCC_16u_AC4R));
  add("YCCToRGB_16u_C3R", "lumcc", packed<Lum16u, Lum16u>(3, 3, false, lumiYCCToRGB_16u_C3R));
  add("RGBToYCC_32f_C3R", "lumcc", packed<Lum32f, Lum32f>(3, 3, false, lumiRGBToYCC_32f_C3R));
  add("YCCToRGB_32f_C3R", "lumcc", packed<Lum32f, Lum32f>(3, 3, false, lumiYCCToRGB_32f_C3R));
#ifdef LUM_BENCH_OPENCV
  add("RGBToLab_8u_C3R", "opencv", cvConvert(CV_8UC3, CV_8UC3, cv::COLOR_RGB2Lab, false));
  add("LabToRGB_8u_C3R", "opencv", cvConvert(CV_8UC3, CV_8UC3, cv::COLOR_Lab2RGB, false));
  add("RGBToLab_32f_C3R", "opencv", cvConvert(CV_32FC3, CV_32FC3, cv::COLOR_RGB2Lab, false));
  add("LabToRGB_32f_C3R", "opencv", cvConvert(CV_32FC3, CV_32FC3, cv::COLOR_Lab2RGB, true));
#endif
  return true;
}();

}  // namespace
}  // namespace lumbench
