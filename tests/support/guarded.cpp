#include "support/guarded.h"

#include <cstdlib>

#if defined(_WIN32)
#include <windows.h>
#else
#include <sys/mman.h>
#endif

namespace okt::test {
namespace {

constexpr std::size_t pageSize = 4096;

}  // namespace

#if defined(_WIN32)

GuardedMemory::GuardedMemory(std::size_t bytes) : size_((bytes + pageSize - 1) / pageSize * pageSize) {
    mapping_ =
        static_cast<std::byte*>(VirtualAlloc(nullptr, size_ + 2 * pageSize, MEM_RESERVE | MEM_COMMIT, PAGE_NOACCESS));
    if (mapping_ == nullptr) std::abort();
    begin_ = mapping_ + pageSize;
    makeWritable();
}
GuardedMemory::~GuardedMemory() { VirtualFree(mapping_, 0, MEM_RELEASE); }
void GuardedMemory::makeReadOnly() {
    DWORD old;
    if (!VirtualProtect(begin_, size_, PAGE_READONLY, &old)) std::abort();
}
void GuardedMemory::makeWritable() {
    DWORD old;
    if (!VirtualProtect(begin_, size_, PAGE_READWRITE, &old)) std::abort();
}

#else

GuardedMemory::GuardedMemory(std::size_t bytes) : size_((bytes + pageSize - 1) / pageSize * pageSize) {
    void* mapped = mmap(nullptr, size_ + 2 * pageSize, PROT_NONE, MAP_PRIVATE | MAP_ANONYMOUS, -1, 0);
    if (mapped == MAP_FAILED) std::abort();
    mapping_ = static_cast<std::byte*>(mapped);
    begin_ = mapping_ + pageSize;
    makeWritable();
}
GuardedMemory::~GuardedMemory() { munmap(mapping_, size_ + 2 * pageSize); }
void GuardedMemory::makeReadOnly() {
    if (mprotect(begin_, size_, PROT_READ) != 0) std::abort();
}
void GuardedMemory::makeWritable() {
    if (mprotect(begin_, size_, PROT_READ | PROT_WRITE) != 0) std::abort();
}

#endif

}  // namespace okt::test
