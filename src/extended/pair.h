// Unevaluated sums of two Real80, and their arithmetic.
#pragma once

#include "extended/rounding.h"

namespace okt::extended {

struct Pair {
    Real80 head, tail;
};

// Sum of two values of which the first has the larger magnitude.
OKT_INLINE inline Pair fastTwoSum(Real80 a, Real80 b) {
    Real80 s = a + b;
    return {s, (a - s) + b};
}

OKT_INLINE inline Pair twoSum(Real80 a, Real80 b) {
    Real80 s = a + b;
    Real80 v = s - a;
    return {s, (a - (s - v)) + (b - v)};
}

OKT_INLINE inline Pair twoProduct(Real80 a, Real80 b) {
    Real80 ah = leading32(a), al = a - ah;
    Real80 bh = leading32(b), bl = b - bh;
    Real80 p = a * b;
    return {p, ((ah * bh - p) + ah * bl + al * bh) + al * bl};
}

OKT_INLINE inline Pair operator+(Pair a, Pair b) {
    Pair s = twoSum(a.head, b.head);
    return fastTwoSum(s.head, s.tail + (a.tail + b.tail));
}

OKT_INLINE inline Pair operator-(Pair a) { return {-a.head, -a.tail}; }

OKT_INLINE inline Pair operator*(Pair a, Pair b) {
    Pair p = twoProduct(a.head, b.head);
    return fastTwoSum(p.head, p.tail + (a.head * b.tail + a.tail * b.head));
}

OKT_INLINE inline Pair operator/(Pair a, Pair b) {
    Real80 q = a.head / b.head;
    Pair p = twoProduct(q, b.head);
    Real80 rest = ((a.head - p.head) - p.tail) + (a.tail - q * b.tail);
    return fastTwoSum(q, rest / b.head);
}

// Square root of the pair a, a.head > 0, as a pair.
OKT_INLINE inline Pair root(Pair a) {
    Real80 s = sqrt(a.head);
    Pair p = twoProduct(s, s);
    return fastTwoSum(s, (((a.head - p.head) - p.tail) + a.tail) / (s + s));
}

}  // namespace okt::extended
