#include "staging/Receipt.h"

#include "staging/DiskEntry.h"
#include "staging/Obstacle.h"
#include "staging/Rights.h"

#include <algorithm>
#include <array>
#include <cerrno>
#include <cstdio>
#include <optional>
#include <set>
#include <utility>

namespace zolhost
{

namespace
{

using Kind = Preview::Item::Kind;
using Outlook = Preview::Item::Outlook;
using Item = Receipt::Item;
using Result = Receipt::Item::Result;

/// Also if it can't be seen.
bool isThere(const std::string& path)
{
    return lookUp(path) || !meansAbsence(errno);
}

/// The path of the directory at which the commit seems to have ended; empty if there is none.
std::string whereItEnded(const Preview& preview)
{
    const auto missing = std::ranges::find_if(preview.items, [](const Preview::Item& item) {
        return item.kind == Kind::MakeDirectory && !item.isRemovedAgain && !isThere(withoutSlash(item.path));
    });
    return missing == preview.items.end() ? "" : withoutSlash(missing->path);
}

std::string octal(mode_t mode)
{
    std::array<char, 16> digits{};
    std::snprintf(digits.data(), digits.size(), "%04o", mode);
    return digits.data();
}

/// Why an item that the component said it did isn't as it was to be.
std::string whyItRemains(const Preview::Item& item, const std::string& endedAt)
{
    const bool isReached = item.outlook != Outlook::NotReached || endedAt.empty();
    std::string why;
    if (isReached)
    {
        why = item.kind == Kind::MakeDirectory ? obstacleToMaking(item.path) : obstacleToRemoving(item.path);
    }
    if (why.empty() && !endedAt.empty() && endedAt != withoutSlash(item.path))
    {
        why = "the commit ended at " + endedAt;
    }
    return why.empty() ? "nothing is in the way now" : why;
}

Item newItem(const Preview::Item& previewed)
{
    Item item;
    item.kind = previewed.kind;
    item.path = previewed.path;
    return item;
}

Item remaining(Item item, const std::string& why)
{
    item.result = Result::Remains;
    item.why = why;
    return item;
}

Item madeItem(const Preview::Item& previewed, const std::string& endedAt)
{
    Item item = newItem(previewed);
    // with its closing slash the path leads through a link, as the making did
    const auto now = lookUp(previewed.path);
    if (!now)
    {
        return previewed.isRemovedAgain && !isThere(withoutSlash(previewed.path))
                   ? item
                   : remaining(item, whyItRemains(previewed, endedAt));
    }
    item.mode = now->mode;
    item.result = previewed.outlook == Outlook::Done ? Result::Done : Result::WasSo;
    if (previewed.outlook == Outlook::NotReached)
    {
        return endedAt.empty() ? item : remaining(item, whyItRemains(previewed, endedAt));
    }
    if (now->mode != previewed.mode)
    {
        const std::string obstacle = obstacleToMaking(previewed.path);
        return remaining(item, "its mode is " + octal(now->mode) + " in place of " + octal(previewed.mode) +
                                   (obstacle.empty() ? "" : ": ") + obstacle);
    }
    return item;
}

/// `isSame`: what is there was there before.
Item removedItem(const Preview::Item& previewed, bool wasThere, bool isSame, const std::string& endedAt)
{
    Item item = newItem(previewed);
    const std::string path = withoutSlash(previewed.path);
    if (previewed.outlook == Outlook::Fails && !isThere(directoryAbove(path) + '/'))
    {
        // a link on the way is gone, and what it led to not
        return remaining(item, previewed.why);
    }
    item.result = wasThere ? Result::Done : Result::WasSo;
    if (!isThere(path) || (previewed.isMadeAgain && !isSame))
    {
        return item;
    }
    return remaining(item, isSame || !lookUp(path) ? whyItRemains(previewed, endedAt)
                                                   : "a new one of this name is there");
}

void count(const Preview& preview, Receipt& receipt, ProgressCounter& progress)
{
    std::set<std::pair<dev_t, ino_t>> made; // some of them stand where others were removed
    for (const auto& entry : preview.made)
    {
        progress.count();
        const auto now = lookUp(entry.path);
        if (!entry.isThere && now && now->kind == EntryKind::Directory)
        {
            ++receipt.directoriesMade;
            made.emplace(now->device, now->number);
        }
    }
    for (const auto& removed : preview.removed)
    {
        progress.count();
        const auto now = lookUp(removed.path);
        const bool stays = now ? now->kind == removed.kind && !made.contains({now->device, now->number})
                               : !meansAbsence(errno);
        if (stays)
        {
            continue;
        }
        switch (removed.kind)
        {
        case EntryKind::Directory:
            ++receipt.directoriesRemoved;
            break;
        case EntryKind::File:
            ++receipt.filesRemoved;
            receipt.bytesRemoved += removed.bytes;
            break;
        default:
            ++receipt.othersRemoved;
            break;
        }
    }
}

} // namespace

Receipt::Before::Before(const Preview& preview)
{
    for (const auto& item : preview.items)
    {
        _identities.push_back(identityOf(withoutSlash(item.path)));
    }
}

Receipt::Before::Identity Receipt::Before::identityOf(const std::string& path)
{
    const auto entry = lookUp(path);
    return entry ? Identity{entry->device, entry->number, entry->born} : Identity{};
}

bool Receipt::isComplete() const
{
    return std::ranges::none_of(items, [](const Item& item) { return item.result == Result::Remains; });
}

Receipt receiptOf(const Preview& preview, const Receipt::Before& before, const Progress& progress)
{
    using Identity = Receipt::Before::Identity;
    Receipt receipt;
    ProgressCounter counter(progress);
    const std::string endedAt = whereItEnded(preview);
    for (std::size_t i = 0; i < preview.items.size(); ++i)
    {
        counter.count();
        const auto& previewed = preview.items[i];
        const std::string path = withoutSlash(previewed.path);
        const Identity& identity = before._identities[i];
        receipt.items.push_back(previewed.kind == Kind::MakeDirectory
                                    ? madeItem(previewed, endedAt)
                                    : removedItem(previewed, identity != Identity{},
                                                  identity == Receipt::Before::identityOf(path), endedAt));
    }
    count(preview, receipt, counter);
    return receipt;
}

} // namespace zolhost
