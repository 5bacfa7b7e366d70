// The 256-bit blocks of the 4:2:2 kernels (see rgb_422_avx2.h). Built with AVX2
// enabled: everything but the entry points has internal linkage, and nothing
// here comes from a header shared with the 128-bit code, so no inline function
// compiled for AVX2 can stand in for the baseline's copy.
//
// A vector holds sixteen pixels in order: pixels 0..7 in the low 128-bit half,
// 8..15 in the high half, which suits the instructions that work per half.
// Each form repeats, lane for lane, the arithmetic of its 128-bit block; the
// tests compare both with the scalar twins.
#include "lumachroma/rgb_422_avx2.h"

#if LUM_SIMD_SSE && defined(__AVX2__)
#include <immintrin.h>

namespace lum::wide {
namespace {

using W = __m256i;
constexpr char Z = char(-128);  // pshufb: write zero

W set16(int v) { return _mm256_set1_epi16(short(v)); }
// A constant of sixteen equal lanes kept in memory, so that under register
// pressure it folds into the instruction that uses it instead of being rebuilt.
template <short V>
struct Lanes {
  alignas(32) static constexpr short v[16] = {V, V, V, V, V, V, V, V, V, V, V, V, V, V, V, V};
};
template <short V>
W k() {
  return _mm256_load_si256(reinterpret_cast<const W*>(Lanes<V>::v));
}
W bytes16(__m128i v) { return _mm256_cvtepu8_epi16(v); }
__m128i load16(const uint8_t* p) { return _mm_loadu_si128(reinterpret_cast<const __m128i*>(p)); }
__m128i load8(const uint8_t* p) { return _mm_loadl_epi64(reinterpret_cast<const __m128i*>(p)); }
W load32(const uint8_t* p) { return _mm256_loadu_si256(reinterpret_cast<const W*>(p)); }
void store16(uint8_t* p, __m128i v) { _mm_storeu_si128(reinterpret_cast<__m128i*>(p), v); }
void store8(uint8_t* p, __m128i v) { _mm_storel_epi64(reinterpret_cast<__m128i*>(p), v); }
void store32(uint8_t* p, W v) { _mm256_storeu_si256(reinterpret_cast<W*>(p), v); }
// A 128-bit shuffle mask used in both halves.
W mask(char a0, char a1, char a2, char a3, char a4, char a5, char a6, char a7, char a8, char a9, char a10, char a11,
       char a12, char a13, char a14, char a15) {
  return _mm256_broadcastsi128_si256(
      _mm_setr_epi8(a0, a1, a2, a3, a4, a5, a6, a7, a8, a9, a10, a11, a12, a13, a14, a15));
}

// Memory byte k of a three- or four-byte pixel holds form channel order[k].
struct Order {
  int c[3];
};
Order orderOf(Pix p) { return (p == Pix::BGR || p == Pix::BGRA) ? Order{{2, 1, 0}} : Order{{0, 1, 2}}; }

// ---- sources of sixteen pixels (inverse: Y, Cb, Cr with the pair's chroma)

// Packed 4:2:2, byte offsets of Y0, Cb and Cr within a pair.
void loadC2(const uint8_t* p, int y0, int cb, int cr, W out[3]) {
  const W v = load32(p);
  const auto y = char(y0), b = char(cb), r = char(cr);
  out[0] = _mm256_shuffle_epi8(v, mask(y, Z, char(y + 2), Z, char(y + 4), Z, char(y + 6), Z, char(y + 8), Z,
                                       char(y + 10), Z, char(y + 12), Z, char(y + 14), Z));
  out[1] = _mm256_shuffle_epi8(v, mask(b, Z, b, Z, char(b + 4), Z, char(b + 4), Z, char(b + 8), Z, char(b + 8), Z,
                                       char(b + 12), Z, char(b + 12), Z));
  out[2] = _mm256_shuffle_epi8(v, mask(r, Z, r, Z, char(r + 4), Z, char(r + 4), Z, char(r + 8), Z, char(r + 8), Z,
                                       char(r + 12), Z, char(r + 12), Z));
}
// Planar 4:2:2: sixteen luma bytes, eight of each chroma plane, each twice.
void loadP3h(const uint8_t* const* p, int x, W out[3]) {
  out[0] = bytes16(load16(p[0] + x));
  const __m128i cb = load8(p[1] + x / 2), cr = load8(p[2] + x / 2);
  out[1] = bytes16(_mm_unpacklo_epi8(cb, cb));
  out[2] = bytes16(_mm_unpacklo_epi8(cr, cr));
}

// ---- sources of sixteen pixels (forward: R, G, B)

// Three-byte pixels: each half takes 24 bytes (16 and 8) and sorts them as the
// 128-bit deinterleave does.
void loadC3(const uint8_t* p, Order o, W out[3]) {
  const W a = _mm256_inserti128_si256(_mm256_castsi128_si256(load16(p)), load16(p + 24), 1);
  const W b = _mm256_inserti128_si256(_mm256_castsi128_si256(load8(p + 16)), load8(p + 40), 1);
  W m[3];
  m[0] = _mm256_or_si256(_mm256_shuffle_epi8(a, mask(0, Z, 3, Z, 6, Z, 9, Z, 12, Z, 15, Z, Z, Z, Z, Z)),
                         _mm256_shuffle_epi8(b, mask(Z, Z, Z, Z, Z, Z, Z, Z, Z, Z, Z, Z, 2, Z, 5, Z)));
  m[1] = _mm256_or_si256(_mm256_shuffle_epi8(a, mask(1, Z, 4, Z, 7, Z, 10, Z, 13, Z, Z, Z, Z, Z, Z, Z)),
                         _mm256_shuffle_epi8(b, mask(Z, Z, Z, Z, Z, Z, Z, Z, Z, Z, 0, Z, 3, Z, 6, Z)));
  m[2] = _mm256_or_si256(_mm256_shuffle_epi8(a, mask(2, Z, 5, Z, 8, Z, 11, Z, 14, Z, Z, Z, Z, Z, Z, Z)),
                         _mm256_shuffle_epi8(b, mask(Z, Z, Z, Z, Z, Z, Z, Z, Z, Z, 1, Z, 4, Z, 7, Z)));
  for (int k = 0; k < 3; ++k) out[o.c[k]] = m[k];
}
// Four-byte pixels (the fourth byte is not read into any value), by shifts and
// one pack per channel. The pack leaves the pixels in split order: pixels 0..3
// and 8..11 in the low half, 4..7 and 12..15 in the high half. Pairs stay
// adjacent, so the forms run on them unchanged and the stores put them back.
void loadC4Split(const uint8_t* p, Order o, W out[3]) {
  const W a = load32(p), b = load32(p + 32), low = _mm256_set1_epi32(0xFF);
  out[o.c[0]] = _mm256_packus_epi32(_mm256_and_si256(a, low), _mm256_and_si256(b, low));
  out[o.c[1]] = _mm256_packus_epi32(_mm256_and_si256(_mm256_srli_epi32(a, 8), low),
                                    _mm256_and_si256(_mm256_srli_epi32(b, 8), low));
  out[o.c[2]] = _mm256_packus_epi32(_mm256_and_si256(_mm256_srli_epi32(a, 16), low),
                                    _mm256_and_si256(_mm256_srli_epi32(b, 16), low));
}
void loadP3(const uint8_t* const* p, int x, W out[3]) {
  for (int k = 0; k < 3; ++k) out[k] = bytes16(load16(p[k] + x));
}

// ---- destinations of sixteen pixels (inverse: R, G, B, lanes 0..255 or beyond;
// the byte packing saturates exactly as clamp8 does)

void storeC3(uint8_t* p, Order o, const W in[3]) {
  W m[3];
  for (int k = 0; k < 3; ++k) m[k] = in[o.c[k]];
  const W t = _mm256_packus_epi16(m[0], m[1]);  // per half: byte 0 of 8 pixels, then byte 1
  const W c = _mm256_packus_epi16(m[2], m[2]);
  const W r0 = _mm256_or_si256(_mm256_shuffle_epi8(t, mask(0, 8, Z, 1, 9, Z, 2, 10, Z, 3, 11, Z, 4, 12, Z, 5)),
                               _mm256_shuffle_epi8(c, mask(Z, Z, 0, Z, Z, 1, Z, Z, 2, Z, Z, 3, Z, Z, 4, Z)));
  const W r1 = _mm256_or_si256(_mm256_shuffle_epi8(t, mask(13, Z, 6, 14, Z, 7, 15, Z, Z, Z, Z, Z, Z, Z, Z, Z)),
                               _mm256_shuffle_epi8(c, mask(Z, 5, Z, Z, 6, Z, Z, 7, Z, Z, Z, Z, Z, Z, Z, Z)));
  // Per half: 24 bytes as 16 (r0) and 8 (r1); the two halves meet in the middle.
  const __m128i lo0 = _mm256_castsi256_si128(r0), hi0 = _mm256_extracti128_si256(r0, 1);
  const __m128i lo1 = _mm256_castsi256_si128(r1), hi1 = _mm256_extracti128_si256(r1, 1);
  store16(p, lo0);
  store16(p + 16, _mm_unpacklo_epi64(lo1, hi0));
  store16(p + 32, _mm_alignr_epi8(hi1, hi0, 8));
}
void storeC4(uint8_t* p, Order o, const W in[3], W alpha) {
  W m[3];
  for (int k = 0; k < 3; ++k) m[k] = in[o.c[k]];
  const W x = _mm256_packus_epi16(m[0], m[2]), y = _mm256_packus_epi16(m[1], alpha);
  const W b01 = _mm256_unpacklo_epi8(x, y);  // per half: bytes 0 and 1 of eight pixels
  const W b23 = _mm256_unpackhi_epi8(x, y);  // bytes 2 and 3
  const W a = _mm256_unpacklo_epi16(b01, b23);  // pixels 0..3 | 8..11
  const W b = _mm256_unpackhi_epi16(b01, b23);  // pixels 4..7 | 12..15
  store32(p, _mm256_permute2x128_si256(a, b, 0x20));
  store32(p + 32, _mm256_permute2x128_si256(a, b, 0x31));
}

// ---- inverse form: the rounded IY scheme, as IYRounded::block

struct IY {
  W cy, crR, cbG, crG, cbB, round;
  __m128i shift;
  explicit IY(const IYParams& k)
      : cy(set16(k.cy)), crR(set16(k.crR)), cbG(set16(k.cbG)), crG(set16(k.crG)), cbB(set16(k.cbB)),
        round(set16(k.round)), shift(_mm_cvtsi32_si128(k.shift)) {}
  // For 8-bit samples every sum of the scheme stays within -4421..8556 (checked
  // over all 2^24 inputs for IY1, IY2 and the BGRA set), so its saturating adds
  // never clip: the rounding add is made once, on the luma term, and plain
  // adds give the same lanes.
  void block(const W in[3], W out[3]) const {
    const W y = _mm256_add_epi16(
        _mm256_mulhi_epi16(_mm256_slli_epi16(_mm256_sub_epi16(in[0], k<16>()), 7), cy), round);
    const W cb = _mm256_slli_epi16(_mm256_sub_epi16(in[1], k<128>()), 7);
    const W cr = _mm256_slli_epi16(_mm256_sub_epi16(in[2], k<128>()), 7);
    out[0] = _mm256_sra_epi16(_mm256_add_epi16(y, _mm256_mulhi_epi16(cr, crR)), shift);
    out[1] = _mm256_sra_epi16(
        _mm256_sub_epi16(y, _mm256_add_epi16(_mm256_mulhi_epi16(cb, cbG), _mm256_mulhi_epi16(cr, crG))), shift);
    out[2] = _mm256_sra_epi16(_mm256_add_epi16(y, _mm256_mulhi_epi16(cb, cbB)), shift);
  }
};

template <class Load, class Store>
void replicatedLoop(const IY& f, int n, Load load, Store store) {
  for (int x = 0; x + 16 <= n; x += 16) {
    W in[3], out[3];
    load(x, in);
    f.block(in, out);
    store(x, out);
  }
}

template <class Load>
void replicatedTo(const IY& f, Pix dst, const Rows& r, int n, int aval, Load load) {
  switch (dst) {
    case Pix::RGB:
    case Pix::BGR:
      replicatedLoop(f, n, load, [&](int x, const W* c) { storeC3(r.dst[0] + 3 * x, orderOf(dst), c); });
      break;
    case Pix::RGBA:
    case Pix::BGRA: {
      const W a = set16(aval);
      replicatedLoop(f, n, load, [&](int x, const W* c) { storeC4(r.dst[0] + 4 * x, orderOf(dst), c, a); });
      break;
    }
    default:
      break;
  }
}

// ---- forward forms on sixteen pixels and on the sums of their pairs

// Pair sums of 32 pixels (a: pixels 0..15, b: 16..31). In natural order the
// result is pairs 0..7 | 8..15. In split order it stays as the halves give it:
// pairs 0 1 4 5 8 9 12 13 | 2 3 6 7 10 11 14 15, which the stores undo.
template <bool Split>
W pairSums(W a, W b) {
  const W h = _mm256_hadd_epi16(a, b);
  return Split ? h : _mm256_permute4x64_epi64(h, 0xD8);
}
// Groups of four 32-bit lanes 0 2 4 6 | 1 3 5 7 back to 0..7.
W unsplit32(W v) { return _mm256_permutevar8x32_epi32(v, _mm256_setr_epi32(0, 4, 1, 5, 2, 6, 3, 7)); }

// FY1 luma, as FY1::block.
W fy1(const W* p) {
  const W r = _mm256_slli_epi16(p[0], 7), g = _mm256_slli_epi16(p[1], 7), b = _mm256_slli_epi16(p[2], 7);
  return _mm256_srai_epi16(
      _mm256_add_epi16(_mm256_add_epi16(_mm256_add_epi16(_mm256_mulhrs_epi16(r, k<4211>()),
                                                         _mm256_mulhrs_epi16(g, k<8258>())),
                                        _mm256_mulhrs_epi16(b, k<1606>())),
                       k<1056>()),
      6);
}
// FC1 of the pair sums, as FC1::block.
void fc1(W sR, W sG, W sB, W& cb, W& cr) {
  const W r = _mm256_slli_epi16(sR, 6), g = _mm256_slli_epi16(sG, 6), b = _mm256_slli_epi16(sB, 6);
  const W half = k<8224>();
  cb = _mm256_srai_epi16(_mm256_add_epi16(_mm256_sub_epi16(_mm256_sub_epi16(_mm256_mulhrs_epi16(b, k<7193>()),
                                                                            _mm256_mulhrs_epi16(g, k<4768>())),
                                                           _mm256_mulhrs_epi16(r, k<2425>())),
                                          half),
                         6);
  cr = _mm256_srai_epi16(_mm256_add_epi16(_mm256_sub_epi16(_mm256_sub_epi16(_mm256_mulhrs_epi16(r, k<7193>()),
                                                                            _mm256_mulhrs_epi16(g, k<6029>())),
                                                           _mm256_mulhrs_epi16(b, k<1163>())),
                                          half),
                         6);
}
// The high-multiply luma and chroma, as PairHighMul::block.
W highMulY(const W* p) {
  const W y = _mm256_add_epi16(
      _mm256_add_epi16(_mm256_add_epi16(_mm256_mulhi_epu16(_mm256_slli_epi16(p[0], 8), k<8422>()),
                                        _mm256_mulhi_epu16(_mm256_slli_epi16(p[1], 8), k<16515>())),
                       _mm256_mulhi_epu16(_mm256_slli_epi16(p[2], 8), k<3212>())),
      k<2112>());
  return _mm256_srli_epi16(y, 7);
}
void highMulC(W sR, W sG, W sB, W& cb, W& cr) {
  sR = _mm256_slli_epi16(sR, 7);
  sG = _mm256_slli_epi16(sG, 7);
  sB = _mm256_slli_epi16(sB, 7);
  const W off = k<16447>();
  cb = _mm256_srli_epi16(
      _mm256_sub_epi16(_mm256_sub_epi16(_mm256_add_epi16(off, _mm256_mulhi_epu16(sB, k<14385>())),
                                        _mm256_mulhi_epu16(sG, k<9535>())),
                       _mm256_mulhi_epu16(sR, k<4850>())),
      7);
  cr = _mm256_srli_epi16(
      _mm256_sub_epi16(_mm256_sub_epi16(_mm256_add_epi16(off, _mm256_mulhi_epu16(sR, k<14385>())),
                                        _mm256_mulhi_epu16(sG, k<12058>())),
                       _mm256_mulhi_epu16(sB, k<2327>())),
      7);
}

// Thirty-two pixels (or sixteen, b = a): lumas of both groups, chroma of the pairs.
struct Out32 {
  W ya, yb, cb, cr;
};
template <PairForm F, bool Split>
[[gnu::always_inline]] inline void forwardBlock(const W* a, const W* b, Out32& o) {
  const W sR = pairSums<Split>(a[0], b[0]), sG = pairSums<Split>(a[1], b[1]), sB = pairSums<Split>(a[2], b[2]);
  if constexpr (F == PairForm::FY1FC1) {
    o.ya = fy1(a);
    o.yb = fy1(b);
    fc1(sR, sG, sB, o.cb, o.cr);
  } else {
    o.ya = highMulY(a);
    o.yb = highMulY(b);
    highMulC(sR, sG, sB, o.cb, o.cr);
  }
}

// Lumas of 32 pixels as bytes in order. In split order packing gives groups of
// four pixels 0 2 4 6 | 1 3 5 7.
template <bool Split>
W lumaBytes(const Out32& o) {
  const W y = _mm256_packus_epi16(o.ya, o.yb);
  return Split ? unsplit32(y) : _mm256_permute4x64_epi64(y, 0xD8);
}
// One chroma plane's 16 bytes in pair order.
template <bool Split>
__m128i chromaBytes(W c) {
  const W v = _mm256_packus_epi16(c, c);
  if constexpr (Split)  // byte pairs (0 1)(4 5)(8 9)(12 13) | (2 3)(6 7)(10 11)(14 15)
    return _mm_unpacklo_epi16(_mm256_castsi256_si128(v), _mm256_extracti128_si256(v, 1));
  else
    return _mm256_castsi256_si128(_mm256_permute4x64_epi64(v, 0x08));
}

// Packed 4:2:2 destination: 32 pixels (64 bytes) or the first 16 (32 bytes).
template <bool Split>
void storeC2(uint8_t* p, bool lumaFirst, bool cbFirst, const Out32& o, bool half) {
  const W y = lumaBytes<Split>(o);  // pixels 0..15 | 16..31
  const W cc = cbFirst ? _mm256_packus_epi16(o.cb, o.cr) : _mm256_packus_epi16(o.cr, o.cb);
  W c = _mm256_unpacklo_epi8(cc, _mm256_srli_si256(cc, 8));  // chroma byte pairs of the pairs, per half
  if constexpr (Split) c = unsplit32(c);
  const W lo = lumaFirst ? _mm256_unpacklo_epi8(y, c) : _mm256_unpacklo_epi8(c, y);
  const W hi = lumaFirst ? _mm256_unpackhi_epi8(y, c) : _mm256_unpackhi_epi8(c, y);
  store32(p, _mm256_permute2x128_si256(lo, hi, 0x20));
  if (!half) store32(p + 32, _mm256_permute2x128_si256(lo, hi, 0x31));
}
// Planar 4:2:2 destination.
template <bool Split>
void storeP3h(uint8_t* const* p, int x, const Out32& o, bool half) {
  const W y = lumaBytes<Split>(o);
  const __m128i cb = chromaBytes<Split>(o.cb), cr = chromaBytes<Split>(o.cr);
  if (half) {
    store16(p[0] + x, _mm256_castsi256_si128(y));
    store8(p[1] + x / 2, cb);
    store8(p[2] + x / 2, cr);
  } else {
    store32(p[0] + x, y);
    store16(p[1] + x / 2, cb);
    store16(p[2] + x / 2, cr);
  }
}

template <PairForm F, bool Split, class Load, class Store>
void forwardLoop(int n, Load load, Store store) {
  int x = 0;
  for (; x + 32 <= n; x += 32) {
    W a[3], b[3];
    load(x, a);
    load(x + 16, b);
    Out32 o;
    forwardBlock<F, Split>(a, b, o);
    store(x, o, false);
  }
  if (x + 16 <= n) {
    W a[3];
    load(x, a);
    Out32 o;
    forwardBlock<F, Split>(a, a, o);
    store(x, o, true);
  }
}

template <bool Split, class Load>
void forwardTo(PairForm f, Pix dst, const Rows& r, int n, Load load) {
  auto run = [&](auto store) {
    if (f == PairForm::FY1FC1) forwardLoop<PairForm::FY1FC1, Split>(n, load, store);
    else forwardLoop<PairForm::HighMul, Split>(n, load, store);
  };
  switch (dst) {
    case Pix::YCbCr422:
      run([&](int x, const Out32& o, bool h) { storeC2<Split>(r.dst[0] + 2 * x, true, true, o, h); });
      break;
    case Pix::YCrCb422:
      run([&](int x, const Out32& o, bool h) { storeC2<Split>(r.dst[0] + 2 * x, true, false, o, h); });
      break;
    case Pix::CbYCr422:
      run([&](int x, const Out32& o, bool h) { storeC2<Split>(r.dst[0] + 2 * x, false, true, o, h); });
      break;
    case Pix::P3h:
      run([&](int x, const Out32& o, bool h) { storeP3h<Split>(r.dst, x, o, h); });
      break;
    default:
      break;
  }
}

}  // namespace

void replicatedIY(const IYParams& k, Pix src, Pix dst, const Rows& r, int n, int aval) {
  const IY f(k);
  switch (src) {
    case Pix::YCbCr422:
      replicatedTo(f, dst, r, n, aval, [&](int x, W* o) { loadC2(r.src[0] + 2 * x, 0, 1, 3, o); });
      break;
    case Pix::CbYCr422:
      replicatedTo(f, dst, r, n, aval, [&](int x, W* o) { loadC2(r.src[0] + 2 * x, 1, 0, 2, o); });
      break;
    case Pix::YCrCb422:
      replicatedTo(f, dst, r, n, aval, [&](int x, W* o) { loadC2(r.src[0] + 2 * x, 0, 3, 1, o); });
      break;
    case Pix::P3h:
      replicatedTo(f, dst, r, n, aval, [&](int x, W* o) { loadP3h(r.src, x, o); });
      break;
    default:
      break;
  }
}

void pairs(PairForm f, Pix src, Pix dst, const Rows& r, int n) {
  switch (src) {
    case Pix::RGB:
    case Pix::BGR:
      forwardTo<false>(f, dst, r, n, [&](int x, W* o) { loadC3(r.src[0] + 3 * x, orderOf(src), o); });
      break;
    case Pix::RGBA:
    case Pix::BGRA:
      forwardTo<true>(f, dst, r, n, [&](int x, W* o) { loadC4Split(r.src[0] + 4 * x, orderOf(src), o); });
      break;
    case Pix::P3:
      forwardTo<false>(f, dst, r, n, [&](int x, W* o) { loadP3(r.src, x, o); });
      break;
    default:
      break;
  }
}

}  // namespace lum::wide
#endif
