// A C++ program against the installed library.
#include <oktvm.h>

#include <cstdio>

int main() {
    const Complex64 z[2] = {{3.0, 4.0}, {-5.0, 12.0}};
    Real64 modulus[2];
    const OktStatus status = oktsAbs_64fc_A53(z, modulus, 2);
    std::printf("%d %g %g %s\n", static_cast<int>(status), modulus[0], modulus[1], oktvmGetLibVersion()->versionText);
}
