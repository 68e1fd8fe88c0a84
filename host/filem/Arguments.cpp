#include "filem/Arguments.h"

#include <CLI/CLI.hpp>
#include <set>

namespace zolhost::filem
{

void Arguments::flag(const std::string& names, bool& value, const std::string& help)
{
    _parser.add_flag(names, value, help);
}

void Arguments::option(const std::string& names, std::string& value, const std::string& type,
                       const std::string& help)
{
    _parser.add_option(names, value, help)->type_name(type);
}

void Arguments::option(const std::string& names, std::optional<std::string>& value, const std::string& type,
                       const std::string& help)
{
    _parser.add_option(names, value, help)->type_name(type);
}

void Arguments::choice(const std::string& names, std::string& value,
                       std::initializer_list<std::string> choices, const std::string& type,
                       const std::string& help)
{
    _parser.add_option(names, value, help)
        ->type_name(type)
        ->check(CLI::IsMember(std::set<std::string>(choices)));
}

void Arguments::positiveNumber(const std::string& names, std::size_t& value, const std::string& help)
{
    _parser.add_option(names, value, help)->type_name("NUMBER")->check(CLI::PositiveNumber);
}

void Arguments::size(const std::string& names, std::optional<std::uint64_t>& value, const std::string& help)
{
    _parser.add_option(names, value, help)->type_name("SIZE")->transform(CLI::AsSizeValue(false));
}

void Arguments::required(const std::string& type, std::string& value, const std::string& help)
{
    _parser.add_option(type, value, help)->required()->type_name(type);
}

void Arguments::required(const std::string& type, Words& values, const std::string& help)
{
    _parser.add_option(type, values, help)->required()->type_name(type);
}

void Arguments::optional(const std::string& type, std::string& value, const std::string& help)
{
    _parser.add_option(type, value, help)->type_name(type);
}

void Arguments::optional(const std::string& type, Words& values, const std::string& help)
{
    _parser.add_option(type, values, help)->type_name(type);
}

} // namespace zolhost::filem
