// Operands for operations on lanes: particular values of each type in all combinations, and values in between.
#pragma once

#include "lanes/pattern.h"
#include "support/inputs.h"

#include <cstdint>
#include <cstring>
#include <initializer_list>
#include <sstream>
#include <string>
#include <tuple>
#include <utility>
#include <vector>

namespace okt::test {

// Particular values, of which every combination is met.
template <class T>
std::vector<T> particular() {
    if constexpr (std::is_floating_point_v<T>) {
        return specialValues<T>();
    } else {
        std::vector<T> values{0,       1,          2,          3,          0x7FFF,     0x8000,    0xFFFF,
                              0x10000, 0x7FFFFFFF, 0x80000000, 0x80000001, 0xFFFFFFFE, 0xFFFFFFFF};
        if constexpr (sizeof(T) == 8)
            for (const std::uint64_t high : {1ull, 0x7FFFull, 0x8000ull, 0x7FFFFFFFull, 0x80000000ull, 0xFFFFFFFFull})
                for (const std::uint64_t low : {0ull, 1ull, 0x80000000ull, 0xFFFFFFFFull})
                    values.push_back(high << 32 | low);
        return values;
    }
}

template <class T>
T anyValue(Random& random) {
    if constexpr (std::is_floating_point_v<T>)
        return mixedValue<T>(random);
    else
        return static_cast<T>(random.bits());
}

// Arrays of equal length, one for each operand of an operation, as bytes.
class ErasedOperands {
public:
    std::size_t size() const { return size_; }
    std::size_t count() const { return arrays_.size(); }
    std::size_t bytes(std::size_t operand) const { return arrays_[operand].bytes; }
    // Where the operands of element i and behind it stand.
    std::vector<const void*> at(std::size_t i) const {
        std::vector<const void*> from;
        for (const Array& a : arrays_) from.push_back(a.data.data() + i * a.bytes);
        return from;
    }
    std::uint64_t word(std::size_t operand, std::size_t i) const {
        std::uint64_t word = 0;
        std::memcpy(&word, arrays_[operand].data.data() + i * bytes(operand), bytes(operand));
        return word;
    }
    // The patterns of one element's operands.
    std::string text(std::size_t i) const {
        std::ostringstream out;
        out << std::hex;
        for (std::size_t k = 0; k < count(); ++k) out << "0x" << word(k, i) << ' ';
        return out.str();
    }

protected:
    struct Array {
        std::size_t bytes;
        std::vector<unsigned char> data;
    };
    explicit ErasedOperands(std::initializer_list<std::size_t> bytes) {
        for (const std::size_t each : bytes) arrays_.push_back({each, {}});
    }
    void add(std::initializer_list<const void*> element) {
        std::size_t k = 0;
        for (const void* value : element) {
            const auto* first = static_cast<const unsigned char*>(value);
            arrays_[k].data.insert(arrays_[k].data.end(), first, first + arrays_[k].bytes);
            ++k;
        }
        ++size_;
    }
    // Whole groups of lanes: the last of them is filled up from the start.
    void fillUp() {
        constexpr std::size_t group = 64;
        const std::size_t size = size_;
        for (std::size_t i = 0; size_ % group != 0; i = (i + 1) % size, ++size_)
            for (Array& a : arrays_)
                for (std::size_t byte = 0; byte < a.bytes; ++byte) a.data.push_back(a.data[i * a.bytes + byte]);
    }

private:
    std::vector<Array> arrays_;
    std::size_t size_ = 0;
};

template <class... T>
class Operands : public ErasedOperands {
public:
    // Of every operand's list each with each, and `more` draws of all.
    template <class Draw>
    Operands(const std::vector<T>&... lists, std::size_t more, const Draw& draw) : ErasedOperands({sizeof(T)...}) {
        std::size_t combinations = 1;
        ((combinations *= lists.size()), ...);
        for (std::size_t n = 0; n < combinations; ++n) {
            std::size_t rest = n;
            const auto next = [&rest](const auto& list) {
                const void* value = &list[rest % list.size()];
                rest /= list.size();
                return value;
            };
            add({next(lists)...});
        }
        Random random(11);
        for (std::size_t n = 0; n < more; ++n)
            std::apply([this](const T&... value) { add({&value...}); }, std::tuple<T...>(draw(random)));
        fillUp();
    }
};

// The usual ones: particular values in all combinations, and a mixture.
template <class... T>
Operands<T...> usualOperands(std::size_t more = 256) {
    return {particular<T>()..., more, [](Random& random) { return std::tuple<T...>{anyValue<T>(random)...}; }};
}
// A list of values for one operand.
template <class T>
Operands<T> listed(const std::vector<T>& values) {
    return {values, 0, [](Random&) { return std::tuple<T>{}; }};
}
// Drawn ones alone.
template <class... T, class Draw>
Operands<T...> drawn(std::size_t count, const Draw& draw) {
    return {std::vector<T>{}..., count, draw};
}

}  // namespace okt::test
