// Bilinear demosaic to interleaved R, G, B: neighbourhood means, with green at
// red and blue sites interpolated along the smoother of the two axes in the
// interior and plain means over the neighbours that exist in the two outer rings.
#include <algorithm>
#include <cstdlib>
#include <type_traits>

#include "demosaic/bayer.h"
#include "demosaic/bayer_lanes.h"
#include "frame/check.h"

namespace lum::bayer {
namespace {

// Mean of the orthogonal neighbours that exist: four, three (the one opposite
// the missing neighbour counted twice) or two at a corner.
template <class T>
int borderCross(const Mosaic<T>& m, std::ptrdiff_t x, std::ptrdiff_t y) {
  const bool up = m.has(x, y - 1), dn = m.has(x, y + 1), lf = m.has(x - 1, y), rt = m.has(x + 1, y);
  const int u = up ? m.at(x, y - 1) : 0, d = dn ? m.at(x, y + 1) : 0;
  const int l = lf ? m.at(x - 1, y) : 0, r = rt ? m.at(x + 1, y) : 0;
  const int n = up + dn + lf + rt;
  if (n == 4) return mean4(u, d, l, r);
  if (n == 2) return mean2(u + d, l + r);  // a corner: one of each axis
  const int opposite = !up ? d : (!dn ? u : (!lf ? r : l));
  return (u + d + l + r + opposite + 2) >> 2;
}

// Mean of the diagonal neighbours that exist: four, two, or the one copied.
template <class T>
int borderDiag(const Mosaic<T>& m, std::ptrdiff_t x, std::ptrdiff_t y) {
  int sum = 0, n = 0;
  for (int dy = -1; dy <= 1; dy += 2)
    for (int dx = -1; dx <= 1; dx += 2)
      if (m.has(x + dx, y + dy)) {
        sum += m.at(x + dx, y + dy);
        ++n;
      }
  return n == 4 ? (sum + 2) >> 2 : (n == 2 ? (sum + 1) >> 1 : sum);
}

// Mean of the pair of neighbours along one axis: both, or the one that exists.
template <class T>
int borderPair(const Mosaic<T>& m, std::ptrdiff_t x, std::ptrdiff_t y, int dx, int dy) {
  const bool a = m.has(x - dx, y - dy), b = m.has(x + dx, y + dy);
  if (a && b) return mean2(m.at(x - dx, y - dy), m.at(x + dx, y + dy));
  return a ? m.at(x - dx, y - dy) : m.at(x + dx, y + dy);
}

// One pixel of the two outer rings: no gradient test.
template <class T>
void borderPixel(const Mosaic<T>& m, int grid, std::ptrdiff_t x, std::ptrdiff_t y, T* out) {
  const Site s = siteAt(grid, x, y);
  int v[3];
  v[s.own] = m.at(x, y);
  if (s.green()) {
    v[s.horiz] = borderPair(m, x, y, 1, 0);
    v[s.vert] = borderPair(m, x, y, 0, 1);
  } else {
    v[kGreen] = borderCross(m, x, y);
    v[s.diag()] = borderDiag(m, x, y);
  }
  for (int k = 0; k < 3; ++k) storeAt(out + k, T(v[k]));
}

// One interior pixel at column x; r[k] is row y - 2 + k.
template <class T>
void interiorPixel(const T* const* r, std::ptrdiff_t x, const Site& s, T* out) {
  auto p = [&](int dy, int dx) { return int(loadAt(r[2 + dy] + x + dx)); };
  int v[3];
  v[s.own] = p(0, 0);
  if (s.green()) {
    v[s.horiz] = mean2(p(0, -1), p(0, 1));
    v[s.vert] = mean2(p(-1, 0), p(1, 0));
  } else {
    v[s.diag()] = mean4(p(-1, -1), p(-1, 1), p(1, -1), p(1, 1));
    const int dV = std::abs(p(-2, 0) - p(2, 0)), dH = std::abs(p(0, -2) - p(0, 2));
    v[kGreen] = dV < dH   ? mean2(p(-1, 0), p(1, 0))
                : dV > dH ? mean2(p(0, -1), p(0, 1))
                          : mean4(p(-1, 0), p(1, 0), p(0, -1), p(0, 1));
  }
  for (int k = 0; k < 3; ++k) storeAt(out + k, T(v[k]));
}

// kPixels interior pixels from column x; r[k] is row y - 2 + k.
template <class O, class T>
void interiorBlock(const T* const* r, std::ptrdiff_t x, RowLanes rl, T* out) {
  const int own = rl.own;
  using B = BlockOps<O, T>;
  using V = typename O::V;
  const V even = B::evenLanes();
  const V mask = rl.colourEven ? even : O::andnot(even, B::c(-1));
  for (int h = 0; h < 2; ++h) {
    auto p = [&](int dy, int dx) { return B::half(r[2 + dy] + x + dx, h); };
    const V c = p(0, 0), u = p(-1, 0), d = p(1, 0), l = p(0, -1), rt = p(0, 1);
    const V h2 = B::mean2(l, rt), v2 = B::mean2(u, d);
    const V dV = B::absDiff(p(-2, 0), p(2, 0)), dH = B::absDiff(p(0, -2), p(0, 2));
    // The tie of the two gradients takes the four-neighbour mean.
    const V g = B::select(B::less(dV, dH), v2, B::select(B::less(dH, dV), h2, B::mean4(u, d, l, rt)));
    V ch[3];
    ch[own] = B::select(mask, c, h2);
    ch[kGreen] = B::select(mask, g, c);
    ch[otherColour(own)] = B::select(mask, B::mean4(p(-1, -1), p(-1, 1), p(1, -1), p(1, 1)), v2);
    storeRGB<O, T>(out, h, ch);
  }
}

// One interior row of n pixels from image column x0, written from out: blocks
// of 16 (8u) or 8 (16u) pixels, then single pixels.
template <class T>
void interiorRow(const T* const* r, int grid, std::ptrdiff_t x0, std::ptrdiff_t y, std::ptrdiff_t n, T* out) {
  std::ptrdiff_t i = eachBlock<T>(grid, x0, y, n, [&](auto o, std::ptrdiff_t at, RowLanes rl) {
    interiorBlock<decltype(o), T>(r, x0 + at, rl, out + 3 * at);
  });
  for (; i < n; ++i) interiorPixel(r, x0 + i, siteAt(grid, x0 + i, y), out + 3 * i);
}

template <class T>
LumStatus cfaToRGB(const T* pSrc, LumRect rc, LumSize img, std::ptrdiff_t srcStep, T* pDst, std::ptrdiff_t dstStep,
                   int grid) {
  if (LumStatus s = check::bayer(pSrc, pDst, img.width, img.height, 2, grid)) return s;
  const std::ptrdiff_t W = img.width, H = img.height;
  // The region is cut to the image's right and bottom edges; pixels left of or
  // above the image are not written.
  const std::ptrdiff_t x1 = std::min<std::ptrdiff_t>(std::ptrdiff_t(rc.x) + rc.width, W);
  const std::ptrdiff_t y1 = std::min<std::ptrdiff_t>(std::ptrdiff_t(rc.y) + rc.height, H);
  const std::ptrdiff_t xa = std::max<std::ptrdiff_t>(rc.x, 0), ya = std::max<std::ptrdiff_t>(rc.y, 0);
  if (x1 <= xa || y1 <= ya) return lumStatusOk;
  const Mosaic<T> m{pSrc, srcStep, W, H};
  auto dstAt = [&](std::ptrdiff_t x, std::ptrdiff_t y) { return rowOf(pDst, y - rc.y, dstStep) + 3 * (x - rc.x); };
  auto ring = [&](std::ptrdiff_t v, std::ptrdiff_t n) { return v < 2 || v >= n - 2; };

  // The two outer rings.
  for (std::ptrdiff_t y = ya; y < y1; ++y) {
    if (ring(y, H)) {
      for (std::ptrdiff_t x = xa; x < x1; ++x) borderPixel(m, grid, x, y, dstAt(x, y));
      continue;
    }
    for (std::ptrdiff_t x = xa; x < x1; ++x) {
      if (!ring(x, W)) x = std::max(x, W - 2);
      if (x < x1) borderPixel(m, grid, x, y, dstAt(x, y));
    }
  }

  // The interior, columns and rows 2 .. side - 3, a row pair at a time.
  const std::ptrdiff_t ix0 = std::max<std::ptrdiff_t>(xa, 2), ix1 = std::min(x1, W - 2);
  const std::ptrdiff_t iy0 = std::max<std::ptrdiff_t>(ya, 2), iy1 = std::min(y1, H - 2);
  if (ix1 <= ix0 || iy1 <= iy0) return lumStatusOk;
  auto row = [&](std::ptrdiff_t y) {
    const T* r[5] = {m.row(y - 2), m.row(y - 1), m.row(y), m.row(y + 1), m.row(y + 2)};
    interiorRow(r, grid, ix0, y, ix1 - ix0, dstAt(ix0, y));
  };
  std::ptrdiff_t y = iy0;
  for (; y + 2 <= iy1; y += 2) {
    row(y);
    row(y + 1);
  }
  if (y < iy1) row(y);
  return lumStatusOk;
}

}  // namespace
}  // namespace lum::bayer

extern "C" {

LumStatus lumiCFAToRGB_8u_C1C3R(const Lum8u* pSrc, LumRect srcRect, LumSize imageSize, int srcStep, Lum8u* pDst,
                                int dstStep, LumCfaGrid cfaGrid) {
  return lum::bayer::cfaToRGB(pSrc, srcRect, imageSize, srcStep, pDst, dstStep, int(cfaGrid));
}

// Both steps are taken in whole samples: an odd byte count loses its last byte.
LumStatus lumiCFAToRGB_16u_C1C3R(const Lum16u* pSrc, LumRect srcRect, LumSize imageSize, int srcStep, Lum16u* pDst,
                                 int dstStep, LumCfaGrid cfaGrid) {
  return lum::bayer::cfaToRGB(pSrc, srcRect, imageSize, std::ptrdiff_t(srcStep >> 1) * 2, pDst,
                              std::ptrdiff_t(dstStep >> 1) * 2, int(cfaGrid));
}

}  // extern "C"
