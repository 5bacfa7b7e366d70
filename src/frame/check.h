// Argument-check sequences. Each helper returns the first refusal in its order,
// or lumStatusOk; a public function states its order in one call.
#pragma once

#include "lumcc.h"

namespace lum::check {

// True when any of the pointers is null.
template <class... P>
constexpr bool anyNull(const P*... p) {
  return ((p == nullptr) || ...);
}

// True when any plane pointer in the first n entries of the array is null.
template <class P>
inline bool anyPlaneNull(const P* const* planes, int n) {
  for (int i = 0; i < n; ++i)
    if (planes[i] == nullptr) return true;
  return false;
}

// Width or height below the given minimums.
constexpr bool badSize(LumSize roi, int minW = 1, int minH = 1) {
  return roi.width < minW || roi.height < minH;
}

// Pointers null -> lumStatusNullPointer, then size below 1 -> lumStatusBadSize.
template <class... P>
constexpr LumStatus nullThenSize(LumSize roi, const P*... p) {
  if (anyNull(p...)) return lumStatusNullPointer;
  if (badSize(roi)) return lumStatusBadSize;
  return lumStatusOk;
}

// Size first, then pointers: the reverse order that a few functions keep.
template <class... P>
constexpr LumStatus sizeThenNull(LumSize roi, const P*... p) {
  if (badSize(roi)) return lumStatusBadSize;
  if (anyNull(p...)) return lumStatusNullPointer;
  return lumStatusOk;
}

// Plane pointers of an array null -> lumStatusNullPointer (used after the size test).
template <class P>
inline LumStatus planes(const P* const* arr, int n) {
  return anyPlaneNull(arr, n) ? lumStatusNullPointer : lumStatusOk;
}

// ---- HLS and HSV
// The planar HLS order: any pointer null (nullSeen) -> lumStatusNullPointer,
// a step below 1 -> lumStatusBadStep, then size below 1 -> lumStatusBadSize.
inline LumStatus nullStepSize(bool nullSeen, int srcStep, int dstStep, LumSize roi) {
  if (nullSeen) return lumStatusNullPointer;
  if (srcStep < 1 || dstStep < 1) return lumStatusBadStep;
  return badSize(roi) ? lumStatusBadSize : lumStatusOk;
}
// The same with the size tested before the steps.
inline LumStatus nullSizeStep(bool nullSeen, int srcStep, int dstStep, LumSize roi) {
  if (nullSeen) return lumStatusNullPointer;
  if (badSize(roi)) return lumStatusBadSize;
  return srcStep < 1 || dstStep < 1 ? lumStatusBadStep : lumStatusOk;
}

}  // namespace lum::check
