// The exact results of all families, as numbers of high precision, by the formulas of their descriptors.
//
// Each formula is chosen so that no step loses significant bits, whatever the arguments: every part of a result has
// a relative error below 2^-170 (the working precision is 192 bits). Complex Pow and Powx, where that is not possible
// in closed form, raise the precision until two evaluations agree. Branch cuts and the signs of zeros follow Annex G
// of the C standard. Arguments outside the domain, NaNs and infinities give some value or a NaN and never fail.
#pragma once

#include "real.h"
#include "registry.h"

#include <span>
#include <string_view>
#include <vector>

namespace okt::accuracy {

// A real result has one part, a complex one two, and a function with two destinations has one for each.
constexpr int maxParts = 2;
// src1.re, src1.im, src2.re, src2.im; real types leave out the imaginary parts. The scalar of form S stands for src2.
constexpr int maxInputs = 4;

struct Reference {
    std::string_view family;
    bool complex;  // the element type code is 32fc or 64fc
    int inputs;    // number of real inputs of an element
    int parts;     // number of real parts of its result
    // Arguments in the domain, moderate and extreme ones, that the reference is tried with: one range for all
    // arguments, or one for each, divided by " ; ". Without any, ranges that serve functions defined everywhere.
    std::vector<std::string_view> domain;
    std::vector<std::string_view> ordinary;  // a range for each argument, or one; may be empty
    void (*evaluate)(const Real* in, Real* out);
};

std::span<const Reference> references();
const Reference* findReference(std::string_view family, bool complex);
const Reference& referenceOf(const Export& function);

// The inverse functions MPFR does not have.
Real erfInv(const Real& x);   // -1 < x < 1
Real erfcInv(const Real& v);  // 0 < v < 2
Real cdfNorm(const Real& x);
Real cdfNormInv(const Real& p);  // 0 < p < 1

}  // namespace okt::accuracy
