// YCoCg conversions. No common library has them, so each runs beside a
// memcpy of its packed image's rows (the bytes that the 8u forms read and write).
#include <cstring>

#include "bench_support.h"

namespace lumbench {
namespace {

// Three planes of ps-byte samples sharing one step, and a packed image of
// n samples of es bytes a pixel.
struct Images {
  Plane packed, planes[3];
  Images(Size s, int es, int n, int ps)
      : packed(s.w * es * n, s.h, 1), planes{{s.w * ps, s.h, 2}, {s.w * ps, s.h, 3}, {s.w * ps, s.h, 4}} {}
};

// Packed TS to planes of TD.
template <class TS, class TD, class F>
MakeWork forward(int n, F f) {
  return [=](Size s) {
    auto im = std::make_shared<Images>(s, int(sizeof(TS)), n, int(sizeof(TD)));
    return Work([=] {
      TD* const p[3] = {reinterpret_cast<TD*>(im->planes[0].data()), reinterpret_cast<TD*>(im->planes[1].data()),
                        reinterpret_cast<TD*>(im->planes[2].data())};
      f(reinterpret_cast<const TS*>(im->packed.data()), im->packed.step, p, im->planes[0].step, LumSize{s.w, s.h});
    });
  };
}

// Planes of TS to packed TD; the four-channel forms get an aval.
template <class TS, class TD, class F>
MakeWork reverse(int n, F f) {
  return [=](Size s) {
    auto im = std::make_shared<Images>(s, int(sizeof(TD)), n, int(sizeof(TS)));
    return Work([=] {
      const TS* const p[3] = {reinterpret_cast<const TS*>(im->planes[0].data()),
                              reinterpret_cast<const TS*>(im->planes[1].data()),
                              reinterpret_cast<const TS*>(im->planes[2].data())};
      f(p, im->planes[0].step, reinterpret_cast<TD*>(im->packed.data()), im->packed.step, LumSize{s.w, s.h});
    });
  };
}

// The packed image's rows copied to another image of the same shape.
MakeWork copyRows(int rowBytes) {
  return [=](Size s) {
    auto a = std::make_shared<Plane>(s.w * rowBytes, s.h, 5);
    auto b = std::make_shared<Plane>(s.w * rowBytes, s.h, 6);
    return Work([=] {
      for (int y = 0; y < s.h; ++y)
        std::memcpy(b->data() + size_t(y) * size_t(b->step), a->data() + size_t(y) * size_t(a->step),
                    size_t(s.w) * size_t(rowBytes));
    });
  };
}

#define AV(fn, av) [](auto... a) { return fn(a..., av); }

const bool registered = [] {
  add("BGRToYCoCg_8u16s_C3P3R", "lumcc", forward<Lum8u, Lum16s>(3, lumiBGRToYCoCg_8u16s_C3P3R));
  add("BGRToYCoCg_8u16s_C4P3R", "lumcc", forward<Lum8u, Lum16s>(4, lumiBGRToYCoCg_8u16s_C4P3R));
  add("BGRToYCoCg_Rev_8u16s_C3P3R", "lumcc", forward<Lum8u, Lum16s>(3, lumiBGRToYCoCg_Rev_8u16s_C3P3R));
  add("BGRToYCoCg_Rev_8u16s_C4P3R", "lumcc", forward<Lum8u, Lum16s>(4, lumiBGRToYCoCg_Rev_8u16s_C4P3R));
  add("SBGRToYCoCg_16s_C3P3R", "lumcc", forward<Lum16s, Lum16s>(3, lumiSBGRToYCoCg_16s_C3P3R));
  add("SBGRToYCoCg_16s_C4P3R", "lumcc", forward<Lum16s, Lum16s>(4, lumiSBGRToYCoCg_16s_C4P3R));
  add("SBGRToYCoCg_Rev_16s_C3P3R", "lumcc", forward<Lum16s, Lum16s>(3, lumiSBGRToYCoCg_Rev_16s_C3P3R));
  add("SBGRToYCoCg_Rev_16s_C4P3R", "lumcc", forward<Lum16s, Lum16s>(4, lumiSBGRToYCoCg_Rev_16s_C4P3R));
  add("SBGRToYCoCg_16s32s_C3P3R", "lumcc", forward<Lum16s, Lum32s>(3, lumiSBGRToYCoCg_16s32s_C3P3R));
  add("SBGRToYCoCg_16s32s_C4P3R", "lumcc", forward<Lum16s, Lum32s>(4, lumiSBGRToYCoCg_16s32s_C4P3R));
  add("SBGRToYCoCg_Rev_16s32s_C3P3R", "lumcc", forward<Lum16s, Lum32s>(3, lumiSBGRToYCoCg_Rev_16s32s_C3P3R));
  add("SBGRToYCoCg_Rev_16s32s_C4P3R", "lumcc", forward<Lum16s, Lum32s>(4, lumiSBGRToYCoCg_Rev_16s32s_C4P3R));
  add("RGBToYCoCg_8u_C3P3R", "lumcc", forward<Lum8u, Lum8u>(3, lumiRGBToYCoCg_8u_C3P3R));
  add("YCoCgToBGR_16s8u_P3C3R", "lumcc", reverse<Lum16s, Lum8u>(3, lumiYCoCgToBGR_16s8u_P3C3R));
  add("YCoCgToBGR_16s8u_P3C4R", "lumcc", reverse<Lum16s, Lum8u>(4, AV(lumiYCoCgToBGR_16s8u_P3C4R, 255)));
  add("YCoCgToBGR_Rev_16s8u_P3C3R", "lumcc", reverse<Lum16s, Lum8u>(3, lumiYCoCgToBGR_Rev_16s8u_P3C3R));
  add("YCoCgToBGR_Rev_16s8u_P3C4R", "lumcc", reverse<Lum16s, Lum8u>(4, AV(lumiYCoCgToBGR_Rev_16s8u_P3C4R, 255)));
  add("YCoCgToSBGR_16s_P3C3R", "lumcc", reverse<Lum16s, Lum16s>(3, lumiYCoCgToSBGR_16s_P3C3R));
  add("YCoCgToSBGR_16s_P3C4R", "lumcc", reverse<Lum16s, Lum16s>(4, AV(lumiYCoCgToSBGR_16s_P3C4R, 0)));
  add("YCoCgToSBGR_Rev_16s_P3C3R", "lumcc", reverse<Lum16s, Lum16s>(3, lumiYCoCgToSBGR_Rev_16s_P3C3R));
  add("YCoCgToSBGR_Rev_16s_P3C4R", "lumcc", reverse<Lum16s, Lum16s>(4, AV(lumiYCoCgToSBGR_Rev_16s_P3C4R, 0)));
  add("YCoCgToSBGR_32s16s_P3C3R", "lumcc", reverse<Lum32s, Lum16s>(3, lumiYCoCgToSBGR_32s16s_P3C3R));
  add("YCoCgToSBGR_32s16s_P3C4R", "lumcc", reverse<Lum32s, Lum16s>(4, AV(lumiYCoCgToSBGR_32s16s_P3C4R, 0)));
  add("YCoCgToSBGR_Rev_32s16s_P3C3R", "lumcc", reverse<Lum32s, Lum16s>(3, lumiYCoCgToSBGR_Rev_32s16s_P3C3R));
  add("YCoCgToSBGR_Rev_32s16s_P3C4R", "lumcc", reverse<Lum32s, Lum16s>(4, AV(lumiYCoCgToSBGR_Rev_32s16s_P3C4R, 0)));
  add("YCoCgToRGB_8u_P3C3R", "lumcc", reverse<Lum8u, Lum8u>(3, lumiYCoCgToRGB_8u_P3C3R));
  // The copy of each form's packed rows, as its peer.
  for (const char* n : {"RGBToYCoCg_8u_C3P3R", "YCoCgToRGB_8u_P3C3R", "BGRToYCoCg_8u16s_C3P3R",
                        "BGRToYCoCg_Rev_8u16s_C3P3R", "YCoCgToBGR_16s8u_P3C3R", "YCoCgToBGR_Rev_16s8u_P3C3R"})
    add(n, "memcpy", copyRows(3));
  for (const char* n : {"BGRToYCoCg_8u16s_C4P3R", "BGRToYCoCg_Rev_8u16s_C4P3R", "YCoCgToBGR_16s8u_P3C4R",
                        "YCoCgToBGR_Rev_16s8u_P3C4R"})
    add(n, "memcpy", copyRows(4));
  for (const char* n : {"SBGRToYCoCg_16s_C3P3R", "SBGRToYCoCg_Rev_16s_C3P3R", "SBGRToYCoCg_16s32s_C3P3R",
                        "SBGRToYCoCg_Rev_16s32s_C3P3R", "YCoCgToSBGR_16s_P3C3R", "YCoCgToSBGR_Rev_16s_P3C3R",
                        "YCoCgToSBGR_32s16s_P3C3R", "YCoCgToSBGR_Rev_32s16s_P3C3R"})
    add(n, "memcpy", copyRows(6));
  for (const char* n : {"SBGRToYCoCg_16s_C4P3R", "SBGRToYCoCg_Rev_16s_C4P3R", "SBGRToYCoCg_16s32s_C4P3R",
                        "SBGRToYCoCg_Rev_16s32s_C4P3R", "YCoCgToSBGR_16s_P3C4R", "YCoCgToSBGR_Rev_16s_P3C4R",
                        "YCoCgToSBGR_32s16s_P3C4R", "YCoCgToSBGR_Rev_32s16s_P3C4R"})
    add(n, "memcpy", copyRows(8));
  return true;
}();

#undef AV

}  // namespace
}  // namespace lumbench
