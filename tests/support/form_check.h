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
#include "lumachroma/forms_422.h"

namespace lumtest {

// What every shape adapter shares: In channels in and Out out, fed to the
// form's vblock<O> and pixel().
template <class Form, class LaneT, class ValueT, int In = 3, int Out = 3>
struct Px3Shape {
  using Lane = LaneT;
  using Value = ValueT;
  static constexpr int kIn = In, kOut = Out;
  template <class O, class V>
  static void block(const V* in, V* out) { Form::template vblock<O>(in, out); }
  static void pixel(const Value* in, Value* out) { Form::pixel(in, out); }
};

// Edge values of 16-bit input lanes up to Max: samples (255), sums of a pair
// (510) or of a 2-by-2 cell (1020) of samples.
template <int Max>
struct Edges16;
template <>
struct Edges16<255> {
  static constexpr int v[] = {0, 1, 16, 127, 128, 235, 254, 255};
};
template <>
struct Edges16<510> {
  static constexpr int v[] = {0, 1, 2, 127, 128, 255, 256, 470, 509, 510};
};
template <>
struct Edges16<1020> {
  static constexpr int v[] = {0, 1, 4, 127, 128, 255, 256, 511, 512, 940, 1019, 1020};
};

// The 8-bit forms: In channels of 0..Max in as 16-bit lanes, Out channels out.
// vblock leaves clamp8 to the store, so lanes compare after it.
template <class Form, int In = 3, int Out = 3, int Max = 255>
struct Px16 : Px3Shape<Form, int16_t, int, In, Out> {
  using Value = int;
  static constexpr const auto& kEdges = Edges16<Max>::v;
  static Value random(std::mt19937& g) { return Value(g() % (Max + 1)); }
  template <class O>
  static auto load(const int16_t* p) { return O::load(p); }
  template <class O, class V>
  static void store(int16_t* p, V v) { O::store(p, v); }
  static Value stored(Value lane) { return lane < 0 ? 0 : (lane > 255 ? 255 : lane); }
  static bool same(Value a, Value b) { return a == b; }
};
// A full-resolution form: three samples in, three out.
template <class Form>
using Px8 = Px16<Form>;
// A form on the channel sums of a 2-by-2 cell, with Out channels out.
template <class Form, int Out = 2>
using Cell = Px16<Form, 3, Out, 1020>;

// The luma and the chroma of a forward set (y, vy; chroma, vchroma) as forms.
template <class Set>
struct LumaOf {
  static void pixel(const int* in, int* out) { out[0] = Set::y(in[0], in[1], in[2]); }
  template <class O, class V = typename O::V>
  static void vblock(const V* in, V* out) { out[0] = Set::template vy<O>(in); }
};
template <class Set>
struct ChromaOf {
  static void pixel(const int* in, int* out) { Set::chroma(in, out); }
  template <class O, class V = typename O::V>
  static void vblock(const V* in, V* out) { Set::template vchroma<O>(in, out); }
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

// Colour-to-gray forms, objects holding their weights F: three samples in, the
// gray out. The 8u form's lanes hold samples << 8 and the store clamps to a
// byte; the 16-bit forms take 32-bit lanes of samples and the store saturates
// to the sample type; the 32f form takes float lanes and compares bit for bit.
template <const auto& F, class LaneT, int Lo, int Hi, int Shift = 0>
struct GrayInt : Px3Shape<void, LaneT, int, 3, 1> {
  using Value = int;
  static constexpr Value kEdges[] = {Lo, Lo + 1, Lo / 2, 0, 1, 127, 128, 255, Hi / 2, Hi - 1, Hi};
  static Value random(std::mt19937& g) { return Lo + int(g() % unsigned(Hi - Lo + 1)); }
  template <class O>
  static auto load(const LaneT* p) {
    return Shift ? O::sll(O::load(p), Shift) : O::load(p);
  }
  template <class O, class V>
  static void store(LaneT* p, V v) { O::store(p, v); }
  template <class O, class V>
  static void block(const V* in, V* out) { out[0] = F.template vblock<O>(in); }
  static void pixel(const Value* in, Value* out) { out[0] = F.pixel(in[0], in[1], in[2]); }
  static Value stored(Value lane) { return lane < Lo ? Lo : (lane > Hi ? Hi : lane); }
  static bool same(Value a, Value b) { return a == b; }
};
template <const auto& F>
struct GrayF : PxF<void> {
  static constexpr int kOut = 1;
  template <class O, class V>
  static void block(const V* in, V* out) { out[0] = F.template vblock<O>(in); }
  static void pixel(const float* in, float* out) { out[0] = F.pixel(in[0], in[1], in[2]); }
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

// A 4:2:2 pair form whose chroma takes no pixel before the block: groups a and b
// of pixels, one a lane, give the lumas of both and each pair's chroma in the
// order of the lane set's hadd16(a, b) (lanes 0..3 of every 128 bits are pairs
// of a, lanes 4..7 pairs of b); pair() of the two pixels is the oracle.
template <class Form>
struct Pair {};

template <class O, class Form>
std::string checkPairs(const Pair<Form>*, uint32_t seed, int rounds = 1024) {
  static_assert(!Form::kUsesPrev);
  using V = typename O::V;
  constexpr int n = int(sizeof(V) / sizeof(int16_t));
  constexpr auto& e = Edges16<255>::v;
  std::mt19937 g(seed);
  for (int r = 0; r < rounds; ++r) {
    int16_t px[2][3][n];  // group, channel, lane; the first half of the rounds takes edge values only
    for (auto& grp : px)
      for (auto& ch : grp)
        for (auto& x : ch) x = int16_t(r < rounds / 2 ? e[g() % std::size(e)] : int(g() & 255));
    V a[3], b[3];
    for (int k = 0; k < 3; ++k) {
      a[k] = O::load(px[0][k]);
      b[k] = O::load(px[1][k]);
    }
    lum::form::Pairs<O> o;
    Form::template vblock<O>(a, b, nullptr, o);
    int16_t got[4][n];
    O::store(got[0], o.y[0]);
    O::store(got[1], o.y[1]);
    O::store(got[2], o.cb);
    O::store(got[3], o.cr);
    // ref(group, first lane of a pair) -> Y0, Y1, Cb, Cr of the pair
    auto ref = [&](int grp, int at, int* out) {
      const int p[3] = {px[grp][0][at], px[grp][1][at], px[grp][2][at]};
      const int q[3] = {px[grp][0][at + 1], px[grp][1][at + 1], px[grp][2][at + 1]};
      Form::pair(nullptr, p, q, out);
    };
    auto clamp = [](int v) { return v < 0 ? 0 : (v > 255 ? 255 : v); };
    for (int i = 0; i < n; ++i) {
      int out[4];
      for (int grp = 0; grp < 2; ++grp) {
        ref(grp, i & ~1, out);
        if (clamp(got[grp][i]) != out[i & 1])
          return "luma of group " + std::to_string(grp) + " lane " + std::to_string(i) + ": block " +
                 std::to_string(got[grp][i]) + ", pair " + std::to_string(out[i & 1]);
      }
      const int k = i % 8;
      ref(k < 4 ? 0 : 1, i - k + 2 * (k % 4), out);
      for (int c = 0; c < 2; ++c)
        if (clamp(got[2 + c][i]) != out[2 + c])
          return "chroma " + std::to_string(c) + " lane " + std::to_string(i) + ": block " +
                 std::to_string(got[2 + c][i]) + ", pair " + std::to_string(out[2 + c]);
    }
  }
  return {};
}

// Runs the check of adapter A's shape on lane set O.
template <class O, class A>
std::string checkShape(const A* a, uint32_t seed) {
  if constexpr (requires { checkPairs<O>(a, seed); }) return checkPairs<O>(a, seed);
  else return checkForm<O, A>(seed);
}

// The forms under test, one line each: an adapter of the form's shape and its name.
// fn.template operator()<Adapter>(name) runs once per line.
template <class Fn>
void forEachForm(Fn&& fn);

// The same check on the sixteen-lane set, from the file built for AVX2; call
// only where the processor has AVX2. Returns the failures, one per line.
std::string checkFormsWide();

}  // namespace lumtest
