// Constants of the colour standards, in one place that scalar rules and vector
// blocks both read, so that the two can never drift apart. Each standard keeps
// its coefficients at the scales the forms use them (Q15 of samples << 7, Q16
// of samples, ...); the scale is in the name. Where two forms of a standard
// differ by a unit in the last place on purpose, both values stand here, each
// named after the form that uses it.
#pragma once

namespace lum::coef {

// ---------------------------------------------------------------------------
// BT.601, studio range: Y in 16..235, Cb and Cr in 16..240.
// ---------------------------------------------------------------------------
namespace bt601 {

}  // namespace bt601

// ---------------------------------------------------------------------------
// YUV: BT.601 full-swing luma with the scaled colour differences U and V.
// ---------------------------------------------------------------------------
namespace yuv {

}  // namespace yuv

// ---------------------------------------------------------------------------
// BT.709, studio range.
// ---------------------------------------------------------------------------
namespace bt709 {

}  // namespace bt709

// ---------------------------------------------------------------------------
// Gray: luma weights of the gray conversions.
// ---------------------------------------------------------------------------
namespace gray {

}  // namespace gray

}  // namespace lum::coef
