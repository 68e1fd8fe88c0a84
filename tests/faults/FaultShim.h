#pragma once

#include <array>
#include <cstddef>

namespace faultshim
{

/// What the library stands in front of. The order is that of the tables that are printed.
enum class Function
{
    Stat,
    Lstat,
    Fstat,
    Fstatat,
    Access,
    Mkdir,
    Chmod,
    Unlink,
    Unlinkat,
    Rmdir,
    Remove,
    Opendir,
    Fdopendir,
    Readdir,
    Openat,
    Close,
    Readlink,
    Fopen,
    Popen,
    Fgets,
    Pclose,
    Fork,
    OperatorNew,
    Strdup,
    Calloc,
    Malloc,
};

constexpr std::size_t FUNCTIONS = static_cast<std::size_t>(Function::Malloc) + 1;

const char* nameOf(Function function);
bool isAllocator(Function function);

/// The library that a call came from.
enum class Caller
{
    Component,
    Poco,
    Other
};

struct Call
{
    Function function;
    Caller caller;
    std::array<char, 200> path; ///< empty where there is none; of `readdir` the directory
    std::array<char, 64> entry; ///< what `readdir` gave
};

/// Fails the given call of a function: the first is 1. It happens once.
struct Failure
{
    Function function;
    unsigned long number;
    int error;
};

/// Ends the process, by SIGKILL, at the given call of any function that is no allocator.
struct Kill
{
    unsigned long number;
    bool afterwards; ///< when the call has been made, not before
};

// From `arm` to `disarm` the calls of this thread are counted, noted and failed. What is noted begins anew
// with `arm`. The functions below are for one thread at a time.
void arm();
void arm(const Failure& failure);
void arm(const Kill& kill);
void disarm();

unsigned long countOf(Function function);
bool hasFailed();     ///< whether the call that was to fail was reached
std::size_t failed(); ///< its index among the calls, unless it was of an allocator
std::size_t callCount();
const Call& call(std::size_t index);

/// Blocks of memory that were allocated between `arm` and `disarm` and haven't been freed, by anyone.
std::size_t liveBlocks();
void forgetBlocks();
void printBlocks(); ///< to standard error: size and the place of the allocation

/// What the thread does meanwhile is the test's.
class Suspended
{
public:
    Suspended();
    Suspended(const Suspended&) = delete;
    Suspended& operator=(const Suspended&) = delete;
    ~Suspended();

private:
    bool _was;
};

} // namespace faultshim
