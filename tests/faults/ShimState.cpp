#include "ShimState.h"

#include <atomic>
#include <cerrno>
#include <csignal>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <dlfcn.h>
#include <sys/syscall.h>
#include <unistd.h>

namespace faultshim
{

namespace
{

constexpr std::array<const char*, FUNCTIONS> names{
    "stat",     "lstat",  "fstat",   "fstatat", "access",       "mkdir",   "chmod",      "unlink",
    "unlinkat", "rmdir",  "remove",  "opendir", "fdopendir",    "readdir", "getdents64", "closedir",
    "open",     "openat", "fcntl",   "close",   "readlink",     "fdopen",  "popen",      "fgets",
    "pclose",   "fork",   "regcomp", "regexec", "operator new", "strdup",  "calloc",     "malloc"};

// The thread's own flags are part of the block that the thread has from its start: reaching them allocates
// nothing.
__attribute__((tls_model("initial-exec"))) thread_local bool isArmed = false;
__attribute__((tls_model("initial-exec"))) thread_local bool isSuspended = false;

constexpr std::size_t CALLS = 20'000;
std::array<Call, CALLS> noted;
std::size_t notedCount = 0;
std::array<unsigned long, FUNCTIONS> counts{};
unsigned long killableCount = 0;
Failure failure{};
Kill plannedKill{};
bool failureReached = false;
std::size_t failedCall = 0;

struct Block
{
    const void* block;
    std::size_t size;
    const void* place;
};

constexpr std::size_t BLOCKS = 1U << 16U;
std::array<Block, BLOCKS> blocks{};
std::size_t blockCount = 0;
std::atomic_flag blocksLock;

class BlocksLock
{
public:
    BlocksLock()
    {
        while (blocksLock.test_and_set(std::memory_order_acquire))
        {}
    }
    BlocksLock(const BlocksLock&) = delete;
    BlocksLock& operator=(const BlocksLock&) = delete;
    ~BlocksLock() { blocksLock.clear(std::memory_order_release); }
};

std::size_t slotOf(const void* block)
{
    return (reinterpret_cast<std::uintptr_t>(block) >> 4U) * 0x9E3779B1U % BLOCKS;
}

/// Those behind a gap move up, unless they would then stand before their own slot.
void closeGap(std::size_t gap)
{
    for (std::size_t slot = (gap + 1) % BLOCKS; blocks[slot].block != nullptr; slot = (slot + 1) % BLOCKS)
    {
        const std::size_t own = slotOf(blocks[slot].block);
        if ((slot - own) % BLOCKS >= (slot - gap) % BLOCKS)
        {
            blocks[gap] = blocks[slot];
            gap = slot;
        }
    }
    blocks[gap].block = nullptr;
}

void copy(const char* text, char* place, std::size_t room)
{
    const std::size_t length = text == nullptr ? 0 : strnlen(text, room - 1);
    std::memcpy(place, text, length);
    place[length] = '\0';
}

Caller callerAt(const void* place)
{
    Dl_info info{};
    if (dladdr(place, &info) == 0 || info.dli_fname == nullptr)
    {
        return Caller::Other;
    }
    if (std::strstr(info.dli_fname, "libzol_file_management") != nullptr)
    {
        return Caller::Component;
    }
    if (std::strstr(info.dli_fname, "/libc.so") != nullptr)
    {
        return Caller::CLibrary;
    }
    return std::strstr(info.dli_fname, "libPoco") != nullptr ? Caller::Poco : Caller::Other;
}

void note(Function function, const char* path, const void* place)
{
    if (notedCount == CALLS)
    {
        std::fputs("more calls than the shim can note\n", stderr);
        std::_Exit(3);
    }
    Call& call = noted[notedCount++];
    call.function = function;
    call.place = place;
    copy(path, call.path.data(), call.path.size());
    call.entries[0] = '\0';
}

void begin()
{
    notedCount = 0;
    counts = {};
    killableCount = 0;
    failure = {};
    plannedKill = {};
    failureReached = false;
    failedCall = 0;
}

} // namespace

const char* nameOf(Function function)
{
    return names[static_cast<std::size_t>(function)];
}

bool isAllocator(Function function)
{
    return function >= Function::OperatorNew;
}

void plan()
{
    begin();
}

void plan(const Failure& toFail)
{
    begin();
    failure = toFail;
}

void plan(const Kill& toKill)
{
    begin();
    plannedKill = toKill;
}

Armed::Armed()
{
    isArmed = true;
}

Armed::~Armed()
{
    isArmed = false;
}

unsigned long countOf(Function function)
{
    return counts[static_cast<std::size_t>(function)];
}

bool hasFailed()
{
    return failureReached;
}

std::size_t failed()
{
    return failedCall;
}

std::size_t callCount()
{
    return notedCount;
}

const Call& call(std::size_t index)
{
    return noted[index];
}

Caller callerOf(const Call& call)
{
    return callerAt(call.place);
}

Verdict judge(Function function, const char* path, const void* place)
{
    if (!isArmed || isSuspended)
    {
        return Verdict::Pass;
    }
    const int callersErrno = errno;
    const unsigned long number = ++counts[static_cast<std::size_t>(function)];
    if (!isAllocator(function))
    {
        note(function, path, place);
        if (++killableCount == plannedKill.number)
        {
            if (!plannedKill.afterwards)
            {
                killNow();
            }
            return Verdict::KillAfterwards;
        }
    }
    if (failure.number != 0 && failure.function == function && failure.number == number)
    {
        failureReached = true;
        failedCall = notedCount - 1;
        errno = failure.error;
        return Verdict::Fail;
    }
    errno = callersErrno;
    return Verdict::Pass;
}

Verdict judge(Function function, int descriptor, const char* name, const void* place)
{
    if (!isArmed || isSuspended)
    {
        return Verdict::Pass;
    }
    std::array<char, 400> path{};
    if (name == nullptr || (*name != '/' && descriptor >= 0))
    {
        std::array<char, 40> link{};
        std::snprintf(link.data(), link.size(), "/proc/self/fd/%d", descriptor);
        const auto length = syscall(SYS_readlink, link.data(), path.data(), 190);
        std::size_t end = length > 0 ? static_cast<std::size_t>(length) : 0;
        if (name != nullptr)
        {
            path[end++] = '/';
        }
        path[end] = '\0';
    }
    if (name != nullptr)
    {
        const std::size_t end = std::strlen(path.data());
        copy(name, path.data() + end, path.size() - end);
    }
    return judge(function, path.data(), place);
}

void noteEntry(const char* name)
{
    if (isArmed && !isSuspended)
    {
        auto& entries = noted[notedCount - 1].entries;
        const std::size_t end = std::strlen(entries.data());
        const std::size_t length = std::strlen(name);
        if (end + length + 2 > entries.size())
        {
            std::fputs("more entries than the shim can note\n", stderr);
            std::_Exit(3);
        }
        copy(name, entries.data() + end, length + 1);
        copy("/", entries.data() + end + length, 2);
    }
}

void killNow()
{
    raise(SIGKILL);
    std::_Exit(4);
}

bool noteBlock(void* block, std::size_t size, const void* place)
{
    if (block == nullptr || !isArmed || isSuspended)
    {
        return false;
    }
    const BlocksLock lock;
    std::size_t slot = slotOf(block);
    while (blocks[slot].block != nullptr)
    {
        slot = (slot + 1) % BLOCKS;
    }
    blocks[slot] = {block, size, place};
    ++blockCount;
    return true;
}

void forgetBlock(const void* block)
{
    if (block == nullptr || blockCount == 0)
    {
        return;
    }
    const BlocksLock lock;
    for (std::size_t slot = slotOf(block); blocks[slot].block != nullptr; slot = (slot + 1) % BLOCKS)
    {
        if (blocks[slot].block == block)
        {
            closeGap(slot);
            --blockCount;
            return;
        }
    }
}

LiveBlocks liveBlocks()
{
    LiveBlocks live;
    for (const Block& block : blocks)
    {
        if (block.block != nullptr)
        {
            const Caller caller = callerAt(block.place);
            ++(caller == Caller::Poco       ? live.ofPoco
               : caller == Caller::CLibrary ? live.ofTheCLibrary
                                            : live.others);
        }
    }
    return live;
}

void forgetBlocks()
{
    const BlocksLock lock;
    blocks.fill({});
    blockCount = 0;
}

void printBlocks()
{
    for (const Block& block : blocks)
    {
        if (block.block != nullptr)
        {
            Dl_info info{};
            dladdr(block.place, &info);
            std::fprintf(stderr, "%zu bytes allocated at %s+%#zx\n", block.size,
                         info.dli_fname == nullptr ? "?" : info.dli_fname,
                         static_cast<std::size_t>(static_cast<const char*>(block.place) -
                                                  static_cast<const char*>(info.dli_fbase)));
        }
    }
}

Suspended::Suspended()
    : _was(isSuspended)
{
    isSuspended = true;
}

Suspended::~Suspended()
{
    isSuspended = _was;
}

} // namespace faultshim
