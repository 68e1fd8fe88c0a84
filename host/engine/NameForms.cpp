#include "engine/NameForms.h"

#include <algorithm>
#include <boost/algorithm/string/replace.hpp>
#include <boost/algorithm/string/trim.hpp>
#include <filesystem>
#include <sys/stat.h>

namespace zolhost
{

namespace
{

using boost::algorithm::replace_all;
using boost::algorithm::replace_all_copy;

constexpr std::string_view SUBSTITUTE = "?\?";

/// What a component puts for a plus while it replaces other characters, and takes for one in a name, too.
constexpr std::string_view COMPONENTS_PLUS = "\xD6\xD6\xD6\xF1";

/// What may stand for the substitute, in the order in which it is tried.
constexpr std::string_view CANDIDATES[] = {"\\n", "\\r", ",", "=", "+", "<", ">", "#", ";", "\\", "\"", "*"};

void substitute(std::string& name, bool keepPlus)
{
    std::string result;
    for (std::size_t i = 0; i < name.size(); ++i)
    {
        const char character = name[i];
        const bool isSequence =
            character == '\\' && i + 1 < name.size() && (name[i + 1] == 'n' || name[i + 1] == 'r');
        if (keepPlus && std::string_view(name).substr(i).starts_with(COMPONENTS_PLUS))
        {
            result += "\\2B";
            i += COMPONENTS_PLUS.size() - 1;
        }
        else if (character == '+' && keepPlus)
        {
            result += "\\2B";
        }
        else if (std::string_view("\"#*+,;<=>\\").find(character) != std::string_view::npos)
        {
            result += SUBSTITUTE;
            i += isSequence ? 1 : 0;
        }
        else
        {
            result += character;
        }
    }
    name = std::move(result);
}

/// Quotation marks around a name go, unless the closing one is quoted by a backslash.
void stripQuotes(std::string& name)
{
    const std::size_t size = name.size();
    if (size < 2 || name.front() != '"' || name.back() != '"')
    {
        return;
    }
    if (name[size - 2] == '\\' && (size < 4 || name[size - 3] != '\\'))
    {
        return;
    }
    name = name.substr(1, size - 2);
}

std::string resolvedPath(const std::string& path)
{
    std::string resolved = std::filesystem::path("/" + path).lexically_normal().string();
    // two slashes in front mean the same as one
    resolved.erase(0, std::min(resolved.find_first_not_of('/'), resolved.size()));
    while (resolved.ends_with('/'))
    {
        resolved.pop_back();
    }
    return resolved.empty() ? resolved : '/' + resolved;
}

bool isThere(const std::string& path)
{
    struct stat status = {};
    return stat(path.empty() ? "/" : path.c_str(), &status) == 0;
}

} // namespace

std::string fileGroupValueOf(std::string_view nameOnDisk)
{
    std::string value(nameOnDisk);
    stripQuotes(value);
    boost::algorithm::trim(value);
    substitute(value, true);
    return value;
}

std::string fileInformationValueOf(std::string_view nameOnDisk)
{
    std::string value(nameOnDisk);
    substitute(value, false);
    return value;
}

std::string directoryNameOf(std::string_view fileGroupValue)
{
    std::string name(fileGroupValue);
    replace_all(name, "\\2B", "+");
    replace_all(name, "\\2b", "+");
    return name;
}

std::string pathOfDn(std::string_view dn, const std::string& root)
{
    std::string path;
    auto mark = dn.find("FileGroup");
    auto equals = mark == std::string_view::npos ? mark : dn.find('=', mark);
    while (equals != std::string_view::npos)
    {
        const auto end = std::min(dn.find(',', equals), dn.size());
        const auto value = dn.substr(equals + 1, end - equals - 1);
        const bool isEncoded = dn.find("FileGroup", mark) != std::string_view::npos;
        path += '/';
        path += isEncoded ? directoryNameOf(value) : std::string(value);
        if (!isEncoded && dn.find("FileInformation", mark) == std::string_view::npos)
        {
            return resolvedPath(path);
        }
        equals = dn.find('=', end);
        mark = end;
    }
    return resolvedPath(root + path);
}

std::string pathToDelete(std::string_view dn, const std::string& root)
{
    for (const auto candidate : CANDIDATES)
    {
        std::string path = pathOfDn(replace_all_copy(std::string(dn), SUBSTITUTE, candidate), root);
        if (isThere(path))
        {
            return path;
        }
    }
    return pathOfDn(dn, root);
}

} // namespace zolhost
