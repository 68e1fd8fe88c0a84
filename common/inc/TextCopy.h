#pragma once

#include <cstdlib>
#include <cstring>
#include <memory>
#include <new>

namespace Zol
{

using TextCopy = std::unique_ptr<char, decltype(&std::free)>;

/// From the system's strdup, so that who takes it over gives it to `free`.
inline TextCopy copyText(const char* text)
{
    TextCopy copy(::strdup(text), &std::free);
    if (copy == nullptr)
    {
        throw std::bad_alloc();
    }
    return copy;
}

} // namespace Zol
