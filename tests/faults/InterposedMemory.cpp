#include "ShimState.h"

#include <cstdlib>
#include <cstring>
#include <new>

// The C library's own allocator, which it keeps at hand under these names for those who stand before it.
extern "C" {
void* __libc_malloc(std::size_t size);
void* __libc_calloc(std::size_t count, std::size_t size);
void* __libc_realloc(void* block, std::size_t size);
void __libc_free(void* block);
}

using faultshim::forgetBlock;
using faultshim::Function;
using faultshim::judge;
using faultshim::noteBlock;
using faultshim::Verdict;

namespace
{

bool fails(Function function, const void* place)
{
    return judge(function, nullptr, place) == Verdict::Fail;
}

void* obtain(std::size_t size, const void* place)
{
    void* const block = __libc_malloc(size);
    if (noteBlock(block, size, place))
    {
        // whoever relies on what happens to stand there is to be found out
        std::memset(block, 0xA5, size);
    }
    return block;
}

void* obtainForNew(std::size_t size, const void* place)
{
    void* const block = fails(Function::OperatorNew, place) ? nullptr : obtain(size, place);
    if (block == nullptr)
    {
        throw std::bad_alloc();
    }
    return block;
}

} // namespace

#define SHIM_PLACE __builtin_extract_return_addr(__builtin_return_address(0))

extern "C" void* malloc(std::size_t size) noexcept
{
    return fails(Function::Malloc, SHIM_PLACE) ? nullptr : obtain(size, SHIM_PLACE);
}

extern "C" void* calloc(std::size_t count, std::size_t size) noexcept
{
    if (fails(Function::Calloc, SHIM_PLACE))
    {
        return nullptr;
    }
    void* const block = __libc_calloc(count, size);
    noteBlock(block, count * size, SHIM_PLACE);
    return block;
}

extern "C" void* realloc(void* block, std::size_t size) noexcept
{
    if (fails(Function::Malloc, SHIM_PLACE))
    {
        return nullptr;
    }
    void* const moved = __libc_realloc(block, size);
    if (moved != nullptr || size == 0)
    {
        forgetBlock(block);
        noteBlock(moved, size, SHIM_PLACE);
    }
    return moved;
}

extern "C" void free(void* block) noexcept
{
    forgetBlock(block);
    __libc_free(block);
}

extern "C" char* strdup(const char* text) noexcept
{
    if (fails(Function::Strdup, SHIM_PLACE))
    {
        return nullptr;
    }
    const std::size_t size = std::strlen(text) + 1;
    auto* const copy = static_cast<char*>(obtain(size, SHIM_PLACE));
    return copy == nullptr ? nullptr : static_cast<char*>(std::memcpy(copy, text, size));
}

void* operator new(std::size_t size)
{
    return obtainForNew(size, SHIM_PLACE);
}

void* operator new[](std::size_t size)
{
    return obtainForNew(size, SHIM_PLACE);
}

void operator delete(void* block) noexcept
{
    free(block);
}

void operator delete[](void* block) noexcept
{
    free(block);
}

void operator delete(void* block, std::size_t) noexcept
{
    free(block);
}

void operator delete[](void* block, std::size_t) noexcept
{
    free(block);
}
