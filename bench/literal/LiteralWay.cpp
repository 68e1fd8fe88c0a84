#include "literal/LiteralWay.h"

#include "literal/LiteralWalk.h"
#include "strict/StrictListing.h"
#include "strict/StrictNames.h"
#include "ways/Expression.h"
#include "ways/ListingNotes.h"
#include "ways/Text.h"

#include <Poco/File.h>
#include <algorithm>
#include <array>
#include <ctime>
#include <list>
#include <sys/stat.h>

namespace zolbench
{

namespace
{

std::string dateOf(const Poco::Path& path)
{
    struct stat status
    {};
    if (::stat(path.toString().c_str(), &status) != 0)
    {
        return {};
    }
    const std::tm* time = std::localtime(&status.st_ctime);
    std::array<char, 32> text{};
    std::strftime(text.data(), text.size(), "%Y-%m-%dT%H:%M:%S", time);
    return text.data();
}

bool isThere(const Poco::Path& directory, const char* marker)
{
    return Poco::File(directory.toString() + "/" + marker).exists();
}

} // namespace

LiteralWay::LiteralWay(std::string root)
    : Way("literal")
    , _root(std::move(root))
{}

Poco::Path LiteralWay::pathOf(const std::string& dn) const
{
    return Poco::Path(strictPathOf(_root, dn));
}

void LiteralWay::browse(const Task& task, Findings* findings)
{
    LiteralWalk files(pathOf(task.dn), _changes, true);
    std::list<Text> names;
    Poco::Path file;
    while (files.next(file))
    {
        names.push_back(copyOf(strictFileValue(file.getFileName().c_str())));
        note(findings, names.back().get());
    }
}

void LiteralWay::count(const Task& task, Findings* findings)
{
    LiteralWalk files(pathOf(task.dn), _changes, true);
    std::uint64_t number = 0;
    for (Poco::Path file; files.next(file); ++number)
    {}
    note(findings, number);
}

void LiteralWay::files(const Task& task, Findings* findings)
{
    std::vector<ListedFile> files;
    const Poco::DirectoryIterator end;
    for (Poco::DirectoryIterator entry(pathOf(task.dn)); entry != end; ++entry)
    {
        const Poco::Path& path = entry.path();
        if (entry->isFile() && _changes.deletedFiles.count(path) == 0 &&
            _changes.deletedDirs.count(path) == 0 && !isMarker(path.getFileName()))
        {
            files.push_back({path.getFileName(), entry->getSize(), path.getExtension(), dateOf(path)});
        }
    }
    std::sort(files.begin(), files.end());
    const ZolMoAttributeValueResult_3 result = listingOf(files);
    noteListing(findings, *result.container);
    result.releaseCallback(result.container);
}

void LiteralWay::create(const Task& task, Findings* findings)
{
    intend(task);
    apply(task, findings);
}

void LiteralWay::intend(const Task& task)
{
    for (const Item& item : task.items)
    {
        Poco::Path path = pathOf(item.parentDn);
        if (!isStrictName(item.name) || isThere(path, ".filemnodirectorycreate"))
        {
            throw std::runtime_error(item.name);
        }
        path.append(Poco::Path(item.name)).makeDirectory();
        _changes.addCreatedDir(path);
    }
}

void LiteralWay::apply(const Task&, Findings*)
{
    _changes.commit();
}

void LiteralWay::remove(const Task& task, Findings*)
{
    for (const Item& item : task.items)
    {
        // the first candidate of the name search, as there is nothing to search
        const bool isFound = Poco::File(pathOf(item.dn)).exists();
        const Poco::Path path = pathOf(item.dn);
        if (!isFound || isLiteralLink(path) || !Poco::File(path).exists())
        {
            throw std::runtime_error(item.name);
        }
        _changes.deletedFiles.insert(path);
    }
    _changes.commit();
}

void LiteralWay::removeMatching(const Task& task, Findings*)
{
    const Expression expression(task.expression);
    LiteralWalk files(pathOf(task.dn), _changes, true);
    Poco::Path file;
    while (files.next(file))
    {
        if (expression.matches(file.getFileName().c_str()) && !isLiteralLink(file))
        {
            _changes.deletedFiles.insert(file);
        }
    }
    _changes.commit();
}

void LiteralWay::checkEmpty(const Task& task, Findings* findings)
{
    const Poco::Path path = pathOf(task.dn);
    const bool isAllowed =
        !isLiteralLink(path) && Poco::File(path).exists() && !isThere(path, ".filemnodirectorydelete") &&
        !isThere(path, ".filemnodirectorycreate") && !isThere(path, ".filemnohousekeeping");
    note(findings, isAllowed && !hasLiteralFiles(path, _changes) ? 1 : 0);
}

void LiteralWay::exists(const Task& task, Findings* findings)
{
    std::uint64_t number = 0;
    for (const Item& item : task.items)
    {
        const Poco::Path path = pathOf(item.dn);
        const Poco::File file(path);
        number += !isMarker(path.getFileName()) && file.exists() && !file.isDirectory() ? 1 : 0;
    }
    note(findings, number);
}

void LiteralWay::size(const Task& task, Findings* findings)
{
    std::uint64_t sum = 0;
    for (const Item& item : task.items)
    {
        const Poco::Path path = pathOf(item.dn);
        const bool isFound = Poco::File(path).exists();
        const Poco::File file(path);
        const ZolMoAttributeValueResult_3 result =
            numberResult(isFound && file.exists() ? static_cast<std::int64_t>(file.getSize()) : 0);
        sum += static_cast<std::uint64_t>(result.container->values[0].intValue);
        result.releaseCallback(result.container);
    }
    note(findings, sum);
}

} // namespace zolbench
