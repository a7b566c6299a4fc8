// SSE2 operations whose operands stay in the written order, so that of two NaNs the first one's payload survives.
// The statements are volatile: they neither move across a control-register write nor disappear.
#pragma once

namespace okt::model::ordered {

inline float add(float a, float b) {
    asm volatile("addss %1, %0" : "+x"(a) : "x"(b));
    return a;
}
inline double add(double a, double b) {
    asm volatile("addsd %1, %0" : "+x"(a) : "x"(b));
    return a;
}
inline float sub(float a, float b) {
    asm volatile("subss %1, %0" : "+x"(a) : "x"(b));
    return a;
}
inline double sub(double a, double b) {
    asm volatile("subsd %1, %0" : "+x"(a) : "x"(b));
    return a;
}
inline float mul(float a, float b) {
    asm volatile("mulss %1, %0" : "+x"(a) : "x"(b));
    return a;
}
inline double mul(double a, double b) {
    asm volatile("mulsd %1, %0" : "+x"(a) : "x"(b));
    return a;
}
inline float div(float a, float b) {
    asm volatile("divss %1, %0" : "+x"(a) : "x"(b));
    return a;
}
inline double div(double a, double b) {
    asm volatile("divsd %1, %0" : "+x"(a) : "x"(b));
    return a;
}

}  // namespace okt::model::ordered
