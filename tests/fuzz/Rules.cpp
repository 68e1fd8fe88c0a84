#include "Rules.h"

#include <algorithm>

namespace zolfuzz::rules
{

namespace
{

using Texts = std::vector<std::string>;

bool holds(std::string_view text, std::string_view part)
{
    return text.find(part) != std::string_view::npos;
}

Texts split(std::string_view text, char separator)
{
    Texts parts(1);
    for (const char character : text)
    {
        if (character == separator)
        {
            parts.emplace_back();
        }
        else
        {
            parts.back() += character;
        }
    }
    return parts;
}

bool isSpace(char character)
{
    return character == ' ' || (character >= '\t' && character <= '\r');
}

/// Text from left to right, each place being looked at once.
template<class Rule>
std::string rewritten(std::string_view text, Rule rule)
{
    std::string result;
    while (!text.empty())
    {
        std::size_t length = 1;
        result += rule(text, length);
        text.remove_prefix(length);
    }
    return result;
}

/// The value of what stands at the front of a name; one or more characters make it.
std::string illegalReplaced(std::string_view name, std::size_t& length)
{
    const char first = name.front();
    if (first == '\\' && name.size() > 1 && (name[1] == 'n' || name[1] == 'r'))
    {
        length = 2;
        return "?\?";
    }
    for (const char illegal : {'"', '#', '*', '+', ',', ';', '<', '=', '>', '\\'})
    {
        if (first == illegal)
        {
            return "?\?";
        }
    }
    return std::string(1, first);
}

} // namespace

bool acceptsDn(std::string_view dn)
{
    std::size_t start = dn.size();
    while (start > 0 && !holds("FileGroup", dn.substr(start - 1, 1)))
    {
        --start;
    }
    const auto equals = start == 0 ? std::string_view::npos : dn.find('=', start - 1);
    if (equals == std::string_view::npos)
    {
        return !dn.empty();
    }
    const std::string_view tail = dn.substr(equals);
    for (const auto* const whole : {"=.", "=..", "=..."})
    {
        if (tail == whole)
        {
            return false;
        }
    }
    for (const auto* const anywhere : {"=/", "=./", "=../"})
    {
        if (holds(tail, anywhere))
        {
            return false;
        }
    }
    return tail.size() > 1 && tail[1] != ',';
}

std::string Location::onDisk() const
{
    return isDirectory && text.size() > 1 ? text.substr(0, text.size() - 1) : text;
}

Location location(std::string_view pathText, std::optional<bool> asDirectory)
{
    Texts parts = split(pathText, '/');
    const bool isAbsolute = pathText.starts_with('/');
    std::string name = parts.back();
    parts.pop_back();
    if (asDirectory == true)
    {
        parts.push_back(name);
        name.clear();
    }
    Texts directories;
    for (const auto& part : parts)
    {
        if (part.empty() || part == ".")
        {
            continue;
        }
        if (part != "..")
        {
            directories.push_back(part);
        }
        else if (!directories.empty() && directories.back() != "..")
        {
            directories.pop_back();
        }
        else if (!isAbsolute)
        {
            directories.push_back(part);
        }
    }
    if (asDirectory == false && name.empty() && !directories.empty())
    {
        name = directories.back();
        directories.pop_back();
    }
    std::string text = isAbsolute ? "/" : "";
    for (const auto& directory : directories)
    {
        text += directory + "/";
    }
    return {text + name, name.empty()};
}

Location locationOfDn(std::string_view dn, std::string_view internalRoot)
{
    const auto begin = dn.find("FileGroup");
    const Texts parts = split(begin == std::string_view::npos ? "" : dn.substr(begin), ',');
    std::string below;
    std::size_t from = 0; // first part behind the last value
    for (std::size_t i = 0; i < parts.size(); ++i)
    {
        const auto equals = parts[i].find('=');
        if (equals == std::string::npos)
        {
            continue;
        }
        bool isGroupAhead = false;
        bool isInformationAhead = false;
        for (std::size_t ahead = from; ahead < parts.size(); ++ahead)
        {
            isGroupAhead = isGroupAhead || holds(parts[ahead], "FileGroup");
            isInformationAhead = isInformationAhead || holds(parts[ahead], "FileInformation");
        }
        const std::string value = parts[i].substr(equals + 1);
        below += "/" + (isGroupAhead ? directoryName(value) : value);
        if (!isGroupAhead && !isInformationAhead)
        {
            return location(below);
        }
        from = i + 1;
    }
    const bool isFile = classOfDn(dn) == "FileInformation";
    return location(std::string(internalRoot) + (below.empty() ? "/" : below), !isFile);
}

std::string classOfDn(std::string_view dn)
{
    const std::string last = split(dn, ',').back();
    return holds(last, "=") ? split(last, '=').front() : std::string();
}

std::string lastValueOfDn(std::string_view dn)
{
    return holds(dn, "=") ? split(dn, '=').back() : "IllegalDname";
}

std::string fileGroupValue(std::string_view nameOnDisk)
{
    std::string_view name = nameOnDisk;
    const bool isQuoted = name.size() >= 2 && name.starts_with('"') && name.ends_with('"');
    const bool isEscaped = isQuoted && name.substr(0, name.size() - 1).ends_with('\\');
    const bool isEscapeEscaped = name.size() >= 4 && name.substr(0, name.size() - 2).ends_with('\\');
    if (isQuoted && (!isEscaped || isEscapeEscaped))
    {
        name = name.substr(1, name.size() - 2);
    }
    while (!name.empty() && isSpace(name.front()))
    {
        name.remove_prefix(1);
    }
    while (!name.empty() && isSpace(name.back()))
    {
        name.remove_suffix(1);
    }
    return rewritten(name, [](std::string_view rest, std::size_t& length) -> std::string {
        constexpr std::string_view PLACEHOLDER = "\xD6\xD6\xD6\xF1"; // taken for what it stands for
        if (rest.starts_with(PLACEHOLDER))
        {
            length = PLACEHOLDER.size();
            return "\\2B";
        }
        return rest.starts_with('+') ? "\\2B" : illegalReplaced(rest, length);
    });
}

std::string fileInformationValue(std::string_view nameOnDisk)
{
    return rewritten(nameOnDisk, illegalReplaced);
}

std::string directoryName(std::string_view fileGroupValue)
{
    return rewritten(fileGroupValue, [](std::string_view rest, std::size_t& length) -> std::string {
        if (rest.starts_with("\\2B") || rest.starts_with("\\2b"))
        {
            length = 3;
            return "+";
        }
        return std::string(1, rest.front());
    });
}

std::optional<std::string> refusalOfName(std::string_view name)
{
    const auto* const illegal =
        std::find_if(name.begin(), name.end(), [](char c) { return c == '/' || c == '|'; });
    if (illegal != name.end())
    {
        return std::string("FileGroup contains illegal character(") + *illegal + ")";
    }
    if (std::all_of(name.begin(), name.end(), [](char c) { return c == '.'; }))
    {
        return "FileGroup name not allowed (" + std::string(name) + ")";
    }
    return std::nullopt;
}

std::vector<std::string> candidatesOfDn(std::string_view dn)
{
    std::vector<std::string> result;
    for (const auto* const candidate : {"\\n", "\\r", ",", "=", "+", "<", ">", "#", ";", "\\", "\"", "*"})
    {
        result.push_back(rewritten(dn, [&](std::string_view rest, std::size_t& length) -> std::string {
            if (rest.starts_with("?\?"))
            {
                length = 2;
                return candidate;
            }
            return std::string(1, rest.front());
        }));
    }
    return result;
}

} // namespace zolfuzz::rules
