// ShlHandle: a loaded shared library with one owner, which unloads it.
#ifndef KORBASE_SYSTEM_SHLHANDLE_H
#define KORBASE_SYSTEM_SHLHANDLE_H

#include <korbase_api.h>
#include <system/shl.h>

#include <utility>

// Copying hands the library over: the source is empty afterwards. One thread at a time.
class KORBASE_API ShlHandle {
public:
    // Nothing loaded.
    ShlHandle() noexcept : handle(nullptr) {}
    // As Load; IsLoaded() tells the result.
    ShlHandle(char const* name, char const* search_path) : handle(nullptr) {
        Load(name, search_path);
    }
    ShlHandle(ShlHandle& other) noexcept : handle(std::exchange(other.handle, nullptr)) {}
    ShlHandle(ShlHandle&& other) noexcept : handle(std::exchange(other.handle, nullptr)) {}
    // Unload what this object has first. Nothing for the object itself.
    ShlHandle& operator=(ShlHandle& other) noexcept;
    ShlHandle& operator=(ShlHandle&& other) noexcept { return *this = other; }
    ~ShlHandle() { Unload(); }

    // Loads a library: `name` as shl_load takes it, or else the first that loads among the files of
    // that name in the folders of `search_path`, which are separated by ":" and ",". No folders for
    // null. Returns 0, or -22 (-EINVAL) and then nothing is loaded. Throws std::bad_alloc.
    //
    // Kept: a library that this object had stays loaded for good, also when this fails: Unload()
    // first.
    int Load(char const* name, char const* search_path);

    // Gives the library back, if there is one; its addresses are void when no other handle has it.
    void Unload() noexcept;

    // The address of a symbol; null when there is none or nothing is loaded.
    void* FindSym(char const* symbol) const;

    bool IsLoaded() const { return handle != nullptr; }

private:
    shl_t handle;
};

#endif
