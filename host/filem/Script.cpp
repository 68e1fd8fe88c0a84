#include "filem/Script.h"

#include "filem/Tokenizer.h"

#include <istream>
#include <ostream>
#include <string>

namespace zolhost::filem
{

namespace
{

void runLine(Session& session, const std::string& line)
{
    Words words;
    try
    {
        words = tokenize(line);
    }
    catch (const BadLine& bad)
    {
        throw CommandFailure(ExitCode::Usage, bad.what());
    }
    if (!words.empty())
    {
        session.run(words);
    }
}

void endSession(Session& session, std::ostream& err)
{
    if (session.hasChanges())
    {
        err << "filem: no commit: what was asked for since the last one is forgotten\n";
    }
    session.abort();
}

} // namespace

void runScript(Session& session, std::istream& text, std::ostream& err)
{
    std::string line;
    for (std::size_t number = 1; !session.isOver() && std::getline(text, line); ++number)
    {
        try
        {
            runLine(session, line);
        }
        catch (const CommandFailure& failure)
        {
            session.abort();
            throw CommandFailure(failure.code(), "line " + std::to_string(number) + ": " + failure.what());
        }
    }
    if (text.bad())
    {
        throw CommandFailure(ExitCode::Failed, "the script can't be read to its end");
    }
    endSession(session, err);
}

void runTerminal(Session& session, std::istream& text, std::ostream& err)
{
    constexpr const char* PROMPT = "filem> ";
    std::string line;
    while (!session.isOver())
    {
        session.out().flush();
        err << PROMPT << std::flush;
        if (!std::getline(text, line))
        {
            err << '\n';
            break;
        }
        try
        {
            runLine(session, line);
        }
        catch (const CommandFailure& failure)
        {
            err << "filem: " << failure.what() << '\n';
        }
    }
    endSession(session, err);
}

} // namespace zolhost::filem
