#pragma once

#include <cstdint>
#include <random>
#include <string>
#include <vector>

namespace zolmodel
{

/// Choices that are the same for a seed on every machine.
class Chance
{
public:
    Chance(std::uint64_t seed, std::uint64_t round);

    std::size_t below(std::size_t count) { return static_cast<std::size_t>(_engine() % count); }
    bool percent(unsigned share) { return below(100) < share; }
    template<class T>
    const T& of(const std::vector<T>& values)
    {
        return values[below(values.size())];
    }

private:
    std::mt19937_64 _engine;
};

/// Names for what is on disk: few in each round, so that they meet, and over the rounds every rule for names.
std::vector<std::string> someNames(Chance& chance);

/// Values that no directory may be made for, and some that look so.
const std::vector<std::string>& oddKeys();

/// DNs that stand for nothing good. `absolute` is a directory; `name` may be in it.
std::vector<std::string> oddDns(const std::string& absolute, const std::string& name);

extern const std::string ROOT_DN;

} // namespace zolmodel
