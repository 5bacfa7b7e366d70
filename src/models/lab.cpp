// RGB <-> CIE Lab: interleaved 8u, 8u to 16u, 16u to 8u and 32f forms (RGB or
// BGR order on the colour side), and planar 32f and 64f forms whose _L twins
// hold all checks and work. Interleaved functions check pointers, then size;
// their rows run 4-pixel blocks over width & ~3 and a tail of the same formula
// (the 8u-output forward tails store low bits where the blocks clamp). Steps
// are never checked.
#include "frame/check.h"
#include "models/lab_forms.h"
#include "models/lab_wide.h"
#include "models/lab_ycc_public.h"

using namespace lum;
using namespace lum::lab;

namespace {

using models::Lanewise;
using models::ModelRows;

// Interleaved rows: Block over width & ~3, Tail over the rest.
template <class Block, class Tail, class Src, class Dst, class S, class D>
LumStatus interleaved(const S* pSrc, int srcStep, D* pDst, int dstStep, LumSize roi) {
  return labycc::packedCall<ModelRows<4, Block, Tail, Src, Dst>, 1>(pSrc, srcStep, pDst, dstStep, roi);
}
// Interleaved rows whose blocks also run on the 256-bit set (lab_avx2.cpp).
template <class Block, class Tail, class Src, class Dst, class S, class D>
LumStatus wide(const S* pSrc, int srcStep, D* pDst, int dstStep, LumSize roi) {
  return labycc::packedCall<labycc::WideModelRows<4, Block, Tail, Src, Dst>, 1>(pSrc, srcStep, pDst, dstStep, roi);
}
// The same where the tail is the block's own formula.
template <class Form, class Src, class Dst, class S, class D>
LumStatus sameTail(const S* pSrc, int srcStep, D* pDst, int dstStep, LumSize roi) {
  return interleaved<Form, Lanewise<Form, S, D>, Src, Dst>(pSrc, srcStep, pDst, dstStep, roi);
}

using layout::BGROf;
using layout::RGBOf;

// ---- planar rows

// Lanes of T on lane set O (float or double) and their count.
template <class O, class T>
using PlaneLanes = std::conditional_t<std::is_same_v<T, Lum32f>, typename O::F, typename O::D>;
template <class O, class T>
constexpr int kPlaneLanes = int(sizeof(PlaneLanes<O, T>) / sizeof(T));

template <class O, class T>
inline PlaneLanes<O, T> loadPlane(const T* p) {
  if constexpr (std::is_same_v<T, Lum32f>) return O::loadf(p);
  else return O::loadd(p);
}
template <class O, class T>
inline void storePlane(T* p, PlaneLanes<O, T> v) {
  if constexpr (std::is_same_v<T, Lum32f>) O::storef(p, v);
  else O::stored(p, v);
}
template <class O, class T>
inline PlaneLanes<O, T> splatPlane(T v) {
  if constexpr (std::is_same_v<T, Lum32f>) return O::setf(v);
  else return O::setd(v);
}

// One row of three planes: Form over whole vectors of O, then each remaining
// pixel through the same lanes, splatted (lane 0 stored).
template <class O, class Form, class T>
void planarRow(const T* const s[3], T* const d[3], std::ptrdiff_t width) {
  constexpr int n = kPlaneLanes<O, T>;
  using L = PlaneLanes<O, T>;
  std::ptrdiff_t x = 0;
  for (; x + n <= width; x += n) {
    L in[3], out[3];
    for (int c = 0; c < 3; ++c) in[c] = loadPlane<O>(s[c] + x);
    Form::template vblock<O>(in, out);
    for (int c = 0; c < 3; ++c) storePlane<O>(d[c] + x, out[c]);
  }
  for (; x < width; ++x) {
    L in[3], out[3];
    for (int c = 0; c < 3; ++c) in[c] = splatPlane<O>(s[c][x]);
    Form::template vblock<O>(in, out);
    for (int c = 0; c < 3; ++c) {
      alignas(32) T t[n];
      storePlane<O>(t, out[c]);
      d[c][x] = t[0];
    }
  }
}

// Plane k of row y: base plus y times the step, in pointer width.
template <class T>
inline T* planeRow(T* base, std::ptrdiff_t y, LumLong step) {
  using Byte = std::conditional_t<std::is_const_v<T>, const uint8_t, uint8_t>;
  return reinterpret_cast<T*>(reinterpret_cast<Byte*>(base) + y * step);
}

// The long-size planar function: every pointer and both step arrays null ->
// lumStatusNullPointer (the arrays before anything they hold), then size.
// Merge: when all six steps equal the row's bytes, the image is one row of
// width x height pixels (the reverse direction only).
template <class Form, bool Merge, class T>
LumStatus planarL(const T* const pSrc[3], const LumLong srcStep[3], T* const pDst[3], const LumLong dstStep[3],
                  LumSizeL roi) {
  if (check::anyNull(pSrc, pDst, srcStep, dstStep)) return lumStatusNullPointer;
  if (check::anyPlaneNull(pSrc, 3) || check::anyPlaneNull(pDst, 3)) return lumStatusNullPointer;
  if (roi.width < 1 || roi.height < 1) return lumStatusBadSize;
  LumLong width = roi.width, height = roi.height;
  if constexpr (Merge) {
    const LumLong dense = width * LumLong(sizeof(T));
    bool all = true;
    for (int c = 0; c < 3; ++c) all = all && srcStep[c] == dense && dstStep[c] == dense;
    if (all) {
      width *= height;
      height = 1;
    }
  }
  lanes::with128([&](auto o) {
    using O = decltype(o);
    for (LumLong y = 0; y < height; ++y) {
      const T* s[3];
      T* d[3];
      for (int c = 0; c < 3; ++c) {
        s[c] = planeRow(pSrc[c], y, srcStep[c]);
        d[c] = planeRow(pDst[c], y, dstStep[c]);
      }
      planarRow<O, Form, T>(s, d, width);
    }
  });
  return lumStatusOk;
}

// The 32-bit front of a planar function: refuses null step arrays before
// anything else is looked at, copies the six steps to long-size ones and
// forwards.
template <class Form, bool Merge, class T>
LumStatus planar(const T* const pSrc[3], const int srcStep[3], T* const pDst[3], const int dstStep[3], LumSize roi) {
  if (check::anyNull(srcStep, dstStep)) return lumStatusNullPointer;
  const LumLong ss[3] = {srcStep[0], srcStep[1], srcStep[2]};
  const LumLong ds[3] = {dstStep[0], dstStep[1], dstStep[2]};
  return planarL<Form, Merge, T>(pSrc, ss, pDst, ds, LumSizeL{roi.width, roi.height});
}

}  // namespace

extern "C" {

// ---- interleaved, forward
LumStatus lumiRGBToLab_8u_C3R(const Lum8u* s, int ss, Lum8u* d, int ds, LumSize r) {
  return wide<Fwd8u<false, true>, Lanewise<Fwd8u<false, false>, Lum8u, Lum8u>, RGBOf<Lum8u>, RGBOf<Lum8u>>(
      s, ss, d, ds, r);
}
LumStatus lumiBGRToLab_8u_C3R(const Lum8u* s, int ss, Lum8u* d, int ds, LumSize r) {
  return wide<Fwd8u<false, true>, Lanewise<Fwd8u<false, false>, Lum8u, Lum8u>, BGROf<Lum8u>, RGBOf<Lum8u>>(
      s, ss, d, ds, r);
}
LumStatus lumiBGRToLab_8u16u_C3R(const Lum8u* s, int ss, Lum16u* d, int ds, LumSize r) {
  return wide<Fwd8u<true, true>, Lanewise<Fwd8u<true, false>, Lum8u, Lum16u>, BGROf<Lum8u>, RGBOf<Lum16u>>(
      s, ss, d, ds, r);
}
LumStatus lumiRGBToLab_32f_C3R(const Lum32f* s, int ss, Lum32f* d, int ds, LumSize r) {
  return wide<Fwd32f, Lanewise<Fwd32f, Lum32f, Lum32f>, RGBOf<Lum32f>, RGBOf<Lum32f>>(s, ss, d, ds, r);
}
LumStatus lumiBGRToLab_32f_C3R(const Lum32f* s, int ss, Lum32f* d, int ds, LumSize r) {
  return wide<Fwd32f, Lanewise<Fwd32f, Lum32f, Lum32f>, BGROf<Lum32f>, RGBOf<Lum32f>>(s, ss, d, ds, r);
}

// ---- interleaved, reverse
LumStatus lumiLabToRGB_8u_C3R(const Lum8u* s, int ss, Lum8u* d, int ds, LumSize r) {
  return sameTail<Inv8u<false>, RGBOf<Lum8u>, RGBOf<Lum8u>>(s, ss, d, ds, r);
}
LumStatus lumiLabToBGR_8u_C3R(const Lum8u* s, int ss, Lum8u* d, int ds, LumSize r) {
  return sameTail<Inv8u<false>, RGBOf<Lum8u>, BGROf<Lum8u>>(s, ss, d, ds, r);
}
LumStatus lumiLabToBGR_16u8u_C3R(const Lum16u* s, int ss, Lum8u* d, int ds, LumSize r) {
  return sameTail<Inv8u<true>, RGBOf<Lum16u>, BGROf<Lum8u>>(s, ss, d, ds, r);
}
LumStatus lumiLabToRGB_32f_C3R(const Lum32f* s, int ss, Lum32f* d, int ds, LumSize r) {
  return sameTail<Inv32f, RGBOf<Lum32f>, RGBOf<Lum32f>>(s, ss, d, ds, r);
}
LumStatus lumiLabToBGR_32f_C3R(const Lum32f* s, int ss, Lum32f* d, int ds, LumSize r) {
  return sameTail<Inv32f, RGBOf<Lum32f>, BGROf<Lum32f>>(s, ss, d, ds, r);
}

// ---- planar
LumStatus lumiRGBToLab_32f_P3R_L(const Lum32f* const s[3], const LumLong ss[3], Lum32f* const d[3],
                                 const LumLong ds[3], LumSizeL r) {
  return planarL<Fwd32f, false>(s, ss, d, ds, r);
}
LumStatus lumiRGBToLab_32f_P3R(const Lum32f* const s[3], const int ss[3], Lum32f* const d[3], const int ds[3],
                               LumSize r) {
  return planar<Fwd32f, false>(s, ss, d, ds, r);
}
LumStatus lumiRGBToLab_64f_P3R_L(const Lum64f* const s[3], const LumLong ss[3], Lum64f* const d[3],
                                 const LumLong ds[3], LumSizeL r) {
  return planarL<Fwd64f, false>(s, ss, d, ds, r);
}
LumStatus lumiRGBToLab_64f_P3R(const Lum64f* const s[3], const int ss[3], Lum64f* const d[3], const int ds[3],
                               LumSize r) {
  return planar<Fwd64f, false>(s, ss, d, ds, r);
}
LumStatus lumiLabToRGB_32f_P3R_L(const Lum32f* const s[3], const LumLong ss[3], Lum32f* const d[3],
                                 const LumLong ds[3], LumSizeL r) {
  return planarL<Inv32f, true>(s, ss, d, ds, r);
}
LumStatus lumiLabToRGB_32f_P3R(const Lum32f* const s[3], const int ss[3], Lum32f* const d[3], const int ds[3],
                               LumSize r) {
  return planar<Inv32f, true>(s, ss, d, ds, r);
}
LumStatus lumiLabToRGB_64f_P3R_L(const Lum64f* const s[3], const LumLong ss[3], Lum64f* const d[3],
                                 const LumLong ds[3], LumSizeL r) {
  return planarL<Inv64f, true>(s, ss, d, ds, r);
}
LumStatus lumiLabToRGB_64f_P3R(const Lum64f* const s[3], const int ss[3], Lum64f* const d[3], const int ds[3],
                               LumSize r) {
  return planar<Inv64f, true>(s, ss, d, ds, r);
}

}  // extern "C"
