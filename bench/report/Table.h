#pragma once

#include <iosfwd>
#include <string>
#include <vector>

namespace zolbench
{

/// A table in Markdown with aligned columns, the first of which is text and the others are figures.
class Table
{
public:
    explicit Table(std::vector<std::string> head);

    void add(std::vector<std::string> cells);

    friend std::ostream& operator<<(std::ostream& stream, const Table& table);

private:
    std::vector<std::vector<std::string>> _lines;
};

/// Digits with commas between thousands.
std::string withThousands(std::string digits);

/// The number with three digits that count, thousands marked; a dash for 0.
std::string figure(double number);

} // namespace zolbench
