#include <cstdio>
#include <cstring>
#include <dlfcn.h>
#include <unistd.h>

namespace
{

bool isLoaded(const char* library)
{
    void* const handle = dlopen(library, RTLD_NOW | RTLD_NOLOAD);
    if (handle != nullptr)
    {
        dlclose(handle);
    }
    return handle != nullptr;
}

} // namespace

/// Loads a library, calls one of its functions with a text and ends: arguments are the library's path, the
/// function, the text and how to end ("exit", "kill" without any exit handler, or "unload" and then exit;
/// that one gives 1 if the library or its companion stays loaded).
int main(int count, char** arguments)
{
    if (count != 5)
    {
        return 2;
    }
    const char* const path = arguments[1];
    const char* const end = arguments[4];

    void* const library = dlopen(path, RTLD_NOW | RTLD_LOCAL);
    if (library == nullptr)
    {
        std::fprintf(stderr, "%s\n", dlerror());
        return 2;
    }
    const auto function = reinterpret_cast<void (*)(const char*)>(dlsym(library, arguments[2]));
    if (function == nullptr)
    {
        return 2;
    }
    function(arguments[3]);

    if (std::strcmp(end, "kill") == 0)
    {
        _exit(0);
    }
    if (std::strcmp(end, "unload") == 0)
    {
        dlclose(library);
        return isLoaded(path) || isLoaded("libzol_common.so") ? 1 : 0;
    }
    return 0;
}
