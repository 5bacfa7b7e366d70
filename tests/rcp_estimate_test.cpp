// The 12-bit reciprocal estimate: known values of the rule, the four-lane form
// against the scalar one, and the whole 2^32 input space against the processor's
// own instruction where the processor is of the kind the rule describes.
#include "frame/rcp_estimate.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <cstring>

#if defined(__SSE2__)
#include <immintrin.h>
#endif

namespace {

float fromBits(uint32_t u) {
  float f;
  std::memcpy(&f, &u, 4);
  return f;
}
uint32_t bitsOf(float f) {
  uint32_t u;
  std::memcpy(&u, &f, 4);
  return u;
}
uint32_t rcpBits(uint32_t x) { return bitsOf(lum::rcpEstimate(fromBits(x))); }

#if LUM_SIMD_SSE
// The four-lane estimate of four inputs.
void rcp4Bits(const uint32_t in[4], uint32_t out[4]) {
  const __m128 r = lum::rcpEstimate(_mm_loadu_ps(reinterpret_cast<const float*>(in)));
  _mm_storeu_si128(reinterpret_cast<__m128i*>(out), _mm_castps_si128(r));
}
#endif

struct Known {
  uint32_t in, out;
  const char* what;
};
// Values worked out by hand from n = round(2^25 / (4097 + 2i)).
const Known kKnown[] = {
    {0x3F800000, 0x3F7FF000, "1.0: i = 0, n = 8191"},
    {0x3F800FFF, 0x3F7FF000, "the low 12 mantissa bits do not count"},
    {0xBF800000, 0xBF7FF000, "-1.0 keeps its sign"},
    {0x40000000, 0x3EFFF000, "2.0: one exponent step down"},
    {0x3FC00000, 0x3F2AA000, "1.5: i = 1024, n = 5460"},
    {0x3FFFF000, 0x3F000800, "i = 2047: n = 4097"},
    {0x00800000, 0x7E7FF000, "smallest normal"},
    {0x7E7FFFFF, 0x00800800, "just below 2^126: still a normal result"},
    {0x00000000, 0x7F800000, "+0 gives +inf"},
    {0x80000000, 0xFF800000, "-0 gives -inf"},
    {0x00000001, 0x7F800000, "denormal gives inf"},
    {0x807FFFFF, 0xFF800000, "negative denormal gives -inf"},
    {0x7E800000, 0x00000000, "2^126 gives +0"},
    {0xFE800000, 0x80000000, "-2^126 gives -0"},
    {0x7F7FFFFF, 0x00000000, "largest float gives +0"},
    {0x7F800000, 0x00000000, "+inf gives +0"},
    {0xFF800000, 0x80000000, "-inf gives -0"},
    {0x7F800001, 0x7FC00001, "signalling NaN comes back quieted"},
    {0xFFA00000, 0xFFE00000, "negative signalling NaN quieted"},
    {0x7FC12345, 0x7FC12345, "quiet NaN unchanged"},
};

TEST(RcpEstimate, KnownValues) {
  for (const Known& k : kKnown) {
    EXPECT_EQ(rcpBits(k.in), k.out) << std::hex << k.in << ": " << k.what;
#if LUM_SIMD_SSE
    const uint32_t in[4] = {k.in, 0x3F800000, k.in, 0x40000000};
    uint32_t out[4];
    rcp4Bits(in, out);
    EXPECT_EQ(out[0], k.out) << std::hex << k.in << " (vector lane 0): " << k.what;
    EXPECT_EQ(out[2], k.out) << std::hex << k.in << " (vector lane 2): " << k.what;
    EXPECT_EQ(out[1], 0x3F7FF000u);
    EXPECT_EQ(out[3], 0x3EFFF000u);
#endif
  }
}

#if defined(__SSE2__)
// Inputs whose estimate the processor's instruction gives; these are the rule's
// values, so a processor of another maker (whose table differs) is told apart
// from a fault in the rule: the gate never consults the library.
bool processorUsesTheRule() {
  const uint32_t probe[][2] = {{0x3F800000, 0x3F7FF000},
                               {0x3F800FFF, 0x3F7FF000},
                               {0x3FC00000, 0x3F2AA000},
                               {0x3FFFFFFF, 0x3F000800},
                               {0x3F801000, 0x3F7FD000}};
  for (const auto& p : probe) {
    const float r = _mm_cvtss_f32(_mm_rcp_ss(_mm_set_ss(fromBits(p[0]))));
    if (bitsOf(r) != p[1]) return false;
  }
  return true;
}

// Runs est over all 2^32 inputs, four at a time, and counts the runs of 4096
// inputs (same sign, exponent and i) in which some lane differs from the scalar
// rule; NaN inputs are compared one by one. first gets the first bad input.
template <class Est4>
uint64_t scanAllInputs(Est4 est, uint32_t& first) {
  uint64_t badRuns = 0;
  first = 0;
  const __m128i four = _mm_set1_epi32(4);
  for (uint32_t h = 0; h < (1u << 20); ++h) {
    const uint32_t base = h << 12;
    const bool nanRun = ((base >> 23) & 0xFF) == 0xFF;
    if (nanRun) {
      alignas(16) uint32_t in[4], out[4];
      for (uint32_t k = 0; k < 4096; k += 4) {
        for (int l = 0; l < 4; ++l) in[l] = base + k + uint32_t(l);
        _mm_store_si128(reinterpret_cast<__m128i*>(out), est(_mm_load_si128(reinterpret_cast<const __m128i*>(in))));
        for (int l = 0; l < 4; ++l)
          if (out[l] != rcpBits(in[l])) {
            if (!badRuns) first = in[l];
            ++badRuns;
            k = 4096;
            break;
          }
      }
      continue;
    }
    const __m128i want = _mm_set1_epi32(int(rcpBits(base)));
    __m128i x = _mm_add_epi32(_mm_set1_epi32(int(base)), _mm_setr_epi32(0, 1, 2, 3));
    __m128i diff = _mm_setzero_si128();
    for (int k = 0; k < 1024; ++k) {
      diff = _mm_or_si128(diff, _mm_xor_si128(est(x), want));
      x = _mm_add_epi32(x, four);
    }
    if (_mm_movemask_epi8(_mm_cmpeq_epi32(diff, _mm_setzero_si128())) != 0xFFFF) {
      if (!badRuns) first = base;
      ++badRuns;
    }
  }
  return badRuns;
}

TEST(RcpEstimate, EqualsTheInstructionOverAllInputs) {
  if (!processorUsesTheRule())
    GTEST_SKIP() << "this processor's reciprocal estimate is not the table rule (another maker's table)";
  uint32_t first = 0;
  const uint64_t bad =
      scanAllInputs([](__m128i x) { return _mm_castps_si128(_mm_rcp_ps(_mm_castsi128_ps(x))); }, first);
  EXPECT_EQ(bad, 0u) << "first differing input 0x" << std::hex << first;
}

#if LUM_SIMD_SSE
TEST(RcpEstimate, VectorMatchesScalarOverAllInputs) {
  uint32_t first = 0;
  const uint64_t bad =
      scanAllInputs([](__m128i x) { return _mm_castps_si128(lum::rcpEstimate(_mm_castsi128_ps(x))); }, first);
  EXPECT_EQ(bad, 0u) << "first differing input 0x" << std::hex << first;
}
#endif
#endif

}  // namespace
