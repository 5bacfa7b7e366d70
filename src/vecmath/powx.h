// Single-precision vector power: each element of an array raised to one fixed
// power, with at least 21 correct bits over the whole float range.
#pragma once

#include "lumcc.h"

// pDst[i] = pSrc[i]^val for len elements; pDst may equal pSrc. A len below 1
// or a null pointer returns at once. A val of 0 gives 1 everywhere (NaN too).
// Zeros, negatives, infinities, NaNs and denormals (of either operand) follow
// the C rules of pow, computed in double precision. The caller's floating-point
// control state is the same after the call as before it; inside, the kernel
// runs at round to nearest, exceptions masked, without flush to zero.
void lumsPowx_32f_A21(const Lum32f* pSrc, Lum32f val, Lum32f* pDst, int len);

namespace lum::vm {
// x^y of one element by the rare-element rules (double precision, rounded once).
float rarePow(float x, float y);
}  // namespace lum::vm
