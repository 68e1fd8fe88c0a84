#include "PathSet.h"

#include "LiteralPath.h"

namespace ZolFileManagement
{

Poco::Path PathSet::Iterator::operator*() const
{
    return literalPath(*_text);
}

PathSet PathSet::childrenOfText(std::string_view directory) const
{
    PathSet children;
    if (!directory.ends_with('/')) // a file, which has none
    {
        return children;
    }
    auto text = _texts.upper_bound(directory);
    while (text != _texts.end() && text->starts_with(directory))
    {
        const std::size_t slash = text->find('/', directory.size());
        const bool isChild = slash == std::string::npos || slash + 1 == text->size();
        if (isChild)
        {
            children._texts.insert(children._texts.end(), *text);
            ++text;
        }
        else
        {
            // '0' comes right behind '/'
            text = _texts.lower_bound(text->substr(0, slash) + '0');
        }
    }
    return children;
}

Poco::Path PathSet::takeFirst()
{
    return literalPath(_texts.extract(_texts.begin()).value());
}

std::vector<std::string> PathSet::takeStartingWith(std::string_view prefix)
{
    std::vector<std::string> taken;
    auto text = _texts.lower_bound(prefix);
    while (text != _texts.end() && text->starts_with(prefix))
    {
        taken.push_back(std::move(_texts.extract(text++).value()));
    }
    return taken;
}

} // namespace ZolFileManagement
