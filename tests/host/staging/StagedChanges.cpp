#include "StagedChanges.h"

#include "engine/ConfigurationText.h"
#include "engine/Refusal.h"
#include "support/ChildProcess.h"
#include "support/LoadedLibrary.h"
#include "support/OrdinaryUser.h"

#include <array>
#include <cerrno>
#include <cstdio>
#include <filesystem>
#include <functional>
#include <sys/stat.h>
#include <system_error>
#include <unistd.h>

namespace zoltest
{

namespace
{

namespace fs = std::filesystem;

constexpr const char* ROOT = "ManagedElement=1,SystemFunctions=1,FileM=1";

std::string directoryDn(const std::string& name)
{
    std::string dn = ROOT;
    for (const auto& part : fs::path(name))
    {
        dn += ",FileGroup=" + part.string();
    }
    return dn;
}

std::string fileDn(const std::string& name)
{
    const fs::path path = name;
    return directoryDn(path.parent_path()) + ",FileInformation=" + path.filename().string();
}

/// An expression that nothing else matches.
std::string literally(const std::string& text)
{
    std::string expression;
    for (const char character : text)
    {
        expression += std::string("\\^$.[]|()?*+{}").find(character) != std::string::npos ? "\\" : "";
        expression += character;
    }
    return expression;
}

std::string described(const fs::path& path)
{
    struct stat status = {};
    if (lstat(path.c_str(), &status) != 0)
    {
        throw std::system_error(errno, std::generic_category(), path.string());
    }
    std::array<char, 16> mode{};
    std::snprintf(mode.data(), mode.size(), "%04o", status.st_mode & 07777U);
    switch (status.st_mode & S_IFMT)
    {
    case S_IFDIR:
        return std::string("directory ") + mode.data();
    case S_IFREG:
        return std::string("file ") + mode.data() + " " + std::to_string(status.st_size);
    case S_IFLNK:
        return "link to " + fs::read_symlink(path).string();
    default:
        return std::string("other ") + mode.data();
    }
}

std::string directoryOf(mode_t mode)
{
    std::array<char, 32> text{};
    std::snprintf(text.data(), text.size(), "directory %04o", mode);
    return text.data();
}

/// Where the last name of a path is once the links above it are gone through.
fs::path withoutLinksAbove(const fs::path& path)
{
    return fs::weakly_canonical(path.parent_path()) / path.filename();
}

std::string nameIn(const std::string& root, const fs::path& path)
{
    return path == root ? "." : path.string().substr(root.size() + 1);
}

void require(bool holds, const char* what)
{
    if (!holds)
    {
        throw std::system_error(errno, std::generic_category(), what);
    }
}

} // namespace

ScopedMask::ScopedMask(mode_t mask)
    : _previous(umask(mask))
{}

ScopedMask::~ScopedMask()
{
    umask(_previous);
}

StagedChanges::StagedChanges(const TemporaryTree& tree)
    : _root(tree.path() + "/")
    , _host({LoadedLibrary::path(), zolhost::configurationFor(tree.path()), {}})
    , _transaction(_host.begin())
{}

void StagedChanges::makeDirectory(const std::string& name)
{
    const fs::path path = name;
    _host.objects(*_transaction)
        .create(directoryDn(path.parent_path()), "FileGroup", "fileGroupId", path.filename());
    _plan.makeDirectory(_root + name + "/");
}

void StagedChanges::removeDirectory(const std::string& name)
{
    _host.objects(*_transaction).deleteObject(directoryDn(name));
    _plan.removeDirectory(_root + name + "/");
}

void StagedChanges::removeTree(const std::string& name)
{
    _host.objects(*_transaction).remove(directoryDn(name));
    _plan.removeTree(_root + name + "/");
}

void StagedChanges::removeFile(const std::string& name)
{
    const auto objects = _host.objects(*_transaction);
    if (name.find('/') == std::string::npos)
    {
        // a component takes such an object for the root itself
        if (!objects.removeFile(ROOT, literally(name)))
        {
            return;
        }
    }
    else
    {
        objects.deleteObject(fileDn(name));
    }
    _plan.removeFile(_root + name);
}

void StagedChanges::removeFileAsTree(const std::string& name)
{
    _host.objects(*_transaction).remove(fileDn(name));
    _plan.removeTree(_root + name);
}

bool StagedChanges::commit()
{
    try
    {
        _transaction->commit();
        return true;
    }
    catch (const zolhost::Refusal&)
    {
        return false;
    }
}

Snapshot snapshotOf(const std::string& root)
{
    Snapshot snapshot = {{".", described(root)}};
    for (const auto& entry :
         fs::recursive_directory_iterator(root, fs::directory_options::skip_permission_denied))
    {
        snapshot[entry.path().string().substr(root.size() + 1)] = described(entry.path());
    }
    return snapshot;
}

Expectation::Expectation(const zolhost::Preview& preview, const std::string& root)
    : _made(preview.made)
    , _root(root)
    , _snapshot(snapshotOf(root))
{
    for (const auto& removed : preview.removed)
    {
        EXPECT_EQ(_snapshot.erase(nameIn(_root, withoutLinksAbove(removed.path))), 1U) << removed.path;
    }
}

Snapshot Expectation::after() const
{
    Snapshot snapshot = _snapshot;
    for (const auto& made : _made)
    {
        const auto path = made.isThere ? fs::weakly_canonical(made.path) : withoutLinksAbove(made.path);
        const std::string name = nameIn(_root, path);
        EXPECT_EQ(snapshot.contains(name), made.isThere) << made.path;
        snapshot[name] = directoryOf(made.mode);
    }
    return snapshot;
}

bool holdsForOrdinaryUser(const TemporaryTree& tree, const std::function<void()>& function)
{
    const uid_t user = ordinaryUser();
    require(user == geteuid() || chown(tree.path().c_str(), user, user) == 0, "chown");
    const auto outcome = runInChild([&] {
        becomeOrdinaryUser();
        function();
        std::fflush(nullptr);
        return testing::Test::HasFailure() ? 1 : 0;
    });
    return outcome.exitStatus == 0;
}

} // namespace zoltest
