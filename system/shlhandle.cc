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
    // Kept: the handle from before is not unloaded.
    handle = shl_load(name, 0);

    StringTok next(handle ? nullptr : search_path);
    while (char const* const folder = handle ? nullptr : next(":,"))
        handle = shl_load(Pathname(folder).Append(name), 0);
    return handle ? 0 : -EINVAL;
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
