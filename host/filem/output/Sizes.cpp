#include "filem/output/Sizes.h"

#include <cmath>
#include <string_view>

namespace zolhost::filem
{

std::string humanSize(std::uint64_t bytes)
{
    constexpr std::string_view UNITS = "KMGTPE";
    constexpr double STEP = 1024;
    if (bytes < 1024)
    {
        return std::to_string(bytes);
    }
    double size = static_cast<double>(bytes) / STEP;
    std::size_t unit = 0;
    while (std::ceil(size) >= STEP && unit + 1 < UNITS.size())
    {
        size /= STEP;
        ++unit;
    }
    const auto tenths = static_cast<std::uint64_t>(std::ceil(size * 10));
    const std::string number = tenths < 100 ? std::to_string(tenths / 10) + "." + std::to_string(tenths % 10)
                                            : std::to_string(static_cast<std::uint64_t>(std::ceil(size)));
    return number + UNITS[unit];
}

std::string counted(std::uint64_t count, const std::string& noun)
{
    if (count == 1)
    {
        return "1 " + noun;
    }
    const bool endsInY = noun.ends_with('y');
    return std::to_string(count) + " " + (endsInY ? noun.substr(0, noun.size() - 1) + "ies" : noun + "s");
}

std::string modeText(mode_t mode)
{
    std::string text = "drwxrwxrwx";
    for (unsigned int bit = 0; bit < 9; ++bit)
    {
        if ((mode & (0400U >> bit)) == 0)
        {
            text[bit + 1] = '-';
        }
    }
    const auto special = [&](mode_t bit, std::size_t place, char letter) {
        if ((mode & bit) != 0)
        {
            text[place] = text[place] == 'x' ? letter : static_cast<char>(letter - 'a' + 'A');
        }
    };
    special(04000, 3, 's');
    special(02000, 6, 's');
    special(01000, 9, 't');
    return text;
}

} // namespace zolhost::filem
