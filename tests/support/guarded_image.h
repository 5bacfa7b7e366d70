// Test images that catch stray reads and writes. The region's rows lie in an
// mmap'd area with a PROT_NONE page right after the region's last byte (or before
// its first, for a negative step), so an over-read faults; every byte that is
// not part of the region (row padding, margins) holds a canary value that
// intactCanaries() checks after a call.
#pragma once

#include <cstddef>
#include <cstdint>
#include <random>
#include <vector>

namespace lumtest {

struct ImageOptions {
  int padBytes = 13;       // bytes of padding after each row (odd on purpose)
  int alignOffset = -1;    // -1: last byte touches the guard page; else row 0 at 64k + alignOffset
  bool negativeStep = false;
  int stepOverride = 0;    // non-zero: use this step; padBytes ignored
  int stepAlign = 1;       // step rounded up to a multiple of this
};

class GuardedImage {
 public:
  GuardedImage() = default;
  GuardedImage(int rowBytes, int height, ImageOptions opt = {});
  GuardedImage(const GuardedImage&) = delete;
  GuardedImage& operator=(const GuardedImage&) = delete;
  GuardedImage(GuardedImage&& o) noexcept;
  GuardedImage& operator=(GuardedImage&& o) noexcept;
  ~GuardedImage();

  uint8_t* data() const { return row0_; }
  template <class T>
  T* as() const { return reinterpret_cast<T*>(row0_); }
  int step() const { return step_; }
  int rowBytes() const { return rowBytes_; }
  int height() const { return height_; }
  uint8_t* row(int y) const { return row0_ + std::ptrdiff_t(y) * step_; }

  // Fills the region with random bytes (the canaries stay).
  void randomize(std::mt19937& rng);
  void fill(uint8_t v);
  // The region's bytes, row after row.
  std::vector<uint8_t> bytes() const;
  void setBytes(const std::vector<uint8_t>& b);
  // True when every byte outside the region still holds its canary.
  bool intactCanaries() const;

  static constexpr uint8_t kCanary = 0xC5;

 private:
  void release();
  uint8_t* map_ = nullptr;
  size_t mapBytes_ = 0;
  uint8_t* row0_ = nullptr;
  int step_ = 0, rowBytes_ = 0, height_ = 0;
  std::vector<uint8_t> isRegion_;  // per byte of the usable area: 1 when in the region
  uint8_t* area_ = nullptr;        // first usable byte
  size_t areaBytes_ = 0;
};

// Three or four planes of the same shape, as plane-pointer arrays.
struct GuardedPlanes {
  std::vector<GuardedImage> planes;
  uint8_t* ptr[4] = {nullptr, nullptr, nullptr, nullptr};
  int steps[4] = {0, 0, 0, 0};
  GuardedPlanes() = default;
  // widths[i] bytes by heights[i] rows for each plane.
  GuardedPlanes(std::vector<int> widths, std::vector<int> heights, ImageOptions opt = {});
  void randomize(std::mt19937& rng) {
    for (auto& p : planes) p.randomize(rng);
  }
  bool intactCanaries() const {
    for (auto& p : planes)
      if (!p.intactCanaries()) return false;
    return true;
  }
  std::vector<uint8_t> bytes() const {
    std::vector<uint8_t> all;
    for (auto& p : planes) {
      auto b = p.bytes();
      all.insert(all.end(), b.begin(), b.end());
    }
    return all;
  }
  const uint8_t* const* cptr() const { return ptr; }
};

}  // namespace lumtest
