#include "WalkFixture.h"

namespace zoltest
{

Poco::Path Walk::directory(const std::string& name) const
{
    return Poco::Path(tree.path(name)).makeDirectory();
}

Poco::Path Walk::file(const std::string& name) const
{
    return {tree.path(name)};
}

std::string Walk::step(Iterator& iterator) const
{
    const Poco::Path untouched("untouched");
    Poco::Path entry = untouched;
    if (!iterator.getNext(entry))
    {
        EXPECT_EQ(entry.toString(), untouched.toString());
        return "end";
    }
    const std::string text = entry.toString();
    const std::string root = tree.path() + "/";
    return text.starts_with(root) ? text.substr(root.size()) : text;
}

Texts Walk::rest(Iterator& iterator) const
{
    Texts texts;
    for (std::string text = step(iterator); text != "end"; text = step(iterator))
    {
        texts.push_back(text);
    }
    return texts;
}

Texts Walk::filesIn(const std::string& name) const
{
    Iterator iterator = open(name, files);
    return rest(iterator);
}

Texts Walk::directoriesIn(const std::string& name) const
{
    Iterator iterator = open(name, directories);
    return rest(iterator);
}

} // namespace zoltest
