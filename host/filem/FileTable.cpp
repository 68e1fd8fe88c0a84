#include "filem/FileTable.h"

#include "filem/PrintableText.h"
#include "filem/ValueText.h"

#include <algorithm>
#include <array>
#include <ostream>
#include <string>
#include <vector>

namespace zolhost::filem
{

namespace
{

struct Column
{
    const char* head;
    const char* member;
    bool isNumber;
};

constexpr Column COLUMNS[] = {{"NAME", "fileName", false},
                              {"SIZE", "size", true},
                              {"TYPE", "fileType", false},
                              {"TIME", "modificationTime", false}};

using Row = std::array<std::string, std::size(COLUMNS)>;

std::string memberText(const StructValue& file, const char* name)
{
    for (const auto& [member, value] : file)
    {
        if (member == name)
        {
            return valuesText(value);
        }
    }
    return {};
}

} // namespace

void printFileTable(std::ostream& out, const AttributeValue& files)
{
    if (files.values.empty())
    {
        return;
    }
    std::vector<Row> rows(1 + files.values.size());
    std::array<std::size_t, std::size(COLUMNS)> widths{};
    for (std::size_t column = 0; column < std::size(COLUMNS); ++column)
    {
        rows[0][column] = COLUMNS[column].head;
        for (std::size_t i = 0; i < files.values.size(); ++i)
        {
            rows[i + 1][column] = memberText(std::get<StructValue>(files.values[i]), COLUMNS[column].member);
        }
        for (const auto& row : rows)
        {
            widths[column] = std::max(widths[column], width(row[column]));
        }
    }
    for (const auto& row : rows)
    {
        std::string line;
        for (std::size_t column = 0; column < std::size(COLUMNS); ++column)
        {
            const std::string padding(widths[column] - width(row[column]), ' ');
            line += column == 0 ? "" : "  ";
            line += COLUMNS[column].isNumber ? padding + row[column] : row[column] + padding;
        }
        out << line.substr(0, line.find_last_not_of(' ') + 1) << '\n';
    }
}

} // namespace zolhost::filem
