#include "literal/LiteralWay.h"

#include "plain/PlainNames.h"
#include "plain/PlainReads.h"
#include "ways/ListingNotes.h"
#include "ways/ListingRecords.h"
#include "ways/Require.h"
#include "ways/Text.h"

#include <Poco/File.h>
#include <list>

namespace zolbench
{

using zoltest::PlainTransaction;
using zoltest::PlainWalk;

LiteralWay::LiteralWay(const std::string& root)
    : Way("literal")
    , _root(root)
    , _transaction(root)
{}

void LiteralWay::browse(const Task& task, Findings* findings)
{
    PlainWalk files(pathOf(task.dn), _noChanges, true);
    std::list<Text> names;
    Poco::Path file;
    while (files.getNext(file))
    {
        std::string name = file.getFileName();
        zoltest::plainAlignFile(name);
        names.push_back(copyOf(name));
        note(findings, names.back().get());
    }
}

void LiteralWay::count(const Task& task, Findings* findings)
{
    note(findings, zoltest::plainCount(pathOf(task.dn), _noChanges, true));
}

void LiteralWay::files(const Task& task, Findings* findings)
{
    std::vector<ListedFile> files;
    for (const auto& file : zoltest::plainFiles(pathOf(task.dn), _noChanges))
    {
        files.push_back({file.fileName, file.size, file.fileType, file.modificationTime});
    }
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
        requireOk(_transaction.create(item.parentDn, item.name), "createMo");
    }
}

void LiteralWay::apply(const Task&, Findings*)
{
    requireOk(_transaction.commit(), "commit");
}

void LiteralWay::remove(const Task& task, Findings*)
{
    for (const Item& item : task.items)
    {
        requireOk(_transaction.deleteM(item.dn), "deleteMo");
    }
    requireOk(_transaction.commit(), "commit");
}

void LiteralWay::removeMatching(const Task& task, Findings*)
{
    _transaction.removeFiles(pathOf(task.dn), task.expression);
    requireOk(_transaction.commit(), "commit");
}

void LiteralWay::checkEmpty(const Task& task, Findings* findings)
{
    PlainTransaction transaction(_root);
    note(findings, transaction.deleteM(task.dn) == 0 ? 1 : 0);
}

void LiteralWay::exists(const Task& task, Findings* findings)
{
    std::uint64_t number = 0;
    for (const Item& item : task.items)
    {
        number += zoltest::plainExists(pathOf(item.dn), false, _noChanges) ? 1 : 0;
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
        const std::uint64_t size = isFound ? zoltest::plainSize(path) : 0;
        const ZolMoAttributeValueResult_3 result = numberResult(static_cast<std::int64_t>(size));
        sum += static_cast<std::uint64_t>(result.container->values[0].intValue);
        result.releaseCallback(result.container);
    }
    note(findings, sum);
}

} // namespace zolbench
