#include "Faults.h"
#include "ReadsFixture.h"

#include <stdexcept>

using namespace testing;

namespace zoltest
{

namespace
{

using ObjectExistence = Reads;

TEST_F(ObjectExistence, IsThatOfADirectoryForAGroupAndOfAnythingElseForAFile)
{
    tree.file("d/f");
    tree.file("d/.filemnohousekeeping");
    tree.directory("d/sub");
    tree.directory("d/.filemnodirectorydelete");
    tree.link("d/toFile", tree.path("d/f"));
    tree.link("d/toDirectory", tree.path("d"));
    tree.link("d/toNothing", tree.path("nowhere"));
    const std::string d = groupDn("d");
    struct
    {
        std::string dn;
        bool exists;
    } const cases[] = {
        {d, true},
        {fileDn("f", d), true},
        {groupDn("f", d), false},
        {fileDn("sub", d), false},
        {fileDn(".filemnohousekeeping", d), false},
        {groupDn(".filemnodirectorydelete", d), true},
        {fileDn("toFile", d), true},
        {groupDn("toDirectory", d), true},
        {groupDn("toFile", d), false},
        {fileDn("toDirectory", d), false},
        {fileDn("toNothing", d), false},
        {groupDn("toNothing", d), false},
        {groupDn("missing"), false},
        {fileDn("missing", d), false},
        {fileM, false},
        {fileM + ",FileMConfigData=1", false},
    };
    for (const auto& row : cases)
    {
        EXPECT_EQ(exists(row.dn), row.exists) << row.dn;
    }
}

TEST_F(ObjectExistence, OfAnotherClassIsThatOfAFileAtThePathWithoutTheRoot)
{
    tree.file("d/s");
    tree.directory("d/t");
    const std::string parentOutsideTheRoot = groupDn(tree.path("d").substr(1));

    EXPECT_TRUE(exists(parentOutsideTheRoot + ",Other=s"));
    EXPECT_FALSE(exists(parentOutsideTheRoot + ",Other=t"));
    EXPECT_FALSE(exists(groupDn("d") + ",Other=s"));
}

TEST_F(ObjectExistence, IsDeniedForADnThatIsRefusedWithoutATrace)
{
    tree.file("d/f");
    const RecordedLog log;

    EXPECT_FALSE(exists(""));
    EXPECT_FALSE(exists(groupDn("")));
    EXPECT_FALSE(exists(groupDn(".")));
    EXPECT_FALSE(exists(groupDn("/")));
    EXPECT_THAT(log.statements(), IsEmpty());
}

TEST_F(ObjectExistence, IncludesADirectoryCreatedInTheTransaction)
{
    create("new");
    create("inner", groupDn("new"));

    EXPECT_TRUE(exists(groupDn("new")));
    EXPECT_TRUE(exists(groupDn("inner", groupDn("new"))));
    EXPECT_FALSE(exists(groupDn("other", groupDn("new"))));
    EXPECT_FALSE(exists(fileDn("inner", groupDn("new"))));
    EXPECT_EQ(count(fileM, "FileGroup"), 1U);
    EXPECT_THAT(children(fileM, "FileGroup"), ElementsAre("new"));
}

TEST_F(ObjectExistence, OfADirectoryCreatedInThePlaceOfAFileIsThatOfTheNewDirectory)
{
    tree.file("f");
    create("f");

    EXPECT_TRUE(exists(groupDn("f")));
}

TEST_F(ObjectExistence, IgnoresDeletionsOfTheTransaction)
{
    tree.directory("d");
    tree.file("a/f");
    remove(groupDn("d"));
    remove(fileDn("f", groupDn("a")));

    EXPECT_TRUE(exists(groupDn("d")));
    EXPECT_TRUE(exists(fileDn("f", groupDn("a"))));
    EXPECT_THAT(children(fileM, "FileGroup"), ElementsAre("a"));
    EXPECT_EQ(count(fileM, "FileGroup"), 1U);
    EXPECT_EQ(count(groupDn("a"), "FileInformation"), 0U);
}

TEST_F(ObjectExistence, SearchesForNoOtherName)
{
    tree.directory("a=b");

    EXPECT_FALSE(exists(groupDn("a??b")));
    EXPECT_TRUE(exists(groupDn("a=b")));
}

TEST_F(ObjectExistence, LetsThroughWhatTheConversionOfItsDnThrows)
{
    Faults faults;
    faults.classOfDn = [] { throw std::runtime_error("no class"); };

    EXPECT_THROW(exists(groupDn("d")), std::runtime_error);
    EXPECT_FALSE(exists(groupDn("")));
}

} // namespace

} // namespace zoltest
