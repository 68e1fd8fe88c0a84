#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

/// What is promised of names and DNs, put in other words than the code's: a second opinion, slow and plain.
namespace zolfuzz::rules
{

bool acceptsDn(std::string_view dn);

struct Location
{
    std::string text; ///< of directories with a closing slash
    bool isDirectory;
    std::string onDisk() const; ///< without it
};
/// What a path text stands for, nothing being asked of the disk.
Location location(std::string_view pathText, std::optional<bool> asDirectory = std::nullopt);
Location locationOfDn(std::string_view dn, std::string_view internalRoot);

std::string classOfDn(std::string_view dn);
std::string lastValueOfDn(std::string_view dn);

std::string fileGroupValue(std::string_view nameOnDisk);
std::string fileInformationValue(std::string_view nameOnDisk);
std::string directoryName(std::string_view fileGroupValue);
/// Why a directory can't have that name.
std::optional<std::string> refusalOfName(std::string_view name);

/// The DNs that a DN with question marks may mean, in the order in which they are tried.
std::vector<std::string> candidatesOfDn(std::string_view dn);

} // namespace zolfuzz::rules
