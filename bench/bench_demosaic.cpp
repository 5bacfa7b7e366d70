// Demosaicing: bilinear, VNG and AHD on whole images, with OpenCV's bilinear and
// VNG Bayer conversions as peers (one thread).
#include "bench_support.h"

#ifdef LUM_BENCH_OPENCV
#include <opencv2/core.hpp>
#include <opencv2/imgproc.hpp>
#endif

namespace lumbench {
namespace {

// A mosaic of samples T and a destination of ch samples a pixel; f gets
// (src, srcStep, dst, dstStep, rect, size) and any scratch it made itself.
template <class T, class F>
MakeWork mosaicTo(int ch, F f) {
  return [=](Size s) {
    auto src = std::make_shared<Plane>(s.w * int(sizeof(T)), s.h);
    auto dst = std::make_shared<Plane>(s.w * ch * int(sizeof(T)), s.h);
    return Work([=] {
      f(reinterpret_cast<const T*>(src->data()), src->step, reinterpret_cast<T*>(dst->data()), dst->step,
        LumRect{0, 0, s.w, s.h}, LumSize{s.w, s.h});
    });
  };
}

// AHD with its scratch of 30 rows.
template <class T, class F>
MakeWork ahdWork(F f) {
  return [=](Size s) {
    auto src = std::make_shared<Plane>(s.w * int(sizeof(T)), s.h);
    auto dst = std::make_shared<Plane>(s.w * 3 * int(sizeof(T)), s.h);
    auto tmp = std::make_shared<Plane>((s.w + 6) * int(sizeof(T) + 1), 30);
    return Work([=] {
      f(reinterpret_cast<const T*>(src->data()), LumRect{0, 0, s.w, s.h}, LumSize{s.w, s.h}, src->step,
        reinterpret_cast<T*>(dst->data()), dst->step, lumCfaBGGR, tmp->data(), tmp->step);
    });
  };
}

#ifdef LUM_BENCH_OPENCV
MakeWork cvBayer(int srcType, int dstType, int code) {
  return [=](Size s) {
    cv::setNumThreads(1);
    auto src = std::make_shared<cv::Mat>(s.h, s.w, srcType);
    cv::randu(*src, 0, srcType == CV_8UC1 ? 255 : 65535);
    auto dst = std::make_shared<cv::Mat>(s.h, s.w, dstType);
    return Work([=] { cv::cvtColor(*src, *dst, code); });
  };
}
#endif

const bool kRegistered = [] {
  add("CFAToRGB_8u_C1C3R", "lumcc", mosaicTo<Lum8u>(3, [](auto s, int ss, auto d, int ds, LumRect r, LumSize z) {
        lumiCFAToRGB_8u_C1C3R(s, r, z, ss, d, ds, lumCfaBGGR);
      }));
  add("CFAToRGB_16u_C1C3R", "lumcc", mosaicTo<Lum16u>(3, [](auto s, int ss, auto d, int ds, LumRect r, LumSize z) {
        lumiCFAToRGB_16u_C1C3R(s, r, z, ss, d, ds, lumCfaBGGR);
      }));
  add("CFAToBGRA_VNG_8u_C1C4R", "lumcc", mosaicTo<Lum8u>(4, [](auto s, int ss, auto d, int ds, LumRect r, LumSize z) {
        lumiCFAToBGRA_VNG_8u_C1C4R(s, r, z, ss, nullptr, d, ds, lumCfaBGGR);
      }));
  add("CFAToBGRA_VNG_8u_C1C4R_L", "lumcc",
      mosaicTo<Lum8u>(4, [](auto s, int ss, auto d, int ds, LumRect r, LumSize z) {
        lumiCFAToBGRA_VNG_8u_C1C4R_L(s, {r.x, r.y, r.width, r.height}, {z.width, z.height}, ss, nullptr, d, ds,
                                     lumCfaBGGR);
      }));
  add("CFAToBGRA_VNG_16u_C1C4R", "lumcc",
      mosaicTo<Lum16u>(4, [](auto s, int ss, auto d, int ds, LumRect r, LumSize z) {
        lumiCFAToBGRA_VNG_16u_C1C4R(s, r, z, ss, nullptr, d, ds, lumCfaBGGR);
      }));
  add("CFAToBGRA_VNG_16u_C1C4R_L", "lumcc",
      mosaicTo<Lum16u>(4, [](auto s, int ss, auto d, int ds, LumRect r, LumSize z) {
        lumiCFAToBGRA_VNG_16u_C1C4R_L(s, {r.x, r.y, r.width, r.height}, {z.width, z.height}, ss, nullptr, d, ds,
                                      lumCfaBGGR);
      }));
  add("DemosaicAHD_8u_C1C3R", "lumcc", ahdWork<Lum8u>(lumiDemosaicAHD_8u_C1C3R));
  add("DemosaicAHD_16u_C1C3R", "lumcc", ahdWork<Lum16u>(lumiDemosaicAHD_16u_C1C3R));
#ifdef LUM_BENCH_OPENCV
  add("CFAToRGB_8u_C1C3R", "opencv", cvBayer(CV_8UC1, CV_8UC3, cv::COLOR_BayerBG2RGB));
  add("CFAToRGB_16u_C1C3R", "opencv", cvBayer(CV_16UC1, CV_16UC3, cv::COLOR_BayerBG2RGB));
  add("CFAToBGRA_VNG_8u_C1C4R", "opencv", cvBayer(CV_8UC1, CV_8UC3, cv::COLOR_BayerBG2BGR_VNG));
#endif
  return true;
}();

}  // namespace
}  // namespace lumbench
