#include "filem/Interpreter.h"

#include "filem/Tokenizer.h"
#include "filem/output/LineFilter.h"

#include <algorithm>
#include <memory>
#include <ostream>

namespace zolhost::filem
{

namespace
{

/// The filters of a pipeline with a stream before each, in front of where data goes otherwise.
class FilteredOut
{
public:
    FilteredOut(Session& session, const std::vector<Words>& filters)
        : _session(session)
        , _before(session.out())
    {
        std::ostream* next = &_before;
        std::for_each(filters.rbegin(), filters.rend(), [&](const Words& words) {
            _filters.push_back(LineFilter::make(words, *next));
            _streams.push_back(std::make_unique<std::ostream>(_filters.back().get()));
            next = _streams.back().get();
        });
        _session.setOut(*next);
    }
    FilteredOut(const FilteredOut&) = delete;
    FilteredOut& operator=(const FilteredOut&) = delete;
    ~FilteredOut() { _session.setOut(_before); }

    void end()
    {
        std::for_each(_filters.rbegin(), _filters.rend(), [](const auto& filter) { filter->end(); });
    }

private:
    Session& _session;
    std::ostream& _before;
    std::vector<std::unique_ptr<LineFilter>> _filters; // from the last to the first
    std::vector<std::unique_ptr<std::ostream>> _streams;
};

} // namespace

ExitCode runPipeline(Session& session, const Pipeline& pipeline)
{
    FilteredOut out(session, pipeline.filters);
    const ExitCode code = session.run(pipeline.command);
    out.end();
    return code;
}

std::vector<Pipeline> parseLine(std::string_view line)
{
    std::vector<Token> tokens;
    try
    {
        tokens = tokenize(line);
    }
    catch (const BadLine& bad)
    {
        throw CommandFailure(ExitCode::Usage, bad.what());
    }
    tokens.push_back({Token::Kind::Semicolon, {}});
    std::vector<Pipeline> pipelines;
    std::vector<Words> parts(1);
    for (auto& token : tokens)
    {
        if (token.kind == Token::Kind::Word)
        {
            parts.back().push_back(std::move(token.text));
            continue;
        }
        const bool isEmpty = parts.size() == 1 && parts.back().empty();
        if (parts.back().empty() && !(isEmpty && token.kind == Token::Kind::Semicolon))
        {
            throw CommandFailure(ExitCode::Usage, "a bar has nothing on one side");
        }
        if (token.kind == Token::Kind::Pipe)
        {
            parts.emplace_back();
            continue;
        }
        if (!isEmpty)
        {
            pipelines.push_back({parts.front(), {parts.begin() + 1, parts.end()}});
        }
        parts.assign(1, {});
    }
    return pipelines;
}

ExitCode runLine(Session& session, std::string_view line)
{
    ExitCode code = ExitCode::Done;
    for (const auto& pipeline : parseLine(line))
    {
        code = runPipeline(session, pipeline);
        if (session.isOver())
        {
            break;
        }
    }
    return code;
}

} // namespace zolhost::filem
