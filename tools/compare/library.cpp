#include "library.h"

#include "oktvm.h"

#include <fmt/format.h>

#include <dlfcn.h>

#include <filesystem>
#include <stdexcept>

namespace okt::compare {
namespace {

// A namespace of the loader's for each library: nothing that is loaded already, this program's own library least of
// all, is taken in its place or lends it a symbol.
void* load(const std::string& file) {
    void* const handle = dlmopen(LM_ID_NEWLM, file.c_str(), RTLD_NOW | RTLD_LOCAL);
    if (handle == nullptr) throw std::runtime_error(dlerror());
    return handle;
}

}  // namespace

Library::Library(const std::string& path) : file_(std::filesystem::canonical(path)), handle_(load(file_)) {
    for (const Export& function : exports()) addresses_.push_back(find(function.name.data()));
    version_ = find("oktvmGetLibVersion");
}

Library::~Library() { dlclose(handle_); }

AnyFunction Library::find(const char* name) const {
    void* const symbol = dlsym(handle_, name);
    if (symbol == nullptr) throw std::runtime_error(fmt::format("{} has no {}", file_, name));
    Dl_info info;
    if (dladdr(symbol, &info) == 0 || !std::filesystem::equivalent(info.dli_fname, file_))
        throw std::runtime_error(fmt::format("{} has {} from another file", file_, name));
    return reinterpret_cast<AnyFunction>(symbol);
}

const OktLibraryVersion& Library::version() const {
    return *reinterpret_cast<decltype(&oktvmGetLibVersion)>(version_)();
}

}  // namespace okt::compare
