#include "FileManagementConstrainsUtil.h"

#include "RecordedExistenceTests.h"
#include "support/TemporaryTree.h"

#include <Poco/Path.h>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <string>
#include <vector>

using zoltest::TemporaryTree;
using Util = ZolFileManagementCommon::FileManagementConstrainsUtil;

namespace
{

const std::string noHousekeeping = ".filemnohousekeeping";
const std::string noDirectoryCreate = ".filemnodirectorycreate";
const std::string noDirectoryDelete = ".filemnodirectorydelete";

struct Permissions
{
    bool create;
    bool erase;
    bool housekeeping;

    bool operator==(const Permissions&) const = default;
};

std::ostream& operator<<(std::ostream& stream, const Permissions& permissions)
{
    return stream << "create " << permissions.create << ", delete " << permissions.erase << ", housekeeping "
                  << permissions.housekeeping;
}

constexpr Permissions everything = {true, true, true};

Permissions permissionsIn(const Poco::Path& path)
{
    return {Util::isDirectoryCreateAllowed(path), Util::isDirectoryDeleteAllowed(path),
            Util::isHouskeeepingAllowed(path)};
}

Permissions permissionsIn(const std::string& directory)
{
    return permissionsIn(Poco::Path(directory).makeDirectory());
}

} // namespace

TEST(MarkerNames, EachIsTakenForItselfOnly)
{
    for (const auto& name :
         {noHousekeeping, noDirectoryCreate, noDirectoryDelete, std::string("other"), std::string()})
    {
        EXPECT_EQ(Util::isNoHousekeeping(name), name == noHousekeeping) << name;
        EXPECT_EQ(Util::isNoDirectoryCreate(name), name == noDirectoryCreate) << name;
        EXPECT_EQ(Util::isNoDirectoryDelete(name), name == noDirectoryDelete) << name;
    }
}

TEST(MarkerNames, MustBeExact)
{
    for (const auto& marker : {noHousekeeping, noDirectoryCreate, noDirectoryDelete})
    {
        std::string inCapitals = marker;
        inCapitals[1] = 'F';
        for (const auto& name : {marker + "2", marker + " ", " " + marker, marker.substr(1), inCapitals,
                                 marker.substr(0, marker.size() - 1), marker + std::string(1, '\0')})
        {
            EXPECT_FALSE(Util::isNoHousekeeping(name) || Util::isNoDirectoryCreate(name) ||
                         Util::isNoDirectoryDelete(name))
                << name;
            EXPECT_FALSE(Util::isHidden(Poco::Path("/fs/a").append(name))) << name;
        }
    }
}

TEST(HiddenPaths, AreTheMarkersInFileForm)
{
    for (const auto& marker : {noHousekeeping, noDirectoryCreate, noDirectoryDelete})
    {
        EXPECT_TRUE(Util::isHidden(Poco::Path("/fs/a/" + marker))) << marker;
        EXPECT_TRUE(Util::isHidden(Poco::Path(marker))) << marker;
        EXPECT_FALSE(Util::isHidden(Poco::Path("/fs/a/" + marker).makeDirectory())) << marker;
        EXPECT_FALSE(Util::isHidden(Poco::Path("/fs/" + marker + "/a"))) << marker;
    }
    EXPECT_FALSE(Util::isHidden(Poco::Path("/fs/a")));
    EXPECT_FALSE(Util::isHidden(Poco::Path("/")));
}

TEST(Markers, ForbidWhatTheySayAndTheDeletionOfTheirDirectory)
{
    struct Row
    {
        std::vector<std::string> markers;
        Permissions permissions;
    };
    const Row rows[] = {
        {{}, everything},
        {{"other"}, everything},
        {{noHousekeeping + "2"}, everything},
        {{noDirectoryDelete}, {true, false, true}},
        {{noDirectoryCreate}, {false, false, true}},
        {{noHousekeeping}, {true, false, false}},
        {{noDirectoryDelete, noDirectoryCreate}, {false, false, true}},
        {{noDirectoryDelete, noHousekeeping}, {true, false, false}},
        {{noDirectoryCreate, noHousekeeping}, {false, false, false}},
        {{noDirectoryCreate, noDirectoryDelete, noHousekeeping}, {false, false, false}},
    };
    for (const auto& row : rows)
    {
        const TemporaryTree tree;
        for (const auto& marker : row.markers)
        {
            tree.file(marker, "");
        }
        EXPECT_EQ(permissionsIn(tree.path()), row.permissions) << testing::PrintToString(row.markers);
    }
}

TEST(Markers, CountWhateverTheirTypeAndContent)
{
    const TemporaryTree tree;
    tree.directory("directories/" + noDirectoryCreate);
    tree.directory("directories/" + noHousekeeping);
    EXPECT_EQ(permissionsIn(tree.path("directories")), (Permissions{false, false, false}));

    tree.file("target");
    tree.link("links/" + noDirectoryCreate, "../target");
    tree.link("links/" + noDirectoryDelete, "../links");
    EXPECT_EQ(permissionsIn(tree.path("links")), (Permissions{false, false, true}));

    tree.file("contents/" + noHousekeeping, "housekeeping=yes");
    tree.chmod("contents/" + noHousekeeping, 0);
    EXPECT_EQ(permissionsIn(tree.path("contents")), (Permissions{true, false, false}));
}

TEST(Markers, CountForTheirOwnDirectoryOnly)
{
    const TemporaryTree tree;
    for (const auto& marker : {noHousekeeping, noDirectoryCreate, noDirectoryDelete})
    {
        tree.file("a/b/" + marker);
    }
    tree.directory("a/b/c");
    EXPECT_EQ(permissionsIn(tree.path("a")), everything);
    EXPECT_EQ(permissionsIn(tree.path("a/b")), (Permissions{false, false, false}));
    EXPECT_EQ(permissionsIn(tree.path("a/b/c")), everything);
}

TEST(Markers, AreFoundThroughEitherFormOfThePath)
{
    const TemporaryTree tree;
    tree.file("a/" + noDirectoryCreate);
    EXPECT_EQ(permissionsIn(Poco::Path(tree.path("a")).makeFile()), (Permissions{false, false, true}));
    EXPECT_EQ(permissionsIn(Poco::Path(tree.path("a")).makeDirectory()), (Permissions{false, false, true}));
}

TEST(Markers, AreLookedForInTheirOrderUntilOneForbidsTheDeletion)
{
    const TemporaryTree tree;
    const std::string directory = tree.path("a") + "/";
    const std::vector<std::string> markers = {directory + "/" + noDirectoryDelete,
                                              directory + "/" + noDirectoryCreate,
                                              directory + "/" + noHousekeeping};
    const auto lookedFor = [&] {
        const zoltest::RecordedExistenceTests disk;
        Util::isDirectoryDeleteAllowed(Poco::Path(directory));
        return disk.paths();
    };
    EXPECT_EQ(lookedFor(), markers);
    tree.file("a/" + noDirectoryCreate);
    EXPECT_THAT(lookedFor(), testing::ElementsAre(markers[0], markers[1]));
    tree.file("a/" + noDirectoryDelete);
    EXPECT_THAT(lookedFor(), testing::ElementsAre(markers[0]));
}

TEST(Markers, OnlyTheOneThatCountsIsLookedFor)
{
    const zoltest::RecordedExistenceTests disk;
    Util::isDirectoryCreateAllowed(Poco::Path("/missing/"));
    Util::isHouskeeepingAllowed(Poco::Path("/missing"));
    EXPECT_THAT(disk.paths(),
                testing::ElementsAre("/missing//" + noDirectoryCreate, "/missing/" + noHousekeeping));
}

TEST(Markers, ThatCanNotBeExaminedAreNone)
{
    const TemporaryTree tree;
    EXPECT_EQ(permissionsIn(tree.path("missing")), everything);
    EXPECT_EQ(permissionsIn(tree.file("file")), everything);
}
