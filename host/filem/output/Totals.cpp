#include "filem/output/Totals.h"

#include "filem/output/Sizes.h"

#include <vector>

namespace zolhost::filem
{

namespace
{

/// "a", "a and b", "a, b and c".
std::string listed(const std::vector<std::string>& parts)
{
    std::string text;
    for (std::size_t i = 0; i < parts.size(); ++i)
    {
        const bool isLast = i + 1 == parts.size();
        text += i == 0 ? "" : isLast ? " and " : ", ";
        text += parts[i];
    }
    return text;
}

} // namespace

std::string textOf(const Totals& totals, Tense tense)
{
    const std::string verb = tense == Tense::Future ? " to be " : " ";
    std::vector<std::string> clauses;
    if (totals.directoriesMade != 0)
    {
        clauses.push_back(counted(totals.directoriesMade, "directory") + verb + "made");
    }
    if (totals.modesSet != 0)
    {
        clauses.push_back(counted(totals.modesSet, "mode") + verb + "set");
    }
    std::vector<std::string> removed;
    if (totals.filesRemoved != 0)
    {
        removed.push_back(counted(totals.filesRemoved, "file") + " (" + humanSize(totals.bytesRemoved) + ")");
    }
    if (totals.directoriesRemoved != 0)
    {
        removed.push_back(counted(totals.directoriesRemoved, "directory"));
    }
    if (totals.othersRemoved != 0)
    {
        removed.push_back(counted(totals.othersRemoved, "other entry"));
    }
    if (!removed.empty())
    {
        clauses.push_back(listed(removed) + verb + "removed");
    }
    std::string text;
    for (const auto& clause : clauses)
    {
        text += (text.empty() ? "" : ", ") + clause;
    }
    return text;
}

} // namespace zolhost::filem
