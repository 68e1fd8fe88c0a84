#include "rig/Comparison.h"
#include "strict/StrictWay.h"
#include "ways/FloorWay.h"
#include "ways/LibraryWay.h"
#include "ways/StandardWay.h"

#include <CLI/CLI.hpp>
#include <algorithm>
#include <iostream>

namespace
{

using namespace zolbench;

struct Options
{
    std::filesystem::path folder = "/dev/shm";
    std::filesystem::path library = Library::defaultFile();
    std::vector<std::size_t> items{10000, 100000};
    std::size_t repetitions = 5;
    std::vector<std::string> only;
};

bool isWanted(const Options& options, const std::string& work)
{
    return options.only.empty() ||
           std::any_of(options.only.begin(), options.only.end(),
                       [&](const std::string& part) { return work.find(part) != std::string::npos; });
}

void run(const Options& options)
{
    const Stage stage(options.folder);
    const Library library(options.library, stage.root());
    Ways ways;
    ways.push_back(std::make_unique<LibraryWay>(library));
    ways.push_back(std::make_unique<FloorWay>());
    ways.push_back(std::make_unique<StrictWay>(stage.root()));
    ways.push_back(std::make_unique<StandardWay>());

    std::vector<Outcome> outcomes;
    for (const RowMaker& maker : rowMakers(stage))
    {
        if (!isWanted(options, maker.work))
        {
            continue;
        }
        const CallsByWay calls = callsAnItem(maker.make(10000), ways);
        for (const std::size_t items : options.items)
        {
            if (items <= maker.mostItems)
            {
                const Row row = maker.make(items);
                outcomes.push_back(
                    {row.work, items, measure(row, ways, options.repetitions), calls, row.goal});
                std::cerr << row.work << ' ' << items << '\n';
            }
        }
    }
    print(std::cout, outcomes);
}

} // namespace

int main(int argc, char** argv)
{
    Options options;
    CLI::App app("The library beside what else does the same work");
    app.add_option("--folder", options.folder, "where the trees are made")->capture_default_str();
    app.add_option("--library", options.library, "the component");
    app.add_option("--items", options.items, "sizes of the trees")->delimiter(',')->capture_default_str();
    app.add_option("--repetitions", options.repetitions)->capture_default_str();
    app.add_option("--only", options.only, "rows whose names hold one of these texts")->delimiter(',');
    CLI11_PARSE(app, argc, argv);
    try
    {
        run(options);
        return 0;
    }
    catch (const std::exception& failure)
    {
        std::cerr << "zol_bench: " << failure.what() << '\n';
        return 1;
    }
}
