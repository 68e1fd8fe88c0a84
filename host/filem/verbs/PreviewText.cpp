#include "filem/verbs/PreviewText.h"

#include "filem/Session.h"
#include "filem/output/Json.h"
#include "filem/output/PrintableText.h"
#include "filem/output/Quoting.h"
#include "filem/output/Sizes.h"
#include "filem/output/Totals.h"

#include <algorithm>
#include <ostream>
#include <set>
#include <string_view>
#include <vector>

namespace zolhost::filem
{

namespace
{

using Item = Preview::Item;

Totals totalsOf(const Preview& preview)
{
    Totals totals;
    totals.modesSet = static_cast<std::size_t>(
        std::ranges::count_if(preview.made, [](const auto& made) { return made.isThere; }));
    totals.directoriesMade = preview.made.size() - totals.modesSet;
    for (const auto& removed : preview.removed)
    {
        switch (removed.kind)
        {
        case EntryKind::Directory:
            ++totals.directoriesRemoved;
            break;
        case EntryKind::File:
            ++totals.filesRemoved;
            totals.bytesRemoved += removed.bytes;
            break;
        case EntryKind::Link:
        case EntryKind::Other:
            ++totals.othersRemoved;
            break;
        }
    }
    return totals;
}

std::string kindText(EntryKind kind)
{
    switch (kind)
    {
    case EntryKind::Directory:
        return "directory";
    case EntryKind::File:
        return "file";
    case EntryKind::Link:
        return "link";
    case EntryKind::Other:
        break;
    }
    return "other";
}

std::string outlookText(Item::Outlook outlook)
{
    switch (outlook)
    {
    case Item::Outlook::Done:
        return "done";
    case Item::Outlook::NothingToDo:
        return "nothing to do";
    case Item::Outlook::Fails:
        return "fails";
    case Item::Outlook::NotReached:
        break;
    }
    return "not reached";
}

std::string operationText(Item::Kind kind)
{
    switch (kind)
    {
    case Item::Kind::MakeDirectory:
        return "make directory";
    case Item::Kind::RemoveFile:
        return "remove file";
    case Item::Kind::RemoveTree:
        break;
    }
    return "remove tree";
}

/// "3 files (12K), 1 directory, 1 link".
std::string contentsText(const Contents& contents)
{
    std::string text;
    const auto add = [&](std::size_t count, const std::string& noun, const std::string& more = {}) {
        if (count != 0)
        {
            text += (text.empty() ? "" : ", ") + counted(count, noun) + more;
        }
    };
    add(contents.files, "file", " (" + humanSize(contents.bytes) + ")");
    add(contents.directories, "directory");
    add(contents.links, "link");
    add(contents.others, "special file");
    add(contents.markers.size(), "marker");
    return text;
}

class Writer
{
public:
    Writer(const Session& session, const Preview& preview)
        : _session(session)
        , _preview(preview)
    {
        for (const auto& item : preview.items)
        {
            const std::string_view path = item.path;
            _own.insert(path.ends_with('/') ? path.substr(0, path.size() - 1) : path);
        }
    }

    void print() const
    {
        for (const auto& item : _preview.items)
        {
            printItem(item);
        }
        for (const auto& made : _preview.made)
        {
            if (!isOwnItem(made.path))
            {
                line(Colour::New, "+", made.path + "/", modeText(made.mode) + "  on the way");
            }
        }
        for (const auto& cancelled : _preview.cancelled)
        {
            line(Colour::None, "=", cancelled.path,
                 cancelled.how == Plan::Cancelled::How::MadeThenRemoved
                     ? "made and removed again: nothing is done"
                     : "removed and made again: stays as it is, with its content");
        }
        _session.out() << totalsText(_preview) << '\n';
    }

private:
    void line(Colour colour, const char* sign, const std::string& path, const std::string& what) const
    {
        const std::string name = shownPath(path, _session.rootDirectory());
        _session.out() << _session.colours().paint(colour, sign + std::string(" ") + name) << "  " << what
                       << '\n';
    }

    void printItem(const Item& item) const
    {
        if (item.outlook == Item::Outlook::Fails || item.outlook == Item::Outlook::NotReached)
        {
            line(Colour::Warning, "!", item.path, printable(item.why));
        }
        switch (item.kind)
        {
        case Item::Kind::MakeDirectory:
            if (item.outlook == Item::Outlook::Done || item.outlook == Item::Outlook::NothingToDo)
            {
                line(item.outlook == Item::Outlook::Done ? Colour::New : Colour::None,
                     item.outlook == Item::Outlook::Done ? "+" : "=", item.path,
                     modeText(item.mode) + (item.why.empty() ? "" : "  " + printable(item.why)));
            }
            break;
        case Item::Kind::RemoveFile:
            if (item.outlook == Item::Outlook::Done)
            {
                line(Colour::Going, "-", item.path, humanSize(item.bytes));
            }
            break;
        case Item::Kind::RemoveTree:
            printTree(item);
            break;
        }
        if (item.kind != Item::Kind::MakeDirectory && item.outlook == Item::Outlook::NothingToDo)
        {
            line(Colour::None, "=", item.path, printable(item.why));
        }
    }

    void printTree(const Item& item) const
    {
        const std::string contents = contentsText(item.contents);
        if (item.outlook == Item::Outlook::Done)
        {
            line(Colour::Going, "-", item.path, contents.empty() ? "empty" : "with " + contents);
        }
        if (item.outlook == Item::Outlook::NotReached || item.outlook == Item::Outlook::NothingToDo)
        {
            return;
        }
        for (const auto& removed : goingAlong(item.path))
        {
            const bool isDirectory = removed.kind == EntryKind::Directory;
            line(Colour::Going, "  -", removed.path + (isDirectory ? "/" : ""),
                 isDirectory                       ? "directory"
                 : removed.kind == EntryKind::File ? humanSize(removed.bytes)
                                                   : kindText(removed.kind));
        }
    }

    /// What is removed below a directory.
    std::vector<Preview::Removed> goingAlong(const std::string& directory) const
    {
        std::vector<Preview::Removed> found;
        auto removed = std::ranges::lower_bound(_preview.removed, directory, {}, &Preview::Removed::path);
        for (; removed != _preview.removed.end() && removed->path.starts_with(directory); ++removed)
        {
            if (!isOwnItem(removed->path))
            {
                found.push_back(*removed);
            }
        }
        return found;
    }

    bool isOwnItem(const std::string& path) const { return _own.contains(path); }

    const Session& _session;
    const Preview& _preview;
    std::set<std::string_view> _own; // paths of items, without closing slashes
};

void printJson(const Session& session, const Preview& preview)
{
    for (const auto& item : preview.items)
    {
        Json object;
        object["kind"] = "item";
        object["operation"] = operationText(item.kind);
        setText(object, "path", item.path);
        object["outlook"] = outlookText(item.outlook);
        setText(object, "why", item.why);
        if (item.kind == Item::Kind::MakeDirectory)
        {
            object["mode"] = modeText(item.mode);
        }
        if (item.kind == Item::Kind::RemoveFile)
        {
            object["bytes"] = item.bytes;
        }
        if (item.kind == Item::Kind::RemoveTree)
        {
            object["files"] = item.contents.files;
            object["directories"] = item.contents.directories;
            object["links"] = item.contents.links;
            object["others"] = item.contents.others;
            object["bytes"] = item.contents.bytes;
            object["markers"] = Json::array();
            for (const auto& marker : item.contents.markers)
            {
                object["markers"].push_back(jsonOf(marker));
            }
        }
        session.out() << object.dump() << '\n';
    }
    for (const auto& made : preview.made)
    {
        Json object;
        object["kind"] = "made";
        setText(object, "path", made.path);
        object["mode"] = modeText(made.mode);
        object["isThere"] = made.isThere;
        session.out() << object.dump() << '\n';
    }
    for (const auto& removed : preview.removed)
    {
        Json object;
        object["kind"] = "removed";
        setText(object, "path", removed.path);
        object["entry"] = kindText(removed.kind);
        object["bytes"] = removed.bytes;
        session.out() << object.dump() << '\n';
    }
    for (const auto& cancelled : preview.cancelled)
    {
        Json object;
        object["kind"] = "cancelled";
        setText(object, "path", cancelled.path);
        object["how"] = cancelled.how == Plan::Cancelled::How::MadeThenRemoved ? "made, then removed"
                                                                               : "removed, then made";
        session.out() << object.dump() << '\n';
    }
}

} // namespace

ExitCode codeOf(const Preview& preview)
{
    if (!preview.isComplete())
    {
        return ExitCode::Remains;
    }
    return preview.changesNothing() ? ExitCode::Done : ExitCode::Failed;
}

std::string totalsText(const Preview& preview)
{
    const std::string text = textOf(totalsOf(preview), Tense::Future);
    return text.empty() ? "nothing changes" : text;
}

void print(const Session& session, const Preview& preview, bool isJson)
{
    if (isJson)
    {
        printJson(session, preview);
    }
    else
    {
        Writer(session, preview).print();
    }
}

} // namespace zolhost::filem
