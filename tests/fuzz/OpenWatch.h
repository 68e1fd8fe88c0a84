#pragma once

#include <string>
#include <vector>

namespace zolfuzz
{

/// Tells whether any of some files is opened.
class OpenWatch
{
public:
    explicit OpenWatch(const std::vector<std::string>& paths);
    OpenWatch(const OpenWatch&) = delete;
    OpenWatch& operator=(const OpenWatch&) = delete;
    ~OpenWatch();

    bool sawOpening() const;

private:
    int _descriptor;
};

} // namespace zolfuzz
