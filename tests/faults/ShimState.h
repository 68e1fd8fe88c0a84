#pragma once

#include "FaultShim.h"

#include <cstddef>

namespace faultshim
{

/// What is to happen to a call.
enum class Verdict
{
    Pass,
    Fail, ///< errno is set
    KillAfterwards
};

/// Counts and notes a call of this thread, unless it is the test's. The place is the return address.
Verdict judge(Function function, const char* path, const void* place);
/// For calls that name a thing by a descriptor, and perhaps a name in it.
Verdict judge(Function function, int descriptor, const char* name, const void* place);
void noteEntry(const char* name); ///< of the last call
[[noreturn]] void killNow();

/// Whether the block counts: it is one of an Armed thread.
bool noteBlock(void* block, std::size_t size, const void* place);
void forgetBlock(const void* block);

} // namespace faultshim
