#include "AutoMemory.h"

#include <cstdlib>
#include <cstring>
#include <new>

namespace Zol
{

AutoMemory::~AutoMemory()
{
    free();
}

char* AutoMemory::strdup(const char* text)
{
    std::unique_ptr<char, decltype(&std::free)> copy(::strdup(text), &std::free);
    if (copy == nullptr)
    {
        throw std::bad_alloc();
    }
    _strings.push_back(copy.get());
    return copy.release();
}

void AutoMemory::free()
{
    while (!_strings.empty())
    {
        std::free(_strings.back());
        _strings.pop_back();
    }
    while (!_objects.empty())
    {
        delete _objects.back();
        _objects.pop_back();
    }
}

} // namespace Zol
