#include "ways/LibraryWay.h"

#include "ways/ListingNotes.h"

#include <array>

namespace zolbench
{

namespace
{

constexpr const char* fileClass = "FileInformation";

} // namespace

LibraryWay::LibraryWay(const Library& library)
    : Way("library")
    , _library(library)
{}

void LibraryWay::browse(const Task& task, Findings* findings)
{
    const auto& objects = _library.objects();
    const LibraryTransaction transaction(_library, handle);
    unsigned long long iterator = 0;
    requireOk(objects.newMoIterator(handle, task.dn.c_str(), fileClass, &iterator), "newMoIterator");
    char* name = nullptr;
    requireOk(objects.nextMo(iterator, &name), "nextMo");
    while (name != nullptr)
    {
        note(findings, name);
        requireOk(objects.nextMo(iterator, &name), "nextMo");
    }
}

void LibraryWay::count(const Task& task, Findings* findings)
{
    const LibraryTransaction transaction(_library, handle);
    unsigned long long number = 0;
    requireOk(_library.objects().countMoChildren(handle, task.dn.c_str(), fileClass, &number), "count");
    note(findings, number);
}

void LibraryWay::files(const Task& task, Findings* findings)
{
    const LibraryTransaction transaction(_library, handle);
    ZolMoAttributeValueResult_3 result{};
    requireOk(_library.objects().getMoAttribute(handle, task.dn.c_str(), "files", &result), "files");
    noteListing(findings, *result.container);
    result.releaseCallback(result.container);
}

void LibraryWay::create(const Task& task, Findings* findings)
{
    intend(task);
    apply(task, findings);
}

void LibraryWay::intend(const Task& task)
{
    _intended.emplace(_library, handle);
    for (const Item& item : task.items)
    {
        requireOk(_library.objects().createMo(handle, item.parentDn.c_str(), "FileGroup", "fileGroupId",
                                              item.name.c_str(), nullptr),
                  "createMo");
    }
}

void LibraryWay::apply(const Task&, Findings*)
{
    _intended->commit();
    _intended.reset();
}

void LibraryWay::remove(const Task& task, Findings*)
{
    const LibraryTransaction transaction(_library, handle);
    for (const Item& item : task.items)
    {
        requireOk(_library.objects().deleteMo(handle, item.dn.c_str()), "deleteMo");
    }
    transaction.commit();
}

void LibraryWay::removeMatching(const Task& task, Findings*)
{
    const LibraryTransaction transaction(_library, handle);
    std::string expression = task.expression;
    ZolMoAttributeValue_3 value{};
    value.stringValue = expression.data();
    ZolMoNamedAttributeValueContainer_3 parameter{"expression", attrTypeString, 1, &value};
    std::array<ZolMoNamedAttributeValueContainer_3*, 2> parameters{&parameter, nullptr};
    ZolMoAttributeValueResult_3 result{};
    requireOk(_library.objects().action(handle, task.dn.c_str(), "removeFile", parameters.data(), &result),
              "removeFile");
    result.releaseCallback(result.container);
    transaction.commit();
}

void LibraryWay::checkEmpty(const Task& task, Findings* findings)
{
    const LibraryTransaction transaction(_library, handle);
    note(findings, _library.objects().deleteMo(handle, task.dn.c_str()) == ZolReturnOk ? 1 : 0);
    transaction.abort();
}

void LibraryWay::exists(const Task& task, Findings* findings)
{
    const LibraryTransaction transaction(_library, handle);
    std::uint64_t number = 0;
    for (const Item& item : task.items)
    {
        bool found = false;
        requireOk(_library.objects().existsMo(handle, item.dn.c_str(), &found), "existsMo");
        number += found ? 1 : 0;
    }
    note(findings, number);
}

void LibraryWay::size(const Task& task, Findings* findings)
{
    const LibraryTransaction transaction(_library, handle);
    std::uint64_t sum = 0;
    for (const Item& item : task.items)
    {
        ZolMoAttributeValueResult_3 result{};
        requireOk(_library.objects().getMoAttribute(handle, item.dn.c_str(), "size", &result), "size");
        sum += static_cast<std::uint64_t>(result.container->values[0].intValue);
        result.releaseCallback(result.container);
    }
    note(findings, sum);
}

void LibraryWay::openAndClose(const Task& task, Findings*)
{
    for (std::size_t i = 0; i < task.items.size(); ++i)
    {
        const LibraryTransaction transaction(_library, handle);
    }
}

} // namespace zolbench
