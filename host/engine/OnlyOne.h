#pragma once

#include <stdexcept>

namespace zolhost
{

/// A table of plain functions carries no context argument. So there is at most one object of the class behind
/// a table, which derives from this and is found by `only`.
template<class T>
class OnlyOne
{
public:
    OnlyOne(const OnlyOne&) = delete;
    OnlyOne& operator=(const OnlyOne&) = delete;

protected:
    OnlyOne()
    {
        if (_only != nullptr)
        {
            throw std::logic_error("a process has one host only");
        }
        _only = static_cast<T*>(this);
    }
    ~OnlyOne() { _only = nullptr; }

    /// Null if there is none.
    static T* only() { return _only; }

private:
    static inline T* _only = nullptr;
};

} // namespace zolhost
