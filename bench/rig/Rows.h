#pragma once

#include "rig/Row.h"
#include "rig/Stage.h"

#include <cstdint>
#include <vector>

namespace zolbench
{

/// A row of the comparison for any number of items. Its task takes memory, so it is made when it is needed.
struct RowMaker
{
    std::string work;
    std::function<Row(std::size_t items)> make;
    std::size_t mostItems;
};

/// The stage outlives the rows.
std::vector<RowMaker> rowMakers(const Stage& stage);

} // namespace zolbench
