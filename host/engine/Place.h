#pragma once

#include "engine/MoModel.h"

#include <string>
#include <vector>

namespace zolhost
{

/// An object of the tree, or one that could be, together with what stands for it on disk.
class Place
{
public:
    /// The root object. The directory is absolute, without a closing slash.
    explicit Place(std::string rootDirectory);

    Place directory(std::string nameOnDisk) const; ///< a FileGroup below this
    Place file(std::string nameOnDisk) const;      ///< a FileInformation below this
    Place configuration() const;                   ///< the FileMConfigData, which has nothing on disk
    Place parent() const;                          ///< of the root, the root

    const MoClass& moClass() const { return *_class; }
    bool isRoot() const;
    bool isDirectory() const; ///< also of the root
    bool isFile() const;

    /// Below the root, from the top.
    const std::vector<std::string>& names() const { return _names; }
    std::string name() const;  ///< on disk, of this itself; empty for the root
    std::string value() const; ///< as the component shows it

    /// Absolute; of directories with a closing slash.
    std::string path() const;
    const std::string& rootDirectory() const { return _rootDirectory; }
    /// The same below the root: "logs/a.log"; of the root, "/"; of the configuration, its DN.
    std::string shortPath() const;

    /// By which the component is asked. It holds names as they are on disk where a value has no way back.
    std::string dn() const;
    /// With the values that the component shows. What it answers of itself, such as the key attribute, is in
    /// these words, as far as it finds the place by them; if not, this is dn().
    std::string shownDn() const;
    /// Whether the component takes the DN for this path. It can't for a comma in a name, which ends a value.
    bool isReachable() const;
    /// The same for the deletion of an object, before which the component tries other names for "??".
    bool isReachableToDelete() const;

    bool operator==(const Place&) const = default;

private:
    std::string dnOf(std::string (*valueOf)(const std::string& name, bool isDirectory)) const;

    std::string _rootDirectory;
    std::vector<std::string> _names;
    const MoClass* _class;
};

/// The first directory on the way to the place that is a symbolic link, the place itself included if it is a
/// directory; empty if there is none.
std::string linkOnTheWay(const Place& place);

/// Whether links lead to somewhere that isn't below the root directory.
bool isOutsideRoot(const Place& place);

} // namespace zolhost
