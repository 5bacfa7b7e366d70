// PPM (P6) and PGM (P5) files, 8-bit, and raw byte files.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

namespace lumcli {

// An 8-bit image in memory: `channels` interleaved samples a pixel, rows dense.
struct Image {
  int width = 0, height = 0, channels = 3;
  std::vector<uint8_t> pixels;
  uint8_t* row(int y) { return pixels.data() + size_t(y) * size_t(width) * size_t(channels); }
  const uint8_t* row(int y) const { return pixels.data() + size_t(y) * size_t(width) * size_t(channels); }
};

// Reads a binary PPM or PGM with maxval 255; throws std::runtime_error with a
// message naming the file and the problem.
Image readPnm(const std::string& path);
// Writes a PPM (3 channels) or PGM (1 channel).
void writePnm(const std::string& path, const Image& img);
std::vector<uint8_t> readFile(const std::string& path);
void writeFile(const std::string& path, const std::vector<uint8_t>& bytes);

}  // namespace lumcli
