#pragma once

#include <random>
#include <string>
#include <vector>

namespace zoltest
{

/// Makes the same random tree wherever it is asked to: all kinds of entries, odd names, and directories whose
/// permissions keep their owner from something.
class RandomTree
{
public:
    explicit RandomTree(unsigned int seed);

    /// `path` may become anything, or nothing. Links out of the tree lead to `outside`.
    void make(const std::string& path, const std::string& outside) const;

private:
    unsigned int _seed;
};

/// All that is below the directory, with kinds, sizes and targets. Whoever owns it gets the right to look.
std::vector<std::string> contentOf(const std::string& directory);

} // namespace zoltest
