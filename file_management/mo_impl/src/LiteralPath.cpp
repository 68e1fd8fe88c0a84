#include "LiteralPath.h"

namespace ZolFileManagement
{

Poco::Path literalPath(const std::string& text)
{
    const bool isAbsolute = !text.empty() && text.front() == '/';
    Poco::Path path(isAbsolute);
    std::size_t begin = 0;
    for (std::size_t slash = text.find('/'); slash != std::string::npos; slash = text.find('/', begin))
    {
        path.pushDirectory(text.substr(begin, slash - begin));
        begin = slash + 1;
    }
    path.setFileName(text.substr(begin));
    return path;
}

} // namespace ZolFileManagement
