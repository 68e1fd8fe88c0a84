#include "engine/DistinguishedName.h"
#include "engine/Refusal.h"
#include "engine/Vetting.h"
#include "filem/Commands.h"
#include "filem/FileTable.h"
#include "filem/PrintableText.h"
#include "filem/Session.h"
#include "filem/ValueText.h"

#include <algorithm>
#include <exception>
#include <ostream>

namespace zolhost::filem
{

namespace
{

void printAttribute(std::ostream& out, const MoAttribute& attribute, const AttributeValue& value)
{
    if (value.values.empty())
    {
        out << attribute.name << ":\n";
    }
    for (const auto& single : value.values)
    {
        const std::string text = valueText(single);
        out << attribute.name << ':' << (text.empty() ? "" : " ") << text << '\n';
    }
}

} // namespace

ExitCode list(Session& session, const Words& arguments)
{
    const auto dn = arguments.empty() ? DistinguishedName() : DistinguishedName::parse(arguments[0]);
    const auto objects = session.objects();
    vetting::requireObject(objects, dn);
    for (const auto className : dn.moClass().children)
    {
        auto names = objects.children(dn.text(), std::string(className));
        std::ranges::sort(names);
        for (const auto& name : names)
        {
            session.out() << className << '=' << printable(name) << '\n';
        }
    }
    return ExitCode::Done;
}

ExitCode showAttributes(Session& session, const Words& arguments)
{
    const auto dn = DistinguishedName::parse(arguments[0]);
    const auto objects = session.objects();
    if (dn.moClass().attributes.empty())
    {
        throw Refusal(Refusal::Kind::BadName, dn.text(),
                      "a " + std::string(dn.moClass().name) + " has no attributes");
    }
    vetting::requireFound(objects, dn);
    std::exception_ptr firstRefusal;
    for (const auto& attribute : dn.moClass().attributes)
    {
        try
        {
            printAttribute(session.out(), attribute,
                           objects.attribute(dn.text(), std::string(attribute.name)));
        }
        catch (const Refusal& refusal)
        {
            // one that can't be read is no reason to hold back the others
            const std::string why = std::string(attribute.name) + ": " + refusal.what();
            firstRefusal = firstRefusal != nullptr
                               ? firstRefusal
                               : std::make_exception_ptr(Refusal(refusal.kind(), refusal.dn(), why));
        }
    }
    if (firstRefusal != nullptr)
    {
        std::rethrow_exception(firstRefusal);
    }
    return ExitCode::Done;
}

ExitCode listFiles(Session& session, const Words& arguments)
{
    const auto dn = DistinguishedName::parse(arguments[0]);
    const auto objects = session.objects();
    vetting::requireAttribute(dn, "files");
    vetting::requireObject(objects, dn);
    printFileTable(session.out(), objects.attribute(dn.text(), "files"));
    return ExitCode::Done;
}

ExitCode tellExistence(Session& session, const Words& arguments)
{
    const bool exists = vetting::exists(session.objects(), DistinguishedName::parse(arguments[0]));
    session.out() << (exists ? "true" : "false") << '\n';
    return exists ? ExitCode::Done : ExitCode::NoSuchObject;
}

ExitCode countChildren(Session& session, const Words& arguments)
{
    const auto dn = DistinguishedName::parse(arguments[0]);
    const auto objects = session.objects();
    vetting::requireChildClass(dn, arguments[1]);
    vetting::requireObject(objects, dn);
    session.out() << objects.countChildren(dn.text(), arguments[1]) << '\n';
    return ExitCode::Done;
}

} // namespace zolhost::filem
