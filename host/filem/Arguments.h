#pragma once

#include "filem/Verb.h"

#include <cstddef>
#include <cstdint>
#include <initializer_list>
#include <optional>
#include <string>

namespace zolhost::filem
{

/// Declares what a verb takes. Parsing puts it into the variables, which outlive the parser. The type of an
/// option or argument says what it is: PLACE, ATTRIBUTE, CLASS, ACTION, VERB, TOPIC, FILE, or a word for help
/// alone.
class Arguments
{
public:
    explicit Arguments(CLI::App& parser)
        : _parser(parser)
    {}

    // Options; `names` as in "-l,--long".
    void flag(const std::string& names, bool& value, const std::string& help);
    void option(const std::string& names, std::string& value, const std::string& type,
                const std::string& help);
    void option(const std::string& names, std::optional<std::string>& value, const std::string& type,
                const std::string& help);
    void choice(const std::string& names, std::string& value, std::initializer_list<std::string> choices,
                const std::string& type, const std::string& help);
    void positiveNumber(const std::string& names, std::size_t& value, const std::string& help);
    /// In bytes, or with K, M or G behind the number.
    void size(const std::string& names, std::optional<std::uint64_t>& value, const std::string& help);

    // Arguments, in their order. Of several, there is at least one if they are required.
    void required(const std::string& type, std::string& value, const std::string& help);
    void required(const std::string& type, Words& values, const std::string& help);
    void optional(const std::string& type, std::string& value, const std::string& help);
    void optional(const std::string& type, Words& values, const std::string& help);

private:
    CLI::App& _parser;
};

} // namespace zolhost::filem
