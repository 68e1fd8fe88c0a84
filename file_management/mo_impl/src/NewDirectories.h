#pragma once

#include "Handle.h"

#include <fcntl.h>
#include <string>

namespace ZolFileManagement
{

/// Makes the new directories of one commit, which come in the order of their texts, so that a parent comes
/// before its children.
///
/// Most are new, in a directory that is there: they are made in one step, where the plain way looks first
/// what is there. Whatever the system says against it, the plain way has the last word.
class NewDirectories
{
public:
    /// Missing ancestors are made too, with what the mask of the process leaves of their modes. The directory
    /// itself gets the mode of a new one, also if it has been there before, unless that fails, which is
    /// logged. Throws what Poco::File does when there can't be one.
    void make(const std::string& directory);

private:
    void makePlainly(const std::string& directory);
    void setMode(const char* fromBase, const std::string& directory);
    bool isBelowSetgid(const char* fromBase, const std::string& directory);
    void approach(const std::string& directory);
    void leaveBase();

    // Where paths begin for the system: at first the working directory. From a directory that this commit has
    // made there is no link on the way down, so that the way is the same from there.
    Handle _handle{AT_FDCWD};
    std::string _base; // its path

    std::string _made;   // the last one, if it is really new
    std::string _parent; // of which the bit is known
    bool _isParentSetgid = false;
};

} // namespace ZolFileManagement
