#include "rig/Rows.h"
#include "rig/Tasks.h"

namespace zolbench
{

namespace
{

/// What the rows of one kind of tree have in common.
struct Setting
{
    std::function<Task(std::size_t)> task;
    std::function<void(const Task&)> setUp;
    std::size_t mostItems = SIZE_MAX;
};

RowMaker maker(const std::string& work, const Setting& setting, Way::Work perform, const Goal& goal,
               bool intendsFirst = false)
{
    const auto make = [=](std::size_t items) {
        return Row{work, setting.task(items), setting.setUp, perform, goal, intendsFirst};
    };
    return {work, make, setting.mostItems};
}

} // namespace

std::vector<RowMaker> rowMakers(const Stage& stage)
{
    const auto fill = [&](const Task& task) { stage.fill(task); };
    const auto empty = [&](const Task& task) { stage.empty(task); };
    const auto make = [&](const Task& task) { stage.make(task); };
    const Setting files{[&](std::size_t n) { return filesIn(stage.root(), n); }, fill};
    const Setting flat{[&](std::size_t n) { return directoriesIn(stage.root(), n); }, empty};
    const Setting chains100{[&](std::size_t n) { return chainsIn(stage.root(), n, 100); }, empty};
    // the names alone take gigabytes beyond
    const Setting chains1000{[&](std::size_t n) { return chainsIn(stage.root(), n, 1000); }, empty, 10000};
    const Setting emptyDirectories{[&](std::size_t n) { return directoriesIn(stage.root(), n); }, make};
    const Setting nothing{transactions, [](const Task&) {}};

    return {
        maker("browse", files, &Way::browse, {1.0, 1.3, 0.45}),
        maker("count", files, &Way::count, {0.02, 1.3, 0.10}),
        maker("`files`", files, &Way::files, {1.02, 1.2, 0.80}),
        maker("create flat and commit", flat, &Way::create, {3.0, 1.6, 0.85}),
        maker("commit alone, created flat", flat, &Way::apply, {2.0, {}, {}}, true),
        maker("create in chains of 100 and commit", chains100, &Way::create, {5.0, 2.0, 1.0}),
        maker("create in chains of 1,000 and commit", chains1000, &Way::create, {5.0, 3.0, 0.50}),
        maker("delete and commit", files, &Way::remove, {2.0, 1.8, 0.66}),
        maker("`removeFile` and commit", files, &Way::removeMatching, {1.02, 1.2, 0.33}),
        maker("delete check, a directory", emptyDirectories, &Way::checkEmpty, {4.0, 1.2, 0.06}),
        maker("`existsMo`", files, &Way::exists, {1.0, 2.0, 0.20}),
        maker("`size`", files, &Way::size, {1.0, 2.0, 0.20}),
        maker("empty transaction", nothing, &Way::openAndClose, {{}, 3.0, {}}),
    };
}

} // namespace zolbench
