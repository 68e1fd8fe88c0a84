#include "model/Names.h"
#include "model/Runner.h"

#include <CLI/CLI.hpp>
#include <iostream>
#include <map>

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
    CLI11_PARSE(app, argc, argv);

    zolmodel::Runner runner(settings);
    std::cout << "seed " << settings.seed << std::endl;
    const zolmodel::Result result = runner.run();
    std::cout << result.operations << " operations, " << result.skipped << " of them out of reach\n";
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
