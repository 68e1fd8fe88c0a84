#include "report/Document.h"

#include <fstream>
#include <sstream>
#include <stdexcept>

namespace zolbench
{

void writeTables(const std::filesystem::path& document, const std::map<std::string, std::string>& tables)
{
    std::ostringstream content;
    content << std::ifstream(document).rdbuf();
    std::string text = content.str();
    for (const auto& [name, table] : tables)
    {
        const std::string opening = "<!-- table " + name + " -->\n";
        const std::size_t begin = text.find(opening);
        const std::size_t end = text.find("<!-- end " + name + " -->", begin);
        if (begin == std::string::npos || end == std::string::npos)
        {
            throw std::runtime_error(document.string() + " has no place for the table " + name);
        }
        const std::size_t place = begin + opening.size();
        text.replace(place, end - place, '\n' + table + '\n');
    }
    std::ofstream(document) << text;
}

} // namespace zolbench
