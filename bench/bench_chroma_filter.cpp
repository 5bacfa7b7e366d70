// Filtered chroma conversions, NV12 deinterlacing and the field-aware 4:2:2 <->
// 4:2:0 conversions, beside the nearest libyuv conversion over the same images.
// The peers do less arithmetic (they repeat, drop or average two rows where
// lumcc filters), so the ratios show what the filters cost over a plain move.
#include "bench_support.h"

#ifdef LUM_BENCH_LIBYUV
#include <libyuv.h>
#endif

namespace lumbench {
namespace {

// Planes of the given row bytes and row counts; seeds differ per plane.
struct Frame {
  std::vector<Plane> planes;
  Frame(std::initializer_list<std::pair<int, int>> shapes) {
    uint32_t seed = 11;
    for (auto [bytes, rows] : shapes) planes.emplace_back(bytes, rows, seed++);
  }
  uint8_t* p(size_t i) { return planes[i].data(); }
  int s(size_t i) const { return planes[i].step; }
};

// The image shapes of one size.
std::pair<int, int> full(Size z, int bpp = 1) { return {z.w * bpp, z.h}; }
std::pair<int, int> half420(Size z) { return {z.w / 2, z.h / 2}; }
std::pair<int, int> half422(Size z) { return {z.w / 2, z.h}; }
std::pair<int, int> nv12Chroma(Size z) { return {z.w, z.h / 2}; }

// The frames of each layout at one size.
Frame p420(Size z) { return Frame{full(z), half420(z), half420(z)}; }
Frame p422(Size z) { return Frame{full(z), half422(z), half422(z)}; }
Frame nv12(Size z) { return Frame{full(z), nv12Chroma(z)}; }
Frame packed(Size z, int bpp) { return Frame{full(z, bpp)}; }

template <class In, class Out, class F>
void addConv(const std::string& name, const std::string& who, In in, Out out, F f) {
  add(name, who, [=](Size z) {
    auto a = std::make_shared<Frame>(in(z)), b = std::make_shared<Frame>(out(z));
    return Work([=] { f(*a, *b, LumSize{z.w, z.h}); });
  });
}

const auto kPacked2 = [](Size z) { return packed(z, 2); };
const auto kPacked4 = [](Size z) { return packed(z, 4); };

// Plane arrays of a frame.
struct Arr {
  const Lum8u* src[3];
  Lum8u* dst[3];
  int ss[3], ds[3];
};
Arr arrays(Frame& a, Frame& b) {
  Arr r{};
  for (size_t i = 0; i < 3; ++i) {
    if (i < a.planes.size()) r.src[i] = a.p(i), r.ss[i] = a.s(i);
    if (i < b.planes.size()) r.dst[i] = b.p(i), r.ds[i] = b.s(i);
  }
  return r;
}

const bool kRegistered = [] {
  addConv("YCbCr420ToYCbCr422_Filter_8u_P3R", "lumcc", p420, p422, [](Frame& a, Frame& b, LumSize r) {
    Arr x = arrays(a, b);
    lumiYCbCr420ToYCbCr422_Filter_8u_P3R(x.src, x.ss, x.dst, x.ds, r);
  });
  addConv("YCrCb420ToYCbCr422_Filter_8u_P3R", "lumcc", p420, p422, [](Frame& a, Frame& b, LumSize r) {
    Arr x = arrays(a, b);
    lumiYCrCb420ToYCbCr422_Filter_8u_P3R(x.src, x.ss, x.dst, x.ds, r);
  });
  addConv("YCbCr420ToYCbCr422_Filter_8u_P2P3R", "lumcc", nv12, p422, [](Frame& a, Frame& b, LumSize r) {
    Arr x = arrays(a, b);
    lumiYCbCr420ToYCbCr422_Filter_8u_P2P3R(a.p(0), a.s(0), a.p(1), a.s(1), x.dst, x.ds, r);
  });
  addConv("NV12ToYUY2_Filter_P2C2R_whole", "lumcc", nv12, kPacked2, [](Frame& a, Frame& b, LumSize r) {
    lumiYCbCr420ToYCbCr422_Filter_8u_P2C2R(a.p(0), a.s(0), a.p(1), a.s(1), b.p(0), b.s(0), r, lumSliceWhole);
  });
  addConv("NV12ToYUY2_Filter_P2C2R_first", "lumcc", nv12, kPacked2, [](Frame& a, Frame& b, LumSize r) {
    lumiYCbCr420ToYCbCr422_Filter_8u_P2C2R(a.p(0), a.s(0), a.p(1), a.s(1), b.p(0), b.s(0), r, lumSliceFirst);
  });
  addConv("NV12ToYV12_Filter_P2P3R_whole", "lumcc", nv12, p420, [](Frame& a, Frame& b, LumSize r) {
    Arr x = arrays(a, b);
    lumiYCbCr420ToYCrCb420_Filter_8u_P2P3R(a.p(0), a.s(0), a.p(1), a.s(1), x.dst, x.ds, r, lumSliceWhole);
  });
  // A first slice of whole 16-row groups: at 256x256 the HDTV kernels run.
  addConv("NV12ToYV12_Filter_P2P3R_first", "lumcc", nv12, p420, [](Frame& a, Frame& b, LumSize r) {
    Arr x = arrays(a, b);
    lumiYCbCr420ToYCrCb420_Filter_8u_P2P3R(a.p(0), a.s(0), a.p(1), a.s(1), x.dst, x.ds, {r.width, r.height & ~15},
                                           lumSliceFirst);
  });
  addConv("YCrCb420ToBGR_Filter_8u_P3C4R", "lumcc", p420, kPacked4, [](Frame& a, Frame& b, LumSize r) {
    Arr x = arrays(a, b);
    lumiYCrCb420ToBGR_Filter_8u_P3C4R(x.src, x.ss, b.p(0), b.s(0), r, 255);
  });
  addConv("YCbCr422To420_Interlace_8u_P3R", "lumcc", p422, p420, [](Frame& a, Frame& b, LumSize r) {
    Arr x = arrays(a, b);
    lumiYCbCr422To420_Interlace_8u_P3R(x.src, x.ss, x.dst, x.ds, r);
  });
  addConv("CbYCr422ToYCbCr420_Interlace_8u_C2P3R", "lumcc", kPacked2, p420, [](Frame& a, Frame& b, LumSize r) {
    Arr x = arrays(a, b);
    lumiCbYCr422ToYCbCr420_Interlace_8u_C2P3R(a.p(0), a.s(0), x.dst, x.ds, r);
  });
  addConv("YCbCr420To422_Interlace_8u_P3R", "lumcc", p420, p422, [](Frame& a, Frame& b, LumSize r) {
    Arr x = arrays(a, b);
    lumiYCbCr420To422_Interlace_8u_P3R(x.src, x.ss, x.dst, x.ds, r);
  });
  addConv("YCbCr420ToCbYCr422_Interlace_8u_P3C2R", "lumcc", p420, kPacked2, [](Frame& a, Frame& b, LumSize r) {
    Arr x = arrays(a, b);
    lumiYCbCr420ToCbYCr422_Interlace_8u_P3C2R(x.src, x.ss, b.p(0), b.s(0), r);
  });
#ifdef LUM_BENCH_LIBYUV
  auto i420ToI422 = [](Frame& a, Frame& b, LumSize r) {
    libyuv::I420ToI422(a.p(0), a.s(0), a.p(1), a.s(1), a.p(2), a.s(2), b.p(0), b.s(0), b.p(1), b.s(1), b.p(2), b.s(2),
                       r.width, r.height);
  };
  addConv("YCbCr420ToYCbCr422_Filter_8u_P3R", "libyuv", p420, p422, i420ToI422);
  addConv("YCbCr420To422_Interlace_8u_P3R", "libyuv", p420, p422, i420ToI422);
  auto nv12ToI420 = [](Frame& a, Frame& b, LumSize r) {
    libyuv::NV12ToI420(a.p(0), a.s(0), a.p(1), a.s(1), b.p(0), b.s(0), b.p(1), b.s(1), b.p(2), b.s(2), r.width,
                       r.height);
  };
  addConv("NV12ToYV12_Filter_P2P3R_whole", "libyuv", nv12, p420, nv12ToI420);
  addConv("NV12ToYV12_Filter_P2P3R_first", "libyuv", nv12, p420, nv12ToI420);
  // NV12 to YUY2 has no single call in libyuv: split to planes, then pack.
  add("NV12ToYUY2_Filter_P2C2R_whole", "libyuv", [](Size z) {
    auto a = std::make_shared<Frame>(nv12(z)), t = std::make_shared<Frame>(p420(z));
    auto b = std::make_shared<Frame>(packed(z, 2));
    return Work([=] {
      libyuv::NV12ToI420(a->p(0), a->s(0), a->p(1), a->s(1), t->p(0), t->s(0), t->p(1), t->s(1), t->p(2), t->s(2),
                         z.w, z.h);
      libyuv::I420ToYUY2(t->p(0), t->s(0), t->p(1), t->s(1), t->p(2), t->s(2), b->p(0), b->s(0), z.w, z.h);
    });
  });
  addConv("YCrCb420ToBGR_Filter_8u_P3C4R", "libyuv", p420, kPacked4, [](Frame& a, Frame& b, LumSize r) {
    libyuv::I420ToARGB(a.p(0), a.s(0), a.p(2), a.s(2), a.p(1), a.s(1), b.p(0), b.s(0), r.width, r.height);
  });
  addConv("YCbCr422To420_Interlace_8u_P3R", "libyuv", p422, p420, [](Frame& a, Frame& b, LumSize r) {
    libyuv::I422ToI420(a.p(0), a.s(0), a.p(1), a.s(1), a.p(2), a.s(2), b.p(0), b.s(0), b.p(1), b.s(1), b.p(2), b.s(2),
                       r.width, r.height);
  });
  addConv("CbYCr422ToYCbCr420_Interlace_8u_C2P3R", "libyuv", kPacked2, p420, [](Frame& a, Frame& b, LumSize r) {
    libyuv::UYVYToI420(a.p(0), a.s(0), b.p(0), b.s(0), b.p(1), b.s(1), b.p(2), b.s(2), r.width, r.height);
  });
  addConv("YCbCr420ToCbYCr422_Interlace_8u_P3C2R", "libyuv", p420, kPacked2, [](Frame& a, Frame& b, LumSize r) {
    libyuv::I420ToUYVY(a.p(0), a.s(0), a.p(1), a.s(1), a.p(2), a.s(2), b.p(0), b.s(0), r.width, r.height);
  });
#endif
  return true;
}();

}  // namespace
}  // namespace lumbench
