#include "Links.h"

#include "support/RecordedLog.h"
#include "support/TemporaryTree.h"

#include <Poco/Path.h>
#include <cerrno>
#include <gmock/gmock.h>
#include <gtest/gtest.h>

using testing::ElementsAre;
using testing::IsEmpty;
using ZolFileManagement::isLink;
using zoltest::RecordedLog;
using zoltest::TemporaryTree;

namespace
{

Poco::Path asDirectory(const std::string& text)
{
    return Poco::Path(text).makeDirectory();
}

} // namespace

TEST(Links, FilesAndDirectoriesAreNone)
{
    const TemporaryTree tree;
    EXPECT_FALSE(isLink(tree.file("f")));
    EXPECT_FALSE(isLink(tree.directory("d")));
    EXPECT_FALSE(isLink(asDirectory(tree.path("d"))));
}

TEST(Links, LinkIsOneWhateverItsTarget)
{
    const TemporaryTree tree;
    tree.file("f");
    tree.directory("d");
    EXPECT_TRUE(isLink(tree.link("toFile", "f")));
    EXPECT_TRUE(isLink(tree.link("toDirectory", "d")));
    EXPECT_TRUE(isLink(tree.link("dangling", "missing")));
    EXPECT_TRUE(isLink(tree.link("loop", "loop")));
}

TEST(Links, LinkInDirectoryFormIsOne)
{
    const TemporaryTree tree;
    tree.directory("d");
    EXPECT_TRUE(isLink(asDirectory(tree.link("toDirectory", "d"))));
    EXPECT_TRUE(isLink(asDirectory(tree.link("dangling", "missing"))));
}

TEST(Links, ThePathGivenKeepsItsForm)
{
    const TemporaryTree tree;
    const Poco::Path path = asDirectory(tree.directory("d"));
    isLink(path);
    EXPECT_EQ(path.toString(), tree.path("d") + "/");
}

TEST(Links, WhatCanNotBeExaminedIsNoneAndTraced)
{
    const TemporaryTree tree;
    const std::string missing = tree.path("missing");
    const std::string belowFile = tree.file("f") + "/x";

    const RecordedLog log;
    EXPECT_FALSE(isLink(asDirectory(missing)));
    EXPECT_FALSE(isLink(belowFile));
    EXPECT_THAT(
        log.statements(),
        ElementsAre("plain Warning: could not stat " + missing + ", reason :" + std::to_string(ENOENT),
                    "plain Warning: could not stat " + belowFile + ", reason :" + std::to_string(ENOTDIR)));
}

TEST(Links, WhatCanBeExaminedIsNotTraced)
{
    const TemporaryTree tree;
    const RecordedLog log;
    isLink(tree.file("f"));
    isLink(tree.link("l", "f"));
    EXPECT_THAT(log.statements(), IsEmpty());
}
