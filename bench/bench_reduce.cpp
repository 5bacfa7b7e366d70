// Bit-depth reduction by each dither kind, and the one-bit bitmap. No peer:
// none of the installed libraries dithers to a number of levels.
#include <cstring>
#include <string>

#include "bench_support.h"

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
  add("ReduceBits_8u1u_C1R_threshold", "lumcc", oneBit(lumDitherOff));
  add("ReduceBits_8u1u_C1R_stucki", "lumcc", oneBit(lumDitherStucki));
  return true;
}();

}  // namespace
}  // namespace lumbench
