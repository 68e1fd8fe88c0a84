#include "manual/Syntax.h"

#include "filem/CommandLine.h"

#include <CLI/CLI.hpp>
#include <string_view>

namespace zolhost::manual
{

namespace
{

std::vector<std::string> split(std::string_view text, char separator)
{
    std::vector<std::string> parts;
    for (std::size_t end = 0; end != std::string_view::npos;)
    {
        end = text.find(separator);
        parts.emplace_back(text.substr(0, end));
        text.remove_prefix(end == std::string_view::npos ? text.size() : end + 1);
    }
    return parts;
}

/// The kind of a value comes with what checks it, e.g. "TYPE:{d,f}" or "NUMBER:POSITIVE".
void describeValue(const CLI::Option& option, Parameter& parameter)
{
    const std::string kind = option.get_type_name();
    const auto colon = kind.find(':');
    parameter.value = kind.substr(0, colon);
    if (colon != std::string::npos && kind.compare(colon + 1, 1, "{") == 0)
    {
        parameter.choices = split(std::string_view(kind).substr(colon + 2, kind.size() - colon - 3), ',');
    }
}

Parameter parameterOf(const CLI::Option& option)
{
    Parameter parameter;
    for (const auto& name : option.get_snames())
    {
        parameter.names.push_back("-" + name);
    }
    for (const auto& name : option.get_lnames())
    {
        parameter.names.push_back("--" + name);
    }
    if (option.get_items_expected_max() > 0)
    {
        describeValue(option, parameter);
    }
    for (const auto* const other : option.get_excludes())
    {
        parameter.excluded.push_back(other->get_name());
    }
    parameter.help = option.get_description();
    parameter.isRequired = option.get_required();
    parameter.isRepeated = option.get_items_expected_max() > 1;
    return parameter;
}

Syntax syntaxOf(const CLI::App& parser)
{
    Syntax syntax;
    for (const auto* const option : parser.get_options())
    {
        Parameter parameter = parameterOf(*option);
        if (!option->get_positional())
        {
            syntax.options.push_back(std::move(parameter));
            continue;
        }
        // usage and help call an argument by its name
        parameter.names.push_back(option->get_name(true));
        syntax.arguments.push_back(std::move(parameter));
    }
    return syntax;
}

} // namespace

Syntax globalSyntax()
{
    filem::CommandLine line;
    return syntaxOf(*filem::globalParser(line));
}

Syntax syntaxOf(const filem::VerbDescription& verb)
{
    const auto run = verb.make();
    return syntaxOf(*filem::parserFor(verb, *run));
}

std::vector<std::string> namesOf(const filem::VerbDescription& verb)
{
    std::vector<std::string> names = {std::string(verb.name)};
    if (!verb.alias.empty())
    {
        names.emplace_back(verb.alias);
    }
    return names;
}

std::vector<const filem::VerbDescription*> verbsOfCommandLine()
{
    std::vector<const filem::VerbDescription*> result;
    for (const auto& verb : filem::verbs())
    {
        if (verb.kind != filem::VerbKind::Session)
        {
            result.push_back(&verb);
        }
    }
    return result;
}

} // namespace zolhost::manual
