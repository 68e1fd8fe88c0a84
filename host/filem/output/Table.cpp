#include "filem/output/Table.h"

#include "filem/output/PrintableText.h"

#include <algorithm>
#include <ostream>
#include <utility>

namespace zolhost::filem
{

namespace
{

/// Without the sequences that set colours.
std::size_t shownWidth(std::string_view cell)
{
    std::size_t hidden = 0;
    for (auto escape = cell.find('\x1b'); escape != std::string_view::npos;
         escape = cell.find('\x1b', escape + 1))
    {
        hidden += cell.find('m', escape) - escape + 1;
    }
    return width(cell) - hidden;
}

} // namespace

Table::Table(std::vector<Column> columns)
    : _columns(std::move(columns))
{
    Row head;
    for (const auto& column : _columns)
    {
        head.emplace_back(column.head);
    }
    _rows.push_back(std::move(head));
}

void Table::add(Row row)
{
    _rows.push_back(std::move(row));
}

void Table::print(std::ostream& out) const
{
    std::vector<std::size_t> widths(_columns.size());
    for (const auto& row : _rows)
    {
        for (std::size_t column = 0; column < _columns.size(); ++column)
        {
            widths[column] = std::max(widths[column], shownWidth(row[column]));
        }
    }
    for (const auto& row : _rows)
    {
        std::string line;
        for (std::size_t column = 0; column < _columns.size(); ++column)
        {
            const std::string padding(widths[column] - shownWidth(row[column]), ' ');
            line += column == 0 ? "" : "  ";
            line += _columns[column].isNumber ? padding + row[column] : row[column] + padding;
        }
        out << line.substr(0, line.find_last_not_of(' ') + 1) << '\n';
    }
}

} // namespace zolhost::filem
