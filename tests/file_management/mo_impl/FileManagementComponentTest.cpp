#include "FileManagementComponent.h"

#include "support/DistinguishedNames.h"
#include "support/FailedAssertion.h"
#include "support/FakeHost.h"
#include "support/LoadedComponent.h"
#include "support/RecordedLog.h"
#include "support/TemporaryTree.h"
#include "support/Transaction.h"

#include <gtest/gtest.h>
#include <optional>
#include <stdexcept>
#include <string>
#include <vector>

using ZolFileManagement::FileManagementComponent;
using zoltest::configurationFor;
using zoltest::FailedAssertion;
using zoltest::FakeHost;
using zoltest::fileM;
using zoltest::objectsOf;
using zoltest::RecordedLog;
using zoltest::resourceOf;
using zoltest::runInChild;
using zoltest::TemporaryTree;
using zoltest::Transaction;

namespace
{

using Texts = std::vector<std::string>;

constexpr ZolMgmtSpiInterface_1 transactionInterface = {"ZolOamSpiTransactionService", "ZolOamSpiTransaction",
                                                        "1"};

// Refuses every interface, but writes a result all the same.
ZolReturnT refuseWithAResult(ZolMgmtSpiInterface_1, ZolMgmtSpiInterface_1** result)
{
    static ZolMgmtSpiInterface_1 unusable = {"", "", ""};
    *result = &unusable;
    return -1;
}

ZolReturnT acceptComponent(ZolMgmtSpiComponentRecord*)
{
    return 0;
}

class Component : public testing::Test
{
protected:
    ZolReturnT configure(const std::string& config)
    {
        return component->init(host.accessor(), config.c_str());
    }

    FakeHost host;
    std::optional<FileManagementComponent> component{std::in_place};
};

} // namespace

TEST_F(Component, SecondOneStopsTheProcessAtTheBindersAssertion)
{
    const auto outcome = runInChild([] {
        const FileManagementComponent second;
        return 0;
    });
    const FailedAssertion expected = {
        "common/inc/ZolInterfaceBinders",
        "Zol::TransactionalResource1Binder<T>::TransactionalResource1Binder(const ZolMgmtSpiInterface_1T&, "
        "T&) "
        "[with T = ZolFileManagement::FileMMoImpl; ZolMgmtSpiInterface_1T = ZolMgmtSpiInterface_1]",
        "!_instance"};
    EXPECT_EQ(failedAssertion(outcome), expected) << outcome.standardError;
}

TEST_F(Component, CanBeMadeAnewAfterItsEndAndServesThen)
{
    const TemporaryTree tree;
    component.reset();
    component.emplace();
    ASSERT_EQ(configure(configurationFor(tree.path())), 0);
    ASSERT_EQ(component->start(ZolStateChangeReasonNormal), 0);

    Transaction tx(resourceOf(*host.record()), objectsOf(*host.record()), 7);
    ASSERT_EQ(tx.join(), 0);
    EXPECT_EQ(tx.create(fileM, "a"), 0);
    EXPECT_EQ(tx.commit(), 0);
    EXPECT_EQ(tree.listing(), Texts{"d a"});
}

TEST_F(Component, DeletesItsOpenTransactionsAtItsEndAndCommitsNothing)
{
    const TemporaryTree tree;
    ASSERT_EQ(configure(configurationFor(tree.path())), 0);
    ASSERT_EQ(component->start(ZolStateChangeReasonNormal), 0);
    const auto& resource = resourceOf(*host.record());
    const auto& objects = objectsOf(*host.record());
    ASSERT_EQ(resource.join(7), 0);
    ASSERT_EQ(objects.createMo(7, fileM.c_str(), "FileGroup", "fileGroupId", "a", nullptr), 0);
    unsigned long long iterator = 0;
    ASSERT_EQ(objects.newMoIterator(7, fileM.c_str(), "FileGroup", &iterator), 0);
    ASSERT_EQ(tree.openDescriptors(), 1);

    host.clear();
    const RecordedLog log;
    component.reset();

    EXPECT_EQ(tree.openDescriptors(), 0);
    EXPECT_EQ(tree.listing(), Texts{});
    EXPECT_EQ(host.calls(), Texts{}) << "it neither unregisters nor stops";
    EXPECT_EQ(log.statements(), Texts{});
}

TEST_F(Component, GetsAnInterfaceOfTheHost)
{
    ASSERT_EQ(configure(configurationFor("/")), 0);
    const RecordedLog log;
    EXPECT_EQ(component->getInterface(transactionInterface),
              reinterpret_cast<ZolMgmtSpiInterface_1*>(host.transaction()));
    EXPECT_EQ(log.statements(), (Texts{"enter  >> Try to get interface ZolOamSpiTransaction", "exit  << "}));
}

TEST_F(Component, GetsNoInterfaceThatTheHostRefuses)
{
    ASSERT_EQ(configure(configurationFor("/")), 0);
    host.refusedInterfaces = {"ZolOamSpiTransaction"};
    const RecordedLog log;
    EXPECT_EQ(component->getInterface(transactionInterface), nullptr);
    EXPECT_EQ(log.statements(), (Texts{"enter  >> Try to get interface ZolOamSpiTransaction", "exit  << "}));
}

TEST_F(Component, LooksAtTheCodeForAnInterfaceAndNotAtTheResultAlone)
{
    static ZolMgmtSpiInterfacePortal_1 portal = {
        "", "", "1", refuseWithAResult, nullptr, acceptComponent, acceptComponent};
    ZolMgmtSpiPortalAccessor accessor = {[](const char*) { return &portal; }};
    ASSERT_EQ(component->init(&accessor, configurationFor("/").c_str()), 0);
    EXPECT_EQ(component->getInterface(transactionInterface), nullptr);
}

TEST_F(Component, TracesTheLoadingOfAConfiguration)
{
    const std::string config = configurationFor("/data");
    const RecordedLog log;
    EXPECT_EQ(component->loadConfiguration(config), 0);
    EXPECT_EQ(log.statements(),
              (Texts{"enter  >> " + config, "enter  >> \n" + config,
                     "plain ZolFileManagementComponent/ZolFileSystem/internal_root tag found: /data.",
                     "exit  << ", "plain FileManagementComponent configuration read", "exit  << 0"}));
}

TEST_F(Component, TracesAConfigurationThatCanNotBeLoaded)
{
    const RecordedLog log;
    EXPECT_EQ(component->loadConfiguration("<Other/>"), -1);
    EXPECT_EQ(
        log.statements(),
        (Texts{"enter  >> <Other/>", "enter  >> \n<Other/>",
               "severity-4 Caught exception: No ZolFileManagementComponent configuration found", "exit  << ",
               "severity-4 Failed to load components configuration! (-1)", "exit  << -1"}));
}
