#include "ClassNames.h"
#include "FileMTransaction.h"
#include "LiteralPath.h"
#include "LogForms.h"

#include <zol/common/DnUtil.h>
#include <zol/common/MoAccessor.h>

namespace ZolFileManagement
{

bool FileMTransaction::checkDn(const char* dn)
{
    const std::string text = dn;
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
    const std::string text = dn;
    std::string rel;
    auto mark = text.find(fileGroupClassName);
    auto equals = text.find('=', mark);
    while (equals != std::string::npos)
    {
        rel += '/';
        const auto comma = text.find(',', equals);
        const auto end = comma == std::string::npos ? text.size() : comma;
        std::string value = text.substr(equals + 1, end - equals - 1);
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
                return literalPath(rel);
            }
        }
        equals = text.find('=', end);
        mark = end;
    }
    if (rel.empty())
    {
        rel += '/';
    }

    Poco::Path path = literalPath(_fileSystemRoot + rel);
    if (Zol::DnUtil::getClass(text) == fileInformationClassName)
    {
        path.makeFile();
    }
    else
    {
        path.makeDirectory();
    }
    return path;
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
