#include "LiteralPath.h"

#include <Poco/Path.h>
#include <gtest/gtest.h>

using ZolFileManagement::literalPath;

TEST(LiteralPath, OrdinaryTextGivesThePathThatPocoReadsFromIt)
{
    for (const char* text :
         {"",       "/",        "//",  "a",       "a/",       "/a",      "/a/",    "/a/b", "/a//b/", "//a",
          "/a/./b", "/a/../b",  "/..", "/../",    "/../a",    "/a/..",   "/a/../", "/a/.", "/a/...", "..",
          "../",    "../../a/", "./a", "a/../..", "a/../../", "/a b/ c", "/a\\b",  "/a*b?"})
    {
        const Poco::Path path = literalPath(text);
        const Poco::Path expected(text);
        EXPECT_EQ(path.toString(), expected.toString()) << text;
        EXPECT_EQ(path.isAbsolute(), expected.isAbsolute()) << text;
        EXPECT_EQ(path.isDirectory(), expected.isDirectory()) << text;
        EXPECT_EQ(path.depth(), expected.depth()) << text;
        EXPECT_EQ(path.getFileName(), expected.getFileName()) << text;
    }
}

TEST(LiteralPath, TildeAndColonAreCharactersLikeAnyOther)
{
    for (const char* text : {"/~", "/~/", "~", "~/", "~/a", "~root/a", "/~root/", "/a:", "/a:/", "/a:/b",
                             "a:", "a:/", "a:/b", "/:/", ":/", "/a:b/c:/"})
    {
        const Poco::Path path = literalPath(text);
        EXPECT_EQ(path.toString(), text);
        EXPECT_EQ(path.isAbsolute(), *text == '/') << text;
        EXPECT_EQ(path.getDevice(), "") << text;
    }
}

TEST(LiteralPath, TextThatEndsInASlashIsADirectory)
{
    EXPECT_TRUE(literalPath("/a/").isDirectory());
    EXPECT_TRUE(literalPath("/a").isFile());
    EXPECT_EQ(literalPath("/a/b").getFileName(), "b");
}
