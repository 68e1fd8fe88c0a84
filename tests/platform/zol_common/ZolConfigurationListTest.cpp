#include "AllocatedBytes.h"
#include "ConfigurationQuery.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <memory>

// Whether lists and elements live as long as they should is for AddressSanitizer to see.
namespace
{

using Poco::XML::Element;
using Poco::XML::NodeList;
using testing::ElementsAre;
using testing::IsEmpty;
using Zol::ZolConfiguration;
using zoltest::elementAt;
using zoltest::textsOf;

class ConfigurationLists : public testing::Test
{
protected:
    ConfigurationLists()
    {
        configuration.load("<root><value>1</value><other><value>2</value></other><value>3</value>"
                           "<single>only</single></root>");
    }

    ZolConfiguration configuration;
};

TEST_F(ConfigurationLists, HoldElementsOfAnyDepthInTheirOrder)
{
    EXPECT_THAT(textsOf(configuration, "value"), ElementsAre("1", "2", "3"));
    EXPECT_THAT(textsOf(configuration, "single"), ElementsAre("only"));
    EXPECT_THAT(textsOf(configuration, "root"), ElementsAre("123only"));
    EXPECT_THAT(textsOf(configuration, "none"), IsEmpty());
    EXPECT_THAT(textsOf(configuration, "Value"), IsEmpty());
    EXPECT_THAT(textsOf(configuration, ""), IsEmpty());
}

TEST_F(ConfigurationLists, HoldElementsThatLieInEachOther)
{
    configuration.load("<value>a<value>b</value></value>");
    EXPECT_THAT(textsOf(configuration, "value"), ElementsAre("ab", "b"));
}

TEST_F(ConfigurationLists, TakeANameWithItsPrefix)
{
    configuration.load("<p:value>a</p:value>");
    EXPECT_THAT(textsOf(configuration, "p:value"), ElementsAre("a"));
    EXPECT_THAT(textsOf(configuration, "value"), IsEmpty());
    configuration.load("<value xmlns='urn:some'>a</value>");
    EXPECT_THAT(textsOf(configuration, "value"), ElementsAre("a"));
}

TEST_F(ConfigurationLists, GiveNullBeyondTheirEnd)
{
    NodeList* const list = configuration.getElementsByTagName("value");
    EXPECT_EQ(list->length(), 3);
    EXPECT_NE(list->item(2), nullptr);
    EXPECT_EQ(list->item(3), nullptr);
    list->release();
    NodeList* const none = configuration.getElementsByTagName("none");
    EXPECT_EQ(none->length(), 0);
    EXPECT_EQ(none->item(0), nullptr);
    none->release();
}

TEST_F(ConfigurationLists, AreEmptyWithoutADocument)
{
    configuration.unload();
    NodeList* const list = configuration.getElementsByTagName("value");
    ASSERT_NE(list, nullptr);
    EXPECT_EQ(list->length(), 0);
    list->release();
}

TEST_F(ConfigurationLists, MayBeReleasedTooOftenOrNever)
{
    for (const char* const tag : {"none", "single", "value"})
    {
        NodeList* const neverReleased = configuration.getElementsByTagName(tag);
        NodeList* const releasedTooOften = configuration.getElementsByTagName(tag);
        const unsigned long length = neverReleased->length();
        for (int i = 0; i < 3; ++i)
        {
            releasedTooOften->release();
            // NOLINTNEXTLINE(clang-analyzer-cplusplus.NewDelete): the configuration has more references
            EXPECT_EQ(releasedTooOften->length(), length);
        }
    }
}

TEST_F(ConfigurationLists, MayBeLeftToTheDocument)
{
    NodeList* const list = configuration.getElementsByTagName("value");
    list->autoRelease();
    EXPECT_EQ(list->length(), 3);
    configuration.unload();
}

TEST_F(ConfigurationLists, EndWithTheObjectHoweverOftenTheyWereReleased)
{
    auto other = std::make_unique<ZolConfiguration>();
    other->load("<value/>");
    for (int releases = 0; releases < 4; ++releases)
    {
        NodeList* const list = other->getElementsByTagName("value");
        for (int i = 0; i < releases; ++i)
        {
            list->release();
        }
    }
    other.reset();
}

TEST_F(ConfigurationLists, LeaveTheirElementsToTheDocument)
{
    NodeList* const list = configuration.getElementsByTagName("single");
    Element* const element = elementAt(*list, 0);
    list->release();
    EXPECT_EQ(configuration.get_text(element), "only");
}

TEST_F(ConfigurationLists, GoTogetherWithTheListsOfTheirElements)
{
    NodeList* const roots = configuration.getElementsByTagName("root");
    NodeList* const values = elementAt(*roots, 0)->getElementsByTagName("value");
    EXPECT_EQ(values->length(), 3);
    EXPECT_EQ(configuration.get_text(elementAt(*values, 1)), "2");
    values->release();
    roots->release();
}

TEST_F(ConfigurationLists, OfOneDocumentEndWhenTheNextOneIsLoaded)
{
    configuration.getElementsByTagName("value");
    configuration.load("<value>next</value>");
    EXPECT_THAT(textsOf(configuration, "value"), ElementsAre("next"));
}

TEST_F(ConfigurationLists, TakeNoMemoryOnceTheirDocumentIsGone)
{
    std::string document = "<root>";
    for (int i = 0; i < 1000; ++i)
    {
        document += "<value/>";
    }
    document += "</root>";
    const std::size_t before = zoltest::allocatedBytes();
    for (int i = 0; i < 100; ++i)
    {
        configuration.load(document);
        configuration.getElementsByTagName("value");
    }
    configuration.unload();
    EXPECT_LT(zoltest::allocatedBytes(), before + 400'000);
}

} // namespace
