#include "engine/MoModel.h"
#include "filem/Commands.h"
#include "filem/PrintableText.h"
#include "filem/Session.h"

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
    Glossary commandList;
    for (const auto& command : commands())
    {
        commandList.add(withParameters(command.name, command.parameters), command.help);
    }
    Glossary classList;
    for (const auto& moClass : moClasses())
    {
        classList.add(std::string(moClass.name), moClass.help);
    }
    out << "Commands:\n";
    commandList.print(out);
    printSection(out, "Classes", classList);
    out << "\nA DN is whole or begins below the root: FileGroup=logs,FileInformation=a.log\n";
}

void printCommand(std::ostream& out, const Command& command)
{
    out << withParameters(command.name, command.parameters) << "\n  " << command.help << '\n';
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

} // namespace

void printHelp(std::ostream& out, const Words& arguments)
{
    if (arguments.empty())
    {
        printOverview(out);
        return;
    }
    const std::string& topic = arguments.front();
    if (const Command* const command = findCommand(topic))
    {
        printCommand(out, *command);
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

ExitCode help(Session& session, const Words& arguments)
{
    printHelp(session.out(), arguments);
    return ExitCode::Done;
}

ExitCode quit(Session& session, const Words& /*arguments*/)
{
    session.quit();
    return ExitCode::Done;
}

} // namespace zolhost::filem
