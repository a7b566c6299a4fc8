// Functions of any form behind one signature.
#pragma once

#include "registry.h"

namespace okt {

// Calls a function of any form with the arrays of Arguments.
template <class S, class D>
OktStatus callWith(OktStatus (*function)(const S*, D*, std::int32_t), const Arguments& a) {
    return function(static_cast<const S*>(a.src1), static_cast<D*>(a.dst1), a.len);
}

template <class S, class D>
OktStatus callWith(OktStatus (*function)(const S*, const S*, D*, std::int32_t), const Arguments& a) {
    return function(static_cast<const S*>(a.src1), static_cast<const S*>(a.src2), static_cast<D*>(a.dst1), a.len);
}

template <class S, class D>
OktStatus callWith(OktStatus (*function)(const S*, S, D*, std::int32_t), const Arguments& a) {
    return function(static_cast<const S*>(a.src1), *static_cast<const S*>(a.scalar), static_cast<D*>(a.dst1), a.len);
}

template <class S, class D>
OktStatus callWith(OktStatus (*function)(const S*, D*, D*, std::int32_t), const Arguments& a) {
    return function(static_cast<const S*>(a.src1), static_cast<D*>(a.dst1), static_cast<D*>(a.dst2), a.len);
}

template <auto Function>
struct Caller {
    static OktStatus call(const Arguments& a) { return callWith(Function, a); }

    // The function of the same type at another address.
    static OktStatus callAt(AnyFunction address, const Arguments& a) {
        return callWith(reinterpret_cast<decltype(Function)>(address), a);
    }
};

}  // namespace okt
