// Argument-check sequences. Each helper returns the first refusal in its order,
// or lumStatusOk; a public function states its order in one call.
#pragma once

#include <initializer_list>

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

// ---- gamma
// Any step below 1 -> lumStatusBadStep.
inline LumStatus steps(std::initializer_list<int> all) {
  for (int s : all)
    if (s < 1) return lumStatusBadStep;
  return lumStatusOk;
}
// A null pointer (plane pointers included) -> lumStatusNullPointer, then size
// below 1 -> lumStatusBadSize, then a step below 1 -> lumStatusBadStep.
inline LumStatus nullSizeStep(bool anyNullPointer, LumSize roi, std::initializer_list<int> all) {
  if (anyNullPointer) return lumStatusNullPointer;
  if (badSize(roi)) return lumStatusBadSize;
  return steps(all);
}
// A value range whose upper end does not exceed the lower -> lumStatusBadRange
// (a NaN end lets the range through: the difference is not at or below 0).
inline LumStatus range(float vMin, float vMax) { return vMax - vMin <= 0.0f ? lumStatusBadRange : lumStatusOk; }

}  // namespace lum::check

// ---- YCoCg
namespace lum::check {

// The packed image's pointer, the plane array or one of its n planes null -> lumStatusNullPointer.
template <class P, class Q>
inline LumStatus packedAndPlanes(const P* packedImage, const Q* const* planeArray, int n) {
  if (anyNull(packedImage, planeArray) || anyPlaneNull(planeArray, n)) return lumStatusNullPointer;
  return lumStatusOk;
}

}  // namespace lum::check

// ---- colour twist, 12-bit pack and unpack
#include <initializer_list>

namespace lum::check {
// Pointers null -> lumStatusNullPointer, size below 1 -> lumStatusBadSize, then
// any of the row steps below 1 -> lumStatusBadStep.
template <class... P>
constexpr LumStatus nullSizeStep(LumSize roi, std::initializer_list<int> steps, const P*... p) {
  if (LumStatus s = nullThenSize(roi, p...)) return s;
  for (int st : steps)
    if (st < 1) return lumStatusBadStep;
  return lumStatusOk;
}
}  // namespace lum::check

// ---- bit-depth reduction
namespace lum::check {
// null, size, noise outside 0..100 (tested unsigned), levels outside 2..maxLevels.
template <class... P>
constexpr LumStatus reduceBits(LumSize roi, int noise, int levels, int maxLevels, const P*... p) {
  if (LumStatus s = nullThenSize(roi, p...)) return s;
  if (unsigned(noise) > 100u) return lumStatusNoiseOutOfRange;
  if (levels < 2 || levels > maxLevels) return lumStatusLevelsOutOfRange;
  return lumStatusOk;
}
}  // namespace lum::check

// ---- demosaic
namespace lum::check {
// pSrc or pDst null -> lumStatusNullPointer; an image side below minSide ->
// lumStatusBadSize; a grid code outside 0..3 -> lumStatusBadArgument.
template <class S, class D, class N>
constexpr LumStatus bayer(const S* src, const D* dst, N imageW, N imageH, int minSide, int grid) {
  if (anyNull(src, dst)) return lumStatusNullPointer;
  if (imageW < minSide || imageH < minSide) return lumStatusBadSize;
  if (grid < 0 || grid > 3) return lumStatusBadArgument;
  return lumStatusOk;
}

// ---- HLS and HSV
// The planar HLS order: any pointer null (nullSeen) -> lumStatusNullPointer,
// a step below 1 -> lumStatusBadStep, then size below 1 -> lumStatusBadSize.
inline LumStatus nullStepSize(bool nullSeen, int srcStep, int dstStep, LumSize roi) {
  if (nullSeen) return lumStatusNullPointer;
  if (srcStep < 1 || dstStep < 1) return lumStatusBadStep;
  return badSize(roi) ? lumStatusBadSize : lumStatusOk;
}

}  // namespace lum::check
