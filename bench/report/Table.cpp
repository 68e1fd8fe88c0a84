#include "report/Table.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdio>
#include <ostream>

namespace zolbench
{

Table::Table(std::vector<std::string> head)
    : _lines{std::move(head)}
{}

void Table::add(std::vector<std::string> cells)
{
    _lines.push_back(std::move(cells));
}

std::ostream& operator<<(std::ostream& stream, const Table& table)
{
    std::vector<std::size_t> widths(table._lines.front().size(), 3);
    for (const auto& line : table._lines)
    {
        for (std::size_t column = 0; column < line.size(); ++column)
        {
            widths[column] = std::max(widths[column], line[column].size());
        }
    }
    const auto print = [&](const std::vector<std::string>& line) {
        for (std::size_t column = 0; column < line.size(); ++column)
        {
            const std::string padding(widths[column] - line[column].size(), ' ');
            stream << "| " << (column == 0 ? line[column] + padding : padding + line[column]) << ' ';
        }
        stream << "|\n";
    };
    print(table._lines.front());
    for (std::size_t column = 0; column < widths.size(); ++column)
    {
        const std::string dashes(widths[column], '-');
        stream << "| " << (column == 0 ? dashes + ' ' : dashes + ':');
    }
    stream << "|\n";
    std::for_each(table._lines.begin() + 1, table._lines.end(), print);
    return stream;
}

std::string withThousands(std::string digits)
{
    for (std::size_t end = digits.size(); end > 3; end -= 3)
    {
        digits.insert(end - 3, ",");
    }
    return digits;
}

std::string figure(double number)
{
    if (number == 0)
    {
        return "-";
    }
    if (number >= 100)
    {
        const double unit = std::pow(10, std::floor(std::log10(number)) - 2);
        return withThousands(std::to_string(std::llround(std::round(number / unit) * unit)));
    }
    std::array<char, 32> text{};
    const int digits = number >= 10 ? 1 : (number >= 0.1 ? 2 : 4);
    std::snprintf(text.data(), text.size(), "%.*f", digits, number);
    return text.data();
}

} // namespace zolbench
