#include "filem/shell/Prompt.h"

#include "filem/Session.h"
#include "filem/output/PrintableText.h"
#include "filem/output/Sizes.h"

#include <algorithm>

namespace zolhost::filem
{

namespace
{

/// A line must keep room for what is typed.
constexpr std::size_t LONGEST_PLACE = 40;

std::string shownPlace(const Place& place)
{
    if (place.isRoot())
    {
        return {};
    }
    const auto& names = place.names();
    std::string shown = printable(names.back());
    for (auto name = names.rbegin() + 1; name != names.rend(); ++name)
    {
        const std::string longer = printable(*name).append("/").append(shown);
        if (width(longer) > LONGEST_PLACE)
        {
            shown.insert(0, "…/");
            break;
        }
        shown = longer;
    }
    return ":" + shown;
}

void append(std::string& counts, const char* sign, std::size_t count, const std::string& what)
{
    if (count != 0)
    {
        counts += (counts.empty() ? "" : " ") + (sign + counted(count, what));
    }
}

std::string shownCounts(const Plan& plan)
{
    const auto isDirectory = [](const std::string& path) { return path.ends_with('/'); };
    const auto trees = static_cast<std::size_t>(std::ranges::count_if(plan.removedTrees(), isDirectory));
    std::string counts;
    append(counts, "+", plan.madeDirectories().size(), "dir");
    append(counts, "-", trees, "dir");
    append(counts, "-", plan.removedFiles().size() + plan.removedTrees().size() - trees, "file");
    return counts.empty() ? "" : " (" + counts + ")";
}

} // namespace

std::string promptOf(Session& session)
{
    return "FileM" + shownPlace(session.here()) + (session.hasStaged() ? shownCounts(session.plan()) : "") +
           "> ";
}

std::size_t countChanges(const Plan& plan)
{
    return plan.madeDirectories().size() + plan.removedTrees().size() + plan.removedFiles().size();
}

} // namespace zolhost::filem
