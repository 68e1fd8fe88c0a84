#include "engine/DistinguishedName.h"
#include "engine/Vetting.h"
#include "filem/Commands.h"
#include "filem/Session.h"

#include <ostream>

namespace zolhost::filem
{

namespace
{

void printResult(Session& session, bool result)
{
    session.out() << (result ? "true" : "false") << '\n';
}

} // namespace

ExitCode create(Session& session, const Words& arguments)
{
    const auto dn = DistinguishedName::parse(arguments[0]);
    vetting::requireCreatable(dn);
    session.objects().create(dn.parent().text(), std::string(dn.moClass().name),
                             std::string(dn.moClass().keyAttribute), dn.value());
    return ExitCode::Done;
}

ExitCode deleteObject(Session& session, const Words& arguments)
{
    const auto dn = DistinguishedName::parse(arguments[0]);
    vetting::requireDeletable(dn);
    const auto objects = session.objects();
    vetting::requireFound(objects, dn);
    objects.deleteObject(dn.text());
    return ExitCode::Done;
}

ExitCode remove(Session& session, const Words& arguments)
{
    const auto dn = DistinguishedName::parse(arguments[0]);
    vetting::requireDeletable(dn);
    vetting::requireAction(dn, "remove");
    const auto objects = session.objects();
    vetting::requireObject(objects, dn);
    printResult(session, objects.remove(dn.text()));
    return ExitCode::Done;
}

ExitCode removeFile(Session& session, const Words& arguments)
{
    const auto dn = DistinguishedName::parse(arguments[0]);
    vetting::requireAction(dn, "removeFile");
    const auto objects = session.objects();
    vetting::requireObject(objects, dn);
    printResult(session, objects.removeFile(dn.text(), arguments[1]));
    return ExitCode::Done;
}

ExitCode commit(Session& session, const Words& /*arguments*/)
{
    session.commit();
    return ExitCode::Done;
}

ExitCode abort(Session& session, const Words& /*arguments*/)
{
    session.abort();
    return ExitCode::Done;
}

} // namespace zolhost::filem
