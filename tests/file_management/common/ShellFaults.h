#pragma once

#include <functional>
#include <optional>
#include <string>

namespace zoltest
{

/// Stands between the component and the calls that run a command, until the end of this object. What a test
/// sets, it sets before the component's calls. At most one object lives at a time.
class ShellFaults
{
public:
    ShellFaults();
    ShellFaults(const ShellFaults&) = delete;
    ShellFaults& operator=(const ShellFaults&) = delete;
    ~ShellFaults();

    // Called before the true calls.
    std::function<void(const std::string& command)> onPopen;
    std::function<void()> onPclose;

    // The call fails with this errno, or with the errno that the caller had set if this is 0.
    std::optional<int> popenError;
    std::optional<int> pcloseError;
};

} // namespace zoltest
