#include "DirectoryEntries.h"

#include "Faults.h"
#include "support/TemporaryTree.h"

#include <cerrno>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <memory>
#include <string>
#include <sys/stat.h>
#include <vector>

using namespace testing;
using ZolFileManagement::DirectoryEntries;

namespace zoltest
{

namespace
{

using Texts = std::vector<std::string>;

Texts rest(DirectoryEntries& entries)
{
    Texts names;
    for (; !entries.isAtEnd(); entries.advance())
    {
        names.emplace_back(entries.name());
    }
    return names;
}

Texts namesIn(const std::string& directory)
{
    DirectoryEntries entries;
    EXPECT_TRUE(entries.open(directory));
    return rest(entries);
}

Texts asTheCLibraryReads(const std::string& directory)
{
    Texts names;
    const std::unique_ptr<DIR, int (*)(DIR*)> stream(::opendir(directory.c_str()), ::closedir);
    while (const dirent* entry = ::readdir(stream.get()))
    {
        const std::string name = static_cast<const char*>(entry->d_name);
        if (name != "." && name != "..")
        {
            names.push_back(name);
        }
    }
    return names;
}

} // namespace

TEST(DirectoryEntries, AreAllButSelfAndParent)
{
    const TemporaryTree tree;
    for (const char* name : {"a", ".a", "...", "..a", "b/c"})
    {
        tree.file(name);
    }
    EXPECT_THAT(namesIn(tree.path()), UnorderedElementsAre("a", ".a", "...", "..a", "b"));
    EXPECT_THAT(namesIn(tree.directory("empty")), IsEmpty());
}

TEST(DirectoryEntries, ComeInTheOrderOfTheDirectoryHoweverManyThereAre)
{
    const TemporaryTree tree;
    for (int i = 0; i < 700; ++i)
    {
        tree.file(std::to_string(i) + std::string(static_cast<std::size_t>(i) % 250, 'n'));
    }
    const Texts names = namesIn(tree.path());
    EXPECT_THAT(names, SizeIs(700));
    EXPECT_EQ(names, asTheCLibraryReads(tree.path()));
}

TEST(DirectoryEntries, WithoutANumberAreDeletedOnes)
{
    const TemporaryTree tree;
    tree.file("deleted");
    tree.file("left");
    Faults faults;
    faults.entryRead = [](dirent64& entry) {
        if (std::string(static_cast<const char*>(entry.d_name)) == "deleted")
        {
            entry.d_ino = 0;
        }
    };
    EXPECT_THAT(namesIn(tree.path()), ElementsAre("left"));
}

TEST(DirectoryEntries, SayWhatTheyAreOrNothing)
{
    const TemporaryTree tree;
    tree.file("f");
    tree.directory("d");
    tree.link("l", "d");
    DirectoryEntries entries;
    ASSERT_TRUE(entries.open(tree.path()));
    for (; !entries.isAtEnd(); entries.advance())
    {
        const std::string name = entries.name();
        const mode_t type = name == "f" ? S_IFREG : name == "d" ? S_IFDIR : S_IFLNK;
        EXPECT_THAT(entries.type(), AnyOf(type, 0U)) << name;
    }
}

TEST(DirectoryEntries, AreThoseOfATextInEitherForm)
{
    const TemporaryTree tree;
    tree.file("d/f");
    EXPECT_THAT(namesIn(tree.path("d")), ElementsAre("f"));
    EXPECT_THAT(namesIn(tree.path("d") + "/"), ElementsAre("f"));
    EXPECT_THAT(namesIn("/"), Contains("dev"));
}

TEST(DirectoryEntries, CantBeHadWhereThereIsNoDirectory)
{
    const TemporaryTree tree;
    struct
    {
        std::string text;
        int reason;
    } const cases[] = {{tree.path("missing"), ENOENT}, {tree.file("f"), ENOTDIR}, {"", ENOENT}};
    for (const auto& row : cases)
    {
        DirectoryEntries entries;
        EXPECT_FALSE(entries.open(row.text));
        EXPECT_EQ(errno, row.reason);
        EXPECT_TRUE(entries.isAtEnd());
    }
}

TEST(DirectoryEntries, HoldTheDirectoryUntilTheyAreClosed)
{
    const TemporaryTree tree;
    tree.file("f");
    DirectoryEntries closed;
    EXPECT_TRUE(closed.isAtEnd());
    {
        DirectoryEntries left;
        left.open(tree.path());
        closed.open(tree.path());
        rest(left);
        EXPECT_EQ(tree.openDescriptors(), 2);
        closed.close();
        EXPECT_TRUE(closed.isAtEnd());
        EXPECT_EQ(tree.openDescriptors(), 1);
    }
    EXPECT_EQ(tree.openDescriptors(), 0);
}

TEST(DirectoryEntries, EndWhereTheDirectoryCantBeReadOn)
{
    const TemporaryTree tree;
    tree.file("f");
    DirectoryEntries whole;
    ASSERT_TRUE(whole.open(tree.path()));
    rest(whole);
    EXPECT_FALSE(whole.isCutShort());

    Faults faults;
    faults.getdents = [] { return EIO; };
    DirectoryEntries entries;
    EXPECT_TRUE(entries.open(tree.path()));
    EXPECT_TRUE(entries.isAtEnd());
    EXPECT_TRUE(entries.isCutShort());
}

} // namespace zoltest
