#pragma once

#include <filesystem>
#include <stdexcept>
#include <string>
#include <vector>

namespace zolhost
{

/// A FileGroupPolicy object: it reserves directories.
struct FileGroupPolicy
{
    std::string id;
    std::vector<std::string> fileGroups; ///< whole DNs

    bool operator==(const FileGroupPolicy&) const = default;
};

/// A model file that can't be used; `what()` says why.
class BadModel : public std::runtime_error
{
public:
    using std::runtime_error::runtime_error;
};

/// Reads {"FileGroupPolicy": [{"id": "1", "fileGroup": ["FileGroup=logs", …]}, …]}. Throws BadModel.
std::vector<FileGroupPolicy> readPolicies(const std::filesystem::path& file);

} // namespace zolhost
