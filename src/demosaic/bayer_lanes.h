// The lane arithmetic of the demosaic blocks, over any 128-bit lane set: 16-bit
// lanes for 8u samples (sums of a neighbourhood fit), 32-bit lanes for 16u. A
// block is two vectors: 16 pixels of 8u, 8 pixels of 16u.
#pragma once

#include <cstdint>
#include <type_traits>

#include "demosaic/bayer.h"
#include "frame/lanes.h"
#include "frame/layouts.h"

namespace lum::bayer {

// Lane operations on samples of T.
template <class O, class T>
struct BlockOps {
  using V = typename O::V;
  static constexpr bool k8 = std::is_same_v<T, Lum8u>;
  static constexpr int kLanes = k8 ? 8 : 4;
  static constexpr int kPixels = 2 * kLanes;
  static V add(V a, V b) { return k8 ? O::add16(a, b) : O::add32(a, b); }
  static V sub(V a, V b) { return k8 ? O::sub16(a, b) : O::sub32(a, b); }
  static V shr(V a, int n) { return k8 ? O::srl(a, n) : O::srl32(a, n); }
  static V c(int v) { return k8 ? O::set(v) : O::set32(v); }
  static V mean2(V a, V b) { return k8 ? O::avg16(a, b) : shr(add(add(a, b), c(1)), 1); }
  static V mean4(V a, V b, V d, V e) { return shr(add(add(add(a, b), add(d, e)), c(2)), 2); }
  static V absDiff(V a, V b) { return k8 ? O::max16(sub(a, b), sub(b, a)) : sub(O::max32(a, b), O::min32(a, b)); }
  // All ones where a < b (both non-negative and of sample range).
  static V less(V a, V b) { return k8 ? O::sra(sub(a, b), 15) : O::sra32(sub(a, b), 31); }
  static V select(V m, V a, V b) { return O::or_(O::and_(m, a), O::andnot(m, b)); }
  // Half h of the block of samples p[0 .. kPixels): p[h * kLanes ...] as lanes.
  static V half(const T* p, int h) {
    const V v = O::load(p);
    if constexpr (k8) {
      return h ? O::zipHi8(v, O::zero()) : O::zipLo8(v, O::zero());
    } else {
      V lo, hi;
      O::widen(v, lo, hi);
      return O::and_(h ? hi : lo, O::set32(0xFFFF));
    }
  }
  static V min(V a, V b) { return k8 ? O::min16(a, b) : O::min32(a, b); }
  static V max(V a, V b) { return k8 ? O::max16(a, b) : O::max32(a, b); }
  // Lanes clamped to the sample range.
  static V clampSample(V a) { return k8 ? O::clamp8(a) : O::min32(O::max32(a, O::zero()), O::set32(65535)); }
  // f(float lanes) of signed lanes a, b, converted back to the nearest integers
  // (under the caller's rounding mode) in a's lane width; 8u results saturate to
  // the 16-bit range.
  template <class Fn>
  static V viaFloat(V a, V b, Fn f) {
    if constexpr (k8) {
      V alo, ahi, blo, bhi;
      O::widen(a, alo, ahi);
      O::widen(b, blo, bhi);
      return O::narrow(O::cvtfi(f(O::cvtif(alo), O::cvtif(blo))), O::cvtfi(f(O::cvtif(ahi), O::cvtif(bhi))));
    } else {
      return O::cvtfi(f(O::cvtif(a), O::cvtif(b)));
    }
  }
  // All ones in the lanes of even pixels.
  static V evenLanes() {
    alignas(16) static constexpr int32_t m[4] = {-1, 0, -1, 0};
    return k8 ? O::set32(0xFFFF) : O::load(m);
  }
};

// The row pattern of a block: whether its even pixels are red or blue sites, and
// the colour of the row's red or blue sites.
struct RowLanes {
  bool colourEven;
  int own;
};

// Calls block(O{}, i, lanes) for each whole block of a row of n pixels from
// image column x0 (row y), on the 128-bit lane set of the call; returns the
// number of pixels the blocks took.
template <class T, class Block>
std::ptrdiff_t eachBlock(int grid, std::ptrdiff_t x0, std::ptrdiff_t y, std::ptrdiff_t n, Block&& block) {
  std::ptrdiff_t i = 0;
  lanes::with128([&](auto o) {
    using O = decltype(o);
    constexpr int K = BlockOps<O, T>::kPixels;
    const Site s0 = siteAt(grid, x0, y), s1 = siteAt(grid, x0 + 1, y);
    const RowLanes rl{!s0.green(), s0.green() ? s1.own : s0.own};
    for (; i + K <= n; i += K) block(o, i, rl);
  });
  return i;
}

// Layout adaptor: half h of a block (kLanes pixels) of R, G, B lanes into
// interleaved samples from out.
template <class O, class T, class V = typename O::V>
void storeRGB(T* out, int h, const V (&ch)[3]) {
  constexpr int n = BlockOps<O, T>::kLanes;
  DstPlanes d = packed(reinterpret_cast<uint8_t*>(out), 0);
#if LUM_SIMD_SSE
  if constexpr (std::is_same_v<O, lanes::Sse> && std::is_same_v<T, Lum8u>) {
    layout::RGB::store<false>(d, h * n, layout::Vx{{ch[0], ch[1], ch[2], ch[0]}});
    return;
  }
#endif
  const V o[4] = {ch[0], ch[1], ch[2], ch[0]};
  layout::RGBOf<T>::template storeLanes<O, false>(d, h * n, o);
}

// Layout adaptor: half h of a block of R, G, B lanes into B, G, R and a fourth
// sample that keeps its value (the 8u vector store reads it and writes it back).
template <class O, class T, class V = typename O::V>
void storeBGRKeep(T* out, int h, const V (&ch)[3]) {
  constexpr int n = BlockOps<O, T>::kLanes;
  DstPlanes d = packed(reinterpret_cast<uint8_t*>(out), 0);
  using L = layout::BGRAOf<T>;
#if LUM_SIMD_SSE
  if constexpr (std::is_same_v<O, lanes::Sse> && std::is_same_v<T, Lum8u>) {
    layout::Vx o;
    L::load(packed(static_cast<const uint8_t*>(d.p[0]), 0), h * n, o);
    for (int k = 0; k < 3; ++k) o.v[k] = ch[k];
    L::template store<true>(d, h * n, o);
    return;
  }
#endif
  const V o[4] = {ch[0], ch[1], ch[2], ch[0]};
  L::template storeLanes<O, false>(d, h * n, o);
}

}  // namespace lum::bayer
