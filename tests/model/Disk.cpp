#include "model/Disk.h"

#include <algorithm>
#include <utility>

namespace zolmodel
{

namespace
{

const std::size_t MAXIMAL_LINKS = 40;
// A lookup that the kernel has to begin again, at most twice, goes on counting.
const std::size_t CERTAIN_LINKS = 13;
const mode_t SET_GROUP_ID = 02000;
const mode_t MODE_OF_FILES = 0644;

std::unique_ptr<Node> made(Kind kind, mode_t mode)
{
    auto node = std::make_unique<Node>();
    node->kind = kind;
    node->mode = mode;
    if (kind == Kind::Directory)
    {
        node->additions = std::make_shared<unsigned>(0);
    }
    return node;
}

bool isBelow(const Node* node, const Node* directory)
{
    while (node != directory && node->parent != node)
    {
        node = node->parent;
    }
    return node == directory;
}

} // namespace

Disk::Disk(const std::string& sandbox)
    : _root(made(Kind::Directory, 0))
{
    _root->parent = _root.get();
    _root->foreign = true;
    Node* at = _root.get();
    for (std::size_t from = 1; from <= sandbox.size();)
    {
        const std::size_t end = std::min(sandbox.find('/', from), sandbox.size());
        at = add(*at, sandbox.substr(from, end - from), made(Kind::Directory, 0));
        at->foreign = true;
        from = end + 1;
    }
    at->foreign = false;
}

const Node* Disk::followed(const std::string& text) const
{
    return find(text, true).node;
}

const Node* Disk::unfollowed(const std::string& text) const
{
    return find(text, false).node;
}

bool Disk::isLink(const std::string& text) const
{
    const Node* node = unfollowed(text);
    return node != nullptr && node->kind == Kind::Link;
}

Disk::Made Disk::makeDirectory(const std::string& text, mode_t mode)
{
    const Place place = find(text, false);
    if (place.node != nullptr)
    {
        return Made::WasThere;
    }
    if (place.directory == nullptr)
    {
        return Made::No;
    }
    const mode_t inherited = place.directory->mode & SET_GROUP_ID;
    add(*place.directory, place.name, made(Kind::Directory, mode | inherited));
    return Made::Yes;
}

void Disk::remove(const std::string& text)
{
    Trail trail;
    const Place place = find(text, false, trail);
    if (place.node != nullptr && !place.name.empty())
    {
        for (const Node* link : trail.links)
        {
            _isUncertain = _isUncertain || isBelow(link, place.node);
        }
        place.directory->children.erase(place.name);
    }
}

bool Disk::isUncertain()
{
    return std::exchange(_isUncertain, false);
}

bool Disk::changeMode(const std::string& text, mode_t mode)
{
    Node* node = find(text, true).node;
    if (node == nullptr)
    {
        return false;
    }
    node->mode = mode;
    return true;
}

void Disk::putDirectory(const std::string& text, mode_t mode)
{
    put(text, made(Kind::Directory, mode));
}

void Disk::putFile(const std::string& text, std::uint64_t size)
{
    auto node = made(Kind::File, MODE_OF_FILES);
    node->size = size;
    put(text, std::move(node));
}

void Disk::putLink(const std::string& text, const std::string& target)
{
    auto node = made(Kind::Link, 0);
    node->target = target;
    put(text, std::move(node));
}

void Disk::putPipe(const std::string& text)
{
    put(text, made(Kind::Pipe, MODE_OF_FILES));
}

bool Disk::isKind(const std::string& text, Kind kind) const
{
    const Node* node = followed(text);
    return node != nullptr && node->kind == kind;
}

Disk::Place Disk::find(const std::string& text, bool follow) const
{
    Trail trail;
    return find(text, follow, trail);
}

Disk::Place Disk::find(const std::string& text, bool follow, Trail& trail) const
{
    if (text.empty())
    {
        return {};
    }
    Node* start = _root.get();
    if (text.front() != '/')
    {
        start = walk(_root.get(), _workingDirectory, true, trail).node;
    }
    const Place place = walk(start, text, follow, trail);
    if (place.directory != nullptr && trail.links.size() > CERTAIN_LINKS)
    {
        throw OutOfReach(text);
    }
    return place;
}

// As the kernel does it: name by name, a link in the middle always followed, one at the end only if asked or
// with a slash behind it.
Disk::Place Disk::walk(Node* from, const std::string& text, bool follow, Trail& trail) const
{
    Place place;
    place.directory = from->parent;
    place.node = text.front() == '/' ? _root.get() : from;
    std::size_t at = 0;
    while (place.node != nullptr)
    {
        at = text.find_first_not_of('/', at);
        if (at == std::string::npos)
        {
            break;
        }
        const std::size_t end = std::min(text.find('/', at), text.size());
        const std::string name = text.substr(at, end - at);
        const bool isLast = text.find_first_not_of('/', end) == std::string::npos;
        const bool hasSlash = end < text.size();
        at = end;
        if (place.node->kind != Kind::Directory)
        {
            return {};
        }
        Node* directory = place.node;
        if (name == "." || name == "..")
        {
            place = {directory, "", name == "." ? directory : directory->parent};
            continue;
        }
        const auto child = directory->children.find(name);
        if (child == directory->children.end())
        {
            if (directory->foreign)
            {
                throw OutOfReach(text);
            }
            return isLast ? Place{directory, name, nullptr} : Place{};
        }
        place = {directory, name, child->second.get()};
        if (place.node->kind == Kind::Link && (!isLast || follow || hasSlash))
        {
            trail.links.push_back(place.node);
            if (trail.links.size() > MAXIMAL_LINKS)
            {
                return {};
            }
            const Place target = walk(directory, place.node->target, true, trail);
            place = {target.node == nullptr ? nullptr : target.directory, target.name, target.node};
        }
        if (hasSlash && place.node != nullptr && place.node->kind != Kind::Directory)
        {
            return {};
        }
    }
    return place;
}

void Disk::put(const std::string& text, std::unique_ptr<Node> node)
{
    const Place place = find(text, false);
    if (place.directory == nullptr || place.node != nullptr)
    {
        throw std::logic_error("there is no room for " + text);
    }
    add(*place.directory, place.name, std::move(node));
}

Node* Disk::add(Node& directory, const std::string& name, std::unique_ptr<Node> node)
{
    node->parent = &directory;
    ++*directory.additions;
    return (directory.children[name] = std::move(node)).get();
}

std::size_t nodesBelow(const Node& directory)
{
    std::size_t count = 0;
    for (const auto& child : directory.children)
    {
        count += 1 + nodesBelow(*child.second);
    }
    return count;
}

} // namespace zolmodel
