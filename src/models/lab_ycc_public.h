// The public body of the interleaved Lab and YCC functions over the model row
// frame: pointers null, then size below 1; then the rows.
#pragma once

#include "frame/check.h"
#include "models/model_frame.h"

namespace lum::labycc {

// StepBytes is the sample size where a function takes its steps in whole
// samples (the low bits of a byte step dropped), 1 where it takes them in bytes.
template <class Rows, int StepBytes, class S, class D>
inline LumStatus packedCall(const S* pSrc, int srcStep, D* pDst, int dstStep, LumSize roi) {
  if (LumStatus st = check::nullThenSize(roi, pSrc, pDst)) return st;
  Rows::image(roi, packed(reinterpret_cast<const uint8_t*>(pSrc), models::sampleStep(srcStep, StepBytes)),
              packed(reinterpret_cast<uint8_t*>(pDst), models::sampleStep(dstStep, StepBytes)));
  return lumStatusOk;
}

}  // namespace lum::labycc
