#include "lanes/types.h"
#include "oktvm_types.h"

namespace {

constexpr OktLibraryVersion version = {
    .majorVersion = 6,
    .minorVersion = 1,
    .buildMajor = 137,
    .buildCounter = 761,
    // The level: registers of 128 bits, of 256 ("mx3"), of 512 ("mx4").
    .cpuTag = {'m', 'x',
               okt::registerBytes == 64   ? '4'
               : okt::registerBytes == 32 ? '3'
                                          : '\0',
               '\0'},
    .fileName = "oktvmmx-6.1.dll",
    .versionText = "6.1 build 137.36",
    .buildDate = "Sep 29 2009",
};

}  // namespace

extern "C" OKT_API const OktLibraryVersion* oktvmGetLibVersion(void) { return &version; }
