#include "model/DnRules.h"

#include "model/Names.h"

namespace zolmodel
{

namespace
{

const std::size_t NOWHERE = std::string::npos;

bool occurs(const std::string& text, const std::string& what, std::size_t from)
{
    return text.find(what, from) != NOWHERE;
}

std::size_t orEnd(std::size_t position, const std::string& text)
{
    return position == NOWHERE ? text.size() : position;
}

} // namespace

bool isAcceptable(const std::string& dn)
{
    const std::size_t letter = dn.find_last_of("FileGroup");
    const std::size_t equals = letter == NOWHERE ? NOWHERE : dn.find('=', letter);
    if (equals == NOWHERE)
    {
        return !dn.empty();
    }
    const std::string rest = dn.substr(equals);
    if (rest == "=." || rest == "=.." || rest == "=...")
    {
        return false;
    }
    if (occurs(rest, "=/", 0) || occurs(rest, "=./", 0) || occurs(rest, "=../", 0))
    {
        return false;
    }
    return orEnd(rest.find(','), rest) != 1;
}

Location locationOf(const std::string& dn, const std::string& root)
{
    std::string relative;
    std::size_t mark = dn.find("FileGroup");
    std::size_t equals = mark == NOWHERE ? NOWHERE : dn.find('=', mark);
    while (equals != NOWHERE)
    {
        const std::size_t end = orEnd(dn.find(',', equals), dn);
        const std::string value = dn.substr(equals + 1, end - equals - 1);
        if (occurs(dn, "FileGroup", mark))
        {
            relative += "/" + groupName(value);
        }
        else
        {
            relative += "/" + value;
            if (!occurs(dn, "FileInformation", mark))
            {
                return Location(relative);
            }
        }
        equals = dn.find('=', end);
        mark = end;
    }
    const Location location(root + (relative.empty() ? "/" : relative));
    return classOf(dn) == "FileInformation" ? location.asFile() : location.asDirectory();
}

std::string classOf(const std::string& dn)
{
    const std::size_t comma = dn.rfind(',');
    const std::string last = comma == NOWHERE ? dn : dn.substr(comma + 1);
    const std::size_t equals = last.find('=');
    return equals == NOWHERE ? "" : last.substr(0, equals);
}

std::string lastValueOf(const std::string& dn)
{
    const std::size_t equals = dn.rfind('=');
    return equals == NOWHERE ? "IllegalDname" : dn.substr(equals + 1);
}

} // namespace zolmodel
