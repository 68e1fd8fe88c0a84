#include <gtest/gtest.h>
#include <string>
#include <vector>
#include <zol/common/DnUtil.h>

namespace
{

TEST(ClassOfDn, IsTheTextBeforeTheEqualsSignOfTheLastRdn)
{
    struct Row
    {
        std::string dn;
        std::string className;
    };
    for (const auto& [dn, className] : std::vector<Row>{
             {"ManagedElement=1,SystemFunctions=1,FileM=1,FileGroup=a", "FileGroup"},
             {"FileM=1,FileGroup=a,FileInformation=b.txt", "FileInformation"},
             {"FileGroup=a", "FileGroup"},
             {"FileM=1,FileGroup=a=b", "FileGroup"},
             {"FileM=1,FileGroup=", "FileGroup"},
             {"FileM=1,=a", ""},
             {"FileM=1,FileGroup=a,b", ""},
             {"FileM=1,", ""},
             {"FileM", ""},
             {"", ""},
             {",", ""},
             {"=", ""},
             {"FileM=1, FileGroup=a", " FileGroup"},
             {"FileM=1,filegroup=a", "filegroup"},
         })
    {
        EXPECT_EQ(Zol::DnUtil::getClass(dn), className) << dn;
    }
}

} // namespace
