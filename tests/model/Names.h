#pragma once

#include <optional>
#include <string>
#include <vector>

namespace zolmodel
{

std::string replacedAll(const std::string& text, const std::string& what, const std::string& by);

/// RDN values of what is on disk.
std::string groupValue(const std::string& nameOnDisk);
std::string fileValue(const std::string& nameOnDisk);

/// The name on disk of a FileGroup value, as far as it can be computed.
std::string groupName(const std::string& value);

/// Why a new FileGroup can't have this name; nothing if it can.
std::optional<std::string> namingRefusal(const std::string& name);

/// What a pair of question marks may stand for, in the order in which it is tried.
const std::vector<std::string>& questionMarkCandidates();

bool isMarker(const std::string& nameOnDisk);

} // namespace zolmodel
