#include "AutoMemory.h"

#include "TextCopy.h"

namespace Zol
{

AutoMemory::~AutoMemory()
{
    free();
}

char* AutoMemory::strdup(const char* text)
{
    TextCopy copy = copyText(text);
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
