#include "filem/shell/Candidates.h"

#include "engine/MoModel.h"
#include "engine/Refusal.h"
#include "filem/CommandLine.h"
#include "filem/Session.h"
#include "filem/output/Quoting.h"
#include "filem/shell/NextArgument.h"
#include "filem/shell/PlaceCandidates.h"

#include <CLI/CLI.hpp>
#include <algorithm>
#include <array>

namespace zolhost::filem
{

namespace
{

template<class Texts>
bool isIn(const Texts& texts, std::string_view text)
{
    return std::ranges::find(texts, text) != std::end(texts);
}

/// Whose places are directories and nothing else.
bool takesDirectories(std::string_view verb, const Words& words)
{
    constexpr std::array<std::string_view, 7> VERBS = {"cd",   "mkdir", "rmdir", "rmtree",
                                                       "tree", "find",  "count"};
    const bool removesMatching = verb == "rm" && std::ranges::any_of(words, [](const std::string& word) {
                                     return word.starts_with("-e") || word.starts_with("--matching");
                                 });
    return removesMatching || isIn(VERBS, verb);
}

void addVerbs(Candidates& candidates, std::string_view typed, CommandKind kind)
{
    for (const auto& verb : verbs())
    {
        if (kind == CommandKind::Alone && verb.kind == VerbKind::Session)
        {
            continue;
        }
        candidates.add(typed, verb.name);
        if (!verb.alias.empty() && verb.alias != "?")
        {
            candidates.add(typed, verb.alias);
        }
    }
}

void addOptionNames(Candidates& candidates, std::string_view typed, const CLI::App& parser)
{
    for (const auto* const option : parser.get_options())
    {
        const auto& longNames = option->get_lnames();
        for (const auto& name : longNames)
        {
            candidates.add(typed, "--" + name);
        }
        if (longNames.empty() && !option->get_snames().empty())
        {
            candidates.add(typed, "-" + option->get_snames().front());
        }
    }
}

/// The values that a type name such as "TYPE:{d,f}" tells.
Words valuesToldBy(const std::string& typeName)
{
    Words values;
    const auto begin = typeName.find('{');
    const auto end = typeName.find('}');
    if (begin == std::string::npos || end == std::string::npos)
    {
        return values;
    }
    std::istringstream text(typeName.substr(begin + 1, end - begin - 1));
    for (std::string value; std::getline(text, value, ',');)
    {
        values.push_back(value);
    }
    return values;
}

/// For one argument, or value of an option, of a verb.
class ArgumentSearch
{
public:
    ArgumentSearch(const VerbDescription& verb, const Words& words, const NextArgument& argument,
                   const std::function<Session&()>& session)
        : _verb(verb)
        , _words(words)
        , _argument(argument)
        , _session(session)
        , _typed(words.back().substr(argument.glued.size()))
    {}

    Candidates candidates()
    {
        const std::string type = _argument.option->get_type_name();
        if (type == "PLACE")
        {
            return places();
        }
        if (type == "ATTRIBUTE" || type == "ACTION" || type == "CLASS")
        {
            addOfClass(type);
        }
        else if (type == "VERB")
        {
            // that why can explain
            for (const auto* const name : {"mkdir", "create", "rmdir", "rm", "rmtree", "delete"})
            {
                _found.add(_typed, name);
            }
        }
        else if (type == "TOPIC")
        {
            addVerbs(_found, _typed, CommandKind::OfSession);
            for (const auto& moClass : moClasses())
            {
                _found.add(_typed, moClass.name);
            }
        }
        for (const auto& value : valuesToldBy(type))
        {
            _found.add(_typed, value);
        }
        return std::move(_found);
    }

private:
    Candidates places()
    {
        const bool isWhy = _verb.name == "why" && !_argument.arguments.empty();
        const VerbDescription* const verb = isWhy ? findVerb(_argument.arguments.front()) : &_verb;
        return placesFor(_typed, verb != nullptr && takesDirectories(verb->name, _words), _session());
    }

    /// What the class of the place before has.
    void addOfClass(const std::string& type)
    {
        if (_argument.arguments.empty())
        {
            return;
        }
        const MoClass* moClass = nullptr;
        try
        {
            moClass = &_session().place(_argument.arguments.front()).moClass();
        }
        catch (const Refusal&)
        {
            return;
        }
        const auto addNames = [this](const auto& described) {
            for (const auto& one : described)
            {
                _found.add(_typed, one.name);
            }
        };
        if (type == "ATTRIBUTE")
        {
            addNames(moClass->attributes);
        }
        else if (type == "ACTION")
        {
            addNames(moClass->actions);
        }
        else
        {
            for (const auto name : moClass->children)
            {
                if (findMoClass(name)->onlyValue.empty())
                {
                    _found.add(_typed, name);
                }
            }
        }
    }

    const VerbDescription& _verb;
    const Words& _words;
    const NextArgument& _argument;
    const std::function<Session&()>& _session;
    std::string _typed;
    Candidates _found;
};

} // namespace

void Candidates::add(std::string_view typed, std::string_view word, bool isWhole)
{
    if (word.starts_with(typed))
    {
        list.push_back({std::string(word), shellQuoted(word), isWhole});
    }
}

void Candidates::sort()
{
    std::ranges::sort(list, {}, &Candidate::word);
    const auto rest = std::unique(list.begin(), list.end(), [](const Candidate& one, const Candidate& other) {
        return one.word == other.word;
    });
    list.erase(rest, list.end());
}

Candidates candidatesFor(const Words& words, CommandKind kind, const std::function<Session&()>& session)
{
    Candidates found;
    const std::string& typed = words.back();
    if (words.size() == 1)
    {
        if (kind == CommandKind::Alone && typed.starts_with('-'))
        {
            CommandLine line;
            addOptionNames(found, typed, *globalParser(line));
        }
        else
        {
            addVerbs(found, typed, kind);
        }
        return found;
    }
    const VerbDescription* const description = findVerb(words.front());
    if (description == nullptr)
    {
        return found;
    }
    const auto verb = description->make();
    const auto parser = parserFor(*description, *verb);
    const Words arguments(words.begin() + 1, words.end());
    const auto argument = nextArgument(*parser, arguments);
    if (argument.mayBeName)
    {
        addOptionNames(found, typed, *parser);
    }
    if (argument.option != nullptr)
    {
        found = ArgumentSearch(*description, arguments, argument, session).candidates();
        for (auto& candidate : found.list)
        {
            candidate.word.insert(0, argument.glued);
        }
    }
    return found;
}

} // namespace zolhost::filem
