#include "ConfigurationQuery.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace
{

using testing::ElementsAre;
using Zol::ZolConfiguration;

TEST(ElementText, IsAsItStandsInTheDocument)
{
    struct Row
    {
        std::string content;
        std::string text;
    };
    for (const auto& [content, text] : std::vector<Row>{
             {"/fs", "/fs"},
             {"", ""},
             {" \n\t/fs\n ", " \n\t/fs\n "},
             {"<![CDATA[<&>]]>", "<&>"},
             {"a<![CDATA[ b ]]>c", "a b c"},
             {"a<!-- comment -->b", "ab"},
             {"a<?target data?>b", "ab"},
             {"&lt;&gt;&amp;&quot;&apos;", "<>&\"'"},
             {"&#65;&#x42;", "AB"},
             {"a<inner>b<deeper>c</deeper></inner>d", "abcd"},
             {"<inner/>", ""},
             {"\xc3\xa4", "\xc3\xa4"},
             {"%s {}", "%s {}"},
         })
    {
        ZolConfiguration configuration;
        configuration.load("<root><value>" + content + "</value></root>");
        EXPECT_THAT(zoltest::textsOf(configuration, "value"), ElementsAre(text)) << content;
    }
}

TEST(ElementText, OfAnEmptyTagIsEmpty)
{
    ZolConfiguration configuration;
    configuration.load("<root><value/></root>");
    EXPECT_THAT(zoltest::textsOf(configuration, "value"), ElementsAre(""));
}

} // namespace
