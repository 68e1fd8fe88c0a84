#include "model/Names.h"
#include "model/Runner.h"

#include <CLI/CLI.hpp>
#include <iostream>
#include <map>

namespace
{

// Each operation with its codes and how often they came.
void print(const zolmodel::Tally& tally)
{
    for (std::size_t does = 0; does < tally.counts.size(); ++does)
    {
        std::string line;
        for (std::size_t code = 0; code < zolmodel::Tally::CODES.size(); ++code)
        {
            if (const unsigned long count = tally.counts.at(does).at(code); count != 0)
            {
                line += "  " + std::to_string(zolmodel::Tally::CODES.at(code)) + ": " + std::to_string(count);
            }
        }
        if (!line.empty())
        {
            std::cout << "  " << nameOf(static_cast<zolmodel::Does>(does)) << line << '\n';
        }
    }
}

} // namespace

int main(int argc, char** argv)
{
    using zolmodel::Mistake;
    zolmodel::Settings settings;
    const std::map<std::string, Mistake> mistakes = {
        {"none", Mistake::None},
        {"ignores-setgid", Mistake::IgnoresSetGroupId},
        {"decodes-one-escape", Mistake::DecodesOneEscapeOnly},
        {"kills-itself", Mistake::KillsItself},
    };
    CLI::App app("Compares the component with a model of its rules, by random operations of a host");
    app.add_option("--operations", settings.operations, "How many operations")->capture_default_str();
    app.add_option("--seed", settings.seed, "What they are drawn by")->capture_default_str();
    app.add_option("--library", settings.library, "The component; without it, that of this build");
    app.add_option("--mistake", settings.mistake, "What the model is to do wrong on purpose")
        ->transform(CLI::CheckedTransformer(mistakes));
    bool tally = false;
    app.add_flag("--tally", tally, "Also print how often each operation gave each code");
    CLI11_PARSE(app, argc, argv);

    zolmodel::Runner runner(settings);
    std::cout << "seed " << settings.seed << std::endl;
    const zolmodel::Result result = runner.run();
    std::cout << result.operations << " operations, " << result.skipped << " of them out of reach\n";
    if (tally)
    {
        print(result.tally);
    }
    if (!result.finding)
    {
        std::cout << "no difference\n";
        return 0;
    }
    const auto shown = [&runner](const std::string& text) {
        return zolmodel::replacedAll(text, runner.sandbox().path(), "SANDBOX");
    };
    std::cout << "a difference, shrunk to " << result.finding->operations.size() << " operations:\n";
    for (const auto& operation : result.finding->operations)
    {
        std::cout << "  " << shown(toText(operation)) << '\n';
    }
    std::cout << shown(result.finding->difference) << '\n';
    return 1;
}
