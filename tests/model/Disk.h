#pragma once

#include <cstdint>
#include <map>
#include <memory>
#include <stdexcept>
#include <string>
#include <sys/types.h>
#include <vector>

namespace zolmodel
{

/// The operation is not to be done at all: its answer lies outside the part of the disk that the model knows,
/// or its change would, or links make the tree too large to be walked.
class OutOfReach : public std::runtime_error
{
public:
    using std::runtime_error::runtime_error;
};

enum class Kind
{
    Directory,
    File,
    Link,
    Pipe
};

struct Node
{
    Kind kind = Kind::Directory;
    mode_t mode = 0;
    std::uint64_t size = 0;
    std::string target;
    bool foreign = false; ///< a directory of which only the way to the sandbox is known
    std::map<std::string, std::unique_ptr<Node>> children;
    Node* parent = nullptr;
    /// Entries that were ever added. It outlives the node for those who still read its stream.
    std::shared_ptr<unsigned> additions;
};

/// A disk in memory, as the system calls show it. It begins with the way to the sandbox and the sandbox
/// itself.
class Disk
{
public:
    explicit Disk(const std::string& sandbox);

    /// Relative texts start here.
    void setWorkingDirectory(const std::string& text) { _workingDirectory = text; }

    /// What stands at that text, or null.
    const Node* followed(const std::string& text) const;
    const Node* unfollowed(const std::string& text) const;

    bool exists(const std::string& text) const { return followed(text) != nullptr; }
    bool isDirectory(const std::string& text) const { return isKind(text, Kind::Directory); }
    bool isFile(const std::string& text) const { return isKind(text, Kind::File); }
    bool isLink(const std::string& text) const;

    enum class Made
    {
        Yes,
        WasThere,
        No
    };
    Made makeDirectory(const std::string& text, mode_t mode);
    /// With everything that is in it. Links are not followed at the end.
    void remove(const std::string& text);
    /// Whether since the last question something was changed that nobody can foresee: a removal went through
    /// a link that lay in what was removed, or a change was given up.
    bool isUncertain();
    void giveUpChange() { _isUncertain = true; }
    bool changeMode(const std::string& text, mode_t mode);

    // What others do; the directory is there, and the name is free in it.
    void putDirectory(const std::string& text, mode_t mode);
    void putFile(const std::string& text, std::uint64_t size);
    void putLink(const std::string& text, const std::string& target);
    void putPipe(const std::string& text);

private:
    struct Place
    {
        Node* directory = nullptr; ///< null: there is no way to it
        std::string name;          ///< empty: the directory itself is meant
        Node* node = nullptr;
    };
    struct Trail
    {
        std::vector<const Node*> links; ///< that were followed
    };

    bool isKind(const std::string& text, Kind kind) const;
    Place find(const std::string& text, bool follow) const;
    Place find(const std::string& text, bool follow, Trail& trail) const;
    Place walk(Node* from, const std::string& text, bool follow, Trail& trail) const;
    void put(const std::string& text, std::unique_ptr<Node> node);
    static Node* add(Node& directory, const std::string& name, std::unique_ptr<Node> node);

    std::unique_ptr<Node> _root;
    std::string _workingDirectory = "/";
    bool _isUncertain = false;
};

/// The nodes below a directory.
std::size_t nodesBelow(const Node& directory);

} // namespace zolmodel
