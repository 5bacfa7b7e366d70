#include "support/guarded_image.h"

#include <sys/mman.h>
#include <unistd.h>

#include <cstdlib>
#include <cstring>
#include <stdexcept>
#include <utility>

namespace lumtest {

namespace {
size_t pageSize() { return size_t(sysconf(_SC_PAGESIZE)); }
size_t roundUp(size_t v, size_t a) { return (v + a - 1) / a * a; }
}  // namespace

GuardedImage::GuardedImage(int rowBytes, int height, ImageOptions opt) : rowBytes_(rowBytes), height_(height) {
  if (rowBytes < 0 || height < 1) throw std::invalid_argument("bad image shape");
  const size_t pg = pageSize();
  const int absStep = opt.stepOverride ? std::abs(opt.stepOverride)
                                       : int(roundUp(size_t(rowBytes + opt.padBytes), size_t(opt.stepAlign)));
  // Bytes spanned from the lowest row's start to the highest row's end.
  const size_t span = size_t(absStep) * size_t(height - 1) + size_t(rowBytes);
  const size_t margin = 64;
  const size_t extra = opt.alignOffset >= 0 ? 65536 + 64 : 0;
  areaBytes_ = roundUp(span + 2 * margin + extra, pg);
  mapBytes_ = areaBytes_ + 2 * pg;
  void* m = mmap(nullptr, mapBytes_, PROT_READ | PROT_WRITE, MAP_PRIVATE | MAP_ANONYMOUS, -1, 0);
  if (m == MAP_FAILED) throw std::runtime_error("mmap failed");
  map_ = static_cast<uint8_t*>(m);
  mprotect(map_, pg, PROT_NONE);
  mprotect(map_ + pg + areaBytes_, pg, PROT_NONE);
  area_ = map_ + pg;
  std::memset(area_, kCanary, areaBytes_);

  uint8_t* low;  // start of the lowest-addressed row
  if (opt.alignOffset >= 0) {
    low = area_ + margin + ((opt.alignOffset + 65536 - margin) % 65536);
  } else if (opt.negativeStep) {
    low = area_;  // the lowest row starts right after the leading guard page
  } else {
    low = area_ + areaBytes_ - span;  // the last byte touches the trailing guard page
  }
  const bool neg = opt.stepOverride ? opt.stepOverride < 0 : opt.negativeStep;
  step_ = opt.stepOverride ? opt.stepOverride : (neg ? -absStep : absStep);
  row0_ = (neg && height > 1) ? low + size_t(absStep) * size_t(height - 1) : low;
  isRegion_.assign(areaBytes_, 0);
  for (int y = 0; y < height; ++y) {
    uint8_t* r = row(y);
    std::memset(isRegion_.data() + (r - area_), 1, size_t(rowBytes));
  }
}

GuardedImage::GuardedImage(GuardedImage&& o) noexcept { *this = std::move(o); }
GuardedImage& GuardedImage::operator=(GuardedImage&& o) noexcept {
  if (this != &o) {
    release();
    map_ = std::exchange(o.map_, nullptr);
    mapBytes_ = std::exchange(o.mapBytes_, 0);
    row0_ = o.row0_;
    step_ = o.step_;
    rowBytes_ = o.rowBytes_;
    height_ = o.height_;
    isRegion_ = std::move(o.isRegion_);
    area_ = o.area_;
    areaBytes_ = o.areaBytes_;
  }
  return *this;
}
GuardedImage::~GuardedImage() { release(); }
void GuardedImage::release() {
  if (map_) munmap(map_, mapBytes_);
  map_ = nullptr;
}

void GuardedImage::randomize(std::mt19937& rng) {
  for (int y = 0; y < height_; ++y)
    for (int x = 0; x < rowBytes_; ++x) row(y)[x] = uint8_t(rng());
}
void GuardedImage::fill(uint8_t v) {
  for (int y = 0; y < height_; ++y) std::memset(row(y), v, size_t(rowBytes_));
}
std::vector<uint8_t> GuardedImage::bytes() const {
  std::vector<uint8_t> out;
  out.reserve(size_t(rowBytes_) * size_t(height_));
  for (int y = 0; y < height_; ++y) out.insert(out.end(), row(y), row(y) + rowBytes_);
  return out;
}
void GuardedImage::setBytes(const std::vector<uint8_t>& b) {
  for (int y = 0; y < height_; ++y) std::memcpy(row(y), b.data() + size_t(y) * size_t(rowBytes_), size_t(rowBytes_));
}
bool GuardedImage::intactCanaries() const {
  for (size_t i = 0; i < areaBytes_; ++i)
    if (!isRegion_[i] && area_[i] != kCanary) return false;
  return true;
}

GuardedPlanes::GuardedPlanes(std::vector<int> widths, std::vector<int> heights, ImageOptions opt) {
  for (size_t i = 0; i < widths.size(); ++i) {
    planes.emplace_back(widths[i], heights[i], opt);
    ptr[i] = planes.back().data();
    steps[i] = planes.back().step();
  }
  // emplace_back may move earlier images; their mappings stay where they were.
  for (size_t i = 0; i < planes.size(); ++i) {
    ptr[i] = planes[i].data();
    steps[i] = planes[i].step();
  }
}

}  // namespace lumtest
