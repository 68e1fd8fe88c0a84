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

/// The path on disk that a component takes a whole DN for, without empty parts, "." and "..", which it
/// resolves, and without a closing slash. It is not below the root if a part behind a FileGroup is of a class
/// that the component doesn't know. That of the disk's own root is empty. Nothing is asked of the disk.
std::string pathOfDn(std::string_view dn, const std::string& root);

/// The same of the deletion of an object: before a component takes the name as it is, it tries what may
/// stand for each "??" and takes the first that is there.
std::string pathToDelete(std::string_view dn, const std::string& root);

} // namespace zolhost
