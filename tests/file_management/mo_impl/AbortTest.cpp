#include "ChangesFixture.h"

using testing::ElementsAre;
using zoltest::fileGroup;
using zoltest::fileInformation;
using zoltest::fileM;
using zoltest::RecordedLog;
using zoltest::Texts;

namespace
{

class Abort : public zoltest::Changes
{
protected:
    unsigned long long open(const std::string& className)
    {
        unsigned long long iterator = 0;
        EXPECT_EQ(worker.newIterator(fileM.c_str(), className.c_str(), &iterator), 0);
        return iterator;
    }
};

} // namespace

TEST_F(Abort, TracesItsBeginningAndItsEnd)
{
    const RecordedLog log;
    EXPECT_EQ(worker.abort(), 0);
    EXPECT_THAT(log.statements(), ElementsAre("enter  >> ", "exit  << "));
}

TEST_F(Abort, DropsAllThatWaits)
{
    tree.file("d/f");
    tree.directory("e");
    const Texts before = tree.listing();
    ASSERT_EQ(deleteM(fileInformation("f", fileGroup("d"))), 0);
    ASSERT_EQ(create("new"), 0);
    ASSERT_EQ(deleteM(fileGroup("e")), 0);

    EXPECT_EQ(worker.abort(), 0);
    EXPECT_EQ(tree.listing(), before);
    EXPECT_EQ(worker.commit(), 0);
    EXPECT_EQ(tree.listing(), before);
}

TEST_F(Abort, AfterCommitFindsNothing)
{
    ASSERT_EQ(create("a"), 0);
    ASSERT_EQ(worker.commit(), 0);
    EXPECT_EQ(worker.abort(), 0);
    EXPECT_EQ(worker.abort(), 0);
    EXPECT_THAT(tree.listing(), ElementsAre("d a"));
}

TEST_F(Abort, LeavesTheTransactionReadyForMore)
{
    ASSERT_EQ(create("a"), 0);
    ASSERT_EQ(worker.abort(), 0);
    ASSERT_EQ(create("b"), 0);
    EXPECT_EQ(worker.commit(), 0);
    EXPECT_THAT(tree.listing(), ElementsAre("d b"));
}

TEST_F(Abort, ForgetsIterationsOverDirectoriesAndFiles)
{
    tree.directory("a");
    tree.file("f");
    const auto directories = open("FileGroup");
    const auto files = open("FileInformation");
    ASSERT_EQ(worker.abort(), 0);
    char* name = nullptr;
    EXPECT_EQ(worker.next(directories, &name), -2);
    EXPECT_EQ(worker.next(files, &name), -2);
}

TEST_F(Abort, KeepsIterationsOverTheConfiguration)
{
    const auto configuration = open("FileMConfigData");
    ASSERT_EQ(worker.abort(), 0);
    char* name = nullptr;
    EXPECT_EQ(worker.next(configuration, &name), 0);
    EXPECT_STREQ(name, "1");
}

TEST_F(Abort, KeepsIteratorsAndNamesUntilFinish)
{
    tree.directory("a");
    const auto directories = open("FileGroup");
    char* name = nullptr;
    ASSERT_EQ(worker.next(directories, &name), 0);
    ASSERT_EQ(tree.openDescriptors(), 1); // the iterator's place in the directory
    ASSERT_EQ(worker.abort(), 0);
    EXPECT_STREQ(name, "a");
    EXPECT_EQ(tree.openDescriptors(), 1);
    ASSERT_EQ(worker.finish(), 0);
    EXPECT_EQ(tree.openDescriptors(), 0);
}

TEST_F(Abort, LetsIterationsBeOpenedAnew)
{
    tree.directory("a");
    open("FileGroup");
    ASSERT_EQ(worker.abort(), 0);
    const auto directories = open("FileGroup");
    char* name = nullptr;
    EXPECT_EQ(worker.next(directories, &name), 0);
    EXPECT_STREQ(name, "a");
}
