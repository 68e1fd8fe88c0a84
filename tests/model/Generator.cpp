#include "model/Generator.h"

#include "model/DnRules.h"
#include "model/Names.h"

#include <algorithm>
#include <numeric>
#include <utility>

namespace zolmodel
{

namespace
{

const unsigned FIRST_DISK_OPERATIONS = 20;
const unsigned TRANSACTIONS = 3;
const unsigned UNKNOWN_TRANSACTION = 9;
const std::size_t MOST_NODES = 45;
const std::size_t MOST_LINKS = 4;
const std::size_t DEEPEST = 5;

const std::vector<std::string>& markers()
{
    static const std::vector<std::string> names = {".filemnohousekeeping", ".filemnodirectorycreate",
                                                   ".filemnodirectorydelete"};
    return names;
}

Does drawn(Chance& chance)
{
    static const std::vector<std::pair<Does, unsigned>> shares = {
        {Does::Join, 20},          {Does::Prepare, 6},          {Does::Commit, 30},
        {Does::Abort, 10},         {Does::Finish, 15},          {Does::SetAttribute, 4},
        {Does::GetAttribute, 130}, {Does::GetAttributes, 35},   {Does::NewIterator, 75},
        {Does::Next, 170},         {Does::Create, 125},         {Does::Delete, 100},
        {Does::Action, 65},        {Does::FinalizeIterator, 6}, {Does::Exists, 65},
        {Does::Count, 45},         {Does::PutFile, 110}, // stands for all that others do
    };
    static const unsigned sum = std::accumulate(
        shares.begin(), shares.end(), 0U, [](unsigned so, const auto& share) { return so + share.second; });
    std::size_t at = chance.below(sum);
    for (const auto& [does, share] : shares)
    {
        if (at < share)
        {
            return does;
        }
        at -= share;
    }
    return Does::PutFile;
}

std::size_t linksBelow(const Node& directory)
{
    std::size_t count = 0;
    for (const auto& child : directory.children)
    {
        count += (child.second->kind == Kind::Link ? 1 : 0) + linksBelow(*child.second);
    }
    return count;
}

} // namespace

Generator::Generator(std::uint64_t seed, std::uint64_t round, const Model& model, const Sandbox& sandbox)
    : _chance(seed, round)
    , _model(model)
    , _sandbox(sandbox)
    , _names(someNames(_chance))
{}

Operation Generator::next()
{
    if (_drawn++ < FIRST_DISK_OPERATIONS)
    {
        return diskOperation();
    }
    const Does does = drawn(_chance);
    return does == Does::PutFile ? diskOperation() : hostOperation(does);
}

Operation Generator::hostOperation(Does does)
{
    Operation operation;
    operation.does = does;
    operation.transaction =
        _chance.percent(2) ? UNKNOWN_TRANSACTION : 1 + static_cast<unsigned>(_chance.below(TRANSACTIONS));
    const bool needsJoin = operation.transaction != UNKNOWN_TRANSACTION && does != Does::Next &&
                           !_model.isJoined(operation.transaction);
    if (needsJoin && _chance.percent(70))
    {
        operation.does = Does::Join;
    }
    switch (operation.does)
    {
    case Does::Join:
        operation.number = _chance.percent(5) ? (_chance.percent(50) ? -1 : 7) : 0;
        operation.odd = _chance.percent(4);
        break;
    case Does::NewIterator:
        operation.dn = _chance.percent(90) ? groupDn() : dn();
        operation.name =
            _chance.of<std::string>({"FileGroup", "FileGroup", "FileInformation", "FileInformation",
                                     "FileMConfigData", "FileGroupPolicy", ""});
        operation.iterator = ++_iterators;
        break;
    case Does::Next:
    case Does::FinalizeIterator:
        operation.iterator = _iterators - std::min(_iterators, static_cast<unsigned>(_chance.below(4)));
        break;
    case Does::Create:
        operation.dn = groupDn();
        operation.name = _chance.percent(97) ? "FileGroup" : "FileInformation";
        operation.text = _chance.percent(97) ? "fileGroupId" : "fileInformationId";
        operation.value = _chance.percent(12)   ? _chance.of(oddKeys())
                          : _chance.percent(30) ? groupValue(name())
                                                : name();
        operation.odd = _chance.percent(10);
        break;
    case Does::Action:
        return action(operation);
    default:
        return query(operation);
    }
    return operation;
}

Operation Generator::query(Operation operation)
{
    operation.dn = dn();
    if (operation.does == Does::Count)
    {
        operation.name =
            _chance.of<std::string>({"FileGroup", "FileInformation", "FileGroup", "FileMConfigData", "None"});
    }
    else if (operation.does == Does::GetAttribute || operation.does == Does::SetAttribute)
    {
        operation.name = attributeNames(operation.dn).front();
    }
    else if (operation.does == Does::GetAttributes)
    {
        operation.odd = _chance.percent(5);
        operation.names = attributeNames(operation.dn);
        operation.names.resize(_chance.below(operation.names.size() + 1));
    }
    return operation;
}

Operation Generator::action(Operation operation)
{
    operation.dn = _chance.percent(60) ? groupDn() : dn();
    operation.name = _chance.percent(60) ? "removeFile" : _chance.percent(90) ? "remove" : "Remove";
    operation.text = _chance.of<std::string>(
        {".*", "a.*", ".*\\.txt", "a|b", "", "(", "[ab]+.?", "a\\+b", name(), ".*[.*+?].*"});
    const auto shapes = static_cast<std::size_t>(Parameters::LAST) + 1;
    operation.number = _chance.percent(85) ? 0 : static_cast<int>(_chance.below(shapes));
    if (operation.name == "removeFile" && operation.number == static_cast<int>(Parameters::NoList))
    {
        operation.number = static_cast<int>(Parameters::None); // a list is the host's duty there
    }
    operation.odd = _chance.percent(2);
    return operation;
}

Operation Generator::diskOperation()
{
    Operation operation;
    const World& world = _model.world();
    const Node& all = *world.disk.followed(_sandbox.path());
    if (!world.disk.exists(_sandbox.internalRoot()) && _chance.percent(50))
    {
        operation.does = Does::PutDirectory;
        operation.name = _sandbox.internalRoot();
        operation.number = 0755;
        return operation;
    }
    const std::size_t kind = _drawn > FIRST_DISK_OPERATIONS ? _chance.below(100) : 30 + _chance.below(70);
    if (kind < 25)
    {
        operation.does = Does::RemoveEntry;
        operation.name = entryPath();
        return operation;
    }
    if (kind < 35)
    {
        operation.does = Does::ChangeMode;
        operation.name = directoryPath();
        operation.number = _chance.of<int>({0755, 02755, 0770, 02770, 0700, 01777, 02775});
        return operation;
    }
    const std::string path = directoryPath() + "/" + (_chance.percent(12) ? _chance.of(markers()) : name());
    operation.name = path;
    if (nodesBelow(all) >= MOST_NODES)
    {
        operation.does = Does::RemoveEntry;
        operation.name = entryPath();
    }
    else if (kind < 62)
    {
        operation.does = Does::PutFile;
        operation.number = static_cast<int>(_chance.below(3000));
    }
    else if (kind < 83)
    {
        operation.does = Does::PutDirectory;
        operation.number = _chance.percent(25) ? 02775 : 0755;
    }
    else if (kind < 97 && linksBelow(all) < MOST_LINKS)
    {
        return putLink(path);
    }
    else
    {
        operation.does = Does::PutPipe;
    }
    return operation;
}

// No link leads out of the sandbox. One that leads upwards in relative steps stays below the internal root.
Operation Generator::putLink(const std::string& path)
{
    Operation operation;
    operation.does = Does::PutLink;
    operation.name = path;
    switch (_chance.below(9))
    {
    case 0:
        operation.text = path;
        break;
    case 1:
        operation.text = ".";
        break;
    case 2:
        operation.text = path.starts_with(_sandbox.internalRoot() + "/") ? ".." : ".";
        break;
    case 3:
        operation.text = name() + (_chance.percent(20) ? "/" : "");
        break;
    case 4:
        operation.text = _sandbox.outside();
        break;
    case 5:
        operation.text = directoryPath() + (_chance.percent(20) ? "/" : "");
        break;
    case 6:
        operation.text = _sandbox.outside() + "/" + name();
        break;
    default:
        operation.text = entryPath();
    }
    return operation;
}

std::string Generator::name()
{
    return _chance.of(_names);
}

std::string Generator::dn()
{
    if (_chance.percent(6))
    {
        return _chance.of(oddDns(_sandbox.internalRoot(), name()));
    }
    if (_chance.percent(2))
    {
        return ROOT_DN + ",FileMConfigData=1";
    }
    Entry chosen = entry();
    if (_chance.percent(12))
    {
        chosen.names.push_back(_chance.percent(5) ? _chance.of(markers()) : name());
        chosen.isFile = _chance.percent(50);
    }
    if (_chance.percent(5))
    {
        chosen.isFile = !chosen.isFile;
    }
    std::string result = ROOT_DN;
    for (std::size_t i = 0; i < chosen.names.size(); ++i)
    {
        const bool asFile = chosen.isFile && i + 1 == chosen.names.size();
        result += (asFile ? ",FileInformation=" : ",FileGroup=") + valueOf(chosen.names[i], asFile);
    }
    return result;
}

std::string Generator::groupDn()
{
    if (_chance.percent(4))
    {
        return dn();
    }
    Entry chosen = entry();
    if (chosen.isFile)
    {
        chosen.names.pop_back();
    }
    if (_chance.percent(15) && chosen.names.size() < DEEPEST)
    {
        chosen.names.push_back(name());
    }
    std::string result = ROOT_DN;
    for (const auto& each : chosen.names)
    {
        result += ",FileGroup=" + valueOf(each, false);
    }
    return result;
}

Generator::Entry Generator::entry()
{
    Entry result;
    const Disk& disk = _model.world().disk;
    std::string path = _sandbox.internalRoot();
    while (result.names.size() < DEEPEST)
    {
        const Node* node = disk.followed(path);
        if (node == nullptr || node->kind != Kind::Directory || node->children.empty() || node->foreign ||
            _chance.percent(20))
        {
            result.isFile = node != nullptr && node->kind == Kind::File;
            break;
        }
        const auto child = std::next(node->children.begin(),
                                     static_cast<std::ptrdiff_t>(_chance.below(node->children.size())));
        result.names.push_back(child->first);
        path += "/" + child->first;
    }
    return result;
}

std::string Generator::valueOf(const std::string& onDisk, bool asFile)
{
    if (_chance.percent(15))
    {
        return onDisk;
    }
    if (_chance.percent(5))
    {
        return replacedAll(groupValue(onDisk), "\\2B", "\\2b");
    }
    return asFile ? fileValue(onDisk) : groupValue(onDisk);
}

std::string Generator::directoryPath()
{
    const std::size_t top = _chance.below(10);
    return descend(top == 0   ? _sandbox.outside()
                   : top == 1 ? _sandbox.workingDirectory()
                              : _sandbox.internalRoot(),
                   60);
}

std::string Generator::descend(const std::string& top, unsigned percentDeeper)
{
    std::string path = top;
    for (std::size_t depth = 0; depth < DEEPEST && _chance.percent(percentDeeper); ++depth)
    {
        const Node* node = _model.world().disk.unfollowed(path);
        std::vector<std::string> below;
        if (node != nullptr)
        {
            for (const auto& child : node->children)
            {
                if (child.second->kind == Kind::Directory)
                {
                    below.push_back(child.first);
                }
            }
        }
        if (below.empty())
        {
            break;
        }
        path += "/" + _chance.of(below);
    }
    return path;
}

std::string Generator::entryPath()
{
    const std::string path = directoryPath();
    const Node* node = _model.world().disk.unfollowed(path);
    if (node == nullptr || node->children.empty())
    {
        return path + "/" + name();
    }
    return path + "/" +
           std::next(node->children.begin(),
                     static_cast<std::ptrdiff_t>(_chance.below(node->children.size())))
               ->first;
}

std::vector<std::string> Generator::attributeNames(const std::string& dn)
{
    std::string className = classOf(dn);
    if (_chance.percent(8))
    {
        className = _chance.of<std::string>({"FileGroup", "FileInformation", "FileMConfigData"});
    }
    std::vector<std::string> all = {"fileGroupId", "internalHousekeeping", "reservedByPolicy", "files"};
    if (className == "FileInformation")
    {
        all = {"fileInformationId", "modificationTime", "size", "type", "open"};
    }
    else if (className == "FileMConfigData")
    {
        all = {_chance.percent(5) ? "internalRoot" : "fileMConfigDataId"}; // a process for each of the first
    }
    if (_chance.percent(6))
    {
        all.push_back(_chance.of<std::string>({"dateTime", "fileGroupId", "", "Size"}));
    }
    for (std::size_t i = all.size(); i > 1; --i)
    {
        std::swap(all[i - 1], all[_chance.below(i)]);
    }
    return all;
}

} // namespace zolmodel
