#pragma once

#include <string>

namespace zoltest
{

inline const std::string fileM = "ManagedElement=1,SystemFunctions=1,FileM=1";
inline const std::string fileMConfigData = fileM + ",FileMConfigData=1";

inline std::string fileGroup(const std::string& name, const std::string& parentDn = fileM)
{
    return parentDn + ",FileGroup=" + name;
}

inline std::string fileInformation(const std::string& name, const std::string& parentDn)
{
    return parentDn + ",FileInformation=" + name;
}

} // namespace zoltest
