#pragma once

#include <exception>

namespace zolhost::filem
{

/// The running command was cancelled by the operator, or nobody reads its output any more.
class Interrupted : public std::exception
{
public:
    const char* what() const noexcept override { return "interrupted"; }
};

/// Ctrl-C asks the running command to end; long work looks now and then whether it was asked. Any thread and
/// signal handlers may call.
namespace interrupt
{

void request() noexcept;
void clear() noexcept;
bool isRequested() noexcept;

/// Throws Interrupted if it was asked.
void check();

} // namespace interrupt

} // namespace zolhost::filem
