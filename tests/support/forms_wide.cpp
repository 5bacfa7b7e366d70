// The forms and lane tests on the sixteen-lane set. Built with AVX2 and entered
// only when the processor has it; it holds no test framework code of its own.
#include "frame/lanes_avx2.h"
#include "support/forms_list.h"
#include "support/lane_ops.h"

namespace lumtest {

std::string checkFormsWide() { return checkAllForms<lum::lanes::Avx2>("Avx2"); }

std::string checkLanesWide(const std::vector<LaneOp>& sse) {
  const auto wide = laneOps<lum::lanes::Avx2>();
  if (wide.size() != sse.size()) return "the two sets list different operations\n";
  std::string fails;
  for (size_t i = 0; i < wide.size(); ++i) {
    if (wide[i].halves == Halves::None) continue;
    for (int r = 0; r < kLaneRounds; ++r) {
      const auto ops = laneOperands(r, 32);
      const uint8_t* in[3] = {ops.data(), ops.data() + 32, ops.data() + 64};
      uint8_t out[laneOutBytes(32)] = {};
      wide[i].fn(in, out);
      for (int h = 0; h < 2; ++h) {
        uint8_t part[3][16], ref[laneOutBytes(16)] = {};
        const int from = wide[i].halves == Halves::Each ? h : 0;
        for (int k = 0; k < 3; ++k) std::memcpy(part[k], in[k] + 16 * from, 16);
        const uint8_t* pin[3] = {part[0], part[1], part[2]};
        sse[i].fn(pin, ref);
        // Register j of the 128-bit out buffer is half h of register j of the wide one.
        for (int j = 0; j < 8; ++j)
          if (!sameLanes(wide[i].kind, ref + 16 * j, out + 32 * j + 16 * h, 16)) {
            fails += std::string(wide[i].name) + " round " + std::to_string(r) + " half " + std::to_string(h) + "\n";
            r = kLaneRounds;
            break;
          }
      }
    }
  }
  return fails;
}

}  // namespace lumtest
