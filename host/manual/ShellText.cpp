#include "manual/ShellText.h"

#include <algorithm>

namespace zolhost::manual
{

std::string joined(const std::vector<std::string>& words, std::string_view separator)
{
    std::string text;
    for (const auto& word : words)
    {
        text += (text.empty() ? "" : std::string(separator)) + word;
    }
    return text;
}

std::string singleQuoted(std::string_view text)
{
    std::string quoted = "'";
    for (const char character : text)
    {
        quoted += character == '\'' ? "'\\''" : std::string(1, character);
    }
    return quoted + "'";
}

std::vector<std::string> typedNamesOf(const filem::VerbDescription& verb)
{
    std::vector<std::string> names = namesOf(verb);
    std::erase_if(names, [](const std::string& name) {
        return name.find_first_not_of("abcdefghijklmnopqrstuvwxyz-") != std::string::npos;
    });
    return names;
}

std::vector<std::string> valueOptions(const Syntax& syntax)
{
    std::vector<std::string> names;
    for (const auto& option : syntax.options)
    {
        if (!option.value.empty())
        {
            names.insert(names.end(), option.names.begin(), option.names.end());
        }
    }
    return names;
}

std::vector<std::string> treeOptions()
{
    return {"--root", "--config", "--library", "--policies"};
}

std::string shellKindOf(const Parameter& option)
{
    if (!option.choices.empty())
    {
        return joined(option.choices, " ");
    }
    return option.value == "FILE" || option.value == "DIR" ? option.value : "";
}

} // namespace zolhost::manual
