#pragma once

#include <algorithm>
#include <cstddef>
#include <vector>

namespace zolmodel
{

/// The shortest list found by leaving out parts as long as the rest still fails: first large parts, then
/// single elements, until each element is needed.
template<class T, class Fails>
std::vector<T> shrunk(std::vector<T> list, const Fails& fails)
{
    for (std::size_t part = std::max<std::size_t>(list.size() / 2, 1);;)
    {
        bool gotShorter = false;
        for (std::size_t from = list.size(); from > 0;)
        {
            const std::size_t begin = from > part ? from - part : 0;
            std::vector<T> rest(list.begin(), list.begin() + static_cast<std::ptrdiff_t>(begin));
            rest.insert(rest.end(), list.begin() + static_cast<std::ptrdiff_t>(from), list.end());
            if (fails(rest))
            {
                list = std::move(rest);
                gotShorter = true;
            }
            from = begin;
        }
        if (part > 1)
        {
            part /= 2;
        }
        else if (!gotShorter)
        {
            return list;
        }
    }
}

} // namespace zolmodel
