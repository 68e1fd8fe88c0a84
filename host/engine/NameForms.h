#pragma once

#include <string>
#include <string_view>

namespace zolhost
{

/// What a component makes of names: which value a name on disk gets in a DN, and what a value stands for. The
/// host shows and finds names by it.
std::string fileGroupValueOf(std::string_view nameOnDisk);
std::string fileInformationValueOf(std::string_view nameOnDisk);

/// The name of the directory that a component makes of the value of a FileGroup.
std::string directoryNameOf(std::string_view fileGroupValue);

/// The path below the root, "/a/b", that a component takes a whole DN for. Nothing is asked of the disk.
std::string pathOfDn(std::string_view dn);

/// The location that the component makes of a path below the root: without empty parts, "." and "..", which
/// it resolves, and without a closing slash.
std::string resolvedPath(const std::string& path);

/// The resolved path on disk of the deletion of an object: before a component takes the name as it is, it
/// tries what may stand for each "??" and takes the first that is there.
std::string pathToDelete(std::string_view dn, const std::string& root);

} // namespace zolhost
