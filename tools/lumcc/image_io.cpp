#include "image_io.h"

#include <cctype>
#include <fstream>
#include <iterator>
#include <stdexcept>

namespace lumcli {

namespace {
[[noreturn]] void fail(const std::string& path, const std::string& why) {
  throw std::runtime_error(path + ": " + why);
}
// Next header number of a PNM file, skipping white space and comments.
int headerNumber(std::istream& in, const std::string& path) {
  int c = in.get();
  while (in && (std::isspace(c) || c == '#')) {
    if (c == '#')
      while (in && c != '\n') c = in.get();
    c = in.get();
  }
  if (!in || !std::isdigit(c)) fail(path, "malformed header");
  long v = 0;
  while (in && std::isdigit(c)) {
    v = v * 10 + (c - '0');
    if (v > 1 << 20) fail(path, "header value too large");
    c = in.get();
  }
  return int(v);
}
}  // namespace

Image readPnm(const std::string& path) {
  std::ifstream in(path, std::ios::binary);
  if (!in) fail(path, "cannot open");
  char magic[2] = {0, 0};
  in.read(magic, 2);
  if (!in || magic[0] != 'P' || (magic[1] != '6' && magic[1] != '5'))
    fail(path, "not a binary PPM (P6) or PGM (P5) file");
  Image img;
  img.channels = magic[1] == '6' ? 3 : 1;
  img.width = headerNumber(in, path);
  img.height = headerNumber(in, path);
  const int maxval = headerNumber(in, path);
  if (img.width < 1 || img.height < 1) fail(path, "empty image");
  if (maxval != 255) fail(path, "only 8-bit images (maxval 255) are supported");
  img.pixels.resize(size_t(img.width) * size_t(img.height) * size_t(img.channels));
  in.read(reinterpret_cast<char*>(img.pixels.data()), std::streamsize(img.pixels.size()));
  if (size_t(in.gcount()) != img.pixels.size()) fail(path, "file is shorter than its header says");
  return img;
}

void writePnm(const std::string& path, const Image& img) {
  std::ofstream out(path, std::ios::binary);
  if (!out) fail(path, "cannot create");
  out << (img.channels == 1 ? "P5" : "P6") << "\n" << img.width << " " << img.height << "\n255\n";
  out.write(reinterpret_cast<const char*>(img.pixels.data()), std::streamsize(img.pixels.size()));
  if (!out) fail(path, "write failed");
}

std::vector<uint8_t> readFile(const std::string& path) {
  std::ifstream in(path, std::ios::binary);
  if (!in) fail(path, "cannot open");
  return std::vector<uint8_t>(std::istreambuf_iterator<char>(in), std::istreambuf_iterator<char>());
}

void writeFile(const std::string& path, const std::vector<uint8_t>& bytes) {
  std::ofstream out(path, std::ios::binary);
  if (!out) fail(path, "cannot create");
  out.write(reinterpret_cast<const char*>(bytes.data()), std::streamsize(bytes.size()));
  if (!out) fail(path, "write failed");
}

}  // namespace lumcli
