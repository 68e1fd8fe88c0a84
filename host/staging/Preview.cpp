#include "staging/Preview.h"

#include <algorithm>

#include "staging/DiskEntry.h"
#include "staging/SimulatedDisk.h"

namespace zolhost
{

namespace
{

using Kind = Preview::Item::Kind;
using Outlook = Preview::Item::Outlook;

Preview::Item newItem(Kind kind, const std::string& path)
{
    Preview::Item item;
    item.kind = kind;
    item.path = path;
    return item;
}

Preview::Item itemOfRemoval(Kind kind, const std::string& path, SimulatedDisk& disk)
{
    Preview::Item item = newItem(kind, path);
    const std::string entry = withoutSlash(path);
    auto removal = disk.remove(entry);
    item.bytes = removal.bytes;
    item.contents = std::move(removal.contents);
    if (!removal.wasThere)
    {
        item.outlook = Outlook::NothingToDo;
        item.why = lookUp(entry) ? "it goes with another path of the same commit" : "it is gone";
    }
    else if (!removal.why.empty())
    {
        item.outlook = Outlook::Fails;
        item.why = removal.why;
    }
    return item;
}

Preview::Item itemOfMaking(const std::string& path, const SimulatedDisk::Making& making)
{
    Preview::Item item = newItem(Kind::MakeDirectory, path);
    item.mode = making.mode;
    item.why = making.why;
    if (!making.why.empty())
    {
        item.outlook = Outlook::Fails;
    }
    else if (making.wasThere)
    {
        item.outlook = Outlook::NothingToDo;
        item.why = "it is there";
    }
    return item;
}

Preview::Item itemNotReached(Kind kind, const std::string& path, const std::string& endsAt)
{
    Preview::Item item = newItem(kind, path);
    item.outlook = Outlook::NotReached;
    item.why = "the commit ends at " + endsAt;
    return item;
}

/// What later items of the commit undo.
void markUndone(std::vector<Preview::Item>& items, SimulatedDisk& disk)
{
    for (auto& item : items)
    {
        if (item.outlook != Outlook::Done && item.outlook != Outlook::NothingToDo)
        {
            continue;
        }
        if (item.kind == Kind::RemoveFile)
        {
            item.isMadeAgain = disk.isThere(item.path);
        }
        else if (item.kind == Kind::MakeDirectory && !disk.leadsSomewhere(item.path))
        {
            item.isRemovedAgain = true;
            item.why = "it goes again with another path of the same commit";
        }
    }
}

} // namespace

Preview previewOf(const Plan& plan, const Progress& progress)
{
    Preview preview;
    SimulatedDisk disk(progress);
    for (const auto& path : plan.removedFiles())
    {
        preview.items.push_back(itemOfRemoval(Kind::RemoveFile, path, disk));
    }
    std::string endsAt;
    for (const auto& path : plan.madeDirectories())
    {
        if (!endsAt.empty())
        {
            preview.items.push_back(itemNotReached(Kind::MakeDirectory, path, endsAt));
            continue;
        }
        const auto making = disk.make(withoutSlash(path));
        preview.items.push_back(itemOfMaking(path, making));
        endsAt = making.endsCommit ? withoutSlash(path) : "";
    }
    for (const auto& path : plan.removedTrees())
    {
        preview.items.push_back(endsAt.empty() ? itemOfRemoval(Kind::RemoveTree, path, disk)
                                               : itemNotReached(Kind::RemoveTree, path, endsAt));
    }
    if (!plan.madeDirectories().empty())
    {
        markUndone(preview.items, disk);
    }
    preview.made = disk.made();
    preview.removed = disk.removed();
    preview.cancelled = plan.cancelled();
    return preview;
}

bool Preview::isComplete() const
{
    return std::ranges::none_of(items, [](const Item& item) {
        return item.outlook == Item::Outlook::Fails || item.outlook == Item::Outlook::NotReached;
    });
}

} // namespace zolhost
