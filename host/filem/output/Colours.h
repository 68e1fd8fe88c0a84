#pragma once

#include <string>

namespace zolhost::filem
{

enum class Colour
{
    None,
    Directory,
    Link,
    New,
    Going,
    Warning
};

/// Sets texts in colour, or leaves them as they are where colours aren't welcome.
class Colours
{
public:
    explicit Colours(bool areOn)
        : _areOn(areOn)
    {}

    std::string paint(Colour colour, const std::string& text) const;

private:
    bool _areOn;
};

} // namespace zolhost::filem
