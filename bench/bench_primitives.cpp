// Region copy and fill against memcpy/memset row by row, on padded images (rows
// apart) and dense ones (rows merged), plus the float reductions.
#include <cstring>

#include "bench_support.h"
#include "kernels/primitives.h"

namespace lumbench {
namespace {

// A source and destination plane of w bytes a row; dense planes have step == w.
template <class F>
MakeWork twoPlanes(bool dense, F f) {
  return [=](Size s) {
    auto src = std::make_shared<Plane>(s.w, s.h, 3);
    auto dst = std::make_shared<Plane>(s.w, s.h, 4);
    if (dense) src->step = dst->step = s.w;
    return Work([=] { f(src->data(), src->step, dst->data(), dst->step, LumSize{s.w, s.h}); });
  };
}

void memcpyRows(const Lum8u* s, int ss, Lum8u* d, int ds, LumSize r) {
  for (int y = 0; y < r.height; ++y)
    std::memcpy(d + std::ptrdiff_t(y) * ds, s + std::ptrdiff_t(y) * ss, size_t(r.width));
}
void memsetRows(const Lum8u*, int, Lum8u* d, int ds, LumSize r) {
  for (int y = 0; y < r.height; ++y) std::memset(d + std::ptrdiff_t(y) * ds, 0x5A, size_t(r.width));
}

const bool registered = [] {
  for (bool dense : {false, true}) {
    const std::string sfx = dense ? "Dense" : "";
    add("Copy_8u_C1R" + sfx, "lumcc", twoPlanes(dense, [](const Lum8u* s, int ss, Lum8u* d, int ds, LumSize r) {
          lumiCopy_8u_C1R(s, ss, d, ds, r);
        }));
    add("Copy_8u_C1R" + sfx, "memcpy", twoPlanes(dense, memcpyRows));
    add("Set_8u_C1R" + sfx, "lumcc",
        twoPlanes(dense, [](const Lum8u*, int, Lum8u* d, int ds, LumSize r) { lumiSet_8u_C1R(0x5A, d, ds, r); }));
    add("Set_8u_C1R" + sfx, "memset", twoPlanes(dense, memsetRows));
  }
  // Float reductions over a plane of floats (the width counts floats).
  auto floats = [](auto f) {
    return [=](Size s) {
      auto src = std::make_shared<Plane>(s.w * 4, s.h, 5);
      for (int y = 0; y < s.h; ++y)
        for (int x = 0; x < s.w; ++x)
          reinterpret_cast<float*>(src->data() + std::ptrdiff_t(y) * src->step)[x] = float(x % 97);
      return Work([=] { f(reinterpret_cast<const Lum32f*>(src->data()), src->step, LumSize{s.w, s.h}); });
    };
  };
  add("Sum_32f_C1R", "lumcc", floats([](const Lum32f* p, int st, LumSize r) {
        Lum64f v;
        lumiSum_32f_C1R(p, st, r, &v, 0);
        benchmark::DoNotOptimize(v);
      }));
  add("SumDouble_32f_C1R", "lumcc", floats([](const Lum32f* p, int st, LumSize r) {
        Lum64f v;
        lumiSum_32f_C1R(p, st, r, &v, 2);
        benchmark::DoNotOptimize(v);
      }));
  add("Max_32f_C1R", "lumcc", floats([](const Lum32f* p, int st, LumSize r) {
        Lum32f v;
        lumiMax_32f_C1R(p, st, r, &v);
        benchmark::DoNotOptimize(v);
      }));
  return true;
}();

}  // namespace
}  // namespace lumbench
