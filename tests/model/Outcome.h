#pragma once

#include <string>
#include <vector>
#include <zol/spi/ZolReturnT.h>

namespace zolmodel
{

/// All that a host sees of one operation.
struct Outcome
{
    ZolReturnT code = ZolReturnOk;
    std::string value;                  ///< what was written for the host, in one line
    std::vector<std::string> messages;  ///< to the operator
    std::vector<std::string> hostCalls; ///< made during the operation
    bool valueIsUncertain = false;      ///< only of an expected one
};

bool agree(const Outcome& expected, const Outcome& actual);
std::string toText(const Outcome& outcome);

} // namespace zolmodel
