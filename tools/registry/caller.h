// Functions of any form behind one signature.
#pragma once

#include "registry.h"

namespace okt {

// Calls a function of any form with the arrays of Arguments.
template <auto Function>
struct Caller;

template <class S, class D, OktStatus (*Function)(const S*, D*, std::int32_t)>
struct Caller<Function> {
    static OktStatus call(const Arguments& a) {
        return Function(static_cast<const S*>(a.src1), static_cast<D*>(a.dst1), a.len);
    }
};

template <class S, class D, OktStatus (*Function)(const S*, const S*, D*, std::int32_t)>
struct Caller<Function> {
    static OktStatus call(const Arguments& a) {
        return Function(static_cast<const S*>(a.src1), static_cast<const S*>(a.src2), static_cast<D*>(a.dst1), a.len);
    }
};

template <class S, class D, OktStatus (*Function)(const S*, S, D*, std::int32_t)>
struct Caller<Function> {
    static OktStatus call(const Arguments& a) {
        return Function(static_cast<const S*>(a.src1), *static_cast<const S*>(a.scalar), static_cast<D*>(a.dst1),
                        a.len);
    }
};

template <class S, class D, OktStatus (*Function)(const S*, D*, D*, std::int32_t)>
struct Caller<Function> {
    static OktStatus call(const Arguments& a) {
        return Function(static_cast<const S*>(a.src1), static_cast<D*>(a.dst1), static_cast<D*>(a.dst2), a.len);
    }
};

}  // namespace okt
