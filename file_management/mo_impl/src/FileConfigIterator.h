#pragma once

#include <string>

namespace ZolFileManagement
{

/// Yields the one FileMConfigData instance.
class FileConfigIterator
{
public:
    /// True if `value` was assigned, false at the end and from then on.
    bool getNext(std::string& value);

private:
    std::string _value = "1";
    unsigned int _position = 0;
    unsigned int _count = 1;
};

} // namespace ZolFileManagement
