#include "filem/output/Colours.h"

namespace zolhost::filem
{

namespace
{

const char* codeOf(Colour colour)
{
    switch (colour)
    {
    case Colour::Directory:
        return "1;34";
    case Colour::Link:
        return "36";
    case Colour::New:
        return "32";
    case Colour::Going:
        return "31";
    case Colour::Warning:
        return "33";
    case Colour::None:
        break;
    }
    return "";
}

} // namespace

std::string Colours::paint(Colour colour, const std::string& text) const
{
    if (!_areOn || colour == Colour::None || text.empty())
    {
        return text;
    }
    return std::string("\x1b[") + codeOf(colour) + "m" + text + "\x1b[0m";
}

} // namespace zolhost::filem
