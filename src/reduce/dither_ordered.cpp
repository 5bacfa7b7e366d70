// Ordered dither (lumDitherOrdered): each pixel quantised against a 4x4
// threshold matrix anchored at the region's first pixel, optionally shaken by
// noise. One threshold serves all channels of a pixel; pixels are independent,
// so the 4-pixel block computes the scalar rule lane by lane.
#include "reduce/reduce_frame.h"

namespace lum::reduce {
namespace {

// bayer_thresh: the integers 0..15 over 15, nearest floats, row y & 3, column x & 3.
constexpr float kBayer[4][4] = {{0.0f / 15, 8.0f / 15, 2.0f / 15, 10.0f / 15},
                                {12.0f / 15, 4.0f / 15, 14.0f / 15, 6.0f / 15},
                                {3.0f / 15, 11.0f / 15, 1.0f / 15, 9.0f / 15},
                                {15.0f / 15, 7.0f / 15, 13.0f / 15, 5.0f / 15}};

template <class Fm>
struct Ordered {
  using S = typename Fm::Src;
  using D = typename Fm::Dst;
  float step, inv;
  float scaled[4][4];  // kBayer * step, without noise
  Noise noise;
  bool noisy;
  Output out;

  Ordered(const Call& c, float L) : step(Fm::step(L)), inv(Fm::inv(L)), noisy(c.noise > 0) {
    for (int r = 0; r < 4; ++r)
      for (int k = 0; k < 4; ++k) scaled[r][k] = kBayer[r][k] * step;
    // The noise kernels of C1, C3 and AC4 round 16s8u and the float forms
    // half up and clamp 16s8u; the C4 noise kernels do neither.
    const bool rounds = noisy && !c.c4 && (Fm::kFloatSrc || (Fm::kSignedSrc && Fm::k8Dst));
    out.half = rounds;
    out.clamp = Fm::kShift == 0 || rounds;
  }
  float threshold(int x, int y) const {
    return noisy ? (noise.at(x, y) + kBayer[y & 3][x & 3]) * step : scaled[y & 3][x & 3];
  }
  // One sample against threshold t.
  D pixel(S s, float t) const {
    const float v = Fm::domain(s);
    float q = float(truncI(v * inv)) * step;
    if (t < v - q) q = q + step;
    return code<Fm>(q, out);
  }
  // Four samples p[0], p[stride], ... against the thresholds t.
  template <class O>
  void vblock(const S* p, D* d, int stride, typename O::F t) const {
    using F = typename O::F;
    const F v = loadDomain<O, Fm>(p, stride);
    const F st = O::setf(step);
    F q = O::mulf(O::cvtif(O::cvttfi(O::mulf(v, O::setf(inv)))), st);
    q = O::addf(q, O::andf(O::cmpltf(t, O::subf(v, q)), st));
    storeCodes<O>(d, stride, codeLanes<O, Fm>(q, out));
  }
};

template <class Fm, class O>
void orderedImage(const Call& c, const Ordered<Fm>& k) {
  using S = typename Fm::Src;
  using D = typename Fm::Dst;
  const int w = c.roi.width, n = c.pixelStride;
  const int body = w & ~3;
  for (int y = 0; y < c.roi.height; ++y) {
    const S* s = sampleRow<const S>(c.src, c.srcStep, y);
    D* d = sampleRow<D>(c.dst, c.dstStep, y);
    int x = 0;
    for (; x < body; x += 4) {
      typename O::F t;
      if (k.noisy) {
        alignas(16) float tt[4];
        for (int i = 0; i < 4; ++i) tt[i] = k.threshold(x + i, y);
        t = O::loadf(tt);
      } else {
        t = O::loadf(k.scaled[y & 3]);
      }
      const std::ptrdiff_t at = std::ptrdiff_t(x) * n;
      for (int ch = 0; ch < c.channels; ++ch) k.template vblock<O>(s + at + ch, d + at + ch, n, t);
    }
    for (; x < w; ++x) {
      const float t = k.threshold(x, y);
      const std::ptrdiff_t at = std::ptrdiff_t(x) * n;
      for (int ch = 0; ch < c.channels; ++ch) storeAt(d + at + ch, k.pixel(loadAt(s + at + ch), t));
    }
  }
}

}  // namespace

template <class Fm>
LumStatus orderedDither(const Call& c) {
  Ordered<Fm> k(c, float(c.levels - 1));
  if (k.noisy) {
    if (c.buffer == nullptr) return lumStatusNullPointer;
    k.noise = buildNoise(workArea(c.buffer), float(-c.noise) / 100.0f, float(c.noise) / 100.0f);
  }
  lanes::with128([&](auto o) { orderedImage<Fm, decltype(o)>(c, k); });
  return lumStatusOk;
}

#define LUM_ORDERED(tag, S, D) template LumStatus orderedDither<Form<S, D>>(const Call&);
LUM_REDUCE_FORMS(LUM_ORDERED)

}  // namespace lum::reduce
