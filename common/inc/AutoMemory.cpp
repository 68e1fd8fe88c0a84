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
    if (copy == nullptr) {
        throw std::bad_alloc();
    }
    _strings.push_back(copy.get());
    return copy.release();
}

void AutoMemory::free()
{
    for (auto text = _strings.rbegin(); text != _strings.rend(); ++text) {
        std::free(*text);
    }
    _strings.clear();

    for (auto object = _objects.rbegin(); object != _objects.rend(); ++object) {
        delete *object;
    }
    _objects.clear();
}

} // namespace Zol
