#include "model/Values.h"

namespace zolmodel
{

namespace
{

std::string list(const std::string& type, const std::vector<std::string>& elements)
{
    std::string result = type + "[";
    for (const auto& element : elements)
    {
        result += (&element == elements.data() ? "" : ", ") + element;
    }
    return result + "]";
}

std::string quoted(const std::string& text)
{
    return '"' + text + '"';
}

} // namespace

std::string stringValue(const std::string& text)
{
    return list("string", {quoted(text)});
}

std::string boolValue(bool value)
{
    return list("bool", {value ? "true" : "false"});
}

std::string intValue(std::uint64_t value)
{
    return list("int", {std::to_string(value)});
}

std::string referencesValue(const std::vector<std::string>& dns)
{
    std::vector<std::string> elements;
    for (const auto& dn : dns)
    {
        elements.push_back(quoted(dn));
    }
    return list("reference", elements);
}

std::string filesValue(const std::vector<ListedFile>& files)
{
    std::vector<std::string> elements;
    for (const auto& file : files)
    {
        elements.push_back(
            "{fileName: " + stringValue(file.name) + ", modificationTime: " + stringValue(file.time) +
            ", fileType: " + stringValue(file.type) + ", size: uint[" + std::to_string(file.size) + "]}");
    }
    return list("struct", elements);
}

} // namespace zolmodel
