#include <gtest/gtest.h>
#include <memory>
#include <string>
#include <zol/common/ZolException.h>

namespace
{

using Zol::ZolException;

TEST(ZolException, CarriesItsCodeAndFormattedText)
{
    const ZolException exception(-8, "%s of %d%%", "text", 5);
    EXPECT_EQ(exception.code(), -8);
    EXPECT_STREQ(exception.what(), "text of 5%");
}

TEST(ZolException, WithoutACodeCarriesFailure)
{
    const ZolException exception("Multiple %s found", "things");
    EXPECT_EQ(exception.code(), -1);
    EXPECT_STREQ(exception.what(), "Multiple things found");
}

TEST(ZolException, TakesATextOfAnyLength)
{
    for (const std::size_t length : {0U, 511U, 512U, 513U, 1'000'000U})
    {
        const std::string text(length, 'x');
        EXPECT_EQ(ZolException("%s", text.c_str()).what(), text);
        EXPECT_EQ(ZolException(-2, "%s", text.c_str()).what(), text);
    }
}

TEST(ZolException, IsCaughtAsAnyOther)
{
    try
    {
        throw ZolException(-2, "No such attribute");
    }
    catch (const std::exception& exception)
    {
        EXPECT_STREQ(exception.what(), "No such attribute");
    }
}

TEST(ZolException, CopiesOutliveTheOriginal)
{
    auto original = std::make_unique<ZolException>(-2, "a text that is longer than a %s", "short string");
    const ZolException copy = *original;
    ZolException assigned("other");
    assigned = *original;
    original.reset();
    EXPECT_EQ(copy.code(), -2);
    EXPECT_STREQ(copy.what(), "a text that is longer than a short string");
    EXPECT_EQ(assigned.code(), -2);
    EXPECT_STREQ(assigned.what(), "a text that is longer than a short string");
}

} // namespace
