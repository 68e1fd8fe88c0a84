#pragma once

#include <string>
#include <vector>
#include <zol/spi/ZolMgmtSpiThreadContext.h>

namespace zolhost
{

/// What components tell the operator of a thread's request.
class ThreadContext
{
public:
    /// The table that components get.
    static ZolMgmtSpiThreadContext* table();

    /// The messages that came on the calling thread since it last took them.
    static std::vector<std::string> take();
};

} // namespace zolhost
