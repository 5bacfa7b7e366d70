// 256-bit blocks (AVX2) of the 4:2:0 and 4:1:1 kernels. This file alone is built
// with AVX2; the kernels enter it only when the processor has AVX2. The forms of
// forms_420.h serve both vector widths with one block(); the full-resolution forms
// the cell kernels borrow are written for 128 bits, so their 256-bit twins stand
// here, lane for lane the same arithmetic (the tests hold both against the scalar
// rule).
#if defined(__AVX2__)

#include "frame/fixed_point_avx2.h"  // before the forms: their blocks find the 256-bit vocabulary
#include "frame/cell_wide_avx2.h"
#include "lumachroma/forms_420.h"

namespace lum::wide {

using namespace fx;

// FY1's luma, the one output the cell kernels take from it.
template <>
struct WideForm<form::FY1> {
  static void block(const W* in, W* out) {
    const W y = add16(add16(add16(mulhrs16s(sll16<7>(in[0]), splat<W>(4211)), mulhrs16s(sll16<7>(in[1]), splat<W>(8258))),
                            mulhrs16s(sll16<7>(in[2]), splat<W>(1606))),
                      splat<W>(1056));
    out[0] = clamp8(sra16<6>(y));
  }
};

// FU2's luma (twice the luma plus one, halved).
template <>
struct WideForm<form::FU2> {
  static void block(const W* in, W* out) {
    const W r = sll16<2>(in[0]), g = sll16<2>(in[1]), b = sll16<2>(in[2]);
    const W y2 = adds16s(adds16s(adds16s(mulhi16s(r, splat<W>(9798)), mulhi16s(g, splat<W>(19235))),
                                 mulhi16s(b, splat<W>(3736))),
                         splat<W>(1));
    out[0] = clamp8(sra16<1>(y2));
  }
};

// IY1 and IY2.
template <int Cy, int CrR, int CbG, int CrG, int CbB, int Round, int Shift>
struct WideForm<form::IYRounded<Cy, CrR, CbG, CrG, CbB, Round, Shift>> {
  static void block(const W* in, W* out) {
    const W y = mulhi16s(sll16<7>(sub16(in[0], splat<W>(16))), splat<W>(Cy));
    const W cb = sll16<7>(sub16(in[1], splat<W>(128))), cr = sll16<7>(sub16(in[2], splat<W>(128)));
    const W r = adds16s(y, mulhi16s(cr, splat<W>(CrR)));
    const W g = subs16s(y, adds16s(mulhi16s(cb, splat<W>(CbG)), mulhi16s(cr, splat<W>(CrG))));
    const W b = adds16s(y, mulhi16s(cb, splat<W>(CbB)));
    out[0] = clamp8(sra16<Shift>(adds16s(r, splat<W>(Round))));
    out[1] = clamp8(sra16<Shift>(adds16s(g, splat<W>(Round))));
    out[2] = clamp8(sra16<Shift>(adds16s(b, splat<W>(Round))));
  }
};

// IU2.
template <>
struct WideForm<form::IU2> {
  static void block(const W* in, W* out) {
    const W y = sll16<1>(in[0]);
    const W ub = sll16<4>(sub16(in[1], splat<W>(128))), vb = sll16<4>(sub16(in[2], splat<W>(128)));
    out[0] = clamp8(sra16<1>(adds16s(y, mulhi16s(vb, splat<W>(9338)))));
    out[1] = clamp8(sra16<1>(adds16s(adds16s(y, mulhi16s(ub, splat<W>(-3227))), mulhi16s(vb, splat<W>(-4759)))));
    out[2] = clamp8(sra16<1>(adds16s(y, mulhi16s(ub, splat<W>(16645)))));
  }
};

}  // namespace lum::wide

namespace lum {

using namespace form;
namespace L = layout;

// Every cell kernel with a vector block: the steps of 32 pixels.
template struct WideForward<Cell420, CellForm<FY1, FC2>, L::RGB, L::ChromaP3>;
template struct WideForward<Cell420, CellForm<FY1, FC2>, L::BGR, L::ChromaP3>;
template struct WideForward<Cell420, CellForm<FY1, FC2>, L::RGB, L::ChromaNV12>;
template struct WideForward<Cell420, CellForm<FY1, FC2>, L::RGBA, L::ChromaNV12>;
template struct WideForward<Cell420, CellForm<FY1, FC2>, L::BGR, L::ChromaNV12>;
template struct WideForward<Cell420, CellForm<FY1, FC2>, L::BGRA, L::ChromaNV12>;
template struct WideForward<Cell420, CellForm<FY5, FC5>, L::BGRA, L::ChromaP3>;
template struct WideForward<Cell420, CellForm<FY5, FC5>, L::RGBA, L::ChromaP3>;
template struct WideForward<Cell420, CellForm<YuvQ14Luma, YuvQ14Chroma>, L::RGB, L::ChromaP3>;
template struct WideForward<Cell420, CellForm<FU2, FU2Cell>, L::BGRA, L::ChromaP3>;
template struct WideForward<Cell411, CellForm<FY1, FC2>, L::BGR, L::ChromaP3>;
template struct WideForward<Cell411, CellForm<FY1, FC2>, L::BGRA, L::ChromaP3>;

template struct WideInverse<Cell420, IY1, L::ChromaP3, L::RGB, Alpha::Keep>;
template struct WideInverse<Cell420, IY1, L::ChromaP3, L::BGR, Alpha::Keep>;
template struct WideInverse<Cell420, IY2, L::ChromaP3, L::BGRA, Alpha::Aval>;
template struct WideInverse<Cell420, IY4Cell, L::ChromaP3, L::RGBA, Alpha::Aval>;
template struct WideInverse<Cell420, IY4Cell, L::ChromaNV12, L::RGB, Alpha::Keep>;
template struct WideInverse<Cell420, IY4Cell, L::ChromaNV12, L::RGBA, Alpha::Aval>;
template struct WideInverse<Cell420, IY4Cell, L::ChromaNV12, L::BGR, Alpha::Keep>;
template struct WideInverse<Cell420, IY4Cell, L::ChromaNV12, L::BGRA, Alpha::Aval>;
template struct WideInverse<Cell420, IY4Cell, L::ChromaNV21, L::RGB, Alpha::Keep>;
template struct WideInverse<Cell420, IY4Cell, L::ChromaNV21, L::RGBA, Alpha::Aval>;
template struct WideInverse<Cell420, IY4Cell, L::ChromaNV21, L::BGR, Alpha::Keep>;
template struct WideInverse<Cell420, IY4Cell, L::ChromaNV21, L::BGRA, Alpha::Aval>;
template struct WideInverse<Cell420, IU2, L::ChromaP3, L::RGB, Alpha::Keep>;
template struct WideInverse<Cell420, IU5, L::ChromaP3, L::RGBA, Alpha::Zero>;
template struct WideInverse<Cell420, IU2Fine, L::ChromaP3, L::BGR, Alpha::Keep>;
template struct WideInverse<Cell411, IY1, L::ChromaP3, L::BGR, Alpha::Keep>;
template struct WideInverse<Cell411, IY1, L::ChromaP3, L::BGRA, Alpha::Aval>;

}  // namespace lum

#endif
