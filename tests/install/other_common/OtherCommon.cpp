// Another companion library: the same operations as ours, with other layouts and other insides, as small as a
// component can do with. It knows no objects of others.
#include <Poco/DOM/DOMParser.h>
#include <cstdarg>
#include <cstdio>
#include <cstdlib>
#include <zol/common/DnUtil.h>
#include <zol/common/LoggingWrapper.h>
#include <zol/common/MoAccessor.h>
#include <zol/common/MoUtils.h>
#include <zol/common/RegularExpression.h>
#include <zol/common/ZolConfiguration.h>
#include <zol/common/ZolException.h>
#include <zol/common/ZolReturn.h>

namespace Zol
{

namespace
{

std::string formatted(const char* format, std::va_list arguments)
{
    char text[1000];
    std::vsnprintf(text, sizeof text, format, arguments);
    return text;
}

} // namespace

std::string DnUtil::getClass(const std::string& dn)
{
    const auto comma = dn.rfind(',');
    const std::string rdn = comma == std::string::npos ? dn : dn.substr(comma + 1);
    const auto equals = rdn.find('=');
    return equals == std::string::npos ? "" : rdn.substr(0, equals);
}

LoggingWrapper& LoggingWrapper::instance()
{
    static LoggingWrapper instance;
    return instance;
}

LoggingWrapper::~LoggingWrapper() = default;

int LoggingWrapper::get_level() const
{
    return 4;
}

void LoggingWrapper::log_printf(const char*, unsigned int severity, unsigned int, const char* format, ...)
{
    std::va_list arguments;
    va_start(arguments, format);
    std::fprintf(stderr, "other companion, severity %u: %s\n", severity,
                 formatted(format, arguments).c_str());
    va_end(arguments);
}

void LoggingWrapper::trace_printf(const char*, const char*, int, unsigned int, const char*, ...) {}

void LoggingWrapper::trace_v2_printf(unsigned int, unsigned int, const char*, const char*, int, const char*,
                                     ...)
{}

ZolException::ZolException(const char* format, ...)
    : std::runtime_error(format)
    , _code(ZolReturnFailure)
{}

ZolException::ZolException(ZolReturnT code, const char* format, ...)
    : std::runtime_error(format)
    , _code(code)
{}

ZolException::~ZolException() = default;

ZolReturnT ZolException::code() const noexcept
{
    return _code;
}

const char* ZolReturn::strerror(ZolReturnT)
{
    return "a code";
}

void MoUtils::deleteAttributeValueContainer(ZolMoAttributeValueContainer_3* container)
{
    if (container == nullptr)
    {
        return;
    }
    for (uint32_t i = 0; i < container->nrOfValues; ++i)
    {
        ZolMoAttributeValue_3& value = container->values[i];
        if (container->valueType == attrTypeString || container->valueType == attrTypeReference)
        {
            std::free(value.stringValue);
        }
        if (container->valueType == attrTypeStruct)
        {
            for (ZolMoAttributeStructMember* member = value.structValue; member != nullptr;)
            {
                ZolMoAttributeStructMember* const next = member->nextMember;
                std::free(member->memberName);
                deleteAttributeValueContainer(member->memberValue);
                delete member;
                member = next;
            }
        }
    }
    delete[] container->values;
    delete container;
}

RegularExpression::RegularExpression(const std::string& expression, int)
{
    try
    {
        _expression.assign(expression, std::regex::extended);
    }
    catch (const std::regex_error&)
    {
        _valid = false;
    }
}

bool RegularExpression::isExpressionValid() const
{
    return _valid;
}

bool RegularExpression::match(const std::string& text, int) const
{
    return _valid && std::regex_search(text, _expression);
}

ZolConfiguration::~ZolConfiguration()
{
    unload();
}

void ZolConfiguration::load(const std::string& config)
{
    Poco::XML::DOMParser parser;
    _document = config.starts_with('<') ? parser.parseString(config) : parser.parse(config);
}

void ZolConfiguration::unload()
{
    if (_document != nullptr)
    {
        _document->release();
        _document = nullptr;
    }
}

Poco::XML::NodeList* ZolConfiguration::getElementsByTagName(const std::string& tag)
{
    auto* const list = _document->getElementsByTagName(tag);
    list->duplicate(); // the caller may release once too often; that the others leave one behind is all right
                       // here
    return list;
}

std::string ZolConfiguration::get_text(Poco::XML::Element* element)
{
    return element->innerText();
}

MoAccessor::MoAttributeValueResult::MoAttributeValueResult()
    : ZolMoAttributeValueResult_3{nullptr, nullptr}
{}

MoAccessor::MoAttributeValueResult::~MoAttributeValueResult()
{
    if (releaseCallback != nullptr)
    {
        releaseCallback(container);
    }
}

MoAccessor::MoAccessor(int, int) {}

MoAccessor::~MoAccessor() = default;

void MoAccessor::useTransaction(const unsigned long&) {}

ZolReturnT MoAccessor::getFirstMoInstance(const std::string&, std::string&)
{
    throw ZolException("there are no other objects");
}

ZolReturnT MoAccessor::getChildren(const std::string&, const std::string&, std::list<std::string>&)
{
    return ZolReturnOk;
}

void MoAccessor::getAttrContainer(const std::string&, const std::string&, MoAttributeValueResult&)
{
    throw ZolException("there are no other objects");
}

void MoAccessor::validateType(const ZolMoAttributeValueContainer_3&, const ZolOamSpiMoAttributeType_3&) {}

template<>
ZolOamSpiMoAttributeType_3 MoAccessor::getSpiType<MoAccessor::MoRef>()
{
    return attrTypeReference;
}

template<>
MoAccessor::MoRef MoAccessor::extractAttr<MoAccessor::MoRef>(const ZolMoAttributeValue_3& value)
{
    return {value.referenceValue};
}

} // namespace Zol
