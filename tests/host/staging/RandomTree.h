#pragma once

#include "support/TemporaryTree.h"

#include <random>
#include <string>
#include <vector>

namespace zoltest
{

/// A tree of all kinds of entries, and names in it to be asked for. The same seed gives the same.
class RandomTree
{
public:
    explicit RandomTree(unsigned seed);

    const TemporaryTree& tree() const { return _tree; }

    std::size_t number(std::size_t below);
    bool once(std::size_t inSo) { return number(inSo) == 0; }

    /// One of a directory, also behind a link. Not that of the tree itself.
    const std::string& directory();
    /// One of something else, but not of a link.
    const std::string& file();
    /// One of a directory, of the tree itself as the empty one, or of what isn't there.
    std::string place();
    std::string newName();
    std::string below(const std::string& directory);

    /// What another program may do to the tree meanwhile.
    void disturb();

private:
    void fill(const std::string& directory, std::size_t depth);
    void addLinks();
    void addLinkToDirectory(const std::string& name);

    std::mt19937 _random;
    TemporaryTree _tree;
    std::vector<std::string> _directories;
    std::vector<std::string> _files;
};

} // namespace zoltest
