#include "model/DnRules.h"
#include "model/Vocabulary.h"

#include <gtest/gtest.h>
#include <string>
#include <utility>
#include <vector>

using zolmodel::isAcceptable;
using zolmodel::lastValueOf;
using zolmodel::locationOf;
using zolmodel::ROOT_DN;

TEST(ModelOfDns, AcceptsByTheLastLetterOfASet)
{
    const std::vector<std::pair<std::string, bool>> rows = {
        {"", true},
        {",FileGroup=abc", true},
        {",FileGroup=", false},
        {",FileGroup=.", false},
        {",FileGroup=..", false},
        {",FileGroup=...", false},
        {",FileGroup=....", true},
        {",FileGroup=/x", false},
        {",FileGroup=./x", false},
        {",FileGroup=../x", false},
        {",FileGroup=a/b", true},
        {",FileGroup=/etc", true},
        {",FileGroup=../../etc", true},
        {",FileGroup=a=/b", false},
        {",FileGroup=ab=.", true},
        {",FileGroup=../x,FileInformation=abc", true},
        {",FileGroup=a,FileInformation=..", false},
        {",FileGroup=a,FileInformation=", false},
    };
    for (const auto& [tail, accepted] : rows)
    {
        EXPECT_EQ(isAcceptable(ROOT_DN + tail), accepted) << tail;
    }
    EXPECT_FALSE(isAcceptable(""));
}

TEST(ModelOfDns, LeadToPlaces)
{
    const std::vector<std::pair<std::string, std::string>> rows = {
        {"", "/fs/"},
        {",FileMConfigData=1", "/fs/"},
        {",FileGroup=logs", "/fs/logs/"},
        {",FileGroup=logs,FileGroup=a\\2Bb", "/fs/logs/a+b/"},
        {",FileGroup=logs,FileGroup=a\\2bb,FileInformation=c\\2Bd.txt", "/fs/logs/a+b/c\\2Bd.txt"},
        {",FileGroup=a,FileInformation=FileGroup\\2Bx", "/fs/a/FileGroup+x"},
        {",FileGroup=a,Other=b", "/a/b"},
        {",FileGroupPolicy=x", "/fs/x/"},
        {",FileGroup=a,b", "/fs/a/"},
        {",FileGroup=../x", "/x/"},
        {",FileInformation=x", "/fs"},
    };
    for (const auto& [tail, place] : rows)
    {
        EXPECT_EQ(locationOf(ROOT_DN + tail, "/fs").text(), place) << tail;
    }
}

TEST(ModelOfDns, HaveALastValue)
{
    EXPECT_EQ(lastValueOf(ROOT_DN + ",FileGroup=a=b"), "b");
    EXPECT_EQ(lastValueOf("abc"), "IllegalDname");
}
