#pragma once

#include <random>
#include <string>
#include <vector>

namespace zoltest
{

using Random = std::mt19937;

/// From 0 to below the limit.
int below(Random& random, int limit);

/// Whether links may lead back to a directory above them. A walk that descends visits what is between them 40
/// times for each of them.
enum class Loops
{
    Any,
    One
};

/// A random tree in a folder, below `root`, with entries of all kinds, links of all kinds, names of all bytes
/// and directories whose permissions keep their owner from something. What links lead to is beside it in
/// `outside`, and by relative texts in `here`, which is to be the working directory.
struct WalkTree
{
    WalkTree(Random& random, const std::string& folder, Loops loops);

    std::string root;
    std::vector<std::string> directories; ///< by their whole paths, `root` included
    std::vector<std::string> others;
};

/// Also where permissions forbid it.
void removeWalkTree(const std::string& folder);

} // namespace zoltest
