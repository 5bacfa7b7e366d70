// VNG demosaic to B, G, R and an untouched fourth sample: eight gradients on the
// 5x5 neighbourhood, a threshold that selects the smooth directions, and the
// mean colour differences over them added to the pixel's own sample. The two
// outer rings repeat the nearest computed pixel.
#include <algorithm>
#include <cstdlib>

#include "demosaic/bayer_lanes.h"
#include "frame/check.h"
#include "frame/lanes.h"
#include "kernels/primitives.h"

namespace lum::bayer {
namespace {

// Gradients of the eight directions, in the order N, E, S, W, NE, SE, NW, SW,
// and the three colour sums of each: own colour, first and second other colour.
struct Directions {
  int grad[8], own[8], first[8], second[8];
};

// The directions of the pixel at column x; r[k] is row y - 2 + k.
template <class T>
Directions directions(const T* const* r, std::ptrdiff_t x, bool green) {
  auto p = [&](int dy, int dx) { return int(loadAt(r[2 + dy] + x + dx)); };
  auto d = [](int a, int b) { return std::abs(a - b); };
  const int c = p(0, 0);
  Directions o;
  int* g = o.grad;
  g[0] = 2 * (d(p(-1, 0), p(1, 0)) + d(p(-2, 0), c)) + d(p(-1, -1), p(1, -1)) + d(p(-1, 1), p(1, 1)) +
         d(p(-2, -1), p(0, -1)) + d(p(-2, 1), p(0, 1));
  g[1] = 2 * (d(p(0, 1), p(0, -1)) + d(p(0, 2), c)) + d(p(-1, 1), p(-1, -1)) + d(p(1, 1), p(1, -1)) +
         d(p(-1, 2), p(-1, 0)) + d(p(1, 2), p(1, 0));
  g[2] = 2 * (d(p(1, 0), p(-1, 0)) + d(p(2, 0), c)) + d(p(1, 1), p(-1, 1)) + d(p(1, -1), p(-1, -1)) +
         d(p(2, 1), p(0, 1)) + d(p(2, -1), p(0, -1));
  g[3] = 2 * (d(p(0, -1), p(0, 1)) + d(p(0, -2), c)) + d(p(1, -1), p(1, 1)) + d(p(-1, -1), p(-1, 1)) +
         d(p(1, -2), p(1, 0)) + d(p(-1, -2), p(-1, 0));
  if (green) {
    g[4] = 2 * (d(p(0, -1), p(-2, 1)) + d(p(1, 0), p(-1, 2)) + d(c, p(-2, 2)) + d(p(1, -1), p(-1, 1)));
    g[5] = 2 * (d(p(0, -1), p(2, 1)) + d(p(-1, 0), p(1, 2)) + d(c, p(2, 2)) + d(p(-1, -1), p(1, 1)));
    g[6] = 2 * (d(p(-2, -1), p(0, 1)) + d(p(-1, -2), p(1, 0)) + d(p(-1, -1), p(1, 1)) + d(p(-2, -2), c));
    g[7] = 2 * (d(p(2, -1), p(0, 1)) + d(p(-1, 0), p(1, -2)) + d(p(-1, 1), p(1, -1)) + d(c, p(2, -2)));
  } else {
    // NW measures its first two single terms on the same pairs as SE.
    g[4] = 2 * (d(p(-2, 2), c) + d(p(-1, 1), p(1, -1))) + d(p(-1, 0), p(0, -1)) + d(p(0, 1), p(1, 0)) +
           d(p(-2, 1), p(-1, 0)) + d(p(-1, 2), p(0, 1));
    g[5] = 2 * (d(p(2, 2), c) + d(p(1, 1), p(-1, -1))) + d(p(0, -1), p(1, 0)) + d(p(-1, 0), p(0, 1)) +
           d(p(1, 2), p(0, 1)) + d(p(2, 1), p(1, 0));
    g[6] = 2 * (d(p(-2, -2), c) + d(p(-1, -1), p(1, 1))) + d(p(0, -1), p(1, 0)) + d(p(-1, 0), p(0, 1)) +
           d(p(-1, -2), p(0, -1)) + d(p(-2, -1), p(-1, 0));
    g[7] = 2 * (d(p(2, -2), c) + d(p(1, -1), p(-1, 1))) + d(p(1, 0), p(0, 1)) + d(p(0, -1), p(-1, 0)) +
           d(p(2, -1), p(1, 0)) + d(p(1, -2), p(0, -1));
  }
  // Sums A (own colour at a red or blue site, horizontal colour at a green
  // site), B (green), C (the third colour) per direction.
  int A[8], B[8], C[8];
  if (green) {
    const int a[8] = {p(-2, 1) + p(-2, -1), 2 * p(0, 1),           p(2, 1) + p(2, -1),    2 * p(0, -1),
                      p(0, 1) + p(-2, 1),   p(0, 1) + p(2, 1),     p(0, -1) + p(-2, -1),  p(0, -1) + p(2, -1)};
    const int b[8] = {p(-2, 0) + c,   p(0, 2) + c,   p(2, 0) + c,    p(0, -2) + c,
                      2 * p(-1, 1),   2 * p(1, 1),   2 * p(-1, -1),  2 * p(1, -1)};
    const int e[8] = {2 * p(-1, 0),          p(-1, 2) + p(1, 2),   2 * p(1, 0),           p(-1, -2) + p(1, -2),
                      p(-1, 2) + p(-1, 0),   p(1, 2) + p(1, 0),    p(-1, 0) + p(-1, -2),  p(1, 0) + p(1, -2)};
    std::copy(a, a + 8, A), std::copy(b, b + 8, B), std::copy(e, e + 8, C);
  } else {
    const int a[8] = {p(-2, 0) + c,  p(0, 2) + c,  p(2, 0) + c,   p(0, -2) + c,
                      p(-2, 2) + c,  p(2, 2) + c,  p(-2, -2) + c, p(2, -2) + c};
    const int b[8] = {2 * p(-1, 0),
                      2 * p(0, 1),
                      2 * p(1, 0),
                      2 * p(0, -1),
                      (p(-2, 1) + p(-1, 0) + p(0, 1) + p(-1, 2)) >> 1,
                      (p(0, 1) + p(1, 0) + p(2, 1) + p(1, 2)) >> 1,
                      (p(-2, -1) + p(-1, -2) + p(-1, 0) + p(0, -1)) >> 1,
                      (p(0, -1) + p(1, -2) + p(2, -1) + p(1, 0)) >> 1};
    const int e[8] = {p(-1, -1) + p(-1, 1), p(-1, 1) + p(1, 1), p(1, 1) + p(1, -1), p(-1, -1) + p(1, -1),
                      2 * p(-1, 1),         2 * p(1, 1),        2 * p(-1, -1),      2 * p(1, -1)};
    std::copy(a, a + 8, A), std::copy(b, b + 8, B), std::copy(e, e + 8, C);
  }
  // own is A at a red or blue site and B at a green site; first the other of the two.
  std::copy(green ? B : A, (green ? B : A) + 8, o.own);
  std::copy(green ? A : B, (green ? A : B) + 8, o.first);
  std::copy(C, C + 8, o.second);
  return o;
}

// The two computed colours of a pixel, before saturation: r1 (green at a red or
// blue site, the horizontal colour at a green site) and r2 (the third colour).
struct Computed {
  int c, r1, r2;
};

template <class T>
Computed vngColours(const T* const* r, std::ptrdiff_t x, bool green) {
  const Directions o = directions(r, x, green);
  const int gMin = *std::min_element(o.grad, o.grad + 8), gMax = *std::max_element(o.grad, o.grad + 8);
  const int t = gMin + std::max(gMax >> 1, 1);
  int n = 0, own = 0, first = 0, second = 0;
  for (int k = 0; k < 8; ++k)
    if (o.grad[k] < t) {
      ++n;
      own += o.own[k];
      first += o.first[k];
      second += o.second[k];
    }
  // One single-precision division each, rounded to nearest under the caller's mode.
  const float d = float(2 * n);
  const int c = int(loadAt(r[2] + x));
  return {c, c + lanes::emu::cvtNearest(float(first - own) / d), c + lanes::emu::cvtNearest(float(second - own) / d)};
}

// How the computed colours saturate: to the sample range, or (the single-pixel
// step of 16u) to the signed 16-bit range, read back as unsigned.
enum class Sat { Range, Signed16 };

template <class T>
int saturateComputed(int v, Sat s) {
  if (s == Sat::Signed16) return int(uint16_t(int16_t(std::clamp(v, -32768, 32767))));
  return saturate(v, kMaxOf<T>);
}

// One interior pixel: B, G, R with the gains, the fourth sample left alone.
template <class T>
void vngPixel(const T* const* r, std::ptrdiff_t x, const Site& s, const float* gain, Sat sat, T* out) {
  const Computed k = vngColours(r, x, s.green());
  int v[3];
  v[s.own] = k.c;
  v[s.green() ? s.horiz : kGreen] = saturateComputed<T>(k.r1, sat);
  v[s.green() ? s.vert : s.diag()] = saturateComputed<T>(k.r2, sat);
  // Gains multiply in single precision, round to nearest and saturate.
  const int bgr[3] = {v[kBlue], v[kGreen], v[kRed]};
  for (int i = 0; i < 3; ++i)
    storeAt(out + i, T(saturate(lanes::emu::cvtNearest(float(bgr[i]) * gain[i]), kMaxOf<T>)));
}

// The same arithmetic on kPixels pixels from column x, one pixel a lane: both
// diagonal forms and both sets of sums are computed and chosen by the row's
// lane mask.
template <class O, class T>
void vngBlock(const T* const* r, std::ptrdiff_t x, RowLanes rl, const float* gain, T* out) {
  const int own = rl.own;
  using B = BlockOps<O, T>;
  using V = typename O::V;
  const V even = B::evenLanes(), one = B::c(1);
  const V cm = rl.colourEven ? even : O::andnot(even, B::c(-1));
  for (int h = 0; h < 2; ++h) {
    V q[5][5];
    for (int dy = 0; dy < 5; ++dy)
      for (int dx = 0; dx < 5; ++dx) q[dy][dx] = B::half(r[dy] + x + dx - 2, h);
    auto p = [&](int dy, int dx) { return q[dy + 2][dx + 2]; };
    auto d = [&](V a, V b) { return B::absDiff(a, b); };
    auto add = [&](auto... v) { V s = B::c(0); ((s = B::add(s, v)), ...); return s; };
    auto twice = [&](V a) { return B::add(a, a); };
    auto sel = [&](V a, V b) { return B::select(cm, a, b); };  // colour lanes a, green lanes b
    const V c = p(0, 0);
    V g[8];
    g[0] = add(twice(add(d(p(-1, 0), p(1, 0)), d(p(-2, 0), c))), d(p(-1, -1), p(1, -1)), d(p(-1, 1), p(1, 1)),
               d(p(-2, -1), p(0, -1)), d(p(-2, 1), p(0, 1)));
    g[1] = add(twice(add(d(p(0, 1), p(0, -1)), d(p(0, 2), c))), d(p(-1, 1), p(-1, -1)), d(p(1, 1), p(1, -1)),
               d(p(-1, 2), p(-1, 0)), d(p(1, 2), p(1, 0)));
    g[2] = add(twice(add(d(p(1, 0), p(-1, 0)), d(p(2, 0), c))), d(p(1, 1), p(-1, 1)), d(p(1, -1), p(-1, -1)),
               d(p(2, 1), p(0, 1)), d(p(2, -1), p(0, -1)));
    g[3] = add(twice(add(d(p(0, -1), p(0, 1)), d(p(0, -2), c))), d(p(1, -1), p(1, 1)), d(p(-1, -1), p(-1, 1)),
               d(p(1, -2), p(1, 0)), d(p(-1, -2), p(-1, 0)));
    g[4] = sel(add(twice(add(d(p(-2, 2), c), d(p(-1, 1), p(1, -1)))), d(p(-1, 0), p(0, -1)), d(p(0, 1), p(1, 0)),
                   d(p(-2, 1), p(-1, 0)), d(p(-1, 2), p(0, 1))),
               twice(add(d(p(0, -1), p(-2, 1)), d(p(1, 0), p(-1, 2)), d(c, p(-2, 2)), d(p(1, -1), p(-1, 1)))));
    g[5] = sel(add(twice(add(d(p(2, 2), c), d(p(1, 1), p(-1, -1)))), d(p(0, -1), p(1, 0)), d(p(-1, 0), p(0, 1)),
                   d(p(1, 2), p(0, 1)), d(p(2, 1), p(1, 0))),
               twice(add(d(p(0, -1), p(2, 1)), d(p(-1, 0), p(1, 2)), d(c, p(2, 2)), d(p(-1, -1), p(1, 1)))));
    g[6] = sel(add(twice(add(d(p(-2, -2), c), d(p(-1, -1), p(1, 1)))), d(p(0, -1), p(1, 0)), d(p(-1, 0), p(0, 1)),
                   d(p(-1, -2), p(0, -1)), d(p(-2, -1), p(-1, 0))),
               twice(add(d(p(-2, -1), p(0, 1)), d(p(-1, -2), p(1, 0)), d(p(-1, -1), p(1, 1)), d(p(-2, -2), c))));
    g[7] = sel(add(twice(add(d(p(2, -2), c), d(p(1, -1), p(-1, 1)))), d(p(1, 0), p(0, 1)), d(p(0, -1), p(-1, 0)),
                   d(p(2, -1), p(1, 0)), d(p(1, -2), p(0, -1))),
               twice(add(d(p(2, -1), p(0, 1)), d(p(-1, 0), p(1, -2)), d(p(-1, 1), p(1, -1)), d(c, p(2, -2)))));
    // Sums of the colour-site columns A, B, C and of the green-site ones.
    const V cA[8] = {add(p(-2, 0), c), add(p(0, 2), c), add(p(2, 0), c), add(p(0, -2), c),
                     add(p(-2, 2), c), add(p(2, 2), c), add(p(-2, -2), c), add(p(2, -2), c)};
    const V cB[8] = {twice(p(-1, 0)), twice(p(0, 1)), twice(p(1, 0)), twice(p(0, -1)),
                     B::shr(add(p(-2, 1), p(-1, 0), p(0, 1), p(-1, 2)), 1),
                     B::shr(add(p(0, 1), p(1, 0), p(2, 1), p(1, 2)), 1),
                     B::shr(add(p(-2, -1), p(-1, -2), p(-1, 0), p(0, -1)), 1),
                     B::shr(add(p(0, -1), p(1, -2), p(2, -1), p(1, 0)), 1)};
    const V cC[8] = {add(p(-1, -1), p(-1, 1)), add(p(-1, 1), p(1, 1)), add(p(1, 1), p(1, -1)), add(p(-1, -1), p(1, -1)),
                     twice(p(-1, 1)), twice(p(1, 1)), twice(p(-1, -1)), twice(p(1, -1))};
    const V gA[8] = {add(p(-2, 1), p(-2, -1)), twice(p(0, 1)), add(p(2, 1), p(2, -1)), twice(p(0, -1)),
                     add(p(0, 1), p(-2, 1)), add(p(0, 1), p(2, 1)), add(p(0, -1), p(-2, -1)), add(p(0, -1), p(2, -1))};
    const V gC[8] = {twice(p(-1, 0)), add(p(-1, 2), p(1, 2)), twice(p(1, 0)), add(p(-1, -2), p(1, -2)),
                     add(p(-1, 2), p(-1, 0)), add(p(1, 2), p(1, 0)), add(p(-1, 0), p(-1, -2)), add(p(1, 0), p(1, -2))};
    // The green-site B column is the colour-site A column with its diagonals doubled.
    const V gB[8] = {cA[0], cA[1], cA[2], cA[3], twice(p(-1, 1)), twice(p(1, 1)), twice(p(-1, -1)), twice(p(1, -1))};
    V gMin = g[0], gMax = g[0];
    for (int k = 1; k < 8; ++k) gMin = B::min(gMin, g[k]), gMax = B::max(gMax, g[k]);
    const V t = B::add(gMin, B::max(B::shr(gMax, 1), one));
    V n = B::c(0), sOwn = n, sFirst = n, sSecond = n;
    for (int k = 0; k < 8; ++k) {
      const V m = B::less(g[k], t);
      n = B::add(n, O::and_(m, one));
      sOwn = B::add(sOwn, O::and_(m, sel(cA[k], gB[k])));
      sFirst = B::add(sFirst, O::and_(m, sel(cB[k], gA[k])));
      sSecond = B::add(sSecond, O::and_(m, sel(cC[k], gC[k])));
    }
    auto divide = [](auto a, auto b) { return O::divf(a, b); };
    const V n2 = twice(n);
    const V r1 = B::clampSample(B::add(c, B::viaFloat(B::sub(sFirst, sOwn), n2, divide)));
    const V r2 = B::clampSample(B::add(c, B::viaFloat(B::sub(sSecond, sOwn), n2, divide)));
    V v[3];
    v[own] = sel(c, r1);
    v[kGreen] = sel(r1, c);
    v[otherColour(own)] = r2;
    // Gains for B, G, R.
    V ch[3];
    for (int k = 0; k < 3; ++k) {
      const float gk = gain[2 - k];
      ch[k] = B::clampSample(B::viaFloat(v[k], v[k], [gk](auto a, auto) { return O::mulf(a, O::setf(gk)); }));
    }
    storeBGRKeep<O, T>(out, h, ch);
  }
}

// One interior row of n pixels from image column x0. Only 16u has a
// single-pixel step that differs from its block steps; it meets the row's last
// pixel when n is odd.
template <class T>
void vngRow(const T* const* r, int grid, std::ptrdiff_t x0, std::ptrdiff_t y, std::ptrdiff_t n, const float* gain,
            T* out) {
  const std::ptrdiff_t lastSingle = (std::is_same_v<T, Lum16u> && (n & 1)) ? n - 1 : -1;
  std::ptrdiff_t i = eachBlock<T>(grid, x0, y, n, [&](auto o, std::ptrdiff_t at, RowLanes rl) {
    vngBlock<decltype(o), T>(r, x0 + at, rl, gain, out + 4 * at);
  });
  for (; i < n; ++i)
    vngPixel(r, x0 + i, siteAt(grid, x0 + i, y), gain, i == lastSingle ? Sat::Signed16 : Sat::Range, out + 4 * i);
}

template <class T>
LumStatus vng(const T* pSrc, LumRectL rc, LumSizeL img, LumLong srcStep, const Lum32f* pScale, T* pDst,
              LumLong dstStep, int grid) {
  if (LumStatus s = check::bayer(pSrc, pDst, img.width, img.height, 5, grid)) return s;
  if (rc.width < 1 || rc.height < 1) return lumStatusOk;
  const LumLong W = img.width, H = img.height;
  // The interior: the region within columns and rows 2 .. side - 3, last ones included.
  const LumLong ix0 = std::max<LumLong>(rc.x, 2), ix1 = std::min<LumLong>(rc.x + rc.width - 1, W - 3);
  const LumLong iy0 = std::max<LumLong>(rc.y, 2), iy1 = std::min<LumLong>(rc.y + rc.height - 1, H - 3);
  if (ix1 < ix0 || iy1 < iy0) return lumStatusOk;  // no computed pixel to repeat: nothing is written
  const float ones[3] = {1.0f, 1.0f, 1.0f};
  const float* gain = pScale ? pScale : ones;
  const Mosaic<T> m{pSrc, srcStep, W, H};
  constexpr LumLong P = 4 * LumLong(sizeof(T));
  auto dstAt = [&](LumLong x, LumLong y) {
    return reinterpret_cast<Lum8u*>(rowOf(pDst, y - rc.y, dstStep)) + P * (x - rc.x);
  };
  for (LumLong y = iy0; y <= iy1; ++y) {
    const T* r[5] = {m.row(y - 2), m.row(y - 1), m.row(y), m.row(y + 1), m.row(y + 2)};
    vngRow(r, grid, ix0, y, ix1 - ix0 + 1, gain, reinterpret_cast<T*>(dstAt(ix0, y)));
  }

  // The border repeats whole pixels, columns first, so that the rows carry the corners.
  auto copy = [&](LumLong fromX, LumLong fromY, LumLong toX, LumLong toY, LumLong pixels, LumLong rows) {
    lumiCopy_8u_C1R_L(dstAt(fromX, fromY), dstStep, dstAt(toX, toY), dstStep, {pixels * P, rows});
  };
  const LumLong rows = iy1 - iy0 + 1;
  if (rc.x == 0) copy(ix0, iy0, ix0 - 2, iy0, 1, rows);
  if (rc.x < 2) copy(ix0, iy0, ix0 - 1, iy0, 1, rows);
  if (rc.x + rc.width >= W - 2) copy(ix1, iy0, ix1 + 1, iy0, 1, rows);
  if (rc.x + rc.width >= W - 1) copy(ix1, iy0, ix1 + 2, iy0, 1, rows);
  // Rows span the region's columns that lie in the image.
  const LumLong sx0 = std::max<LumLong>(rc.x, 0), span = std::min<LumLong>(rc.x + rc.width, W) - sx0;
  if (rc.y == 0) copy(sx0, iy0, sx0, iy0 - 2, span, 1);
  if (rc.y < 2) copy(sx0, iy0, sx0, iy0 - 1, span, 1);
  if (rc.y + rc.height >= H - 2) copy(sx0, iy1, sx0, iy1 + 1, span, 1);
  if (rc.y + rc.height >= H - 1) copy(sx0, iy1, sx0, iy1 + 2, span, 1);
  return lumStatusOk;
}

}  // namespace
}  // namespace lum::bayer

extern "C" {

LumStatus lumiCFAToBGRA_VNG_8u_C1C4R_L(const Lum8u* pSrc, LumRectL srcRect, LumSizeL imageSize, LumLong srcStep,
                                       const Lum32f* pScale, Lum8u* pDst, LumLong dstStep, LumCfaGrid cfaGrid) {
  return lum::bayer::vng(pSrc, srcRect, imageSize, srcStep, pScale, pDst, dstStep, int(cfaGrid));
}
LumStatus lumiCFAToBGRA_VNG_16u_C1C4R_L(const Lum16u* pSrc, LumRectL srcRect, LumSizeL imageSize, LumLong srcStep,
                                        const Lum32f* pScale, Lum16u* pDst, LumLong dstStep, LumCfaGrid cfaGrid) {
  return lum::bayer::vng(pSrc, srcRect, imageSize, srcStep, pScale, pDst, dstStep, int(cfaGrid));
}
LumStatus lumiCFAToBGRA_VNG_8u_C1C4R(const Lum8u* pSrc, LumRect srcRect, LumSize imageSize, int srcStep,
                                     const Lum32f* pScale, Lum8u* pDst, int dstStep, LumCfaGrid cfaGrid) {
  return lumiCFAToBGRA_VNG_8u_C1C4R_L(pSrc, {srcRect.x, srcRect.y, srcRect.width, srcRect.height},
                                      {imageSize.width, imageSize.height}, srcStep, pScale, pDst, dstStep, cfaGrid);
}
LumStatus lumiCFAToBGRA_VNG_16u_C1C4R(const Lum16u* pSrc, LumRect srcRect, LumSize imageSize, int srcStep,
                                      const Lum32f* pScale, Lum16u* pDst, int dstStep, LumCfaGrid cfaGrid) {
  return lumiCFAToBGRA_VNG_16u_C1C4R_L(pSrc, {srcRect.x, srcRect.y, srcRect.width, srcRect.height},
                                       {imageSize.width, imageSize.height}, srcStep, pScale, pDst, dstStep, cfaGrid);
}

}  // extern "C"
