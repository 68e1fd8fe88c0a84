#pragma once

#include <thread>
#include <vector>

namespace zoltest
{

/// Calls the function with 0, 1, ... on threads of their own and waits for their ends.
template<class Function>
void onThreads(int count, const Function& function)
{
    std::vector<std::thread> threads;
    threads.reserve(static_cast<std::size_t>(count));
    for (int i = 0; i < count; ++i)
    {
        threads.emplace_back(function, i);
    }
    for (auto& thread : threads)
    {
        thread.join();
    }
}

} // namespace zoltest
