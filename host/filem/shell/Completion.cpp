#include "filem/shell/Completion.h"

#include "filem/Tokenizer.h"
#include "filem/output/LineFilter.h"

#include <algorithm>

namespace zolhost::filem
{

namespace
{

/// The words of the command, or of the filter, that the last of the tokens belong to.
struct LastCommand
{
    Words words;
    bool isFilter = false;
};

LastCommand lastCommandOf(const std::vector<Token>& tokens)
{
    LastCommand last;
    for (const auto& token : tokens)
    {
        if (token.kind == Token::Kind::Word)
        {
            last.words.push_back(token.text);
        }
        else
        {
            last = {{}, token.kind == Token::Kind::Pipe};
        }
    }
    return last;
}

Candidates filtersFor(const Words& words)
{
    Candidates candidates;
    if (words.size() == 1)
    {
        for (const auto& filter : filters())
        {
            candidates.add(words.front(), filter.name);
        }
    }
    return candidates;
}

bool isInsideCharacter(char byte)
{
    return (static_cast<unsigned char>(byte) & 0xc0U) == 0x80U;
}

/// What all of them begin with, in whole characters. They are sorted.
std::string commonBeginning(const std::vector<Candidate>& candidates)
{
    const std::string& first = candidates.front().word;
    const std::string& last = candidates.back().word;
    auto [end, inLast] = std::ranges::mismatch(first, last);
    while (end != first.begin() && end != first.end() && isInsideCharacter(*end))
    {
        --end;
    }
    return {first.begin(), end};
}

std::string textFor(const BegunLine& line, const std::string& typed, const std::vector<Candidate>& candidates)
{
    if (candidates.size() == 1)
    {
        const auto& only = candidates.front();
        return only.isWhole ? shellQuoted(only.word, line.quotes) + " "
                            : shellQuotedOpen(only.word, line.quotes);
    }
    const std::string common = commonBeginning(candidates);
    return common.size() > line.word.size() ? shellQuotedOpen(common, line.quotes) : typed;
}

} // namespace

Completion complete(const std::string& textToCursor, Session& session)
{
    std::optional<BegunLine> line;
    try
    {
        line = tokenizeBegun(textToCursor);
    }
    catch (const BadLine&)
    {}
    if (!line)
    {
        return {textToCursor.size(), {}, {}, false};
    }
    auto [words, isFilter] = lastCommandOf(line->tokens);
    words.push_back(line->word);
    auto found =
        isFilter ? filtersFor(words)
                 : candidatesFor(words, CommandKind::OfSession, [&session]() -> Session& { return session; });
    found.sort();
    const std::string typed = textToCursor.substr(line->start);
    const bool isClear = !found.list.empty() && !found.isCut;
    return {line->start, isClear ? textFor(*line, typed, found.list) : typed, found.list, found.isCut};
}

} // namespace zolhost::filem
