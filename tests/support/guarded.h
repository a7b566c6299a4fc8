// Memory whose first and last byte touch pages that cannot be read or written.
#pragma once

#include <cstddef>
#include <cstdint>

namespace okt::test {

class GuardedMemory {
public:
    explicit GuardedMemory(std::size_t bytes);  // rounded up to whole pages
    ~GuardedMemory();
    GuardedMemory(const GuardedMemory&) = delete;
    GuardedMemory& operator=(const GuardedMemory&) = delete;

    std::byte* begin() const { return begin_; }        // directly behind a guard page
    std::byte* end() const { return begin_ + size_; }  // directly before a guard page
    std::size_t size() const { return size_; }

    void makeReadOnly();
    void makeWritable();

private:
    std::byte* mapping_;
    std::byte* begin_;
    std::size_t size_;
};

}  // namespace okt::test
