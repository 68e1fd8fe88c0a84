#pragma once

#include <filesystem>

namespace zolhost
{

/// A loaded library, unloaded at the end of its life.
class SharedLibrary
{
public:
    /// Throws HostFailure.
    explicit SharedLibrary(const std::filesystem::path& file);
    SharedLibrary(const SharedLibrary&) = delete;
    SharedLibrary& operator=(const SharedLibrary&) = delete;
    ~SharedLibrary();

    /// A function that it exports. Throws HostFailure if there is none of that name.
    template<class Function>
    Function function(const char* name) const
    {
        return reinterpret_cast<Function>(symbol(name));
    }

private:
    void* symbol(const char* name) const;

    std::filesystem::path _file;
    void* _handle;
};

} // namespace zolhost
