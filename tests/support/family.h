// Table-driven harness shared by every family's tests. A family describes each
// function once (its images' shapes, its check order, its call) and the harness
// runs the generic tests on it: argument checks with the destination untouched,
// vector against scalar, guard pages and canaries at many widths, negative steps.
#pragma once

#include <functional>
#include <random>
#include <string>
#include <vector>

#include "lumcc.h"
#include "support/guarded_image.h"

namespace lumtest {

// One plane of an image: bytes per pixel (per unit of the plane's own grid) and
// the plane's sub-sampling against the region.
struct PlaneShape {
  int bpp = 1;
  int wDiv = 1, hDiv = 1;
  bool roundUp = false;  // plane width/height is ceil(w / wDiv) rather than floor
  // Bytes of a row of w pixels where the layout is no whole number of bytes a
  // pixel (packed groups); when set it replaces bpp and wDiv.
  std::function<int(int)> bytesFor = {};
  int rowBytes(int w) const {
    if (bytesFor) return bytesFor(w);
    return (w / wDiv + (roundUp && w % wDiv ? 1 : 0)) * bpp;
  }
  int rows(int h) const { return h / hDiv + (roundUp && h % hDiv ? 1 : 0); }
};

// An image argument: one packed plane (array = false) or an array of planes.
struct ImageShape {
  bool array = false;
  std::vector<PlaneShape> planes;
  int checkedPlanes = -1;  // plane pointers the function tests (-1: all)
  // The planes are separate pointer arguments (a luma and a chroma plane of a
  // semi-planar image), not an array: no array pointer, and each plane pointer is
  // tested with the other pointers. The call still sees them as an array.
  bool separate = false;
  int nChecked() const { return checkedPlanes < 0 ? int(planes.size()) : checkedPlanes; }
};

inline ImageShape packedImg(int bpp, int wDiv = 1, int hDiv = 1) { return {false, {{bpp, wDiv, hDiv}}, -1}; }
inline ImageShape planarImg(int n, int bpp = 1) { return {true, std::vector<PlaneShape>(size_t(n), PlaneShape{bpp}), -1}; }
// Planes of their own shapes, as an array argument.
inline ImageShape planesImg(std::vector<PlaneShape> p) { return {true, std::move(p), -1}; }
// Planes of their own shapes, each a pointer argument of its own.
inline ImageShape separateImg(std::vector<PlaneShape> p) { return {true, std::move(p), -1, true}; }
// Luma plane and one plane of chroma pairs, passed as two pointer arguments.
inline ImageShape semiPlanarImg(PlaneShape chroma) {
  ImageShape s{true, {PlaneShape{1}, chroma}, -1};
  s.separate = true;
  return s;
}

// Order in which a function refuses when a pointer and the size are both wrong.
enum class Order {
  NullSize,        // every pointer (arrays and planes), then size
  NullSizePlanes,  // array pointers, size, then the planes inside the arrays
  SizeNull,        // size, then pointers
  // array pointers, size below 1, planes inside the arrays, then size below the
  // function's minimum
  NullSizePlanesSize,
};

// The buffers handed to a call. For an array image, src/dst point to the array
// of plane pointers and srcSteps/dstSteps to the per-plane steps.
struct Buffers {
  const void* src = nullptr;
  int srcStep = 0;
  const int* srcSteps = nullptr;
  void* dst = nullptr;
  int dstStep = 0;
  const int* dstSteps = nullptr;
  const uint8_t* const* srcPlanes() const { return static_cast<const uint8_t* const*>(src); }
  uint8_t* const* dstPlanes() const { return static_cast<uint8_t* const*>(dst); }
  const uint8_t* srcPtr() const { return static_cast<const uint8_t*>(src); }
  uint8_t* dstPtr() const { return static_cast<uint8_t*>(dst); }
};

// A packed image's first sample as the function's sample type.
template <class T>
const T* S(const Buffers& b) {
  return static_cast<const T*>(b.src);
}
template <class T>
T* D(const Buffers& b) {
  return static_cast<T*>(b.dst);
}

using CallFn = std::function<LumStatus(const Buffers&, LumSize)>;
// Fills one source image with test data (default: random bytes).
using FillFn = std::function<void(GuardedImage&, std::mt19937&)>;

struct FnCase {
  std::string name;
  ImageShape src, dst;
  Order order = Order::NullSize;
  CallFn call;
  int minWidth = 1, minHeight = 1;  // smallest region the function accepts
  int widthStep = 1;                // widths tested are multiples of this (and minWidth)
  int heightStep = 1;
  LumStatus okStatus = lumStatusOk;  // status on a good call of a valid size
  // When set, the status of a good call depends on the size (lumStatusOddSize).
  std::function<LumStatus(LumSize)> statusFor;
  bool oddSizeWarns = false;         // an odd width or height returns lumStatusOddSize instead
  int stepAlign = 1;                 // row steps are multiples of this (sample size, element steps)
  FillFn fillSource;                 // source data when random bytes will not do (floats)
  LumStatus expected(LumSize roi) const;
  // The function takes no steps: its images are dense, rows without padding.
  bool dense = false;
  // False when the function lets any height through: a height below 1 writes
  // nothing and returns okStatus.
  bool heightChecked = true;
  // False when the function tests no size at all: any width or height below 1
  // writes nothing and returns okStatus.
  bool sizeChecked = true;
  // The image's planes take their steps from an array argument, which a null
  // refuses like a null plane array (before the size).
  bool srcStepArray = false, dstStepArray = false;
  // One image is source and destination (an in-place form): the call takes the
  // destination's buffers, which receive the source's data before each call;
  // only the destination's pointers are tested for null. src and dst have one shape.
  bool inPlace = false;
};

// Status of a good call of the function at this size.
LumStatus expectedStatus(const FnCase& fc, LumSize roi);

// Holds the images of one call, source and destination, in guarded memory.
struct CallImages {
  std::vector<GuardedImage> src, dst;
  std::vector<uint8_t*> srcPtrs, dstPtrs;
  std::vector<int> srcSteps, dstSteps;
  FillFn fill;
  bool inPlace = false;
  CallImages(const FnCase& fc, LumSize roi, ImageOptions opt = {});
  Buffers buffers();
  void randomizeSource(std::mt19937& rng);
  void fillDestination(uint8_t v);
  std::vector<uint8_t> destinationBytes() const;
  bool canariesIntact() const;
};

// Runs the refusal checks of one function (null per pointer, bad sizes, the
// order when both are wrong) and requires the destination to be untouched.
void checkRefusals(const FnCase& fc);
// Converts random images at the given widths with wide blocks, 128-bit blocks
// and scalar code alone, and requires identical output, intact canaries and the function's okStatus.
void checkVectorMatchesScalar(const FnCase& fc, const std::vector<int>& widths, int height);
// Same source through aligned and misaligned images: identical output.
void checkAlignmentInvariance(const FnCase& fc, const std::vector<int>& widths, int height);
// A negative step walks the image bottom-up: output equals the flipped call's.
void checkNegativeStep(const FnCase& fc, int width, int height);

// Widths around the block boundaries: 1..50 and a few larger ones.
std::vector<int> blockWidths();

}  // namespace lumtest
