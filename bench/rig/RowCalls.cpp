#include "rig/RowCalls.h"

namespace zolbench
{

namespace
{

// Tried with nothing to do: no list tells what a way offers.
bool isOffered(Row row, Way& way)
{
    row.task.items.clear();
    try
    {
        row.prepare(way);
        (way.*row.perform)(row.task, nullptr);
        return true;
    }
    catch (const NotOffered&)
    {
        return false;
    }
}

} // namespace

SystemCalls systemCallsOf(const Row& row, Way& way)
{
    return systemCallsOf([&] { row.prepare(way); }, [&] { (way.*row.perform)(row.task, nullptr); });
}

CallsByWay callsAnItem(const Row& row, const Ways& ways)
{
    CallsByWay calls;
    for (const auto& way : ways)
    {
        if (way->worksInThisProcess() && isOffered(row, *way))
        {
            calls[way->name()] = static_cast<double>(total(systemCallsOf(row, *way))) /
                                 static_cast<double>(row.task.items.size());
        }
    }
    return calls;
}

} // namespace zolbench
