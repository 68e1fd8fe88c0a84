#include "ClassNames.h"

#include <gtest/gtest.h>

using namespace ZolFileManagement;

TEST(ClassNames, ClassesAndKeyAttributesHaveTheirTexts)
{
    EXPECT_EQ(fileGroupClassName, "FileGroup");
    EXPECT_EQ(fileInformationClassName, "FileInformation");
    EXPECT_EQ(fileMConfigDataClassName, "FileMConfigData");
    EXPECT_EQ(fileGroupIdAttrName, "fileGroupId");
    EXPECT_EQ(fileInformationIdAttrName, "fileInformationId");
    EXPECT_EQ(fileMConfigDataIdAttrName, "fileMConfigDataId");
}
