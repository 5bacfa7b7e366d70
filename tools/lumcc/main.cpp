// lumcc: command-line front end of the colour-conversion library.
//   lumcc demo [DIR]       round trips on an embedded test image, with timing and PSNR
//   lumcc convert ...      converts between PPM/PGM and raw luma-chroma files
//   lumcc info             library version and build
#include <chrono>
#include <cmath>
#include <cstdio>
#include <cstring>
#include <filesystem>
#include <stdexcept>
#include <string>
#include <vector>

#include "formats.h"
#include "image_io.h"
#include "lumcc.h"
#include "lumcore.h"

using namespace lumcli;

namespace {

constexpr int kExitOk = 0, kExitUsage = 2, kExitFailure = 1;

void printHelp() {
  std::printf(
      "usage: lumcc <command> [options]\n\n"
      "commands:\n"
      "  demo [DIR]    convert an embedded test image RGB -> YCbCr -> RGB and RGB -> YUV -> RGB,\n"
      "                print timings and PSNR, write the images to DIR (default: .)\n"
      "  convert [--from FMT] [--to FMT] [--size WxH] [--matrix 601|709] IN OUT\n"
      "                convert IN to OUT; .ppm files are RGB and .pgm files gray, and need no\n"
      "                --from/--to;\n"
      "                raw files need --size; --matrix picks the BT.601 or BT.709 forms\n"
      "  info          print the library version and build\n"
      "  help          print this text\n");
  for (const Command& c : commands()) {
    // Usage lines after the first are indented under the command's name.
    std::string text = c.usage;
    for (size_t at = text.find('\n'); at != std::string::npos; at = text.find('\n', at + 1))
      text.insert(at + 1, "                ");
    std::printf("  %-13s %s\n", c.name.c_str(), text.c_str());
  }
  std::printf("\nraw formats:\n");
  // One line a name: the BT.601 entry, marked when a BT.709 entry exists too.
  for (const Format& f : formats()) {
    const Format* base = findFormat(f.name, "601");
    if (base != &f && base) continue;
    const Format* alt = findFormat(f.name, "709");
    const bool has709 = alt && alt->matrix == "709";
    const char* mark = f.matrix == "709" ? " (--matrix 709 only)" : (has709 ? " [also --matrix 709]" : "");
    std::printf("  %-12s %s%s\n", f.name.c_str(), f.description.c_str(), mark);
  }
}

const char* statusName(LumStatus s) {
  switch (s) {
    case lumStatusOk: return "ok";
    case lumStatusOddSize: return "odd size: the even part was converted";
    case lumStatusBadSize: return "bad size";
    case lumStatusNullPointer: return "null pointer";
    default: return "error";
  }
}

// A 640x480 RGB test image: colour bars, horizontal and vertical gradients, noise.
Image makeTestImage(int w = 640, int h = 480) {
  Image img;
  img.width = w;
  img.height = h;
  img.channels = 3;
  img.pixels.resize(size_t(w) * size_t(h) * 3);
  static const uint8_t bars[8][3] = {{235, 235, 235}, {235, 235, 16}, {16, 235, 235}, {16, 235, 16},
                                     {235, 16, 235},  {235, 16, 16},  {16, 16, 235},  {16, 16, 16}};
  uint32_t noise = 12345;
  for (int y = 0; y < h; ++y) {
    uint8_t* r = img.row(y);
    for (int x = 0; x < w; ++x) {
      uint8_t* p = r + 3 * x;
      if (y < h / 3) {
        std::memcpy(p, bars[x * 8 / w], 3);
      } else if (y < 2 * h / 3) {
        const int t = (y - h / 3) * 255 / (h / 3);
        p[0] = uint8_t(x * 255 / (w - 1));
        p[1] = uint8_t(t);
        p[2] = uint8_t(255 - x * 255 / (w - 1));
      } else {
        noise = noise * 1664525u + 1013904223u;
        const int base = x * 255 / (w - 1);
        for (int c = 0; c < 3; ++c) {
          const int v = base + int((noise >> (8 * c)) & 63) - 32;
          p[c] = uint8_t(v < 0 ? 0 : (v > 255 ? 255 : v));
        }
      }
    }
  }
  return img;
}

double psnr(const Image& a, const Image& b) {
  double se = 0;
  for (size_t i = 0; i < a.pixels.size(); ++i) {
    const double d = double(a.pixels[i]) - double(b.pixels[i]);
    se += d * d;
  }
  if (se == 0) return INFINITY;
  const double mse = se / double(a.pixels.size());
  return 10.0 * std::log10(255.0 * 255.0 / mse);
}

using Conv = LumStatus (*)(const Lum8u*, int, Lum8u*, int, LumSize);

// Runs a conversion `reps` times and returns the best time in milliseconds.
double timeIt(Conv f, const Image& in, Image& out, int reps) {
  double best = 1e30;
  for (int i = 0; i < reps; ++i) {
    const auto t0 = std::chrono::steady_clock::now();
    const LumStatus s = f(in.pixels.data(), in.width * 3, out.pixels.data(), out.width * 3, LumSize{in.width, in.height});
    const auto t1 = std::chrono::steady_clock::now();
    if (s != lumStatusOk) throw std::runtime_error(std::string("conversion failed: ") + statusName(s));
    best = std::min(best, std::chrono::duration<double, std::milli>(t1 - t0).count());
  }
  return best;
}

int demo(const std::string& dir) {
  std::filesystem::create_directories(dir);
  const Image src = makeTestImage();
  Image mid = src, back = src;
  writePnm(dir + "/input.ppm", src);
  std::printf("lumcc demo: %dx%d test image (colour bars, gradients, noise)\n", src.width, src.height);
  struct Trip {
    const char* name;
    Conv fwd, inv;
    const char* file;
  } trips[] = {{"RGB -> YCbCr -> RGB", lumiRGBToYCbCr_8u_C3R, lumiYCbCrToRGB_8u_C3R, "ycbcr"},
               {"RGB -> YUV -> RGB", lumiRGBToYUV_8u_C3R, lumiYUVToRGB_8u_C3R, "yuv"}};
  const double mp = double(src.width) * src.height / 1e6;
  for (const Trip& t : trips) {
    const double tf = timeIt(t.fwd, src, mid, 20);
    const double ti = timeIt(t.inv, mid, back, 20);
    std::printf("  %-22s forward %.3f ms (%.0f MP/s), inverse %.3f ms (%.0f MP/s), PSNR %.2f dB\n", t.name, tf,
                mp / tf * 1e3, ti, mp / ti * 1e3, psnr(src, back));
    writeFile(dir + "/" + t.file + ".raw", mid.pixels);
    writePnm(dir + "/" + t.file + "_roundtrip.ppm", back);
  }
  std::printf("  wrote input.ppm, ycbcr.raw, ycbcr_roundtrip.ppm, yuv.raw, yuv_roundtrip.ppm to %s\n", dir.c_str());
  return kExitOk;
}

bool endsWith(const std::string& s, const char* suffix) {
  const size_t n = std::strlen(suffix);
  return s.size() >= n && s.compare(s.size() - n, n, suffix) == 0;
}

int convert(const std::vector<std::string>& args) {
  std::string from, to, in, out, matrix = "601";
  int w = 0, h = 0;
  for (size_t i = 0; i < args.size(); ++i) {
    const std::string& a = args[i];
    auto value = [&]() -> std::string {
      if (i + 1 >= args.size()) throw std::invalid_argument(a + " needs a value");
      return args[++i];
    };
    if (a == "--from") from = value();
    else if (a == "--to") to = value();
    else if (a == "--matrix") {
      matrix = value();
      if (matrix != "601" && matrix != "709") throw std::invalid_argument("--matrix takes 601 or 709");
    }
    else if (a == "--size") {
      const std::string v = value();
      if (std::sscanf(v.c_str(), "%dx%d", &w, &h) != 2 || w < 1 || h < 1)
        throw std::invalid_argument("--size wants WxH with positive numbers, got '" + v + "'");
    } else if (!a.empty() && a[0] == '-') throw std::invalid_argument("unknown option " + a);
    else if (in.empty()) in = a;
    else if (out.empty()) out = a;
    else throw std::invalid_argument("too many file names");
  }
  if (in.empty() || out.empty()) throw std::invalid_argument("convert needs an input and an output file");
  if (from.empty() && endsWith(in, ".ppm")) from = "ppm";
  if (to.empty() && endsWith(out, ".ppm")) to = "ppm";
  if (from.empty() && endsWith(in, ".pgm")) from = "pgm";
  if (to.empty() && endsWith(out, ".pgm")) to = "pgm";
  if (from.empty() || to.empty()) throw std::invalid_argument("give --from and --to for raw files");

  // A direct route between two raw layouts keeps every sample exact.
  if (const Route* r = findRoute(from, to)) {
    const Format* fi = findFormat(from, matrix);
    const Format* fo = findFormat(to, matrix);
    if (!fi || !fo) throw std::invalid_argument("unknown format in route " + from + " -> " + to);
    if (w < 1) throw std::invalid_argument("raw input needs --size WxH");
    const auto bytes = readFile(in);
    const size_t want = fi->fileBytes(w, h), outBytes = fo->fileBytes(w, h);
    if (want == 0 || outBytes == 0)
      throw std::invalid_argument(from + " -> " + to + " does not allow the size " + std::to_string(w) + "x" +
                                  std::to_string(h));
    if (bytes.size() != want)
      throw std::runtime_error(in + ": file is " + std::to_string(bytes.size()) + " bytes, a " + std::to_string(w) +
                               "x" + std::to_string(h) + " " + from + " frame is " + std::to_string(want));
    std::vector<uint8_t> outData(outBytes);
    const LumStatus s = r->run(bytes, w, h, outData);
    if (s < 0) throw std::runtime_error(std::string("conversion refused: ") + statusName(s));
    writeFile(out, outData);
    std::printf("%s (%s) -> %s (%s), %dx%d\n", in.c_str(), from.c_str(), out.c_str(), to.c_str(), w, h);
    return kExitOk;
  }

  Image rgb;
  if (from == "ppm") {
    rgb = readPnm(in);
    if (rgb.channels != 3) throw std::runtime_error(in + ": a PPM (P6) colour image is needed");
  } else if (from == "pgm") {
    // A PGM is a gray file with a header: it goes through the gray format.
    const Image g = readPnm(in);
    if (g.channels != 1) throw std::runtime_error(in + ": a PGM (P5) gray image is needed");
    rgb.width = g.width;
    rgb.height = g.height;
    rgb.pixels.resize(size_t(g.width) * size_t(g.height) * 3);
    const LumStatus s = findFormat("gray")->toRgb(g.pixels, rgb);
    if (s < 0) throw std::runtime_error(std::string("conversion refused: ") + statusName(s));
  } else {
    const Format* f = findFormat(from, matrix);
    if (!f) throw std::invalid_argument("unknown format '" + from + "' (see lumcc help)");
    if (!f->toRgb) throw std::invalid_argument("no conversion from " + from + " to RGB; convert it to another raw format");
    if (w < 1) throw std::invalid_argument("raw input needs --size WxH");
    const size_t want = f->fileBytes(w, h);
    if (want == 0) throw std::invalid_argument(from + " does not allow the size " + std::to_string(w) + "x" + std::to_string(h));
    const auto bytes = readFile(in);
    if (bytes.size() != want)
      throw std::runtime_error(in + ": file is " + std::to_string(bytes.size()) + " bytes, a " + std::to_string(w) +
                               "x" + std::to_string(h) + " " + from + " frame is " + std::to_string(want));
    rgb.width = w;
    rgb.height = h;
    rgb.channels = 3;
    rgb.pixels.resize(size_t(w) * size_t(h) * 3);
    const LumStatus s = f->toRgb(bytes, rgb);
    if (s < 0) throw std::runtime_error(std::string("conversion refused: ") + statusName(s));
  }
  if (to == "ppm") {
    writePnm(out, rgb);
  } else if (to == "pgm") {
    Image g;
    g.width = rgb.width;
    g.height = rgb.height;
    g.channels = 1;
    g.pixels.resize(size_t(g.width) * size_t(g.height));
    const LumStatus s = findFormat("gray")->fromRgb(rgb, g.pixels);
    if (s < 0) throw std::runtime_error(std::string("conversion refused: ") + statusName(s));
    writePnm(out, g);
  } else {
    const Format* f = findFormat(to, matrix);
    if (!f) throw std::invalid_argument("unknown format '" + to + "' (see lumcc help)");
    if (!f->fromRgb) throw std::invalid_argument("no conversion from RGB to " + to + "; convert to another raw format first");
    const size_t n = f->fileBytes(rgb.width, rgb.height);
    if (n == 0) throw std::invalid_argument(to + " does not allow the size " + std::to_string(rgb.width) + "x" + std::to_string(rgb.height));
    std::vector<uint8_t> bytes(n);
    const LumStatus s = f->fromRgb(rgb, bytes);
    if (s < 0) throw std::runtime_error(std::string("conversion refused: ") + statusName(s));
    writeFile(out, bytes);
  }
  std::printf("%s (%s) -> %s (%s), %dx%d\n", in.c_str(), from.c_str(), out.c_str(), to.c_str(), rgb.width, rgb.height);
  return kExitOk;
}

int info() {
  const LumLibraryVersion* v = lumccGetLibVersion();
  std::printf("%s\nversion %s, built %s, target %s\n", v->name, v->version, v->buildDate, v->targetCpu);
  int32_t cache = 0;
  if (lumGetMaxCacheSizeB(&cache) == 0) std::printf("largest cache: %d KiB\n", cache / 1024);
  std::printf("raw formats: %zu\n", formats().size());
  return kExitOk;
}

}  // namespace

int main(int argc, char** argv) {
  const std::vector<std::string> args(argv + 1, argv + argc);
  const std::string cmd = args.empty() ? "help" : args[0];
  try {
    if (cmd == "help" || cmd == "--help" || cmd == "-h") {
      printHelp();
      return kExitOk;
    }
    if (cmd == "demo") return demo(args.size() > 1 ? args[1] : ".");
    if (cmd == "info") return info();
    if (cmd == "convert") return convert(std::vector<std::string>(args.begin() + 1, args.end()));
    if (const Command* c = findCommand(cmd)) return c->run(std::vector<std::string>(args.begin() + 1, args.end()));
    std::fprintf(stderr, "lumcc: unknown command '%s' (try lumcc help)\n", cmd.c_str());
    return kExitUsage;
  } catch (const std::invalid_argument& e) {
    std::fprintf(stderr, "lumcc: %s\n", e.what());
    return kExitUsage;
  } catch (const std::exception& e) {
    std::fprintf(stderr, "lumcc: %s\n", e.what());
    return kExitFailure;
  }
}
