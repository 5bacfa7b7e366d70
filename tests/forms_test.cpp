// Every form's vector block against its scalar pixel(), lane for lane, on each
// lane set this build and processor have.
#include <gtest/gtest.h>

#include "frame/simd.h"
#include "support/forms_list.h"

namespace {

TEST(Forms, EmulatedBlockMatchesPixel) { EXPECT_EQ(lumtest::checkAllForms<lum::lanes::Emu>("Emu"), ""); }

#if LUM_SIMD_SSE
TEST(Forms, SseBlockMatchesPixel) { EXPECT_EQ(lumtest::checkAllForms<lum::lanes::Sse>("Sse"), ""); }

TEST(Forms, WideBlockMatchesPixel) {
  if (!lum::processorHasAvx2()) GTEST_SKIP() << "no AVX2 on this processor";
  EXPECT_EQ(lumtest::checkFormsWide(), "");
}
#endif

}  // namespace

// ---- typed layouts through the row driver --------------------------------

#include <random>
#include <vector>

#include "frame/kernel.h"

namespace {

using namespace lum;

// out = in * 0.75 + channel, in single precision.
struct Scale32f {
  using Sample = Lum32f;
  static void pixel(const float* in, float* out) {
    for (int k = 0; k < 3; ++k) out[k] = in[k] * 0.75f + float(k);
  }
  template <class O, class F = typename O::F>
  static void vblock(const F* in, F* out) {
    for (int k = 0; k < 3; ++k) out[k] = O::addf(O::mulf(in[k], O::setf(0.75f)), O::setf(float(k)));
  }
};

// Each channel averaged with the next (rounding up), on 32-bit lanes.
struct Mix16u {
  using Sample = Lum16u;
  static void pixel(const int* in, int* out) {
    for (int k = 0; k < 3; ++k) out[k] = (in[k] + in[(k + 1) % 3] + 1) >> 1;
  }
  template <class O, class V = typename O::V>
  static void vblock(const V* in, V* out) {
    for (int k = 0; k < 3; ++k) out[k] = O::srl32(O::add32(O::add32(in[k], in[(k + 1) % 3]), O::set32(1)), 1);
  }
};

// Planes of an image at an odd byte offset with odd row padding; every byte
// outside the pixels keeps its fill.
struct TypedImage {
  int planes, bpp, w, h, step;
  std::vector<uint8_t> buf[4];
  TypedImage(int planes_, int bpp_, int w_, int h_, uint32_t seed) : planes(planes_), bpp(bpp_), w(w_), h(h_) {
    step = w * bpp + 5;
    std::mt19937 g(seed);
    for (int i = 0; i < planes; ++i) {
      buf[i].resize(size_t(step) * size_t(h) + 8);
      for (auto& b : buf[i]) b = uint8_t(g());
    }
  }
  template <class T>
  Planes<T> view() {
    Planes<T> p;
    for (int i = 0; i < planes; ++i) {
      p.p[i] = buf[i].data() + 1;
      p.step[i] = step;
    }
    return p;
  }
};

template <class Form, class Src, class Dst, Alpha A, int SrcPlanesN, int DstPlanesN>
void checkTyped(const char* name) {
  constexpr int sb = int(sizeof(SampleOf<Form>));
  for (int w : {1, 2, 3, 4, 5, 7, 8, 9, 17}) {
    const int inBpp = SrcPlanesN == 1 ? Src::kBytes : sb, outBpp = DstPlanesN == 1 ? Dst::kBytes : sb;
    TypedImage src(SrcPlanesN, inBpp, w, 3, 7u * unsigned(w)), vec(DstPlanesN, outBpp, w, 3, 11u), ref(DstPlanesN, outBpp, w, 3, 11u);
    const std::vector<uint8_t> fill = vec.buf[0];
    using K = BlockThenTail<1, NoBlock, Form, Src, Dst, A>;
    RowCtx c;
    c.aval = 200;
    K::image({w, 3}, src.view<const uint8_t>(), vec.view<uint8_t>(), c);
    {
      ScalarScope scalar;
      K::image({w, 3}, src.view<const uint8_t>(), ref.view<uint8_t>(), c);
    }
    for (int i = 0; i < DstPlanesN; ++i) EXPECT_EQ(vec.buf[i], ref.buf[i]) << name << " width " << w << " plane " << i;
    for (int y = 0; y < 3; ++y)
      for (size_t b = size_t(w * outBpp); b < size_t(vec.step); ++b)
        EXPECT_EQ(vec.buf[0][1 + size_t(y) * size_t(vec.step) + b], fill[1 + size_t(y) * size_t(vec.step) + b])
            << name << " width " << w << " wrote outside the row at byte " << b;
  }
}

TEST(Forms, FloatBlockMatchesPixel) {
  EXPECT_EQ((lumtest::checkForm<lanes::Emu, lumtest::PxF<Scale32f>>(3)), "");
#if LUM_SIMD_SSE
  EXPECT_EQ((lumtest::checkForm<lanes::Sse, lumtest::PxF<Scale32f>>(3)), "");
#endif
}

TEST(Forms, TypedLayoutsRunVectorAndScalarAlike) {
  using namespace lum::layout;
  checkTyped<Scale32f, RGBOf<Lum32f>, BGROf<Lum32f>, Alpha::Keep, 1, 1>("32f C3 to C3");
  checkTyped<Scale32f, RGBAOf<Lum32f>, P4Of<Lum32f>, Alpha::Source, 1, 4>("32f AC4 to P4");
  checkTyped<Scale32f, P3Of<Lum32f>, BGRAOf<Lum32f>, Alpha::Aval, 3, 1>("32f P3 to AC4");
  checkTyped<Scale32f, BGRAOf<Lum32f>, RGBAOf<Lum32f>, Alpha::Keep, 1, 1>("32f AC4 kept alpha");
  checkTyped<Mix16u, RGBOf<Lum16u>, BGRAOf<Lum16u>, Alpha::Zero, 1, 1>("16u C3 to AC4");
  checkTyped<Mix16u, P4Of<Lum16u>, RGBOf<Lum16u>, Alpha::Keep, 4, 1>("16u P4 to C3");
}

}  // namespace
