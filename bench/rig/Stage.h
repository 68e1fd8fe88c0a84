#pragma once

#include "ways/Task.h"

#include <filesystem>

namespace zolbench
{

/// The folder below which all work is done, with the trees that tasks need. It goes with all that is in it at
/// the end of the object's life.
class Stage
{
public:
    explicit Stage(const std::filesystem::path& parent);
    Stage(const Stage&) = delete;
    Stage& operator=(const Stage&) = delete;
    ~Stage();

    const std::string& root() const { return _root; }

    // On disk, where it isn't so already.
    void fill(const Task& task) const;  ///< the directory holds just the files, each of a size of its own
    void make(const Task& task) const;  ///< it holds just the directories
    void empty(const Task& task) const; ///< it holds nothing

private:
    std::string _root;
};

} // namespace zolbench
