// Lanes: one set of operations over one, two, four and more elements, so that a kernel's steps are written once.
//
//   F64<N>, F32<N>   N floating-point lanes
//   U64<N>, U32<N>   N integer lanes: patterns, indices, masks in the making
//   Mask64<N>, Mask32<N>   N truth values, from a comparison
//
// One lane is a scalar; what fills a register of 128, 256 or 512 bits is one, as far as this build's processors have
// them; anything wider is a pair of halves. Every operator is one IEEE operation in each lane. No intrinsic stands
// outside this folder, and only this folder knows how wide a register is.
//
//   types.h            the types, and what a register of this build holds
//   one_lane.h         a scalar; tells what each operation does
//   register128.h      registers: the same headings in the same order
//   register256.h
//   register512.h
//   halves.h           what no register holds
//   conversions.h      between lanes of 32 and of 64 bits
//   any_width.h        what is made of these
//
// Beside them: lookup.h, tables by an integer in each lane; seeds.h, approximate reciprocals; ordered.h, sums and
// products whose operands keep their order; constant.h, constants in memory; opaque.h, what the compiler is kept from
// knowing; pattern.h, classes and signs of single elements.
//
// Names of conversions, by what stays as it is:
//
//   as...              the pattern: asBits, asReal; asWords and asLongs, the same register in other lanes
//   to...              the number: toReal64 and toReal32 of signed integers, toUnsigned of integral Real64
//   widen, narrow      the number or truth value, in lanes of the double or half size: Real32, Real64, masks
//   pack...            a half of each 64-bit lane, as 32-bit lanes side by side: packLowWords, packHighWords
#pragma once

#include "lanes/any_width.h"
