#include "ChangesFixture.h"

using testing::ElementsAre;
using testing::IsEmpty;
using zoltest::fileGroup;
using zoltest::fileInformation;
using zoltest::fileM;
using zoltest::RecordedLog;
using zoltest::Texts;

namespace
{

const std::string noChildren = ".filemnodirectorycreate";

class Create : public zoltest::Changes
{
protected:
    ZolReturnT createMo(const std::string& parentDn, const std::string& className,
                        const std::string& keyAttribute, const std::string& keyValue)
    {
        return worker.create(parentDn.c_str(), className.c_str(), keyAttribute.c_str(), keyValue.c_str());
    }
};

} // namespace

TEST_F(Create, ANewDirectoryIsThereAfterCommit)
{
    const RecordedLog log;
    EXPECT_EQ(create("a"), 0);
    EXPECT_THAT(log.statements(), IsEmpty());
    EXPECT_THAT(host.messages(), IsEmpty());
    EXPECT_EQ(worker.commit(), 0);
    EXPECT_THAT(tree.listing(), ElementsAre("d a"));
}

TEST_F(Create, GoesBelowTheDirectoryOfTheParent)
{
    tree.directory("p+q/r");
    EXPECT_EQ(create("a", fileGroup("r", fileGroup("p\\2Bq"))), 0);
    EXPECT_EQ(create("b", zoltest::fileMConfigData), 0);
    EXPECT_EQ(worker.commit(), 0);
    EXPECT_THAT(tree.listing(), ElementsAre("d b", "d p+q", "d p+q/r", "d p+q/r/a"));
}

TEST_F(Create, OfAnotherClassOrKeyAttributeIsRefusedSilently)
{
    const struct
    {
        const char* className;
        const char* keyAttribute;
    } cases[] = {
        {"FileInformation", "fileInformationId"},
        {"FileInformation", "fileGroupId"},
        {"FileMConfigData", "fileMConfigDataId"},
        {"FileM", "fileMId"},
        {"FileGroupPolicy", "fileGroupId"},
        {"fileGroup", "fileGroupId"},
        {"", "fileGroupId"},
        {"FileGroup", "fileInformationId"},
        {"FileGroup", "FileGroupId"},
        {"FileGroup", "fileGroupId "},
        {"FileGroup", ""},
    };
    for (const auto& [className, keyAttribute] : cases)
    {
        SCOPED_TRACE(std::string(className) + " with " + keyAttribute);
        const RecordedLog log;
        EXPECT_EQ(createMo(fileM, className, keyAttribute, "a"), -1);
        EXPECT_THAT(log.statements(), IsEmpty());
    }
    EXPECT_THAT(host.messages(), IsEmpty());
    expectNothingWaits();
}

TEST_F(Create, LooksAtTheClassBeforeTheName)
{
    EXPECT_EQ(createMo(fileM, "FileInformation", "fileInformationId", "a/b"), -1);
    EXPECT_THAT(host.messages(), IsEmpty());
}

TEST_F(Create, OfAnIllegalNameIsRefusedWithItsReason)
{
    const struct
    {
        const char* name;
        const char* message;
    } cases[] = {
        {"a/b", "FileGroup contains illegal character(/)"},
        {"/", "FileGroup contains illegal character(/)"},
        {"../x", "FileGroup contains illegal character(/)"},
        {"a|b", "FileGroup contains illegal character(|)"},
        {"a|b/c", "FileGroup contains illegal character(|)"},
        {"a/b|c", "FileGroup contains illegal character(/)"},
        {".", "FileGroup name not allowed (.)"},
        {"..", "FileGroup name not allowed (..)"},
        {"....", "FileGroup name not allowed (....)"},
        {"", "FileGroup name not allowed ()"},
    };
    const std::string parentDn = fileGroup("p");
    for (const auto& [name, message] : cases)
    {
        SCOPED_TRACE(name);
        host.clear();
        const RecordedLog log;
        EXPECT_EQ(create(name, parentDn), -1);
        EXPECT_THAT(host.messages(), ElementsAre(message));
        EXPECT_THAT(log.statements(),
                    ElementsAre("plain " + std::string(message) + ": " + name + ", dn :" + parentDn));
    }
    expectNothingWaits();
}

TEST_F(Create, BelowAParentThatAllowsNoChildrenIsRefusedWithTheReason)
{
    tree.file("p/" + noChildren);
    const RecordedLog log;
    EXPECT_EQ(create("a", fileGroup("p")), -1);
    EXPECT_THAT(host.messages(), ElementsAre("FileGroup does not allow child FileGroup to be created"));
    EXPECT_THAT(log.statements(), ElementsAre("plain Not allowed to create directory, path " +
                                              directoryText("p") + ", dn :" + fileGroup("p")));
    expectNothingWaits();
}

TEST_F(Create, BelowARootThatAllowsNoChildrenIsRefused)
{
    tree.file(noChildren);
    EXPECT_EQ(create("a"), -1);
    EXPECT_THAT(host.messages(), ElementsAre("FileGroup does not allow child FileGroup to be created"));
}

TEST_F(Create, AsksOnlyTheParentAndOnlyForTheMarkerOfCreation)
{
    tree.file(noChildren);
    tree.file("p/.filemnodirectorydelete");
    tree.file("p/.filemnohousekeeping");
    EXPECT_EQ(create("a", fileGroup("p")), 0);
    EXPECT_THAT(host.messages(), IsEmpty());
}

TEST_F(Create, LooksAtTheNameBeforeTheParent)
{
    tree.file("p/" + noChildren);
    EXPECT_EQ(create("a/b", fileGroup("p")), -1);
    EXPECT_THAT(host.messages(), ElementsAre("FileGroup contains illegal character(/)"));
}

TEST_F(Create, TakesTheNameAsOneComponentOfThePath)
{
    const struct
    {
        const char* keyValue;
        const char* onDisk;
    } cases[] = {
        {"~", "~"},
        {"~x", "~x"},
        {"~root", "~root"},
        {"a:", "a:"},
        {"a:b", "a:b"},
        {"..a", "..a"},
        {".a", ".a"},
        {"a.", "a."},
        {"a+b", "a+b"},
        {"p\\2Bq", "p+q"},
        {"p\\2br", "p+r"},
        {"\\2Fetc", "\\2Fetc"},
        {"a,b", "a,b"},
        {"a=b", "a=b"},
        {"a?\?b", "a?\?b"},
        {" a b ", " a b "},
        {"\"q\"", "\"q\""},
        {"$HOME", "$HOME"},
        {"a\\b", "a\\b"},
        {"%2F", "%2F"},
        {"\xC3\xA4\xFF", "\xC3\xA4\xFF"},
        {"FileGroup=", "FileGroup="},
    };
    for (const auto& [keyValue, onDisk] : cases)
    {
        SCOPED_TRACE(keyValue);
        const zoltest::TemporaryTree root;
        root.directory("p");
        ZolFileManagement::FileMTransaction::initialize(root.path());
        EXPECT_EQ(create(keyValue), 0);
        EXPECT_EQ(create(keyValue, fileGroup("p")), 0);
        EXPECT_EQ(worker.commit(), 0);
        Texts expected = {std::string("d ") + onDisk, "d p", std::string("d p/") + onDisk};
        EXPECT_THAT(root.listing(), testing::UnorderedElementsAreArray(expected));
    }
    EXPECT_THAT(host.messages(), IsEmpty());
}

TEST_F(Create, BelowAParentNamedLikeAHomeDirectoryOrADeviceStaysBelowTheRoot)
{
    for (const char* name : {"~", "~root", "a:"})
    {
        ASSERT_EQ(create(name), 0);
        ASSERT_EQ(create("b", fileGroup(name)), 0);
    }
    EXPECT_EQ(worker.commit(), 0);
    EXPECT_THAT(tree.listing(), ElementsAre("d a:", "d a:/b", "d ~", "d ~/b", "d ~root", "d ~root/b"));
}

TEST_F(Create, BelowAFileByItsClassGoesIntoADirectoryOfThatName)
{
    tree.directory("d/e");
    EXPECT_EQ(create("a", fileInformation("f", fileGroup("d"))), 0);
    EXPECT_EQ(create("b", fileInformation("..", fileGroup("e", fileGroup("d")))), 0);
    EXPECT_EQ(worker.commit(), 0);
    EXPECT_THAT(tree.listing(), ElementsAre("d d", "d d/b", "d d/e", "d d/f", "d d/f/a"));
}

TEST_F(Create, OfAnExistingDirectoryIsNoFailure)
{
    tree.file("a/f");
    EXPECT_EQ(create("a"), 0);
    EXPECT_EQ(worker.commit(), 0);
    EXPECT_THAT(tree.listing(), ElementsAre("d a", "f a/f 1"));
}

TEST_F(Create, TwiceIsNoFailure)
{
    EXPECT_EQ(create("a"), 0);
    EXPECT_EQ(create("a"), 0);
    EXPECT_EQ(deleteM(fileGroup("a")), 0);
    EXPECT_EQ(worker.commit(), 0);
    EXPECT_THAT(tree.listing(), IsEmpty());
}

TEST_F(Create, BelowAMissingParentIsNoFailure)
{
    EXPECT_EQ(create("a", fileGroup("missing")), 0);
    EXPECT_EQ(worker.commit(), 0);
    EXPECT_THAT(tree.listing(), ElementsAre("d missing", "d missing/a"));
}

TEST_F(Create, BelowADeletedParentIsNoFailureAndGoesWithIt)
{
    tree.directory("p");
    EXPECT_EQ(deleteM(fileGroup("p")), 0);
    EXPECT_EQ(create("a", fileGroup("p")), 0);
    EXPECT_EQ(worker.commit(), 0);
    EXPECT_THAT(tree.listing(), IsEmpty());
}

TEST_F(Create, OfADeletedDirectoryWithdrawsTheDeletion)
{
    tree.directory("a/b");
    tree.chmod("a", 0700);
    EXPECT_EQ(deleteM(fileGroup("a")), 0);
    EXPECT_EQ(create("a"), 0);
    EXPECT_EQ(worker.commit(), 0);
    EXPECT_THAT(tree.listing(), ElementsAre("d a", "d a/b"));
    EXPECT_EQ(tree.mode("a"), 0700U);
}
