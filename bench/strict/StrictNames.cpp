#include "strict/StrictNames.h"

namespace zolbench
{

namespace
{

constexpr std::string_view group = "FileGroup";
constexpr std::string_view file = "FileInformation";

void appendDecoded(std::string& path, std::string_view value)
{
    for (std::size_t i = 0; i < value.size(); ++i)
    {
        const bool isPlus = value.substr(i, 3) == "\\2B" || value.substr(i, 3) == "\\2b";
        path += isPlus ? '+' : value[i];
        i += isPlus ? 2 : 0;
    }
}

} // namespace

std::string strictPathOf(const std::string& root, std::string_view dn)
{
    std::string path;
    path.reserve(root.size() + dn.size());
    path = root;
    std::size_t begin = dn.find(group);
    bool isFile = false;
    while (begin < dn.size())
    {
        const std::size_t comma = std::min(dn.find(',', begin), dn.size());
        const std::size_t equals = dn.find('=', begin);
        const std::string_view value = dn.substr(equals + 1, comma - equals - 1);
        isFile = dn.substr(begin, equals - begin) == file;
        path += '/';
        if (isFile || value.find('\\') == std::string_view::npos)
        {
            path += value;
        }
        else
        {
            appendDecoded(path, value);
        }
        begin = comma + 1;
    }
    if (!isFile)
    {
        path += '/';
    }
    return path;
}

std::string strictFileValue(const char* name)
{
    constexpr std::string_view illegal = "\"#*+,;<=>\\";
    std::string value;
    for (std::string_view rest = name; !rest.empty();)
    {
        const std::size_t plain = std::min(rest.find_first_of(illegal), rest.size());
        value += rest.substr(0, plain);
        rest.remove_prefix(plain);
        if (!rest.empty())
        {
            value += "?\?";
            const bool isSequence = rest.starts_with("\\n") || rest.starts_with("\\r");
            rest.remove_prefix(isSequence ? 2 : 1);
        }
    }
    return value;
}

bool isStrictName(std::string_view name)
{
    return name.find_first_of("/|") == std::string_view::npos &&
           name.find_first_not_of('.') != std::string_view::npos;
}

bool isMarker(std::string_view name)
{
    return name.starts_with(".filemno") &&
           (name == ".filemnohousekeeping" || name == ".filemnodirectorycreate" ||
            name == ".filemnodirectorydelete");
}

} // namespace zolbench
