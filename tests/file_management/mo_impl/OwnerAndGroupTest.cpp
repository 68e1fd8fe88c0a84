#include "ChangesFixture.h"
#include "SystemFaults.h"

#include <cerrno>

using testing::ElementsAre;
using testing::IsEmpty;
using zoltest::RecordedLog;

namespace
{

class OwnerAndGroup : public zoltest::Changes
{
protected:
    zoltest::SystemFaults system;
};

} // namespace

TEST_F(OwnerAndGroup, AreThoseAskedFor)
{
    zoltest::Texts calls;
    system.chown = [&](const std::string& path, uid_t owner, gid_t group) {
        calls.push_back(path + " " + std::to_string(owner) + " " + std::to_string(group));
        return 0;
    };
    const std::string directory = tree.directory("d");
    struct stat status
    {};
    ASSERT_EQ(::stat(directory.c_str(), &status), 0);
    const RecordedLog log;
    worker.modifyFileOwnerAndGroup(directory.c_str(), status.st_uid, status.st_gid);
    EXPECT_THAT(calls, ElementsAre(directory + " " + std::to_string(status.st_uid) + " " +
                                   std::to_string(status.st_gid)));
    EXPECT_THAT(log.statements(), IsEmpty());
}

TEST_F(OwnerAndGroup, OfAMissingDirectoryAreAnErrorInTheLog)
{
    const RecordedLog log;
    worker.modifyFileOwnerAndGroup(tree.path("gone").c_str(), 1, 2);
    EXPECT_THAT(log.statements(),
                ElementsAre("severity-3 Error occurred while changing the group of directory " +
                            tree.path("gone") + ", error No such file or directory"));
}

TEST_F(OwnerAndGroup, ThatAreRefusedAreAnErrorInTheLog)
{
    system.chown = [](const std::string&, uid_t, gid_t) { return EPERM; };
    const RecordedLog log;
    worker.modifyFileOwnerAndGroup(tree.path().c_str(), 1, 2);
    EXPECT_THAT(log.statements(),
                ElementsAre("severity-3 Error occurred while changing the group of directory " + tree.path() +
                            ", error Operation not permitted"));
}
