#include "Worker.h"

#include "support/DistinguishedNames.h"
#include "support/RecordedLog.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace
{

using zoltest::fileM;
using zoltest::Worker;

bool isAccepted(const std::string& dn)
{
    return Worker("/fs").transaction.checkDn(dn.c_str());
}

struct Case
{
    std::string dn;
    bool isAccepted;
};

void expect(const std::vector<Case>& cases)
{
    for (const auto& row : cases)
    {
        EXPECT_EQ(isAccepted(row.dn), row.isAccepted) << row.dn;
    }
}

TEST(CheckDn, EmptyDnIsRefused)
{
    expect({{"", false}});
}

TEST(CheckDn, RootIsAccepted)
{
    expect({{fileM, true}});
}

TEST(CheckDn, EmptyValueIsRefused)
{
    expect({{fileM + ",FileGroup=abc", true},
            {fileM + ",FileGroup=", false},
            {fileM + ",FileGroup=a,FileInformation=", false},
            {fileM + ",FileGroup=,", false}});
}

TEST(CheckDn, UpToThreeDotsAreRefusedAsAWholeValue)
{
    expect({{fileM + ",FileGroup=.", false},
            {fileM + ",FileGroup=..", false},
            {fileM + ",FileGroup=...", false},
            {fileM + ",FileGroup=....", true},
            {fileM + ",FileGroup=a,FileInformation=..", false},
            {fileM + ",FileGroup=.a", true},
            {fileM + ",FileGroup=..a", true},
            {fileM + ",FileGroup=...a", true}});
}

TEST(CheckDn, ValueThatBeginsWithASlashOrWithDotsAndASlashIsRefused)
{
    expect({{fileM + ",FileGroup=/x", false},
            {fileM + ",FileGroup=./x", false},
            {fileM + ",FileGroup=../x", false},
            {fileM + ",FileGroup=.../x", true},
            {fileM + ",FileGroup=a/b", true}});
}

TEST(CheckDn, SlashAfterALaterEqualsSignIsRefused)
{
    expect({{fileM + ",FileGroup=a=/b", false},
            {fileM + ",FileGroup=a=./b", false},
            {fileM + ",FileGroup=a=../b", false}});
}

TEST(CheckDn, DotsAfterALaterEqualsSignAreAccepted)
{
    expect({{fileM + ",FileGroup=ab=.", true},
            {fileM + ",FileGroup=ab=..", true},
            {fileM + ",FileGroup=ab=...", true}});
}

TEST(CheckDn, OnlyTheLastRdnIsLookedAt)
{
    expect({{fileM + ",FileGroup=../x,FileInformation=abc", true},
            {fileM + ",FileGroup=,FileInformation=abc", true},
            {fileM + ",FileGroup=..,FileGroup=abc", true}});
}

TEST(CheckDn, ValueThatHoldsALetterOfTheClassNameEscapes)
{
    expect({{fileM + ",FileGroup=/etc", true}, {fileM + ",FileGroup=../../etc", true}});
}

TEST(CheckDn, ExactlyTheNineLettersOfTheClassNameEscape)
{
    const std::string letters = "FileGroup";
    for (int byte = 1; byte < 256; ++byte)
    {
        const char character = static_cast<char>(byte);
        const bool escapes = letters.find(character) != std::string::npos;
        EXPECT_EQ(isAccepted(fileM + ",FileGroup=/" + character), escapes) << byte;
    }
}

TEST(CheckDn, EqualsSignInAValueBehindALetterIsTakenForTheRdns)
{
    expect({{fileM + ",FileGroup=e=", false},
            {fileM + ",FileGroup=e=..", false},
            {fileM + ",FileGroup=../e=a", true}});
}

TEST(CheckDn, DnWithoutAnyLetterOfTheClassNameIsAccepted)
{
    expect({{"x=.", true}, {"x=/", true}, {"x=", true}, {"x", true}, {",", true}});
}

TEST(CheckDn, RefusalLeavesNeitherALogNorAMessage)
{
    Worker worker("/fs");
    const zoltest::RecordedLog log;
    EXPECT_FALSE(worker.transaction.checkDn((fileM + ",FileGroup=..").c_str()));
    EXPECT_THAT(log.statements(), testing::IsEmpty());
    EXPECT_THAT(worker.host.messages(), testing::IsEmpty());
}

} // namespace
