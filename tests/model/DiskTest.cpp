#include "model/Disk.h"

#include <gtest/gtest.h>

using zolmodel::Disk;
using zolmodel::OutOfReach;

namespace
{

Disk diskWithDirectory()
{
    Disk disk("/box");
    disk.putDirectory("/box/d", 02775);
    return disk;
}

} // namespace

TEST(ModelOfDisk, FollowsLinksUntilTheyAreTooMany)
{
    Disk disk = diskWithDirectory();
    disk.putLink("/box/l", "d");
    disk.putLink("/box/itself", "/box/itself");
    disk.putLink("/box/d/here", ".");
    EXPECT_TRUE(disk.isDirectory("/box/l"));
    EXPECT_TRUE(disk.isLink("/box/l"));
    EXPECT_FALSE(disk.isLink("/box/l/"));
    EXPECT_FALSE(disk.exists("/box/itself"));
    std::string text = "/box/d";
    for (int i = 0; i < 13; ++i)
    {
        text += "/here";
    }
    EXPECT_TRUE(disk.exists(text));
    EXPECT_THROW((void)disk.exists(text + "/here"), OutOfReach) << "the kernel may count some twice";
}

TEST(ModelOfDisk, NewDirectoriesInheritTheSetGroupIdBit)
{
    Disk disk = diskWithDirectory();
    EXPECT_EQ(disk.makeDirectory("/box/d/new", 0755), Disk::Made::Yes);
    EXPECT_EQ(disk.followed("/box/d/new")->mode, 02755U);
    EXPECT_EQ(disk.makeDirectory("/box/d/new", 0755), Disk::Made::WasThere);
    EXPECT_EQ(disk.makeDirectory("/box/none/new", 0755), Disk::Made::No);
}

TEST(ModelOfDisk, AClosingSlashAsksForADirectory)
{
    Disk disk = diskWithDirectory();
    disk.putFile("/box/f", 3);
    EXPECT_TRUE(disk.exists("/box/f"));
    EXPECT_FALSE(disk.exists("/box/f/"));
    EXPECT_FALSE(disk.changeMode("/box/f/", 0770));
    EXPECT_TRUE(disk.changeMode("/box/d/", 0770));
}

TEST(ModelOfDisk, RemovesLinksAndNotWhatTheyLeadTo)
{
    Disk disk = diskWithDirectory();
    disk.putFile("/box/d/f", 3);
    disk.putLink("/box/l", "/box/d");
    disk.remove("/box/l");
    EXPECT_FALSE(disk.isLink("/box/l"));
    EXPECT_TRUE(disk.exists("/box/d/f"));
    EXPECT_FALSE(disk.isUncertain());
    disk.putLink("/box/d/up", "..");
    disk.remove("/box/d/up/d");
    EXPECT_FALSE(disk.exists("/box/d"));
    EXPECT_TRUE(disk.isUncertain());
    EXPECT_FALSE(disk.isUncertain());
}

TEST(ModelOfDisk, KnowsNothingOutsideTheSandbox)
{
    const Disk disk = diskWithDirectory();
    EXPECT_TRUE(disk.exists("/"));
    EXPECT_THROW((void)disk.exists("/etc"), OutOfReach);
    EXPECT_FALSE(disk.exists("/box/etc"));
}
