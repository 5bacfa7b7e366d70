// lumcc demosaic: a raw Bayer image (8-bit PGM, or raw 8- or 16-bit samples with
// --size) to a PPM, by the bilinear, VNG or AHD method on any grid.
#include <cstdio>
#include <cstring>
#include <fstream>
#include <stdexcept>
#include <string>
#include <vector>

#include "formats.h"
#include "image_io.h"
#include "lumcc.h"

namespace lumcli {
namespace {

int gridCode(const std::string& g) {
  const char* names[4] = {"bggr", "rggb", "gbrg", "grbg"};
  for (int i = 0; i < 4; ++i)
    if (g == names[i]) return i;
  throw std::invalid_argument("unknown grid " + g + " (bggr, rggb, gbrg, grbg)");
}

// Demosaics w x h samples of T (rows dense) into R, G, B samples of T.
template <class T>
LumStatus demosaic(const std::string& method, const T* src, int w, int h, int grid, std::vector<T>& rgb) {
  rgb.assign(size_t(w) * size_t(h) * 3, 0);
  const LumRect rc{0, 0, w, h};
  const LumSize size{w, h};
  const int srcStep = w * int(sizeof(T)), dstStep = 3 * w * int(sizeof(T));
  const LumCfaGrid g = LumCfaGrid(grid);
  if (method == "bilinear") {
    if constexpr (sizeof(T) == 1) return lumiCFAToRGB_8u_C1C3R(src, rc, size, srcStep, rgb.data(), dstStep, g);
    else return lumiCFAToRGB_16u_C1C3R(src, rc, size, srcStep, rgb.data(), dstStep, g);
  }
  if (method == "ahd") {
    const int tmpStep = (w + 6) * int(sizeof(T) + 1);
    std::vector<Lum8u> tmp(size_t(tmpStep) * 30);
    if constexpr (sizeof(T) == 1)
      return lumiDemosaicAHD_8u_C1C3R(src, rc, size, srcStep, rgb.data(), dstStep, g, tmp.data(), tmpStep);
    else return lumiDemosaicAHD_16u_C1C3R(src, rc, size, srcStep, rgb.data(), dstStep, g, tmp.data(), tmpStep);
  }
  if (method == "vng") {
    std::vector<T> bgra(size_t(w) * size_t(h) * 4, 0);
    LumStatus s;
    if constexpr (sizeof(T) == 1)
      s = lumiCFAToBGRA_VNG_8u_C1C4R(src, rc, size, srcStep, nullptr, bgra.data(), 4 * w, g);
    else s = lumiCFAToBGRA_VNG_16u_C1C4R(src, rc, size, srcStep, nullptr, bgra.data(), 8 * w, g);
    for (size_t i = 0; i < size_t(w) * size_t(h); ++i)
      for (int k = 0; k < 3; ++k) rgb[3 * i + size_t(k)] = bgra[4 * i + size_t(2 - k)];
    return s;
  }
  throw std::invalid_argument("unknown method " + method + " (bilinear, vng, ahd)");
}

// A PPM of 16-bit samples (maxval 65535, most significant byte first).
void writePpm16(const std::string& path, int w, int h, const std::vector<Lum16u>& rgb) {
  std::ofstream out(path, std::ios::binary);
  if (!out) throw std::runtime_error(path + ": cannot create");
  out << "P6\n" << w << " " << h << "\n65535\n";
  for (Lum16u v : rgb) out.put(char(v >> 8)).put(char(v & 255));
  if (!out) throw std::runtime_error(path + ": write failed");
}

int run(const std::vector<std::string>& args) {
  std::string method = "bilinear", grid = "bggr", size;
  int bits = 8;
  std::vector<std::string> files;
  for (size_t i = 0; i < args.size(); ++i) {
    auto value = [&]() -> const std::string& {
      if (i + 1 >= args.size()) throw std::invalid_argument(args[i] + " needs a value");
      return args[++i];
    };
    if (args[i] == "--method") method = value();
    else if (args[i] == "--grid") grid = value();
    else if (args[i] == "--size") size = value();
    else if (args[i] == "--bits") bits = std::stoi(value());
    else files.push_back(args[i]);
  }
  if (files.size() != 2) throw std::invalid_argument("demosaic needs an input and an output file");
  if (bits != 8 && bits != 16) throw std::invalid_argument("--bits is 8 or 16");
  const int g = gridCode(grid);
  int w = 0, h = 0;
  std::vector<uint8_t> raw;
  if (size.empty()) {
    const Image pgm = readPnm(files[0]);
    if (pgm.channels != 1) throw std::invalid_argument(files[0] + ": a Bayer image is a PGM (one sample a pixel)");
    if (bits != 8) throw std::invalid_argument("a PGM input has 8-bit samples");
    w = pgm.width, h = pgm.height, raw = pgm.pixels;
  } else {
    if (std::sscanf(size.c_str(), "%dx%d", &w, &h) != 2 || w < 1 || h < 1)
      throw std::invalid_argument("--size is WxH");
    raw = readFile(files[0]);
    if (raw.size() != size_t(w) * size_t(h) * size_t(bits / 8))
      throw std::runtime_error(files[0] + ": " + std::to_string(raw.size()) + " bytes, not " + size + " samples of " +
                               std::to_string(bits) + " bits");
  }
  LumStatus s;
  if (bits == 8) {
    Image out;
    out.width = w, out.height = h, out.channels = 3;
    s = demosaic<Lum8u>(method, raw.data(), w, h, g, out.pixels);
    if (s == lumStatusOk) writePnm(files[1], out);
  } else {
    std::vector<Lum16u> src(size_t(w) * size_t(h)), rgb;
    std::memcpy(src.data(), raw.data(), raw.size());
    s = demosaic<Lum16u>(method, src.data(), w, h, g, rgb);
    if (s == lumStatusOk) writePpm16(files[1], w, h, rgb);
  }
  if (s != lumStatusOk) throw std::runtime_error("demosaic refused the image, status " + std::to_string(s));
  return 0;
}

const bool kRegistered = registerCommand(
    {"demosaic",
     "[--method bilinear|vng|ahd] [--grid bggr|rggb|gbrg|grbg] [--bits 8|16] [--size WxH] IN OUT.ppm\n"
     "a Bayer image (PGM, or raw samples of --bits with --size, little-endian) to RGB",
     run});

}  // namespace
}  // namespace lumcli
