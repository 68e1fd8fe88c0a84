#include "engine/Host.h"

#include "engine/ConfigurationText.h"
#include "engine/HostFailure.h"
#include "engine/Refusal.h"
#include "support/FakeZolea.h"
#include "support/LoadedLibrary.h"
#include "support/RecordedLog.h"
#include "support/TemporaryTree.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <string>
#include <vector>

using namespace zolhost;
using testing::HasSubstr;
using testing::StartsWith;
using zoltest::FakeZolea;
using zoltest::LoadedLibrary;
using zoltest::RecordedLog;
using zoltest::TemporaryTree;

namespace
{

using Names = std::vector<std::string>;

const std::string root = "ManagedElement=1,SystemFunctions=1,FileM=1";

Host::Setup setupFor(const std::string& configuration)
{
    return {LoadedLibrary::path(), configuration, {}};
}

Names directoriesBelowRoot(Host& host)
{
    const auto transaction = host.begin();
    return host.objects(*transaction).children(root, "FileGroup");
}

std::string whyNotUp(const Host::Setup& setup)
{
    try
    {
        const Host host(setup);
        return "up";
    }
    catch (const HostFailure& failure)
    {
        return failure.what();
    }
}

} // namespace

TEST(Host, ServesTheTreeOfItsConfigurationAndUnloadsTheLibraryAtItsEnd)
{
    const TemporaryTree tree;
    tree.directory("a");
    {
        Host host(setupFor(configurationFor(tree.path())));
        EXPECT_EQ(directoriesBelowRoot(host), Names{"a"});
        EXPECT_TRUE(LoadedLibrary::isStillLoaded());
    }
    EXPECT_FALSE(LoadedLibrary::isStillLoaded());
}

TEST(Host, ComesUpAgain)
{
    for (const std::string name : {"a", "b"})
    {
        const TemporaryTree tree;
        tree.directory(name);
        Host host(setupFor(configurationFor(tree.path())));
        EXPECT_EQ(directoriesBelowRoot(host), Names{name});
    }
}

TEST(Host, ReadsAConfigurationDocument)
{
    const TemporaryTree tree;
    tree.directory("tree/a");
    Host host(setupFor(tree.file("config.xml", configurationFor(tree.path("tree")))));
    EXPECT_EQ(directoriesBelowRoot(host), Names{"a"});
}

TEST(Host, AsksTheExternalCommandIfTheConfigurationNamesNoRoot)
{
    const TemporaryTree tree;
    tree.directory("a");
    const FakeZolea zolea("echo " + tree.path());
    Host host(setupFor(configurationWithoutRoot()));
    EXPECT_EQ(directoriesBelowRoot(host), Names{"a"});
}

TEST(Host, TakesARootOfAnyNameThatXmlCanHold)
{
    for (const std::string name :
         {" blanks  at both ends ", "a&b", "<x>", "]]>", "&lt;&amp;", "\"q\" 'p'", "tab\tline\nreturn\r",
          "\xc3\xa9\xe2\x82\xac\xf0\x9f\x98\x80", "-- ?\?/", "~", "C:"})
    {
        const TemporaryTree tree;
        tree.directory(name + "/found");
        Host host(setupFor(configurationFor(tree.path(name))));
        EXPECT_EQ(directoriesBelowRoot(host), Names{"found"}) << name;
    }
}

TEST(Host, RefusesARootThatXmlCanNotHold)
{
    for (const std::string name : {"\x01", "\x1b[2J", "\xff", "a\xc3", "\xed\xa0\x80", "\xc0\xaf",
                                   "\xef\xbf\xbf", "\xf4\x90\x80\x80", "\xe2\x82"})
    {
        EXPECT_THROW(configurationFor("/" + name), HostFailure) << name;
    }
}

TEST(Host, DoesNotComeUpWithoutItsLibrary)
{
    const TemporaryTree tree;
    Host::Setup setup = setupFor(configurationFor(tree.path()));
    setup.library = tree.path("missing.so");
    EXPECT_THAT(whyNotUp(setup), StartsWith("the library can't be loaded: " + tree.path("missing.so")));
    setup.library = tree.file("text.so", "no library");
    EXPECT_THAT(whyNotUp(setup), StartsWith("the library can't be loaded: "));
}

TEST(Host, DoesNotComeUpWithALibraryOfAnotherKind)
{
    const TemporaryTree tree;
    Host::Setup setup = setupFor(configurationFor(tree.path()));
    setup.library = ZOL_COMMON_LIBRARY;
    EXPECT_THAT(whyNotUp(setup), HasSubstr("it has no function zolLCMterminate"));
}

TEST(Host, DoesNotComeUpWithAConfigurationThatCanNotBeRead)
{
    const RecordedLog quiet(0);
    EXPECT_EQ(whyNotUp(setupFor("<unclosed>")), "the component can't read its configuration");
    EXPECT_FALSE(LoadedLibrary::isStillLoaded());
}

TEST(Host, KnowsNoComponentThatFailedToInitialise)
{
    const RecordedLog quiet(0);
    const Portal portal({});
    EXPECT_THROW(Component(LoadedLibrary::path(), portal, "<unclosed>"), HostFailure);
    EXPECT_TRUE(portal.components().empty());
}

TEST(Host, DoesNotComeUpWithoutARoot)
{
    const RecordedLog quiet(0);
    EXPECT_EQ(whyNotUp(setupFor(configurationFor("/there/is/no/such/root"))),
              "the component doesn't start: the root of the file tree isn't known or isn't there");
    EXPECT_FALSE(LoadedLibrary::isStillLoaded());
}

TEST(Host, FindsTheLibraryBesideTheProgram)
{
    EXPECT_EQ(Host::defaultLibrary(), LoadedLibrary::path());
}

TEST(Host, KeepsTransactionsApart)
{
    const TemporaryTree tree;
    Host host(setupFor(configurationFor(tree.path())));
    const auto first = host.begin();
    const auto second = host.begin();
    host.objects(*first).create(root, "FileGroup", "fileGroupId", "a");
    host.objects(*second).create(root, "FileGroup", "fileGroupId", "b");
    EXPECT_EQ(host.objects(*first).children(root, "FileGroup"), Names{"a"});
    EXPECT_EQ(host.objects(*second).children(root, "FileGroup"), Names{"b"});
    first->abort();
    second->commit();
    EXPECT_EQ(tree.listing(), Names{"d b"});
}
