// Colour twist, tone mapping and 12-bit pack and unpack. Peers: OpenCV's
// cv::transform on 32f and 8u three-channel images for the twist, and memcpy of
// the 16-bit plane's bytes for pack and unpack.
#include <cstring>

#include "bench_support.h"
#include "frame/simd.h"

#ifdef LUM_BENCH_OPENCV
#include <opencv2/core.hpp>
#endif

namespace lumbench {
namespace {

const Lum32f kT[3][4] = {{0.9f, 0.1f, 0.05f, 3.0f}, {-0.2f, 1.1f, 0.1f, -4.0f}, {0.05f, 0.2f, 0.8f, 7.5f}};
const Lum32f kT4[4][4] = {{0.9f, 0.1f, 0.05f, 0.1f}, {-0.2f, 1.1f, 0.1f, 0.0f}, {0.05f, 0.2f, 0.8f, 0.0f},
                          {0.0f, 0.0f, 0.0f, 1.0f}};

// A plane of floats in 0..255, or of 12-bit samples.
Plane floatPlane(int w, int h, uint32_t seed) {
  Plane p(w * 4, h, seed);
  for (size_t i = 0; i + 4 <= p.bytes.size(); i += 4) {
    const float v = float(p.bytes[i] ^ p.bytes[i + 1]);
    std::memcpy(&p.bytes[i], &v, 4);
  }
  return p;
}

// Packed images of `spp` samples a pixel, sample bytes `sb`: f(src, srcStep, dst, dstStep, roi).
template <class F>
MakeWork packed(int spp, int sb, bool floats, F f) {
  return [=](Size s) {
    auto src = std::make_shared<Plane>(floats ? floatPlane(s.w * spp, s.h, 1) : Plane(s.w * spp * sb, s.h));
    auto dst = std::make_shared<Plane>(s.w * spp * sb, s.h);
    return Work([=] { f(src->data(), src->step, dst->data(), dst->step, LumSize{s.w, s.h}); });
  };
}
// One image converted in place.
template <class F>
MakeWork inPlace(int spp, int sb, bool floats, F f) {
  return [=](Size s) {
    auto img = std::make_shared<Plane>(floats ? floatPlane(s.w * spp, s.h, 1) : Plane(s.w * spp * sb, s.h));
    return Work([=] { f(img->data(), img->step, LumSize{s.w, s.h}); });
  };
}
// Three planes to three planes (in place when `same`).
template <class F>
MakeWork planes(int sb, bool floats, F f) {
  return [=](Size s) {
    auto in = std::make_shared<std::vector<Plane>>();
    auto out = std::make_shared<std::vector<Plane>>();
    for (int i = 0; i < 3; ++i) {
      in->push_back(floats ? floatPlane(s.w, s.h, uint32_t(i)) : Plane(s.w * sb, s.h, uint32_t(i)));
      out->emplace_back(s.w * sb, s.h);
    }
    return Work([=] {
      uint8_t* p[3] = {(*in)[0].data(), (*in)[1].data(), (*in)[2].data()};
      uint8_t* q[3] = {(*out)[0].data(), (*out)[1].data(), (*out)[2].data()};
      f(p, (*in)[0].step, q, (*out)[0].step, LumSize{s.w, s.h});
    });
  };
}

// The public calls with their sample types.
template <class T, class Fn>
auto twistC(Fn fn) {
  return [fn](uint8_t* s, int ss, uint8_t* d, int ds, LumSize r) {
    fn(reinterpret_cast<const T*>(s), ss, reinterpret_cast<T*>(d), ds, r, kT);
  };
}
template <class T, class Fn>
auto twistI(Fn fn) {
  return [fn](uint8_t* p, int st, LumSize r) { fn(reinterpret_cast<T*>(p), st, r, kT); };
}
template <class T, class Fn>
auto twistP(Fn fn) {
  return [fn](uint8_t** s, int ss, uint8_t** d, int ds, LumSize r) {
    const T* sp[3] = {reinterpret_cast<T*>(s[0]), reinterpret_cast<T*>(s[1]), reinterpret_cast<T*>(s[2])};
    T* dp[3] = {reinterpret_cast<T*>(d[0]), reinterpret_cast<T*>(d[1]), reinterpret_cast<T*>(d[2])};
    fn(sp, ss, dp, ds, r, kT);
  };
}
template <class T, class Fn>
auto twistIP(Fn fn) {
  return [fn](uint8_t** s, int ss, uint8_t**, int, LumSize r) {
    T* sp[3] = {reinterpret_cast<T*>(s[0]), reinterpret_cast<T*>(s[1]), reinterpret_cast<T*>(s[2])};
    fn(sp, ss, r, kT);
  };
}

// Registers one type's seven or six forms.
template <class T>
void typeForms(const std::string& tag, bool floats, auto c3, auto c3i, auto ac4, auto ac4i, auto p3, auto ip3) {
  const int sb = int(sizeof(T));
  add("ColorTwist" + tag + "_C3R", "lumcc", packed(3, sb, floats, twistC<T>(c3)));
  add("ColorTwist" + tag + "_C3IR", "lumcc", inPlace(3, sb, floats, twistI<T>(c3i)));
  add("ColorTwist" + tag + "_AC4R", "lumcc", packed(4, sb, floats, twistC<T>(ac4)));
  add("ColorTwist" + tag + "_AC4IR", "lumcc", inPlace(4, sb, floats, twistI<T>(ac4i)));
  add("ColorTwist" + tag + "_P3R", "lumcc", planes(sb, floats, twistP<T>(p3)));
  add("ColorTwist" + tag + "_IP3R", "lumcc", planes(sb, floats, twistIP<T>(ip3)));
}

#ifdef LUM_BENCH_OPENCV
MakeWork cvTransform(int type) {
  return [=](Size s) {
    cv::setNumThreads(1);
    auto src = std::make_shared<cv::Mat>(s.h, s.w, type);
    cv::randu(*src, 0, 255);
    auto dst = std::make_shared<cv::Mat>(s.h, s.w, type);
    auto m = std::make_shared<cv::Mat>(3, 4, CV_32F, const_cast<float*>(&kT[0][0]));
    return Work([=] { cv::transform(*src, *dst, *m); });
  };
}
#endif

const bool kRegistered = [] {
  typeForms<Lum32f>("_32f", true, lumiColorTwist_32f_C3R, lumiColorTwist_32f_C3IR, lumiColorTwist_32f_AC4R,
                    lumiColorTwist_32f_AC4IR, lumiColorTwist_32f_P3R, lumiColorTwist_32f_IP3R);
  typeForms<Lum8u>("32f_8u", false, lumiColorTwist32f_8u_C3R, lumiColorTwist32f_8u_C3IR, lumiColorTwist32f_8u_AC4R,
                   lumiColorTwist32f_8u_AC4IR, lumiColorTwist32f_8u_P3R, lumiColorTwist32f_8u_IP3R);
  typeForms<Lum16u>("32f_16u", false, lumiColorTwist32f_16u_C3R, lumiColorTwist32f_16u_C3IR,
                    lumiColorTwist32f_16u_AC4R, lumiColorTwist32f_16u_AC4IR, lumiColorTwist32f_16u_P3R,
                    lumiColorTwist32f_16u_IP3R);
  typeForms<Lum16s>("32f_16s", false, lumiColorTwist32f_16s_C3R, lumiColorTwist32f_16s_C3IR,
                    lumiColorTwist32f_16s_AC4R, lumiColorTwist32f_16s_AC4IR, lumiColorTwist32f_16s_P3R,
                    lumiColorTwist32f_16s_IP3R);
  add("ColorTwist_32f_C4R", "lumcc", packed(4, 4, true, [](uint8_t* s, int ss, uint8_t* d, int ds, LumSize r) {
        lumiColorTwist_32f_C4R(reinterpret_cast<const Lum32f*>(s), ss, reinterpret_cast<Lum32f*>(d), ds, r, kT4);
      }));
  add("ToneMapLinear_32f8u_C1R", "lumcc", packed(1, 4, true, [](uint8_t* s, int ss, uint8_t* d, int ds, LumSize r) {
        lumiToneMapLinear_32f8u_C1R(reinterpret_cast<const Lum32f*>(s), ss, d, ds, r);
      }));
  add("ToneMapMean_32f8u_C1R", "lumcc", packed(1, 4, true, [](uint8_t* s, int ss, uint8_t* d, int ds, LumSize r) {
        lumiToneMapMean_32f8u_C1R(reinterpret_cast<const Lum32f*>(s), ss, d, ds, r);
      }));
  add("Pack_16u12u_C1R", "lumcc", packed(1, 2, false, [](uint8_t* s, int ss, uint8_t* d, int ds, LumSize r) {
        lumiPack_16u12u_C1R(reinterpret_cast<const Lum16u*>(s), ss, d, ds, r);
      }));
  add("Unpack_12u16u_C1R", "lumcc", packed(1, 2, false, [](uint8_t* s, int ss, uint8_t* d, int ds, LumSize r) {
        lumiUnpack_12u16u_C1R(s, ss, reinterpret_cast<Lum16u*>(d), ds, r);
      }));
  // The copy of the 16-bit plane's bytes, the yardstick of both.
  const MakeWork copy = packed(1, 2, false, [](uint8_t* s, int ss, uint8_t* d, int, LumSize r) {
    std::memcpy(d, s, size_t(ss) * size_t(r.height));
  });
  add("Pack_16u12u_C1R", "memcpy", copy);
  add("Unpack_12u16u_C1R", "memcpy", copy);
#ifdef LUM_BENCH_OPENCV
  add("ColorTwist_32f_C3R", "opencv", cvTransform(CV_32FC3));
  add("ColorTwist32f_8u_C3R", "opencv", cvTransform(CV_8UC3));
#endif
  return true;
}();

}  // namespace
}  // namespace lumbench
