// Error diffusion (Floyd-Steinberg, Jarvis-Judice-Ninke, Stucki): the error of
// each sample is gathered from the samples already visited, in single
// precision, pixel after pixel. The image runs once per channel, as planes,
// and the error rows are not cleared between channels on purpose: the first
// row of a channel sees the last rows of the one before.
#include <algorithm>
#include <bit>
#include <utility>

#include "reduce/reduce_frame.h"

namespace lum::reduce {
namespace {

// Weights of a three-row kind: centre, distance 1 and 2 of the rows c, p, pp
// (pp's far weight is 1); chosen once a call.
struct Weights {
  float wppC, wpC, wppN, wpN, wpF, wcN, wcF, factor;
};
constexpr Weights kJarvis{5.0f, 7.0f, 3.0f, 5.0f, 3.0f, 7.0f, 5.0f, 0.020833334f};
constexpr Weights kStucki{4.0f, 8.0f, 2.0f, 4.0f, 2.0f, 8.0f, 4.0f, 0.023809524f};

template <class Fm>
struct Diffuse {
  using S = typename Fm::Src;
  using D = typename Fm::Dst;
  float step, inv, half;
  Noise noise;
  bool noisy;
  bool fs;
  Weights wt;
  Output out;
  float bottom;

  Diffuse(const Call& c, int kind)
      : step(Fm::step(float(c.levels - 1))),
        inv(Fm::inv(float(c.levels - 1))),
        half(0.5f * step),
        noisy(c.noise > 0),
        fs(kind == lumDitherFloydSteinberg),
        wt(kind == lumDitherJarvisJudiceNinke ? kJarvis : kStucki) {
    // Floyd-Steinberg rounds 16s8u and the float forms half up; the three-row kinds do not.
    out.half = fs && (Fm::kFloatSrc || (Fm::kSignedSrc && Fm::k8Dst));
    // Floyd-Steinberg on a float source clamps below one ulp of 1 rather than below 0.
    bottom = fs && Fm::kFloatSrc ? 1.1920929e-7f : 0.0f;
  }

  // Error sum of Floyd-Steinberg; the order of the terms depends on the form.
  static float fsSum(const float* c, const float* p, int x) {
    if constexpr (Fm::kFloatSrc || (Fm::kSignedSrc && Fm::k8Dst))
      return ((p[x + 1] * 3.0f + p[x] * 5.0f) + p[x - 1]) + c[x - 1] * 7.0f;
    else
      return ((p[x + 1] * 3.0f + p[x - 1]) + p[x] * 5.0f) + c[x - 1] * 7.0f;
  }
  // Error sum of a three-row kind, its far terms read at column f.
  float rowsSum(const float* c, const float* p, const float* pp, int x, int f) const {
    const float first = (wt.wppC * pp[x] + wt.wpC * p[x]) + (wt.wcF * c[x - 2] + (pp[x - 2] + wt.wpF * p[x - 2]));
    const float second =
        (wt.wppN * pp[x + 1] + wt.wpN * p[x + 1]) + (wt.wcN * c[x - 1] + (wt.wppN * pp[x - 1] + wt.wpN * p[x - 1]));
    return ((first + second) + pp[f]) + p[f] * wt.wpF;
  }
  // Quantises v (domain value plus error), writes the code and the error of column x.
  D quantise(float v, float* c, int x, int y) const {
    if (v >= Fm::kTop) {
      c[x] = 0.0f;  // a clamped sample passes no error on
      return D(Fm::kOutMax + Fm::kBias);
    }
    if (v < bottom) {
      c[x] = 0.0f;
      return D(Fm::kBias);
    }
    float q = float(truncI(v * inv)) * step;
    const float t = noisy ? noise.at(x, y) : half;
    // q is never -0 here, so adding 0 where the test fails leaves it as it is;
    // the step is masked in integers, keeping the unpredictable test off the branch predictor.
    const uint32_t up = 0u - uint32_t(t < v - q);
    q = q + std::bit_cast<float>(std::bit_cast<uint32_t>(step) & up);
    c[x] = v - q;
    return code<Fm>(q, out);
  }
  // One row in flight: its samples, its error row c and the rows p and pp above.
  struct Row {
    const S* s;
    D* d;
    float* c;
    const float* p;
    const float* pp;
    int y;
  };
  // Pixel x of a row; n samples between two pixels, body the end of the 4-pixel blocks.
  template <bool Fs>
  void pixel(const Row& r, int x, int n, int body) const {
    const std::ptrdiff_t at = std::ptrdiff_t(x) * n;
    float e;
    if constexpr (Fs) {
      e = fsSum(r.c, r.p, x) * 0.0625f;
    } else {
      // In the 4-pixel blocks the fourth pixel repeats the far terms of the
      // third (column x + 1 instead of x + 2); the tail has the full filter.
      const int far = (x < body && (x & 3) == 3) ? x + 1 : x + 2;
      e = rowsSum(r.c, r.p, r.pp, x, far) * wt.factor;
    }
    storeAt(r.d + at, quantise(Fm::domain(loadAt(r.s + at)) + e, r.c, x, r.y));
  }
  // The rows of one group, row i kLag pixels behind row i - 1.
  template <bool Fs, int InFlight, int Lag>
  void group(const Row* job, int rows, int w, int n, int body) const {
    for (int j = 0; j < w + Lag * (rows - 1); ++j) {
      if (rows == InFlight && j >= Lag * (InFlight - 1) && j < w) {
        for (int i = 0; i < InFlight; ++i) pixel<Fs>(job[i], j - Lag * i, n, body);
        continue;
      }
      for (int i = 0; i < rows; ++i) {
        const int x = j - Lag * i;
        if (x >= 0 && x < w) pixel<Fs>(job[i], x, n, body);
      }
    }
  }
};

// Rows run in groups of kInFlight, each row kLag pixels behind the one above:
// a pixel reads the rows above no further than two columns ahead, and those
// columns are final, so every pixel sees what a row-by-row walk would give it;
// a row overwrites only columns that the rows still in flight have left behind.
// The groups give the processor independent chains to overlap.
constexpr int kInFlight = 8, kLag = 3;

}  // namespace

template <class Fm>
LumStatus errorDiffusion(const Call& c, int kind) {
  using S = typename Fm::Src;
  using D = typename Fm::Dst;
  if (c.buffer == nullptr) return lumStatusNullPointer;
  uint8_t* work = workArea(c.buffer);
  Diffuse<Fm> k(c, kind);
  if (k.noisy)
    k.noise = buildNoise(work, float(50 - c.noise) * k.step / 100.0f, float(50 + c.noise) * k.step / 100.0f);
  float* rows = reinterpret_cast<float*>(work + (k.noisy ? kErrorsAfterNoise : 0));
  const int w = c.roi.width, h = c.roi.height, n = c.pixelStride;
  const int body = w & ~3;
  // Rows with one pad float a side (Floyd-Steinberg) or two: the pads read as zero error.
  const int pad = k.fs ? 1 : 2;
  const std::ptrdiff_t len = std::ptrdiff_t(w) + 2 * pad;
  const int nRows = k.fs ? 2 : 3;
  std::memset(rows, 0, size_t(len) * size_t(nRows) * sizeof(float));
  // Floyd-Steinberg: r[0] the row above, r[1] the row written; they swap.
  // Three rows: r[0] = pp, r[1] = p, r[2] = c; the oldest becomes the next current one.
  float* r[3] = {rows + pad, rows + len + pad, rows + 2 * len + pad};
  for (int ch = 0; ch < c.channels; ++ch) {
    for (int y0 = 0; y0 < h; y0 += kInFlight) {
      const int rowsNow = std::min(kInFlight, h - y0);
      typename Diffuse<Fm>::Row job[kInFlight];
      for (int i = 0; i < rowsNow; ++i) {
        const int y = y0 + i;
        job[i] = {sampleRow<const S>(c.src, c.srcStep, y) + ch, sampleRow<D>(c.dst, c.dstStep, y) + ch,
                  k.fs ? r[1] : r[2], k.fs ? r[0] : r[1], r[0], y};
        if (k.fs) {
          std::swap(r[0], r[1]);
        } else {
          float* oldest = r[0];
          r[0] = r[1];
          r[1] = r[2];
          r[2] = oldest;
        }
      }
      if (k.fs) k.template group<true, kInFlight, kLag>(job, rowsNow, w, n, body);
      else k.template group<false, kInFlight, kLag>(job, rowsNow, w, n, body);
    }
  }
  return lumStatusOk;
}

#define LUM_DIFFUSE(tag, S, D) template LumStatus errorDiffusion<Form<S, D>>(const Call&, int);
LUM_REDUCE_FORMS(LUM_DIFFUSE)

}  // namespace lum::reduce
