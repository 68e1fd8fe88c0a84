#include "engine/DistinguishedName.h"

#include "engine/Refusal.h"

namespace zolhost
{

namespace
{

std::string quoted(std::string_view text)
{
    return '"' + std::string(text) + '"';
}

/// Why a text can't be the value of a name; empty if it can.
std::string whatIsWrongWith(const MoClass& moClass, std::string_view value)
{
    if (value.empty())
    {
        return "the value of " + std::string(moClass.name) + " is empty";
    }
    if (value.find('\0') != std::string_view::npos)
    {
        return "a value must not hold a zero byte";
    }
    if (value.find('/') != std::string_view::npos)
    {
        return "the value " + quoted(value) + " holds a slash and would leave its directory";
    }
    if (value == "." || value == "..")
    {
        return "the value " + quoted(value) + " would leave the tree";
    }
    if (!moClass.onlyValue.empty() && value != moClass.onlyValue)
    {
        return std::string(moClass.name) + " has no other value than " + std::string(moClass.onlyValue);
    }
    return {};
}

[[noreturn]] void refuse(std::string_view dn, const std::string& why)
{
    throw Refusal(Refusal::Kind::BadName, std::string(dn), why);
}

} // namespace

DistinguishedName::DistinguishedName() = default;

DistinguishedName DistinguishedName::parse(std::string_view text)
{
    DistinguishedName name;
    if (text == ROOT)
    {
        return name;
    }
    std::string_view rest = text;
    if (rest.starts_with(ROOT) && rest[ROOT.size()] == ',')
    {
        rest.remove_prefix(ROOT.size() + 1);
    }
    for (auto comma = rest.find(','); comma != std::string_view::npos; comma = rest.find(','))
    {
        name.append(rest.substr(0, comma), text);
        rest.remove_prefix(comma + 1);
    }
    name.append(rest, text);
    return name;
}

void DistinguishedName::append(std::string_view part, std::string_view whole)
{
    const auto equals = part.find('=');
    if (equals == std::string_view::npos)
    {
        refuse(whole, quoted(part) + " is no part of a name: a part is a class, an equals sign and a value");
    }
    const std::string_view className = part.substr(0, equals);
    const std::string_view value = part.substr(equals + 1);
    if (!moClass().canHold(className))
    {
        refuse(whole, "there is no " + std::string(className) + " below a " + std::string(moClass().name));
    }
    const MoClass& partClass = *findMoClass(className);
    if (const std::string wrong = whatIsWrongWith(partClass, value); !wrong.empty())
    {
        refuse(whole, wrong);
    }
    _parts.push_back({&partClass, std::string(value)});
}

std::string DistinguishedName::text() const
{
    std::string text(ROOT);
    for (const auto& part : _parts)
    {
        text += ',';
        text += part.moClass->name;
        text += '=';
        text += part.value;
    }
    return text;
}

const MoClass& DistinguishedName::moClass() const
{
    return isRoot() ? moClasses().front() : *_parts.back().moClass;
}

std::string DistinguishedName::value() const
{
    return isRoot() ? std::string(moClass().onlyValue) : _parts.back().value;
}

} // namespace zolhost
