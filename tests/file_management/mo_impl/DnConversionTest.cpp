#include "Worker.h"

#include "support/DistinguishedNames.h"
#include "support/RecordedLog.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace
{

using zoltest::fileGroup;
using zoltest::fileInformation;
using zoltest::fileM;
using zoltest::Worker;

// The path's text behind its kind.
std::string pathOf(const std::string& dn, const std::string& internalRoot = "/fs")
{
    const Poco::Path path = Worker(internalRoot).transaction.convertDnToPath(dn.c_str());
    return (path.isDirectory() ? "directory " : "file ") + path.toString();
}

TEST(DnConversion, DnWithoutAFileGroupIsTheInternalRoot)
{
    EXPECT_EQ(pathOf(fileM), "directory /fs/");
    EXPECT_EQ(pathOf(fileM + ",FileMConfigData=1"), "directory /fs/");
    EXPECT_EQ(pathOf(""), "directory /fs/");
    EXPECT_EQ(pathOf("FileGroup"), "directory /fs/");
    EXPECT_EQ(pathOf(fileM + ",Other=x"), "directory /fs/");
}

TEST(DnConversion, FileInformationDirectlyBelowTheRootIsTheInternalRootAsAFile)
{
    EXPECT_EQ(pathOf(fileInformation("f", fileM)), "file /fs");
}

TEST(DnConversion, FileGroupIsADirectoryBelowThatOfItsParent)
{
    EXPECT_EQ(pathOf(fileGroup("logs")), "directory /fs/logs/");
    EXPECT_EQ(pathOf(fileGroup("c", fileGroup("b", fileGroup("a")))), "directory /fs/a/b/c/");
}

TEST(DnConversion, FileInformationIsAFileInTheDirectoryOfItsParent)
{
    EXPECT_EQ(pathOf(fileInformation("f", fileGroup("a"))), "file /fs/a/f");
}

TEST(DnConversion, FileGroupIsDecodedAndFileInformationIsNot)
{
    EXPECT_EQ(pathOf(fileGroup("a\\2Bb", fileGroup("logs"))), "directory /fs/logs/a+b/");
    EXPECT_EQ(pathOf(fileInformation("c\\2Bd.txt", fileGroup("a\\2bb", fileGroup("logs")))),
              "file /fs/logs/a+b/c\\2Bd.txt");
}

TEST(DnConversion, FileInformationThatHoldsTheNameOfTheClassFileGroupIsDecoded)
{
    EXPECT_EQ(pathOf(fileInformation("FileGroup\\2Bx", fileGroup("a"))), "file /fs/a/FileGroup+x");
}

TEST(DnConversion, UnknownClassGivesAPathWithoutTheInternalRoot)
{
    EXPECT_EQ(pathOf(fileGroup("a") + ",Other=b"), "file /a/b");
    EXPECT_EQ(pathOf(fileGroup("a") + ",Other=b/"), "directory /a/b/");
    EXPECT_EQ(pathOf(fileGroup("a") + ",FileMConfigData=1"), "file /a/1");
    EXPECT_EQ(pathOf(fileGroup("a") + ",Other=b,More=c"), "file /a/b");
    EXPECT_EQ(pathOf(fileInformation("f", fileGroup("a")) + ",Other=b"), "file /a/f/b");
}

TEST(DnConversion, UnknownClassAboveAKnownOneIsPartOfThePath)
{
    EXPECT_EQ(pathOf(fileGroup("a") + ",Other=b\\2B,FileGroup=c"), "directory /fs/a/b+/c/");
    EXPECT_EQ(pathOf(fileGroup("a") + ",Other=b\\2B,FileInformation=f"), "file /fs/a/b\\2B/f");
}

TEST(DnConversion, NameOfTheClassIsFoundWithinOthers)
{
    EXPECT_EQ(pathOf(fileM + ",FileGroupPolicy=x"), "directory /fs/x/");
    EXPECT_EQ(pathOf(fileM + ",XFileGroup=x"), "directory /fs/x/");
}

TEST(DnConversion, WhatStandsBeforeTheFirstFileGroupHasNoEffect)
{
    EXPECT_EQ(pathOf("FileGroup=a"), "directory /fs/a/");
    EXPECT_EQ(pathOf("x,y=..,FileGroup=a"), "directory /fs/a/");
    EXPECT_EQ(pathOf("ManagedElement=FileGroup,SystemFunctions=1,FileM=2,FileGroup=a"),
              "directory /fs/1/2/a/");
}

TEST(DnConversion, CommaEndsAValue)
{
    EXPECT_EQ(pathOf(fileGroup("a,b")), "directory /fs/a/");
    EXPECT_EQ(pathOf(fileGroup("a,b") + ",FileGroup=c"), "directory /fs/a/c/");
}

TEST(DnConversion, EqualsSignInAValueIsPartOfIt)
{
    EXPECT_EQ(pathOf(fileGroup("a=b")), "directory /fs/a=b/");
    EXPECT_EQ(pathOf(fileInformation("a=b=", fileGroup("=d"))), "file /fs/=d/a=b=");
}

TEST(DnConversion, BlanksAndOtherEscapesStay)
{
    EXPECT_EQ(pathOf(fileGroup(" a ") + ", FileGroup=b\\2C"), "directory /fs/ a /b\\2C/");
}

TEST(DnConversion, EmptyValueAddsNothing)
{
    EXPECT_EQ(pathOf(fileGroup("")), "directory /fs/");
    EXPECT_EQ(pathOf(fileGroup("b", fileGroup(""))), "directory /fs/b/");
    EXPECT_EQ(pathOf(fileInformation("", fileGroup("a"))), "file /fs/a");
}

TEST(DnConversion, DotsAreResolvedAndLeaveTheInternalRoot)
{
    EXPECT_EQ(pathOf(fileGroup("../x")), "directory /x/");
    EXPECT_EQ(pathOf(fileGroup("..")), "directory /");
    EXPECT_EQ(pathOf(fileGroup("..", fileGroup("..", fileGroup("..")))), "directory /");
    EXPECT_EQ(pathOf(fileGroup("x", fileGroup("..", fileGroup("a")))), "directory /fs/x/");
    EXPECT_EQ(pathOf(fileGroup(".", fileGroup("a"))), "directory /fs/a/");
    EXPECT_EQ(pathOf(fileInformation("../../f", fileGroup("a"))), "file /f");
}

TEST(DnConversion, SlashInAValueDividesIt)
{
    EXPECT_EQ(pathOf(fileGroup("a/b")), "directory /fs/a/b/");
    EXPECT_EQ(pathOf(fileGroup("/etc")), "directory /fs/etc/");
    EXPECT_EQ(pathOf(fileInformation("b/", fileGroup("a"))), "file /fs/a/b");
}

TEST(DnConversion, TildeAndColonArePartOfAName)
{
    for (const char* name : {"~", "~x", "~root", "a:", "a:b", ":"})
    {
        for (const char* root : {"/fs", "/"})
        {
            const std::string directory = std::string(root == std::string("/") ? "" : root) + "/" + name;
            EXPECT_EQ(pathOf(fileGroup(name), root), "directory " + directory + "/");
            EXPECT_EQ(pathOf(fileGroup("b", fileGroup(name)), root), "directory " + directory + "/b/");
            EXPECT_EQ(pathOf(fileInformation(name, fileGroup(name)), root), "file " + directory + "/" + name);
        }
        EXPECT_EQ(pathOf(fileGroup(name) + ",Other=" + name), std::string("file /") + name + "/" + name);
    }
}

TEST(DnConversion, InternalRootMayEndInASlashOrBeTheWholeDisk)
{
    EXPECT_EQ(pathOf(fileM, "/fs/"), "directory /fs/");
    EXPECT_EQ(pathOf(fileGroup("a"), "/fs/"), "directory /fs/a/");
    EXPECT_EQ(pathOf(fileM, "/"), "directory /");
    EXPECT_EQ(pathOf(fileGroup("a"), "/"), "directory /a/");
}

TEST(DnConversion, WithoutAnInternalRootStartsAtTheWholeDisk)
{
    EXPECT_EQ(pathOf(fileM, ""), "directory /");
    EXPECT_EQ(pathOf(fileGroup("a"), ""), "directory /a/");
    EXPECT_EQ(pathOf(fileInformation("f", fileGroup("a")), ""), "file /a/f");
}

TEST(DnConversion, LeavesNoLog)
{
    Worker worker("/fs");
    const zoltest::RecordedLog log;
    worker.transaction.convertDnToPath(fileGroup("a").c_str());
    EXPECT_THAT(log.statements(), testing::IsEmpty());
}

} // namespace
