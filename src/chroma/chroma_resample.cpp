// Chroma resampling between 4:2:0, 4:1:1 and 16:2:0 planes. Unlike the layout
// changes these average neighbouring samples, and the rounding of an average
// depends on where the sample falls in its row: the long blocks at the start of
// a row round half up, the short blocks and single samples after them round
// half down. The block lengths below therefore decide results; the vector code
// inside a block may be of any width, and its scalar twin is the per-sample rule
// with the same rounding.
#include "chroma/filter_rows.h"
#include "chroma/layout_drivers.h"
#include "frame/check.h"
#include "frame/fixed_point.h"
#include "frame/lanes.h"
#include "frame/window.h"

using namespace lum;
using namespace lum::chroma;

namespace {

// (a + b + 1) >> 1 or (a + b) >> 1.
template <bool Up>
inline int avg(int a, int b) {
  return Up ? fx::avg8(a, b) : (a + b) >> 1;
}
#if LUM_SIMD_SSE
// The same of byte lanes.
template <bool Up, class O = lanes::Sse, class W = typename O::V>
inline W avgBytes(W a, W b) {
  if constexpr (Up) return O::avg8(a, b);
  else return vrow::avgDown8<O>(a, b);
}
// Even bytes of 32 bytes at p, in order.
inline __m128i evens32(const uint8_t* p) {
  const __m128i lo = _mm_set1_epi16(0x00FF);
  return _mm_packus_epi16(_mm_and_si128(bytes::load<16>(p), lo), _mm_and_si128(bytes::load<16>(p + 16), lo));
}
#endif

// Runs Op over samples [j0, j1): vector blocks of Op::kBlock while they fit
// (vec, chosen once per call), then single samples; both with the rounding Up.
template <class Op, bool Up>
inline void span(const Op& op, int j0, int j1, bool vec) {
  int j = j0;
#if LUM_SIMD_SSE
  if (vec)
    for (; j + Op::kBlock <= j1; j += Op::kBlock) op.template block<Up>(j);
#endif
  (void)vec;
  for (; j < j1; ++j) op.template one<Up>(j);
}

// ---- 4:2:0 to 4:1:1 -----------------------------------------------------------------
// Sample j of a 4:1:1 row from sample 2j of one 4:2:0 row (Copy) or the average
// of sample 2j of two rows (Mean).
struct EvenCopy {
  static constexpr int kBlock = 16;
  const uint8_t* a;
  uint8_t* d;
  template <bool>
  void one(int j) const { d[j] = a[2 * j]; }
#if LUM_SIMD_SSE
  template <bool>
  void block(int j) const { bytes::store<16>(d + j, evens32(a + 2 * j)); }
#endif
};
struct EvenMean {
  static constexpr int kBlock = 16;
  const uint8_t *a, *b;
  uint8_t* d;
  template <bool Up>
  void one(int j) const { d[j] = uint8_t(avg<Up>(a[2 * j], b[2 * j])); }
#if LUM_SIMD_SSE
  template <bool Up>
  void block(int j) const { bytes::store<16>(d + j, avgBytes<Up>(evens32(a + 2 * j), evens32(b + 2 * j))); }
#endif
};

// One plane, height and width of the luma region. Input rows H/2 of W/2
// samples, output rows H of n = W/4. Each input row but the last gives output
// row 2r (its even samples) and 2r + 1 (their vertical average with the next
// row): blocks of 32 outputs round up, the blocks of 8 and single samples after
// them round down. The last input row gives two equal rows of its even samples.
void yuv420toyuv411_sse2_asm(const Lum8u* pSrc, int srcStep, Lum8u* pDst, int dstStep, int height, int width) {
  const bool vec = useVector();
  const int n = width / 4, rows = height / 2;
  const int up = n & ~31;  // outputs covered by blocks of 32
  // The row loop tests its end after a pass, so at least one regular pass runs:
  // a region two rows high reads input rows 0 and 1 and writes output rows 0 to 3.
  const int passes = rows > 1 ? rows - 1 : 1;
  window::eachRow(window::Plane{pSrc, srcStep}, 0, passes, std::array{0, 1}, window::Inside{},
                  [&](int r, const std::array<const uint8_t*, 2>& in) {
                    uint8_t* d0 = rowAt(pDst, 2 * r, dstStep);
                    uint8_t* d1 = rowAt(pDst, 2 * r + 1, dstStep);
                    span<EvenCopy, true>(EvenCopy{in[0], d0}, 0, n, vec);
                    const EvenMean mean{in[0], in[1], d1};
                    span<EvenMean, true>(mean, 0, up, vec);
                    span<EvenMean, false>(mean, up, n, vec);
                  });
  const uint8_t* last = rowAt(pSrc, passes, srcStep);
  span<EvenCopy, true>(EvenCopy{last, rowAt(pDst, 2 * passes, dstStep)}, 0, n, vec);
  span<EvenCopy, true>(EvenCopy{last, rowAt(pDst, 2 * passes + 1, dstStep)}, 0, n, vec);
}

// ---- horizontal doubling: 4:1:1 to 4:2:0 and the rows of 16:2:0 to 4:2:0 ------------------
// h(x): sample 2j is x[j], sample 2j + 1 the average of x[j] and x[j + 1].
// Blocks are decided by the input: while more than 16 inputs remain a block of
// 16 rounds up; later samples round down; the last input fills both of its
// outputs. So the inputs below 16 * ((n - 1) / 16) round up.
inline int roundUpInputs(int n) { return 16 * ((n - 1) / 16); }

struct Expand {
  static constexpr int kBlock = 16;
  const uint8_t* s;
  uint8_t* d;
  template <bool Up>
  void one(int j) const {
    d[2 * j] = s[j];
    d[2 * j + 1] = uint8_t(avg<Up>(s[j], s[j + 1]));
  }
#if LUM_SIMD_SSE
  template <bool Up>
  void block(int j) const {
    const __m128i x = bytes::load<16>(s + j), m = avgBytes<Up>(x, bytes::load<16>(s + j + 1));
    bytes::store<16>(d + 2 * j, _mm_unpacklo_epi8(x, m));
    bytes::store<16>(d + 2 * j + 16, _mm_unpackhi_epi8(x, m));
  }
#endif
};

// A row of n inputs expanded to 2n outputs, last input doubled.
inline void expandRow(const uint8_t* s, uint8_t* d, int n, bool vec) {
  const int up = roundUpInputs(n);
  const Expand e{s, d};
  span<Expand, true>(e, 0, up, vec);
  span<Expand, false>(e, up, n - 1, vec);
  d[2 * n - 2] = d[2 * n - 1] = s[n - 1];
}

// Input rows H of n = W/4, output rows H/2 of 2n: output row k is input row 2k
// expanded; the odd input rows are never read.
void yvu411toyuv420_sse2_asm(const Lum8u* pSrc, int srcStep, Lum8u* pDst, int dstStep, int height, int width) {
  const bool vec = useVector();
  const int n = width / 4;
  for (int k = 0; k < height / 2; ++k) expandRow(rowAt(pSrc, 2 * k, srcStep), rowAt(pDst, k, dstStep), n, vec);
}

// ---- 4:2:0 to 16:2:0 ------------------------------------------------------------------------
// Output row r, sample c is input row 2r, sample 2c: decimation, no arithmetic.
void yuv420toyuv1620_sse2_asm(const Lum8u* pSrc, int srcStep, Lum8u* pDst, int dstStep, int height, int width) {
  const bool vec = useVector();
  const int n = width / 4;
  for (int r = 0; r < height / 4; ++r)
    span<EvenCopy, true>(EvenCopy{rowAt(pSrc, 2 * r, srcStep), rowAt(pDst, r, dstStep)}, 0, n, vec);
}

// ---- 16:2:0 to 4:2:0 ------------------------------------------------------------------------
// The odd output row between input rows s and t: sample 2j the average of s[j]
// and t[j], sample 2j + 1 the average of h(s) and h(t) there, every average with
// the same rounding.
struct ExpandBetween {
  static constexpr int kBlock = 16;
  const uint8_t *s, *t;
  uint8_t* d;
  template <bool Up>
  void one(int j) const {
    d[2 * j] = uint8_t(avg<Up>(s[j], t[j]));
    d[2 * j + 1] = uint8_t(avg<Up>(avg<Up>(s[j], s[j + 1]), avg<Up>(t[j], t[j + 1])));
  }
#if LUM_SIMD_SSE
  template <bool Up>
  void block(int j) const {
    const __m128i a = bytes::load<16>(s + j), b = bytes::load<16>(t + j);
    const __m128i ha = avgBytes<Up>(a, bytes::load<16>(s + j + 1)), hb = avgBytes<Up>(b, bytes::load<16>(t + j + 1));
    const __m128i even = avgBytes<Up>(a, b), odd = avgBytes<Up>(ha, hb);
    bytes::store<16>(d + 2 * j, _mm_unpacklo_epi8(even, odd));
    bytes::store<16>(d + 2 * j + 16, _mm_unpackhi_epi8(even, odd));
  }
#endif
};

// Each input sample written twice, no interpolation.
struct Repeat {
  static constexpr int kBlock = 16;
  const uint8_t* s;
  uint8_t* d;
  template <bool>
  void one(int j) const { d[2 * j] = d[2 * j + 1] = s[j]; }
#if LUM_SIMD_SSE
  template <bool>
  void block(int j) const {
    const __m128i x = bytes::load<16>(s + j);
    bytes::store<16>(d + 2 * j, _mm_unpacklo_epi8(x, x));
    bytes::store<16>(d + 2 * j + 16, _mm_unpackhi_epi8(x, x));
  }
#endif
};

// Input rows H/4 of n = W/4, output rows H/2 of 2n. Each input row but the last
// gives h(s) and the row between it and the next; the last input row gives h(s)
// and, below it, its samples simply doubled. A region four rows high has only
// the last row.
void yvu1620toyuv420_sse2_asm(const Lum8u* pSrc, int srcStep, Lum8u* pDst, int dstStep, int height, int width) {
  const bool vec = useVector();
  const int n = width / 4, rows = height / 4;
  const int up = roundUpInputs(n);
  window::eachRow(window::Plane{pSrc, srcStep}, 0, rows - 1, std::array{0, 1}, window::Inside{},
                  [&](int r, const std::array<const uint8_t*, 2>& in) {
                    const uint8_t *s = in[0], *t = in[1];
                    uint8_t* d1 = rowAt(pDst, 2 * r + 1, dstStep);
                    expandRow(s, rowAt(pDst, 2 * r, dstStep), n, vec);
                    const ExpandBetween e{s, t, d1};
                    span<ExpandBetween, true>(e, 0, up, vec);
                    span<ExpandBetween, false>(e, up, n - 1, vec);
                    d1[2 * n - 2] = d1[2 * n - 1] = uint8_t(avg<false>(s[n - 1], t[n - 1]));
                  });
  const uint8_t* s = rowAt(pSrc, rows - 1, srcStep);
  expandRow(s, rowAt(pDst, 2 * rows - 2, dstStep), n, vec);
  span<Repeat, true>(Repeat{s, rowAt(pDst, 2 * rows - 1, dstStep)}, 0, n, vec);
}

using Kernel = void (*)(const Lum8u*, int, Lum8u*, int, int, int);

// Luma copied as it is; each chroma plane through the kernel with the luma size.
void resample(const Lum8u* const pSrc[3], const int srcStep[3], Lum8u* const pDst[3], const int dstStep[3],
              LumSize roi, Kernel kernel) {
  lumiCopy_8u_C1R(pSrc[0], srcStep[0], pDst[0], dstStep[0], roi);
  for (int c = 1; c < 3; ++c) kernel(pSrc[c], srcStep[c], pDst[c], dstStep[c], roi.height, roi.width);
}

}  // namespace

// Vertical averaging in long blocks rounds up, in short blocks and alone down.
LumStatus lumiYCbCr420To411_8u_P3R(const Lum8u* const pSrc[3], const int srcStep[3], Lum8u* const pDst[3],
                                   const int dstStep[3], LumSize roi) {
  if (nullPlanes(pSrc) || nullPlanes(pDst)) return lumStatusNullPointer;
  if (LumStatus s = sizeRule<SizeClass::G2>(roi)) return s;
  resample(pSrc, srcStep, pDst, dstStep, roi, yuv420toyuv411_sse2_asm);
  return lumStatusOk;
}

LumStatus lumiYCbCr411To420_8u_P3R(const Lum8u* const pSrc[3], const int srcStep[3], Lum8u* const pDst[3],
                                   const int dstStep[3], LumSize roi) {
  if (nullPlanes(pSrc) || nullPlanes(pDst)) return lumStatusNullPointer;
  if (LumStatus s = sizeRule<SizeClass::G>(roi)) return s;
  resample(pSrc, srcStep, pDst, dstStep, roi, yvu411toyuv420_sse2_asm);
  return lumStatusOk;
}

LumStatus lumiYCbCr420To1620_8u_P3R(const Lum8u* const pSrc[3], const int srcStep[3], Lum8u* const pDst[3],
                                    const int dstStep[3], LumSize roi) {
  if (nullPlanes(pSrc) || nullPlanes(pDst)) return lumStatusNullPointer;
  if (LumStatus s = sizeRule<SizeClass::G>(roi)) return s;
  resample(pSrc, srcStep, pDst, dstStep, roi, yuv420toyuv1620_sse2_asm);
  return lumStatusOk;
}

LumStatus lumiYCbCr1620To420_8u_P3R(const Lum8u* const pSrc[3], const int srcStep[3], Lum8u* const pDst[3],
                                    const int dstStep[3], LumSize roi) {
  if (nullPlanes(pSrc) || nullPlanes(pDst)) return lumStatusNullPointer;
  if (LumStatus s = sizeRule<SizeClass::G>(roi)) return s;
  resample(pSrc, srcStep, pDst, dstStep, roi, yvu1620toyuv420_sse2_asm);
  return lumStatusOk;
}
