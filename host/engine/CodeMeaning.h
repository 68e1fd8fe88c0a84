#pragma once

#include <string>
#include <zol/spi/ZolReturnT.h>

namespace zolhost
{

/// What is asked of a component. A code means something else with each.
enum class Operation
{
    Join,
    Prepare,
    Commit,
    List,
    Count,
    Exists,
    Read,
    Create,
    Delete,
    Remove,
    RemoveFile
};

/// Why a component gave that code, in words for an operator.
std::string meaningOf(Operation operation, ZolReturnT code);

/// Throws Refusal with what the component told the calling thread about it or else the meaning of the code.
[[noreturn]] void refuseByCode(Operation operation, const std::string& dn, ZolReturnT code);

} // namespace zolhost
