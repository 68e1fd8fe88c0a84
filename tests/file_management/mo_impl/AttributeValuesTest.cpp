#include "Faults.h"
#include "ProcessState.h"
#include "ReadsFixture.h"
#include "support/FakeZolea.h"

#include <cerrno>
#include <fcntl.h>
#include <filesystem>
#include <fstream>

using namespace testing;
using ZolFileManagement::FileMTransaction;

namespace zoltest
{

namespace
{

// The attributes of a directory; its files and its policies have tests of their own.

using FileGroup = Reads;

TEST_F(FileGroup, HasTheValueOfItsDnForItsId)
{
    tree.directory("a+b");
    tree.directory("x=y");
    tree.directory("d");

    EXPECT_EQ(attribute(groupDn("d"), "fileGroupId"), R"(string["d"])");
    EXPECT_EQ(attribute(groupDn("a\\2Bb"), "fileGroupId"), R"(string["a\2Bb"])");
    EXPECT_EQ(attribute(groupDn("inner", groupDn("d")), "fileGroupId"), R"(string["inner"])");
    // the value ends up cut at its last equals sign
    EXPECT_EQ(attribute(groupDn("x=y"), "fileGroupId"), R"(string["y"])");
}

TEST_F(FileGroup, IsInternallyKeptWhereItsMarkerSaysSo)
{
    tree.file("kept/.filemnohousekeeping");
    tree.directory("kept/child");
    tree.directory("keptByDirectory/.filemnohousekeeping");
    tree.file("other/.filemnodirectorycreate");
    tree.file("other/.filemnodirectorydelete");
    tree.file("other/.filemnohousekeeping2");

    EXPECT_EQ(attribute(groupDn("kept"), "internalHousekeeping"), "bool[true]");
    EXPECT_EQ(attribute(groupDn("keptByDirectory"), "internalHousekeeping"), "bool[true]");
    EXPECT_EQ(attribute(groupDn("child", groupDn("kept")), "internalHousekeeping"), "bool[false]");
    EXPECT_EQ(attribute(groupDn("other"), "internalHousekeeping"), "bool[false]");
}

// The attributes of a file.

using FileInformation = Reads;

TEST_F(FileInformation, HasTheValueOfItsDnForItsId)
{
    tree.file("d/a=b");

    EXPECT_EQ(attribute(fileDn("f", groupDn("d")), "fileInformationId"), R"(string["f"])");
    EXPECT_EQ(attribute(fileDn("a??b", groupDn("d")), "fileInformationId"), R"(string["a??b"])");
    EXPECT_EQ(attribute(fileDn("a=b", groupDn("d")), "fileInformationId"), R"(string["b"])");
}

TEST_F(FileInformation, HasASizeInBytes)
{
    tree.file("d/empty", "");
    tree.file("d/five", "12345");
    std::filesystem::resize_file(tree.file("d/huge"), (5ULL << 30U) + 1);
    tree.link("d/link", tree.path("d/five"));
    const std::string d = groupDn("d");

    EXPECT_EQ(attribute(fileDn("empty", d), "size"), "int[0]");
    EXPECT_EQ(attribute(fileDn("five", d), "size"), "int[5]");
    EXPECT_EQ(attribute(fileDn("huge", d), "size"), "int[5368709121]");
    EXPECT_EQ(attribute(fileDn("link", d), "size"), "int[5]");
}

TEST_F(FileInformation, HasTheExtensionOfItsNameForAType)
{
    struct
    {
        const char* name;
        const char* type;
    } const cases[] = {{"a.tar.gz", R"(string["gz"])"},
                       {"README", R"(string[""])"},
                       {".profile", R"(string["profile"])"},
                       {"a.", R"(string[""])"},
                       {"A.TXT", R"(string["TXT"])"}};
    for (const auto& row : cases)
    {
        tree.file(std::string("d.e/") + row.name);
        EXPECT_EQ(attribute(fileDn(row.name, groupDn("d.e")), "type"), row.type) << row.name;
    }
}

TEST_F(FileInformation, IsNeverOpen)
{
    const int descriptor = ::open(tree.file("d/f").c_str(), O_RDWR | O_CLOEXEC);

    EXPECT_EQ(attribute(fileDn("f", groupDn("d")), "open"), "bool[false]");
    ::close(descriptor);
}

TEST_F(FileInformation, HasTheTimeOfItsFileForAModificationTime)
{
    const std::string path = tree.file("d/f");

    EXPECT_EQ(attribute(fileDn("f", groupDn("d")), "modificationTime"),
              "string[\"" + FileMTransaction::getDate(Poco::Path(path)) + "\"]");
    EXPECT_EQ(FileMTransaction::getDate(Poco::Path(path)).size(), 19U);
}

// The attributes of the configuration data.

class FileMConfigData : public Reads
{
protected:
    const std::string dn = fileM + ",FileMConfigData=1";
};

TEST_F(FileMConfigData, HasTheValueOfItsDnForItsId)
{
    EXPECT_EQ(attribute(dn, "fileMConfigDataId"), R"(string["1"])");
    EXPECT_EQ(attribute(fileM + ",FileMConfigData=2", "fileMConfigDataId"), R"(string["2"])");
}

TEST_F(FileMConfigData, HasWhatTheExternalCommandPrintsForARoot)
{
    const FakeZolea zolea("echo '  /data/fs/ '; echo");

    EXPECT_EQ(attribute(dn, "internalRoot"), R"(string["/data/fs/"])");
    EXPECT_THAT(zolea.runs(), ElementsAre("file-system internalRoot"));
}

TEST_F(FileMConfigData, AsksTheExternalCommandAtEachRead)
{
    FakeZolea zolea("echo /one");
    EXPECT_EQ(attribute(dn, "internalRoot"), R"(string["/one"])");

    zolea.setScript("echo /two; exit 1");
    EXPECT_EQ(attribute(dn, "internalRoot"), R"(string["/two"])");
    EXPECT_THAT(attributes(dn, {"fileMConfigDataId", "internalRoot"}),
                ElementsAre(R"(string["1"])", R"(string["/two"])"));
    EXPECT_THAT(zolea.runs(), SizeIs(3));
}

TEST_F(FileMConfigData, WritesTheRunOfTheExternalCommand)
{
    const FakeZolea zolea("echo /data/fs");
    const RecordedLog log;

    attribute(dn, "internalRoot");

    EXPECT_THAT(log.statements(),
                ElementsAre("enter  >>  dn :" + dn + ", attr :internalRoot", "enter  >> ",
                            "enter  >> Invoking: zolea file-system internalRoot",
                            "plain Executing 'zolea file-system internalRoot'",
                            "plain Executed 'zolea file-system internalRoot'", "exit  << ", "exit  << "));
}

TEST_F(FileMConfigData, HasAnEmptyRootWhereTheExternalCommandPrintsNothing)
{
    const FakeZolea zolea("exit 1");

    EXPECT_EQ(attribute(dn, "internalRoot"), R"(string[""])");
}

TEST_F(FileMConfigData, FailsWithoutATraceOfItsOwnWhereTheExternalCommandCantBeRun)
{
    Faults faults;
    faults.popenError = ENOMEM;
    const RecordedLog log;

    EXPECT_EQ(attribute(dn, "internalRoot"), "code -1");
    EXPECT_THAT(log.statements(),
                ElementsAre("enter  >>  dn :" + dn + ", attr :internalRoot", "enter  >> ",
                            "enter  >> Invoking: zolea file-system internalRoot",
                            "plain Failed to invoke zolea : execution of 'zolea file-system internalRoot' "
                            "failed - error=Cannot allocate memory"));
}

TEST_F(FileMConfigData, IsAnsweredWhereTheRootIsGone)
{
    const FakeZolea zolea("echo /data/fs");
    FileMTransaction::initialize(tree.path("gone"));
    const RecordedLog log;

    EXPECT_EQ(attribute(dn, "fileMConfigDataId"), R"(string["1"])");
    EXPECT_EQ(attribute(dn, "internalRoot"), R"(string["/data/fs"])");
    EXPECT_THAT(log.statements(), Not(Contains(StartsWith("plain File not exists"))));
}

} // namespace

} // namespace zoltest
