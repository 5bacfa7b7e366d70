// Luma-chroma layouts as raw files (dense planes one after another, no padding)
// and the direct conversions among them, which move samples without any trip
// through RGB. The RGB families give the same names their RGB conversions.
#include <array>
#include <stdexcept>
#include <tuple>

#include "formats.h"

namespace lumcli {
namespace {

enum class Kind { Packed, Planar, Semi };

// A layout: its chroma cell (cw x ch luma pixels per chroma sample), how its
// planes are stored, and for planar files whether the Cr plane comes first.
struct Layout {
  const char* name;
  const char* description;
  Kind kind;
  int cw, ch;
  bool crFirst = false;
};

const Layout kLayouts[] = {
    {"yuy2", "packed 4:2:2, Y0 Cb Y1 Cr (YCbCr422 C2)", Kind::Packed, 2, 1},
    {"uyvy", "packed 4:2:2, Cb Y0 Cr Y1 (CbYCr422 C2)", Kind::Packed, 2, 1},
    {"yvyu", "packed 4:2:2, Y0 Cr Y1 Cb (YCrCb422 C2)", Kind::Packed, 2, 1},
    {"i422", "planar 4:2:2: Y, then Cb and Cr planes of W/2 x H", Kind::Planar, 2, 1},
    {"yv16", "planar 4:2:2: Y, then Cr and Cb planes of W/2 x H", Kind::Planar, 2, 1, true},
    {"i420", "planar 4:2:0: Y, then Cb and Cr planes of W/2 x H/2", Kind::Planar, 2, 2},
    {"yv12", "planar 4:2:0: Y, then Cr and Cb planes of W/2 x H/2", Kind::Planar, 2, 2, true},
    {"nv12", "semi-planar 4:2:0: Y, then W/2 x H/2 pairs Cb Cr", Kind::Semi, 2, 2},
    {"nv21", "semi-planar 4:2:0: Y, then W/2 x H/2 pairs Cr Cb", Kind::Semi, 2, 2},
    {"i411", "planar 4:1:1: Y, then Cb and Cr planes of W/4 x H", Kind::Planar, 4, 1},
    {"nv11", "semi-planar 4:1:1: Y, then W/4 x H pairs Cb Cr", Kind::Semi, 4, 1},
    {"i1620", "planar 16:2:0: Y, then Cb and Cr planes of W/4 x H/4", Kind::Planar, 4, 4},
};

const Layout& layout(const std::string& name) {
  for (const Layout& l : kLayouts)
    if (name == l.name) return l;
  throw std::invalid_argument("no layout " + name);
}

// A layout takes only whole chroma cells.
bool fits(const Layout& l, int w, int h) { return w > 0 && h > 0 && w % l.cw == 0 && h % l.ch == 0; }

size_t fileBytes(const Layout& l, int w, int h) {
  if (!fits(l, w, h)) return 0;
  const size_t luma = size_t(w) * size_t(h), chroma = size_t(w / l.cw) * size_t(h / l.ch);
  return l.kind == Kind::Packed ? 2 * luma : luma + 2 * chroma;
}

// The planes of a file: luma (or the packed plane), then Cb, Cr for planar files
// whatever their order on disk, or the pair plane for semi-planar ones.
template <class T>
struct Planes {
  std::array<T*, 3> p{};
  std::array<int, 3> step{};
};
template <class T>
Planes<T> planesOf(const Layout& l, T* base, int w, int h) {
  Planes<T> r;
  if (l.kind == Kind::Packed) {
    r.p[0] = base;
    r.step[0] = 2 * w;
    return r;
  }
  const size_t luma = size_t(w) * size_t(h), chroma = size_t(w / l.cw) * size_t(h / l.ch);
  r.p[0] = base;
  r.step[0] = w;
  if (l.kind == Kind::Semi) {
    r.p[1] = base + luma;
    r.step[1] = 2 * (w / l.cw);
    return r;
  }
  r.p[l.crFirst ? 2 : 1] = base + luma;
  r.p[l.crFirst ? 1 : 2] = base + luma + chroma;
  r.step[1] = r.step[2] = w / l.cw;
  return r;
}

// The arguments of one side of a call, by the side's kind. A planar side whose
// function names Cr before Cb gets its chroma planes exchanged.
template <Kind K, bool CrCb = false, class T>
auto args(const Planes<T>& s) {
  if constexpr (K == Kind::Packed) {
    return std::make_tuple(s.p[0], s.step[0]);
  } else if constexpr (K == Kind::Semi) {
    return std::make_tuple(s.p[0], s.step[0], s.p[1], s.step[1]);
  } else {
    // The arrays live as long as the tuple that holds them.
    std::array<T*, 3> p = s.p;
    std::array<int, 3> st = s.step;
    if (CrCb) {
      std::swap(p[1], p[2]);
      std::swap(st[1], st[2]);
    }
    return std::make_tuple(p, st);
  }
}
template <class T>
auto pass(T&& v) {
  return v;
}
template <class T, size_t N>
T* pass(std::array<T, N>& a) {
  return a.data();
}

template <auto Fn, Kind S, Kind D, bool SrcCrCb = false, bool DstCrCb = false>
LumStatus callFn(const Planes<const uint8_t>& s, const Planes<uint8_t>& d, LumSize roi) {
  auto sa = args<S, SrcCrCb>(s);
  auto da = args<D, DstCrCb>(d);
  return std::apply([&](auto&... a) { return std::apply([&](auto&... b) { return Fn(pass(a)..., pass(b)..., roi); }, da); },
                    sa);
}

using Call = LumStatus (*)(const Planes<const uint8_t>&, const Planes<uint8_t>&, LumSize);

// Registers from -> to for every pair of file names the call serves: a planar
// side serves both chroma orders on disk, since planesOf always hands Cb, Cr.
void route(std::initializer_list<const char*> froms, std::initializer_list<const char*> tos, Call call) {
  for (const char* f : froms)
    for (const char* t : tos) {
      const Layout& lf = layout(f);
      const Layout& lt = layout(t);
      registerRoute(Route{f, t, [call, &lf, &lt](const std::vector<uint8_t>& in, int w, int h, std::vector<uint8_t>& out) {
                            return call(planesOf(lf, in.data(), w, h), planesOf(lt, out.data(), w, h), LumSize{w, h});
                          }});
    }
}

constexpr Kind C2 = Kind::Packed, P3 = Kind::Planar, P2 = Kind::Semi;

// 4:2:0 to 4:1:1 planes, exactly: through semi-planar 4:1:1 and its split.
LumStatus i420ToI411(const Planes<const uint8_t>& s, const Planes<uint8_t>& d, LumSize roi) {
  std::vector<uint8_t> pairs(size_t(roi.width / 2) * size_t(roi.height));
  Planes<uint8_t> mid{{d.p[0], pairs.data(), nullptr}, {d.step[0], roi.width / 2, 0}};
  const LumStatus st = callFn<lumiYCbCr420ToYCbCr411_8u_P3P2R, P3, P2>(s, mid, roi);
  if (st < 0) return st;
  Planes<const uint8_t> cmid{{s.p[0], pairs.data(), nullptr}, {s.step[0], roi.width / 2, 0}};
  return callFn<lumiYCbCr411_8u_P2P3R, P2, P3>(cmid, d, roi);
}

const bool kRegistered = [] {
  for (const Layout& l : kLayouts) {
    Format f;
    f.name = l.name;
    f.description = l.description;
    f.fileBytes = [&l](int w, int h) { return fileBytes(l, w, h); };
    registerFormat(std::move(f));
  }
  // Packed byte orders.
  route({"yuy2"}, {"uyvy"}, callFn<lumiYCbCr422ToCbYCr422_8u_C2R, C2, C2>);
  route({"uyvy"}, {"yuy2"}, callFn<lumiCbYCr422ToYCbCr422_8u_C2R, C2, C2>);
  route({"yuy2"}, {"yvyu"}, callFn<lumiYCbCr422ToYCrCb422_8u_C2R, C2, C2>);
  // 4:2:2 packed and planar.
  route({"yuy2"}, {"i422", "yv16"}, callFn<lumiYCbCr422_8u_C2P3R, C2, P3>);
  route({"yvyu"}, {"i422", "yv16"}, callFn<lumiYCrCb422ToYCbCr422_8u_C2P3R, C2, P3>);
  route({"uyvy"}, {"i422", "yv16"}, callFn<lumiCbYCr422ToYCbCr422_8u_C2P3R, C2, P3>);
  route({"i422", "yv16"}, {"yuy2"}, callFn<lumiYCbCr422_8u_P3C2R, P3, C2>);
  route({"i422", "yv16"}, {"uyvy"}, callFn<lumiYCbCr422ToCbYCr422_8u_P3C2R, P3, C2>);
  route({"i422", "yv16"}, {"yvyu"}, callFn<lumiYCbCr422ToYCrCb422_8u_P3C2R, P3, C2>);
  // 4:2:0 and 4:1:1, semi-planar and planar.
  route({"nv12"}, {"i420", "yv12"}, callFn<lumiYCbCr420_8u_P2P3R, P2, P3>);
  route({"i420", "yv12"}, {"nv12"}, callFn<lumiYCbCr420_8u_P3P2R, P3, P2>);
  route({"nv11"}, {"i411"}, callFn<lumiYCbCr411_8u_P2P3R, P2, P3>);
  route({"i411"}, {"nv11"}, callFn<lumiYCbCr411_8u_P3P2R, P3, P2>);
  // 4:2:2 to 4:2:0: the even rows' chroma.
  route({"yuy2"}, {"i420", "yv12"}, callFn<lumiYCbCr422ToYCbCr420_8u_C2P3R, C2, P3>);
  route({"yvyu"}, {"i420", "yv12"}, callFn<lumiYCrCb422ToYCbCr420_8u_C2P3R, C2, P3>);
  route({"uyvy"}, {"i420", "yv12"}, callFn<lumiCbYCr422ToYCbCr420_8u_C2P3R, C2, P3>);
  route({"yuy2"}, {"nv12"}, callFn<lumiYCbCr422ToYCbCr420_8u_C2P2R, C2, P2>);
  route({"yuy2"}, {"nv21"}, callFn<lumiYCbCr422ToYCrCb420_8u_C2P2R, C2, P2>);
  route({"uyvy"}, {"nv12"}, callFn<lumiCbYCr422ToYCbCr420_8u_C2P2R, C2, P2>);
  route({"i422", "yv16"}, {"i420", "yv12"}, callFn<lumiYCbCr422ToYCbCr420_8u_P3R, P3, P3>);
  route({"i422", "yv16"}, {"nv12"}, callFn<lumiYCbCr422ToYCbCr420_8u_P3P2R, P3, P2>);
  // 4:2:0 to 4:2:2: every chroma row twice.
  route({"i420", "yv12"}, {"i422", "yv16"}, callFn<lumiYCbCr420ToYCbCr422_8u_P3R, P3, P3>);
  route({"nv12"}, {"i422", "yv16"}, callFn<lumiYCbCr420ToYCbCr422_8u_P2P3R, P2, P3>);
  route({"nv12"}, {"yuy2"}, callFn<lumiYCbCr420ToYCbCr422_8u_P2C2R, P2, C2>);
  route({"nv12"}, {"uyvy"}, callFn<lumiYCbCr420ToCbYCr422_8u_P2C2R, P2, C2>);
  route({"i420", "yv12"}, {"yuy2"}, callFn<lumiYCrCb420ToYCbCr422_8u_P3C2R, P3, C2, true>);
  route({"i420", "yv12"}, {"uyvy"}, callFn<lumiYCrCb420ToCbYCr422_8u_P3C2R, P3, C2, true>);
  // 4:2:2 to 4:1:1: the even chroma samples.
  route({"yuy2"}, {"i411"}, callFn<lumiYCbCr422ToYCbCr411_8u_C2P3R, C2, P3>);
  route({"yvyu"}, {"i411"}, callFn<lumiYCrCb422ToYCbCr411_8u_C2P3R, C2, P3>);
  route({"uyvy"}, {"i411"}, callFn<lumiCbYCr422ToYCbCr411_8u_C2P3R, C2, P3>);
  route({"yuy2"}, {"nv11"}, callFn<lumiYCbCr422ToYCbCr411_8u_C2P2R, C2, P2>);
  route({"i422", "yv16"}, {"i411"}, callFn<lumiYCbCr422ToYCbCr411_8u_P3R, P3, P3>);
  route({"i422", "yv16"}, {"nv11"}, callFn<lumiYCbCr422ToYCbCr411_8u_P3P2R, P3, P2>);
  // 4:1:1 to 4:2:2: every chroma sample twice.
  route({"i411"}, {"i422", "yv16"}, callFn<lumiYCbCr411ToYCbCr422_8u_P3R, P3, P3>);
  route({"i411"}, {"yuy2"}, callFn<lumiYCbCr411ToYCbCr422_8u_P3C2R, P3, C2>);
  route({"i411"}, {"yvyu"}, callFn<lumiYCbCr411ToYCrCb422_8u_P3C2R, P3, C2>);
  route({"nv11"}, {"i422", "yv16"}, callFn<lumiYCbCr411ToYCbCr422_8u_P2P3R, P2, P3>);
  route({"nv11"}, {"yuy2"}, callFn<lumiYCbCr411ToYCbCr422_8u_P2C2R, P2, C2>);
  // 4:2:0 and 4:1:1 hold the same samples: exact reorders both ways.
  route({"nv12"}, {"i411"}, callFn<lumiYCbCr420ToYCbCr411_8u_P2P3R, P2, P3>);
  route({"i420", "yv12"}, {"nv11"}, callFn<lumiYCbCr420ToYCbCr411_8u_P3P2R, P3, P2>);
  route({"i420", "yv12"}, {"i411"}, i420ToI411);
  route({"i411"}, {"i420", "yv12"}, callFn<lumiYCbCr411ToYCbCr420_8u_P3R, P3, P3>);
  route({"i411"}, {"nv12"}, callFn<lumiYCbCr411ToYCbCr420_8u_P3P2R, P3, P2>);
  route({"nv11"}, {"i420", "yv12"}, callFn<lumiYCbCr411ToYCbCr420_8u_P2P3R, P2, P3>);
  // 16:2:0: even rows and samples kept, and interpolated back.
  route({"i420", "yv12"}, {"i1620"}, callFn<lumiYCbCr420To1620_8u_P3R, P3, P3>);
  route({"i1620"}, {"i420", "yv12"}, callFn<lumiYCbCr1620To420_8u_P3R, P3, P3>);
  return true;
}();

}  // namespace
}  // namespace lumcli
