// The 256-bit set (AVX2) of the lane vocabulary in lanes.h: the same
// operations as Sse, on two 128-bit halves at once. Include it only from the
// *_avx2.cpp files, which the build compiles for AVX2 and the library enters
// only after asking the processor (useWide()). It lives in an unnamed namespace
// so that everything instantiated with it stays inside those files and no AVX2
// code can stand in for a function that the baseline files share.
#pragma once

#include "frame/lanes.h"

#if LUM_SIMD_SSE && defined(__AVX2__)
namespace lum::lanes {
namespace {

struct Avx2 {
  using V = __m256i;
  using F = __m256;
  using D = __m256d;
  static constexpr int kLanes = 16;

  // ---- memory
  static V load(const void* p) { return _mm256_loadu_si256(static_cast<const V*>(p)); }
  static V loadA(const void* p) { return _mm256_load_si256(static_cast<const V*>(p)); }
  static void store(void* p, V v) { _mm256_storeu_si256(static_cast<V*>(p), v); }
  static void storeA(void* p, V v) { _mm256_store_si256(static_cast<V*>(p), v); }
  static void stream(void* p, V v) { _mm256_stream_si256(static_cast<V*>(p), v); }
  static void fence() { _mm_sfence(); }
  static V splat8(int v) { return _mm256_set1_epi8(char(v)); }

  // ---- 16-bit lanes
  static V set(int v) { return _mm256_set1_epi16(int16_t(v)); }
  static V zero() { return _mm256_setzero_si256(); }
  static V mulhi16u(V a, V b) { return _mm256_mulhi_epu16(a, b); }
  static V mulhi16s(V a, V b) { return _mm256_mulhi_epi16(a, b); }
  static V mulhrs16s(V a, V b) { return _mm256_mulhrs_epi16(a, b); }
  static V mullo16(V a, V b) { return _mm256_mullo_epi16(a, b); }
  static V adds16s(V a, V b) { return _mm256_adds_epi16(a, b); }
  static V subs16s(V a, V b) { return _mm256_subs_epi16(a, b); }
  static V addus16u(V a, V b) { return _mm256_adds_epu16(a, b); }
  static V subus16u(V a, V b) { return _mm256_subs_epu16(a, b); }
  static V add16(V a, V b) { return _mm256_add_epi16(a, b); }
  static V sub16(V a, V b) { return _mm256_sub_epi16(a, b); }
  static V min16(V a, V b) { return _mm256_min_epi16(a, b); }
  static V max16(V a, V b) { return _mm256_max_epi16(a, b); }
  static V avg16(V a, V b) { return _mm256_avg_epu16(a, b); }
  static V sll(V a, int n) { return _mm256_slli_epi16(a, n); }
  static V srl(V a, int n) { return _mm256_srli_epi16(a, n); }
  static V sra(V a, int n) { return _mm256_srai_epi16(a, n); }
  static V clamp8(V a) { return _mm256_min_epi16(_mm256_max_epi16(a, _mm256_setzero_si256()), set(255)); }
  static V and_(V a, V b) { return _mm256_and_si256(a, b); }
  static V or_(V a, V b) { return _mm256_or_si256(a, b); }
  static V xor_(V a, V b) { return _mm256_xor_si256(a, b); }
  static V andnot(V a, V b) { return _mm256_andnot_si256(a, b); }

  // ---- 32-bit lanes
  static V set32(int v) { return _mm256_set1_epi32(v); }
  static V add32(V a, V b) { return _mm256_add_epi32(a, b); }
  static V sub32(V a, V b) { return _mm256_sub_epi32(a, b); }
  static V mullo32(V a, V b) { return _mm256_mullo_epi32(a, b); }
  static V mul32(V a, int c) { return _mm256_mullo_epi32(a, _mm256_set1_epi32(c)); }
  static V min32(V a, V b) { return _mm256_min_epi32(a, b); }
  static V max32(V a, V b) { return _mm256_max_epi32(a, b); }
  static V sll32(V a, int n) { return _mm256_slli_epi32(a, n); }
  static V srl32(V a, int n) { return _mm256_srli_epi32(a, n); }
  static V sra32(V a, int n) { return _mm256_srai_epi32(a, n); }
  static void widen(V a, V& lo, V& hi) {
    lo = _mm256_srai_epi32(_mm256_unpacklo_epi16(a, a), 16);
    hi = _mm256_srai_epi32(_mm256_unpackhi_epi16(a, a), 16);
  }
  static V narrow(V lo, V hi) { return _mm256_packs_epi32(lo, hi); }
  static void madd(V a, V b, int ca, int cb, V& lo, V& hi) {
    const V k = _mm256_set1_epi32(int(uint32_t(uint16_t(ca)) | (uint32_t(uint16_t(cb)) << 16)));
    lo = _mm256_madd_epi16(_mm256_unpacklo_epi16(a, b), k);
    hi = _mm256_madd_epi16(_mm256_unpackhi_epi16(a, b), k);
  }

  // ---- single-precision lanes
  static F setf(float v) { return _mm256_set1_ps(v); }
  static F zerof() { return _mm256_setzero_ps(); }
  static F loadf(const float* p) { return _mm256_loadu_ps(p); }
  static void storef(float* p, F v) { _mm256_storeu_ps(p, v); }
  static F addf(F a, F b) { return _mm256_add_ps(a, b); }
  static F subf(F a, F b) { return _mm256_sub_ps(a, b); }
  static F mulf(F a, F b) { return _mm256_mul_ps(a, b); }
  static F divf(F a, F b) { return _mm256_div_ps(a, b); }
  static F minf(F a, F b) { return _mm256_min_ps(a, b); }
  static F maxf(F a, F b) { return _mm256_max_ps(a, b); }
  static F cvtif(V a) { return _mm256_cvtepi32_ps(a); }
  static V cvtfi(F a) { return _mm256_cvtps_epi32(a); }
  static V cvttfi(F a) { return _mm256_cvttps_epi32(a); }
  // The library's reciprocal estimate on eight lanes: the same masks as the
  // 128-bit form, the mantissa table read by a gather.
  static F rcpf(F a) {
    const __m256i b = _mm256_castps_si256(a);
    const __m256i sign = _mm256_and_si256(b, _mm256_set1_epi32(int(0x80000000u)));
    const __m256i ex = _mm256_and_si256(_mm256_srli_epi32(b, 23), _mm256_set1_epi32(0xFF));
    const __m256i idx = _mm256_and_si256(_mm256_srli_epi32(b, 12), _mm256_set1_epi32(0x7FF));
    const __m256i mant = _mm256_i32gather_epi32(reinterpret_cast<const int*>(kRcpMantissa.data()), idx, 4);
    __m256i r = _mm256_or_si256(_mm256_or_si256(sign, _mm256_slli_epi32(_mm256_sub_epi32(_mm256_set1_epi32(253), ex), 23)), mant);
    r = _mm256_blendv_epi8(r, sign, _mm256_cmpgt_epi32(ex, _mm256_set1_epi32(252)));
    r = _mm256_blendv_epi8(r, _mm256_or_si256(sign, _mm256_set1_epi32(0x7F800000)),
                           _mm256_cmpeq_epi32(ex, _mm256_setzero_si256()));
    const __m256i absb = _mm256_and_si256(b, _mm256_set1_epi32(0x7FFFFFFF));
    r = _mm256_blendv_epi8(r, _mm256_or_si256(b, _mm256_set1_epi32(0x400000)),
                           _mm256_cmpgt_epi32(absb, _mm256_set1_epi32(0x7F800000)));
    return _mm256_castsi256_ps(r);
  }

  // ---- double-precision lanes
  static D setd(double v) { return _mm256_set1_pd(v); }
  static D zerod() { return _mm256_setzero_pd(); }
  static D loadd(const double* p) { return _mm256_loadu_pd(p); }
  static void stored(double* p, D v) { _mm256_storeu_pd(p, v); }
  static D addd(D a, D b) { return _mm256_add_pd(a, b); }
  static D subd(D a, D b) { return _mm256_sub_pd(a, b); }
  static D muld(D a, D b) { return _mm256_mul_pd(a, b); }
  static D divd(D a, D b) { return _mm256_div_pd(a, b); }

  // ---- shuffles inside 128-bit halves
  static V hadd16(V a, V b) { return _mm256_hadd_epi16(a, b); }
  // ---- byte lanes
  static V avg8(V a, V b) { return _mm256_avg_epu8(a, b); }
  static V sub8(V a, V b) { return _mm256_sub_epi8(a, b); }
  static V maddubs16(V a, V b) { return _mm256_maddubs_epi16(a, b); }
  static V packus16(V lo, V hi) { return _mm256_packus_epi16(lo, hi); }
  static V zipLo8(V a, V b) { return _mm256_unpacklo_epi8(a, b); }
  static V zipHi8(V a, V b) { return _mm256_unpackhi_epi8(a, b); }
  // ---- partial loads and reductions of float lanes
  // Lane 0, or lanes 0 and 1, of the whole register; the other lanes as in Sse.
  static F loadf1(const float* p) { return _mm256_zextps128_ps256(_mm_castsi128_ps(_mm_loadu_si32(p))); }
  static F loadf2(const float* p) {
    return _mm256_zextps128_ps256(_mm_castsi128_ps(_mm_loadl_epi64(reinterpret_cast<const __m128i*>(p))));
  }
  static F maxf1(F acc, const float* p) { return _mm256_blend_ps(acc, _mm256_max_ps(acc, loadf1(p)), 1); }
  static F maxf2(F acc, const float* p) { return _mm256_blend_ps(acc, _mm256_max_ps(acc, loadf2(p)), 3); }
  // The upper 128-bit half folded onto the lower one (l + l[4 + i]), then as in Sse.
  static void foldAddf(F t, float& lo, float& hi) {
    const __m128 q = _mm_add_ps(_mm256_castps256_ps128(t), _mm256_extractf128_ps(t, 1));
    const __m128 f = _mm_add_ps(q, _mm_movehl_ps(q, q));
    lo = _mm_cvtss_f32(f);
    hi = _mm_cvtss_f32(_mm_shuffle_ps(f, f, 1));
  }
  static float foldMaxf(F t) {
    const __m128 q = _mm_max_ps(_mm256_castps256_ps128(t), _mm256_extractf128_ps(t, 1));
    const __m128 h = _mm_max_ps(q, _mm_movehl_ps(q, q));
    return _mm_cvtss_f32(_mm_max_ss(h, _mm_shuffle_ps(h, h, 1)));
  }
  // Within each 128-bit half, as in Sse.
  static F evensf(F a, F b) { return _mm256_shuffle_ps(a, b, _MM_SHUFFLE(2, 0, 2, 0)); }
  static F oddsf(F a, F b) { return _mm256_shuffle_ps(a, b, _MM_SHUFFLE(3, 1, 3, 1)); }
  // Each 128-bit half's float lanes 0 and 1 (or 2 and 3) to that half's double lanes.
  static D cvtfdLo(F a) {
    return _mm256_cvtps_pd(_mm256_castps256_ps128(_mm256_permutevar8x32_ps(a, _mm256_setr_epi32(0, 1, 4, 5, 2, 3, 6, 7))));
  }
  static D cvtfdHi(F a) {
    return _mm256_cvtps_pd(_mm256_extractf128_ps(_mm256_permutevar8x32_ps(a, _mm256_setr_epi32(0, 1, 4, 5, 2, 3, 6, 7)), 1));
  }
  // (l0 + l1) + (l2 + l3): each half's sum, then the halves.
  static double sumd(D a) {
    const __m128d lo = _mm256_castpd256_pd128(a), hi = _mm256_extractf128_pd(a, 1);
    return (_mm_cvtsd_f64(lo) + _mm_cvtsd_f64(_mm_unpackhi_pd(lo, lo))) +
           (_mm_cvtsd_f64(hi) + _mm_cvtsd_f64(_mm_unpackhi_pd(hi, hi)));
  }
  // ---- shuffles inside 128-bit halves
  static V evens16(V a, V b) {
    return _mm256_packs_epi32(_mm256_srai_epi32(_mm256_slli_epi32(a, 16), 16),
                              _mm256_srai_epi32(_mm256_slli_epi32(b, 16), 16));
  }
  static V odds16(V a, V b) { return _mm256_packs_epi32(_mm256_srai_epi32(a, 16), _mm256_srai_epi32(b, 16)); }
  static V slideUp16(V a, V c) { return _mm256_alignr_epi8(a, c, 14); }
  // ---- added for XYZ and LUV
  static F cmplef(F a, F b) { return _mm256_cmp_ps(a, b, _CMP_LE_OQ); }
  static F cmpeqf(F a, F b) { return _mm256_cmp_ps(a, b, _CMP_EQ_OQ); }
  static F selectf(F m, F a, F b) { return _mm256_blendv_ps(b, a, m); }
  static F absf(F a) { return _mm256_and_ps(a, _mm256_castsi256_ps(_mm256_set1_epi32(0x7FFFFFFF))); }

  // ---- added for the power kernel
  static V castfv(F a) { return _mm256_castps_si256(a); }
  static F castvf(V a) { return _mm256_castsi256_ps(a); }
  static F cmpltf(F a, F b) { return _mm256_cmp_ps(a, b, _CMP_LT_OQ); }
  // Sign bits of all eight lanes as bits 0..7.
  static int maskf(F a) { return _mm256_movemask_ps(a); }
  // Within each 128-bit half, as in Sse: that half's two lanes of lo, then of hi.
  static F cvtdf(D lo, D hi) {
    const __m256 q = _mm256_set_m128(_mm256_cvtpd_ps(hi), _mm256_cvtpd_ps(lo));
    return _mm256_permutevar8x32_ps(q, _mm256_setr_epi32(0, 1, 4, 5, 2, 3, 6, 7));
  }
  static D mind(D a, D b) { return _mm256_min_pd(a, b); }
  static D maxd(D a, D b) { return _mm256_max_pd(a, b); }

  // ---- added for bit-depth reduction
  static F andf(F a, F b) { return _mm256_and_ps(a, b); }
  // ---- added for YCoCg
  static V adds8u(V a, V b) { return _mm256_adds_epu8(a, b); }
  // ---- added for HLS and HSV
  static F andnotf(F a, F b) { return _mm256_andnot_ps(a, b); }
  // ---- added for Lab
  static F leSelectf(F a, F b, F x, F y) { return _mm256_blendv_ps(y, x, _mm256_cmp_ps(a, b, _CMP_LE_OQ)); }
  static D leSelectd(D a, D b, D x, D y) { return _mm256_blendv_pd(y, x, _mm256_cmp_pd(a, b, _CMP_LE_OQ)); }
  // Eight 64-bit loads rather than gathers, which are slow on many processors.
  static void pairsf(const float* t, V i, F& a, F& b) {
    const auto pair = [t](int k) { return reinterpret_cast<const double*>(t + 2 * std::ptrdiff_t(k)); };
    const auto two = [&](__m128i v, int j) {
      return _mm_castpd_ps(_mm_loadh_pd(_mm_load_sd(pair(_mm_extract_epi32(v, j))), pair(_mm_extract_epi32(v, j + 1))));
    };
    const __m128i lo = _mm256_castsi256_si128(i), hi = _mm256_extracti128_si256(i, 1);
    const __m256 p01 = _mm256_set_m128(two(hi, 0), two(lo, 0)), p23 = _mm256_set_m128(two(hi, 2), two(lo, 2));
    a = _mm256_shuffle_ps(p01, p23, _MM_SHUFFLE(2, 0, 2, 0));
    b = _mm256_shuffle_ps(p01, p23, _MM_SHUFFLE(3, 1, 3, 1));
  }
};

}  // namespace
}  // namespace lum::lanes
#endif
