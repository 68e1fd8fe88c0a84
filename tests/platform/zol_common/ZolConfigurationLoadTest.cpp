#include "ConfigurationQuery.h"
#include "support/TemporaryTree.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <sys/stat.h>

namespace
{

using testing::AllOf;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::SizeIs;
using Zol::ZolConfiguration;
using zoltest::failureOfLoading;
using zoltest::TemporaryTree;
using zoltest::textsOf;

TEST(ConfigurationLoad, TakesForTextWhatBeginsWithLessThanAfterWhiteSpace)
{
    for (const char* const text :
         {"<root><value>text</value></root>", "<value>text</value>",
          " \t\r\n<root><value>text</value></root>\n",
          "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n<value>text</value>",
          "\n <?xml version=\"1.0\"?><!-- comment --><!DOCTYPE root><value>text</value>"})
    {
        ZolConfiguration configuration;
        configuration.load(text);
        EXPECT_THAT(textsOf(configuration, "value"), ElementsAre("text")) << text;
    }
}

TEST(ConfigurationLoad, TakesAnythingElseForAPath)
{
    const TemporaryTree tree;
    const std::string path = tree.file("document.xml", "\n<root><value>from the file</value></root>");
    ZolConfiguration configuration;
    configuration.load(path);
    EXPECT_THAT(textsOf(configuration, "value"), ElementsAre("from the file"));
}

TEST(ConfigurationLoad, ReadsAFileOfMoreThanOneBlock)
{
    std::string content = "<root>";
    for (int i = 0; i < 5000; ++i)
    {
        content += "<value>" + std::to_string(i) + "</value>";
    }
    const std::string text(100'000, 'x');
    content += "<long>" + text + "</long></root>";
    const TemporaryTree tree;
    ZolConfiguration configuration;
    configuration.load(tree.file("document.xml", content));
    EXPECT_THAT(textsOf(configuration, "value"), SizeIs(5000));
    EXPECT_THAT(textsOf(configuration, "long"), ElementsAre(text));
}

TEST(ConfigurationLoad, NamesAFileThatIsNotThere)
{
    const TemporaryTree tree;
    const std::string path = tree.path("missing.xml");
    ZolConfiguration configuration;
    EXPECT_EQ(failureOfLoading(configuration, path),
              "Configuration document \"" + path + "\" can't be read: No such file or directory");
}

TEST(ConfigurationLoad, NamesADirectory)
{
    const TemporaryTree tree;
    ZolConfiguration configuration;
    EXPECT_EQ(failureOfLoading(configuration, tree.path()),
              "Configuration document \"" + tree.path() + "\" can't be read: Is a directory");
}

TEST(ConfigurationLoad, TakesAnEmptyReferenceForAPathThatIsNotThere)
{
    ZolConfiguration configuration;
    for (const char* const config : {"", " \n"})
    {
        EXPECT_THAT(failureOfLoading(configuration, config), HasSubstr("can't be read"));
    }
}

TEST(ConfigurationLoad, NamesAFileThatIsNoDocument)
{
    const TemporaryTree tree;
    ZolConfiguration configuration;
    for (const char* const content : {"", " \n", "no document", "<root>", "<root></other>"})
    {
        const std::string path = tree.file("document.xml", content);
        EXPECT_THAT(
            failureOfLoading(configuration, path),
            AllOf(HasSubstr("Configuration document \"" + path + "\" can't be parsed: "), HasSubstr("line ")))
            << content;
    }
}

TEST(ConfigurationLoad, ReportsReasonAndLineOfAMalformedText)
{
    struct Row
    {
        std::string text;
        std::string reason;
    };
    for (const auto& [text, reason] : std::vector<Row>{
             {"<root>\n</other>", "Tag mismatch in line 2"},
             {"<root>\n\n", "No element found in line 3"},
             {"<", "Unclosed token in line 1"},
             {"<a/><b/>", "Junk after document element in line 1"},
             {"<a>&nowhere;</a>", "Undefined entity in line 1"},
             {std::string("<a>\0</a>", 8), "Invalid token in line 1"},
             {"<a b='1' b='2'/>", "Duplicate attribute in line 1"},
         })
    {
        ZolConfiguration configuration;
        EXPECT_THAT(failureOfLoading(configuration, text),
                    AllOf(HasSubstr("Configuration document text can't be parsed: "), HasSubstr(reason)));
    }
}

TEST(ConfigurationLoad, ThatFailsLeavesNoDocument)
{
    ZolConfiguration configuration;
    configuration.load("<value>first</value>");
    EXPECT_NE(failureOfLoading(configuration, "<value>second"), "nothing thrown");
    EXPECT_THAT(textsOf(configuration, "value"), IsEmpty());

    configuration.load("<value>first</value>");
    EXPECT_NE(failureOfLoading(configuration, ""), "nothing thrown");
    EXPECT_THAT(textsOf(configuration, "value"), IsEmpty());
}

TEST(ConfigurationLoad, ReplacesTheDocument)
{
    ZolConfiguration configuration;
    configuration.load("<value>first</value>");
    configuration.load("<value>second</value>");
    EXPECT_THAT(textsOf(configuration, "value"), ElementsAre("second"));
}

TEST(ConfigurationLoad, TakesMoreNamesThanAUsualDocumentHas)
{
    std::string elements;
    std::string attributes;
    for (int i = 0; i < 2000; ++i)
    {
        elements += "<e" + std::to_string(i) + "/>";
        attributes += " a" + std::to_string(i) + "=''";
    }
    ZolConfiguration configuration;
    configuration.load("<root" + attributes + ">" + elements + "<value>text</value></root>");
    EXPECT_THAT(textsOf(configuration, "value"), ElementsAre("text"));
}

TEST(ConfigurationLoad, RefusesMoreNamesThanAnyDocumentHas)
{
    std::string elements;
    for (int i = 0; i < 20'000; ++i)
    {
        elements += "<e" + std::to_string(i) + "/>";
    }
    ZolConfiguration configuration;
    EXPECT_THAT(failureOfLoading(configuration, "<root>" + elements + "</root>"), HasSubstr("XML name pool"));
}

std::string nested(int depth)
{
    std::string text;
    for (int i = 0; i < depth; ++i)
    {
        text += "<value>";
    }
    text += "text";
    for (int i = 0; i < depth; ++i)
    {
        text += "</value>";
    }
    return text;
}

TEST(ConfigurationLoad, RefusesElementsNestedTooDeeply)
{
    ZolConfiguration configuration;
    configuration.load(nested(256));
    EXPECT_THAT(textsOf(configuration, "value"), AllOf(SizeIs(256), testing::Each("text")));
    EXPECT_THAT(failureOfLoading(configuration, nested(257)),
                HasSubstr("More than 256 elements in each other"));
    EXPECT_THAT(failureOfLoading(configuration, nested(16'000)), HasSubstr("More than 256 elements"));
    configuration.load("<root>" + nested(255) + nested(255) + "</root>");
    EXPECT_THAT(textsOf(configuration, "value"), SizeIs(510));
}

TEST(ConfigurationLoad, RefusesADocumentOfMoreThan256Kibibytes)
{
    const std::string message = " is larger than 262144 bytes";
    const TemporaryTree tree;
    ZolConfiguration configuration;
    const std::string allowed = "<root>" + std::string(262'144 - 13, 'x') + "</root>";
    configuration.load(allowed);
    configuration.load(tree.file("allowed.xml", allowed));
    EXPECT_EQ(failureOfLoading(configuration, allowed + "\n"), "Configuration document text" + message);
    const std::string path = tree.file("large.xml", allowed + "\n");
    EXPECT_EQ(failureOfLoading(configuration, path), "Configuration document \"" + path + "\"" + message);
}

TEST(ConfigurationLoad, RefusesWhatIsNoFileWithoutWaitingForIt)
{
    const TemporaryTree tree;
    const std::string pipe = tree.path("pipe");
    ASSERT_EQ(mkfifo(pipe.c_str(), 0600), 0);
    ZolConfiguration configuration;
    for (const std::string& path : {pipe, std::string("/dev/zero")})
    {
        EXPECT_EQ(failureOfLoading(configuration, path),
                  "Configuration document \"" + path + "\" can't be read: It is no file");
    }
}

TEST(ConfigurationLoad, LeavesNoFileOpen)
{
    const TemporaryTree tree;
    ZolConfiguration configuration;
    configuration.load(tree.file("document.xml", "<value/>"));
    EXPECT_NE(failureOfLoading(configuration, tree.file("other.xml", "<value>")), "nothing thrown");
    EXPECT_NE(failureOfLoading(configuration, tree.file("large.xml", std::string(300'000, 'x'))),
              "nothing thrown");
    EXPECT_NE(failureOfLoading(configuration, tree.path()), "nothing thrown");
    EXPECT_EQ(tree.openDescriptors(), 0);
}

TEST(ConfigurationLoad, RefusesAttributesThatADeclarationRepeats)
{
    std::string elements;
    for (int i = 0; i < 1000; ++i)
    {
        elements += "<e/>";
    }
    const auto document = [&](std::size_t size) {
        return "<!DOCTYPE root [<!ATTLIST e a CDATA '" + std::string(size, 'x') + "'>]><root>" + elements +
               "</root>";
    };
    ZolConfiguration configuration;
    configuration.load(document(1000));
    EXPECT_THAT(textsOf(configuration, "e"), SizeIs(1000));
    EXPECT_THAT(failureOfLoading(configuration, document(2000)),
                HasSubstr("More than 1048576 bytes of attributes"));
}

TEST(ConfigurationUnload, IsHarmlessWithoutADocument)
{
    ZolConfiguration configuration;
    configuration.unload();
    configuration.load("<value/>");
    configuration.unload();
    configuration.unload();
    EXPECT_THAT(textsOf(configuration, "value"), IsEmpty());
}

} // namespace
