#pragma once

#include "filem/Verb.h"

#include <functional>
#include <string>
#include <string_view>
#include <vector>

namespace zolhost::filem
{

/// What a word can become.
struct Candidate
{
    std::string word;    ///< without quotes
    std::string shown;   ///< its last part, as it may reach a terminal
    bool isWhole = true; ///< nothing is to follow in the same word

    bool operator==(const Candidate&) const = default;
};

struct Candidates
{
    std::vector<Candidate> list;
    bool isCut = false; ///< there are more

    /// If it begins with what is typed.
    void add(std::string_view typed, std::string_view word, bool isWhole = true);
    void sort(); ///< by their words, each once
};

enum class CommandKind
{
    Alone, ///< a transaction of its own
    OfSession
};

/// For the last of the words of a command. The session is asked for only if the candidates depend on the
/// tree. Throws Interrupted.
Candidates candidatesFor(const Words& words, CommandKind kind, const std::function<Session&()>& session);

} // namespace zolhost::filem
