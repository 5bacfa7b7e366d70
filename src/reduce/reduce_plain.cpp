// Plain quantisation (lumDitherOff): every sample normalised to 0..1, cut to
// a level and rounded up past half a level. The block body and the scalar
// tail compute the same lanes, save one thing kept on purpose: an 8-bit code
// saturates through 16 bits in the body and is read from its low 16 bits in
// the tail, which only far-out float sources can tell apart.
#include <bit>

#include "reduce/reduce_frame.h"

namespace lum::reduce {
namespace {

// Normalising factor of integer samples: 1/255 and 1/65535 as the library rounds them.
constexpr float kNorm8 = std::bit_cast<float>(0x3B808081u);
constexpr float kNorm16 = std::bit_cast<float>(0x37800080u);

template <class Fm>
struct Plain {
  using S = typename Fm::Src;
  using D = typename Fm::Dst;
  static constexpr float kOut = Fm::k8Dst ? 255.0f : 65535.0f;
  static constexpr float kNorm = Fm::k8uSrc ? kNorm8 : kNorm16;
  float L, r, h;

  explicit Plain(int levels) : L(float(levels - 1)), r(1.0f / L), h(0.5f / L) {}

  // The final code from trunc(q * kOut); body and tail part only in the 8-bit clamp.
  template <bool Tail>
  static D finish(int32_t i) {
    if constexpr (Fm::k8Dst) return D(clampI(Tail ? int32_t(int16_t(i)) : i, 255));
    // 16-bit codes: moved down by 32768, saturated to 16 signed bits, moved back for 16u.
    const int32_t v = sat16s(addW(i, -32768));
    return D(Fm::kBias ? v : v + 32768);
  }
  // One sample by the scalar rule (the tail).
  D pixel(S s) const {
    const float f = Fm::kFloatSrc ? float(s) : Fm::domain(s) * kNorm;
    float q = float(truncI(L * f)) * r;
    if (f - q > h) q = q + r;
    return finish<true>(truncI(q * kOut));
  }
  // Four samples p[0..3] by the block body.
  template <class O>
  void vblock(const S* p, D* d, int lanes) const {
    using F = typename O::F;
    F f = loadDomain<O, Fm>(p, 1);
    if constexpr (!Fm::kFloatSrc) f = O::mulf(f, O::setf(kNorm));
    F q = O::mulf(O::cvtif(O::cvttfi(O::mulf(O::setf(L), f))), O::setf(r));
    q = O::addf(q, O::andf(O::cmpltf(O::setf(h), O::subf(f, q)), O::setf(r)));
    alignas(16) int32_t t[4];
    O::store(t, O::cvttfi(O::mulf(q, O::setf(kOut))));
    for (int i = 0; i < lanes; ++i) storeAt(d + i, finish<false>(t[i]));
  }
};

template <class Fm, class O>
void plainImage(const Call& c, const Plain<Fm>& k) {
  using S = typename Fm::Src;
  using D = typename Fm::Dst;
  const bool ac4 = c.channels != c.pixelStride;
  for (int y = 0; y < c.roi.height; ++y) {
    const S* s = reinterpret_cast<const S*>(rowAt(c.src, y, c.srcStep));
    D* d = reinterpret_cast<D*>(rowAt(c.dst, y, c.dstStep));
    if (!ac4) {
      // One run of width * channels samples: 8 samples a step for 8u, else 4.
      const int n = c.roi.width * c.pixelStride;
      const int body = n & ~(Fm::k8uSrc ? 7 : 3);
      int i = 0;
      for (; i < body; i += 4) k.template vblock<O>(s + i, d + i, 4);
      for (; i < n; ++i) storeAt(d + i, k.pixel(loadAt(s + i)));
    } else {
      // Pixel by pixel (two a step for 8u): the source alpha is read and dropped.
      const int body = c.roi.width & ~(Fm::k8uSrc ? 1 : 0);
      int x = 0;
      for (; x < body; ++x) k.template vblock<O>(s + 4 * x, d + 4 * x, 3);
      for (; x < c.roi.width; ++x)
        for (int ch = 0; ch < 3; ++ch) storeAt(d + 4 * x + ch, k.pixel(loadAt(s + 4 * x + ch)));
    }
  }
}

}  // namespace

template <class Fm>
void plainQuantise(const Call& c) {
  const Plain<Fm> k(c.levels);
  lanes::with128([&](auto o) { plainImage<Fm, decltype(o)>(c, k); });
}

#define LUM_PLAIN(tag, S, D) template void plainQuantise<Form<S, D>>(const Call&);
LUM_REDUCE_FORMS(LUM_PLAIN)

}  // namespace lum::reduce
