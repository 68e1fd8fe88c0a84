#include "ChangesFixture.h"

using testing::ElementsAre;
using testing::IsEmpty;
using ZolFileManagement::FileMTransaction;
using zoltest::fileGroup;
using zoltest::RecordedLog;

namespace
{

const std::string childrenRefused = "FileGroup does not allow child FileGroup to be created";

class OperatorMessages : public zoltest::Changes
{};

} // namespace

TEST_F(OperatorMessages, ReachTheHostInCategoryOne)
{
    const RecordedLog log;
    worker.addThreadContextMessage("a text with 100 %s");
    ASSERT_EQ(host.fullMessages().size(), 1U);
    EXPECT_EQ(host.fullMessages()[0].category, 1U);
    EXPECT_EQ(host.fullMessages()[0].text, "a text with 100 %s");
    EXPECT_THAT(log.statements(), IsEmpty());
}

TEST_F(OperatorMessages, WithoutAThreadContextAreLostWithALog)
{
    host.refusedInterfaces = {"ZolMgmtSpiThreadContext"};
    RecordedLog log;
    FileMTransaction transaction(8, *host.portal1());
    log.clear();
    transaction.addThreadContextMessage("a text");
    EXPECT_THAT(log.statements(), ElementsAre("severity-3 FileM ThreadContext is null"));
    EXPECT_THAT(host.messages(), IsEmpty());
}

TEST_F(OperatorMessages, ThatTheHostRefusesAreLoggedWithTheirText)
{
    for (const ZolReturnT code : {-1, 1})
    {
        host.addMessageCode = code;
        const RecordedLog log;
        worker.addThreadContextMessage("a text");
        EXPECT_THAT(log.statements(),
                    ElementsAre("severity-4 Failed to add message to thread context message [a text]"));
    }
}

TEST_F(OperatorMessages, ThatTheHostRefusesChangeNoAnswer)
{
    host.addMessageCode = -1;
    tree.file("p/.filemnodirectorycreate");
    const std::string p = fileGroup("p");
    {
        const RecordedLog log;
        EXPECT_EQ(create("a", p), -1);
        EXPECT_THAT(
            log.statements(),
            ElementsAre("severity-4 Failed to add message to thread context message [" + childrenRefused +
                            "]",
                        "plain Not allowed to create directory, path " + directoryText("p") + ", dn :" + p));
    }
    {
        const RecordedLog log;
        EXPECT_EQ(create("..", p), -1);
        EXPECT_THAT(log.statements(),
                    ElementsAre("severity-4 Failed to add message to thread context message "
                                "[FileGroup name not allowed (..)]",
                                "plain FileGroup name not allowed (..): .., dn :" + p));
    }
    {
        const RecordedLog log;
        EXPECT_EQ(deleteM(p), -1);
        EXPECT_THAT(log.statements(),
                    ElementsAre("severity-4 Failed to add message to thread context message "
                                "[FileGroup is not allowed to be deleted]"));
    }
    {
        const RecordedLog log;
        EXPECT_THAT(removeFile(p, "("), testing::StartsWith("-1 "));
        EXPECT_THAT(log.statements(),
                    ElementsAre("enter  >> Removing files matching expression ^($",
                                "severity-4 Failed to add message to thread context message "
                                "[Invalid regular expression]",
                                "plain Failed to compile file name pattern (^($)"));
    }
}

TEST_F(OperatorMessages, MissingAThreadContextChangesNoAnswer)
{
    host.refusedInterfaces = {"ZolMgmtSpiThreadContext"};
    tree.file("p/.filemnodirectorycreate");
    RecordedLog log;
    FileMTransaction transaction(8, *host.portal1());
    log.clear();
    EXPECT_EQ(transaction.create(fileGroup("p").c_str(), "FileGroup", "fileGroupId", "a"), -1);
    EXPECT_EQ(transaction.deleteM(fileGroup("p").c_str()), -1);
    EXPECT_THAT(log.statements(), ElementsAre("severity-3 FileM ThreadContext is null",
                                              "plain Not allowed to create directory, path " +
                                                  directoryText("p") + ", dn :" + fileGroup("p"),
                                              "severity-3 FileM ThreadContext is null"));
}
