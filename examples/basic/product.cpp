// Spectra multiplied with the conjugate of a reference, in C++: std::complex has the layout of Complex64, so its
// arrays pass as they are. The result replaces one of the sources.
#include <oktvm.h>

#include <complex>
#include <iostream>
#include <vector>

int main() {
    std::vector<std::complex<double>> spectrum = {{1, 2}, {3, -1}, {0.5, 0.25}};
    const std::vector<std::complex<double>> reference = {{1, 1}, {2, 0}, {0, -4}};

    auto* values = reinterpret_cast<Complex64*>(spectrum.data());
    const OktStatus status = oktsMulByConj_64fc_A53(values, reinterpret_cast<const Complex64*>(reference.data()),
                                                    values, static_cast<std::int32_t>(spectrum.size()));
    if (status != oktStatusOk) {
        std::cerr << "status " << status << '\n';
        return 1;
    }
    for (const auto& z : spectrum) std::cout << z << '\n';
}
