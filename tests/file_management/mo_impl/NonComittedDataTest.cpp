#include "FileMTransaction.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <string>
#include <type_traits>
#include <vector>

using testing::ElementsAre;
using testing::IsEmpty;
using NonComittedData = ZolFileManagement::FileMTransaction::NonComittedData;

namespace
{

static_assert(!std::is_polymorphic_v<NonComittedData>);

const Poco::Path directory("/fs/a/");
const Poco::Path sameInFileForm("/fs/a");
const Poco::Path file("/fs/f");

std::vector<std::string> texts(const NonComittedData::Paths& paths)
{
    std::vector<std::string> result;
    for (const Poco::Path& path : paths)
    {
        result.push_back(path.toString());
    }
    return result;
}

class NonComittedDataTest : public testing::Test
{
protected:
    void expectEmpty() const
    {
        EXPECT_THAT(texts(changes._createdDirs), IsEmpty());
        EXPECT_THAT(texts(changes._deletedDirs), IsEmpty());
        EXPECT_THAT(texts(changes._deletedFiles), IsEmpty());
    }

    NonComittedData changes;
};

} // namespace

TEST_F(NonComittedDataTest, BeginsEmpty)
{
    expectEmpty();
    EXPECT_FALSE(changes.isDirCreated(directory));
    EXPECT_FALSE(changes.isDirCreated(sameInFileForm));
    EXPECT_FALSE(changes.isDirCreated(Poco::Path()));
}

TEST_F(NonComittedDataTest, CreatedDirectoryStandsInItsSetAlone)
{
    changes.addCreatedDir(directory);
    EXPECT_THAT(texts(changes._createdDirs), ElementsAre("/fs/a/"));
    EXPECT_THAT(texts(changes._deletedDirs), IsEmpty());
    EXPECT_THAT(texts(changes._deletedFiles), IsEmpty());
}

TEST_F(NonComittedDataTest, DeletedDirectoryStandsInItsSetAlone)
{
    changes.addDeletedDir(directory);
    EXPECT_THAT(texts(changes._createdDirs), IsEmpty());
    EXPECT_THAT(texts(changes._deletedDirs), ElementsAre("/fs/a/"));
    EXPECT_THAT(texts(changes._deletedFiles), IsEmpty());
}

TEST_F(NonComittedDataTest, DeletedFileStandsInItsSetAlone)
{
    changes.addDeletedFile(file);
    EXPECT_THAT(texts(changes._createdDirs), IsEmpty());
    EXPECT_THAT(texts(changes._deletedDirs), IsEmpty());
    EXPECT_THAT(texts(changes._deletedFiles), ElementsAre("/fs/f"));
}

TEST_F(NonComittedDataTest, OnlyAnEntryOfTheVeryTextIsACreatedDirectory)
{
    changes.addCreatedDir(directory);
    EXPECT_TRUE(changes.isDirCreated(directory));
    EXPECT_FALSE(changes.isDirCreated(sameInFileForm));
    EXPECT_FALSE(changes.isDirCreated(Poco::Path("/fs/")));
    EXPECT_FALSE(changes.isDirCreated(Poco::Path("/fs/a/b/")));
}

TEST_F(NonComittedDataTest, DeletedDirectoryIsNotACreatedOne)
{
    changes.addDeletedDir(directory);
    EXPECT_FALSE(changes.isDirCreated(directory));
}

TEST_F(NonComittedDataTest, DeletionOfACreatedDirectoryCancelsOut)
{
    changes.addCreatedDir(directory);
    changes.addDeletedDir(directory);
    expectEmpty();
}

TEST_F(NonComittedDataTest, CreationOfADeletedDirectoryCancelsOut)
{
    changes.addDeletedDir(directory);
    changes.addCreatedDir(directory);
    expectEmpty();
}

TEST_F(NonComittedDataTest, WhatCancelledOutCanBeWantedAgain)
{
    changes.addCreatedDir(directory);
    changes.addDeletedDir(directory);
    changes.addDeletedDir(directory);
    EXPECT_THAT(texts(changes._createdDirs), IsEmpty());
    EXPECT_THAT(texts(changes._deletedDirs), ElementsAre("/fs/a/"));
}

TEST_F(NonComittedDataTest, DeletionOfTheFileFormDoesNotCancelTheDirectoryForm)
{
    changes.addCreatedDir(directory);
    changes.addDeletedDir(sameInFileForm);
    EXPECT_THAT(texts(changes._createdDirs), ElementsAre("/fs/a/"));
    EXPECT_THAT(texts(changes._deletedDirs), ElementsAre("/fs/a"));
}

TEST_F(NonComittedDataTest, CreationOfTheDirectoryFormDoesNotCancelTheDeletionOfTheFileForm)
{
    changes.addDeletedDir(sameInFileForm);
    changes.addCreatedDir(directory);
    EXPECT_THAT(texts(changes._createdDirs), ElementsAre("/fs/a/"));
    EXPECT_THAT(texts(changes._deletedDirs), ElementsAre("/fs/a"));
}

TEST_F(NonComittedDataTest, DeletedFileCancelsNothingAndIsCancelledByNothing)
{
    changes.addCreatedDir(directory);
    changes.addDeletedFile(directory);
    EXPECT_THAT(texts(changes._createdDirs), ElementsAre("/fs/a/"));
    EXPECT_THAT(texts(changes._deletedFiles), ElementsAre("/fs/a/"));

    changes.addDeletedFile(file);
    changes.addCreatedDir(file);
    EXPECT_THAT(texts(changes._createdDirs), ElementsAre("/fs/a/", "/fs/f"));
    EXPECT_THAT(texts(changes._deletedFiles), ElementsAre("/fs/a/", "/fs/f"));
}

TEST_F(NonComittedDataTest, CreationTwiceIsOneEntryThatOneDeletionCancels)
{
    changes.addCreatedDir(directory);
    changes.addCreatedDir(directory);
    EXPECT_THAT(texts(changes._createdDirs), ElementsAre("/fs/a/"));
    changes.addDeletedDir(directory);
    expectEmpty();
}

TEST_F(NonComittedDataTest, DeletionTwiceIsOneEntryThatOneCreationCancels)
{
    changes.addDeletedDir(directory);
    changes.addDeletedDir(directory);
    EXPECT_THAT(texts(changes._deletedDirs), ElementsAre("/fs/a/"));
    changes.addCreatedDir(directory);
    expectEmpty();
}

TEST_F(NonComittedDataTest, FileDeletedTwiceIsOneEntry)
{
    changes.addDeletedFile(file);
    changes.addDeletedFile(file);
    EXPECT_THAT(texts(changes._deletedFiles), ElementsAre("/fs/f"));
}

TEST_F(NonComittedDataTest, EachSetIsInTheOrderOfTheWholeTexts)
{
    for (const char* text : {"/fs/a/x/", "/fs/a/", "/fs/ab/", "/fs/a-b/"})
    {
        const Poco::Path path(text);
        changes.addDeletedFile(path);
        changes.addCreatedDir(path);
    }
    EXPECT_THAT(texts(changes._createdDirs), ElementsAre("/fs/a-b/", "/fs/a/", "/fs/a/x/", "/fs/ab/"));
    EXPECT_THAT(texts(changes._deletedFiles), ElementsAre("/fs/a-b/", "/fs/a/", "/fs/a/x/", "/fs/ab/"));
    changes.reset();
    for (const char* text : {"/fs/a/x/", "/fs/a/", "/fs/ab/", "/fs/a-b/"})
    {
        changes.addDeletedDir(Poco::Path(text));
    }
    EXPECT_THAT(texts(changes._deletedDirs), ElementsAre("/fs/a-b/", "/fs/a/", "/fs/a/x/", "/fs/ab/"));
}

TEST_F(NonComittedDataTest, ResetEmptiesAllSets)
{
    changes.addCreatedDir(directory);
    changes.addDeletedDir(sameInFileForm);
    changes.addDeletedFile(file);
    changes.reset();
    expectEmpty();
    EXPECT_FALSE(changes.isDirCreated(directory));
}

TEST_F(NonComittedDataTest, ResetOfEmptySetsIsHarmless)
{
    changes.reset();
    changes.reset();
    expectEmpty();
}
