#include "LoadedLibrary.h"

#include <dlfcn.h>

namespace TOLVGraphing::opengl {

bool isLoaded(const char* library)
{
    void* handle = ::dlopen(library, RTLD_LAZY | RTLD_LOCAL | RTLD_NOLOAD);
    if (!handle)
        return false;
    ::dlclose(handle);
    return true;
}

} // namespace TOLVGraphing::opengl
