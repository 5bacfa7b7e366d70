// RGB <-> 4:2:2, every function at both sizes, with libyuv's packed and planar
// 4:2:2 conversions as peers where they do the same work (libyuv's ARGB is
// B, G, R, A in memory and its RGB24 is B, G, R).
#include <type_traits>

#include "bench_support.h"

#ifdef LUM_BENCH_LIBYUV
#include <libyuv.h>
#endif

namespace lumbench {
namespace {

// Bytes of a planar 4:2:2 plane row: luma full width, chroma half (rounded up).
int planeBytes(int w, int plane) { return plane == 0 ? w : (w + 1) / 2; }

// Planes of a 4:2:2 image (half-width chroma) or of a full-resolution one.
struct PlaneSet {
  std::vector<Plane> p;
  int steps[3] = {0, 0, 0};
  PlaneSet(int w, int h, bool half, uint32_t seed) {
    for (int i = 0; i < 3; ++i) {
      p.emplace_back(half ? planeBytes(w, i) : w, h, seed + uint32_t(i));
      steps[i] = p.back().step;
    }
  }
  const Lum8u* c[3];
  Lum8u* m[3];
  const Lum8u* const* in() {
    for (int i = 0; i < 3; ++i) c[i] = p[size_t(i)].data();
    return c;
  }
  Lum8u* const* out() {
    for (int i = 0; i < 3; ++i) m[i] = p[size_t(i)].data();
    return m;
  }
};

// Packed to packed: source and destination bytes per pixel.
template <class F>
MakeWork packed(int sbpp, int dbpp, F f) {
  return [=](Size s) {
    auto src = std::make_shared<Plane>(s.w * sbpp, s.h);
    auto dst = std::make_shared<Plane>(s.w * dbpp, s.h);
    return Work([=] { f(src->data(), src->step, dst->data(), dst->step, LumSize{s.w, s.h}); });
  };
}
// Packed to planes (half: 4:2:2 planes with a step each; else RGB planes with one step).
template <class F>
MakeWork packedToPlanes(int sbpp, bool half, F f) {
  return [=](Size s) {
    auto src = std::make_shared<Plane>(s.w * sbpp, s.h);
    auto dst = std::make_shared<PlaneSet>(s.w, s.h, half, 1);
    return Work([=] {
      if constexpr (std::is_invocable_v<F, const Lum8u*, int, Lum8u* const*, const int*, LumSize>)
        f(src->data(), src->step, dst->out(), dst->steps, LumSize{s.w, s.h});
      else
        f(src->data(), src->step, dst->out(), dst->steps[0], LumSize{s.w, s.h});
    });
  };
}
// Planes to packed.
template <class F>
MakeWork planesToPacked(bool half, int dbpp, F f) {
  return [=](Size s) {
    auto src = std::make_shared<PlaneSet>(s.w, s.h, half, 3);
    auto dst = std::make_shared<Plane>(s.w * dbpp, s.h);
    return Work([=] {
      if constexpr (std::is_invocable_v<F, const Lum8u* const*, const int*, Lum8u*, int, LumSize>)
        f(src->in(), src->steps, dst->data(), dst->step, LumSize{s.w, s.h});
      else
        f(src->in(), src->steps[0], dst->data(), dst->step, LumSize{s.w, s.h});
    });
  };
}
// Planes to planes.
template <class F>
MakeWork planesToPlanes(bool halfIn, bool halfOut, F f) {
  return [=](Size s) {
    auto src = std::make_shared<PlaneSet>(s.w, s.h, halfIn, 5);
    auto dst = std::make_shared<PlaneSet>(s.w, s.h, halfOut, 7);
    return Work([=] {
      if constexpr (std::is_invocable_v<F, const Lum8u* const*, const int*, Lum8u* const*, int, LumSize>)
        f(src->in(), src->steps, dst->out(), dst->steps[0], LumSize{s.w, s.h});
      else
        f(src->in(), src->steps[0], dst->out(), dst->steps, LumSize{s.w, s.h});
    });
  };
}
// Dense images: buffers of exactly the derived size.
MakeWork dense(int inBytesPerPixel, bool halfIn, int outBytesPerPixel, bool halfOut,
               std::function<void(const Lum8u* const*, Lum8u* const*, LumSize)> f) {
  return [=](Size s) {
    auto bytes = [s](int bpp, bool half, int i) {
      return size_t(half ? planeBytes(s.w, i) : s.w) * size_t(s.h) * size_t(bpp);
    };
    auto in = std::make_shared<std::vector<std::vector<uint8_t>>>();
    auto out = std::make_shared<std::vector<std::vector<uint8_t>>>();
    const int nIn = inBytesPerPixel == 3 ? 1 : 3, nOut = outBytesPerPixel == 3 ? 1 : 3;
    for (int i = 0; i < nIn; ++i) in->emplace_back(bytes(inBytesPerPixel, halfIn, i), uint8_t(i * 37 + 1));
    for (int i = 0; i < nOut; ++i) out->emplace_back(bytes(outBytesPerPixel, halfOut, i), 0);
    return Work([=] {
      const Lum8u* a[3] = {};
      Lum8u* b[3] = {};
      for (int i = 0; i < nIn; ++i) a[i] = (*in)[size_t(i)].data();
      for (int i = 0; i < nOut; ++i) b[i] = (*out)[size_t(i)].data();
      f(a, b, LumSize{s.w, s.h});
    });
  };
}

#ifdef LUM_BENCH_LIBYUV
// libyuv packed to packed.
template <class F>
MakeWork yuvPacked(int sbpp, int dbpp, F f) {
  return [=](Size s) {
    auto src = std::make_shared<Plane>(s.w * sbpp, s.h);
    auto dst = std::make_shared<Plane>(s.w * dbpp, s.h);
    return Work([=] { f(src->data(), src->step, dst->data(), dst->step, s.w, s.h); });
  };
}
// libyuv I422 (or I420, quarter chroma rows unused) planes to packed.
template <class F>
MakeWork yuvPlanesToPacked(int dbpp, F f) {
  return [=](Size s) {
    auto src = std::make_shared<PlaneSet>(s.w, s.h, true, 3);
    auto dst = std::make_shared<Plane>(s.w * dbpp, s.h);
    return Work([=] {
      auto& p = src->p;
      f(p[0].data(), p[0].step, p[1].data(), p[1].step, p[2].data(), p[2].step, dst->data(), dst->step, s.w, s.h);
    });
  };
}
// libyuv packed to planes.
template <class F>
MakeWork yuvPackedToPlanes(int sbpp, F f) {
  return [=](Size s) {
    auto src = std::make_shared<Plane>(s.w * sbpp, s.h);
    auto dst = std::make_shared<PlaneSet>(s.w, s.h, true, 1);
    return Work([=] {
      auto& p = dst->p;
      f(src->data(), src->step, p[0].data(), p[0].step, p[1].data(), p[1].step, p[2].data(), p[2].step, s.w, s.h);
    });
  };
}
#endif

const bool kRegistered = [] {
  // ---- forward
  add("RGBToYCbCr422_8u_C3C2R", "lumcc", packed(3, 2, lumiRGBToYCbCr422_8u_C3C2R));
  add("RGBToYCrCb422_8u_C3C2R", "lumcc", packed(3, 2, lumiRGBToYCrCb422_8u_C3C2R));
  add("RGBToCbYCr422_8u_C3C2R", "lumcc", packed(3, 2, lumiRGBToCbYCr422_8u_C3C2R));
  add("BGRToYCbCr422_8u_C3C2R", "lumcc", packed(3, 2, lumiBGRToYCbCr422_8u_C3C2R));
  add("BGRToYCbCr422_8u_AC4C2R", "lumcc", packed(4, 2, lumiBGRToYCbCr422_8u_AC4C2R));
  add("BGRToCbYCr422_8u_AC4C2R", "lumcc", packed(4, 2, lumiBGRToCbYCr422_8u_AC4C2R));
  add("RGBToYCbCr422_8u_P3C2R", "lumcc", planesToPacked(false, 2, lumiRGBToYCbCr422_8u_P3C2R));
  add("RGBToYCrCb422_8u_P3C2R", "lumcc", planesToPacked(false, 2, lumiRGBToYCrCb422_8u_P3C2R));
  add("RGBToYCbCr422_8u_C3P3R", "lumcc", packedToPlanes(3, true, lumiRGBToYCbCr422_8u_C3P3R));
  add("BGRToYCbCr422_8u_C3P3R", "lumcc", packedToPlanes(3, true, lumiBGRToYCbCr422_8u_C3P3R));
  add("BGRToYCbCr422_8u_AC4P3R", "lumcc", packedToPlanes(4, true, lumiBGRToYCbCr422_8u_AC4P3R));
  add("RGBToYUV422_8u_C3C2R", "lumcc", packed(3, 2, lumiRGBToYUV422_8u_C3C2R));
  add("RGBToYUV422_8u_C3P3R", "lumcc", packedToPlanes(3, true, lumiRGBToYUV422_8u_C3P3R));
  add("RGBToYUV422_8u_P3R", "lumcc", planesToPlanes(false, true, lumiRGBToYUV422_8u_P3R));
  add("RGBToYUV422_8u_C3P3", "lumcc", dense(3, false, 1, true, [](const Lum8u* const* a, Lum8u* const* b, LumSize r) {
        lumiRGBToYUV422_8u_C3P3(a[0], b, r);
      }));
  add("RGBToYUV422_8u_P3", "lumcc", dense(1, false, 1, true, [](const Lum8u* const* a, Lum8u* const* b, LumSize r) {
        lumiRGBToYUV422_8u_P3(a, b, r);
      }));
  // ---- inverse
  add("YCbCr422ToRGB_8u_C2C3R", "lumcc", packed(2, 3, lumiYCbCr422ToRGB_8u_C2C3R));
  add("YCbCr422ToBGR_8u_C2C3R", "lumcc", packed(2, 3, lumiYCbCr422ToBGR_8u_C2C3R));
  add("YCrCb422ToRGB_8u_C2C3R", "lumcc", packed(2, 3, lumiYCrCb422ToRGB_8u_C2C3R));
  add("YCrCb422ToBGR_8u_C2C3R", "lumcc", packed(2, 3, lumiYCrCb422ToBGR_8u_C2C3R));
  add("CbYCr422ToRGB_8u_C2C3R", "lumcc", packed(2, 3, lumiCbYCr422ToRGB_8u_C2C3R));
  auto c4 = [](auto fn) { return [fn](auto... a) { return fn(a..., 255); }; };
  add("YCbCr422ToRGB_8u_C2C4R", "lumcc", packed(2, 4, c4(lumiYCbCr422ToRGB_8u_C2C4R)));
  add("YCbCr422ToBGR_8u_C2C4R", "lumcc", packed(2, 4, c4(lumiYCbCr422ToBGR_8u_C2C4R)));
  add("YCrCb422ToRGB_8u_C2C4R", "lumcc", packed(2, 4, c4(lumiYCrCb422ToRGB_8u_C2C4R)));
  add("YCrCb422ToBGR_8u_C2C4R", "lumcc", packed(2, 4, c4(lumiYCrCb422ToBGR_8u_C2C4R)));
  add("CbYCr422ToBGR_8u_C2C4R", "lumcc", packed(2, 4, c4(lumiCbYCr422ToBGR_8u_C2C4R)));
  add("YCbCr422ToRGB_8u_C2P3R", "lumcc", packedToPlanes(2, false, lumiYCbCr422ToRGB_8u_C2P3R));
  add("YCrCb422ToRGB_8u_C2P3R", "lumcc", packedToPlanes(2, false, lumiYCrCb422ToRGB_8u_C2P3R));
  add("YCbCr422ToRGB_8u_P3C3R", "lumcc", planesToPacked(true, 3, lumiYCbCr422ToRGB_8u_P3C3R));
  add("YCbCr422ToBGR_8u_P3C3R", "lumcc", planesToPacked(true, 3, lumiYCbCr422ToBGR_8u_P3C3R));
  add("YUV422ToRGB_8u_C2C3R", "lumcc", packed(2, 3, lumiYUV422ToRGB_8u_C2C3R));
  add("YUV422ToRGB_8u_P3C3R", "lumcc", planesToPacked(true, 3, lumiYUV422ToRGB_8u_P3C3R));
  add("YUV422ToRGB_8u_P3AC4R", "lumcc", planesToPacked(true, 4, lumiYUV422ToRGB_8u_P3AC4R));
  add("YUV422ToRGB_8u_P3R", "lumcc", planesToPlanes(true, false, lumiYUV422ToRGB_8u_P3R));
  add("YUV422ToRGB_8u_P3C3", "lumcc", dense(1, true, 3, false, [](const Lum8u* const* a, Lum8u* const* b, LumSize r) {
        lumiYUV422ToRGB_8u_P3C3(a, b[0], r);
      }));
  add("YUV422ToRGB_8u_P3", "lumcc", dense(1, true, 1, false, [](const Lum8u* const* a, Lum8u* const* b, LumSize r) {
        lumiYUV422ToRGB_8u_P3(a, b, r);
      }));
#ifdef LUM_BENCH_LIBYUV
  add("YCbCr422ToBGR_8u_C2C4R", "libyuv", yuvPacked(2, 4, libyuv::YUY2ToARGB));
  add("CbYCr422ToBGR_8u_C2C4R", "libyuv", yuvPacked(2, 4, libyuv::UYVYToARGB));
  add("YCbCr422ToBGR_8u_P3C3R", "libyuv", yuvPlanesToPacked(3, libyuv::I422ToRGB24));
  add("YCbCr422ToRGB_8u_P3C3R", "libyuv", yuvPlanesToPacked(3, libyuv::I422ToRAW));
  add("BGRToYCbCr422_8u_AC4C2R", "libyuv", yuvPacked(4, 2, libyuv::ARGBToYUY2));
  add("BGRToCbYCr422_8u_AC4C2R", "libyuv", yuvPacked(4, 2, libyuv::ARGBToUYVY));
  add("BGRToYCbCr422_8u_AC4P3R", "libyuv", yuvPackedToPlanes(4, libyuv::ARGBToI422));
  // The nearest peer of RGB24 to 4:2:2 planes: RGB24 to 4:2:0 (half the chroma rows).
  add("BGRToYCbCr422_8u_C3P3R", "libyuv", yuvPackedToPlanes(3, libyuv::RGB24ToI420));
#endif
  return true;
}();

}  // namespace
}  // namespace lumbench
