// Chroma layout changes: every function of the family at both sizes, beside
// libyuv where it offers the same (or the nearest) layout change, and beside a
// plain memcpy of the destination's bytes, the floor that any layout change pays.
#include <cstring>
#include <tuple>

#include "bench_support.h"

#ifdef LUM_BENCH_LIBYUV
#include <libyuv.h>
#endif

namespace lumbench {
namespace {

// How an image is stored: packed 4:2:2, three planes, or luma and chroma pairs,
// with one chroma sample per cw x ch luma pixels.
enum class Kind { C2, P3, P2 };
struct Shape {
  Kind kind;
  int cw = 2, ch = 1;
};
constexpr Shape C2{Kind::C2, 2, 1};
constexpr Shape P422{Kind::P3, 2, 1}, P420{Kind::P3, 2, 2}, P411{Kind::P3, 4, 1}, P1620{Kind::P3, 4, 4};
constexpr Shape NV12{Kind::P2, 2, 2}, NV11{Kind::P2, 4, 1};

// The planes of one image and the pointer and step arrays a call takes.
struct Img {
  std::vector<Plane> planes;
  Lum8u* p[3] = {};
  const Lum8u* cp[3] = {};
  int steps[3] = {};
  size_t bytes = 0;  // dense size of the image
  Img(Shape s, Size z, uint32_t seed) {
    if (s.kind == Kind::C2) {
      planes.emplace_back(2 * z.w, z.h, seed);
    } else {
      planes.emplace_back(z.w, z.h, seed);
      const int cw = z.w / s.cw * (s.kind == Kind::P2 ? 2 : 1), chh = z.h / s.ch;
      planes.emplace_back(cw, chh, seed + 1);
      if (s.kind == Kind::P3) planes.emplace_back(cw, chh, seed + 2);
    }
    for (size_t i = 0; i < planes.size(); ++i) {
      p[i] = planes[i].data();
      cp[i] = p[i];
      steps[i] = planes[i].step;
    }
    bytes = s.kind == Kind::C2 ? size_t(2 * z.w) * size_t(z.h)
                               : size_t(z.w) * size_t(z.h) +
                                     size_t(2) * size_t(z.w / s.cw) * size_t(z.h / s.ch);
  }
};

template <Kind K>
auto srcArgs(const Img& m) {
  if constexpr (K == Kind::C2) return std::make_tuple(m.cp[0], m.steps[0]);
  else if constexpr (K == Kind::P3) return std::make_tuple(&m.cp[0], &m.steps[0]);
  else return std::make_tuple(m.cp[0], m.steps[0], m.cp[1], m.steps[1]);
}
template <Kind K>
auto dstArgs(Img& m) {
  if constexpr (K == Kind::C2) return std::make_tuple(m.p[0], m.steps[0]);
  else if constexpr (K == Kind::P3) return std::make_tuple(&m.p[0], &m.steps[0]);
  else return std::make_tuple(m.p[0], m.steps[0], m.p[1], m.steps[1]);
}

// One lumcc function between two shapes.
template <auto Fn, Kind SK, Kind DK>
MakeWork lum(Shape s, Shape d) {
  return [=](Size z) {
    auto src = std::make_shared<Img>(s, z, 1);
    auto dst = std::make_shared<Img>(d, z, 9);
    return Work([=] {
      benchmark::DoNotOptimize(std::apply(Fn, std::tuple_cat(srcArgs<SK>(*src), dstArgs<DK>(*dst),
                                                             std::make_tuple(LumSize{z.w, z.h}))));
    });
  };
}

// memcpy of as many bytes as the destination holds, dense.
MakeWork copyOf(Shape d) {
  return [=](Size z) {
    const size_t bytes = Img(d, z, 0).bytes;
    auto src = std::make_shared<std::vector<uint8_t>>(bytes, 1);
    auto dst = std::make_shared<std::vector<uint8_t>>(bytes, 0);
    return Work([=] {
      std::memcpy(dst->data(), src->data(), bytes);
      benchmark::ClobberMemory();
    });
  };
}

// Registers a function with its memcpy peer.
void both(const std::string& name, Shape d, MakeWork w) {
  add(name, "lumcc", std::move(w));
  add(name, "memcpy", copyOf(d));
}

#ifdef LUM_BENCH_LIBYUV
// A libyuv call on images of the same shapes as the lumcc function's.
template <class F>
MakeWork yuv(Shape s, Shape d, F f) {
  return [=](Size z) {
    auto src = std::make_shared<Img>(s, z, 1);
    auto dst = std::make_shared<Img>(d, z, 9);
    return Work([=] { benchmark::DoNotOptimize(f(*src, *dst, z.w, z.h)); });
  };
}
#endif

constexpr Kind kC2 = Kind::C2, kP3 = Kind::P3, kP2 = Kind::P2;

const bool kRegistered = [] {
  // Packed reorders.
  both("YCbCr422ToCbYCr422_8u_C2R", C2, lum<lumiYCbCr422ToCbYCr422_8u_C2R, kC2, kC2>(C2, C2));
  both("CbYCr422ToYCbCr422_8u_C2R", C2, lum<lumiCbYCr422ToYCbCr422_8u_C2R, kC2, kC2>(C2, C2));
  both("YCbCr422ToYCrCb422_8u_C2R", C2, lum<lumiYCbCr422ToYCrCb422_8u_C2R, kC2, kC2>(C2, C2));
  // 4:2:2 packed and planar.
  both("YCbCr422_8u_C2P3R", P422, lum<lumiYCbCr422_8u_C2P3R, kC2, kP3>(C2, P422));
  both("YCrCb422ToYCbCr422_8u_C2P3R", P422, lum<lumiYCrCb422ToYCbCr422_8u_C2P3R, kC2, kP3>(C2, P422));
  both("CbYCr422ToYCbCr422_8u_C2P3R", P422, lum<lumiCbYCr422ToYCbCr422_8u_C2P3R, kC2, kP3>(C2, P422));
  both("YCbCr422_8u_P3C2R", C2, lum<lumiYCbCr422_8u_P3C2R, kP3, kC2>(P422, C2));
  both("YCbCr422ToCbYCr422_8u_P3C2R", C2, lum<lumiYCbCr422ToCbYCr422_8u_P3C2R, kP3, kC2>(P422, C2));
  both("YCbCr422ToYCrCb422_8u_P3C2R", C2, lum<lumiYCbCr422ToYCrCb422_8u_P3C2R, kP3, kC2>(P422, C2));
  // Interleave and de-interleave.
  both("YCbCr420_8u_P2P3R", P420, lum<lumiYCbCr420_8u_P2P3R, kP2, kP3>(NV12, P420));
  both("YCbCr420_8u_P3P2R", NV12, lum<lumiYCbCr420_8u_P3P2R, kP3, kP2>(P420, NV12));
  both("YCbCr420ToYCrCb420_8u_P2P3R", P420, lum<lumiYCbCr420ToYCrCb420_8u_P2P3R, kP2, kP3>(NV12, P420));
  both("YCrCb420ToYCbCr420_8u_P3P2R", NV12, lum<lumiYCrCb420ToYCbCr420_8u_P3P2R, kP3, kP2>(P420, NV12));
  both("YCbCr411_8u_P2P3R", P411, lum<lumiYCbCr411_8u_P2P3R, kP2, kP3>(NV11, P411));
  both("YCbCr411_8u_P3P2R", NV11, lum<lumiYCbCr411_8u_P3P2R, kP3, kP2>(P411, NV11));
  // 4:2:2 to 4:2:0.
  both("YCbCr422ToYCbCr420_8u_C2P3R", P420, lum<lumiYCbCr422ToYCbCr420_8u_C2P3R, kC2, kP3>(C2, P420));
  both("YCrCb422ToYCbCr420_8u_C2P3R", P420, lum<lumiYCrCb422ToYCbCr420_8u_C2P3R, kC2, kP3>(C2, P420));
  both("CbYCr422ToYCbCr420_8u_C2P3R", P420, lum<lumiCbYCr422ToYCbCr420_8u_C2P3R, kC2, kP3>(C2, P420));
  both("YCbCr422ToYCrCb420_8u_C2P3R", P420, lum<lumiYCbCr422ToYCrCb420_8u_C2P3R, kC2, kP3>(C2, P420));
  both("CbYCr422ToYCrCb420_8u_C2P3R", P420, lum<lumiCbYCr422ToYCrCb420_8u_C2P3R, kC2, kP3>(C2, P420));
  both("YCbCr422ToYCbCr420_8u_C2P2R", NV12, lum<lumiYCbCr422ToYCbCr420_8u_C2P2R, kC2, kP2>(C2, NV12));
  both("YCbCr422ToYCrCb420_8u_C2P2R", NV12, lum<lumiYCbCr422ToYCrCb420_8u_C2P2R, kC2, kP2>(C2, NV12));
  both("CbYCr422ToYCbCr420_8u_C2P2R", NV12, lum<lumiCbYCr422ToYCbCr420_8u_C2P2R, kC2, kP2>(C2, NV12));
  both("YCbCr422ToYCbCr420_8u_P3R", P420, lum<lumiYCbCr422ToYCbCr420_8u_P3R, kP3, kP3>(P422, P420));
  both("YCbCr422ToYCbCr420_8u_P3P2R", NV12, lum<lumiYCbCr422ToYCbCr420_8u_P3P2R, kP3, kP2>(P422, NV12));
  // 4:2:0 to 4:2:2.
  both("YCbCr420ToYCbCr422_8u_P3R", P422, lum<lumiYCbCr420ToYCbCr422_8u_P3R, kP3, kP3>(P420, P422));
  both("YCrCb420ToYCbCr422_8u_P3R", P422, lum<lumiYCrCb420ToYCbCr422_8u_P3R, kP3, kP3>(P420, P422));
  both("YCbCr420ToYCbCr422_8u_P2P3R", P422, lum<lumiYCbCr420ToYCbCr422_8u_P2P3R, kP2, kP3>(NV12, P422));
  both("YCbCr420ToYCbCr422_8u_P2C2R", C2, lum<lumiYCbCr420ToYCbCr422_8u_P2C2R, kP2, kC2>(NV12, C2));
  both("YCbCr420ToCbYCr422_8u_P2C2R", C2, lum<lumiYCbCr420ToCbYCr422_8u_P2C2R, kP2, kC2>(NV12, C2));
  both("YCrCb420ToYCbCr422_8u_P3C2R", C2, lum<lumiYCrCb420ToYCbCr422_8u_P3C2R, kP3, kC2>(P420, C2));
  both("YCrCb420ToCbYCr422_8u_P3C2R", C2, lum<lumiYCrCb420ToCbYCr422_8u_P3C2R, kP3, kC2>(P420, C2));
  // 4:2:2 to 4:1:1.
  both("YCbCr422ToYCbCr411_8u_C2P3R", P411, lum<lumiYCbCr422ToYCbCr411_8u_C2P3R, kC2, kP3>(C2, P411));
  both("YCrCb422ToYCbCr411_8u_C2P3R", P411, lum<lumiYCrCb422ToYCbCr411_8u_C2P3R, kC2, kP3>(C2, P411));
  both("CbYCr422ToYCbCr411_8u_C2P3R", P411, lum<lumiCbYCr422ToYCbCr411_8u_C2P3R, kC2, kP3>(C2, P411));
  both("YCbCr422ToYCbCr411_8u_C2P2R", NV11, lum<lumiYCbCr422ToYCbCr411_8u_C2P2R, kC2, kP2>(C2, NV11));
  both("YCbCr422ToYCbCr411_8u_P3R", P411, lum<lumiYCbCr422ToYCbCr411_8u_P3R, kP3, kP3>(P422, P411));
  both("YCbCr422ToYCbCr411_8u_P3P2R", NV11, lum<lumiYCbCr422ToYCbCr411_8u_P3P2R, kP3, kP2>(P422, NV11));
  // 4:1:1 to 4:2:2.
  both("YCbCr411ToYCbCr422_8u_P3R", P422, lum<lumiYCbCr411ToYCbCr422_8u_P3R, kP3, kP3>(P411, P422));
  both("YCbCr411ToYCrCb422_8u_P3R", P422, lum<lumiYCbCr411ToYCrCb422_8u_P3R, kP3, kP3>(P411, P422));
  both("YCbCr411ToYCbCr422_8u_P3C2R", C2, lum<lumiYCbCr411ToYCbCr422_8u_P3C2R, kP3, kC2>(P411, C2));
  both("YCbCr411ToYCrCb422_8u_P3C2R", C2, lum<lumiYCbCr411ToYCrCb422_8u_P3C2R, kP3, kC2>(P411, C2));
  both("YCbCr411ToYCbCr422_8u_P2P3R", P422, lum<lumiYCbCr411ToYCbCr422_8u_P2P3R, kP2, kP3>(NV11, P422));
  both("YCbCr411ToYCbCr422_8u_P2C2R", C2, lum<lumiYCbCr411ToYCbCr422_8u_P2C2R, kP2, kC2>(NV11, C2));
  // 4:2:0 and 4:1:1, sample for sample.
  both("YCbCr420ToYCbCr411_8u_P2P3R", P411, lum<lumiYCbCr420ToYCbCr411_8u_P2P3R, kP2, kP3>(NV12, P411));
  both("YCbCr420ToYCbCr411_8u_P3P2R", NV11, lum<lumiYCbCr420ToYCbCr411_8u_P3P2R, kP3, kP2>(P420, NV11));
  both("YCrCb420ToYCbCr411_8u_P3P2R", NV11, lum<lumiYCrCb420ToYCbCr411_8u_P3P2R, kP3, kP2>(P420, NV11));
  both("YCbCr411ToYCbCr420_8u_P3R", P420, lum<lumiYCbCr411ToYCbCr420_8u_P3R, kP3, kP3>(P411, P420));
  both("YCbCr411ToYCbCr420_8u_P3P2R", NV12, lum<lumiYCbCr411ToYCbCr420_8u_P3P2R, kP3, kP2>(P411, NV12));
  both("YCbCr411ToYCbCr420_8u_P2P3R", P420, lum<lumiYCbCr411ToYCbCr420_8u_P2P3R, kP2, kP3>(NV11, P420));
  both("YCbCr411ToYCrCb420_8u_P2P3R", P420, lum<lumiYCbCr411ToYCrCb420_8u_P2P3R, kP2, kP3>(NV11, P420));
  // Resamplers.
  both("YCbCr420To411_8u_P3R", P411, lum<lumiYCbCr420To411_8u_P3R, kP3, kP3>(P420, P411));
  both("YCbCr411To420_8u_P3R", P420, lum<lumiYCbCr411To420_8u_P3R, kP3, kP3>(P411, P420));
  both("YCbCr420To1620_8u_P3R", P1620, lum<lumiYCbCr420To1620_8u_P3R, kP3, kP3>(P420, P1620));
  both("YCbCr1620To420_8u_P3R", P420, lum<lumiYCbCr1620To420_8u_P3R, kP3, kP3>(P1620, P420));

#ifdef LUM_BENCH_LIBYUV
  using I = const Img&;
  using O = Img&;
  // Packed reorders: libyuv has no YUY2 <-> UYVY, so its 4-byte shuffle on
  // W/2 "pixels" does the same byte moves.
  static const uint8_t kSwapPairs[16] = {1, 0, 3, 2, 5, 4, 7, 6, 9, 8, 11, 10, 13, 12, 15, 14};
  static const uint8_t kSwapChroma[16] = {0, 3, 2, 1, 4, 7, 6, 5, 8, 11, 10, 9, 12, 15, 14, 13};
  auto shuffle = [](const uint8_t* mask) {
    return yuv(C2, C2, [mask](I s, O d, int w, int h) {
      return libyuv::ARGBShuffle(s.cp[0], s.steps[0], d.p[0], d.steps[0], mask, w / 2, h);
    });
  };
  add("YCbCr422ToCbYCr422_8u_C2R", "libyuv", shuffle(kSwapPairs));
  add("CbYCr422ToYCbCr422_8u_C2R", "libyuv", shuffle(kSwapPairs));
  add("YCbCr422ToYCrCb422_8u_C2R", "libyuv", shuffle(kSwapChroma));
  auto yuy2ToI422 = yuv(C2, P422, [](I s, O d, int w, int h) {
    return libyuv::YUY2ToI422(s.cp[0], s.steps[0], d.p[0], d.steps[0], d.p[1], d.steps[1], d.p[2], d.steps[2], w, h);
  });
  add("YCbCr422_8u_C2P3R", "libyuv", yuy2ToI422);
  add("YCrCb422ToYCbCr422_8u_C2P3R", "libyuv", yuy2ToI422);
  add("CbYCr422ToYCbCr422_8u_C2P3R", "libyuv", yuv(C2, P422, [](I s, O d, int w, int h) {
        return libyuv::UYVYToI422(s.cp[0], s.steps[0], d.p[0], d.steps[0], d.p[1], d.steps[1], d.p[2], d.steps[2], w, h);
      }));
  auto i422ToYuy2 = yuv(P422, C2, [](I s, O d, int w, int h) {
    return libyuv::I422ToYUY2(s.cp[0], s.steps[0], s.cp[1], s.steps[1], s.cp[2], s.steps[2], d.p[0], d.steps[0], w, h);
  });
  add("YCbCr422_8u_P3C2R", "libyuv", i422ToYuy2);
  add("YCbCr422ToYCrCb422_8u_P3C2R", "libyuv", i422ToYuy2);
  add("YCbCr422ToCbYCr422_8u_P3C2R", "libyuv", yuv(P422, C2, [](I s, O d, int w, int h) {
        return libyuv::I422ToUYVY(s.cp[0], s.steps[0], s.cp[1], s.steps[1], s.cp[2], s.steps[2], d.p[0], d.steps[0], w, h);
      }));
  auto nv12ToI420 = yuv(NV12, P420, [](I s, O d, int w, int h) {
    return libyuv::NV12ToI420(s.cp[0], s.steps[0], s.cp[1], s.steps[1], d.p[0], d.steps[0], d.p[1], d.steps[1], d.p[2],
                              d.steps[2], w, h);
  });
  add("YCbCr420_8u_P2P3R", "libyuv", nv12ToI420);
  add("YCbCr420ToYCrCb420_8u_P2P3R", "libyuv", nv12ToI420);
  auto i420ToNv12 = yuv(P420, NV12, [](I s, O d, int w, int h) {
    return libyuv::I420ToNV12(s.cp[0], s.steps[0], s.cp[1], s.steps[1], s.cp[2], s.steps[2], d.p[0], d.steps[0], d.p[1],
                              d.steps[1], w, h);
  });
  add("YCbCr420_8u_P3P2R", "libyuv", i420ToNv12);
  add("YCrCb420ToYCbCr420_8u_P3P2R", "libyuv", i420ToNv12);
  auto yuy2ToI420 = yuv(C2, P420, [](I s, O d, int w, int h) {
    return libyuv::YUY2ToI420(s.cp[0], s.steps[0], d.p[0], d.steps[0], d.p[1], d.steps[1], d.p[2], d.steps[2], w, h);
  });
  auto uyvyToI420 = yuv(C2, P420, [](I s, O d, int w, int h) {
    return libyuv::UYVYToI420(s.cp[0], s.steps[0], d.p[0], d.steps[0], d.p[1], d.steps[1], d.p[2], d.steps[2], w, h);
  });
  add("YCbCr422ToYCbCr420_8u_C2P3R", "libyuv", yuy2ToI420);
  add("YCrCb422ToYCbCr420_8u_C2P3R", "libyuv", yuy2ToI420);
  add("YCbCr422ToYCrCb420_8u_C2P3R", "libyuv", yuy2ToI420);
  add("CbYCr422ToYCbCr420_8u_C2P3R", "libyuv", uyvyToI420);
  add("CbYCr422ToYCrCb420_8u_C2P3R", "libyuv", uyvyToI420);
  auto yuy2ToNv12 = yuv(C2, NV12, [](I s, O d, int w, int h) {
    return libyuv::YUY2ToNV12(s.cp[0], s.steps[0], d.p[0], d.steps[0], d.p[1], d.steps[1], w, h);
  });
  add("YCbCr422ToYCbCr420_8u_C2P2R", "libyuv", yuy2ToNv12);
  add("YCbCr422ToYCrCb420_8u_C2P2R", "libyuv", yuy2ToNv12);
  add("CbYCr422ToYCbCr420_8u_C2P2R", "libyuv", yuv(C2, NV12, [](I s, O d, int w, int h) {
        return libyuv::UYVYToNV12(s.cp[0], s.steps[0], d.p[0], d.steps[0], d.p[1], d.steps[1], w, h);
      }));
  add("YCbCr422ToYCbCr420_8u_P3R", "libyuv", yuv(P422, P420, [](I s, O d, int w, int h) {
        return libyuv::I422ToI420(s.cp[0], s.steps[0], s.cp[1], s.steps[1], s.cp[2], s.steps[2], d.p[0], d.steps[0],
                                  d.p[1], d.steps[1], d.p[2], d.steps[2], w, h);
      }));
  add("YCbCr422ToYCbCr420_8u_P3P2R", "libyuv", yuv(P422, NV12, [](I s, O d, int w, int h) {
        return libyuv::I422ToNV21(s.cp[0], s.steps[0], s.cp[1], s.steps[1], s.cp[2], s.steps[2], d.p[0], d.steps[0],
                                  d.p[1], d.steps[1], w, h);
      }));
  auto i420ToI422 = yuv(P420, P422, [](I s, O d, int w, int h) {
    return libyuv::I420ToI422(s.cp[0], s.steps[0], s.cp[1], s.steps[1], s.cp[2], s.steps[2], d.p[0], d.steps[0], d.p[1],
                              d.steps[1], d.p[2], d.steps[2], w, h);
  });
  add("YCbCr420ToYCbCr422_8u_P3R", "libyuv", i420ToI422);
  add("YCrCb420ToYCbCr422_8u_P3R", "libyuv", i420ToI422);
  auto i420ToYuy2 = yuv(P420, C2, [](I s, O d, int w, int h) {
    return libyuv::I420ToYUY2(s.cp[0], s.steps[0], s.cp[1], s.steps[1], s.cp[2], s.steps[2], d.p[0], d.steps[0], w, h);
  });
  auto i420ToUyvy = yuv(P420, C2, [](I s, O d, int w, int h) {
    return libyuv::I420ToUYVY(s.cp[0], s.steps[0], s.cp[1], s.steps[1], s.cp[2], s.steps[2], d.p[0], d.steps[0], w, h);
  });
  add("YCrCb420ToYCbCr422_8u_P3C2R", "libyuv", i420ToYuy2);
  add("YCrCb420ToCbYCr422_8u_P3C2R", "libyuv", i420ToUyvy);
  add("YCbCr420ToYCbCr422_8u_P2C2R", "libyuv", i420ToYuy2);
  add("YCbCr420ToCbYCr422_8u_P2C2R", "libyuv", i420ToUyvy);
#endif
  return true;
}();

}  // namespace
}  // namespace lumbench
