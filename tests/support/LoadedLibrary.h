#pragma once

#include <string>
#include <zol/spi/ZolFileManagement.h>

namespace zoltest
{

/// The component's library in this process, from its construction to `unload` or its end. It calls neither
/// entry point by itself.
class LoadedLibrary
{
public:
    LoadedLibrary();
    LoadedLibrary(const LoadedLibrary&) = delete;
    LoadedLibrary& operator=(const LoadedLibrary&) = delete;
    ~LoadedLibrary();

    ZolReturnT init(ZolMgmtSpiPortalAccessor* accessor, const std::string& config) const;
    void terminate() const;
    void* symbol(const char* name) const; ///< null if there is none
    void unload();

    static const char* path();
    static bool isStillLoaded(); ///< whether any part of the process holds the library

private:
    void* _handle;
};

} // namespace zoltest
