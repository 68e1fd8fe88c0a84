#include "Faults.h"
#include "ReadsFixture.h"
#include "support/AttributeText.h"
#include "support/ChildProcess.h"
#include "support/FakeRepository.h"

#include <csignal>
#include <optional>
#include <stdexcept>
#include <zol/common/ZolException.h>

using namespace testing;

namespace zoltest
{

namespace
{

using AttributeRead = Reads;

std::string enterTrace(const std::string& dn, const std::string& name)
{
    return "enter  >>  dn :" + dn + ", attr :" + name;
}

std::string hiddenTrace(const std::string& path, const std::string& dn)
{
    return "plain File is hidden, path :" + path + ", dn :" + dn;
}

TEST_F(AttributeRead, OfWhatExistsWritesItsBeginningAlone)
{
    tree.file("d/f");
    const std::string d = groupDn("d");
    const std::string f = fileDn("f", d);
    const RecordedLog log;

    attribute(d, "fileGroupId");
    attribute(f, "open");
    attribute(fileM + ",FileMConfigData=1", "fileMConfigDataId");

    EXPECT_THAT(log.statements(), ElementsAre(enterTrace(d, "fileGroupId"), enterTrace(f, "open"),
                                              enterTrace(fileM + ",FileMConfigData=1", "fileMConfigDataId")));
}

TEST_F(AttributeRead, KnowsTheAttributesOfEachClassByTheirExactNames)
{
    tree.file("d/f");
    const std::string group = groupDn("d");
    const std::string file = fileDn("f", group);
    const std::string configuration = fileM + ",FileMConfigData=1";
    struct
    {
        std::string dn;
        Texts names;
    } const cases[] = {
        {group,
         {"", "fileInformationId", "fileMConfigDataId", "modificationTime", "size", "type", "open",
          "internalRoot", "dateTime", "filegroupid", "files ", "Files", "FileGroupId"}},
        {file,
         {"", "fileGroupId", "fileMConfigDataId", "internalHousekeeping", "reservedByPolicy", "files",
          "internalRoot", "dateTime", "fileName", "fileType", "Size", "fileInformationid"}},
        {configuration,
         {"", "fileGroupId", "fileInformationId", "size", "files", "dateTime", "internalroot"}},
    };
    for (const auto& row : cases)
    {
        for (const auto& name : row.names)
        {
            const RecordedLog log;
            EXPECT_EQ(attribute(row.dn, name), "code -2") << row.dn << " " << name;
            EXPECT_THAT(log.statements(), ElementsAre(enterTrace(row.dn, name)));
        }
    }
}

TEST_F(AttributeRead, OfAMarkerFileFindsNothing)
{
    for (const std::string marker :
         {".filemnohousekeeping", ".filemnodirectorycreate", ".filemnodirectorydelete"})
    {
        const std::string path = tree.file("d/" + marker);
        const std::string dn = fileDn(marker, groupDn("d"));
        const RecordedLog log;

        EXPECT_EQ(attribute(dn, "size"), "code -2");
        EXPECT_THAT(log.statements(), ElementsAre(enterTrace(dn, "size"), hiddenTrace(path, dn)));
    }
}

TEST_F(AttributeRead, OfADirectoryWithTheNameOfAMarkerIsAnswered)
{
    tree.directory(".filemnohousekeeping");

    EXPECT_EQ(attribute(groupDn(".filemnohousekeeping"), "internalHousekeeping"), "bool[false]");
}

TEST_F(AttributeRead, OfWhatIsMissingIsAnsweredAndSaysSo)
{
    const std::string group = groupDn("a+b");
    const std::string file = fileDn("f.txt", group);
    struct
    {
        std::string dn;
        std::string path;
        std::string name;
        std::string value;
    } const cases[] = {
        {group, "a+b/", "fileGroupId", R"(string["a+b"])"},
        {group, "a+b/", "internalHousekeeping", "bool[false]"},
        {group, "a+b/", "reservedByPolicy", "reference[]"},
        {file, "a+b/f.txt", "fileInformationId", R"(string["f.txt"])"},
        {file, "a+b/f.txt", "modificationTime", R"(string[""])"},
        {file, "a+b/f.txt", "size", "int[0]"},
        {file, "a+b/f.txt", "type", R"(string["txt"])"},
        {file, "a+b/f.txt", "open", "bool[false]"},
    };
    const FakeRepository nobody;
    for (const auto& row : cases)
    {
        const RecordedLog log;
        EXPECT_EQ(attribute(row.dn, row.name), row.value);
        EXPECT_THAT(log.statements(),
                    ElementsAre(enterTrace(row.dn, row.name),
                                "plain File not exists, path :" + tree.path(row.path) + ", dn :" + row.dn));
    }
}

TEST_F(AttributeRead, OfAnUnknownAttributeOfWhatIsMissingFails)
{
    EXPECT_EQ(attribute(groupDn("missing"), "size"), "code -2");
}

TEST_F(AttributeRead, OfANewDirectoryIsServedFromItsPathAlone)
{
    create("a+b");
    struct
    {
        std::string name;
        std::string value;
    } const cases[] = {
        {"fileGroupId", R"(string["a\2Bb"])"},
        {"internalHousekeeping", "bool[false]"},
        {"files", "struct[]"},
    };
    const std::string dn = groupDn("a\\2Bb");
    for (const auto& row : cases)
    {
        const RecordedLog log;
        EXPECT_EQ(attribute(dn, row.name), row.value);
        EXPECT_THAT(log.statements(), ElementsAre(enterTrace(dn, row.name)));
    }
}

TEST_F(AttributeRead, FindsAFileByTheQuestionMarksOfItsValue)
{
    tree.file("x=y/a=b.c=d", "12345");
    const std::string dn = fileDn("a??b.c??d", groupDn("x??y"));
    const RecordedLog log;

    EXPECT_EQ(attribute(dn, "size"), "int[5]");
    EXPECT_THAT(log.statements(), ElementsAre(enterTrace(dn, "size")));
    EXPECT_EQ(attribute(dn, "fileInformationId"), R"(string["a??b.c??d"])");
    EXPECT_EQ(attribute(dn, "type"), R"(string["c=d"])");
    EXPECT_NE(attribute(dn, "modificationTime"), R"(string[""])");
}

TEST_F(AttributeRead, FindsADirectoryByTheQuestionMarksOfItsValueExceptForItsFiles)
{
    tree.file("x=y/.filemnohousekeeping");
    const std::string dn = groupDn("x??y");

    EXPECT_EQ(attribute(dn, "internalHousekeeping"), "bool[true]");
    EXPECT_EQ(attribute(dn, "fileGroupId"), R"(string["x??y"])");
    EXPECT_EQ(attribute(dn, "files"), "code -1");
}

TEST_F(AttributeRead, SearchesForNoOtherNameWhereTheValueItselfIsThere)
{
    tree.file("d/a??b", "1");
    tree.file("d/a=b", "12345");
    EXPECT_EQ(attribute(fileDn("a??b", groupDn("d")), "size"), "int[1]");

    tree.file("x=y/.filemnohousekeeping");
    create("x??y");
    EXPECT_EQ(attribute(groupDn("x??y"), "internalHousekeeping"), "bool[false]");
}

TEST_F(AttributeRead, IgnoresDeletionsOfTheTransaction)
{
    tree.file("d/f", "12345");
    tree.directory("gone");
    remove(fileDn("f", groupDn("d")));
    remove(groupDn("gone"));
    const RecordedLog log;

    EXPECT_EQ(attribute(fileDn("f", groupDn("d")), "size"), "int[5]");
    EXPECT_EQ(attribute(groupDn("gone"), "internalHousekeeping"), "bool[false]");
    EXPECT_EQ(attribute(groupDn("gone"), "files"), "struct[]");
    EXPECT_THAT(log.statements(), Each(StartsWith("enter ")));
}

TEST_F(AttributeRead, OfAnotherClassFails)
{
    tree.file("d/f");
    struct
    {
        std::string dn;
        std::string className;
        std::optional<std::string> missingPath;
    } const cases[] = {
        {fileM, "FileM", {}},
        {"ManagedElement=1", "ManagedElement", {}},
        {fileM + ",FileGroupPolicy=p", "FileGroupPolicy", tree.path("p/")},
        {groupDn("d") + ",Other=f", "Other", "/d/f"},
        {"", "", {}},
    };
    for (const auto& row : cases)
    {
        Texts expected{enterTrace(row.dn, "fileGroupId")};
        if (row.missingPath)
        {
            expected.push_back("plain File not exists, path :" + *row.missingPath + ", dn :" + row.dn);
        }
        expected.push_back("severity-3 Unexpected mo class :" + row.className + ", dn :" + row.dn);
        const RecordedLog log;

        EXPECT_EQ(attribute(row.dn, "fileGroupId"), "code -1");
        EXPECT_EQ(log.statements(), expected);
    }
}

TEST_F(AttributeRead, GivesTheCodeThatAFailureBelowCarriesAndWritesNothingOfIt)
{
    const std::string dn = groupDn("d");
    tree.directory("d");
    for (const ZolReturnT code : {-1, -2, -8, 42})
    {
        Faults faults;
        faults.classOfDn = [&] { throw Zol::ZolException(code, "%s", "the text goes nowhere"); };
        const RecordedLog log;

        EXPECT_EQ(attribute(dn, "files"), "code " + std::to_string(code));
        EXPECT_THAT(log.statements(), ElementsAre(enterTrace(dn, "files")));
    }
}

TEST_F(AttributeRead, WritesTheTextOfAnyOtherException)
{
    const std::string dn = groupDn("d");
    tree.directory("d");
    Faults faults;
    faults.classOfDn = [&] { throw std::runtime_error("no class"); };
    const RecordedLog log;

    EXPECT_EQ(attribute(dn, "files"), "code -1");
    EXPECT_THAT(log.statements(),
                ElementsAre(enterTrace(dn, "files"), "plain Unexpected exception :no class"));
}

TEST_F(AttributeRead, EndsTheProcessOnWhatIsNoException)
{
    const ChildOutcome outcome = runInChild([&] {
        Faults faults;
        faults.classOfDn = throwsForeign();
        return attribute(groupDn("d"), "fileGroupId") == "code -1" ? 0 : 1;
    });

    EXPECT_EQ(outcome.signal, SIGABRT);
    EXPECT_TRUE(
        noexcept(worker.getAttribute(nullptr, nullptr, std::declval<QenMoAttributeValueResult_3&>())));
    EXPECT_TRUE(
        noexcept(worker.getAttributes(nullptr, nullptr, std::declval<QenMoAttributeValuesResult_3&>())));
}

TEST_F(AttributeRead, GivesAValueThatOutlivesTheTransaction)
{
    tree.file("d/f");
    QenMoAttributeValueResult_3 one{};
    QenMoAttributeValuesResult_3 several{};
    const char* names[] = {"fileGroupId", "files", nullptr};
    {
        ZolFileManagement::FileMTransaction ending(txHandle + 1, *host.portal1());
        ASSERT_EQ(ending.getAttribute(groupDn("d").c_str(), "fileGroupId", one), 0);
        ASSERT_EQ(ending.getAttributes(groupDn("d").c_str(), names, several), 0);
        ending.finish();
    }

    EXPECT_EQ(toText(one.container), R"(string["d"])");
    EXPECT_EQ(toText(several.containers[0]), R"(string["d"])");
    EXPECT_THAT(toText(several.containers[1]), HasSubstr(R"(fileName: string["f"])"));
    one.releaseCallback(one.container);
    several.releaseCallback(several.containers);
}

} // namespace

} // namespace zoltest
