#include "FileConfigIterator.h"

namespace ZolFileManagement
{

bool FileConfigIterator::getNext(std::string& value)
{
    if (_position >= _count)
    {
        return false;
    }
    value = _value;
    ++_position;
    return true;
}

} // namespace ZolFileManagement
