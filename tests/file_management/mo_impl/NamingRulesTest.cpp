#include "Worker.h"

#include "support/RecordedLog.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace
{

using zoltest::Worker;

// The reason, or "legal" if the name is so and the text for the reason was left alone.
std::string verdict(Worker& worker, const std::string& name)
{
    std::string error = "as before";
    if (worker.transaction.illegalNaming(name.c_str(), error))
    {
        return error;
    }
    return error == "as before" ? "legal" : "legal, but the text was changed";
}

std::string verdict(const std::string& name)
{
    Worker worker("/fs");
    return verdict(worker, name);
}

TEST(NamingRules, FirstSlashOrBarIsNamed)
{
    EXPECT_EQ(verdict("a/b"), "FileGroup contains illegal character(/)");
    EXPECT_EQ(verdict("a|b"), "FileGroup contains illegal character(|)");
    EXPECT_EQ(verdict("a|b/c"), "FileGroup contains illegal character(|)");
    EXPECT_EQ(verdict("../x"), "FileGroup contains illegal character(/)");
}

TEST(NamingRules, NameOfNothingButDotsIsNotAllowed)
{
    EXPECT_EQ(verdict("."), "FileGroup name not allowed (.)");
    EXPECT_EQ(verdict("...."), "FileGroup name not allowed (....)");
    EXPECT_EQ(verdict(""), "FileGroup name not allowed ()");
}

TEST(NamingRules, OtherNamesAreLegal)
{
    for (const char* name : {".a", "a.", "a+b", "a,b", "a=b", "a?\?b", "a\\2Bb", " ", "~", "a:", "\n"})
    {
        EXPECT_EQ(verdict(name), "legal") << name;
    }
}

TEST(NamingRules, RefusalItselfLeavesNeitherALogNorAMessage)
{
    Worker worker("/fs");
    const zoltest::RecordedLog log;
    verdict(worker, "a/b");
    verdict(worker, "..");
    EXPECT_THAT(log.statements(), testing::IsEmpty());
    EXPECT_THAT(worker.host.messages(), testing::IsEmpty());
}

} // namespace
