#include "Worker.h"

#include "RecordedExistenceTests.h"
#include "support/DistinguishedNames.h"
#include "support/RecordedLog.h"
#include "support/TemporaryTree.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace
{

using zoltest::fileGroup;
using zoltest::fileInformation;
using zoltest::TemporaryTree;
using zoltest::Worker;

class NameSearch : public testing::Test
{
protected:
    // The DN that is found, or "none" if there is none and the DN stayed as it was.
    std::string found(const std::string& dn)
    {
        std::string searched = dn;
        if (Worker(tree.path()).transaction.replace3gppIllegalChars(searched))
        {
            return searched;
        }
        return searched == dn ? "none" : "none, but the DN was changed";
    }

    TemporaryTree tree;
};

} // namespace

TEST_F(NameSearch, DirectoryIsFound)
{
    tree.directory("a=b");
    EXPECT_EQ(found(fileGroup("a?\?b")), fileGroup("a=b"));
}

TEST_F(NameSearch, DirectoryWithAPlusSignIsFound)
{
    tree.directory("a+b");
    EXPECT_EQ(found(fileGroup("a?\?b")), fileGroup("a+b"));
}

TEST_F(NameSearch, FileWithABackslashAndALetterIsFound)
{
    tree.file("d/a\\nb");
    EXPECT_EQ(found(fileInformation("a?\?b", fileGroup("d"))), fileInformation("a\\nb", fileGroup("d")));
}

TEST_F(NameSearch, SemicolonIsTriedBeforeTheAsterisk)
{
    tree.file("d/a*b");
    tree.file("d/a;b");
    EXPECT_EQ(found(fileInformation("a?\?b", fileGroup("d"))), fileInformation("a;b", fileGroup("d")));
}

TEST_F(NameSearch, CandidatesAreTriedInTheirOrder)
{
    // from the last to the first; the comma has a test of its own, since it ends the value
    const std::string directory = fileGroup("d");
    for (const std::string candidate : {"*", "\"", "\\", ";", "#", ">", "<", "+", "=", "\\r", "\\n"})
    {
        const std::string name = "a" + candidate + "b";
        tree.file("d/" + name);
        EXPECT_EQ(found(fileInformation("a?\?b", directory)), fileInformation(name, directory));
    }
}

TEST_F(NameSearch, CommaIsTriedBetweenTheSequencesAndTheEqualsSign)
{
    tree.directory("a");
    tree.directory("a=b");
    EXPECT_EQ(found(fileGroup("a?\?b")), fileGroup("a,b"));
    tree.directory("a\\rb");
    EXPECT_EQ(found(fileGroup("a?\?b")), fileGroup("a\\rb"));
}

TEST_F(NameSearch, CharacterThatIsNoCandidateIsNotFound)
{
    for (const char* name : {"d/a b", "d/a?b", "d/a\nb", "d/a|b", "d/a?\?b"})
    {
        tree.file(name);
    }
    EXPECT_EQ(found(fileInformation("a?\?b", fileGroup("d"))), "none");
}

TEST_F(NameSearch, OneCandidateServesAllRdns)
{
    tree.file("x=y/a=b");
    EXPECT_EQ(found(fileInformation("a?\?b", fileGroup("x?\?y"))), fileInformation("a=b", fileGroup("x=y")));
}

TEST_F(NameSearch, DifferentCharactersInTwoRdnsAreNotFound)
{
    tree.file("x+y/a=b");
    EXPECT_EQ(found(fileInformation("a?\?b", fileGroup("x?\?y"))), "none");
}

TEST_F(NameSearch, DifferentCharactersInOneNameAreNotFound)
{
    tree.file("d/a,=b");
    EXPECT_EQ(found(fileInformation("a?\?\?\?b", fileGroup("d"))), "none");
}

TEST_F(NameSearch, EqualCharactersInOneNameAreFound)
{
    tree.file("d/a==b");
    EXPECT_EQ(found(fileInformation("a?\?\?\?b", fileGroup("d"))), fileInformation("a==b", fileGroup("d")));
}

TEST_F(NameSearch, FileWithACommaIsNotFound)
{
    tree.file("d/a,b");
    EXPECT_EQ(found(fileInformation("a?\?b", fileGroup("d"))), "none");
}

TEST_F(NameSearch, DirectoryWithACommaIsNotFound)
{
    tree.directory("a,b");
    EXPECT_EQ(found(fileGroup("a?\?b")), "none");
}

TEST_F(NameSearch, NameThatEndsBeforeTheCommaIsAFalseHit)
{
    tree.directory("a");
    EXPECT_EQ(found(fileGroup("a?\?b")), fileGroup("a,b"));
}

TEST_F(NameSearch, FirstTwoOfThreeQuestionMarksAreThePair)
{
    tree.file("d/a?=b");
    EXPECT_EQ(found(fileInformation("a?\?\?b", fileGroup("d"))), "none");
    tree.file("d/a=?b");
    EXPECT_EQ(found(fileInformation("a?\?\?b", fileGroup("d"))), fileInformation("a=?b", fileGroup("d")));
}

TEST_F(NameSearch, DnWithoutQuestionMarksIsFoundAsItIs)
{
    tree.file("d/f");
    EXPECT_EQ(found(fileInformation("f", fileGroup("d"))), fileInformation("f", fileGroup("d")));
    EXPECT_EQ(found(fileInformation("g", fileGroup("d"))), "none");
}

TEST_F(NameSearch, QuestionMarksBeforeTheFirstFileGroupAreReplacedToo)
{
    tree.directory("a=b");
    EXPECT_EQ(found("ManagedElement=x?\?,FileGroup=a?\?b"), "ManagedElement=x=,FileGroup=a=b");
}

TEST_F(NameSearch, BackslashBeforeTheCodeOfAPlusSignIsNotFoundInADirectoryName)
{
    tree.directory("x\\2By");
    EXPECT_EQ(found(fileGroup("x?\?2By")), "none");
    tree.directory("x+y");
    EXPECT_EQ(found(fileGroup("x?\?2By")), fileGroup("x\\2By"));
}

TEST_F(NameSearch, NameOnDiskWithTwoQuestionMarksIsNotFound)
{
    tree.directory("a?\?b");
    EXPECT_EQ(found(fileGroup("a?\?b")), "none");
}

TEST_F(NameSearch, AsksTheDiskOnceForEachOfTheTwelveCandidates)
{
    const std::string directory = tree.path("d") + "/";
    const std::vector<std::string> everyProbe = {directory + "a\\nb", directory + "a\\rb", directory + "a",
                                                 directory + "a=b",   directory + "a+b",   directory + "a<b",
                                                 directory + "a>b",   directory + "a#b",   directory + "a;b",
                                                 directory + "a\\b",  directory + "a\"b",  directory + "a*b"};
    const zoltest::RecordedExistenceTests disk;
    EXPECT_EQ(found(fileInformation("a?\?b", fileGroup("d"))), "none");
    EXPECT_EQ(disk.paths(), everyProbe);
}

TEST_F(NameSearch, AsksTheDiskOnceForADnWithoutQuestionMarksWhichEachCandidateLeavesAsItIs)
{
    const zoltest::RecordedExistenceTests disk;
    EXPECT_EQ(found(fileInformation("f", fileGroup("d"))), "none");
    EXPECT_EQ(disk.paths(), std::vector<std::string>{tree.path("d/f")});
}

TEST_F(NameSearch, AsksNoMoreAfterTheFirstHit)
{
    tree.file("d/a\\rb");
    const zoltest::RecordedExistenceTests disk;
    found(fileInformation("a?\?b", fileGroup("d")));
    EXPECT_THAT(disk.paths(), testing::ElementsAre(tree.path("d/a\\nb"), tree.path("d/a\\rb")));
}

TEST_F(NameSearch, LeavesNoLog)
{
    tree.directory("a=b");
    Worker worker(tree.path());
    const zoltest::RecordedLog log;
    std::string hit = fileGroup("a?\?b");
    std::string miss = fileGroup("x?\?b");
    EXPECT_TRUE(worker.transaction.replace3gppIllegalChars(hit));
    EXPECT_FALSE(worker.transaction.replace3gppIllegalChars(miss));
    EXPECT_THAT(log.statements(), testing::IsEmpty());
}
