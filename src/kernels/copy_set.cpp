// Region and row copies and fills.
#include <cstring>

#include "frame/check.h"
#include "frame/rows.h"
#include "kernels/primitives.h"

using namespace lum;

LumStatus lumiCopy_8u_C1R(const Lum8u* pSrc, int srcStep, Lum8u* pDst, int dstStep, LumSize roi) {
  if (LumStatus s = check::nullThenSize(roi, pSrc, pDst)) return s;
  for (int y = 0; y < roi.height; ++y) std::memcpy(rowAt(pDst, y, dstStep), rowAt(pSrc, y, srcStep), size_t(roi.width));
  return lumStatusOk;
}

namespace lum {
void ownccCopy_8u_C1_W7(const Lum8u* pSrc, Lum8u* pDst, int len, bool) {
  if (len > 0) std::memcpy(pDst, pSrc, size_t(len));
}
}  // namespace lum
