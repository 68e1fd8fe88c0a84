#include "RandomTree.h"

#include <algorithm>
#include <array>
#include <filesystem>
#include <sys/stat.h>

namespace zoltest
{

namespace
{

namespace fs = std::filesystem;

// none is a comma, a slash or a question mark, which a name of an object says otherwise
const std::array<const char*, 10> DIRECTORY_NAMES = {"a", "b",  "c d", "e+f", "g=h",
                                                     "i", ".j", "k-",  "l;m", "a\xc3\xa4"};
const std::array<const char*, 8> FILE_NAMES = {"n", "o.log", "p+q", "r=s", "a", ".t", "u*", "[v]"};
const std::array<const char*, 3> MARKER_NAMES = {".filemnohousekeeping", ".filemnodirectorycreate",
                                                 ".filemnodirectorydelete"};
const std::array<mode_t, 6> MODES = {0755, 0700, 0770, 02755, 02770, 01777};
constexpr std::size_t DEPTH = 3;

bool holdsLinks(const fs::path& directory)
{
    return std::ranges::any_of(fs::recursive_directory_iterator(directory),
                               [](const fs::directory_entry& entry) { return entry.is_symlink(); });
}

} // namespace

RandomTree::RandomTree(unsigned seed)
    : _random(seed)
{
    fill("", 0);
    addLinks();
}

std::size_t RandomTree::number(std::size_t below)
{
    return below == 0 ? 0 : _random() % below;
}

void RandomTree::fill(const std::string& directory, std::size_t depth)
{
    for (std::size_t i = number(4); i > 0; --i)
    {
        const std::string name = below(directory) + FILE_NAMES[number(FILE_NAMES.size())];
        if (_tree.exists(name))
        {
            continue;
        }
        if (once(8))
        {
            mkfifo(_tree.path(name).c_str(), 0600);
        }
        else
        {
            _tree.file(name, std::string(number(20), 'x'));
        }
        _files.push_back(name);
    }
    if (once(6))
    {
        _tree.file(below(directory) + MARKER_NAMES[number(MARKER_NAMES.size())]);
    }
    for (std::size_t i = depth < DEPTH ? number(4) : 0; i > 0; --i)
    {
        const std::string name = below(directory) + DIRECTORY_NAMES[number(DIRECTORY_NAMES.size())];
        if (!_tree.exists(name))
        {
            _tree.directory(name);
            _directories.push_back(name);
            fill(name, depth + 1);
            _tree.chmod(name, MODES[number(MODES.size())]);
        }
    }
}

void RandomTree::addLinks()
{
    for (std::size_t i = number(5); i > 0; --i)
    {
        const std::string name = below(place()) + "link" + std::to_string(i);
        if (!fs::is_directory(fs::path(_tree.path(name)).parent_path()))
        {
            continue;
        }
        switch (number(5))
        {
        case 0:
            _tree.link(name, "nowhere");
            break;
        case 1:
            _tree.link(name, _tree.path(name));
            break;
        case 2:
            _tree.link(name, _files.empty() ? "nowhere" : _tree.path(file()));
            break;
        default:
            addLinkToDirectory(name);
            break;
        }
    }
}

/// No links that go round: a component follows them as often as the system lets it.
void RandomTree::addLinkToDirectory(const std::string& name)
{
    if (_directories.empty())
    {
        return;
    }
    const fs::path target = fs::canonical(_tree.path(directory()));
    const fs::path above = fs::canonical(fs::path(_tree.path(name)).parent_path());
    if (holdsLinks(target) || (above.string() + "/").starts_with(target.string() + "/"))
    {
        return;
    }
    _tree.link(name, once(4) ? fs::relative(target, above) : target);
    _directories.push_back(name);
    for (const auto& entry : fs::directory_iterator(target))
    {
        const std::string entryName = name + "/" + entry.path().filename().string();
        (entry.is_directory() ? _directories : _files).push_back(entryName);
    }
}

const std::string& RandomTree::directory()
{
    return _directories.at(number(_directories.size()));
}

const std::string& RandomTree::file()
{
    return _files.at(number(_files.size()));
}

std::string RandomTree::place()
{
    if (_directories.empty() || once(4))
    {
        return "";
    }
    return once(5) ? directory() + "/" + newName() : directory();
}

std::string RandomTree::newName()
{
    return DIRECTORY_NAMES[number(DIRECTORY_NAMES.size())];
}

std::string RandomTree::below(const std::string& directory)
{
    return directory.empty() ? "" : directory + "/";
}

void RandomTree::disturb()
{
    const std::string name = _files.empty() || (!_directories.empty() && once(2))
                                 ? (_directories.empty() ? newName() : directory())
                                 : file();
    const fs::path path = _tree.path(name);
    std::error_code ignored;
    fs::remove_all(path, ignored);
    if (!fs::is_directory(path.parent_path(), ignored))
    {
        return;
    }
    switch (number(5))
    {
    case 0:
        _tree.file(name, "disturbed");
        break;
    case 1:
        _tree.directory(name + "/disturbed");
        break;
    case 2:
        _tree.link(name, "nowhere");
        break;
    case 3:
        _tree.link(name, _tree.path());
        break;
    default:
        break;
    }
}

} // namespace zoltest
