#include "system/shlhandle.h"

#include <cerrno>

#include "system/pathname.h"
#include "text/stringtok.h"

ShlHandle& ShlHandle::operator=(ShlHandle& other) noexcept {
    if (this == &other) return *this;
    Unload();
    handle = std::exchange(other.handle, nullptr);
    return *this;
}

int ShlHandle::Load(char const* name, char const* search_path) {
    handle = shl_load(name, 0);  // kept: the library from before is not unloaded
    if (handle) return 0;
    StringTok next(search_path);
    while (char const* const folder = next(":,")) {
        handle = shl_load(Pathname(folder).Append(name), 0);
        if (handle) return 0;
    }
    return -EINVAL;
}

void ShlHandle::Unload() noexcept {
    if (shl_t const unloaded = std::exchange(handle, nullptr)) shl_unload(unloaded);
}

void* ShlHandle::FindSym(char const* symbol) const {
    if (!handle) return nullptr;
    shl_t library = handle;
    void* address = nullptr;
    shl_findsym(&library, symbol, 0, &address);
    return address;
}
