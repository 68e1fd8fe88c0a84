#pragma once

#include <cstdint>
#include <ctime>
#include <functional>
#include <string>
#include <vector>

namespace zolmodel
{

/// What the rules leave to the surroundings, so that the model has to be told.
struct Surroundings
{
    /// Names in a directory, in the order in which its stream gives them.
    std::function<std::vector<std::string>(const std::string& directory)> diskOrder;
    struct Status
    {
        std::time_t changed;
        std::uint64_t size; ///< also of what is no file
    };
    /// Of what is there, links followed.
    std::function<Status(const std::string& text)> status;
    /// What the external command prints.
    std::string commandOutput;

    struct Policy
    {
        std::string dn;
        std::vector<std::string> groups; ///< DNs that it refers to
    };
    std::vector<Policy> policies;
};

} // namespace zolmodel
