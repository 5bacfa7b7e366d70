// `lumcc ycocg-check <in.ppm>`: sends an image through the reversible YCoCg
// pair and back and proves the round trip lossless; the plain 8-bit pair is
// measured beside it. Exit code 0 when the reversible pair returned every sample.
#include <cstdio>
#include <cstdlib>
#include <stdexcept>

#include "formats.h"
#include "ycocg_tool.h"

namespace lumcli {
namespace {

// Samples that differ between two images of the same size, and the largest difference.
void compare(const Image& a, const Image& b, size_t& differ, int& maxDiff) {
  differ = 0;
  maxDiff = 0;
  for (size_t i = 0; i < a.pixels.size(); ++i) {
    const int d = std::abs(int(a.pixels[i]) - int(b.pixels[i]));
    if (d) ++differ;
    if (d > maxDiff) maxDiff = d;
  }
}

int run(const std::vector<std::string>& args) {
  if (args.size() != 1) throw std::invalid_argument("ycocg-check takes one image");
  const Image in = readPnm(args[0]);
  if (in.channels != 3) throw std::invalid_argument("ycocg-check needs an RGB (P6) image");
  const size_t n = size_t(in.width) * size_t(in.height);

  std::vector<Lum16s> planes;
  Image back = in;
  if (rgbToYCoCgRev(in, planes) != lumStatusOk || yCoCgRevToRgb(planes, back) != lumStatusOk) {
    std::fprintf(stderr, "ycocg-check: the reversible pair refused the image\n");
    return 2;
  }
  size_t revDiffer;
  int revMax;
  compare(in, back, revDiffer, revMax);

  std::vector<Lum8u> p8(3 * n);
  Lum8u* const p[3] = {p8.data(), p8.data() + n, p8.data() + 2 * n};
  const Lum8u* const cp[3] = {p[0], p[1], p[2]};
  Image plain = in;
  const LumSize roi{in.width, in.height};
  if (lumiRGBToYCoCg_8u_C3P3R(in.pixels.data(), in.width * 3, p, in.width, roi) != lumStatusOk ||
      lumiYCoCgToRGB_8u_P3C3R(cp, in.width, plain.pixels.data(), in.width * 3, roi) != lumStatusOk) {
    std::fprintf(stderr, "ycocg-check: the plain pair refused the image\n");
    return 2;
  }
  size_t plainDiffer;
  int plainMax;
  compare(in, plain, plainDiffer, plainMax);

  std::printf("%s: %dx%d, %zu samples\n", args[0].c_str(), in.width, in.height, 3 * n);
  std::printf("reversible 8u/16s pair: %zu samples differ (max %d): %s\n", revDiffer, revMax,
              revDiffer ? "NOT lossless" : "lossless");
  std::printf("plain 8u pair:          %zu samples differ (max %d)\n", plainDiffer, plainMax);
  return revDiffer ? 1 : 0;
}

const bool kRegistered = registerCommand(
    {"ycocg-check", "IN.ppm\nsend IN through the reversible YCoCg pair and back; exit 0 when lossless", run});

}  // namespace
}  // namespace lumcli
