#include "engine/Vetting.h"

#include "engine/ConfigurationText.h"
#include "engine/Host.h"
#include "engine/Refusal.h"
#include "support/DistinguishedNames.h"
#include "support/LoadedLibrary.h"
#include "support/TemporaryTree.h"

#include <filesystem>
#include <functional>
#include <gtest/gtest.h>
#include <memory>
#include <string>

using namespace zolhost;
using zoltest::fileGroup;
using zoltest::fileInformation;
using zoltest::LoadedLibrary;
using zoltest::TemporaryTree;

namespace
{

const std::string root = "ManagedElement=1,SystemFunctions=1,FileM=1";

std::string outcomeOf(const std::function<void()>& check)
{
    try
    {
        check();
        return "fine";
    }
    catch (const Refusal& refusal)
    {
        const char* const kinds[] = {"bad name: ", "missing: ", "refused: "};
        return kinds[static_cast<int>(refusal.kind())] + std::string(refusal.what());
    }
}

std::string quoted(const std::string& text)
{
    return '"' + text + '"';
}

class Vetting : public testing::Test
{
protected:
    Vetting()
        : host({LoadedLibrary::path(), configurationFor(tree.path()), {}})
        , transaction(host.begin())
        , objects(host.objects(*transaction))
    {}

    std::string object(const std::string& dn)
    {
        return outcomeOf([&] { vetting::requireObject(objects, DistinguishedName::parse(dn)); });
    }
    std::string found(const std::string& dn)
    {
        return outcomeOf([&] { vetting::requireFound(objects, DistinguishedName::parse(dn)); });
    }

    TemporaryTree tree;
    Host host;
    std::unique_ptr<Transaction> transaction;
    ManagedObjects objects;
};

} // namespace

TEST_F(Vetting, KnowsTheFixedObjectsItself)
{
    EXPECT_EQ(object(root), "fine");
    EXPECT_EQ(object("FileMConfigData=1"), "fine");
    EXPECT_EQ(found("FileMConfigData=1"), "fine");
}

TEST_F(Vetting, WantsAnObjectUnderExactlyThisName)
{
    tree.file("d/f");
    tree.file("d/.filemnohousekeeping");
    tree.file("a=b/f");
    tree.file("d/g=h");
    tree.link("d/nowhere", "missing");
    EXPECT_EQ(object("FileGroup=d"), "fine");
    EXPECT_EQ(object("FileGroup=d,FileInformation=f"), "fine");
    EXPECT_EQ(object("FileGroup=a=b"), "fine");
    EXPECT_EQ(object("FileGroup=a?\?b"), "missing: no such object");
    EXPECT_EQ(object("FileGroup=d,FileInformation=g?\?h"), "missing: no such object");
    EXPECT_EQ(object("FileGroup=e"), "missing: no such object");
    EXPECT_EQ(object("FileGroup=d,FileGroup=f"), "missing: no such object");
    EXPECT_EQ(object("FileGroup=d,FileInformation=g"), "missing: no such object");
    EXPECT_EQ(object("FileGroup=d,FileInformation=.filemnohousekeeping"), "missing: no such object");
    EXPECT_EQ(object("FileGroup=d,FileInformation=nowhere"), "missing: no such object");
}

TEST_F(Vetting, TakesWhatTheComponentListsThoughItDeniesIt)
{
    tree.file(".../...");
    EXPECT_FALSE(objects.exists(root + ",FileGroup=..."));
    EXPECT_EQ(object("FileGroup=..."), "fine");
    EXPECT_EQ(object("FileGroup=...,FileInformation=..."), "fine");
    EXPECT_EQ(object("FileGroup=...,FileGroup=..."), "missing: no such object");
}

TEST_F(Vetting, WantsNoDirectoryUnderTheNameOfAFile)
{
    tree.file("d/sub/f");
    tree.file("d/.../f");
    tree.link("d/link", tree.path("d/sub"));
    for (const std::string name : {"sub", "...", "link"})
    {
        EXPECT_EQ(object("FileGroup=d,FileInformation=" + name), "refused: it is a directory");
        EXPECT_EQ(found("FileGroup=d,FileInformation=" + name), "refused: it is a directory");
    }
}

TEST_F(Vetting, FindsWhatASubstituteStandsFor)
{
    tree.file("d/a=b");
    tree.file("d/c\\nd");
    tree.file("x=y/z#");
    tree.file("x=y/z=z");
    tree.directory("g<");
    tree.directory("e=");
    tree.file("d/i?\?j");
    EXPECT_EQ(found("FileGroup=d,FileInformation=a?\?b"), "fine");
    EXPECT_EQ(found("FileGroup=d,FileInformation=c?\?d"), "fine");
    EXPECT_EQ(found("FileGroup=x?\?y,FileInformation=z?\?"), "missing: no such object")
        << "one character serves for all";
    EXPECT_EQ(found("FileGroup=x?\?y,FileInformation=z?\?z"), "fine");
    EXPECT_EQ(found("FileGroup=g?\?"), "fine");
    EXPECT_EQ(found("FileGroup=e?\?"), "fine") << "though the component denies it under its full name";
    EXPECT_EQ(found("FileGroup=d,FileInformation=i?\?j"), "fine") << "the name itself";
    EXPECT_EQ(found("FileGroup=d,FileInformation=h?\?i"), "missing: no such object");
    EXPECT_EQ(found("FileGroup=d,FileInformation=a"), "missing: no such object");
}

TEST_F(Vetting, RefusesASearchThatMayComeUponADirectoryForAFile)
{
    int number = 0;
    for (const std::string character : {"\\n", "\\r", "=", "+", "<", ">", "#", ";", "\\", "\"", "*", "?\?"})
    {
        for (const std::string behind : {"b", "", ".", "2Bx"})
        {
            const std::string parent = "d" + std::to_string(++number);
            std::string name = "e";
            name += character;
            name += behind;
            tree.directory((std::filesystem::path(parent) / name).string());
            EXPECT_EQ(found(fileInformation("e?\?" + behind, fileGroup(parent))),
                      "refused: it may be a directory")
                << name;
        }
    }
}

TEST_F(Vetting, RefusesASearchThatMayComeUponAFileForADirectory)
{
    tree.file("d/a=b");
    tree.directory("d/a#b");
    EXPECT_EQ(found("FileGroup=d,FileGroup=a?\?b"), "refused: it may be a file");
}

TEST_F(Vetting, RefusesASearchThatMayComeUponWhatACommaLeavesOfTheName)
{
    tree.file("d/a=b");
    tree.file("d/c=d");
    tree.file("x=y/f");
    tree.directory("d/a");
    tree.file("d/c");
    tree.file("x/f");
    tree.directory("d/e=");
    const std::string why =
        "refused: " + quoted("?\?") + " may stand for a comma, which ends a value, and then " + root;
    EXPECT_EQ(found("FileGroup=d,FileInformation=a?\?b"), why + ",FileGroup=d,FileInformation=a is meant");
    EXPECT_EQ(found("FileGroup=d,FileInformation=c?\?d"), why + ",FileGroup=d,FileInformation=c is meant");
    EXPECT_EQ(found("FileGroup=d,FileGroup=a?\?b"), why + ",FileGroup=d,FileGroup=a is meant");
    EXPECT_EQ(found("FileGroup=x?\?y,FileInformation=f"), why + ",FileGroup=x,FileInformation=f is meant");
    EXPECT_EQ(found("FileGroup=d,FileGroup=e=?\?b"), why + ",FileGroup=d,FileGroup=e= is meant");
}

TEST_F(Vetting, AsksForNothingThatTheModelDoesNotOffer)
{
    const auto root1 = DistinguishedName();
    const auto config = DistinguishedName::parse("FileMConfigData=1");
    const auto group = DistinguishedName::parse("FileGroup=d");
    const auto file = DistinguishedName::parse("FileGroup=d,FileInformation=f");
    struct Case
    {
        std::string outcome;
        std::string expected;
    };
    using namespace vetting;
    const Case cases[] = {
        {outcomeOf([&] { requireCreatable(group); }), "fine"},
        {outcomeOf([&] { requireCreatable(root1); }), "bad name: a FileM can't be created"},
        {outcomeOf([&] { requireCreatable(config); }), "bad name: a FileMConfigData can't be created"},
        {outcomeOf([&] { requireCreatable(file); }), "bad name: a FileInformation can't be created"},
        {outcomeOf([&] { requireDeletable(group); }), "fine"},
        {outcomeOf([&] { requireDeletable(file); }), "fine"},
        {outcomeOf([&] { requireDeletable(root1); }), "bad name: the root of the tree can't be removed"},
        {outcomeOf([&] { requireDeletable(config); }), "bad name: a FileMConfigData can't be removed"},
        {outcomeOf([&] { requireAction(group, "removeFile"); }), "fine"},
        {outcomeOf([&] { requireAction(group, "remove"); }), "fine"},
        {outcomeOf([&] { requireAction(file, "remove"); }), "fine"},
        {outcomeOf([&] { requireAction(file, "removeFile"); }),
         "bad name: a FileInformation has no action removeFile"},
        {outcomeOf([&] { requireAction(root1, "remove"); }), "bad name: a FileM has no action remove"},
        {outcomeOf([&] { requireAttribute(group, "files"); }), "fine"},
        {outcomeOf([&] { requireAttribute(file, "files"); }),
         "bad name: a FileInformation has no attribute files"},
        {outcomeOf([&] { requireChildClass(root1, "FileGroup"); }), "fine"},
        {outcomeOf([&] { requireChildClass(root1, "FileInformation"); }),
         "bad name: there is no FileInformation below a FileM"},
        {outcomeOf([&] { requireChildClass(group, "Nonsense"); }),
         "bad name: there is no Nonsense below a FileGroup"},
    };
    for (const auto& [outcome, expected] : cases)
    {
        EXPECT_EQ(outcome, expected);
    }
}
