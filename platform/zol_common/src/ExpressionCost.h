#pragma once

#include <string>

namespace Zol
{

/// What the system's regular expressions cost. It writes repetitions out and keeps every set of places that a
/// text leads to, so that a few characters can take all memory or never end: ((a{1,255}){1,255}){1,255}.
class ExpressionCost
{
public:
    /// `flags` are those of `regcomp`. An expression that isn't valid has a cost like any other.
    ExpressionCost(const std::string& expression, int flags);

    /// Compiling it takes a fraction of a second and less than 64 MiB, and so does matching a file name.
    bool isAffordable() const;

    /// After so many bytes of text what matching has kept should be dropped.
    std::size_t bytesToKeep() const;

    /// Places in the expression once its repetitions are written out, those that can be left out counting
    /// more.
    std::size_t places() const { return _places; }

private:
    std::size_t _places = 0;
    std::size_t _depth = 0;              // of groups
    std::size_t _repeatedAssertions = 0; // such as ^, in what is repeated
    std::size_t _variants = 0;           // repetitions and alternatives as they are written
    bool _refersBack = false;
};

} // namespace Zol
