#include "FileMTransaction.h"
#include "Links.h"
#include "LogForms.h"

#include <regex.h>
#include <string_view>
#include <zol/common/RegularExpression.h>

namespace ZolFileManagement
{

ZolReturnT FileMTransaction::action(const char* dn, const char* actionName,
                                    QenMoNamedAttributeValueContainer_3** parameters,
                                    QenMoAttributeValueResult_3& result) noexcept
{
    const Poco::Path path = convertDnToPath(dn);
    initAttrResult(attrTypeBool, 1, result);
    QenMoAttributeValue_3& value = result.container->values[0];
    value.boolValue = false;

    const std::string_view name = actionName;
    if (name == "removeFile")
    {
        const QenMoNamedAttributeValueContainer_3* parameter = parameters[0];
        if (parameter == nullptr || parameter->nrOfValues != 1 || parameter->valueType != attrTypeString)
        {
            ZOL_PLAIN_TRACE("Action call failed: Wrong type or wrong number parameters for action %s",
                            actionName);
            return -8;
        }
        const std::string expression = std::string("^") + parameter->values[0].stringValue + "$";
        bool removed = false;
        const ZolReturnT code = removeFileAction(path, expression, removed);
        value.boolValue = removed;
        return code;
    }
    if (name == "remove")
    {
        if (isLink(path))
        {
            return -1;
        }
        _nonComittedData.addDeletedDir(path);
        value.boolValue = true;
        return 0;
    }
    ZOL_PLAIN_TRACE("Action call failed: FileM MO has no action called %s", actionName);
    return -2;
}

ZolReturnT FileMTransaction::removeFileAction(const Poco::Path& directory, const std::string& expression,
                                              bool& removed)
{
    ZOL_ENTER_TRACE(" >> Removing files matching expression %s", expression.c_str());
    const Zol::RegularExpression pattern(expression, REG_EXTENDED | REG_NOSUB);
    if (!pattern.isExpressionValid())
    {
        addThreadContextMessage("Invalid regular expression");
        ZOL_PLAIN_TRACE("Failed to compile file name pattern (%s)", expression.c_str());
        return -1;
    }

    FileGroupIterator files(directory, _nonComittedData, true, FileGroupIterator::Span::OneCall);
    removed = false;
    Poco::Path file = Poco::Path(directory).makeDirectory();
    std::string name;
    while (files.getNext(name))
    {
        file.setFileName(name);
        if (pattern.match(name, 0) && !(files.lastMayBeLink() && isLink(file)))
        {
            _nonComittedData.addDeletedFile(file);
            removed = true;
        }
    }
    ZOL_EXIT_TRACE(" << ");
    return 0;
}

} // namespace ZolFileManagement
