#include "ClassNames.h"

namespace ZolFileManagement
{

const std::string fileGroupClassName("FileGroup");
const std::string fileInformationClassName("FileInformation");
const std::string fileMConfigDataClassName("FileMConfigData");
const std::string fileGroupIdAttrName("fileGroupId");
const std::string fileInformationIdAttrName("fileInformationId");
const std::string fileMConfigDataIdAttrName("fileMConfigDataId");

} // namespace ZolFileManagement
