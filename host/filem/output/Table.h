#pragma once

#include <cstddef>
#include <iosfwd>
#include <string>
#include <vector>

namespace zolhost::filem
{

/// Cells in aligned columns, two blanks apart.
class Table
{
public:
    struct Column
    {
        const char* head;
        bool isNumber = false;
    };

    explicit Table(std::vector<Column> columns);

    using Row = std::vector<std::string>;
    void add(Row row);
    /// With a head line. Colours in a cell don't count in its width.
    void print(std::ostream& out) const;

private:
    std::vector<Column> _columns;
    std::vector<Row> _rows;
};

} // namespace zolhost::filem
