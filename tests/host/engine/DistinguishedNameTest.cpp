#include "engine/DistinguishedName.h"

#include "engine/Refusal.h"

#include <gtest/gtest.h>
#include <string>

using zolhost::DistinguishedName;
using zolhost::Refusal;

namespace
{

const std::string root = "ManagedElement=1,SystemFunctions=1,FileM=1";

struct GoodName
{
    std::string typed;
    std::string whole;
    std::string moClass;
    std::string value;
};

struct BadName
{
    std::string typed;
    std::string why;
};

std::string whyRefused(const std::string& typed)
{
    try
    {
        DistinguishedName::parse(typed);
        return "accepted";
    }
    catch (const Refusal& refusal)
    {
        EXPECT_EQ(refusal.kind(), Refusal::Kind::BadName) << typed;
        EXPECT_EQ(refusal.dn(), typed);
        return refusal.what();
    }
}

} // namespace

TEST(DistinguishedName, IsTakenWholeOrFromTheRootDownwards)
{
    const GoodName cases[] = {
        {root, root, "FileM", "1"},
        {"FileMConfigData=1", root + ",FileMConfigData=1", "FileMConfigData", "1"},
        {"FileGroup=logs", root + ",FileGroup=logs", "FileGroup", "logs"},
        {root + ",FileGroup=logs", root + ",FileGroup=logs", "FileGroup", "logs"},
        {"FileGroup=a,FileGroup=b", root + ",FileGroup=a,FileGroup=b", "FileGroup", "b"},
        {"FileGroup=a,FileInformation=f", root + ",FileGroup=a,FileInformation=f", "FileInformation", "f"},
    };
    for (const auto& [typed, whole, moClass, value] : cases)
    {
        const auto name = DistinguishedName::parse(typed);
        EXPECT_EQ(name.text(), whole) << typed;
        EXPECT_EQ(name.moClass().name, moClass) << typed;
        EXPECT_EQ(name.value(), value) << typed;
        EXPECT_EQ(name.isRoot(), whole == root) << typed;
    }
}

TEST(DistinguishedName, MayHoldWhateverIsANameOnDisk)
{
    for (const std::string value : {"...", "....", ".a",        "a.",        " padded ",        "~",
                                    "a:",  "a=b",  "=",         "a\\2Bb",    "a?\?b",           "a?\?",
                                    "?",   "?a",   "\n",        "FileGroup", "FileInformation", "..a",
                                    "..?", ".?a",  "a?\?b?\?c", "?\?x"})
    {
        EXPECT_EQ(DistinguishedName::parse("FileGroup=" + value).value(), value);
        EXPECT_EQ(DistinguishedName::parse("FileGroup=d,FileInformation=" + value).value(), value);
    }
}

TEST(DistinguishedName, IsRefusedIfItIsNoneOrWouldLeaveTheTree)
{
    const std::string noPart = " is no part of a name: a part is a class, an equals sign and a value";
    const BadName cases[] = {
        {"", "\"\"" + noPart},
        {"logs", "\"logs\"" + noPart},
        {"FileGroup=a,", "\"\"" + noPart},
        {"FileGroup=a,b", "\"b\"" + noPart},
        {root + ",", "\"\"" + noPart},
        {root + "2", "there is no ManagedElement below a FileM"},
        {"ManagedElement=1,SystemFunctions=1,FileM=2", "there is no ManagedElement below a FileM"},
        {"FileInformation=f", "there is no FileInformation below a FileM"},
        {"FileGroupPolicy=1", "there is no FileGroupPolicy below a FileM"},
        {"filegroup=a", "there is no filegroup below a FileM"},
        {"FileGroup=a,FileM=1", "there is no FileM below a FileGroup"},
        {"FileGroup=a,FileMConfigData=1", "there is no FileMConfigData below a FileGroup"},
        {"FileMConfigData=1,FileGroup=a", "there is no FileGroup below a FileMConfigData"},
        {"FileGroup=a,FileInformation=f,FileGroup=b", "there is no FileGroup below a FileInformation"},
        {"FileMConfigData=2", "FileMConfigData has no other value than 1"},
        {"FileGroup=", "the value of FileGroup is empty"},
        {"FileGroup=,FileGroup=a", "the value of FileGroup is empty"},
        {"FileGroup=a,FileInformation=", "the value of FileInformation is empty"},
        {"FileGroup=.", "the value \".\" would leave the tree"},
        {"FileGroup=..", "the value \"..\" would leave the tree"},
        {"FileGroup=..,FileGroup=a", "the value \"..\" would leave the tree"},
        {"FileGroup=a,FileInformation=..", "the value \"..\" would leave the tree"},
        {"FileGroup=/etc", "the value \"/etc\" holds a slash and would leave its directory"},
        {"FileGroup=a/b", "the value \"a/b\" holds a slash and would leave its directory"},
        {"FileGroup=../../etc", "the value \"../../etc\" holds a slash and would leave its directory"},
        {std::string("FileGroup=a\0b", 13), "a value must not hold a zero byte"},
    };
    for (const auto& [typed, why] : cases)
    {
        EXPECT_EQ(whyRefused(typed), why) << typed;
    }
}
