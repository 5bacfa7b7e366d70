// Shared pieces of the benchmarks: image buffers, the two sizes, and registration
// of a conversion under "<case>/<who>/<WxH>" with a megapixels-per-second counter.
#pragma once

#include <benchmark/benchmark.h>

#include <cstdint>
#include <cstring>
#include <functional>
#include <memory>
#include <random>
#include <string>
#include <type_traits>
#include <vector>

#include "lumcc.h"

namespace lumbench {

// The sizes every conversion runs at: 1080p and a cache-resident 256x256.
struct Size {
  int w, h;
};
inline const Size kSizes[] = {{1920, 1080}, {256, 256}};

// A plane of bytes with a 64-byte aligned row step.
struct Plane {
  std::vector<uint8_t> bytes;
  int step = 0;
  uint8_t* data() { return bytes.data(); }
  Plane() = default;
  Plane(int rowBytes, int rows, uint32_t seed = 1) {
    step = (rowBytes + 63) & ~63;
    bytes.resize(size_t(step) * size_t(rows) + 64);
    std::mt19937 rng(seed);
    for (auto& b : bytes) b = uint8_t(rng());
  }
};

// A plane of T samples with a 64-byte aligned step, holding plausible values
// (floats in 0..1, so no denormals or NaNs skew the timing).
template <class T>
std::shared_ptr<Plane> typedPlane(int samplesPerRow, int rows, uint32_t seed) {
  auto p = std::make_shared<Plane>(samplesPerRow * int(sizeof(T)), rows, seed);
  if constexpr (std::is_floating_point_v<T>) {
    std::mt19937 rng(seed);
    for (size_t i = 0; i + sizeof(T) <= p->bytes.size(); i += sizeof(T)) {
      const T v = T(rng() % 1000) / T(1000);
      std::memcpy(p->bytes.data() + i, &v, sizeof(T));
    }
  }
  return p;
}

// One timed call over a whole image of the given size.
using Work = std::function<void()>;
using MakeWork = std::function<Work(Size)>;

// Registers `make` at each size as "<name>/<who>/<W>x<H>".
void add(const std::string& name, const std::string& who, MakeWork make);

}  // namespace lumbench
