#include "Faults.h"
#include "ProcessState.h"
#include "ReadsFixture.h"
#include "SpecialFiles.h"
#include "support/AttributeText.h"

#include <filesystem>
#include <set>

using namespace testing;
using ZolFileManagement::FileMTransaction;

namespace zoltest
{

namespace
{

class FileListing : public Reads
{
protected:
    std::vector<FileMTransaction::FileInfo> list(const std::string& dn)
    {
        std::vector<FileMTransaction::FileInfo> files;
        worker.getFileGroupFiles(dn.c_str(), files);
        return files;
    }
    Texts names(const std::string& dn)
    {
        Texts result;
        for (const auto& file : list(dn))
        {
            result.push_back(file.fileName);
        }
        return result;
    }
    std::string timeOf(const std::string& name) const
    {
        return FileMTransaction::getDate(Poco::Path(tree.path(name)));
    }

    const std::string d = groupDn("d");
};

TEST_F(FileListing, GivesEachFileAsAStructOfFourMembersInTheirOrder)
{
    tree.file("d/a.tar.gz", "12345");
    tree.file("d/README", "");

    EXPECT_EQ(attribute(d, "files"),
              R"(struct[{fileName: string["README"], modificationTime: string[")" + timeOf("d/README") +
                  R"("], fileType: string[""], size: uint[0]}, )" +
                  R"({fileName: string["a.tar.gz"], modificationTime: string[")" + timeOf("d/a.tar.gz") +
                  R"("], fileType: string["gz"], size: uint[5]}])");
}

TEST_F(FileListing, HasTypesByTheirNumbers)
{
    tree.file("d/f");
    QenMoAttributeValueResult_3 result{};
    ASSERT_EQ(worker.getAttribute(d.c_str(), "files", result), 0);

    EXPECT_EQ(result.container->valueType, 14);
    std::vector<int> types;
    std::vector<uint32_t> counts;
    for (const auto* member = result.container->values[0].structValue; member != nullptr;
         member = member->nextMember)
    {
        types.push_back(member->memberValue->valueType);
        counts.push_back(member->memberValue->nrOfValues);
    }
    EXPECT_THAT(types, ElementsAre(9, 9, 9, 8));
    EXPECT_THAT(counts, ElementsAre(1U, 1U, 1U, 1U));
    result.releaseCallback(result.container);
}

TEST_F(FileListing, SharesNothingBetweenItsFiles)
{
    tree.file("d/f");
    tree.file("d/g");
    QenMoAttributeValueResult_3 result{};
    ASSERT_EQ(worker.getAttribute(d.c_str(), "files", result), 0);

    std::multiset<const void*> allocations;
    for (uint32_t i = 0; i < result.container->nrOfValues; ++i)
    {
        for (const auto* member = result.container->values[i].structValue; member != nullptr;
             member = member->nextMember)
        {
            allocations.insert(
                {member, member->memberName, member->memberValue, member->memberValue->values});
            if (member->memberValue->valueType == attrTypeString)
            {
                allocations.insert(member->memberValue->values[0].stringValue);
            }
        }
    }
    EXPECT_EQ(allocations.size(), 2U * (4 * 4 + 3));
    EXPECT_EQ(std::set(allocations.begin(), allocations.end()).size(), allocations.size());
    result.releaseCallback(result.container);
}

TEST_F(FileListing, OfADirectoryWithoutFilesIsEmpty)
{
    tree.directory("d/inner");
    tree.directory("empty");
    for (const auto& dn : {d, groupDn("empty")})
    {
        QenMoAttributeValueResult_3 result{};
        ASSERT_EQ(worker.getAttribute(dn.c_str(), "files", result), 0);
        EXPECT_EQ(result.container->valueType, 14);
        EXPECT_EQ(result.container->nrOfValues, 0U);
        EXPECT_EQ(result.container->values, nullptr);
        result.releaseCallback(result.container);
    }
}

TEST_F(FileListing, OfANewDirectoryIsEmptyWhateverIsOnDisk)
{
    create("new");
    EXPECT_EQ(attribute(groupDn("new"), "files"), "struct[]");

    tree.file("d/f");
    create("d");
    EXPECT_EQ(attribute(d, "files"), "struct[]");
}

TEST_F(FileListing, OfAnAbandonedNewDirectoryLooksAtTheDisk)
{
    tree.file("d/f");
    create("d");
    worker.abort();

    EXPECT_THAT(names(d), ElementsAre("f"));
}

TEST_F(FileListing, IsSortedByTheBytesOfTheNames)
{
    const Texts sorted{" ", "!", "A", "B", "Z.a", "a", "a b", "a.txt", "a0", "aa", "b", "\xC3\xA4", "\xFF"};
    for (auto name = sorted.rbegin(); name != sorted.rend(); ++name)
    {
        tree.file("d/" + *name);
    }

    EXPECT_EQ(names(d), sorted);
}

TEST_F(FileListing, SortsWhatIsThereAlreadyToo)
{
    tree.file("d/g");
    std::vector<FileMTransaction::FileInfo> files(2);
    files[0].fileName = "z";
    files[1].fileName = "a";

    worker.getFileGroupFiles(d.c_str(), files);

    ASSERT_THAT(files, SizeIs(3));
    EXPECT_EQ(files[0].fileName, "a");
    EXPECT_EQ(files[1].fileName, "g");
    EXPECT_EQ(files[2].fileName, "z");
}

TEST_F(FileListing, ComparesFilesByTheirNamesAlone)
{
    const FileMTransaction::FileInfo a{.fileName = "a", .size = 2, .fileType = "z", .modificationTime = "9"};
    const FileMTransaction::FileInfo b{.fileName = "b", .size = 1, .fileType = "y", .modificationTime = "8"};
    FileMTransaction::FileInfo otherA = b;
    otherA.fileName = "a";

    EXPECT_TRUE(a < b);
    EXPECT_FALSE(b < a);
    EXPECT_FALSE(a < otherA);
    EXPECT_FALSE(otherA < a);
}

TEST_F(FileListing, ShowsNamesAsTheyAreOnDisk)
{
    const Texts raw{"\"q\"", "a+b", "a,b", "a=b", "a\\nb", "~", "c:"};
    for (const auto& name : raw)
    {
        tree.file("d/" + name);
    }

    EXPECT_THAT(names(d), UnorderedElementsAreArray(raw));
    EXPECT_THAT(children(d, "FileInformation"),
                UnorderedElementsAre("??q??", "a??b", "a??b", "a??b", "a??b", "~", "c:"));
}

TEST_F(FileListing, ShowsFilesAloneAndNoMarkers)
{
    tree.file("d/f");
    tree.file("d/.profile");
    tree.file("d/.filemnohousekeeping");
    tree.file("d/.filemnodirectorycreate");
    tree.file("d/.filemnodirectorydelete");
    tree.file("d/.filemnohousekeeping2");
    tree.file("d/inner/g");
    tree.directory("d/.filemnohousekeeping.d");
    makePipe(tree.path("d/pipe"));
    makeSocket(tree.path("d/socket"));

    EXPECT_THAT(names(d), ElementsAre(".filemnohousekeeping2", ".profile", "f"));
}

TEST_F(FileListing, ShowsALinkToAFileWithSizeAndTypeOfItsOwnName)
{
    tree.link("d/link.txt", tree.file("target.gz", "12345"));
    const auto files = list(d);

    ASSERT_THAT(files, SizeIs(1));
    EXPECT_EQ(files[0].fileName, "link.txt");
    EXPECT_EQ(files[0].size, 5U);
    EXPECT_EQ(files[0].fileType, "txt");
    EXPECT_EQ(files[0].modificationTime, timeOf("target.gz"));
    EXPECT_THAT(children(d, "FileInformation"), IsEmpty());
}

TEST_F(FileListing, ShowsALinkWithARelativeTargetToo)
{
    tree.file("d/target", "12345");
    tree.link("d/link", "target");

    EXPECT_THAT(names(d), ElementsAre("link", "target"));
}

TEST_F(FileListing, ShowsNoOtherLinks)
{
    tree.directory("target");
    makePipe(tree.path("pipe"));
    tree.link("d/toDirectory", tree.path("target"));
    tree.link("d/toPipe", tree.path("pipe"));
    tree.link("d/.filemnohousekeeping", tree.file("f"));

    EXPECT_THAT(names(d), IsEmpty());
}

TEST_F(FileListing, DoesNotShowWhatIsDeleted)
{
    tree.file("d/deleted");
    tree.file("d/forced");
    tree.file("d/stays");
    remove(fileDn("deleted", d));
    removeByForce(fileDn("forced", d));

    EXPECT_THAT(names(d), ElementsAre("stays"));
}

TEST_F(FileListing, OfADeletedDirectoryShowsItsFiles)
{
    tree.file("d/f");
    removeByForce(d);

    EXPECT_THAT(names(d), ElementsAre("f"));
}

TEST_F(FileListing, HasSizesBeyondFourGigabytes)
{
    std::filesystem::resize_file(tree.file("d/huge"), (5ULL << 30U) + 1);

    EXPECT_THAT(attribute(d, "files"), HasSubstr("size: uint[5368709121]"));
}

TEST_F(FileListing, IsComputedAnewAtEachRead)
{
    tree.file("d/f", "1");
    EXPECT_THAT(attribute(d, "files"), HasSubstr("size: uint[1]"));

    tree.file("d/f", "12345");
    EXPECT_THAT(attribute(d, "files"), HasSubstr("size: uint[5]"));
}

TEST_F(FileListing, IsFilledInWithoutTheDn)
{
    QenMoAttributeValueResult_3 result{};
    worker.initAttrResult(attrTypeStruct, 1, result);

    worker.setAttrFilesResult(
        nullptr, {{.fileName = "n", .size = 7, .fileType = "t", .modificationTime = "m"}}, result);

    EXPECT_EQ(toText(result.container),
              R"(struct[{fileName: string["n"], modificationTime: string["m"], fileType: string["t"], )"
              "size: uint[7]}]");
    result.releaseCallback(result.container);
}

TEST_F(FileListing, OfNoFilesLeavesTheContainerAsItIs)
{
    QenMoAttributeValueResult_3 result{};
    worker.initAttrResult(attrTypeStruct, 0, result);

    worker.setAttrFilesResult("any", {}, result);

    EXPECT_EQ(toText(result.container), "struct[]");
    result.releaseCallback(result.container);
}

// Failures.

Texts failureLog(const std::string& dn, const std::string& exception)
{
    return {"enter  >>  dn :" + dn + ", attr :files", "plain Unexpected exception :" + exception};
}

TEST_F(FileListing, OfAMissingDirectoryFailsWhileOtherAttributesAreAnswered)
{
    const RecordedLog log;

    EXPECT_EQ(attribute(d, "files"), "code -1");
    EXPECT_THAT(log.statements(),
                ElementsAre("enter  >>  dn :" + d + ", attr :files",
                            "plain File not exists, path :" + tree.path("d/") + ", dn :" + d,
                            "plain Unexpected exception :File not found"));
    EXPECT_EQ(attribute(d, "internalHousekeeping"), "bool[false]");
}

TEST_F(FileListing, OfADirectoryThatOnlyASearchFindsFails)
{
    tree.file("a=b/f");
    const std::string dn = groupDn("a??b");
    const RecordedLog log;

    EXPECT_EQ(attribute(dn, "files"), "code -1");
    EXPECT_EQ(log.statements(), failureLog(dn, "File not found"));
    EXPECT_THAT(names(groupDn("a=b")), ElementsAre("f"));
}

TEST_F(FileListing, OfARegularFileFails)
{
    tree.file("d");
    const RecordedLog log;

    EXPECT_EQ(attribute(d, "files"), "code -1");
    EXPECT_EQ(log.statements(), failureLog(d, "Cannot open file"));
}

TEST_F(FileListing, OfAnUnreadableDirectoryFails)
{
    tree.file("d/f");
    tree.chmod("d", 0311);

    const std::string told = asOrdinaryUser(tree, [this] {
        return attribute(d, "files") + ", " + attribute(d, "fileGroupId") + ", " +
               attribute(fileDn("f", d), "size");
    });

    EXPECT_EQ(told, R"(code -1, string["d"], int[1])");
}

TEST_F(FileListing, FailsAsAWholeAtALinkToNothing)
{
    tree.file("d/f");
    tree.link("d/link", tree.path("nowhere"));
    const RecordedLog log;

    EXPECT_EQ(attribute(d, "files"), "code -1");
    EXPECT_EQ(log.statements(), failureLog(d, "File not found"));
    EXPECT_THAT(children(d, "FileInformation"), ElementsAre("f"));
}

TEST_F(FileListing, FailsAsAWholeAtAFileThatVanishesBeforeItIsLookedAt)
{
    tree.file("d/f");
    tree.file("d/g");
    Faults faults;
    faults.stat = [&](const std::string& path) {
        if (path == tree.path("d/g"))
        {
            std::filesystem::remove(path);
        }
        return 0;
    };
    const RecordedLog log;

    EXPECT_EQ(attribute(d, "files"), "code -1");
    EXPECT_EQ(log.statements(), failureLog(d, "File not found"));
}

TEST_F(FileListing, EndsWhereTheDirectoryCantBeReadOn)
{
    for (int i = 0; i < 200; ++i)
    {
        tree.file("d/" + std::to_string(i) + std::string(200, 'n'));
    }
    Faults faults;
    int calls = 0;
    faults.getdents = [&calls] { return ++calls == 2 ? EIO : 0; };

    const std::size_t listed = list(d).size();
    EXPECT_GT(listed, 0U);
    EXPECT_LT(listed, 200U);
}

TEST_F(FileListing, IsInTheZoneThatTheProcessHasByThen)
{
    tree.file("d/f");
    const TimeZone known("UTC0");
    const Environment zone("TZ", "<+02>-2"); // which nobody has told the C library
    const std::string listed = list(d).front().modificationTime;
    EXPECT_EQ(listed, timeOf("d/f"));
}

TEST_F(FileListing, LooksAtEachEntryOnce)
{
    tree.file("d/f");
    tree.directory("d/sub");
    tree.link("d/link", tree.path("d/f"));
    Texts asked;
    Faults faults;
    faults.stat = [&](const std::string& path) {
        asked.push_back(path);
        return 0;
    };

    list(d);
    EXPECT_THAT(asked, UnorderedElementsAre(tree.path("d/f"), tree.path("d/sub"), tree.path("d/link")));
}

TEST_F(FileListing, ThrowsWhatItsGuardMakesACode)
{
    std::vector<FileMTransaction::FileInfo> files;

    EXPECT_ANY_THROW(worker.getFileGroupFiles(d.c_str(), files));
}

} // namespace

} // namespace zoltest
