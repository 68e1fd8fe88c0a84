#include "ConfigurationQuery.h"
#include "support/TemporaryTree.h"

#include <array>
#include <fstream>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <sys/inotify.h>
#include <unistd.h>

namespace
{

using testing::AllOf;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::Not;
using Zol::ZolConfiguration;
using zoltest::elementAt;
using zoltest::failureOf;
using zoltest::failureOfLoading;
using zoltest::TemporaryTree;
using zoltest::textsOf;

std::string failureOfText(ZolConfiguration& configuration, const std::string& tag)
{
    Poco::XML::NodeList* const list = configuration.getElementsByTagName(tag);
    std::string failure = failureOf([&] { configuration.get_text(elementAt(*list, 0)); });
    list->release();
    return failure;
}

TEST(InternalEntity, IsNotExpandedAndItsElementHasNoText)
{
    ZolConfiguration configuration;
    configuration.load("<!DOCTYPE root [<!ENTITY place '/etc'>]>"
                       "<root><value>/fs&place;/a</value><other>plain</other></root>");
    EXPECT_EQ(failureOfText(configuration, "value"),
              "Element value refers to entity place, and entities are not expanded");
    EXPECT_THAT(textsOf(configuration, "other"), ElementsAre("plain"));
}

TEST(InternalEntity, MakesTheElementsAroundItUnreadableToo)
{
    ZolConfiguration configuration;
    configuration.load("<!DOCTYPE root [<!ENTITY place '/etc'>]>"
                       "<root><value>/fs<inner>a</inner><inner>&place;</inner></value></root>");
    EXPECT_THAT(failureOfText(configuration, "value"), HasSubstr("refers to entity place"));
}

TEST(InternalEntity, OfMarkupBringsNoElements)
{
    ZolConfiguration configuration;
    configuration.load("<!DOCTYPE root [<!ENTITY markup '<value>hidden</value>'>]>"
                       "<root>&markup;<value>plain</value></root>");
    EXPECT_THAT(textsOf(configuration, "value"), ElementsAre("plain"));
}

/// Tells whether a file is opened.
class OpenWatch
{
public:
    explicit OpenWatch(const std::string& path)
        : _descriptor(inotify_init1(IN_NONBLOCK | IN_CLOEXEC))
    {
        if (_descriptor < 0 || inotify_add_watch(_descriptor, path.c_str(), IN_OPEN) < 0)
        {
            throw std::runtime_error("no watch on " + path);
        }
    }
    OpenWatch(const OpenWatch&) = delete;
    OpenWatch& operator=(const OpenWatch&) = delete;
    ~OpenWatch() { close(_descriptor); }

    bool sawOpening() const
    {
        std::array<char, 4096> events{};
        return read(_descriptor, events.data(), events.size()) > 0;
    }

private:
    int _descriptor;
};

class OutsideDocument : public testing::Test
{
protected:
    OutsideDocument()
        : path(tree.file("secret", "<!ENTITY inner 'secret'>"))
        , watch(path)
    {}

    TemporaryTree tree;
    std::string path;
    OpenWatch watch;
    ZolConfiguration configuration;
};

TEST_F(OutsideDocument, WouldBeSeenToBeOpened)
{
    EXPECT_FALSE(watch.sawOpening());
    const std::ifstream file(path);
    EXPECT_TRUE(watch.sawOpening());
}

TEST_F(OutsideDocument, IsNotReadForAnEntity)
{
    const std::string declaration = "<!DOCTYPE root [<!ENTITY outside SYSTEM 'file://" + path + "'>]>";
    EXPECT_THAT(failureOfLoading(configuration, declaration + "<root><value>&outside;</value></root>"),
                AllOf(HasSubstr("external entity"), Not(HasSubstr("secret'"))));
    configuration.load(declaration + "<root><value>text</value></root>");
    EXPECT_THAT(textsOf(configuration, "value"), ElementsAre("text"));
    EXPECT_FALSE(watch.sawOpening());
}

TEST_F(OutsideDocument, IsNotReadForAPathBesideTheDocument)
{
    const std::string document = tree.file(
        "document.xml", "<!DOCTYPE root [<!ENTITY outside SYSTEM 'secret'>]><value>&outside;</value>");
    EXPECT_THAT(failureOfLoading(configuration, document), HasSubstr("external entity"));
    EXPECT_FALSE(watch.sawOpening());
}

TEST_F(OutsideDocument, IsNotReadForAParameterEntity)
{
    configuration.load("<!DOCTYPE root [<!ENTITY % outside SYSTEM 'file://" + path +
                       "'> %outside;]><root><value>text</value><other>&inner;</other></root>");
    EXPECT_THAT(textsOf(configuration, "value"), ElementsAre("text"));
    EXPECT_THAT(failureOfText(configuration, "other"), HasSubstr("refers to entity inner"));
    EXPECT_FALSE(watch.sawOpening());
}

TEST_F(OutsideDocument, IsNotReadForADocumentType)
{
    configuration.load("<!DOCTYPE root SYSTEM 'file://" + path +
                       "'><root><value>text</value><other>&inner;</other></root>");
    EXPECT_THAT(textsOf(configuration, "value"), ElementsAre("text"));
    EXPECT_THAT(failureOfText(configuration, "other"), HasSubstr("refers to entity inner"));
    EXPECT_FALSE(watch.sawOpening());
}

/// Declarations of entities of which the last one would be ten to the power of nine words.
std::string laughs()
{
    std::string text = "<!DOCTYPE root [<!ENTITY e0 'laugh'>";
    for (int i = 1; i < 10; ++i)
    {
        text += "<!ENTITY e" + std::to_string(i) + " '";
        for (int repeat = 0; repeat < 10; ++repeat)
        {
            text += "&e" + std::to_string(i - 1) + ";";
        }
        text += "'>";
    }
    return text + "]>";
}

TEST(EntityOfEntities, InATextIsNotExpanded)
{
    ZolConfiguration configuration;
    configuration.load(laughs() + "<root><value>&e9;</value></root>");
    EXPECT_THAT(failureOfText(configuration, "value"), HasSubstr("refers to entity e9"));
}

TEST(EntityOfEntities, InAnAttributeIsRefused)
{
    ZolConfiguration configuration;
    EXPECT_THAT(failureOfLoading(configuration, laughs() + "<root value='&e9;'/>"),
                HasSubstr("Limit on input amplification factor"));
}

} // namespace
