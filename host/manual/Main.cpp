#include "manual/Pages.h"

#include <algorithm>
#include <iostream>
#include <iterator>
#include <string_view>

namespace
{

struct Page
{
    std::string_view name;
    void (*print)(std::ostream& out);
};

constexpr Page PAGES[] = {
    {"filem.1", zolhost::manual::printCommandManual},
    {"filem-config.5", zolhost::manual::printConfigurationManual},
    {"bash", zolhost::manual::printBashCompletion},
    {"zsh", zolhost::manual::printZshCompletion},
    {"fish", zolhost::manual::printFishCompletion},
};

} // namespace

int main(int argc, char** argv)
{
    const auto* const page =
        argc == 2 ? std::ranges::find(PAGES, std::string_view(argv[1]), &Page::name) : std::end(PAGES);
    if (page == std::end(PAGES))
    {
        std::cerr << "usage: filem-manual filem.1 | filem-config.5 | bash | zsh | fish\n";
        return 2;
    }
    page->print(std::cout);
    return std::cout.flush() ? 0 : 1;
}
