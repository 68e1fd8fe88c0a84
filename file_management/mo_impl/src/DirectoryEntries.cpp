#include "DirectoryEntries.h"

#include <fcntl.h>
#include <string_view>

namespace ZolFileManagement
{

namespace
{

// As much as the C library reads at a time, so that an open iterator knows as soon or as late as with that
// what others have changed. It is filled from the front: a small directory takes one page.
constexpr std::size_t room = 32768;

bool isDots(std::string_view name)
{
    return name == "." || name == "..";
}

} // namespace

bool DirectoryEntries::open(const std::string& directory)
{
    _handle = Handle(::open(directory.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC));
    if (!_handle.isOpen())
    {
        return false;
    }
    _buffer = std::make_unique_for_overwrite<char[]>(room);
    advance();
    return true;
}

void DirectoryEntries::close()
{
    _handle = Handle(-1);
    _buffer = nullptr;
}

void DirectoryEntries::advance()
{
    do
    {
        if (_position < _end)
        {
            _position += entry().d_reclen;
        }
        if (_position == _end)
        {
            read();
        }
    } while (!isAtEnd() && (entry().d_ino == 0 || isDots(name()))); // without a number it is deleted
}

void DirectoryEntries::read()
{
    const ssize_t size = ::getdents64(_handle.number(), _buffer.get(), room);
    if (size > 0)
    {
        _position = 0;
        _end = static_cast<std::size_t>(size);
    }
    else
    {
        _isCutShort = size < 0;
        _buffer = nullptr;
    }
}

} // namespace ZolFileManagement
