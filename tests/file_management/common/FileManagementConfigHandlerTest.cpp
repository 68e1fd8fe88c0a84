#include "FileManagementConfigHandler.h"

#include "ConfigurationFaults.h"
#include "support/RecordedLog.h"
#include "support/TemporaryTree.h"

#include <Poco/DOM/NodeList.h>
#include <exception>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <stdexcept>
#include <string>
#include <zol/common/ZolConfiguration.h>
#include <zol/common/ZolException.h>

using testing::ElementsAre;
using ZolFileManagementCommon::FileManagementConfigHandler;
using zoltest::ConfigurationFaults;
using zoltest::RecordedLog;
using zoltest::TemporaryTree;

namespace
{

const std::string componentName = "ZolFileManagementComponent";

// A document whose one component element holds this.
std::string document(const std::string& content)
{
    return "<Components><" + componentName + ">" + content + "</" + componentName + "></Components>";
}

const std::string usual = document("<ZolFileSystem><internal_root>/data/fs</internal_root></ZolFileSystem>");
const std::string noComponent = "<Components><internal_root>/data/fs</internal_root></Components>";
const std::string twoComponents =
    "<Components>" + document("<internal_root>/a</internal_root>") + document("") + "</Components>";

// The root, or "failed" if the document can't be used.
std::string rootIn(const std::string& config)
{
    FileManagementConfigHandler handler(componentName);
    if (handler.load(config) != 0)
    {
        return "failed";
    }
    std::string root = "as before";
    handler.getInternalRoot(root);
    return root;
}

std::string foundTrace(const std::string& root)
{
    return "plain ZolFileManagementComponent/ZolFileSystem/internal_root tag found: " + root + ".";
}

std::vector<std::string> statementsOfLoad(const std::string& config, int expectedResult)
{
    FileManagementConfigHandler handler(componentName);
    const RecordedLog log;
    EXPECT_EQ(handler.load(config), expectedResult);
    return log.statements();
}

void expectFailure(const std::string& config, const std::string& text)
{
    EXPECT_THAT(statementsOfLoad(config, -1),
                ElementsAre("enter  >> \n" + config, "severity-4 Caught exception: " + text, "exit  << "));
}

// What the platform says about a document that it can't read.
std::string platformsComplaintAbout(const std::string& config)
{
    try
    {
        Zol::ZolConfiguration().load(config);
        return "nothing";
    }
    catch (const std::exception& failure)
    {
        return failure.what();
    }
}

std::string internalRootOf(FileManagementConfigHandler& handler)
{
    std::string root = "as before";
    handler.getInternalRoot(root);
    return root;
}

// Passes on to another list and tells when its last reference is gone.
class WatchedList : public Poco::XML::NodeList
{
public:
    WatchedList(const Poco::XML::NodeList& list, int references, bool& gone)
        : _list(list)
        , _gone(gone)
    {
        for (int i = 1; i < references; ++i)
        {
            duplicate();
        }
    }

    Poco::XML::Node* item(unsigned long index) const override { return _list.item(index); }
    unsigned long length() const override { return _list.length(); }
    void autoRelease() override {}

protected:
    ~WatchedList() override { _gone = true; }

private:
    const Poco::XML::NodeList& _list;
    bool& _gone;
};

// How often a load of the document releases the list of component elements.
int releasesInLoad(const std::string& config, ConfigurationFaults& configuration)
{
    constexpr int references = 9;
    bool gone = false;
    WatchedList* list = nullptr;
    configuration.replaceList = [&](const Poco::XML::NodeList& documents) {
        return list = new WatchedList(documents, references, gone);
    };
    try
    {
        FileManagementConfigHandler(componentName).load(config);
    }
    catch (int)
    {
        // a test's own, which says nothing about the releases
    }
    int left = 0;
    while (!gone)
    {
        list->release();
        ++left;
    }
    return references - left;
}

int releasesInLoad(const std::string& config)
{
    ConfigurationFaults configuration;
    return releasesInLoad(config, configuration);
}

} // namespace

TEST(ConfigHandler, RootIsEmptyBeforeALoad)
{
    FileManagementConfigHandler handler(componentName);
    EXPECT_EQ(internalRootOf(handler), "");
}

TEST(ConfigHandler, RootIsTheTextOfInternalRoot)
{
    EXPECT_EQ(rootIn(usual), "/data/fs");
}

TEST(ConfigHandler, ReadsADocumentFromAFile)
{
    const TemporaryTree tree;
    EXPECT_EQ(rootIn(tree.file("config.xml", usual)), "/data/fs");
}

TEST(ConfigHandler, LoadIsTraced)
{
    EXPECT_THAT(statementsOfLoad(usual, 0),
                ElementsAre("enter  >> \n" + usual, foundTrace("/data/fs"), "exit  << "));
}

TEST(ConfigHandler, ComponentElementMayStandAtAnyDepth)
{
    EXPECT_EQ(
        rootIn("<ZolFileManagementComponent><internal_root>/a</internal_root></ZolFileManagementComponent>"),
        "/a");
    EXPECT_EQ(rootIn("<a><b><c>" + usual + "</c></b></a>"), "/data/fs");
}

TEST(ConfigHandler, InternalRootMayStandAnywhereInTheComponentElement)
{
    EXPECT_EQ(rootIn(document("<internal_root>/a</internal_root>")), "/a");
    EXPECT_EQ(rootIn(document("<Other><Deeper><internal_root>/a</internal_root></Deeper></Other>")), "/a");
}

TEST(ConfigHandler, InternalRootOutsideTheComponentElementIsNotFound)
{
    EXPECT_EQ(rootIn("<a><internal_root>/a</internal_root>" + document("<ZolFileSystem/>") + "</a>"), "");
    EXPECT_EQ(rootIn("<internal_root>/a" + document("") + "</internal_root>"), "");
}

TEST(ConfigHandler, TextOfInternalRootIsTakenAsItStands)
{
    EXPECT_EQ(rootIn(document("<internal_root> relative//path/ \n</internal_root>")), " relative//path/ \n");
}

TEST(ConfigHandler, DocumentWithoutAValueGivesTheEmptyRootAndNoTraceOfOne)
{
    for (const auto& config :
         {document(""), document("<ZolFileSystem/>"), document("<internal_root/>"),
          document("<internal_root></internal_root>"),
          document("<internal_root>/a</internal_root><b><internal_root>/b</internal_root></b>"),
          document("<Internal_Root>/a</Internal_Root>")})
    {
        EXPECT_EQ(rootIn(config), "") << config;
        EXPECT_THAT(statementsOfLoad(config, 0), ElementsAre("enter  >> \n" + config, "exit  << "));
    }
}

TEST(ConfigHandler, DocumentThatCanNotBeReadIsAFailureInThePlatformsWords)
{
    const TemporaryTree tree;
    for (const auto& config : {tree.path("missing.xml"), tree.file("malformed.xml", "<a><b></a>"),
                               tree.file("empty.xml", ""), std::string("<a"), std::string()})
    {
        const std::string complaint = platformsComplaintAbout(config);
        ASSERT_NE(complaint, "nothing");
        expectFailure(config, complaint);
    }
}

TEST(ConfigHandler, DocumentWithoutTheComponentElementIsAFailure)
{
    expectFailure(noComponent, "No ZolFileManagementComponent configuration found");
    expectFailure("<zolFileManagementComponent/>", "No ZolFileManagementComponent configuration found");
}

TEST(ConfigHandler, DocumentWithTheComponentElementTwiceIsAFailure)
{
    expectFailure(twoComponents, "Multiple ZolFileManagementComponent configurations found");
    expectFailure("<a>" + usual + usual + usual + "</a>",
                  "Multiple ZolFileManagementComponent configurations found");
    expectFailure(document(document("")), "Multiple ZolFileManagementComponent configurations found");
}

TEST(ConfigHandler, LooksForTheComponentNameButSpeaksOfItsOwn)
{
    FileManagementConfigHandler handler("Other");
    EXPECT_EQ(handler.load("<a><Other><internal_root>/other</internal_root></Other></a>"), 0);
    EXPECT_EQ(internalRootOf(handler), "/other");

    const RecordedLog log(4);
    EXPECT_EQ(handler.load(usual), -1);
    EXPECT_THAT(
        log.statements(),
        ElementsAre("severity-4 Caught exception: No ZolFileManagementComponent configuration found"));
}

TEST(ConfigHandler, FailedLoadLeavesTheRootAsItWas)
{
    FileManagementConfigHandler handler(componentName);
    ASSERT_EQ(handler.load(usual), 0);
    for (const auto& config : {std::string("<a"), noComponent, twoComponents})
    {
        EXPECT_EQ(handler.load(config), -1);
        EXPECT_EQ(internalRootOf(handler), "/data/fs");
    }
}

TEST(ConfigHandler, LoadWithoutAValueEmptiesTheRoot)
{
    FileManagementConfigHandler handler(componentName);
    ASSERT_EQ(handler.load(usual), 0);
    EXPECT_EQ(handler.load(document("")), 0);
    EXPECT_EQ(internalRootOf(handler), "");
}

TEST(ConfigHandler, LoadLeavesItsOwnBaseWithoutADocument)
{
    FileManagementConfigHandler handler(componentName);
    ASSERT_EQ(handler.load(usual), 0);
    Poco::XML::NodeList* const elements = handler.getElementsByTagName("internal_root");
    EXPECT_EQ(elements->length(), 0U);
    elements->release();
}

TEST(ConfigHandler, FailureWhileTheTextIsReadIsCaught)
{
    ConfigurationFaults configuration;
    FileManagementConfigHandler handler(componentName);
    ASSERT_EQ(handler.load(usual), 0);

    configuration.onGetText = [] { throw std::runtime_error("the disk is full"); };
    {
        const RecordedLog log;
        EXPECT_EQ(handler.load(document("<internal_root>/other</internal_root>")), -1);
        EXPECT_THAT(log.statements(),
                    ElementsAre("enter  >> \n" + document("<internal_root>/other</internal_root>"),
                                "severity-4 Caught exception: the disk is full", "exit  << "));
    }
    EXPECT_EQ(internalRootOf(handler), "/data/fs");

    configuration.onGetText = [] { throw Zol::ZolException("code %d", 7); };
    {
        const RecordedLog log(4);
        EXPECT_EQ(handler.load(usual), -1);
        EXPECT_THAT(log.statements(), ElementsAre("severity-4 Caught exception: code 7"));
    }
}

TEST(ConfigHandler, ForeignExceptionPassesOnWithoutALog)
{
    ConfigurationFaults configuration;
    configuration.onGetText = [] { throw 5; };
    FileManagementConfigHandler handler(componentName);
    const RecordedLog log;
    EXPECT_THROW(handler.load(usual), int);
    EXPECT_THAT(log.statements(), ElementsAre("enter  >> \n" + usual));
}

TEST(ConfigHandler, ReleasesTheListOnceAfterSuccessAndAfterAFailureToReadTheText)
{
    EXPECT_EQ(releasesInLoad(usual), 1);
    ConfigurationFaults configuration;
    configuration.onGetText = [] { throw std::runtime_error("x"); };
    EXPECT_EQ(releasesInLoad(usual, configuration), 1);
}

TEST(ConfigHandler, ReleasesTheListTwiceIfTheNumberOfComponentElementsIsWrong)
{
    EXPECT_EQ(releasesInLoad(noComponent), 2);
    EXPECT_EQ(releasesInLoad(twoComponents), 2);
}

TEST(ConfigHandler, ReleasesNoListAfterAForeignException)
{
    ConfigurationFaults configuration;
    configuration.onGetText = [] { throw 5; };
    EXPECT_EQ(releasesInLoad(usual, configuration), 0);
}

TEST(ConfigHandler, ElementValueIsTheTextOfTheOneDescendantOfThatTag)
{
    Zol::ZolConfiguration configuration;
    configuration.load("<a><one>1</one><two>2</two><b><two>3</two><deep>4</deep></b></a>");
    Poco::XML::NodeList* const elements = configuration.getElementsByTagName("a");
    auto* const element = static_cast<Poco::XML::Element*>(elements->item(0));
    FileManagementConfigHandler handler(componentName);
    EXPECT_EQ(handler.getElementValue(configuration, element, "one"), "1");
    EXPECT_EQ(handler.getElementValue(configuration, element, "deep"), "4");
    EXPECT_EQ(handler.getElementValue(configuration, element, "two"), "");
    EXPECT_EQ(handler.getElementValue(configuration, element, "none"), "");
    EXPECT_EQ(handler.getElementValue(configuration, element, "a"), "") << "the element itself is none";
    elements->release();
}
