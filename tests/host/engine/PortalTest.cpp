#include "engine/Portal.h"

#include <gtest/gtest.h>
#include <vector>

using zolhost::Portal;

namespace
{

ZolMgmtSpiInterface_1 offer = {"Service", "Interface", "2"};
ZolMgmtSpiInterface_1 other = {"Service", "Other", "1"};

class PortalTest : public testing::Test
{
protected:
    Portal portal{{&offer, &other}};
};

} // namespace

TEST_F(PortalTest, IsThereInVersions1And3)
{
    for (const char* const version : {"1", "3"})
    {
        ASSERT_NE(Portal::accessor()->getPortal(version), nullptr);
        EXPECT_STREQ(Portal::accessor()->getPortal(version)->version, version);
    }
    EXPECT_EQ(Portal::accessor()->getPortal("2"), nullptr);
    EXPECT_EQ(Portal::accessor()->getPortal(nullptr), nullptr);
}

TEST_F(PortalTest, GivesAnInterfaceByItsWholeIdentity)
{
    const ZolMgmtSpiInterface_1 strangers[] = {{"Service", "Interface", "1"},
                                               {"Service", "None", "2"},
                                               {"Else", "Interface", "2"},
                                               {nullptr, "Interface", "2"},
                                               {"Service", "Interface", nullptr}};
    for (const char* const version : {"1", "3"})
    {
        auto* const table = Portal::accessor()->getPortal(version);
        ZolMgmtSpiInterface_1* result = nullptr;
        EXPECT_EQ(table->getInterface(other, &result), 0);
        EXPECT_EQ(result, &other);
        EXPECT_EQ(table->getInterface(offer, &result), 0);
        EXPECT_EQ(result, &offer);
        for (const auto& stranger : strangers)
        {
            EXPECT_EQ(table->getInterface(stranger, &result), ZolReturnNoSuch);
            EXPECT_EQ(result, &offer) << "it stays as it was";
        }
    }
}

TEST_F(PortalTest, TakesNoteOfComponentsUntilTheyUnregister)
{
    using Records = std::vector<ZolMgmtSpiComponentRecord*>;
    ZolMgmtSpiComponentRecord first = {};
    ZolMgmtSpiComponentRecord second = {};
    auto* const portal1 = Portal::accessor()->getPortal("1");
    auto* const portal3 = Portal::accessor()->getPortal("3");
    EXPECT_EQ(portal3->registerComponent(&first), 0);
    EXPECT_EQ(portal1->registerComponent(&second), 0);
    EXPECT_EQ(portal.components(), (Records{&first, &second}));
    EXPECT_EQ(portal3->unregisterComponent(&first), 0);
    EXPECT_EQ(portal.components(), Records{&second});
    EXPECT_EQ(portal3->unregisterComponent(&first), ZolReturnNoSuch);
    EXPECT_EQ(portal1->registerComponent(nullptr), ZolReturnFailure);
    portal1->reserved();
    EXPECT_EQ(portal.components(), Records{&second});
}

TEST(Portal, OffersNothingWhenThereIsNone)
{
    auto* const table = Portal::accessor()->getPortal("1");
    ZolMgmtSpiInterface_1* result = nullptr;
    ZolMgmtSpiComponentRecord record = {};
    EXPECT_EQ(table->getInterface(offer, &result), ZolReturnFailure);
    EXPECT_EQ(table->registerComponent(&record), ZolReturnFailure);
    EXPECT_EQ(table->unregisterComponent(&record), ZolReturnFailure);
}
