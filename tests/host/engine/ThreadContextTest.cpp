#include "engine/ThreadContext.h"

#include <gtest/gtest.h>
#include <string>
#include <thread>
#include <vector>

using zolhost::ThreadContext;

namespace
{

using Texts = std::vector<std::string>;

} // namespace

TEST(ThreadContext, CopiesMessagesAndGivesThemOnce)
{
    std::string text = "first";
    EXPECT_EQ(ThreadContext::table()->addMessage(1, text.c_str()), 0);
    text = "XXXXX";
    EXPECT_EQ(ThreadContext::table()->addMessage(1, "second"), 0);
    EXPECT_EQ(ThreadContext::take(), (Texts{"first", "second"}));
    EXPECT_EQ(ThreadContext::take(), Texts{});
}

TEST(ThreadContext, KeepsTheMessagesOfEachThreadApart)
{
    ThreadContext::table()->addMessage(1, "here");
    Texts there;
    std::thread([&] {
        ThreadContext::table()->addMessage(1, "there");
        there = ThreadContext::take();
    }).join();
    EXPECT_EQ(there, Texts{"there"});
    EXPECT_EQ(ThreadContext::take(), Texts{"here"});
}

TEST(ThreadContext, BearsTheIdentityThatComponentsAskFor)
{
    EXPECT_STREQ(ThreadContext::table()->componentName, "ZolMgmtSpiThreadContextService");
    EXPECT_STREQ(ThreadContext::table()->interfaceName, "ZolMgmtSpiThreadContext");
    EXPECT_STREQ(ThreadContext::table()->version, "2");
}
