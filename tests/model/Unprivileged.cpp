#include "model/Unprivileged.h"

#include "support/OrdinaryUser.h"

#include <array>
#include <cstddef>

/// There under a sanitizer alone.
extern "C" void __sanitizer_symbolize_pc(void* place, const char* format, char* text, std::size_t size)
    __attribute__((weak));

/// For the leak sanitizer, which asks for them when it finds a leak: by then a file may be out of reach.
extern "C" const char* __lsan_default_suppressions();

const char* __lsan_default_suppressions()
{
    return "leak:ZolFileManagement::FileMMoImpl::join\n";
}

namespace zolmodel
{

Unprivileged::Unprivileged()
{
    if (__sanitizer_symbolize_pc != nullptr)
    {
        // reads the names in all libraries, for suppressions to find them also where root alone may read
        std::array<char, 256> text{};
        __sanitizer_symbolize_pc(__builtin_return_address(0), "%f", text.data(), text.size());
    }
    zoltest::becomeOrdinaryUser();
}

} // namespace zolmodel
