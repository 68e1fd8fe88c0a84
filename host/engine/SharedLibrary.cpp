#include "engine/SharedLibrary.h"

#include "engine/HostFailure.h"

#include <dlfcn.h>
#include <string>

namespace zolhost
{

SharedLibrary::SharedLibrary(const std::filesystem::path& file)
    // an absolute path: dlopen looks for a mere name elsewhere
    : _file(std::filesystem::absolute(file))
    , _handle(dlopen(_file.c_str(), RTLD_NOW | RTLD_LOCAL))
{
    if (_handle == nullptr)
    {
        throw HostFailure(std::string("the library can't be loaded: ") + dlerror());
    }
}

SharedLibrary::~SharedLibrary()
{
    dlclose(_handle);
}

void* SharedLibrary::symbol(const char* name) const
{
    void* const address = dlsym(_handle, name);
    if (address == nullptr)
    {
        throw HostFailure("the library " + _file.string() + " is none of this kind: it has no function " +
                          name);
    }
    return address;
}

} // namespace zolhost
