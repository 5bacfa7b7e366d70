// `lumcc gamma`: the BT.709 transfer function, forward or inverse, on an 8-bit
// PPM, through the 8u tables or the 32f power path on the range 0..1.
#include <cmath>
#include <cstdio>
#include <stdexcept>

#include "formats.h"

namespace lumcli {
namespace {

int runGamma(const std::vector<std::string>& args) {
  bool inverse = false, viaFloat = false;
  std::vector<std::string> files;
  for (const auto& a : args) {
    if (a == "--inverse") inverse = true;
    else if (a == "--float") viaFloat = true;
    else if (!a.empty() && a[0] == '-') throw std::invalid_argument("gamma: unknown option " + a);
    else files.push_back(a);
  }
  if (files.size() != 2) throw std::invalid_argument("gamma: needs an input and an output PPM");
  Image img = readPnm(files[0]);
  if (img.channels != 3) throw std::invalid_argument("gamma: the input must be a PPM (three channels)");
  const LumSize roi{img.width, img.height};
  const int step = 3 * img.width;
  LumStatus st;
  if (viaFloat) {
    std::vector<Lum32f> f(img.pixels.size());
    for (size_t i = 0; i < f.size(); ++i) f[i] = Lum32f(img.pixels[i]) / 255.0f;
    const int fstep = step * int(sizeof(Lum32f));
    st = inverse ? lumiGammaInv_32f_C3IR(f.data(), fstep, roi, 0.0f, 1.0f)
                 : lumiGammaFwd_32f_C3IR(f.data(), fstep, roi, 0.0f, 1.0f);
    for (size_t i = 0; i < f.size(); ++i) {
      const float v = std::nearbyint(f[i] * 255.0f);
      img.pixels[i] = uint8_t(v > 255.0f ? 255.0f : (v >= 0.0f ? v : 0.0f));  // NaN gives 0
    }
  } else {
    st = inverse ? lumiGammaInv_8u_C3IR(img.pixels.data(), step, roi) : lumiGammaFwd_8u_C3IR(img.pixels.data(), step, roi);
  }
  if (st != lumStatusOk) {
    std::fprintf(stderr, "gamma: the library refused the image (status %d)\n", int(st));
    return 1;
  }
  writePnm(files[1], img);
  return 0;
}

const bool kRegistered = registerCommand(
    {"gamma", "[--inverse] [--float] IN.ppm OUT.ppm\nBT.709 transfer function (8u tables, or 32f on 0..1)",
     runGamma});

}  // namespace
}  // namespace lumcli
