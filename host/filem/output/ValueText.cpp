#include "filem/output/ValueText.h"

#include "filem/output/PrintableText.h"

namespace zolhost::filem
{

namespace
{

struct ToText
{
    std::string operator()(bool value) const { return value ? "true" : "false"; }
    std::string operator()(std::int64_t value) const { return std::to_string(value); }
    std::string operator()(std::uint64_t value) const { return std::to_string(value); }
    std::string operator()(const std::string& value) const { return printable(value); }
    std::string operator()(const StructValue& members) const
    {
        std::string text;
        const char* separator = "";
        for (const auto& [name, value] : members)
        {
            text += separator + printable(name) + ": " + valuesText(value);
            separator = ", ";
        }
        return "{" + text + "}";
    }
};

} // namespace

std::string valueText(const SingleValue& value)
{
    return std::visit(ToText{}, value);
}

std::string valuesText(const AttributeValue& value)
{
    std::string text;
    const char* separator = "";
    for (const auto& single : value.values)
    {
        text += separator + valueText(single);
        separator = ", ";
    }
    return text;
}

} // namespace zolhost::filem
