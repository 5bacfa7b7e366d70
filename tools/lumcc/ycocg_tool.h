// The reversible YCoCg pair on the tool's RGB images.
#pragma once

#include <vector>

#include "image_io.h"
#include "lumcc.h"

namespace lumcli {

// RGB image to Y, Co, Cg planes of the reversible transform, one after another.
LumStatus rgbToYCoCgRev(const Image& in, std::vector<Lum16s>& planes);
// The planes back to the RGB image `out` (sized by the caller).
LumStatus yCoCgRevToRgb(const std::vector<Lum16s>& planes, Image& out);

}  // namespace lumcli
