// One-bit reduction: 8-bit gray to a bitmap, leftmost pixel in the most
// significant bit, by a plain threshold or by a Stucki diffusion in integers.
#include <cstring>

#include "frame/check.h"
#include "reduce/reduce_frame.h"

namespace lum::reduce {
namespace {

// Writes one row's bits from bit offset o of the first byte, pixel by pixel.
// The first byte keeps its top o bits and loses all the bits below them; a
// last partial byte keeps its low bits. The asymmetry is deliberate.
class BitRow {
 public:
  BitRow(uint8_t* d, int width, int o) : d_(d), left_(width), pos_(o), keepTop_(0xFF00u >> o) {}
  // True when a whole byte can be written next (put8).
  bool atByte() const { return pos_ == 0 && left_ >= 8; }
  void put8(unsigned bits) {
    *d_++ = uint8_t(bits);
    left_ -= 8;
  }
  void put(bool on) {
    if (on) acc_ |= 0x80u >> pos_;
    ++pos_;
    --left_;
    if (pos_ == 8 || left_ == 0) flush();
  }

 private:
  void flush() {
    if (keepTop_ & 0xFF) *d_ = uint8_t((*d_ & keepTop_) | acc_);  // first byte: old top bits, the rest new or 0
    else if (pos_ == 8) *d_ = uint8_t(acc_);                        // a whole byte
    else *d_ = uint8_t((*d_ & ~(0xFF00u >> pos_)) | acc_);          // last byte: its low bits kept
    ++d_;
    acc_ = 0;
    pos_ = 0;
    keepTop_ = 0;
  }

  uint8_t* d_;
  int left_;
  int pos_;
  unsigned keepTop_;  // mask of the first byte's old bits while it is open
  unsigned acc_ = 0;
};

// Kind 0: on where s > threshold.
void thresholdRow(const Lum8u* s, BitRow& out, int w, unsigned threshold) {
  int x = 0;
  while (x < w) {
    if (out.atByte()) {
      unsigned bits = 0;
      for (int i = 0; i < 8; ++i) bits = (bits << 1) | unsigned(s[x + i] > threshold);
      out.put8(bits);
      x += 8;
    } else {
      out.put(s[x++] > threshold);
    }
  }
}

// Kind 3: Stucki weights in 32-bit integers, errors in eighths of a sample
// step; c the row written, p and pp the rows above.
void stuckiRow(const Lum8u* s, BitRow& out, int w, int32_t threshold, int32_t* c, const int32_t* p,
               const int32_t* pp) {
  const int32_t limit = threshold * 8192;
  for (int x = 0; x < w; ++x) {
    const int32_t sum = pp[x - 2] + pp[x + 2] + 8 * (p[x] + c[x - 1]) + 4 * (pp[x] + p[x - 1] + p[x + 1] + c[x - 2]) +
                        2 * (pp[x - 1] + pp[x + 1] + p[x - 2] + p[x + 2]);
    const int32_t a = int32_t(s[x]) * 8192 + sum * 23;
    const bool on = a > limit;
    c[x] = (a >> 10) - (2047 & -int32_t(on));  // an "on" pixel gives up the on level, 2047
    out.put(on);
  }
}

}  // namespace
}  // namespace lum::reduce

using namespace lum::reduce;

extern "C" LUMAPI LumStatus lumiReduceBits_8u1u_C1R(const Lum8u* pSrc, int srcStep, Lum8u* pDst, int dstStep,
                                                    int dstBitOffset, LumSize roiSize, int /*noise*/,
                                                    Lum32u /*seed*/, LumDitherKind ditherKind, Lum8u threshold,
                                                    Lum8u* pBuffer) {
  if (lum::check::anyNull(pSrc, pDst)) return lumStatusNullPointer;
  if (lum::check::badSize(roiSize) || dstBitOffset < 0) return lumStatusBadSize;
  if (ditherKind != lumDitherOff && ditherKind != lumDitherStucki) return lumStatusBadDitherKind;
  if (ditherKind == lumDitherStucki && pBuffer == nullptr) return lumStatusNullPointer;
  const int w = roiSize.width;
  const int o = dstBitOffset & 7;  // whole bytes of the offset are ignored on purpose
  if (ditherKind == lumDitherOff) {
    for (int y = 0; y < roiSize.height; ++y) {
      BitRow out(lum::rowAt(pDst, y, dstStep), w, o);
      thresholdRow(lum::rowAt(pSrc, y, srcStep), out, w, threshold);
    }
    return lumStatusOk;
  }
  auto* rows = reinterpret_cast<int32_t*>(workArea(pBuffer));
  const std::ptrdiff_t len = std::ptrdiff_t(w) + 4;
  std::memset(rows, 0, size_t(len) * 3 * sizeof(int32_t));
  int32_t* r[3] = {rows + 2, rows + len + 2, rows + 2 * len + 2};  // pp, p, c
  for (int y = 0; y < roiSize.height; ++y) {
    BitRow out(lum::rowAt(pDst, y, dstStep), w, o);
    stuckiRow(lum::rowAt(pSrc, y, srcStep), out, w, threshold, r[2], r[1], r[0]);
    int32_t* oldest = r[0];
    r[0] = r[1];
    r[1] = r[2];
    r[2] = oldest;
  }
  return lumStatusOk;
}
