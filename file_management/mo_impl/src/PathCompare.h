#pragma once

#include <Poco/Path.h>

namespace ZolFileManagement
{

/// Orders paths by their whole texts, byte by byte. The directory form and the file form of one location are
/// two keys, and a directory comes before everything below it.
struct PathCompare
{
    bool operator()(const Poco::Path& a, const Poco::Path& b) const { return a.toString() < b.toString(); }
};

} // namespace ZolFileManagement
