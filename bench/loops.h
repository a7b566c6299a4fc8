// Loops over arrays for peers that compute one element at a time. F is a lambda without captures.
#pragma once

#include "peers.h"

#include <complex>
#include <cstdint>

namespace okt::bench {

// The scalar side of each element type: std::complex has the layout of Complex32 and Complex64.
template <class S, class D, class F>
void unaryLoop(const Arguments& a) {
    const auto* src = static_cast<const S*>(a.src1);
    auto* dst = static_cast<D*>(a.dst1);
    for (std::int32_t i = 0; i < a.len; ++i) dst[i] = F{}(src[i]);
}

template <class S, class F>
void binaryLoop(const Arguments& a) {
    const auto *src1 = static_cast<const S*>(a.src1), *src2 = static_cast<const S*>(a.src2);
    auto* dst = static_cast<S*>(a.dst1);
    for (std::int32_t i = 0; i < a.len; ++i) dst[i] = F{}(src1[i], src2[i]);
}

template <class S, class F>
void scalarLoop(const Arguments& a) {
    const auto* src = static_cast<const S*>(a.src1);
    const S scalar = *static_cast<const S*>(a.scalar);
    auto* dst = static_cast<S*>(a.dst1);
    for (std::int32_t i = 0; i < a.len; ++i) dst[i] = F{}(src[i], scalar);
}

template <class S, class F>
void twoResultLoop(const Arguments& a) {
    const auto* src = static_cast<const S*>(a.src1);
    auto *dst1 = static_cast<S*>(a.dst1), *dst2 = static_cast<S*>(a.dst2);
    for (std::int32_t i = 0; i < a.len; ++i) F{}(src[i], dst1 + i, dst2 + i);
}

// Rows of one library, both precisions of a function at once.
class Rows {
public:
    explicit Rows(std::string_view library) : library_(library) {}

    template <class F>
    void unary(std::string_view family, std::string_view function, F) {
        add(family, "32f", function, &unaryLoop<float, float, F>);
        add(family, "64f", function, &unaryLoop<double, double, F>);
    }
    template <class F>
    void binary(std::string_view family, std::string_view function, F) {
        add(family, "32f", function, &binaryLoop<float, F>);
        add(family, "64f", function, &binaryLoop<double, F>);
    }
    template <class F>
    void withScalar(std::string_view family, std::string_view function, F) {
        add(family, "32f", function, &scalarLoop<float, F>);
        add(family, "64f", function, &scalarLoop<double, F>);
    }
    template <class F>
    void twoResults(std::string_view family, std::string_view function, F) {
        add(family, "32f", function, &twoResultLoop<float, F>);
        add(family, "64f", function, &twoResultLoop<double, F>);
    }
    template <class F>
    void complexUnary(std::string_view family, std::string_view function, F) {
        add(family, "32fc", function, &unaryLoop<std::complex<float>, std::complex<float>, F>);
        add(family, "64fc", function, &unaryLoop<std::complex<double>, std::complex<double>, F>);
    }
    template <class F>
    void complexBinary(std::string_view family, std::string_view function, F) {
        add(family, "32fc", function, &binaryLoop<std::complex<float>, F>);
        add(family, "64fc", function, &binaryLoop<std::complex<double>, F>);
    }
    template <class F>
    void complexWithScalar(std::string_view family, std::string_view function, F) {
        add(family, "32fc", function, &scalarLoop<std::complex<float>, F>);
        add(family, "64fc", function, &scalarLoop<std::complex<double>, F>);
    }
    template <class F>
    void complexToReal(std::string_view family, std::string_view function, F) {
        add(family, "32fc", function, &unaryLoop<std::complex<float>, float, F>);
        add(family, "64fc", function, &unaryLoop<std::complex<double>, double, F>);
    }
    template <class F>
    void realToComplex(std::string_view family, std::string_view function, F) {
        add(family, "32fc", function, &unaryLoop<float, std::complex<float>, F>);
        add(family, "64fc", function, &unaryLoop<double, std::complex<double>, F>);
    }

    void add(std::string_view family, std::string_view type, std::string_view function, void (*run)(const Arguments&)) {
        rows_.push_back({family, type, library_, function, run});
    }

    std::vector<Peer> take() { return std::move(rows_); }

private:
    std::string_view library_;
    std::vector<Peer> rows_;
};

}  // namespace okt::bench
