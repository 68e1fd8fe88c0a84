#include "Faults.h"
#include "ReadsFixture.h"
#include "support/ChildProcess.h"
#include "support/LoadedComponent.h"

#include <Poco/DirectoryIterator.h>
#include <algorithm>
#include <csignal>
#include <stdexcept>

using namespace testing;
using ZolFileManagement::FileMTransaction;

namespace zoltest
{

namespace
{

using ChildIteration = Reads;

constexpr const char* fileGroup = "FileGroup";
constexpr const char* fileInformation = "FileInformation";
constexpr const char* fileMConfigData = "FileMConfigData";

TEST_F(ChildIteration, YieldsTheDirectoriesOrTheFilesOfAParent)
{
    tree.file("a/f");
    tree.directory("a/d");

    EXPECT_THAT(children(groupDn("a"), fileGroup), ElementsAre("d"));
    EXPECT_THAT(children(groupDn("a"), fileInformation), ElementsAre("f"));
}

TEST_F(ChildIteration, TakesTheDirectoryFromTheParentWhateverItsClass)
{
    tree.file("f");
    tree.directory("d");
    tree.file("d/inner");
    struct
    {
        std::string parentDn;
        Texts files;
        Texts directories;
    } const cases[] = {
        {fileM, {"f"}, {"d"}},         {fileM + ",FileMConfigData=1", {"f"}, {"d"}}, {"Any=1", {"f"}, {"d"}},
        {groupDn("d"), {"inner"}, {}}, {fileDn("inner", groupDn("d")), {}, {}},      {groupDn("f"), {}, {}},
        {groupDn("missing"), {}, {}},  {groupDn("d") + ",Other=x", {}, {}},
    };
    for (const auto& row : cases)
    {
        EXPECT_EQ(children(row.parentDn, fileInformation), row.files) << row.parentDn;
        EXPECT_EQ(children(row.parentDn, fileGroup), row.directories) << row.parentDn;
    }
}

TEST_F(ChildIteration, OfConfigurationDataYieldsTheOneInstanceWhateverTheParent)
{
    unsigned long long id = 0;
    ASSERT_EQ(worker.newIterator(nullptr, fileMConfigData, &id), 0);

    EXPECT_EQ(next(id), "1");
    EXPECT_EQ(next(id), "end");
    EXPECT_EQ(next(id), "end");
}

TEST_F(ChildIteration, OfAnEmptyDirectoryIsAtItsEndFromTheStart)
{
    tree.directory("a");
    for (const char* className : {fileGroup, fileInformation})
    {
        const auto id = newIterator(groupDn("a"), className);
        EXPECT_EQ(next(id), "end");
        EXPECT_EQ(next(id), "end");
        EXPECT_EQ(count(groupDn("a"), className), 0U);
    }
}

TEST_F(ChildIteration, IsRefusedForOtherClasses)
{
    tree.directory("d");
    for (const std::string className : {"FileGroupPolicy", "FileM", "fileGroup", "FileGroup ", ""})
    {
        const RecordedLog log;
        unsigned long long id = 4711;

        EXPECT_EQ(worker.newIterator(fileM.c_str(), className.c_str(), &id), -1);
        EXPECT_EQ(id, 4711U);
        EXPECT_THAT(log.statements(), ElementsAre("plain Unexpected MO classname :" + className));
    }
}

TEST_F(ChildIteration, WritesNothing)
{
    tree.file("f");
    const RecordedLog log;

    for (const char* className : {fileGroup, fileInformation, fileMConfigData})
    {
        children(fileM, className);
    }

    EXPECT_THAT(log.statements(), IsEmpty());
}

// Ids of iterators.

TEST_F(ChildIteration, HasIdsInOneSequenceForBothKindsAndAllTransactions)
{
    const auto first = newIterator(fileM, fileGroup);
    EXPECT_EQ(newIterator(fileM, fileMConfigData), first + 1);
    EXPECT_EQ(newIterator(fileM, fileInformation), first + 2);
    worker.finish();

    FileMTransaction another(txHandle + 1, *host.portal1());
    unsigned long long id = 0;
    EXPECT_EQ(another.newIterator(fileM.c_str(), fileGroup, &id), 0);
    EXPECT_EQ(id, first + 3);
}

TEST_F(ChildIteration, DrawsNoIdForAnotherClass)
{
    const auto first = newIterator(fileM, fileGroup);
    unsigned long long id = 0;
    EXPECT_EQ(worker.newIterator(fileM.c_str(), "FileGroupPolicy", &id), -1);

    EXPECT_EQ(newIterator(fileM, fileGroup), first + 1);
}

TEST(ChildIterationIds, BeginWithOneInAFreshLibrary)
{
    const TemporaryTree tree;
    LoadedComponent component(tree.path());
    const auto transaction = component.join();

    EXPECT_EQ(transaction->newIterator(fileM, fileMConfigData), 1U);
    EXPECT_EQ(transaction->newIterator(fileM, fileGroup), 2U);
}

TEST_F(ChildIteration, LosesTheIdThatItDrewWhenTheIteratorCantBeMade)
{
    struct
    {
        const char* className;
        std::size_t size;
    } const cases[] = {
        {fileGroup, sizeof(FileMTransaction::FileGroupIterator)},
        {fileInformation, sizeof(FileMTransaction::FileGroupIterator)},
        {fileMConfigData, sizeof(Zol::AutoMemory::OwnedObj<FileMTransaction::FileConfigIterator>)},
    };
    for (const auto& row : cases)
    {
        const auto before = newIterator(fileM, fileGroup);
        const RecordedLog log;
        unsigned long long id = 0;
        {
            Faults faults;
            faults.failingAllocation = row.size;
            EXPECT_EQ(worker.newIterator(fileM.c_str(), row.className, &id), -1) << row.className;
        }

        EXPECT_EQ(id, before + 1) << row.className;
        EXPECT_EQ(next(id), "code -2") << row.className;
        EXPECT_EQ(newIterator(fileM, fileGroup), before + 2) << row.className;
        EXPECT_THAT(log.statements(), ElementsAre("plain Unexpected exception :std::bad_alloc"));
    }
}

TEST_F(ChildIteration, OfAnUnknownIdGivesItsCodeAndNoName)
{
    const auto last = newIterator(fileM, fileGroup);

    EXPECT_EQ(next(last + 1), "code -2");
    EXPECT_EQ(next(0), "code -2");
}

TEST_F(ChildIteration, KnowsNoIdOfAnotherTransaction)
{
    const auto id = newIterator(fileM, fileGroup);
    FileMTransaction another(txHandle + 1, *host.portal1());
    char* name = nullptr;

    EXPECT_EQ(another.next(id, &name), -2);
}

TEST_F(ChildIteration, OfFilesAndDirectoriesEndsWithAnAbortAndThatOfConfigurationDataDoesNot)
{
    tree.directory("d");
    const auto groups = newIterator(fileM, fileGroup);
    const auto files = newIterator(fileM, fileInformation);
    const auto configuration = newIterator(fileM, fileMConfigData);

    worker.abort();

    EXPECT_EQ(next(groups), "code -2");
    EXPECT_EQ(next(files), "code -2");
    EXPECT_EQ(next(configuration), "1");
}

TEST_F(ChildIteration, GoesOnAfterACommitWithWhatWasNewWhenItBegan)
{
    create("new");
    const auto id = newIterator(fileM, fileGroup);

    ASSERT_EQ(worker.commit(), 0);

    EXPECT_EQ(next(id), "new");
    EXPECT_EQ(next(id), "end");
}

// Names.

TEST_F(ChildIteration, GivesNamesThatStayUntilTheTransactionFinishes)
{
    tree.file("f");
    tree.directory("d");
    char* file = nullptr;
    char* directory = nullptr;
    char* instance = nullptr;
    ASSERT_EQ(worker.next(newIterator(fileM, fileInformation), &file), 0);
    ASSERT_EQ(worker.next(newIterator(fileM, fileGroup), &directory), 0);
    ASSERT_EQ(worker.next(newIterator(fileM, fileMConfigData), &instance), 0);

    worker.abort();
    worker.commit();

    EXPECT_STREQ(file, "f");
    EXPECT_STREQ(directory, "d");
    EXPECT_STREQ(instance, "1");
}

TEST_F(ChildIteration, GivesNamesEncodedForTheirClass)
{
    for (const std::string name : {"a+b", "a=b", "a,b", "a\\nb", "\"q\"", " padded ", "plain"})
    {
        tree.file("files/" + name);
        tree.directory("directories/" + name);
    }

    EXPECT_THAT(children(groupDn("files"), fileInformation),
                UnorderedElementsAre("a??b", "a??b", "a??b", "a??b", "??q??", " padded ", "plain"));
    EXPECT_THAT(children(groupDn("directories"), fileGroup),
                UnorderedElementsAre("a\\2Bb", "a??b", "a??b", "a??b", "q", "padded", "plain"));
}

TEST_F(ChildIteration, EncodesANewDirectoryLikeAFileWhereTheLastEntryOnDiskIsOne)
{
    tree.file("parent/f");
    create("a+b", groupDn("parent"));
    create("c+d", groupDn("parent"));

    EXPECT_THAT(children(groupDn("parent"), fileGroup), ElementsAre("a??b", "c??d"));
}

TEST_F(ChildIteration, EncodesANewDirectoryLikeADirectoryWhereTheLastEntryOnDiskIsOne)
{
    tree.directory("parent/d");
    create("a+b", groupDn("parent"));

    EXPECT_THAT(children(groupDn("parent"), fileGroup), ElementsAre("d", "a\\2Bb"));
}

TEST_F(ChildIteration, EncodesANewDirectoryByTheLastOfSeveralEntriesInTheOrderOnDisk)
{
    // enough names to meet both orders, which are those of the file system
    for (int i = 0; i < 16; ++i)
    {
        const std::string parent = "parent" + std::to_string(i);
        tree.file(parent + "/f" + std::to_string(i * 7919));
        tree.directory(parent + "/d" + std::to_string(i * 104729));
        bool lastIsFile = false;
        for (Poco::DirectoryIterator entry(tree.path(parent)), end; entry != end; ++entry)
        {
            lastIsFile = entry->isFile();
        }
        create("a+b", groupDn(parent));

        EXPECT_EQ(children(groupDn(parent), fileGroup).back(), lastIsFile ? "a??b" : "a\\2Bb") << parent;
    }
}

TEST_F(ChildIteration, EncodesANewDirectoryLikeADirectoryWhereNothingOnDiskIsAFileOrADirectory)
{
    tree.file("parent/.filemnohousekeeping");
    tree.link("parent/link", tree.file("target"));
    create("a+b", groupDn("parent"));
    create("a+b", groupDn("missing"));

    EXPECT_THAT(children(groupDn("parent"), fileGroup), ElementsAre("a\\2Bb"));
    EXPECT_THAT(children(groupDn("missing"), fileGroup), ElementsAre("a\\2Bb"));
}

TEST_F(ChildIteration, GivesTheNameOfADirectoryThatLooksLikeADeviceOrAHome)
{
    tree.directory("parent/~");
    tree.directory("parent/c:");
    create("~root", groupDn("parent"));

    EXPECT_THAT(children(groupDn("parent"), fileGroup), UnorderedElementsAre("~", "c:", "~root"));
}

// Changes of the transaction.

TEST_F(ChildIteration, YieldsANewDirectoryAndNothingInIt)
{
    create("new");

    EXPECT_THAT(children(fileM, fileGroup), ElementsAre("new"));
    EXPECT_THAT(children(groupDn("new"), fileGroup), IsEmpty());
    EXPECT_THAT(children(groupDn("new"), fileInformation), IsEmpty());
}

TEST_F(ChildIteration, DoesNotYieldWhatIsDeleted)
{
    tree.directory("d");
    tree.directory("forced");
    tree.file("a/f");
    tree.file("a/forced");
    remove(groupDn("d"));
    removeByForce(groupDn("forced"));
    remove(fileDn("f", groupDn("a")));
    removeByForce(fileDn("forced", groupDn("a")));

    EXPECT_THAT(children(fileM, fileGroup), ElementsAre("a"));
    EXPECT_THAT(children(groupDn("a"), fileInformation), IsEmpty());
}

TEST_F(ChildIteration, SeesADeletionMadeOnTheWayAndNoCreation)
{
    tree.file("a/f");
    tree.directory("a/d");
    const auto files = newIterator(groupDn("a"), fileInformation);
    const auto groups = newIterator(groupDn("a"), fileGroup);

    remove(fileDn("f", groupDn("a")));
    remove(groupDn("d", groupDn("a")));
    create("new", groupDn("a"));

    EXPECT_EQ(next(files), "end");
    EXPECT_EQ(next(groups), "end");
}

// Failures.

TEST_F(ChildIteration, OfAMissingParentYieldsItsNewDirectoriesAlone)
{
    create("child", groupDn("missing"));
    const RecordedLog log;

    EXPECT_THAT(children(groupDn("missing"), fileGroup), ElementsAre("child"));
    EXPECT_THAT(children(groupDn("missing"), fileInformation), IsEmpty());
    EXPECT_THAT(log.statements(), IsEmpty());
}

TEST_F(ChildIteration, EndsEarlyAndWithSuccessWhenTheWalkFails)
{
    tree.file("f");
    tree.file("g");
    const auto id = newIterator(fileM, fileInformation);
    Faults faults;
    faults.lstat = [](const std::string& path) {
        std::remove(path.c_str());
        return 0;
    };
    const RecordedLog log;

    EXPECT_EQ(next(id), "end");
    EXPECT_EQ(next(id), "end");
    EXPECT_THAT(log.statements(), ElementsAre(StartsWith("plain Warning: could not stat " + tree.path()),
                                              "plain Unexpected exception :File not found"));
}

TEST_F(ChildIteration, FailsWhenANameCantBeKept)
{
    tree.file("f");
    for (const char* className : {fileInformation, fileMConfigData})
    {
        const auto id = newIterator(fileM, className);
        const RecordedLog log;
        Faults faults;
        faults.textsCantBeCopied = true;

        EXPECT_EQ(next(id), "code -1") << className;
        EXPECT_THAT(log.statements(), ElementsAre("plain Unexpected exception :std::bad_alloc"));
    }
}

TEST_F(ChildIteration, EndsTheProcessWhenTheParentCantBeConverted)
{
    for (const char* className : {fileGroup, fileInformation, "FileGroupPolicy"})
    {
        const ChildOutcome outcome = runInChild([&] {
            Faults faults;
            faults.classOfDn = [] { throw std::runtime_error("no class"); };
            unsigned long long id = 0;
            return worker.newIterator(fileM.c_str(), className, &id);
        });

        EXPECT_EQ(outcome.signal, SIGABRT) << className;
    }
}

TEST_F(ChildIteration, OfConfigurationDataConvertsNoParent)
{
    Faults faults;
    faults.classOfDn = [] { throw std::runtime_error("no class"); };

    EXPECT_THAT(children(fileM, fileMConfigData), ElementsAre("1"));
}

TEST(ChildIterationOperations, ThrowNothingOrLetExceptionsThrough)
{
    using Worker = FileMTransaction&;
    const char* text = nullptr;
    unsigned long long number = 0;
    EXPECT_TRUE(noexcept(std::declval<Worker>().newIterator(text, text, &number)));
    EXPECT_TRUE(noexcept(std::declval<Worker>().next(number, nullptr)));
    EXPECT_FALSE(noexcept(std::declval<Worker>().countMoChildren(text, text, &number)));
    EXPECT_FALSE(noexcept(std::declval<Worker>().isDirContainingFiles(Poco::Path())));
    EXPECT_FALSE(noexcept(std::declval<Worker>().existsMo(text)));
}

} // namespace

} // namespace zoltest
