// v210 rows to one 16-bit word a pixel: a 5-6-5 colour word or the 10-bit luma.
//
// A v210 row is a run of little-endian 32-bit words of three 10-bit samples
// (bits 0..9, 10..19, 20..29; bits 30 and 31 ignored); four words carry six
// pixels. Both steps count elements (32-bit words and 16-bit words), the one
// place in the library where they are not bytes. The colour form is single
// precision, every operation in order, and the result is clamped to 0..31 and
// 0..63 without scaling down first: only the darkest codes are resolved and all
// brighter values come out as full scale in their field.
#include <cstring>

#include "lumachroma/forms_gray.h"

using namespace lum;

namespace {

// Where a sample of a group lies: word and bit offset.
struct Field {
  int word, shift;
};
//               Y0       Y1      Y2       Y3       Y4      Y5
constexpr Field kY[6] = {{0, 10}, {1, 0}, {1, 20}, {2, 10}, {3, 0}, {3, 20}};
//               Cb0     Cb2      Cb4      (shared by pixels 2n and 2n + 1)
constexpr Field kCb[3] = {{0, 0}, {1, 10}, {2, 20}};
constexpr Field kCr[3] = {{0, 20}, {2, 0}, {3, 10}};

// One 10-bit sample of the group at g; reads that sample's word only.
inline int sample(const Lum32u* g, Field f) { return int((loadAt(g + f.word) >> f.shift) & 0x3FFu); }

#if LUM_SIMD_SSE
// The twelve samples of a group as 16-bit lanes, pixel i in lane i (lanes 6, 7
// zero): Y, Cb and Cr, the chroma repeated for both pixels of a pair.
inline void decode(const Lum32u* grp, __m128i& y, __m128i& cb, __m128i& cr) {
  const __m128i w = _mm_loadu_si128(reinterpret_cast<const __m128i*>(grp));
  const __m128i m = _mm_set1_epi32(0x3FF);
  const __m128i f0 = _mm_and_si128(w, m);                      // Cb0 Y1  Cr2 Y4
  const __m128i f1 = _mm_and_si128(_mm_srli_epi32(w, 10), m);  // Y0  Cb2 Y3  Cr4
  const __m128i f2 = _mm_and_si128(_mm_srli_epi32(w, 20), m);  // Cr0 Y2  Cb4 Y5
  const __m128i p = _mm_packs_epi32(f0, f1);  // lanes: Cb0 Y1 Cr2 Y4 Y0 Cb2 Y3 Cr4
  const __m128i q = _mm_packs_epi32(f2, f2);  // lanes: Cr0 Y2 Cb4 Y5 ...
  constexpr int8_t Z = -128;
  // Byte pairs of lane n are 2n, 2n + 1.
  y = _mm_or_si128(_mm_shuffle_epi8(p, _mm_setr_epi8(8, 9, 2, 3, Z, Z, 12, 13, 6, 7, Z, Z, Z, Z, Z, Z)),
                   _mm_shuffle_epi8(q, _mm_setr_epi8(Z, Z, Z, Z, 2, 3, Z, Z, Z, Z, 6, 7, Z, Z, Z, Z)));
  cb = _mm_or_si128(_mm_shuffle_epi8(p, _mm_setr_epi8(0, 1, 0, 1, 10, 11, 10, 11, Z, Z, Z, Z, Z, Z, Z, Z)),
                    _mm_shuffle_epi8(q, _mm_setr_epi8(Z, Z, Z, Z, Z, Z, Z, Z, 4, 5, 4, 5, Z, Z, Z, Z)));
  cr = _mm_or_si128(_mm_shuffle_epi8(p, _mm_setr_epi8(Z, Z, Z, Z, 4, 5, 4, 5, 14, 15, 14, 15, Z, Z, Z, Z)),
                    _mm_shuffle_epi8(q, _mm_setr_epi8(0, 1, 0, 1, Z, Z, Z, Z, Z, Z, Z, Z, Z, Z, Z, Z)));
}

// Lanes 0..5 to twelve bytes at d.
inline void store6(Lum16u* d, __m128i v) {
  _mm_storel_epi64(reinterpret_cast<__m128i*>(d), v);
  const uint32_t last = uint32_t(_mm_extract_epi32(v, 2));
  std::memcpy(d + 4, &last, 4);
}
#endif

// Rec. 709 colour to a 5-6-5 word. R and B occupy bits 0..4 and 11..15 in the
// order of the destination's name.
template <bool Bgr>
struct Rgb565Form {
  static constexpr float kRv = coef::bt709::kV210Rv, kGv = coef::bt709::kV210Gv, kGu = coef::bt709::kV210Gu,
                         kBu = coef::bt709::kV210Bu;

  static int clampTo(int v, int hi) { return v < 0 ? 0 : (v > hi ? hi : v); }
  static Lum16u merge(int r, int g, int b) {
    return Lum16u(Bgr ? (b | g << 5 | r << 11) : (r | g << 5 | b << 11));
  }
  static Lum16u pixel(const Lum32u* grp, int i) {
    const float y = float(sample(grp, kY[i]));
    const float u = float(sample(grp, kCb[i / 2])) - 512.0f;
    const float v = float(sample(grp, kCr[i / 2])) - 512.0f;
    const float r = kRv * v + y;
    const float g = (kGv * v + y) + kGu * u;
    const float b = kBu * u + y;
    return merge(clampTo(cvtNearest(r), 31), clampTo(cvtNearest(g), 63), clampTo(cvtNearest(b), 31));
  }
  // The lanes of pixel(): in = {Y, Cb, Cr} as 16-bit lanes; out = the words of
  // the lanes of each widen() half, as 32-bit lanes. Lanes whose chroma is 0
  // compute finite values that the caller drops.
  template <class O, class V = typename O::V>
  static void vblock(const V* in, V* out) {
    using F = typename O::F;
    V yh[2], uh[2], vh[2];
    O::widen(in[0], yh[0], yh[1]);
    O::widen(O::sub16(in[1], O::set(512)), uh[0], uh[1]);
    O::widen(O::sub16(in[2], O::set(512)), vh[0], vh[1]);
    auto q = [](F x, int hi) { return O::min32(O::max32(O::cvtfi(x), O::zero()), O::set32(hi)); };
    for (int h = 0; h < 2; ++h) {
      const F y = O::cvtif(yh[h]), u = O::cvtif(uh[h]), v = O::cvtif(vh[h]);
      const F r = O::addf(O::mulf(O::setf(kRv), v), y);
      const F g = O::addf(O::addf(O::mulf(O::setf(kGv), v), y), O::mulf(O::setf(kGu), u));
      const F b = O::addf(O::mulf(O::setf(kBu), u), y);
      const V ri = q(r, 31), gi = q(g, 63), bi = q(b, 31);
      out[h] = O::or_(O::or_(Bgr ? bi : ri, O::sll32(gi, 5)), O::sll32(Bgr ? ri : bi, 11));
    }
  }
#if LUM_SIMD_SSE
  // Six pixels of the group at grp to six words at d, lanes 0..5 of the decode.
  static void block(const Lum32u* grp, Lum16u* d) {
    __m128i in[3], out[2];
    decode(grp, in[0], in[1], in[2]);
    vblock<lanes::Sse>(in, out);
    store6(d, _mm_packus_epi32(out[0], out[1]));
  }
#endif
};

// The luma samples themselves, by integer moves.
struct LumaForm {
  static Lum16u pixel(const Lum32u* grp, int i) { return Lum16u(sample(grp, kY[i])); }
#if LUM_SIMD_SSE
  static void block(const Lum32u* grp, Lum16u* d) {
    __m128i y, cb, cr;
    decode(grp, y, cb, cr);
    store6(d, y);
  }
#endif
};

// Row kernel: width / 6 whole groups of four words, then the last width % 6
// pixels, each reading only the words that hold its samples (one pixel reads
// word 0, two words 0 and 1, three and four words 0..2, five all four).
template <class Form>
void v210Row(const Lum32u* s, Lum16u* d, int width) {
  const int groups = width / 6;
  int g = 0;
#if LUM_SIMD_SSE
  if (useVector())
    for (; g < groups; ++g) Form::block(s + 4 * g, d + 6 * g);
#endif
  for (; g < groups; ++g)
    for (int i = 0; i < 6; ++i) storeAt(d + 6 * g + i, Form::pixel(s + 4 * g, i));
  for (int i = 0; i < width % 6; ++i) storeAt(d + 6 * groups + i, Form::pixel(s + 4 * groups, i));
}

// Public layer with its own row loop. Pointers, then size and both steps: a step
// below 1 is a size error here.
template <class Form>
LumStatus v210Image(const Lum32u* pSrc, int srcStep, Lum16u* pDst, int dstStep, LumSize roi) {
  if (!pSrc || !pDst) return lumStatusNullPointer;
  if (roi.width < 1 || roi.height < 1 || srcStep < 1 || dstStep < 1) return lumStatusBadSize;
  for (int y = 0; y < roi.height; ++y) v210Row<Form>(rowOfElems(pSrc, y, srcStep), rowOfElems(pDst, y, dstStep), roi.width);
  return lumStatusOk;
}

}  // namespace

LumStatus lumiYUV422v210ToRGB_709HDTV_32u16u_C3(const Lum32u* pSrc, int srcStep, Lum16u* pDst, int dstStep,
                                                LumSize roi) {
  return v210Image<Rgb565Form<false>>(pSrc, srcStep, pDst, dstStep, roi);
}
LumStatus lumiYUV422v210ToBGR_709HDTV_32u16u_C3(const Lum32u* pSrc, int srcStep, Lum16u* pDst, int dstStep,
                                                LumSize roi) {
  return v210Image<Rgb565Form<true>>(pSrc, srcStep, pDst, dstStep, roi);
}
LumStatus lumiYUV422v210ToGray_709HDTV_32u16u_C3C1(const Lum32u* pSrc, int srcStep, Lum16u* pDst, int dstStep,
                                                   LumSize roi) {
  return v210Image<LumaForm>(pSrc, srcStep, pDst, dstStep, roi);
}
