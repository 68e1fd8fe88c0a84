#include "SpecialFiles.h"
#include "WalkFixture.h"

#include <Poco/String.h>
#include <functional>

using namespace testing;

namespace zoltest
{

namespace
{

using EntryKinds = Walk;

enum class Kind
{
    File,
    Directory,
    Nothing
};

// What a walk makes of the one entry of a directory.
struct EntryCase
{
    const char* description;
    const char* name;
    std::function<void(const TemporaryTree&, const std::string& name)> make;
    Kind kind;
    const char* log = ""; // with {link} and {tree} for the path of the entry and that of the tree
};

const auto makeFile = [](const TemporaryTree& tree, const std::string& name) { tree.file(name); };
const auto makeDirectory = [](const TemporaryTree& tree, const std::string& name) { tree.directory(name); };

std::function<void(const TemporaryTree&, const std::string&)> makeLinkTo(const std::string& target)
{
    return [=](const TemporaryTree& tree, const std::string& name) { tree.link(name, tree.path(target)); };
}

constexpr const char* dangling =
    "severity-4 Link <{link}> refers to a non existing target <{tree}/nowhere>, treated as a file";

const EntryCase entryCases[] = {
    {"regular file", "f", makeFile, Kind::File},
    {"dot file", ".profile", makeFile, Kind::File},
    {"housekeeping marker", ".filemnohousekeeping", makeFile, Kind::Nothing},
    {"create marker", ".filemnodirectorycreate", makeFile, Kind::Nothing},
    {"delete marker", ".filemnodirectorydelete", makeFile, Kind::Nothing},
    {"file whose name begins with a marker's", ".filemnohousekeeping2", makeFile, Kind::File},
    {"file whose name ends with a marker's", "x.filemnohousekeeping", makeFile, Kind::File},
    {"file with a marker's name in capitals", ".FILEMNOHOUSEKEEPING", makeFile, Kind::File},
    {"directory", "d", makeDirectory, Kind::Directory},
    {"dot directory", ".d", makeDirectory, Kind::Directory},
    {"directory with a marker's name", ".filemnohousekeeping", makeDirectory, Kind::Directory},
    {"pipe", "p", [](const auto& tree, const auto& name) { makePipe(tree.path(name)); }, Kind::Nothing},
    {"socket", "s", [](const auto& tree, const auto& name) { makeSocket(tree.path(name)); }, Kind::Nothing},
    {"link to a directory", "l", makeLinkTo("targets/directory"), Kind::Directory},
    {"link to a directory, with a marker's name", ".filemnohousekeeping", makeLinkTo("targets/directory"),
     Kind::Directory},
    {"link to a link to a directory", "l", makeLinkTo("targets/toDirectory"), Kind::Directory},
    {"link to a regular file", "l", makeLinkTo("targets/file"), Kind::Nothing},
    {"link to a link to a regular file", "l", makeLinkTo("targets/toFile"), Kind::Nothing},
    {"link to a marker", "l", makeLinkTo("targets/.filemnohousekeeping"), Kind::Nothing},
    {"link to nothing", "l", makeLinkTo("nowhere"), Kind::Nothing, dangling},
    {"link to nothing, with a marker's name", ".filemnohousekeeping", makeLinkTo("nowhere"), Kind::Nothing,
     dangling},
    {"link to a link to nothing", "l", makeLinkTo("targets/toNothing"), Kind::Nothing,
     "severity-4 Link <{link}> refers to a non existing target <{tree}/targets/toNothing>, treated as a "
     "file"},
    {"link to itself", "loop", makeLinkTo("entries/link to itself/loop"), Kind::Nothing,
     "severity-4 Link <{link}> refers to a non existing target <{link}>, treated as a file"},
    {"link to a pipe", "l", makeLinkTo("targets/pipe"), Kind::Nothing,
     "severity-4 Link <{link}> refers to a link <{tree}/targets/pipe>, treated as a file"},
    {"link to a socket", "l", makeLinkTo("targets/socket"), Kind::Nothing,
     "severity-4 Link <{link}> refers to a link <{tree}/targets/socket>, treated as a file"},
    {"link to a link to a pipe", "l", makeLinkTo("targets/toPipe"), Kind::Nothing,
     "severity-4 Link <{link}> refers to a link <{tree}/targets/toPipe>, treated as a file"},
    {"link to a device", "l", [](const auto& tree, const auto& name) { tree.link(name, "/dev/null"); },
     Kind::Nothing, "severity-4 Link <{link}> refers to a link </dev/null>, treated as a file"},
};

void makeTargets(const TemporaryTree& tree)
{
    tree.directory("targets/directory");
    tree.file("targets/file");
    tree.file("targets/.filemnohousekeeping");
    makePipe(tree.path("targets/pipe"));
    makeSocket(tree.path("targets/socket"));
    tree.link("targets/toDirectory", tree.path("targets/directory"));
    tree.link("targets/toFile", tree.path("targets/file"));
    tree.link("targets/toPipe", tree.path("targets/pipe"));
    tree.link("targets/toNothing", tree.path("nowhere"));
}

Texts expectedEntries(const EntryCase& row, bool iterateFiles, const std::string& entry)
{
    if (iterateFiles)
    {
        return row.kind == Kind::File ? Texts{entry} : Texts{};
    }
    return row.kind == Kind::Directory ? Texts{entry + "/"} : Texts{};
}

Texts expectedLog(const EntryCase& row, const TemporaryTree& tree, const std::string& entry)
{
    const std::string withLink = Poco::replace(std::string(row.log), "{link}", tree.path(entry).c_str());
    const std::string text = Poco::replace(withLink, "{tree}", tree.path().c_str());
    return text.empty() ? Texts{} : Texts{text};
}

TEST_F(EntryKinds, DecideWhatAWalkYieldsAndRemembersAndWrites)
{
    makeTargets(tree);
    for (const EntryCase& row : entryCases)
    {
        const std::string parent = std::string("entries/") + row.description;
        const std::string entry = parent + "/" + row.name;
        tree.directory(parent);
        row.make(tree, entry);

        for (const bool iterateFiles : {true, false})
        {
            for (const bool before : {true, false})
            {
                SCOPED_TRACE(std::string(row.description) + ", a walk of " +
                             (iterateFiles ? "files" : "directories") + " that remembers " +
                             (before ? "a file" : "no file"));
                const RecordedLog log;
                Iterator iterator = open(parent, iterateFiles);
                iterator._lastIsFile = before;

                EXPECT_EQ(rest(iterator), expectedEntries(row, iterateFiles, entry));
                EXPECT_EQ(iterator._lastIsFile, row.kind == Kind::Nothing ? before : row.kind == Kind::File);
                EXPECT_EQ(log.statements(), expectedLog(row, tree, entry));
            }
        }
    }
}

TEST_F(EntryKinds, DevicesAreNeitherFilesNorDirectories)
{
    Iterator inFiles(Poco::Path("/dev/"), changes, files);
    EXPECT_THAT(rest(inFiles), Not(Contains("/dev/null")));

    Iterator inDirectories(Poco::Path("/dev/"), changes, directories);
    EXPECT_THAT(rest(inDirectories), Not(Contains("/dev/null/")));
}

} // namespace

} // namespace zoltest
