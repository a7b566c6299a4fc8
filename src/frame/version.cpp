#include "oktvm_types.h"

namespace {

constexpr OktLibraryVersion version = {
    .majorVersion = 6,
    .minorVersion = 1,
    .buildMajor = 137,
    .buildCounter = 761,
    .cpuTag = {'m', 'x', '\0', '\0'},
    .fileName = "oktvmmx-6.1.dll",
    .versionText = "6.1 build 137.36",
    .buildDate = "Sep 29 2009",
};

}  // namespace

extern "C" OKT_API const OktLibraryVersion* oktvmGetLibVersion(void) { return &version; }
