// Commands `twist`, `tonemap`, `pack12` and `unpack12`: a 3x4 colour twist of a
// PPM, a raw float plane tone-mapped to PGM, and raw 16-bit planes to and from
// the dense 12-bit form.
#include <cstdio>
#include <cstring>
#include <sstream>
#include <stdexcept>

#include "formats.h"

namespace lumcli {
namespace {

// "WxH" with positive numbers.
void parseSize(const std::string& v, int& w, int& h) {
  char x = 0;
  std::istringstream in(v);
  if (!(in >> w >> x >> h) || x != 'x' || w < 1 || h < 1 || !in.eof())
    throw std::invalid_argument("--size wants WxH with positive numbers, got '" + v + "'");
}

// Options --size WxH and exactly two file names.
struct SizedFiles {
  int w = 0, h = 0;
  std::string in, out;
};
SizedFiles sizedFiles(const std::vector<std::string>& args, size_t first, const char* cmd) {
  SizedFiles f;
  for (size_t i = first; i < args.size(); ++i) {
    if (args[i] == "--size") {
      if (i + 1 >= args.size()) throw std::invalid_argument("--size needs a value");
      parseSize(args[++i], f.w, f.h);
    } else if (f.in.empty()) f.in = args[i];
    else if (f.out.empty()) f.out = args[i];
    else throw std::invalid_argument("too many file names");
  }
  if (f.w < 1 || f.in.empty() || f.out.empty())
    throw std::invalid_argument(std::string(cmd) + " needs --size WxH, an input and an output file");
  return f;
}

std::vector<uint8_t> readSized(const std::string& path, size_t bytes) {
  std::vector<uint8_t> b = readFile(path);
  if (b.size() != bytes)
    throw std::runtime_error(path + ": " + std::to_string(b.size()) + " bytes, the size asks for " +
                             std::to_string(bytes));
  return b;
}

int report(LumStatus st, const char* what) {
  if (st == lumStatusOk) return 0;
  std::fprintf(stderr, "%s: status %d\n", what, int(st));
  return st < 0 ? 1 : 0;
}

int twist(const std::vector<std::string>& args) {
  if (args.size() != 3) throw std::invalid_argument("twist needs a matrix, an input and an output PPM");
  float t[3][4];
  std::string m = args[0];
  for (char& c : m)
    if (c == ',') c = ' ';
  std::istringstream in(m);
  for (auto& row : t)
    for (float& v : row)
      if (!(in >> v)) throw std::invalid_argument("the matrix needs 12 numbers, row by row (r0c0,...,r2c3)");
  std::string rest;
  if (in >> rest) throw std::invalid_argument("the matrix needs exactly 12 numbers");
  Image img = readPnm(args[1]);
  if (img.channels != 3) throw std::invalid_argument(args[1] + " is not a colour (P6) image");
  const int step = img.width * 3;
  const int rc = report(lumiColorTwist32f_8u_C3IR(img.pixels.data(), step, LumSize{img.width, img.height}, t),
                        "ColorTwist32f_8u_C3IR");
  if (rc == 0) writePnm(args[2], img);
  return rc;
}

int tonemap(const std::vector<std::string>& args) {
  if (args.empty() || (args[0] != "linear" && args[0] != "mean"))
    throw std::invalid_argument("tonemap needs linear or mean first");
  const SizedFiles f = sizedFiles(args, 1, "tonemap");
  const std::vector<uint8_t> raw = readSized(f.in, size_t(f.w) * size_t(f.h) * 4);
  std::vector<float> src(size_t(f.w) * size_t(f.h));
  std::memcpy(src.data(), raw.data(), raw.size());
  Image out;
  out.width = f.w, out.height = f.h, out.channels = 1;
  out.pixels.assign(size_t(f.w) * size_t(f.h), 0);
  const auto fn = args[0] == "linear" ? lumiToneMapLinear_32f8u_C1R : lumiToneMapMean_32f8u_C1R;
  const LumStatus st = fn(src.data(), 4 * f.w, out.pixels.data(), f.w, LumSize{f.w, f.h});
  if (st == lumStatusNegativeMean) {
    std::fprintf(stderr, "tonemap: the image's %s is negative, nothing written\n",
                 args[0] == "linear" ? "maximum" : "mean");
    return 1;
  }
  const int rc = report(st, "ToneMap");
  if (rc == 0) writePnm(f.out, out);
  return rc;
}

// Rows of 16-bit samples to packed rows, or back.
int pack12(const std::vector<std::string>& args, bool pack) {
  const SizedFiles f = sizedFiles(args, 0, pack ? "pack12" : "unpack12");
  const int packedRow = 3 * (f.w / 2) + 2 * (f.w & 1);
  const size_t words = size_t(f.w) * size_t(f.h);
  std::vector<uint8_t> in, out;
  LumStatus st;
  if (pack) {
    in = readSized(f.in, 2 * words);
    std::vector<uint16_t> s(words);
    std::memcpy(s.data(), in.data(), in.size());
    out.resize(size_t(packedRow) * size_t(f.h));
    st = lumiPack_16u12u_C1R(s.data(), 2 * f.w, out.data(), packedRow, LumSize{f.w, f.h});
  } else {
    in = readSized(f.in, size_t(packedRow) * size_t(f.h));
    std::vector<uint16_t> d(words);
    st = lumiUnpack_12u16u_C1R(in.data(), packedRow, d.data(), 2 * f.w, LumSize{f.w, f.h});
    out.resize(2 * words);
    std::memcpy(out.data(), d.data(), out.size());
  }
  const int rc = report(st, pack ? "Pack_16u12u_C1R" : "Unpack_12u16u_C1R");
  if (rc == 0) writeFile(f.out, out);
  return rc;
}

const bool kRegistered = [] {
  registerCommand({"twist", "r0c0,r0c1,...,r2c3 IN.ppm OUT.ppm\n3x4 colour twist (fourth column: offset)", twist});
  registerCommand({"tonemap",
                   "linear|mean --size WxH IN.f32 OUT.pgm\nfloat plane to 8 bits by its maximum or twice its mean",
                   tonemap});
  registerCommand({"pack12", "--size WxH IN.raw16 OUT.raw12\n16-bit words to dense 12-bit rows",
                   [](const std::vector<std::string>& a) { return pack12(a, true); }});
  registerCommand({"unpack12", "--size WxH IN.raw12 OUT.raw16\ndense 12-bit rows to 16-bit words",
                   [](const std::vector<std::string>& a) { return pack12(a, false); }});
  return true;
}();

}  // namespace
}  // namespace lumcli
