#include "strict/StrictWay.h"

#include "strict/StrictListing.h"
#include "strict/StrictNames.h"
#include "strict/StrictWalk.h"
#include "ways/DirectoryHandle.h"
#include "ways/Expression.h"
#include "ways/ListingNotes.h"
#include "ways/Text.h"

#include <vector>

namespace zolbench
{

namespace
{

bool isThere(const std::string& path)
{
    struct stat status
    {};
    return ::stat(path.c_str(), &status) == 0;
}

// An entry is looked at when it is handed out, by its whole path.
bool isPlainFile(const std::string& path, const char* name)
{
    struct stat status
    {};
    require(::lstat(path.c_str(), &status) == 0, "lstat");
    return S_ISREG(status.st_mode) && !isMarker(name);
}

bool hasFiles(int parent, const char* name)
{
    const DirectoryHandle directory(parent, name);
    std::vector<std::string> children;
    bool found = false;
    strictWalk(directory.number(), [&](const char* entry, StrictKind kind) {
        found = found || kind == StrictKind::file;
        if (!found && kind == StrictKind::directory)
        {
            children.emplace_back(entry);
        }
    });
    for (auto child = children.begin(); !found && child != children.end(); ++child)
    {
        found = hasFiles(directory.number(), child->c_str());
    }
    return found;
}

} // namespace

StrictWay::StrictWay(std::string root)
    : Way("strict")
    , _root(std::move(root))
{}

void StrictWay::browse(const Task& task, Findings* findings)
{
    std::string path = strictPathOf(_root, task.dn);
    const std::size_t directory = path.size();
    const std::unique_ptr<DIR, int (*)(DIR*)> stream(::opendir(path.c_str()), ::closedir);
    require(stream != nullptr, "opendir");
    std::vector<Text> names;
    while (const dirent* entry = ::readdir(stream.get()))
    {
        const char* name = static_cast<const char*>(entry->d_name);
        path.resize(directory);
        path += name;
        if (!isDot(name) && isPlainFile(path, name))
        {
            names.push_back(copyOf(strictFileValue(name)));
            note(findings, names.back().get());
        }
    }
}

void StrictWay::count(const Task& task, Findings* findings)
{
    const DirectoryHandle directory(strictPathOf(_root, task.dn));
    std::uint64_t number = 0;
    strictWalk(directory.number(),
               [&](const char*, StrictKind kind) { number += kind == StrictKind::file ? 1 : 0; });
    note(findings, number);
}

void StrictWay::files(const Task& task, Findings* findings)
{
    const ZolMoAttributeValueResult_3 result = listingOf(strictFiles(strictPathOf(_root, task.dn)));
    noteListing(findings, *result.container);
    result.releaseCallback(result.container);
}

void StrictWay::create(const Task& task, Findings* findings)
{
    intend(task);
    apply(task, findings);
}

void StrictWay::intend(const Task& task)
{
    for (const Item& item : task.items)
    {
        if (!isStrictName(item.name))
        {
            throw std::runtime_error(item.name);
        }
        std::string path = strictPathOf(_root, item.parentDn);
        if (isThere(path + ".filemnodirectorycreate"))
        {
            throw std::runtime_error(path);
        }
        path += item.name;
        path += '/';
        _changes.addCreatedDir(std::move(path));
    }
}

void StrictWay::apply(const Task&, Findings*)
{
    _changes.commit();
}

void StrictWay::remove(const Task& task, Findings*)
{
    for (const Item& item : task.items)
    {
        std::string path = strictPathOf(_root, item.dn);
        struct stat status
        {};
        require(::lstat(path.c_str(), &status) == 0 && !S_ISLNK(status.st_mode), "lstat");
        _changes.deletedFiles.insert(std::move(path));
    }
    _changes.commit();
}

void StrictWay::removeMatching(const Task& task, Findings*)
{
    const Expression expression(task.expression);
    const std::string path = strictPathOf(_root, task.dn);
    {
        const DirectoryHandle directory(path);
        strictWalk(directory.number(), [&](const char* name, StrictKind kind) {
            if (kind == StrictKind::file && expression.matches(name))
            {
                _changes.deletedFiles.insert(path + name);
            }
        });
    }
    _changes.commit();
}

void StrictWay::checkEmpty(const Task& task, Findings* findings)
{
    const std::string path = strictPathOf(_root, task.dn);
    struct stat status
    {};
    const std::string withoutSlash = path.substr(0, path.size() - 1);
    require(::lstat(withoutSlash.c_str(), &status) == 0 && !S_ISLNK(status.st_mode), "lstat");
    const bool isAllowed = !isThere(path + ".filemnodirectorydelete") &&
                           !isThere(path + ".filemnodirectorycreate") &&
                           !isThere(path + ".filemnohousekeeping");
    note(findings, isAllowed && !hasFiles(AT_FDCWD, path.c_str()) ? 1 : 0);
}

void StrictWay::exists(const Task& task, Findings* findings)
{
    std::uint64_t number = 0;
    for (const Item& item : task.items)
    {
        const std::string path = strictPathOf(_root, item.dn);
        const bool isDirectory = path.back() == '/';
        struct stat status
        {};
        const bool isThere = ::stat(path.c_str(), &status) == 0 && S_ISDIR(status.st_mode) == isDirectory;
        number += isThere && !isMarker(path.substr(path.rfind('/') + 1)) ? 1 : 0;
    }
    note(findings, number);
}

void StrictWay::size(const Task& task, Findings* findings)
{
    std::uint64_t sum = 0;
    for (const Item& item : task.items)
    {
        struct stat status
        {};
        const bool isThere = ::stat(strictPathOf(_root, item.dn).c_str(), &status) == 0;
        const ZolMoAttributeValueResult_3 result = numberResult(isThere ? status.st_size : 0);
        sum += static_cast<std::uint64_t>(result.container->values[0].intValue);
        result.releaseCallback(result.container);
    }
    note(findings, sum);
}

void StrictWay::openAndClose(const Task& task, Findings*)
{
    for (unsigned long handle = 1; handle <= task.items.size(); ++handle)
    {
        {
            const std::scoped_lock lock(_mutex);
            _transactions.emplace(handle, std::make_unique<StrictChanges>());
        }
        const std::scoped_lock lock(_mutex);
        _transactions.erase(handle);
    }
}

} // namespace zolbench
