// Bit-depth reduction by each dither kind, and the one-bit bitmap. Peers, when
// installed: libyuv's 4x4 ordered dither of ARGB to RGB565 (against ours to 32
// levels in four channels), and ImageMagick's ordered dither and Floyd-Steinberg
// remap to a fixed palette of levels (against ours in one and three channels).
#include <cstring>
#include <string>

#include "bench_support.h"

#ifdef LUM_BENCH_LIBYUV
#include <libyuv.h>
#endif
#ifdef LUM_BENCH_MAGICK
#include <Magick++.h>
#endif

namespace lumbench {
namespace {

template <class S, class D>
using ReduceFn = LumStatus (*)(const S*, int, D*, int, LumSize, int, LumDitherKind, int, Lum8u*);

// One image of ch-channel S samples reduced to D samples by fn at this kind.
template <class S, class D>
MakeWork reduce(ReduceFn<S, D> fn, int ch, LumDitherKind kind, int noise, int levels) {
  return [=](Size s) {
    auto src = std::make_shared<Plane>(s.w * ch * int(sizeof(S)), s.h, 1);
    if constexpr (std::is_same_v<S, Lum32f>) {
      std::mt19937 rng(1);
      for (size_t i = 0; i + 4 <= src->bytes.size(); i += 4) {
        const float v = float(rng() % 1000) / 1000.0f;
        std::memcpy(src->bytes.data() + i, &v, 4);
      }
    }
    auto dst = std::make_shared<Plane>(s.w * ch * int(sizeof(D)), s.h, 2);
    int n = 0;
    lumiReduceBitsGetBufferSize(ch == 1 ? 1 : 3, {s.w, s.h}, noise, kind, &n);
    auto buf = std::make_shared<std::vector<Lum8u>>(size_t(n) + 1);
    return Work([=] {
      fn(reinterpret_cast<const S*>(src->data()), src->step, reinterpret_cast<D*>(dst->data()), dst->step,
         LumSize{s.w, s.h}, noise, kind, levels, buf->data());
    });
  };
}

MakeWork oneBit(LumDitherKind kind) {
  return [=](Size s) {
    auto src = std::make_shared<Plane>(s.w, s.h, 1);
    auto dst = std::make_shared<Plane>((s.w + 7) / 8, s.h, 2);
    auto buf = std::make_shared<std::vector<Lum8u>>(size_t(12 * s.w + 128));
    return Work([=] {
      lumiReduceBits_8u1u_C1R(src->data(), src->step, dst->data(), dst->step, 0, LumSize{s.w, s.h}, 0, 0, kind, 127,
                              buf->data());
    });
  };
}

#ifdef LUM_BENCH_LIBYUV
// libyuv: ARGB (4 bytes) to RGB565 (2 bytes) with its default 4x4 matrix; the
// alpha byte is dropped, the three colours go to 32, 64 and 32 levels.
MakeWork libyuv565() {
  return [=](Size s) {
    auto src = std::make_shared<Plane>(s.w * 4, s.h, 1);
    auto dst = std::make_shared<Plane>(s.w * 2, s.h, 2);
    return Work([=] {
      libyuv::ARGBToRGB565Dither(src->data(), src->step, dst->data(), dst->step, nullptr, s.w, s.h);
    });
  };
}
#endif

#ifdef LUM_BENCH_MAGICK
// ImageMagick on one thread: an image of ch 8-bit channels ("I" gray or "RGB")
// from the same random bytes as ours, held at its own 16-bit quantum.
std::shared_ptr<Magick::Image> magickImage(Size s, int ch) {
  static const bool once = [] {
    Magick::InitializeMagick(nullptr);
    Magick::ResourceLimits::thread(1);
    return true;
  }();
  (void)once;
  Plane src(s.w * ch, s.h, 1);
  std::vector<uint8_t> packed(size_t(s.w) * size_t(ch) * size_t(s.h));
  for (int y = 0; y < s.h; ++y)
    std::memcpy(packed.data() + size_t(y) * size_t(s.w * ch), src.data() + size_t(y) * size_t(src.step),
                size_t(s.w * ch));
  auto img = std::make_shared<Magick::Image>(size_t(s.w), size_t(s.h), ch == 1 ? "I" : "RGB", Magick::CharPixel,
                                             packed.data());
  if (ch == 1) img->type(Magick::GrayscaleType);
  return img;
}

// Ordered dither to `levels` levels per channel with the 4x4 map ("o4x4,N").
// The operation works in place, so each run first copies the prepared image:
// the peer's time includes that copy of the whole image.
MakeWork magickOrdered(int ch, int levels) {
  return [=](Size s) {
    auto prepared = magickImage(s, ch);
    const std::string map = "o4x4," + std::to_string(levels);
    return Work([=] {
      Magick::Image work(*prepared);
      work.orderedDither(map);
    });
  };
}

// Floyd-Steinberg error diffusion onto a fixed palette of `levels` levels per
// channel (levels gray colours, or levels^3 RGB colours). In place as above:
// each run copies the prepared image first, and that copy is in the peer's time.
MakeWork magickFloydSteinberg(int ch, int levels) {
  return [=](Size s) {
    auto prepared = magickImage(s, ch);
    std::vector<uint8_t> pal;
    for (int r = 0; r < (ch == 1 ? 1 : levels); ++r)
      for (int g = 0; g < (ch == 1 ? 1 : levels); ++g)
        for (int b = 0; b < levels; ++b) {
          if (ch == 1) {
            pal.push_back(uint8_t(b * 255 / (levels - 1)));
          } else {
            pal.push_back(uint8_t(r * 255 / (levels - 1)));
            pal.push_back(uint8_t(g * 255 / (levels - 1)));
            pal.push_back(uint8_t(b * 255 / (levels - 1)));
          }
        }
    const size_t colours = pal.size() / size_t(ch);
    auto palette = std::make_shared<Magick::Image>(colours, size_t(1), ch == 1 ? "I" : "RGB", Magick::CharPixel,
                                                   pal.data());
    if (ch == 1) palette->type(Magick::GrayscaleType);
    return Work([=] {
      Magick::Image work(*prepared);
      work.quantizeDitherMethod(Magick::FloydSteinbergDitherMethod);
      work.map(*palette, true);
    });
  };
}
#endif

struct KindRow {
  const char* name;
  LumDitherKind kind;
  int noise;
};
const KindRow kKinds[] = {{"off", lumDitherOff, 0},
                          {"ordered", lumDitherOrdered, 0},
                          {"orderedNoise", lumDitherOrdered, 30},
                          {"fs", lumDitherFloydSteinberg, 0},
                          {"fsNoise", lumDitherFloydSteinberg, 30},
                          {"jjn", lumDitherJarvisJudiceNinke, 0},
                          {"stucki", lumDitherStucki, 0}};

const bool kRegistered = [] {
  for (const KindRow& k : kKinds) {
    const std::string n = std::string("_") + k.name;
    add("ReduceBits_8u_C1R" + n, "lumcc", reduce<Lum8u, Lum8u>(lumiReduceBits_8u_C1R, 1, k.kind, k.noise, 4));
    add("ReduceBits_8u_C3R" + n, "lumcc", reduce<Lum8u, Lum8u>(lumiReduceBits_8u_C3R, 3, k.kind, k.noise, 4));
    add("ReduceBits_16u_C1R" + n, "lumcc", reduce<Lum16u, Lum16u>(lumiReduceBits_16u_C1R, 1, k.kind, k.noise, 64));
    add("ReduceBits_32f8u_C1R" + n, "lumcc", reduce<Lum32f, Lum8u>(lumiReduceBits_32f8u_C1R, 1, k.kind, k.noise, 16));
  }
  // Four channels with ordered dither: 32 levels is the one compared with
  // libyuv's RGB565 (5 bits in red and blue, 6 in green); 64 for reference.
  for (int levels : {32, 64}) {
    const std::string n = "_ordered" + std::to_string(levels);
    add("ReduceBits_8u_C4R" + n, "lumcc", reduce<Lum8u, Lum8u>(lumiReduceBits_8u_C4R, 4, lumDitherOrdered, 0, levels));
    add("ReduceBits_8u_AC4R" + n, "lumcc", reduce<Lum8u, Lum8u>(lumiReduceBits_8u_AC4R, 4, lumDitherOrdered, 0, levels));
  }
#ifdef LUM_BENCH_LIBYUV
  add("ReduceBits_8u_C4R_ordered32", "libyuv", libyuv565());
  add("ReduceBits_8u_AC4R_ordered32", "libyuv", libyuv565());
#endif
#ifdef LUM_BENCH_MAGICK
  add("ReduceBits_8u_C1R_ordered", "magick", magickOrdered(1, 4));
  add("ReduceBits_8u_C3R_ordered", "magick", magickOrdered(3, 4));
  add("ReduceBits_8u_C1R_fs", "magick", magickFloydSteinberg(1, 4));
  add("ReduceBits_8u_C3R_fs", "magick", magickFloydSteinberg(3, 4));
#endif
  add("ReduceBits_8u1u_C1R_threshold", "lumcc", oneBit(lumDitherOff));
  add("ReduceBits_8u1u_C1R_stucki", "lumcc", oneBit(lumDitherStucki));
  return true;
}();

}  // namespace
}  // namespace lumbench
