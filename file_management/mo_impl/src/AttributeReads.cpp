#include "ClassNames.h"
#include "FileMTransaction.h"
#include "FileManagementConstrainsUtil.h"
#include "FileManagementZoleaWrapper.h"
#include "FileStatus.h"
#include "LogForms.h"
#include "RdnValue.h"
#include "TextCopy.h"
#include "UnexpectedException.h"

#include <algorithm>
#include <cstdlib>
#include <zol/common/DnUtil.h>
#include <zol/common/ZolException.h>

namespace ZolFileManagement
{

using ZolFileManagementCommon::FileManagementConstrainsUtil;
using ZolFileManagementCommon::FileManagementZoleaWrapper;

namespace
{

[[noreturn]] void failForUnknownAttribute()
{
    throw Zol::ZolException(-2, "No such attribute");
}

// Whoever releases the result also finds the elements that a failure leaves unset.
void clearElements(QenMoAttributeValueContainer_3& container)
{
    std::fill_n(container.values, container.nrOfValues, QenMoAttributeValue_3{});
}

} // namespace

ZolReturnT FileMTransaction::getAttribute(const char* dn, const char* attributeName,
                                          QenMoAttributeValueResult_3& result) noexcept
{
    ZOL_ENTER_TRACE(" >>  dn :%s, attr :%s", dn, attributeName);
    result = {nullptr, nullptr};
    try
    {
        const std::string className = Zol::DnUtil::getClass(dn);
        if (className == fileMConfigDataClassName)
        {
            getFileConfigurationAttribute(dn, attributeName, result);
            return 0;
        }

        Poco::Path path = convertDnToPath(dn);
        if (FileManagementConstrainsUtil::isHidden(path))
        {
            ZOL_PLAIN_TRACE("File is hidden, path :%s, dn :%s", path.toString().c_str(), dn);
            return -2;
        }
        FileStatus status(path);
        if (!status.exists() && !_nonComittedData.isDirCreated(path))
        {
            std::string lookupDn = dn;
            if (replace3gppIllegalChars(lookupDn))
            {
                path = convertDnToPath(lookupDn.c_str());
                status = FileStatus(path);
            }
            else
            {
                ZOL_PLAIN_TRACE("File not exists, path :%s, dn :%s", path.toString().c_str(), dn);
            }
        }

        if (className == fileInformationClassName)
        {
            getFileInformationAttribute(dn, attributeName, path, status, result);
            return 0;
        }
        if (className == fileGroupClassName)
        {
            getFileGroupAttribute(dn, attributeName, path, result);
            return 0;
        }
        ZOL_SEVERITY_LOG(3, "Unexpected mo class :%s, dn :%s", className.c_str(), dn);
        return -1;
    }
    catch (const Zol::ZolException& failure)
    {
        return failure.code();
    }
    catch (const std::exception& failure)
    {
        ZOL_TRACE_UNEXPECTED_EXCEPTION(failure);
        return -1;
    }
}

ZolReturnT FileMTransaction::getAttributes(const char* dn, const char** attributeNames,
                                           QenMoAttributeValuesResult_3& result) noexcept
{
    std::size_t count = 0;
    while (attributeNames != nullptr && attributeNames[count] != nullptr)
    {
        ++count;
    }
    result.containers = static_cast<QenMoAttributeValueContainer_3**>(
        std::calloc(count + 1, sizeof(QenMoAttributeValueContainer_3*)));
    if (result.containers == nullptr)
    {
        result.releaseCallback = nullptr;
        return -1;
    }
    result.releaseCallback = releaseAttributesResultCB;

    for (std::size_t i = 0; i < count; ++i)
    {
        QenMoAttributeValueResult_3 single;
        const ZolReturnT code = getAttribute(dn, attributeNames[i], single);
        result.containers[i] = single.container;
        if (code != 0)
        {
            releaseAttributesResultCB(result.containers);
            result = {nullptr, nullptr};
            return code;
        }
    }
    return 0;
}

void FileMTransaction::getFileGroupAttribute(const char* dn, const char* attributeName,
                                             const Poco::Path& path, QenMoAttributeValueResult_3& result)
{
    const std::string name = attributeName;
    if (name == fileGroupIdAttrName)
    {
        setAttrStringResult(getRdnValue(dn), result);
    }
    else if (name == "internalHousekeeping")
    {
        const bool isHousekeepingInternal = !FileManagementConstrainsUtil::isHouskeeepingAllowed(path);
        initAttrResult(attrTypeBool, 1, result);
        result.container->values[0].boolValue = isHousekeepingInternal;
    }
    else if (name == "reservedByPolicy")
    {
        std::vector<std::string> reservers;
        getFileGroupReservers(dn, reservers);
        initAttrResult(attrTypeReference, static_cast<unsigned int>(reservers.size()), result);
        clearElements(*result.container);
        for (std::size_t i = 0; i < reservers.size(); ++i)
        {
            result.container->values[i].referenceValue = Zol::copyText(reservers[i].c_str()).release();
        }
    }
    else if (name == "files")
    {
        std::vector<FileInfo> files;
        getFileGroupFiles(dn, files);
        initAttrResult(attrTypeStruct, static_cast<unsigned int>(files.size()), result);
        clearElements(*result.container);
        setAttrFilesResult(dn, std::move(files), result);
    }
    else
    {
        failForUnknownAttribute();
    }
}

void FileMTransaction::getFileInformationAttribute(const char* dn, const char* attributeName,
                                                   const Poco::Path& path, const FileStatus& status,
                                                   QenMoAttributeValueResult_3& result)
{
    const std::string name = attributeName;
    if (name == fileInformationIdAttrName)
    {
        setAttrStringResult(getRdnValue(dn), result);
    }
    else if (name == "modificationTime")
    {
        setAttrStringResult(status.exists() ? getDate(path) : std::string(), result);
    }
    else if (name == "size")
    {
        const Poco::File::FileSize size = status.exists() ? status.size() : 0;
        initAttrResult(attrTypeInt, 1, result);
        result.container->values[0].intValue = static_cast<std::int64_t>(size);
    }
    else if (name == "type")
    {
        setAttrStringResult(path.getExtension(), result);
    }
    else if (name == "open")
    {
        initAttrResult(attrTypeBool, 1, result);
        result.container->values[0].boolValue = false;
    }
    else
    {
        failForUnknownAttribute();
    }
}

void FileMTransaction::getFileConfigurationAttribute(const char* dn, const char* attributeName,
                                                     QenMoAttributeValueResult_3& result)
{
    const std::string name = attributeName;
    if (name == fileMConfigDataIdAttrName)
    {
        setAttrStringResult(getRdnValue(dn), result);
    }
    else if (name == "internalRoot")
    {
        std::string internalRoot;
        FileManagementZoleaWrapper().readConfiguration(internalRoot);
        setAttrStringResult(internalRoot, result);
    }
    else
    {
        failForUnknownAttribute();
    }
}

} // namespace ZolFileManagement
