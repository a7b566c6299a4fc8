// A build of the library, loaded from a file of its own.
#pragma once

#include "registry.h"

#include <string>
#include <vector>

namespace okt::compare {

// Every object is a library of its own in memory, also where the files have the same name inside, or are one file.
class Library {
public:
    // Throws std::runtime_error where the file cannot be loaded, lacks an export of the catalogue, or takes one from
    // another file.
    explicit Library(const std::string& path);
    ~Library();
    Library(const Library&) = delete;
    Library& operator=(const Library&) = delete;

    // The file behind the path.
    const std::string& file() const { return file_; }
    // In the order of okt::exports().
    AnyFunction address(std::size_t index) const { return addresses_[index]; }
    const OktLibraryVersion& version() const;

private:
    AnyFunction find(const char* name) const;

    std::string file_;
    void* handle_;
    std::vector<AnyFunction> addresses_;
    AnyFunction version_ = nullptr;
};

}  // namespace okt::compare
