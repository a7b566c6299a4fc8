/* A C program against the installed library. */
#include <oktvm.h>
#include <stdio.h>

int main(void) {
    const Complex64 z[2] = {{3.0, 4.0}, {-5.0, 12.0}};
    Real64 modulus[2];
    const OktStatus status = oktsAbs_64fc_A53(z, modulus, 2);
    printf("%d %g %g %s\n", (int)status, modulus[0], modulus[1], oktvmGetLibVersion()->versionText);
    return 0;
}
