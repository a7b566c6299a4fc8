// Spectra multiplied with the conjugate of a reference, in C++: std::complex has the layout of Complex64, so its
// arrays pass as they are. The result goes to an array of its own: complex products store the real part of an element
// before they read the sources of the imaginary part, so they do not work in place.
#include <oktvm.h>

#include <complex>
#include <iostream>
#include <vector>

int main() {
    const std::vector<std::complex<double>> spectrum = {{1, 2}, {3, -1}, {0.5, 0.25}};
    const std::vector<std::complex<double>> reference = {{1, 1}, {2, 0}, {0, -4}};
    std::vector<std::complex<double>> product(spectrum.size());

    const OktStatus status = oktsMulByConj_64fc_A53(
        reinterpret_cast<const Complex64*>(spectrum.data()), reinterpret_cast<const Complex64*>(reference.data()),
        reinterpret_cast<Complex64*>(product.data()), static_cast<std::int32_t>(spectrum.size()));
    if (status != oktStatusOk) {
        std::cerr << "status " << status << '\n';
        return 1;
    }
    for (const auto& z : product) std::cout << z << '\n';
}
