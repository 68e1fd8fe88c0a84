#include "support/DistinguishedNames.h"
#include "support/FakeHost.h"
#include "support/FakeZolea.h"
#include "support/LoadedComponent.h"
#include "support/LoadedLibrary.h"
#include "support/RecordedLog.h"
#include "support/TemporaryTree.h"
#include "support/Transaction.h"

#include <csignal>
#include <gtest/gtest.h>
#include <string>
#include <vector>

using zoltest::configurationFor;
using zoltest::FakeHost;
using zoltest::FakeZolea;
using zoltest::fileM;
using zoltest::LoadedLibrary;
using zoltest::objectsOf;
using zoltest::RecordedLog;
using zoltest::resourceOf;
using zoltest::TemporaryTree;
using zoltest::Transaction;

namespace
{

using Texts = std::vector<std::string>;

// The component without an internal root in its configuration.
class ExternalCommand : public testing::Test
{
protected:
    void init() { ASSERT_EQ(library.init(host.accessor(), configurationFor("")), 0); }
    ZolReturnT start() { return host.record()->start(ZolStateChangeReasonNormal); }

    TemporaryTree tree;
    FakeHost host;
    LoadedLibrary library;
};

// With its children reaped by the system, a process can't learn how one ended, and pclose fails.
class ChildrenReapedBySystem
{
public:
    ChildrenReapedBySystem()
        : _previous(std::signal(SIGCHLD, SIG_IGN))
    {}
    ChildrenReapedBySystem(const ChildrenReapedBySystem&) = delete;
    ChildrenReapedBySystem& operator=(const ChildrenReapedBySystem&) = delete;
    ~ChildrenReapedBySystem() { std::signal(SIGCHLD, _previous); }

private:
    void (*_previous)(int);
};

} // namespace

TEST_F(ExternalCommand, IsAskedAtTheStartForTheInternalRoot)
{
    tree.directory("a");
    const FakeZolea zolea("echo ' " + tree.path() + "  '; echo");
    init();
    EXPECT_EQ(zolea.runs(), Texts{}) << "not before the start";

    const RecordedLog log;
    EXPECT_EQ(start(), 0);

    EXPECT_EQ(zolea.runs(), Texts{"file-system internalRoot"});
    EXPECT_EQ(log.statements(),
              (Texts{"enter  >> Starting FileManagement service. Reason: 0", "enter  >> ",
                     "enter  >> Invoking: zolea file-system internalRoot",
                     "plain Executing 'zolea file-system internalRoot'",
                     "plain Executed 'zolea file-system internalRoot'", "exit  << ", "exit  << ",
                     "enter  >> Try to get interface ZolOamSpiTransaction", "exit  << ", "enter  >> ",
                     "enter  >> fileSystemRoot :" + tree.path(), "exit  << ", "exit  << "}));
    Transaction tx(resourceOf(*host.record()), objectsOf(*host.record()), 7);
    ASSERT_EQ(tx.join(), 0);
    EXPECT_EQ(tx.children(fileM, "FileGroup"), Texts{"a"});
}

TEST_F(ExternalCommand, IsNotAskedIfTheConfigurationNamesAnInternalRoot)
{
    const FakeZolea zolea("echo /nowhere");
    ASSERT_EQ(library.init(host.accessor(), configurationFor(tree.path())), 0);
    EXPECT_EQ(start(), 0);
    EXPECT_EQ(zolea.runs(), Texts{});
}

TEST_F(ExternalCommand, IsAskedAfterAConfigurationThatCanNotBeRead)
{
    const FakeZolea zolea("echo " + tree.path());
    ASSERT_EQ(library.init(host.accessor(), "<Other/>"), -1);
    EXPECT_EQ(start(), 0);
    EXPECT_EQ(zolea.runs(), Texts{"file-system internalRoot"});
}

TEST_F(ExternalCommand, IsNotAskedAgainOnceItHasAnswered)
{
    const FakeZolea zolea("echo " + tree.path());
    init();
    EXPECT_EQ(start(), 0);
    EXPECT_EQ(start(), 0);
    EXPECT_EQ(zolea.runs(), Texts{"file-system internalRoot"});
}

TEST_F(ExternalCommand, IsNotAskedAgainWhenItsAnswerDoesNotExist)
{
    const FakeZolea zolea("echo " + tree.path("missing"));
    init();
    EXPECT_EQ(start(), -1);
    EXPECT_EQ(start(), -1);
    EXPECT_EQ(zolea.runs(), Texts{"file-system internalRoot"});
}

TEST_F(ExternalCommand, ThatPrintsNothingFailsTheStartAndIsAskedAgainAtTheNextOne)
{
    FakeZolea zolea("true");
    init();
    {
        const RecordedLog log(4);
        EXPECT_EQ(start(), -1);
        EXPECT_EQ(log.statements(),
                  Texts{"severity-3 The File Management internal root path () does not exist."});
    }
    zolea.setScript("echo " + tree.path());
    EXPECT_EQ(start(), 0);
    EXPECT_EQ(zolea.runs(), (Texts{"file-system internalRoot", "file-system internalRoot"}));
}

TEST_F(ExternalCommand, ThatCanNotBeRunFailsTheStartWithItsReasonAndNoExitTrace)
{
    const FakeZolea zolea("echo " + tree.path());
    init();
    const ChildrenReapedBySystem cause;
    const std::string command = "zolea file-system internalRoot";
    const std::string error = "error=No child processes";
    const RecordedLog log;
    EXPECT_EQ(start(), -1);
    EXPECT_EQ(log.statements(),
              (Texts{"enter  >> Starting FileManagement service. Reason: 0", "enter  >> ",
                     "enter  >> Invoking: " + command, "plain Executing '" + command + "'",
                     "plain Failed to invoke zolea : execution of '" + command + "' failed - " + error,
                     "severity-3 ZOLEA readConfiguration failed: Failed to invoke: zolea " + command + ", " +
                         error}));
}

TEST_F(ExternalCommand, ThatCanNotBeRunLeavesTheComponentStopped)
{
    const FakeZolea zolea("echo " + tree.path());
    init();
    {
        const ChildrenReapedBySystem cause;
        ASSERT_EQ(start(), -1);
    }
    {
        const RecordedLog log(4);
        EXPECT_EQ(host.record()->stop(ZolStateChangeReasonNormal), 0);
        EXPECT_EQ(log.statements(), Texts{"severity-4 FileManagement service is already stopped."});
    }
    EXPECT_EQ(start(), 0) << "it is asked again";
}
