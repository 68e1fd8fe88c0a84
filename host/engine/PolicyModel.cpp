#include "engine/PolicyModel.h"

#include "engine/DistinguishedName.h"
#include "engine/Refusal.h"

#include <algorithm>
#include <fstream>
#include <initializer_list>
#include <nlohmann/json.hpp>
#include <string_view>

namespace zolhost
{

namespace
{

using Json = nlohmann::json;

constexpr const char* POLICIES = "FileGroupPolicy";
constexpr const char* ID = "id";
constexpr const char* FILE_GROUPS = "fileGroup";

/// Where in the document something is, e.g. "FileGroupPolicy[0].id".
using Place = std::string;

[[noreturn]] void refuse(const Place& place, const std::string& why)
{
    throw BadModel(place + " " + why);
}

void requireKeys(const Json& object, const Place& place, std::initializer_list<std::string_view> known)
{
    if (!object.is_object())
    {
        refuse(place, "must be an object");
    }
    for (const auto& [key, value] : object.items())
    {
        if (std::ranges::find(known, key) == known.end())
        {
            refuse(place, "has an unknown key \"" + key + "\"");
        }
    }
}

std::string textOf(const Json& value, const Place& place)
{
    if (!value.is_string())
    {
        refuse(place, "must be a text");
    }
    return value.get<std::string>();
}

const Json& elementsOf(const Json& object, const Place& place, const char* key)
{
    const auto found = object.find(key);
    if (found == object.end() || !found->is_array())
    {
        refuse(place, std::string("must have a list \"") + key + "\"");
    }
    return *found;
}

Place element(const Place& place, std::size_t index)
{
    return place + "[" + std::to_string(index) + "]";
}

std::string fileGroupOf(const Json& value, const Place& place)
{
    try
    {
        const auto name = DistinguishedName::parse(textOf(value, place));
        if (name.moClass().name != "FileGroup")
        {
            refuse(place, "must be the name of a FileGroup");
        }
        return name.text();
    }
    catch (const Refusal& refusal)
    {
        refuse(place, std::string("is no name: ") + refusal.what());
    }
}

FileGroupPolicy policyOf(const Json& value, const Place& place)
{
    requireKeys(value, place, {ID, FILE_GROUPS});
    FileGroupPolicy policy;
    policy.id = textOf(value.value(ID, Json()), place + "." + ID);
    if (policy.id.empty() || policy.id.find(',') != std::string::npos)
    {
        refuse(place + "." + ID, "must be a text that isn't empty and has no comma");
    }
    const Json& fileGroups = elementsOf(value, place, FILE_GROUPS);
    for (std::size_t i = 0; i < fileGroups.size(); ++i)
    {
        policy.fileGroups.push_back(fileGroupOf(fileGroups[i], element(place + "." + FILE_GROUPS, i)));
    }
    return policy;
}

} // namespace

std::vector<FileGroupPolicy> readPolicies(const std::filesystem::path& file)
{
    std::ifstream stream(file);
    if (!stream || std::filesystem::is_directory(file))
    {
        throw BadModel("it can't be read");
    }
    Json document;
    try
    {
        document = Json::parse(stream);
    }
    catch (const Json::parse_error& error)
    {
        throw BadModel(std::string("it is no JSON: ") + error.what());
    }
    requireKeys(document, "the document", {POLICIES});
    const Json& list = elementsOf(document, "the document", POLICIES);
    std::vector<FileGroupPolicy> policies;
    for (std::size_t i = 0; i < list.size(); ++i)
    {
        policies.push_back(policyOf(list[i], element(POLICIES, i)));
        if (std::ranges::count(policies, policies.back().id, &FileGroupPolicy::id) > 1)
        {
            refuse(element(POLICIES, i) + "." + ID, "is that of another policy too");
        }
    }
    return policies;
}

} // namespace zolhost
