#include "filem/verbs/Help.h"

#include "engine/MoModel.h"
#include "filem/Arguments.h"
#include "filem/Session.h"
#include "filem/output/PrintableText.h"
#include "filem/verbs/Factories.h"

#include <algorithm>
#include <ostream>

namespace zolhost::filem
{

namespace
{

/// Terms with what is said about each, aligned.
class Glossary
{
public:
    void add(std::string term, std::string_view meaning) { _entries.emplace_back(std::move(term), meaning); }

    void print(std::ostream& out) const
    {
        std::size_t longest = 0;
        for (const auto& [term, meaning] : _entries)
        {
            longest = std::max(longest, term.size());
        }
        for (const auto& [term, meaning] : _entries)
        {
            out << "  " << term << std::string(longest - term.size() + 2, ' ') << meaning << '\n';
        }
    }

private:
    std::vector<std::pair<std::string, std::string>> _entries;
};

std::string withParameters(std::string_view name, std::string_view parameters)
{
    return std::string(name) + (parameters.empty() ? "" : " ") + std::string(parameters);
}

void addAttributes(Glossary& glossary, std::span<const MoAttribute> attributes, const std::string& indent)
{
    for (const auto& attribute : attributes)
    {
        glossary.add(indent + std::string(attribute.name),
                     typeName(attribute) + ": " + std::string(attribute.help));
        addAttributes(glossary, attribute.members, indent + "  ");
    }
}

void printSection(std::ostream& out, std::string_view head, const Glossary& glossary)
{
    out << '\n' << head << ":\n";
    glossary.print(out);
}

void printOverview(std::ostream& out)
{
    for (const auto kind : {VerbKind::Read, VerbKind::Change, VerbKind::Session})
    {
        Glossary glossary;
        for (const auto& verb : verbs())
        {
            if (verb.kind == kind)
            {
                const std::string alias = verb.alias.empty() ? "" : ", " + std::string(verb.alias);
                glossary.add(std::string(verb.name) + alias, verb.summary);
            }
        }
        out << headOf(kind) << ":\n";
        glossary.print(out);
    }
    Glossary classList;
    for (const auto& moClass : moClasses())
    {
        classList.add(std::string(moClass.name), moClass.help);
    }
    printSection(out, "Classes", classList);
    out << "\nA place is a path of names, logs/a.log, or a DN, whole or from below the root:\n"
           "FileGroup=logs,FileInformation=a.log. VERB --help tells more about a verb.\n";
}

void printClass(std::ostream& out, const MoClass& moClass)
{
    out << moClass.name << ": " << moClass.help << '\n';
    if (!moClass.attributes.empty())
    {
        Glossary attributes;
        addAttributes(attributes, moClass.attributes, "");
        printSection(out, "Attributes", attributes);
    }
    if (!moClass.actions.empty())
    {
        Glossary actions;
        for (const auto& action : moClass.actions)
        {
            actions.add(withParameters(action.name, action.parameter), action.help);
        }
        printSection(out, "Actions", actions);
    }
    if (!moClass.children.empty())
    {
        Glossary children;
        for (const auto className : moClass.children)
        {
            children.add(std::string(className), findMoClass(className)->help);
        }
        printSection(out, "Below it", children);
    }
}

class Help : public Verb
{
public:
    void declare(Arguments& arguments) override
    {
        arguments.optional("TOPIC", _topic, "a verb or a class of objects");
    }
    ExitCode run(Session& session) override
    {
        printHelp(session.out(), _topic);
        return ExitCode::Done;
    }

private:
    std::string _topic;
};

} // namespace

std::string_view headOf(VerbKind kind)
{
    switch (kind)
    {
    case VerbKind::Read:
        return "Looking";
    case VerbKind::Change:
        return "Changing";
    case VerbKind::Session:
        break;
    }
    return "In a session";
}

std::string typeName(const MoAttribute& attribute)
{
    std::string name;
    switch (attribute.type)
    {
    case attrTypeInt:
    case attrTypeUint:
        name = "number";
        break;
    case attrTypeString:
        name = "text";
        break;
    case attrTypeBool:
        name = "true or false";
        break;
    case attrTypeReference:
        name = "reference";
        break;
    case attrTypeStruct:
        name = "struct";
        break;
    }
    return attribute.isList ? "list of " + name : name;
}

void printHelp(std::ostream& out, const std::string& topic)
{
    if (topic.empty())
    {
        printOverview(out);
    }
    else if (const VerbDescription* const verb = findVerb(topic))
    {
        out << helpFor(*verb);
    }
    else if (const MoClass* const moClass = findMoClass(topic))
    {
        printClass(out, *moClass);
    }
    else
    {
        throw CommandFailure(ExitCode::Usage, "there is no command or class " + printable(topic));
    }
}

std::unique_ptr<Verb> makeHelp()
{
    return std::make_unique<Help>();
}

} // namespace zolhost::filem
