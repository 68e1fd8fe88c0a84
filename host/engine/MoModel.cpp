#include "engine/MoModel.h"

#include <algorithm>

namespace zolhost
{

namespace
{

constexpr std::string_view FILE_M_CHILDREN[] = {"FileMConfigData", "FileGroup"};
constexpr std::string_view FILE_GROUP_CHILDREN[] = {"FileGroup", "FileInformation"};

constexpr MoAttribute CONFIG_DATA_ATTRIBUTES[] = {
    {"fileMConfigDataId", attrTypeString, false, "value of the name, always 1", {}},
    {"internalRoot", attrTypeString, false, "root directory as the external command gives it now", {}},
};

constexpr MoAttribute FILES_MEMBERS[] = {
    {"fileName", attrTypeString, false, "name on disk", {}},
    {"modificationTime", attrTypeString, false, "last change of content or permissions, local time", {}},
    {"fileType", attrTypeString, false, "extension of the name, without the dot", {}},
    {"size", attrTypeUint, false, "bytes", {}},
};

constexpr MoAttribute FILE_GROUP_ATTRIBUTES[] = {
    {"fileGroupId", attrTypeString, false, "value of the name", {}},
    {"internalHousekeeping", attrTypeBool, false, "whether others must leave the tidying to the node", {}},
    {"reservedByPolicy", attrTypeReference, true, "policies that refer to the directory", {}},
    {"files", attrTypeStruct, true, "files that lie directly in the directory", FILES_MEMBERS},
};

constexpr MoAction FILE_GROUP_ACTIONS[] = {
    {"removeFile", "REGEX", "deletes the files whose whole name the extended regular expression matches"},
    {"remove", "", "deletes the directory with all that is in it"},
};

constexpr MoAttribute FILE_INFORMATION_ATTRIBUTES[] = {
    {"fileInformationId", attrTypeString, false, "value of the name", {}},
    {"modificationTime", attrTypeString, false, "last change of content or permissions, local time", {}},
    {"size", attrTypeInt, false, "bytes", {}},
    {"type", attrTypeString, false, "extension of the name, without the dot", {}},
    {"open", attrTypeBool, false, "always false", {}},
};

constexpr MoAction FILE_INFORMATION_ACTIONS[] = {
    {"remove", "", "deletes the file"},
};

constexpr MoClass CLASSES[] = {
    {"FileM", "fileMId", "1", false, false, FILE_M_CHILDREN, {}, {}, "the root of the file tree"},
    {"FileMConfigData",
     "fileMConfigDataId",
     "1",
     false,
     false,
     {},
     CONFIG_DATA_ATTRIBUTES,
     {},
     "the configuration"},
    {"FileGroup", "fileGroupId", "", true, true, FILE_GROUP_CHILDREN, FILE_GROUP_ATTRIBUTES,
     FILE_GROUP_ACTIONS, "a directory"},
    {"FileInformation",
     "fileInformationId",
     "",
     false,
     true,
     {},
     FILE_INFORMATION_ATTRIBUTES,
     FILE_INFORMATION_ACTIONS,
     "a file in a directory"},
};

template<class Described>
const Described* find(std::span<const Described> descriptions, std::string_view name)
{
    const auto found = std::ranges::find(descriptions, name, &Described::name);
    return found == descriptions.end() ? nullptr : &*found;
}

} // namespace

const MoAttribute* MoClass::attribute(std::string_view attributeName) const
{
    return find(attributes, attributeName);
}

const MoAction* MoClass::action(std::string_view actionName) const
{
    return find(actions, actionName);
}

bool MoClass::canHold(std::string_view className) const
{
    return std::ranges::find(children, className) != children.end();
}

std::span<const MoClass> moClasses()
{
    return CLASSES;
}

const MoClass* findMoClass(std::string_view name)
{
    return find(moClasses(), name);
}

} // namespace zolhost
