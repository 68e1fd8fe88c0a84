#include "rig/AllWays.h"
#include "rig/Rows.h"
#include "rig/Tasks.h"
#include "support/MemoryFolder.h"
#include "support/TemporaryTree.h"

#include <algorithm>
#include <fstream>
#include <gtest/gtest.h>
#include <sys/stat.h>

namespace
{

using namespace zolbench;

constexpr std::size_t items = 300;

/// The library and all its yardsticks at work below one root.
class Ways : public ::testing::Test
{
protected:
    const Stage stage{zoltest::memoryFolder()};
    const Library library{Library::defaultFile(), stage.root()};
    const zolbench::Ways ways = allWays(library, stage.root());

    Way& way(const std::string& name) const
    {
        return **std::find_if(ways.begin(), ways.end(), [&](const auto& way) { return way->name() == name; });
    }
};

/// Everything in a tree with its mode and size, in no order of a directory.
std::vector<std::string> contentOf(const std::string& root)
{
    std::vector<std::string> lines;
    for (const auto& entry : std::filesystem::recursive_directory_iterator(root))
    {
        struct stat status
        {};
        EXPECT_EQ(::lstat(entry.path().c_str(), &status), 0);
        const auto size = S_ISREG(status.st_mode) ? status.st_size : 0;
        lines.push_back(entry.path().string() + ' ' + std::to_string(status.st_mode) + ' ' +
                        std::to_string(size));
    }
    std::sort(lines.begin(), lines.end());
    return lines;
}

struct Result
{
    Findings findings;
    std::vector<std::string> content;
};

/// Nothing where the way doesn't do such work.
std::optional<Result> resultOf(const Row& row, Way& way, const std::string& root)
{
    try
    {
        row.prepare(way);
        Result result;
        (way.*row.perform)(row.task, &result.findings);
        result.content = contentOf(root);
        return result;
    }
    catch (const NotOffered&)
    {
        return {};
    }
}

// Not all ways tell the details of a listing.
void expectSame(const Result& result, const Result& expected)
{
    EXPECT_EQ(result.findings.entries, expected.findings.entries);
    EXPECT_EQ(result.findings.number, expected.findings.number);
    EXPECT_EQ(result.content, expected.content);
    if (!result.findings.details.empty())
    {
        EXPECT_EQ(result.findings.details, expected.findings.details);
    }
}

TEST_F(Ways, AllFindTheSameAndLeaveTheSameOnDisk)
{
    for (const RowMaker& maker : rowMakers(stage))
    {
        const Row row = maker.make(items);
        const auto expected = resultOf(row, way("library"), stage.root());
        ASSERT_TRUE(expected) << row.work;
        for (const auto& other : ways)
        {
            SCOPED_TRACE(row.work + ", " + other->name());
            if (const auto result = resultOf(row, *other, stage.root()))
            {
                expectSame(*result, *expected);
            }
        }
    }
}

TEST_F(Ways, TheLibraryDoesTheWork)
{
    for (const RowMaker& maker : rowMakers(stage))
    {
        const Row row = maker.make(items);
        SCOPED_TRACE(row.work);
        const Result result = resultOf(row, way("library"), stage.root()).value();
        const bool isCreating = row.perform == &Way::create || row.perform == &Way::apply;
        const bool isRemoving = row.perform == &Way::remove || row.perform == &Way::removeMatching;
        const bool isListing = row.perform == &Way::browse || row.perform == &Way::files;
        if (isCreating || isRemoving)
        {
            const auto inDirectory =
                std::count_if(result.content.begin(), result.content.end(),
                              [&](const std::string& line) { return line.starts_with(row.task.path + '/'); });
            EXPECT_EQ(inDirectory, isCreating ? items : 0);
        }
        else if (isListing)
        {
            EXPECT_EQ(result.findings.entries.size(), items);
            EXPECT_EQ(result.findings.details.size(), row.perform == &Way::files ? items : 0);
        }
        else if (row.perform == &Way::checkEmpty)
        {
            EXPECT_EQ(result.findings.number, 1);
        }
        else if (row.perform != &Way::openAndClose)
        {
            EXPECT_GE(result.findings.number, items);
        }
    }
}

TEST_F(Ways, AllSeeAFileDeepInATreeThatIsToBeEmpty)
{
    const Task task = chainsIn(stage.root(), items, items);
    stage.empty(task);
    way("library").create(task, nullptr);
    std::ofstream(task.items.back().path + "/file");
    for (const auto& other : ways)
    {
        SCOPED_TRACE(other->name());
        Findings findings;
        findings.number = 1;
        other->checkEmpty(task, &findings);
        EXPECT_EQ(findings.number, 0);
    }
}

/// A tree of all kinds of entries, which the plain yardsticks don't tell apart as the rules do.
class KindsOfEntries : public Ways
{
protected:
    KindsOfEntries()
    {
        const std::filesystem::path directory = task.path;
        stage.empty(task);
        for (const char* name : {"plain.log", "a=b,c+d.tar.gz", "back\\slash\\n", ".hidden", "no extension.",
                                 ".filemnohousekeeping", ".filemnodirectorycreate2"})
        {
            std::ofstream(directory / name) << name;
        }
        std::filesystem::create_directory(directory / "below");
        std::filesystem::create_symlink(directory / "plain.log", directory / "link to file");
        std::filesystem::create_symlink(directory / "below", directory / "link to directory");
        EXPECT_EQ(::mkfifo((directory / "pipe").c_str(), 0600), 0);
    }

    void expectSameOf(Way::Work work) const
    {
        Findings expected;
        (way("library").*work)(task, &expected);
        EXPECT_FALSE(expected.entries.empty() && expected.number == 0);
        for (const char* name : {"strict", "literal"})
        {
            SCOPED_TRACE(name);
            Findings findings;
            (way(name).*work)(task, &findings);
            EXPECT_EQ(findings, expected);
        }
    }

    const Task task = filesIn(stage.root(), 0);
};

TEST_F(KindsOfEntries, AreBrowsedAlike)
{
    std::filesystem::create_symlink("nothing", task.path + "/link to nothing");
    expectSameOf(&Way::browse);
}

TEST_F(KindsOfEntries, AreCountedAlike)
{
    std::filesystem::create_symlink("nothing", task.path + "/link to nothing");
    expectSameOf(&Way::count);
}

TEST_F(KindsOfEntries, AreListedAlike)
{
    expectSameOf(&Way::files);
}

TEST_F(KindsOfEntries, AreRemovedAlike)
{
    std::vector<std::vector<std::string>> left;
    for (const char* name : {"library", "strict", "literal"})
    {
        std::ofstream(task.path + "/plain.log");
        std::ofstream(task.path + "/.hidden");
        way(name).removeMatching(task, nullptr);
        left.push_back(contentOf(task.path));
    }
    EXPECT_EQ(left[1], left[0]);
    EXPECT_EQ(left[2], left[0]);
    EXPECT_FALSE(std::filesystem::exists(task.path + "/plain.log"));
}

} // namespace
