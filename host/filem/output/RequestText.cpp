#include "filem/output/RequestText.h"

#include "filem/output/Quoting.h"

namespace zolhost::filem
{

std::string verbOf(const Request& request)
{
    switch (request.kind)
    {
    case Request::Kind::MakeDirectory:
        return "mkdir";
    case Request::Kind::RemoveDirectory:
        return "rmdir";
    case Request::Kind::RemoveTree:
        return "rmtree";
    case Request::Kind::RemoveFile:
    case Request::Kind::RemoveMatching:
        break;
    }
    return "rm";
}

std::string textOf(const Request& request)
{
    const std::string place = shellQuoted(request.place.shortPath());
    return request.kind == Request::Kind::RemoveMatching
               ? "rm --matching " + shellQuoted(request.expression) + " " + place
               : verbOf(request) + " " + place;
}

Json jsonOf(const Request& request)
{
    Json object;
    object["verb"] = verbOf(request);
    setText(object, "dn", request.place.dn());
    setText(object, "path", request.place.path());
    if (request.kind == Request::Kind::RemoveMatching)
    {
        setText(object, "expression", request.expression);
    }
    return object;
}

} // namespace zolhost::filem
