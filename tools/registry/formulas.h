// What formulas of the descriptors over the C library's types may name: its functions, its numbers, and some more. They
// are compiled in this namespace.
#pragma once

#include <cmath>
#include <complex>
#include <numbers>
#include <utility>

namespace okt::formulas {

using namespace std;
using namespace std::numbers;

// The results of a function with two destinations.
template <class T>
using Pair = pair<T, T>;

template <class T>
T square(T x) {
    return x * x;
}

template <class T>
Pair<T> modf(T x) {
    T whole;
    const T fraction = std::modf(x, &whole);
    return {whole, fraction};
}

}  // namespace okt::formulas
