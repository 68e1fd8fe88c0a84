#include "model/Printable.h"

#include <sstream>

namespace zolmodel
{

std::string printable(const std::string& text)
{
    std::ostringstream result;
    for (const char character : text)
    {
        const auto byte = static_cast<unsigned char>(character);
        if (byte < 0x20 || byte >= 0x7F)
        {
            result << "\\x" << std::hex << (byte >> 4U) << (byte & 15U) << std::dec;
        }
        else
        {
            result << (character == '\\' ? "\\" : "") << character;
        }
    }
    return result.str();
}

} // namespace zolmodel
