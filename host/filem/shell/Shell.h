#pragma once

#include "filem/Session.h"

#include <string>

namespace zolhost::filem
{

/// Filem at a terminal: one line after the other, with history and completion, in one open transaction.
class Shell
{
public:
    Shell(Host& host, std::string rootDirectory, Session::Surroundings surroundings, bool isPaged);

    /// Until the operator leaves.
    ExitCode run();

private:
    Session _session;
    bool _isPaged;
};

} // namespace zolhost::filem
