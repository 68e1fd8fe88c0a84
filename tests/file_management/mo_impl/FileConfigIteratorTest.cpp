#include "FileMTransaction.h"

#include <gtest/gtest.h>

namespace zoltest
{

namespace
{

TEST(FileConfigIterator, YieldsTheOneInstanceAndThenNothing)
{
    ZolFileManagement::FileMTransaction::FileConfigIterator iterator;
    std::string value;

    EXPECT_TRUE(iterator.getNext(value));
    EXPECT_EQ(value, "1");

    value = "untouched";
    EXPECT_FALSE(iterator.getNext(value));
    EXPECT_FALSE(iterator.getNext(value));
    EXPECT_EQ(value, "untouched");
}

} // namespace

} // namespace zoltest
