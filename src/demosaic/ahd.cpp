// AHD demosaic to interleaved R, G, B: two full candidates, green interpolated
// along the rows and along the columns, and per pixel the candidate whose
// neighbourhood is more homogeneous in a fixed-point BT.601 YCbCr. The stages
// run as a pipeline of rows through rings in the caller's scratch.
#include <algorithm>
#include <cstdlib>
#include <cstring>

#include "demosaic/bayer.h"
#include "frame/check.h"
#include "frame/coeffs.h"

namespace lum::bayer {
namespace {

// Internal phase of the cell at a pixel: 0 RGGB, 1 GBRG, 2 BGGR, 3 GRBG. A column
// maps p to p ^ 3, a row to p + 1 - 2 * (p & 1).
constexpr int phaseOfGrid(int g) {
  constexpr int p[4] = {2, 0, 1, 3};
  return p[g];
}

// Edge rules of a segment's reads: the strips fold every index back into the
// image by reflection at the first and last index; the interior reads as it is.
struct Reflect {
  std::ptrdiff_t lastX, lastY;
  static std::ptrdiff_t fold(std::ptrdiff_t i, std::ptrdiff_t n) {
    const std::ptrdiff_t period = 2 * n, r = (i < 0 ? -i : i) % period;
    return r > n ? period - r : r;
  }
  std::ptrdiff_t x(std::ptrdiff_t i) const { return fold(i, lastX); }
  std::ptrdiff_t y(std::ptrdiff_t i) const { return fold(i, lastY); }
};
struct Direct {
  std::ptrdiff_t x(std::ptrdiff_t i) const { return i; }
  std::ptrdiff_t y(std::ptrdiff_t i) const { return i; }
};

// The caller's scratch: six rings of five rows (R, G, B of the horizontal and
// of the vertical candidate), each row (width + 6) samples of T; the first four
// rows also hold, after those samples, a ring of (width + 6) difference bytes.
template <class T>
struct Rings {
  Lum8u* base;
  std::ptrdiff_t step;  // even
  std::ptrdiff_t x0;    // image column of entry 0
  std::ptrdiff_t width; // entries a row
  static int slot(std::ptrdiff_t y, int n) { return int(((y % n) + n) % n); }
  Lum8u* rowOf(int cand, int colour, std::ptrdiff_t y) const { return base + (cand * 15 + colour * 5 + slot(y, 5)) * step; }
  // Row y of a plane, indexed by image column.
  T* row(int cand, int colour, std::ptrdiff_t y) const { return reinterpret_cast<T*>(rowOf(cand, colour, y)) - x0; }
  int8_t* diffRow(std::ptrdiff_t y) const {
    return reinterpret_cast<int8_t*>(base + slot(y, 4) * step + width * std::ptrdiff_t(sizeof(T))) - x0;
  }
};

enum Candidate : int { kHorizontal = 0, kVertical = 1 };

// Y, Cb, Cr of a candidate's pixel, without offset or clamp.
struct Ycc {
  int y, cb, cr;
};
inline Ycc toYcc(int r, int g, int b) {
  namespace k = coef::ahd;
  return {(k::kYr * r + k::kYg * g + k::kYb * b + 128) >> 8, (k::kCbr * r + k::kCbg * g + k::kCbb * b + 128) >> 8,
          (k::kCrr * r + k::kCrg * g + k::kCrb * b + 128) >> 8};
}

// One segment of the region (a strip or the interior): sw by sh pixels from
// image column sx, row sy, written from dst.
template <class T, class Edge>
class Segment {
 public:
  Segment(const Mosaic<T>& m, int grid, Edge e, Rings<T> rings) : m_(m), grid_(grid), e_(e), k_(rings) {}

  void run(std::ptrdiff_t sx, std::ptrdiff_t sy, std::ptrdiff_t sw, std::ptrdiff_t sh, T* dst, std::ptrdiff_t dstStep) {
    k_.x0 = sx - 3;
    // Row k feeds green at k, red and blue at k - 1, the difference map at k - 2
    // and the output at k - 3.
    for (std::ptrdiff_t k = sy - 3; k <= sy + sh + 2; ++k) {
      greenRow(k, sx - 3, sx + sw + 3);
      if (k - 1 >= sy - 2) colourRow(k - 1, sx - 2, sx + sw + 2);
      if (k - 2 >= sy - 1) diffRow(k - 2, sx - 1, sx + sw + 1);
      if (k - 3 >= sy) outRow(k - 3, sx, sx + sw, rowOf(dst, k - 3 - sy, dstStep));
    }
  }

 private:
  int src(std::ptrdiff_t x, std::ptrdiff_t y) const { return m_.at(e_.x(x), e_.y(y)); }

  // Green of both candidates; a position outside the image takes the value of
  // its reflection.
  void greenRow(std::ptrdiff_t y, std::ptrdiff_t x0, std::ptrdiff_t x1) {
    const std::ptrdiff_t py = e_.y(y);
    T* gh = k_.row(kHorizontal, kGreen, y);
    T* gv = k_.row(kVertical, kGreen, y);
    for (std::ptrdiff_t x = x0; x < x1; ++x) {
      const std::ptrdiff_t px = e_.x(x);
      const int c = src(px, py);
      int h = c, v = c;
      if (colourAt(grid_, px, py) != kGreen) {
        h = greenAlong(c, src(px - 1, py), src(px + 1, py), src(px - 2, py), src(px + 2, py));
        v = greenAlong(c, src(px, py - 1), src(px, py + 1), src(px, py - 2), src(px, py + 2));
      }
      storeAt(gh + x, T(h));
      storeAt(gv + x, T(v));
    }
  }
  // Green along one axis, with l, r the neighbours and l2, r2 the same colour two
  // away: a signed estimate clamped into the range that l and r span.
  static int greenAlong(int c, int l, int r, int l2, int r2) {
    const int g = ((2 * c - l2 - r2) >> 2) + ((l + r) >> 1);
    return std::clamp(g, std::min(l, r), std::max(l, r));
  }

  // Red and blue of both candidates from their green and the mosaic.
  void colourRow(std::ptrdiff_t y, std::ptrdiff_t x0, std::ptrdiff_t x1) {
    constexpr int top = kMaxOf<T>;
    for (int cand = 0; cand < 2; ++cand) {
      const T* g[3] = {k_.row(cand, kGreen, y - 1), k_.row(cand, kGreen, y), k_.row(cand, kGreen, y + 1)};
      T* out[3] = {k_.row(cand, kRed, y), nullptr, k_.row(cand, kBlue, y)};
      for (std::ptrdiff_t x = x0; x < x1; ++x) {
        const Site s = siteAt(grid_, x, y);
        auto gr = [&](int dx, int dy) { return int(loadAt(g[1 + dy] + x + dx)); };
        auto d = [&](int dx, int dy) { return src(x + dx, y + dy) - gr(dx, dy); };  // colour minus green there
        const int g0 = gr(0, 0);
        if (s.green()) {
          storeAt(out[s.horiz] + x, T(saturate(g0 + ((d(-1, 0) + d(1, 0)) >> 1), top)));
          storeAt(out[s.vert] + x, T(saturate(g0 + ((d(0, -1) + d(0, 1)) >> 1), top)));
        } else {
          storeAt(out[s.own] + x, T(src(x, y)));
          const int sum = src(x - 1, y - 1) + src(x + 1, y - 1) + src(x - 1, y + 1) + src(x + 1, y + 1) - gr(-1, -1) -
                          gr(1, -1) - gr(-1, 1) - gr(1, 1);
          storeAt(out[s.diag()] + x, T(saturate(g0 + (sum >> 2), top)));
        }
      }
    }
  }

  // count(horizontal) - count(vertical) of the homogeneous neighbours.
  void diffRow(std::ptrdiff_t y, std::ptrdiff_t x0, std::ptrdiff_t x1) {
    struct Rows {
      const T* p[3][3];  // row y - 1, y, y + 1 of R, G, B
      Ycc at(int dy, std::ptrdiff_t x) const {
        return toYcc(loadAt(p[dy + 1][kRed] + x), loadAt(p[dy + 1][kGreen] + x), loadAt(p[dy + 1][kBlue] + x));
      }
    } rows[2];
    for (int cand = 0; cand < 2; ++cand)
      for (int dy = -1; dy <= 1; ++dy)
        for (int c = 0; c < 3; ++c) rows[cand].p[dy + 1][c] = k_.row(cand, c, y + dy);
    int8_t* out = k_.diffRow(y);
    Ycc left[2] = {rows[0].at(0, x0 - 1), rows[1].at(0, x0 - 1)}, mid[2] = {rows[0].at(0, x0), rows[1].at(0, x0)};
    for (std::ptrdiff_t x = x0; x < x1; ++x) {
      int dL[2][4], dC[2][4];
      for (int cand = 0; cand < 2; ++cand) {
        const Ycc right = rows[cand].at(0, x + 1);
        const Ycc nb[4] = {left[cand], right, rows[cand].at(-1, x), rows[cand].at(1, x)};  // left, right, up, down
        const Ycc c = mid[cand];
        for (int n = 0; n < 4; ++n) {
          dL[cand][n] = std::abs(c.y - nb[n].y);
          // Squares summed in 32-bit signed lanes: 16u extremes wrap.
          const uint32_t b = uint32_t(c.cb - nb[n].cb), r = uint32_t(c.cr - nb[n].cr);
          dC[cand][n] = int32_t(b * b + r * r);
        }
        left[cand] = c;
        mid[cand] = right;
      }
      const int epsL = std::min(std::max(dL[0][0], dL[0][1]), std::max(dL[1][2], dL[1][3]));
      const int epsC = std::min(std::max(dC[0][0], dC[0][1]), std::max(dC[1][2], dC[1][3]));
      int count[2] = {0, 0};
      for (int cand = 0; cand < 2; ++cand)
        for (int n = 0; n < 4; ++n) count[cand] += dL[cand][n] <= epsL && dC[cand][n] <= epsC;
      out[x] = int8_t(count[0] - count[1]);
    }
  }

  // The choice by the 3x3 sum of the difference map; a zero sum repeats the
  // row's last decision, which starts with the horizontal candidate.
  void outRow(std::ptrdiff_t y, std::ptrdiff_t x0, std::ptrdiff_t x1, T* dst) {
    const int8_t* d[3] = {k_.diffRow(y - 1), k_.diffRow(y), k_.diffRow(y + 1)};
    const T* rgb[2][3];
    for (int cand = 0; cand < 2; ++cand)
      for (int c = 0; c < 3; ++c) rgb[cand][c] = k_.row(cand, c, y);
    int last = kHorizontal;
    for (std::ptrdiff_t x = x0; x < x1; ++x, dst += 3) {
      int sum = 0;
      for (auto* r : d) sum += r[x - 1] + r[x] + r[x + 1];
      if (sum != 0) last = sum > 0 ? kHorizontal : kVertical;
      for (int c = 0; c < 3; ++c) storeAt(dst + c, loadAt(rgb[last][c] + x));
    }
  }

  Mosaic<T> m_;
  int grid_;
  Edge e_;
  Rings<T> k_;
};

template <class T>
LumStatus ahd(const T* pSrc, LumRect rc, LumSize img, int srcStep, T* pDst, int dstStep, int grid, Lum8u* pTmp,
              int tmpStep) {
  if (LumStatus s = check::bayer(pSrc, pDst, img.width, img.height, 5, grid)) return s;
  const std::ptrdiff_t W = img.width, H = img.height;
  // Negative positions become 0; the region is cut at the image's edges.
  const std::ptrdiff_t x = std::max(rc.x, 0), y = std::max(rc.y, 0);
  const std::ptrdiff_t w = std::min<std::ptrdiff_t>(rc.width, W - x), h = std::min<std::ptrdiff_t>(rc.height, H - y);
  if (w < 1 || h < 1) return lumStatusOk;

  // The interior: at least five pixels from every edge, started on an RGGB cell
  // and cut to even sides.
  std::ptrdiff_t ix = std::max<std::ptrdiff_t>(x, 5), iy = std::max<std::ptrdiff_t>(y, 5);
  std::ptrdiff_t iw = std::min(W - 5, x + w) - ix, ih = std::min(H - 5, y + h) - iy;
  if (iw >= 1 && ih >= 1) {
    int p = phaseOfGrid(gridAt(grid, ix, iy));
    if (p == 2 || p == 3) {
      ++ix, --iw;
      p = (p ^ 3) & 3;
    }
    if (p != 0) ++iy, --ih;
  }
  iw &= ~std::ptrdiff_t(1);
  ih &= ~std::ptrdiff_t(1);
  // With no interior the whole region is one strip.
  if (iw < 1 || ih < 1) iy = y + h, ih = 0, ix = x, iw = 0;

  const Mosaic<T> m{pSrc, srcStep, W, H};
  const Rings<T> rings{pTmp, tmpStep & ~1, 0, w + 6};
  auto out = [&](std::ptrdiff_t px, std::ptrdiff_t py) { return rowOf(pDst, py - y, dstStep) + 3 * (px - x); };
  if (ih > 0) Segment<T, Direct>(m, grid, {}, rings).run(ix, iy, iw, ih, out(ix, iy), dstStep);
  Segment<T, Reflect> strip(m, grid, {W - 1, H - 1}, rings);
  if (iy > y) strip.run(x, y, w, iy - y, out(x, y), dstStep);
  if (y + h > iy + ih) strip.run(x, iy + ih, w, y + h - iy - ih, out(x, iy + ih), dstStep);
  if (ih > 0 && ix > x) strip.run(x, iy, ix - x, ih, out(x, iy), dstStep);
  if (ih > 0 && x + w > ix + iw) strip.run(ix + iw, iy, x + w - ix - iw, ih, out(ix + iw, iy), dstStep);
  return lumStatusOk;
}

}  // namespace
}  // namespace lum::bayer

extern "C" {

LumStatus lumiDemosaicAHD_8u_C1C3R(const Lum8u* pSrc, LumRect srcRect, LumSize imageSize, int srcStep, Lum8u* pDst,
                                   int dstStep, LumCfaGrid cfaGrid, Lum8u* pTmp, int tmpStep) {
  return lum::bayer::ahd(pSrc, srcRect, imageSize, srcStep, pDst, dstStep, int(cfaGrid), pTmp, tmpStep);
}
LumStatus lumiDemosaicAHD_16u_C1C3R(const Lum16u* pSrc, LumRect srcRect, LumSize imageSize, int srcStep,
                                    Lum16u* pDst, int dstStep, LumCfaGrid cfaGrid, Lum8u* pTmp, int tmpStep) {
  return lum::bayer::ahd(pSrc, srcRect, imageSize, srcStep, pDst, dstStep, int(cfaGrid), pTmp, tmpStep);
}

}  // extern "C"
