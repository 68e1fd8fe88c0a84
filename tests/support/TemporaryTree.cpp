#include "support/TemporaryTree.h"

#include <algorithm>
#include <cerrno>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <stdexcept>
#include <sys/stat.h>
#include <system_error>

namespace zoltest
{

namespace
{

namespace fs = std::filesystem;

[[noreturn]] void fail(const std::string& what)
{
    throw std::system_error(errno, std::generic_category(), what);
}

// A directory without permissions would survive its removal by anyone but root.
void makeRemovable(const fs::path& directory)
{
    std::error_code ignored;
    fs::permissions(directory, fs::perms::owner_all, fs::perm_options::add, ignored);
    for (const auto& entry : fs::directory_iterator(directory, ignored))
    {
        if (entry.symlink_status(ignored).type() == fs::file_type::directory)
        {
            makeRemovable(entry.path());
        }
    }
}

std::string describe(const fs::directory_entry& entry, const std::string& name)
{
    switch (entry.symlink_status().type())
    {
    case fs::file_type::directory:
        return "d " + name;
    case fs::file_type::regular:
        return "f " + name + " " + std::to_string(entry.file_size());
    case fs::file_type::symlink:
        return "l " + name + " -> " + fs::read_symlink(entry.path()).string();
    default:
        return "? " + name;
    }
}

} // namespace

TemporaryTree::TemporaryTree()
    : TemporaryTree(fs::temp_directory_path().string())
{}

TemporaryTree::TemporaryTree(const std::string& folder)
    : _root(folder + "/zol-test-XXXXXX")
{
    if (mkdtemp(_root.data()) == nullptr)
    {
        fail("mkdtemp " + _root);
    }
}

TemporaryTree::~TemporaryTree()
{
    std::error_code ignored;
    makeRemovable(_root);
    fs::remove_all(_root, ignored);
}

std::string TemporaryTree::path(const std::string& name) const
{
    return name.empty() ? _root : _root + "/" + name;
}

std::string TemporaryTree::file(const std::string& name, const std::string& content) const
{
    const fs::path where = path(name);
    fs::create_directories(where.parent_path());
    std::ofstream stream(where, std::ios::binary);
    stream << content;
    stream.close();
    if (!stream)
    {
        throw std::runtime_error("can't write " + where.string());
    }
    return where;
}

std::string TemporaryTree::directory(const std::string& name) const
{
    fs::create_directories(path(name));
    return path(name);
}

std::string TemporaryTree::link(const std::string& name, const std::string& target) const
{
    const fs::path where = path(name);
    fs::create_directories(where.parent_path());
    fs::create_symlink(target, where);
    return where;
}

bool TemporaryTree::exists(const std::string& name) const
{
    return fs::symlink_status(path(name)).type() != fs::file_type::not_found;
}

mode_t TemporaryTree::mode(const std::string& name) const
{
    struct stat status = {};
    if (::stat(path(name).c_str(), &status) != 0)
    {
        fail("stat " + path(name));
    }
    return status.st_mode & 07777U;
}

void TemporaryTree::chmod(const std::string& name, mode_t mode) const
{
    if (::chmod(path(name).c_str(), mode) != 0)
    {
        fail("chmod " + path(name));
    }
}

std::vector<std::string> TemporaryTree::listing() const
{
    std::vector<std::string> lines;
    for (const auto& entry : fs::recursive_directory_iterator(_root))
    {
        lines.push_back(describe(entry, entry.path().string().substr(_root.size() + 1)));
    }
    std::sort(lines.begin(), lines.end());
    return lines;
}

int TemporaryTree::openDescriptors() const
{
    int count = 0;
    for (const auto& entry : fs::directory_iterator("/proc/self/fd"))
    {
        std::error_code gone;
        const std::string target = fs::read_symlink(entry.path(), gone);
        count += target == _root || target.starts_with(_root + "/") ? 1 : 0;
    }
    return count;
}

} // namespace zoltest
