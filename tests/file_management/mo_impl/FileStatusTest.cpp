#include "FileStatus.h"

#include "SpecialFiles.h"
#include "support/TemporaryTree.h"
#include "support/WorkingDirectory.h"

#include <Poco/Exception.h>
#include <gtest/gtest.h>

using ZolFileManagement::FileStatus;

namespace zoltest
{

TEST(FileStatus, IsThatOfWhatALinkLeadsTo)
{
    const TemporaryTree tree;
    tree.file("f", "12345");
    tree.directory("d");
    makePipe(tree.path("p"));
    struct
    {
        std::string path;
        bool exists;
        bool isDirectory;
    } const cases[] = {
        {tree.path("f"), true, false},
        {tree.path("d"), true, true},
        {tree.path("p"), true, false},
        {tree.link("toFile", "f"), true, false},
        {tree.link("toDirectory", "d"), true, true},
        {tree.link("toNothing", "none"), false, false},
        {tree.link("loop", "loop"), false, false},
        {tree.path("missing"), false, false},
        {tree.path("f/below"), false, false},
        {"/", true, true},
    };
    for (const auto& row : cases)
    {
        const FileStatus status{Poco::Path(row.path)};
        EXPECT_EQ(status.exists(), row.exists) << row.path;
        EXPECT_EQ(status.isDirectory(), row.isDirectory) << row.path;
    }
    EXPECT_EQ(FileStatus(Poco::Path(tree.path("toFile"))).size(), 5U);
}

TEST(FileStatus, IgnoresTheFormOfThePath)
{
    const TemporaryTree tree;
    const FileStatus file(Poco::Path(tree.file("f")).makeDirectory());
    EXPECT_TRUE(file.exists());
    EXPECT_FALSE(file.isDirectory());
    const WorkingDirectory here(tree.path());
    EXPECT_TRUE(FileStatus(std::string("f/")).exists());
}

TEST(FileStatus, OfAnEmptyPathIsAMistakeAsItIsToPoco)
{
    EXPECT_THROW(FileStatus{Poco::Path()}, Poco::AssertionViolationException);
    EXPECT_THROW(Poco::File(Poco::Path()).exists(), Poco::AssertionViolationException);
}

} // namespace zoltest
