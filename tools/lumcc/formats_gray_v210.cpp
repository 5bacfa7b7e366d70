// Gray (one byte a pixel) and v210 (10-bit 4:2:2 packed in 32-bit words, rows
// dense: 4 * ceil(W / 6) words a row) files.
#include "formats.h"

namespace lumcli {
namespace {

size_t grayBytes(int w, int h) { return size_t(w) * size_t(h); }
int v210Words(int w) { return 4 * ((w + 5) / 6); }
size_t v210Bytes(int w, int h) { return size_t(v210Words(w)) * 4 * size_t(h); }

// The file's words, copied out so that the library sees aligned 32-bit samples.
std::vector<Lum32u> v210WordsOf(const std::vector<uint8_t>& in) {
  std::vector<Lum32u> words(in.size() / 4);
  for (size_t i = 0; i < words.size(); ++i)
    words[i] = Lum32u(in[4 * i]) | Lum32u(in[4 * i + 1]) << 8 | Lum32u(in[4 * i + 2]) << 16 |
               Lum32u(in[4 * i + 3]) << 24;
  return words;
}

Format gray() {
  Format f;
  f.name = "gray";
  f.description = "8-bit gray, one byte a pixel (to RGB: replicated; from RGB: 0.299 R + 0.587 G + 0.114 B)";
  f.fileBytes = grayBytes;
  f.toRgb = [](const std::vector<uint8_t>& in, Image& out) {
    return lumiGrayToRGB_8u_C1C3R(in.data(), out.width, out.pixels.data(), out.width * 3, LumSize{out.width, out.height});
  };
  f.fromRgb = [](const Image& in, std::vector<uint8_t>& out) {
    return lumiRGBToGray_8u_C3C1R(in.pixels.data(), in.width * 3, out.data(), in.width, LumSize{in.width, in.height});
  };
  return f;
}

// v210 decodes to 5-6-5 words whose fields are clamped without scaling, so only
// the darkest codes keep detail; the fields are widened to 8 bits for the image.
Format v210() {
  Format f;
  f.name = "v210";
  f.description = "v210 10-bit 4:2:2, BT.709, decoded to 5-6-5 (fields clamp unscaled: only the darkest codes resolve)";
  f.fileBytes = v210Bytes;
  f.toRgb = [](const std::vector<uint8_t>& in, Image& out) {
    const auto words = v210WordsOf(in);
    std::vector<Lum16u> rgb565(size_t(out.width) * size_t(out.height));
    const LumStatus s = lumiYUV422v210ToRGB_709HDTV_32u16u_C3(words.data(), v210Words(out.width), rgb565.data(),
                                                              out.width, LumSize{out.width, out.height});
    if (s < 0) return s;
    for (size_t i = 0; i < rgb565.size(); ++i) {
      const int r = rgb565[i] & 31, g = (rgb565[i] >> 5) & 63, b = rgb565[i] >> 11;
      out.pixels[3 * i] = uint8_t(r << 3 | r >> 2);
      out.pixels[3 * i + 1] = uint8_t(g << 2 | g >> 4);
      out.pixels[3 * i + 2] = uint8_t(b << 3 | b >> 2);
    }
    return s;
  };
  return f;
}

// The luma of a v210 file, 10 bits cut to 8, shown as gray.
Format v210Luma() {
  Format f;
  f.name = "v210luma";
  f.description = "v210 10-bit 4:2:2, luma only, shown as 8-bit gray";
  f.fileBytes = v210Bytes;
  f.toRgb = [](const std::vector<uint8_t>& in, Image& out) {
    const auto words = v210WordsOf(in);
    std::vector<Lum16u> luma(size_t(out.width) * size_t(out.height));
    LumStatus s = lumiYUV422v210ToGray_709HDTV_32u16u_C3C1(words.data(), v210Words(out.width), luma.data(), out.width,
                                                           LumSize{out.width, out.height});
    if (s < 0) return s;
    std::vector<uint8_t> g(luma.size());
    for (size_t i = 0; i < luma.size(); ++i) g[i] = uint8_t(luma[i] >> 2);
    return lumiGrayToRGB_8u_C1C3R(g.data(), out.width, out.pixels.data(), out.width * 3, LumSize{out.width, out.height});
  };
  return f;
}

const bool kRegistered = [] {
  registerFormat(gray());
  registerFormat(v210());
  registerFormat(v210Luma());
  return true;
}();

}  // namespace
}  // namespace lumcli
