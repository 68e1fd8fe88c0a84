#include "filem/shell/Shell.h"

#include "filem/Interpreter.h"

#include <iostream>
#include <utility>

namespace zolhost::filem
{

Shell::Shell(Host& host, std::string rootDirectory, Session::Surroundings surroundings, bool isPaged)
    : _session(host, std::move(rootDirectory), std::move(surroundings), std::cout, std::cerr)
    , _isPaged(isPaged)
{}

ExitCode Shell::run()
{
    std::string line;
    while (!_session.isOver())
    {
        std::cout.flush();
        std::cerr << "FileM> " << std::flush;
        if (!std::getline(std::cin, line))
        {
            break;
        }
        try
        {
            runLine(_session, line);
        }
        catch (const CommandFailure& failure)
        {
            _session.warn(failure.what());
        }
    }
    return ExitCode::Done;
}

} // namespace zolhost::filem
