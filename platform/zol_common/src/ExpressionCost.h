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

    /// Characters of the expression once its repetitions are written out; what isn't a character that stands
    /// for itself counts more, and what can be left out most. No more than a lower bound where it isn't
    /// affordable.
    std::size_t value() const { return _cost; }

    /// Steps on all the ways that take no character, from each place in the expression, if one leads in a
    /// circle: the system goes each of them then, and twenty groups like (a?b?)? have a million. 0 if none
    /// does.
    std::size_t emptySteps() const { return _emptySteps; }

private:
    std::size_t _cost = 0;
    std::size_t _emptySteps = 0;
    std::size_t _joins = 0;              // of ways that take no character
    std::size_t _depth = 0;              // of groups
    std::size_t _assertions = 0;         // such as ^
    std::size_t _repeatedAssertions = 0; // in what is repeated
    std::size_t _variants = 0;           // repetitions and alternatives as they are written
    bool _refersBack = false;
};

} // namespace Zol
