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
    Getdents,
    Closedir,
    Open,
    Openat,
    Fcntl,
    Close,
    Readlink,
    Fdopen,
    Popen,
    Fgets,
    Pclose,
    Fork,
    Regcomp,
    Regexec,
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
    CLibrary,
    Other
};

struct Call
{
    Function function;
    const void* place;             ///< that it returns to
    std::array<char, 200> path;    ///< empty where there is none; of those two the directory
    std::array<char, 200> entries; ///< what `readdir` and `getdents64` gave, a slash behind each
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

// What is to happen to the calls of this thread while it is Armed. Counts and notes begin anew. All of this
// is for one thread at a time.
void plan(); ///< nothing
void plan(const Failure& failure);
void plan(const Kill& kill);

/// While one lives, the thread's calls are counted, noted, failed and killed as was planned.
class Armed
{
public:
    Armed();
    Armed(const Armed&) = delete;
    Armed& operator=(const Armed&) = delete;
    ~Armed();
};

unsigned long countOf(Function function);
bool hasFailed();     ///< whether the call that was to fail was reached
std::size_t failed(); ///< its index among the calls, unless it was of an allocator
std::size_t callCount();
const Call& call(std::size_t index);
Caller callerOf(const Call& call);

/// Blocks of memory that an Armed thread allocated and that haven't been freed, by anyone.
struct LiveBlocks
{
    std::size_t ofPoco = 0;
    std::size_t ofTheCLibrary = 0;
    std::size_t others = 0;
};
LiveBlocks liveBlocks();
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
