#include "support/LoadedLibrary.h"

#include <dlfcn.h>
#include <stdexcept>
#include <utility>

namespace zoltest
{

LoadedLibrary::LoadedLibrary()
    : _handle(dlopen(path(), RTLD_NOW | RTLD_LOCAL))
{
    if (_handle == nullptr)
    {
        throw std::runtime_error(dlerror());
    }
}

LoadedLibrary::~LoadedLibrary()
{
    unload();
}

ZolReturnT LoadedLibrary::init(ZolMgmtSpiPortalAccessor* accessor, const std::string& config) const
{
    return reinterpret_cast<zolLCMinitT>(symbol("zolLCMinit"))(accessor, config.c_str());
}

void LoadedLibrary::terminate() const
{
    reinterpret_cast<zolLCMterminateT>(symbol("zolLCMterminate"))();
}

void* LoadedLibrary::symbol(const char* name) const
{
    return dlsym(_handle, name);
}

void LoadedLibrary::unload()
{
    if (void* handle = std::exchange(_handle, nullptr))
    {
        dlclose(handle);
    }
}

const char* LoadedLibrary::path()
{
    return ZOL_FILE_MANAGEMENT_LIBRARY;
}

bool LoadedLibrary::isStillLoaded()
{
    void* handle = dlopen(path(), RTLD_NOLOAD | RTLD_LAZY);
    if (handle == nullptr)
    {
        return false;
    }
    dlclose(handle);
    return true;
}

} // namespace zoltest
