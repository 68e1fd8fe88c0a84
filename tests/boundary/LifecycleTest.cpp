#include "support/DistinguishedNames.h"
#include "support/FakeHost.h"
#include "support/FakeZolea.h"
#include "support/LoadedComponent.h"
#include "support/LoadedLibrary.h"
#include "support/RecordedLog.h"
#include "support/TemporaryTree.h"
#include "support/Transaction.h"
#include "support/WorkingDirectory.h"

#include <algorithm>
#include <filesystem>
#include <gtest/gtest.h>
#include <stdexcept>
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
using zoltest::WorkingDirectory;

namespace
{

using Texts = std::vector<std::string>;

// No std::exception.
struct Foreign
{};

constexpr const char* unreadable = "<Other/>";
constexpr auto reason = ZolStateChangeReasonFailure; // printed as 2

// The library in the host's hands, step by step.
class Lifecycle : public testing::Test
{
protected:
    ZolReturnT init() { return init(configurationFor(tree.path())); }
    ZolReturnT init(const std::string& config) { return library.init(host.accessor(), config); }
    ZolReturnT start() { return host.record()->start(reason); }
    ZolReturnT stop() { return host.record()->stop(reason); }

    Transaction transaction(unsigned long handle)
    {
        return {resourceOf(*host.record()), objectsOf(*host.record()), handle};
    }

    TemporaryTree tree;
    FakeHost host;
    LoadedLibrary library;
};

using Init = Lifecycle;
using Start = Lifecycle;
using Stop = Lifecycle;
using Terminate = Lifecycle;

const Texts tracesOfInterfaceLookup = {"enter  >> Try to get interface ZolOamSpiTransaction", "exit  << "};

Texts tracesOfStart(const std::string& root)
{
    return {"enter  >> Starting FileManagement service. Reason: 2",
            "enter  >> Try to get interface ZolOamSpiTransaction",
            "exit  << ",
            "enter  >> ",
            "enter  >> fileSystemRoot :" + root,
            "exit  << ",
            "exit  << "};
}

} // namespace

TEST_F(Init, AsksForBothPortalsAndRegistersWithThatOfVersion3)
{
    EXPECT_EQ(init(), 0);
    EXPECT_EQ(host.calls(), (Texts{"getPortal 1", "getPortal 3", "registerComponent on 3"}));
}

TEST_F(Init, RegistersWithThePortalOfVersion1WithoutOneOfVersion3)
{
    host.offersPortal3 = false;
    EXPECT_EQ(init(), 0);
    EXPECT_EQ(host.calls(), (Texts{"getPortal 1", "getPortal 3", "registerComponent on 1"}));
}

TEST_F(Init, FailsSilentlyWithoutAPortalOfVersion1)
{
    host.offersPortal1 = false;
    const RecordedLog log;
    EXPECT_EQ(init(), -1);
    EXPECT_EQ(host.calls(), (Texts{"getPortal 1", "getPortal 3"}));
    EXPECT_EQ(host.record(), nullptr);
    EXPECT_EQ(log.statements(), Texts{});
}

TEST_F(Init, CanBeRepeatedAfterItFailedForWantOfAPortal)
{
    host.offersPortal1 = false;
    EXPECT_EQ(init(), -1);
    host.offersPortal1 = true;
    EXPECT_EQ(init(), 0);
    EXPECT_EQ(start(), 0);
}

TEST_F(Init, ReturnsTheHostsCodeForARefusedRegistrationAndReadsNoConfiguration)
{
    for (const bool portal3 : {true, false})
    {
        host.offersPortal3 = portal3;
        host.registerComponentCode = -77;
        const RecordedLog log;
        EXPECT_EQ(init(), -77);
        EXPECT_EQ(log.statements(), Texts{});
    }
}

TEST_F(Init, TracesTheReadingOfTheConfiguration)
{
    const std::string config = configurationFor("/data/fs");
    const RecordedLog log;
    EXPECT_EQ(init(config), 0);
    EXPECT_EQ(
        log.statements(),
        (Texts{"enter  >> ", "plain [libzol_file_management.so] -- zolLCMinit ...  \n", "enter  >> " + config,
               "enter  >> \n" + config,
               "plain ZolFileManagementComponent/ZolFileSystem/internal_root tag found: /data/fs.",
               "exit  << ", "plain FileManagementComponent configuration read", "exit  << 0", "exit  << "}));
}

TEST_F(Init, FailsOnAnUnreadableConfigurationButLeavesTheComponentRegistered)
{
    const RecordedLog log;
    EXPECT_EQ(init(unreadable), -1);
    EXPECT_EQ(log.statements(),
              (Texts{"enter  >> ", "plain [libzol_file_management.so] -- zolLCMinit ...  \n",
                     "enter  >> <Other/>", "enter  >> \n<Other/>",
                     "severity-4 Caught exception: No ZolFileManagementComponent configuration found",
                     "exit  << ", "severity-4 Failed to load components configuration! (-1)", "exit  << -1",
                     "severity-4 Could not load the configuration for FileManagementComponent Component."}));
    EXPECT_EQ(host.calls(), (Texts{"getPortal 1", "getPortal 3", "registerComponent on 3"}));
    EXPECT_NE(host.record(), nullptr);
}

TEST_F(Init, SucceedsWithAnEmptyInternalRoot)
{
    const RecordedLog log;
    EXPECT_EQ(init(configurationFor("")), 0);
    EXPECT_EQ(log.statements().at(4), "exit  << ") << "nothing is said of an internal root";
    EXPECT_EQ(log.statements().at(5), "plain FileManagementComponent configuration read");
}

TEST_F(Init, TakesThePathOfADocumentAsWellAsItsText)
{
    const TemporaryTree configuration;
    const std::string path = configuration.file("fm.xml", configurationFor(tree.path()));
    const RecordedLog log;
    EXPECT_EQ(init(path), 0);
    EXPECT_EQ(log.statements().at(2), "enter  >> " + path);
    EXPECT_EQ(start(), 0);
}

TEST_F(Init, ASecondTimeReplacesTheInternalRoot)
{
    const TemporaryTree other;
    EXPECT_EQ(init(), 0);
    EXPECT_EQ(init(configurationFor(other.path())), 0);
    const RecordedLog log;
    EXPECT_EQ(start(), 0);
    EXPECT_EQ(log.statements(), tracesOfStart(other.path()));
}

TEST_F(Init, ASecondTimeWithAnUnreadableConfigurationForgetsTheInternalRoot)
{
    const FakeZolea zolea("echo /nowhere");
    EXPECT_EQ(init(), 0);
    EXPECT_EQ(init(unreadable), -1);
    EXPECT_EQ(start(), -1);
    EXPECT_EQ(zolea.runs(), Texts{"file-system internalRoot"});
}

TEST_F(Init, CatchesNothingOfTheHost)
{
    host.onCall = [](const std::string&) { throw std::runtime_error("no portal"); };
    EXPECT_THROW(init(), std::runtime_error);
    host.onCall = [](const std::string&) { throw Foreign(); };
    EXPECT_THROW(init(), Foreign);
    host.onCall = nullptr;
}

TEST_F(Start, HandsTheInternalRootAndTheTransactionInterfaceToTheFront)
{
    ASSERT_EQ(init(), 0);
    host.clear();
    const RecordedLog log;
    EXPECT_EQ(start(), 0);
    EXPECT_EQ(log.statements(), tracesOfStart(tree.path()));
    EXPECT_EQ(host.calls(), Texts{"getInterface ZolOamSpiTransactionService/ZolOamSpiTransaction/1"});

    Transaction tx = transaction(7);
    EXPECT_EQ(tx.join(), 0);
    ASSERT_EQ(host.participants().size(), 1U);
    EXPECT_EQ(host.participants()[0].resource, &resourceOf(*host.record()))
        << "the host drives the same table that the component provides";
}

TEST_F(Start, PrintsTheReasonAsANumber)
{
    ASSERT_EQ(init(), 0);
    for (const int number : {0, 1, 2, 77})
    {
        const RecordedLog log;
        host.record()->start(static_cast<ZolStateChangeReason>(number));
        EXPECT_EQ(log.statements().front(),
                  "enter  >> Starting FileManagement service. Reason: " + std::to_string(number));
    }
}

TEST_F(Start, FailsIfTheInternalRootIsMissing)
{
    const std::string missing = tree.path("missing");
    ASSERT_EQ(init(configurationFor(missing)), 0);
    host.clear();
    const RecordedLog log;
    EXPECT_EQ(start(), -1);
    EXPECT_EQ(log.statements(),
              (Texts{"enter  >> Starting FileManagement service. Reason: 2",
                     "severity-3 The File Management internal root path (" + missing + ") does not exist.",
                     "exit  << "}));
    EXPECT_EQ(host.calls(), Texts{});
}

TEST_F(Start, TakesAnythingThatExistsForAnInternalRoot)
{
    ASSERT_EQ(init(configurationFor(tree.file("file"))), 0);
    EXPECT_EQ(start(), 0);
}

TEST_F(Start, ThatFailsLeavesTheComponentAsStartedAsItWas)
{
    const std::string root = tree.directory("root");
    ASSERT_EQ(init(configurationFor(root)), 0);

    std::filesystem::remove(root);
    EXPECT_EQ(start(), -1);
    {
        const RecordedLog log(4);
        EXPECT_EQ(stop(), 0);
        EXPECT_EQ(log.statements(), Texts{"severity-4 FileManagement service is already stopped."});
    }

    tree.directory("root");
    EXPECT_EQ(start(), 0);
    std::filesystem::remove(root);
    EXPECT_EQ(start(), -1);
    {
        const RecordedLog log(4);
        EXPECT_EQ(stop(), 0);
        EXPECT_EQ(log.statements(), Texts{});
    }
}

TEST_F(Start, ASecondTimeRunsAllItsStepsAgain)
{
    ASSERT_EQ(init(), 0);
    ASSERT_EQ(start(), 0);
    host.clear();
    const RecordedLog log;
    EXPECT_EQ(start(), 0);
    EXPECT_EQ(log.statements(), tracesOfStart(tree.path()));
    EXPECT_EQ(host.calls(), Texts{"getInterface ZolOamSpiTransactionService/ZolOamSpiTransaction/1"});
}

TEST_F(Start, SucceedsWithoutATransactionInterfaceAndTakesOneUpLater)
{
    host.refusedInterfaces = {"ZolOamSpiTransaction"};
    ASSERT_EQ(init(), 0);
    const RecordedLog log;
    EXPECT_EQ(start(), 0);
    EXPECT_EQ(log.statements(), tracesOfStart(tree.path()));

    host.refusedInterfaces.clear();
    EXPECT_EQ(start(), 0);
    Transaction tx = transaction(7);
    EXPECT_EQ(tx.join(), 0);
}

TEST_F(Start, HandsOnARootWithASlashAtItsEndUnchanged)
{
    ASSERT_EQ(init(configurationFor(tree.path() + "/")), 0);
    const RecordedLog log;
    EXPECT_EQ(start(), 0);
    EXPECT_EQ(log.statements(), tracesOfStart(tree.path() + "/"));
}

TEST_F(Start, HandsOnTheRootOfTheFileSystemUnchanged)
{
    ASSERT_EQ(init(configurationFor("/")), 0);
    const RecordedLog log;
    EXPECT_EQ(start(), 0);
    EXPECT_EQ(log.statements(), tracesOfStart("/"));
}

TEST_F(Start, HandsOnARootWithoutAnySlashTwice)
{
    const WorkingDirectory here(tree.path());
    tree.directory("fs");
    ASSERT_EQ(init(configurationFor("fs")), 0);
    const RecordedLog log;
    EXPECT_EQ(start(), 0) << "only the plain path is tested";
    EXPECT_EQ(log.statements(), tracesOfStart("fs/fs"));
}

TEST_F(Start, ServesTheDoubledPathOfARootWithoutAnySlash)
{
    const WorkingDirectory here(tree.path());
    tree.directory("fs/outer");
    tree.directory("fs/fs/inner");
    ASSERT_EQ(init(configurationFor("fs")), 0);
    ASSERT_EQ(start(), 0);
    Transaction tx = transaction(7);
    ASSERT_EQ(tx.join(), 0);
    EXPECT_EQ(tx.children(fileM, "FileGroup"), Texts{"inner"});
}

TEST_F(Start, AnswersMinusOneForAStdExceptionOfTheHost)
{
    ASSERT_EQ(init(), 0);
    host.onCall = [](const std::string&) { throw std::runtime_error("no interface"); };
    const RecordedLog log(4);
    EXPECT_EQ(start(), -1);
    EXPECT_EQ(log.statements(), Texts{});
}

TEST_F(Start, LetsAnyOtherExceptionOfTheHostThrough)
{
    ASSERT_EQ(init(), 0);
    host.onCall = [](const std::string&) { throw Foreign(); };
    EXPECT_THROW(start(), Foreign);
}

TEST_F(Stop, TracesAndGivesZero)
{
    ASSERT_EQ(init(), 0);
    ASSERT_EQ(start(), 0);
    const RecordedLog log;
    EXPECT_EQ(stop(), 0);
    EXPECT_EQ(log.statements(),
              (Texts{"enter  >> Stopping FileManagement service with reason: 2", "exit  << "}));
}

TEST_F(Stop, WithoutAStartWarnsAndGivesZero)
{
    ASSERT_EQ(init(), 0);
    const RecordedLog log;
    EXPECT_EQ(stop(), 0);
    EXPECT_EQ(log.statements(),
              (Texts{"enter  >> Stopping FileManagement service with reason: 2",
                     "severity-4 FileManagement service is already stopped.", "exit  << "}));
}

TEST_F(Stop, ASecondTimeWarnsAndGivesZero)
{
    ASSERT_EQ(init(), 0);
    ASSERT_EQ(start(), 0);
    EXPECT_EQ(stop(), 0);
    const RecordedLog log(4);
    EXPECT_EQ(stop(), 0);
    EXPECT_EQ(log.statements(), Texts{"severity-4 FileManagement service is already stopped."});
}

TEST_F(Stop, CanBeFollowedByAnotherStart)
{
    ASSERT_EQ(init(), 0);
    ASSERT_EQ(start(), 0);
    EXPECT_EQ(stop(), 0);
    EXPECT_EQ(start(), 0);
    const RecordedLog log(4);
    EXPECT_EQ(stop(), 0);
    EXPECT_EQ(log.statements(), Texts{});
}

TEST_F(Stop, LeavesOpenTransactionsAndIteratorsInPlace)
{
    tree.directory("a");
    ASSERT_EQ(init(), 0);
    ASSERT_EQ(start(), 0);
    Transaction tx = transaction(7);
    ASSERT_EQ(tx.join(), 0);
    ASSERT_EQ(tx.create(fileM, "b"), 0);
    const auto iterator = tx.newIterator(fileM, "FileGroup");
    host.clear();

    EXPECT_EQ(stop(), 0);

    EXPECT_EQ(host.calls(), Texts{});
    char* name = nullptr;
    EXPECT_EQ(objectsOf(*host.record()).nextMo(iterator, &name), 0);
    EXPECT_STREQ(name, "a");
    EXPECT_EQ(tx.commit(), 0);
    EXPECT_EQ(tree.listing(), (Texts{"d a", "d b"}));
    EXPECT_EQ(transaction(8).join(), 0);
}

TEST_F(Terminate, UnregistersFromThePortalOfVersion3)
{
    ASSERT_EQ(init(), 0);
    host.clear();
    const RecordedLog log;
    library.terminate();
    EXPECT_EQ(log.statements(), (Texts{"enter  >> ", "exit  << "}));
    EXPECT_EQ(host.calls(), Texts{"unregisterComponent on 3"});
    EXPECT_EQ(host.record(), nullptr) << "the record is the one that was registered";
}

TEST_F(Terminate, UnregistersOnlyOnce)
{
    ASSERT_EQ(init(), 0);
    library.terminate();
    host.clear();
    library.terminate();
    EXPECT_EQ(host.calls(), Texts{});
}

TEST_F(Terminate, LeavesAComponentRegisteredWithThePortalOfVersion1)
{
    host.offersPortal3 = false;
    ASSERT_EQ(init(), 0);
    host.clear();
    library.terminate();
    EXPECT_EQ(host.calls(), Texts{});
    EXPECT_NE(host.record(), nullptr);
}

TEST_F(Terminate, LeavesOpenTransactionsInPlace)
{
    ASSERT_EQ(init(), 0);
    ASSERT_EQ(start(), 0);
    Transaction tx = transaction(7);
    ASSERT_EQ(tx.join(), 0);
    ASSERT_EQ(tx.create(fileM, "a"), 0);
    EXPECT_EQ(stop(), 0);
    library.terminate();
    EXPECT_EQ(tree.listing(), Texts{});
    EXPECT_EQ(tx.commit(), 0);
    EXPECT_EQ(tree.listing(), Texts{"d a"});
}

TEST_F(Terminate, WithoutAnInitOnlyTraces)
{
    const RecordedLog log;
    library.terminate();
    EXPECT_EQ(log.statements(), (Texts{"enter  >> ", "exit  << "}));
    EXPECT_EQ(host.calls(), Texts{});
}

TEST_F(Terminate, CatchesNothingOfTheHost)
{
    ASSERT_EQ(init(), 0);
    host.onCall = [](const std::string&) { throw std::runtime_error("no"); };
    EXPECT_THROW(library.terminate(), std::runtime_error);
}

TEST_F(Terminate, CanBeFollowedByAnotherInit)
{
    ASSERT_EQ(init(), 0);
    library.terminate();
    host.clear();
    EXPECT_EQ(init(), 0);
    EXPECT_EQ(host.calls(), (Texts{"getPortal 1", "getPortal 3", "registerComponent on 3"}));
    EXPECT_EQ(start(), 0);
}

TEST_F(Lifecycle, LogsByItsLevels)
{
    ASSERT_EQ(init(configurationFor(tree.path("missing"))), 0);
    const std::string missing =
        "severity-3 The File Management internal root path (" + tree.path("missing") + ") does not exist.";
    const std::string stopped = "severity-4 FileManagement service is already stopped.";
    struct
    {
        int level;
        Texts statements;
    } const cases[] = {
        {0, {}}, {2, {}}, {3, {missing}}, {4, {missing, stopped}}, {7, {missing, stopped}},
    };
    for (const auto& [level, statements] : cases)
    {
        const RecordedLog log(level);
        EXPECT_EQ(start(), -1);
        EXPECT_EQ(stop(), 0);
        EXPECT_EQ(log.statements(), statements) << "level " << level;
    }
}

TEST_F(Lifecycle, StartAndStopTakeAReasonThatOnlyTheHostKnows)
{
    ASSERT_EQ(init(), 0);
    const auto hostsOwn = static_cast<ZolStateChangeReason>(1027);
    const RecordedLog log;
    EXPECT_EQ(host.record()->start(hostsOwn), 0);
    EXPECT_EQ(host.record()->stop(hostsOwn), 0);
    const auto statements = log.statements();
    EXPECT_EQ(statements.front(), "enter  >> Starting FileManagement service. Reason: 1027");
    EXPECT_EQ(std::count(statements.begin(), statements.end(),
                         "enter  >> Stopping FileManagement service with reason: 1027"),
              1);
}
