#include "RdnValue.h"

#include "support/DistinguishedNames.h"

#include <gtest/gtest.h>

using ZolFileManagement::getRdnValue;
using zoltest::fileGroup;
using zoltest::fileInformation;

TEST(RdnValue, IsThatOfTheLastRdn)
{
    EXPECT_EQ(getRdnValue(fileGroup("abc")), "abc");
    EXPECT_EQ(getRdnValue(fileInformation("f.txt", fileGroup("abc"))), "f.txt");
    EXPECT_EQ(getRdnValue(fileGroup("")), "");
}

TEST(RdnValue, WithoutAnEqualsSignIsIllegalDname)
{
    EXPECT_EQ(getRdnValue("abc"), "IllegalDname");
    EXPECT_EQ(getRdnValue(""), "IllegalDname");
}

TEST(RdnValue, ThatHoldsAnEqualsSignIsCutAtItsLastOne)
{
    EXPECT_EQ(getRdnValue(fileGroup("a=b")), "b");
}

TEST(RdnValue, GoesOnBehindACommaWithoutAnEqualsSign)
{
    EXPECT_EQ(getRdnValue(fileGroup("a,b")), "a,b");
}
