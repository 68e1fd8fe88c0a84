#include "engine/CodeMeaning.h"

#include "engine/Refusal.h"
#include "engine/ThreadContext.h"

#include <gtest/gtest.h>
#include <string>

using namespace zolhost;

namespace
{

Refusal refusalBy(Operation operation, ZolReturnT code)
{
    try
    {
        refuseByCode(operation, "dn", code);
    }
    catch (const Refusal& refusal)
    {
        EXPECT_EQ(refusal.dn(), "dn");
        return refusal;
    }
}

} // namespace

TEST(CodeMeaning, DependsOnTheOperation)
{
    EXPECT_EQ(meaningOf(Operation::Delete, -2), "no such object");
    EXPECT_EQ(meaningOf(Operation::Remove, -2), "the component has no such action");
    EXPECT_EQ(meaningOf(Operation::RemoveFile, -8), "the action takes one text");
    EXPECT_EQ(meaningOf(Operation::Delete, -17), "the component answers with code -17");
}

TEST(CodeMeaning, GivesWayToWhatTheComponentSays)
{
    ThreadContext::table()->addMessage(1, "FileGroup is not allowed to be deleted");
    EXPECT_STREQ(refusalBy(Operation::Delete, -1).what(), "FileGroup is not allowed to be deleted");
    EXPECT_STREQ(refusalBy(Operation::Delete, -1).what(),
                 "it is a symbolic link, or there are files in it or below")
        << "a message is for one refusal";

    ThreadContext::table()->addMessage(1, "one");
    ThreadContext::table()->addMessage(1, "two");
    EXPECT_STREQ(refusalBy(Operation::Create, -1).what(), "one; two");
}

TEST(CodeMeaning, TellsMissingObjectsFromOtherFailures)
{
    EXPECT_EQ(refusalBy(Operation::Delete, -2).kind(), Refusal::Kind::NoSuchObject);
    EXPECT_EQ(refusalBy(Operation::Read, -2).kind(), Refusal::Kind::NoSuchObject);
    EXPECT_EQ(refusalBy(Operation::Delete, -1).kind(), Refusal::Kind::Failed);
    EXPECT_EQ(refusalBy(Operation::Remove, -2).kind(), Refusal::Kind::Failed);
    EXPECT_EQ(refusalBy(Operation::Commit, -2).kind(), Refusal::Kind::Failed);
}
