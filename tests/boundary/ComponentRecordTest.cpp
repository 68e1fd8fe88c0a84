#include "support/FakeHost.h"
#include "support/LoadedComponent.h"
#include "support/LoadedLibrary.h"

#include <gtest/gtest.h>
#include <string>
#include <vector>

using zoltest::configurationFor;
using zoltest::FakeHost;
using zoltest::LoadedLibrary;
using zoltest::objectsOf;
using zoltest::resourceOf;

namespace
{

using Texts = std::vector<std::string>;

std::string orDash(const char* text)
{
    return text == nullptr ? "-" : text;
}

Texts identities(QenMgmtSpiInterface_1* const* entries)
{
    Texts texts;
    for (; *entries != nullptr; ++entries)
    {
        texts.push_back(orDash((*entries)->componentName) + "/" + orDash((*entries)->interfaceName) + "/" +
                        orDash((*entries)->version));
    }
    return texts;
}

class ComponentRecord : public testing::Test
{
protected:
    void init() { ASSERT_EQ(library.init(host.accessor(), configurationFor("/")), 0); }
    const ZolMgmtSpiComponentRecord& record() const { return *host.record(); }

    FakeHost host;
    LoadedLibrary library;
};

} // namespace

TEST_F(ComponentRecord, NamesTheComponent)
{
    init();
    EXPECT_STREQ(record().componentName, "ZolFileManagementComponent");
    EXPECT_STREQ(record().interfaceName, "ZolMgmtSpiComponent");
    EXPECT_STREQ(record().version, "1");
    EXPECT_EQ(record().flag, 0);
}

TEST_F(ComponentRecord, NamesTheProvidedInterfacesInOrder)
{
    init();
    EXPECT_EQ(identities(record().interfaces),
              (Texts{"ZolFileManagementComponent/ZolOamSpiTransactionalResource/1",
                     "ZolFileManagementComponent/ZolOamSpiManagedObject/3"}));
}

TEST_F(ComponentRecord, NamesTheRequiredInterfacesInOrder)
{
    init();
    EXPECT_EQ(identities(record().dependencies),
              (Texts{"ZolOamSpiTransactionService/ZolOamSpiTransactionMaster/1",
                     "ZolOamSpiTransactionService/ZolOamSpiTransaction/1", "-/ZolMwSpiLog/1",
                     "-/QenMwSpiTrace/-", "ZolMgmtSpiThreadContextService/ZolMgmtSpiThreadContext/2"}));
}

TEST_F(ComponentRecord, HasNoExtraInterfaces)
{
    init();
    EXPECT_EQ(identities(record().extraInterfaces), Texts{});
}

TEST_F(ComponentRecord, ProvidesCompleteTables)
{
    init();
    const auto& resource = resourceOf(record());
    EXPECT_TRUE(resource.join && resource.prepare && resource.commit && resource.abort && resource.finish);
    const auto& objects = objectsOf(record());
    EXPECT_TRUE(objects.setMoAttribute && objects.getMoAttribute && objects.getMoAttributes &&
                objects.newMoIterator && objects.nextMo && objects.createMo && objects.deleteMo &&
                objects.action && objects.finalizeMoIterator && objects.existsMo && objects.countMoChildren);
}

TEST_F(ComponentRecord, IsTheSameOnEachInit)
{
    init();
    const ZolMgmtSpiComponentRecord* first = host.record();
    const Texts interfaces = identities(record().interfaces);
    const Texts dependencies = identities(record().dependencies);

    init();

    EXPECT_EQ(host.record(), first);
    EXPECT_EQ(identities(record().interfaces), interfaces);
    EXPECT_EQ(identities(record().dependencies), dependencies);
}

TEST_F(ComponentRecord, GainsOneMoreNullAmongTheExtraInterfacesAtEachInit)
{
    constexpr std::size_t inits = 8;
    for (std::size_t i = 0; i < inits; ++i)
    {
        init();
    }
    const std::vector<QenMgmtSpiInterface_1*> nulls(inits, nullptr);
    const std::vector<QenMgmtSpiInterface_1*> extraInterfaces(record().extraInterfaces,
                                                              record().extraInterfaces + inits);
    EXPECT_EQ(extraInterfaces, nulls);
}

TEST_F(ComponentRecord, HasItsFlagClearedAtEachInit)
{
    init();
    host.record()->flag = 1;
    init();
    EXPECT_EQ(record().flag, 0);
}
