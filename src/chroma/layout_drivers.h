// Row kernels and drivers of the chroma layout family, and its size classes.
//
// Three kinds of work make up every layout change:
//  - pair by pair (a packed side is involved): PairRow moves each pixel pair
//    from one layout to another; pairImage picks the chroma row of each side;
//  - a packed-to-packed reorder: RepackRow shuffles the bytes of each group;
//  - planar to planar: luma rows go through the row copy primitive, chroma rows
//    through CopyRow, ZipRow or UnzipRow.
// Every vector loop stops at the last whole block; the scalar loop after it
// computes the same bytes, so a row's result does not depend on its width.
#pragma once

#include <array>
#include <cstdint>
#include <type_traits>

#include "chroma/wide_blocks.h"
#include "frame/lanes.h"
#include "frame/pair_layouts.h"
#include "kernels/primitives.h"

namespace lum::chroma {

using namespace lum::pairs;

// ---- size classes ----------------------------------------------------------
// Minimums and masks of the family. A class that does not test the height lets
// a height below 1 through: nothing is written and the call succeeds.
enum class SizeClass { A, B, C, D, E, F, G, G2 };

// lumStatusBadSize below the class minimum; otherwise masks roi to whole chroma
// cells and returns lumStatusOk.
template <SizeClass K>
inline LumStatus sizeRule(LumSize& roi) {
  const int w = roi.width, h = roi.height;
  switch (K) {
    case SizeClass::A:
      if (w < 2 || h < 2) return lumStatusBadSize;
      roi = {w & ~1, h & ~1};
      break;
    case SizeClass::B:
      if (w < 2 || h < 1) return lumStatusBadSize;
      roi.width = w & ~1;
      break;
    case SizeClass::C:
      if (w < 2) return lumStatusBadSize;
      roi.width = w & ~1;
      break;
    case SizeClass::D:
      if (w < 4 || h < 2) return lumStatusBadSize;
      roi = {w & ~3, h & ~1};
      break;
    case SizeClass::E:
      if (w < 4 || h < 1) return lumStatusBadSize;
      roi.width = w & ~3;
      break;
    case SizeClass::F:
      if (w < 4) return lumStatusBadSize;
      roi.width = w & ~3;
      break;
    case SizeClass::G:
      if (w < 4 || h < 4 || (w & 3) || (h & 3)) return lumStatusBadSize;
      break;
    case SizeClass::G2:
      if (w < 4 || (w & 3) || h < 2 || (h & 1)) return lumStatusBadSize;
      break;
  }
  return lumStatusOk;
}

// True when the plane-pointer array or one of its n entries is null. The array
// is tested first so that a null array is refused, never read.
template <class T>
inline bool nullPlanes(T* const* arr, int n = 3) {
  if (arr == nullptr) return true;
  for (int i = 0; i < n; ++i)
    if (arr[i] == nullptr) return true;
  return false;
}

// 32-bit signed product, wrapping as the streaming thresholds compute it.
inline int32_t mul32(int a, int b) { return int32_t(uint32_t(a) * uint32_t(b)); }

// 32-bit signed sum, wrapping likewise.
template <class... I>
inline int32_t add32(I... v) {
  return int32_t((uint32_t(v) + ...));
}

using lum::aligned16;
inline bool aligned16(int step) { return (step & 15) == 0; }

// Luma copies of the planar forms that stream do so from this many pixels on.
constexpr int32_t kStreamLuma = 348603;

// Streaming stores once the rows moved outgrow the caches: the summed steps
// times the height above 512 KiB, and every destination row on 16 bytes. A
// streamed call ends with a store fence, so its bytes are visible to other
// threads as soon as it returns.
inline bool streamRows(int32_t stepSum, int height, const void* pDst, int dstStep) {
  return mul32(stepSum, height) > 524288 && aligned16(pDst) && aligned16(dstStep);
}

// ---- images ---------------------------------------------------------------
// A packed image: plane 0 only.
inline SrcPlanes packedSrc(const Lum8u* p, int step) { return packed(p, step); }
inline DstPlanes packedDst(Lum8u* p, int step) { return packed(p, step); }

// Three planes with a step each; swapChroma exchanges planes 1 and 2 with their
// steps, so that a Y, Cr, Cb image is read or written as Y, Cb, Cr.
template <class T>
inline Planes<T> threePlanes(T* const* p, const int* steps, bool swapChroma = false) {
  Planes<T> r = planar(p, 3, steps);
  if (swapChroma) {
    std::swap(r.p[1], r.p[2]);
    std::swap(r.step[1], r.step[2]);
  }
  return r;
}

// A luma plane and one plane of interleaved chroma pairs.
template <class T>
inline Planes<T> twoPlanes(T* y, int yStep, T* c, int cStep) {
  Planes<T> r;
  r.p[0] = y;
  r.step[0] = yStep;
  r.p[1] = c;
  r.step[1] = cStep;
  return r;
}

// Row pointers of an image at luma row y and chroma row cy, what a row kernel
// reads (it takes no steps). Built field by field rather than copied from the
// image, so no wide reload of freshly stored fields stalls the row loop.
template <class T>
inline Planes<T> rowsAt(const Planes<T>& img, int y, int cy) {
  Planes<T> r;
  r.p[0] = img.p[0] ? rowAt(img.p[0], y, img.step[0]) : nullptr;
  for (int i = 1; i < 4; ++i) r.p[i] = img.p[i] ? rowAt(img.p[i], cy, img.step[i]) : nullptr;
  return r;
}

// ---- vector width -------------------------------------------------------------
// The blocks a call runs, chosen once per call: none (scalar twins only),
// 128-bit, or 256-bit first and 128-bit after.
enum class Vec { None, Sse, Wide };
inline Vec vectorPath() {
  if (!useVector()) return Vec::None;
  return useWide() ? Vec::Wide : Vec::Sse;
}

// The row driver: row(y, v, streamed) for y = 0 .. rows - 1 with the blocks v
// chosen once, streamed a std::bool_constant of the streaming choice. A
// streamed call (vector builds only) ends with a store fence.
template <class RowFn>
inline void eachRow(int rows, bool stream, RowFn&& row) {
  const Vec v = vectorPath();
#if LUM_SIMD_SSE
  if (stream) {
    for (int y = 0; y < rows; ++y) row(y, v, std::true_type{});
    lanes::Sse::fence();
    return;
  }
#endif
  (void)stream;
  for (int y = 0; y < rows; ++y) row(y, v, std::false_type{});
}

// ---- pair by pair -----------------------------------------------------------
// One row of width pixels (even): blocks of 32 pixels (256-bit where the call
// chose them), then of 16, then pairs. The flags choose aligned loads, aligned
// stores and streaming stores; none changes a byte.
template <class Src, class Dst, bool SrcAligned = false, bool DstAligned = false, bool Stream = false>
struct PairRow {
  static void run(const SrcPlanes& s, const DstPlanes& d, int width, Vec v) {
    (void)v;
    int x = 0;
#if LUM_SIMD_SSE
    if (v != Vec::None) {
      if (v == Vec::Wide) x = wide::pairBlocks<Src, Dst>(s.p[0], s.p[1], s.p[2], d.p[0], d.p[1], d.p[2], width, Stream);
      x = moveBlocks<Src, Dst, Pair16, 2, SrcAligned, DstAligned, Stream>(s, d, x, width);
      x = moveBlocks<Src, Dst, Pair16, 1, SrcAligned, DstAligned, Stream>(s, d, x, width);
    }
#endif
    for (; x + 2 <= width; x += 2) {
      Pair p;
      Src::load(s, x, p);
      Dst::store(d, x, p);
    }
  }
};

// A region pair by pair. SrcV and DstV are the vertical chroma sub-sampling of
// each side (1: a chroma row per luma row; 2: 4:2:0). A 4:2:0 destination takes
// its chroma from the even rows; the odd rows give their lumas only, and their
// chroma is never read into the result. Streaming stores need destination rows
// that all start on 16 bytes; Aligned promises 16-byte packed and luma rows.
template <class Src, class Dst, int SrcV, int DstV, bool Aligned = false>
inline void pairImage(LumSize roi, const SrcPlanes s, const DstPlanes d, bool stream = false) {
  eachRow(roi.height, stream, [&](int y, Vec v, auto streamed) {
    const SrcPlanes sr = rowsAt(s, y, y / SrcV);
    const DstPlanes dr = rowsAt(d, y, y / DstV);
    if constexpr (DstV == 2) {
      if (y & 1) {
        PairRow<Src, LumaOnly<Dst>, Aligned, Aligned>::run(sr, dr, roi.width, v);
        return;
      }
    }
    if constexpr (decltype(streamed)::value) PairRow<Src, Dst, Aligned, true, true>::run(sr, dr, roi.width, v);
    else PairRow<Src, Dst, Aligned, Aligned>::run(sr, dr, roi.width, v);
  });
}

// ---- packed to packed --------------------------------------------------------
// One packed row of width pixels (even) into another byte order: blocks of 8
// pixels by one shuffle, then groups.
template <class A, class B, bool Stream = false>
struct RepackRow {
  static void run(const uint8_t* s, uint8_t* d, int width, Vec v) {
    (void)v;
    constexpr std::array<int, 4> m = repackOrder<A, B>();
    const int n = 2 * width;  // bytes
    int i = 0;
#if LUM_SIMD_SSE
    if (v != Vec::None) {
      if (v == Vec::Wide) i = wide::repackBlocks<A, B>(s, d, n, Stream);
      i = repackBlocks<Bytes128, A, B, 4, Stream>(s, d, i, n);
      i = repackBlocks<Bytes128, A, B, 1, Stream>(s, d, i, n);
    }
#endif
    for (; i + 4 <= n; i += 4) {
      const uint8_t g[4] = {s[i], s[i + 1], s[i + 2], s[i + 3]};
      for (int k = 0; k < 4; ++k) d[i + k] = g[m[k]];
    }
  }
};

// A packed region into another byte order. Streaming stores need a destination
// whose rows all start on 16 bytes.
template <class A, class B>
inline void repackImage(LumSize roi, const Lum8u* s, int ss, Lum8u* d, int ds, bool stream) {
  eachRow(roi.height, stream, [&](int y, Vec v, auto streamed) {
    RepackRow<A, B, decltype(streamed)::value>::run(rowAt(s, y, ss), rowAt(d, y, ds), roi.width, v);
  });
}

// ---- planar to planar ----------------------------------------------------------
// Luma plane (plane 0) copied row by row through the row copy primitive. Rows
// that follow each other without padding on both sides go as one row.
inline void copyLuma(LumSize roi, const SrcPlanes& s, const DstPlanes& d, bool stream = false) {
  if (roi.height > 1 && s.step[0] == roi.width && d.step[0] == roi.width &&
      int64_t(roi.width) * roi.height <= INT32_MAX) {
    ownccCopy_8u_C1_W7(s.p[0], d.p[0], roi.width * roi.height, stream);
    return;
  }
  for (int y = 0; y < roi.height; ++y)
    ownccCopy_8u_C1_W7(rowAt(s.p[0], y, s.step[0]), rowAt(d.p[0], y, d.step[0]), roi.width, stream);
}

// Chroma row pointers of an image at chroma row cy (no luma pointer, no steps).
template <class T>
inline Planes<T> chromaRow(const Planes<T>& img, int cy) {
  Planes<T> r;
  for (int i = 1; i < 4; ++i) r.p[i] = img.p[i] ? rowAt(img.p[i], cy, img.step[i]) : nullptr;
  return r;
}

// n chroma pairs from one side to another, sample j to sample j.
template <class SC, class DC>
struct CopyRow {
  static void run(const SrcPlanes& s, const DstPlanes& d, int n, Vec v) {
    (void)v;
    if constexpr (std::is_same_v<SC, CbCrPlanes> && std::is_same_v<DC, CbCrPlanes>) {
      // Plane to plane is a plain byte copy.
      ownccCopy_8u_C1_W7(s.p[1], d.p[1], n, false);
      ownccCopy_8u_C1_W7(s.p[2], d.p[2], n, false);
    } else {
      int j = 0;
#if LUM_SIMD_SSE
      if (v != Vec::None) {
        if (v == Vec::Wide) j = wide::copyBlocks<SC, DC>(s.p[1], s.p[2], d.p[1], d.p[2], n);
        j = copyBlocks<SC, DC, __m128i, 16>(s, d, j, n);
      }
#endif
      for (; j < n; ++j) {
        int cb, cr;
        SC::get(s, j, cb, cr);
        DC::put(d, j, cb, cr);
      }
    }
  }
};

// Two chroma rows a and b of n samples interleaved into one of 2n: sample j of
// a becomes sample 2j, sample j of b sample 2j + 1. With a == b this repeats
// every sample.
template <class SC, class DC>
struct ZipRow {
  static void run(const SrcPlanes& a, const SrcPlanes& b, const DstPlanes& d, int n, Vec v) {
    (void)v;
    int j = 0;
#if LUM_SIMD_SSE
    if (v != Vec::None) {
      for (; j + 16 <= n; j += 16) {
        __m128i acb, acr, bcb, bcr;
        SC::template get<16>(a, j, acb, acr);
        SC::template get<16>(b, j, bcb, bcr);
        DC::template put<16>(d, 2 * j, _mm_unpacklo_epi8(acb, bcb), _mm_unpacklo_epi8(acr, bcr));
        DC::template put<16>(d, 2 * j + 16, _mm_unpackhi_epi8(acb, bcb), _mm_unpackhi_epi8(acr, bcr));
      }
    }
#endif
    for (; j < n; ++j) {
      int acb, acr, bcb, bcr;
      SC::get(a, j, acb, acr);
      SC::get(b, j, bcb, bcr);
      DC::put(d, 2 * j, acb, acr);
      DC::put(d, 2 * j + 1, bcb, bcr);
    }
  }
};

// One chroma row of 2n samples split into two of n: sample 2j goes to row a,
// sample 2j + 1 to row b. Without KeepOdd only row a is written (the odd
// samples are dropped).
template <class SC, class DC, bool KeepOdd>
struct UnzipRow {
  static void run(const SrcPlanes& s, const DstPlanes& a, const DstPlanes& b, int n, Vec v) {
    (void)v;
    int j = 0;
#if LUM_SIMD_SSE
    if (v != Vec::None) {
      for (; j + 16 <= n; j += 16) {
        __m128i cb0, cr0, cb1, cr1;
        SC::template get<16>(s, 2 * j, cb0, cr0);
        SC::template get<16>(s, 2 * j + 16, cb1, cr1);
        cb0 = bytes::splitEvenOdd(cb0);
        cb1 = bytes::splitEvenOdd(cb1);
        cr0 = bytes::splitEvenOdd(cr0);
        cr1 = bytes::splitEvenOdd(cr1);
        DC::template put<16>(a, j, _mm_unpacklo_epi64(cb0, cb1), _mm_unpacklo_epi64(cr0, cr1));
        if constexpr (KeepOdd)
          DC::template put<16>(b, j, _mm_unpackhi_epi64(cb0, cb1), _mm_unpackhi_epi64(cr0, cr1));
      }
    }
#endif
    for (; j < n; ++j) {
      int cb, cr;
      SC::get(s, 2 * j, cb, cr);
      DC::put(a, j, cb, cr);
      if constexpr (KeepOdd) {
        SC::get(s, 2 * j + 1, cb, cr);
        DC::put(b, j, cb, cr);
      }
    }
  }
};

// ---- chroma planes, row by row -------------------------------------------------
// Destination chroma row r from source row r * Num / Den, n samples: 1/1 keeps
// the rows, 2/1 keeps the even source rows (4:2:2 to 4:2:0), 1/2 writes every
// source row twice (4:2:0 to 4:2:2).
template <class SC, class DC, int Num, int Den>
inline void copyChromaRows(int dstRows, int n, const SrcPlanes& s, const DstPlanes& d) {
  eachRow(dstRows, false,
          [&](int r, Vec v, auto) { CopyRow<SC, DC>::run(chromaRow(s, r * Num / Den), chromaRow(d, r), n, v); });
}

// Source chroma row k of 2n samples split into destination rows Fan * k ..
// Fan * k + Fan - 1 of n. Fan 1 (4:2:2 to 4:1:1): sample j of the row is sample
// 2j of the source, the odd samples are never read. Fan 2 (4:2:0 to 4:1:1,
// losing nothing): sample 2j goes to row 2k, sample 2j + 1 to row 2k + 1.
template <class SC, class DC, int Fan>
inline void unzipChroma(int srcRows, int n, const SrcPlanes& s, const DstPlanes& d) {
  eachRow(srcRows, false, [&](int k, Vec v, auto) {
    UnzipRow<SC, DC, Fan == 2>::run(chromaRow(s, k), chromaRow(d, Fan * k), chromaRow(d, Fan * k + Fan - 1), n, v);
  });
}

// The inverse: destination chroma row k of 2n samples interleaves source rows
// Fan * k and Fan * k + Fan - 1 of n. Fan 1 (4:1:1 to 4:2:2): every sample
// fills samples 2j and 2j + 1. Fan 2 (4:1:1 to 4:2:0): rows 2k and 2k + 1.
template <class SC, class DC, int Fan>
inline void zipChroma(int dstRows, int n, const SrcPlanes& s, const DstPlanes& d) {
  eachRow(dstRows, false, [&](int k, Vec v, auto) {
    ZipRow<SC, DC>::run(chromaRow(s, Fan * k), chromaRow(s, Fan * k + Fan - 1), chromaRow(d, k), n, v);
  });
}

}  // namespace lum::chroma
