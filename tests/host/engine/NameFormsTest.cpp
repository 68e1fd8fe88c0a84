#include "engine/NameForms.h"

#include "support/TemporaryTree.h"

#include <gtest/gtest.h>
#include <string>

using namespace zolhost;

namespace
{

const std::string root = "ManagedElement=1,SystemFunctions=1,FileM=1";

} // namespace

TEST(NameForms, AreThoseOfTheComponent)
{
    struct Case
    {
        std::string onDisk;
        std::string asFileGroup;
        std::string asFileInformation;
    };
    const Case cases[] = {
        {"plain", "plain", "plain"},
        {"a+b", "a\\2Bb", "a?\?b"},
        {"c++;", "c\\2B\\2B?\?", "c?\?\?\?\?\?"},
        {"a+b,c", "a\\2Bb?\?c", "a?\?b?\?c"},
        {"a=b", "a?\?b", "a?\?b"},
        {"<t>", "?\?t?\?", "?\?t?\?"},
        {"a\\b", "a?\?b", "a?\?b"},
        {"a\\nb", "a?\?b", "a?\?b"},
        {"\\\\n", "?\?\?\?", "?\?\?\?"},
        {"x\\2By", "x?\?2By", "x?\?2By"},
        {"a?b", "a?b", "a?b"},
        {"\"quoted\"", "quoted", "?\?quoted?\?"},
        {"\"\"", "", "?\?\?\?"},
        {"\"", "?\?", "?\?"},
        {"\"esc\\\"", "?\?esc?\?\?\?", "?\?esc?\?\?\?"},
        {"\"esc\\\\\"", "esc?\?\?\?", "?\?esc?\?\?\?\?\?"},
        {"  padded  ", "padded", "  padded  "},
        {" \"q\" ", "?\?q?\?", " ?\?q?\? "},
        {"two\nlines", "two\nlines", "two\nlines"},
        {"a\xD6\xD6\xD6\xF1+", "a\\2B\\2B", "a\xD6\xD6\xD6\xF1?\?"},
    };
    for (const auto& [onDisk, asFileGroup, asFileInformation] : cases)
    {
        EXPECT_EQ(fileGroupValueOf(onDisk), asFileGroup) << onDisk;
        EXPECT_EQ(fileInformationValueOf(onDisk), asFileInformation) << onDisk;
    }
    EXPECT_EQ(directoryNameOf("a\\2Bb\\2bc\\2C"), "a+b+c\\2C");
}

TEST(NameForms, GiveThePathThatTheComponentTakesADnFor)
{
    struct Case
    {
        std::string dn;
        std::string path;
    };
    const Case cases[] = {
        {root, "/fs"},
        {root + ",FileMConfigData=1", "/fs"},
        {root + ",FileGroup=logs", "/fs/logs"},
        {root + ",FileGroup=logs,FileGroup=a\\2Bb", "/fs/logs/a+b"},
        {root + ",FileGroup=logs,FileGroup=a\\2bb,FileInformation=c\\2Bd.txt", "/fs/logs/a+b/c\\2Bd.txt"},
        {root + ",FileGroup=a,FileInformation=FileGroup\\2Bx", "/fs/a/FileGroup+x"},
        {root + ",FileGroup=a,b", "/fs/a"},
        {root + ",FileGroup=a=b", "/fs/a=b"},
        {root + ",FileInformation=x", "/fs"},
        {root + ",FileGroup=a,Other=b", "/a/b"},
        {root + ",FileGroup=a,FileInformation=f,Other=b", "/a/f/b"},
        {root + ",FileGroup=a,Other=b,FileInformation=f", "/fs/a/b/f"},
        {root + ",FileGroup=..,Other=b", "/b"},
    };
    for (const auto& [dn, path] : cases)
    {
        EXPECT_EQ(pathOfDn(dn, "/fs"), path) << dn;
    }
}

TEST(NameForms, GiveThePathThatADeletionComesUponFirst)
{
    const zoltest::TemporaryTree tree;
    tree.file("d/a*b");
    tree.file("d/a;b");
    tree.file("d/e?\?f");
    tree.directory("x=y");
    tree.directory("z");
    const auto found = [&](const std::string& below) { return pathToDelete(root + below, tree.path()); };
    EXPECT_EQ(found(",FileGroup=d,FileInformation=a?\?b"), tree.path("d/a;b"));
    EXPECT_EQ(found(",FileGroup=d,FileInformation=e?\?f"), tree.path("d/e?\?f"));
    EXPECT_EQ(found(",FileGroup=x?\?y"), tree.path("x=y"));
    EXPECT_EQ(found(",FileGroup=z?\?y"), tree.path("z")) << "a comma ends the value";
    EXPECT_EQ(found(",FileGroup=d,FileInformation=..?\?x"), tree.path()) << "what it leaves is resolved";
    EXPECT_EQ(found(",FileGroup=z,FileInformation=?\?"), tree.path("z"))
        << "an empty part counts for nothing";
    EXPECT_EQ(found(",FileGroup=none?\?"), tree.path("none?\?"));
    EXPECT_EQ(found(",FileGroup=" + tree.path("d").substr(1) + ",FileInformation=a*b?\?Other=."),
              tree.path("d/a*b"))
        << "what is behind a comma is no longer below the root";
}
