#pragma once

#include <string>

namespace ZolFileManagement
{

// Classes of the managed objects and their key attributes.
extern const std::string fileGroupClassName;
extern const std::string fileInformationClassName;
extern const std::string fileMConfigDataClassName;
extern const std::string fileGroupIdAttrName;
extern const std::string fileInformationIdAttrName;
extern const std::string fileMConfigDataIdAttrName;

} // namespace ZolFileManagement
