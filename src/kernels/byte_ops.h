// Moves of 16 bytes for the copy and fill kernels: the SSE registers and their
// scalar twin, which moves the same bytes with plain stores. Streaming stores
// and the store fence only change speed; the twin has plain stores and no fence.
#pragma once

#include <cstddef>
#include <cstdint>
#include <cstring>

#include "frame/simd.h"

namespace lum::kern {

struct ScalarBytes {
  struct V {
    uint8_t b[16];
  };
  static V load(const uint8_t* s) {
    V v;
    std::memcpy(v.b, s, 16);
    return v;
  }
  static V loadA(const uint8_t* s) { return load(s); }
  static void store(uint8_t* d, const V& v) { std::memcpy(d, v.b, 16); }
  static void storeA(uint8_t* d, const V& v) { store(d, v); }
  static void stream(uint8_t* d, const V& v) { store(d, v); }
  static void fence() {}
  static V splat(uint8_t x) {
    V v;
    std::memset(v.b, x, 16);
    return v;
  }
  static V splat32(uint32_t w) {
    V v;
    for (int i = 0; i < 4; ++i) std::memcpy(v.b + 4 * i, &w, 4);
    return v;
  }
};

#if LUM_SIMD_SSE
struct SseBytes {
  using V = __m128i;
  static V load(const uint8_t* s) { return _mm_loadu_si128(reinterpret_cast<const __m128i*>(s)); }
  static V loadA(const uint8_t* s) { return _mm_load_si128(reinterpret_cast<const __m128i*>(s)); }
  static void store(uint8_t* d, V v) { _mm_storeu_si128(reinterpret_cast<__m128i*>(d), v); }
  static void storeA(uint8_t* d, V v) { _mm_store_si128(reinterpret_cast<__m128i*>(d), v); }
  static void stream(uint8_t* d, V v) { _mm_stream_si128(reinterpret_cast<__m128i*>(d), v); }
  static void fence() { _mm_sfence(); }
  static V splat(uint8_t x) { return _mm_set1_epi8(char(x)); }
  static V splat32(uint32_t w) { return _mm_set1_epi32(int(w)); }
};
#endif

// Calls f(Ops{}) with the vector moves when this call may use them, else with the twin.
template <class F>
inline decltype(auto) withByteOps(F&& f) {
#if LUM_SIMD_SSE
  if (useVector()) return f(SseBytes{});
#endif
  return f(ScalarBytes{});
}

// How the 64-byte blocks of a kernel store.
enum class Stores { Aligned, Streaming };

// Stores one 16-byte value at a 16-byte aligned address, streaming or not.
template <class O, Stores S, class V>
inline void put16(uint8_t* d, const V& v) {
  if constexpr (S == Stores::Streaming)
    O::stream(d, v);
  else
    O::storeA(d, v);
}

// Copies 64 bytes to a 16-byte aligned destination; loads aligned when asked.
template <class O, Stores S, bool AlignedLoad>
inline void copy64(const uint8_t* s, uint8_t* d) {
  for (int k = 0; k < 64; k += 16) {
    const auto v = AlignedLoad ? O::loadA(s + k) : O::load(s + k);
    put16<O, S>(d + k, v);
  }
}

// Copies n bytes by scalar moves: 8 at a step, then 4, then single bytes.
inline void copySmall(const uint8_t* s, uint8_t* d, size_t n) {
  for (; n >= 8; n -= 8, s += 8, d += 8) std::memcpy(d, s, 8);
  if (n >= 4) {
    std::memcpy(d, s, 4);
    s += 4;
    d += 4;
    n -= 4;
  }
  for (; n; --n) *d++ = *s++;
}

// Bytes to the next multiple of `align` (a power of two) from p.
inline size_t toAlign(const void* p, size_t align) { return size_t(-reinterpret_cast<uintptr_t>(p)) & (align - 1); }

}  // namespace lum::kern
