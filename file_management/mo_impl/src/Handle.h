#pragma once

#include <unistd.h>
#include <utility>

namespace ZolFileManagement
{

/// An open file or directory, closed at the end. A negative number stands for none, AT_FDCWD for the working
/// directory.
class Handle
{
public:
    explicit Handle(int number)
        : _number(number)
    {}
    Handle(const Handle&) = delete;
    Handle& operator=(Handle&& other) noexcept
    {
        std::swap(_number, other._number);
        return *this;
    }
    ~Handle()
    {
        if (isOpen())
        {
            ::close(_number);
        }
    }

    /// Whether there is something to close.
    bool isOpen() const { return _number >= 0; }
    int number() const { return _number; }

private:
    int _number;
};

} // namespace ZolFileManagement
