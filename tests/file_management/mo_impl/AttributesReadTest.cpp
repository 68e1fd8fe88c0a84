#include "Faults.h"
#include "ReadsFixture.h"

#include <zol/spi/ZolMoAttributeValue_3.h>

using namespace testing;
using ZolFileManagement::FileMTransaction;

namespace zoltest
{

namespace
{

using SeveralAttributes = Reads;

TEST_F(SeveralAttributes, ComeInTheOrderAskedFor)
{
    tree.file("d/f.txt", "12345");
    const std::string f = fileDn("f.txt", groupDn("d"));

    EXPECT_THAT(attributes(f, {"type", "size", "fileInformationId", "open", "size"}),
                ElementsAre(R"(string["txt"])", "int[5]", R"(string["f.txt"])", "bool[false]", "int[5]"));
}

TEST_F(SeveralAttributes, EachBeginWithATrace)
{
    tree.directory("d");
    const std::string d = groupDn("d");
    const RecordedLog log;

    attributes(d, {"fileGroupId", "internalHousekeeping"});

    EXPECT_THAT(log.statements(), ElementsAre("enter  >>  dn :" + d + ", attr :fileGroupId",
                                              "enter  >>  dn :" + d + ", attr :internalHousekeeping"));
}

TEST_F(SeveralAttributes, AreNoneForAnEmptyListOrNoList)
{
    const char* empty[] = {nullptr};
    for (const char** names : {static_cast<const char**>(nullptr), static_cast<const char**>(empty)})
    {
        // there is no such class, and nobody asks
        QenMoAttributeValuesResult_3 result{};
        const RecordedLog log;

        ASSERT_EQ(worker.getAttributes("None=1", names, result), 0);
        ASSERT_NE(result.containers, nullptr);
        EXPECT_EQ(result.containers[0], nullptr);
        ASSERT_EQ(result.releaseCallback, &FileMTransaction::releaseAttributesResultCB);
        result.releaseCallback(result.containers);
        EXPECT_THAT(log.statements(), IsEmpty());
    }
}

TEST_F(SeveralAttributes, AreReleasedTogetherByOneFunction)
{
    tree.file("d/f");
    const char* names[] = {"fileGroupId", "files", nullptr};
    QenMoAttributeValuesResult_3 result{};

    ASSERT_EQ(worker.getAttributes(groupDn("d").c_str(), names, result), 0);

    EXPECT_EQ(result.releaseCallback, &FileMTransaction::releaseAttributesResultCB);
    EXPECT_EQ(result.containers[2], nullptr);
    result.releaseCallback(result.containers);
}

TEST_F(SeveralAttributes, FailAllAtTheFirstThatFails)
{
    tree.file("d/f");
    const std::string d = groupDn("d");
    const RecordedLog log;

    EXPECT_THAT(attributes(d, {"fileGroupId", "unknown", "files"}), ElementsAre("code -2"));
    EXPECT_THAT(log.statements(), ElementsAre("enter  >>  dn :" + d + ", attr :fileGroupId",
                                              "enter  >>  dn :" + d + ", attr :unknown"));
}

TEST_F(SeveralAttributes, FailWithTheCodeOfTheOneThatFails)
{
    tree.file("d/.filemnohousekeeping");

    EXPECT_THAT(attributes(groupDn("missing"), {"fileGroupId", "files"}), ElementsAre("code -1"));
    EXPECT_THAT(attributes(groupDn("d"), {"files", "dateTime"}), ElementsAre("code -2"));
    EXPECT_THAT(attributes(fileDn(".filemnohousekeeping", groupDn("d")), {"size"}), ElementsAre("code -2"));
    EXPECT_THAT(attributes(fileM, {"fileGroupId"}), ElementsAre("code -1"));
}

TEST_F(SeveralAttributes, FailWithNothingToReleaseWithoutMemoryForThem)
{
    tree.directory("d");
    const std::string d = groupDn("d");
    const char* names[] = {"fileGroupId", nullptr};
    QenMoAttributeValuesResult_3 result{FileMTransaction::releaseAttributesResultCB, nullptr};
    Faults faults;
    faults.listsCantBeAllocated = true;

    EXPECT_EQ(worker.getAttributes(d.c_str(), names, result), -1);
    EXPECT_EQ(result.containers, nullptr);
    EXPECT_EQ(result.releaseCallback, nullptr);
}

} // namespace

} // namespace zoltest
