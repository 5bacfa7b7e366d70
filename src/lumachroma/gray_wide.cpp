// 256-bit blocks of the gray forms, for processors with AVX2. Each block is the
// 128-bit block of its form run on two groups at once, one per 128-bit lane,
// with the same lane arithmetic, so results never depend on which block runs.
// Every header comes first, so that only the functions defined below the
// target switch are compiled for AVX2; callers test the processor first
// (avx2::usable()). The file is named outside the *_avx2.cpp pattern on purpose:
// the whole-file AVX2 flag would also compile the shared headers for AVX2.
#include "frame/wide.h"
#include "lumachroma/forms_gray.h"

#if LUM_SIMD_SSE

namespace lum::gray::avx2 {
// Asked before any AVX2 code runs, so it is built for the baseline processor.
bool usable() noexcept { return lum::wideEnabled() && lum::cpuHasAvx2(); }
}  // namespace lum::gray::avx2

#pragma GCC push_options
#pragma GCC target("avx2")

namespace lum::gray::avx2 {

namespace {

using Y = __m256i;

// A 128-bit pattern in both lanes.
inline Y both(__m128i v) { return _mm256_broadcastsi128_si256(v); }
// Lane 0 from p, lane 1 from p + off bytes.
inline Y load2(const void* p, std::ptrdiff_t off) {
  const auto* b = static_cast<const uint8_t*>(p);
  return _mm256_inserti128_si256(_mm256_castsi128_si256(_mm_loadu_si128(reinterpret_cast<const __m128i*>(b))),
                                 _mm_loadu_si128(reinterpret_cast<const __m128i*>(b + off)), 1);
}
inline Y shuf(Y v, __m128i m) { return _mm256_shuffle_epi8(v, both(m)); }

// Two 48-byte groups of three-channel pixels (lane 1 at p + 48) into three
// vectors, with the 128-bit split's mask table.
inline void gather3(const uint8_t* p, const int8_t (&t)[3][3][16], Y out[3]) {
  const Y a = load2(p, 48), b = load2(p + 16, 48), c = load2(p + 32, 48);
  for (int k = 0; k < 3; ++k) {
    const __m128i m0 = _mm_load_si128(reinterpret_cast<const __m128i*>(t[k][0]));
    const __m128i m1 = _mm_load_si128(reinterpret_cast<const __m128i*>(t[k][1]));
    const __m128i m2 = _mm_load_si128(reinterpret_cast<const __m128i*>(t[k][2]));
    out[k] = _mm256_or_si256(_mm256_or_si256(shuf(a, m0), shuf(b, m1)), shuf(c, m2));
  }
}

// Two 64-byte groups of four-channel pixels (lane 1 at p + 64) into the first
// three channels' vectors, as the 128-bit gather4.
inline void gather4(const uint8_t* p, __m128i m, Y out[3]) {
  Y v[4];
  for (int i = 0; i < 4; ++i) v[i] = shuf(load2(p + 16 * i, 64), m);
  const Y lo01 = _mm256_unpacklo_epi32(v[0], v[1]), lo23 = _mm256_unpacklo_epi32(v[2], v[3]);
  const Y hi01 = _mm256_unpackhi_epi32(v[0], v[1]), hi23 = _mm256_unpackhi_epi32(v[2], v[3]);
  out[0] = _mm256_unpacklo_epi64(lo01, lo23);
  out[1] = _mm256_unpackhi_epi64(lo01, lo23);
  out[2] = _mm256_unpacklo_epi64(hi01, hi23);
}

inline void split3x16(const uint8_t* p, Y out[3]) { gather3(p, detail::kSplit3, out); }
inline void split4x16(const uint8_t* p, Y out[3]) { gather4(p, detail::byChannel8(), out); }
inline void split3x8w(const uint16_t* p, Y out[3]) {
  gather3(reinterpret_cast<const uint8_t*>(p), detail::kSplit3w, out);
}
inline void split4x8w(const uint16_t* p, Y out[3]) {
  gather4(reinterpret_cast<const uint8_t*>(p), detail::byChannel16(), out);
}

// Four 3- or 4-channel float pixels per lane (lane 1 at p + 4N floats).
template <int N>
inline void split4f(const float* p, __m256 out[3]) {
  if constexpr (N == 3) {
    const __m256 a = _mm256_castsi256_ps(load2(p, 48)), b = _mm256_castsi256_ps(load2(p + 4, 48)),
                 c = _mm256_castsi256_ps(load2(p + 8, 48));
    const __m256 t1 = _mm256_shuffle_ps(b, c, _MM_SHUFFLE(1, 1, 2, 2));
    const __m256 t2 = _mm256_shuffle_ps(b, c, _MM_SHUFFLE(2, 2, 3, 3));
    const __m256 t3 = _mm256_shuffle_ps(a, b, _MM_SHUFFLE(0, 0, 1, 1));
    const __m256 t4 = _mm256_shuffle_ps(a, b, _MM_SHUFFLE(1, 1, 2, 2));
    const __m256 t5 = _mm256_shuffle_ps(c, c, _MM_SHUFFLE(3, 3, 0, 0));
    out[0] = _mm256_shuffle_ps(a, t1, _MM_SHUFFLE(2, 0, 3, 0));
    out[1] = _mm256_shuffle_ps(t3, t2, _MM_SHUFFLE(2, 0, 2, 0));
    out[2] = _mm256_shuffle_ps(t4, t5, _MM_SHUFFLE(2, 0, 2, 0));
  } else {
    __m256 v[4];
    for (int i = 0; i < 4; ++i) v[i] = _mm256_castsi256_ps(load2(p + 4 * i, 64));
    const __m256 t0 = _mm256_unpacklo_ps(v[0], v[1]), t1 = _mm256_unpacklo_ps(v[2], v[3]);
    const __m256 t2 = _mm256_unpackhi_ps(v[0], v[1]), t3 = _mm256_unpackhi_ps(v[2], v[3]);
    out[0] = _mm256_castpd_ps(_mm256_unpacklo_pd(_mm256_castps_pd(t0), _mm256_castps_pd(t1)));
    out[1] = _mm256_castpd_ps(_mm256_unpackhi_pd(_mm256_castps_pd(t0), _mm256_castps_pd(t1)));
    out[2] = _mm256_castpd_ps(_mm256_unpacklo_pd(_mm256_castps_pd(t2), _mm256_castps_pd(t3)));
  }
}

}  // namespace

// 8u block, 32 pixels a step: the lanes of GrayQ15Block::block.
template <int N>
int q15(const uint8_t* s, uint8_t* d, int n, const GrayQ15Block& f) {
  const Y z = _mm256_setzero_si256(), r64 = _mm256_set1_epi16(64);
  const Y k0 = _mm256_set1_epi16(int16_t(f.k[0])), k1 = _mm256_set1_epi16(int16_t(f.k[1])),
          k2 = _mm256_set1_epi16(int16_t(f.k[2]));
  int x = 0;
  for (; x + 32 <= n; x += 32) {
    Y c[3];
    if constexpr (N == 3) split3x16(s + 3 * x, c);
    else split4x16(s + 4 * x, c);
    const Y lo = _mm256_adds_epu16(
        _mm256_adds_epu16(_mm256_adds_epu16(_mm256_mulhi_epu16(_mm256_unpacklo_epi8(z, c[0]), k0),
                                            _mm256_mulhi_epu16(_mm256_unpacklo_epi8(z, c[1]), k1)),
                          _mm256_mulhi_epu16(_mm256_unpacklo_epi8(z, c[2]), k2)),
        r64);
    const Y hi = _mm256_adds_epu16(
        _mm256_adds_epu16(_mm256_adds_epu16(_mm256_mulhi_epu16(_mm256_unpackhi_epi8(z, c[0]), k0),
                                            _mm256_mulhi_epu16(_mm256_unpackhi_epi8(z, c[1]), k1)),
                          _mm256_mulhi_epu16(_mm256_unpackhi_epi8(z, c[2]), k2)),
        r64);
    _mm256_storeu_si256(reinterpret_cast<Y*>(d + x),
                        _mm256_packus_epi16(_mm256_srai_epi16(lo, 7), _mm256_srai_epi16(hi, 7)));
  }
  return x;
}
template int q15<3>(const uint8_t*, uint8_t*, int, const GrayQ15Block&);
template int q15<4>(const uint8_t*, uint8_t*, int, const GrayQ15Block&);

// 16u / 16s block, 16 pixels a step: the lanes of GrayRoundF32::block.
template <class T, int N>
int roundF32(const T* s, T* d, int n, const GrayRoundF32<T>& f) {
  constexpr bool kSigned = std::is_same_v<T, Lum16s>;
  const __m256 w0 = _mm256_set1_ps(f.w[0]), w1 = _mm256_set1_ps(f.w[1]), w2 = _mm256_set1_ps(f.w[2]);
  int x = 0;
  for (; x + 16 <= n; x += 16) {
    Y c[3];
    const auto* p = reinterpret_cast<const uint16_t*>(s + N * x);
    if constexpr (N == 3) split3x8w(p, c);
    else split4x8w(p, c);
    // Lane halves: pixels 0..3 | 8..11, then 4..7 | 12..15; the 32-bit pack
    // puts them back in order.
    Y half[2];
    for (int h = 0; h < 2; ++h) {
      __m256 v[3];
      for (int ch = 0; ch < 3; ++ch) {
        const Y u = h ? _mm256_unpackhi_epi16(c[ch], c[ch]) : _mm256_unpacklo_epi16(c[ch], c[ch]);
        v[ch] = _mm256_cvtepi32_ps(kSigned ? _mm256_srai_epi32(u, 16) : _mm256_srli_epi32(u, 16));
      }
      const __m256 sum = _mm256_add_ps(_mm256_add_ps(_mm256_mul_ps(v[0], w0), _mm256_mul_ps(v[1], w1)),
                                       _mm256_mul_ps(v[2], w2));
      half[h] = _mm256_cvtps_epi32(sum);
    }
    const Y out = kSigned ? _mm256_packs_epi32(half[0], half[1]) : _mm256_packus_epi32(half[0], half[1]);
    _mm256_storeu_si256(reinterpret_cast<Y*>(d + x), out);
  }
  return x;
}
template int roundF32<Lum16u, 3>(const Lum16u*, Lum16u*, int, const GrayRoundF32<Lum16u>&);
template int roundF32<Lum16u, 4>(const Lum16u*, Lum16u*, int, const GrayRoundF32<Lum16u>&);
template int roundF32<Lum16s, 3>(const Lum16s*, Lum16s*, int, const GrayRoundF32<Lum16s>&);
template int roundF32<Lum16s, 4>(const Lum16s*, Lum16s*, int, const GrayRoundF32<Lum16s>&);

// 32f block, 8 pixels a step: the lanes of GrayF32::block.
template <int N>
int f32(const float* s, float* d, int n, const GrayF32& f) {
  const __m256 w0 = _mm256_set1_ps(f.w[0]), w1 = _mm256_set1_ps(f.w[1]), w2 = _mm256_set1_ps(f.w[2]);
  int x = 0;
  for (; x + 8 <= n; x += 8) {
    __m256 c[3];
    split4f<N>(s + N * x, c);
    const __m256 sum = _mm256_add_ps(_mm256_add_ps(_mm256_mul_ps(w0, c[0]), _mm256_mul_ps(w1, c[1])),
                                     _mm256_mul_ps(w2, c[2]));
    _mm256_storeu_ps(d + x, sum);
  }
  return x;
}
template int f32<3>(const float*, float*, int, const GrayF32&);
template int f32<4>(const float*, float*, int, const GrayF32&);

// Gray to colour: GrayToColor::block per 16 bytes of output. Four channels take
// 8 source bytes a step, in both lanes, each lane spreading its half; three
// channels take 32 source bytes a step and put the six 16-byte blocks in order.
template <class T, int N>
int spread(const T* s, T* d, int n, const GrayToColor<T, N>& f) {
  static constexpr gray::detail::Spread<int(sizeof(T)), N> kSpread{};
  const Y alpha = both(f.alphaPattern());
  auto mask = [&](int j) { return _mm_loadu_si128(reinterpret_cast<const __m128i*>(kSpread.mask[j])); };
  int x = 0;
  if constexpr (N == 4) {
    constexpr int kStep = 8 / int(sizeof(T));
    const Y m = _mm256_inserti128_si256(_mm256_castsi128_si256(mask(0)), mask(1), 1);
    for (; x + kStep <= n; x += kStep) {
      long long q;
      std::memcpy(&q, s + x, 8);
      const Y v = _mm256_set1_epi64x(q);
      _mm256_storeu_si256(reinterpret_cast<Y*>(d + 4 * x), _mm256_or_si256(_mm256_shuffle_epi8(v, m), alpha));
    }
  } else {
    constexpr int kStep = 32 / int(sizeof(T));
    const Y m0 = both(mask(0)), m1 = both(mask(1)), m2 = both(mask(2));
    for (; x + kStep <= n; x += kStep) {
      // Lane 0 spreads the first 16 source bytes into blocks 0..2, lane 1 the
      // next 16 into blocks 3..5.
      const Y v = _mm256_loadu_si256(reinterpret_cast<const Y*>(s + x));
      const Y o0 = _mm256_shuffle_epi8(v, m0), o1 = _mm256_shuffle_epi8(v, m1), o2 = _mm256_shuffle_epi8(v, m2);
      auto* q = reinterpret_cast<Y*>(d + 3 * x);
      _mm256_storeu_si256(q, _mm256_permute2x128_si256(o0, o1, 0x20));
      _mm256_storeu_si256(q + 1, _mm256_permute2x128_si256(o2, o0, 0x30));
      _mm256_storeu_si256(q + 2, _mm256_permute2x128_si256(o1, o2, 0x31));
    }
  }
  return x;
}
template int spread<Lum8u, 3>(const Lum8u*, Lum8u*, int, const GrayToColor<Lum8u, 3>&);
template int spread<Lum8u, 4>(const Lum8u*, Lum8u*, int, const GrayToColor<Lum8u, 4>&);
template int spread<Lum16u, 3>(const Lum16u*, Lum16u*, int, const GrayToColor<Lum16u, 3>&);
template int spread<Lum16u, 4>(const Lum16u*, Lum16u*, int, const GrayToColor<Lum16u, 4>&);
template int spread<Lum32f, 3>(const Lum32f*, Lum32f*, int, const GrayToColor<Lum32f, 3>&);
template int spread<Lum32f, 4>(const Lum32f*, Lum32f*, int, const GrayToColor<Lum32f, 4>&);

// Luma of packed 4:2:2, 32 pixels a step: LumaOf422::block16 on each half.
int luma422(const uint8_t* s, uint8_t* d, int n) {
  const Y m = _mm256_set1_epi16(0x00FF);
  int x = 0;
  for (; x + 32 <= n; x += 32) {
    const Y a = _mm256_and_si256(_mm256_loadu_si256(reinterpret_cast<const Y*>(s + 2 * x)), m);
    const Y b = _mm256_and_si256(_mm256_loadu_si256(reinterpret_cast<const Y*>(s + 2 * x + 32)), m);
    // packus interleaves the lanes (a0 b0 a1 b1); the permute restores the order.
    _mm256_storeu_si256(reinterpret_cast<Y*>(d + x), _mm256_permute4x64_epi64(_mm256_packus_epi16(a, b), 0xD8));
  }
  return x;
}

}  // namespace lum::gray::avx2

#pragma GCC pop_options

#endif
