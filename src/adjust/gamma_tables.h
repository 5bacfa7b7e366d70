// Lookup tables of the 8u and 16u gamma functions: element i is the curve at
// sample value i, scaled back to the sample's range.
#pragma once

#include "lumcc.h"

namespace lum::gamma {
extern const Lum8u tableFwd8u[256];
extern const Lum8u tableInv8u[256];
extern const Lum16u tableFwd16u[65536];
extern const Lum16u tableInv16u[65536];
}  // namespace lum::gamma
