#include "filem/shell/Columns.h"

#include "filem/output/PrintableText.h"

#include <algorithm>

namespace zolhost::filem
{

std::string inColumns(const std::vector<std::string>& texts, std::size_t columns, std::size_t lines)
{
    constexpr std::size_t GAP = 2;
    std::size_t widest = 0;
    for (const auto& text : texts)
    {
        widest = std::max(widest, width(text));
    }
    const std::size_t perLine = std::max<std::size_t>((columns + GAP - 1) / (widest + GAP), 1);
    const std::size_t needed = (texts.size() + perLine - 1) / perLine;
    const bool isCut = needed > lines;
    const std::size_t used = isCut ? std::max<std::size_t>(lines, 2) - 1 : needed;
    const std::size_t shown = std::min(texts.size(), used * perLine);
    std::string result;
    for (std::size_t row = 0; row < used; ++row)
    {
        std::string line;
        std::size_t at = 0;
        for (std::size_t i = row; i < shown; i += used)
        {
            line.append(i == row ? 0 : widest + GAP - at, ' ');
            line += texts[i];
            at = width(texts[i]);
        }
        result += line + '\n';
    }
    if (isCut)
    {
        result += "and " + std::to_string(texts.size() - shown) + " more\n";
    }
    return result;
}

} // namespace zolhost::filem
