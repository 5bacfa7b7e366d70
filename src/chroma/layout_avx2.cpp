// 256-bit (AVX2) blocks of the layout kernels: the block loops of
// frame/pair_layouts.h instantiated with the 256-bit layouts.
#include "chroma/wide_blocks.h"

#if LUM_SIMD_SSE
#include "frame/pair_layouts_avx2.h"

namespace lum::chroma::wide {

template <class Src, class Dst>
int pairBlocks(const uint8_t* s0, const uint8_t* s1, const uint8_t* s2, uint8_t* d0, uint8_t* d1, uint8_t* d2,
               int width, bool stream) {
  SrcPlanes s;
  s.p[0] = s0;
  s.p[1] = s1;
  s.p[2] = s2;
  DstPlanes d;
  d.p[0] = d0;
  d.p[1] = d1;
  d.p[2] = d2;
  using S = pairs::Wide<Src>;
  using D = pairs::Wide<Dst>;
  return stream ? pairs::moveBlocks<S, D, pairs::Pair32, 1, false, false, true>(s, d, 0, width)
                : pairs::moveBlocks<S, D, pairs::Pair32, 1, false, false, false>(s, d, 0, width);
}

template <class A, class B>
int repackBlocks(const uint8_t* s, uint8_t* d, int bytes, bool stream) {
  return stream ? pairs::repackBlocks<pairs::Bytes256, A, B, 2, true>(s, d, 0, bytes)
                : pairs::repackBlocks<pairs::Bytes256, A, B, 2, false>(s, d, 0, bytes);
}

template <class SC, class DC>
int copyBlocks(const uint8_t* s1, const uint8_t* s2, uint8_t* d1, uint8_t* d2, int n) {
  SrcPlanes s;
  s.p[1] = s1;
  s.p[2] = s2;
  DstPlanes d;
  d.p[1] = d1;
  d.p[2] = d2;
  return pairs::copyBlocks<pairs::Side32<SC>, pairs::Side32<DC>, __m256i, 32>(s, d, 0, n);
}

using namespace lum::pairs;

// Every layout pair the family converts.
template int repackBlocks<YUY2, UYVY>(const uint8_t*, uint8_t*, int, bool);
template int repackBlocks<UYVY, YUY2>(const uint8_t*, uint8_t*, int, bool);
template int repackBlocks<YUY2, YVYU>(const uint8_t*, uint8_t*, int, bool);

#define LUM_PAIR_BLOCKS(Src, Dst) \
  template int pairBlocks<Src, Dst>(const uint8_t*, const uint8_t*, const uint8_t*, uint8_t*, uint8_t*, uint8_t*, int, bool)
LUM_PAIR_BLOCKS(YUY2, PlanarRow);
LUM_PAIR_BLOCKS(UYVY, PlanarRow);
LUM_PAIR_BLOCKS(PlanarRow, YUY2);
LUM_PAIR_BLOCKS(PlanarRow, UYVY);
LUM_PAIR_BLOCKS(PlanarRow, YVYU);
LUM_PAIR_BLOCKS(YUY2, LumaOnly<PlanarRow>);
LUM_PAIR_BLOCKS(UYVY, LumaOnly<PlanarRow>);
LUM_PAIR_BLOCKS(YUY2, NV12Row);
LUM_PAIR_BLOCKS(YUY2, NV21Row);
LUM_PAIR_BLOCKS(UYVY, NV12Row);
LUM_PAIR_BLOCKS(YUY2, LumaOnly<NV12Row>);
LUM_PAIR_BLOCKS(YUY2, LumaOnly<NV21Row>);
LUM_PAIR_BLOCKS(UYVY, LumaOnly<NV12Row>);
LUM_PAIR_BLOCKS(NV12Row, YUY2);
LUM_PAIR_BLOCKS(NV12Row, UYVY);
LUM_PAIR_BLOCKS(YUY2, Planar411Row);
LUM_PAIR_BLOCKS(UYVY, Planar411Row);
LUM_PAIR_BLOCKS(YUY2, Pairs411Row);
LUM_PAIR_BLOCKS(Planar411Row, YUY2);
LUM_PAIR_BLOCKS(Pairs411Row, YUY2);
#undef LUM_PAIR_BLOCKS

template int copyBlocks<CbCrPairs<false>, CbCrPlanes>(const uint8_t*, const uint8_t*, uint8_t*, uint8_t*, int);
template int copyBlocks<CbCrPlanes, CbCrPairs<false>>(const uint8_t*, const uint8_t*, uint8_t*, uint8_t*, int);

}  // namespace lum::chroma::wide
#endif
