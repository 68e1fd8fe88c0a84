#pragma once

#include "FileInfo.h"
#include "plain/PlainWalk.h"

#include <Poco/Path.h>
#include <cstdint>
#include <functional>
#include <string>
#include <vector>

namespace zoltest
{

// The reads of a transaction as their rules state them, on paths.

std::uint64_t plainCount(const Poco::Path& directory, const PlainChanges& changes, bool countFiles);
bool plainContainsFiles(const Poco::Path& directory, const PlainChanges& changes);
/// Whether any was removed. Those are in the changes then.
bool plainRemoveFiles(const Poco::Path& directory, const std::string& expression, PlainChanges& changes);

/// Throws what fails it.
std::vector<ZolFileManagement::FileInfo> plainFiles(const Poco::Path& directory, const PlainChanges& changes);
std::string plainDate(const Poco::Path& path);

bool plainExists(const Poco::Path& path, bool isGroup, const PlainChanges& changes);
std::uint64_t plainSize(const Poco::Path& path);

/// Twelve looks, whatever the DN. `pathOf` is what a DN stands for.
bool plainNameSearch(std::string& dn, const std::function<Poco::Path(const std::string&)>& pathOf);

} // namespace zoltest
