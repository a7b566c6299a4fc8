// Elements as text, both ways, without loss.
//
// A real value is a decimal number, a hexadecimal floating-point number (0x1.8p3), inf, nan, or a bit pattern: 0x and
// exactly 8 (Real32) or 16 (Real64) hexadecimal digits. A complex value is two of them joined by a comma. What
// formatElement writes, parseElement reads back to the same bits, NaN payloads included.
#pragma once

#include "registry.h"

#include <string>
#include <string_view>

namespace okt::tool {

// Writes one element of the type to `to`. Returns an empty text, or what is wrong with the text.
std::string parseElement(std::string_view text, ElementType type, void* to);

// Shortest text that gives the same bits again.
std::string formatElement(const void* element, ElementType type);

// The bit pattern of the element, the two of a complex element joined by a comma.
std::string formatPattern(const void* element, ElementType type);

// Real32, Complex64, and so on.
std::string_view typeName(ElementType type);

}  // namespace okt::tool
