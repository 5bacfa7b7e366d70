// Checks a form's vector block against its scalar pixel() on every lane of one
// lane set: random lanes, then every combination of the shape's edge values.
// A shape adapter says how lanes are fed, read and compared; a new form of a
// known shape is one line in the list of forms_test.cpp, a new shape one adapter.
#pragma once

#include <array>
#include <cstdint>
#include <cstring>
#include <iterator>
#include <limits>
#include <random>
#include <string>
#include <vector>

#include "frame/lanes.h"

namespace lumtest {

// What every shape adapter shares: three channels in and out, fed to the
// form's vblock<O> and pixel().
template <class Form, class LaneT, class ValueT>
struct Px3Shape {
  using Lane = LaneT;
  using Value = ValueT;
  static constexpr int kIn = 3, kOut = 3;
  template <class O, class V>
  static void block(const V* in, V* out) { Form::template vblock<O>(in, out); }
  static void pixel(const Value* in, Value* out) { Form::pixel(in, out); }
};

// The full-resolution 8-bit forms: channels 0..2 in and out as 16-bit lanes
// holding 0..255. vblock leaves clamp8 to the store, so lanes compare after it.
template <class Form>
struct Px8 : Px3Shape<Form, int16_t, int> {
  using Value = int;
  static constexpr Value kEdges[] = {0, 1, 16, 127, 128, 235, 254, 255};
  static Value random(std::mt19937& g) { return Value(g() & 255); }
  template <class O>
  static auto load(const int16_t* p) { return O::load(p); }
  template <class O, class V>
  static void store(int16_t* p, V v) { O::store(p, v); }
  static Value stored(Value lane) { return lane < 0 ? 0 : (lane > 255 ? 255 : lane); }
  static bool same(Value a, Value b) { return a == b; }
};

// Forms of 32f samples: channels 0..2 in and out as float lanes; the edges are
// the zeros, the infinities, NaN and the ends of the range. Results compare bit
// for bit (any NaN equals any NaN).
template <class Form>
struct PxF : Px3Shape<Form, float, float> {
  using Value = float;
  static constexpr Value kEdges[] = {0.0f, -0.0f, 1.0f, -1.0f, 1e-40f, 3.4e38f,
                                     std::numeric_limits<float>::infinity(),
                                     -std::numeric_limits<float>::infinity(),
                                     std::numeric_limits<float>::quiet_NaN()};
  static Value random(std::mt19937& g) { return std::uniform_real_distribution<float>(-1000.0f, 1000.0f)(g); }
  template <class O>
  static auto load(const float* p) { return O::loadf(p); }
  template <class O, class V>
  static void store(float* p, V v) { O::storef(p, v); }
  static Value stored(Value lane) { return lane; }
  static bool same(Value a, Value b) {
    if (a != a && b != b) return true;
    uint32_t x, y;
    std::memcpy(&x, &a, 4);
    std::memcpy(&y, &b, 4);
    return x == y;
  }
};

// Runs the adapter's block on lane set O over `count` input tuples; returns the
// first disagreement with pixel(), or an empty string.
template <class O, class A>
std::string checkTuples(const std::array<typename A::Value, A::kIn>* tuples, int count) {
  using Lane = typename A::Lane;
  using Value = typename A::Value;
  using Vec = decltype(A::template load<O>(static_cast<const Lane*>(nullptr)));
  constexpr int n = int(sizeof(Vec) / sizeof(Lane));
  for (int base = 0; base < count; base += n) {
    Lane in[A::kIn][n] = {}, out[A::kOut][n] = {};
    for (int i = 0; i < n; ++i)
      for (int k = 0; k < A::kIn; ++k) in[k][i] = Lane(tuples[(base + i) % count][k]);
    Vec vin[A::kIn], vout[A::kOut];
    for (int k = 0; k < A::kIn; ++k) vin[k] = A::template load<O>(in[k]);
    A::template block<O>(vin, vout);
    for (int k = 0; k < A::kOut; ++k) A::template store<O>(out[k], vout[k]);
    for (int i = 0; i < n && base + i < count; ++i) {
      Value ref[A::kOut];
      A::pixel(tuples[base + i].data(), ref);
      for (int k = 0; k < A::kOut; ++k) {
        const Value got = A::stored(Value(out[k][i]));
        if (!A::same(got, ref[k])) {
          std::string at = "in (";
          for (int j = 0; j < A::kIn; ++j) at += (j ? ", " : "") + std::to_string(tuples[base + i][j]);
          return at + ") channel " + std::to_string(k) + ": block " + std::to_string(got) + ", pixel " +
                 std::to_string(ref[k]);
        }
      }
    }
  }
  return {};
}

// Every combination of edge values, then `randomTuples` random ones.
template <class O, class A>
std::string checkForm(uint32_t seed, int randomTuples = 4096) {
  using Value = typename A::Value;
  constexpr int e = int(std::size(A::kEdges));
  int combos = 1;
  for (int k = 0; k < A::kIn; ++k) combos *= e;
  std::vector<std::array<Value, A::kIn>> t(size_t(combos + randomTuples));
  for (int c = 0; c < combos; ++c)
    for (int k = 0, r = c; k < A::kIn; ++k, r /= e) t[size_t(c)][k] = A::kEdges[r % e];
  std::mt19937 g(seed);
  for (int c = combos; c < combos + randomTuples; ++c)
    for (int k = 0; k < A::kIn; ++k) t[size_t(c)][k] = A::random(g);
  return checkTuples<O, A>(t.data(), int(t.size()));
}

// The forms under test, one line each: an adapter of the form's shape and its name.
// fn.template operator()<Adapter>(name) runs once per line.
template <class Fn>
void forEachForm(Fn&& fn);

// The same check on the sixteen-lane set, from the file built for AVX2; call
// only where the processor has AVX2. Returns the failures, one per line.
std::string checkFormsWide();

}  // namespace lumtest
