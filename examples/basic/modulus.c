/* The moduli of an array of complex numbers, in C: one call for the whole array. */
#include <oktvm.h>

#include <stdio.h>

int main(void) {
    const Complex64 z[] = {{3, 4}, {5, 12}, {8, -15}, {1e300, 1e300}};
    enum { count = sizeof z / sizeof z[0] };
    Real64 modulus[count];

    const OktStatus status = oktsAbs_64fc_A53(z, modulus, count);
    if (status < 0) { /* an argument was wrong and nothing was done; positive values are warnings */
        fprintf(stderr, "the library refused the call: %d\n", status);
        return 1;
    }
    for (int i = 0; i < count; ++i) printf("|%g%+gi| = %.17g\n", z[i].re, z[i].im, modulus[i]);
    return 0;
}
