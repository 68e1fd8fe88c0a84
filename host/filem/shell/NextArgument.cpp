#include "filem/shell/NextArgument.h"

#include <CLI/CLI.hpp>

namespace zolhost::filem
{

namespace
{

bool takesValue(const CLI::Option* option)
{
    return option != nullptr && option->get_items_expected_max() > 0;
}

/// What a word says that begins with a dash.
struct OptionWord
{
    const CLI::Option* option = nullptr; ///< the one that takes a value, if one does
    std::size_t valueAt = 0;             ///< where the value begins; 0 if it isn't in the word
};

OptionWord readOption(CLI::App& parser, const std::string& word)
{
    if (word.starts_with("--"))
    {
        const auto equals = word.find('=');
        const CLI::Option* const option = parser.get_option_no_throw(word.substr(0, equals));
        return {takesValue(option) ? option : nullptr, equals == std::string::npos ? 0 : equals + 1};
    }
    for (std::size_t i = 1; i < word.size(); ++i)
    {
        const CLI::Option* const option = parser.get_option_no_throw(std::string("-") + word[i]);
        if (takesValue(option))
        {
            return {option, i + 1 < word.size() ? i + 1 : 0};
        }
    }
    return {};
}

/// The argument that comes after so many.
const CLI::Option* argumentAfter(const CLI::App& parser, std::size_t count)
{
    const auto arguments =
        parser.get_options([](const CLI::Option* option) { return option->get_positional(); });
    for (const auto* const argument : arguments)
    {
        const auto most = static_cast<std::size_t>(argument->get_items_expected_max());
        if (count < most)
        {
            return argument;
        }
        count -= most;
    }
    return nullptr;
}

bool isOption(const std::string& word)
{
    return word.size() > 1 && word.starts_with('-');
}

} // namespace

NextArgument nextArgument(CLI::App& parser, const Words& words)
{
    NextArgument next;
    const CLI::Option* waiting = nullptr; // for its value
    bool areOptionsOver = false;
    for (const auto& word : Words(words.begin(), words.end() - 1))
    {
        if (waiting != nullptr)
        {
            waiting = nullptr;
        }
        else if (!areOptionsOver && word == "--")
        {
            areOptionsOver = true;
        }
        else if (!areOptionsOver && isOption(word))
        {
            const auto [option, valueAt] = readOption(parser, word);
            waiting = valueAt == 0 ? option : nullptr;
        }
        else
        {
            next.arguments.push_back(word);
        }
    }
    const std::string& last = words.back();
    if (waiting != nullptr)
    {
        next.option = waiting;
        return next;
    }
    if (!areOptionsOver && last.starts_with('-'))
    {
        const auto [option, valueAt] = readOption(parser, last);
        next.mayBeName = option == nullptr || valueAt == 0;
        next.option = next.mayBeName ? nullptr : option;
        next.glued = last.substr(0, next.mayBeName ? 0 : valueAt);
        return next;
    }
    next.option = argumentAfter(parser, next.arguments.size());
    return next;
}

} // namespace zolhost::filem
