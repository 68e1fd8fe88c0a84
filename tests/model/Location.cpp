#include "model/Location.h"

namespace zolmodel
{

Location::Location(const std::string& text)
    : _absolute(true)
{
    std::size_t from = 0;
    for (std::size_t slash = text.find('/'); slash != std::string::npos; slash = text.find('/', from))
    {
        enter(text.substr(from, slash - from));
        from = slash + 1;
    }
    _fileName = text.substr(from);
}

std::string Location::text() const
{
    if (isEmpty())
    {
        return "";
    }
    std::string result = "/";
    for (const auto& name : _directories)
    {
        result += name + "/";
    }
    return result + _fileName;
}

std::string Location::textWithoutSlash() const
{
    std::string result = text();
    if (result.size() > 1 && result.back() == '/')
    {
        result.pop_back();
    }
    return result;
}

std::string Location::extension() const
{
    const std::size_t dot = _fileName.rfind('.');
    return dot == std::string::npos ? "" : _fileName.substr(dot + 1);
}

Location Location::asFile() const
{
    Location result = *this;
    if (result._fileName.empty() && !result._directories.empty())
    {
        result._fileName = result._directories.back();
        result._directories.pop_back();
    }
    return result;
}

Location Location::asDirectory() const
{
    Location result = *this;
    result._fileName.clear();
    result.enter(_fileName);
    return result;
}

Location Location::parent() const
{
    Location result = *this;
    if (!result._fileName.empty())
    {
        result._fileName.clear();
    }
    else if (!result._directories.empty())
    {
        result._directories.pop_back();
    }
    return result;
}

Location Location::directoryBelow(const std::string& name) const
{
    return asDirectory().entry(name).asDirectory();
}

Location Location::entry(const std::string& name) const
{
    Location result = asDirectory();
    result._fileName = name;
    return result;
}

void Location::enter(const std::string& name)
{
    if (name == "..")
    {
        if (!_directories.empty())
        {
            _directories.pop_back();
        }
    }
    else if (!name.empty() && name != ".")
    {
        _directories.push_back(name);
    }
}

} // namespace zolmodel
