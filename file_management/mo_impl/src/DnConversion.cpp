#include "ClassNames.h"
#include "FileMTransaction.h"
#include "LiteralPath.h"
#include "LogForms.h"

#include <algorithm>
#include <string_view>
#include <zol/common/DnUtil.h>
#include <zol/common/MoAccessor.h>

namespace ZolFileManagement
{

bool FileMTransaction::checkDn(const char* dn)
{
    const std::string_view text = dn;
    // The last character that is a letter of the class name, not the last class name: a value that holds such
    // a letter is looked at from there, behind its equals sign, and passes. Hosts rely on what passes.
    const auto letter = text.find_last_of(fileGroupClassName);
    const auto equals = text.find('=', letter);
    const auto comma = text.find(',', equals);
    const auto end = comma == std::string::npos ? text.size() : comma;

    const auto occurs = [&](const char* part) { return text.find(part, equals) != std::string::npos; };
    if ((occurs("=.") && equals + 2 == text.size()) || (occurs("=..") && equals + 3 == text.size()) ||
        (occurs("=...") && equals + 4 == text.size()))
    {
        return false;
    }
    if (occurs("=/") || occurs("=./") || occurs("=../"))
    {
        return false;
    }
    return equals + 1 != end; // without an equals sign, equals + 1 is 0
}

Poco::Path FileMTransaction::convertDnToPath(const char* dn)
{
    return literalPath(convertDnToText(dn));
}

std::string FileMTransaction::convertDnToText(const std::string& text)
{
    std::string rel;
    rel.reserve(text.size());
    auto mark = text.find(fileGroupClassName);
    auto equals = text.find('=', mark);
    bool isResolved = text.find('/') == std::string::npos;
    while (equals != std::string::npos)
    {
        rel += '/';
        const auto end = std::min(text.find(',', equals), text.size());
        std::string value = text.substr(equals + 1, end - equals - 1);
        isResolved = isResolved && !value.empty() && value != "." && value != "..";
        if (text.find(fileGroupClassName, mark) != std::string::npos)
        {
            reAlignWith3gppRdn(value);
            rel += value;
        }
        else
        {
            rel += value;
            if (text.find(fileInformationClassName, mark) == std::string::npos)
            {
                return literalPath(rel).toString();
            }
        }
        equals = text.find('=', end);
        mark = end;
    }

    const bool isFile = Zol::DnUtil::getClass(text) == fileInformationClassName;
    if (isResolved && !rel.empty()) // as it stands, a path would say the same
    {
        std::string path;
        path.reserve(_rootDirectory.size() + rel.size());
        path.append(_rootDirectory).append(rel, 1);
        if (!isFile)
        {
            path += '/';
        }
        return path;
    }
    Poco::Path path = literalPath(_fileSystemRoot + (rel.empty() ? "/" : rel));
    return (isFile ? path.makeFile() : path.makeDirectory()).toString();
}

const std::string& FileMTransaction::getFileMRoot()
{
    static std::string fileMRoot;
    if (!fileMRoot.empty())
    {
        return fileMRoot;
    }
    try
    {
        Zol::MoAccessor accessor(1, 60);
        accessor.useTransaction(_txHandle);
        accessor.getFirstMoInstance("ManagedElement,SystemFunctions,FileM", fileMRoot);
    }
    catch (...)
    {
        ZOL_SEVERITY_LOG(4, "Could not find first instance of ManagedElement,SystemFunctions,FileM");
        fileMRoot = "ManagedElement=1,SystemFunctions=1,FileM=1";
    }
    return fileMRoot;
}

} // namespace ZolFileManagement
