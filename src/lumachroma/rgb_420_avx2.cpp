// 256-bit blocks (AVX2) of the 4:2:0 and 4:1:1 kernels. This file alone is built
// with AVX2; the kernels enter it only when the processor has AVX2. Every form
// runs its vblock on the sixteen-lane set (the tests hold both widths against
// the scalar rule).
#if defined(__AVX2__)

#include "frame/cell_wide_avx2.h"
#include "lumachroma/forms_420.h"

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
