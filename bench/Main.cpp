#include "Run.h"
#include "other/Memory.h"
#include "report/Document.h"
#include "report/InnerCases.h"
#include "ways/Library.h"

#include <CLI/CLI.hpp>
#include <fstream>
#include <iostream>
#include <nlohmann/json.hpp>
#include <optional>

namespace
{

using namespace zolbench;

struct Arguments
{
    Options options;
    std::optional<int> memoryOf;
    std::optional<std::size_t> calls;
    std::string json;
    std::string document;
    std::string inner;
};

/// Whether all could be measured. Only then the document changes.
bool report(const Arguments& arguments)
{
    Report report = run(arguments.options);
    if (!arguments.inner.empty())
    {
        report.innerCases = readInnerCases(arguments.inner);
    }
    const auto tables = tablesOf(report);
    for (const auto& [name, table] : tables)
    {
        std::cout << name << "\n\n" << table << '\n';
    }
    if (!arguments.json.empty())
    {
        std::ofstream(arguments.json) << toJson(report).dump(2) << '\n';
    }
    for (const std::string& failure : report.failures)
    {
        std::cerr << "zol_bench: " << failure << '\n';
    }
    const bool isWhole = report.failures.empty();
    if (isWhole && !arguments.document.empty())
    {
        writeTables(arguments.document, tables);
    }
    return isWhole;
}

bool obey(const Arguments& arguments)
{
    const Options& options = arguments.options;
    if (arguments.memoryOf)
    {
        std::cout << residentBytesAnItem(static_cast<MemoryOf>(*arguments.memoryOf), options.items.front(),
                                         options.library, options.folder);
    }
    else if (arguments.calls)
    {
        printCalls(options, *arguments.calls);
    }
    else
    {
        return report(arguments);
    }
    return true;
}

int perform(int argc, char** argv)
{
    Arguments arguments;
    Options& options = arguments.options;
    options.library = Library::defaultFile();
    options.filem = std::filesystem::read_symlink("/proc/self/exe").parent_path() / "filem";

    CLI::App app("Measures the library beside what else does the same work, in one run");
    app.add_option("--folder", options.folder, "where the trees are made")->capture_default_str();
    app.add_option("--library", options.library, "the component");
    app.add_option("--filem", options.filem, "the operator's command");
    app.add_option("--items", options.items, "sizes of the trees")->delimiter(',')->capture_default_str();
    app.add_flag("--large", options.large, "also a million");
    app.add_option("--repetitions", options.repetitions)->check(CLI::PositiveNumber)->capture_default_str();
    app.add_option("--only", options.only,
                   "rows whose names hold one of these texts; also threads, memory, neighbours, filem")
        ->delimiter(',');
    app.add_option("--ways", options.ways, "just these, such as library,strict")->delimiter(',');
    app.add_option("--calls", arguments.calls, "just tells the library's system calls for so many items");
    app.add_option("--json", arguments.json, "file that gets the figures");
    app.add_option("--document", arguments.document, "document in which the tables are replaced");
    app.add_option("--inner", arguments.inner, "what zol_bench_inner has written");
    app.add_option(memoryOption, arguments.memoryOf)->group(""); // for its own use
    CLI11_PARSE(app, argc, argv);
    return obey(arguments) ? 0 : 1;
}

} // namespace

int main(int argc, char** argv)
{
    try
    {
        return perform(argc, argv);
    }
    catch (const std::exception& failure)
    {
        std::cerr << "zol_bench: " << failure.what() << '\n';
        return 1;
    }
}
