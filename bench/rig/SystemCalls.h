#pragma once

#include <cstdint>
#include <functional>
#include <map>
#include <string>

namespace zolbench
{

/// How often each system call was made, by its number. Those for memory and for waiting threads are left out:
/// they depend on the allocator and on what was freed before.
using SystemCalls = std::map<std::uint64_t, std::uint64_t>;

/// Runs both functions in a child process and counts the calls of the second one exactly, by tracing it.
/// Throws std::system_error where that is forbidden, and std::runtime_error if the child fails.
SystemCalls systemCallsOf(const std::function<void()>& preparation, const std::function<void()>& work);

std::uint64_t total(const SystemCalls& calls);

std::string systemCallName(std::uint64_t number);

} // namespace zolbench
