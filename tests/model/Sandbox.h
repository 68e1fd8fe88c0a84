#pragma once

#include "model/Operation.h"
#include "model/Surroundings.h"
#include "model/World.h"

#include <optional>
#include <string>
#include <vector>

namespace zolmodel
{

/// The part of the real disk on which the component works: the internal root, a directory outside of it that
/// links lead to, and the working directory of the process.
class Sandbox
{
public:
    Sandbox();
    Sandbox(const Sandbox&) = delete;
    Sandbox& operator=(const Sandbox&) = delete;
    ~Sandbox();

    const std::string& path() const { return _path; }
    std::string internalRoot() const { return _path + "/r/fs"; }
    std::string outside() const { return _path + "/out"; }
    std::string workingDirectory() const { return _path + "/cwd"; }
    std::string report() const { return _path + "-report"; } ///< a file that the tree has no part in

    /// Makes the four directories anew, here and in the world.
    void empty(World& world) const;

    /// What others do to the disk.
    void change(const Operation& operation) const;

    /// Where the disk is not as the model has it; nothing if it is.
    std::optional<std::string> difference(const Disk& disk) const;

    /// Makes the model's disk what is there.
    void adopt(Disk& disk) const;

    static std::vector<std::string> namesInDiskOrder(const std::string& directory);
    static Surroundings::Status status(const std::string& text);

private:
    std::string _path;
};

} // namespace zolmodel
