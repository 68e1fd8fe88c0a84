#pragma once

#include <string>
#include <sys/types.h>
#include <vector>

namespace zoltest
{

/// A folder below the system's folder for temporary files, gone with everything in it at the end of its life.
/// All names are relative to it; the empty one is the folder itself.
class TemporaryTree
{
public:
    TemporaryTree();
    explicit TemporaryTree(const std::string& folder); ///< below another folder
    TemporaryTree(const TemporaryTree&) = delete;
    TemporaryTree& operator=(const TemporaryTree&) = delete;
    ~TemporaryTree();

    /// Absolute, without a closing slash.
    std::string path(const std::string& name = "") const;

    /// These three make missing parents and return the absolute path.
    std::string file(const std::string& name, const std::string& content = "x") const;
    std::string directory(const std::string& name) const;
    std::string link(const std::string& name, const std::string& target) const;

    /// Whether there is anything of that name, a dangling link included.
    bool exists(const std::string& name) const;

    /// The permission bits, the set-ID and sticky ones included. Links are followed.
    mode_t mode(const std::string& name) const;
    void chmod(const std::string& name, mode_t mode) const;

    /// Everything below the folder, sorted: "d name", "f name size", "l name -> target" or "? name".
    std::vector<std::string> listing() const;

    /// How many descriptors of this process are open on the folder or something in it.
    int openDescriptors() const;

private:
    std::string _root;
};

} // namespace zoltest
