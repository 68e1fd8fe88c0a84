#pragma once

#include "filem/ExitCode.h"

#include <iosfwd>
#include <memory>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace CLI
{
class App;
}

namespace zolhost::filem
{

class Arguments;
class Session;

using Words = std::vector<std::string>;

/// One run of a verb: what it was called with, and what it does.
class Verb
{
public:
    Verb() = default;
    Verb(const Verb&) = delete;
    Verb& operator=(const Verb&) = delete;
    virtual ~Verb() = default;

    /// Says what the verb takes. Help, completion and the manual come from it too.
    virtual void declare(Arguments& arguments) = 0;

    /// Throws Refusal, CommandFailure or Interrupted.
    virtual ExitCode run(Session& session) = 0;
};

enum class VerbKind
{
    Read,
    Change, ///< alone a transaction of its own; in a session it stages
    Session ///< makes sense in a session only
};

struct VerbDescription
{
    std::string_view name;
    std::string_view alias; ///< empty if there is none
    VerbKind kind;
    std::string_view summary;
    std::string_view operations; ///< what it asks of the component
    std::unique_ptr<Verb> (*make)();
};

/// In the order in which help shows them.
std::span<const VerbDescription> verbs();

/// By its name or its alias. Null if there is no such verb.
const VerbDescription* findVerb(std::string_view name);

/// The parser of a verb's options and arguments.
std::unique_ptr<CLI::App> parserFor(const VerbDescription& description, Verb& verb);

/// What `VERB --help` prints.
std::string helpFor(const VerbDescription& description);

/// Parses them into the verb. True if help was asked for, which is then printed. Throws CommandFailure.
bool parseArguments(const VerbDescription& description, Verb& verb, const Words& arguments,
                    std::ostream& out);

} // namespace zolhost::filem
