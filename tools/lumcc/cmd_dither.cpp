// The dither command: reduces a PPM/PGM to a number of levels with any dither
// kind and noise, or writes a one-bit PBM through the one-bit reduction.
#include <cstdio>
#include <stdexcept>
#include <string>
#include <vector>

#include "formats.h"
#include "image_io.h"
#include "lumcc.h"

namespace lumcli {
namespace {

LumDitherKind kindNamed(const std::string& n) {
  if (n == "off") return lumDitherOff;
  if (n == "fs") return lumDitherFloydSteinberg;
  if (n == "jjn") return lumDitherJarvisJudiceNinke;
  if (n == "stucki") return lumDitherStucki;
  if (n == "ordered") return lumDitherOrdered;
  throw std::invalid_argument("--kind takes off, fs, jjn, stucki or ordered, got '" + n + "'");
}

int number(const std::string& v, const std::string& opt) {
  try {
    size_t used = 0;
    const int n = std::stoi(v, &used);
    if (used == v.size()) return n;
  } catch (const std::exception&) {
  }
  throw std::invalid_argument(opt + " wants a number, got '" + v + "'");
}

int fail(const char* what, LumStatus s) {
  std::fprintf(stderr, "lumcc dither: %s refused (status %d)\n", what, int(s));
  return 1;
}

// A PBM (P4) of the on-bits: PBM's 1 is black, so the bits are inverted.
void writePbm(const std::string& path, int w, int h, const std::vector<uint8_t>& bits) {
  std::vector<uint8_t> out;
  const std::string head = "P4\n" + std::to_string(w) + " " + std::to_string(h) + "\n";
  out.assign(head.begin(), head.end());
  for (uint8_t b : bits) out.push_back(uint8_t(~b));
  writeFile(path, out);
}

int runDither(const std::vector<std::string>& args) {
  int levels = 2, noise = 0, threshold = 127;
  LumDitherKind kind = lumDitherFloydSteinberg;
  bool bitmap = false;
  std::vector<std::string> files;
  for (size_t i = 0; i < args.size(); ++i) {
    const std::string& a = args[i];
    auto value = [&]() -> const std::string& {
      if (i + 1 >= args.size()) throw std::invalid_argument(a + " needs a value");
      return args[++i];
    };
    if (a == "--levels") levels = number(value(), a);
    else if (a == "--noise") noise = number(value(), a);
    else if (a == "--kind") kind = kindNamed(value());
    else if (a == "--threshold") threshold = number(value(), a);
    else if (a == "--bitmap") bitmap = true;
    else if (!a.empty() && a[0] == '-') throw std::invalid_argument("unknown option " + a);
    else files.push_back(a);
  }
  if (files.size() != 2) throw std::invalid_argument("dither wants IN and OUT");
  if (threshold < 0 || threshold > 255) throw std::invalid_argument("--threshold takes 0..255");
  Image img = readPnm(files[0]);
  const LumSize roi{img.width, img.height};
  if (bitmap) {
    if (kind != lumDitherOff && kind != lumDitherStucki)
      throw std::invalid_argument("--bitmap takes --kind off or stucki");
    Image gray{img.width, img.height, 1, std::vector<uint8_t>(size_t(img.width) * size_t(img.height))};
    if (img.channels == 3) {
      if (LumStatus s = lumiRGBToGray_8u_C3C1R(img.pixels.data(), 3 * img.width, gray.pixels.data(), img.width, roi))
        return fail("RGBToGray", s);
    } else {
      gray = img;
    }
    int bufBytes = 0;
    lumiReduceBitsGetBufferSize(1, roi, 0, lumDitherStucki, &bufBytes);
    std::vector<uint8_t> buf(static_cast<size_t>(bufBytes) + 1);
    const int rowBytes = (img.width + 7) / 8;
    std::vector<uint8_t> bits(size_t(rowBytes) * size_t(img.height));
    if (LumStatus s = lumiReduceBits_8u1u_C1R(gray.pixels.data(), img.width, bits.data(), rowBytes, 0, roi, 0, 0, kind,
                                              Lum8u(threshold), buf.data()))
      return fail("ReduceBits_8u1u", s);
    writePbm(files[1], img.width, img.height, bits);
    return 0;
  }
  int bufBytes = 0;
  if (LumStatus s = lumiReduceBitsGetBufferSize(img.channels, roi, noise, kind, &bufBytes))
    return fail("ReduceBitsGetBufferSize", s);
  std::vector<uint8_t> buf(static_cast<size_t>(bufBytes) + 1);
  Image out{img.width, img.height, img.channels, std::vector<uint8_t>(img.pixels.size())};
  const int step = img.width * img.channels;
  const LumStatus s =
      img.channels == 3
          ? lumiReduceBits_8u_C3R(img.pixels.data(), step, out.pixels.data(), step, roi, noise, kind, levels, buf.data())
          : lumiReduceBits_8u_C1R(img.pixels.data(), step, out.pixels.data(), step, roi, noise, kind, levels, buf.data());
  if (s) return fail("ReduceBits", s);
  writePnm(files[1], out);
  return 0;
}

const bool kRegistered = registerCommand(
    {"dither",
     "[--levels N] [--kind off|fs|jjn|stucki|ordered] [--noise 0..100] IN OUT\n"
     "reduce a PPM/PGM to N levels a channel (default 2, Floyd-Steinberg);\n"
     "--bitmap [--threshold T] with --kind off|stucki writes a one-bit PBM",
     runDither});

}  // namespace
}  // namespace lumcli
