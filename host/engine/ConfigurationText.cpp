#include "engine/ConfigurationText.h"

#include "engine/HostFailure.h"
#include "engine/Utf8.h"

#include <string_view>

namespace zolhost
{

namespace
{

bool canStandInXml(char32_t character)
{
    const bool isWhiteSpace = character == '\t' || character == '\n' || character == '\r';
    return isWhiteSpace || (character >= 0x20 && character != 0xfffe && character != 0xffff);
}

std::string escaped(std::string_view text)
{
    std::string result;
    while (!text.empty())
    {
        const std::string_view before = text;
        const auto character = takeCharacter(text);
        if (!character || !canStandInXml(*character))
        {
            throw HostFailure(
                "the path of the root can't stand in a configuration document: it holds control "
                "characters or is no UTF-8");
        }
        // as numbers, so that a parser takes white space as it is
        if (*character < 0x20 || *character == '&' || *character == '<' || *character == '>')
        {
            result += "&#" + std::to_string(static_cast<unsigned int>(*character)) + ";";
        }
        else
        {
            result += before.substr(0, before.size() - text.size());
        }
    }
    return result;
}

std::string documentOf(const std::string& content)
{
    return "<Configuration><ZolFileManagementComponent>" + content +
           "</ZolFileManagementComponent></Configuration>";
}

} // namespace

std::string configurationFor(const std::string& root)
{
    return documentOf("<ZolFileSystem><internal_root>" + escaped(root) + "</internal_root></ZolFileSystem>");
}

std::string configurationWithoutRoot()
{
    return documentOf("");
}

} // namespace zolhost
