#pragma once

#include <cstddef>

namespace zolfuzz
{

/// The most that is allocated at a time while this lives, in bytes. One object at a time.
class MemoryWatch
{
public:
    MemoryWatch();
    MemoryWatch(const MemoryWatch&) = delete;
    MemoryWatch& operator=(const MemoryWatch&) = delete;
    ~MemoryWatch();

    std::size_t peak() const;
};

} // namespace zolfuzz
