#include <climits>
#include <gtest/gtest.h>
#include <zol/common/ZolReturn.h>

namespace
{

using Zol::ZolReturn;

TEST(ReturnText, TellsTheCodesApart)
{
    EXPECT_STREQ(ZolReturn::strerror(0), "Success");
    EXPECT_STREQ(ZolReturn::strerror(-1), "Failed or refused");
    EXPECT_STREQ(ZolReturn::strerror(-2), "No such object, attribute, action, transaction or iterator");
    EXPECT_STREQ(ZolReturn::strerror(-8), "Wrong type or number of action parameters");
}

TEST(ReturnText, IsGeneralForACodeOfOthers)
{
    for (const int code : {1, -3, -7, -9, INT_MAX, INT_MIN})
    {
        EXPECT_STREQ(ZolReturn::strerror(code), "Unknown return code");
    }
}

} // namespace
