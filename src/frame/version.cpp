// The version record: one constant, the same pointer on every call.
#include "lumcc.h"

namespace {
const LumLibraryVersion kVersion = {
    2020, 0, 3, 0x3390EAC5, {'p', '8', '\0', '\0'},
    "lumCC SSE4.2 (p8)", "2020.0.3 (r0x3390eac5)", "Sep 22 2020",
};
}  // namespace

const LumLibraryVersion* lumccGetLibVersion(void) { return &kVersion; }
