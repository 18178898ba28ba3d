#include "system/shl.h"

#include <dlfcn.h>

shl_t shl_load(char const* path, int /*flags*/) { return dlopen(path, RTLD_LAZY); }

int shl_findsym(shl_t* handle, char const* symbol, short /*type*/, void** value) {
    *value = dlsym(*handle, symbol);
    return 0;
}

int shl_unload(shl_t handle) { return dlclose(handle); }
